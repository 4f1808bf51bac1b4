#include "store/suitestandin.h"

#include "engine/calcrow.h"
#include "output/printstyle.h"
#include "platform/commandline.h"
#include "platform/datapaths.h"
#include "store/codepage.h"
#include "store/piperow.h"
#include "store/sqliteclasses.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <stdexcept>

namespace {

const char* const SteelSizes[14] = {"15A", "20A",  "25A",  "32A",  "40A",  "50A",  "65A",
                                    "80A", "100A", "125A", "150A", "200A", "250A", "300A"};
// List price of white carbon steel pipe, yen a metre, by steel size.
const int SteelList[14] = {480,  620,  900,  1150, 1330,  1860,  2560,
                           3020, 4330, 5600, 7000, 10500, 14800, 18600};
// Pipefitter labour, persons a metre, indoors, by steel size.
const double SteelLabour[14] = {0.069, 0.084, 0.105, 0.126, 0.143, 0.178, 0.222,
                                0.262, 0.340, 0.415, 0.496, 0.663, 0.820, 0.980};

const char* const CopperSizes[13] = {"6.35",  "9.52",  "12.70", "15.88", "19.05", "22.22", "25.40",
                                     "28.58", "31.75", "34.92", "38.10", "44.45", "50.80"};
const int CopperList[13] = {350,  520,  700,  900,  1150, 1400, 1700,
                            2000, 2400, 2800, 3200, 4200, 5200};
const double CopperLabour[13] = {0.045, 0.050, 0.056, 0.062, 0.070, 0.078, 0.088,
                                 0.098, 0.110, 0.122, 0.135, 0.160, 0.190};

const char* const DetailCaptions[4] = {"屋内一般", "機械室・便所", "屋外架空", "地中埋設"};

// One demo pipe type.
struct DemoType {
    int grp;
    int kan;
    const char* goods;
    const char* use;
    const char* joint;
    double listFactor; // list price against white steel (or plain copper)
    double fitting;    // fittings factor indoors
    bool copper;       // refrigerant sizes and refrigerant mode
    bool rateOn;       // unit prices from the list price
};

const DemoType DemoTypes[] = {
    {1, 1, "水道用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(VA)", "給水", "ねじ接合（管端防食継手）", 2.05, 0.55,
     false, false},
    {1, 2, "水道用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(VB)", "給水", "ねじ接合（管端防食継手）", 1.85, 0.55,
     false, false},
    {1, 3, "水道用ﾎﾟﾘｴﾁﾚﾝ粉体ﾗｲﾆﾝｸﾞ鋼管PA", "給水", "ねじ接合（管端防食継手）", 2.25, 0.55, false,
     true},
    {1, 4, "ステンレス鋼鋼管", "給水、給湯", "拡管式", 2.60, 0.40, false, false},
    {1, 5, "水道用耐衝撃性硬質塩化ﾋﾞﾆﾙ管(HIVP)", "給水", "メカニカル形継手", 0.55, 0.45, false,
     false},
    {1, 6, "ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVA)", "給水", "フランジ接合", 2.40, 0.70, false, false},
    {2, 1, "排水用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管（黒）", "排水", "ＭＤ継手", 1.70, 0.50, false, false},
    {2, 2, "排水用塩化ﾋﾞﾆﾙｺ-ﾃｨﾝｸﾞ鋼管", "排水", "ＭＤ継手", 1.60, 0.50, false, false},
    {3, 1, "配管用炭素鋼鋼管（白）", "通気", "ねじ接合", 1.00, 0.50, false, false},
    {4, 1, "給湯用塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管", "給湯", "ねじ接合（管端防食継手）", 2.30, 0.55, false,
     false},
    {4, 2, "銅管（Ｍ）", "給湯", "圧縮、プレス", 1.90, 0.45, false, false},
    {5, 1, "消火配管用炭素鋼鋼管（白）　SGP", "消火、冷却水、冷温水", "ねじ接合", 1.05, 0.50, false,
     false},
    {6, 1, "配管用炭素鋼鋼管（白）", "冷温水", "ねじ接合", 1.00, 0.50, false, false},
    {6, 2, "圧力配管用炭素鋼鋼管(黒)", "冷温水", "溶接接合", 1.45, 0.60, false, false},
    {8, 1, "圧力配管用炭素鋼鋼管(黒)", "蒸気給気管、蒸気還管", "溶接接合", 1.45, 0.60, false,
     false},
    {10, 1, "冷媒用銅管", "冷媒", "溶接接合", 1.00, 0.35, true, false},
    {10, 2, "冷媒用被覆銅管", "冷媒", "溶接接合", 1.40, 0.35, true, false},
    {10, 3, "保温付被覆銅管", "冷媒", "圧縮、プレス", 1.80, 0.35, true, false},
};

Currency money(double v) {
    return Currency::fromRaw(std::int64_t(v * 10000.0 + 0.5));
}
// To a whole multiple of step yen.
Currency yen(double v, int step) {
    return Currency::fromInt(std::int64_t(v / step + 0.5) * step);
}

void clearTable(RowTable& rows) {
    for (int r = 1; r <= RowCount; ++r)
        rows[r] = PipeRow{};
}

// The 60 rows of a demo pipe type, with computed prices.
void fillDemo(RowTable& rows, const DemoType& t) {
    clearTable(rows);
    const int sizes = t.copper ? 13 : 14;
    const double detailLabour[4] = {1.0, 1.3, 0.9, 0.8};
    const double detailFitting[4] = {1.0, 1.5, 0.65, 0.45};
    const double supply[4] = {1.1, 1.1, 1.05, 1.05};
    const double jointing[4] = {0.05, 0.07, 0.04, 0.03};
    const double supports[4] = {0.10, 0.15, 0.12, 0.0};
    const double chipping[4] = {0.015, 0.02, 0.0, 0.0};
    for (int d = 0; d < 4; ++d) {
        for (int i = 0; i < sizes; ++i) {
            PipeRow& r = rows[d * TabRows + i + 1];
            const double list = (t.copper ? CopperList[i] : SteelList[i]) * t.listFactor;
            r.setSize(QString::fromUtf8(t.copper ? CopperSizes[i] : SteelSizes[i]));
            r.listPrice = yen(list, 10);
            r.submittedPrice = yen(list * 0.65, 10);
            r.costPrice = yen(list * 0.55, 10);
            r.factor(1) = money(supply[d]);
            const double labour = (t.copper ? CopperLabour[i] : SteelLabour[i]) * detailLabour[d];
            r.factor(5) = money(double(std::int64_t(labour * 1000 + 0.5)) / 1000);
            r.factor(7) = money(0.1);
            if (t.copper) {
                r.factor(2) = money(t.fitting); // fittings and jointing
                r.factor(3) = money(0.12);      // supports
                r.factor(4) = money(0.05);      // sundries
            } else {
                r.factor(2) =
                    money(double(std::int64_t(t.fitting * detailFitting[d] * 100 + 0.5)) / 100);
                r.factor(3) = money(jointing[d]);
                r.factor(4) = money(supports[d]);
                r.factor(6) = money(chipping[d]);
            }
        }
    }
    rows[1].setGoods(QString::fromUtf8(t.goods));
    rows[2].setGoods(QString::fromUtf8(t.use));
    rows[3].setGoods(QString::fromUtf8(t.joint));
    rows[4].setGoods(QStringLiteral("公共建築工事標準単価積算基準"));
    rows[5].setGoods(QStringLiteral("令和6年版 P.%1").arg(200 + t.grp * 10 + t.kan));
    for (int d = 0; d < 4; ++d)
        rows[d * TabRows + 1].setKind(
            QString::fromUtf8(t.copper && d == 0 ? "一般" : DetailCaptions[d]));
    PipeTypeOptions o(rows[OptionRow]);
    o.otherMethod() = 0;
    o.modeFlag() = t.copper ? 1 : 0;
    o.rateCost() = Currency::fromInt(55);
    o.rateSubmitted() = Currency::fromInt(65);
    o.adoptedDigits() = Currency::fromInt(10);
    o.adoptedFraction() = Currency{};          // round down
    o.labourCost() = Currency::fromInt(20500); // base labour cost, cost side
    o.labourSubmitted() = Currency::fromInt(24200);
    o.elementDigits() = Currency::fromInt(1);
    o.elementFraction() = Currency::fromRaw(5000); // half up
    o.rateOn() = t.rateOn ? Currency::fromInt(1) : Currency{};
    o.unitDigits() = Currency::fromInt(10);
    o.unitFraction() = Currency::fromRaw(9000);
    for (int r = 1; r <= RowCount; ++r)
        rows[r].setUnit(QStringLiteral("ｍ"));
    for (int r = 1; r < OptionRow; ++r)
        calcRowWith(rows[r], o);
}

const char* const CreateKanzai =
    "CREATE TABLE ex_kanzai (CTG INTEGER NOT NULL, GRP INTEGER NOT NULL, KAN INTEGER NOT NULL, "
    "NO INTEGER NOT NULL, UKEY INTEGER, GOODS TEXT, KIND TEXT, SORT INTEGER, SIZE TEXT, "
    "YOSAN INTEGER, CI TEXT, FLAG INTEGER, NET NUMERIC, GROSS NUMERIC, TEIKA NUMERIC, "
    "DATA1 NUMERIC, DATA2 NUMERIC, DATA3 NUMERIC, DATA4 NUMERIC, DATA5 NUMERIC, DATA6 NUMERIC, "
    "DATA7 NUMERIC, CALC1_G NUMERIC, CALC2_G NUMERIC, CALC3_G NUMERIC, CALC4_G NUMERIC, "
    "CALC5_G NUMERIC, CALC6_G NUMERIC, CALC7_G NUMERIC, CALC1_N NUMERIC, CALC2_N NUMERIC, "
    "CALC3_N NUMERIC, CALC4_N NUMERIC, CALC5_N NUMERIC, CALC6_N NUMERIC, CALC7_N NUMERIC, "
    "NTANKA NUMERIC, GTANKA NUMERIC, FTANKA NUMERIC)";
const char* const CreateKanzaiKey =
    "CREATE UNIQUE INDEX ex_kanzai_key ON ex_kanzai (CTG, GRP, KAN, NO)";
const char* const CreateExconf = "CREATE TABLE exconf (conf TEXT, notes TEXT)";
const char* const InsertKanzai =
    "INSERT INTO ex_kanzai (CTG, GRP, KAN, NO, UKEY, GOODS, KIND, SORT, SIZE, YOSAN, CI, FLAG, "
    "NET, GROSS, TEIKA, DATA1, DATA2, DATA3, DATA4, DATA5, DATA6, DATA7, CALC1_G, CALC2_G, "
    "CALC3_G, CALC4_G, CALC5_G, CALC6_G, CALC7_G, CALC1_N, CALC2_N, CALC3_N, CALC4_N, CALC5_N, "
    "CALC6_N, CALC7_N, NTANKA, GTANKA, FTANKA) VALUES (1, ?, ?, ?, ?, ?, ?, 0, ?, ?, ?, ?, ?, ?, "
    "?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";

void insertRows(SqliteDatabase& db, SqliteQuery& q, int grp, int kan, const RowTable& rows) {
    for (int n = 1; n <= RowCount; ++n) {
        const PipeRow& r = rows[n];
        int i = 1;
        db.bindSql(q, i++, std::int64_t(grp));
        db.bindSql(q, i++, std::int64_t(kan));
        db.bindSql(q, i++, std::int64_t(n));
        db.bindSql(q, i++, std::int64_t(n)); // UKEY: 60 in the option row
        db.bindSql(q, i++, fromAnsi(r.goodsBytes));
        db.bindSql(q, i++, fromAnsi(r.kindBytes));
        db.bindSql(q, i++, fromAnsi(r.sizeBytes));
        db.bindSql(q, i++, std::int64_t(r.otherMethod));
        db.bindSql(q, i++, fromAnsi(r.unitBytes));
        db.bindSql(q, i++, std::int64_t(r.modeFlag));
        for (Currency c : {r.costPrice, r.submittedPrice, r.listPrice})
            db.bindSql(q, i++, currToStr(c));
        for (Currency c : r.factors)
            db.bindSql(q, i++, currToStr(c));
        for (Currency c : r.submittedAmounts)
            db.bindSql(q, i++, currToStr(c));
        for (Currency c : r.costAmounts)
            db.bindSql(q, i++, currToStr(c));
        for (Currency c : {r.costUnitPrice, r.submittedUnitPrice, r.adoptedUnitPrice})
            db.bindSql(q, i++, currToStr(c));
        db.execSql(q);
    }
}

QString optionValue(const QStringList& args, int& i) {
    return i + 1 < int(args.size()) ? args[++i] : QString();
}

} // namespace

