// The roles a table view asks of the sheet's grid model for every cell as
// it paints, and the number box's formatting of a value.
#include "controls/numbereditcore.h"
#include "controls/pricegridmodel.h"

#include <benchmark/benchmark.h>

namespace {

void BM_GridRolesAllCells(benchmark::State& state) {
    PriceGridModel g(11, 14, 4);
    for (int r = 0; r <= 14; ++r)
        for (int c = 0; c < 11; ++c) {
            g.setText(c, r, QString::number(r * 100 + c));
            g.setAlignment(c, r, Qt::AlignRight);
        }
    const int roles[] = {Qt::DisplayRole, Qt::BackgroundRole, Qt::ForegroundRole,
                         Qt::TextAlignmentRole};
    for (auto _ : state) {
        int filled = 0;
        for (int r = 0; r < 14; ++r)
            for (int c = 0; c < 11; ++c)
                for (int role : roles)
                    filled += g.data(g.index(r, c), role).isValid();
        benchmark::DoNotOptimize(filled);
    }
}
BENCHMARK(BM_GridRolesAllCells);

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
        benchmark::DoNotOptimize(box.numberText());
    }
}
BENCHMARK(BM_NumberBoxValueWrite);

} // namespace
