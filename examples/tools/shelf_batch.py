# SPDX-License-Identifier: BSD-3-Clause
"""Two hundred articles of a shop in a database, and the label of a shelf that shows each of them."""
import json
import sqlite3

from label import EAN, GS1_DATABAR, WHITE, Font, Label
from pictogram import Pictogram

BLACK, RED = "#000000", "#d7141a"

WIDTH, HEIGHT = 80, 40
EDGE = 3
PRICE = 47  # where the panel with the price begins
CODES = 21.5  # where the barcodes begin
EAN_MODULES, DATABAR_MODULES = 113, 96  # of which the EAN's has white space at both sides
MODULE = 3  # dots at 300 dpi: 0.254 mm

# Name, what it is, cents for a kilogram or litre, its unit, and the sizes in grams or millilitres.
GOODS = [
    ("Hazelnut muesli", "five grains, fruit and nuts", 532, "kg", (250, 375, 500, 750, 1000)),
    ("Rolled oats", "wholegrain, large flakes", 178, "kg", (400, 500, 750, 1000, 2000)),
    ("Spelt flakes", "wholegrain, fine", 298, "kg", (250, 400, 500, 750, 1000)),
    ("Wheat flour", "type 550", 98, "kg", (500, 1000, 1500, 2000, 2500)),
    ("Rye flour", "type 1150", 118, "kg", (500, 1000, 1500, 2000, 2500)),
    ("Basmati rice", "from the foot of the Himalaya", 398, "kg", (250, 500, 750, 1000, 2000)),
    ("Red lentils", "peeled, ready in ten minutes", 438, "kg", (250, 400, 500, 750, 1000)),
    ("Chick peas", "dried", 378, "kg", (250, 400, 500, 750, 1000)),
    ("Spaghetti", "durum wheat, no. 5", 238, "kg", (250, 500, 750, 1000, 2000)),
    ("Penne", "durum wheat, ridged", 238, "kg", (250, 500, 750, 1000, 2000)),
    ("Cane sugar", "unrefined", 288, "kg", (250, 500, 750, 1000, 2000)),
    ("Sea salt", "coarse", 148, "kg", (250, 500, 750, 1000, 2000)),
    ("Almonds", "with skin, roasted", 1398, "kg", (100, 150, 200, 300, 500)),
    ("Walnuts", "halves", 1598, "kg", (100, 150, 200, 300, 500)),
    ("Sunflower seeds", "peeled", 498, "kg", (100, 200, 250, 500, 1000)),
    ("Raisins", "seedless, unsulphured", 698, "kg", (100, 200, 250, 500, 1000)),
    ("Dried apricots", "soft, unsulphured", 1298, "kg", (100, 150, 200, 250, 500)),
    ("Dark chocolate", "72 % cocoa", 1490, "kg", (50, 80, 100, 200, 300)),
    ("Forest honey", "from the hills, clear", 1180, "kg", (125, 250, 350, 500, 750)),
    ("Plum jam", "70 % fruit", 798, "kg", (150, 225, 340, 450, 700)),
    ("Tomato passata", "sieved, with basil", 338, "kg", (200, 350, 500, 690, 1000)),
    ("Peeled tomatoes", "whole, in juice", 298, "kg", (200, 400, 500, 800, 1000)),
    ("Green olives", "with stone, in brine", 1098, "kg", (100, 150, 200, 300, 500)),
    ("Capers", "in sea salt", 1890, "kg", (50, 100, 150, 200, 250)),
    ("Mustard", "medium hot", 558, "kg", (100, 200, 250, 350, 500)),
    ("Olive oil", "extra virgin, cold pressed", 1198, "l", (100, 250, 375, 500, 750)),
    ("Rapeseed oil", "cold pressed", 698, "l", (100, 250, 500, 750, 1000)),
    ("Cider vinegar", "naturally cloudy", 358, "l", (250, 350, 500, 750, 1000)),
    ("Soy sauce", "brewed, six months", 1098, "l", (100, 150, 250, 300, 500)),
    ("Apple juice", "cloudy, from orchards", 198, "l", (200, 330, 500, 750, 1000)),
    ("Grape juice", "red, not from concentrate", 318, "l", (200, 330, 500, 750, 1000)),
    ("Oat drink", "with calcium", 188, "l", (250, 330, 500, 750, 1000)),
    ("Mineral water", "still", 58, "l", (250, 500, 750, 1000, 1500)),
    ("Ground coffee", "mild, filter", 1498, "kg", (100, 200, 250, 350, 500)),
    ("Espresso beans", "dark roast", 1798, "kg", (100, 200, 250, 350, 500)),
    ("Black tea", "broken leaf", 2490, "kg", (50, 75, 100, 200, 250)),
    ("Rooibos", "loose", 1790, "kg", (50, 75, 100, 200, 250)),
    ("Cocoa powder", "lightly de-oiled", 1590, "kg", (100, 125, 200, 250, 500)),
    ("Crispbread", "rye and sesame", 798, "kg", (125, 200, 250, 400, 500)),
    ("Rice cakes", "with sea salt", 990, "kg", (100, 130, 200, 250, 300)),
]

