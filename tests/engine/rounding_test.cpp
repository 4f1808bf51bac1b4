// The rounding operations against the worked tables of the price rules.
#include "engine/rounding.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

Currency C(const std::string& text) {
    return strToCurr(QString::fromStdString(text));
}
const Currency Up = C("0.9"), Down = C("0"), Half = C("0.5");

struct Triple {
    const char* up;
    const char* down;
    const char* half;
};

TEST(RoundElement, WorkedTableFactorOne) {
    struct Row {
        const char* base;
        Triple d1, d10, d100, d1000;
    };
    const std::vector<Row> rows = {
        {"1234.5",
         {"1235", "1234", "1235"},
         {"1234.5", "1234.5", "1234.5"},
         {"1234.5", "1234.5", "1234.5"},
         {"1234.5", "1234.5", "1234.5"}},
        {"1234.1",
         {"1235", "1234", "1234"},
         {"1234.1", "1234.1", "1234.1"},
         {"1234.1", "1234.1", "1234.1"},
         {"1234.1", "1234.1", "1234.1"}},
        {"1234.09",
         {"1234", "1234", "1234"},
         {"1234.1", "1234", "1234.1"},
         {"1234.09", "1234.09", "1234.09"},
         {"1234.09", "1234.09", "1234.09"}},
        {"1234.05",
         {"1234", "1234", "1234"},
         {"1234.1", "1234", "1234.1"},
         {"1234.05", "1234.05", "1234.05"},
         {"1234.05", "1234.05", "1234.05"}},
        {"12.345",
         {"13", "12", "12"},
         {"12.4", "12.3", "12.3"},
         {"12.35", "12.34", "12.35"},
         {"12.345", "12.345", "12.345"}},
        {"0.04",
         {"0", "0", "0"},
         {"0.1", "0", "0"},
         {"0.04", "0.04", "0.04"},
         {"0.04", "0.04", "0.04"}},
    };
    for (const Row& row : rows) {
        const Currency base = C(row.base);
        const std::pair<const char*, const Triple*> cols[] = {
            {"1", &row.d1}, {"10", &row.d10}, {"100", &row.d100}, {"1000", &row.d1000}};
        for (const auto& [digits, t] : cols) {
            SCOPED_TRACE(std::string(row.base) + " D=" + digits);
            const Currency d = C(digits);
            EXPECT_EQ(currToStr(roundElement(base, C("1"), d, Up)), t->up);
            EXPECT_EQ(currToStr(roundElement(base, C("1"), d, Down)), t->down);
            EXPECT_EQ(currToStr(roundElement(base, C("1"), d, Half)), t->half);
        }
    }
}

TEST(RoundElement, RoundingUpIsNoCeiling) {
    EXPECT_EQ(currToStr(roundElement(C("12.05"), C("1"), C("1"), Up)), "12");
    EXPECT_EQ(currToStr(roundElement(C("12.10"), C("1"), C("1"), Up)), "13");
    EXPECT_EQ(currToStr(roundElement(C("12.00"), C("1"), C("1"), Up)), "12");
    EXPECT_EQ(currToStr(roundElement(C("2214.0"), C("1"), C("1"), Up)), "2214");
    EXPECT_EQ(currToStr(roundElement(C("68.8"), C("1"), C("1"), Up)), "69");
    EXPECT_EQ(currToStr(roundElement(C("43.05"), C("1"), C("1"), Up)), "43");
}

TEST(RoundElement, NegativeAmountsCutTowardZero) {
    EXPECT_EQ(currToStr(roundElement(C("-12.5"), C("1"), C("1"), Half)), "-12");
    EXPECT_EQ(currToStr(roundElement(C("-12.5"), C("1"), C("1"), Up)), "-11");
}

TEST(RoundElement, SumOfRawsAsBase) {
    // 946 + 301 + 43 = 1290 at factor 0.08 gives 103.2, up to 104.
    const __int128 sum = __int128(C("946").raw) + C("301").raw + C("43").raw;
    EXPECT_EQ(currToStr(roundElement(sum, C("0.08"), C("1"), Up)), "104");
}

