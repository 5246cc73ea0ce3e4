# SPDX-License-Identifier: BSD-3-Clause
"""The words that the pages of the item kinds share: what properties and fields of records are called and mean.

The fields of the records are in tests/tools/itemlayouts.py. A meaning that says "N to M", "at least N" or
"always N" is a promise that the property keeps to it, whatever it is set to; one that says "read only", that it
cannot be set. A number with a word behind it is one that the property takes.
"""
# The names of the properties, in the groups and the order in which the classes have them.
SHAPE = ["itemShape"]
IDENTITY = ["itemId", "itemFlags", "itemQFlags", "itemZValue"]
TURNING = ["itemRotation", "itemHorizontalMirror", "itemVerticalMirror"]
SIZE = ["itemWidth", "itemHeight", "itemScaleX", "itemScaleY"]
TRANSFORM = ["itemTransform"]
OVERPRINT = ["allowOverprint"]
BINDING = ["itemDatasourceId", "itemDatasourceField"]
COEFFICIENTS = ["oldTransformCoefficientM31", "oldTransformCoefficientM32"]
PEN_COLOUR = ["itemPenColor"]
FILL_COLOUR = ["itemFillColor"]
TEXT_COLOUR = ["itemTextColor"]
PEN = ["itemPenWidth", "itemPenStyle", "itemPenCapStyle", "itemPenJoinStyle"]
BRUSH = ["itemBrushStyle"]
POSITION = ["itemPositionX", "itemPositionY"]
FILLED = PEN_COLOUR + FILL_COLOUR + PEN + BRUSH + POSITION

RECTANGLE = SHAPE + IDENTITY + TURNING + SIZE + TRANSFORM + OVERPRINT + FILLED
ELLIPSE = SHAPE + IDENTITY + TURNING + SIZE + TRANSFORM + OVERPRINT + BINDING + FILLED
POLYGON = SHAPE + IDENTITY + TURNING + OVERPRINT + SIZE + TRANSFORM + BINDING + FILLED
LINE = (SHAPE + IDENTITY + TURNING + SIZE + TRANSFORM + OVERPRINT + BINDING + PEN + PEN_COLOUR
        + ["itemArrows", "itemLength"] + POSITION)
TEXT = (SHAPE + IDENTITY + TURNING + SIZE + OVERPRINT + TRANSFORM + POSITION + BINDING + PEN_COLOUR + FILL_COLOUR
        + TEXT_COLOUR + PEN + BRUSH)
LABEL_TEXT = TEXT + ["itemTextVertical", "itemPinToCenter", "itemWasResized", "itemSizeLimiting",
                     "itemDocumentMargin"] + COEFFICIENTS + [
                     "itemText", "itemAlignment", "itemFontSize", "itemFontFamily", "itemFontBold", "itemItalic",
                     "itemUnderline"]
RICH_TEXT = TEXT + ["documentIsEmpty", "itemHtml", "screenDpi", "itemFontSize", "itemFontFamily", "itemFontWeight",
                    "itemFontItalic", "itemFontUnderline", "itemAlignment"]
BARCODE = (SHAPE + IDENTITY + TURNING + SIZE + TRANSFORM + OVERPRINT + BINDING + TEXT_COLOUR + FILL_COLOUR
           + ["itemFontSize", "itemFontFamily", "itemAlignment", "itemBold", "itemItalic", "itemUnderline",
              "barcodeSymbol", "barcodeText", "lineWidth", "barcodeWhiteSpace", "barcodeHideText",
              "barcodeSecurityLevel", "barcodeTextAbove", "barcodeShowStartStop"] + POSITION)
SVG = (["svgContents", "svgHasTransparency", "svgIsInvalid"] + COEFFICIENTS + SHAPE + IDENTITY + OVERPRINT + TURNING
       + SIZE + TRANSFORM + POSITION + BINDING)
