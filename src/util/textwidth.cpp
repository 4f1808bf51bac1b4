#include "util/textwidth.h"

#include <QList>

#include <algorithm>

namespace {

bool wide(char32_t c) {
    return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0x303E) ||
           (c >= 0x3041 && c <= 0x33FF) || (c >= 0x3400 && c <= 0x4DBF) ||
           (c >= 0x4E00 && c <= 0x9FFF) || (c >= 0xA000 && c <= 0xA4CF) ||
           (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) ||
           (c >= 0xFE30 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFF60) ||
           (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x20000 && c <= 0x3FFFD);
}

} // namespace

int displayWidth(const QString& text) {
    int w = 0;
    for (char32_t c : text.toUcs4())
        w += wide(c) ? 2 : 1;
    return w;
}

QString padToWidth(const QString& text, int width, bool alignRight) {
    const QString fill(std::max(0, width - displayWidth(text)), QLatin1Char(' '));
    return alignRight ? fill + text : text + fill;
}
