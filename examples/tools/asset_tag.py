# SPDX-License-Identifier: BSD-3-Clause
"""On the back of a projector: whose it is, its number for the stocktaking, and where who finds it can call."""
from label import DATA_MATRIX, QR_CODE, WHITE, Font, Label
from pictogram import Pictogram

BLACK, BLUE = "#000000", "#0057a8"

WIDTH, HEIGHT = 70, 32
EDGE = 2.5
BAND = 7
CODES = 9.8  # where the barcodes begin

NUMBER = "NB-2026-00417"
SMALL, PLAIN, STRONG = Font(6), Font(7.5), Font(11, bold=True)

# At 600 dpi. A Data Matrix of size 4 has 16 modules on each side, a QR Code of the 3rd version 29.
DATA_MATRIX_SIZE, DATA_MATRIX_SIDE, QR_SIDE = 4, 16 * 22, 29 * 13


def build():
    tag = Label(WIDTH, HEIGHT, 600, {"black": BLACK, "blue": BLUE})
    black = Pictogram(tag, 0, 0, 1, BLACK)
    blue = Pictogram(tag, 0, 0, 1, BLUE)
    blue.box(0, 0, WIDTH, BAND)
    white = blue.part(0, 0, color=WHITE)
    white.words(EDGE, 5, "PROPERTY OF NORDLICHT BOOKS", Font(10, bold=True), WIDTH - 2 * EDGE)

    black.barcode(EDGE, CODES, (DATA_MATRIX_SIDE, DATA_MATRIX_SIDE), DATA_MATRIX, NUMBER,
                  lineWidth=DATA_MATRIX_SIZE)
    black.words(EDGE, 30.2, "Stocktaking", SMALL)
    _number(black, blue)
    blue.barcode(WIDTH - EDGE - 16, CODES, (QR_SIDE, QR_SIDE), QR_CODE,
                 "https://assets.example.org/" + NUMBER)
    blue.words(WIDTH - EDGE - 16, 30.2, "Found? Scan me", SMALL)
    return tag


def _number(black, blue):
    column = 21
    blue.words(column, 12, "ASSET", SMALL)
    black.words(column, 16.8, NUMBER, STRONG, 23)
    black.words(column, 21.6, "Projector, room 204", PLAIN)
    black.words(column, 25.4, "bought 2026-03-02", PLAIN)
    black.words(column, 30.2, "Do not remove", SMALL)
