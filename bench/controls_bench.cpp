// The grid's per-cell lookup as painting uses it, on a grid styled like the
// price sheet (one range entry and an entry for nearly every other cell),
// and the number box's formatting of a value.
#include "controls/numbereditcore.h"
#include "controls/strcgridmodel.h"

#include <benchmark/benchmark.h>

namespace {

void styleLikeTheSheet(PriceGridModel& g) {
    g.setColCount(11);
    g.setRowCount(15);
    SCGCellParam* range = g.cellParams().add();
    range->setColMax(2);
    range->setRowMax(14);
    range->setCol(1);
    range->setRow(1);
    range->setRangeEnabled(true);
    for (int r = 0; r <= 14; ++r)
        for (int c = 0; c < 11; ++c) {
            g.setCellFontColors(c, r, clBlack);
            g.setCellFontWidths(c, r, 1);
            g.setCellAlignments(c, r, taRightJustify);
            g.setCellColors(c, r, clWhite);
        }
}

void BM_GridLookupAllCells(benchmark::State& state) {
    PriceGridModel g;
    styleLikeTheSheet(g);
    for (auto _ : state) {
        int found = 0;
        for (int r = 0; r < 15; ++r)
            for (int c = 0; c < 11; ++c)
                found += g.findCellParam(c, r) != nullptr;
        benchmark::DoNotOptimize(found);
    }
    state.counters["entries"] = g.cellParams().count();
}
BENCHMARK(BM_GridLookupAllCells);

void BM_NumberBoxValueWrite(benchmark::State& state) {
    NumberEditCore box;
    box.setFigure(2);
    box.setFixed(true);
    box.setComma(true);
    box.setRoundMode(rmRound);
    long double v = 1234.5L;
    for (auto _ : state) {
        box.setValue(v);
        v += 0.37L;
        benchmark::DoNotOptimize(box.Text());
    }
}
BENCHMARK(BM_NumberBoxValueWrite);

} // namespace
