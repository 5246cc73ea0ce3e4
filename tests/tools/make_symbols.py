#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Writes the symbols of tests/data/symbols: small drawings in black and white, in every way in which a drawing
program may write the two colours, and in the ways that a recolouring has to leave alone.

A name says what becomes of a symbol. "none-…" has a "none" besides that of its root, so that a recolouring
without a fill cannot be turned back; "opaque-…" a fill opacity of 1 before any other, which turning back takes for
that of the background; "breaks-…" cannot be shown without a fill.
"""
import pathlib
import sys

FOLDER = pathlib.Path(__file__).resolve().parent.parent / "data" / "symbols"
INK, PAPER = "#000000", "#FFFFFF"
SIZE = 'width="64" height="48"'
NAMESPACE = 'xmlns="http://www.w3.org/2000/svg"'
LINK = 'xmlns:xlink="http://www.w3.org/1999/xlink"'
BACKGROUND = f'<rect id="background_fix" fill="{PAPER}" stroke-width="0" fill-opacity="0" x="0" y="0" {SIZE} />'

STAR = "M32 4 L38 20 L56 20 L42 30 L47 46 L32 36 L17 46 L22 30 L8 20 L26 20 Z"
ARROW = "M8 18 H36 V8 L58 24 L36 40 V30 H8 Z"
DROP = "M32 4 C44 20 48 26 48 32 A16 14 0 0 1 16 32 C16 26 20 20 32 4 Z"


def svg(body, root=f"{NAMESPACE} {SIZE}", head=""):
    return f"{head}<svg {root}>\n{body}\n</svg>\n"


def attributes(path, ink=INK, paper=PAPER):
    return f'<rect {SIZE} fill="{paper}"/><path d="{path}" fill="{ink}" stroke="{paper}" stroke-width="2"/>'


def styles(path, ink=INK, paper=PAPER):
    return (f'<rect {SIZE} style="fill:{paper};stroke:{ink}"/>'
            f'<path d="{path}" style="fill:{ink};stroke:{paper};stroke-width:2"/>')


def gradient(kind, stops, shape="rect"):
    form = f'<rect {SIZE} fill="url(#g)"/>' if shape == "rect" else f'<path d="{STAR}" style="fill:url(#g)"/>'
    # Qt wants a radius to be given.
    place = ' cx="0.5" cy="0.5" r="0.5"' if kind == "radialGradient" else ""
    return f'<defs><{kind} id="g"{place}>{stops}</{kind}></defs>{form}'


def stop(offset, color, opacity=None, style=False):
    if style:
        tail = "" if opacity is None else f";stop-opacity:{opacity}"
        return f'<stop offset="{offset}" style="stop-color:{color}{tail}"/>'
    tail = "" if opacity is None else f' stop-opacity="{opacity}"'
    return f'<stop offset="{offset}" stop-color="{color}"{tail}/>'


def symbols():
    shapes = {"star": STAR, "arrow": ARROW, "drop": DROP}
    for name, path in shapes.items():
        yield f"attributes-{name}", svg(attributes(path))
        yield f"styles-{name}", svg(styles(path))
        yield f"small-white-{name}", svg(attributes(path, paper="#ffffff") + styles(path, paper="#ffffff"))
        yield f"background-{name}", svg(BACKGROUND + f'<path d="{path}" fill="{INK}"/>')
        yield f"background-behind-{name}", svg(f'<path d="{path}" fill="{INK}" stroke="{PAPER}"/>\n' + BACKGROUND)
        yield f"inherited-{name}", svg(f'<path d="{path}"/>')
        yield f"single-{name}", svg(f'<path d="{path}" fill="{INK}"/>')
        yield f"opaque-{name}", svg(f'<path d="{path}" fill="{PAPER}" stroke="{INK}" fill-opacity="1"/>')
    for root in ("", f'fill="{INK}" stroke="none" ', f'fill="{INK}" stroke="{INK}" '):
        name = {0: "plain", 1: "normal", 2: "black-stroke"}[(INK in root) + root.count(INK) // 2]
        yield f"root-{name}", svg(attributes(STAR), root=f"{root}{NAMESPACE} {SIZE}")
    yield "root-in-root", svg(f'<g><svg x="8" y="8" width="20" height="20"><circle cx="10" cy="10" r="8"/></svg></g>')
    yield "no-size", svg(attributes(STAR), root=f'{NAMESPACE} viewBox="0 0 64 48"')
    yield "head", svg(attributes(STAR), head='<?xml version="1.0" encoding="UTF-8"?>\n<!-- ="#000000" :#FFFFFF -->\n')
    yield "groups", svg(f'<g fill="{PAPER}"><g stroke="{INK}"><path d="{STAR}"/></g><circle cx="8" cy="8" r="4"/></g>')
    yield "other-colours", svg(attributes(STAR) + '<circle cx="8" cy="8" r="4" fill="#D40000"/>'
                               '<circle cx="20" cy="8" r="4" style="fill:#00AA00"/><path d="M0 0h4" stroke="black"/>')
    yield "other-writings", svg(attributes(STAR) + '<circle cx="8" cy="8" r="4" fill="#000"/>'
                                '<circle cx="20" cy="8" r="4" fill=\'#000000\'/><path d="M0 0h4" stroke="#FFffff"/>')
    yield "placeholder-text", svg(attributes(STAR) + "<title>#MMMMMM and #000000</title>")
    yield "parts", svg(f'<defs><path id="p" d="{DROP}"/></defs><use xlink:href="#p" fill="{INK}"/>'
                       f'<use xlink:href="#p" x="8" fill="{PAPER}"/>', root=f"{NAMESPACE} {LINK} {SIZE}")
    yield "none-attribute", svg(f'<path d="{STAR}" fill="none" stroke="{INK}"/>')
    yield "none-style", svg(f'<path d="{STAR}" style="fill:none;stroke:{INK};stroke-width:3"/>')
    yield "none-checked", svg(attributes(ARROW) + f'<circle cx="8" cy="8" r="6" fill="none" stroke="{PAPER}"/>')
    for kind in ("linearGradient", "radialGradient"):
        short = kind[:6]
        yield f"{short}-attributes", svg(gradient(kind, stop(0, INK) + stop(1, PAPER) + stop(1, PAPER, style=True)))
        yield f"{short}-white-first", svg(gradient(kind, stop(0, PAPER) + stop(1, INK)))
        yield f"{short}-styles", svg(gradient(kind, stop(0, INK, style=True) + stop(1, PAPER, style=True), "star"))
        yield f"{short}-opacity", svg(gradient(kind, stop(0, PAPER, 1) + stop(1, INK, 1)))
        yield f"{short}-style-opacity", svg(gradient(kind, stop(0, INK, 1, True) + stop(1, PAPER, 1, True)))
        yield f"breaks-{short}", svg(gradient(kind, stop(0, PAPER, "0.5") + stop(1, INK)))
    yield "many", svg("\n".join(f'<rect x="{i % 16 * 4}" y="{i // 16 * 4}" width="3" height="3" '
                                f'fill="{(INK, PAPER)[i % 3 % 2]}"/>' for i in range(192)))


def main():
    wanted = {f"{name}.svg": text for name, text in symbols()}
    if "--check" in sys.argv:
        found = {path.name: path.read_text(encoding="utf-8") for path in FOLDER.glob("*.svg")}
        sys.exit(0 if found == wanted else "tests/data/symbols is not what make_symbols.py writes")
    FOLDER.mkdir(parents=True, exist_ok=True)
    for name, text in wanted.items():
        (FOLDER / name).write_text(text, encoding="utf-8")


main()
