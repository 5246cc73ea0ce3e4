# SPDX-License-Identifier: BSD-3-Clause
"""At the door of a gas store: what is in there, how far fire must stay away, and what to do."""
import math

from label import (BEVEL, DIAMOND, EQUILATERAL_TRIANGLE, HEXAGON, LINEAR, MITRE, OCTAGON, PENTAGON,
                   RIGHT_TRIANGLE, TRANSPARENT, WHITE, Label)
from pictogram import Pictogram, dimension, drop, exclamation_mark

BLACK, RED, YELLOW = "#000000", "#d7141a", "#ffcc00"

WIDTH, HEIGHT = 210, 297
MARGIN, GUTTER = 10, 6
CONTENT = WIDTH - 2 * MARGIN
CORNER = 4
HEADER, STRIPES, DIAMONDS, HEADLINE = (10, 46), (60, 8), (75, 61), 143
ZONE, RULES, FOOTER = 170, (211, 43), (269, 18)

_PITCH = (CONTENT - DIAMONDS[1]) / 2  # from diamond to diamond
_QUARTER = (CONTENT - 3 * GUTTER) / 4


def build():
    sign = Label(WIDTH, HEIGHT, 300, {"black": BLACK, "red": RED, "yellow": YELLOW})
    page = Pictogram(sign, 0, 0, 1, BLACK)
    page.open_box(4, 4, WIDTH - 8, HEIGHT - 8, 1.4, 8)
    _header(page.part(MARGIN, HEADER[0]))
    _stripes(page.part(MARGIN, STRIPES[0]), STRIPES[1])
    for index, pictogram in enumerate((_flame, _compressed_gas, _irritant)):
        _diamond(page.part(WIDTH / 2 + (index - 1) * _PITCH, DIAMONDS[0] + DIAMONDS[1] / 2), pictogram)
    page.centred_text(MARGIN, HEADLINE, CONTENT, 2.46, "FLAMMABLE GAS", bold=0.45)
    _zone(page.part(MARGIN, ZONE))
    rules = (("STAFF ONLY", _stop), ("GAS ZONE 2", _explosive), ("NOT INSIDE", _not_in_houses),
             ("SHUT VALVE", _valve))
    for index, rule in enumerate(rules):
        _rule(page.part(MARGIN + index * (_QUARTER + GUTTER), RULES[0]), *rule)
    _footer(page.part(MARGIN, FOOTER[0]))
    return sign


def _header(band):
    height = HEADER[1]
    band.part(0, 0, color=RED).box(0, 0, CONTENT, height, CORNER)
    _warning(band.part(5, 3), 46, 0.64, _attention)
    band.part(0, 0, color=WHITE).centred_text(52, 10.4, CONTENT - 56, 3.6, "DANGER", bold=0.3)


def _warning(place, side, middle, draw):
    """A triangle with round corners, and what is drawn about a middle, which is a part of its height."""
    tall = side * 3 ** 0.5 / 2
    place.shape(EQUILATERAL_TRIANGLE, 0, 0, side, tall, YELLOW, place.pen(side * 0.07))
    draw(place.part(side / 2, tall * middle))


def _stripes(band, height):
    """Each stripe is a parallelogram of two right triangles."""
    count = round(CONTENT / height / 2)
    step = CONTENT / count / 2
    band.part(0, 0, color=YELLOW).box(0, 0, CONTENT, height)
    for index in range(count):
        x = index * 2 * step
        band.shape(RIGHT_TRIANGLE, x, 0, step, height, itemHorizontalMirror=1)
        band.shape(RIGHT_TRIANGLE, x + step, 0, step, height, itemVerticalMirror=1)


def _diamond(middle, pictogram):
    side = DIAMONDS[1]
    middle.shape(DIAMOND, -side / 2, -side / 2, side, side, WHITE, middle.pen(3.4, join=MITRE, color=RED))
    pictogram(middle)


