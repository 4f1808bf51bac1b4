#include "controls/pricegrid.h"

#include <algorithm>

#include <QFocusEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QRegularExpressionValidator>

// ---------------------------------------------------------------- CellEditor

namespace {
const QRegularExpression FigureCharacters(QStringLiteral("[0-9.,]*"));
}

CellEditor::CellEditor(PriceGrid* grid, QWidget* parent) : QLineEdit(parent), m_grid(grid) {
    setFrame(false);
    setValidator(new QRegularExpressionValidator(FigureCharacters, this));
    QPalette pal = palette();
    pal.setColor(QPalette::Base, Qt::white);
    pal.setColor(QPalette::Text, Qt::black);
    setPalette(pal);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

bool CellEditor::accepts(const QString& text) {
    return FigureCharacters
               .match(text, 0, QRegularExpression::NormalMatch,
                      QRegularExpression::AnchorAtOffsetMatchOption)
               .capturedLength() == text.size();
}

bool CellEditor::event(QEvent* event) {
    // An open editor owns the Escape key: the window's shortcut on it does
    // not take the key away from the grid's key handling.
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void CellEditor::keyPressEvent(QKeyEvent* event) {
    m_grid->editorKey(this, event);
}

// ---------------------------------------------------------------- PriceGridDelegate

PriceGridDelegate::PriceGridDelegate(PriceGrid* grid) : QStyledItemDelegate(grid), m_grid(grid) {}

void PriceGridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const {
    const bool fixed = !(index.flags() & Qt::ItemIsEnabled);
    const bool selected = !fixed && (option.state & QStyle::State_Selected);
    painter->save();
    painter->fillRect(option.rect, selected ? QBrush(m_grid->selectionBackground())
                                            : index.data(Qt::BackgroundRole).value<QBrush>());
    painter->setPen(selected ? m_grid->selectionText()
                             : index.data(Qt::ForegroundRole).value<QBrush>().color());
    painter->setFont(option.font);
    const auto alignment = Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt());
    painter->drawText(option.rect.adjusted(3, 0, -3, 0), int(alignment),
                      index.data(Qt::DisplayRole).toString());
    if (!fixed && (option.state & QStyle::State_HasFocus)) {
        painter->setPen(
            QPen(selected ? m_grid->selectionText() : QColor(Qt::black), 1, Qt::DotLine));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option.rect.adjusted(1, 1, -2, -2));
    }
    painter->restore();
}

QWidget* PriceGridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                         const QModelIndex&) const {
    auto* editor = new CellEditor(m_grid, parent);
    editor->setFont(option.font);
    m_grid->editorOpened(editor);
    return editor;
}

void PriceGridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto* edit = static_cast<CellEditor*>(editor);
    const QString text = index.data(Qt::EditRole).toString();
    // The cell follows every change of the editor; the editor keeps its
    // caret when the cell reports the change back.
    if (edit->text() != text) edit->setText(text);
    if (edit->m_opening) {
        edit->selectAll();
        edit->m_opening = false;
    }
}

void PriceGridDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                     const QModelIndex& index) const {
    model->setData(index, static_cast<QLineEdit*>(editor)->text(), Qt::EditRole);
}

void PriceGridDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                             const QModelIndex&) const {
    editor->setGeometry(option.rect.adjusted(0, 0, -1, -1));
}

bool PriceGridDelegate::eventFilter(QObject* object, QEvent* event) {
    // The grid decides what each key does in the editor.
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride)
        return false;
    return QStyledItemDelegate::eventFilter(object, event);
}

// ---------------------------------------------------------------- the heading

namespace {

// Flat heading cells in the heading colours, divided by black lines.
class HeadingView : public QHeaderView {
public:
    explicit HeadingView(PriceGrid* grid) : QHeaderView(Qt::Horizontal, grid), m_grid(grid) {
        setSectionsClickable(false);
        setHighlightSections(false);
        setMinimumSectionSize(0);
    }

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override {
        painter->save();
        painter->fillRect(rect, m_grid->headingBackground());
        painter->setPen(Qt::black);
        painter->drawLine(rect.topRight(), rect.bottomRight());
        painter->drawLine(rect.bottomLeft(), rect.bottomRight());
        painter->setPen(m_grid->headingText());
        painter->drawText(rect.adjusted(2, 0, -3, -1), Qt::AlignCenter,
                          model()->headerData(section, Qt::Horizontal).toString());
        painter->restore();
    }

private:
    PriceGrid* m_grid;
};

} // namespace

