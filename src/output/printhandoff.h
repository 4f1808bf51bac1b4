#pragma once
// The hand-off to the print program: Print.conf and print_header.dat under
// <data root>/printdata (print_Data.dat comes from exportRowsText), the style
// file chosen by printStyleRadio, the Japanese era of a date, and how the print
// program is started. No widgets: the form and the batch tool both use it.

#include "output/exportrows.h"
#include "store/piperow.h"

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QStringList>

#include <array>

// ---- Japanese calendar -----------------------------------------------------

struct JapaneseEra {
    const char* name;     // UTF-8, e.g. "令和"
    int year, month, day; // its first day
};
// 明治, 大正, 昭和, 平成, 令和, oldest first.
extern const std::array<JapaneseEra, 5> JapaneseEras;

// The era of a date and the year within it (元年 is 1). False for a date
// before the first era.
bool eraOfDate(const QDate& date, QString& era, int& year);
// "ggee": the era name and the two-digit year of the era ("令和08", "平成01").
// Before 明治 the four-digit western year.
QString eraYearText(const QDate& date);
// "ddd" on a Japanese system: the one-character weekday ("月" .. "日").
QString japaneseShortWeekday(const QDate& date);

// ---- Files -------------------------------------------------------------------

// The three style files by the item of printStyleRadio (0 歩掛, 1 単価, 2 歩掛+単価),
// relative to the data root, with "/" separators.
extern const std::array<const char*, 3> StyleFileNames;
// dataRoot + "/" + the style file of the item; items out of range take 0.
QString styleFilePath(const QString& dataRoot, int styleIndex);

QString printFolderPath(const QString& dataRoot); // dataRoot + "/printdata"
QString printConfPath(const QString& dataRoot);   // .../printdata/Print.conf
QString printHeaderPath(const QString& dataRoot); // .../printdata/print_header.dat

// The six lines of Print.conf in code page 932, each ended by CR LF.
QByteArray printConfText(const QString& stylePath, const QString& iconPath, bool refrigerant);
// The nine lines of print_header.dat for the date and the rows (goods of
// rows 4 and 5, factor 5 of row 60), code page 932, each ended by CR LF.
QByteArray printHeaderText(const QDate& date, const RowTable& rows);

// Everything the hand-off writes, in order.
struct PrintHandOff {
    QString dataRoot;
    int styleIndex = 0;
    QString iconPath;
    QDate date;
};

// Writes print_Data.dat (mode 2 of the export text), Print.conf and
// print_header.dat, each replaced as a whole. Raises FileError at the first
// file that can't be written (a missing printdata folder fails the first);
// the files after it are not touched.
void writePrintHandOff(const PrintHandOff& h, const RowTable& rows, const ExportSheet& sheet);
// Print.conf and print_header.dat alone, in that order (the steps after the
// data file), raising FileError the same way.
void writePrintConfAndHeader(const PrintHandOff& h, const RowTable& rows);

// The tab captions and status panel texts showPipeType gives the rows: four
// details named by kind of their first rows (default names when empty), or
// the one refrigerant tab; panels 0 to 2 are goods of rows 1 to 3.
ExportSheet sheetOfRows(const RowTable& rows);
// True when row 60 says refrigerant mode.
bool refrigerantRows(const RowTable& rows);

// ---- The print program -----------------------------------------------------

// The print program beside the program file, and its icon there.
QString printProgramPath();
QString applicationIconPath();
// Its one argument: the data root directly followed by ";".
QStringList printProgramArguments(const QString& dataRoot);