QUERY = ("SELECT ean, substr(ean, 1, 12) AS item, name, details, amount, price, unit, unit_price, "
         "aisle, shelf, place, order_at, order_up_to FROM articles ORDER BY aisle, shelf, place")


def build():
    label = Label(WIDTH, HEIGHT, 300, {"black": BLACK, "red": RED})
    black = Pictogram(label, 0, 0, 1, BLACK)
    black.words(EDGE, 7.6, "${name}", Font(15, bold=True))
    black.words(EDGE, 12.4, "${details}", Font(8))
    black.words(EDGE, 17.2, "${amount}", Font(11, bold=True))
    black.words(EDGE + 15, 17.2, "1 ${unit} = ${unit_price:%.2f} EUR", Font(8))
    panel = Pictogram(label, PRICE, 0, 1, RED)
    panel.box(0, 0, WIDTH - PRICE, 19)
    white = panel.part(0, 0, color=WHITE)
    white.words(2.5, 13.8, "${price:%.2f}", Font(31, bold=True))
    white.words(25, 13.8, "EUR", Font(9, bold=True))
    black.barcode(EDGE, CODES, (EAN_MODULES * MODULE, label.dots(15.5)), EAN, "${ean}")
    # The same number, as the trade writes it with fourteen digits.
    black.barcode(PRICE, CODES, (DATABAR_MODULES * MODULE, label.dots(8)), GS1_DATABAR, "0${item}",
                  barcodeHideText=True)
    black.words(PRICE, CODES + 12.8, "Aisle ${aisle} · Shelf ${shelf} · Place ${place}", Font(7))
    black.words(PRICE, CODES + 15.9, "Order at ${order_at}, up to ${order_up_to}", Font(7))
    return label


def write_label(path):
    document = json.loads(build().to_json())
    document["sources"] = [{"id": 1, "kind": "sql", "location": "sqlite:shelf.sqlite", "query": QUERY}]
    path.write_text(json.dumps(document, ensure_ascii=False, indent=2, sort_keys=True) + "\n", encoding="utf-8")


def write_database(path):
    path.unlink(missing_ok=True)
    database = sqlite3.connect(path)
    database.execute("CREATE TABLE articles (ean TEXT PRIMARY KEY, name TEXT, details TEXT, amount TEXT, price REAL, "
                     "unit TEXT, unit_price REAL, aisle INTEGER, shelf INTEGER, place INTEGER, order_at INTEGER, "
                     "order_up_to INTEGER)")
    database.executemany("INSERT INTO articles VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)", _articles())
    database.commit()
    database.execute("VACUUM")
    database.close()


def _articles():
    for number, (name, details, cents, unit, sizes) in enumerate(GOODS):
        for variant, size in enumerate(sizes):
            # Larger ones are a little cheaper, and all prices end in 9.
            price = max(49, round(cents * size / 1000 * (1.12 - 0.04 * variant)) // 10 * 10 + 9)
            amount = f"{size / 1000:g} {unit}" if size >= 1000 else f"{size} {'g' if unit == 'kg' else 'ml'}"
            order_at = 3 + (number + variant) % 4
            yield (_ean(number, variant), name, details, amount, price / 100, unit,
                   round(price / size * 10, 2), 1 + number // 10, 1 + number // 2 % 5, 1 + number % 2 * 5 + variant,
                   order_at, order_at * 6)


def _ean(number, variant):
    """A number for use within a shop, which begins with 2, and its check digit."""
    digits = f"21{number + 1:05d}{variant + 1:05d}"
    odd, even = sum(map(int, digits[::2])), sum(map(int, digits[1::2]))
    return digits + str(-(odd + 3 * even) % 10)
