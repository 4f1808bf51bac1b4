#pragma once
// Numbers as the number box writes and reads them: the general form, the
// thousands separators, and strict conversions of text.

#include <QString>

#include <cstdint>

using Extended = long double;

// The float at 15 significant digits in the general form ("1234.5",
// "1.5E-7", "1.5E+20"), as the box shows numbers.
QString floatToGeneral(Extended value);
// The general form with the exponent written out: 1.5E-7 gives
// "0.00000015", 1.5E+20 gives "15" and 19 zeros.
QString plainNumberText(Extended value);
// Integer with "," every three digits ("#,##0").
QString formatThousands(std::int64_t value);
// Strict conversions; bad text raises ConvertError.
std::int64_t textToInt64(const QString& text);
std::int32_t textToInt32(const QString& text);
Extended textToFloat(const QString& text);
// Text (leading blanks, a sign, digits of the base) to a 64-bit integer;
// false for anything else or a value out of range.
bool parseInt64(const QString& text, std::int64_t& out, int base = 10);
// Raises the ConvertError of text that is no integer.
[[noreturn]] void notInteger(const QString& text);
