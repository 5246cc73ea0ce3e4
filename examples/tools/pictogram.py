# SPDX-License-Identifier: BSD-3-Clause
"""Pictograms composed of shapes, on a grid of their own."""
import math

import blockfont
from label import (ELLIPSE, FLAT_CAP, LEFT_BAR, LEFT_FILLED, MITRE, PIE, RECTANGLE, RIGHT_BAR, RIGHT_FILLED,
                   ROUND, ROUND_CAP, ROUNDED_RECTANGLE, SOLID_LINE, TRANSPARENT, Pen)

_DEGREE = 16  # pies count in sixteenths


class Pictogram:
    """Draws in units of a grid whose origin is somewhere on a label, in one colour unless told otherwise."""

    def __init__(self, sign, x, y, unit, color):
        """x, y and the length of a unit are in millimetres."""
        self.sign = sign
        self.color = color
        self._x, self._y, self._unit = x, y, unit

    def part(self, x, y, unit=1.0, color=None):
        """A grid within this one."""
        return Pictogram(self.sign, self._x + x * self._unit, self._y + y * self._unit, self._unit * unit,
                         color or self.color)

    def dots(self, length):
        return self.sign.dots(length * self._unit)

    def point(self, x, y):
        return self.sign.dots(self._x + x * self._unit), self.sign.dots(self._y + y * self._unit)

    def shape(self, kind, x, y, width, height, fill=None, pen=None, **own):
        """Both corners are on whole dots, so that shapes that touch on the grid touch on the label."""
        left, top = self.point(x, y)
        right, bottom = self.point(x + width, y + height)
        pens = {"pen": pen} if pen else {}
        self.sign.shape(kind, (left, top, right - left, bottom - top), fill or self.color, **pens, **own)

    def box(self, x, y, width, height, radius=0.0, **own):
        if radius:
            rounding = self.dots(radius)
            self.shape(ROUNDED_RECTANGLE, x, y, width, height, roundingRadiusX=rounding,
                       roundingRadiusY=rounding, **own)
        else:
            self.shape(RECTANGLE, x, y, width, height, **own)

    def open_box(self, x, y, width, height, thick, radius=0.0):
        self.box(x, y, width, height, radius, fill=TRANSPARENT, pen=self.pen(thick))

    def disc(self, x, y, diameter, **own):
        """An ellipse about its middle."""
        self.shape(ELLIPSE, x - diameter / 2, y - diameter / 2, diameter, diameter, **own)

    def ring(self, x, y, diameter, thick):
        self.disc(x, y, diameter, fill=TRANSPARENT, pen=self.pen(thick))

    def wedge(self, x, y, diameter, start, span, circle=False, **own):
        """A pie about its middle; degrees go anticlockwise from three o'clock."""
        self.shape(PIE, x - diameter / 2, y - diameter / 2, diameter, diameter, drawCircle=circle,
                   startPieAngle=round(start * _DEGREE), spanPieAngle=round(span * _DEGREE), **own)

    def pen(self, thick, style=SOLID_LINE, cap=FLAT_CAP, join=ROUND, color=None):
        return Pen(color or self.color, self.dots(thick), style, cap, join)

    def line(self, start, end, thick, ends=0, **pen):
        self.sign.line(self.point(*start), self.point(*end), self.pen(thick, **pen), ends)

    def limb(self, thick, *points):
        """Lines from joint to joint."""
        for start, end in zip(points, points[1:]):
            self.line(start, end, thick, cap=ROUND_CAP)

    def words(self, x, baseline, text, font, width=None, **own):
        """A label text, stretched to the width if there is one; own keys are those of the item."""
        left, base = self.point(x, baseline)
        place = left, base - self.sign.dots(font.ascent)
        widths = (self.dots(width),) if width else ()
        self.sign.label_text(place + widths, text, font, self.color, **own)

    def paragraphs(self, x, y, width, height, html, **own):
        """A box of rich text."""
        self.sign.rich_text((*self.point(x, y), self.dots(width), self.dots(height)), html, **own)

    def barcode(self, x, y, size, symbology, text, **own):
        """size is the width and the height in dots: those of a module times their number."""
        self.sign.barcode((*self.point(x, y), *size), symbology, text, self.color, **own)

    def text(self, x, y, cell, text, bold=0.0):
        self.sign.text(*self.point(x, y), self.dots(cell), text, self.color, self.dots(bold))

    def centred_text(self, x, y, width, cell, text, bold=0.0):
        left, top = self.point(x, y)
        self.sign.centred_text(left, top, self.dots(width), self.dots(cell), text, self.color,
                               self.dots(bold))


def person(pictogram):
    """A standing figure, 8 wide and 20 high."""
    pictogram.disc(4, 2.2, 4.4)
    pictogram.box(0, 5, 8, 7.6, radius=2)
    pictogram.box(1.2, 9, 2.5, 11, radius=1)
    pictogram.box(4.3, 9, 2.5, 11, radius=1)


def exclamation_mark(pictogram):
    """5 wide and 20 high: a wedge whose round outline blunts its corners, and a dot."""
    pictogram.wedge(2.5, 12, 24, 81, 18, pen=pictogram.pen(2))
    pictogram.disc(2.5, 17.4, 5.2)


def drop(pictogram, tip, middle, diameter):
    """A disc that runs out into a tip: the wedge between the tip's tangents."""
    run, rise = middle[0] - tip[0], tip[1] - middle[1]
    distance = math.hypot(run, rise)
    opening = math.asin(diameter / 2 / distance)
    reach = distance * math.cos(opening)
    direction = math.atan2(rise, run)
    pictogram.wedge(*tip, 2 * reach, math.degrees(direction - opening), math.degrees(2 * opening))
    pictogram.disc(*middle, diameter)


def dimension(pictogram, start, end, y, cell, text):
    """A horizontal dimension line from bar to bar, with its text in the middle."""
    line, bar = 0.8, 1.2
    half_gap = (blockfont.columns(text) / 2 + 3) * cell
    middle = (start + end) / 2
    sides = (start, 1, LEFT_BAR, LEFT_FILLED), (end, -1, RIGHT_BAR, RIGHT_FILLED)
    for place, inwards, bar_end, head in sides:
        stub = place, place + 0.5 * inwards
        shaft = place + 1.5 * inwards, middle - half_gap * inwards
        for ends, thick, decoration in ((stub, bar, bar_end), (shaft, line, head)):
            pictogram.line((min(ends), y), (max(ends), y), thick, decoration, join=MITRE)
    pictogram.centred_text(start, y - blockfont.HEIGHT * cell / 2, end - start, cell, text, bold=0.1)
