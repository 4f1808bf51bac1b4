#pragma once
// The width of text in the cells of a fixed-pitch display: full-width
// characters (kanji, kana, full-width forms) take two, half-width ones
// (ASCII, half-width katakana) one.

#include <QString>

int displayWidth(const QString& text);
// The text padded with blanks to the width, on the left (right-aligned) or
// the right.
QString padToWidth(const QString& text, int width, bool alignRight);
