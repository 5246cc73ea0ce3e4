#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Prints the stream records of two lines as hex text, field by field.

An independent writer of the record: it knows the layout and nothing of the library. The literals of
tests/support/linerecords.h are its output.
"""
from itemlayouts import LAYOUTS, NULL_STRING, hsv, rgb
from record_rectangle import show

LINE_FIELDS = LAYOUTS["line"].fields()

NEW = [-1, 1, 0, 0, 1, 0.0, 0x10F, 1, 0.0, 100.0, 0.0, 1.0, 1.0,
       1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0,
       -1, NULL_STRING, rgb(0, 0, 0), 1, 1, 0x20, 0x80, 100.0, 0, 0.0, 0.0]

CHANGED = [-300, 0xF00F0069 - 2**32, 1, 0, 0, -2.5, 0x107, 0, 30.5, 250.25, 0.0, 2.5, 0.25,
           1.5, 0.25, 0.001953125, -0.5, 2.0, -0.0078125, 12.75, -7.5, 4.0, -123.5, 4096.125,
           70000, "Größe €😀", hsv(210, 128, 200, 77), 7, 4, 0, 0x40, 250.25, 0x53, -123.5, 4096.125]

show("new line", NEW, fields=LINE_FIELDS)
show("new line, little endian", NEW, order="<", fields=LINE_FIELDS)
show("new line, single precision", NEW, real="f", fields=LINE_FIELDS)
show("changed line", CHANGED, fields=LINE_FIELDS)
