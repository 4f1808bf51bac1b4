// The row logic of the edit commands: field sets, detail addressing, the
// spreading and the clearings, on plain tables.
#include "edit/fieldsets.h"

#include <gtest/gtest.h>

namespace {

Currency c(std::int64_t raw) {
    return Currency::fromRaw(raw);
}

// A row whose every field differs from that of any other seed.
PipeRow seeded(int seed) {
    PipeRow r;
    r.key = seed;
    r.goodsBytes = QByteArray("goods") + QByteArray::number(seed);
    r.kindBytes = QByteArray("kind") + QByteArray::number(seed);
    r.sortOrder = c(seed * 10000 + 1);
    r.sizeBytes = QByteArray::number(seed % 1000) + "A";
    r.otherMethod = seed + 1;
    r.unitBytes = QByteArray("c") + QByteArray::number(seed % 100);
    r.modeFlag = seed + 2;
    r.costPrice = c(seed * 100 + 3);
    r.submittedPrice = c(seed * 100 + 4);
    r.listPrice = c(seed * 100 + 5);
    for (int n = 1; n <= 7; ++n)
        r.factor(n) = c(seed * 100 + 10 + n);
    r.costUnitPrice = c(seed * 100 + 20);
    r.submittedUnitPrice = c(seed * 100 + 21);
    r.adoptedUnitPrice = c(seed * 100 + 22);
    for (std::size_t i = 0; i < 7; ++i) {
        r.costAmounts[i] = c(seed * 100 + 30 + std::int64_t(i));
        r.submittedAmounts[i] = c(seed * 100 + 40 + std::int64_t(i));
    }
    return r;
}

RowTable seededTable(int offset) {
    RowTable t;
    for (int r = 1; r <= RowCount; ++r)
        t[r] = seeded(offset + r);
    return t;
}

// field-by-field equality, text and numbers, CALC amounts included.
bool sameRow(const PipeRow& a, const PipeRow& b) {
    return a.key == b.key && a.goodsBytes == b.goodsBytes && a.kindBytes == b.kindBytes &&
           a.sortOrder == b.sortOrder && a.sizeBytes == b.sizeBytes &&
           a.otherMethod == b.otherMethod && a.unitBytes == b.unitBytes &&
           a.modeFlag == b.modeFlag && a.costPrice == b.costPrice &&
           a.submittedPrice == b.submittedPrice && a.listPrice == b.listPrice &&
           a.factors == b.factors && a.costUnitPrice == b.costUnitPrice &&
           a.submittedUnitPrice == b.submittedUnitPrice &&
           a.adoptedUnitPrice == b.adoptedUnitPrice && a.costAmounts == b.costAmounts &&
           a.submittedAmounts == b.submittedAmounts;
}

TEST(FieldSets, AllCarriesItsFieldsAndLeavesTheRest) {
    const PipeRow from = seeded(1);
    PipeRow to = seeded(2);
    const PipeRow before = to;
    copyFieldSet(to, from, FieldSet::All);
    EXPECT_EQ(to.goodsBytes, from.goodsBytes);
    EXPECT_EQ(to.sizeBytes, from.sizeBytes);
    EXPECT_EQ(to.kindBytes, from.kindBytes);
    EXPECT_EQ(to.modeFlag, from.modeFlag);
    EXPECT_EQ(to.unitBytes, from.unitBytes);
    EXPECT_EQ(to.costPrice, from.costPrice);
    EXPECT_EQ(to.submittedPrice, from.submittedPrice);
    EXPECT_EQ(to.listPrice, from.listPrice);
    EXPECT_EQ(to.factors, from.factors);
    EXPECT_EQ(to.costUnitPrice, from.costUnitPrice);
    EXPECT_EQ(to.submittedUnitPrice, from.submittedUnitPrice);
    EXPECT_EQ(to.adoptedUnitPrice, from.adoptedUnitPrice);
    // In no set.
    EXPECT_EQ(to.key, before.key);
    EXPECT_EQ(to.sortOrder, before.sortOrder);
    EXPECT_EQ(to.otherMethod, before.otherMethod);
    EXPECT_EQ(to.costAmounts, before.costAmounts);
    EXPECT_EQ(to.submittedAmounts, before.submittedAmounts);
}

TEST(FieldSets, AllButCostUnitPriceLeavesTheTargetsNTANKA) {
    const PipeRow from = seeded(1);
    PipeRow to = seeded(2);
    const Currency ntanka = to.costUnitPrice;
    copyFieldSet(to, from, FieldSet::AllButCostUnitPrice);
    EXPECT_EQ(to.costUnitPrice, ntanka);
    EXPECT_EQ(to.submittedUnitPrice, from.submittedUnitPrice);
    EXPECT_EQ(to.adoptedUnitPrice, from.adoptedUnitPrice);
    EXPECT_EQ(to.goodsBytes, from.goodsBytes);
    EXPECT_EQ(to.factors, from.factors);
}

TEST(FieldSets, PricesLabourPipefitterCarryOnlyTheirFields) {
    const PipeRow from = seeded(1);
    {
        PipeRow to = seeded(2);
        PipeRow expected = to;
        expected.costPrice = from.costPrice;
        expected.submittedPrice = from.submittedPrice;
        expected.listPrice = from.listPrice;
        copyFieldSet(to, from, FieldSet::Prices);
        EXPECT_TRUE(sameRow(to, expected));
    }
    {
        PipeRow to = seeded(2);
        PipeRow expected = to;
        expected.factors = from.factors;
        copyFieldSet(to, from, FieldSet::Labour);
        EXPECT_TRUE(sameRow(to, expected));
    }
    {
        PipeRow to = seeded(2);
        PipeRow expected = to;
        expected.factor(5) = from.factor(5);
        copyFieldSet(to, from, FieldSet::Pipefitter);
        EXPECT_TRUE(sameRow(to, expected));
        EXPECT_NE(to.factor(4), from.factor(4));
    }
}

TEST(FieldSets, TextIsCopiedUpToItsByteWidth) {
    PipeRow from;
    from.goodsBytes = QByteArray(90, 'g');
    from.kindBytes = QByteArray(45, 'k');
    from.sizeBytes = QByteArray("1234567");
    from.unitBytes = QByteArray("abcdef");
    PipeRow to;
    copyFieldSet(to, from, FieldSet::All);
    EXPECT_EQ(to.goodsBytes, QByteArray(80, 'g'));
    EXPECT_EQ(to.kindBytes, QByteArray(40, 'k'));
    EXPECT_EQ(to.sizeBytes, QByteArray("123456"));
    EXPECT_EQ(to.unitBytes, QByteArray("abcd"));
    // A text at its width passes whole, double-byte text too.
    PipeRow sjis;
    sjis.setGoods(QString::fromUtf8("配管用炭素鋼鋼管（白）"));
    PipeRow to2;
    copyFieldSet(to2, sjis, FieldSet::All);
    EXPECT_EQ(to2.goodsBytes, sjis.goodsBytes);
    EXPECT_EQ(to2.goods(), QString::fromUtf8("配管用炭素鋼鋼管（白）"));
}

TEST(FieldSets, WholeTableGoesRowForRowWithTheOptionRow) {
    const RowTable from = seededTable(0);
    RowTable to = seededTable(100);
    copyFieldSet(to, from, FieldSet::Labour);
    for (int r = 1; r <= RowCount; ++r) {
        EXPECT_EQ(to[r].factors, from[r].factors) << r;
        EXPECT_EQ(to[r].costPrice, seeded(100 + r).costPrice) << r;
    }
    copyFieldSet(to, from, FieldSet::All);
    EXPECT_EQ(to[OptionRow].modeFlag, from[OptionRow].modeFlag);
    EXPECT_EQ(to[OptionRow].otherMethod, seeded(160).otherMethod);
}

TEST(FieldSets, DetailCopyTakesTheTabsRowsIntoRowsOneToFifteen) {
    const RowTable rows = seededTable(0);
    RowTable buffer = seededTable(500);
    copyDetailOut(buffer, rows, 2, FieldSet::All);
    for (int i = 1; i <= 15; ++i) {
        EXPECT_EQ(buffer[i].goodsBytes, rows[30 + i].goodsBytes) << i;
        EXPECT_EQ(buffer[i].costUnitPrice, rows[30 + i].costUnitPrice) << i;
    }
    // Rows above 15 of the buffer are no detail command's business.
    for (int r = 16; r <= RowCount; ++r)
        EXPECT_TRUE(sameRow(buffer[r], seeded(500 + r))) << r;
}

TEST(FieldSets, DetailPasteWritesTheTabThenCurrent) {
    const RowTable buffer = seededTable(0);
    RowTable rows = seededTable(200);
    pasteDetailIn(rows, buffer, 1, FieldSet::Prices);
    for (int r = 1; r <= RowCount; ++r) {
        if (r >= 16 && r <= 30) {
            EXPECT_EQ(rows[r].listPrice, buffer[r - 15].listPrice) << r;
            EXPECT_EQ(rows[r].factors, seeded(200 + r).factors) << r;
        } else {
            EXPECT_TRUE(sameRow(rows[r], seeded(200 + r))) << r;
        }
    }
}

TEST(FieldSets, DetailPasteOnTheFourthTabLeavesTheOptionRow) {
    const RowTable buffer = seededTable(0);
    for (FieldSet set : {FieldSet::All, FieldSet::AllButCostUnitPrice, FieldSet::Prices,
                         FieldSet::Labour, FieldSet::Pipefitter}) {
        RowTable rows = seededTable(300);
        pasteDetailIn(rows, buffer, 3, set);
        EXPECT_TRUE(sameRow(rows[OptionRow], seeded(360)));
        EXPECT_FALSE(sameRow(rows[59], seeded(359))); // the tab's other rows do change
        EXPECT_TRUE(sameRow(rows[45], seeded(345)));
    }
}

TEST(FieldSets, SpreadFirstDetailCopiesItsFieldsToTheOtherThree) {
    RowTable rows = seededTable(0);
    spreadFirstDetail(rows);
    for (int k = 1; k <= 3; ++k) {
        for (int i = 1; i <= 15; ++i) {
            const int r = k * 15 + i;
            if (r == OptionRow) continue;
            const PipeRow& src = rows[i];
            const PipeRow old = seeded(r);
            EXPECT_EQ(rows[r].modeFlag, src.modeFlag);
            EXPECT_EQ(rows[r].unitBytes, src.unitBytes);
            EXPECT_EQ(rows[r].listPrice, src.listPrice);
            EXPECT_EQ(rows[r].costPrice, src.costPrice);
            EXPECT_EQ(rows[r].submittedPrice, src.submittedPrice);
            EXPECT_EQ(rows[r].factors, src.factors);
            EXPECT_EQ(rows[r].costUnitPrice, src.costUnitPrice);
            EXPECT_EQ(rows[r].submittedUnitPrice, src.submittedUnitPrice);
            EXPECT_EQ(rows[r].adoptedUnitPrice, src.adoptedUnitPrice);
            EXPECT_EQ(rows[r].goodsBytes, old.goodsBytes) << r;
            EXPECT_EQ(rows[r].sizeBytes, old.sizeBytes) << r;
            EXPECT_EQ(rows[r].kindBytes, old.kindBytes) << r;
            EXPECT_EQ(rows[r].key, old.key) << r;
        }
    }
    for (int i = 1; i <= 15; ++i)
        EXPECT_TRUE(sameRow(rows[i], seeded(i)));
    EXPECT_TRUE(sameRow(rows[OptionRow], seeded(OptionRow)));
}

TEST(FieldSets, SpreadBufferPricesLeavesTheOptionRates) {
    const RowTable buffer = seededTable(700);
    RowTable rows = seededTable(0);
    spreadBufferPrices(rows, buffer);
    for (int r = 16; r < OptionRow; ++r) {
        const int i = (r - 1) % 15 + 1;
        EXPECT_EQ(rows[r].costPrice, buffer[i].costPrice) << r;
        EXPECT_EQ(rows[r].factors, seeded(r).factors) << r;
    }
    for (int r = 1; r <= 15; ++r)
        EXPECT_TRUE(sameRow(rows[r], seeded(r)));
    EXPECT_TRUE(sameRow(rows[OptionRow], seeded(OptionRow)));
}

TEST(FieldSets, ClearPipeTypeKeepsOnlyKeySortAndYosan) {
    RowTable rows = seededTable(0);
    clearPipeTypeRows(rows);
    for (int r = 1; r <= RowCount; ++r) {
        PipeRow expected;
        expected.key = seeded(r).key;
        expected.sortOrder = seeded(r).sortOrder;
        expected.otherMethod = seeded(r).otherMethod;
        EXPECT_TRUE(sameRow(rows[r], expected)) << r;
    }
}

TEST(FieldSets, ClearDetailZeroesFactorsAndResultsOfTheTab) {
    for (int tab = 0; tab < 4; ++tab) {
        RowTable rows = seededTable(0);
        clearDetailRows(rows, tab);
        for (int r = 1; r <= RowCount; ++r) {
            const PipeRow old = seeded(r);
            if (r > tab * 15 && r <= tab * 15 + 15 && r != OptionRow) {
                PipeRow expected = old;
                expected.factors = {};
                expected.costUnitPrice = expected.submittedUnitPrice = expected.adoptedUnitPrice =
                    Currency();
                expected.costAmounts = {};
                expected.submittedAmounts = {};
                EXPECT_TRUE(sameRow(rows[r], expected)) << tab << " " << r;
            } else {
                EXPECT_TRUE(sameRow(rows[r], old)) << tab << " " << r;
            }
        }
    }
}

} // namespace
