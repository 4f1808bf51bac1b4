// Currency texts: the shortest form, parsing with its rounding, and the
// sheet's three display forms.
#include "engine/currency.h"

#include <gtest/gtest.h>

namespace {

QString S(const char* t) {
    return QString::fromUtf8(t);
}

TEST(CurrToStr, ShortestText) {
    EXPECT_EQ(CurrToStr(Currency::FromRaw(0)), "0");
    EXPECT_EQ(CurrToStr(Currency::FromRaw(12345000)), "1234.5");
    EXPECT_EQ(CurrToStr(Currency::FromRaw(1)), "0.0001");
    EXPECT_EQ(CurrToStr(Currency::FromRaw(-2500)), "-0.25");
    EXPECT_EQ(CurrToStr(Currency::FromRaw(-12340000)), "-1234");
    EXPECT_EQ(CurrToStr(Currency::FromRaw(INT64_MAX)), "922337203685477.5807");
    EXPECT_EQ(CurrToStr(Currency::FromRaw(INT64_MIN)), "-922337203685477.5808");
}

TEST(StrToCurr, ParsesAndRoundsHalfToEven) {
    EXPECT_EQ(StrToCurr(S("1234.56789")).raw, 12345679);
    EXPECT_EQ(StrToCurr(S("0.00005")).raw, 0); // tie to even
    EXPECT_EQ(StrToCurr(S("0.00015")).raw, 2); // tie to even
    EXPECT_EQ(StrToCurr(S("0.000050001")).raw, 1);
    EXPECT_EQ(StrToCurr(S("-0.00015")).raw, -2);
    EXPECT_EQ(StrToCurr(S(" +12 ")).raw, 120000);
    EXPECT_EQ(StrToCurr(S(".5")).raw, 5000);
    EXPECT_EQ(StrToCurr(S("5.")).raw, 50000);
    EXPECT_EQ(StrToCurr(S("1.5e3")).raw, 15000000);
    EXPECT_EQ(StrToCurr(S("15E-1")).raw, 15000);
    EXPECT_EQ(StrToCurr(S("000123.4500")).raw, 1234500);
    EXPECT_EQ(StrToCurr(S("922337203685477.5807")).raw, INT64_MAX);
    EXPECT_EQ(StrToCurr(S("-922337203685477.5808")).raw, INT64_MIN);
}

TEST(StrToCurr, RejectsTextThatIsNoNumber) {
    for (const char* bad : {"", " ", "abc", "1.2.3", "1,234", "12a", "-", ".", "1e", "e5",
                            "922337203685477.5808", "1e20", "１２"}) {
        EXPECT_THROW(StrToCurr(S(bad)), ConvertError) << bad;
        EXPECT_EQ(StrToCurrDef(S(bad), Currency::FromRaw(7)).raw, 7) << bad;
    }
    try {
        StrToCurr(S("1.2.3"));
    } catch (const ConvertError& e) {
        EXPECT_TRUE(e.Message().contains(S("'1.2.3'")));
    }
}

TEST(StrToIntDef, NoDecimalPoint) {
    EXPECT_EQ(StrToIntDef(S("60"), 0), 60);
    EXPECT_EQ(StrToIntDef(S("-1"), 0), -1);
    EXPECT_EQ(StrToIntDef(S("1.5"), 0), 0);
    EXPECT_EQ(StrToIntDef(S(""), 0), 0);
    EXPECT_EQ(StrToIntDef(S("x"), 9), 9);
    EXPECT_EQ(StrToIntDef(S(" 12"), 0), 12);
    EXPECT_EQ(StrToIntDef(S("12 "), 0), 0);
    EXPECT_EQ(StrToIntDef(S("2147483647"), 0), 2147483647);
    EXPECT_EQ(StrToIntDef(S("-2147483648"), 0), INT32_MIN);
    EXPECT_EQ(StrToIntDef(S("2147483648"), 0), 0);
}

TEST(SheetForms, FormatAmount) {
    EXPECT_EQ(FormatAmount(StrToCurr(S("1234567"))), "1,234,567");
    EXPECT_EQ(FormatAmount(StrToCurr(S("-1234"))), "-1,234");
    EXPECT_EQ(FormatAmount(StrToCurr(S("0"))), "0");
    EXPECT_EQ(FormatAmount(StrToCurr(S("999.5"))), "1,000");
    EXPECT_EQ(FormatAmount(StrToCurr(S("-2.5"))), "-3");
    EXPECT_EQ(FormatAmount(StrToCurr(S("-0.4"))), "0");
    EXPECT_EQ(FormatAmount(StrToCurr(S("123"))), "123");
    EXPECT_EQ(FormatAmount(StrToCurr(S("123456.49"))), "123,456");
}

TEST(SheetForms, GeneralAndFixed) {
    EXPECT_EQ(FormatGeneral(StrToCurr(S("2214"))), "2214");
    EXPECT_EQ(FormatGeneral(StrToCurr(S("68.8"))), "68.8");
    EXPECT_EQ(FormatGeneral(StrToCurr(S("0"))), "0");
    EXPECT_EQ(FormatGeneral(StrToCurr(S("12345678901.2345"))), "12345678901.2345");
    EXPECT_EQ(FormatGeneral(StrToCurr(S("123456789012.3456"))), "123456789012.346");
    EXPECT_EQ(FormatGeneral(StrToCurr(S("123456789012345.5"))), "123456789012346");
    EXPECT_EQ(FormatGeneral(StrToCurr(S("1234567890123.45"))), "1234567890123.45");
    EXPECT_EQ(FormatGeneral(StrToCurr(S("-12345678901234.56"))), "-12345678901234.6");
    // At the ends of the range the rounded value passes the top: no wrap.
    EXPECT_EQ(FormatGeneral(Currency::FromRaw(INT64_MAX)), "922337203685478");
    EXPECT_EQ(FormatGeneral(Currency::FromRaw(INT64_MIN)), "-922337203685478");
    EXPECT_EQ(FormatFixed3(StrToCurr(S("0.123"))), "0.123");
    EXPECT_EQ(FormatFixed3(StrToCurr(S("0.1"))), "0.100");
    EXPECT_EQ(FormatFixed3(StrToCurr(S("0.1234"))), "0.123");
    EXPECT_EQ(FormatFixed3(StrToCurr(S("0.1235"))), "0.124");
    EXPECT_EQ(FormatFixed3(StrToCurr(S("-1.5"))), "-1.500");
    EXPECT_EQ(FormatFixed3(StrToCurr(S("0"))), "0.000");
}

} // namespace
