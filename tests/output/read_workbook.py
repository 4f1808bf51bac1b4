#!/usr/bin/env python3
"""Reads a workbook with openpyxl and prints what a test checks, one item a line:

sheets <count>
<coordinate> [n:<number>|s:<text>] [bottom=<style>:<rgb>] [top=<style>:<rgb>]
width <column letter> <width>

Cells are those of the first sheet with a value or an edge, row by row; an edge is
printed only when it has a style.
"""
import sys

import openpyxl


def edge(name, side):
    if side is None or side.style is None:
        return ""
    rgb = side.color.rgb if side.color is not None else "none"
    return " %s=%s:%s" % (name, side.style, rgb)


def main(path):
    wb = openpyxl.load_workbook(path)
    print("sheets %d" % len(wb.worksheets))
    ws = wb.worksheets[0]
    for row in ws.iter_rows():
        for c in row:
            edges = edge("bottom", c.border.bottom) + edge("top", c.border.top)
            if c.value is None and not edges:
                continue
            value = ""
            if isinstance(c.value, (int, float)):
                value = " n:%r" % c.value
            elif c.value is not None:
                value = " s:%s" % c.value
            print("%s%s%s" % (c.coordinate, value, edges))
    for letter, dim in sorted(ws.column_dimensions.items()):
        if dim.customWidth or dim.width:
            print("width %s %r" % (letter, dim.width))


if __name__ == "__main__":
    main(sys.argv[1])