PICTURE = (["pixmapItemData"] + SHAPE + IDENTITY + TURNING + SIZE + TRANSFORM + OVERPRINT + BINDING + COEFFICIENTS
           + ["imageHasTransparency", "firstResizeAfterAddedToGroup"] + POSITION)
SYMBOL = (["fillBoundingRectangle"] + OVERPRINT + COEFFICIENTS + SHAPE + IDENTITY + TURNING + SIZE + TRANSFORM
          + BINDING + PEN_COLOUR + FILL_COLOUR + POSITION + ["hasSingleColor", "svgContentsOriginal"])
GROUP = (SHAPE + ["childrenCount"] + IDENTITY + TURNING + SIZE + TRANSFORM + OVERPRINT + BINDING + POSITION)
LAYER = SHAPE + ["childrenCount"]

# Type and meaning of each property, by its name; classes that differ say so themselves.
PROPERTIES = {
    "itemShape": ("uint", "the type code"),
    "itemId": ("short", "the number that the host gives the item; −1 is none"),
    "itemFlags": ("uint", "sum of 1 visible in print, 2 printed as an image, 8 user template, 16 supply template, "
                  "32 read-only, 64 multiple lock, 128 filled with a gradient"),
    "itemQFlags": ("uint", "`QGraphicsItem::GraphicsItemFlags`"),
    "itemZValue": ("double", "higher ones lie above lower ones"),
    "itemRotation": ("double", "degrees clockwise about the centre, at least 0 and below 360"),
    "itemHorizontalMirror": ("double", "1 mirrors left and right, 0 does not"),
    "itemVerticalMirror": ("double", "1 mirrors top and bottom, 0 does not"),
    "itemWidth": ("double", "width in scene units"),
    "itemHeight": ("double", "height in scene units"),
    "itemScaleX": ("double", "1, whatever the size"),
    "itemScaleY": ("double", "1, whatever the size"),
    "itemTransform": ("QVariantList", "m11, m12, m13, m21, m22, m23, m31, m32; m33 is 1"),
    "allowOverprint": ("bool", "inks of the item may print over those below it"),
    "itemDatasourceId": ("int", "the data source; −1 is none"),
    "itemDatasourceField": ("QString", "the field of the data source; empty is none"),
    "oldTransformCoefficientM31": ("double", "horizontal translation of the transform last applied"),
    "oldTransformCoefficientM32": ("double", "vertical translation of the transform last applied"),
    "itemPenColor": ("QString", "colour of the outline, `\"#rrggbb\"`; a transparent one reads black"),
    "itemFillColor": ("QString", "colour of the fill, `\"#rrggbb\"`; a transparent one reads black"),
    "itemTextColor": ("QColor", "colour of the letters, with its alpha"),
    "itemPenWidth": ("ushort", "width of the outline in scene units, 0 to 72; 0 is no outline"),
    "itemPenStyle": ("ushort", "0 none, 1 solid, 2 dashes, 3 dots, 4 dash and dot, 5 dash and two dots"),
    "itemPenCapStyle": ("ushort", "0 flat, 32 round"),
    "itemPenJoinStyle": ("ushort", "0 miter, 64 bevel, 128 round"),
    "itemBrushStyle": ("ushort", "0 none, 1 solid, 2–14 patterns; gradients: 15 linear, 16 radial, 17 conical; "
                       "65535 changes nothing"),
    "itemPositionX": ("double", "x in the parent, in scene units"),
    "itemPositionY": ("double", "y in the parent, in scene units"),
    "roundingRadiusX": ("double", "horizontal radius in scene units; 0 or less is a square corner"),
    "roundingRadiusY": ("double", "vertical radius in scene units; 0 or less is a square corner"),
    "drawCircle": ("bool", "outline of the whole ellipse as well"),
    "startPieAngle": ("int", "where the slice begins, in 1/16 degree counter-clockwise from three o'clock"),
    "spanPieAngle": ("int", "how far it reaches, in 1/16 degree counter-clockwise; negative is clockwise"),
    "itemArrows": ("ushort", "both ends: right 0 none, 1 open, 3 filled, 5 chevrons, 8 bar; plus left 0, 16, 48, "
                   "80, 128"),
    "itemLength": ("double", "length in scene units, at least 1"),
    "childrenCount": ("int", "how many members there are"),
    "itemTextVertical": ("bool", "one character on each line"),
    "itemPinToCenter": ("bool", "another text leaves the centre where it is, not the top left corner"),
    "itemWasResized": ("bool", "the text is stretched"),
    "itemSizeLimiting": ("int", "fixed sides: 0 none, 1 the width, 2 the height, 3 both"),
    "itemDocumentMargin": ("double", "margin around the letters in units, before stretching"),
    "itemText": ("QString", "the text, its lines separated by line feeds; of a vertical one, as it reads across"),
    "itemHtml": ("QString", "the text as HTML"),
    "documentIsEmpty": ("bool", "the box holds no text; read only"),
    "screenDpi": ("double", "units of a point of the HTML; read only, but loading scales the text by it"),
    "itemFontFamily": ("QString", "font family"),
    "itemFontBold": ("bool", "bold letters"),
    "itemFontWeight": ("int", "weight in the empty box: 400 normal, 700 bold"),
    "itemFontItalic": ("bool", "italic letters in the empty box"),
    "itemFontUnderline": ("bool", "underlined letters in the empty box"),
    "itemBold": ("bool", "bold letters"),
    "itemItalic": ("bool", "italic letters"),
    "itemUnderline": ("bool", "underlined letters"),
    "barcodeSymbol": ("short", "[number of the symbol](../file-formats.md#symbols-of-barcodes)"),
    "barcodeText": ("QString", "what is encoded"),
    "lineWidth": ("int", "second option: columns of PDF417; 1: check digit of Code 39; other symbols ignore it"),
    "barcodeWhiteSpace": ("int", "modules kept free to the left and right"),
    "barcodeHideText": ("bool", "no text beside the symbol"),
    "barcodeSecurityLevel": ("short", "error correction, the first option: 1–4 for a QR Code, 0–8 for PDF417; the "
                             "encoder chooses with 0 for a QR Code, with −1 for PDF417"),
    "barcodeTextAbove": ("bool", "text above the symbol instead of below"),
    "barcodeShowStartStop": ("bool", "asterisks around the text of Code 39"),
    "svgContents": ("QVariant", "the text of the drawing, in Base64"),
    "svgHasTransparency": ("bool", "what lies beneath may show"),
    "svgIsInvalid": ("bool", "the drawing was refused"),
    "pixmapItemData": ("QVariant", "the picture as in the record, in Base64"),
    "imageHasTransparency": ("bool", "some pixel is not opaque: what lies beneath shows"),
    "firstResizeAfterAddedToGroup": ("bool", "the next resize is the first in a group"),
    "fillBoundingRectangle": ("bool", "the drawing has a background, which the fill colour fills"),
    "hasSingleColor": ("bool", "only the pen colour is the symbol's"),
    "svgContentsOriginal": ("QVariant", "the drawing in black and white, in Base64"),
}

