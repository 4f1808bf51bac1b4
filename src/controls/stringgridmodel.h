#pragma once
// The data of a string grid, without a window: cell strings, counts, fixed
// rows and columns, sizes, colours, font, options, the current cell and the
// selection. PriceGrid builds its cell model on it, and its widget adds
// painting, keyboard, mouse and the in-place editor.

#include "controls/graphics.h"
#include "util/textlines.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>
#include <initializer_list>

// Common base of the objects that raise events, handed to handlers as the
// Sender; a handler that needs the concrete class casts.
class ControlObject {
public:
    virtual ~ControlObject() = default;
};

using NotifyEvent = std::function<void(ControlObject* Sender)>;

// The bits of the grid's option set.
enum GridOption {
    goFixedVertLine = 0,
    goFixedHorzLine = 1,
    goVertLine = 2,
    goHorzLine = 3,
    goRangeSelect = 4,
    goDrawFocusSelected = 5,
    goRowSizing = 6,
    goColSizing = 7,
    goRowMoving = 8,
    goColMoving = 9,
    goEditing = 10,
    goTabs = 11,
    goRowSelect = 12,
    goAlwaysShowEditor = 13,
    goThumbTracking = 14,
};

// A set of GridOption: `opts.Contains(goEditing)`, `opts + goEditing`,
// `opts - goEditing`, `GridOptions{goVertLine, goHorzLine}`.
class GridOptions {
public:
    GridOptions() = default;
    GridOptions(std::initializer_list<GridOption> options) {
        for (GridOption o : options)
            FBits |= bit(o);
    }
    static GridOptions FromBits(unsigned bits) {
        GridOptions o;
        o.FBits = bits;
        return o;
    }
    unsigned Bits() const { return FBits; }
    bool Contains(GridOption o) const { return (FBits & bit(o)) != 0; }
    GridOptions operator+(GridOption o) const { return FromBits(FBits | bit(o)); }
    GridOptions operator-(GridOption o) const { return FromBits(FBits & ~bit(o)); }
    GridOptions& operator+=(GridOption o) { return *this = *this + o; }
    GridOptions& operator-=(GridOption o) { return *this = *this - o; }
    friend bool operator==(GridOptions a, GridOptions b) { return a.FBits == b.FBits; }
    friend bool operator!=(GridOptions a, GridOptions b) { return a.FBits != b.FBits; }

private:
    static unsigned bit(GridOption o) { return 1u << unsigned(o); }
    unsigned FBits = 0;
};

// Flags of a painted cell's state.
enum GridDrawStateFlag : unsigned { gdSelected = 1, gdFocused = 2, gdFixed = 4 };
using GridDrawState = unsigned;

// Modifier and mouse button state of a key or mouse event.
enum ShiftStateFlag : unsigned {
    ssShift = 1,
    ssAlt = 2,
    ssCtrl = 4,
    ssLeft = 8,
    ssRight = 16,
    ssMiddle = 32,
    ssDouble = 64
};
using ShiftState = unsigned;

// Input-method modes of an edit field; 3 is "don't care", 1 "closed".
using TImeMode = int;
constexpr TImeMode imDisable = 0, imClose = 1, imOpen = 2, imDontCare = 3;

// A rectangle of cells, all four bounds inclusive.
struct TGridRect {
    int Left = 0;
    int Top = 0;
    int Right = 0;
    int Bottom = 0;
    bool Contains(int col, int row) const {
        return col >= Left && col <= Right && row >= Top && row <= Bottom;
    }
    friend bool operator==(const TGridRect& a, const TGridRect& b) {
        return a.Left == b.Left && a.Top == b.Top && a.Right == b.Right && a.Bottom == b.Bottom;
    }
};
inline TGridRect GridRect(int left, int top, int right, int bottom) {
    return TGridRect{left, top, right, bottom};
}

class StringGridModel : public ControlObject {
public:
    StringGridModel();
    ~StringGridModel() override;

    int ColCount() const { return FColCount; }
    void SetColCount(int value);
    int RowCount() const { return FRowCount; }
    void SetRowCount(int value);
    int FixedCols() const { return FFixedCols; }
    void SetFixedCols(int value);
    int FixedRows() const { return FFixedRows; }
    void SetFixedRows(int value);

    // Any position can be read and written, also outside the grid; only
    // the cells of the grid are shown.
    QString Cells(int col, int row) const;
    void SetCells(int col, int row, const QString& value);

    int DefaultColWidth() const { return FDefaultColWidth; }
    // Also gives every column this width.
    void SetDefaultColWidth(int value);
    int DefaultRowHeight() const { return FDefaultRowHeight; }
    // Also gives every row this height.
    void SetDefaultRowHeight(int value);
    int ColWidths(int col) const;
    void SetColWidths(int col, int value);
    int RowHeights(int row) const;
    void SetRowHeights(int row, int value);
    // Width of the grid lines between cells, 1 by default.
    int GridLineWidth() const { return FGridLineWidth; }
    void SetGridLineWidth(int value);

    TColor Color() const { return FColor; }
    void SetColor(TColor value);
    TColor FixedColor() const { return FFixedColor; }
    void SetFixedColor(TColor value);
    const FontSpec& Font() const { return FFont; }
    void SetFont(const FontSpec& value);
    // The framework's own cell drawing instead of the grid's.
    bool DefaultDrawing() const { return FDefaultDrawing; }
    void SetDefaultDrawing(bool value);
    // Raised frames of fixed cells, and lighter inner lines in fixed cells.
    bool Ctl3D() const { return FCtl3D; }
    void SetCtl3D(bool value);

    // The current cell.
    int Col() const { return FCol; }
    int Row() const { return FRow; }
    // The selected cells; a single cell when no range is selected.
    TGridRect Selection() const;

    // The options in force at this moment.
    GridOptions InForceOptions() const { return FInForceOptions; }
    void SetInForceOptions(GridOptions value);

    // Geometry, in pixels from the top left of the grid; Right and Bottom
    // exclusive, the grid line after a cell is not part of it.
    TRect CellRect(int col, int row) const;
    // Cell under a point, or false when it lies on no cell.
    bool MouseToCell(int x, int y, int& col, int& row) const;
    // The size needed to show every cell.
    int GridWidth() const;
    int GridHeight() const;
    int VertLineWidth(int col) const;
    int HorzLineWidth(int row) const;

    // Repaint requests; the widget implements them.
    virtual void Invalidate() {}
    virtual void InvalidateCell(int col, int row) {
        Q_UNUSED(col);
        Q_UNUSED(row);
    }

protected:
    // Sets the current cell, anchor and selection without any event.
    void SetCurrentRaw(int col, int row, int anchorCol, int anchorRow);
    virtual void GeometryChanged() {}
    virtual void OptionsInForceChanged() {}

    int FAnchorCol = 1;
    int FAnchorRow = 1;

private:
    int FColCount = 5;
    int FRowCount = 5;
    int FFixedCols = 1;
    int FFixedRows = 1;
    int FDefaultColWidth = 64;
    int FDefaultRowHeight = 24;
    int FGridLineWidth = 1;
    QVector<int> FColWidths;
    QVector<int> FRowHeights;
    QHash<quint64, QString> FCells;
    TColor FColor = clWindow;
    TColor FFixedColor = clBtnFace;
    FontSpec FFont;
    bool FDefaultDrawing = true;
    bool FCtl3D = true;
    int FCol = 1;
    int FRow = 1;
    GridOptions FInForceOptions{goFixedVertLine, goFixedHorzLine, goVertLine, goHorzLine,
                                goRangeSelect};
};
