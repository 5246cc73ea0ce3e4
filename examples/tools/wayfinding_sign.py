# SPDX-License-Identifier: BSD-3-Clause
"""Above the hall of a station: where to go, how far it is, and which lane is one's own."""
from label import (DASHES, DASH_DOTS, DOTS, LEFT_CHEVRON, LEFT_FILLED, LEFT_OPEN, MITRE, RIGHT_CHEVRON,
                   RIGHT_FILLED, RIGHT_OPEN, WHITE, Label)
from pictogram import Pictogram, dimension, person

BLACK, BLUE, GREEN = "#000000", "#0057b8", "#00843d"

WIDTH, HEIGHT = 300, 180
MARGIN, GUTTER, COLUMN = 8, 12, 62  # four columns
HEADER, TILES, LABELS, ROUTE = (8, 28), (48, 38), 91, (112, 60)  # where each row begins, and its height
CORNER = 5

_TILE = TILES[1]
_ARROW = COLUMN - _TILE - 3  # the side of the square that an arrow fills
_THICK = 3.6 / (_ARROW / 2)  # of an arrow, in halves of that square


def build():
    sign = Label(WIDTH, HEIGHT, 300, {"black": BLACK, "blue": BLUE, "green": GREEN})
    page = Pictogram(sign, 0, 0, 1, BLUE)
    _header(page.part(MARGIN, HEADER[0]))
    directions = (("EXIT", GREEN, _running_figure, _left), ("LIFTS", BLUE, _lift, _up),
                  ("STAIRS", BLUE, _stairs, _up_right), ("RAMP", BLUE, _wheelchair, _right))
    for column, direction in enumerate(directions):
        _direction(page.part(_column(column), TILES[0]), *direction)
    _route(page.part(MARGIN, ROUTE[0]))
    _lanes(page.part(_column(3), ROUTE[0]))
    return sign


def _column(index):
    return MARGIN + index * (COLUMN + GUTTER)


def _header(band):
    """The hall in a tile, its name, and when it is open."""
    width, height = WIDTH - 2 * MARGIN, HEADER[1]
    band.box(0, 0, width, height, CORNER)
    white = band.part(0, 0, color=WHITE)
    white.box(4, 4, 20, 20, 3)
    band.centred_text(4, 6, 20, 2.2, "3", bold=0.3)
    white.text(32, 6.8, 2, "NORTH HALL", bold=0.2)
    _clock(white.part(width - 66, 14))
    white.text(width - 49, 8.6, 1.5, "06-22", bold=0.15)


def _clock(dial):
    dial.ring(0, 0, 20, 1.6)
    dial.limb(1.6, (-4.2, -2.4), (0, 0), (3.6, -6.2))


def _direction(cell, label, color, pictogram, arrow):
    """A tile, its arrow on the side that it points to, and what it is."""
    tinted = cell.part(0, 0, color=color)
    tile_x = arrow(tinted)
    tinted.box(tile_x, 0, _TILE, _TILE, CORNER)
    pictogram(tinted.part(tile_x, 0, _TILE / 40, WHITE), color)
    tinted.text(tile_x, LABELS - TILES[0], 1.6, label, bold=0.2)


def _arrow(cell, x, start, end, ends=RIGHT_OPEN):
    """Both places are in halves of the arrow's square; the mitre of the tip adds one thickness."""
    square = cell.part(x + _ARROW / 2, _TILE / 2, _ARROW / 2)
    square.line(start, end, _THICK, ends, join=MITRE)


def _left(cell):
    _arrow(cell, 0, (_THICK - 1, 0), (1, 0), LEFT_OPEN)
    return COLUMN - _TILE


def _up(cell):
    _arrow(cell, COLUMN - _ARROW, (0, 1), (0, _THICK - 1))
    return 0


def _up_right(cell):
    reach = 2 ** -0.5
    _arrow(cell, COLUMN - _ARROW, (-reach, reach), (reach * (1 - _THICK), reach * (_THICK - 1)))
    return 0


def _right(cell):
    _arrow(cell, COLUMN - _ARROW, (-1, 0), (1 - _THICK, 0))
    return 0


