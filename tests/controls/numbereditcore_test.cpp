// The number box logic without a window: formatting of Value writes,
// rounding on the text, parsing, limits, arrow steps, signs, the digit
// limit, the paste filter and hexadecimal mode.
#include "controls/numbereditcore.h"

#include <gtest/gtest.h>

namespace {

struct Box : NumberEditCore {
    int changes = 0;
    Box() {
        OnChange = [this](ControlObject*) { ++changes; };
    }
};

TEST(NumberText, PlainAndGeneralForms) {
    EXPECT_EQ(PlainNumberText(1.5e-7L), QStringLiteral("0.00000015"));
    EXPECT_EQ(PlainNumberText(1.5e20L), QStringLiteral("15") + QString(19, QLatin1Char('0')));
    EXPECT_EQ(PlainNumberText(-2.5e-6L), QStringLiteral("-0.0000025"));
    EXPECT_EQ(FloatToGeneral(1.5e-7L), QStringLiteral("1.5E-7"));
    EXPECT_EQ(FloatToGeneral(1234.5L), QStringLiteral("1234.5"));
    EXPECT_EQ(FloatToGeneral(0.1L + 0.2L), QStringLiteral("0.3"));
    EXPECT_EQ(FormatThousands(-1234567), QStringLiteral("-1,234,567"));
    EXPECT_EQ(FormatThousands(999), QStringLiteral("999"));
    EXPECT_THROW(TextToFloat(QStringLiteral(".")), ConvertError);
    EXPECT_THROW(TextToInt64(QStringLiteral("99999999999999999999")), ConvertError);
    EXPECT_THROW(TextToInt32(QStringLiteral("3000000000")), ConvertError);
}

TEST(NumberText, RoundingWorksOnTheDigits) {
    Box b;
    b.SetRoundMode(rmDown);
    EXPECT_EQ(b.RoundNumberText(QStringLiteral("1.29"), 1), QStringLiteral("1.2"));
    EXPECT_EQ(b.RoundNumberText(QStringLiteral("-1.29"), 1), QStringLiteral("-1.2"));
    EXPECT_EQ(b.RoundNumberText(QStringLiteral("1.2"), 0), QStringLiteral("1."));
    EXPECT_EQ(b.RoundNumberText(QStringLiteral("1.2"), 3), QStringLiteral("1.2"));
    EXPECT_EQ(b.RoundNumberText(QStringLiteral("1,234.5"), -1), QStringLiteral("1234.5"));
    b.SetRoundMode(rmUp);
    EXPECT_EQ(b.RoundNumberText(QStringLiteral("1.2001"), 2), QStringLiteral("1.21"));
    EXPECT_EQ(b.RoundNumberText(QStringLiteral("-1.2"), 0), QStringLiteral("-2."));
    EXPECT_EQ(b.RoundNumberText(QStringLiteral("1.2000"), 2), QStringLiteral("1.20"));
    b.SetRoundMode(rmRound);
    EXPECT_EQ(b.RoundNumberText(QStringLiteral("0.125"), 2), QStringLiteral("0.13"));
    EXPECT_EQ(b.RoundNumberText(QStringLiteral("0.124"), 2), QStringLiteral("0.12"));
    EXPECT_EQ(b.RoundNumberText(QStringLiteral("-0.96"), 1), QStringLiteral("-1.0"));
    EXPECT_EQ(b.RoundNumberText(QStringLiteral("99.99"), 1), QStringLiteral("100.0"));
}

struct ValueCase {
    long double value;
    int figure;
    bool fixed;
    bool comma;
    TRoundMode mode;
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
        b.SetFigure(c.figure);
        b.SetFixed(c.fixed);
        b.SetComma(c.comma);
        b.SetRoundMode(c.mode);
        b.SetValue(c.value);
        EXPECT_EQ(b.Text(), QString::fromLatin1(c.shown)) << double(c.value);
        EXPECT_EQ(FloatToGeneral(b.Value()), FloatToGeneral(c.after)) << c.shown;
    }
}

