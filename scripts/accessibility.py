"""Reads the running qorvale window through the accessibility bus (AT-SPI):
the grids as tables, the toggle of the factor columns, and a figure typed
into a cell. Started by scripts/accessibility.sh."""
import sys
import time

import pyatspi


def find_app():
    desktop = pyatspi.Registry.getDesktop(0)
    for i in range(desktop.childCount):
        app = desktop.getChildAtIndex(i)
        if app is not None and (app.name or "").lower() == "qorvale":
            return app
    sys.exit("qorvale is not on the accessibility bus")


def collect(node, tables, toggles):
    role = node.getRoleName()
    if role == "table":
        tables.append(node)
        return
    if role in ("check box", "toggle button") and node.name in ("歩掛を表示", "計算結果を表示"):
        toggles.append(node)
    for i in range(node.childCount):
        collect(node.getChildAtIndex(i), tables, toggles)


def line(table, row):
    t = table.queryTable()
    return [t.getAccessibleAt(row, c).name for c in range(t.nColumns)]


def focused_cell(table):
    t = table.queryTable()
    for row in range(t.nRows):
        for col in range(t.nColumns):
            if t.getAccessibleAt(row, col).getState().contains(pyatspi.STATE_FOCUSED):
                return f"line {row + 1}, column {col}"
    return "none"


def main():
    tables, toggles = [], []
    collect(find_app(), tables, toggles)
    for table in tables:
        t = table.queryTable()
        headers = [t.getColumnHeader(c).name for c in range(t.nColumns)]
        print(f"table {table.name}: {t.nRows} lines x {t.nColumns} columns")
        print(f"  headers: {headers}")
        for row in range(3):
            print(f"  line {row + 1}: {line(table, row)}")
    for toggle in toggles:
        checked = toggle.getState().contains(pyatspi.STATE_CHECKED)
        print(f"{toggle.getRoleName()} {toggle.name}: {'on' if checked else 'off'}")

    composite = next(t for t in tables if t.queryTable().nColumns == 11)
    t = composite.queryTable()
    cell = t.getAccessibleAt(0, 5)
    print(f"before: factor {cell.name}, composite price {t.getAccessibleAt(0, 2).name}")
    e = cell.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    pyatspi.Registry.generateMouseEvent(e.x + e.width // 2, e.y + e.height // 2, "b1c")
    time.sleep(0.5)
    print(f"focused after the click: {focused_cell(composite)}")
    pyatspi.Registry.generateKeyboardEvent(ord("2"), None, pyatspi.KEY_SYM)
    pyatspi.Registry.generateKeyboardEvent(0xFF0D, None, pyatspi.KEY_SYM)  # Return
    time.sleep(1.0)
    t = composite.queryTable()
    print(f"after typing 2 and Enter: factor {t.getAccessibleAt(0, 5).name}, "
          f"composite price {t.getAccessibleAt(0, 2).name}")
    print(f"focused after Enter: {focused_cell(composite)}")


main()