# Properties that records have under names of their own.
RECORD_NAMES = {
    "itemId": "item id", "itemFlags": "flag word", "itemQFlags": "graphics-item flags", "itemZValue": "z value",
    "itemRotation": "rotation", "itemHorizontalMirror": "horizontal mirror",
    "itemVerticalMirror": "vertical mirror", "itemWidth": "width", "itemHeight": "height",
    "itemScaleX": "horizontal scale", "itemScaleY": "vertical scale", "allowOverprint": "allow overprint",
    "itemDatasourceId": "datasource id", "itemDatasourceField": "datasource field", "itemPenColor": "pen colour",
    "itemPenWidth": "pen width", "itemPenStyle": "pen style", "itemPenCapStyle": "cap style",
    "itemPenJoinStyle": "join style", "itemBrushStyle": "brush style", "itemFillColor": "fill colour",
    "itemPositionX": "x", "itemPositionY": "y",
}

# Fields that share a row of a record's table, and what they are called there.
ROWS = {
    ("width", "height"): "width, height",
    ("horizontal scale", "vertical scale"): "horizontal scale, vertical scale",
    ("m11", "m12", "m13"): "transform: m11, m12, m13",
    ("m21", "m22", "m23"): "m21, m22, m23",
    ("m31", "m32", "m33"): "m31, m32, m33",
    ("x", "y"): "x, y in the parent",
    ("roundingRadiusX", "roundingRadiusY"): "horizontal radius, vertical radius",
    ("startPieAngle", "spanPieAngle"): "start angle, span in 1/16 degree",
    ("itemPositionX", "itemPositionY"): "x, y in the parent, which decide",
    ("oldTransformCoefficientM31", "oldTransformCoefficientM32"): "translation of the transform last applied",
}

