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

// A set of GridOption: `opts.contains(goEditing)`, `opts + goEditing`,
// `opts - goEditing`, `GridOptions{goVertLine, goHorzLine}`.
class GridOptions {
public:
    GridOptions() = default;
    GridOptions(std::initializer_list<GridOption> options) {
        for (GridOption o : options)
            FBits |= bit(o);
    }
    static GridOptions fromBits(unsigned bits) {
        GridOptions o;
        o.FBits = bits;
        return o;
    }
    unsigned bits() const { return FBits; }
    bool contains(GridOption o) const { return (FBits & bit(o)) != 0; }
    GridOptions operator+(GridOption o) const { return fromBits(FBits | bit(o)); }
    GridOptions operator-(GridOption o) const { return fromBits(FBits & ~bit(o)); }
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
    bool contains(int col, int row) const {
        return col >= Left && col <= Right && row >= Top && row <= Bottom;
    }
    friend bool operator==(const TGridRect& a, const TGridRect& b) {
        return a.Left == b.Left && a.Top == b.Top && a.Right == b.Right && a.Bottom == b.Bottom;
    }
};
inline TGridRect gridRect(int left, int top, int right, int bottom) {
    return TGridRect{left, top, right, bottom};
}

class StringGridModel : public ControlObject {
public:
    StringGridModel();
    ~StringGridModel() override;

    int colCount() const { return FColCount; }
    void setColCount(int value);
    int rowCount() const { return FRowCount; }
    void setRowCount(int value);
    int fixedCols() const { return FFixedCols; }
    void setFixedCols(int value);
    int fixedRows() const { return FFixedRows; }
    void setFixedRows(int value);

    // Any position can be read and written, also outside the grid; only
    // the cells of the grid are shown.
    QString cells(int col, int row) const;
    void setCells(int col, int row, const QString& value);

    int defaultColWidth() const { return FDefaultColWidth; }
    // Also gives every column this width.
    void setDefaultColWidth(int value);
    int defaultRowHeight() const { return FDefaultRowHeight; }
    // Also gives every row this height.
    void setDefaultRowHeight(int value);
    int colWidths(int col) const;
    void setColWidths(int col, int value);
    int rowHeights(int row) const;
    void setRowHeights(int row, int value);
    // Width of the grid lines between cells, 1 by default.
    int gridLineWidth() const { return FGridLineWidth; }
    void setGridLineWidth(int value);

    TColor color() const { return FColor; }
    void setColor(TColor value);
    TColor fixedColor() const { return FFixedColor; }
    void setFixedColor(TColor value);
    const FontSpec& Font() const { return FFont; }
    void SetFont(const FontSpec& value);
    // The framework's own cell drawing instead of the grid's.
    bool defaultDrawing() const { return FDefaultDrawing; }
    void setDefaultDrawing(bool value);
    // Raised frames of fixed cells, and lighter inner lines in fixed cells.
    bool ctl3D() const { return FCtl3D; }
    void setCtl3D(bool value);

    // The current cell.
    int col() const { return FCol; }
    int row() const { return FRow; }
    // The selected cells; a single cell when no range is selected.
    TGridRect selection() const;

    // The options in force at this moment.
    GridOptions inForceOptions() const { return FInForceOptions; }
    void setInForceOptions(GridOptions value);

    // Geometry, in pixels from the top left of the grid; Right and Bottom
    // exclusive, the grid line after a cell is not part of it.
    TRect cellRect(int col, int row) const;
    // Cell under a point, or false when it lies on no cell.
    bool mouseToCell(int x, int y, int& col, int& row) const;
    // The size needed to show every cell.
    int gridWidth() const;
    int gridHeight() const;
    int vertLineWidth(int col) const;
    int horzLineWidth(int row) const;

    // Repaint requests; the widget implements them.
    virtual void invalidate() {}
    virtual void invalidateCell(int col, int row) {
        Q_UNUSED(col);
        Q_UNUSED(row);
    }

protected:
    // Sets the current cell, anchor and selection without any event.
    void setCurrentRaw(int col, int row, int anchorCol, int anchorRow);
    virtual void geometryChanged() {}
    virtual void optionsInForceChanged() {}

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
