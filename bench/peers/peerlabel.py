# SPDX-License-Identifier: BSD-3-Clause
"""The label and the rows of bench/batchlabel.h, in the forms that the compared programs read.

100 mm × 50 mm with a frame, a picture, three texts, a QR Code of 47 characters and a Code 128 of 16. Places are in
dots of 300 dpi.
"""
import base64
import csv
import json
import struct
import zlib

MILLIMETRES = 100, 50
DPI = 300
FRAME = 20, 20, 1140, 550
FRAME_WIDTH = 4
QR = 60, 60, 290, 290
BARS = 400, 390, 700, 150
LOGO = 60, 390, 290, 150
FONT = "DejaVu Sans"
TEXTS = (("part", 400, 60, 64), ("name", 400, 160, 48), ("place", 400, 250, 48))  # x, y and size
COLUMNS = "part", "name", "place", "qr", "bars"
INKS = {"black": "#000000", "red": "#d01020"}


def row_of(number):
    digits = f"{number:07}"
    return (f"Part {digits}", "Hexagon bolt M8 x 40", f"Shelf {number % 97}, box {number % 1013}",
            f"https://parts.example.org/item/{digits}?lot=2026".ljust(47, "0"), f"PART-{digits}-{number % 1000:03}")


def write_rows(path, count):
    with open(path, "w", encoding="utf-8", newline="") as file:
        writer = csv.writer(file)
        writer.writerow(COLUMNS)
        writer.writerows(row_of(number) for number in range(count))


def millimetres(dots):
    return dots * 25.4 / DPI


def points(dots):
    return dots * 72 / DPI


def logo():
    """Rings and a bar, in black, white and red, as a PNG file."""
    _, _, width, height = LOGO
    centre = (width - 1) // 2, (height - 1) // 2

    def pixel(x, y):
        ring = ((x - centre[0]) ** 2 + (y - centre[1]) ** 2) // 900 % 2
        return b"\xd0\x10\x20" if y > 130 else b"\0\0\0" if ring else b"\xff\xff\xff"

    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

    lines = b"".join(b"\0" + b"".join(pixel(x, y) for x in range(width)) for y in range(height))
    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(lines))
            + chunk(b"IEND", b""))


def vxlabel(inks):
    """The label for vxlabel, in the inks of these names."""
    def item(kind, place, **own):
        keys = "itemPositionX", "itemPositionY", "itemWidth", "itemHeight"
        return {"itemShape": kind} | dict(zip(keys, place)) | own

    rectangle, picture, text, barcode = 0x1002A, 0x1000C, 0x10015, 0x1001D
    picture_record = base64.b64encode(struct.pack(">I", 1) + logo()).decode()
    items = [item(rectangle, FRAME, itemPenWidth=FRAME_WIDTH, itemBrushStyle=0),
             item(picture, LOGO, pixmapItemData=picture_record)]
    items += [item(text, (x, y), itemText=f"${{{column}}}", itemFontFamily=FONT, itemFontSize=size,
                   itemFontBold=False) for column, x, y, size in TEXTS]
    items += [item(barcode, QR, barcodeSymbol=58, barcodeText="${qr}", barcodeHideText=True),
              item(barcode, BARS, barcodeSymbol=20, barcodeText="${bars}", barcodeHideText=True)]
    width, height = MILLIMETRES
    return json.dumps({"format": "vxlabel", "version": 6, "page": {"width": width, "height": height, "dpi": DPI},
                       "paper": "#ffffff", "inks": [{"name": ink, "color": INKS[ink]} for ink in inks],
                       "items": items}, indent=2)


def glabels(rows, picture):
    """The label for gLabels, on a page of its size, merged with a file of rows."""
    def place(x, y, width, height):
        sizes = {"x": x, "y": y, "w": width, "h": height}
        return (" ".join(f'{name}="{millimetres(dots):.3f}mm"' for name, dots in sizes.items())
                + ' shadow="False" a0="1" a1="0" a2="0" a3="1" a4="0" a5="0"')

    def text(column, x, y, size):
        font = (f'font_family="{FONT}" font_size="{points(size):.2f}" font_weight="Regular" font_italic="False"'
                ' color="0x000000ff" line_spacing="1"')
        return (f'<Object-text {place(x, y, 740, 1.5 * size)} justify="Left" valign="Top" auto_shrink="False">'
                f'<Span {font}><Field name="{column}"/></Span></Object-text>')

    def barcode(column, style, at):
        return (f'<Object-barcode {place(*at)} style="{style}" text="False" checksum="True" color="0x000000ff"'
                f' field="{column}"/>')

    width, height = (f"{side}mm" for side in MILLIMETRES)
    texts = "\n".join(text(*of) for of in TEXTS)
    return f"""<?xml version="1.0"?>
<Glabels-document xmlns="http://glabels.org/xmlns/3.0/">
<Template brand="Parts" part="label" size="Other" width="{width}" height="{height}" description="One on a page">
<Meta category="label"/>
<Label-rectangle id="0" width="{width}" height="{height}" round="0pt" x_waste="0pt" y_waste="0pt">
<Layout nx="1" ny="1" x0="0pt" y0="0pt" dx="{width}" dy="{height}"/>
</Label-rectangle>
</Template>
<Objects id="0" rotate="False">
<Object-box {place(*FRAME)} line_width="{points(FRAME_WIDTH):.2f}pt" line_color="0x000000ff" fill_color="0x00000000"/>
<Object-image {place(*LOGO)} src="{picture}"/>
{texts}
{barcode("qr", "IEC18004", QR)}
{barcode("bars", "Code128", BARS)}
</Objects>
<Merge type="Text/Comma/Line1Keys" src="{rows}"/>
<Data/>
</Glabels-document>
"""
