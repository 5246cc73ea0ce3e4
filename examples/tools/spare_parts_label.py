# SPDX-License-Identifier: BSD-3-Clause
"""On a crate of ball bearings: every kind of item, on a layer for the form, one for the goods, one for the codes."""
import math

from label import (DATA_MATRIX, DIAMOND, ELLIPSE, EQUILATERAL_TRIANGLE, GS1_128, HEXAGON, LEFT_FILLED,
                   OCTAGON, PENTAGON, PIE, QR_CODE, RIGHT_FILLED, RIGHT_TRIANGLE, TRANSPARENT, WHITE, Font, Label)
from pictogram import Pictogram

BLACK, RED = "#000000", "#d7141a"

WIDTH, HEIGHT = 148, 105  # A6, lying
EDGE = 4  # of the frame
INSIDE = EDGE + 3  # of what is in it
HEADER = 15
GOODS, SIGNS = 25, 67  # where the rows begin
SIGN = 16  # the side of a sign
PITCH = 20.5  # from sign to sign
CODES = 112  # where the column of codes begins
CORNER = 5  # the sides of the triangles in the corners
PIXELS_PER_MM = 4

FLAME = ('<svg width="40" height="40"><path d="M20 3c2 8 12 13 12 23a12 12 0 0 1-24 0c0-5 3-8 5-11c1 4 2 5 4 6'
         'c-1-7 0-13 3-18z"/></svg>')
GEAR = """<svg xmlns="http://www.w3.org/2000/svg" width="60" height="60">
<g fill="#d7141a"><path id="tooth" d="M26 2h8l2 10H24z"/><use href="#tooth" transform="rotate(45 30 30)"/>
<use href="#tooth" transform="rotate(90 30 30)"/><use href="#tooth" transform="rotate(135 30 30)"/>
<use href="#tooth" transform="rotate(180 30 30)"/><use href="#tooth" transform="rotate(225 30 30)"/>
<use href="#tooth" transform="rotate(270 30 30)"/><use href="#tooth" transform="rotate(315 30 30)"/>
<circle cx="30" cy="30" r="21"/></g><circle cx="30" cy="30" r="14" fill="#ffffff"/>
<path d="M22 38V22l16 16V22" fill="none" stroke="#000000" stroke-width="4"/></svg>
"""


def build():
    label = Label(WIDTH, HEIGHT, 300, {"black": BLACK, "red": RED})
    page = Pictogram(label, 0, 0, 1, BLACK)
    with label.layer("form"):
        _form(page)
    with label.layer("goods"):
        _goods(page.part(INSIDE, GOODS))
        _signs(page.part(INSIDE, SIGNS))
    with label.layer("codes"):
        _codes(page.part(CODES, GOODS))
    return label


def _form(page):
    """The frame, a triangle in each corner, the head and the lines between the rows."""
    page.open_box(EDGE, EDGE, WIDTH - 2 * EDGE, HEIGHT - 2 * EDGE, 0.8, 2)
    far_x, far_y = WIDTH - INSIDE - CORNER, HEIGHT - INSIDE - CORNER
    with page.sign.group(*page.point(INSIDE, INSIDE)):
        for right in (0, 1):
            for top in (0, 1):
                page.shape(RIGHT_TRIANGLE, far_x if right else INSIDE, INSIDE if top else far_y, CORNER, CORNER, RED,
                           itemHorizontalMirror=right, itemVerticalMirror=top)
    page.box(INSIDE + CORNER + 2, INSIDE, WIDTH - 2 * (INSIDE + CORNER + 2), HEADER)
    page.part(0, 0, color=WHITE).words(INSIDE + CORNER + 6, INSIDE + 10.6, "SPARE PARTS 6204-2RS",
                                       Font(26, bold=True), WIDTH - 2 * (INSIDE + CORNER + 6))
    page.line((INSIDE, SIGNS - 3), (CODES - 4, SIGNS - 3), 0.6)
    page.line((CODES - 2, GOODS), (CODES - 2, HEIGHT - INSIDE - CORNER - 2), 0.6)


def _goods(row):
    row.sign.picture((*row.point(0, 0), row.dots(32), row.dots(36)), _ball(32, 36))
    style = f"style='font-family:Loma; {row.sign.font_size(10.5)}; line-height:100%'"
    facts = "".join(f"<li {style}>{fact}</li>" for fact in (
        "24 ball bearings", "20 x 47 x 14 mm", f"<b style='color:{RED}'>greased for life</b>"))
    row.paragraphs(34, -1, 46, 22, f"<ul style='margin-left:14px'>{facts}</ul>")
    row.sign.drawing((*row.point(82, 0), row.dots(20), row.dots(20)), GEAR)
    _badge(row.part(78, 24))
    _gauge(row.part(37, 22))


def _badge(place):
    """A group that is turned as a whole."""
    with place.sign.group(*place.point(0, 0), itemRotation=348):
        place.part(0, 0, color=RED).shape(ELLIPSE, 0, 0, 24, 11)
        place.part(0, 0, color=WHITE).words(4, 7.2, "NEW SEAL", Font(11, bold=True), 16)


