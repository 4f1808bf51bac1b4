#include "util/textlines.h"

QStringList splitTextLines(const QString& text) {
    QStringList lines;
    int start = 0;
    const int n = text.size();
    int i = 0;
    while (i < n) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('\r') || c == QLatin1Char('\n')) {
            lines << text.mid(start, i - start);
            if (c == QLatin1Char('\r') && i + 1 < n && text.at(i + 1) == QLatin1Char('\n')) ++i;
            start = i + 1;
        }
        ++i;
    }
    if (start < n) lines << text.mid(start);
    return lines;
}

QString joinTextLines(const QStringList& lines) {
    QString out;
    for (const QString& line : lines)
        out += line + QStringLiteral("\r\n");
    return out;
}

QString trimBlanks(const QString& text) {
    int first = 0, last = int(text.size()) - 1;
    while (first <= last && text.at(first).unicode() <= 0x20)
        ++first;
    while (last >= first && text.at(last).unicode() <= 0x20)
        --last;
    return text.mid(first, last - first + 1);
}
