// CalcRow throughput on a realistic mix of rows and options.
#include "document/pipetypedocument.h"

#include <benchmark/benchmark.h>

#include <random>

namespace {

void fillMix(RowTable& rows, std::mt19937_64& rng) {
    std::uniform_int_distribution<std::int64_t> price(100, 5000000); // 0.01 .. 500 in 4 decimals
    std::uniform_int_distribution<std::int64_t> factor(0, 20000);
    for (int r = 1; r < RowCount; ++r) {
        PipeRow& row = rows[r];
        row.listPrice = Currency::fromRaw(price(rng) * 100);
        row.submittedPrice = Currency::fromRaw(price(rng) * 100);
        row.costPrice = Currency::fromRaw(price(rng) * 80);
        for (Currency& d : row.factors)
            d = Currency::fromRaw(factor(rng));
    }
}

void setOptions(PipeTypeDocument& doc, int variant) {
    PipeTypeOptions o = doc.options();
    o.modeFlag() = variant & 1;
    o.otherMethod() = (variant >> 1) & 1;
    o.rateOn() = Currency::fromInt((variant >> 2) & 1);
    o.elementDigits() = DigitSteps[std::size_t((variant >> 3) % 4)];
    o.elementFraction() = FractionSteps[std::size_t(variant % 3)];
    o.adoptedDigits() = DigitSteps[std::size_t(variant % 6)];
    o.adoptedFraction() = FractionSteps[std::size_t((variant + 1) % 3)];
    o.unitDigits() = DigitSteps[std::size_t((variant + 2) % 6)];
    o.unitFraction() = FractionSteps[std::size_t((variant + 2) % 3)];
    o.labourSubmitted() = Currency::fromInt(18000 + variant);
    o.labourCost() = Currency::fromInt(15000 + variant);
    o.rateSubmitted() = Currency::fromInt(70);
    o.rateCost() = Currency::fromInt(60);
}

void BM_CalcRow(benchmark::State& state) {
    std::mt19937_64 rng(42);
    PipeTypeDocument doc;
    fillMix(doc.rows(), rng);
    int variant = 0;
    std::int64_t count = 0;
    for (auto _ : state) {
        setOptions(doc, variant++ % 96);
        for (int r = 1; r < RowCount; ++r)
            doc.calculateRow(r);
        count += RowCount - 1;
        benchmark::DoNotOptimize(doc.rows()[1].adoptedUnitPrice);
    }
    state.SetItemsProcessed(count);
}
BENCHMARK(BM_CalcRow);

} // namespace

BENCHMARK_MAIN();