TEST(NumberValue, PlusKeptZeroVisibleAndExit) {
    Box b;
    b.SetText(QStringLiteral("+5"));
    EXPECT_EQ(double(b.Value()), 5.0);
    EXPECT_EQ(b.FormatNumberText(), QStringLiteral("+5"));
    b.DoExit();
    EXPECT_EQ(b.Text(), QStringLiteral("+5"));

    Box empty;
    empty.SetText(QString());
    empty.DoExit();
    EXPECT_EQ(empty.Text(), QStringLiteral("0"));
    Box hidden;
    hidden.SetZeroVisible(false);
    EXPECT_EQ(hidden.Text(), QString());
    hidden.DoExit();
    EXPECT_EQ(hidden.Text(), QString());
    // Leaving the box fires no OnChange, however the text changes.
    Box exiting;
    exiting.SetFigure(1);
    exiting.SetText(QStringLiteral("1.26"));
    const int before = exiting.changes;
    exiting.DoExit();
    EXPECT_EQ(exiting.Text(), QStringLiteral("1.2"));
    EXPECT_EQ(exiting.changes, before);
}

TEST(NumberValue, LimitsAndArrowSteps) {
    Box b;
    b.SetMax(10);
    b.SetMin(1);
    b.SetLimit(true);
    b.SetValue(10);
    b.StepByArrow(adUp);
    EXPECT_EQ(double(b.Value()), 10.0);
    b.SetWrap(true);
    b.StepByArrow(adUp);
    EXPECT_EQ(double(b.Value()), 1.0);
    b.StepByArrow(adDown);
    EXPECT_EQ(double(b.Value()), 10.0);
    b.SetIncrement(0.5L);
    b.StepByArrow(adDown);
    EXPECT_EQ(b.Text(), QStringLiteral("9.5"));
    // A handler may change the new value.
    b.OnArrowKeyChange = [](ControlObject*, ArrowKeyDirection d, Extended& v) {
        if (d == adUp) v = 3;
    };
    b.StepByArrow(adUp);
    EXPECT_EQ(double(b.Value()), 3.0);
    b.SetValue(50);
    EXPECT_EQ(b.Text(), QStringLiteral("10"));

    // Typing beyond a bound: Value is held, the text shows what was typed.
    b.SetText(QStringLiteral("25"));
    EXPECT_EQ(double(b.Value()), 10.0);
    EXPECT_EQ(b.Text(), QStringLiteral("25"));

    Box m;
    m.SetMin(8);
    m.SetMax(5);
    EXPECT_EQ(double(m.Min()), 5.0);
    m.SetMin(7);
    EXPECT_EQ(double(m.Max()), 7.0);
}

TEST(NumberTyping, SignsDigitLimitAndSeparator) {
    Box b;
    b.SetText(QStringLiteral("12"));
    for (int caret = 0; caret <= 2; ++caret) {
        b.SetSelStart(caret);
        b.TypeChar(QLatin1Char('-'));
        EXPECT_EQ(b.Text(), QStringLiteral("-12"));
        b.TypeChar(QLatin1Char('-'));
        EXPECT_EQ(b.Text(), QStringLiteral("12"));
    }
    b.TypeChar(QLatin1Char('+'));
    EXPECT_EQ(b.Text(), QStringLiteral("+12"));
    b.TypeChar(QLatin1Char('-'));
    EXPECT_EQ(b.Text(), QStringLiteral("-12"));
    EXPECT_EQ(double(b.Value()), -12.0);
    b.TypeChar(QLatin1Char('x'));
    EXPECT_EQ(b.Text(), QStringLiteral("-12"));

    Box d;
    d.SetMaxIntLength(3);
    d.SetText(QStringLiteral("123"));
    d.TypeChar(QLatin1Char('4'));
    EXPECT_EQ(d.Text(), QStringLiteral("123"));
    d.TypeChar(QLatin1Char('.'));
    d.TypeChar(QLatin1Char('5'));
    EXPECT_EQ(d.Text(), QStringLiteral("123.5"));
    d.TypeChar(QLatin1Char('.'));
    EXPECT_EQ(d.Text(), QStringLiteral("123.5"));
    d.SetSelStart(1);
    d.SetSelLength(1);
    d.TypeChar(QLatin1Char('9'));
    EXPECT_EQ(d.Text(), QStringLiteral("193.5"));
    d.SetSelStart(3);
    d.SetSelLength(1); // only the separator: no replacement
    d.TypeChar(QLatin1Char('9'));
    EXPECT_EQ(d.Text(), QStringLiteral("193.5"));

    Box c;
    c.SetComma(true);
    c.SetText(QString());
    c.TypeText(QStringLiteral("1234"));
    EXPECT_EQ(c.Text(), QStringLiteral("1,234"));
    EXPECT_EQ(c.SelStart(), 5);
    c.TypeChar(QLatin1Char('5'));
    EXPECT_EQ(c.Text(), QStringLiteral("12,345"));
    EXPECT_EQ(c.SelStart(), 6);
    EXPECT_EQ(double(c.Value()), 12345.0);
}

