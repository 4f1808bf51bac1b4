// The workbook output of a full group: 20 demo pipe types of 14 sizes in four
// details. Measures the stream from the database, the workbook from the
// stream, and both together as "エクセル出力" runs them; reports the size of
// the workbook. Run with --benchmark_repetitions for medians.

#include "output/excelstream.h"
#include "output/excelworkbook.h"
#include "platform/consoledialogs.h"
#include "store/modulewrappersqlite.h"
#include "store/suitestandin.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <stdexcept>

namespace {

const QString Columns = QStringLiteral(
    "UKEY, GOODS, KIND, SORT, SIZE, YOSAN, CI, FLAG, NET, GROSS, TEIKA, DATA1, DATA2, DATA3, "
    "DATA4, DATA5, DATA6, DATA7, CALC1_G, CALC2_G, CALC3_G, CALC4_G, CALC5_G, CALC6_G, CALC7_G, "
    "CALC1_N, CALC2_N, CALC3_N, CALC4_N, CALC5_N, CALC6_N, CALC7_N, NTANKA, GTANKA, FTANKA");

// A demo database whose group 1 holds 20 pipe types: positions 7 to 20 take
// copies of the six demo pipe types of the group.
struct FullGroup {
    FullGroup() {
        db = dir.filePath(QStringLiteral("velmoraMainEX.db3"));
        createSuiteDatabase(db, true);
        QStringList sqls;
        for (int k = 7; k <= 20; ++k)
            sqls << QStringLiteral("INSERT OR REPLACE INTO ex_kanzai (CTG, GRP, KAN, NO, %1) "
                                   "SELECT CTG, GRP, %2, NO, %1 FROM ex_kanzai "
                                   "WHERE CTG=1 AND GRP=1 AND KAN=%3;")
                        .arg(Columns)
                        .arg(k)
                        .arg((k - 1) % 6 + 1);
        QString reason;
        if (!tryExecStatements(db, sqls, reason)) throw std::runtime_error(reason.toStdString());
        QDir(dir.path()).mkdir(QStringLiteral("temp"));
        stream = excelStreamPath(dir.path());
        book = dir.filePath(QStringLiteral("book.xlsx"));
    }
    QTemporaryDir dir;
    QString db, stream, book;
    const QStringList tabs = {QStringLiteral("屋内一般"), QStringLiteral("機械室・便所"),
                              QStringLiteral("屋外架空"), QStringLiteral("地中埋設")};
};

FullGroup& group() {
    static FullGroup g;
    return g;
}

void BM_ExcelStream(benchmark::State& state) {
    FullGroup& g = group();
    for (auto _ : state) {
        const QStringList lines = excelStream(g.db, 1, g.tabs);
        writeExcelStream(g.stream, lines);
        benchmark::DoNotOptimize(lines.size());
    }
    state.counters["lines"] = double(excelStream(g.db, 1, g.tabs).size());
    state.counters["pipe_types"] =
        double(excelStream(g.db, 1, g.tabs).count(QStringLiteral("AutoFit;1;1;;")));
}

void BM_ExcelWorkbook(benchmark::State& state) {
    FullGroup& g = group();
    writeExcelStream(g.stream, excelStream(g.db, 1, g.tabs));
    for (auto _ : state)
        writeExcelWorkbook(g.stream, g.book);
    state.counters["workbook_bytes"] = double(QFileInfo(g.book).size());
}

void BM_ExcelOutWhole(benchmark::State& state) {
    FullGroup& g = group();
    for (auto _ : state) {
        writeExcelStream(g.stream, excelStream(g.db, 1, g.tabs));
        writeExcelWorkbook(g.stream, g.book);
    }
    state.counters["workbook_bytes"] = double(QFileInfo(g.book).size());
    state.counters["stream_bytes"] = double(QFileInfo(g.stream).size());
}

BENCHMARK(BM_ExcelStream)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ExcelWorkbook)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ExcelOutWhole)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
