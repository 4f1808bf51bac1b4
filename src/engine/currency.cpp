#include "engine/currency.h"

#include <QStringList>

#include <limits>
#include <string>

ConvertError::ConvertError(const QString& message)
    : std::runtime_error(message.toUtf8().toStdString()) {}

namespace {

QString invalidNumber(const QString& text) {
    return QStringLiteral("'%1' は正しい数値ではありません。").arg(text);
}

// Digits of |raw| as text, with at least five characters so the last four
// are the decimals.
std::string absDigits(std::int64_t raw) {
    // Work in unsigned so the most negative value has a magnitude too.
    std::uint64_t mag = raw < 0 ? std::uint64_t(0) - std::uint64_t(raw) : std::uint64_t(raw);
    std::string s = std::to_string(mag);
    if (s.size() < 5) s.insert(0, 5 - s.size(), '0');
    return s;
}

QString groupThousands(const std::string& digits) {
    QString out;
    const int n = int(digits.size());
    for (int i = 0; i < n; ++i) {
        if (i > 0 && (n - i) % 3 == 0) out += QLatin1Char(',');
        out += QLatin1Char(digits[std::size_t(i)]);
    }
    return out;
}

// Rounds |raw| to a multiple of `unit` raws, half away from zero, and gives
// the magnitude.
std::uint64_t roundMagnitude(std::int64_t raw, std::uint64_t unit) {
    std::uint64_t mag = raw < 0 ? std::uint64_t(0) - std::uint64_t(raw) : std::uint64_t(raw);
    std::uint64_t q = mag / unit, r = mag % unit;
    if (r * 2 >= unit) ++q;
    return q;
}

} // namespace

namespace {

// Writes the text of value from the end of buf: the four decimals without
// trailing zeros, the point, the whole part, the sign. Returns its start.
const char* currencyText(Currency value, char (&buf)[32]) {
    const std::int64_t raw = value.raw;
    std::uint64_t mag = raw < 0 ? std::uint64_t(0) - std::uint64_t(raw) : std::uint64_t(raw);
    char* p = buf + sizeof buf;
    unsigned frac = unsigned(mag % 10000);
    mag /= 10000;
    int decimals = 4;
    while (decimals > 0 && frac % 10 == 0) {
        frac /= 10;
        --decimals;
    }
    if (decimals > 0) {
        for (int i = 0; i < decimals; ++i) {
            *--p = char('0' + frac % 10);
            frac /= 10;
        }
        *--p = '.';
    }
    do {
        *--p = char('0' + mag % 10);
        mag /= 10;
    } while (mag > 0);
    if (raw < 0) *--p = '-';
    return p;
}

} // namespace

QString currToStr(Currency value) {
    char buf[32];
    const char* p = currencyText(value, buf);
    return QString::fromLatin1(p, int(buf + sizeof buf - p));
}

void appendCurrText(QByteArray& out, Currency value) {
    // A save writes some 1,600 of these.
    char buf[32];
    const char* p = currencyText(value, buf);
    out.append(p, int(buf + sizeof buf - p));
}

bool tryStrToCurr(const QString& text, Currency& out) {
    const QString t = text.trimmed();
    int i = 0;
    const int n = int(t.size());
    bool negative = false;
    if (i < n && (t[i] == QLatin1Char('+') || t[i] == QLatin1Char('-'))) {
        negative = t[i] == QLatin1Char('-');
        ++i;
    }
    std::string digits; // significant digits, integer and fraction together
    int pointPos = -1;  // digits before the decimal point
    int count = 0;
    for (; i < n; ++i) {
        const QChar c = t[i];
        if (c >= QLatin1Char('0') && c <= QLatin1Char('9')) {
            digits += char(c.unicode());
            ++count;
        } else if (c == QLatin1Char('.') && pointPos < 0) {
            pointPos = int(digits.size());
        } else {
            break;
        }
    }
    if (count == 0) return false;
    if (pointPos < 0) pointPos = int(digits.size());
    long exponent = 0;
    if (i < n && (t[i] == QLatin1Char('e') || t[i] == QLatin1Char('E'))) {
        ++i;
        bool expNeg = false;
        if (i < n && (t[i] == QLatin1Char('+') || t[i] == QLatin1Char('-'))) {
            expNeg = t[i] == QLatin1Char('-');
            ++i;
        }
        int expDigits = 0;
        for (; i < n && t[i] >= QLatin1Char('0') && t[i] <= QLatin1Char('9'); ++i) {
            if (exponent < 100000) exponent = exponent * 10 + (t[i].unicode() - '0');
            ++expDigits;
        }
        if (expDigits == 0) return false;
        if (expNeg) exponent = -exponent;
    }
    if (i != n) return false;

    // Place the decimal point four digits further right: the raw value.
    long point = long(pointPos) + exponent + 4;
    // Strip leading zeros so the magnitude test below is meaningful.
    std::size_t lead = 0;
    while (lead < digits.size() && digits[lead] == '0') {
        ++lead;
        --point;
    }
    digits.erase(0, lead);
    if (digits.empty()) {
        out = Currency{};
        return true;
    }
    if (point > 19) return false;
    // Integer part of the raw value and the rest for rounding.
    std::string intPart, rest;
    if (point <= 0) {
        rest = std::string(std::size_t(-point), '0') + digits;
    } else if (std::size_t(point) >= digits.size()) {
        intPart = digits + std::string(std::size_t(point) - digits.size(), '0');
    } else {
        intPart = digits.substr(0, std::size_t(point));
        rest = digits.substr(std::size_t(point));
    }
    unsigned __int128 mag = 0;
    for (char c : intPart)
        mag = mag * 10 + unsigned(c - '0');
    // Half to even on the exact digits.
    if (!rest.empty()) {
        const char first = rest[0];
        bool beyond = rest.find_first_not_of('0', 1) != std::string::npos;
        if (first > '5' || (first == '5' && (beyond || (mag & 1)))) ++mag;
    }
    const unsigned __int128 limit =
        negative ? (unsigned __int128)std::numeric_limits<std::int64_t>::max() + 1
                 : (unsigned __int128)std::numeric_limits<std::int64_t>::max();
    if (mag > limit) return false;
    out.raw = negative ? std::int64_t(0 - std::uint64_t(mag)) : std::int64_t(mag);
    return true;
}

