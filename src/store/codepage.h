#pragma once
// Text of the rows and of the program's files is code page 932 (Shift_JIS
// as Windows has it). These are the only conversions between it and the
// program's Unicode text.

#include <QByteArray>
#include <QString>

// True for the first byte of a double-byte character.
bool isLeadByte(unsigned char b);

// Unicode to code page 932. Look-alikes that keyboards and pastes produce
// (wave dash, minus sign, ...) become the code page's own characters;
// anything else the code page lacks becomes "?".
QByteArray toAnsi(const QString& text);

// The same, cut to at most maxBytes bytes. The cut is a plain byte cut and
// may split a double-byte character.
QByteArray toAnsiCut(const QString& text, int maxBytes);

// Cuts bytes to at most maxBytes bytes (a plain byte cut).
QByteArray cutBytes(const QByteArray& bytes, int maxBytes);

// True for a byte that can follow a lead byte.
bool isTrailByte(unsigned char b);

// Code page 932 to Unicode. Never fails: a lead byte without its trail
// (left by a cut, at the end or in front of any byte that can't follow a
// lead byte, such as a delimiter or a line end) is dropped and the byte
// after it read on its own; a pair the code page lacks becomes u+FFFD.
QString fromAnsi(const QByteArray& bytes);
