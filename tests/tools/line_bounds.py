#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Prints the bounding rectangles of decorated lines as CSV: tests/data/linebounds.csv is its output.

An independent calculation with points in the plane; it knows nothing of the library.
"""
import itertools
import math

NONE, OPEN, FILLED, CHEVRON, BAR = 0, 1, 3, 5, 8
ANY_HEAD, ANY_FILLED, ANY_BAR, NOT_A_BAR = 0x11, 0x22, 0x88, 0x77
ENDS = (NONE, OPEN, FILLED, CHEVRON, BAR)
LENGTHS = (1, 5, 20, 100, 1000)
PEN_WIDTHS = (1, 3, 12, 72)
MITER, ROUND, SVG_MITER = 0x00, 0x80, 0x100
JOINS = (MITER, ROUND, SVG_MITER)

HEAD_REACH = 3.4641
CHEVRON_REACH = 9.8641
MARGIN = 5


def towards(start, end, distance):
    """The point at a distance from start in the direction of end, or None where they coincide."""
    length = math.dist(start, end)
    if length == 0:
        return None
    return tuple(s + (e - s) / length * distance for s, e in zip(start, end))


def between_arrows(line, first, second):
    start, end = line
    turning = towards(start, end, first) or end
    back = towards(turning, start, second) or start
    return back, turning


def opposite_direction(line, distance):
    start, end = line
    return towards(end, start, distance) or end, end


def has(arrows, bits):
    return arrows & bits == bits


def under_chevron_length(arrows, line, head, both_heads, chevron):
    start, end = line
    length = math.dist(start, end)
    if has(arrows, 0x50):
        return start, towards(start, end, chevron) or end
    if has(arrows, 0x05):
        return opposite_direction(line, chevron)
    if length < both_heads and has(arrows, 0x11):
        return between_arrows(line, head, both_heads)
    if length < head and has(arrows, 0x10):
        return start, towards(start, end, head) or end
    if length < head and has(arrows, 0x01):
        return opposite_direction(line, head)
    return line


def adjusted_if_too_small(arrows, line, pen_width):
    length = math.dist(*line)
    head = HEAD_REACH * pen_width
    chevron = CHEVRON_REACH * pen_width
    head_and_chevron = head + chevron - length
    both_chevrons = 2 * chevron - length
    longest = max(chevron, head_and_chevron)
    if length >= both_chevrons:
        return line
    if has(arrows, 0x55):
        return between_arrows(line, chevron, both_chevrons)
    if length < longest and has(arrows, 0x51):
        return between_arrows(line, chevron, longest)
    if length < longest and has(arrows, 0x15):
        return between_arrows(line, max(length, head), longest)
    if length < chevron:
        return under_chevron_length(arrows, line, head, 2 * head - length, chevron)
    return line


def bounds(arrows, length, pen_width, join):
    line = (0.0, 0.0), (float(length), 0.0)
    left = right = vertical = pen_width / 2
    if arrows & ANY_BAR and not arrows & NOT_A_BAR:
        vertical = 2.5 * pen_width
    elif arrows:
        if join == MITER and arrows & 0x70:
            left = pen_width
        if join == MITER and arrows & 0x07:
            right = pen_width
        vertical = (2.82 if arrows & ANY_FILLED else 2.5) * pen_width
        line = adjusted_if_too_small(arrows, line, pen_width)
    (x1, y1), (x2, y2) = line
    return (x1 - left - MARGIN, y1 - vertical - MARGIN,
            x2 + right - (x1 - left) + 2 * MARGIN, y2 + vertical - (y1 - vertical) + 2 * MARGIN)


print("# SPDX-License-Identifier: BSD-3-Clause")
print("arrows,length,penWidth,join,x,y,width,height")
for left, right, length, pen_width, join in itertools.product(ENDS, ENDS, LENGTHS, PEN_WIDTHS, JOINS):
    arrows = left << 4 | right
    numbers = (f"{number:.12g}" for number in bounds(arrows, length, pen_width, join))
    print(f"{arrows},{length},{pen_width},{join}", *numbers, sep=",")
