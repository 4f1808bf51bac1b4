// The number box logic without a window: formatting of Value writes,
// rounding on the text, parsing, limits, arrow steps, signs, the digit
// limit, the paste filter and hexadecimal mode.
#include "controls/numbereditcore.h"

#include <gtest/gtest.h>

namespace {

struct Box : NumberEditCore {
    int changes = 0;
    Box() {
        onChange = [this](ControlObject*) { ++changes; };
    }
};

TEST(NumberText, PlainAndGeneralForms) {
    EXPECT_EQ(plainNumberText(1.5e-7L), QStringLiteral("0.00000015"));
    EXPECT_EQ(plainNumberText(1.5e20L), QStringLiteral("15") + QString(19, QLatin1Char('0')));
    EXPECT_EQ(plainNumberText(-2.5e-6L), QStringLiteral("-0.0000025"));
    EXPECT_EQ(floatToGeneral(1.5e-7L), QStringLiteral("1.5E-7"));
    EXPECT_EQ(floatToGeneral(1234.5L), QStringLiteral("1234.5"));
    EXPECT_EQ(floatToGeneral(0.1L + 0.2L), QStringLiteral("0.3"));
    EXPECT_EQ(formatThousands(-1234567), QStringLiteral("-1,234,567"));
    EXPECT_EQ(formatThousands(999), QStringLiteral("999"));
    EXPECT_THROW(textToFloat(QStringLiteral(".")), ConvertError);
    EXPECT_THROW(textToInt64(QStringLiteral("99999999999999999999")), ConvertError);
    EXPECT_THROW(textToInt32(QStringLiteral("3000000000")), ConvertError);
}

TEST(NumberText, RoundingWorksOnTheDigits) {
    Box b;
    b.setRoundMode(rmDown);
    EXPECT_EQ(b.roundNumberText(QStringLiteral("1.29"), 1), QStringLiteral("1.2"));
    EXPECT_EQ(b.roundNumberText(QStringLiteral("-1.29"), 1), QStringLiteral("-1.2"));
    EXPECT_EQ(b.roundNumberText(QStringLiteral("1.2"), 0), QStringLiteral("1."));
    EXPECT_EQ(b.roundNumberText(QStringLiteral("1.2"), 3), QStringLiteral("1.2"));
    EXPECT_EQ(b.roundNumberText(QStringLiteral("1,234.5"), -1), QStringLiteral("1234.5"));
    b.setRoundMode(rmUp);
    EXPECT_EQ(b.roundNumberText(QStringLiteral("1.2001"), 2), QStringLiteral("1.21"));
    EXPECT_EQ(b.roundNumberText(QStringLiteral("-1.2"), 0), QStringLiteral("-2."));
    EXPECT_EQ(b.roundNumberText(QStringLiteral("1.2000"), 2), QStringLiteral("1.20"));
    b.setRoundMode(rmRound);
    EXPECT_EQ(b.roundNumberText(QStringLiteral("0.125"), 2), QStringLiteral("0.13"));
    EXPECT_EQ(b.roundNumberText(QStringLiteral("0.124"), 2), QStringLiteral("0.12"));
    EXPECT_EQ(b.roundNumberText(QStringLiteral("-0.96"), 1), QStringLiteral("-1.0"));
    EXPECT_EQ(b.roundNumberText(QStringLiteral("99.99"), 1), QStringLiteral("100.0"));
}

struct ValueCase {
    long double value;
    int figure;
    bool fixed;
    bool comma;
    RoundMode mode;
    const char* shown;
    long double after;
};

TEST(NumberValue, WritesShowTheFormattedTextAndKeepTheShownNumber) {
    const ValueCase cases[] = {
        {1234.5L, 2, true, true, rmDown, "1,234.50", 1234.5L},
        {1.29L, 1, false, false, rmDown, "1.2", 1.2L},
        {1.2L, 0, false, false, rmUp, "2", 2},
        {-1.2L, 0, false, false, rmUp, "-2", -2},
        {0.125L, 2, false, false, rmRound, "0.13", 0.13L},
        {0.999L, 2, false, false, rmRound, "1.00", 1},
        {-12.96L, 1, false, false, rmRound, "-13.0", -13},
        {1.5L, 2, false, false, rmDown, "1.5", 1.5L},
        {1.101L, 2, false, false, rmDown, "1.10", 1.1L},
        {-0.5L, -1, false, true, rmDown, "-0.5", -0.5L},
        {1234567.891L, -1, false, true, rmDown, "1,234,567.891", 1234567.891L},
        {3, 2, true, false, rmDown, "3.00", 3},
        {2.5L, 0, true, false, rmDown, "2", 2},
    };
    for (const ValueCase& c : cases) {
        Box b;
        b.setFigure(c.figure);
        b.setFixed(c.fixed);
        b.setComma(c.comma);
        b.setRoundMode(c.mode);
        b.setValue(c.value);
        EXPECT_EQ(b.numberText(), QString::fromLatin1(c.shown)) << double(c.value);
        EXPECT_EQ(floatToGeneral(b.value()), floatToGeneral(c.after)) << c.shown;
    }
}

TEST(NumberValue, PlusKeptZeroVisibleAndExit) {
    Box b;
    b.setNumberText(QStringLiteral("+5"));
    EXPECT_EQ(double(b.value()), 5.0);
    EXPECT_EQ(b.formatNumberText(), QStringLiteral("+5"));
    b.doExit();
    EXPECT_EQ(b.numberText(), QStringLiteral("+5"));

    Box empty;
    empty.setNumberText(QString());
    empty.doExit();
    EXPECT_EQ(empty.numberText(), QStringLiteral("0"));
    Box hidden;
    hidden.setZeroVisible(false);
    EXPECT_EQ(hidden.numberText(), QString());
    hidden.doExit();
    EXPECT_EQ(hidden.numberText(), QString());
    // Leaving the box fires no onChange, however the text changes.
    Box exiting;
    exiting.setFigure(1);
    exiting.setNumberText(QStringLiteral("1.26"));
    const int before = exiting.changes;
    exiting.doExit();
    EXPECT_EQ(exiting.numberText(), QStringLiteral("1.2"));
    EXPECT_EQ(exiting.changes, before);
}

TEST(NumberValue, LimitsAndArrowSteps) {
    Box b;
    b.setMax(10);
    b.setMin(1);
    b.setLimit(true);
    b.setValue(10);
    b.stepByArrow(adUp);
    EXPECT_EQ(double(b.value()), 10.0);
    b.setWrap(true);
    b.stepByArrow(adUp);
    EXPECT_EQ(double(b.value()), 1.0);
    b.stepByArrow(adDown);
    EXPECT_EQ(double(b.value()), 10.0);
    b.setIncrement(0.5L);
    b.stepByArrow(adDown);
    EXPECT_EQ(b.numberText(), QStringLiteral("9.5"));
    // A handler may change the new value.
    b.onArrowKeyChange = [](ControlObject*, ArrowKeyDirection d, Extended& v) {
        if (d == adUp) v = 3;
    };
    b.stepByArrow(adUp);
    EXPECT_EQ(double(b.value()), 3.0);
    b.setValue(50);
    EXPECT_EQ(b.numberText(), QStringLiteral("10"));

    // Typing beyond a bound: Value is held, the text shows what was typed.
    b.setNumberText(QStringLiteral("25"));
    EXPECT_EQ(double(b.value()), 10.0);
    EXPECT_EQ(b.numberText(), QStringLiteral("25"));

    Box m;
    m.setMin(8);
    m.setMax(5);
    EXPECT_EQ(double(m.min()), 5.0);
    m.setMin(7);
    EXPECT_EQ(double(m.max()), 7.0);
}

TEST(NumberTyping, SignsDigitLimitAndSeparator) {
    Box b;
    b.setNumberText(QStringLiteral("12"));
    for (int caret = 0; caret <= 2; ++caret) {
        b.setSelStart(caret);
        b.typeChar(QLatin1Char('-'));
        EXPECT_EQ(b.numberText(), QStringLiteral("-12"));
        b.typeChar(QLatin1Char('-'));
        EXPECT_EQ(b.numberText(), QStringLiteral("12"));
    }
    b.typeChar(QLatin1Char('+'));
    EXPECT_EQ(b.numberText(), QStringLiteral("+12"));
    b.typeChar(QLatin1Char('-'));
    EXPECT_EQ(b.numberText(), QStringLiteral("-12"));
    EXPECT_EQ(double(b.value()), -12.0);
    b.typeChar(QLatin1Char('x'));
    EXPECT_EQ(b.numberText(), QStringLiteral("-12"));

    Box d;
    d.setMaxIntLength(3);
    d.setNumberText(QStringLiteral("123"));
    d.typeChar(QLatin1Char('4'));
    EXPECT_EQ(d.numberText(), QStringLiteral("123"));
    d.typeChar(QLatin1Char('.'));
    d.typeChar(QLatin1Char('5'));
    EXPECT_EQ(d.numberText(), QStringLiteral("123.5"));
    d.typeChar(QLatin1Char('.'));
    EXPECT_EQ(d.numberText(), QStringLiteral("123.5"));
    d.setSelStart(1);
    d.setSelLength(1);
    d.typeChar(QLatin1Char('9'));
    EXPECT_EQ(d.numberText(), QStringLiteral("193.5"));
    d.setSelStart(3);
    d.setSelLength(1); // only the separator: no replacement
    d.typeChar(QLatin1Char('9'));
    EXPECT_EQ(d.numberText(), QStringLiteral("193.5"));

    Box c;
    c.setComma(true);
    c.setNumberText(QString());
    c.typeText(QStringLiteral("1234"));
    EXPECT_EQ(c.numberText(), QStringLiteral("1,234"));
    EXPECT_EQ(c.selStart(), 5);
    c.typeChar(QLatin1Char('5'));
    EXPECT_EQ(c.numberText(), QStringLiteral("12,345"));
    EXPECT_EQ(c.selStart(), 6);
    EXPECT_EQ(double(c.value()), 12345.0);
}

TEST(NumberTyping, PasteFilter) {
    Box b;
    b.setNumberText(QString());
    b.pasteText(QStringLiteral("-1a2.3.4"));
    EXPECT_EQ(b.numberText(), QStringLiteral("-12.34"));
    b.setSelStart(0);
    b.pasteText(QStringLiteral("5")); // in front of the sign: nothing
    EXPECT_EQ(b.numberText(), QStringLiteral("-12.34"));
    b.setSelStart(6);
    b.pasteText(QStringLiteral("+7-"));
    EXPECT_EQ(b.numberText(), QStringLiteral("-12.347"));
}

TEST(NumberHex, FormatsParsesAndFilters) {
    Box b;
    b.setValue(255);
    b.setNumberType(ntHex);
    EXPECT_EQ(b.numberText(), QStringLiteral("FF"));
    b.setFigure(4);
    EXPECT_EQ(b.numberText(), QStringLiteral("00FF"));
    b.setNumberText(QStringLiteral("1a"));
    EXPECT_EQ(double(b.value()), 26.0);
    EXPECT_FALSE(b.isValidChar(QLatin1Char('-')));
    EXPECT_FALSE(b.isValidChar(QLatin1Char('+'))); // "+" only after a "-"
    EXPECT_FALSE(b.isValidChar(QLatin1Char('g')));
    b.setValidMinus(true);
    b.setValue(-26);
    EXPECT_EQ(b.numberText(), QStringLiteral("-001A"));
    EXPECT_EQ(b.asText(), QStringLiteral("-1A"));
    EXPECT_TRUE(b.isValidChar(QLatin1Char('+')));
    b.typeChar(QLatin1Char('+'));
    EXPECT_EQ(b.numberText(), QStringLiteral("001A"));
    b.setValidMinus(false);
    b.setValue(-1);
    EXPECT_EQ(b.numberText(), QStringLiteral("FFFFFFFF"));
    EXPECT_EQ(double(b.value()), -1.0);
    // Wider than eight digits by figure: the leading zeros still convert.
    b.setFigure(10);
    b.setValue(255);
    EXPECT_EQ(b.numberText(), QStringLiteral("00000000FF"));
    EXPECT_EQ(double(b.value()), 255.0);
    b.setValue(-1);
    EXPECT_EQ(b.numberText(), QStringLiteral("00FFFFFFFF"));
    EXPECT_EQ(double(b.value()), -1.0);
    EXPECT_THROW(b.setNumberText(QStringLiteral("100000000")), ConvertError);
}

TEST(NumberValue, IntegerViewsAndConversionErrors) {
    Box b;
    b.setRoundMode(rmRound);
    b.setValue(2.5L);
    EXPECT_EQ(b.asInt64(), 3);
    b.setValue(-3e10L);
    EXPECT_EQ(b.asInt64(), -30000000000LL);
    EXPECT_EQ(b.intValue(), -2147483647 - 1);
    b.setCurrency(strToCurr(QStringLiteral("1234.5678")));
    EXPECT_EQ(b.numberText(), QStringLiteral("1234.5678"));
    EXPECT_EQ(currToStr(b.asCurrency()), QStringLiteral("1234.5678"));
    EXPECT_THROW(b.setNumberText(QStringLiteral("-.")), ConvertError);
}

} // namespace
