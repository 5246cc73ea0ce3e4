# SPDX-License-Identifier: BSD-3-Clause
"""The spine of a binder of maps: what is in it, from top to bottom, and which volume it is."""
from label import DIAMOND, LINEAR, OCTAGON, WHITE, Font, Label
from pictogram import Pictogram

BLACK, BLUE = "#000000", "#0057b8"

WIDTH, HEIGHT = 30, 150
HEAD, FOOT = 34, 116  # where the compass ends, and the water begins
SERIF = "DejaVu Serif"


def build():
    label = Label(WIDTH, HEIGHT, 300, {"black": BLACK, "blue": BLUE})
    blue = Pictogram(label, 0, 0, 1, BLUE)
    black = Pictogram(label, 0, 0, 1, BLACK)
    blue.box(0, 0, WIDTH, HEAD)
    _compass(blue.part(WIDTH / 2, 19, color=WHITE))
    _title(black, blue)
    _water(blue)
    _volume(black.part(WIDTH / 2, 138))
    return label


def _compass(middle):
    """A rose of four long points over four short ones, in a ring, with its north."""
    middle.ring(0, 0, 21, 0.6)
    for length, width, turn in ((13, 3.2, 45.0), (19, 4.4, 0.0)):
        for across in (0.0, 90.0):
            middle.shape(DIAMOND, -width / 2, -length / 2, width, length, rotation=turn + across)
    middle.part(0, 0, color=BLUE).disc(0, 0, 2.2)
    middle.words(-1.7, -11.7, "N", Font(10, True, SERIF), 3.4)


def _title(black, blue):
    """The title stands; what it covers lies along the spine, from the top of its first letter on."""
    place = (*black.point(3.6, HEAD + 4), black.dots(11), black.dots(FOOT - HEAD - 8))
    black.sign.label_text(place, "ATLAS", Font(34, True, SERIF), BLACK, itemTextVertical=True)
    top, bottom = HEAD + 6.7, FOOT - 6.7
    blue.box(16.7, top, 0.5, bottom - top)
    _along(blue, 21.6, top, "Rivers and canals of the north", Font(14, bold=True), 67)
    _along(black, 17, top, "Sheets 41 – 68 · 1 : 25 000", Font(11), 50)


def _along(page, x, y, text, font, length):
    """Downwards from a place."""
    page = page.part(x, y)
    # Turned about its centre.
    shift = (font.line_height - length) / 2
    left, top = page.point(shift, -shift)
    page.sign.label_text((left, top, page.dots(length)), text, font, page.color, itemRotation=90)


def _water(page):
    page.box(0, FOOT, WIDTH, HEIGHT - FOOT, style=LINEAR)


def _volume(middle):
    middle.shape(OCTAGON, -9, -9, 18, 18)
    middle.part(0, 0, color=WHITE).words(-4.6, 4.7, "7", Font(37, True, SERIF), 9.2)
