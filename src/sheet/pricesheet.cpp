#include "sheet/pricesheet.h"

#include "controls/pricegrid.h"
#include "document/pipetypedocument.h"
#include "engine/calcrow.h"
#include "platform/dialogs.h"
#include "sheet/sheettexts.h"
#include "sheet/sizedialog.h"
#include "util/flagscope.h"

#include <QEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QTabBar>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>

namespace {

const QString GridHint = QStringLiteral(
    "入力はセルをダブルクリックしてください。Shift+Enterで以降の行に同一のデータが入力されます。");

constexpr int RowHeight = 26;
constexpr int Col0Width = 50;

// The field of a factor column (4 to 10) of compositeGrid; null for others.
Currency* factorField(PipeRow& row, int col) {
    return col >= 4 && col <= 10 ? &row.factor(col - 3) : nullptr;
}

// The field of a price column (1 to 3) of materialGrid; null for others.
Currency* priceField(PipeRow& row, int col) {
    switch (col) {
    case 1:
        return &row.submittedPrice;
    case 2:
        return &row.costPrice;
    case 3:
        return &row.listPrice;
    default:
        return nullptr;
    }
}

bool isEnter(const QKeyEvent& key) {
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

} // namespace

PriceSheet::PriceSheet(PipeTypeDocument& document, Dialogs& dialogs, QWidget* parent)
    : QWidget(parent), m_document(document), m_dialogs(dialogs) {
    setObjectName(QStringLiteral("SheetFrame"));
    auto* sheetLayout = new QVBoxLayout(this);
    sheetLayout->setContentsMargins(0, 0, 0, 0);
    sheetLayout->setSpacing(0);
    m_tabs = new QTabBar(this);
    m_tabs->setObjectName(QStringLiteral("tabs"));
    m_tabs->setExpanding(false);
    m_tabs->setDrawBase(true);
    sheetLayout->addWidget(m_tabs);

    m_gridPanel = new QWidget(this);
    m_gridPanel->setObjectName(QStringLiteral("gridPanel"));
    m_gridPanel->setAutoFillBackground(true);
    auto* panelLayout = new QGridLayout(m_gridPanel);
    panelLayout->setContentsMargins(4, 4, 4, 4);
    panelLayout->setHorizontalSpacing(5);
    panelLayout->setVerticalSpacing(2);
    m_materialCaption = new QLabel(QStringLiteral("資材単価"), m_gridPanel);
    m_materialCaption->setObjectName(QStringLiteral("materialCaption"));
    m_compositeCaption = new QLabel(QStringLiteral("複合単価"), m_gridPanel);
    m_compositeCaption->setObjectName(QStringLiteral("compositeCaption"));
    m_materialGrid = new PriceGrid(Grid2Cols, SheetLines, 1, m_gridPanel);
    m_materialGrid->setObjectName(QStringLiteral("materialGrid"));
    m_materialGrid->setAccessibleName(QStringLiteral("資材単価"));
    m_materialGrid->setRangeSelect(true);
    m_compositeGrid = new PriceGrid(Grid1Cols, SheetLines, 4, m_gridPanel);
    m_compositeGrid->setObjectName(QStringLiteral("compositeGrid"));
    m_compositeGrid->setAccessibleName(QStringLiteral("複合単価"));
    panelLayout->addWidget(m_materialCaption, 0, 0);
    panelLayout->addWidget(m_compositeCaption, 0, 1);
    panelLayout->addWidget(m_materialGrid, 1, 0, Qt::AlignTop | Qt::AlignLeft);
    panelLayout->addWidget(m_compositeGrid, 1, 1, Qt::AlignTop | Qt::AlignLeft);
    panelLayout->setColumnStretch(1, 1);
    panelLayout->setRowStretch(2, 1);
    sheetLayout->addWidget(m_gridPanel, 1);

    // Fixed captions.
    m_materialGrid->setText(1, 0, QStringLiteral("提　出"));
    m_materialGrid->setText(2, 0, QStringLiteral("原　価"));
    m_materialGrid->setText(3, 0, QStringLiteral("定　価"));
    m_compositeGrid->setText(0, 0, QStringLiteral("No"));
    m_compositeGrid->setText(2, 0, QStringLiteral("複合単価"));
    m_compositeGrid->setText(3, 0, QStringLiteral("提出単価"));
    m_compositeGrid->setText(4, 0, QStringLiteral("管"));
    m_compositeGrid->setText(8, 0, QStringLiteral("配管工"));

    // Cell styles: the labels of the lines and the composite prices and
    // labour figures on the dark ground, the figures one enters on white.
    for (PriceGrid* g : {m_compositeGrid, m_materialGrid}) {
        g->setRowHeight(RowHeight);
        g->setHeadingColors(sheetDark(), Qt::white);
        g->setSelectionColors(sheetMark(), Qt::white);
        g->setToolTip(GridHint);
        for (int c = 0; c < g->columnCount(); ++c)
            g->setCellAlignment(c, 0, Qt::AlignHCenter);
        for (int r = 1; r < GridRows; ++r) {
            for (int c = 0; c < g->columnCount(); ++c) {
                const bool dark = c == 0 || (g == m_compositeGrid && (c == 3 || c == 8));
                g->setCellColor(c, r, dark ? sheetDark() : QColor(Qt::white));
                g->setCellFontColor(c, r, dark ? QColor(Qt::white) : QColor(Qt::black));
                g->setCellAlignment(c, r, c == 0 ? Qt::AlignHCenter : Qt::AlignRight);
            }
        }
    }

    connect(m_tabs, &QTabBar::currentChanged, this, [this] {
        if (!m_settingTabs) showTab(false);
    });
    connect(m_compositeGrid, &PriceGrid::cellSelected, this, [this](int c, int r) {
        selectCompositeCell(c, r);
        compositeCellChosen();
    });
    connect(m_materialGrid, &PriceGrid::cellSelected, this, [this](int c, int r) {
        selectMaterialCell(c, r);
        materialCellChosen();
    });
    connect(m_compositeGrid, &PriceGrid::cellEntered, this,
            [this](int c, int r) { selectCompositeCell(c, r); });
    connect(m_materialGrid, &PriceGrid::cellEntered, this,
            [this](int c, int r) { selectMaterialCell(c, r); });
    // Editing a cell makes it the one the keys work on.
    connect(m_materialGrid, &PriceGrid::editTextChanged, this,
            [this](int c, int r) { m_materialCell = QPoint(c, r); });
    m_compositeGrid->setKeyHandler([this](const QKeyEvent& key) { compositeKeyDown(key); });
    m_materialGrid->setKeyHandler([this](const QKeyEvent& key) { materialKeyDown(key); });
    m_gridPanel->installEventFilter(this);
}

void PriceSheet::setFailureHandler(const FailureHandler& handler) {
    m_compositeGrid->setFailureHandler(handler);
    m_materialGrid->setFailureHandler(handler);
}

void PriceSheet::fitInto(QScrollArea* area) {
    m_scrollArea = area;
    area->viewport()->installEventFilter(this);
    layoutGrids();
}

bool PriceSheet::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize &&
        (watched == m_gridPanel || (m_scrollArea && watched == m_scrollArea->viewport())))
        layoutGrids();
    return QWidget::eventFilter(watched, event);
}

