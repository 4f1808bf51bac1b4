#include "controls/stringgridmodel.h"

#include <algorithm>

namespace {
quint64 cellKey(int col, int row) {
    return (quint64(quint32(col)) << 32) | quint32(row);
}
} // namespace

StringGridModel::StringGridModel() {
    FColWidths.fill(FDefaultColWidth, FColCount);
    FRowHeights.fill(FDefaultRowHeight, FRowCount);
}

StringGridModel::~StringGridModel() = default;

void StringGridModel::SetColCount(int value) {
    value = std::max(1, value);
    if (value == FColCount) return;
    FColCount = value;
    FColWidths.resize(value);
    for (int& w : FColWidths)
        if (w <= 0) w = FDefaultColWidth;
    if (FFixedCols >= value) FFixedCols = value - 1;
    SetCurrentRaw(std::min(FCol, value - 1), FRow, std::min(FAnchorCol, value - 1), FAnchorRow);
    GeometryChanged();
}

void StringGridModel::SetRowCount(int value) {
    value = std::max(1, value);
    if (value == FRowCount) return;
    FRowCount = value;
    FRowHeights.resize(value);
    for (int& h : FRowHeights)
        if (h <= 0) h = FDefaultRowHeight;
    if (FFixedRows >= value) FFixedRows = value - 1;
    SetCurrentRaw(FCol, std::min(FRow, value - 1), FAnchorCol, std::min(FAnchorRow, value - 1));
    GeometryChanged();
}

void StringGridModel::SetFixedCols(int value) {
    FFixedCols = std::clamp(value, 0, FColCount - 1);
    if (FCol < FFixedCols) SetCurrentRaw(FFixedCols, FRow, FFixedCols, FRow);
    GeometryChanged();
}

void StringGridModel::SetFixedRows(int value) {
    FFixedRows = std::clamp(value, 0, FRowCount - 1);
    if (FRow < FFixedRows) SetCurrentRaw(FCol, FFixedRows, FCol, FFixedRows);
    GeometryChanged();
}

QString StringGridModel::Cells(int col, int row) const {
    return FCells.value(cellKey(col, row));
}

void StringGridModel::SetCells(int col, int row, const QString& value) {
    if (value.isEmpty())
        FCells.remove(cellKey(col, row));
    else
        FCells.insert(cellKey(col, row), value);
    if (col >= 0 && col < FColCount && row >= 0 && row < FRowCount) InvalidateCell(col, row);
}

void StringGridModel::SetDefaultColWidth(int value) {
    FDefaultColWidth = std::max(0, value);
    FColWidths.fill(FDefaultColWidth, FColCount);
    GeometryChanged();
}

void StringGridModel::SetDefaultRowHeight(int value) {
    FDefaultRowHeight = std::max(0, value);
    FRowHeights.fill(FDefaultRowHeight, FRowCount);
    GeometryChanged();
}

int StringGridModel::ColWidths(int col) const {
    return col >= 0 && col < FColCount ? FColWidths[col] : FDefaultColWidth;
}

void StringGridModel::SetColWidths(int col, int value) {
    if (col < 0 || col >= FColCount) return;
    FColWidths[col] = std::max(0, value);
    GeometryChanged();
}

int StringGridModel::RowHeights(int row) const {
    return row >= 0 && row < FRowCount ? FRowHeights[row] : FDefaultRowHeight;
}

void StringGridModel::SetRowHeights(int row, int value) {
    if (row < 0 || row >= FRowCount) return;
    FRowHeights[row] = std::max(0, value);
    GeometryChanged();
}

void StringGridModel::SetGridLineWidth(int value) {
    FGridLineWidth = std::max(0, value);
    GeometryChanged();
}

void StringGridModel::SetColor(TColor value) {
    FColor = value;
    Invalidate();
}

void StringGridModel::SetFixedColor(TColor value) {
    FFixedColor = value;
    Invalidate();
}

void StringGridModel::SetFont(const FontSpec& value) {
    FFont = value;
    Invalidate();
}

void StringGridModel::SetDefaultDrawing(bool value) {
    FDefaultDrawing = value;
    Invalidate();
}

void StringGridModel::SetCtl3D(bool value) {
    FCtl3D = value;
    Invalidate();
}

TGridRect StringGridModel::Selection() const {
    return GridRect(std::min(FCol, FAnchorCol), std::min(FRow, FAnchorRow),
                    std::max(FCol, FAnchorCol), std::max(FRow, FAnchorRow));
}

void StringGridModel::SetInForceOptions(GridOptions value) {
    if (value == FInForceOptions) return;
    FInForceOptions = value;
    OptionsInForceChanged();
    GeometryChanged();
}

void StringGridModel::SetCurrentRaw(int col, int row, int anchorCol, int anchorRow) {
    FCol = col;
    FRow = row;
    FAnchorCol = anchorCol;
    FAnchorRow = anchorRow;
}

int StringGridModel::VertLineWidth(int col) const {
    const bool fixed = col < FFixedCols;
    return FInForceOptions.Contains(fixed ? goFixedVertLine : goVertLine) ? FGridLineWidth : 0;
}

int StringGridModel::HorzLineWidth(int row) const {
    const bool fixed = row < FFixedRows;
    return FInForceOptions.Contains(fixed ? goFixedHorzLine : goHorzLine) ? FGridLineWidth : 0;
}

TRect StringGridModel::CellRect(int col, int row) const {
    int x = 0;
    for (int c = 0; c < col && c < FColCount; ++c)
        x += ColWidths(c) + VertLineWidth(c);
    int y = 0;
    for (int r = 0; r < row && r < FRowCount; ++r)
        y += RowHeights(r) + HorzLineWidth(r);
    return Rect(x, y, x + ColWidths(col), y + RowHeights(row));
}

bool StringGridModel::MouseToCell(int x, int y, int& col, int& row) const {
    col = -1;
    row = -1;
    int left = 0;
    for (int c = 0; c < FColCount; ++c) {
        const int right = left + ColWidths(c) + VertLineWidth(c);
        if (x >= left && x < right) {
            col = c;
            break;
        }
        left = right;
    }
    int top = 0;
    for (int r = 0; r < FRowCount; ++r) {
        const int bottom = top + RowHeights(r) + HorzLineWidth(r);
        if (y >= top && y < bottom) {
            row = r;
            break;
        }
        top = bottom;
    }
    return col >= 0 && row >= 0;
}

int StringGridModel::GridWidth() const {
    int w = 0;
    for (int c = 0; c < FColCount; ++c)
        w += ColWidths(c) + VertLineWidth(c);
    return w;
}

int StringGridModel::GridHeight() const {
    int h = 0;
    for (int r = 0; r < FRowCount; ++r)
        h += RowHeights(r) + HorzLineWidth(r);
    return h;
}
