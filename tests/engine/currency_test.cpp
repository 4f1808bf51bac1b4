// Currency texts: the shortest form, parsing with its rounding, and the
// sheet's three display forms.
#include "engine/currency.h"
#include "support/testing.h"

namespace {

// Cases "input = expected" separated by "; ", each checked with f.
void check(const char* cases, const std::function<QString(const QString&)>& f) {
    for (const QString& c : QString::fromUtf8(cases).split("; "))
        EXPECT_EQ(f(c.section(" = ", 0, 0)), c.section(" = ", 1)) << c.toStdString();
}
QString raw(const QString& text) {
    return QString::number(strToCurr(text).raw);
}

TEST(Currency, TextParsingAndSheetForms) {
    const auto shortest = [](const QString& r) {
        return currToStr(Currency::fromRaw(r.toLongLong()));
    };
    check("0 = 0; 12345000 = 1234.5; 1 = 0.0001; -2500 = -0.25; -12340000 = -1234; "
          "9223372036854775807 = 922337203685477.5807; "
          "-9223372036854775808 = -922337203685477.5808",
          shortest);
    // Half to even on the exact digits; blanks, signs, points and exponents.
    check("1234.56789 = 12345679; 0.00005 = 0; 0.00015 = 2; 0.000050001 = 1; -0.00015 = -2; "
          " +12  = 120000; .5 = 5000; 5. = 50000; 1.5e3 = 15000000; 15E-1 = 15000; "
          "000123.4500 = 1234500; 922337203685477.5807 = 9223372036854775807; "
          "-922337203685477.5808 = -9223372036854775808",
          raw);
    for (const char* bad : {"", " ", "abc", "1.2.3", "1,234", "12a", "-", ".", "1e", "e5",
                            "922337203685477.5808", "1e20", "１２"}) {
        EXPECT_THROW(strToCurr(QString::fromUtf8(bad)), ConvertError) << bad;
        EXPECT_EQ(strToCurrDef(QString::fromUtf8(bad), Currency::fromRaw(7)).raw, 7) << bad;
    }
    // Integers: digits only, the default 7 for anything else.
    check("60 = 60; -1 = -1; 1.5 = 7;  = 7; x = 7;  12 = 12; 12  = 7; 0 = 0; "
          "2147483647 = 2147483647; -2147483648 = -2147483648; 2147483648 = 7",
          [](const QString& t) { return QString::number(strToIntDef(t, 7)); });
    // The sheet's forms.
    check("1234567 = 1,234,567; -1234 = -1,234; 0 = 0; 999.5 = 1,000; -2.5 = -3; -0.4 = 0; "
          "123 = 123; 123456.49 = 123,456",
          [](const QString& t) { return formatAmount(strToCurr(t)); });
    check("2214 = 2214; 68.8 = 68.8; 0 = 0; 12345678901.2345 = 12345678901.2345; "
          "123456789012.3456 = 123456789012.346; 123456789012345.5 = 123456789012346; "
          "1234567890123.45 = 1234567890123.45; -12345678901234.56 = -12345678901234.6; "
          // At the ends of the range the rounded value passes the top: no wrap.
          "922337203685477.5807 = 922337203685478; -922337203685477.5808 = -922337203685478",
          [](const QString& t) { return formatGeneral(strToCurr(t)); });
    check("0.123 = 0.123; 0.1 = 0.100; 0.1234 = 0.123; 0.1235 = 0.124; -1.5 = -1.500; 0 = 0.000",
          [](const QString& t) { return formatFixed3(strToCurr(t)); });
}

} // namespace
