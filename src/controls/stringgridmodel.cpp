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

void StringGridModel::setColCount(int value) {
    value = std::max(1, value);
    if (value == FColCount) return;
    FColCount = value;
    FColWidths.resize(value);
    for (int& w : FColWidths)
        if (w <= 0) w = FDefaultColWidth;
    if (FFixedCols >= value) FFixedCols = value - 1;
    setCurrentRaw(std::min(FCol, value - 1), FRow, std::min(FAnchorCol, value - 1), FAnchorRow);
    geometryChanged();
}

void StringGridModel::setRowCount(int value) {
    value = std::max(1, value);
    if (value == FRowCount) return;
    FRowCount = value;
    FRowHeights.resize(value);
    for (int& h : FRowHeights)
        if (h <= 0) h = FDefaultRowHeight;
    if (FFixedRows >= value) FFixedRows = value - 1;
    setCurrentRaw(FCol, std::min(FRow, value - 1), FAnchorCol, std::min(FAnchorRow, value - 1));
    geometryChanged();
}

void StringGridModel::setFixedCols(int value) {
    FFixedCols = std::clamp(value, 0, FColCount - 1);
    if (FCol < FFixedCols) setCurrentRaw(FFixedCols, FRow, FFixedCols, FRow);
    geometryChanged();
}

void StringGridModel::setFixedRows(int value) {
    FFixedRows = std::clamp(value, 0, FRowCount - 1);
    if (FRow < FFixedRows) setCurrentRaw(FCol, FFixedRows, FCol, FFixedRows);
    geometryChanged();
}

QString StringGridModel::cells(int col, int row) const {
    return FCells.value(cellKey(col, row));
}

void StringGridModel::setCells(int col, int row, const QString& value) {
    if (value.isEmpty())
        FCells.remove(cellKey(col, row));
    else
        FCells.insert(cellKey(col, row), value);
    if (col >= 0 && col < FColCount && row >= 0 && row < FRowCount) invalidateCell(col, row);
}

void StringGridModel::setDefaultColWidth(int value) {
    FDefaultColWidth = std::max(0, value);
    FColWidths.fill(FDefaultColWidth, FColCount);
    geometryChanged();
}

void StringGridModel::setDefaultRowHeight(int value) {
    FDefaultRowHeight = std::max(0, value);
    FRowHeights.fill(FDefaultRowHeight, FRowCount);
    geometryChanged();
}

int StringGridModel::colWidths(int col) const {
    return col >= 0 && col < FColCount ? FColWidths[col] : FDefaultColWidth;
}

void StringGridModel::setColWidths(int col, int value) {
    if (col < 0 || col >= FColCount) return;
    FColWidths[col] = std::max(0, value);
    geometryChanged();
}

int StringGridModel::rowHeights(int row) const {
    return row >= 0 && row < FRowCount ? FRowHeights[row] : FDefaultRowHeight;
}

void StringGridModel::setRowHeights(int row, int value) {
    if (row < 0 || row >= FRowCount) return;
    FRowHeights[row] = std::max(0, value);
    geometryChanged();
}

void StringGridModel::setGridLineWidth(int value) {
    FGridLineWidth = std::max(0, value);
    geometryChanged();
}

void StringGridModel::setColor(TColor value) {
    FColor = value;
    invalidate();
}

void StringGridModel::setFixedColor(TColor value) {
    FFixedColor = value;
    invalidate();
}

void StringGridModel::SetFont(const FontSpec& value) {
    FFont = value;
    invalidate();
}

void StringGridModel::setDefaultDrawing(bool value) {
    FDefaultDrawing = value;
    invalidate();
}

void StringGridModel::setCtl3D(bool value) {
    FCtl3D = value;
    invalidate();
}

TGridRect StringGridModel::selection() const {
    return gridRect(std::min(FCol, FAnchorCol), std::min(FRow, FAnchorRow),
                    std::max(FCol, FAnchorCol), std::max(FRow, FAnchorRow));
}

void StringGridModel::setInForceOptions(GridOptions value) {
    if (value == FInForceOptions) return;
    FInForceOptions = value;
    optionsInForceChanged();
    geometryChanged();
}

void StringGridModel::setCurrentRaw(int col, int row, int anchorCol, int anchorRow) {
    FCol = col;
    FRow = row;
    FAnchorCol = anchorCol;
    FAnchorRow = anchorRow;
}

int StringGridModel::vertLineWidth(int col) const {
    const bool fixed = col < FFixedCols;
    return FInForceOptions.contains(fixed ? goFixedVertLine : goVertLine) ? FGridLineWidth : 0;
}

int StringGridModel::horzLineWidth(int row) const {
    const bool fixed = row < FFixedRows;
    return FInForceOptions.contains(fixed ? goFixedHorzLine : goHorzLine) ? FGridLineWidth : 0;
}

TRect StringGridModel::cellRect(int col, int row) const {
    int x = 0;
    for (int c = 0; c < col && c < FColCount; ++c)
        x += colWidths(c) + vertLineWidth(c);
    int y = 0;
    for (int r = 0; r < row && r < FRowCount; ++r)
        y += rowHeights(r) + horzLineWidth(r);
    return Rect(x, y, x + colWidths(col), y + rowHeights(row));
}

bool StringGridModel::mouseToCell(int x, int y, int& col, int& row) const {
    col = -1;
    row = -1;
    int left = 0;
    for (int c = 0; c < FColCount; ++c) {
        const int right = left + colWidths(c) + vertLineWidth(c);
        if (x >= left && x < right) {
            col = c;
            break;
        }
        left = right;
    }
    int top = 0;
    for (int r = 0; r < FRowCount; ++r) {
        const int bottom = top + rowHeights(r) + horzLineWidth(r);
        if (y >= top && y < bottom) {
            row = r;
            break;
        }
        top = bottom;
    }
    return col >= 0 && row >= 0;
}

int StringGridModel::gridWidth() const {
    int w = 0;
    for (int c = 0; c < FColCount; ++c)
        w += colWidths(c) + vertLineWidth(c);
    return w;
}

int StringGridModel::gridHeight() const {
    int h = 0;
    for (int r = 0; r < FRowCount; ++r)
        h += rowHeights(r) + horzLineWidth(r);
    return h;
}
