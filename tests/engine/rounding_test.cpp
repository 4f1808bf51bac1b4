// The rounding operations against the worked tables of the price rules.
#include "engine/rounding.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <vector>

namespace {

Currency C(const QString& text) {
    return strToCurr(text);
}
std::string S(Currency c) {
    return currToStr(c).toStdString();
}
const Currency Up = C("0.9"), Down = C("0"), Half = C("0.5"), One = C("1");

// f rounding up, down and half: "up down half".
template <class F> std::string udh(F f) {
    return S(f(Up)) + ' ' + S(f(Down)) + ' ' + S(f(Half));
}

// Rows of a worked table: a figure, then "up down half" at each step; "=" is the figure itself.
template <class F>
void checkTable(const std::vector<const char*>& steps, const std::vector<const char*>& rows, F f) {
    for (const char* row : rows) {
        const QStringList w = QString::fromLatin1(row).split(' ', Qt::SkipEmptyParts);
        ASSERT_EQ(w.size(), 1 + 3 * int(steps.size())) << row;
        for (int s = 0; s < int(steps.size()); ++s) {
            QStringList want;
            for (int i = 1 + 3 * s; i < 4 + 3 * s; ++i)
                want << (w[i] == "=" ? w[0] : w[i]);
            EXPECT_EQ(udh([&](Currency e) { return f(C(w[0]), C(steps[s]), e); }),
                      want.join(' ').toStdString())
                << row << " at " << steps[s];
        }
    }
}

TEST(RoundElement, WorkedTableAtFactorOne) {
    checkTable({"1", "10", "100", "1000"},
               {"1234.5   1235 1234 1235  = = =  = = =  = = =",
                "1234.1   1235 1234 1234  = = =  = = =  = = =",
                "1234.09  1234 1234 1234  1234.1 1234 1234.1  = = =  = = =",
                "1234.05  1234 1234 1234  1234.1 1234 1234.1  = = =  = = =",
                "12.345   13 12 12  12.4 12.3 12.3  12.35 12.34 12.35  = = =",
                "0.04     0 0 0  0.1 0 0  = = =  = = ="},
               [](Currency x, Currency d, Currency e) { return roundElement(x, One, d, e); });
}

TEST(RoundDigits, WorkedTable) {
    checkTable({"10", "100", "1000", "3", "4"},
               {"99       100 90 100  100 0 100  0 0 0  = = =  = = =",
                "999      1000 990 1000  1000 900 1000  1000 0 1000  = = =  = = =",
                "1205     1210 1200 1210  1200 1200 1200  2000 1000 1000  1210 1200 1210  = = =",
                "1234     1240 1230 1230  1300 1200 1200  2000 1000 1000  1240 1230 1230  = = =",
                "1250     = = =  1300 1200 1300  2000 1000 1000  = = =  = = =",
                "9999     10000 9990 10000  10000 9900 10000  10000 9000 10000  10000 9990 10000"
                "  = = =",
                "12345    12350 12340 12350  12400 12300 12300  13000 12000 12000  12400 12300 "
                "12300  12350 12340 12350",
                "123456   123460 123450 123460  123500 123400 123500  124000 123000 123000  "
                "124000 123000 123000  123500 123400 123500",
                "1234567  1234570 1234560 1234570  1234600 1234500 1234600  1235000 1234000 "
                "1235000  1240000 1230000 1230000  1235000 1234000 1235000"},
               [](Currency x, Currency s, Currency e) { return roundDigits(x, s, e); });
}

TEST(Rounding, SingleCases) {
    const auto el = [](const char* x, Currency e) { return S(roundElement(C(x), One, One, e)); };
    // Rounding up adds 0.9 and cuts: no ceiling.
    const char* up[][2] = {{"12.05", "12"},    {"12.10", "13"}, {"12.00", "12"},
                           {"2214.0", "2214"}, {"68.8", "69"},  {"43.05", "43"}};
    for (const auto& [x, want] : up)
        EXPECT_EQ(el(x, Up), want) << x;
    // Negative amounts cut toward zero.
    EXPECT_EQ(el("-12.5", Half), "-12");
    EXPECT_EQ(el("-12.5", Up), "-11");
    // 946 + 301 + 43 = 1290 at factor 0.08 gives 103.2, up to 104.
    EXPECT_EQ(
        S(roundElement(__int128(C("946").raw) + C("301").raw + C("43").raw, C("0.08"), One, Up)),
        "104");
    EXPECT_EQ(S(wholeAmount(__int128(C("1234.5").raw) + C("0.4").raw, Up)), "1235");
    EXPECT_EQ(S(wholeAmount(C("1234.05").raw, Up)), "1234");
    EXPECT_EQ(udh([](Currency e) { return wholeAmount(C("4091.2").raw, e); }), "4092 4091 4091");
    // list, rate, then up down half
    for (const char* row :
         {"1234 70  864 863 864", "999 33.3  333 332 333", "1234.56 65  803 802 802",
          "1000 85  850 850 850", "98765.4321 0  0 0 0"}) {
        const QStringList w = QString::fromLatin1(row).split(' ', Qt::SkipEmptyParts);
        EXPECT_EQ(udh([&](Currency e) { return ratePrice(C(w[0]), C(w[1]), e); }),
                  w.mid(2).join(' ').toStdString());
    }
}

TEST(RoundDigits, EdgeCases) {
    const auto rd = [](const char* x, const char* s, Currency e) {
        return S(roundDigits(C(x), C(s), e));
    };
    EXPECT_EQ(rd("1210", "100", Up), "1300");
    // No more characters than digits: unchanged.
    EXPECT_EQ(rd("1000", "4", Up), "1000");
    EXPECT_EQ(rd("0", "3", Up), "0");
    EXPECT_EQ(rd("0", "4", Up), "0");
    // The minus sign counts in the text length: L = 6, m = 1000.
    EXPECT_EQ(rd("-12345", "3", Down), "-12000");
    // S of 0, a negative entry or any value outside the table leaves x.
    for (const char* s : {"0", "-1", "-2", "1", "7", "2"})
        EXPECT_EQ(rd("123456", s, Up), "123456") << s;
    // A decimal point counts as a character too: "12.5" has L = 4, m = 10.
    EXPECT_EQ(rd("12.5", "3", Down), "10");
    EXPECT_EQ(rd("-0.25", "4", Down), "0"); // L = 5, m = 10
    EXPECT_EQ(rd("1.25", "3", Down), "0");  // L = 4, m = 10
    // 12 characters at S = 3: m = 10^9 still fits 32 bits; 13 at S = 3, 14 at S = 4 do not.
    EXPECT_EQ(rd("123456789012", "3", Down), "123000000000");
    EXPECT_EQ(rd("1234567890123", "4", Down), "1234000000000");
    EXPECT_THROW(rd("1234567890123", "3", Down), IntOverflow);
    EXPECT_THROW(rd("12345678901234", "4", Down), IntOverflow);
}

TEST(Conversions, CutAndStoreRangesAndRounding) {
    // cut truncates toward zero, store rounds half to even, both within 64 bits.
    EXPECT_EQ(std::vector<std::int64_t>({cut(2.9L), cut(-2.9L), cut(-0.99L), store(2.5L),
                                         store(3.5L), store(-2.5L), cut(-9223372036854775808.0L)}),
              std::vector<std::int64_t>({2, -2, 0, 2, 4, -2, INT64_MIN}));
    for (Extended x : {9223372036854775808.0L, -9223372036854775809.0L, __builtin_nanl("")})
        EXPECT_THROW(cut(x), InvalidOp) << double(x);
    EXPECT_THROW(store(9223372036854775808.0L), InvalidOp);
    // A product beyond 64 bits: the store of the result fails.
    const Currency huge = Currency::fromRaw(INT64_MAX);
    EXPECT_THROW(roundElement(huge, C("100"), One, Down), InvalidOp);
    EXPECT_THROW(ratePrice(huge, C("1000"), Down), InvalidOp);
    EXPECT_THROW(roundDigits(huge, C("10"), Up), InvalidOp);
}

} // namespace