def _flame(middle):
    flame = middle.part(-15, -20)
    tongues = ((16.5, -1), (15, 19.5), 20), ((6.2, 7.5), (10.2, 19), 10), ((24, 6), (19.8, 19), 10)
    for tip, heart, diameter in tongues:
        drop(flame, tip, heart, diameter)
    drop(flame.part(0, 0, color=WHITE), (15.6, 11.5), (15, 22), 8.6)
    flame.box(6.5, 31.6, 17, 2.4)


def _gas_bottle(middle):
    bottle = middle.part(-7, -19)
    bottle.box(1.5, 0, 11, 3, radius=1.5)
    bottle.box(5.2, 2, 3.6, 6)
    bottle.disc(7, 13, 14)
    bottle.box(0, 10, 14, 28, radius=2.5)
    bottle.part(0, 0, color=WHITE).box(2.8, 14, 1.8, 19, radius=0.9)


def _compressed_gas(middle):
    _gas_bottle(middle.part(0, 0, 0.92))


def _irritant(middle):
    _attention(middle.part(0, 0, 1.6))


def _attention(middle):
    exclamation_mark(middle.part(-2.5, -10))


def _zone(zone):
    """The danger fades with the distance from the bottle."""
    left, height = 24, 15
    _gas_bottle(zone.part(11, 15.2, 0.8))
    length = CONTENT - left
    # A gradient becomes darker downwards: the bar stands until it is turned.
    middle = zone.part(left + length / 2, height / 2, color=RED)
    middle.box(-height / 2, -length / 2, height, length, style=LINEAR, rotation=90.0)
    dimension(zone, left + 0.6, CONTENT - 0.6, 26, 1, "KEEP FIRE 5 M AWAY")


def _rule(cell, caption, pictogram):
    pictogram(cell, _QUARTER)
    cell.centred_text(0, RULES[1] + 4, _QUARTER, 0.7, caption, bold=0.08)


def _stop(cell, side):
    cell.shape(OCTAGON, 0, 0, side, side, RED)
    inset = 1.6
    line = cell.pen(1.2, join=BEVEL, color=WHITE)
    cell.shape(OCTAGON, inset, inset, side - 2 * inset, side - 2 * inset, TRANSPARENT, line)
    cell.part(0, 0, color=WHITE).centred_text(0, side / 2 - 4.75, side, 1.3, "STOP", bold=0.2)


def _explosive(cell, side):
    top = side * (1 - 3 ** 0.5 / 2)
    _warning(cell.part(0, top), side, 0.7, _atmosphere)


def _atmosphere(middle):
    middle.centred_text(-8, -4.5, 16, 1.25, "EX", bold=0.25)


def _not_in_houses(cell, side):
    """A house, crossed out."""
    house = cell.part(side / 2, side / 2, side / 100)
    house.shape(PENTAGON, -28, -32, 56, 52)
    house.box(-28, -12.2, 56, 36.2)
    house.part(0, 0, color=WHITE).box(-17, 2, 13, 22)
    red = cell.part(0, 0, color=RED)
    red.ring(side / 2, side / 2, side, 4)
    reach = (side / 2 - 2) * 2 ** -0.5
    red.line((side / 2 - reach, side / 2 - reach), (side / 2 + reach, side / 2 + reach), 4)


def _valve(cell, side):
    """A hand wheel on a hexagon."""
    tall = side * 3 ** 0.5 / 2
    cell.shape(HEXAGON, 0, (side - tall) / 2, side, tall, BLACK, cell.pen(3, join=BEVEL))
    wheel = cell.part(side / 2, side / 2, color=WHITE)
    wheel.ring(0, 0, side * 0.6, 3)
    for degrees in (30, 150, 270):
        angle = math.radians(degrees)
        wheel.line((0, 0), (side * 0.27 * math.cos(angle), side * 0.27 * math.sin(angle)), 3)
    wheel.disc(0, 0, 8)


def _footer(band):
    height = FOOTER[1]
    band.box(0, 0, CONTENT, height, CORNER)
    white = band.part(0, 0, color=WHITE)
    white.centred_text(0, height / 2 - 4.2, CONTENT, 1.2, "IN CASE OF FIRE DIAL 112", bold=0.1)
