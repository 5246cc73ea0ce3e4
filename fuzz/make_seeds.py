#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Writes the seeds of every class into fuzz/corpus: a record, a property map, and both forms of a document with
all of them; a barcode of every symbology; and a picture in every format. The other seeds there are typed by hand; this touches none of them.

It knows the layouts and nothing of the library.
"""
import base64
import json
import pathlib
import re
import struct
import sys
import zlib

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.append(str(ROOT / "tests" / "tools"))
from itemlayouts import COLOUR, LAYOUTS, NEW, PICTURE, STRING, rgb  # noqa: E402
from record_rectangle import CHANGED  # noqa: E402

CORPUS = ROOT / "fuzz" / "corpus"
VERSION = 6


def png_file(rows):
    """A file of rows of pixels of four bytes."""
    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))
    header = struct.pack(">IIBBBBB", len(rows[0]) // 4, len(rows), 8, 6, 0, 0, 0)
    pixels = b"".join(b"\0" + row for row in rows)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(pixels, 9))
            + chunk(b"IEND", b""))


SVG = (b'<svg xmlns="http://www.w3.org/2000/svg" width="24" height="16"><circle cx="8" cy="8" r="6" fill="#d40000"/>'
       b'<path d="M14 2h8v8z" fill-opacity="0.5"/></svg>')
SYMBOL = (b'<svg fill="#000000" stroke="none" width="24" height="16"><rect id="background_fix" fill="#FFFFFF" '
          b'fill-opacity="0" width="24" height="16"/><linearGradient id="g"><stop offset="0" stop-color="#000000"/>'
          b'<stop offset="1" style="stop-color:#FFFFFF"/></linearGradient><path d="M4 2h8v8z" fill="url(#g)"/></svg>')
# The values of the own fields of each class, in the order of its record.
OWN = {
    "svg": [10.5, -3.0, SVG, False, True],
    "pixmap": [png_file([bytes.fromhex("d40000ff 000000ff 00000000"), bytes.fromhex("ffffffff d4000080 0000ffff")]),
               10.5, -3.0, True, False],
    "symbol": [False, True, SYMBOL, 0.0, 0.0, rgb(0xD4, 0, 0), rgb(255, 255, 240), rgb(255, 255, 240)],
    "label_text": ["Größe\n42 😀", rgb(0xD4, 0, 0), 2, 4.0, "Loma", 24, 700, True, False, 0.0, 0.0, False, True,
                   True, 1],
    "rich_text": ['<p>Now <span style="font-size:30pt; color:#d40000;">9,99</span></p>', False, 1.25, rgb(0, 0, 0),
                  "Loma", 20, 400, False, True, 2],
    "barcode": [8, "LOT 4711", 1, 10, False, 0, 9, "Loma", 2, True, False, True, False, True, rgb(255, 255, 240),
                rgb(0xD4, 0, 0)],
    "line": [250.25, 0x35, -123.5, 4096.125],
    "group": [],
    "rectangle": [],
    "rounded_rectangle": [12.5, -3.0],
    "ellipse": [],
    "pie": [-160, 5761, True],
    "right_triangle": [],
    "equilateral_triangle": [],
    "diamond": [],
    "pentagon": [],
    "hexagon": [],
    "octagon": [],
}
# Their keys for the binding to a datasource are those of the document, not of the item.
RECTANGLES = ("rectangle", "rounded_rectangle")


def record_of(name, common):
    """The whole record of a class with the given common values."""
    return b"".join(data for _, data in LAYOUTS[name].record(common, OWN[name]))


def map_of(name):
    """A property map with a value for every kind of key."""
    layout = LAYOUTS[name]
    values = {"itemShape": layout.code, "itemId": 7, "itemRotation": 30.5, "itemHorizontalMirror": 1}
    if layout.has_pen():
        values |= {"itemPenColor": "#d40000", "itemPenWidth": 7, "itemPenStyle": 4, "itemPenCapStyle": 0,
                   "itemPenJoinStyle": 64}
    values |= {"itemZValue": -2.5, "allowOverprint": False, "itemPositionX": -123.5, "itemPositionY": 4096.125}
    if name != "line":
        values |= {"itemWidth": 250.25, "itemHeight": 40.5}
    if layout.has_brush():
        values |= {"itemFillColor": "#800a141e", "itemBrushStyle": 16}
    binding = ("datasourceId", "datasourceField") if name in RECTANGLES else (
        "itemDatasourceId", "itemDatasourceField")
    values |= zip(binding, (4, "Größe"))
    own_fields = layout.before + layout.behind
    own_values = {key: value for (key, _), value in zip(own_fields, OWN[name]) if key != "weight"}
    if name == "pixmap":
        own_values["pixmapItemData"] = base64.b64encode(PICTURE(own_values["pixmapItemData"])).decode()
    names = {"itemTextColor": "#d40000", "itemPenColor": "#d40000", "itemFillColor": "#fffff0",
             "svgContents": base64.b64encode(SVG).decode(),
             "svgContentsOriginal": base64.b64encode(SYMBOL).decode()}
    own_values |= {key: names[key] for key in own_values.keys() & names.keys()}
    return values | own_values


# In every document: a layer of a group of a group and a picture; its binary record is the documents' own.
NESTED = ("group", [("group", [("rectangle", []), ("label_text", [])]), ("pixmap", [])])


def json_tree(tree):
    name, members = tree
    return map_of(name) | ({"children": [json_tree(member) for member in members]} if members else {})


def json_document():
    return {"format": "vxlabel", "version": VERSION, "page": {"width": 62, "height": 29.5, "dpi": 300},
            "inks": [{"name": "black", "color": "#000000"}, {"name": "red", "color": "#d40000"}],
            "paper": "#fffff0", "items": [map_of(name) for name in OWN]
            + [{"itemShape": LAYOUTS["layer"].code, "itemId": 3, "itemZValue": 1.5, "name": "Größe", "visible": True,
                "children": [json_tree(NESTED)]}]}


def binary_document():
    # Geometry beyond ±10,000,000, or a transform with a perspective, would be no seed but a mistake.
    sound = NEW[:9] + [250.25, 40.5] + NEW[11:]

    def frame(name, members=()):
        data = record_of(name, sound)
        count = struct.pack(">I", len(members)) if name == "group" else b""
        head = struct.pack(">II", LAYOUTS[name].code, len(data))
        return head + data + count + b"".join(frame(*member) for member in members)

    layer = struct.pack(">hdb", 3, 1.5, 1) + STRING("Größe")
    frames = b"".join(frame(name) for name in OWN)
    frames += struct.pack(">II", LAYOUTS["layer"].code, len(layer)) + layer + struct.pack(">I", 1) + frame(*NESTED)
    return (b"VXLABEL\0" + struct.pack(">Iddd", VERSION, 62.0, 29.5, 300.0)
            + struct.pack(">I", 2) + STRING("black") + COLOUR(rgb(0, 0, 0)) + STRING("red")
            + COLOUR(rgb(0xD4, 0, 0)) + COLOUR(rgb(255, 255, 240)) + struct.pack(">I", len(OWN) + 1) + frames)


def picture_files():
    """Pictures of 3 x 2 pixels, and what only looks like one."""
    row = bytes.fromhex("d40000ff 000000ff ffffff80")
    headers = struct.pack("<IHHIIiiHHIIIIII", 70, 0, 0, 54, 40, 2, 2, 1, 24, 0, 0, 0, 0, 0, 0)
    drawing = b"<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect width='9' height='9'/></svg>"
    return {
        "png": png_file([row, row]),
        "gif": bytes.fromhex("47494638396103000200800000ff0000ffffff2c0000000003000200000204848f0959003b"),
        "bmp": b"BM" + headers + bytes(16),
        "deep_bmp": b"BM" + headers.replace(struct.pack("<HH", 1, 24), struct.pack("<HH", 1, 32)) + bytes(16),
        "ppm": b"P6 3 2 255 " + bytes(18),
        "pgm": b"P5 3 2 255 " + bytes(6),
        "pbm": b"P4 3 2 " + bytes(2),
        "text_ppm": b"P3 1 1 255 1 2 3 ",
        "xbm": b"#define a_width 3\n#define a_height 2\nstatic char a_bits[] = {\n0x05, 0x02 };\n",
        "xpm": b'/* XPM */\nstatic char *a[] = {\n"3 2 2 1",\n"a c #ff0000",\n"b c None",\n"aba",\n"bab"};\n',
        "ico": struct.pack("<HHHBBBBHHII", 0, 1, 1, 3, 2, 0, 0, 1, 32, len(png_file([row, row])), 22)
               + png_file([row, row]),
        "jpeg_header": bytes.fromhex("ffd8ffe000104a46494600010100000100010000ffd9"),
        "drawing": drawing,
        "packed_drawing": b"\x1f\x8b\x08" + bytes(7) + drawing,
    }


def barcode_samples():
    """The symbologies and the texts of the tests. Composites have another text too, which a barcode has not."""
    header = (ROOT / "tests" / "support" / "barcodesamples.h").read_text(encoding="utf-8")
    return [(int(symbol), text) for symbol, text in re.findall(r'\{ (\d+), "([^"]*)", "" \}', header)]


def barcode(symbol, text, *, level=-1, width=0, mode=1, border=0, border_width=0, height=0, whitespace=0):
    options = (symbol, level, width, mode, border, border_width, height, whitespace)
    return struct.pack("<8h", *options) + text.encode("utf-16-le", "surrogatepass")


# Barcodes that go wrong, or nearly: beyond the tables of libzint, and as far as they reach.
ODD_BARCODES = {
    "half_a_pair": barcode(58, "A\uD83D"),
    "null_character": barcode(20, "A\0B"),
    "no_symbology": barcode(999, "A"),
    "escapes": barcode(92, "\\x41\\d065\\u00E9\\G", mode=1 | 8),
    "gs1": barcode(71, "(01)09506000134352(10)A", mode=2 | 16),
    "boxed": barcode(74, "CODABLOCK F", border=2, border_width=4, height=30, whitespace=3),
    "mixed_case_in_pdf417": barcode(55, "aA1?" * 300),
    "sized_aztec": barcode(92, "\x01" * 1500, width=1),
    "codewords_in_pdf417": barcode(55, "1a" * 400, level=8, width=30),
}


def write(folder, name, data):
    path = CORPUS / folder / name
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(data)


for class_name in OWN:
    choice = LAYOUTS[class_name].code & 0xFF
    for state, values in (("new", NEW), ("changed", CHANGED)):
        # The class, the document's version, byte order and precision.
        write("record", f"{class_name}_{state}", bytes([choice, VERSION, 0, 0]) + record_of(class_name, values))
    write("map", class_name, bytes([choice]) + json.dumps(map_of(class_name)).encode())
write("vxl", "all_shapes.vxl", json.dumps(json_document(), ensure_ascii=False).encode())
write("vxb", "all_shapes.vxb", binary_document())
for picture_name, file in picture_files().items():
    write("picture", picture_name, file)
for number, sample in barcode_samples():
    write("barcode", f"symbology_{number}", barcode(number, sample))
for number, drawing in enumerate(sorted((ROOT / "tests" / "data" / "symbols").glob("*.svg"))):
    write("symbol", drawing.stem, bytes([number % 8]) + drawing.read_bytes())
for odd_name, odd in ODD_BARCODES.items():
    write("barcode", odd_name, odd)
