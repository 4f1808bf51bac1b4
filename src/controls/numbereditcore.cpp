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

std::int64_t roundTextToInt64(const NumberEditCore& edit, Extended value) {
    QString s = edit.roundNumberText(plainNumberText(value), 0);
    const int d = s.indexOf(kDecimal);
    if (d >= 0) s = s.left(d);
    return textToInt64(s);
}

} // namespace

// ---------------------------------------------------------------- NumberEditCore

NumberEditCore::NumberEditCore() : m_text(QStringLiteral("0")) {}

NumberEditCore::~NumberEditCore() = default;

void NumberEditCore::setNumberText(const QString& value) {
    if (value == m_text) return;
    m_text = value;
    m_selStart = int(value.size());
    m_selLength = 0;
    change();
}

void NumberEditCore::setSelStart(int value) {
    m_selStart = qBound(0, value, int(numberText().size()));
    m_selLength = 0;
}

void NumberEditCore::setSelLength(int value) {
    m_selLength = qBound(0, value, int(numberText().size()) - selStart());
}

void NumberEditCore::baseChange() {
    if (onChange) onChange(this);
}

void NumberEditCore::writeTextGuarded(const QString& text) {
    const bool keep = m_changeSave;
    m_changeSave = true;
    setNumberText(text);
    m_changeSave = keep;
}

void NumberEditCore::setNumberAlignment(Qt::Alignment value) {
    value &= Qt::AlignHorizontal_Mask;
    if (value == m_alignment) return;
    m_alignment = value;
    alignmentChanged();
}

void NumberEditCore::setComma(bool value) {
    m_comma = value;
    writeTextGuarded(formatNumberText());
    invalidate();
}

void NumberEditCore::setFigure(int value) {
    m_figure = value;
    setNumberText(formatNumberText());
    invalidate();
}

void NumberEditCore::setFixed(bool value) {
    m_fixed = value;
    setNumberText(formatNumberText());
    invalidate();
}

// With the limit on, the value is brought into the bounds that are set.
void NumberEditCore::clampToLimits() {
    if (!m_limit) return;
    if (hasLimit(loMin) && m_value < m_min) m_value = m_min;
    if (hasLimit(loMax) && m_value > m_max) m_value = m_max;
}

void NumberEditCore::setLimit(bool value) {
    m_limit = value;
    if (m_limit) { // the text's formatting brings the value into the bounds
        setNumberText(formatNumberText());
        invalidate();
    }
}

void NumberEditCore::setLimitOptions(LimitOptions value) {
    m_limitOptions = value;
    if (m_limit) { // the text's formatting brings the value into the bounds
        setNumberText(formatNumberText());
        invalidate();
    }
}

void NumberEditCore::setMax(Extended value) {
    m_max = value;
    if (m_min > m_max) m_min = m_max;
    if ((m_value < m_min || m_value > m_max) && m_limit && hasLimit(loMax)) {
        m_value = m_max;
        setNumberText(formatNumberText());
        invalidate();
    }
}

void NumberEditCore::setMin(Extended value) {
    m_min = value;
    if (m_max < m_min) m_max = m_min;
    if ((m_value < m_min || m_value > m_max) && m_limit && hasLimit(loMin)) {
        m_value = m_min;
        setNumberText(formatNumberText());
        invalidate();
    }
}

void NumberEditCore::setValidMinus(bool value) {
    m_validMinus = value;
    if (m_numberType == ntHex) setNumberText(formatNumberText());
}

void NumberEditCore::setZeroVisible(bool value) {
    if (value == m_zeroVisible) return;
    m_zeroVisible = value;
    if (m_value == 0) setNumberText(formatNumberText());
}

