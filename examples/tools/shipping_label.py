# SPDX-License-Identifier: BSD-3-Clause
"""A parcel on its way: where to, how fast, and everything that the belts of three carriers have to know."""
from label import GS1_128, MAXICODE, PDF417, WHITE, Font, Label
from pictogram import Pictogram

BLACK, RED = "#000000", "#d7141a"

WIDTH, HEIGHT = 100, 150
EDGE = 4
BAND, SORTING, CONTENTS, PARCEL = 18, 62, 98, 118  # where the parts begin

SMALL, PLAIN, STRONG = Font(7), Font(10), Font(10, bold=True)
NAME, CITY, ROUTE = Font(14, bold=True), Font(20, bold=True), Font(34, bold=True)

# Of the carrier 4012345 the parcel 87654321, with its check digit.
PARCEL_NUMBER = "340123458765432104"
CONTENTS_TEXT = "NORDLICHT BOOKS;HAMBURG;PARCEL 1 OF 2;4.20 KG;12 BOOKS;NO CUSTOMS;ORDER 2026-118823"


def build():
    label = Label(WIDTH, HEIGHT, 300, {"black": BLACK, "red": RED})
    black = Pictogram(label, 0, 0, 1, BLACK)
    red = Pictogram(label, 0, 0, 1, RED)
    _speed(red)
    _address(black, red)
    for y in (SORTING, CONTENTS, PARCEL):
        black.line((0, y), (WIDTH, y), 0.5)
    _sorting(black)
    _contents(black)
    _parcel(black)
    return label


def _speed(band):
    band.box(0, 0, WIDTH, BAND)
    white = band.part(0, 0, color=WHITE)
    white.words(EDGE, 13, "EXPRESS", Font(32, bold=True), 56)
    white.words(68, 8.4, "by noon", Font(12, bold=True))
    white.words(68, 14, "Tue 24 Nov", Font(12, bold=True))


def _address(black, red):
    black.words(EDGE, BAND + 4.6, "From: Nordlicht Books, Hafenstraße 12, 20457 Hamburg", SMALL)
    red.words(EDGE, BAND + 10.4, "TO", STRONG)
    black.words(EDGE + 9, BAND + 10.8, "Librería Tres Ríos", NAME)
    black.words(EDGE + 9, BAND + 17, "Sra. Inés Ortega", PLAIN)
    black.words(EDGE + 9, BAND + 22, "Calle de la Encina 5, 2.º B", PLAIN)
    black.words(EDGE + 9, BAND + 31, "28004 MADRID", CITY)
    black.words(EDGE + 9, BAND + 38, "SPAIN", STRONG)


def _sorting(page):
    """The MaxiCode is as large as its standard has it: an inch."""
    page.barcode(EDGE, SORTING + 4.5, (330, 317), MAXICODE, "MAD1 28004 ES EXPRESS 34012345 87654321")
    page.words(40, SORTING + 16, "MAD 1", ROUTE)
    page.words(40, SORTING + 24, "Sort 7 · Belt C · Gate 12", PLAIN)
    page.words(40, SORTING + 30, "1 of 2     4.2 kg", PLAIN)


def _contents(page):
    page.barcode(EDGE + 6, CONTENTS + 3, (154 * 6, page.dots(14)), PDF417, CONTENTS_TEXT, barcodeSecurityLevel=3)


def _parcel(page):
    """Modules of half a millimetre: read from the belt, a metre away."""
    page.barcode(EDGE + 6, PARCEL + 4, (156 * 6, page.dots(25)), GS1_128, f"[00]{PARCEL_NUMBER}", points=11)
