// The suite stand-in and the batch tool, run as their command lines are, on a
// common data folder in a temporary directory.

#include "engine/calcrow.h"
#include "platform/datapaths.h"
#include "platform/scripteddialogs.h"
#include "shell/batchtool.h"
#include "store/modulewrappersqlite.h"
#include "store/pipetypestore.h"
#include "store/suitestandin.h"
#include "support/ownworkspace.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

std::string s(const QString& q) {
    return q.toStdString();
}

class SuiteAndTool : public ::testing::Test, protected OwnWorkspace {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        saved = qgetenv("QORVALE_COMMON_DATA");
        qputenv("QORVALE_COMMON_DATA", dir.path().toLocal8Bit());
        dbPath = dir.path() + QStringLiteral("/ostrel/database/velmoraMainEX.db3");
        root = dir.path() + QStringLiteral("/ostrel/velmora_main");
    }
    void TearDown() override { qputenv("QORVALE_COMMON_DATA", saved); }

    int suite(const QStringList& args) {
        out.clear();
        err.clear();
        QTextStream o(&out), e(&err);
        return runVelmoraSuite(args, o, e);
    }
    int tool(const QStringList& args) {
        out.clear();
        err.clear();
        QTextStream o(&out), e(&err);
        return runQorvaleTool(args, o, e);
    }
    std::int64_t value(const QString& sql) {
        SqliteDatabase db(dbPath);
        return db.getTableValue(sql);
    }

    QTemporaryDir dir;
    ScriptedDialogs dialogs;
    QByteArray saved;
    QString dbPath, root, out, err;
};

TEST_F(SuiteAndTool, InitCreatesTheShapeTheProgramReliesOn) {
    ASSERT_EQ(suite({"init"}), 0) << s(err);
    for (const QString& sub : dataRootFolders())
        EXPECT_TRUE(QFileInfo(root + QLatin1Char('/') + sub).isDir()) << s(sub);
    for (const QString& f : styleFiles())
        EXPECT_TRUE(QFileInfo(root + QLatin1Char('/') + f).isFile()) << s(f);
    ASSERT_TRUE(QFileInfo(dbPath).isFile());
    EXPECT_TRUE(out.contains(dbPath.section(QLatin1Char('/'), -1))) << s(out);

    EXPECT_EQ(value(QStringLiteral("SELECT count(*) FROM ex_kanzai")), 12000);
    EXPECT_EQ(value(QStringLiteral("SELECT count(*) FROM ex_kanzai WHERE CTG=1")), 12000);
    EXPECT_EQ(value(QStringLiteral("SELECT count(DISTINCT GRP*10000+KAN*100+NO) FROM ex_kanzai "
                                   "WHERE GRP BETWEEN 1 AND 10 AND KAN BETWEEN 1 AND 20 AND NO "
                                   "BETWEEN 1 AND 60")),
              12000);
    EXPECT_EQ(value(QStringLiteral("SELECT count(*) FROM ex_kanzai WHERE NO=60 AND UKEY=60")), 200);
    EXPECT_EQ(value(QStringLiteral("SELECT count(*) FROM ex_kanzai WHERE UKEY=60")), 200);
    EXPECT_EQ(value(QStringLiteral("SELECT count(*) FROM exconf")), 0);
    // The store gives the rows of a group in the order of KAN.
    const QStringList kans =
        queryToLines(dbPath,
                     QStringLiteral("SELECT KAN FROM ex_kanzai where CTG='1' and GRP='4' and "
                                    "no='1';"))
            .lines;
    ASSERT_EQ(kans.size(), 20);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(kans[i], QStringLiteral("%1;").arg(i + 1));

    // Never overwritten unless told to.
    ASSERT_EQ(execStatement(dialogs, dbPath,
                            QStringLiteral("UPDATE ex_kanzai SET GOODS='mine' WHERE "
                                           "GRP=1 AND KAN=1 AND NO=1")),
              1);
    ASSERT_EQ(suite({"init", "--demo"}), 0) << s(err);
    EXPECT_TRUE(out.contains(QStringLiteral("left unchanged"))) << s(out);
    EXPECT_EQ(value(QStringLiteral("SELECT count(*) FROM ex_kanzai WHERE GOODS='mine'")), 1);
    ASSERT_EQ(suite({"init", "--demo", "--force"}), 0) << s(err);
    EXPECT_EQ(value(QStringLiteral("SELECT count(*) FROM ex_kanzai WHERE GOODS='mine'")), 0);
    EXPECT_FALSE(QFileInfo::exists(dbPath + QStringLiteral(".new")));
}

