# SPDX-License-Identifier: BSD-3-Clause
"""Below the muesli on a shelf: its price, and its number for the till and for the scanner of who fills the shelf."""
from label import EAN, GS1_DATABAR, WHITE, Font, Label
from pictogram import Pictogram

BLACK, RED = "#000000", "#d7141a"

WIDTH, HEIGHT = 80, 40
EDGE = 3
PRICE = 47  # where the panel with the price begins
CODES = 21.5  # where the barcodes begin

NUMBER = "4012345678901"  # with its check digit
EAN_MODULES, DATABAR_MODULES = 113, 96  # of which the EAN's has white space at both sides
MODULE = 3  # dots at 300 dpi: 0.254 mm


def build():
    label = Label(WIDTH, HEIGHT, 300, {"black": BLACK, "red": RED})
    black = Pictogram(label, 0, 0, 1, BLACK)
    black.words(EDGE, 7.6, "Hazelnut muesli", Font(15, bold=True))
    black.words(EDGE, 12.4, "five grains, 40 % fruit and nuts", Font(8))
    black.words(EDGE, 17.2, "750 g", Font(11, bold=True))
    black.words(EDGE + 14, 17.2, "1 kg = 5.32 EUR", Font(8))
    _price(Pictogram(label, PRICE, 0, 1, RED))
    black.barcode(EDGE, CODES, (EAN_MODULES * MODULE, label.dots(15.5)), EAN, NUMBER)
    _shelf(black)
    return label


def _price(panel):
    panel.box(0, 0, WIDTH - PRICE, 19)
    white = panel.part(0, 0, color=WHITE)
    white.words(3, 14.6, "3.99", Font(38, bold=True), 21)
    white.words(25, 14.6, "EUR", Font(9, bold=True))


def _shelf(page):
    """The same number, as the trade writes it with fourteen digits, and the place on the shelf."""
    page.barcode(PRICE, CODES, (DATABAR_MODULES * MODULE, page.dots(8)), GS1_DATABAR, "0" + NUMBER[:-1],
                 barcodeHideText=True)
    page.words(PRICE, CODES + 12.8, "Aisle 7 · Shelf 3 · Place 12", Font(7))
    page.words(PRICE, CODES + 15.9, "Order at 4, up to 24", Font(7))
