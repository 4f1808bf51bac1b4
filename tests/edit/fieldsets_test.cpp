// The row logic of the edit commands: field sets, detail addressing, the
// spreading and the clearings, on plain tables.
#include "edit/fieldsets.h"

#include "fdkgolden.h"
#include "support/testing.h"

namespace {

enum Op { Whole, Out, In, SpreadFirst, SpreadPrices, ClearAll, ClearTab };

// The row of the source that row r of the result takes its fields from; 0
// when row r stays as it was.
int sourceRow(Op op, int tab, int r) {
    if (op == Whole || op == ClearAll) return r;
    if (op == Out) return r <= 15 ? r + 15 * tab : 0;
    if (op == In || op == ClearTab)
        return r > 15 * tab && r <= 15 * tab + 15 && r != 60 ? r - 15 * tab : 0;
    return r > 15 && r != 60 ? (r - 1) % 15 + 1 : 0; // the spreads
}

TEST(FieldSets, EachOperationCarriesExactlyItsFieldsToExactlyItsRows) {
    // The target holds seeds 1 to 60 and the source seeds 101 to 160; the
    // first detail spreads from the target itself, a clearing from blank rows.
    using F = FieldSet;
    const unsigned cleared = Labour | Results | Amounts;
    RowTable target, source;
    const RowTable blank;
    for (int r = 1; r <= RowCount; ++r) {
        target[r] = seeded(r);
        source[r] = seeded(100 + r);
    }
    for (auto [op, tab, set, mask] : std::initializer_list<std::tuple<Op, int, F, unsigned>>{
             {Whole, 0, F::All, All},
             {Whole, 0, F::AllButCostUnitPrice, All & ~NTanka},
             {Whole, 0, F::Prices, Prices},
             {Whole, 0, F::Labour, Labour},
             {Whole, 0, F::Pipefitter, Pipefitter},
             {Out, 2, F::All, All},
             {Out, 3, F::Pipefitter, Pipefitter},
             {In, 1, F::Prices, Prices},
             {In, 3, F::All, All},
             {SpreadFirst, 0, F::All, Unit | Flag | Prices | Labour | Results},
             {SpreadPrices, 0, F::All, Prices},
             {ClearAll, 0, F::All, ~(Key | Sort | Yosan)},
             {ClearTab, 0, F::All, cleared},
             {ClearTab, 3, F::All, cleared}}) {
        RowTable rows = target;
        if (op == Whole) copyFieldSet(rows, source, set);
        if (op == Out) copyDetailOut(rows, source, tab, set);
        if (op == In) pasteDetailIn(rows, source, tab, set);
        if (op == SpreadFirst) spreadFirstDetail(rows);
        if (op == SpreadPrices) spreadBufferPrices(rows, source);
        if (op == ClearAll) clearPipeTypeRows(rows);
        if (op == ClearTab) clearDetailRows(rows, tab);
        const RowTable& from = op >= ClearAll ? blank : op == SpreadFirst ? target : source;
        for (int r = 1; r <= RowCount; ++r) {
            const int s = sourceRow(op, tab, r);
            EXPECT_EQ(rowImage(rows[r]), rowImage(s ? mix(target[r], from[s], mask) : target[r]))
                << "operation " << op << " tab " << tab << " set " << int(set) << " row " << r;
        }
    }
    // Text is copied up to its byte width.
    PipeRow from, to;
    from.goodsBytes = QByteArray(90, 'g');
    from.kindBytes = QByteArray(45, 'k');
    from.sizeBytes = QByteArray("1234567");
    from.unitBytes = QByteArray("abcdef");
    copyFieldSet(to, from, F::All);
    EXPECT_EQ(to.goodsBytes + to.kindBytes + to.sizeBytes + to.unitBytes,
              QByteArray(80, 'g') + QByteArray(40, 'k') + "123456abcd");
}

} // namespace
