#pragma once
// The logic of NumberEdit, a single-line edit box for numbers, without a
// window. The number is kept twice: as the text in the box and as Value.
// Keys and pasted text are filtered, thousands separators are put in while
// typing when Comma is on, rounding works on the decimal text (15
// significant digits) and not on the float, limits and arrow steps apply.
//
// The edit primitives (text, caret, selection, the Ctrl key, OnChange) are
// virtual: by default the box lives in memory, so the logic runs without a
// window; the widget NumberEdit maps them onto a QLineEdit.
//
// Locale: "." is the decimal separator and "," the thousands separator.
// Text that passes the filter but does not convert raises ConvertError.

#include "controls/stringgridmodel.h"
#include "engine/currency.h"

#include <QString>

#include <cstdint>
#include <functional>

using Extended = long double;

enum TNumberType { ntDecimal = 0, ntHex = 1 };
enum TRoundMode { rmDown = 0, rmRound = 1, rmUp = 2 };
enum LimitOption { loMax = 0, loMin = 1 };
// A set of LimitOption as bits (1 << loMax, 1 << loMin).
using TLimitOptions = unsigned;
constexpr TLimitOptions LimitBoth = (1u << loMax) | (1u << loMin);
enum ArrowKeyDirection { adNone = 0, adUp = 1, adDown = 2 };

using ArrowKeyEvent =
    std::function<void(ControlObject* Sender, ArrowKeyDirection Direction, Extended& NewValue)>;
using KeyPressEvent = std::function<void(ControlObject* Sender, QChar& Key)>;
using ChangeEvent = std::function<void(ControlObject* Sender)>;

// The float at 15 significant digits in the general form ("1234.5",
// "1.5E-7", "1.5E+20"), as the box shows numbers.
QString FloatToGeneral(Extended value);
// The general form with the exponent written out: 1.5E-7 gives
// "0.00000015", 1.5E+20 gives "15" and 19 zeros.
QString PlainNumberText(Extended value);
// Integer with "," every three digits ("#,##0").
QString FormatThousands(std::int64_t value);
// Strict conversions; bad text raises ConvertError.
std::int64_t TextToInt64(const QString& text);
std::int32_t TextToInt32(const QString& text);
Extended TextToFloat(const QString& text);

class NumberEditCore : public ControlObject {
public:
    NumberEditCore();
    ~NumberEditCore() override;

    // ---- settings
    TAlignment Alignment() const { return FAlignment; }
    void SetAlignment(TAlignment value);
    // Up and Down step the value by Increment.
    bool AllowKeys() const { return FAllowKeys; }
    void SetAllowKeys(bool value) { FAllowKeys = value; }
    // Thousands separators.
    bool Comma() const { return FComma; }
    void SetComma(bool value);
    // Digits after the separator; negative: no limit, no rounding.
    int Figure() const { return FFigure; }
    void SetFigure(int value);
    // Pad with zeros to exactly Figure fraction digits.
    bool Fixed() const { return FFixed; }
    void SetFixed(bool value);
    virtual Extended GetIncrement() const { return FIncrement; }
    virtual void SetIncrement(Extended value) { FIncrement = value; }
    bool Limit() const { return FLimit; }
    void SetLimit(bool value);
    TLimitOptions LimitOptions() const { return FLimitOptions; }
    void SetLimitOptions(TLimitOptions value);
    TNumberType NumberType() const { return FNumberType; }
    void SetNumberType(TNumberType value);
    Extended Max() const { return FMax; }
    void SetMax(Extended value);
    Extended Min() const { return FMin; }
    void SetMin(Extended value);
    // Most digits before the separator; below 1: no limit.
    int MaxIntLength() const { return FMaxIntLength; }
    void SetMaxIntLength(int value) { FMaxIntLength = value; }
    TRoundMode RoundMode() const { return FRoundMode; }
    void SetRoundMode(TRoundMode value) { FRoundMode = value; }
    // Hexadecimal only: negative values allowed.
    bool ValidMinus() const { return FValidMinus; }
    void SetValidMinus(bool value);
    bool Wrap() const { return FWrap; }
    void SetWrap(bool value) { FWrap = value; }
    // False: a zero value shows as an empty box.
    bool ZeroVisible() const { return FZeroVisible; }
    void SetZeroVisible(bool value);
    bool AutoSelect() const { return FAutoSelect; }
    void SetAutoSelect(bool value) { FAutoSelect = value; }

