// The number box logic without a window: number texts, rounding on the digits, Value writes,
// limits and arrow steps, signs, the digit limit, the paste filter and hexadecimal mode.
#include "controls/numbereditcore.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace {

// Each helper acts on the box and gives what it shows then.
struct Box : NumberEditCore {
    int changes = 0;
    Box() {
        onChange = [this](ControlObject*) { ++changes; };
    }
    QString typed(const char* keys) { return typeText(keys), numberText(); }
    QString pasted(const char* clip) { return pasteText(clip), numberText(); }
    QString set(long double v) { return setValue(v), numberText(); }
    QString exited() { return doExit(), numberText(); }
    double v() const { return double(value()); }
    double step(ArrowKeyDirection d) { return stepByArrow(d), v(); }
};

TEST(NumberText, PlainAndGeneralForms) {
    EXPECT_EQ(plainNumberText(1.5e-7L), "0.00000015");
    EXPECT_EQ(plainNumberText(1.5e20L), "15" + QString(19, QLatin1Char('0')));
    EXPECT_EQ(plainNumberText(-2.5e-6L), "-0.0000025");
    EXPECT_EQ(floatToGeneral(1.5e-7L), "1.5E-7");
    EXPECT_EQ(floatToGeneral(1234.5L), "1234.5");
    EXPECT_EQ(floatToGeneral(0.1L + 0.2L), "0.3");
    EXPECT_EQ(formatThousands(-1234567), "-1,234,567");
    EXPECT_EQ(formatThousands(999), "999");
    EXPECT_THROW(textToFloat("."), ConvertError);
    EXPECT_THROW(textToInt64("99999999999999999999"), ConvertError);
    EXPECT_THROW(textToInt32("3000000000"), ConvertError);
}

TEST(NumberText, RoundingWorksOnTheDigits) {
    using Case = std::tuple<RoundMode, const char*, int, const char*>;
    const std::vector<Case> cases = {
        {rmDown, "1.29", 1, "1.2"},        {rmDown, "-1.29", 1, "-1.2"},
        {rmDown, "1.2", 0, "1."},          {rmDown, "1.2", 3, "1.2"},
        {rmDown, "1,234.5", -1, "1234.5"}, {rmUp, "1.2001", 2, "1.21"},
        {rmUp, "-1.2", 0, "-2."},          {rmUp, "1.2000", 2, "1.20"},
        {rmRound, "0.125", 2, "0.13"},     {rmRound, "0.124", 2, "0.12"},
        {rmRound, "-0.96", 1, "-1.0"},     {rmRound, "99.99", 1, "100.0"}};
    for (const auto& [mode, text, digits, rounded] : cases) {
        Box b;
        b.setRoundMode(mode);
        EXPECT_EQ(b.roundNumberText(text, digits), rounded) << text;
    }
}

TEST(NumberValue, WritesShowTheFormattedTextAndKeepTheShownNumber) {
    // value, figure, fixed (1) or not, comma (1) or not, round mode, text shown, value kept
    using Case = std::tuple<long double, int, int, int, RoundMode, const char*, long double>;
    const std::vector<Case> cases = {
        {1234.5L, 2, 1, 1, rmDown, "1,234.50", 1234.5L},
        {1.29L, 1, 0, 0, rmDown, "1.2", 1.2L},
        {1.2L, 0, 0, 0, rmUp, "2", 2},
        {-1.2L, 0, 0, 0, rmUp, "-2", -2},
        {0.125L, 2, 0, 0, rmRound, "0.13", 0.13L},
        {0.999L, 2, 0, 0, rmRound, "1.00", 1},
        {-12.96L, 1, 0, 0, rmRound, "-13.0", -13},
        {1.5L, 2, 0, 0, rmDown, "1.5", 1.5L},
        {1.101L, 2, 0, 0, rmDown, "1.10", 1.1L},
        {-0.5L, -1, 0, 1, rmDown, "-0.5", -0.5L},
        {1234567.891L, -1, 0, 1, rmDown, "1,234,567.891", 1234567.891L},
        {3, 2, 1, 0, rmDown, "3.00", 3},
        {2.5L, 0, 1, 0, rmDown, "2", 2}};
    for (const auto& [value, figure, fixed, comma, mode, shown, kept] : cases) {
        Box b;
        b.setFigure(figure);
        b.setFixed(fixed);
        b.setComma(comma);
        b.setRoundMode(mode);
        EXPECT_EQ(b.set(value), shown) << double(value);
        EXPECT_EQ(floatToGeneral(b.value()), floatToGeneral(kept)) << shown;
    }
}

TEST(NumberValue, PlusKeptZeroVisibleAndExit) {
    Box b, empty, hidden, exiting;
    b.setNumberText("+5");
    EXPECT_EQ(b.v(), 5.0);
    EXPECT_EQ(b.exited(), "+5");
    empty.setNumberText(QString());
    EXPECT_EQ(empty.exited(), "0");
    hidden.setZeroVisible(false);
    EXPECT_EQ(hidden.numberText(), QString());
    EXPECT_EQ(hidden.exited(), QString());
    // Leaving the box fires no onChange, however the text changes.
    exiting.setFigure(1);
    exiting.setNumberText("1.26");
    const int before = exiting.changes;
    EXPECT_EQ(exiting.exited(), "1.2");
    EXPECT_EQ(exiting.changes, before);
}