def _gauge(place):
    """How full the crate is, as a pie, and what that means, in a group of their own."""
    with place.sign.group(*place.point(0, 0)):
        place.wedge(7, 7, 14, 90, -270, circle=True, pen=place.pen(0.5))
        place.words(17, 6.4, "75 % full", Font(13, bold=True))
        place.words(17, 12, "18 of 24 boxes", Font(9))


def _signs(row):
    """A group of groups, one for each sign, each turned as it is usual for it."""
    signs = (_flammable, _warning, _stop, _nut, _indoors)
    with row.sign.group(*row.point(0, 0)):
        for index, sign in enumerate(signs):
            sign(row.part(index * PITCH, 0))
    captions = ("flammable", "heavy", "no forklift", "M 10", "store inside")
    for index, caption in enumerate(captions):
        row.words(index * PITCH, SIGN + 5, caption, Font(8))
    # As long as the pallet is.
    row.line((1, 24), (5 * PITCH - SIGN / 4, 24), 0.5, ends=LEFT_FILLED | RIGHT_FILLED)


def _flammable(sign):
    with sign.sign.group(*sign.point(0, 0)):
        sign.shape(DIAMOND, 0, 0, SIGN, SIGN, RED, sign.pen(0.5))
        sign.sign.symbol((*sign.point(4, 3.4), sign.dots(8), sign.dots(8)), FLAME, BLACK)


def _warning(sign):
    red = sign.part(0, 0, color=RED)
    with sign.sign.group(*sign.point(0, 0)):
        sign.shape(EQUILATERAL_TRIANGLE, 0, 1, SIGN, 13.9, WHITE, red.pen(1.2))
        sign.wedge(8, 12, 14, 80, 20)
        sign.disc(8, 12.4, 1.9)


def _stop(sign):
    with sign.sign.group(*sign.point(0, 0)):
        sign.shape(OCTAGON, 0, 0, SIGN, SIGN, RED)
        sign.part(0, 0, color=WHITE).words(1.8, 9.9, "STOP", Font(15, bold=True), 12.4)


def _nut(sign):
    """Two groups deep: the thread is a group in the group of the nut."""
    with sign.sign.group(*sign.point(0, 1), itemRotation=15):
        sign.shape(HEXAGON, 0, 1, SIGN, 13.86)
        with sign.sign.group(*sign.point(3.5, 3.4)):
            white = sign.part(0, 0, color=WHITE)
            white.disc(8, 7.9, 9)
            sign.shape(PIE, 4, 3.9, 8, 8, TRANSPARENT, sign.pen(0.5), startPieAngle=0, spanPieAngle=270 * 16,
                       itemHorizontalMirror=1)


def _indoors(sign):
    with sign.sign.group(*sign.point(0, 0)):
        sign.shape(PENTAGON, 0, 0, SIGN, SIGN - 0.8)
        sign.part(0, 0, color=WHITE).box(5.5, 7.5, 5, 7.7)


def _codes(column):
    """What the scanner reads: what it is, how many, and where to find more."""
    length, height = 200 * 4, column.dots(14)  # dots: 200 modules of 4
    middle = column.dots(7), column.dots(34.5)  # below the head: ten free modules
    x, y = column.point(0, 0)
    column.sign.barcode((x + middle[0] - length / 2, y + middle[1] - height / 2, length, height), GS1_128,
                        "[01]04012345678901[10]L26A", BLACK, itemRotation=90)
    column.barcode(16.5, 0, (14 * 10, 14 * 10), DATA_MATRIX, "6204-2RS/24")
    column.barcode(16, 16, (25 * 6, 25 * 6), QR_CODE, "https://parts.example.org/6204")
    # The number can be read from the shelf above as well.
    column.words(16.5, 44, "6204", Font(14, bold=True), itemRotation=180)
    column.words(16.5, 51, "6204", Font(14, bold=True))


def _ball(width, height):
    """A ball of steel, as rows of pixels."""
    columns, rows = width * PIXELS_PER_MM, height * PIXELS_PER_MM
    return [b"".join(_pixel((x + 0.5) / PIXELS_PER_MM - width / 2, (y + 0.5) / PIXELS_PER_MM - height / 2)
                     for x in range(columns)) for y in range(rows)]


def _pixel(x, y):
    radius = 14
    if math.hypot(x, y) < radius:
        z = math.sqrt(radius * radius - x * x - y * y) / radius
        light = max(0.0, (-0.5 * x - 0.6 * y) / radius + 0.62 * z)
        shine = light ** 12
        horizon = 0.12 * math.sin(9 * y / radius) * (1 - z)
        values = [0.15 + 0.75 * light + shine + horizon] * 3
    else:
        shadow = math.exp(-((x - 3) / 12) ** 2 - ((y - 15) / 3) ** 2)
        tone = 0.75 - 0.5 * shadow
        values = [tone + 0.12, tone * 0.45, tone * 0.42]
    return bytes(min(255, max(0, round(255 * value))) for value in values)
