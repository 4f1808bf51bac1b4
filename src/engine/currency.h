#pragma once
// Money and factors: a signed 64-bit integer holding the value times 10000.

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <stdexcept>

struct Currency {
    std::int64_t raw = 0;

    static constexpr std::int64_t Scale = 10000;

    static constexpr Currency fromRaw(std::int64_t r) { return Currency{r}; }
    static constexpr Currency fromInt(std::int64_t v) { return Currency{v * Scale}; }

    constexpr bool isZero() const { return raw == 0; }
    friend constexpr bool operator==(Currency a, Currency b) { return a.raw == b.raw; }
    friend constexpr bool operator!=(Currency a, Currency b) { return a.raw != b.raw; }
    friend constexpr bool operator<(Currency a, Currency b) { return a.raw < b.raw; }
};

// Text that is no number, or a number out of range.
class ConvertError : public std::runtime_error {
public:
    explicit ConvertError(const QString& message);
    QString message() const { return QString::fromUtf8(what()); }
};

// Shortest decimal text: no separators, no trailing zeros ("1234.5", "-0.25", "0").
QString currToStr(Currency value);
// The same text appended to out.
void appendCurrText(QByteArray& out, Currency value);

// Text to Currency: optional blanks, sign, digits with an optional decimal
// point and exponent. Rounds to four decimals, half to even on the exact
// decimal digits. Raises ConvertError on anything else.
Currency strToCurr(const QString& text);
Currency strToCurrDef(const QString& text, Currency def);
// Same, without throwing: false on text that is no number.
bool tryStrToCurr(const QString& text, Currency& out);

// Text to a signed 32-bit integer: optional sign and digits only, no
// decimal point ("1.5" gives the default).
int strToIntDef(const QString& text, int def);

// The sheet's amount text: whole number, "," every three digits, half away
// from zero, minus kept (-1234 gives "-1,234").
QString formatAmount(Currency value);
// General form: up to 15 significant digits, no trailing zeros.
QString formatGeneral(Currency value);
// fixed form with three decimals, half away from zero on the exact value.
QString formatFixed3(Currency value);
