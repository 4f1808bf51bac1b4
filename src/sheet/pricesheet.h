#pragma once
// The price sheet: the tabs of the installation details over the two grids.
// materialGrid (left) shows the sizes and the three prices of each size, and
// its selected column chooses the side; compositeGrid (right) shows the
// composite prices and the seven element figures of the current tab. The
// sheet writes cell texts from the rows of the document and takes a figure
// typed into a cell to the rows; it holds no data of its own beyond the
// remembered cell of each grid.

#include "controls/controlerrors.h"

#include <QPoint>
#include <QStringList>
#include <QWidget>

#include <functional>

class Dialogs;
class PipeTypeDocument;
class PipeRow;
class PriceGrid;
class QKeyEvent;
class QLabel;
class QScrollArea;
class QTabBar;
class SizeDialog;

class PriceSheet : public QWidget {
    Q_OBJECT
public:
    PriceSheet(PipeTypeDocument& document, Dialogs& dialogs, QWidget* parent = nullptr);

    // What the controls around the sheet say at the moment: whether the
    // factor columns show the results, the refrigerant mode, and the rate
    // on the list price.
    struct Options {
        bool showResults = false;
        bool refrigerant = false;
        bool rateOn = false;
    };
    void setOptionsSource(std::function<Options()> source) { m_options = std::move(source); }
    // Failures of the grids' own event handling go here.
    void setFailureHandler(const FailureHandler& handler);
    // The grids fit in the width that this scroll area shows of the sheet.
    void fitInto(QScrollArea* area);

    PriceGrid* compositeGrid() const { return m_compositeGrid; }
    PriceGrid* materialGrid() const { return m_materialGrid; }
    QTabBar* tabs() const { return m_tabs; }
    QLabel* materialCaption() const { return m_materialCaption; }

    // The cell each grid's keys work on: the one last chosen or edited.
    QPoint compositeCell() const { return m_compositeCell; }
    QPoint materialCell() const { return m_materialCell; }
    // Back to the start: both remembered cells column 4, line 1, and line 1
    // marked.
    void resetCells();

    int currentTab() const;
    // The rows shown on the current tab start after this row.
    int tabBase() const { return currentTab() * 15; }
    QStringList tabCaptions() const;
    // New tabs, the first one current, without showing any rows.
    void setTabCaptions(const QStringList& captions);
    void selectFirstTab();

    // Empties the figures of every line.
    void clear();
    // Row r of the rows, of the current tab, in its line of compositeGrid
    // (and its size in materialGrid); rows of other tabs are not shown.
    void showGridRow(int r);
    // The three prices of row r in line r of materialGrid; other rows lie
    // beyond the grid and show nothing.
    void showPriceCells(int r);
    // The 14 rows of the current tab, then the prices of lines 1 to 14.
    void showTab(bool withPrices = true);
    // Marks line g in the size column of both grids.
    void markRow(int g);
    // Headings of the element columns by mode, in the long form of a pipe
    // type just shown or the short form of the controls applied.
    void setHeadings(bool refrigerant, bool longForm);
    // "資材単価", with the note of the rate when it is on.
    void setRateCaption(bool rateOn);
    // The factor columns take typing only while they show factors.
    void updateCompositeEditing();
    // The size presets: the sizes of the first tab in the dialog, and what
    // the user accepts to the sizes of all four tabs.
    void setSizes(SizeDialog* dialog);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void layoutGrids();
    void selectCompositeCell(int col, int row);
    void selectMaterialCell(int col, int row);
    void compositeCellChosen();
    void materialCellChosen();
    void compositeKeyDown(const QKeyEvent& key);
    void materialKeyDown(const QKeyEvent& key);
    // The filter both grids share; true when the key commits.
    bool gridKeyCommits(PriceGrid* grid, const QKeyEvent& key);
    void commitCompositeCell(bool enter, bool shiftDown);
    void commitMaterialCell(bool enter);
    Options options() const { return m_options ? m_options() : Options{}; }
    PipeRow& row(int r);

    PipeTypeDocument& m_document;
    Dialogs& m_dialogs;
    std::function<Options()> m_options;
    QTabBar* m_tabs = nullptr;
    QWidget* m_gridPanel = nullptr;
    QLabel* m_materialCaption = nullptr;
    QLabel* m_compositeCaption = nullptr;
    PriceGrid* m_compositeGrid = nullptr;
    PriceGrid* m_materialGrid = nullptr;
    QScrollArea* m_scrollArea = nullptr;
    QPoint m_compositeCell{4, 1};
    QPoint m_materialCell{4, 1};
    bool m_settingTabs = false;
};
