# SPDX-License-Identifier: BSD-3-Clause
"""Labels made of rectangles, written as vxlabel writes them: byte for byte."""
import json
import math

import blockfont

WHITE = "#ffffff"
TRANSPARENT = "transparent"

NONE, SOLID = 0, 1
DENSE = (2, 3, 4, 5, 6, 7, 8)  # from the darkest to the lightest
LINEAR, RADIAL, CONICAL = 15, 16, 17

_RECTANGLE = 0x1002A
_MOVABLE_SELECTABLE_FOCUSABLE_BEHIND_PARENT = 0x107
_PRINTS, _IS_GRADIENT = 0x01, 0x80


class Label:
    """A page in millimetres. Items come from bottom to top, in scene units: dots of the label's resolution."""

    def __init__(self, width, height, dpi, inks, paper=WHITE):
        self.dpi = dpi
        self._page = {"width": width, "height": height, "dpi": dpi}
        self._inks = [{"name": name, "color": color} for name, color in inks.items()]
        self._paper = paper
        self._items = []

    def exact(self, millimetres):
        """Scene units, of which a place may take a part."""
        return millimetres * self.dpi / 25.4

    def dots(self, millimetres):
        """Scene units as whole dots, for crisp edges."""
        return round(self.exact(millimetres))

    def fill(self, x, y, width, height, color, style=SOLID, rotation=0.0):
        """A rectangle without outline."""
        self._add(x, y, width, height, rotation, itemFillColor=color, itemBrushStyle=style)

    def frame(self, x, y, width, height, color, pen, rotation=0.0):
        """A transparent rectangle whose outline lies inside it."""
        self._add(x, y, width, height, rotation, itemPenColor=color, itemPenStyle=1, itemPenWidth=pen)

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

    def to_json(self):
        document = {"format": "vxlabel", "version": 6, "page": self._page, "inks": self._inks,
                    "paper": self._paper, "items": self._items}
        return json.dumps(_plain(document), indent=2, sort_keys=True) + "\n"

    def _add(self, x, y, width, height, rotation, **properties):
        item = {
            "allowOverprint": True,
            "itemBrushStyle": SOLID,
            "itemFillColor": TRANSPARENT,
            "itemHeight": height,
            "itemHorizontalMirror": 0,
            "itemId": len(self._items) + 1,
            "itemPenCapStyle": 0,
            "itemPenColor": "#000000",
            "itemPenJoinStyle": 0,
            "itemPenStyle": 0,
            "itemPenWidth": 1,
            "itemPositionX": x,
            "itemPositionY": y,
            "itemQFlags": _MOVABLE_SELECTABLE_FOCUSABLE_BEHIND_PARENT,
            "itemRotation": rotation,
            "itemScaleX": 1,
            "itemScaleY": 1,
            "itemShape": _RECTANGLE,
            "itemTransform": _turned(rotation, width / 2, height / 2),
            "itemVerticalMirror": 0,
            "itemWidth": width,
            "itemZValue": 0,
        } | properties
        gradient = item["itemBrushStyle"] >= LINEAR
        item["itemFlags"] = _PRINTS | _IS_GRADIENT if gradient else _PRINTS
        self._items.append(item)


def _turned(degrees, x, y):
    """A rotation about a point as m11, m12, m13, m21, m22, m23, m31, m32."""
    quarters = {0: (1, 0), 90: (0, 1), 180: (-1, 0), 270: (0, -1)}
    angle = math.radians(degrees)
    cos, sin = quarters.get(degrees, (math.cos(angle), math.sin(angle)))
    return [cos, sin, 0, -sin, cos, 0, x - x * cos + y * sin, y - x * sin - y * cos]


def _plain(value):
    """Whole numbers without a fraction: 5, not 5.0, and 0 for -0."""
    if isinstance(value, dict):
        return {key: _plain(entry) for key, entry in value.items()}
    if isinstance(value, list):
        return [_plain(entry) for entry in value]
    return int(value) if isinstance(value, float) and value.is_integer() else value
