# SPDX-License-Identifier: BSD-3-Clause
"""Labels of shapes, written as vxlabel writes them, byte for byte, and of texts, written as people type them.

How large a text is depends on its font: the program that reads the label lays it out.
"""
import base64
import contextlib
import json
import math
import struct
import zlib
from typing import NamedTuple

import blockfont

WHITE = "#ffffff"
TRANSPARENT = "transparent"

NONE, SOLID = 0, 1
DENSE = (2, 3, 4, 5, 6, 7, 8)  # from the darkest to the lightest
LINEAR, RADIAL, CONICAL = 15, 16, 17

NO_LINE, SOLID_LINE, DASHES, DOTS, DASH_DOTS, DASH_DOT_DOTS = range(6)
FLAT_CAP, ROUND_CAP = 0, 0x20
MITRE, BEVEL, ROUND = 0, 0x40, 0x80

# The ends of a line: one of each side, added up.
LEFT_OPEN, LEFT_FILLED, LEFT_CHEVRON, LEFT_BAR = 0x10, 0x30, 0x50, 0x80
RIGHT_OPEN, RIGHT_FILLED, RIGHT_CHEVRON, RIGHT_BAR = 0x01, 0x03, 0x05, 0x08

# Symbologies by their numbers.
EAN, GS1_128, GS1_DATABAR, PDF417, MAXICODE, QR_CODE, DATA_MATRIX = 13, 16, 29, 55, 57, 58, 71

LEADING = 1  # the edge at which a line of its script begins

_GROUP, _LAYER = 0x10001, 0x10002
_SVG, _PIXMAP, _SYMBOL = 0x1000B, 0x1000C, 0x1000D
_LABEL_TEXT, _RICH_TEXT, _BARCODE, _LINE = 0x10015, 0x10016, 0x1001D, 0x1001F
_MOVABLE_SELECTABLE_FOCUSABLE_BEHIND_PARENT = 0x107
_CLIPS_TO_SHAPE = 0x08
_PRINTS, _IS_GRADIENT = 0x01, 0x80


class Kind(NamedTuple):
    """A class of filled items: its type code, the size at which its scales are 1, and keys of its own."""

    code: int
    reference: tuple | None = None
    own: dict = {}


_BOUND = {"itemDatasourceId": -1}

RECTANGLE = Kind(0x1002A)
ROUNDED_RECTANGLE = Kind(0x1002B)
ELLIPSE = Kind(0x1002C, own=_BOUND)
PIE = Kind(0x1002E, own=_BOUND)
RIGHT_TRIANGLE = Kind(0x10033, (100, 100), _BOUND)
EQUILATERAL_TRIANGLE = Kind(0x10034, (100, 86.60254038), _BOUND)
DIAMOND = Kind(0x10035, (100, 100), _BOUND)
PENTAGON = Kind(0x10036, (95.10565163, 90.45084972), _BOUND)
HEXAGON = Kind(0x10037, (100, 86.60254038), _BOUND)
OCTAGON = Kind(0x10038, (92, 92), _BOUND)


class Pen(NamedTuple):
    """An outline or a line; the width is in dots."""

    color: str = "#000000"
    width: int = 1
    style: int = SOLID_LINE
    cap: int = FLAT_CAP
    join: int = MITRE

    def properties(self):
        return {"itemPenColor": self.color, "itemPenWidth": self.width, "itemPenStyle": self.style,
                "itemPenCapStyle": self.cap, "itemPenJoinStyle": self.join}


NO_PEN = Pen(style=NO_LINE)


_MM_PER_INCH, _POINTS_PER_INCH, _HTML_UNITS_PER_INCH = 25.4, 72, 96

# From the top of a line to its baseline, and from there to its bottom, at a size of 1.
_EXTENTS = {"Loma": (1.149, 0.44), "DejaVu Sans": (0.928, 0.236), "DejaVu Serif": (0.939, 0.236)}


class Font(NamedTuple):
    """A font of a label text; points are those on paper, heights are in millimetres."""

    points: float
    bold: bool = False
    family: str = "Loma"

    @property
    def ascent(self):
        return self._millimetres(_EXTENTS[self.family][0])

    @property
    def line_height(self):
        return self._millimetres(sum(_EXTENTS[self.family]))

    def _millimetres(self, extent):
        return extent * self.points * _MM_PER_INCH / _POINTS_PER_INCH