void PriceSheet::layoutGrids() {
    int w = m_gridPanel->width();
    // The grids fit in what the scroll area shows of the sheet, even where
    // the rows above and below them make it wider than the screen.
    if (m_scrollArea && m_scrollArea->widget())
        w = std::min(w, m_scrollArea->viewport()->width() -
                            m_gridPanel->mapTo(m_scrollArea->widget(), QPoint(0, 0)).x());
    // The form's rule, (w - 120) / 13, unless the panel's margins and the
    // frames here leave less room: the last column must not be cut off.
    const QMargins m = m_gridPanel->layout()->contentsMargins();
    const auto* grid = static_cast<QGridLayout*>(m_gridPanel->layout());
    const int frames = 4 * m_compositeGrid->frameWidth() + 2;
    const int room = w - m.left() - m.right() - grid->horizontalSpacing() - 55 - Col0Width - frames;
    const int c = std::max(0, std::min((w - 120) / 13, room / 13));
    // Both grids are as wide as their columns.
    for (PriceGrid* g : {m_compositeGrid, m_materialGrid}) {
        g->setColumnWidth(0, Col0Width);
        for (int col = 1; col < g->columnCount(); ++col)
            g->setColumnWidth(col, c);
        g->setFixedHeight(g->contentHeight());
        g->setFixedWidth(Col0Width + (g->columnCount() - 1) * c + 2 * g->frameWidth());
    }
}

PipeRow& PriceSheet::row(int r) {
    return m_document.rows()[r];
}

// ---- Tabs ---------------------------------------------------------------------------

int PriceSheet::currentTab() const {
    return std::max(0, m_tabs->currentIndex());
}

QStringList PriceSheet::tabCaptions() const {
    QStringList captions;
    for (int t = 0; t < m_tabs->count(); ++t)
        captions << m_tabs->tabText(t);
    return captions;
}

void PriceSheet::setTabCaptions(const QStringList& captions) {
    const FlagScope settingTabs(m_settingTabs);
    while (m_tabs->count() > 0)
        m_tabs->removeTab(0);
    for (const QString& caption : captions)
        m_tabs->addTab(caption);
    m_tabs->setCurrentIndex(0);
}

void PriceSheet::selectFirstTab() {
    const FlagScope settingTabs(m_settingTabs);
    m_tabs->setCurrentIndex(0);
}

