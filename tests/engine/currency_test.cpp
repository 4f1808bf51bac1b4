// Currency texts: the shortest form, parsing with its rounding, and the
// sheet's three display forms.
#include "engine/currency.h"

#include <gtest/gtest.h>

namespace {

QString s(const char* t) {
    return QString::fromUtf8(t);
}

TEST(CurrToStr, ShortestText) {
    EXPECT_EQ(currToStr(Currency::fromRaw(0)), "0");
    EXPECT_EQ(currToStr(Currency::fromRaw(12345000)), "1234.5");
    EXPECT_EQ(currToStr(Currency::fromRaw(1)), "0.0001");
    EXPECT_EQ(currToStr(Currency::fromRaw(-2500)), "-0.25");
    EXPECT_EQ(currToStr(Currency::fromRaw(-12340000)), "-1234");
    EXPECT_EQ(currToStr(Currency::fromRaw(INT64_MAX)), "922337203685477.5807");
    EXPECT_EQ(currToStr(Currency::fromRaw(INT64_MIN)), "-922337203685477.5808");
}

TEST(StrToCurr, ParsesAndRoundsHalfToEven) {
    EXPECT_EQ(strToCurr(s("1234.56789")).raw, 12345679);
    EXPECT_EQ(strToCurr(s("0.00005")).raw, 0); // tie to even
    EXPECT_EQ(strToCurr(s("0.00015")).raw, 2); // tie to even
    EXPECT_EQ(strToCurr(s("0.000050001")).raw, 1);
    EXPECT_EQ(strToCurr(s("-0.00015")).raw, -2);
    EXPECT_EQ(strToCurr(s(" +12 ")).raw, 120000);
    EXPECT_EQ(strToCurr(s(".5")).raw, 5000);
    EXPECT_EQ(strToCurr(s("5.")).raw, 50000);
    EXPECT_EQ(strToCurr(s("1.5e3")).raw, 15000000);
    EXPECT_EQ(strToCurr(s("15E-1")).raw, 15000);
    EXPECT_EQ(strToCurr(s("000123.4500")).raw, 1234500);
    EXPECT_EQ(strToCurr(s("922337203685477.5807")).raw, INT64_MAX);
    EXPECT_EQ(strToCurr(s("-922337203685477.5808")).raw, INT64_MIN);
}

TEST(StrToCurr, RejectsTextThatIsNoNumber) {
    for (const char* bad : {"", " ", "abc", "1.2.3", "1,234", "12a", "-", ".", "1e", "e5",
                            "922337203685477.5808", "1e20", "１２"}) {
        EXPECT_THROW(strToCurr(s(bad)), ConvertError) << bad;
        EXPECT_EQ(strToCurrDef(s(bad), Currency::fromRaw(7)).raw, 7) << bad;
    }
    try {
        strToCurr(s("1.2.3"));
    } catch (const ConvertError& e) {
        EXPECT_TRUE(e.message().contains(s("'1.2.3'")));
    }
}

TEST(StrToIntDef, NoDecimalPoint) {
    EXPECT_EQ(strToIntDef(s("60"), 0), 60);
    EXPECT_EQ(strToIntDef(s("-1"), 0), -1);
    EXPECT_EQ(strToIntDef(s("1.5"), 0), 0);
    EXPECT_EQ(strToIntDef(s(""), 0), 0);
    EXPECT_EQ(strToIntDef(s("x"), 9), 9);
    EXPECT_EQ(strToIntDef(s(" 12"), 0), 12);
    EXPECT_EQ(strToIntDef(s("12 "), 0), 0);
    EXPECT_EQ(strToIntDef(s("2147483647"), 0), 2147483647);
    EXPECT_EQ(strToIntDef(s("-2147483648"), 0), INT32_MIN);
    EXPECT_EQ(strToIntDef(s("2147483648"), 0), 0);
}

TEST(SheetForms, FormatAmount) {
    EXPECT_EQ(formatAmount(strToCurr(s("1234567"))), "1,234,567");
    EXPECT_EQ(formatAmount(strToCurr(s("-1234"))), "-1,234");
    EXPECT_EQ(formatAmount(strToCurr(s("0"))), "0");
    EXPECT_EQ(formatAmount(strToCurr(s("999.5"))), "1,000");
    EXPECT_EQ(formatAmount(strToCurr(s("-2.5"))), "-3");
    EXPECT_EQ(formatAmount(strToCurr(s("-0.4"))), "0");
    EXPECT_EQ(formatAmount(strToCurr(s("123"))), "123");
    EXPECT_EQ(formatAmount(strToCurr(s("123456.49"))), "123,456");
}

TEST(SheetForms, GeneralAndFixed) {
    EXPECT_EQ(formatGeneral(strToCurr(s("2214"))), "2214");
    EXPECT_EQ(formatGeneral(strToCurr(s("68.8"))), "68.8");
    EXPECT_EQ(formatGeneral(strToCurr(s("0"))), "0");
    EXPECT_EQ(formatGeneral(strToCurr(s("12345678901.2345"))), "12345678901.2345");
    EXPECT_EQ(formatGeneral(strToCurr(s("123456789012.3456"))), "123456789012.346");
    EXPECT_EQ(formatGeneral(strToCurr(s("123456789012345.5"))), "123456789012346");
    EXPECT_EQ(formatGeneral(strToCurr(s("1234567890123.45"))), "1234567890123.45");
    EXPECT_EQ(formatGeneral(strToCurr(s("-12345678901234.56"))), "-12345678901234.6");
    // At the ends of the range the rounded value passes the top: no wrap.
    EXPECT_EQ(formatGeneral(Currency::fromRaw(INT64_MAX)), "922337203685478");
    EXPECT_EQ(formatGeneral(Currency::fromRaw(INT64_MIN)), "-922337203685478");
    EXPECT_EQ(formatFixed3(strToCurr(s("0.123"))), "0.123");
    EXPECT_EQ(formatFixed3(strToCurr(s("0.1"))), "0.100");
    EXPECT_EQ(formatFixed3(strToCurr(s("0.1234"))), "0.123");
    EXPECT_EQ(formatFixed3(strToCurr(s("0.1235"))), "0.124");
    EXPECT_EQ(formatFixed3(strToCurr(s("-1.5"))), "-1.500");
    EXPECT_EQ(formatFixed3(strToCurr(s("0"))), "0.000");
}

} // namespace