Currency strToCurr(const QString& text) {
    Currency c;
    if (!tryStrToCurr(text, c)) throw ConvertError(invalidNumber(text));
    return c;
}

Currency strToCurrDef(const QString& text, Currency def) {
    Currency c;
    return tryStrToCurr(text, c) ? c : def;
}

int strToIntDef(const QString& text, int def) {
    // Leading blanks are passed over; anything after the digits is no number.
    QString t = text;
    while (!t.isEmpty() && t[0].isSpace())
        t.remove(0, 1);
    if (t.isEmpty()) return def;
    int i = 0;
    bool negative = false;
    if (t[0] == QLatin1Char('+') || t[0] == QLatin1Char('-')) {
        negative = t[0] == QLatin1Char('-');
        i = 1;
    }
    if (i == int(t.size())) return def;
    long long v = 0;
    for (; i < int(t.size()); ++i) {
        const QChar c = t[i];
        if (c < QLatin1Char('0') || c > QLatin1Char('9')) return def;
        v = v * 10 + (c.unicode() - '0');
        if (v > 2147483648LL) return def;
    }
    if (negative) v = -v;
    if (v > std::numeric_limits<int>::max() || v < std::numeric_limits<int>::min()) return def;
    return int(v);
}

QString formatAmount(Currency value) {
    const std::uint64_t whole = roundMagnitude(value.raw, 10000);
    QString s = groupThousands(std::to_string(whole));
    if (value.raw < 0 && whole != 0) s.prepend(QLatin1Char('-'));
    return s;
}

QString formatFixed3(Currency value) {
    const std::uint64_t thousandths = roundMagnitude(value.raw, 10);
    std::string d = std::to_string(thousandths);
    if (d.size() < 4) d.insert(0, 4 - d.size(), '0');
    QString s = QString::fromStdString(d.substr(0, d.size() - 3)) + QLatin1Char('.') +
                QString::fromStdString(d.substr(d.size() - 3));
    if (value.raw < 0 && thousandths != 0) s.prepend(QLatin1Char('-'));
    return s;
}

QString formatGeneral(Currency value) {
    // A Currency has at most 19 digits; keep 15 significant ones. Its value
    // stays below 10^15, so the exponent form is never needed.
    std::string d = absDigits(value.raw);
    std::size_t first = d.find_first_not_of('0');
    if (first == std::string::npos) return QStringLiteral("0");
    const std::size_t sig = d.size() - first;
    if (sig <= 15) return currToStr(value);
    // Round the magnitude half away from zero at the 15th significant digit.
    std::uint64_t unit = 1;
    for (std::size_t k = 0; k < sig - 15; ++k)
        unit *= 10;
    // The rounded magnitude can pass the top of the range, so the text is
    // built from it directly: q holds the 15 digits, and the decimals kept
    // are those of the four that lie above the rounding unit.
    const std::uint64_t q = roundMagnitude(value.raw, unit);
    const int cut = int(sig - 15); // digits dropped from the right
    std::string digits = std::to_string(q) + std::string(std::size_t(std::max(0, cut - 4)), '0');
    const int decimals = std::max(0, 4 - cut);
    std::string whole = digits.substr(0, digits.size() - std::size_t(decimals));
    std::string frac = digits.substr(digits.size() - std::size_t(decimals));
    while (!frac.empty() && frac.back() == '0')
        frac.pop_back();
    if (whole.empty()) whole = "0";
    QString s = QString::fromStdString(whole);
    if (!frac.empty()) s += QLatin1Char('.') + QString::fromStdString(frac);
    if (value.raw < 0) s.prepend(QLatin1Char('-'));
    return s;
}