// ---- Lines --------------------------------------------------------------------------

void PriceSheet::clear() {
    for (int r = 1; r < GridRows; ++r) {
        for (int c = 1; c <= 3; ++c)
            m_materialGrid->setText(c, r, QString());
        for (int c = 1; c <= 10; ++c)
            m_compositeGrid->setText(c, r, QString());
    }
}

void PriceSheet::setHeadings(bool refrigerant, bool longForm) {
    const ElementHeadings h = longForm ? longHeadings(refrigerant) : shortHeadings(refrigerant);
    m_compositeGrid->setText(5, 0, h.col5);
    m_compositeGrid->setText(6, 0, h.col6);
    m_compositeGrid->setText(7, 0, h.col7);
    m_compositeGrid->setText(9, 0, h.col9);
    m_compositeGrid->setText(10, 0, h.col10);
    if (!longForm) {
        m_compositeGrid->setText(8, 0, QStringLiteral("配 管 工"));
        m_compositeGrid->setText(1, 0, QStringLiteral("採用単価"));
    }
}

void PriceSheet::setRateCaption(bool rateOn) {
    m_materialCaption->setText(rateOn ? QStringLiteral("資材単価[単価に掛率を使用]")
                                      : QStringLiteral("資材単価"));
}

void PriceSheet::showGridRow(int r) {
    const int g = r - currentTab() * 15;
    if (g < 1 || g > SheetLines) return;
    const Options o = options();
    SheetView view;
    view.side = sideOfColumn(m_materialGrid->selectedCells().left());
    view.showResults = o.showResults;
    view.refrigerant = o.refrigerant;
    const auto texts = grid1LineTexts(row(r), view);
    m_compositeGrid->setText(0, g, texts[0]);
    m_materialGrid->setText(0, g, texts[0]);
    m_compositeGrid->setText(2, g, texts[2]);
    m_compositeGrid->setText(1, g, texts[1]);
    m_compositeGrid->setText(3, g, texts[3]);
    for (int c = 4; c < Grid1Cols; ++c)
        m_compositeGrid->setText(c, g, texts[std::size_t(c)]);
}

void PriceSheet::showPriceCells(int r) {
    // Rows of other tabs lie beyond the grid: nothing to show.
    if (r < 1 || r > SheetLines) return;
    const auto texts = priceTexts(row(r));
    for (int c = 1; c <= 3; ++c)
        m_materialGrid->setText(c, r, texts[std::size_t(c - 1)]);
}

void PriceSheet::showTab(bool withPrices) {
    const int base = tabBase();
    for (int g = 1; g <= SheetLines; ++g)
        showGridRow(base + g);
    if (withPrices)
        for (int r = 1; r <= SheetLines; ++r)
            showPriceCells(r);
}

void PriceSheet::markRow(int g) {
    for (PriceGrid* grid : {m_compositeGrid, m_materialGrid}) {
        for (int line = 1; line <= 15; ++line)
            grid->setCellColor(0, line, sheetDark());
        grid->setCellColor(0, g, sheetMark());
    }
}

// ---- Remembered cells and the lines that follow each other -------------------------

void PriceSheet::resetCells() {
    m_compositeCell = m_materialCell = QPoint(4, 1);
    for (PriceGrid* grid : {m_compositeGrid, m_materialGrid})
        grid->setCellColor(0, 1, sheetMark());
}

void PriceSheet::selectCompositeCell(int col, int row) {
    m_compositeCell = QPoint(col, row);
}

void PriceSheet::selectMaterialCell(int col, int row) {
    m_materialCell = QPoint(col, row);
    // With the rate on the list price, only the list price is typed.
    m_materialGrid->setEditable(!(options().rateOn && col < 3));
}

void PriceSheet::compositeCellChosen() {
    const int line = m_compositeGrid->row();
    const int col = m_materialGrid->selectedCells().left();
    m_materialGrid->selectCells(QRect(col, line, 1, 1));
    markRow(line);
}

void PriceSheet::materialCellChosen() {
    const int line = m_materialGrid->row();
    const int col = m_compositeGrid->selectedCells().left();
    m_compositeGrid->selectCells(QRect(col, line, 1, 1));
    markRow(line);
    // The selected column decides the side that compositeGrid shows.
    showTab(false);
}

void PriceSheet::updateCompositeEditing() {
    const bool results = options().showResults;
    if (results) m_compositeGrid->setEditorMode(false);
    m_compositeGrid->setEditable(!results);
}

// ---- The key filter -----------------------------------------------------------------