// ---------------------------------------------------------------- PriceGrid

PriceGrid::PriceGrid(int columns, int lineCount, int fixedColumns, QWidget* parent)
    : QTableView(parent), m_model(new PriceGridModel(columns, lineCount, fixedColumns, this)),
      m_delegate(new PriceGridDelegate(this)) {
    setModel(m_model);
    setItemDelegate(m_delegate);
    setSelectionBehavior(SelectItems);
    setSelectionMode(SingleSelection);
    setEditTriggers(DoubleClicked);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setAutoScroll(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalHeader(new HeadingView(this));
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    // A plain black frame, and grid lines in light grey.
    setFrameStyle(QFrame::Box | QFrame::Plain);
    QPalette pal = palette();
    pal.setColor(QPalette::WindowText, Qt::black);
    pal.setColor(QPalette::Mid, QColor(192, 192, 192));
    setPalette(pal);
    setRowHeight(m_rowHeight);
    m_quiet = true;
    setCurrentIndex(indexOf(fixedColumns, 1));
    m_quiet = false;
}

template <typename F> void PriceGrid::guarded(F&& f) {
    try {
        f();
    } catch (const std::exception& e) {
        reportControlFailure(m_onFailure, QString::fromUtf8(e.what()));
    }
}

QModelIndex PriceGrid::indexOf(int col, int row) const {
    return m_model->index(row - 1, col);
}

void PriceGrid::setCellColor(int col, int row, const QColor& color) {
    m_model->setBackground(col, row, color);
}

void PriceGrid::setCellFontColor(int col, int row, const QColor& color) {
    m_model->setForeground(col, row, color);
}

void PriceGrid::setCellAlignment(int col, int row, Qt::Alignment alignment) {
    m_model->setAlignment(col, row, alignment);
}

void PriceGrid::setSelectionColors(const QColor& background, const QColor& text) {
    m_selectionBackground = background;
    m_selectionText = text;
    viewport()->update();
}

void PriceGrid::setHeadingColors(const QColor& background, const QColor& text) {
    m_headingBackground = background;
    m_headingText = text;
    horizontalHeader()->viewport()->update();
}

void PriceGrid::setRowHeight(int height) {
    m_rowHeight = height;
    verticalHeader()->setMinimumSectionSize(0);
    verticalHeader()->setDefaultSectionSize(height);
    horizontalHeader()->setFixedHeight(height);
}

int PriceGrid::contentHeight() const {
    return m_rowHeight * rowCount() + 2 * frameWidth();
}

int PriceGrid::col() const {
    return currentIndex().column();
}

int PriceGrid::row() const {
    return currentIndex().row() + 1;
}

bool PriceGrid::focusCell(int col, int row) {
    const QModelIndex index = indexOf(col, row);
    if (!index.isValid() || !(index.flags() & Qt::ItemIsEnabled)) return false;
    setEditorMode(false);
    const bool same = index == currentIndex();
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    if (same) guarded([&] { emit cellSelected(col, row); });
    return true;
}

QRect PriceGrid::selectedCells() const {
    QRect cells;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        const QRect r(QPoint(std::max(range.left(), m_model->fixedColumns()), range.top() + 1),
                      QPoint(range.right(), range.bottom() + 1));
        if (r.isValid()) cells = cells.isNull() ? r : cells.united(r);
    }
    return cells.isNull() ? QRect(col(), row(), 1, 1) : cells;
}

void PriceGrid::selectCells(const QRect& cells) {
    m_quiet = true;
    selectionModel()->setCurrentIndex(indexOf(cells.right(), cells.bottom()),
                                      QItemSelectionModel::NoUpdate);
    selectionModel()->select(
        QItemSelection(indexOf(cells.left(), cells.top()), indexOf(cells.right(), cells.bottom())),
        QItemSelectionModel::ClearAndSelect);
    m_quiet = false;
}

void PriceGrid::setRangeSelect(bool range) {
    setSelectionMode(range ? ContiguousSelection : SingleSelection);
}

void PriceGrid::setEditable(bool editable) {
    m_model->setEditable(editable);
}

void PriceGrid::setEditorMode(bool open) {
    if (open)
        openEditor();
    else if (m_editor)
        closeEditor(m_editor, QAbstractItemDelegate::NoHint);
}

