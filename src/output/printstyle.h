#pragma once
// The style files of the print program: which title and which columns a
// printed sheet of composite unit prices has. A style file is a short text
// file in code page 932 with CR LF line ends, in the key style of the
// settings files:
//
//   [Style]=歩掛
//   [Title]=複合単価計算書
//   [Column]=SIZE;;呼び径;;
//   [Column]=DATA1;歩　掛;所要材料;;
//   ...
//
// Each "[Column]" line is one column, left to right: the field key, the
// group heading over it, its label, and its label in refrigerant mode
// (empty: the same label), each followed by ";". field keys are SIZE, CI,
// FTANKA, GROSS, DATA1 to DATA7, CALC1 to CALC7 and GTANKA (the fields of a
// line of print_Data.dat behind the tab caption). lines of other keys are
// ignored. The format is described in docs/print-style.md.

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <array>

struct StyleColumn {
    QString key;              // SIZE, CI, FTANKA, GROSS, DATA1..7, CALC1..7, GTANKA
    QString group;            // heading over a run of columns, may be empty
    QString label;            // column heading
    QString refrigerantLabel; // heading in refrigerant mode; empty: label
};

struct PrintStyle {
    QString name;  // "歩掛", "単価", "歩掛+単価"
    QString title; // "複合単価計算書"
    QVector<StyleColumn> columns;
};

// The field keys in the order of a data line, index 0 = SIZE .. 18 = GTANKA.
const QStringList& styleFieldKeys();
// Index of a key in styleFieldKeys, -1 when unknown.
int styleFieldIndex(const QString& key);
// True for the columns that hold amounts in yen (FTANKA, GROSS, CALC, GTANKA),
// false for SIZE, CI and the factors.
bool isAmountField(const QString& key);

// The built-in layouts of the three styles, by the item of printStyleRadio.
PrintStyle builtInStyle(int index);
// The built-in style whose file name (no folder) the path ends with; -1
// when the name is none of the three.
int builtInStyleIndexOfFile(const QString& path);

// The file text of a style (code page 932, CR LF).
QByteArray styleFileText(const PrintStyle& style);

// Reads a style file. False with a Japanese reason (naming the file and the
// line) when it can't be read or holds no usable column.
bool readStyleFile(const QString& path, PrintStyle& style, QString& reason);
// The same from the lines of a style file; file names it in the reason.
bool parseStyleLines(const QStringList& lines, const QString& file, PrintStyle& style,
                     QString& reason);
