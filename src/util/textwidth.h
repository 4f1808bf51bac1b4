#pragma once
// The width of text in the cells of a fixed-pitch display: full-width
// characters (kanji, kana, full-width forms) take two, half-width ones
// (ASCII, half-width katakana) one.

#include <QString>

int DisplayWidth(const QString& text);
// The text padded with blanks to the width, on the left (right-aligned) or
// the right.
QString PadToWidth(const QString& text, int width, bool alignRight);
