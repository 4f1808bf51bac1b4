#pragma once
// The instruction stream of the workbook output: every pipe type of a group
// as it is saved in ex_kanzai, laid out one block under the other on one
// sheet. The stream is plain text lines of ";"-ended fields whose first field
// is the keyword:
//   DATA;row;column;text;            a text in a cell (row, column from 1)
//   xlEdgeBottom;A5;Q5;;             a line along the lower edge of a range
//   AutoFit;1;1;;                    fit the width of column 1
// This unit reads the database and knows the layout; it knows nothing of the
// workbook file, which writeExcelWorkbook (excelworkbook.h) makes from the
// stream.

#include <QString>
#include <QStringList>

class QDateTime;

// The busy caption of the main form while the output runs.
extern const QString ExcelOutCaption;

// The stream lines of group grp from the database at databasePath.
// tabCaptions are the captions of the tabs on screen, for column C; a detail
// that has no tab on screen (refrigerant mode on screen) is named by the
// exported pipe type's own caption of that detail. Raises SqliteError
// when a query fails.
QStringList excelStream(const QString& databasePath, int grp, const QStringList& tabCaptions);

// Writes the lines, each ended by CR LF, in code page 932, replacing the
// file; raises FileError when it can't be written (the folder is not made).
void writeExcelStream(const QString& path, const QStringList& lines);

// dataRoot + "/temp/excelout.txt".
QString excelStreamPath(const QString& dataRoot);
// dataRoot + "/" + now as "yyyyMMdd HHmmss" + ".xlsx".
QString excelWorkbookPath(const QString& dataRoot, const QDateTime& now);
