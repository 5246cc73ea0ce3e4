#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Prints the outlines of the six polygons for many sizes, pens and joins as comma-separated values.

An independent calculation of what a polygon item draws and where it is hit; it knows nothing of the library.
tests/data/polygonoutlines.csv is its output. Usage:
    polygon_outlines.py                  prints the rows
    polygon_outlines.py --check <file>   exits with 1 unless the file holds exactly these rows

A polygon is defined once, at a reference size. The resized polygon is that outline stretched to the item's
size. What is drawn is the resized polygon with its vertices moved inwards, so that the pen's stroke stays
inside the item; where the item is hit is the resized polygon with its corners widened for the pen. The
distances are factors times half the pen (or the whole pen, see the classes), and the factors form a table of
three rows and three columns. A row is a role that a class gives to its vertices; the column is the pen's
join: miter, bevel, any other. Row 2 is always the factor of the polygon that is hit.

Columns: kind, class, width, height, pen, join, then x and y of each point (nine factors for "table"). Tables
and resized polygons depend on the size alone, so they leave pen and join empty.
"""
import difflib
import math
import pathlib
import sys

PENS = (0.0, 0.4, 1.0, 5.0, 72.0)
MITER, BEVEL, ROUND, SVG_MITER = 0, 0x40, 0x80, 0x100
JOINS = (MITER, BEVEL, ROUND, SVG_MITER)
OTHER_SIZES = ((200.0, 100.0), (37.5, 81.25), (1.0, 1.0))


def column_of(join):
    return {MITER: 0, BEVEL: 1}.get(join, 2)


def stretched(points, across, down):
    return [(x * across, y * down) for x, y in points]


class Polygon:
    """A polygon of a size. Subclasses give the outline at the reference size, and the insets."""

    corner_factors = (0.0, 0.0)  # row 2 for bevels and for other joins

    def __init__(self, width, height):
        self.width, self.height = width, height
        reference_width, reference_height = self.reference_size
        self.resized = stretched(self.points, width / reference_width, height / reference_height)
        self.table = [[1.0, 1.0, 1.0], [1.0, 1.0, 1.0], [0.0, *self.corner_factors]]
        self.compute_factors()

    def compute_factors(self):
        """Sets the factors that depend on the size."""

    def measure(self, pen):
        return pen / 2

    def outlines(self, pen, join):
        """The drawn polygon and the one that is hit."""
        measure = self.measure(pen)
        if measure == 0:
            return self.resized, self.resized
        column = column_of(join)
        return self.drawn(measure, column), self.hit(measure, column)

    def about_centre(self, point, longer_by, higher_by):
        """The point after stretching about the centre so that the size grows by the two lengths."""
        x, y = point
        middle_x, middle_y = self.width / 2, self.height / 2
        return (middle_x + (x - middle_x) * (self.width + longer_by) / self.width,
                middle_y + (y - middle_y) * (self.height + higher_by) / self.height)

    def all_about_centre(self, longer_by, higher_by):
        return [self.about_centre(point, longer_by, higher_by) for point in self.resized]

    def hit(self, measure, column):
        growth = self.table[2][column] * measure
        return self.all_about_centre(growth, growth)


class RightTriangle(Polygon):
    reference_size = (100.0, 100.0)
    points = ((0.0, 0.0), (100.0, 100.0), (0.0, 100.0))
    corner_factors = (1.5, 1.5)

    def compute_factors(self):
        hypotenuse = math.hypot(self.width, self.height)
        self.table[0][0] = (self.width + hypotenuse) / self.height
        self.table[1][0] = (self.height + hypotenuse) / self.width

    def drawn(self, half, column):
        top, right, corner = self.resized
        return [(top[0] + half, top[1] + self.table[1][column] * half),
                (right[0] - self.table[0][column] * half, right[1] - half),
                (corner[0] + half, corner[1] - half)]

    def hit(self, half, column):
        top, right, corner = self.resized
        cut = self.table[2][column] * half
        return [top, (top[0] + cut, top[1]), (right[0], right[1] - cut), right, corner]


class EquilateralTriangle(Polygon):
    reference_size = (100.0, 86.60254038)
    points = ((50.0, 0.0), (0.0, 86.60254038), (100.0, 86.60254038))
    corner_factors = (0.7, 0.65)

    def compute_factors(self):
        slope = 2 * self.height / self.width
        angle = math.atan(slope)
        self.table[0][:2] = [1 / math.tan(angle / 2), 1.05 * math.sin(angle)]
        self.table[1][:2] = [1 / math.cos(angle), 1 / slope]

    def drawn(self, half, column):
        apex, left, right = self.resized
        side, top = self.table[0][column] * half, self.table[1][column] * half
        return [(apex[0], apex[1] + top),
                (left[0] + side, left[1] - half), (right[0] - side, right[1] - half)]

    def hit(self, half, column):
        """The apex becomes three points, from right to left, so that the polygon does not cross itself."""
        apex, left, right = self.resized
        cut = self.table[2][column] * half
        return [(apex[0] + cut, apex[1]), (apex[0], apex[1] - 2 * cut), (apex[0] - cut, apex[1]), left, right]


class Diamond(Polygon):
    reference_size = (100.0, 100.0)
    points = ((50.0, 0.0), (100.0, 50.0), (50.0, 100.0), (0.0, 50.0))
    corner_factors = (0.4, 0.4)

    def compute_factors(self):
        diagonal = math.hypot(self.width, self.height)
        self.table[0][0] = diagonal / self.height
        self.table[1][0] = diagonal / self.width

    def drawn(self, half, column):
        top, right, bottom, left = self.resized
        across, down = self.table[0][column] * half, self.table[1][column] * half
        return [(top[0], top[1] + down), (right[0] - across, right[1]),
                (bottom[0], bottom[1] - down), (left[0] + across, left[1])]


class Pentagon(Polygon):
    """With a miter join the vertices move one by one, by half the pen; with any other join the polygon
    shrinks about its centre, by the pen in whole units. A pen of less than half a unit is no pen."""

    reference_size = (95.10565163, 90.45084972)
    points = ((0.0, 34.54915028), (47.55282581, 0.0), (95.10565163, 34.54915028),
              (76.94208843, 90.45084972), (18.1635632, 90.45084972))
    corner_factors = (0.25, 0.25)
    cos72, sin72, cos36, sin36 = 0.3090169944, 0.9510565163, 0.8090169944, 0.5877852523

    def compute_factors(self):
        shoulder = (1 - self.cos72) * self.height / (self.cos36 + 1)
        roof = math.sqrt(self.width ** 2 / 4 + shoulder ** 2)
        wall = self.height - shoulder
        lean = (self.sin72 - self.sin36) * self.width / 2 / self.sin72
        side = math.hypot(lean, wall)
        pitch = self.width / 2 / shoulder
        part = self.width * pitch / 2 / roof
        self.table[0][0] = 0.9 * wall / side
        self.table[1][0] = 1.15 * 2 * roof / self.width
        self.side_inset = 1.3 * side / wall
        self.side_drop = 0.9 * math.sqrt(pitch ** 2 - part ** 2)

    def outlines(self, pen, join):
        whole = math.floor(pen + 0.5)
        if whole == 0:
            return self.resized, self.resized
        if join == MITER:
            return self.drawn_with_miter(pen / 2), self.resized
        column = column_of(join)
        across, down, growth = (self.table[row][column] * whole for row in range(3))
        return self.all_about_centre(-across, -down), self.all_about_centre(growth, growth)

    def drawn_with_miter(self, half):
        left, top, right, bottom_right, bottom_left = self.resized
        across, down = self.side_inset * half, self.side_drop * half
        foot, roof = self.table[0][0] * half, self.table[1][0] * half
        return [(left[0] + across, left[1] + down), (top[0], top[1] + roof),
                (right[0] - across, right[1] + down), (bottom_right[0] - foot, bottom_right[1] - half),
                (bottom_left[0] + foot, bottom_left[1] - half)]


class Hexagon(Polygon):
    """Measures the whole pen, and is drawn alike for every join."""

    reference_size = (100.0, 86.60254038)
    points = ((25.0, 0.0), (75.0, 0.0), (100.0, 43.30127019), (75.0, 86.60254038), (25.0, 86.60254038),
              (0.0, 43.30127019))
    corner_factors = (0.123, 0.123)

    def compute_factors(self):
        ratio = self.width / self.height
        self.table[0][0] = math.sqrt(ratio * ratio * 0.25 + 1)

    def measure(self, pen):
        return pen

    def drawn(self, pen, column):
        rows = (0, 0, 1, 0, 0, 1)
        return [self.about_centre(point, -self.table[row][0] * pen, -pen)
                for point, row in zip(self.resized, rows)]


class Octagon(Polygon):
    reference_size = (92.0, 92.0)
    points = ((27.0, 0.0), (65.0, 0.0), (92.0, 27.0), (92.0, 65.0), (65.0, 92.0), (27.0, 92.0), (0.0, 65.0),
              (0.0, 27.0))
    corner_factors = (0.13, 0.13)

    def drawn(self, half, column):
        return self.all_about_centre(-2 * half, -2 * half)


HEADING = "# SPDX-License-Identifier: BSD-3-Clause"
CLASSES = (RightTriangle, EquilateralTriangle, Diamond, Pentagon, Hexagon, Octagon)


def number(value):
    """Twelve digits, without the noise that machines may not share."""
    return f"{round(value, 11) + 0.0:.12g}"


def row(kind, cls, size, pen, join, values):
    return ",".join([kind, cls.__name__ + "Item", *map(number, size), pen, join, *map(number, values)])


def flat(points):
    return [value for point in points for value in point]


def rows():
    yield HEADING
    for cls in CLASSES:
        for size in (cls.reference_size, *OTHER_SIZES):
            polygon = cls(*size)
            yield row("table", cls, size, "", "", flat(polygon.table))
            yield row("resized", cls, size, "", "", flat(polygon.resized))
            for pen in PENS:
                for join in JOINS:
                    for kind, points in zip(("drawn", "shape"), polygon.outlines(pen, join)):
                        yield row(kind, cls, size, number(pen), str(join), flat(points))


def main(arguments):
    text = "".join(line + "\n" for line in rows())
    if not arguments:
        sys.stdout.write(text)
        return 0
    if len(arguments) != 2 or arguments[0] != "--check":
        sys.exit(__doc__)
    kept = pathlib.Path(arguments[1]).read_bytes()
    if kept == text.encode():
        return 0
    sys.stdout.writelines(difflib.unified_diff(
        kept.decode().splitlines(True), text.splitlines(True), arguments[1], "calculated", n=0))
    return 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
