#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Prints the stream records of two rectangles as hex text, field by field.

An independent writer of the record: it knows the layout and nothing of the library. The literals of
tst_itempersistence.cpp are its output.
"""
from itemlayouts import FIELDS, NEW, hsv, record, rgb

CHANGED = [-300, 0xF00F0069 - 2**32, 1, 1, 0, -2.5, 0x10F, 0, 30.5, 250.25, 40.5, 2.5, 0.25,
           1.5, 0.25, 0.001953125, -0.5, 2.0, -0.0078125, 12.75, -7.5, 4.0, -123.5, 4096.125,
           70000, "Größe €😀", hsv(210, 128, 200, 77), 7, 4, 0, 0x40, -1, rgb(10, 20, 30, 40)]


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