TEST(WholeAmount, CutsToWholeNumber) {
    EXPECT_EQ(currToStr(wholeAmount(__int128(C("1234.5").raw) + C("0.4").raw, Up)), "1235");
    EXPECT_EQ(currToStr(wholeAmount(C("1234.05").raw, Up)), "1234");
    EXPECT_EQ(currToStr(wholeAmount(C("4091.2").raw, Down)), "4091");
    EXPECT_EQ(currToStr(wholeAmount(C("4091.2").raw, Half)), "4091");
    EXPECT_EQ(currToStr(wholeAmount(C("4091.2").raw, Up)), "4092");
}

TEST(RatePrice, WorkedValues) {
    struct Case {
        const char* list;
        const char* rate;
        Triple t;
    };
    const Case cases[] = {
        {"1234", "70", {"864", "863", "864"}},    {"999", "33.3", {"333", "332", "333"}},
        {"1234.56", "65", {"803", "802", "802"}}, {"1000", "85", {"850", "850", "850"}},
        {"98765.4321", "0", {"0", "0", "0"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.list) + " at " + c.rate);
        EXPECT_EQ(currToStr(ratePrice(C(c.list), C(c.rate), Up)), c.t.up);
        EXPECT_EQ(currToStr(ratePrice(C(c.list), C(c.rate), Down)), c.t.down);
        EXPECT_EQ(currToStr(ratePrice(C(c.list), C(c.rate), Half)), c.t.half);
    }
}

TEST(RoundDigits, WorkedTable) {
    struct Row {
        const char* x;
        Triple s10, s100, s1000, s3, s4;
    };
    const std::vector<Row> rows = {
        {"99",
         {"100", "90", "100"},
         {"100", "0", "100"},
         {"0", "0", "0"},
         {"99", "99", "99"},
         {"99", "99", "99"}},
        {"999",
         {"1000", "990", "1000"},
         {"1000", "900", "1000"},
         {"1000", "0", "1000"},
         {"999", "999", "999"},
         {"999", "999", "999"}},
        {"1205",
         {"1210", "1200", "1210"},
         {"1200", "1200", "1200"},
         {"2000", "1000", "1000"},
         {"1210", "1200", "1210"},
         {"1205", "1205", "1205"}},
        {"1234",
         {"1240", "1230", "1230"},
         {"1300", "1200", "1200"},
         {"2000", "1000", "1000"},
         {"1240", "1230", "1230"},
         {"1234", "1234", "1234"}},
        {"1250",
         {"1250", "1250", "1250"},
         {"1300", "1200", "1300"},
         {"2000", "1000", "1000"},
         {"1250", "1250", "1250"},
         {"1250", "1250", "1250"}},
        {"9999",
         {"10000", "9990", "10000"},
         {"10000", "9900", "10000"},
         {"10000", "9000", "10000"},
         {"10000", "9990", "10000"},
         {"9999", "9999", "9999"}},
        {"12345",
         {"12350", "12340", "12350"},
         {"12400", "12300", "12300"},
         {"13000", "12000", "12000"},
         {"12400", "12300", "12300"},
         {"12350", "12340", "12350"}},
        {"123456",
         {"123460", "123450", "123460"},
         {"123500", "123400", "123500"},
         {"124000", "123000", "123000"},
         {"124000", "123000", "123000"},
         {"123500", "123400", "123500"}},
        {"1234567",
         {"1234570", "1234560", "1234570"},
         {"1234600", "1234500", "1234600"},
         {"1235000", "1234000", "1235000"},
         {"1240000", "1230000", "1230000"},
         {"1235000", "1234000", "1235000"}},
    };
    for (const Row& row : rows) {
        const std::pair<const char*, const Triple*> cols[] = {
            {"10", &row.s10}, {"100", &row.s100}, {"1000", &row.s1000},
            {"3", &row.s3},   {"4", &row.s4},     {"1", nullptr}};
        for (const auto& [s, t] : cols) {
            SCOPED_TRACE(std::string(row.x) + " S=" + s);
            const Currency x = C(row.x), step = C(s);
            EXPECT_EQ(currToStr(roundDigits(x, step, Up)), t ? t->up : row.x);
            EXPECT_EQ(currToStr(roundDigits(x, step, Down)), t ? t->down : row.x);
            EXPECT_EQ(currToStr(roundDigits(x, step, Half)), t ? t->half : row.x);
        }
    }
}

