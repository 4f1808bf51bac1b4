// The row logic of the edit commands: field sets, detail addressing, the
// spreading and the clearings, on plain tables.
#include "edit/fieldsets.h"

#include <gtest/gtest.h>

namespace {

Currency C(std::int64_t raw) {
    return Currency::FromRaw(raw);
}

// A row whose every field differs from that of any other seed.
Fuzokurecordtypex seeded(int seed) {
    Fuzokurecordtypex r;
    r.UKEY = seed;
    r.GOODS = QByteArray("goods") + QByteArray::number(seed);
    r.KIND = QByteArray("kind") + QByteArray::number(seed);
    r.SORT = C(seed * 10000 + 1);
    r.SIZE = QByteArray::number(seed % 1000) + "A";
    r.YOSAN = seed + 1;
    r.CI = QByteArray("c") + QByteArray::number(seed % 100);
    r.FLAG = seed + 2;
    r.NET = C(seed * 100 + 3);
    r.GROSS = C(seed * 100 + 4);
    r.TEIKA = C(seed * 100 + 5);
    for (int n = 1; n <= 7; ++n)
        r.Data(n) = C(seed * 100 + 10 + n);
    r.NTANKA = C(seed * 100 + 20);
    r.GTANKA = C(seed * 100 + 21);
    r.FTANKA = C(seed * 100 + 22);
    for (std::size_t i = 0; i < 7; ++i) {
        r.CALC_N[i] = C(seed * 100 + 30 + std::int64_t(i));
        r.CALC_G[i] = C(seed * 100 + 40 + std::int64_t(i));
    }
    return r;
}

RowTable seededTable(int offset) {
    RowTable t;
    for (int r = 1; r <= RowCount; ++r)
        t[r] = seeded(offset + r);
    return t;
}

// Field-by-field equality, text and numbers, CALC amounts included.
bool sameRow(const Fuzokurecordtypex& a, const Fuzokurecordtypex& b) {
    return a.UKEY == b.UKEY && a.GOODS == b.GOODS && a.KIND == b.KIND && a.SORT == b.SORT &&
           a.SIZE == b.SIZE && a.YOSAN == b.YOSAN && a.CI == b.CI && a.FLAG == b.FLAG &&
           a.NET == b.NET && a.GROSS == b.GROSS && a.TEIKA == b.TEIKA && a.DATA == b.DATA &&
           a.NTANKA == b.NTANKA && a.GTANKA == b.GTANKA && a.FTANKA == b.FTANKA &&
           a.CALC_N == b.CALC_N && a.CALC_G == b.CALC_G;
}

TEST(FieldSets, AllCarriesItsFieldsAndLeavesTheRest) {
    const Fuzokurecordtypex from = seeded(1);
    Fuzokurecordtypex to = seeded(2);
    const Fuzokurecordtypex before = to;
    CopyFieldSet(to, from, FieldSet::All);
    EXPECT_EQ(to.GOODS, from.GOODS);
    EXPECT_EQ(to.SIZE, from.SIZE);
    EXPECT_EQ(to.KIND, from.KIND);
    EXPECT_EQ(to.FLAG, from.FLAG);
    EXPECT_EQ(to.CI, from.CI);
    EXPECT_EQ(to.NET, from.NET);
    EXPECT_EQ(to.GROSS, from.GROSS);
    EXPECT_EQ(to.TEIKA, from.TEIKA);
    EXPECT_EQ(to.DATA, from.DATA);
    EXPECT_EQ(to.NTANKA, from.NTANKA);
    EXPECT_EQ(to.GTANKA, from.GTANKA);
    EXPECT_EQ(to.FTANKA, from.FTANKA);
    // In no set.
    EXPECT_EQ(to.UKEY, before.UKEY);
    EXPECT_EQ(to.SORT, before.SORT);
    EXPECT_EQ(to.YOSAN, before.YOSAN);
    EXPECT_EQ(to.CALC_N, before.CALC_N);
    EXPECT_EQ(to.CALC_G, before.CALC_G);
}

TEST(FieldSets, AllButNTANKALeavesTheTargetsNTANKA) {
    const Fuzokurecordtypex from = seeded(1);
    Fuzokurecordtypex to = seeded(2);
    const Currency ntanka = to.NTANKA;
    CopyFieldSet(to, from, FieldSet::AllButNTANKA);
    EXPECT_EQ(to.NTANKA, ntanka);
    EXPECT_EQ(to.GTANKA, from.GTANKA);
    EXPECT_EQ(to.FTANKA, from.FTANKA);
    EXPECT_EQ(to.GOODS, from.GOODS);
    EXPECT_EQ(to.DATA, from.DATA);
}

TEST(FieldSets, PricesLabourPipefitterCarryOnlyTheirFields) {
    const Fuzokurecordtypex from = seeded(1);
    {
        Fuzokurecordtypex to = seeded(2);
        Fuzokurecordtypex expected = to;
        expected.NET = from.NET;
        expected.GROSS = from.GROSS;
        expected.TEIKA = from.TEIKA;
        CopyFieldSet(to, from, FieldSet::Prices);
        EXPECT_TRUE(sameRow(to, expected));
    }
    {
        Fuzokurecordtypex to = seeded(2);
        Fuzokurecordtypex expected = to;
        expected.DATA = from.DATA;
        CopyFieldSet(to, from, FieldSet::Labour);
        EXPECT_TRUE(sameRow(to, expected));
    }
    {
        Fuzokurecordtypex to = seeded(2);
        Fuzokurecordtypex expected = to;
        expected.Data(5) = from.Data(5);
        CopyFieldSet(to, from, FieldSet::Pipefitter);
        EXPECT_TRUE(sameRow(to, expected));
        EXPECT_NE(to.Data(4), from.Data(4));
    }
}

TEST(FieldSets, TextIsCopiedUpToItsByteWidth) {
    Fuzokurecordtypex from;
    from.GOODS = QByteArray(90, 'g');
    from.KIND = QByteArray(45, 'k');
    from.SIZE = QByteArray("1234567");
    from.CI = QByteArray("abcdef");
    Fuzokurecordtypex to;
    CopyFieldSet(to, from, FieldSet::All);
    EXPECT_EQ(to.GOODS, QByteArray(80, 'g'));
    EXPECT_EQ(to.KIND, QByteArray(40, 'k'));
    EXPECT_EQ(to.SIZE, QByteArray("123456"));
    EXPECT_EQ(to.CI, QByteArray("abcd"));
    // A text at its width passes whole, double-byte text too.
    Fuzokurecordtypex sjis;
    sjis.SetGoods(QString::fromUtf8("配管用炭素鋼鋼管（白）"));
    Fuzokurecordtypex to2;
    CopyFieldSet(to2, sjis, FieldSet::All);
    EXPECT_EQ(to2.GOODS, sjis.GOODS);
    EXPECT_EQ(to2.Goods(), QString::fromUtf8("配管用炭素鋼鋼管（白）"));
}

TEST(FieldSets, WholeTableGoesRowForRowWithTheOptionRow) {
    const RowTable from = seededTable(0);
    RowTable to = seededTable(100);
    CopyWholeTable(to, from, FieldSet::Labour);
    for (int r = 1; r <= RowCount; ++r) {
        EXPECT_EQ(to[r].DATA, from[r].DATA) << r;
        EXPECT_EQ(to[r].NET, seeded(100 + r).NET) << r;
    }
    CopyWholeTable(to, from, FieldSet::All);
    EXPECT_EQ(to[OptionRow].FLAG, from[OptionRow].FLAG);
    EXPECT_EQ(to[OptionRow].YOSAN, seeded(160).YOSAN);
}

TEST(FieldSets, DetailCopyTakesTheTabsRowsIntoRowsOneToFifteen) {
    const RowTable rows = seededTable(0);
    RowTable buffer = seededTable(500);
    CopyDetailOut(buffer, rows, 2, FieldSet::All);
    for (int i = 1; i <= 15; ++i) {
        EXPECT_EQ(buffer[i].GOODS, rows[30 + i].GOODS) << i;
        EXPECT_EQ(buffer[i].NTANKA, rows[30 + i].NTANKA) << i;
    }
    // Rows above 15 of the buffer are no detail command's business.
    for (int r = 16; r <= RowCount; ++r)
        EXPECT_TRUE(sameRow(buffer[r], seeded(500 + r))) << r;
}

TEST(FieldSets, DetailPasteWritesTheTabThenCurrent) {
    const RowTable buffer = seededTable(0);
    RowTable rows = seededTable(200);
    PasteDetailIn(rows, buffer, 1, FieldSet::Prices);
    for (int r = 1; r <= RowCount; ++r) {
        if (r >= 16 && r <= 30) {
            EXPECT_EQ(rows[r].TEIKA, buffer[r - 15].TEIKA) << r;
            EXPECT_EQ(rows[r].DATA, seeded(200 + r).DATA) << r;
        } else {
            EXPECT_TRUE(sameRow(rows[r], seeded(200 + r))) << r;
        }
    }
}

TEST(FieldSets, DetailPasteOnTheFourthTabLeavesTheOptionRow) {
    const RowTable buffer = seededTable(0);
    for (FieldSet set : {FieldSet::All, FieldSet::AllButNTANKA, FieldSet::Prices, FieldSet::Labour,
                         FieldSet::Pipefitter}) {
        RowTable rows = seededTable(300);
        PasteDetailIn(rows, buffer, 3, set);
        EXPECT_TRUE(sameRow(rows[OptionRow], seeded(360)));
        EXPECT_FALSE(sameRow(rows[59], seeded(359))); // the tab's other rows do change
        EXPECT_TRUE(sameRow(rows[45], seeded(345)));
    }
}

TEST(FieldSets, SpreadFirstDetailCopiesItsFieldsToTheOtherThree) {
    RowTable rows = seededTable(0);
    SpreadFirstDetail(rows);
    for (int k = 1; k <= 3; ++k) {
        for (int i = 1; i <= 15; ++i) {
            const int r = k * 15 + i;
            if (r == OptionRow) continue;
            const Fuzokurecordtypex& src = rows[i];
            const Fuzokurecordtypex old = seeded(r);
            EXPECT_EQ(rows[r].FLAG, src.FLAG);
            EXPECT_EQ(rows[r].CI, src.CI);
            EXPECT_EQ(rows[r].TEIKA, src.TEIKA);
            EXPECT_EQ(rows[r].NET, src.NET);
            EXPECT_EQ(rows[r].GROSS, src.GROSS);
            EXPECT_EQ(rows[r].DATA, src.DATA);
            EXPECT_EQ(rows[r].NTANKA, src.NTANKA);
            EXPECT_EQ(rows[r].GTANKA, src.GTANKA);
            EXPECT_EQ(rows[r].FTANKA, src.FTANKA);
            EXPECT_EQ(rows[r].GOODS, old.GOODS) << r;
            EXPECT_EQ(rows[r].SIZE, old.SIZE) << r;
            EXPECT_EQ(rows[r].KIND, old.KIND) << r;
            EXPECT_EQ(rows[r].UKEY, old.UKEY) << r;
        }
    }
    for (int i = 1; i <= 15; ++i)
        EXPECT_TRUE(sameRow(rows[i], seeded(i)));
    EXPECT_TRUE(sameRow(rows[OptionRow], seeded(OptionRow)));
}

TEST(FieldSets, SpreadBufferPricesLeavesTheOptionRates) {
    const RowTable buffer = seededTable(700);
    RowTable rows = seededTable(0);
    SpreadBufferPrices(rows, buffer);
    for (int r = 16; r < OptionRow; ++r) {
        const int i = (r - 1) % 15 + 1;
        EXPECT_EQ(rows[r].NET, buffer[i].NET) << r;
        EXPECT_EQ(rows[r].DATA, seeded(r).DATA) << r;
    }
    for (int r = 1; r <= 15; ++r)
        EXPECT_TRUE(sameRow(rows[r], seeded(r)));
    EXPECT_TRUE(sameRow(rows[OptionRow], seeded(OptionRow)));
}

TEST(FieldSets, ClearPipeTypeKeepsOnlyKeySortAndYosan) {
    RowTable rows = seededTable(0);
    ClearPipeTypeRows(rows);
    for (int r = 1; r <= RowCount; ++r) {
        Fuzokurecordtypex expected;
        expected.UKEY = seeded(r).UKEY;
        expected.SORT = seeded(r).SORT;
        expected.YOSAN = seeded(r).YOSAN;
        EXPECT_TRUE(sameRow(rows[r], expected)) << r;
    }
}

TEST(FieldSets, ClearDetailZeroesFactorsAndResultsOfTheTab) {
    for (int tab = 0; tab < 4; ++tab) {
        RowTable rows = seededTable(0);
        ClearDetailRows(rows, tab);
        for (int r = 1; r <= RowCount; ++r) {
            const Fuzokurecordtypex old = seeded(r);
            if (r > tab * 15 && r <= tab * 15 + 15 && r != OptionRow) {
                Fuzokurecordtypex expected = old;
                expected.DATA = {};
                expected.NTANKA = expected.GTANKA = expected.FTANKA = Currency();
                expected.CALC_N = {};
                expected.CALC_G = {};
                EXPECT_TRUE(sameRow(rows[r], expected)) << tab << " " << r;
            } else {
                EXPECT_TRUE(sameRow(rows[r], old)) << tab << " " << r;
            }
        }
    }
}

} // namespace
