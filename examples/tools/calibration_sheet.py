# SPDX-License-Identifier: BSD-3-Clause
"""What a printer must get right: sizes, register, tones, fine lines and gradients."""
from label import CONICAL, DENSE, LINEAR, RADIAL, SOLID, Label

BLACK, RED, BLUE = "#000000", "#d7141a", "#0057b8"

SIZE = 100
ORIGIN, RULER = 10, 80  # where both rulers begin, and how long they are
LEFT, RIGHT = 15, 90  # the area inside the rulers
TICK = 2  # the width of a tick in dots


def build():
    sheet = Label(SIZE, SIZE, 300, {"black": BLACK, "red": RED, "blue": BLUE})
    _rulers(sheet)
    _registration(sheet)
    _dense_patterns(sheet, 15)
    _hairlines(sheet, 46.5)
    _gradients(sheet, 66.5)
    _title(sheet)
    return sheet


def _rulers(sheet):
    for position in range(RULER + 1):
        length = 3.5 if position % 10 == 0 else 2.5 if position % 5 == 0 else 1.5
        _ticks(sheet, ORIGIN + position, length)
        if position % 10 == 0:
            _tick_labels(sheet, ORIGIN + position, str(position))
    line = sheet.exact(RULER) + TICK
    start = sheet.exact(ORIGIN) - TICK / 2
    sheet.fill(start, start, line, TICK, BLACK)
    sheet.fill(start, start, TICK, line, BLACK)


def _ticks(sheet, place, length):
    """One tick of each ruler, outwards, its middle exactly at the place."""
    across = sheet.exact(place) - TICK / 2
    start, end = sheet.exact(ORIGIN - length), sheet.exact(length)
    sheet.fill(across, start, TICK, end, BLACK)
    sheet.fill(start, across, end, TICK, BLACK)


def _tick_labels(sheet, place, text):
    cell = 3
    width, height = sheet.text_size(cell, text)
    end = sheet.dots(ORIGIN - 3.5) - sheet.dots(0.7)
    sheet.text(sheet.dots(place) - width // 2, end - height, cell, text, BLACK)
    if place > ORIGIN:  # the rulers share their zero
        sheet.text(end - width, sheet.dots(place) - height // 2, cell, text, BLACK)


def _registration(sheet):
    """In each corner a cross of each ink, none on top of another."""
    near, far = 2.6, 6.4
    for mirror_x in (False, True):
        for mirror_y in (False, True):
            for color, x, y in ((BLACK, near, near), (RED, far, near), (BLUE, near, far)):
                _cross(sheet, SIZE - x if mirror_x else x, SIZE - y if mirror_y else y, color)


def _cross(sheet, x, y, color):
    x, y, arm, half = sheet.dots(x), sheet.dots(y), 18, 10
    sheet.fill(x - arm, y - 1, 2 * arm, 2, color)
    sheet.fill(x - 1, y - arm, 2, 2 * arm, color)
    sheet.frame(x - half, y - half, 2 * half, 2 * half, color, 2, rotation=45)


def _heading(sheet, y, text):
    sheet.text(sheet.dots(LEFT), sheet.dots(y), 3, text, BLACK)


def _dense_patterns(sheet, y):
    _heading(sheet, y, "SOLID AND DENSE 1-7")
    styles = (SOLID, *DENSE)
    step = (RIGHT - LEFT + 1) / len(styles)
    for row, color in enumerate((BLACK, RED, BLUE)):
        for column, style in enumerate(styles):
            sheet.fill(sheet.dots(LEFT + column * step), sheet.dots(y + 4 + row * 7.5), sheet.dots(step - 1),
                       sheet.dots(6.5), color, style)


def _hairlines(sheet, y):
    _heading(sheet, y, "HAIRLINES 1-10 DOTS")
    step = (RIGHT - LEFT) / 10
    top, length = sheet.dots(y + 4), sheet.dots(10)
    for width in range(1, 11):
        x = sheet.dots(LEFT + (width - 1) * step)
        sheet.fill(x, top, width, length, BLACK)
        for row, color in enumerate((BLACK, RED, BLUE)):
            sheet.fill(x + 20, top + row * (length - width) // 2, sheet.dots(4.5), width, color)


def _gradients(sheet, y):
    kinds = (("LINEAR", LINEAR, BLACK), ("RADIAL", RADIAL, RED), ("CONICAL", CONICAL, BLUE))
    step = (RIGHT - LEFT + 1.5) / len(kinds)
    for column, (name, style, color) in enumerate(kinds):
        x = sheet.dots(LEFT + column * step)
        width, height = sheet.dots(step - 1.5), sheet.dots(90) - sheet.dots(y + 4)
        sheet.text(x, sheet.dots(y), 3, name, BLACK)
        sheet.fill(x, sheet.dots(y + 4), width, height, color, style)
        sheet.frame(x, sheet.dots(y + 4), width, height, color, 1)


def _title(sheet):
    sheet.centred_text(0, sheet.dots(93.5), sheet.dots(SIZE), 4, "CALIBRATION 100 X 100 MM - 300 DPI", BLACK)
