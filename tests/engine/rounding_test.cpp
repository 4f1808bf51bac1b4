// The rounding operations against the worked tables of the price rules.
#include "engine/rounding.h"
#include "support/testing.h"

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

// Cases "arguments = result" separated by "; ", each checked with f on the arguments.
template <class F> void check(const char* cases, F f) {
    for (const QString& c : QString::fromLatin1(cases).split("; ")) {
        const QStringList w = c.section(" = ", 0, 0).split(' ');
        EXPECT_EQ(f(w), c.section(" = ", 1).toStdString()) << c.toStdString();
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

TEST(RoundDigits, WorkedTableAndEdgeCases) {
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

    // The edges: x, S and the fraction. No more characters than digits: unchanged. The minus sign
    // counts in the text length: L = 6, m = 1000. S of 0, a negative entry or any value outside the
    // table leaves x. A decimal point counts as a character too: "12.5" has L = 4, m = 10;
    // "-0.25" L = 5, m = 10; "1.25" L = 4, m = 10. 12 characters at S = 3: m = 10^9 still
    // fits 32 bits.
    check("1210 100 0.9 = 1300; 1000 4 0.9 = 1000; 0 3 0.9 = 0; 0 4 0.9 = 0; "
          "-12345 3 0 = -12000; 123456 0 0.9 = 123456; 123456 -1 0.9 = 123456; "
          "123456 -2 0.9 = 123456; 123456 1 0.9 = 123456; 123456 7 0.9 = 123456; "
          "123456 2 0.9 = 123456; 12.5 3 0 = 10; -0.25 4 0 = 0; 1.25 3 0 = 0; "
          "123456789012 3 0 = 123000000000; 1234567890123 4 0 = 1234000000000",
          [](const QStringList& w) { return S(roundDigits(C(w[0]), C(w[1]), C(w[2]))); });
    // 13 characters at S = 3, 14 at S = 4 do not fit.
    EXPECT_THROW(roundDigits(C("1234567890123"), C("3"), Down), IntOverflow);
    EXPECT_THROW(roundDigits(C("12345678901234"), C("4"), Down), IntOverflow);
}

TEST(Rounding, SingleCases) {
    // x and the fraction: rounding up adds 0.9 and cuts, no ceiling; negative amounts cut
    // toward zero.
    check("12.05 0.9 = 12; 12.10 0.9 = 13; 12.00 0.9 = 12; 2214.0 0.9 = 2214; 68.8 0.9 = 69; "
          "43.05 0.9 = 43; -12.5 0.5 = -12; -12.5 0.9 = -11",
          [](const QStringList& w) { return S(roundElement(C(w[0]), One, One, C(w[1]))); });
    // 946 + 301 + 43 = 1290 at factor 0.08 gives 103.2, up to 104.
    EXPECT_EQ(
        S(roundElement(__int128(C("946").raw) + C("301").raw + C("43").raw, C("0.08"), One, Up)),
        "104");
    EXPECT_EQ(S(wholeAmount(__int128(C("1234.5").raw) + C("0.4").raw, Up)), "1235");
    EXPECT_EQ(S(wholeAmount(C("1234.05").raw, Up)), "1234");
    EXPECT_EQ(udh([](Currency e) { return wholeAmount(C("4091.2").raw, e); }), "4092 4091 4091");
    // list and rate: up down half
    check("1234 70 = 864 863 864; 999 33.3 = 333 332 333; 1234.56 65 = 803 802 802; "
          "1000 85 = 850 850 850; 98765.4321 0 = 0 0 0",
          [](const QStringList& w) {
              return udh([&](Currency e) { return ratePrice(C(w[0]), C(w[1]), e); });
          });
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
