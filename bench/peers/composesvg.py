#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Composes an SVG drawing for each row of rows.csv in this folder, with the codes that zint has drawn.

Usage: composesvg.py [each]
With "each", zint is started for each code first; otherwise the drawings qr00001.svg, bars00001.svg and so on are there.
"""
import csv
import html
import re
import subprocess
import sys

import peerlabel


def nested(path, x, y, width, height):
    """The drawing of a file, stretched to a place."""
    with open(path, encoding="utf-8") as file:
        drawing = file.read()
    sides = re.search(r'<svg width="([\d.]+)" height="([\d.]+)"', drawing).groups()
    inside = re.search(r"<g .*</g>", drawing, re.DOTALL).group()
    return (f'<svg x="{x}" y="{y}" width="{width}" height="{height}" viewBox="0 0 {sides[0]} {sides[1]}"'
            f' preserveAspectRatio="none">{inside}</svg>')


def compose(row, number):
    width, height = peerlabel.MILLIMETRES
    dots = peerlabel.DPI / 25.4
    x, y, w, h = peerlabel.FRAME
    parts = [f'<rect x="{x}" y="{y}" width="{w}" height="{h}" fill="none" stroke="#000"'
             f' stroke-width="{peerlabel.FRAME_WIDTH}"/>']
    x, y, w, h = peerlabel.LOGO
    parts.append(f'<image x="{x}" y="{y}" width="{w}" height="{h}" href="logo.png"/>')
    parts += [f'<text x="{x}" y="{y + size}" font-family="{peerlabel.FONT}" font-size="{size}">'
              f"{html.escape(row[column])}</text>" for column, x, y, size in peerlabel.TEXTS]
    parts += [nested(f"qr{number:05}.svg", *peerlabel.QR), nested(f"bars{number:05}.svg", *peerlabel.BARS)]
    with open(f"label{number:05}.svg", "w", encoding="utf-8") as file:
        file.write(f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}mm" height="{height}mm"'
                   f' viewBox="0 0 {width * dots} {height * dots}">{"".join(parts)}</svg>')


def main():
    with open("rows.csv", encoding="utf-8", newline="") as file:
        for number, row in enumerate(csv.DictReader(file), 1):
            if sys.argv[1:] == ["each"]:
                subprocess.run(["zint", "-b", "QRCODE", "-o", f"qr{number:05}.svg", "-d", row["qr"]], check=True)
                subprocess.run(["zint", "-b", "CODE128", "--notext", "-o", f"bars{number:05}.svg", "-d", row["bars"]],
                               check=True)
            compose(row, number)


if __name__ == "__main__":
    main()