    // ---- the number
    Extended Value() const { return FValue; }
    // Applies the limits, then shows the formatted text (OnChange fires).
    void SetValue(Extended value);
    // Same, from a Currency amount.
    void SetCurrency(Currency value);
    // Value as Currency: its general text rounded to four decimals.
    Currency AsCurrency() const;
    // Value as Currency: times 10000, stored to the nearest unit.
    Currency StoredCurrency() const;
    std::int64_t AsInt64() const;
    void SetAsInt64(std::int64_t value) { SetValue(Extended(value)); }
    std::int32_t AsInteger() const { return IntValue(); }
    void SetAsInteger(std::int32_t value) { SetValue(Extended(value)); }
    std::int32_t IntValue() const;
    QString AsText() const;
    // The text to show for Value; also makes Value the number shown.
    QString FormattedText() { return FormatNumberText(); }

    // ---- the logic, in the order the edit box calls it
    Extended ParseNumberText(QString& S) const;
    QString RoundNumberText(const QString& AText, int ADigits) const;
    QString FormatNumberText();
    // The text changed (typing, paste or a write).
    void Change();
    void DoEnter();
    void DoExit();
    // Key codes as the desktop uses them: 38 up, 40 down.
    void KeyDown(int& key, ShiftState shift);
    bool IsValidChar(QChar key) const;
    // Steps 1-3 of a typed character: the filter and the sign keys. Returns
    // the character that goes on into the box, or QChar(0) when dropped.
    QChar KeyPressFilter(QChar key);
    // Inserts clipboard text as the paste filter allows.
    void PasteText(const QString& clip);
    virtual void StepByArrow(ArrowKeyDirection Direction);
    virtual void DoArrowKeyChange(ArrowKeyDirection Direction, Extended& NewValue);

    // Without a window: one typed character as the box would take it
    // (filter, OnKeyPress, insertion over the selection, backspace).
    void TypeChar(QChar key);
    void TypeText(const QString& text);

    // True when the user typed since entering the box.
    bool Keyin() const { return FKeyin; }
    bool Modified() const { return FModified; }

    // ---- edit primitives; in memory unless overridden
    virtual QString Text() const { return FText; }
    // Writes the text; a change runs Change(), as the edit box does.
    virtual void SetText(const QString& value);
    virtual int SelStart() const { return FSelStart; }
    virtual int SelLength() const { return FSelLength; }
    // Moves the caret and clears the selection.
    virtual void SetSelStart(int value);
    virtual void SetSelLength(int value);
    virtual bool CtrlDown() const { return FCtrlDown; }
    void SetCtrlDownForTyping(bool down) { FCtrlDown = down; }
    virtual void SetModified(bool value) { FModified = value; }

    ChangeEvent OnChange;
    KeyPressEvent OnKeyPress;
    ArrowKeyEvent OnArrowKeyChange;

protected:
    virtual void BaseChange();
    virtual void Invalidate() {}
    virtual void AlignmentChanged() {}
    void WriteTextGuarded(const QString& text);
    bool FChangeSave = false;
    bool FKeyin = false;

private:
    bool HasLimit(LimitOption o) const { return (FLimitOptions & (1u << o)) != 0; }
    QString HexText(std::int64_t value, bool allowMinus) const;

    TAlignment FAlignment = taRightJustify;
    bool FAllowKeys = false;
    bool FValidMinus = false;
    bool FComma = false;
    int FFigure = -1;
    bool FFixed = false;
    Extended FIncrement = 1.0L;
    bool FLimit = false;
    TLimitOptions FLimitOptions = LimitBoth;
    Extended FMax = 0;
    int FMaxIntLength = 0;
    Extended FMin = 0;
    TRoundMode FRoundMode = rmDown;
    Extended FValue = 0;
    TNumberType FNumberType = ntDecimal;
    bool FWrap = false;
    bool FZeroVisible = true;
    bool FAutoSelect = true;
    bool FModified = false;

    QString FText;
    int FSelStart = 0;
    int FSelLength = 0;
    bool FCtrlDown = false;
};
