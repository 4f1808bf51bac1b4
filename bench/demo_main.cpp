// Entry of the benchmarks that run the real window: the offscreen platform
// and a demo data folder made by the suite stand-in for the run.
#include "store/suitestandin.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTextStream>

#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QTemporaryDir dir;
    qputenv("QORVALE_COMMON_DATA", dir.path().toUtf8());
    QString out;
    QTextStream sink(&out);
    if (runVelmoraSuite({QStringLiteral("init"), QStringLiteral("--demo")}, sink, sink) != 0)
        return 1;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
