#include "util/fieldtext.h"

namespace {
constexpr QChar Esc(0x1B);
constexpr QChar Sep(u';');
constexpr QChar EscSep(u':');
} // namespace

QString escapeField(const QString& value) {
    if (!value.contains(Esc) && !value.contains(Sep)) return value;
    QString out;
    out.reserve(value.size() + 4);
    for (QChar c : value) {
        if (c == Esc) {
            out += Esc;
            out += Esc;
        } else if (c == Sep) {
            out += Esc;
            out += EscSep;
        } else {
            out += c;
        }
    }
    return out;
}

QString nthField(const QString& text, int n) {
    if (n < 1) return QString();
    int field = 1;
    int start = 0;
    const int len = int(text.size());
    while (field < n) {
        const int next = int(text.indexOf(Sep, start));
        if (next < 0) return QString();
        start = next + 1;
        ++field;
    }
    if (start > len) return QString();
    int end = int(text.indexOf(Sep, start));
    if (end < 0) end = len; // the text counts as ending with ";"
    const QString raw = text.mid(start, end - start);
    if (!raw.contains(Esc)) return raw;
    QString out;
    out.reserve(raw.size());
    for (int i = 0; i < int(raw.size()); ++i) {
        if (raw[i] == Esc && i + 1 < int(raw.size())) {
            ++i;
            out += raw[i] == EscSep ? Sep : raw[i];
        } else {
            out += raw[i];
        }
    }
    return out;
}
