# SPDX-License-Identifier: BSD-3-Clause
"""The kinds of items: what the page of each says, and the values of its new items."""
from dataclasses import dataclass, field

import item_tables as tables
from itemlayouts import BLACK, NONE, TRANSPARENT

# A value that Qt decides about.
UNKNOWN = ...
INVALID = (0, 0xFFFF, 0, 0, 0)
FONT = "_Fen Loma"
# The letters T, E, X and T advance by these of the 2048 units of an em in Loma Bold, cut to 1/64 pixel, and a line
# of it is 3255 units high, rounded up to a pixel; there is a margin of 4.
ADVANCES = (1251, 1320, 1366, 1251)
LABEL_SIZE = {"width": sum(advance * 48 * 64 // 2048 for advance in ADVANCES) / 64 + 8.0,
              "height": -(-3255 * 48 // 2048) + 8.0}
RICH_FONT = [FONT, 48, 700, 0, 0, 1]


@dataclass
class Kind:
    """A page. The values are those of a new item: of common fields that differ from a rectangle's, of the own
    fields in the order of the record, and of properties that no record has."""

    page: str
    layout: str
    title: str
    class_name: str
    header: str
    intro: str
    alt: str
    properties: list
    common: dict = field(default_factory=dict)
    own: list = field(default_factory=list)
    other: dict = field(default_factory=dict)
    meanings: dict = field(default_factory=dict)
    fields: dict = field(default_factory=dict)
    note: str = ""


def number(meaning):
    return "double", meaning


def polygon(page, class_name, title, intro, alt, width=100.0, height=100.0):
    scales = {"itemScaleX": number(f"width over the reference width, {width:.10g}"),
              "itemScaleY": number(f"height over the reference height, {height:.10g}")}
    note = ("No corner is in the record: the outline follows from the scales, the size and the pen; see "
            "[the six polygons](../file-formats.md#fields-of-the-classes).")
    return Kind(page, page.replace("-", "_"), title, class_name, f"items/shapes/{class_name.lower()}.h", intro, alt,
                tables.POLYGON, common={"width": width, "height": height}, meanings=scales, note=note)


# Of items that stretch a content of a size of its own.
CONTENT_SCALES = {"itemScaleX": number("width over that of the content"),
                  "itemScaleY": number("height over that of the content")}
TEXT_COMMON = {"pen width": 0}
OPAQUE_FLAGS = {"graphics-item flags": 0x10F}
IMAGE_FLAGS = {"flag word": 3, "graphics-item flags": 0x10F}

KINDS = [
    Kind("group", "group", "Group", "GroupItem", "items/containers/groupitem.h",
         "A group binds items into one that is selected, moved, resized and turned as a whole. It shows nothing of "
         "its own but the frame of its selection, and groups may lie in groups.",
         "A delivery note as a turned group: a card, a symbol, a text and a barcode in the group's dotted frame",
         tables.GROUP, common={"width": -1.0, "height": -1.0}, other={"childrenCount": 0},
         meanings={"itemWidth": number("width of the members in scene units; −1 without members"),
                   "itemHeight": number("height of the members in scene units; −1 without members"),
                   "childrenCount": ("int", "how many members there are; a number that is set is kept apart, for "
                                     "the host")},
         note="The members are not in it: [documents hold them](../file-formats.md#groups-and-layers) behind the "
         "record of the group."),
    Kind("layer", "layer", "Layer", "LayerItem", "items/containers/layeritem.h",
         "A layer is an invisible parent that gives its items a common place in the stack, so that they are shown, "
         "hidden or printed together. Its members behave as if they lay on the page itself.",
         "A price sign whose ground, disc, text and line are the members of one layer",
         tables.LAYER, other={"childrenCount": 0},
         meanings={"childrenCount": ("int", "how many members there are; read only")},
         note="A layer writes nothing. Its members, its name, its id, its z value and its visibility are in "
         "[the documents](../file-formats.md#groups-and-layers)."),
    Kind("svg", "svg", "SVG drawing", "SvgItem", "items/graphics/svgitem.h",
         "A vector drawing in its own colours, sharp in any size and printed like a picture. Use it for logos and "
         "illustrations; a drawing in two colours that should follow the label is better a [symbol](symbol.md).",
         "A drawing of a sailing boat at sea in the evening",
         tables.SVG, common=IMAGE_FLAGS, own=[0.0, 0.0, NONE, 0, 0], other={"svgContents": ""},
         meanings=CONTENT_SCALES,
         note="Of a compressed drawing, the record holds its compressed bytes."),
    Kind("picture", "pixmap", "Picture", "PixMapItem", "items/graphics/pixmapitem.h",
         "A photograph or logo of pixels, stretched to any size, turned and mirrored. On the plates it is dithered "
         "into the inks.",
         "A picture of hills at sunset",
         tables.PICTURE, common=IMAGE_FLAGS, own=[NONE, 0.0, 0.0, 0, 0], other={"pixmapItemData": "AAAAAA=="},
         meanings={"itemScaleX": number("width over that of the pixels"),
                   "itemScaleY": number("height over that of the pixels")}),
    Kind("symbol", "symbol", "Symbol", "SymbolItem", "items/graphics/symbolitem.h",
         "An SVG drawing in black and white, of which the pen and the fill take the places, as often as they change. "
         "Use it for pictograms that are to have the colours of the label.",
         "A symbol of an umbrella in the rain: its black parts in dark blue, its white ones in yellow",
         tables.SYMBOL, common=OPAQUE_FLAGS, own=[0, 0, NONE, 0.0, 0.0, BLACK, TRANSPARENT, TRANSPARENT],
         other={"svgContentsOriginal": ""},
         meanings=CONTENT_SCALES | {
             "itemPenColor": ("QString", "what black becomes, `\"#rrggbb\"`; a transparent one reads black"),
             "itemFillColor": ("QString", "what white becomes, `\"#rrggbb\"`; a transparent one, which takes white "
                               "away, reads black")},
         note="The item does not read the last colour, so a reader has to know the length of the record; see "
         "[Symbol](../file-formats.md#fields-of-the-classes)."),
    Kind("label-text", "label_text", "Label text", "SimpleTextItem", "items/text/simpletextitem.h",
         "Plain text of one or more lines in one font and one colour, across or vertical, as large as its letters "
         "or stretched to any size. Use it for what is typed or comes from a data source.",
         "A price of figs in two lines of bold red letters on yellow, with a frame",
         tables.LABEL_TEXT, common=TEXT_COMMON | LABEL_SIZE,
         own=["TEXT", BLACK, 0x84, 4.0, FONT, 48, 700, 0, 0, 0.0, 0.0, 0, 0, 0, 0], other={"itemFontBold": True},
         meanings={"itemWidth": number("width of the letters and their margin, stretched, without the frame"),
                   "itemHeight": number("height of the letters and their margin, stretched, without the frame"),
                   "itemScaleX": number("width over the natural one of the text"),
                   "itemScaleY": number("height over the natural one of the text"),
                   "itemFontSize": ("int", "in units, before stretching, at least 1; −1 while stretched"),
                   "itemAlignment": ("uint", "1 leading, 2 trailing, 4 centred, 8 justified; 16 more: left and right "
                                     "instead")},
         fields={"itemFontSize": "font size in units, before stretching"},
         note="Width and height are those of the word in Loma, in which `_Fen Loma` is shown here."),
    Kind("rich-text", "rich_text", "Rich text", "RichTextItem", "items/text/richtextitem.h",
         "A box of HTML with fonts, sizes and colours of its own, lists, tables and pictures. Use it where one text "
         "has more than one look; the text flows in the width of the box and may be higher.",
         "A rich text: a headline, a list and a price with raised cents in three colours",
         tables.RICH_TEXT, common=TEXT_COMMON, own=[UNKNOWN, 1, NONE, BLACK, *RICH_FONT],
         other={"itemHtml": UNKNOWN, "screenDpi": UNKNOWN},
         meanings={"itemWidth": number("width of the box in scene units"),
                   "itemHeight": number("height of the box in scene units"),
                   "itemTextColor": ("QColor", "colour of letters to which the HTML gives none, with its alpha"),
                   "itemFontSize": ("int", "size of letters in the empty box, in units, at least 1"),
                   "itemFontFamily": ("QString", "font family in the empty box"),
                   "itemAlignment": ("int", "in the empty box: 1 leading, 2 right, 4 centred, 8 justified")},
         fields={"itemFontSize": "font size in the empty box, in units"},
         note="*h* is the length of the HTML, which is Qt's: four bytes of its count and two for each UTF-16 unit."),
    Kind("barcode", "barcode", "Barcode", "BarcodeItem", "items/barcode/barcodeitem.h",
         "A QR Code, Data Matrix, EAN, Code 128 or any other of [a hundred symbols](../barcodes.md), with its text "
         "beside it or without. A text that the symbol cannot hold leaves the background alone.",
         "A QR Code in dark blue",
         tables.BARCODE, common=OPAQUE_FLAGS,
         own=[58, "B123456", 0, 0, 0, 0, 7, FONT, 0x84, 0, 0, 0, 0, 0, INVALID, INVALID],
         meanings={"itemScaleX": number("width over that of a new item, 100"),
                   "itemScaleY": number("height over that of a new item, 100"),
                   "itemTextColor": ("QColor", "colour of bars and text, with its alpha; an invalid one is black"),
                   "itemFillColor": ("QString", "colour of the background, `\"#rrggbb\"`; an invalid or transparent "
                                     "one is no background and reads black"),
                   "itemFontSize": ("int", "in points of 4/3 units; below 1 there is no text"),
                   "itemFontFamily": ("QString", "font family of the text"),
                   "itemAlignment": ("uint", "1 left, 2 right, 4 centred; 128 more changes nothing")},
         fields={"itemFontSize": "font size in points of 4/3 units", "itemFillColor": "background",
                 "itemTextColor": "bars and text"},
         note="The height of the bars and whether the symbol keeps its proportions are not in the record; see "
         "[Barcode](../file-formats.md#fields-of-the-classes)."),
    Kind("line", "line", "Line", "LineItem", "items/shapes/lineitem.h",
         "A straight line, solid or dashed, with an arrow, chevrons or a bar at either end. It runs from left to "
         "right by its length; only its rotation gives it a direction.",
         "A rising red line with a bar at its left end and a filled arrow at its right end",
         tables.LINE, common=OPAQUE_FLAGS | {"height": 0.0}, own=[100.0, 0, 0.0, 0.0],
         meanings={"itemWidth": number("the length; loading ignores it"),
                   "itemHeight": number("0; loading ignores it"),
                   "itemHorizontalMirror": number("1 turns the line by half a circle, 0 does not"),
                   "itemVerticalMirror": number("always 0: a line is its own mirror image"),
                   "itemPenWidth": ("ushort", "width of the line in scene units, 1 to 72"),
                   "itemPenColor": ("QString", "colour of the line, `\"#rrggbb\"`; a transparent one reads black")},
         note="The length decides, not the width, and the second position, not the first: both are the same in a "
         "record that a line has written."),
    Kind("rectangle", "rectangle", "Rectangle", "RectangleItem", "items/shapes/rectangleitem.h",
         "A rectangle with an outline and a fill. Use it for boxes, grounds and bars; with a width of outline of 0 it "
         "is a plain area.",
         "A rectangle with a thick outline and a linear gradient",
         tables.RECTANGLE,
         note="Loading sets both scales to 1. The property map has no key for the data source; documents have "
         "`datasourceId` and `datasourceField`."),
    Kind("rounded-rectangle", "rounded_rectangle", "Rounded rectangle", "RoundedRectangleItem",
         "items/shapes/roundedrectangleitem.h",
         "A rectangle with rounded corners, whose radii are lengths: they stay as they are when the item is resized. "
         "Use it for plates and buttons.",
         "A rounded rectangle with a green outline and a radial gradient",
         tables.RECTANGLE + ["roundingRadiusX", "roundingRadiusY"], own=[25.0, 25.0],
         note="Loading sets both scales to 1. The property map has no key for the data source; documents have "
         "`datasourceId` and `datasourceField`."),
    Kind("ellipse", "ellipse", "Ellipse", "EllipseItem", "items/shapes/ellipseitem.h",
         "An ellipse within the item's size, and a circle if both sides are equal.",
         "An ellipse with a conical gradient in violet",
         tables.ELLIPSE, note="Loading sets both scales to 1."),
    Kind("pie", "pie", "Pie", "PieItem", "items/shapes/pieitem.h",
         "A slice of an ellipse, of any angle. Use it for shares and gauges, with the outline of the whole ellipse "
         "if that helps.",
         "Three quarters of a pie in orange, with the outline of the whole",
         tables.ELLIPSE + ["drawCircle", "startPieAngle", "spanPieAngle"],
         common={"cap style": 0, "join style": 0}, own=[1440, 4320, 0], note="Loading sets both scales to 1."),
    polygon("right-triangle", "RightTriangleItem", "Right triangle",
            "A triangle whose right angle is at the bottom left. Mirrors bring it to any other corner.",
            "A right triangle with hatching"),
    polygon("equilateral-triangle", "EquilateralTriangleItem", "Equilateral triangle",
            "A triangle of three equal sides that stands on one of them, until it is stretched. Use it for warnings.",
            "A yellow triangle with a thick black outline and round corners", height=86.60254038),
    polygon("diamond", "DiamondItem", "Diamond",
            "A square on its corner, until it is stretched. Use it for the frames of hazard signs.",
            "A white diamond with a thick red outline"),
    polygon("pentagon", "PentagonItem", "Pentagon",
            "A regular pentagon that stands on a side, until it is stretched.",
            "A pentagon with a radial gradient in blue", 95.10565163, 90.45084972),
    polygon("hexagon", "HexagonItem", "Hexagon",
            "A regular hexagon with a corner at the left and one at the right, until it is stretched.",
            "A hexagon with a linear gradient in green", height=86.60254038),
    polygon("octagon", "OctagonItem", "Octagon",
            "A regular octagon that stands on a side, until it is stretched. Use it for signs that say stop.",
            "A red octagon with a dark outline", 92.0, 92.0),
]