const QStringList& dataRootFolders() {
    static const QStringList f = {QStringLiteral("conf"), QStringLiteral("printdata"),
                                  QStringLiteral("ex_style"), QStringLiteral("temp")};
    return f;
}

const QStringList& styleFiles() {
    static const QStringList f = {QStringLiteral("ex_style/A4横_複合単価_管材歩掛.qvk"),
                                  QStringLiteral("ex_style/A4横_複合単価_管材計算.qvk"),
                                  QStringLiteral("ex_style/A4横_複合単価_管材_歩掛+計算.qvk")};
    return f;
}

bool createDataRoot(const QString& root, QStringList& created) {
    QDir dir;
    if (!QFileInfo::exists(root)) {
        if (!dir.mkpath(root)) return false;
        created << root;
    }
    for (const QString& sub : dataRootFolders()) {
        const QString p = root + QLatin1Char('/') + sub;
        if (QFileInfo::exists(p)) continue;
        if (!dir.mkpath(p)) return false;
        created << p;
    }
    for (int i = 0; i < int(styleFiles().size()); ++i) {
        const QString p = root + QLatin1Char('/') + styleFiles()[i];
        if (QFileInfo::exists(p)) continue;
        // The print program's layout of the style, in its own file format.
        QFile f(p);
        if (!f.open(QIODevice::WriteOnly)) return false;
        f.write(styleFileText(builtInStyle(i)));
        f.close();
        created << p;
    }
    return true;
}

