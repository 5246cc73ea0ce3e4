#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Writes all.pdf with a page for each row of rows.csv in this folder, with ReportLab and its own codes.

Usage: composereportlab.py FONT.ttf
"""
import csv
import sys

from reportlab.graphics import renderPDF
from reportlab.graphics.barcode import code128, qr
from reportlab.graphics.shapes import Drawing
from reportlab.lib.units import mm
from reportlab.pdfbase import pdfmetrics, ttfonts
from reportlab.pdfgen import canvas

import peerlabel
from peerlabel import points

HEIGHT = peerlabel.MILLIMETRES[1] * mm


def box(x, y, width, height):
    """A place, counted from the lower left corner of the page."""
    return points(x), HEIGHT - points(y + height), points(width), points(height)


def draw_qr(page, text):
    x, y, width, height = box(*peerlabel.QR)
    code = qr.QrCodeWidget(text, barWidth=width, barHeight=height, barBorder=0)
    drawing = Drawing(width, height)
    drawing.add(code)
    renderPDF.draw(drawing, page, x, y)


def draw_bars(page, text):
    x, y, width, height = box(*peerlabel.BARS)
    modules = code128.Code128(text, barWidth=1, quiet=False).width
    code128.Code128(text, barWidth=width / modules, barHeight=height, quiet=False).drawOn(page, x, y)


def draw(page, row):
    page.setLineWidth(points(peerlabel.FRAME_WIDTH))
    page.rect(*box(*peerlabel.FRAME))
    page.drawImage("logo.png", *box(*peerlabel.LOGO))
    for column, x, y, size in peerlabel.TEXTS:
        page.setFont("label", points(size))
        page.drawString(points(x), HEIGHT - points(y + size), row[column])
    draw_qr(page, row["qr"])
    draw_bars(page, row["bars"])
    page.showPage()


def main():
    pdfmetrics.registerFont(ttfonts.TTFont("label", sys.argv[1]))
    page = canvas.Canvas("all.pdf", pagesize=[side * mm for side in peerlabel.MILLIMETRES])
    with open("rows.csv", encoding="utf-8", newline="") as file:
        for row in csv.DictReader(file):
            draw(page, row)
    page.save()


if __name__ == "__main__":
    main()