TEST(NumberTyping, PasteFilter) {
    Box b;
    b.SetText(QString());
    b.PasteText(QStringLiteral("-1a2.3.4"));
    EXPECT_EQ(b.Text(), QStringLiteral("-12.34"));
    b.SetSelStart(0);
    b.PasteText(QStringLiteral("5")); // in front of the sign: nothing
    EXPECT_EQ(b.Text(), QStringLiteral("-12.34"));
    b.SetSelStart(6);
    b.PasteText(QStringLiteral("+7-"));
    EXPECT_EQ(b.Text(), QStringLiteral("-12.347"));
}

TEST(NumberHex, FormatsParsesAndFilters) {
    Box b;
    b.SetValue(255);
    b.SetNumberType(ntHex);
    EXPECT_EQ(b.Text(), QStringLiteral("FF"));
    b.SetFigure(4);
    EXPECT_EQ(b.Text(), QStringLiteral("00FF"));
    b.SetText(QStringLiteral("1a"));
    EXPECT_EQ(double(b.Value()), 26.0);
    EXPECT_FALSE(b.IsValidChar(QLatin1Char('-')));
    EXPECT_FALSE(b.IsValidChar(QLatin1Char('+'))); // "+" only after a "-"
    EXPECT_FALSE(b.IsValidChar(QLatin1Char('g')));
    b.SetValidMinus(true);
    b.SetValue(-26);
    EXPECT_EQ(b.Text(), QStringLiteral("-001A"));
    EXPECT_EQ(b.AsText(), QStringLiteral("-1A"));
    EXPECT_TRUE(b.IsValidChar(QLatin1Char('+')));
    b.TypeChar(QLatin1Char('+'));
    EXPECT_EQ(b.Text(), QStringLiteral("001A"));
    b.SetValidMinus(false);
    b.SetValue(-1);
    EXPECT_EQ(b.Text(), QStringLiteral("FFFFFFFF"));
    EXPECT_EQ(double(b.Value()), -1.0);
    // Wider than eight digits by Figure: the leading zeros still convert.
    b.SetFigure(10);
    b.SetValue(255);
    EXPECT_EQ(b.Text(), QStringLiteral("00000000FF"));
    EXPECT_EQ(double(b.Value()), 255.0);
    b.SetValue(-1);
    EXPECT_EQ(b.Text(), QStringLiteral("00FFFFFFFF"));
    EXPECT_EQ(double(b.Value()), -1.0);
    EXPECT_THROW(b.SetText(QStringLiteral("100000000")), ConvertError);
}

TEST(NumberValue, IntegerViewsAndConversionErrors) {
    Box b;
    b.SetRoundMode(rmRound);
    b.SetValue(2.5L);
    EXPECT_EQ(b.AsInt64(), 3);
    b.SetValue(-3e10L);
    EXPECT_EQ(b.AsInt64(), -30000000000LL);
    EXPECT_EQ(b.IntValue(), -2147483647 - 1);
    b.SetCurrency(StrToCurr(QStringLiteral("1234.5678")));
    EXPECT_EQ(b.Text(), QStringLiteral("1234.5678"));
    EXPECT_EQ(CurrToStr(b.AsCurrency()), QStringLiteral("1234.5678"));
    EXPECT_THROW(b.SetText(QStringLiteral("-.")), ConvertError);
}

} // namespace
