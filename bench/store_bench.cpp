// Loading and saving a pipe type on a demo database, against one transaction
// holding the same 60 updates. Run with --benchmark_repetitions for medians.

#include "benchdialogs.h"
#include "document/workspace.h"
#include "platform/consoledialogs.h"
#include "platform/datapaths.h"
#include "store/modulewrappersqlite.h"
#include "store/pipetypestore.h"
#include "store/suitestandin.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include <sqlite3.h>

#include <benchmark/benchmark.h>

namespace {

// One demo database for the whole run, in a temporary folder.
struct DemoDatabase {
    DemoDatabase() {
        workspace.paths().exDatabase = dir.filePath(QStringLiteral("velmoraMainEX.db3"));
        createSuiteDatabase(workspace.paths().exDatabase, true);
    }
    QTemporaryDir dir;
    Workspace workspace;
};

DemoDatabase& demo() {
    static DemoDatabase d;
    return d;
}
Workspace& ws() {
    return demo().workspace;
}
PipeTypeDocument& doc() {
    return ws().document();
}
RowTable& rows() {
    return doc().rows();
}
void save() {
    ws().save(1, 1, SaveCheck::AgainstLoaded, benchDialogs());
}

void BM_LoadPipeType(benchmark::State& state) {
    demo();
    for (auto _ : state) {
        ws().load(1, 1);
        benchmark::DoNotOptimize(rows()[1].submittedUnitPrice);
    }
}

void BM_SavePipeType(benchmark::State& state) {
    demo();
    ws().load(1, 1);
    doc().takeSnapshot();
    for (auto _ : state)
        save();
}

// The same 60 statements in one plain transaction through the library
// itself: what a save cannot do with less.
void rawTransaction(sqlite3* db, const QList<QByteArray>& statements) {
    sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    for (const QByteArray& sql : statements)
        sqlite3_exec(db, sql.constData(), nullptr, nullptr, nullptr);
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
}

QList<QByteArray> saveStatements() {
    QList<QByteArray> statements;
    for (int n = 1; n <= RowCount; ++n)
        statements << saveStatement(rows()[n], 1, 1, n).toUtf8();
    return statements;
}

void BM_SaveOneTransaction(benchmark::State& state) {
    demo();
    ws().load(1, 1);
    const QList<QByteArray> statements = saveStatements();
    sqlite3* db = nullptr;
    sqlite3_open(ws().paths().exDatabase.toUtf8().constData(), &db);
    for (auto _ : state)
        rawTransaction(db, statements);
    sqlite3_close(db);
}

// A save and the raw transaction in turns, so that the load of the machine
// falls on both alike. Both run on a connection that is already open: the
// program keeps its connection from one save to the next.
void BM_SaveToRawRatio(benchmark::State& state) {
    demo();
    ws().load(1, 1);
    doc().takeSnapshot();
    const QList<QByteArray> statements = saveStatements();
    sqlite3* db = nullptr;
    sqlite3_open_v2(ws().paths().exDatabase.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE,
                    nullptr);
    QElapsedTimer clock;
    qint64 saving = 0, raw = 0;
    for (auto _ : state) {
        clock.start();
        save();
        saving += clock.nsecsElapsed();
        clock.start();
        rawTransaction(db, statements);
        raw += clock.nsecsElapsed();
    }
    sqlite3_close(db);
    state.counters["save_ms"] = double(saving) / 1e6 / double(state.iterations());
    state.counters["raw_ms"] = double(raw) / 1e6 / double(state.iterations());
    state.counters["ratio"] = double(saving) / double(raw);
}

// qorvale-tool recalc --group 1 against the sqlite3 shell running the same
// 1,200 updates in 20 transactions, whole processes in turns.
void BM_RecalcToolToShellRatio(benchmark::State& state) {
    QTemporaryDir data;
    qputenv("QORVALE_COMMON_DATA", data.path().toUtf8());
    QString out, err;
    QTextStream o(&out), e(&err);
    runVelmoraSuite({QStringLiteral("init"), QStringLiteral("--demo")}, o, e);
    const QString db = exDatabasePathIn(databaseFolderFrom(QString()));
    // The statements the run writes, computed here as the run computes them.
    const QString saved = ws().paths().exDatabase;
    ws().paths().exDatabase = db;
    QByteArray script;
    for (int kan = 1; kan <= 20; ++kan) {
        ws().load(1, kan);
        for (int r = 1; r < OptionRow; ++r)
            doc().calculateRow(r);
        script += "BEGIN IMMEDIATE;\n";
        for (int n = 1; n <= RowCount; ++n)
            script += saveStatement(rows()[n], 1, kan, n).toUtf8();
        script += "COMMIT;\n";
    }
    ws().paths().exDatabase = saved;
    QFile file(data.filePath(QStringLiteral("updates.sql")));
    file.open(QIODevice::WriteOnly);
    file.write(script);
    file.close();

    auto run = [](const QString& program, const QStringList& args, const QString& input) {
        QProcess p;
        if (!input.isEmpty()) p.setStandardInputFile(input);
        p.start(program, args);
        p.waitForFinished(-1);
    };
    QElapsedTimer clock;
    qint64 tool = 0, shell = 0;
    for (auto _ : state) {
        clock.start();
        run(QStringLiteral(QORVALE_TOOL),
            {QStringLiteral("recalc"), QStringLiteral("--group"), QStringLiteral("1")}, QString());
        tool += clock.nsecsElapsed();
        clock.start();
        run(QStringLiteral("sqlite3"), {db}, file.fileName());
        shell += clock.nsecsElapsed();
    }
    state.counters["tool_ms"] = double(tool) / 1e6 / double(state.iterations());
    state.counters["shell_ms"] = double(shell) / 1e6 / double(state.iterations());
    state.counters["ratio"] = double(tool) / double(shell);
    qunsetenv("QORVALE_COMMON_DATA");
}

BENCHMARK(BM_LoadPipeType)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_SavePipeType)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_SaveOneTransaction)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_SaveToRawRatio)->Unit(benchmark::kMillisecond)->MinTime(3.0)->UseRealTime();
BENCHMARK(BM_RecalcToolToShellRatio)->Unit(benchmark::kMillisecond)->MinTime(5.0)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
