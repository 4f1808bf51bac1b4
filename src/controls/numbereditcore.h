#pragma once
// The logic of NumberEdit, a single-line edit box for numbers, without a
// window. The number is kept twice: as the text in the box and as Value.
// Keys and pasted text are filtered, thousands separators are put in while
// typing when comma is on, rounding works on the decimal text (15
// significant digits) and not on the float, limits and arrow steps apply.
//
// The edit primitives (text, caret, selection, the Ctrl key, onChange) are
// virtual: by default the box lives in memory, so the logic runs without a
// window; the widget NumberEdit maps them onto a QLineEdit.
//
// Locale: "." is the decimal separator and "," the thousands separator.
// Text that passes the filter but does not convert raises ConvertError.

#include "controls/controlobject.h"
#include "controls/numbertext.h"
#include "engine/currency.h"

#include <QString>

#include <cstdint>
#include <functional>

using Extended = long double;

enum NumberType { ntDecimal = 0, ntHex = 1 };
enum RoundMode { rmDown = 0, rmRound = 1, rmUp = 2 };
enum LimitOption { loMax = 0, loMin = 1 };
// A set of LimitOption as bits (1 << loMax, 1 << loMin).
using LimitOptions = unsigned;
constexpr LimitOptions LimitBoth = (1u << loMax) | (1u << loMin);
enum ArrowKeyDirection { adNone = 0, adUp = 1, adDown = 2 };

using ArrowKeyEvent =
    std::function<void(ControlObject* Sender, ArrowKeyDirection Direction, Extended& NewValue)>;
using KeyPressEvent = std::function<void(ControlObject* Sender, QChar& Key)>;
using ChangeEvent = std::function<void(ControlObject* Sender)>;

class NumberEditCore : public ControlObject {
public:
    NumberEditCore();
    ~NumberEditCore() override;

    // ---- settings
    // The horizontal alignment of the text (Qt::AlignLeft, Qt::AlignHCenter
    // or Qt::AlignRight); other flags are dropped.
    Qt::Alignment numberAlignment() const { return m_alignment; }
    void setNumberAlignment(Qt::Alignment value);
    // Up and Down step the value by Increment.
    bool allowKeys() const { return m_allowKeys; }
    void setAllowKeys(bool value) { m_allowKeys = value; }
    // Thousands separators.
    bool comma() const { return m_comma; }
    void setComma(bool value);
    // Digits after the separator; negative: no limit, no rounding.
    int figure() const { return m_figure; }
    void setFigure(int value);
    // Pad with zeros to exactly figure fraction digits.
    bool fixed() const { return m_fixed; }
    void setFixed(bool value);
    virtual Extended getIncrement() const { return m_increment; }
    virtual void setIncrement(Extended value) { m_increment = value; }
    bool limit() const { return m_limit; }
    void setLimit(bool value);
    LimitOptions limitOptions() const { return m_limitOptions; }
    void setLimitOptions(LimitOptions value);
    NumberType numberType() const { return m_numberType; }
    void setNumberType(NumberType value);
    Extended max() const { return m_max; }
    void setMax(Extended value);
    Extended min() const { return m_min; }
    void setMin(Extended value);
    // Most digits before the separator; below 1: no limit.
    int maxIntLength() const { return m_maxIntLength; }
    void setMaxIntLength(int value) { m_maxIntLength = value; }
    RoundMode roundMode() const { return m_roundMode; }
    void setRoundMode(RoundMode value) { m_roundMode = value; }
    // Hexadecimal only: negative values allowed.
    bool validMinus() const { return m_validMinus; }
    void setValidMinus(bool value);
    bool wrap() const { return m_wrap; }
    void setWrap(bool value) { m_wrap = value; }
    // False: a zero value shows as an empty box.
    bool zeroVisible() const { return m_zeroVisible; }
    void setZeroVisible(bool value);
    bool autoSelect() const { return m_autoSelect; }
    void setAutoSelect(bool value) { m_autoSelect = value; }

