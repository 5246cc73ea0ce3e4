# SPDX-License-Identifier: BSD-3-Clause
"""High voltage: black and yellow between two bands of hazard stripes."""
from label import LINEAR, WHITE, Label

BLACK, YELLOW = "#000000", "#ffcc00"

WIDTH, HEIGHT = 150, 100
MARGIN = 4
BAND = 11  # the height of a band of stripes


def build():
    sign = Label(WIDTH, HEIGHT, 300, {"black": BLACK, "yellow": YELLOW})
    _hazard_band(sign, MARGIN)
    _hazard_band(sign, HEIGHT - MARGIN - BAND)
    _clip_to_bands(sign)
    _header(sign)
    _pictogram(sign, 29.5, 64.5)
    _message(sign)
    _frame(sign, 1.5, 5)
    return sign


def _hazard_band(sign, top):
    at = sign.dots
    sign.fill(at(MARGIN), at(top), at(WIDTH - 2 * MARGIN), at(BAND), YELLOW)
    pitch, stripe, length = 14.2, 7.1, 30  # across the page; a stripe is as wide as the gap beside it
    for index in range(11):
        centre = MARGIN + index * pitch
        thickness = stripe * 2 ** -0.5
        sign.fill(at(centre) - at(thickness) / 2, at(top + BAND / 2) - at(length) / 2, at(thickness), at(length),
                  BLACK, rotation=45)


def _clip_to_bands(sign):
    """The stripes are longer than their bands; paper covers what sticks out."""
    at = sign.dots
    overhang = 12
    inner = MARGIN + BAND
    cover = [(-overhang, -overhang, WIDTH + 2 * overhang, overhang + MARGIN),
             (-overhang, inner, WIDTH + 2 * overhang, HEIGHT - 2 * inner),
             (-overhang, HEIGHT - MARGIN, WIDTH + 2 * overhang, overhang + MARGIN),
             (-overhang, -overhang, overhang + MARGIN, HEIGHT + 2 * overhang),
             (WIDTH - MARGIN, -overhang, overhang + MARGIN, HEIGHT + 2 * overhang)]
    for x, y, width, height in cover:
        sign.fill(at(x), at(y), at(x + width) - at(x), at(y + height) - at(y), WHITE)


def _header(sign):
    at = sign.dots
    x, y, width, height = at(MARGIN), at(18), at(WIDTH - 2 * MARGIN), at(25)
    sign.fill(x, y, width, height, YELLOW, LINEAR)
    sign.fill(x, y + height, width, at(1), BLACK)
    sign.centred_text(x, at(20.4), width, at(2.8), "WARNING", BLACK, bold=at(0.4))


def _pictogram(sign, x, y):
    """A black diamond with a yellow line along its edge and an exclamation mark."""
    at = sign.dots

    def square(side):
        return at(x) - at(side) / 2, at(y) - at(side) / 2, at(side), at(side)

    sign.fill(*square(25), BLACK, rotation=45)
    sign.frame(*square(22.6), YELLOW, at(0.8), rotation=45)
    for step, width in enumerate((4.2, 3.9, 3.6, 3.3, 3.0, 2.7, 2.4)):
        sign.fill(at(x) - at(width) / 2, at(y - 9.5) + step * at(1.7), at(width), at(1.7), YELLOW)
    sign.fill(at(x) - at(3.6) / 2, at(y + 4.6), at(3.6), at(3.6), YELLOW)


def _message(sign):
    """Two lines of one width that end at the right margin."""
    at = sign.dots
    cell, bold = at(1.3), at(0.18)
    width, _ = sign.text_size(cell, "HIGH VOLTAGE", bold)
    x = at(WIDTH - MARGIN) - width
    sign.text(x, at(49.3), cell, "HIGH VOLTAGE", BLACK, bold)
    sign.fill(x, at(62.5), width, at(17.5), BLACK)
    sign.centred_text(x, at(65.5), width, at(1.6), "KEEP OUT", YELLOW, bold=at(0.2))


def _frame(sign, inset, pen):
    at = sign.dots
    sign.frame(at(inset), at(inset), at(WIDTH - 2 * inset), at(HEIGHT - 2 * inset), BLACK, pen)
