#pragma once
// The workbook writer: replays an instruction stream (excelstream.h) into a
// new workbook of one sheet and saves it as an .xlsx file. It knows the four
// keywords of the stream and nothing of pipes or prices.
//
//   DATA;row;column;text;        the cell takes the text the way the
//                                spreadsheet takes typed text: a plain
//                                decimal number becomes a number cell,
//                                anything else a text cell
//   xlEdgeBottom;A5;Q5;;         thin continuous black line on the lower edge
//                                of the range, added to any border a cell has
//   xlEdgeTop;A5;Q5;;            the same on the upper edge
//   AutoFit;column;n;;           the column's width fitted to its longest text
//                                as it stands at that line
// Keywords compare case included; any other line is passed over. Before the
// stream, "ABC" goes into B2.

#include <QString>
#include <QStringList>

#include <map>
#include <stdexcept>

// A stream the workbook can't take (a row or column of 0, a cell out of the
// sheet, a range that is no cell) or a workbook that can't be written.
class WorkbookError : public std::runtime_error {
public:
    explicit WorkbookError(const QString& message);
    QString message() const { return QString::fromUtf8(what()); }
};

// Reads the stream file (code page 932) and writes the workbook, replacing a
// file of that name. On any failure it raises FileError (the stream can't
// be read) or WorkbookError, and no workbook file is left behind: the old
// one, if there was one, stays as it was.
void writeExcelWorkbook(const QString& streamPath, const QString& workbookPath);

// ---- The sheet a stream builds, before anything is written

struct WorkbookCell {
    QString text;        // as given; empty for a cell with only a border
    bool number = false; // the text is a plain decimal number
    bool bottom = false; // thin line on the lower edge
    bool top = false;    // thin line on the upper edge
};

struct WorkbookSheet {
    std::map<int, std::map<int, WorkbookCell>> columns; // column -> row -> cell, from 1
    std::map<int, double> widths;                       // fitted columns
};

// The sheet of a stream's lines, "ABC" in B2 first. Raises WorkbookError
// at the first line the sheet can't take.
WorkbookSheet replayExcelStream(const QStringList& lines);

// ---- The rules, for the tests

// True for the text of a plain decimal number: an optional sign, digits and
// at most one point, with at least one digit.
bool isPlainNumber(const QString& text);

// The display width of a text in half-width character cells: a full-width
// character (two bytes in code page 932, or wide in East Asian text) counts 2,
// any other 1.
int displayCells(const QString& text);

// The column width (in the sheet's units, the width of a digit of the
// default font) that fits a text of that many display cells with the cell's
// margins.
double fittedWidth(int displayCells);

// Column and row of a cell in A1 notation ("Q12" gives 17 and 12); false when
// the text is no cell.
bool parseCellName(const QString& text, int& column, int& row);
