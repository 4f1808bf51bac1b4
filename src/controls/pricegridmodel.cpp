#include "controls/pricegridmodel.h"

#include <QBrush>

PriceGridModel::PriceGridModel(int columns, int lineCount, int fixedColumns, QObject* parent)
    : QAbstractTableModel(parent), m_columns(columns), m_lineCount(lineCount),
      m_fixedColumns(fixedColumns), m_cells(std::size_t((lineCount + 1) * columns)) {}

int PriceGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_lineCount;
}

int PriceGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_columns;
}

const PriceGridModel::Cell* PriceGridModel::cellAt(int col, int row) const {
    if (col < 0 || col >= m_columns || row < 0 || row > m_lineCount) return nullptr;
    return &m_cells[std::size_t(row * m_columns + col)];
}

PriceGridModel::Cell* PriceGridModel::cellAt(int col, int row) {
    return const_cast<Cell*>(std::as_const(*this).cellAt(col, row));
}

QVariant PriceGridModel::roleData(const Cell* cell, int role) {
    if (!cell) return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return cell->text;
    case Qt::BackgroundRole:
        return QBrush(cell->background);
    case Qt::ForegroundRole:
        return QBrush(cell->foreground);
    case Qt::TextAlignmentRole:
        return int(cell->alignment | Qt::AlignVCenter);
    default:
        return {};
    }
}

QVariant PriceGridModel::data(const QModelIndex& index, int role) const {
    return roleData(index.isValid() ? cellAt(index.column(), index.row() + 1) : nullptr, role);
}

bool PriceGridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !index.isValid() || !(flags(index) & Qt::ItemIsEditable))
        return false;
    setText(index.column(), index.row() + 1, value.toString());
    return true;
}

QVariant PriceGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical)
        return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
    return roleData(cellAt(section, 0), role == Qt::EditRole ? -1 : role);
}

Qt::ItemFlags PriceGridModel::flags(const QModelIndex& index) const {
    if (!index.isValid() || index.column() < m_fixedColumns) return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (m_editable) f |= Qt::ItemIsEditable;
    return f;
}

void PriceGridModel::cellChanged(int col, int row, const QList<int>& roles) {
    if (row == 0) {
        emit headerDataChanged(Qt::Horizontal, col, col);
    } else {
        const QModelIndex i = index(row - 1, col);
        emit dataChanged(i, i, roles);
    }
}

template <typename T>
T PriceGridModel::field(int col, int row, T Cell::*member, const T& outside) const {
    const Cell* cell = cellAt(col, row);
    return cell ? cell->*member : outside;
}

template <typename T>
void PriceGridModel::setField(int col, int row, T Cell::*member, const T& value,
                              const QList<int>& roles) {
    Cell* cell = cellAt(col, row);
    if (!cell || cell->*member == value) return;
    cell->*member = value;
    cellChanged(col, row, roles);
}

QString PriceGridModel::text(int col, int row) const {
    return field(col, row, &Cell::text, QString());
}

void PriceGridModel::setText(int col, int row, const QString& text) {
    setField(col, row, &Cell::text, text, {Qt::DisplayRole, Qt::EditRole});
}

QColor PriceGridModel::background(int col, int row) const {
    return field(col, row, &Cell::background, QColor());
}

void PriceGridModel::setBackground(int col, int row, const QColor& color) {
    setField(col, row, &Cell::background, color, {Qt::BackgroundRole});
}

QColor PriceGridModel::foreground(int col, int row) const {
    return field(col, row, &Cell::foreground, QColor());
}

void PriceGridModel::setForeground(int col, int row, const QColor& color) {
    setField(col, row, &Cell::foreground, color, {Qt::ForegroundRole});
}

Qt::Alignment PriceGridModel::alignment(int col, int row) const {
    return field(col, row, &Cell::alignment, Qt::Alignment(Qt::AlignLeft));
}

void PriceGridModel::setAlignment(int col, int row, Qt::Alignment alignment) {
    setField(col, row, &Cell::alignment, alignment, {Qt::TextAlignmentRole});
}