class Label:
    """A page in millimetres. Items come from bottom to top, in scene units: dots of the label's resolution."""

    def __init__(self, width, height, dpi, inks, paper=WHITE):
        self.dpi = dpi
        self._page = {"width": width, "height": height, "dpi": dpi}
        self._inks = [{"name": name, "color": color} for name, color in inks.items()]
        self._paper = paper
        self._items = []
        self._container = self._items  # what takes the next item
        self._origin = 0, 0  # of the container, on the page
        self._last_id = 0

    def exact(self, millimetres):
        """Scene units, of which a place may take a part."""
        return millimetres * self.dpi / _MM_PER_INCH

    def dots(self, millimetres):
        """Scene units as whole dots, for crisp edges."""
        return round(self.exact(millimetres))

    @contextlib.contextmanager
    def layer(self, name):
        """The items that are made within are those of a layer."""
        with self._within({"itemShape": _LAYER, "name": name}, (0, 0)):
            yield

    @contextlib.contextmanager
    def group(self, x, y, **own):
        """The items that are made within, whose places are still those on the page, form a group. It lies at x and
        y, the top left corner of them all, and is turned about its middle when they are in it."""
        left, top = self._origin
        place = {"itemShape": _GROUP, "itemPositionX": x - left, "itemPositionY": y - top}
        with self._within(place | own, (x, y)):
            yield

    @contextlib.contextmanager
    def _within(self, container, origin):
        before = self._container, self._origin
        members = []
        self._put(container | {"children": members})
        self._container, self._origin = members, origin
        yield
        self._container, self._origin = before

    def _put(self, item):
        self._last_id += 1
        self._container.append({"itemId": self._last_id} | item)

    def _place(self, place):
        """Within the container."""
        return place[0] - self._origin[0], place[1] - self._origin[1], *place[2:]

    def shape(self, kind, place, fill=TRANSPARENT, pen=NO_PEN, style=SOLID, rotation=0.0, **own):
        """An item of any kind but the line; place is x, y, width and height."""
        _, _, width, height = place
        full_width, full_height = kind.reference or (width, height)
        flags = _PRINTS | _IS_GRADIENT if style >= LINEAR else _PRINTS
        self._add(kind.code, place, rotation, _turn(rotation), pen, itemFillColor=fill, itemBrushStyle=style,
                  itemFlags=flags, itemScaleX=width / full_width, itemScaleY=height / full_height,
                  **(kind.own | own))

    def fill(self, x, y, width, height, color, style=SOLID, rotation=0.0):
        """A rectangle without outline."""
        self.shape(RECTANGLE, (x, y, width, height), color, NO_PEN, style, rotation)

    def frame(self, x, y, width, height, color, pen, rotation=0.0):
        """A transparent rectangle whose outline lies inside it."""
        self.shape(RECTANGLE, (x, y, width, height), TRANSPARENT, Pen(color, pen), SOLID, rotation)

    def line(self, start, end, pen, ends=0):
        """A line between two points."""
        run, fall = end[0] - start[0], end[1] - start[1]
        length = math.hypot(run, fall)
        rotation = math.degrees(math.atan2(fall, run)) % 360
        place = (start[0] + end[0] - length) / 2, (start[1] + end[1]) / 2, length, 0
        turn = run / length, fall / length
        self._add(_LINE, place, rotation, turn, pen, itemArrows=ends, itemLength=length,
                  itemQFlags=_MOVABLE_SELECTABLE_FOCUSABLE_BEHIND_PARENT | _CLIPS_TO_SHAPE, **_BOUND)

    @staticmethod
    def text_size(cell, text, bold=0):
        return blockfont.columns(text) * cell + 2 * bold, blockfont.HEIGHT * cell + 2 * bold

    def text(self, x, y, cell, text, color, bold=0):
        """A line of block letters from cells of whole dots; bold makes strokes thicker by twice as many dots."""
        for column, row, width, height in blockfont.rectangles(text):
            self.fill(x + column * cell, y + row * cell, width * cell + 2 * bold, height * cell + 2 * bold, color)

    def centred_text(self, x, y, width, cell, text, color, bold=0):
        """The same, in the middle of a width."""
        text_width, _ = self.text_size(cell, text, bold)
        self.text(x + round((width - text_width) / 2), y, cell, text, color, bold)

    def label_text(self, place, text, font, color, **own):
        """place is x and y, and whatever the text is stretched to: a width, or a width and a height."""
        self._add_typed(_LABEL_TEXT, place, itemText=text, itemTextColor=color,
                        itemFontSize=round(font.points * self.dpi / _POINTS_PER_INCH), itemFontFamily=font.family,
                        itemFontBold=font.bold, itemDocumentMargin=0, **own)

    def rich_text(self, place, html, **own):
        """A box of x, y, width and height."""
        self._add_typed(_RICH_TEXT, place, itemHtml=html, **own)

    def barcode(self, place, symbology, text, color, points=8.0, **own):
        """place is x, y, width and height; points are those of the text that people read."""
        units_per_point = 4 / 3
        self._add_typed(_BARCODE, place, barcodeSymbol=symbology, barcodeText=text, itemTextColor=color,
                        itemFontFamily="Loma",
                        itemFontSize=round(points * self.dpi / _POINTS_PER_INCH / units_per_point), **own)

    def picture(self, place, rows, **own):
        """Pixels in x, y, width and height: rows of bytes, red, green and blue of one pixel after the other."""
        data = struct.pack(">I", 1) + _png(rows)
        self._add_typed(_PIXMAP, place, pixmapItemData=base64.b64encode(data).decode(), **own)

    def drawing(self, place, svg, **own):
        """An SVG text in x, y, width and height."""
        self._add_typed(_SVG, place, svgContents=_base64(svg), svgHasTransparency=True, **own)

    def symbol(self, place, svg, pen, fill=TRANSPARENT, **own):
        """The same in black and white, which take the two colours. Parts without a colour are black."""
        normal = svg.replace("<svg ", '<svg fill="#000000" stroke="none" ', 1)
        self._add_typed(_SYMBOL, place, svgContentsOriginal=_base64(normal), itemPenColor=pen, itemFillColor=fill, **own)

    def font_size(self, points):
        """A size in points on paper as one of HTML, which takes a unit for a 96th of an inch."""
        return f"font-size:{points * self.dpi / _HTML_UNITS_PER_INCH:.2f}pt"

    def to_json(self):
        document = {"format": "vxlabel", "version": 6, "page": self._page, "inks": self._inks,
                    "paper": self._paper, "items": self._items}
        return json.dumps(_plain(document), ensure_ascii=False, indent=2, sort_keys=True) + "\n"

    def _add_typed(self, code, place, **own):
        """Nothing but what differs from a new item."""
        keys = "itemPositionX", "itemPositionY", "itemWidth", "itemHeight"
        self._put({"itemShape": code} | dict(zip(keys, self._place(place))) | own)

    def _add(self, code, place, rotation, turn, pen, **own):
        x, y, width, height = self._place(place)
        self._put({
            "allowOverprint": True,
            "itemFlags": _PRINTS,
            "itemHeight": height,
            "itemHorizontalMirror": 0,
            "itemPositionX": x,
            "itemPositionY": y,
            "itemQFlags": _MOVABLE_SELECTABLE_FOCUSABLE_BEHIND_PARENT,
            "itemRotation": rotation,
            "itemScaleX": 1,
            "itemScaleY": 1,
            "itemShape": code,
            "itemTransform": _about(turn, width / 2, height / 2),
            "itemVerticalMirror": 0,
            "itemWidth": width,
            "itemZValue": 0,
        } | pen.properties() | own)


