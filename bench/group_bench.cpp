// The group recalculation on the demo data: a full run of rewriteGroup on its
// worker thread against 20 plain saves of the same pipe types on the main
// thread, and the longest time the main thread went without serving an event
// during the run. Offscreen, real database.
#include "benchdialogs.h"
#include "engine/grouprewrite.h"
#include "platform/dialogs.h"
#include "shell/grouprewritecommands.h"
#include "shell/mainwindow.h"
#include "store/pipetypestore.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>

namespace {

std::unique_ptr<MainWindow> openForm() {
    auto form = std::make_unique<MainWindow>(benchDialogs(), QString());
    form->show();
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    return form;
}

void BM_GroupRewriteRun(benchmark::State& state) {
    auto form = openForm();
    // A heartbeat on the main thread: the gap between two of its ticks is
    // the longest the event loop went unserved.
    QTimer beat;
    beat.setTimerType(Qt::PreciseTimer);
    beat.setInterval(1);
    QElapsedTimer clock;
    qint64 last = 0, longest = 0;
    QObject::connect(&beat, &QTimer::timeout, [&] {
        const qint64 now = clock.nsecsElapsed();
        if (last > 0) longest = std::max(longest, now - last);
        last = now;
    });
    for (auto _ : state) {
        clock.start();
        last = 0;
        beat.start();
        form->groupRewrite()->rewriteGroup(1);
        form->groupRewrite()->waitForEnd();
        beat.stop();
    }
    state.counters["longest_gap_ms"] = double(longest) / 1e6;
    form->close();
}
BENCHMARK(BM_GroupRewriteRun)->Unit(benchmark::kMillisecond)->MinTime(5.0)->UseRealTime();

void BM_TwentyPlainSaves(benchmark::State& state) {
    auto form = openForm();
    for (auto _ : state) {
        for (int kan = 1; kan <= GroupPipeTypes; ++kan) {
            form->workspace().load(form->currentGroup, kan);
            form->document().calculateAll(); // as the window shows a pipe type
            form->workspace().save(form->currentGroup, kan, SaveCheck::AgainstLoaded,
                                   benchDialogs());
        }
    }
    form->workspace().load(form->currentGroup, form->currentPipeType);
    form->close();
}
BENCHMARK(BM_TwentyPlainSaves)->Unit(benchmark::kMillisecond)->MinTime(5.0)->UseRealTime();

// Both in turns, so that the load of the machine falls on both alike: the
// ratio of the run to the 20 saves.
void BM_RunToSavesRatio(benchmark::State& state) {
    auto form = openForm();
    QElapsedTimer clock;
    qint64 run = 0, saves = 0;
    for (auto _ : state) {
        clock.start();
        form->groupRewrite()->rewriteGroup(1);
        form->groupRewrite()->waitForEnd();
        run += clock.nsecsElapsed();
        clock.start();
        for (int kan = 1; kan <= GroupPipeTypes; ++kan) {
            form->workspace().load(form->currentGroup, kan);
            form->document().calculateAll(); // as the window shows a pipe type
            form->workspace().save(form->currentGroup, kan, SaveCheck::AgainstLoaded,
                                   benchDialogs());
        }
        saves += clock.nsecsElapsed();
        form->workspace().load(form->currentGroup, form->currentPipeType);
    }
    state.counters["run_ms"] = double(run) / 1e6 / double(state.iterations());
    state.counters["saves_ms"] = double(saves) / 1e6 / double(state.iterations());
    state.counters["ratio"] = double(run) / double(saves);
    form->close();
}
BENCHMARK(BM_RunToSavesRatio)->Unit(benchmark::kMillisecond)->MinTime(10.0)->UseRealTime();

// The work of the run alone, on the main thread, without progress.
void BM_RecalculateGroupAlone(benchmark::State& state) {
    auto form = openForm();
    for (auto _ : state)
        form->workspace().recalculateGroup(1, form->currentGroup, form->currentPipeType,
                                           benchDialogs(), nullptr);
    form->close();
}
BENCHMARK(BM_RecalculateGroupAlone)->Unit(benchmark::kMillisecond)->MinTime(5.0)->UseRealTime();

} // namespace
