#!/usr/bin/env python3
"""Writes the outline files of the sample installation from its job file.

For every part of the "#PartsInfo" section with HasOutline 1 it writes the file named in
column 17 (relative to the installation folder): a contour, holes, a slot and marks, in the
blank-separated outline format (keyword, pen, red, green, blue, parameters). Run it again
after changing the sizes in job/kesto_job.txt:

    python3 examples/make_outlines.py [installation folder]
"""

import math
import os
import sys

CONTOUR = (255, 255, 0)
HOLE = (0, 255, 255)
BEND = (0, 255, 0)
MARK = (255, 64, 64)


def fmt(value):
    return f"{value:.3f}"


def element(keyword, colour, *params):
    return " ".join([keyword, "1", *(str(c) for c in colour), *(fmt(p) for p in params)])


def square_contour(sx, sy):
    return [element("NoAngRect", CONTOUR, 0, 0, sx, sy)]


def line_contour(sx, sy):
    corners = [(0, 0), (sx, 0), (sx, sy), (0, sy)]
    return [element("Line", CONTOUR, *corners[i], *corners[(i + 1) % 4]) for i in range(4)]


def arc(cx, cy, r, start_deg, end_deg):
    """A counter-clockwise arc: start and end point, centre, radius, bounding box."""
    start = (cx + r * math.cos(math.radians(start_deg)), cy + r * math.sin(math.radians(start_deg)))
    end = (cx + r * math.cos(math.radians(end_deg)), cy + r * math.sin(math.radians(end_deg)))
    return element("CcwArc", CONTOUR, *start, *end, cx, cy, r, cx - r, cy + r, cx + r, cy - r)


def rounded_contour(sx, sy):
    r = min(sx, sy) * 0.1
    return [
        element("Line", CONTOUR, r, 0, sx - r, 0),
        arc(sx - r, r, r, -90, 0),
        element("Line", CONTOUR, sx, r, sx, sy - r),
        arc(sx - r, sy - r, r, 0, 90),
        element("Line", CONTOUR, sx - r, sy, r, sy),
        arc(r, sy - r, r, 90, 180),
        element("Line", CONTOUR, 0, sy - r, 0, r),
        arc(r, r, r, 180, 270),
    ]


def holes(sx, sy):
    r = max(2.5, min(12.0, min(sx, sy) * 0.06))
    inset = 3 * r
    if sx < 4 * inset or sy < 4 * inset:
        return [element("Circle", HOLE, sx / 2, sy / 2, r)]
    spots = [(inset, inset), (sx - inset, inset), (sx - inset, sy - inset), (inset, sy - inset)]
    return [element("Circle", HOLE, x, y, r) for x, y in spots]


def slot(sx, sy):
    """A slot turned by 30 degrees in the middle; corners in the order the drawing joins them."""
    length, width = min(sx, sy) * 0.4, min(sx, sy) * 0.1
    a = math.radians(30)
    ux, uy = math.cos(a), math.sin(a)
    cx, cy = sx / 2, sy / 2
    c = [
        (cx - ux * length / 2 + uy * width / 2, cy - uy * length / 2 - ux * width / 2),
        (cx + ux * length / 2 + uy * width / 2, cy + uy * length / 2 - ux * width / 2),
        (cx + ux * length / 2 - uy * width / 2, cy + uy * length / 2 + ux * width / 2),
        (cx - ux * length / 2 - uy * width / 2, cy - uy * length / 2 + ux * width / 2),
    ]
    return [element("AngRect", HOLE, *c[0], *c[3], *c[2], *c[1])]


def bend_lines(sx, sy):
    return [element("Line", BEND, 0, sy * f, sx, sy * f) for f in (0.25, 0.75)]


def marks(sx, sy):
    return [
        element("Pixel", MARK, sx / 2, sy / 2),
        element("NoScalePixel", MARK, 0, 0, 3),
        element("NoScaleCircle", MARK, sx / 2, sy / 2, 4),
    ]


def outline(index, code, name, sx, sy, dir_code):
    contours = [rounded_contour, line_contour, square_contour]
    lines = [f"$ {code} {name} {fmt(sx)} x {fmt(sy)}", "$ contour"]
    lines += contours[index % 3](sx, sy)
    lines.append("$ holes and marks")
    lines += holes(sx, sy)
    if min(sx, sy) >= 100:
        lines += slot(sx, sy)
    if dir_code == 11:
        lines += bend_lines(sx, sy)
    lines += marks(sx, sy)
    return lines


def parts_of(job_path):
    section = None
    with open(job_path, encoding="ascii") as job:
        for raw in job:
            line = raw.strip()
            if line in ("#BoxInfo", "#KouteiInfo", "#PartsInfo") and section is None:
                section = line
            elif line == "#End":
                section = None
            elif section == "#PartsInfo":
                yield [field.strip() for field in line.split(",")]


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    install = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "install")
    written = 0
    for index, cols in enumerate(parts_of(os.path.join(install, "job", "kesto_job.txt"))):
        if len(cols) < 21 or cols[17] != "1" or not cols[16]:
            continue
        lines = outline(index, cols[0], cols[2], float(cols[4]), float(cols[5]), int(cols[6]))
        path = os.path.join(install, cols[16])
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="ascii", newline="\n") as out:
            out.write("\n".join(lines) + "\n")
        written += 1
    print(f"{written} outline files written under {install}")


if __name__ == "__main__":
    main()
