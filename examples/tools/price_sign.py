# SPDX-License-Identifier: BSD-3-Clause
"""Over a crate of apples: what they are, what they cost this week, and where they come from."""
from label import LINEAR, WHITE, Font, Label
from pictogram import Pictogram

BLACK, RED = "#000000", "#d7141a"

WIDTH, HEIGHT = 148, 105  # A6, lying
MARGIN, GUTTER = 8, 6
BAND = 20  # the height of the band on top
TOP, FACTS = BAND + 7, BAND + 47  # where both columns begin, and the table in one of them
PRICE = 58  # the width of the panel with the price
TEXT = WIDTH - 2 * MARGIN - GUTTER - PRICE


def build():
    sign = Label(WIDTH, HEIGHT, 300, {"black": BLACK, "red": RED})
    page = Pictogram(sign, 0, 0, 1, BLACK)
    page.box(0, 0, WIDTH, BAND)
    # Red letters on a black of their own.
    page.part(0, 0, color=RED).words(MARGIN, 14.4, "OFFER OF THE WEEK", Font(35, bold=True),
                                     WIDTH - 2 * MARGIN, itemFillColor=BLACK)
    _apples(page.part(MARGIN, TOP))
    _facts(page.part(MARGIN, FACTS))
    _price(page.part(WIDTH - MARGIN - PRICE, TOP))
    return sign


def _style(place, points, line_height, weight=700):
    """A style attribute; lines are as high as a part of what the font asks for."""
    return (f"style='font-family:Loma; {place.sign.font_size(points)}; font-weight:{weight}; "
            f"line-height:{line_height}%'")


def _apples(place):
    place.words(0, 8.2, "Elstar apples", Font(33, bold=True), TEXT)
    sweet = f"<span style='color:{RED}; font-weight:700'>sweet</span>"
    reasons = f"crisp, {sweet} and a little tart", "picked ripe this week", "no wax, no plastic"
    style = _style(place, 13, 85, weight=400)
    points = "".join(f"<li {style}>{reason}</li>" for reason in reasons)
    place.paragraphs(-1, 14, TEXT + 2, 24, f"<ul style='margin-left:16px'>{points}</ul>")


def _facts(place):
    """White letters on black, and a line below each fact."""
    facts = (("Origin", "Altes Land"), ("Harvest", "September"), ("Keep", "cool and dark"))
    name_cell = f"<td width='34%' bgcolor='{BLACK}' style='color:{WHITE}; font-weight:700'>"
    fact_cell = f"<td style='border-bottom:3px solid {BLACK}'>"
    rows = "".join(f"<tr>{name_cell}{name}</td>{fact_cell}{fact}</td></tr>" for name, fact in facts)
    table = f"<table width='100%' cellspacing='0' cellpadding='10'>{rows}</table>"
    place.paragraphs(0, 0, TEXT, 28, f"<div {_style(place, 13, 100, weight=400)}>{table}</div>")


def _price(place):
    """The old price, struck, and the new one, on red that comes up from below."""
    height = HEIGHT - MARGIN - TOP
    cents = f"<sup style='{place.sign.font_size(85)}'>49</sup>"
    # A line ends at its baseline: no letter of the price reaches below.
    price = (f"<p align='center' {_style(place, 120, 72)}>2{cents}</p>"
             f"<p align='center' {_style(place, 18, 72)}>EUR per kg</p>")
    place.paragraphs(0, 0, PRICE, height, price, itemFillColor=RED, itemBrushStyle=LINEAR, itemPenColor=RED,
                     itemPenWidth=8)
    place.paragraphs(0, 3, PRICE, 14, f"<p align='center' {_style(place, 18, 72)}>instead of <s>3.99</s></p>")
    white = place.part(0, 0, color=WHITE)
    white.words(6, height - 4, "You save 38 %", Font(19, bold=True), PRICE - 12)
