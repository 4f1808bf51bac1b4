#pragma once
// What the print program reads: Print.conf, print_header.dat and
// print_Data.dat under <data root>/printdata, and the style file Print.conf
// names. Bad input raises PrintInput with a Japanese message that names the
// file and the line.

#include "output/printstyle.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <array>
#include <stdexcept>

class PrintInput : public std::runtime_error {
public:
    explicit PrintInput(const QString& message);
    QString message() const { return QString::fromUtf8(what()); }
};

// The 19 fields of one line behind the tab caption: SIZE, CI, FTANKA,
// GROSS, DATA1..7, CALC1..7, GTANKA, as written.
using PrintFields = std::array<QString, 19>;

struct PrintBlock {
    QString caption;            // the tab caption
    QVector<PrintFields> lines; // lines with a size or a value
};

struct PrintJob {
    // Print.conf
    QString dataTitle; // [Data_TITLE]
    QString styleFile; // [STYLE_FILE]
    QString fileMask;  // [File_Mask]: qvk or qvr
    QString appTitle;  // [Application_Title]
    // print_header.dat
    QString year, era, month, day, weekday; // [ta] .. [te]
    QString buildingPage;                   // [th]
    QString labourCost;                     // [ti]
    // print_Data.dat
    std::array<QString, 3> names; // the pipe type's three name texts
    QVector<PrintBlock> blocks;
    // The style, and a note for the footer when the built-in one stands in.
    PrintStyle style;
    QString styleNote;

    bool isRefrigerant() const { return fileMask == QLatin1String("qvr"); }
    // "令和8年11月3日（火）": the era year, month and day of the header
    // without their leading zeros.
    QString dateText() const;
    // [ti] with thousands separators, its decimals as written: "24,200".
    QString labourCostText() const;
};

// The data root of the program's argument: "<data root>;" or a plain folder.
QString dataRootOfArgument(const QString& argument);

// Reads all of it; raises PrintInput.
PrintJob readPrintJob(const QString& dataRoot);

// Its steps, in this order: the lines of Print.conf, print_header.dat and
// print_Data.dat, each raising PrintInput that names the file and the line,
// and then the style Print.conf names (a built-in one, with a note, when
// that file can't be used).
void parsePrintConf(const QStringList& lines, PrintJob& job);
void parsePrintHeader(const QStringList& lines, PrintJob& job);
void parsePrintData(const QStringList& lines, PrintJob& job);
void readJobStyle(PrintJob& job);
