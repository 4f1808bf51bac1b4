// The workspace on the demo data: program start to the first pipe type shown,
// and a tree click to the new pipe type shown. Offscreen, real database.
#include "benchdialogs.h"
#include "sheet/pipetypeheader.h"
#include "shell/mainwindow.h"
#include "shell/pipetypetree.h"

#include <QApplication>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

void runShowStep() {
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

void BM_StartToFirstPipeType(benchmark::State& state) {
    for (auto _ : state) {
        auto form = std::make_unique<MainWindow>(benchDialogs(), QString());
        form->show();
        runShowStep();
        benchmark::DoNotOptimize(form->header()->goodsBox());
        state.PauseTiming();
        form->close();
        form.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_StartToFirstPipeType)->Unit(benchmark::kMillisecond)->MinTime(3.0);

void BM_TreeClickToPipeTypeShown(benchmark::State& state) {
    auto form = std::make_unique<MainWindow>(benchDialogs(), QString());
    form->show();
    runShowStep();
    int node = 1;
    for (auto _ : state) {
        node = node == 1 ? 2 : 1;
        form->tree->setCurrentItem(form->tree->node(node));
        form->treeClicked();
    }
    form->close();
}
BENCHMARK(BM_TreeClickToPipeTypeShown)->Unit(benchmark::kMillisecond)->MinTime(3.0);

} // namespace