bool PriceGrid::openEditor() {
    if (m_editor) return true;
    const QModelIndex index = currentIndex();
    if (!index.isValid() || !(index.flags() & Qt::ItemIsEditable)) return false;
    edit(index);
    return !m_editor.isNull();
}

void PriceGrid::editorOpened(CellEditor* editor) {
    m_editor = editor;
    m_editorOriginal = text(col(), row());
    connect(editor, &QLineEdit::textEdited, this, &PriceGrid::editorTextEdited);
}

void PriceGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint) {
    if (editor == m_editor) m_editor = nullptr;
    // The grid moves by its keys, never by the hint of a closing editor.
    QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
}

void PriceGrid::editorTextEdited(const QString& text) {
    guarded([&] {
        const int c = col(), r = row();
        if (m_model->text(c, r) == text) return;
        m_model->setText(c, r, text);
        emit editTextChanged(c, r, text);
    });
}

void PriceGrid::editorKey(CellEditor* editor, QKeyEvent* event) {
    guarded([&] {
        if (m_keyHandler) m_keyHandler(*event);
        switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            setEditorMode(false);
            return;
        case Qt::Key_Escape:
            if (m_editor) {
                m_model->setText(col(), row(), m_editorOriginal);
                setEditorMode(false);
            }
            return;
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            setEditorMode(false);
            userInput([&] { QTableView::keyPressEvent(event); });
            return;
        default:
            // Unless the handler closed the editor, the key edits the text.
            if (m_editor == editor) editor->typeKey(event);
        }
    });
}

void PriceGrid::keyPressEvent(QKeyEvent* event) {
    guarded([&] {
        if (m_keyHandler) m_keyHandler(*event);
        const bool plain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
        const QString text = event->text();
        switch (event->key()) {
        case Qt::Key_F2:
            openEditor();
            return;
        case Qt::Key_Backspace:
            // Backspace goes into the cell like a typed character: the
            // editor opens with the whole text selected, and the key
            // deletes it.
            if (plain && openEditor() && !m_editor->text().isEmpty()) m_editor->typeKey(event);
            return;
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Home:
        case Qt::Key_End: {
            // Ctrl moves as the plain key does; Shift stretches the
            // selection where ranges are allowed.
            QKeyEvent move(event->type(), event->key(), event->modifiers() & ~Qt::ControlModifier,
                           event->text());
            userInput([&] { QTableView::keyPressEvent(&move); });
            event->setAccepted(move.isAccepted());
            return;
        }
        default:
            if (plain && text.size() == 1 && text.at(0).isPrint()) {
                // A figure typed into the cell opens the editor with it; any
                // other character is not taken, and never searches the grid.
                if (CellEditor::accepts(text) && openEditor()) m_editor->typeKey(event);
                return;
            }
            event->ignore();
        }
    });
}

template <typename F> void PriceGrid::userInput(F&& f) {
    m_inUserInput = true;
    m_chosenByInput = false;
    f();
    m_inUserInput = false;
    if (m_chosenByInput) guarded([&] { emit cellSelected(col(), row()); });
}

void PriceGrid::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        setFocus(Qt::MouseFocusReason);
        return;
    }
    userInput([&] {
        QTableView::mousePressEvent(event);
        // A click on the current cell chooses it again.
        const QModelIndex at = indexAt(event->position().toPoint());
        if (at.isValid() && at == currentIndex() && (at.flags() & Qt::ItemIsEnabled))
            m_chosenByInput = true;
    });
}

void PriceGrid::mouseMoveEvent(QMouseEvent* event) {
    // A grid of single cells does not follow a drag.
    if (selectionMode() == SingleSelection && (event->buttons() & Qt::LeftButton)) return;
    userInput([&] { QTableView::mouseMoveEvent(event); });
}

void PriceGrid::mouseReleaseEvent(QMouseEvent* event) {
    // A click inside a selected range makes that cell the selection at the
    // release: the cell is chosen again with the selection it now has.
    const QRect before = selectedCells();
    QTableView::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && currentIndex().isValid() && selectedCells() != before)
        guarded([&] { emit cellSelected(col(), row()); });
}

void PriceGrid::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    // The grid's current cell is again the one the keys work on.
    if (currentIndex().isValid()) guarded([&] { emit cellEntered(col(), row()); });
}

void PriceGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (m_quiet || !current.isValid()) return;
    if (m_inUserInput) {
        m_chosenByInput = true;
        return;
    }
    guarded([&] { emit cellSelected(current.column(), current.row() + 1); });
}
