#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Prints the stream records of two rectangles as hex text, field by field.

An independent writer of the record: it knows the layout and nothing of the library. The literals of
tst_itempersistence.cpp are its output.
"""
import struct

NULL_STRING = None
RGB, HSV = 1, 2


def integer(code):
    return lambda value, order, real: struct.pack(order + code, value)


def real_number(value, order, real):
    return struct.pack(order + real, value)


def string(value, order, real):
    """A byte count and the UTF-16 units of the text; the null text has the count 0xFFFFFFFF and no units."""
    if value is NULL_STRING:
        return struct.pack(order + "I", 0xFFFFFFFF)
    units = value.encode("utf-16-be" if order == ">" else "utf-16-le")
    return struct.pack(order + "I", len(units)) + units


def colour(value, order, real):
    """The kind of colour in one byte, then alpha, three components and padding in 16 bits each."""
    spec, alpha, *components = value
    return struct.pack(order + "b5H", spec, alpha, *components, 0)


def rgb(red, green, blue, alpha=255):
    return (RGB, *(0x101 * component for component in (alpha, red, green, blue)))


def hsv(hue, saturation, value, alpha=255):
    return (HSV, 0x101 * alpha, 100 * hue, 0x101 * saturation, 0x101 * value)


FIELDS = [
    ("item id", integer("h")),
    ("flag word", integer("i")),
    ("horizontal mirror", integer("b")),
    ("vertical mirror", integer("b")),
    ("allow overprint", integer("b")),
    ("z value", real_number),
    ("graphics-item flags", integer("i")),
    ("visible", integer("b")),
    ("rotation", real_number),
    ("width", real_number),
    ("height", real_number),
    ("horizontal scale", real_number),
    ("vertical scale", real_number),
    *((name, real_number) for name in ("m11", "m12", "m13", "m21", "m22", "m23", "m31", "m32", "m33")),
    ("x", real_number),
    ("y", real_number),
    ("datasource id", integer("i")),
    ("datasource field", string),
    ("pen colour", colour),
    ("pen width", integer("h")),
    ("pen style", integer("i")),
    ("cap style", integer("i")),
    ("join style", integer("i")),
    ("brush style", integer("h")),
    ("fill colour", colour),
]

NEW = [-1, 1, 0, 0, 1, 0.0, 0x107, 1, 0.0, 100.0, 100.0, 1.0, 1.0,
       1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0,
       -1, NULL_STRING, rgb(0, 0, 0), 1, 1, 0x20, 0x80, 1, rgb(0, 0, 0, 0)]

CHANGED = [-300, 0xF00F0069 - 2**32, 1, 1, 0, -2.5, 0x10F, 0, 30.5, 250.25, 40.5, 2.5, 0.25,
           1.5, 0.25, 0.001953125, -0.5, 2.0, -0.0078125, 12.75, -7.5, 4.0, -123.5, 4096.125,
           70000, "Größe €😀", hsv(210, 128, 200, 77), 7, 4, 0, 0x40, -1, rgb(10, 20, 30, 40)]


def record(values, order=">", real="d", fields=FIELDS):
    """The bytes of each field after its name."""
    assert len(values) == len(fields)
    return [(name, write(value, order, real)) for (name, write), value in zip(fields, values)]


def show(title, values, order=">", real="d", fields=FIELDS):
    parts = record(values, order, real, fields)
    print(f"{title}: {sum(len(data) for _, data in parts)} bytes")
    for name, data in parts:
        print(f"    {data.hex().upper():<48} {name}")


if __name__ == "__main__":
    show("new rectangle", NEW)
    show("new rectangle, little endian", NEW, order="<")
    show("new rectangle, single precision", NEW, real="f")
    show("changed rectangle", CHANGED)
