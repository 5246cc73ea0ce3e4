# SPDX-License-Identifier: BSD-3-Clause
"""On a bag of coffee: a photograph, the roaster's mark, and how to handle the bag."""
import math

from label import WHITE, Font, Label
from pictogram import Pictogram

BLACK, RED = "#000000", "#d7141a"

WIDTH, HEIGHT = 90, 60
MARGIN = 4
PHOTO_HEIGHT = 34
PIXELS_PER_MM = 3

ARROWS = ('<svg width="40" height="40"><path d="M4 38h32v-4H4zM10 30h6V14h4L13 4L6 14h4zM24 30h6V14h4L27 4l-7 10h4z"/>'
          '</svg>')
UMBRELLA = ('<svg width="40" height="40"><path d="M20 6C10 6 4 12 3 20h15v13a2 2 0 0 1-4 0h-3a5 5 0 0 0 10 0V20h16'
            'C36 12 30 6 20 6z"/><path d="M8 1l-2 5h3zM20 0l-2 4h3zM32 1l-2 5h3z"/></svg>')
LEAF = ('<svg width="40" height="40"><circle cx="20" cy="20" r="18" fill="#FFFFFF" stroke="#000000" stroke-width="3"/>'
        '<path d="M11 30C10 16 18 10 30 10C30 22 24 30 13 28L22 18z"/></svg>')
MARK = """<svg xmlns="http://www.w3.org/2000/svg" width="60" height="60">
<linearGradient id="cup" x1="0" x2="1"><stop offset="0" stop-color="#d7141a"/><stop offset="1" stop-color="#000000"/>
</linearGradient>
<path d="M10 28h34v8c0 12-6 18-17 18S10 48 10 36z" fill="url(#cup)"/>
<path d="M44 31c10-2 12 12-2 13" fill="none" stroke="#000000" stroke-width="3"/>
<path d="M20 22c-4-5 4-7 0-13M28 22c-4-5 4-7 0-13M36 22c-4-5 4-7 0-13" fill="none" stroke="#000000"
stroke-width="2.5"/></svg>
"""


def build():
    sign = Label(WIDTH, HEIGHT, 300, {"black": BLACK, "red": RED})
    sign.picture((0, 0, sign.dots(WIDTH), sign.dots(PHOTO_HEIGHT)), _morning())
    page = Pictogram(sign, 0, 0, 1, BLACK)
    mark = sign.dots(18)
    sign.drawing((sign.dots(MARGIN), sign.dots(PHOTO_HEIGHT + 3), mark, mark), MARK)
    page.words(26, PHOTO_HEIGHT + 9.5, "Morning Ridge", Font(20, bold=True), 44)
    page.part(0, 0, color=RED).words(26, PHOTO_HEIGHT + 15, "whole beans, 250 g", Font(11), 44)
    page.words(26, PHOTO_HEIGHT + 20.5, "roasted on 20 November", Font(8), 44)
    for i, (svg, color) in enumerate(((ARROWS, BLACK), (UMBRELLA, BLACK), (LEAF, RED))):
        place = sign.dots(73.5), sign.dots(PHOTO_HEIGHT + 2 + 8 * i), sign.dots(7), sign.dots(7)
        sign.symbol(place, svg, color, WHITE if svg is LEAF else "transparent")
    return sign


def _morning():
    """The sun over three ridges in the haze, as rows of pixels."""
    width, height = WIDTH * PIXELS_PER_MM, PHOTO_HEIGHT * PIXELS_PER_MM
    return [b"".join(_pixel(x / width, y / height, width / height) for x in range(width)) for y in range(height)]


def _pixel(x, y, ratio):
    sun = math.hypot((x - 0.68) * ratio, y - 0.42)
    glow = math.exp(-4 * sun)
    light = [0.95 - 0.25 * y + 0.3 * glow, 0.55 + 0.2 * y + 0.4 * glow, 0.5 + 0.1 * y + 0.1 * glow]
    if sun < 0.13:
        light = [1.0, 0.97, 0.85]
    for distance, (level, wave) in enumerate(((0.52, 5), (0.66, 9), (0.82, 14))):
        ridge = level + 0.05 * math.sin(wave * x + 2 * distance) + 0.02 * math.sin(37 * x + 5 * distance)
        if y > ridge:
            shade = 0.55 - 0.24 * distance - 0.5 * (y - ridge)
            haze = (2 - distance) * 0.12
            light = [shade + haze, shade * 0.8 + haze * 0.7, shade * 0.75 + haze * 0.6]
    return bytes(min(255, max(0, round(255 * value))) for value in light)
