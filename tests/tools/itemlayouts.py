# SPDX-License-Identifier: BSD-3-Clause
"""The records of all item classes: their fields in the order of the stream, and how each is written.

It knows the layouts and nothing of the library. What writes or describes records takes them from here.
"""
import struct

NULL_STRING = None
NONE = None
RGB, HSV = 1, 2


class Type:
    """How the values of a field are written in a byte order and a precision, and what the type is called."""

    def __init__(self, name, write):
        self.name = name
        self.write = write

    def __call__(self, value, order=">", real="d"):
        return self.write(value, order, real)


def integer(name, code):
    return Type(name, lambda value, order, real: struct.pack(order + code, value))


def counted(units, order):
    """A byte count and the bytes; the count 0xFFFFFFFF alone for nothing."""
    return struct.pack(order + "I", 0xFFFFFFFF) if units is None else struct.pack(order + "I", len(units)) + units


def text(value, order, real):
    """The UTF-16 units of the text, counted."""
    encoding = "utf-16-be" if order == ">" else "utf-16-le"
    return counted(NULL_STRING if value is NULL_STRING else value.encode(encoding), order)


def colour(value, order, real):
    """The kind of colour in one byte, then alpha, three components and padding in 16 bits each."""
    spec, alpha, *components = value
    return struct.pack(order + "b5H", spec, alpha, *components, 0)


def rgb(red, green, blue, alpha=255):
    return (RGB, *(0x101 * component for component in (alpha, red, green, blue)))


def hsv(hue, saturation, value, alpha=255):
    return (HSV, 0x101 * alpha, 100 * hue, 0x101 * saturation, 0x101 * value)


BLACK = rgb(0, 0, 0)
TRANSPARENT = rgb(0, 0, 0, 0)

BOOL = integer("bool", "b")
I8 = integer("i8", "b")
I16 = integer("i16", "h")
I32 = integer("i32", "i")
F64 = Type("f64", lambda value, order, real: struct.pack(order + real, value))
# Nothing at all if there is none.
OPTIONAL_F64 = Type("f64", lambda value, order, real: b"" if value is None else struct.pack(order + real, value))
STRING = Type("string", text)
COLOUR = Type("colour", colour)
BYTES = Type("bytes", lambda value, order, real: counted(value, order))
# A marker, and the file behind it if there is one.
PICTURE = Type("picture", lambda value, order, real: struct.pack(order + "i", 1 if value else 0) + (value or b""))

# What all records have, but for those of layers.
ITEM = [
    ("item id", I16),
    ("flag word", I32),
    ("horizontal mirror", BOOL),
    ("vertical mirror", BOOL),
    ("allow overprint", BOOL),
    ("z value", F64),
    ("graphics-item flags", I32),
    ("visible", BOOL),
    ("rotation", F64),
    ("width", F64),
    ("height", F64),
    ("horizontal scale", F64),
    ("vertical scale", F64),
    *((name, F64) for name in ("m11", "m12", "m13", "m21", "m22", "m23", "m31", "m32", "m33")),
    ("x", F64),
    ("y", F64),
    ("datasource id", I32),
    ("datasource field", STRING),
]
PEN = [
    ("pen colour", COLOUR),
    ("pen width", I16),
    ("pen style", I32),
    ("cap style", I32),
    ("join style", I32),
]
BRUSH = [
    ("brush style", I16),
    ("fill colour", COLOUR),
]
# What most records have in common.
FIELDS = ITEM + PEN + BRUSH

# The values of a new rectangle.
NEW = [-1, 1, 0, 0, 1, 0.0, 0x107, 1, 0.0, 100.0, 100.0, 1.0, 1.0,
       1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0,
       -1, NULL_STRING, BLACK, 1, 1, 0x20, 0x80, 1, TRANSPARENT]

# Fields of a class are named by the keys of the property map; "weight" has none.
COEFFICIENTS = [("oldTransformCoefficientM31", F64), ("oldTransformCoefficientM32", F64)]
RADII = [("roundingRadiusX", F64), ("roundingRadiusY", F64)]
ANGLES = [("startPieAngle", I32), ("spanPieAngle", I32), ("drawCircle", BOOL)]
LINE = [("itemLength", F64), ("itemArrows", I16), ("itemPositionX", F64), ("itemPositionY", F64)]
LABEL_BEFORE = [("itemText", STRING), ("itemTextColor", COLOUR), ("itemAlignment", I16), ("itemDocumentMargin", F64)]
LABEL_BEHIND = [("itemFontFamily", STRING), ("itemFontSize", I16), ("weight", I16), ("itemItalic", BOOL),
                ("itemUnderline", BOOL)] + COEFFICIENTS + [
                ("itemTextVertical", BOOL), ("itemWasResized", BOOL), ("itemPinToCenter", BOOL),
                ("itemSizeLimiting", I8)]
