#include "controls/numbertext.h"

#include "engine/currency.h"

#include <QRegularExpression>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace {

const QChar kDecimal = QLatin1Char('.');
const QChar kThousands = QLatin1Char(',');

bool isSign(QChar c) {
    return c == QLatin1Char('+') || c == QLatin1Char('-');
}

} // namespace

void notInteger(const QString& text) {
    throw ConvertError(QStringLiteral("'%1' is not a valid integer value").arg(text));
}

bool parseInt64(const QString& text, std::int64_t& out, int base) {
    QString s = text;
    int i = 0;
    while (i < s.size() && s.at(i).isSpace())
        ++i;
    s = s.mid(i);
    if (s.isEmpty()) return false;
    bool negative = false;
    if (isSign(s.at(0))) {
        negative = s.at(0) == QLatin1Char('-');
        s = s.mid(1);
    }
    if (s.isEmpty()) return false;
    unsigned long long magnitude = 0;
    const unsigned long long limit = negative ? 9223372036854775808ull : 9223372036854775807ull;
    for (QChar c : s) {
        int digit;
        if (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
            digit = c.unicode() - '0';
        else if (base == 16 && c.toUpper() >= QLatin1Char('A') && c.toUpper() <= QLatin1Char('F'))
            digit = c.toUpper().unicode() - 'A' + 10;
        else
            return false;
        if (magnitude > (limit - unsigned(digit)) / unsigned(base)) return false;
        magnitude = magnitude * unsigned(base) + unsigned(digit);
    }
    out = negative ? std::int64_t(0 - magnitude) : std::int64_t(magnitude);
    return true;
}

std::int64_t textToInt64(const QString& text) {
    std::int64_t v = 0;
    if (!parseInt64(text, v)) notInteger(text);
    return v;
}

std::int32_t textToInt32(const QString& text) {
    const std::int64_t v = textToInt64(text);
    if (v < std::numeric_limits<std::int32_t>::min() ||
        v > std::numeric_limits<std::int32_t>::max())
        notInteger(text);
    return std::int32_t(v);
}

Extended textToFloat(const QString& text) {
    static const QRegularExpression pattern(
        QStringLiteral(R"(^\s*[+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?\s*$)"));
    if (!pattern.match(text).hasMatch())
        throw ConvertError(QStringLiteral("'%1' is not a valid floating point value").arg(text));
    return std::strtold(text.trimmed().toLatin1().constData(), nullptr);
}

QString floatToGeneral(Extended value) {
    if (value == 0) return QStringLiteral("0");
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.15Lg", value);
    QString s = QString::fromLatin1(buf);
    const int e = s.indexOf(QLatin1Char('e'));
    if (e < 0) return s;
    QString mantissa = s.left(e);
    QString exponent = s.mid(e + 1);
    const QChar sign = exponent.at(0);
    exponent = exponent.mid(1);
    while (exponent.size() > 1 && exponent.startsWith(QLatin1Char('0')))
        exponent.remove(0, 1);
    return mantissa + QLatin1Char('E') + sign + exponent;
}

QString plainNumberText(Extended value) {
    const QString general = floatToGeneral(value);
    const int e = general.indexOf(QLatin1Char('E'));
    if (e < 0) return general;
    QString mantissa = general.left(e);
    const int exponent = general.mid(e + 1).toInt();
    QString sign;
    if (mantissa.startsWith(QLatin1Char('-'))) {
        sign = QStringLiteral("-");
        mantissa = mantissa.mid(1);
    }
    const int dot = mantissa.indexOf(kDecimal);
    const int fractionDigits = dot < 0 ? 0 : mantissa.size() - dot - 1;
    QString digits = mantissa;
    digits.remove(kDecimal);
    if (exponent < 0)
        return sign + QStringLiteral("0.") + QString(-exponent - 1, QLatin1Char('0')) + digits;
    const int zeros = exponent - fractionDigits;
    if (zeros >= 0) return sign + digits + QString(zeros, QLatin1Char('0'));
    // Fewer places than fraction digits: the point moves inside.
    const int intDigits = digits.size() - fractionDigits + exponent;
    return sign + digits.left(intDigits) + kDecimal + digits.mid(intDigits);
}

QString formatThousands(std::int64_t value) {
    const bool negative = value < 0;
    const unsigned long long magnitude = negative ? 0ull - static_cast<unsigned long long>(value)
                                                  : static_cast<unsigned long long>(value);
    QString digits = QString::number(magnitude);
    QString out;
    const int n = digits.size();
    for (int i = 0; i < n; ++i) {
        if (i > 0 && (n - i) % 3 == 0) out += kThousands;
        out += digits.at(i);
    }
    return negative ? QLatin1Char('-') + out : out;
}
