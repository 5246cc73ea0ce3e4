# SPDX-License-Identifier: BSD-3-Clause
"""Block letters, five cells wide and seven high, as few rectangles as possible."""

WIDTH, HEIGHT = 5, 7

_ROWS = {
    "A": ".###. #...# #...# ##### #...# #...# #...#",
    "B": "####. #...# #...# ####. #...# #...# ####.",
    "C": ".#### #.... #.... #.... #.... #.... .####",
    "D": "####. #...# #...# #...# #...# #...# ####.",
    "E": "##### #.... #.... ####. #.... #.... #####",
    "F": "##### #.... #.... ####. #.... #.... #....",
    "G": ".#### #.... #.... #..## #...# #...# .####",
    "H": "#...# #...# #...# ##### #...# #...# #...#",
    "I": "##### ..#.. ..#.. ..#.. ..#.. ..#.. #####",
    "K": "#...# #..#. #.#.. ##... #.#.. #..#. #...#",
    "L": "#.... #.... #.... #.... #.... #.... #####",
    "M": "#...# ##.## #.#.# #.#.# #...# #...# #...#",
    "N": "#...# ##..# ##..# #.#.# #..## #..## #...#",
    "O": ".###. #...# #...# #...# #...# #...# .###.",
    "P": "####. #...# #...# ####. #.... #.... #....",
    "R": "####. #...# #...# ####. #.#.. #..#. #...#",
    "S": ".#### #.... #.... .###. ....# ....# ####.",
    "T": "##### ..#.. ..#.. ..#.. ..#.. ..#.. ..#..",
    "U": "#...# #...# #...# #...# #...# #...# .###.",
    "V": "#...# #...# #...# #...# #...# .#.#. ..#..",
    "W": "#...# #...# #...# #.#.# #.#.# #.#.# .#.#.",
    "X": "#...# #...# .#.#. ..#.. .#.#. #...# #...#",
    "Y": "#...# #...# .#.#. ..#.. ..#.. ..#.. ..#..",
    "Z": "##### ....# ...#. ..#.. .#... #.... #####",
    "0": ".###. #...# #..## #.#.# ##..# #...# .###.",
    "1": "..#.. .##.. ..#.. ..#.. ..#.. ..#.. .###.",
    "2": ".###. #...# ....# ..##. .#... #.... #####",
    "3": "####. ....# ....# .###. ....# ....# ####.",
    "4": "#..#. #..#. #..#. ##### ...#. ...#. ...#.",
    "5": "##### #.... ####. ....# ....# #...# .###.",
    "6": ".###. #.... #.... ####. #...# #...# .###.",
    "7": "##### ....# ...#. ..#.. ..#.. ..#.. ..#..",
    "8": ".###. #...# #...# .###. #...# #...# .###.",
    "9": ".###. #...# #...# .#### ....# ....# .###.",
    "-": "..... ..... ..... ##### ..... ..... .....",
    " ": "..... ..... ..... ..... ..... ..... .....",
}


def columns(text):
    """The width of a line of text in cells."""
    return len(text) * (WIDTH + 1) - 1


def rectangles(text):
    """Yields x, y, width and height in cells of the rectangles that make up a line of text."""
    for index, letter in enumerate(text):
        for x, y, width, height in _cover(_ROWS[letter].split()):
            yield index * (WIDTH + 1) + x, y, width, height


def _cover(rows):
    open_cells = {(x, y) for y, row in enumerate(rows) for x, cell in enumerate(row) if cell == "#"}
    while open_cells:
        x, y = min(open_cells, key=lambda cell: (cell[1], cell[0]))
        wide = _grow(open_cells, x, y, down_first=False)
        tall = _grow(open_cells, x, y, down_first=True)
        width, height = max(wide, tall, key=lambda size: size[0] * size[1])
        open_cells -= _cells(x, y, width, height)
        yield x, y, width, height


def _grow(open_cells, x, y, down_first):
    width = height = 1
    for down in (down_first, not down_first):
        if down:
            while _cells(x, y, width, height + 1) <= open_cells:
                height += 1
        else:
            while _cells(x, y, width + 1, height) <= open_cells:
                width += 1
    return width, height


def _cells(x, y, width, height):
    return {(x + column, y + row) for column in range(width) for row in range(height)}