def _base64(text):
    return base64.b64encode(text.encode()).decode()


def _png(rows):
    """A file of 8 bits for each colour."""
    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))
    header = struct.pack(">IIBBBBB", len(rows[0]) // 3, len(rows), 8, 2, 0, 0, 0)
    # Each byte as its difference from the one above, which compresses better than the bytes.
    above = [bytes(len(rows[0]))] + rows[:-1]
    lines = (b"\2" + bytes((byte - up) % 256 for byte, up in zip(row, over)) for row, over in zip(rows, above))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(b"".join(lines), 9))
            + chunk(b"IEND", b""))


def _turn(degrees):
    """The cosine and the sine of an angle, exact for quarter turns."""
    quarters = {0: (1, 0), 90: (0, 1), 180: (-1, 0), 270: (0, -1)}
    angle = math.radians(degrees)
    return quarters.get(degrees, (math.cos(angle), math.sin(angle)))


def _about(turn, x, y):
    """A rotation about a point as m11, m12, m13, m21, m22, m23, m31, m32."""
    cos, sin = turn
    return [cos, sin, 0, -sin, cos, 0, x - x * cos + y * sin, y - x * sin - y * cos]


def _plain(value):
    """Whole numbers without a fraction: 5, not 5.0, and 0 for -0."""
    if isinstance(value, dict):
        return {key: _plain(entry) for key, entry in value.items()}
    if isinstance(value, list):
        return [_plain(entry) for entry in value]
    return int(value) if isinstance(value, float) and value.is_integer() else value
