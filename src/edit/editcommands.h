#pragma once
// The edit commands of the window: copy and paste between pipe types and
// details through the workspace's copy buffer, the spreading of the first
// detail, moving a pipe type in its group, clearing, and the one-level undo.
//
// The option block lives in row 60, which is also the 15th row of the fourth
// detail. Detail commands never write it: the options stay what the user set.
// Whole-table commands carry it, for that is what they are asked to do.

#include <QObject>

#include <array>

class Dialogs;
class MainWindow;
class QAction;

class EditCommands : public QObject {
    Q_OBJECT
public:
    // Joins the commands to the window's items and actions and enables them;
    // the paste items wait for a copy.
    EditCommands(MainWindow& window, Dialogs& dialogs);

    void copyWholeTable();
    void copyPrices();
    void copyAllFactors();
    void copyLabourFactors();
    void pasteWholeTable();
    void pastePrices();
    void pasteAllFactors();
    void pasteLabourFactors();
    void copyDetail();
    void copyDetailPrices();
    void copyDetailFactors();
    void copyDetailLabour();
    void copyDetailPricesAcross();
    void pasteDetail();
    void pasteDetailPrices();
    void pasteDetailFactors();
    void pasteDetailLabour();
    void copyFirstDetailAcross();
    void undo();
    void moveUp();
    void moveDown();
    void clearPipeType();
    void clearDetail();

    // The separator of the detail price items, hidden with them.
    QAction* detailPricesSeparator() const { return m_detailPricesSeparator; }

private:
    // The eight paste items: the four of the whole table, then the four of
    // a detail.
    std::array<QAction*, 8> pasteItems() const;
    // The paste item of the last copy enabled, the other seven disabled.
    void enableOnlyPaste(QAction* paste);
    // Moves the pipe type on the sheet by d (-1 up, +1 down) in its group.
    void movePipeType(int d);
    // The end of every paste: the rows to the screen, the node's name, undo.
    void finishPaste(bool renameNode);

    MainWindow& m_window;
    Dialogs& m_dialogs;
    QAction* m_detailPricesSeparator = nullptr;
};