TEST_F(SuiteAndTool, InitFollowsTheLaunchStringAndRefusesBadArguments) {
    const QString folder = dir.path() + QStringLiteral("/elsewhere/");
    ASSERT_EQ(suite({"init", "--launch", "0;1;0;0;" + folder + ";"}), 0) << s(err);
    EXPECT_TRUE(QFileInfo(folder + QStringLiteral("velmoraMainEX.db3")).isFile());
    EXPECT_FALSE(QFileInfo::exists(dbPath));
    EXPECT_EQ(suite({}), 2);
    EXPECT_EQ(suite({"init", "--bogus"}), 2);
    EXPECT_TRUE(err.contains(QStringLiteral("--bogus")));
    EXPECT_EQ(suite({"init", "--launch"}), 2);
}

TEST_F(SuiteAndTool, DemoDataHoldsItsComputedPrices) {
    ASSERT_EQ(suite({"init", "--demo"}), 0) << s(err);
    ws().paths().exDatabase = dbPath;
    for (const auto& [grp, kan] : {std::pair{1, 1}, std::pair{1, 3}, std::pair{10, 2}}) {
        ws().load(grp, kan);
        EXPECT_FALSE(rows()[1].goodsBytes.isEmpty());
        EXPECT_FALSE(rows()[2].goodsBytes.isEmpty());
        EXPECT_FALSE(rows()[3].goodsBytes.isEmpty());
        EXPECT_GT(rows()[1].adoptedUnitPrice.raw, 0);
        std::array<Currency, 59> stored{};
        for (int r = 1; r < 60; ++r)
            stored[std::size_t(r - 1)] = rows()[r].submittedUnitPrice;
        doc().calculateAll();
        for (int r = 1; r < 60; ++r)
            EXPECT_EQ(rows()[r].submittedUnitPrice, stored[std::size_t(r - 1)])
                << grp << "/" << kan;
    }
    EXPECT_EQ(rows()[60].modeFlag, 1); // refrigerant mode in group 10
    EXPECT_GT(value(QStringLiteral("SELECT count(DISTINCT GRP) FROM ex_kanzai WHERE NO=1 AND "
                                   "GOODS<>''")),
              3);
}