# What a field is called; the names of others are words already.
FIELDS = {
    "flag word": "item flags", "horizontal mirror": "mirrored left and right",
    "vertical mirror": "mirrored top and bottom", "allow overprint": "overprint allowed",
    "rotation": "rotation in degrees", "pen style": "pen style (`Qt::PenStyle`)",
    "cap style": "cap style (`Qt::PenCapStyle`)", "join style": "join style (`Qt::PenJoinStyle`)",
    "brush style": "brush style (`MobraTypes::BrushStyle`)", "drawCircle": "outline of the whole ellipse",
    "itemLength": "length, which decides", "itemArrows": "arrows (`MobraTypes::ArrowStyle`)", "itemText": "text",
    "itemTextColor": "text colour", "itemAlignment": "alignment (`Qt::Alignment`)",
    "itemDocumentMargin": "margin around the letters", "itemFontFamily": "font family", "itemFontSize": "font size",
    "weight": "weight", "itemFontWeight": "weight", "itemBold": "bold", "itemItalic": "italic",
    "itemUnderline": "underlined", "itemFontItalic": "italic", "itemFontUnderline": "underlined",
    "itemTextVertical": "vertical", "itemWasResized": "stretched", "itemPinToCenter": "pinned to the centre",
    "itemSizeLimiting": "fixed sides: bit 0 the width, bit 1 the height", "itemHtml": "HTML as Qt writes it",
    "documentIsEmpty": "the box is empty", "screenDpi": "units of a point, unless the box is empty",
    "barcodeSymbol": "symbol", "barcodeText": "text", "lineWidth": "second option",
    "barcodeWhiteSpace": "modules kept free", "barcodeHideText": "text hidden",
    "barcodeSecurityLevel": "security level, the first option", "barcodeTextAbove": "text above the symbol",
    "barcodeShowStartStop": "start and stop characters shown", "svgContents": "the drawing",
    "svgIsInvalid": "the drawing was refused", "svgHasTransparency": "transparent",
    "pixmapItemData": "1 and a PNG file, or 0 alone", "imageHasTransparency": "some pixel is not opaque",
    "firstResizeAfterAddedToGroup": "the next resize is the first in a group",
    "hasSingleColor": "single colour: the fill is there once",
    "fillBoundingRectangle": "the drawing has a background",
    "svgContentsOriginal": "the drawing in black and white", "itemPenColor": "pen: what black becomes",
    "itemFillColor": "fill: what white becomes", "itemFillColor again": "fill once more; not with a single colour",
}

# Numbers that are written as hexadecimal ones.
HEXADECIMAL = {"graphics-item flags", "itemQFlags", "cap style", "join style", "itemAlignment"}
# What a number stands for.
WORDS = {
    ("pen style", 1): "solid", ("cap style", 0): "flat", ("cap style", 0x20): "round", ("join style", 0): "miter",
    ("join style", 0x80): "round", ("brush style", 1): "solid", ("itemAlignment", 0x84): "centred",
    ("itemAlignment", 1): "left", ("weight", 700): "bold", ("itemFontWeight", 700): "bold",
    ("barcodeSymbol", 58): "QR Code",
}
