#pragma once
// The pipe type on screen as delimited text: the text builder of exportRows,
// without widgets. The form's member exportRows (mainwindow_output.cpp)
// shows the options dialog, gathers what the screen shows, and sends the
// text to a file, the clipboard or the print hand-off.
//
// What mode 2 (the print hand-off) needs as input:
//   - rows: the rows of the document as they stand (no recalculation here);
//   - sheet.tabCaptions: the captions of tabs in order; their count
//     decides the blocks (4, or 1 in refrigerant mode) and whether element 6
//     is an empty field (one tab);
//   - sheet.statusPanels: the texts of status panels 0, 1 and 2;
//   - options: both false (the dialog stays hidden in mode 2).
// Call exportRowsText(ExportPrint, rows, sheet, {}) and write the result
// with writeExportFile(printDataPath(dataRoot), text).

#include "store/piperow.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>

// The three modes of exportRows.
constexpr int ExportCsv = 0;       // csvFileItem: a file that the user chooses
constexpr int ExportClipboard = 1; // clipboardItem: the clipboard
constexpr int ExportPrint = 2;     // printAction: printdata/print_Data.dat

// The choices of the options dialog ExcelOptionsDialog.
struct ExportOptions {
    bool headings = false;    // headingsCheck "見出しを出力"
    bool resultsOnly = false; // resultsCheck "計算結果を出力"
};

// What the screen shows that goes into the text.
struct ExportSheet {
    QStringList tabCaptions;             // captions of tabs, in order
    std::array<QString, 3> statusPanels; // status panels 0 to 2 (mode 2 only)
};

// "," in modes 0 and 1, ";" in mode 2.
QByteArray exportDelimiter(int mode);

// The twelve heading labels joined by the delimiter, then CR LF (code page 932).
QByteArray exportHeadingLine(int mode);

// One data row without its line end: every field followed by the delimiter.
// In mode 2 a ";" inside a text is written as "；" and a line break as a
// blank, so that every line has its 23 fields; modes 0 and 1 write the
// texts as they stand.
// tab is the index of the row's tab; the number of tabs is that of
// sheet.tabCaptions.
QByteArray exportRowLine(int mode, const PipeRow& row, int tab, const ExportSheet& sheet,
                         const ExportOptions& options);

// The whole text in code page 932, built tab by tab: in modes 0 and 1 the
// caption of the tab and CR LF, the heading line when chosen, then the 14
// rows of the tab, each followed by CR LF except the very last row.
QByteArray exportRowsText(int mode, const RowTable& rows, const ExportSheet& sheet,
                          const ExportOptions& options);

// Replaces the file with text and a final CR LF. The old file stays until
// the new one is complete; raises FileError when the file can't be written
// (the folder is not made).
void writeExportFile(const QString& path, const QByteArray& text);

// Replaces the file with the bytes, the same way (all or nothing).
void replaceFileBytes(const QString& path, const QByteArray& bytes);

// dataRoot + "/printdata/print_Data.dat".
QString printDataPath(const QString& dataRoot);
