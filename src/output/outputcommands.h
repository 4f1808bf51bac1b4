#pragma once
// The outputs of the window: the menu "外部データ入出力(&O)" (the pipe type on
// screen as a CSV file or clipboard text, the saved group as a workbook) and
// "印  刷" (the hand-off files and the start of the print program).

#include <QDate>
#include <QObject>

class Dialogs;
class MainWindow;
struct ExportSheet;

class OutputCommands : public QObject {
    Q_OBJECT
public:
    // Joins the commands to the window's items and actions and enables them.
    OutputCommands(MainWindow& window, Dialogs& dialogs);

    // The pipe type on screen as text: ExportCsv to a file, ExportClipboard
    // to the clipboard, ExportPrint to the data file of the print hand-off
    // (no dialog, no message).
    void exportRows(int mode);
    void exportCsvFile();
    void exportToClipboard();
    // "エクセル出力": the saved group as a workbook, opened on the desktop.
    void exportWorkbook();
    // "印  刷": writes the three hand-off files under the data root's
    // printdata and starts the print program without waiting.
    void printPipeType();
    // The date the printed page carries: today, unless a fixed date is set
    // (an invalid date goes back to today).
    void setPrintDate(const QDate& fixed) { m_printDate = fixed; }

private:
    // The tab captions and status panels 0 to 2 of the window.
    ExportSheet sheetTexts() const;
    // The outputs put the material grid on column 1 of row, so the next
    // redisplay shows the submitted side.
    void showSubmittedSide(int row);

    MainWindow& m_window;
    Dialogs& m_dialogs;
    QDate m_printDate;
};
