// CalcRow on the worked example in all its variants, and the option rules.
#include "engine/calcrow.h"
#include "engine/rounding.h"
#include "support/ownworkspace.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

Currency C(const char* text) {
    return strToCurr(QString::fromLatin1(text));
}

std::vector<std::string> texts(const std::array<Currency, 7>& e) {
    std::vector<std::string> out;
    for (Currency c : e)
        out.push_back(currToStr(c).toStdString());
    return out;
}

class CalcRowTest : public ::testing::Test, protected OwnWorkspace {
protected:
    void SetUp() override {
        doc().clearRows(RowCount);
        setExample(1);
        PipeTypeOptions o = doc().options();
        o.labourSubmitted() = C("18000");
        o.labourCost() = C("15000");
        o.elementDigits() = C("1");
        o.elementFraction() = C("0.9");
        o.adoptedDigits() = C("10");
        o.adoptedFraction() = C("0");
        o.unitDigits() = C("10");
        o.unitFraction() = C("0.9");
        o.rateSubmitted() = C("70");
        o.rateCost() = C("60");
    }

    void setExample(int row) {
        PipeRow& r = rows()[row];
        r.listPrice = C("1234");
        r.submittedPrice = C("860");
        r.costPrice = C("750");
        const char* f[7] = {"1.1", "0.35", "0.05", "0.08", "0.123", "0.015", "0.1"};
        for (int i = 0; i < 7; ++i)
            r.factors[std::size_t(i)] = C(f[i]);
    }

    struct Expect {
        std::vector<std::string> submitted;
        const char* gtanka;
        const char* ftanka;
        std::vector<std::string> cost;
        const char* ntanka;
    };

    void check(const Expect& e, int row = 1) {
        doc().calculateRow(row);
        const PipeRow& r = rows()[row];
        EXPECT_EQ(texts(r.submittedAmounts), e.submitted);
        EXPECT_EQ(currToStr(r.submittedUnitPrice), e.gtanka);
        EXPECT_EQ(currToStr(r.adoptedUnitPrice), e.ftanka);
        EXPECT_EQ(texts(r.costAmounts), e.cost);
        EXPECT_EQ(currToStr(r.costUnitPrice), e.ntanka);
    }
};

TEST_F(CalcRowTest, PipingOtherOnLabour) {
    check({{"946", "301", "43", "69", "2214", "270", "249"},
           "4092",
           "4090",
           {"825", "263", "38", "60", "1845", "225", "207"},
           "3463"});
}

TEST_F(CalcRowTest, PipingOtherOnAllElements) {
    doc().options().otherMethod() = 1;
    check({{"946", "301", "43", "69", "2214", "270", "385"},
           "4228",
           "4220",
           {"825", "263", "38", "60", "1845", "225", "326"},
           "3582"});
}

TEST_F(CalcRowTest, RefrigerantMode) {
    doc().options().modeFlag() = 1;
    check({{"946", "301", "43", "104", "2214", "0", "222"},
           "3830",
           "3830",
           {"825", "263", "38", "90", "1845", "0", "185"},
           "3246"});
}

TEST_F(CalcRowTest, RateOnTakesUnitPricesFromListPrice) {
    doc().options().rateOn() = C("1");
    check({{"957", "305", "44", "70", "2214", "270", "249"},
           "4109",
           "4100",
           {"825", "263", "38", "60", "1845", "225", "207"},
           "3463"});
    EXPECT_EQ(currToStr(rows()[1].submittedPrice), "870");
    EXPECT_EQ(currToStr(rows()[1].costPrice), "750");
}

TEST_F(CalcRowTest, TwoDecimalsPerElementAndThreeSignificantDigits) {
    doc().options().elementDigits() = C("100");
    doc().options().elementFraction() = C("0.5");
    check({{"946", "301", "43", "68.8", "2214", "270", "248.4"},
           "4091",
           "4090",
           {"825", "262.5", "37.5", "60", "1845", "225", "207"},
           "3462"});
    doc().options().adoptedDigits() = C("3");
    doc().options().adoptedFraction() = C("0.5");
    doc().calculateRow(1);
    EXPECT_EQ(currToStr(rows()[1].adoptedUnitPrice), "4090");
    // The element sum 4091.2 gives 4092 with round-up, 4091 with round-down.
    doc().options().elementFraction() = C("0");
    doc().calculateRow(1);
    EXPECT_EQ(currToStr(rows()[1].submittedUnitPrice), "4091");
}

TEST_F(CalcRowTest, RateOnOnlyAtExactlyOne) {
    for (const char* v : {"0", "1.0001", "0.9999", "2", "-1"}) {
        setExample(1);
        doc().options().rateOn() = C(v);
        doc().calculateRow(1);
        EXPECT_EQ(currToStr(rows()[1].submittedPrice), "860") << v;
        EXPECT_EQ(currToStr(rows()[1].costPrice), "750") << v;
    }
}

TEST_F(CalcRowTest, RateOnWithZeroRateOrZeroListPrice) {
    doc().options().rateOn() = C("1");
    doc().options().rateSubmitted() = C("0");
    doc().options().rateCost() = C("0");
    doc().calculateRow(1);
    const PipeRow& r = rows()[1];
    EXPECT_EQ(r.submittedPrice.raw, 0);
    EXPECT_EQ(r.costPrice.raw, 0);
    EXPECT_EQ(currToStr(r.submittedAmounts[4]), "2214"); // labour elements still computed
    EXPECT_EQ(currToStr(r.costAmounts[4]), "1845");
}