QString NumberEditCore::hexText(std::int64_t value, bool allowMinus) const {
    const int width = std::max(m_figure, 1);
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

void NumberEditCore::setNumberType(NumberType value) {
    if (value == m_numberType) return;
    if (value == ntDecimal) {
        m_numberType = value;
        setNumberText(floatToGeneral(m_value));
    } else {
        const std::int32_t v = intValue();
        m_numberType = value;
        setNumberText(hexText(v, false));
    }
    invalidate();
}

void NumberEditCore::setValue(Extended value) {
    if (m_limit && hasLimit(loMin) && value < m_min)
        m_value = m_min;
    else if (m_limit && hasLimit(loMax) && value > m_max)
        m_value = m_max;
    else
        m_value = value;
    setNumberText(formatNumberText());
}

void NumberEditCore::setCurrency(Currency value) {
    setValue(textToFloat(currToStr(value)));
}

Currency NumberEditCore::asCurrency() const {
    return strToCurr(plainNumberText(m_value));
}

Currency NumberEditCore::storedCurrency() const {
    return Currency::fromRaw(store(m_value * 10000.0L));
}

std::int64_t NumberEditCore::asInt64() const {
    return roundTextToInt64(*this, m_value);
}

std::int32_t NumberEditCore::intValue() const {
    return std::int32_t(std::clamp<std::int64_t>(asInt64(),
                                                 std::numeric_limits<std::int32_t>::min(),
                                                 std::numeric_limits<std::int32_t>::max()));
}

QString NumberEditCore::asText() const {
    if (m_numberType == ntDecimal) return floatToGeneral(m_value);
    const std::int64_t v = asInt64();
    const unsigned long long magnitude =
        v < 0 ? 0ull - static_cast<unsigned long long>(v) : static_cast<unsigned long long>(v);
    QString digits = QString::number(magnitude, 16).toUpper();
    if (m_validMinus && numberText().startsWith(QLatin1Char('-'))) digits.prepend(QLatin1Char('-'));
    return digits;
}

Extended NumberEditCore::parseNumberText(QString& S) const {
    if (S.isEmpty() || S == QLatin1String("-") || S == QLatin1String("+")) return 0;
    if (m_numberType == ntDecimal) {
        QString stripped;
        for (QChar c : S)
            if (c != kThousands && c.unicode() >= 32) stripped += c;
        S = stripped;
        if (S.isEmpty()) return 0;
        if (!S.contains(kDecimal)) return Extended(textToInt64(S));
        return textToFloat(S);
    }
    if (m_validMinus) {
        QString rest = S;
        const bool negative = rest.startsWith(QLatin1Char('-'));
        if (negative) rest = rest.mid(1);
        std::int64_t v = 0;
        if (!parseInt64(rest, v, 16) || rest.startsWith(QLatin1Char('+')))
            notInteger(QLatin1Char('$') + rest);
        return negative ? -Extended(v) : Extended(v);
    }
    std::int64_t v = 0;
    // 32 bits of digits, leading zeros aside (a figure-wide text may have more
    // than eight); the top bit set gives a negative value.
    if (isSign(S.at(0)) || !parseInt64(S, v, 16) || v > 0xFFFFFFFFll)
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
    switch (m_roundMode) {
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
    clampToLimits();
    QString S;
    if (m_numberType == ntDecimal) {
        const bool plus = numberText().startsWith(QLatin1Char('+'));
        S = roundNumberText(plainNumberText(m_value), m_figure);
        if (m_comma) {
            const bool minus = S.startsWith(QLatin1Char('-'));
            const int d = S.indexOf(kDecimal);
            const QString intPart = d < 0 ? S : S.left(d);
            const QString fraction = d < 0 ? QString() : S.mid(d);
            S = formatThousands(textToInt32(intPart)) + fraction;
            if (minus && !S.startsWith(QLatin1Char('-'))) S.prepend(QLatin1Char('-'));
        }
        if (m_figure >= 0 && m_fixed) {
            const int d = S.indexOf(kDecimal);
            if (d < 0) {
                if (m_figure >= 1) S += kDecimal + QString(m_figure, QLatin1Char('0'));
            } else if (m_figure == 0) {
                S = S.left(d);
            } else {
                const int have = S.size() - d - 1;
                if (have < m_figure)
                    S += QString(m_figure - have, QLatin1Char('0'));
                else
                    S = S.left(d + 1 + m_figure);
            }
        }
        if (plus) S.prepend(QLatin1Char('+'));
        if (S.endsWith(kDecimal)) S.chop(1);
    } else {
        QString r = roundNumberText(floatToGeneral(m_value), 0);
        if (r.endsWith(kDecimal)) r.chop(1);
        const std::int64_t v = textToInt64(r);
        m_value = Extended(v);
        S = hexText(v, m_validMinus);
    }
    QString copy = S;
    const Extended v = parseNumberText(copy);
    m_value = v;
    if (v == 0 && !m_zeroVisible) return QString();
    return S;
}

void NumberEditCore::change() {
    if (m_changeSave) return;
    const QString text = numberText();
    if (text.isEmpty() || text == QLatin1String("-") || text == QLatin1String("+")) {
        m_value = 0;
        return;
    }
    QString stripped = text;
    m_value = parseNumberText(stripped);
    if (m_comma && m_numberType == ntDecimal) {
        const bool minus = stripped.startsWith(QLatin1Char('-'));
        const int d = stripped.indexOf(kDecimal);
        const int oldLength = text.size();
        const QString intPart = d < 0 ? stripped : stripped.left(d);
        const QString fraction = d < 0 ? QString() : stripped.mid(d);
        std::int64_t n = 0;
        if (!parseInt64(intPart, n)) n = 0;
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
    if (m_numberType == ntDecimal) m_value = textToFloat(roundNumberText(numberText(), m_figure));
    clampToLimits();
    baseChange();
}

void NumberEditCore::doEnter() {
    if (m_autoSelect) {
        setSelStart(0);
        setSelLength(numberText().size());
    } else {
        setSelStart(numberText().size());
    }
    m_keyin = false;
}

void NumberEditCore::doExit() {
    m_changeSave = true;
    try {
        QString s = numberText();
        m_value = parseNumberText(s);
        setNumberText(formatNumberText());
        setEdited(m_keyin);
    } catch (...) {
        m_changeSave = false;
        throw;
    }
    m_changeSave = false;
}

void NumberEditCore::arrowKey(ArrowKeyDirection direction) {
    if (m_allowKeys && direction != adNone) stepByArrow(direction);
}

void NumberEditCore::stepByArrow(ArrowKeyDirection Direction) {
    Extended n = m_value;
    if (Direction == adUp)
        n = m_value + getIncrement();
    else if (Direction == adDown)
        n = m_value - getIncrement();
    if (m_limit) {
        if (hasLimit(loMin) && n < m_min)
            n = (m_wrap && hasLimit(loMax)) ? m_max : m_min;
        else if (hasLimit(loMax) && n > m_max)
            n = (m_wrap && hasLimit(loMin)) ? m_min : m_max;
    }
    doArrowKeyChange(Direction, n);
    setValue(n);
}

void NumberEditCore::doArrowKeyChange(ArrowKeyDirection Direction, Extended& NewValue) {
    if (onArrowKeyChange) onArrowKeyChange(this, Direction, NewValue);
}

bool NumberEditCore::isValidChar(QChar key) const {
    const ushort k = key.unicode();
    const bool control = k == 8 || k == 9 || k == 13;
    const bool digit = k >= '0' && k <= '9';
    if (m_numberType == ntHex) {
        if (ctrlDown()) return true;
        if (control || digit || (k >= 'A' && k <= 'F') || (k >= 'a' && k <= 'f')) return true;
        if (k == '-') return m_validMinus;
        if (k == '+') return numberText().startsWith(QLatin1Char('-'));
        return false;
    }
    if (!ctrlDown()) {
        if (k > 255) return false;
        if (!(control || digit || k == '+' || k == '-' || key == kDecimal)) return false;
    }
    if (m_maxIntLength < 1) return true;
    const QString text = numberText();
    const int sep = text.indexOf(kDecimal);
    const int D = sep < 0 ? int(text.size()) + 1 : sep + 1;
    const QString intPart = text.left(D - 1);
    int C = intPart.size();
    for (QChar c : intPart)
        if (isSign(c) || c == kThousands) --C;
    if (m_maxIntLength > C) return true;
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
        QString text = numberText();
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
        } else if (m_numberType == ntHex && hasMinus) {
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
        setNumberText(text);
        setSelStart(std::min(caret, int(numberText().size())));
        return QChar(0);
    }
    if (key == kDecimal && numberText().contains(kDecimal)) return QChar(0);
    return key;
}

void NumberEditCore::pasteText(const QString& clip) {
    int P = selStart() + 1;
    QString T = numberText();
    T.remove(selStart(), selLength());
    for (int i = P - 1; i < T.size(); ++i)
        if (isSign(T.at(i))) return;
    bool inserted = false;
    for (QChar c : clip) {
        const ushort k = c.unicode();
        const bool digit = k >= '0' && k <= '9';
        bool valid;
        if (m_numberType == ntDecimal)
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
    setNumberText(T);
    setSelStart(std::min(P - 1, int(numberText().size())));
}

void NumberEditCore::typeChar(QChar key) {
    QChar k = keyPressFilter(key);
    if (k.isNull()) return;
    if (onKeyPress) onKeyPress(this, k);
    if (k.isNull()) return;
    m_keyin = true;
    const ushort code = k.unicode();
    if (code == 13 || code == 9) return;
    QString text = numberText();
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
    m_text = text;
    m_selStart = start;
    m_selLength = 0;
    change();
}

void NumberEditCore::typeText(const QString& text) {
    for (QChar c : text)
        typeChar(c);
}
