// CalcRow on the worked example in all its variants, and the option rules.
#include "engine/calcrow.h"
#include "engine/rounding.h"
#include "support/ownworkspace.h"
#include "support/testing.h"

namespace {

Currency C(const char* text) {
    return strToCurr(QString::fromLatin1(text));
}

// The example as the options below give it.
const char* const Example =
    "860 750 | 946 301 43 69 2214 270 249 4092 4090 | 825 263 38 60 1845 225 207 3463";

class CalcRowTest : public ::testing::Test, protected OwnWorkspace {
protected:
    void SetUp() override { reset(); }

    // The worked example in row 1 and its options, nothing else.
    void reset() {
        doc().clearRows(RowCount);
        setExample(1);
        set("labourSubmitted=18000 labourCost=15000 elementDigits=1 elementFraction=0.9 "
            "adoptedDigits=10 adoptedFraction=0 unitDigits=10 unitFraction=0.9 rateSubmitted=70 "
            "rateCost=60");
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
    // Options, and figures of row 1, from "name=value ...".
    void set(const QString& assignments) {
        PipeTypeOptions o = doc().options();
        const QStringList names = {
            "rateOn",        "rateSubmitted",   "rateCost",      "labourSubmitted", "labourCost",
            "elementDigits", "elementFraction", "adoptedDigits", "adoptedFraction", "unitDigits",
            "unitFraction",  "listPrice",       "chippingFactor"};
        Currency* fields[] = {&o.rateOn(),          &o.rateSubmitted(), &o.rateCost(),
                              &o.labourSubmitted(), &o.labourCost(),    &o.elementDigits(),
                              &o.elementFraction(), &o.adoptedDigits(), &o.adoptedFraction(),
                              &o.unitDigits(),      &o.unitFraction(),  &rows()[1].listPrice,
                              &rows()[1].factor(6)};
        for (const QString& a : assignments.split(' ', Qt::SkipEmptyParts)) {
            const QString name = a.section('=', 0, 0), value = a.section('=', 1);
            if (name == "modeFlag" || name == "otherMethod")
                (name == "modeFlag" ? o.modeFlag() : o.otherMethod()) = value.toInt();
            else
                *fields[names.indexOf(name)] = strToCurr(value);
        }
    }

    // "GROSS NET | the submitted amounts, GTANKA, FTANKA | the cost amounts, NTANKA" of row n.
    std::string line(int n) {
        const PipeRow& r = rows()[n];
        QString s = currToStr(r.submittedPrice) + ' ' + currToStr(r.costPrice) + " |";
        for (Currency c : r.submittedAmounts)
            s += ' ' + currToStr(c);
        s += ' ' + currToStr(r.submittedUnitPrice) + ' ' + currToStr(r.adoptedUnitPrice) + " |";
        for (Currency c : r.costAmounts)
            s += ' ' + currToStr(c);
        return (s + ' ' + currToStr(r.costUnitPrice)).toStdString();
    }
    std::string calc(int n = 1) {
        doc().calculateRow(n);
        return line(n);
    }
};

TEST_F(CalcRowTest, WorkedExampleUnderEachOption) {
    // Two decimals per element: the sum 4091.2 is cut after the fraction is added.
    const std::string el2 = "860 750 | 946 301 43 68.8 2214 270 248.4 ",
                      cost2 = " 4090 | 825 262.5 37.5 60 1845 225 207 3462";
    const std::pair<const char*, std::string> cases[] = {
        {"", Example},
        {"otherMethod=1",
         "860 750 | 946 301 43 69 2214 270 385 4228 4220 | 825 263 38 60 1845 225 326 3582"},
        // Refrigerant: c4 on c1 + c2 + c3, no chipping, other cost on c5 alone.
        {"modeFlag=1 chippingFactor=123.4567",
         "860 750 | 946 301 43 104 2214 0 222 3830 3830 | 825 263 38 90 1845 0 185 3246"},
        // The unit prices from the list price: 1234 x 70% = 863.8, up to 864, up to 870.
        {"rateOn=1",
         "870 750 | 957 305 44 70 2214 270 249 4109 4100 | 825 263 38 60 1845 225 207 3463"},
        {"rateOn=1 rateSubmitted=0 rateCost=0",
         "0 0 | 0 0 0 0 2214 270 249 2733 2730 | 0 0 0 0 1845 225 207 2277"},
        {"rateOn=1 listPrice=0",
         "0 0 | 0 0 0 0 2214 270 249 2733 2730 | 0 0 0 0 1845 225 207 2277"},
        {"elementDigits=100 elementFraction=0.5", el2 + "4091" + cost2},
        {"elementDigits=100 elementFraction=0", el2 + "4091" + cost2},
        {"elementDigits=100 elementFraction=0.9", el2 + "4092" + cost2},
        // The rates apply only at rateOn exactly 1.
        {"rateOn=1.0001", Example},
        {"rateOn=0.9999", Example},
        // adoptedDigits 0 is written back as 1, which leaves GTANKA; elementDigits 0 acts as 1.
        {"adoptedDigits=0 elementDigits=0",
         "860 750 | 946 301 43 69 2214 270 249 4092 4092 | 825 263 38 60 1845 225 207 3463"}};
    for (const auto& [options, want] : cases) {
        reset();
        set(options);
        EXPECT_EQ(calc(), want) << options;
    }
    // after the last case
    EXPECT_EQ(currToStr(doc().options().adoptedDigits()), "1");
    EXPECT_TRUE(doc().options().elementDigits().isZero());
}

TEST_F(CalcRowTest, WhichRowsAreCalculatedAndOverflowKeepsWhatWasReached) {
    set("rateOn=1");
    doc().calculateRow(60);
    EXPECT_EQ(line(60), "70 60 | 0 0 0 0 0 0 0 10 0.9 | 0 0 0 0 0 0 0 1");
    // Hidden rows and rows without a size are calculated, up to row 59.
    reset();
    setExample(15);
    setExample(59);
    doc().calculateAll();
    EXPECT_EQ(line(15) + '|' + line(59), std::string(Example) + '|' + Example);

    // An overflow leaves the row as far as the calculation had come.
    reset();
    rows()[1].costPrice = Currency::fromRaw(INT64_MAX); // c1 = NET x 1.1 does not fit
    EXPECT_THROW(doc().calculateRow(1), MathError);
    EXPECT_EQ(line(1), "860 922337203685477.5807 | 946 301 43 69 2214 270 249 4092 4090 | "
                       "0 0 0 0 0 0 0 0");
    reset();
    set("rateOn=1 rateCost=922337203685477.5807 listPrice=100000000");
    EXPECT_THROW(doc().calculateRow(1), MathError);
    EXPECT_EQ(line(1), "70000000 750 | 0 0 0 0 0 0 0 0 0 | 0 0 0 0 0 0 0 0");
    // Nothing was stored before the failing step.
    set("rateSubmitted=1000");
    rows()[3].listPrice = Currency::fromRaw(INT64_MAX);
    EXPECT_THROW(doc().calculateRow(3), MathError);
    EXPECT_EQ(line(3), "0 0 | 0 0 0 0 0 0 0 0 0 | 0 0 0 0 0 0 0 0");
}

} // namespace
