#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Checks that no symbol of a namespace can be seen outside the library that an archive is linked into.

Usage: check_hidden.py <readelf> <archive> <namespace>
Prints the symbols that can, and exits with 1; an archive without any symbol of the namespace fails as well.
"""
import subprocess
import sys

BINDING, VISIBILITY, SECTION, NAME = 4, 5, 6, 7


def main():
    readelf, archive, namespace = sys.argv[1:]
    listing = subprocess.run([readelf, "--symbols", "--wide", archive], check=True, capture_output=True, text=True)
    mangled = f"{len(namespace)}{namespace}"
    lines = [line.split() for line in listing.stdout.splitlines()]
    defined = [line for line in lines if len(line) > NAME and mangled in line[NAME]
               and line[BINDING] in ("GLOBAL", "WEAK") and line[SECTION] != "UND"]
    visible = sorted({line[NAME] for line in defined if line[VISIBILITY] not in ("HIDDEN", "INTERNAL")})
    for name in visible:
        print(f"not hidden: {name}")
    if not defined:
        print(f"{archive}: no symbol of {namespace}")
    return 1 if visible or not defined else 0


if __name__ == "__main__":
    sys.exit(main())
