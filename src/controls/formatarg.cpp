#include "controls/formatarg.h"

#include <cmath>
#include <cstdio>

namespace {

QString group(const QString& digits) {
    QString out;
    const int n = digits.size();
    for (int i = 0; i < n; ++i) {
        if (i > 0 && (n - i) % 3 == 0) out += QLatin1Char(',');
        out += digits.at(i);
    }
    return out;
}

QString fixedText(long double v, int prec, bool thousands) {
    char buf[512];
    std::snprintf(buf, sizeof buf, "%.*Lf", prec, v);
    QString s = QString::fromLatin1(buf);
    if (!thousands) return s;
    const bool negative = s.startsWith(QLatin1Char('-'));
    if (negative) s = s.mid(1);
    const int dot = s.indexOf(QLatin1Char('.'));
    const QString intPart = dot < 0 ? s : s.left(dot);
    const QString rest = dot < 0 ? QString() : s.mid(dot);
    return (negative ? QStringLiteral("-") : QString()) + group(intPart) + rest;
}

QString scientificText(long double v, int prec) {
    // d.ddd...E+ddd with prec significant digits, exponent at least three.
    char buf[512];
    std::snprintf(buf, sizeof buf, "%.*LE", qMax(prec, 1) - 1, v);
    QString s = QString::fromLatin1(buf);
    const int e = s.indexOf(QLatin1Char('E'));
    QString exponent = s.mid(e + 2);
    while (exponent.size() < 3)
        exponent.prepend(QLatin1Char('0'));
    return s.left(e + 2) + exponent;
}

QString generalText(long double v, int prec) {
    if (v == 0) return QStringLiteral("0");
    char buf[512];
    std::snprintf(buf, sizeof buf, "%.*LG", qBound(1, prec, 18), v);
    QString s = QString::fromLatin1(buf);
    const int e = s.indexOf(QLatin1Char('E'));
    if (e < 0) return s;
    QString exponent = s.mid(e + 2);
    while (exponent.size() > 1 && exponent.startsWith(QLatin1Char('0')))
        exponent.remove(0, 1);
    return s.left(e + 2) + exponent;
}

[[noreturn]] void invalid(const QString& format) {
    throw ControlError(
        QStringLiteral("Format '%1' invalid or incompatible with argument").arg(format));
}

template <typename Render> QString formatOne(const QString& format, Render render) {
    QString out;
    bool used = false;
    for (int i = 0; i < format.size(); ++i) {
        const QChar c = format.at(i);
        if (c != QLatin1Char('%')) {
            out += c;
            continue;
        }
        ++i;
        if (i >= format.size()) invalid(format);
        if (format.at(i) == QLatin1Char('%')) {
            out += QLatin1Char('%');
            continue;
        }
        bool left = false;
        if (format.at(i) == QLatin1Char('-')) {
            left = true;
            ++i;
        }
        int width = 0;
        while (i < format.size() && format.at(i).isDigit())
            width = width * 10 + format.at(i++).digitValue();
        int prec = -1;
        if (i < format.size() && format.at(i) == QLatin1Char('.')) {
            ++i;
            prec = 0;
            while (i < format.size() && format.at(i).isDigit())
                prec = prec * 10 + format.at(i++).digitValue();
        }
        if (i >= format.size() || used) invalid(format);
        const QChar type = format.at(i).toLower();
        QString text = render(type.toLatin1(), prec);
        if (text.isNull()) invalid(format);
        used = true;
        if (text.size() < width)
            text = left ? text.leftJustified(width) : text.rightJustified(width);
        out += text;
    }
    return out;
}

} // namespace

QString formatFloatArg(const QString& format, long double value) {
    return formatOne(format, [&](char type, int prec) -> QString {
        switch (type) {
        case 'f':
            return fixedText(value, prec < 0 ? 2 : prec, false);
        case 'n':
            return fixedText(value, prec < 0 ? 2 : prec, true);
        case 'm': {
            const QString t = fixedText(std::fabs(value), prec < 0 ? 0 : prec, true);
            return (value < 0 ? QStringLiteral("-") : QString()) + QChar(0xA5) + t;
        }
        case 'e':
            return scientificText(value, prec < 0 ? 15 : prec);
        case 'g':
            return generalText(value, prec < 0 ? 15 : prec);
        default:
            return QString();
        }
    });
}

QString formatIntArg(const QString& format, std::int64_t value) {
    return formatOne(format, [&](char type, int prec) -> QString {
        QString digits;
        switch (type) {
        case 'd':
            digits = QString::number(value < 0 ? -(value + 1) + 1ull : std::uint64_t(value));
            break;
        case 'u':
            digits = QString::number(std::uint32_t(value));
            break;
        case 'x':
            digits = QString::number(std::uint32_t(value), 16).toUpper();
            break;
        default:
            return QString();
        }
        if (prec > digits.size()) digits = digits.rightJustified(prec, QLatin1Char('0'));
        return (type == 'd' && value < 0 ? QStringLiteral("-") : QString()) + digits;
    });
}
