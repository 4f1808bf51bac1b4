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
#include "support/testing.h"

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
        dbPath = dir.path() + "/ostrel/database/velmoraMainEX.db3";
        root = dir.path() + "/ostrel/velmora_main";
    }
    void TearDown() override { qputenv("QORVALE_COMMON_DATA", saved); }

    template <class Run> int run(Run r, const QStringList& args) {
        out.clear();
        err.clear();
        QTextStream o(&out), e(&err);
        return r(args, o, e);
    }
    int suite(const QStringList& args) { return run(runVelmoraSuite, args); }
    int tool(const QStringList& args) { return run(runQorvaleTool, args); }
    std::int64_t value(const QString& sql) {
        SqliteDatabase db(dbPath);
        return db.getTableValue(sql);
    }
    void exec(const QString& sql) { ASSERT_EQ(execStatement(dialogs, dbPath, sql), 1); }

    QTemporaryDir dir;
    ScriptedDialogs dialogs;
    QByteArray saved;
    QString dbPath, root, out, err;
};

TEST_F(SuiteAndTool, InitFollowsTheLaunchStringRefusesBadArgumentsAndCreatesTheShape) {
    const QString folder = dir.path() + "/elsewhere/";
    ASSERT_EQ(suite({"init", "--launch", "0;1;0;0;" + folder + ";"}), 0) << s(err);
    EXPECT_TRUE(QFileInfo(folder + "velmoraMainEX.db3").isFile() && !QFileInfo::exists(dbPath));
    EXPECT_EQ(suite({}) + suite({"init", "--launch"}) + suite({"init", "--bogus"}), 6);
    EXPECT_TRUE(err.contains("--bogus"));
    // A database that cannot be written fails with its reason and claims nothing.
    const QString blocked = dir.path() + "/blocked/";
    ASSERT_TRUE(QDir().mkpath(blocked + "velmoraMainEX.db3"));
    EXPECT_EQ(suite({"init", "--force", "--launch", "0;1;0;0;" + blocked + ";"}), 1);
    EXPECT_TRUE(err.contains("cannot create " + blocked)) << s(err);
    EXPECT_FALSE(out.contains("replaced")) << s(out);

    // Without a launch string: the shape the program relies on.
    ASSERT_EQ(suite({"init"}), 0) << s(err);
    for (const QString& sub : dataRootFolders())
        EXPECT_TRUE(QFileInfo(root + '/' + sub).isDir()) << s(sub);
    for (const QString& f : styleFiles())
        EXPECT_TRUE(QFileInfo(root + '/' + f).isFile()) << s(f);
    // All rows, in category 1, each place once, the option rows keyed 60, no settings.
    EXPECT_EQ(queryToLines(dbPath, "SELECT count(*), sum(CTG=1), count(DISTINCT GRP*10000+KAN*100"
                                   "+NO), sum(UKEY=60), sum(NO=60 AND UKEY=60), (SELECT count(*) "
                                   "FROM exconf) FROM ex_kanzai WHERE GRP BETWEEN 1 AND 10 AND KAN "
                                   "BETWEEN 1 AND 20 AND NO BETWEEN 1 AND 60")
                  .lines,
              QStringList{"12000;12000;12000;200;200;0;"});
    // The store gives the rows of a group in the order of KAN.
    EXPECT_EQ(queryToLines(dbPath, "SELECT group_concat(KAN, ' ') FROM ex_kanzai where CTG='1' "
                                   "and GRP='4' and no='1';")
                  .lines,
              QStringList{"1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20;"});

    // Never overwritten unless told to.
    exec("UPDATE ex_kanzai SET GOODS='mine' WHERE GRP=1 AND KAN=1 AND NO=1");
    ASSERT_EQ(suite({"init", "--demo"}), 0) << s(err);
    EXPECT_EQ(value("SELECT count(*) FROM ex_kanzai WHERE GOODS='mine'"), 1);
    ASSERT_EQ(suite({"init", "--demo", "--force"}), 0) << s(err);
    EXPECT_EQ(value("SELECT count(*) FROM ex_kanzai WHERE GOODS='mine'"), 0);
    EXPECT_FALSE(QFileInfo::exists(dbPath + ".new"));
}

