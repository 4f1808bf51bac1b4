// Loading and saving a pipe type on a demo database, against one transaction
// holding the same 60 updates. Run with --benchmark_repetitions for medians.

#include "platform/consoledialogs.h"
#include "platform/datapaths.h"
#include "store/modulewrappersqlite.h"
#include "store/pipetypestore.h"
#include "store/suitestandin.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

// One demo database for the whole run, in a temporary folder.
struct DemoDatabase {
    DemoDatabase() {
        ExDatabasePath = dir.filePath(QStringLiteral("velmoraMainEX.db3"));
        CreateSuiteDatabase(ExDatabasePath, true);
        InstallDialogs(std::make_unique<ConsoleDialogs>());
    }
    QTemporaryDir dir;
};

DemoDatabase& demo() {
    static DemoDatabase d;
    return d;
}

void BM_LoadPipeType(benchmark::State& state) {
    demo();
    for (auto _ : state) {
        LoadPipeType(1, 1, 1);
        benchmark::DoNotOptimize(KanzaiRows[1].GTANKA);
    }
}

void BM_SavePipeType(benchmark::State& state) {
    demo();
    LoadPipeType(1, 1, 1);
    TakeSnapshot();
    for (auto _ : state)
        SavePipeType(nullptr, 1, 1, 0, 1);
}

void BM_SaveOneTransaction(benchmark::State& state) {
    demo();
    LoadPipeType(1, 1, 1);
    QStringList statements;
    for (int n = 1; n <= RowCount; ++n)
        statements << SaveStatement(KanzaiRows[n], 1, 1, n);
    for (auto _ : state)
        benchmark::DoNotOptimize(ExecStatements(ExDatabasePath, statements));
}

BENCHMARK(BM_LoadPipeType)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_SavePipeType)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_SaveOneTransaction)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