bool PriceSheet::gridKeyCommits(PriceGrid* grid, const QKeyEvent& key) {
    const bool editorOpen = grid->editorMode();
    const KeyAction action = gridKeyAction(key.key(), key.modifiers(), editorOpen);
    if (action == KeyAction::MoveOnly) return false;
    if (editorOpen && isEnter(key)) grid->setEditorMode(false);
    switch (action) {
    case KeyAction::PassToCell:
        return false;
    case KeyAction::Commit:
        grid->setEditorMode(false);
        return true;
    default:
        grid->setEditorMode(false);
        m_dialogs.beep();
        return true;
    }
}

void PriceSheet::compositeKeyDown(const QKeyEvent& key) {
    if (options().showResults) {
        // The columns show results: no key turns them into factors.
        const KeyAction action =
            gridKeyAction(key.key(), key.modifiers(), m_compositeGrid->editorMode());
        const bool modifier =
            key.key() == Qt::Key_Shift || key.key() == Qt::Key_Control || key.key() == Qt::Key_Alt;
        if (action != KeyAction::MoveOnly && !modifier) m_dialogs.beep();
        return;
    }
    // The fill-down follows the Shift state that came with this key.
    if (gridKeyCommits(m_compositeGrid, key))
        commitCompositeCell(isEnter(key), key.modifiers().testFlag(Qt::ShiftModifier));
}

void PriceSheet::materialKeyDown(const QKeyEvent& key) {
    if (gridKeyCommits(m_materialGrid, key)) commitMaterialCell(isEnter(key));
}

// ---- Commits ------------------------------------------------------------------------

void PriceSheet::commitCompositeCell(bool enter, bool shiftDown) {
    const int c = m_compositeCell.x(), g = m_compositeCell.y();
    const int base = tabBase();
    if (options().refrigerant && c == 9) {
        showInfoDialog(m_dialogs, window(), QStringLiteral("確認"),
                       QStringLiteral("冷媒モードです。この列のセルは編集できません。"));
        showGridRow(base + g);
        return;
    }
    const Currency v = strToCurrDef(m_compositeGrid->text(c, g), Currency{});
    m_document.takeSnapshot();
    if (shiftDown) {
        for (int h = g; h <= SheetLines; ++h) {
            const int r = base + h;
            if (!m_compositeGrid->text(0, h).isEmpty())
                if (Currency* field = factorField(row(r), c)) *field = v;
            m_document.calculateRow(r);
            showGridRow(r);
            showPriceCells(r);
        }
    } else {
        const int r = base + g;
        if (Currency* field = factorField(row(r), c)) *field = v;
        m_document.calculateRow(r);
        showGridRow(r);
        showPriceCells(r);
        if (enter) {
            const int next = g >= m_compositeGrid->rowCount() - 1 ? 1 : g + 1;
            m_compositeCell = QPoint(c, next);
            m_compositeGrid->selectCells(QRect(c, next, 1, 1));
            markRow(next);
        }
    }
    m_document.refreshLines();
}

void PriceSheet::commitMaterialCell(bool enter) {
    const int c = m_materialCell.x(), g = m_materialCell.y();
    m_document.takeSnapshot();
    QString text = m_materialGrid->text(c, g);
    Currency v;
    if (!text.isEmpty()) v = strToCurr(text.remove(QLatin1Char(','))); // raises on no number
    for (int r : {g, g + 15, g + 30, g + 45})
        if (r >= 1 && r <= RowCount)
            if (Currency* field = priceField(row(r), c)) *field = v;
    const int r = tabBase() + g;
    if (r >= 1 && r < OptionRow) m_document.calculateRow(r);
    showGridRow(r);
    showPriceCells(g);
    if (enter) {
        const int next = g >= m_materialGrid->rowCount() - 1 ? 1 : g + 1;
        m_materialCell = QPoint(c, next);
        m_materialGrid->selectCells(QRect(c, next, 1, 1));
    }
}

// ---- Size presets -------------------------------------------------------------------

void PriceSheet::setSizes(SizeDialog* dialog) {
    std::unique_ptr<SizeDialog> own;
    if (!dialog) {
        own = std::make_unique<SizeDialog>(window());
        dialog = own.get();
    }
    const int n = m_compositeGrid->rowCount();
    QStringList lines;
    for (int i = 1; i <= n; ++i)
        lines << row(i).size();
    dialog->setLines(lines);
    if (dialog->exec() == SizeDialog::ResultCancel) return;
    m_document.takeSnapshot();
    for (int i = 1; i <= n; ++i) {
        for (int r : {i, i + 15, i + 30, i + 45})
            row(r).sizeBytes.clear();
        m_compositeGrid->setText(0, i, QString());
        m_materialGrid->setText(0, i, QString());
    }
    const QStringList memo = dialog->lines();
    for (int i = 1; i <= n && i <= int(memo.size()); ++i) {
        for (int r : {i, i + 15, i + 30, i + 45})
            row(r).setSize(memo[i - 1]);
        m_compositeGrid->setText(0, i, row(i).size());
        m_materialGrid->setText(0, i, row(i).size());
    }
}