void createSuiteDatabase(const QString& path, bool demo) {
    const QString temp = path + QStringLiteral(".new");
    QFile::remove(temp);
    try {
        SqliteDatabase db(temp, SqliteDatabase::OpenMode::CreateIfMissing);
        db.execSql(QStringLiteral("PRAGMA encoding = 'UTF-8'"));
        db.beginTransaction();
        db.execSql(QString::fromLatin1(CreateKanzai));
        db.execSql(QString::fromLatin1(CreateKanzaiKey));
        db.execSql(QString::fromLatin1(CreateExconf));
        SqliteQuery q = db.prepareSql(QString::fromLatin1(InsertKanzai));
        try {
            RowTable rows;
            for (int g = 1; g <= 10; ++g) {
                for (int k = 1; k <= 20; ++k) {
                    clearTable(rows);
                    if (demo)
                        for (const DemoType& t : DemoTypes)
                            if (t.grp == g && t.kan == k) fillDemo(rows, t);
                    insertRows(db, q, g, k, rows);
                }
            }
        } catch (...) {
            db.releaseSql(q);
            throw;
        }
        db.releaseSql(q);
        db.commit();
    } catch (...) {
        QFile::remove(temp);
        throw;
    }
    QFile::remove(path);
    if (!QFile::rename(temp, path)) {
        QFile::remove(temp);
        throw std::runtime_error("cannot move the new database into place");
    }
}

