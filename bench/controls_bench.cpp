// The grid's per-cell lookup as painting uses it, on a grid styled like the
// price sheet (one range entry and an entry for nearly every other cell),
// and the number box's formatting of a value.
#include "controls/numbereditcore.h"
#include "controls/strcgridmodel.h"

#include <benchmark/benchmark.h>

namespace {

void styleLikeTheSheet(PriceGridModel& g) {
    g.SetColCount(11);
    g.SetRowCount(15);
    SCGCellParam* range = g.CellParams().Add();
    range->SetColMax(2);
    range->SetRowMax(14);
    range->SetCol(1);
    range->SetRow(1);
    range->SetRangeEnabled(true);
    for (int r = 0; r <= 14; ++r)
        for (int c = 0; c < 11; ++c) {
            g.SetCellFontColors(c, r, clBlack);
            g.SetCellFontWidths(c, r, 1);
            g.SetCellAlignments(c, r, taRightJustify);
            g.SetCellColors(c, r, clWhite);
        }
}

void BM_GridLookupAllCells(benchmark::State& state) {
    PriceGridModel g;
    styleLikeTheSheet(g);
    for (auto _ : state) {
        int found = 0;
        for (int r = 0; r < 15; ++r)
            for (int c = 0; c < 11; ++c)
                found += g.FindCellParam(c, r) != nullptr;
        benchmark::DoNotOptimize(found);
    }
    state.counters["entries"] = g.CellParams().Count();
}
BENCHMARK(BM_GridLookupAllCells);

void BM_NumberBoxValueWrite(benchmark::State& state) {
    NumberEditCore box;
    box.SetFigure(2);
    box.SetFixed(true);
    box.SetComma(true);
    box.SetRoundMode(rmRound);
    long double v = 1234.5L;
    for (auto _ : state) {
        box.SetValue(v);
        v += 0.37L;
        benchmark::DoNotOptimize(box.Text());
    }
}
BENCHMARK(BM_NumberBoxValueWrite);

} // namespace
