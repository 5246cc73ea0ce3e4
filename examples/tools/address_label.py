# SPDX-License-Identifier: BSD-3-Clause
"""A parcel to Bangkok: its address in Latin, Thai and Arabic letters, and how it has to be carried."""
from label import LEADING, MITRE, RIGHT_FILLED, WHITE, Font, Label
from pictogram import Pictogram

BLACK, RED = "#000000", "#d7141a"

WIDTH, HEIGHT = 100, 62
LEFT_EDGE, RIGHT_EDGE = 4.2, 95.8
COLUMN = 72  # where the column of what the carrier has to know begins
SCRIPTS = 39.6  # where the address in the other scripts begins

SMALL, PLAIN, STRONG = Font(6), Font(10), Font(10, bold=True)
HEADING = Font(6, bold=True)
NAME, CITY = Font(15, bold=True), Font(18, bold=True)
ARABIC = "DejaVu Sans"


def build():
    label = Label(WIDTH, HEIGHT, 300, {"black": BLACK, "red": RED})
    black = Pictogram(label, 0, 0, 1, BLACK)
    red = Pictogram(label, 0, 0, 1, RED)
    black.open_box(1.5, 1.5, WIDTH - 3, HEIGHT - 3, 0.5, 2.5)
    _sender(black)
    _address(black, red)
    _rule(black, LEFT_EDGE, RIGHT_EDGE, SCRIPTS)
    _thai(black, red)
    _arabic(black, red)
    _service(red)
    _routing(black)
    _handling(black)
    return label


def _rule(page, start, end, y, thick=0.25):
    page.line((start, y), (end, y), thick)


def _sender(page):
    page.words(LEFT_EDGE, 6.2, "Nordlicht Books · Hafenstraße 12 · 20457 Hamburg · Germany", SMALL)
    _rule(page, LEFT_EDGE, COLUMN - 3, 7.6)


def _address(black, red):
    red.words(LEFT_EDGE, 11.2, "TO", HEADING)
    black.words(LEFT_EDGE, 16.8, "Three Rivers Library", NAME)
    black.words(LEFT_EDGE, 21.6, "Ms Arunee Srisai, Acquisitions", PLAIN)
    black.words(LEFT_EDGE, 25.9, "18 Charoen Krung Road, Bang Rak", PLAIN)
    black.words(LEFT_EDGE, 32.4, "BANGKOK 10500", CITY)
    black.words(LEFT_EDGE, 36.9, "THAILAND", STRONG)


def _thai(black, red):
    red.words(LEFT_EDGE, SCRIPTS + 3.8, "ถึง", HEADING)
    black.words(LEFT_EDGE, SCRIPTS + 8.7, "ห้องสมุดสามแม่น้ำ", STRONG)
    black.words(LEFT_EDGE, SCRIPTS + 13, "18 ถนนเจริญกรุง เขตบางรัก", PLAIN)
    black.words(LEFT_EDGE, SCRIPTS + 17.3, "กรุงเทพฯ 10500", PLAIN)


def _arabic(black, red):
    """From right to left."""
    street = "١٨ شارع تشارون كرونغ\nبانغ راك، بانكوك ١٠٥٠٠"
    lines = ((red, 3.8, "إلى", Font(6, True, ARABIC), 3.7),
             (black, 8.7, "مكتبة الأنهار الثلاثة", Font(10.5, True, ARABIC), 34.6),
             (black, 13, street, Font(10.5, False, ARABIC), 36.5))
    for page, baseline, text, font, width in lines:
        page.words(RIGHT_EDGE - width, SCRIPTS + baseline, text, font, width, itemAlignment=LEADING)


def _service(red):
    red.box(COLUMN, 4, RIGHT_EDGE - COLUMN, 7, 1)
    red.part(0, 0, color=WHITE).words(COLUMN + 2, 9, "PRIORITY", Font(12, bold=True), RIGHT_EDGE - COLUMN - 4)


def _routing(black):
    black.box(COLUMN, 12.6, RIGHT_EDGE - COLUMN, 13.4, 1)
    white = black.part(0, 0, color=WHITE)
    white.words(COLUMN + 1.8, 22, "BKK 4", Font(20, bold=True), RIGHT_EDGE - COLUMN - 3.6)


def _handling(black):
    """This side up; glass; which of two parcels, and its weight."""
    _this_side_up(black.part(COLUMN, 27.6))
    _glass(black.part(COLUMN + 10, 27.6))
    for baseline, text, font, width in ((31.9, "1 / 2", STRONG, 7.4), (37, "4.2 kg", SMALL, 5.9)):
        black.words(RIGHT_EDGE - width, baseline, text, font, width)


def _this_side_up(place):
    for x in (1.9, 6.1):
        place.line((x, 7.6), (x, 1.4), 0.7, RIGHT_FILLED, join=MITRE)
    place.box(0, 8.6, 8, 0.8)


def _glass(place):
    place.box(0, 0, 5, 2.2)
    place.wedge(2.5, 2.2, 5, 180, 180)
    place.box(2.1, 4, 0.8, 4.8)
    place.box(0.5, 8.6, 4, 0.8)
