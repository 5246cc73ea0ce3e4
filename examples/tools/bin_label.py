# SPDX-License-Identifier: BSD-3-Clause
"""The location of a storage bin: zone, place, level and where to look."""
from label import DENSE, WHITE, Label

BLACK, BLUE = "#000000", "#0057b8"

WIDTH, HEIGHT = 100, 50
STRIP = 18  # the width of the zone's strip
LEFT, RIGHT = 23, 96


def build():
    sign = Label(WIDTH, HEIGHT, 300, {"black": BLACK, "blue": BLUE})
    _zone_strip(sign)
    _place(sign, 5, "A-12")
    sign.fill(sign.dots(LEFT), sign.dots(25), sign.dots(RIGHT - LEFT), sign.dots(0.35), BLACK)
    sign.text(sign.dots(LEFT), sign.dots(30), sign.dots(0.85), "LEVEL 3", BLACK)
    sign.text(sign.dots(LEFT), sign.dots(40.05), sign.dots(0.68), "AISLE 07", BLUE)
    _level_bars(sign, level=3)
    return sign


def _zone_strip(sign):
    """A strip of the zone's colour that dissolves towards the bottom."""
    at = sign.dots
    solid = 29
    sign.fill(0, 0, at(STRIP), at(solid), BLUE)
    sign.centred_text(0, at(5), at(STRIP), at(0.5), "ZONE", WHITE)
    sign.centred_text(0, at(11.4), at(STRIP), at(2), "A", WHITE)
    step = (HEIGHT - solid) / len(DENSE)
    for index, style in enumerate(DENSE):
        top, bottom = at(solid + index * step), at(solid + (index + 1) * step)
        sign.fill(0, top, at(STRIP), bottom - top, BLUE, style)


def _place(sign, y, text):
    """The place in large letters, and an arrow that is as tall."""
    cell, bold = sign.dots(2.1), sign.dots(0.25)
    _, side = sign.text_size(cell, text, bold)
    sign.text(sign.dots(LEFT), sign.dots(y), cell, text, BLACK, bold)
    _arrow_up(sign, sign.dots(RIGHT) - side, sign.dots(y), side)


def _arrow_up(sign, x, y, side):
    """A white arrow on a black square; x, y and side in dots."""
    at = sign.dots
    sign.fill(x, y, side, side, BLACK)
    middle, tip, thick, wing = x + side / 2, y + at(2.8), at(2.2), at(7.6)
    sign.fill(middle - thick / 2, tip + thick / 2, thick, side - at(5.6) - thick / 2, WHITE)
    # Each wing is turned about its own centre; both begin at the tip.
    reach = (wing - thick) / 2 * 2 ** -0.5
    for direction, rotation in ((-1, 45), (1, 315)):
        centre_x, centre_y = middle + direction * reach, tip + thick / 2 + reach
        sign.fill(centre_x - thick / 2, centre_y - wing / 2, thick, wing, WHITE, rotation=rotation)


def _level_bars(sign, level):
    at = sign.dots
    count, width, gap, bottom = 5, 6, 1.2, 44.8
    for index in range(count):
        height = 4.4 + index * 2.6
        x = RIGHT - count * width - (count - 1) * gap + index * (width + gap)
        place = at(x), at(bottom) - at(height), at(width), at(height)
        if index + 1 > level:
            sign.fill(*place, BLUE, DENSE[5])
        else:
            sign.fill(*place, BLUE)
        sign.frame(*place, BLACK if index + 1 == level else BLUE, 4)
