#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Checks the plates and the proof of a label against the label itself.

Knows PNG and the label's JSON, and nothing of the library. Usage:
    check_plates.py <label>.vxl <folder of the plates> <dpi> [--rulers]
--rulers also measures the rulers of the calibration sheet. Prints what is wrong, line by line, and exits with 1.
"""
import json
import pathlib
import struct
import sys
import zlib

SIGNATURE = b"\x89PNG\r\n\x1a\n"
MM_PER_INCH = 25.4


class Png:
    """An image of one sample for each pixel; rows are bytes of samples."""

    def __init__(self, path):
        chunks = _chunks(path.read_bytes())
        self.width, self.height, self.depth, kind, *rest = struct.unpack(">IIBBBBB", chunks[b"IHDR"])
        if kind not in (0, 3) or rest != [0, 0, 0]:
            raise ValueError(f"{path}: not a grey or palette image without interlace")
        self.physical = struct.unpack(">IIB", chunks[b"pHYs"]) if b"pHYs" in chunks else None
        palette = chunks.get(b"PLTE", b"")
        steps = (1 << self.depth) - 1
        self.colors = [tuple(palette[i:i + 3]) for i in range(0, len(palette), 3)] if kind == 3 else [
            (sample * 255 // steps,) * 3 for sample in range(steps + 1)]
        self.rows = [self._samples(row) for row in self._lines(zlib.decompress(chunks[b"IDAT"]))]

    def _lines(self, data):
        stride = (self.width * self.depth + 7) // 8
        above = bytes(stride)
        for start in range(0, self.height * (stride + 1), stride + 1):
            above = _unfiltered(data[start], bytearray(data[start + 1:start + 1 + stride]), above)
            yield above

    def _samples(self, line):
        per_byte, mask = 8 // self.depth, (1 << self.depth) - 1
        shifts = [8 - self.depth * (i + 1) for i in range(per_byte)]
        return bytes((byte >> shift) & mask for byte in line for shift in shifts)[:self.width]


def _chunks(data):
    if not data.startswith(SIGNATURE):
        raise ValueError("no PNG")
    chunks, at = {}, len(SIGNATURE)
    while at < len(data):
        length, kind = struct.unpack_from(">I4s", data, at)
        body = data[at + 8:at + 8 + length]
        (crc,) = struct.unpack_from(">I", data, at + 8 + length)
        if crc != zlib.crc32(kind + body):
            raise ValueError(f"damaged chunk {kind}")
        chunks[kind] = chunks.get(kind, b"") + body
        at += 12 + length
    return chunks


def _unfiltered(kind, line, above):
    """One line of the image; no pixel takes more than a byte."""
    for i in range(len(line) if kind else 0):
        left, corner = (line[i - 1], above[i - 1]) if i else (0, 0)
        predicted = (0, left, above[i], (left + above[i]) // 2, _paeth(left, above[i], corner))[kind]
        line[i] = (line[i] + predicted) & 0xFF
    return line


def _paeth(left, above, corner):
    estimate = left + above - corner
    return min((left, above, corner), key=lambda value: abs(estimate - value))


def rgb(name):
    return tuple(int(name[i:i + 2], 16) for i in (1, 3, 5))


def rounded(value):
    return int(value + 0.5)


def check_size(png, name, page, dpi):
    expected = tuple(rounded(page[side] / MM_PER_INCH * dpi) for side in ("width", "height"))
    if (png.width, png.height) != expected:
        yield f"{name}: {png.width} x {png.height} dots instead of {expected[0]} x {expected[1]}"
    per_metre = rounded(dpi * 1000 / MM_PER_INCH)
    if png.physical != (per_metre, per_metre, 1):
        yield f"{name}: physical size {png.physical} instead of {per_metre} dots per metre"


def check_plate(png, name):
    if png.depth != 1:
        yield f"{name}: {png.depth} bits for a dot"
    colors = {png.colors[sample] for row in png.rows for sample in set(row)}
    if colors != {(0, 0, 0), (255, 255, 255)}:
        yield f"{name}: holds the colours {sorted(colors)} instead of black and white"


def printing(plate):
    """The rows of a plate as flags: 1 prints."""
    flags = bytes(color == (0, 0, 0) for color in plate.colors)
    return [row.translate(flags.ljust(256, b"\0")) for row in plate.rows]


def check_dots(proof, plates, inks, paper):
    """A dot belongs to one plate at most, and the proof shows that one's ink there, or the paper."""
    for y, row in enumerate(proof.rows):
        for sample, *prints in set(zip(row, *(plate[y] for plate in plates))):
            if sum(prints) > 1:
                yield f"row {y}: a dot is on more than one plate"
                continue
            expected = inks[prints.index(1)] if 1 in prints else paper
            if proof.colors[sample] != expected:
                yield f"row {y}: the proof shows {proof.colors[sample]} instead of {expected}"


def middles(flags):
    """The middle of each run of printing dots."""
    start = None
    for place, flag in enumerate(flags + b"\0"):
        if flag and start is None:
            start = place
        elif not flag and start is not None:
            yield (start + place) / 2
            start = None


def check_ticks(flags, name, dpi):
    """flags: a line across all ticks, one for each millimetre from 10 to 90."""
    found = list(middles(flags))
    expected = [millimetre * dpi / MM_PER_INCH for millimetre in range(10, 91)]
    if len(found) != len(expected):
        yield f"{name}: {len(found)} ticks instead of {len(expected)}"
    for millimetre, at, should in zip(range(10, 91), found, expected):
        if abs(at - should) > 0.5:
            yield f"{name}: the tick at {millimetre} mm is at dot {at} instead of {should:.2f}"


def check_rulers(black, dpi):
    across = rounded(9 * dpi / MM_PER_INCH)  # all ticks are longer than this is away from their ruler's line
    first, last = (rounded(millimetre * dpi / MM_PER_INCH) for millimetre in (9.5, 90.5))
    margin = bytes(first)
    yield from check_ticks(margin + black[across][first:last], "horizontal ruler", dpi)
    yield from check_ticks(margin + bytes(row[across] for row in black[first:last]), "vertical ruler", dpi)


def check(label_path, folder, dpi, rulers):
    label = json.loads(label_path.read_text(encoding="utf-8"))
    names = [ink["name"] for ink in label["inks"]]
    plates = [Png(folder / f"{label_path.stem}.{name}.png") for name in names]
    proof = Png(folder / f"{label_path.stem}.proof.png")
    for name, png in zip([*names, "proof"], [*plates, proof]):
        yield from check_size(png, name, label["page"], dpi)
    for name, plate in zip(names, plates):
        yield from check_plate(plate, name)
    flags = [printing(plate) for plate in plates]
    yield from check_dots(proof, flags, [rgb(ink["color"]) for ink in label["inks"]], rgb(label["paper"]))
    if rulers:
        yield from check_rulers(flags[names.index("black")], dpi)


def main():
    label, folder, dpi, *rest = sys.argv[1:]
    wrong = list(check(pathlib.Path(label), pathlib.Path(folder), float(dpi), rest == ["--rulers"]))
    for line in wrong[:20]:
        print(line)
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