TEST_F(SuiteAndTool, DemoDataHoldsItsComputedPricesAndTheToolShowsAndRecalculates) {
    EXPECT_EQ(tool({"show", "--group", "1", "--kan", "1"}), 1); // no database yet
    EXPECT_TRUE(err.contains("no database")) << s(err);
    ASSERT_EQ(suite({"init", "--demo"}), 0) << s(err);
    ws().paths().exDatabase = dbPath;
    for (const auto& [grp, kan] : {std::pair{1, 1}, std::pair{1, 3}, std::pair{10, 2}}) {
        ws().load(grp, kan);
        EXPECT_FALSE(rows()[3].goodsBytes.isEmpty() || rows()[1].adoptedUnitPrice.raw <= 0);
        const RowTable stored = rows();
        doc().calculateAll();
        for (int r = 1; r < 60; ++r)
            EXPECT_EQ(rows()[r].submittedUnitPrice, stored[r].submittedUnitPrice) << grp << kan;
    }
    EXPECT_EQ(rows()[60].modeFlag, 1); // refrigerant mode in group 10

    // A readable table, piping and refrigerant mode, and the CSV form.
    const std::pair<QStringList, const char*> shows[] = {
        {{"show", "--group", "1", "--kan", "1"}, "show_1_1.txt"},
        {{"show", "--group", "10", "--kan", "1"}, "show_10_1.txt"},
        {{"show", "--csv", "--group", "1", "--kan", "1"}, "show_1_1.csv"}};
    for (const auto& [args, name] : shows) {
        ASSERT_EQ(tool(args), 0) << s(err);
        QFile golden(QORVALE_GOLDEN_DIR "/" + QString(name));
        ASSERT_TRUE(golden.open(QIODevice::ReadOnly)) << name;
        EXPECT_EQ(out, QString::fromUtf8(golden.readAll())) << name;
    }

    // A changed base labour cost is taken up by the recalculation of the group.
    exec("UPDATE ex_kanzai SET DATA5='30000' WHERE GRP=1 AND NO=60");
    const QString gtanka = "SELECT CAST(GTANKA AS INTEGER) FROM ex_kanzai WHERE GRP=1 AND "
                           "KAN=2 AND NO=1";
    const auto before = value(gtanka);
    ASSERT_EQ(tool({"recalc", "--group", "1"}), 0) << s(err);
    EXPECT_EQ(out.count("recalculated and saved"), 20);
    EXPECT_GT(value(gtanka), before);
    ASSERT_EQ(tool({"recalc", "--group", "10", "--kan", "1"}), 0) << s(err);
    EXPECT_EQ(out.count("recalculated and saved"), 1);
}

TEST_F(SuiteAndTool, ToolRefusesBadArgumentsAndABusyDatabase) {
    for (const QStringList& args :
         std::initializer_list<QStringList>{{},
                                            {"show", "--group", "1"},
                                            {"show", "--group", "11", "--kan", "1"},
                                            {"recalc", "--group", "x"},
                                            {"drop", "--group", "1"}})
        EXPECT_TRUE(tool(args) == 2 && err.contains("usage")) << s(args.join(' '));
    // Help comes before anything else, also before the database. (The programs' --help,
    // --version and unknown options are checked by Programs.HelpVersionAndUnknownOptions.)
    EXPECT_EQ(tool({"show", "--help"}), 0);
    EXPECT_TRUE(out.startsWith("usage: qorvale-tool show")) << s(out);

    ASSERT_EQ(suite({"init", "--demo"}), 0) << s(err);
    SqliteDatabase other(dbPath);
    other.execSql("BEGIN IMMEDIATE");
    other.execSql("UPDATE ex_kanzai SET DATA5='1' WHERE NO=60");
    EXPECT_TRUE(tool({"recalc", "--group", "1"}) == 1 && err.contains("busy")) << s(err);
    other.execSql("ROLLBACK");
    other.execSql("BEGIN EXCLUSIVE");
    EXPECT_EQ(tool({"show", "--group", "1", "--kan", "1"}), 1);
    EXPECT_TRUE(err.contains("locked")) << s(err);
    other.execSql("ROLLBACK");
    EXPECT_EQ(tool({"show", "--group", "1", "--kan", "1"}), 0);
}

} // namespace
