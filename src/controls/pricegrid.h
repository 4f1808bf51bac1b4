#pragma once
// PriceGrid: a table view of a PriceGridModel with the keys of the price
// sheet. Cells are addressed as the sheet numbers them (row 0 the heading,
// lines from 1); the look of each cell comes from the model's roles and is
// painted by PriceGridDelegate, which also gives the in-place editor.
//
// Keys: the key handler sees every key pressed in the grid or in its open
// editor before the grid does. Then typing a figure opens the editor with
// it, Backspace opens it emptied, F2 and a double click open it as it is;
// in the editor Enter closes it, Escape puts back the text it opened with,
// up and down close it and move. Arrows move the current cell (with Shift
// they stretch the selection where ranges are allowed); fixed columns are
// passed over. Every change the editor makes is written to the cell at once
// and reported by editTextChanged.

#include "controls/controlerrors.h"
#include "controls/pricegridmodel.h"

#include <QLineEdit>
#include <QPointer>
#include <QStyledItemDelegate>
#include <QTableView>

#include <functional>

class PriceGrid;

// The in-place editor: figures only, the keys go through the grid first.
class CellEditor : public QLineEdit {
    Q_OBJECT
public:
    CellEditor(PriceGrid* grid, QWidget* parent);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    friend class PriceGrid;
    friend class PriceGridDelegate;
    // Whether text may stand in the editor.
    static bool accepts(const QString& text);
    // The key as the line edit itself takes it.
    void typeKey(QKeyEvent* event) { QLineEdit::keyPressEvent(event); }
    PriceGrid* m_grid;
    bool m_opening = true;
};

class PriceGridDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    explicit PriceGridDelegate(PriceGrid* grid);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    PriceGrid* m_grid;
};

class PriceGrid : public QTableView {
    Q_OBJECT
public:
    using KeyHandler = std::function<void(const QKeyEvent& event)>;

    PriceGrid(int columns, int lineCount, int fixedColumns, QWidget* parent = nullptr);

    PriceGridModel& cells() { return *m_model; }
    int columnCount() const { return m_model->columnCount(); }
    // The heading row and the lines.
    int rowCount() const { return m_model->lineCount() + 1; }

    QString text(int col, int row) const { return m_model->text(col, row); }
    void setText(int col, int row, const QString& text) { m_model->setText(col, row, text); }
    void setCellColor(int col, int row, const QColor& color);
    void setCellFontColor(int col, int row, const QColor& color);
    void setCellAlignment(int col, int row, Qt::Alignment alignment);
    // Colours of the selected cells, whether or not the grid has the focus.
    void setSelectionColors(const QColor& background, const QColor& text);
    QColor selectionBackground() const { return m_selectionBackground; }
    QColor selectionText() const { return m_selectionText; }
    // Colours of the heading, and the row height of heading and lines.
    void setHeadingColors(const QColor& background, const QColor& text);
    QColor headingBackground() const { return m_headingBackground; }
    QColor headingText() const { return m_headingText; }
    void setRowHeight(int height);
    // Height of the heading and all lines, with the frame.
    int contentHeight() const;

    // The current cell.
    int col() const;
    int row() const;
    // Moves the current cell as a click does, with its signals; false for a
    // cell that cannot be current.
    bool focusCell(int col, int row);
    // The selected rectangle, left/top to right/bottom inclusive; the
    // current cell when nothing else is selected.
    QRect selectedCells() const;
    // Selects the rectangle and makes its bottom right cell current, quietly.
    void selectCells(const QRect& cells);
    // Whether the user may select a rectangle rather than one cell.
    void setRangeSelect(bool range);

    bool isEditable() const { return m_model->isEditable(); }
    void setEditable(bool editable);
    bool editorMode() const { return !m_editor.isNull(); }
    void setEditorMode(bool open);
    QLineEdit* inplaceEditor() const { return m_editor; }

    void setKeyHandler(KeyHandler handler) { m_keyHandler = std::move(handler); }
    // Failures of the handlers called from input (Qt's event handlers must
    // not throw) go here.
    void setFailureHandler(FailureHandler handler) { m_onFailure = std::move(handler); }

signals:
    // The current cell moved, or was chosen again, by the user.
    void cellSelected(int col, int row);
    // The grid took the focus: its current cell is the one the keys work on.
    void cellEntered(int col, int row);
    // The user changed the text of a cell in the editor.
    void editTextChanged(int col, int row, const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    friend class CellEditor;
    friend class PriceGridDelegate;
    template <typename F> void guarded(F&& f);
    void editorKey(CellEditor* editor, QKeyEvent* event);
    void editorOpened(CellEditor* editor);
    void editorTextEdited(const QString& text);
    // Opens the editor on the current cell; false where it cannot open.
    bool openEditor();
    // Runs a mouse or key event of the view; a move of the current cell
    // that it makes is reported once the view has also set the selection.
    template <typename F> void userInput(F&& f);
    QModelIndex indexOf(int col, int row) const;

    PriceGridModel* m_model;
    PriceGridDelegate* m_delegate;
    QPointer<CellEditor> m_editor;
    QString m_editorOriginal;
    QColor m_selectionBackground{Qt::darkBlue};
    QColor m_selectionText{Qt::white};
    QColor m_headingBackground{Qt::darkGray};
    QColor m_headingText{Qt::white};
    KeyHandler m_keyHandler;
    FailureHandler m_onFailure;
    int m_rowHeight = 26;
    bool m_quiet = false;
    bool m_inUserInput = false;
    bool m_chosenByInput = false;
};