int runVelmoraSuite(const QStringList& args, QTextStream& out, QTextStream& err) {
    const QString usage = QStringLiteral(
        "usage: velmora-suite init [--demo] [--force] [--launch LAUNCHSTRING]\n"
        "  creates the data folder and the database velmoraMainEX.db3 in the database folder\n"
        "  named by field 5 of the launch string (default as the program's).\n"
        "       velmora-suite --help | --version\n"
        "  --demo   fill demo pipe types with computed prices\n"
        "  --force  replace an existing database\n");
    const int standard = standardOptions(
        args, QStringLiteral("velmora-suite"), usage,
        {QStringLiteral("--demo"), QStringLiteral("--force"), QStringLiteral("--launch")}, out,
        err);
    if (standard >= 0) return standard;
    if (args.isEmpty() || args.first() != QLatin1String("init")) {
        err << usage;
        return 2;
    }
    bool demo = false, force = false;
    QString launch;
    for (int i = 1; i < int(args.size()); ++i) {
        const QString& a = args[i];
        if (a == QLatin1String("--demo"))
            demo = true;
        else if (a == QLatin1String("--force"))
            force = true;
        else if (a == QLatin1String("--launch")) {
            if (i + 1 >= int(args.size())) {
                err << "velmora-suite: --launch needs a value\n" << usage;
                return 2;
            }
            launch = optionValue(args, i);
        } else {
            err << "velmora-suite: unknown argument: " << a << "\n" << usage;
            return 2;
        }
    }
    const QString root = dataRootPath();
    const QString folder = databaseFolderFrom(launch);
    const QString dbPath = QDir::cleanPath(exDatabasePathIn(folder));

    QStringList created;
    if (!createDataRoot(root, created)) {
        err << "velmora-suite: cannot create the data folder " << root << "\n";
        return 1;
    }
    for (const QString& c : created)
        out << "created " << c << "\n";
    if (created.isEmpty()) out << "data folder present: " << root << "\n";

    const bool existed = QFileInfo::exists(dbPath);
    if (existed && !force) {
        out << "database present, left unchanged: " << dbPath << " (--force replaces it)\n";
        return 0;
    }
    if (!QDir().mkpath(folder)) {
        err << "velmora-suite: cannot create the database folder " << folder << "\n";
        return 1;
    }
    try {
        createSuiteDatabase(dbPath, demo);
    } catch (const std::exception& e) {
        err << "velmora-suite: cannot create " << dbPath << ": " << QString::fromUtf8(e.what())
            << "\n";
        return 1;
    }
    out << (existed ? "replaced " : "created ") << dbPath << ": ex_kanzai with 12000 rows ("
        << (demo ? QStringLiteral("%1 demo pipe types").arg(int(std::size(DemoTypes)))
                 : QStringLiteral("all empty"))
        << "), exconf with no record\n";
    return 0;
}