TEST(RoundDigits, EdgeCases) {
    EXPECT_EQ(currToStr(roundDigits(C("1205"), C("100"), Up)), "1200");
    EXPECT_EQ(currToStr(roundDigits(C("1210"), C("100"), Up)), "1300");
    EXPECT_EQ(currToStr(roundDigits(C("99"), C("1000"), Up)), "0");
    // No more characters than digits: unchanged.
    EXPECT_EQ(currToStr(roundDigits(C("999"), C("3"), Up)), "999");
    EXPECT_EQ(currToStr(roundDigits(C("1000"), C("4"), Up)), "1000");
    EXPECT_EQ(currToStr(roundDigits(C("0"), C("3"), Up)), "0");
    EXPECT_EQ(currToStr(roundDigits(C("0"), C("4"), Up)), "0");
    // A carry into one more digit is not rounded again.
    EXPECT_EQ(currToStr(roundDigits(C("9999"), C("3"), Up)), "10000");
    // The minus sign counts in the text length: L = 6, m = 1000.
    EXPECT_EQ(currToStr(roundDigits(C("-12345"), C("3"), Down)), "-12000");
    // S of 0, a negative entry or any value outside the table leaves x.
    for (const char* s : {"0", "-1", "-2", "1", "7", "2"})
        EXPECT_EQ(currToStr(roundDigits(C("123456"), C(s), Up)), "123456") << s;
    // A decimal point counts as a character too: "12.5" has L = 4, m = 10.
    EXPECT_EQ(currToStr(roundDigits(C("12.5"), C("3"), Down)), "10");
    EXPECT_EQ(currToStr(roundDigits(C("-0.25"), C("4"), Down)), "0"); // L = 5, m = 10
    EXPECT_EQ(currToStr(roundDigits(C("1.25"), C("3"), Down)), "0");  // L = 4, m = 10
}

TEST(RoundDigits, OverflowOfPowerAndProduct) {
    // 12 characters at S = 3: m = 10^9 still fits 32 bits.
    EXPECT_EQ(currToStr(roundDigits(C("123456789012"), C("3"), Down)), "123000000000");
    // 13 characters at S = 3, 14 at S = 4: the power overflows.
    EXPECT_THROW(roundDigits(C("1234567890123"), C("3"), Down), IntOverflow);
    EXPECT_THROW(roundDigits(C("12345678901234"), C("4"), Down), IntOverflow);
    EXPECT_EQ(currToStr(roundDigits(C("1234567890123"), C("4"), Down)), "1234000000000");
}

TEST(Conversions, CutAndStoreRangesAndRounding) {
    EXPECT_EQ(cut(2.9L), 2);
    EXPECT_EQ(cut(-2.9L), -2);
    EXPECT_EQ(store(2.5L), 2);
    EXPECT_EQ(store(3.5L), 4);
    EXPECT_EQ(store(-2.5L), -2);
    EXPECT_EQ(cut(-9223372036854775808.0L), INT64_MIN);
    EXPECT_EQ(cut(-0.99L), 0);
    EXPECT_THROW(cut(9223372036854775808.0L), InvalidOp);
    EXPECT_THROW(store(9223372036854775808.0L), InvalidOp);
    EXPECT_THROW(cut(-9223372036854775809.0L), InvalidOp);
    EXPECT_THROW(cut(__builtin_nanl("")), InvalidOp);
}

TEST(Conversions, OverflowAtStoreRaises) {
    // A product beyond 64 bits: the store of the result fails.
    const Currency huge = Currency::fromRaw(INT64_MAX);
    EXPECT_THROW(roundElement(huge, C("100"), C("1"), Down), InvalidOp);
    EXPECT_THROW(ratePrice(huge, C("1000"), Down), InvalidOp);
    EXPECT_THROW(roundDigits(huge, C("10"), Up), InvalidOp);
}

} // namespace
