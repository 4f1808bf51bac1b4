#pragma once
// Text as lines, the way a string list of the framework splits and joins it.

#include <QString>
#include <QStringList>

// A line ends at CR, LF or CR LF; a break at the very end opens no further
// line, so "" has none.
QStringList splitTextLines(const QString& text);
// Each line ended by CR LF.
QString joinTextLines(const QStringList& lines);

// The text without the blanks and control characters (up to u+0020) at both
// ends; other spaces, such as the full-width one, stay.
QString trimBlanks(const QString& text);
