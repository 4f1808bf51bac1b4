#pragma once
// What the cells of the sheet show for a row, and the column headings by
// mode. The grids only receive these texts.

#include "store/piperow.h"

#include <QColor>
#include <QString>

#include <array>

// Columns of compositeGrid (the composite prices and the seven elements).
constexpr int Grid1Cols = 11;
// Columns of materialGrid (size and the three unit prices).
constexpr int Grid2Cols = 4;
// Rows of both grids: the heading and 14 lines.
constexpr int GridRows = 15;

// The side selected by the column of materialGrid: 1 submitted, 2 cost,
// 3 list price.
enum class PriceSide { Submitted = 1, Cost = 2, List = 3 };
PriceSide sideOfColumn(int left);

struct SheetView {
    PriceSide side = PriceSide::Submitted;
    bool showResults = false; // resultsSwitch: results instead of factors
    bool refrigerant = false; // modeRadio on item 1
};

// Columns 0..10 of a line of compositeGrid for row r.
std::array<QString, Grid1Cols> grid1LineTexts(const PipeRow& r, const SheetView& view);
// Columns 1..3 of a line of materialGrid (submittedPrice, costPrice, listPrice) at index 0..2.
std::array<QString, 3> priceTexts(const PipeRow& r);

// Headings of columns 5, 6, 7, 9, 10 of compositeGrid by mode; long form for
// showing a pipe type, short form after applying the controls.
struct ElementHeadings {
    QString col5, col6, col7, col9, col10;
};
ElementHeadings longHeadings(bool refrigerant);
ElementHeadings shortHeadings(bool refrigerant);

// Default captions of the four details, and the single refrigerant tab.
extern const std::array<QString, 4> DefaultDetailCaptions;
extern const QString RefrigerantTabCaption;

// Colours of the sheet.
inline QColor sheetDark() {
    return QColor(83, 85, 108);
} // headings, unmarked lines
inline QColor sheetMark() {
    return QColor(128, 128, 192);
} // the marked line, selection

// What the key filter of both grids does with a key.
enum class KeyAction {
    MoveOnly,   // arrow key with no editor open: the grid moves by itself
    PassToCell, // digits, point, backspace go into the cell
    Commit,     // Enter, up, down: close the editor, commit
    BeepCommit, // everything else: close the editor, beep, commit
};
// The digits and the point are those of the main keyboard, also with Shift
// (the characters over them); those of the numeric pad are other keys.
KeyAction gridKeyAction(int key, Qt::KeyboardModifiers modifiers, bool editorOpen);
