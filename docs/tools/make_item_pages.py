#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Writes a page for each kind of item into docs/items, and their index; --check tells whether they are up to date.

It knows the layouts and nothing of the library: tests/items/tst_itempages.cpp compares the pages with the items.
"""
import pathlib
import sys
import tempfile
import textwrap

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "tests" / "tools"))
from item_kinds import KINDS, UNKNOWN  # noqa: E402
from item_tables import FIELDS, HEXADECIMAL, PROPERTIES, RECORD_NAMES, ROWS, WORDS  # noqa: E402
from itemlayouts import BLACK, COLOUR, FIELDS as COMMON_FIELDS, LAYOUTS, NEW, STRING  # noqa: E402

PAGES = ROOT / "docs" / "items"


def table(header, alignments, rows):
    lines = ["| " + " | ".join(cells) + " |" for cells in (header, *rows)]
    return "\n".join([lines[0], "|" + "|".join(alignments) + "|", *lines[1:]]) + "\n"


def paragraph(text):
    return textwrap.fill(text, 110, break_long_words=False, break_on_hyphens=False) + "\n"


def code(text):
    return f"`{text}`"


def new_values(kind):
    """The values of a new item in the order of its record, each after name and type of its field."""
    layout = LAYOUTS[kind.layout]
    common = [kind.common.get(name, value) for (name, _), value in zip(COMMON_FIELDS, NEW)]
    values = layout.values(common, kind.own)
    return [(name, kind_of, value) for (name, kind_of), value in zip(layout.fields(), values)]


def number(name, value):
    text = f"0x{value:X}" if name in HEXADECIMAL and value > 9 else f"{value:.15g}"
    return text.replace("-", "−")


def colour(value):
    spec, alpha, *components = value
    if spec == 0:
        return "invalid"
    return "transparent" if alpha == 0 else "#" + "".join(f"{component // 0x101:02x}" for component in components)


def shown(name, kind, value):
    """A value for people."""
    if value is UNKNOWN:
        return "…"
    if kind is COLOUR:
        return code(colour(value)) if colour(value)[0] == "#" else colour(value)
    if kind is STRING:
        return "null" if value is None else code(f'"{value}"')
    if value is None:
        return "none"
    words = WORDS.get((name, value))
    return number(name, value if kind.name == "f64" else int(value)) + (f" {words}" if words else "")


def grouped(text, *widths):
    """Digits in groups of the widths, and of the last of these for the rest."""
    groups = []
    while text:
        width = widths[min(len(groups), len(widths) - 1)]
        groups.append(text[:width])
        text = text[width:]
    return " ".join(groups)


def digits(kind, value):
    """The bytes of a value in hexadecimal digits, grouped by what they mean."""
    if value is UNKNOWN:
        return "…"
    text = kind(value).hex().upper()
    if kind is COLOUR:
        return grouped(text, 2, 4)
    return grouped(text, 8, 4) if kind is STRING else text


def rows_of(fields):
    """The fields in rows: those that share one, or one alone."""
    rest = list(fields)
    while rest:
        together = next((names for names in ROWS if names == tuple(name for name, _, _ in rest[:len(names)])), None)
        count = len(together) if together else 1
        yield ROWS.get(together), rest[:count]
        rest = rest[count:]


def offset_text(offset, behind_unknown):
    if not behind_unknown:
        return str(offset)
    return f"*h* + {offset}" if offset else "*h*"


def record_rows(kind):
    offset, behind_unknown, seen = 0, False, set()
    for label, fields in rows_of(new_values(kind)):
        name = fields[0][0]
        word = f"{name} again" if name in seen else name
        seen.add(name)
        label = label or kind.fields.get(word) or FIELDS.get(word, word)
        hexadecimal = " ".join(digits(type_of, value) for _, type_of, value in fields)
        yield (offset_text(offset, behind_unknown), ", ".join(type_of.name for _, type_of, _ in fields), label,
               ", ".join(shown(*one) for one in fields), code(hexadecimal) if hexadecimal else "")
        if any(value is UNKNOWN for _, _, value in fields):
            offset, behind_unknown = 0, True
        else:
            offset += sum(len(type_of(value)) for _, type_of, value in fields)


def size_of(kind):
    """How many bytes a new record has, in words."""
    known = [(type_of, value) for _, type_of, value in new_values(kind) if value is not UNKNOWN]
    size = sum(len(type_of(value)) for type_of, value in known)
    return f"*h* + {size} bytes" if len(known) < len(new_values(kind)) else f"{size} bytes"


def property_value(kind, name, type_name):
    """The value of a new item's property for people."""
    record = {field: value for field, _, value in reversed(new_values(kind))}
    values = record | kind.other | {"itemShape": LAYOUTS[kind.layout].code}
    if name == "itemTransform":
        return ", ".join(number(name, record[key]) for key in ("m11", "m12", "m13", "m21", "m22", "m23", "m31", "m32"))
    value = values[name] if name in values else record[RECORD_NAMES[name]]
    if value is UNKNOWN:
        return "…"
    if type_name == "bool":
        return "true" if value else "false"
    if type_name == "QColor":
        return shown(name, COLOUR, value)
    if type_name == "QString" and isinstance(value, tuple):
        return code(f'"{colour(value if colour(value)[0] == "#" else BLACK)}"')
    if type_name in ("QString", "QVariant"):
        return code(f'"{value or ""}"')
    return number(name, value)