TEST_F(SuiteAndTool, ToolShowsAndRecalculates) {
    EXPECT_EQ(tool({"show", "--group", "1", "--kan", "1"}), 1); // no database yet
    EXPECT_TRUE(err.contains(QStringLiteral("no database"))) << s(err);
    ASSERT_EQ(suite({"init", "--demo"}), 0) << s(err);

    // A readable table, piping and refrigerant mode, and the CSV form.
    const struct {
        QStringList args;
        const char* golden;
    } shows[] = {
        {{"show", "--group", "1", "--kan", "1"}, "show_1_1.txt"},
        {{"show", "--group", "10", "--kan", "1"}, "show_10_1.txt"},
        {{"show", "--csv", "--group", "1", "--kan", "1"}, "show_1_1.csv"},
    };
    for (const auto& show : shows) {
        ASSERT_EQ(tool(show.args), 0) << s(err);
        QFile golden(QStringLiteral(QORVALE_GOLDEN_DIR "/") + QLatin1String(show.golden));
        ASSERT_TRUE(golden.open(QIODevice::ReadOnly)) << show.golden;
        EXPECT_EQ(out, QString::fromUtf8(golden.readAll())) << show.golden;
    }

    // A changed base labour cost is taken up by the recalculation of the group.
    ASSERT_EQ(execStatement(dialogs, dbPath,
                            QStringLiteral("UPDATE ex_kanzai SET DATA5='30000' WHERE "
                                           "GRP=1 AND NO=60")),
              1);
    const auto before = value(QStringLiteral(
        "SELECT CAST(GTANKA AS INTEGER) FROM ex_kanzai WHERE GRP=1 AND KAN=2 AND NO=1"));
    ASSERT_EQ(tool({"recalc", "--group", "1"}), 0) << s(err);
    EXPECT_EQ(out.count(QStringLiteral("recalculated and saved")), 20);
    const auto after = value(QStringLiteral(
        "SELECT CAST(GTANKA AS INTEGER) FROM ex_kanzai WHERE GRP=1 AND KAN=2 AND NO=1"));
    EXPECT_GT(after, before);
    EXPECT_GT(value(QStringLiteral("SELECT CAST(CALC5_G AS INTEGER) FROM ex_kanzai WHERE GRP=1 "
                                   "AND KAN=2 AND NO=1")),
              0);
    ASSERT_EQ(tool({"recalc", "--group", "10", "--kan", "1"}), 0) << s(err);
    EXPECT_EQ(out.count(QStringLiteral("recalculated and saved")), 1);
}

TEST_F(SuiteAndTool, ToolRefusesBadArgumentsAndABusyDatabase) {
    EXPECT_EQ(tool({}), 2);
    EXPECT_EQ(tool({"show", "--group", "1"}), 2);
    EXPECT_EQ(tool({"show", "--group", "11", "--kan", "1"}), 2);
    EXPECT_EQ(tool({"recalc", "--group", "x"}), 2);
    EXPECT_EQ(tool({"recalc", "--kan", "1"}), 2);
    EXPECT_EQ(tool({"drop", "--group", "1"}), 2);
    EXPECT_EQ(tool({"recalc", "--group", "1", "--csv"}), 2); // --csv is for show
    EXPECT_EQ(tool({"show", "--fast", "--group", "1", "--kan", "1"}), 2);
    EXPECT_TRUE(err.contains(QStringLiteral("usage")));
    // Help and version come before anything else, also before the database.
    EXPECT_EQ(tool({"show", "--help"}), 0);
    EXPECT_TRUE(out.startsWith(QStringLiteral("usage: qorvale-tool show"))) << s(out);
    EXPECT_EQ(tool({"--version"}), 0);
    EXPECT_EQ(out, QStringLiteral("qorvale-tool " QORVALE_VERSION "\n"));
    EXPECT_EQ(suite({"--help"}), 0);
    EXPECT_TRUE(out.startsWith(QStringLiteral("usage: velmora-suite init"))) << s(out);
    EXPECT_EQ(suite({"init", "--fast"}), 2);

    ASSERT_EQ(suite({"init", "--demo"}), 0) << s(err);
    SqliteDatabase other(dbPath);
    other.execSql(QStringLiteral("BEGIN IMMEDIATE"));
    other.execSql(QStringLiteral("UPDATE ex_kanzai SET DATA5='1' WHERE NO=60"));
    EXPECT_EQ(tool({"recalc", "--group", "1"}), 1);
    EXPECT_TRUE(err.contains(QStringLiteral("busy"))) << s(err);
    other.execSql(QStringLiteral("ROLLBACK"));
    other.execSql(QStringLiteral("BEGIN EXCLUSIVE"));
    EXPECT_EQ(tool({"show", "--group", "1", "--kan", "1"}), 1);
    EXPECT_TRUE(err.contains(QStringLiteral("locked"))) << s(err);
    other.execSql(QStringLiteral("ROLLBACK"));
    EXPECT_EQ(tool({"show", "--group", "1", "--kan", "1"}), 0);
}

} // namespace