# Of an empty box there is no "screenDpi".
RICH_BEFORE = [("itemHtml", STRING), ("documentIsEmpty", BOOL), ("screenDpi", OPTIONAL_F64), ("itemTextColor", COLOUR)]
RICH_BEHIND = [("itemFontFamily", STRING), ("itemFontSize", I16), ("itemFontWeight", I16),
               ("itemFontItalic", BOOL), ("itemFontUnderline", BOOL), ("itemAlignment", I16)]
BARCODE_BEFORE = [("barcodeSymbol", I16), ("barcodeText", STRING), ("lineWidth", I16), ("barcodeWhiteSpace", I16),
                  ("barcodeHideText", BOOL), ("barcodeSecurityLevel", I16), ("itemFontSize", I16),
                  ("itemFontFamily", STRING), ("itemAlignment", I16), ("barcodeTextAbove", BOOL),
                  ("itemBold", BOOL), ("itemItalic", BOOL), ("itemUnderline", BOOL), ("barcodeShowStartStop", BOOL)]
BARCODE_BEHIND = [("itemFillColor", COLOUR), ("itemTextColor", COLOUR)]
SVG_BEFORE = COEFFICIENTS + [("svgContents", BYTES), ("svgIsInvalid", BOOL), ("svgHasTransparency", BOOL)]
PIXMAP_BEFORE = [("pixmapItemData", PICTURE)] + COEFFICIENTS + [("imageHasTransparency", BOOL),
                                                                ("firstResizeAfterAddedToGroup", BOOL)]
SYMBOL_BEFORE = [("hasSingleColor", BOOL), ("fillBoundingRectangle", BOOL), ("svgContentsOriginal", BYTES)]
SYMBOL_BEFORE += COEFFICIENTS
SYMBOL_BEHIND = [("itemPenColor", COLOUR), ("itemFillColor", COLOUR), ("itemFillColor", COLOUR)]


class Layout:
    """A class: its type code and the fields of its record, its own ones before and behind the common ones."""

    def __init__(self, code, common=FIELDS, before=(), behind=()):
        self.code = code
        self.common = list(common)
        self.before = list(before)
        self.behind = list(behind)

    def fields(self):
        return self.before + self.common + self.behind

    def has_pen(self):
        return len(self.common) > len(ITEM)

    def has_brush(self):
        return len(self.common) > len(ITEM + PEN)

    def values(self, common, own):
        """The values of all fields in the order of the stream, as the own ones are."""
        cut = len(self.before)
        return [*own[:cut], *common[:len(self.common)], *own[cut:]]

    def record(self, common, own):
        """The bytes of each field after its name."""
        return record(self.values(common, own), fields=self.fields())


LAYOUTS = {
    "group": Layout(0x10001, ITEM),
    # The record of a layer is empty; documents have one of their own for it.
    "layer": Layout(0x10002, []),
    "svg": Layout(0x1000B, ITEM, SVG_BEFORE),
    "pixmap": Layout(0x1000C, ITEM, PIXMAP_BEFORE),
    "symbol": Layout(0x1000D, ITEM, SYMBOL_BEFORE, SYMBOL_BEHIND),
    "label_text": Layout(0x10015, FIELDS, LABEL_BEFORE, LABEL_BEHIND),
    "rich_text": Layout(0x10016, FIELDS, RICH_BEFORE, RICH_BEHIND),
    "barcode": Layout(0x1001D, ITEM, BARCODE_BEFORE, BARCODE_BEHIND),
    "line": Layout(0x1001F, ITEM + PEN, behind=LINE),
    "rectangle": Layout(0x1002A),
    "rounded_rectangle": Layout(0x1002B, before=RADII),
    "ellipse": Layout(0x1002C),
    "pie": Layout(0x1002E, before=ANGLES),
    "right_triangle": Layout(0x10033),
    "equilateral_triangle": Layout(0x10034),
    "diamond": Layout(0x10035),
    "pentagon": Layout(0x10036),
    "hexagon": Layout(0x10037),
    "octagon": Layout(0x10038),
}


def record(values, order=">", real="d", fields=FIELDS):
    """The bytes of each field after its name."""
    assert len(values) == len(fields)
    return [(name, write(value, order, real)) for (name, write), value in zip(fields, values)]