def property_rows(kind):
    for name in kind.properties:
        type_name, meaning = kind.meanings.get(name) or PROPERTIES[name]
        yield code(name), type_name, property_value(kind, name, type_name), meaning


def type_code(kind):
    return f"{LAYOUTS[kind.layout].code} (0x{LAYOUTS[kind.layout].code:X})"


def record_section(kind):
    rows = list(record_rows(kind))
    parts = []
    if rows:
        parts.append(paragraph(f"The [record](../file-formats.md#the-record) of a new item has {size_of(kind)}. A "
                               "field that is longer than here moves those behind it."))
        parts.append(table(("Offset", "Type", "Field", "New", "Bytes"), ("---:", "---", "---", "---", "---"), rows))
    if kind.note:
        parts.append(paragraph(kind.note))
    return "\n".join(parts)


def page_of(kind):
    header = f"[`{kind.class_name}`](../../{kind.header})"
    properties = table(("Name", "Type", "New", "Meaning"), ("---", "---", "---", "---"), property_rows(kind))
    return f"""# {kind.title}

{paragraph(kind.intro)}
![{kind.alt}](../images/items/{kind.page}.png)

Class {header} · type code {type_code(kind)} · [all kinds](README.md)

## Properties

The keys of the [property map](../file-formats.md#the-property-map), with the values of a new item.

{properties}
## Record

{record_section(kind)}"""


def index():
    rows = [(f'<img alt="{kind.alt}" src="../images/items/{kind.page}.png" width="160">',
             f"[{kind.title}]({kind.page}.md)", code(kind.class_name), type_code(kind)) for kind in KINDS]
    kinds = table(("Looks", "Kind", "Class", "Type code"), ("---", "---", "---", "---"), rows)
    return f"""# The kinds of items

What each is for, its properties, and its record byte by byte. The pages are written by
`docs/tools/make_item_pages.py` and compared with the items by the tests, pictures included.

{kinds}"""


def write(folder):
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "README.md").write_text(index(), encoding="utf-8")
    for kind in KINDS:
        (folder / f"{kind.page}.md").write_text(page_of(kind), encoding="utf-8")


def contents(folder):
    return {path.name: path.read_bytes() for path in folder.iterdir()}


def check():
    with tempfile.TemporaryDirectory() as folder:
        write(pathlib.Path(folder))
        made, kept = contents(pathlib.Path(folder)), contents(PAGES)
    differing = sorted(name for name in made.keys() | kept.keys() if made.get(name) != kept.get(name))
    if differing:
        sys.exit(f"{', '.join(differing)}: differs from what docs/tools/make_item_pages.py writes")


if __name__ == "__main__":
    check() if sys.argv[1:] == ["--check"] else write(PAGES)
