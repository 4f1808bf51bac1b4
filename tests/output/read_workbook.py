#!/usr/bin/env python3
"""Reads a workbook with openpyxl and prints what a test checks, one item a line:

CELL<TAB>coordinate<TAB>n|s<TAB>value<TAB>bottom<TAB>top
WIDTH<TAB>column letter<TAB>width
SHEETS<TAB>count

A border is "style:rgb", or "-" when the edge has none.
"""
import sys

import openpyxl


def edge(side):
    if side is None or side.style is None:
        return "-"
    rgb = side.color.rgb if side.color is not None else "none"
    return "%s:%s" % (side.style, rgb)


def main(path):
    wb = openpyxl.load_workbook(path)
    print("SHEETS\t%d" % len(wb.worksheets))
    ws = wb.worksheets[0]
    for row in ws.iter_rows():
        for c in row:
            bottom, top = edge(c.border.bottom), edge(c.border.top)
            if c.value is None and bottom == "-" and top == "-":
                continue
            kind = "n" if isinstance(c.value, (int, float)) else "s"
            value = "" if c.value is None else repr(c.value) if kind == "n" else c.value
            print("CELL\t%s\t%s\t%s\t%s\t%s" % (c.coordinate, kind, value, bottom, top))
    for letter, dim in sorted(ws.column_dimensions.items()):
        if dim.customWidth or dim.width:
            print("WIDTH\t%s\t%r" % (letter, dim.width))


if __name__ == "__main__":
    main(sys.argv[1])