def _running_figure(tile, _):
    """To the left, to a door."""
    tile.open_box(4, 5, 11, 30.5, 2)
    tile.disc(25, 8.2, 5.4)
    tile.limb(5, (24.6, 15.2), (27, 22))
    tile.limb(2.5, (23.6, 14.2), (21, 19.2), (17.6, 17.8))
    tile.limb(2.5, (25.6, 14.2), (31.4, 16.2), (33, 21))
    tile.limb(3.2, (26.4, 22.8), (21.4, 26), (20, 33.4))
    tile.limb(3.2, (27.2, 22.6), (30.4, 29), (36, 31.4))


def _lift(tile, _):
    for x, top, ends in ((13.5, 3.4, LEFT_FILLED), (26.5, 2.2, RIGHT_FILLED)):
        tile.line((x, top), (x, top + 7), 1.2, ends, join=MITRE)
    tile.open_box(6, 12.8, 28, 24.8, 2, 2)
    for x in (10.6, 21.8):
        person(tile.part(x, 16, 0.92))


def _stairs(tile, _):
    rise, going = 4.2, 6.4
    for step in range(5):
        tile.box(4 + step * going, 36 - (step + 1) * rise, 32 - step * going, rise)
    tile.disc(14.2, 6.2, 5)
    tile.limb(4.4, (13.8, 11.8), (12.6, 18.2))
    tile.limb(2.2, (14.4, 11.2), (18.2, 15.2), (22.2, 13.4))
    tile.limb(2.2, (13, 11.4), (9.4, 15.2), (8, 19.2))
    tile.limb(2.9, (13.2, 18.6), (16.6, 19.8), (13.8, 24.6))
    tile.limb(2.9, (12.2, 18.6), (10.4, 24), (6.8, 28.8))


def _wheelchair(tile, ground):
    tile.ring(17.5, 26.2, 19.5, 2.6)
    tile.wedge(17.5, 26.2, 21, -38, 138, fill=ground)
    tile.disc(15.6, 6, 5.2)
    tile.limb(4.2, (16, 12.4), (17.2, 22), (26.4, 22), (29.6, 31.6))
    tile.limb(2.6, (16.4, 15.8), (25, 15.8))
    tile.limb(2.8, (29.8, 32.4), (33.8, 31))


def _route(panel):
    """Where the trains and the buses are: minutes to walk as time on a dial, and metres between bars."""
    panel.open_box(0, 0, 3 * COLUMN + 2 * GUTTER, ROUTE[1], 1.2, CORNER)
    stops = ((28, "HALL 3", 0), (90, "TRAINS", 4), (183, "BUSES", 10))
    black = panel.part(0, 0, color=BLACK)
    for x, label, minutes in stops:
        black.centred_text(x - 30, 4.6, 60, 1.1, label, bold=0.1)
        _stop(panel.part(x, 25), minutes)
    for (start, *_), (end, *_), style, metres in zip(stops, stops[1:], (DASHES, DOTS), ("300 M", "450 M")):
        panel.line((start + 13, 25), (end - 15.2, 25), 2.2, RIGHT_FILLED, style=style, join=MITRE)
        dimension(black, start, end, 51.4, 0.9, metres)


def _stop(dial, minutes):
    if minutes == 0:
        dial.disc(0, 0, 20)
        dial.part(0, 0, color=WHITE).disc(0, 0, 8)
        return
    dial.wedge(0, 0, 20, 90, -6 * minutes, circle=True, pen=dial.pen(1.2))
    dial.part(0, 0, color=BLACK).centred_text(-20, 12.5, 40, 0.9, f"{minutes} MIN", bold=0.1)


def _lanes(panel):
    """Out and in, one lane each."""
    height, margin, cell, bold = ROUTE[1], 6, 1.1, 0.1
    panel.box(0, 0, COLUMN, height, CORNER)
    white = panel.part(0, 0, color=WHITE)
    white.line((margin, height / 2), (COLUMN - margin, height / 2), 0.9, style=DASH_DOTS)
    tip, length = margin + 2.2, 24
    out = height / 4, tip, LEFT_CHEVRON, COLUMN - margin - 2 * bold - 17 * cell, "OUT"
    into = height * 3 / 4, COLUMN - tip - length, RIGHT_CHEVRON, margin, "IN"
    for y, start, ends, text_x, text in (out, into):
        white.line((start, y), (start + length, y), 2.2, ends, join=MITRE)
        white.text(text_x, y - 3.5 * cell - bold, cell, text, bold)