TEST(NumberValue, LimitsAndArrowSteps) {
    Box b, m;
    b.setMax(10);
    b.setMin(1);
    b.setLimit(true);
    b.setValue(10);
    EXPECT_EQ(b.step(adUp), 10.0);
    b.setWrap(true);
    EXPECT_EQ(b.step(adUp), 1.0);
    EXPECT_EQ(b.step(adDown), 10.0);
    b.setIncrement(0.5L);
    b.stepByArrow(adDown);
    EXPECT_EQ(b.numberText(), "9.5");
    // A handler may change the new value.
    b.onArrowKeyChange = [](ControlObject*, ArrowKeyDirection d, Extended& v) {
        if (d == adUp) v = 3;
    };
    EXPECT_EQ(b.step(adUp), 3.0);
    EXPECT_EQ(b.set(50), "10");
    // Typing beyond a bound: Value is held, the text shows what was typed.
    b.setNumberText("25");
    EXPECT_EQ(b.v(), 10.0);
    EXPECT_EQ(b.numberText(), "25");
    m.setMin(8);
    m.setMax(5);
    EXPECT_EQ(double(m.min()), 5.0);
    m.setMin(7);
    EXPECT_EQ(double(m.max()), 7.0);
}

TEST(NumberTyping, SignsDigitLimitSeparatorAndPaste) {
    Box s, d, c, p; // signs, digits, comma, paste
    s.setNumberText("12");
    d.setMaxIntLength(3);
    d.setNumberText("123");
    c.setComma(true);
    c.setNumberText(QString());
    // Steps: the box, the caret put at (-1: where it is) with a selection of this length, the keys
    // typed, the text then and the caret then (-1: not checked). A selection of only the
    // separator is not replaced.
    const std::vector<std::tuple<Box*, int, int, const char*, const char*, int>> steps = {
        {&s, 0, 0, "-", "-12", -1},      {&s, -1, 0, "-", "12", -1},
        {&s, 2, 0, "-", "-12", -1},      {&s, -1, 0, "-", "12", -1},
        {&s, -1, 0, "+", "+12", -1},     {&s, -1, 0, "-", "-12", -1},
        {&s, -1, 0, "x", "-12", -1},     {&d, -1, 0, "4", "123", -1},
        {&d, -1, 0, ".5", "123.5", -1},  {&d, -1, 0, ".", "123.5", -1},
        {&d, 1, 1, "9", "193.5", -1},    {&d, 3, 1, "9", "193.5", -1},
        {&c, -1, 0, "1234", "1,234", 5}, {&c, -1, 0, "5", "12,345", 6}};
    for (const auto& [box, caret, length, keys, shown, caretAfter] : steps) {
        if (caret >= 0) box->setSelStart(caret);
        box->setSelLength(length);
        EXPECT_EQ(box->typed(keys), shown) << keys;
        EXPECT_TRUE(caretAfter < 0 || box->selStart() == caretAfter) << keys;
    }
    EXPECT_EQ(s.v(), -12.0);
    EXPECT_EQ(c.v(), 12345.0);
    p.setNumberText(QString());
    EXPECT_EQ(p.pasted("-1a2.3.4"), "-12.34");
    p.setSelStart(0);
    EXPECT_EQ(p.pasted("5"), "-12.34"); // in front of the sign: nothing
    p.setSelStart(6);
    EXPECT_EQ(p.pasted("+7-"), "-12.347");
}

TEST(NumberHex, FormatsParsesAndFilters) {
    Box b;
    b.setValue(255);
    b.setNumberType(ntHex);
    EXPECT_EQ(b.numberText(), "FF");
    b.setFigure(4);
    EXPECT_EQ(b.numberText(), "00FF");
    b.setNumberText("1a");
    EXPECT_EQ(b.v(), 26.0);
    EXPECT_FALSE(b.isValidChar(QLatin1Char('-')));
    EXPECT_FALSE(b.isValidChar(QLatin1Char('+'))); // "+" only after a "-"
    EXPECT_FALSE(b.isValidChar(QLatin1Char('g')));
    b.setValidMinus(true);
    EXPECT_EQ(b.set(-26), "-001A");
    EXPECT_EQ(b.asText(), "-1A");
    EXPECT_TRUE(b.isValidChar(QLatin1Char('+')));
    EXPECT_EQ(b.typed("+"), "001A");
    b.setValidMinus(false);
    // Without a minus a negative value shows its 32-bit pattern; a figure over eight digits pads
    // with zeros that still convert.
    for (const auto& [figure, value, shown] : std::vector<std::tuple<int, int, const char*>>{
             {4, -1, "FFFFFFFF"}, {10, 255, "00000000FF"}, {10, -1, "00FFFFFFFF"}}) {
        b.setFigure(figure);
        EXPECT_EQ(b.set(value), shown);
        EXPECT_EQ(b.v(), value) << shown;
    }
    EXPECT_THROW(b.setNumberText("100000000"), ConvertError);
}

// Amounts typed into a number box are taken to whole yen by rounding, not by cutting.
TEST(NumberValue, IntegerViewsAndConversionErrors) {
    Box b;
    b.setRoundMode(rmRound);
    b.setValue(2.5L);
    EXPECT_EQ(b.asInt64(), 3);
    b.setValue(-3e10L);
    EXPECT_EQ(b.asInt64(), -30000000000LL);
    EXPECT_EQ(b.intValue(), -2147483647 - 1);
    b.setCurrency(strToCurr("1234.5678"));
    EXPECT_EQ(b.numberText(), "1234.5678");
    EXPECT_EQ(currToStr(b.asCurrency()), "1234.5678");
    EXPECT_THROW(b.setNumberText("-."), ConvertError);
}

} // namespace
