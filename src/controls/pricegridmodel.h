#pragma once
// The cells of a price grid for a table view: the text of each cell and its
// look (background, text colour, alignment), given to the view and to
// assistive technology through the item data roles.
//
// Callers address cells as the sheet numbers them: row 0 is the heading of
// the columns, which the model gives as its horizontal header, and the lines
// 1..lineCount are the model's rows 0..lineCount-1. The first fixedColumns
// columns label the lines: they are shown but are never current, selected or
// edited, so the view passes over them.

#include <QAbstractTableModel>
#include <QColor>

#include <vector>

class PriceGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    PriceGridModel(int columns, int lineCount, int fixedColumns, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    int fixedColumns() const { return m_fixedColumns; }
    int lineCount() const { return m_lineCount; }
    // Whether the cells that are not fixed take typing.
    bool isEditable() const { return m_editable; }
    void setEditable(bool editable) { m_editable = editable; }

    // By the sheet's numbering. A cell outside the grid reads empty, and a
    // write to it changes nothing.
    QString text(int col, int row) const;
    void setText(int col, int row, const QString& text);
    QColor background(int col, int row) const;
    void setBackground(int col, int row, const QColor& color);
    QColor foreground(int col, int row) const;
    void setForeground(int col, int row, const QColor& color);
    Qt::Alignment alignment(int col, int row) const;
    void setAlignment(int col, int row, Qt::Alignment alignment);

private:
    struct Cell {
        QString text;
        QColor background = Qt::white;
        QColor foreground = Qt::black;
        Qt::Alignment alignment = Qt::AlignLeft;
    };
    // What a role gives of a cell (nothing of none).
    static QVariant roleData(const Cell* cell, int role);
    const Cell* cellAt(int col, int row) const;
    Cell* cellAt(int col, int row);
    void cellChanged(int col, int row, const QList<int>& roles);
    // A field of a cell, or outside for a position outside the grid; and
    // its write, reported for the roles that show it.
    template <typename T> T field(int col, int row, T Cell::*member, const T& outside) const;
    template <typename T>
    void setField(int col, int row, T Cell::*member, const T& value, const QList<int>& roles);

    int m_columns;
    int m_lineCount;
    int m_fixedColumns;
    bool m_editable = true;
    std::vector<Cell> m_cells; // the heading row first, then the lines
};