TEST_F(CalcRowTest, AdoptedDigitsZeroWrittenBackElementDigitsZeroActsAsOne) {
    doc().options().adoptedDigits() = C("0");
    doc().options().elementDigits() = C("0");
    doc().calculateRow(1);
    EXPECT_EQ(currToStr(doc().options().adoptedDigits()), "1");
    EXPECT_EQ(doc().options().elementDigits().raw, 0);
    EXPECT_EQ(currToStr(rows()[1].submittedUnitPrice), "4092");
    EXPECT_EQ(currToStr(rows()[1].adoptedUnitPrice), "4092"); // adoptedDigits 1 leaves GTANKA
}

TEST_F(CalcRowTest, RowSixtyIsNeverCalculated) {
    doc().options().rateOn() = C("1");
    PipeTypeOptions o = doc().options();
    const Currency gross = rows()[60].submittedPrice, net = rows()[60].costPrice;
    const Currency digitsBefore = o.unitDigits(), fractionBefore = o.unitFraction();
    doc().calculateRow(60);
    EXPECT_EQ(rows()[60].submittedPrice, gross);
    EXPECT_EQ(rows()[60].costPrice, net);
    EXPECT_EQ(o.unitDigits(), digitsBefore);
    EXPECT_EQ(o.unitFraction(), fractionBefore);
    EXPECT_EQ(o.rateOn(), C("1"));
    for (Currency c : rows()[60].submittedAmounts)
        EXPECT_EQ(c.raw, 0);
}

TEST_F(CalcRowTest, HiddenRowsAndEmptySizesAreCalculated) {
    setExample(15);
    doc().calculateAll();
    EXPECT_EQ(currToStr(rows()[15].submittedUnitPrice), "4092");
    EXPECT_TRUE(rows()[15].sizeBytes.isEmpty());
}

TEST_F(CalcRowTest, RefrigerantIgnoresChippingFactor) {
    doc().options().modeFlag() = 1;
    rows()[1].factor(6) = C("123.4567");
    doc().calculateRow(1);
    EXPECT_EQ(rows()[1].submittedAmounts[5].raw, 0);
    EXPECT_EQ(rows()[1].costAmounts[5].raw, 0);
    // Other cost on labour bases element 7 on c5 alone: 2214 x 0.1 = 221.4, up to 222.
    EXPECT_EQ(currToStr(rows()[1].submittedAmounts[6]), "222");
}

TEST_F(CalcRowTest, ZerosGiveZerosAtEveryOptionValue) {
    for (int d = 0; d < 8; ++d)
        for (int f = 0; f < 3; ++f)
            for (int mode = 0; mode < 2; ++mode) {
                rows()[2] = PipeRow{};
                PipeTypeOptions o = doc().options();
                o.elementDigits() = DigitSteps[std::size_t(d % 4)];
                o.elementFraction() = FractionSteps[std::size_t(f)];
                o.adoptedDigits() = DigitSteps[std::size_t(d)];
                o.adoptedFraction() = FractionSteps[std::size_t(f)];
                o.unitDigits() = DigitSteps[std::size_t(d)];
                o.modeFlag() = mode;
                o.labourCost() = o.labourSubmitted() = {};
                doc().calculateRow(2);
                const PipeRow& r = rows()[2];
                EXPECT_EQ(r.submittedUnitPrice.raw, 0);
                EXPECT_EQ(r.costUnitPrice.raw, 0);
                EXPECT_EQ(r.adoptedUnitPrice.raw, 0);
            }
}

TEST_F(CalcRowTest, OverflowOnCostSideKeepsTheSubmittedSide) {
    rows()[1].costPrice = Currency::fromRaw(INT64_MAX); // c1 = NET x 1.1 does not fit
    EXPECT_THROW(doc().calculateRow(1), MathError);
    EXPECT_EQ(currToStr(rows()[1].submittedUnitPrice), "4092");
    EXPECT_EQ(currToStr(rows()[1].adoptedUnitPrice), "4090");
    EXPECT_EQ(currToStr(rows()[1].submittedAmounts[0]), "946");
    EXPECT_EQ(rows()[1].costUnitPrice.raw, 0);
}

TEST_F(CalcRowTest, OverflowOfTheCostRateKeepsTheSubmittedPrice) {
    doc().options().rateOn() = C("1");
    doc().options().rateCost() = Currency::fromRaw(INT64_MAX);
    rows()[1].listPrice = C("100000000");
    EXPECT_THROW(doc().calculateRow(1), MathError);
    EXPECT_NE(rows()[1].submittedPrice, C("860")); // already replaced from the list price
    EXPECT_EQ(rows()[1].costPrice, C("750"));      // not reached
}

TEST_F(CalcRowTest, ZeroListPriceGivesZeroUnitPrices) {
    doc().options().rateOn() = C("1");
    rows()[1].listPrice = C("0");
    doc().calculateRow(1);
    EXPECT_EQ(rows()[1].submittedPrice.raw, 0);
    EXPECT_EQ(rows()[1].costPrice.raw, 0);
}

TEST_F(CalcRowTest, DecimalElementsWithRoundUpTotal) {
    doc().options().elementDigits() = C("100");
    doc().options().elementFraction() = C("0.9");
    doc().calculateRow(1);
    // Elements 946, 301, 43, 68.8, 2214, 270, 248.4 sum to 4091.2.
    EXPECT_EQ(currToStr(rows()[1].submittedUnitPrice), "4092");
}

TEST_F(CalcRowTest, OverflowKeepsWhatWasReached) {
    doc().options().rateOn() = C("1");
    rows()[3].listPrice = Currency::fromRaw(INT64_MAX);
    doc().options().rateSubmitted() = C("1000");
    EXPECT_THROW(doc().calculateRow(3), MathError);
    // Nothing was stored before the failing step.
    EXPECT_EQ(rows()[3].submittedPrice.raw, 0);
    EXPECT_EQ(rows()[3].submittedUnitPrice.raw, 0);
}

} // namespace
