#pragma once
// Semicolon-separated field texts: the launch string and the result lines
// of the database layer.
//
// A value put into a result line is escaped so that a ";" inside it does not
// shift the fields behind it: ESC (u+001B) is written as ESC ESC, and ";" as
// ESC ":". nthField undoes this, so any text round-trips. Texts without ESC
// (every launch string, every path) read exactly as before.

#include <QString>

// The escaped form of one value.
QString escapeField(const QString& value);
// The n-th field (from 1) of a ";"-separated text, unescaped; empty when the
// text has fewer fields or n < 1.
QString nthField(const QString& text, int n);