    // ---- the number
    Extended value() const { return m_value; }
    // Applies the limits, then shows the formatted text (onChange fires).
    void setValue(Extended value);
    // Same, from a Currency amount.
    void setCurrency(Currency value);
    // Value as Currency: its general text rounded to four decimals.
    Currency asCurrency() const;
    // Value as Currency: times 10000, stored to the nearest unit.
    Currency storedCurrency() const;
    std::int64_t asInt64() const;
    void setAsInt64(std::int64_t value) { setValue(Extended(value)); }
    std::int32_t asInteger() const { return intValue(); }
    void setAsInteger(std::int32_t value) { setValue(Extended(value)); }
    std::int32_t intValue() const;
    QString asText() const;
    // The text to show for Value; also makes Value the number shown.
    QString formattedText() { return formatNumberText(); }

    // ---- the logic, in the order the edit box calls it
    Extended parseNumberText(QString& S) const;
    QString roundNumberText(const QString& AText, int ADigits) const;
    QString formatNumberText();
    // The text changed (typing, paste or a write).
    void change();
    void doEnter();
    void doExit();
    // The up and down arrow keys step the value (with allowKeys).
    void arrowKey(ArrowKeyDirection direction);
    bool isValidChar(QChar key) const;
    // Steps 1-3 of a typed character: the filter and the sign keys. Returns
    // the character that goes on into the box, or QChar(0) when dropped.
    QChar keyPressFilter(QChar key);
    // Inserts clipboard text as the paste filter allows.
    void pasteText(const QString& clip);
    virtual void stepByArrow(ArrowKeyDirection Direction);
    virtual void doArrowKeyChange(ArrowKeyDirection Direction, Extended& NewValue);

    // Without a window: one typed character as the box would take it
    // (filter, onKeyPress, insertion over the selection, backspace).
    void typeChar(QChar key);
    void typeText(const QString& text);

    // True when the user typed since entering the box.
    bool keyin() const { return m_keyin; }
    bool modified() const { return m_modified; }

    // ---- edit primitives; in memory unless overridden
    virtual QString numberText() const { return m_text; }
    // Writes the text; a change runs change(), as the edit box does.
    virtual void setNumberText(const QString& value);
    virtual int selStart() const { return m_selStart; }
    virtual int selLength() const { return m_selLength; }
    // Moves the caret and clears the selection.
    virtual void setSelStart(int value);
    virtual void setSelLength(int value);
    virtual bool ctrlDown() const { return m_ctrlDown; }
    void setCtrlDownForTyping(bool down) { m_ctrlDown = down; }
    virtual void setEdited(bool value) { m_modified = value; }

    ChangeEvent onChange;
    KeyPressEvent onKeyPress;
    ArrowKeyEvent onArrowKeyChange;

protected:
    virtual void baseChange();
    virtual void invalidate() {}
    virtual void alignmentChanged() {}
    void writeTextGuarded(const QString& text);
    bool m_changeSave = false;
    bool m_keyin = false;

private:
    bool hasLimit(LimitOption o) const { return (m_limitOptions & (1u << o)) != 0; }
    void clampToLimits();
    QString hexText(std::int64_t value, bool allowMinus) const;

    Qt::Alignment m_alignment = Qt::AlignRight;
    bool m_allowKeys = false;
    bool m_validMinus = false;
    bool m_comma = false;
    int m_figure = -1;
    bool m_fixed = false;
    Extended m_increment = 1.0L;
    bool m_limit = false;
    LimitOptions m_limitOptions = LimitBoth;
    Extended m_max = 0;
    int m_maxIntLength = 0;
    Extended m_min = 0;
    RoundMode m_roundMode = rmDown;
    Extended m_value = 0;
    NumberType m_numberType = ntDecimal;
    bool m_wrap = false;
    bool m_zeroVisible = true;
    bool m_autoSelect = true;
    bool m_modified = false;

    QString m_text;
    int m_selStart = 0;
    int m_selLength = 0;
    bool m_ctrlDown = false;
};
