#include "controls/numbereditcore.h"

#include "engine/rounding.h"

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

[[noreturn]] void notInteger(const QString& text) {
    throw ConvertError(QStringLiteral("'%1' is not a valid integer value").arg(text));
}

bool tryInt64(const QString& text, std::int64_t& out, int base = 10) {
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

std::int64_t roundTextToInt64(const NumberEditCore& edit, Extended value) {
    QString s = edit.roundNumberText(plainNumberText(value), 0);
    const int d = s.indexOf(kDecimal);
    if (d >= 0) s = s.left(d);
    return textToInt64(s);
}

} // namespace

std::int64_t textToInt64(const QString& text) {
    std::int64_t v = 0;
    if (!tryInt64(text, v)) notInteger(text);
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

// ---------------------------------------------------------------- NumberEditCore

NumberEditCore::NumberEditCore() : FText(QStringLiteral("0")) {}

NumberEditCore::~NumberEditCore() = default;

void NumberEditCore::SetText(const QString& value) {
    if (value == FText) return;
    FText = value;
    FSelStart = int(value.size());
    FSelLength = 0;
    change();
}

void NumberEditCore::setSelStart(int value) {
    FSelStart = qBound(0, value, int(Text().size()));
    FSelLength = 0;
}

void NumberEditCore::setSelLength(int value) {
    FSelLength = qBound(0, value, int(Text().size()) - selStart());
}

void NumberEditCore::baseChange() {
    if (OnChange) OnChange(this);
}

void NumberEditCore::writeTextGuarded(const QString& text) {
    const bool keep = FChangeSave;
    FChangeSave = true;
    SetText(text);
    FChangeSave = keep;
}

void NumberEditCore::SetAlignment(Qt::Alignment value) {
    value &= Qt::AlignHorizontal_Mask;
    if (value == m_alignment) return;
    m_alignment = value;
    alignmentChanged();
}

void NumberEditCore::setComma(bool value) {
    FComma = value;
    writeTextGuarded(formatNumberText());
    invalidate();
}

void NumberEditCore::setFigure(int value) {
    FFigure = value;
    SetText(formatNumberText());
    invalidate();
}

void NumberEditCore::setFixed(bool value) {
    FFixed = value;
    SetText(formatNumberText());
    invalidate();
}

void NumberEditCore::setLimit(bool value) {
    FLimit = value;
    if (FLimit) {
        if (hasLimit(loMin) && FValue < FMin) FValue = FMin;
        if (hasLimit(loMax) && FValue > FMax) FValue = FMax;
        SetText(formatNumberText());
        invalidate();
    }
}

void NumberEditCore::setLimitOptions(TLimitOptions value) {
    FLimitOptions = value;
    if (FLimit) {
        if (hasLimit(loMin) && FValue < FMin) FValue = FMin;
        if (hasLimit(loMax) && FValue > FMax) FValue = FMax;
        SetText(formatNumberText());
        invalidate();
    }
}

void NumberEditCore::setMax(Extended value) {
    FMax = value;
    if (FMin > FMax) FMin = FMax;
    if ((FValue < FMin || FValue > FMax) && FLimit && hasLimit(loMax)) {
        FValue = FMax;
        SetText(formatNumberText());
        invalidate();
    }
}

void NumberEditCore::setMin(Extended value) {
    FMin = value;
    if (FMax < FMin) FMax = FMin;
    if ((FValue < FMin || FValue > FMax) && FLimit && hasLimit(loMin)) {
        FValue = FMin;
        SetText(formatNumberText());
        invalidate();
    }
}

void NumberEditCore::setValidMinus(bool value) {
    FValidMinus = value;
    if (FNumberType == ntHex) SetText(formatNumberText());
}

void NumberEditCore::setZeroVisible(bool value) {
    if (value == FZeroVisible) return;
    FZeroVisible = value;
    if (FValue == 0) SetText(formatNumberText());
}

QString NumberEditCore::hexText(std::int64_t value, bool allowMinus) const {
    const int width = std::max(FFigure, 1);
    if (allowMinus) {
        const unsigned long long magnitude = value < 0
                                                 ? 0ull - static_cast<unsigned long long>(value)
                                                 : static_cast<unsigned long long>(value);
        QString digits =
            QString::number(magnitude, 16).toUpper().rightJustified(width, QLatin1Char('0'));
        return value < 0 ? QLatin1Char('-') + digits : digits;
    }
    std::int64_t clamped = std::clamp<std::int64_t>(value, std::numeric_limits<std::int32_t>::min(),
                                                    std::numeric_limits<std::int32_t>::max());
    return QString::number(std::uint32_t(std::int32_t(clamped)), 16)
        .toUpper()
        .rightJustified(width, QLatin1Char('0'));
}

void NumberEditCore::setNumberType(TNumberType value) {
    if (value == FNumberType) return;
    if (value == ntDecimal) {
        FNumberType = value;
        SetText(floatToGeneral(FValue));
    } else {
        const std::int32_t v = intValue();
        FNumberType = value;
        SetText(hexText(v, false));
    }
    invalidate();
}

void NumberEditCore::setValue(Extended value) {
    if (FLimit && hasLimit(loMin) && value < FMin)
        FValue = FMin;
    else if (FLimit && hasLimit(loMax) && value > FMax)
        FValue = FMax;
    else
        FValue = value;
    SetText(formatNumberText());
}

void NumberEditCore::setCurrency(Currency value) {
    setValue(textToFloat(currToStr(value)));
}

Currency NumberEditCore::asCurrency() const {
    return strToCurr(plainNumberText(FValue));
}

Currency NumberEditCore::storedCurrency() const {
    return Currency::fromRaw(store(FValue * 10000.0L));
}

std::int64_t NumberEditCore::asInt64() const {
    return roundTextToInt64(*this, FValue);
}

std::int32_t NumberEditCore::intValue() const {
    return std::int32_t(std::clamp<std::int64_t>(asInt64(),
                                                 std::numeric_limits<std::int32_t>::min(),
                                                 std::numeric_limits<std::int32_t>::max()));
}

QString NumberEditCore::asText() const {
    if (FNumberType == ntDecimal) return floatToGeneral(FValue);
    const std::int64_t v = asInt64();
    const unsigned long long magnitude =
        v < 0 ? 0ull - static_cast<unsigned long long>(v) : static_cast<unsigned long long>(v);
    QString digits = QString::number(magnitude, 16).toUpper();
    if (FValidMinus && Text().startsWith(QLatin1Char('-'))) digits.prepend(QLatin1Char('-'));
    return digits;
}

Extended NumberEditCore::parseNumberText(QString& S) const {
    if (S.isEmpty() || S == QLatin1String("-") || S == QLatin1String("+")) return 0;
    if (FNumberType == ntDecimal) {
        QString stripped;
        for (QChar c : S)
            if (c != kThousands && c.unicode() >= 32) stripped += c;
        S = stripped;
        if (S.isEmpty()) return 0;
        if (!S.contains(kDecimal)) return Extended(textToInt64(S));
        return textToFloat(S);
    }
    if (FValidMinus) {
        QString rest = S;
        const bool negative = rest.startsWith(QLatin1Char('-'));
        if (negative) rest = rest.mid(1);
        std::int64_t v = 0;
        if (!tryInt64(rest, v, 16) || rest.startsWith(QLatin1Char('+')))
            notInteger(QLatin1Char('$') + rest);
        return negative ? -Extended(v) : Extended(v);
    }
    std::int64_t v = 0;
    // 32 bits of digits, leading zeros aside (a figure-wide text may have more
    // than eight); the top bit set gives a negative value.
    if (isSign(S.at(0)) || !tryInt64(S, v, 16) || v > 0xFFFFFFFFll)
        notInteger(QLatin1Char('$') + S);
    return Extended(std::int32_t(std::uint32_t(v)));
}

QString NumberEditCore::roundNumberText(const QString& AText, int ADigits) const {
    // Stripped as decimal text, whatever the box's number type.
    QString S;
    for (QChar c : AText)
        if (c != kThousands && c.unicode() >= 32) S += c;
    const int d = S.indexOf(kDecimal);
    if (d < 0 || d == S.size() - 1 || ADigits < 0 || S.size() - d - 1 <= ADigits) return S;
    QString intPart = S.left(d);
    QString kept = S.mid(d + 1, ADigits);
    const QString cut = S.mid(d + 1 + ADigits);
    bool carry = false;
    switch (FRoundMode) {
    case rmDown:
        break;
    case rmRound:
        carry = cut.at(0) >= QLatin1Char('5');
        break;
    case rmUp:
        for (QChar c : cut)
            if (c != QLatin1Char('0')) carry = true;
        break;
    }
    for (int i = kept.size() - 1; carry && i >= 0; --i) {
        int digit = kept.at(i).unicode() - '0' + 1;
        if (digit == 10) {
            kept[i] = QLatin1Char('0');
        } else {
            kept[i] = QChar('0' + digit);
            carry = false;
        }
    }
    if (carry) {
        const bool negative = intPart.startsWith(QLatin1Char('-'));
        QString digits = intPart;
        if (!digits.isEmpty() && isSign(digits.at(0))) digits = digits.mid(1);
        const std::int32_t magnitude = digits.isEmpty() ? 0 : textToInt32(digits);
        intPart =
            (negative ? QStringLiteral("-") : QString()) + QString::number(qint64(magnitude) + 1);
    }
    return intPart + kDecimal + kept;
}

QString NumberEditCore::formatNumberText() {
    if (FLimit) {
        if (hasLimit(loMin) && FValue < FMin) FValue = FMin;
        if (hasLimit(loMax) && FValue > FMax) FValue = FMax;
    }
    QString S;
    if (FNumberType == ntDecimal) {
        const bool plus = Text().startsWith(QLatin1Char('+'));
        S = roundNumberText(plainNumberText(FValue), FFigure);
        if (FComma) {
            const bool minus = S.startsWith(QLatin1Char('-'));
            const int d = S.indexOf(kDecimal);
            const QString intPart = d < 0 ? S : S.left(d);
            const QString fraction = d < 0 ? QString() : S.mid(d);
            S = formatThousands(textToInt32(intPart)) + fraction;
            if (minus && !S.startsWith(QLatin1Char('-'))) S.prepend(QLatin1Char('-'));
        }
        if (FFigure >= 0 && FFixed) {
            const int d = S.indexOf(kDecimal);
            if (d < 0) {
                if (FFigure >= 1) S += kDecimal + QString(FFigure, QLatin1Char('0'));
            } else if (FFigure == 0) {
                S = S.left(d);
            } else {
                const int have = S.size() - d - 1;
                if (have < FFigure)
                    S += QString(FFigure - have, QLatin1Char('0'));
                else
                    S = S.left(d + 1 + FFigure);
            }
        }
        if (plus) S.prepend(QLatin1Char('+'));
        if (S.endsWith(kDecimal)) S.chop(1);
    } else {
        QString r = roundNumberText(floatToGeneral(FValue), 0);
        if (r.endsWith(kDecimal)) r.chop(1);
        const std::int64_t v = textToInt64(r);
        FValue = Extended(v);
        S = hexText(v, FValidMinus);
    }
    QString copy = S;
    const Extended v = parseNumberText(copy);
    FValue = v;
    if (v == 0 && !FZeroVisible) return QString();
    return S;
}

void NumberEditCore::change() {
    if (FChangeSave) return;
    const QString text = Text();
    if (text.isEmpty() || text == QLatin1String("-") || text == QLatin1String("+")) {
        FValue = 0;
        return;
    }
    QString stripped = text;
    FValue = parseNumberText(stripped);
    if (FComma && FNumberType == ntDecimal) {
        const bool minus = stripped.startsWith(QLatin1Char('-'));
        const int d = stripped.indexOf(kDecimal);
        const int oldLength = text.size();
        const QString intPart = d < 0 ? stripped : stripped.left(d);
        const QString fraction = d < 0 ? QString() : stripped.mid(d);
        std::int64_t n = 0;
        if (!tryInt64(intPart, n)) n = 0;
        QString formatted = formatThousands(n) + fraction;
        if (minus && !formatted.startsWith(QLatin1Char('-'))) formatted.prepend(QLatin1Char('-'));
        int caret = selStart();
        writeTextGuarded(formatted);
        if (formatted.size() > oldLength)
            ++caret;
        else if (formatted.size() < oldLength)
            --caret;
        setSelStart(qBound(0, caret, int(formatted.size())));
    }
    if (FNumberType == ntDecimal) FValue = textToFloat(roundNumberText(Text(), FFigure));
    if (FLimit) {
        if (hasLimit(loMin) && FValue < FMin) FValue = FMin;
        if (hasLimit(loMax) && FValue > FMax) FValue = FMax;
    }
    baseChange();
}

void NumberEditCore::doEnter() {
    if (FAutoSelect) {
        setSelStart(0);
        setSelLength(Text().size());
    } else {
        setSelStart(Text().size());
    }
    FKeyin = false;
}

void NumberEditCore::doExit() {
    FChangeSave = true;
    try {
        QString s = Text();
        FValue = parseNumberText(s);
        SetText(formatNumberText());
        SetModified(FKeyin);
    } catch (...) {
        FChangeSave = false;
        throw;
    }
    FChangeSave = false;
}

void NumberEditCore::arrowKey(ArrowKeyDirection direction) {
    if (FAllowKeys && direction != adNone) stepByArrow(direction);
}

void NumberEditCore::stepByArrow(ArrowKeyDirection Direction) {
    Extended n = FValue;
    if (Direction == adUp)
        n = FValue + getIncrement();
    else if (Direction == adDown)
        n = FValue - getIncrement();
    if (FLimit) {
        if (hasLimit(loMin) && n < FMin)
            n = (FWrap && hasLimit(loMax)) ? FMax : FMin;
        else if (hasLimit(loMax) && n > FMax)
            n = (FWrap && hasLimit(loMin)) ? FMin : FMax;
    }
    doArrowKeyChange(Direction, n);
    setValue(n);
}

void NumberEditCore::doArrowKeyChange(ArrowKeyDirection Direction, Extended& NewValue) {
    if (OnArrowKeyChange) OnArrowKeyChange(this, Direction, NewValue);
}

bool NumberEditCore::isValidChar(QChar key) const {
    const ushort k = key.unicode();
    const bool control = k == 8 || k == 9 || k == 13;
    const bool digit = k >= '0' && k <= '9';
    if (FNumberType == ntHex) {
        if (ctrlDown()) return true;
        if (control || digit || (k >= 'A' && k <= 'F') || (k >= 'a' && k <= 'f')) return true;
        if (k == '-') return FValidMinus;
        if (k == '+') return Text().startsWith(QLatin1Char('-'));
        return false;
    }
    if (!ctrlDown()) {
        if (k > 255) return false;
        if (!(control || digit || k == '+' || k == '-' || key == kDecimal)) return false;
    }
    if (FMaxIntLength < 1) return true;
    const QString text = Text();
    const int sep = text.indexOf(kDecimal);
    const int D = sep < 0 ? int(text.size()) + 1 : sep + 1;
    const QString intPart = text.left(D - 1);
    int C = intPart.size();
    for (QChar c : intPart)
        if (isSign(c) || c == kThousands) --C;
    if (FMaxIntLength > C) return true;
    if (control || k == '+' || k == '-' || key == kDecimal) return true;
    if (selStart() >= D) return true;
    if (selLength() > 0) {
        const QString selected = text.mid(selStart(), selLength());
        const bool single =
            selected.size() == 1 &&
            (selected.at(0) == kThousands || selected.at(0) == kDecimal || isSign(selected.at(0)));
        if (!single && selStart() < D) return true;
    }
    return false;
}

QChar NumberEditCore::keyPressFilter(QChar key) {
    if (!isValidChar(key)) return QChar(0);
    if (isSign(key)) {
        int caret = selStart();
        QString text = Text();
        if (caret == 0 && selLength() > 0) text.remove(0, selLength());
        const bool hasSign = !text.isEmpty() && isSign(text.at(0));
        const bool hasMinus = hasSign && text.at(0) == QLatin1Char('-');
        if (key == QLatin1Char('-')) {
            if (!hasSign) {
                text.prepend(QLatin1Char('-'));
                ++caret;
            } else if (!hasMinus) {
                text[0] = QLatin1Char('-');
            } else {
                text.remove(0, 1);
                --caret;
            }
        } else if (FNumberType == ntHex && hasMinus) {
            text.remove(0, 1);
            --caret;
        } else if (!hasSign) {
            text.prepend(QLatin1Char('+'));
            ++caret;
        } else if (hasMinus) {
            text[0] = QLatin1Char('+');
        } else {
            text.remove(0, 1);
            --caret;
        }
        caret = std::max(0, caret);
        SetText(text);
        setSelStart(std::min(caret, int(Text().size())));
        return QChar(0);
    }
    if (key == kDecimal && Text().contains(kDecimal)) return QChar(0);
    return key;
}

void NumberEditCore::pasteText(const QString& clip) {
    int P = selStart() + 1;
    QString T = Text();
    T.remove(selStart(), selLength());
    for (int i = P - 1; i < T.size(); ++i)
        if (isSign(T.at(i))) return;
    bool inserted = false;
    for (QChar c : clip) {
        const ushort k = c.unicode();
        const bool digit = k >= '0' && k <= '9';
        bool valid;
        if (FNumberType == ntDecimal)
            valid = digit || isSign(c) || c == kDecimal;
        else
            valid = digit || (k >= 'A' && k <= 'F') || (k >= 'a' && k <= 'f');
        if (!valid) continue;
        if (isSign(c)) {
            const bool tHasSign = !T.isEmpty() && isSign(T.at(0));
            if (!(P == 1 && !inserted && !tHasSign)) continue;
        }
        if (c == kDecimal && T.contains(kDecimal)) continue;
        T.insert(P - 1, c);
        ++P;
        inserted = true;
    }
    SetText(T);
    setSelStart(std::min(P - 1, int(Text().size())));
}

void NumberEditCore::typeChar(QChar key) {
    QChar k = keyPressFilter(key);
    if (k.isNull()) return;
    if (OnKeyPress) OnKeyPress(this, k);
    if (k.isNull()) return;
    FKeyin = true;
    const ushort code = k.unicode();
    if (code == 13 || code == 9) return;
    QString text = Text();
    int start = selStart();
    if (code == 8) {
        if (selLength() > 0) {
            text.remove(start, selLength());
        } else if (start > 0) {
            text.remove(start - 1, 1);
            --start;
        }
    } else {
        text.remove(start, selLength());
        text.insert(start, k);
        ++start;
    }
    // The caret stands behind the typed character when change runs.
    FText = text;
    FSelStart = start;
    FSelLength = 0;
    change();
}

void NumberEditCore::typeText(const QString& text) {
    for (QChar c : text)
        typeChar(c);
}
