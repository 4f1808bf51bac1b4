// The settings files and the configuration record, on real files and a real
// database in a temporary folder.
#include "platform/scripteddialogs.h"
#include "shell/confrecord.h"
#include "shell/settingsfiles.h"
#include "store/codepage.h"
#include "store/modulewrappersqlite.h"
#include "store/suitestandin.h"
#include "support/testing.h"

namespace {

class SettingsFiles : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(QDir().mkpath(root + "/conf")); }
    // The window file read as top, left, width and height.
    QList<int> window() {
        WindowRect r{1, 2, 3, 4};
        readWindowFile(root, "qorvale_k", r);
        return {r.Top, r.Left, r.Width, r.Height};
    }
    QTemporaryDir dir;
    QString root = dir.path();
};

TEST_F(SettingsFiles, KeyLinesAndTheWindowNetworkAndDisplayFiles) {
    QString key, value;
    splitKeyLine("[A]= x=y ", key, value);
    EXPECT_EQ(QStringList({key, value}), QStringList({"[A]", " x=y "}));
    // The last value wins; no key or no equals sign: passed over.
    const auto map = readKeyLines({"[K]=1", "=orphan", "[k]=lower", "[K]=2", "junk"});
    EXPECT_EQ(map.keys() + map.values(), QStringList({"[K]", "[k]", "2", "lower"}));
    EXPECT_EQ(splitTextLines("a\r\n\r\nb\nc\rd\r\n"), QStringList({"a", "", "b", "c", "d"}));
    EXPECT_EQ(window(), QList<int>({0, 0, 0, 0})); // missing: zeros
    writeWindowFile(root, "qorvale_k", 10, 20, -300, 400);
    EXPECT_EQ(window(), QList<int>({10, 20, -300, 400}));
    const QString path = windowFilePath(root, "qorvale_k");
    EXPECT_EQ(path, root + "/conf/qorvale_k.ini"); // the file earlier versions wrote
    EXPECT_EQ(fileBytes(path), QByteArray("[Screen_Top]=10\r\n[Screen_Left]=20\r\n"
                                          "[Screen_Width]=-300\r\n[Screen_Height]=400\r\n"));
    // The last value wins, and the program's one text-to-integer rule: leading
    // blanks and a sign are taken, anything behind the digits makes the value
    // no integer.
    writeFileBytes(path, "[Screen_Top]=12 \r\n[Screen_Left]=5\r\n[Screen_Left]= 7\n"
                         "[Screen_Width]=+8\r\n[Screen_Height]=0x10\r\n");
    EXPECT_EQ(window(), QList<int>({0, 7, 8, 0}));

    EXPECT_TRUE(readNetworkDir(root).isEmpty());
    writeFileBytes(networkFilePath(root), toAnsi("[Other]=x\r\n[Network_Dir]=\\\\srv\\共有\r\n"));
    EXPECT_EQ(readNetworkDir(root), "\\\\srv\\共有");

    auto text = [](const DisplaySettings& d) {
        return QList<int>{d.resultsSwitch, d.TreeUse, d.StatusUse, d.TreeViewWidth};
    };
    DisplaySettings d;
    EXPECT_FALSE(readDisplaySettings(root, d)); // missing: both checked
    EXPECT_EQ(text(d), QList<int>({0, 1, 1, 100}));
    d.resultsSwitch = true;
    d.StatusUse = false;
    d.TreeViewWidth = 230;
    writeDisplaySettings(root, d);
    QStringList lines;
    ASSERT_TRUE(readTextFile(displayFilePath(root), lines));
    EXPECT_EQ(lines.join(' '), "[Version]=2.00 [CheckBox1]=TRUE [TREE_USE]=TRUE "
                               "[STATUS_USE]=FALSE [TREEVIEW_WIDTH]=230");
    DisplaySettings back;
    EXPECT_TRUE(readDisplaySettings(root, back) &&
                text(back) == QList<int>({0, 1, 0, 230})); // switch not read
    // Exact comparison: lower-case false changes nothing; a bad width is 100.
    DisplaySettings e;
    applyDisplayLines({"[TREE_USE]=false", "[STATUS_USE]=FALSE ", "[TREEVIEW_WIDTH]=wide"}, e);
    EXPECT_EQ(text(e), QList<int>({0, 1, 1, 100}));
    applyDisplayLines({"[TREE_USE]=FALSE", "[TREEVIEW_WIDTH]=-5"}, e);
    EXPECT_EQ(text(e), QList<int>({0, 0, 1, -5}));
    applyDisplayLines({"[TREEVIEW_WIDTH]=230 "}, e);
    EXPECT_EQ(text(e), QList<int>({0, 0, 1, 100}));
}

class ConfRecordTest : public ::testing::Test {
protected:
    void SetUp() override { createSuiteDatabase(database, false); }
    void TearDown() override { EXPECT_TRUE(dialogs.unanswered().isEmpty()); }
    int exec(const char* sql) { return execStatement(dialogs, database, sql); }

    ConfRecord conf;
    QTemporaryDir dir;
    QString database = dir.filePath("velmoraMainEX.db3");
    ScriptedDialogs dialogs;
};

// Quotes and blanks survive; a second write replaces the record.
TEST_F(ConfRecordTest, SaveAndLoadRoundTrip) {
    // The record of another program of the suite stays.
    ASSERT_EQ(exec("INSERT INTO exconf(conf,notes) VALUES('other','x')"), 1);
    readGroupNames(database, conf); // no record: the defaults
    EXPECT_EQ(conf.GroupNames, defaultGroupNames());
    std::tie(conf.Removal, conf.Recycle, conf.CutLevel, conf.Keta) =
        std::tuple("r=1", " spaced ", "2", "3");
    conf.GroupNames[0] = "給水 (O'Neil; 改)";
    conf.GroupNames[4] = QString();
    ASSERT_EQ(writeGroupNames(dialogs, database, conf), 1);
    ASSERT_EQ(writeGroupNames(dialogs, database, conf), 1);
    const ConfRecord saved = conf;
    conf = ConfRecord{};
    readGroupNames(database, conf);
    EXPECT_EQ(conf.GroupNames, saved.GroupNames);
    EXPECT_EQ(QStringList({conf.Removal, conf.Recycle, conf.CutLevel, conf.Keta}),
              QStringList({"r=1", " spaced ", "2", "3"}));
    EXPECT_EQ(queryToLines(database, "SELECT conf, replace(notes, char(13, 10), '|') FROM exconf "
                                     "ORDER BY conf")
                  .lines.join('\n')
                  .toStdString(),
              "kanzai;[REMOVAL]=r=1|[RECYCLE]= spaced |[KETA]=3|[CUTLEVEL]=2|"
              "[GROUP_NAME1]=給水 (O'Neil\x1B: 改)|[GROUP_NAME2]=排水|[GROUP_NAME3]=通気|"
              "[GROUP_NAME4]=給湯|[GROUP_NAME5]=|[GROUP_NAME6]=冷温水|[GROUP_NAME7]=冷却水|"
              "[GROUP_NAME8]=蒸気|[GROUP_NAME9]=油|[GROUP_NAME10]=冷媒|;\nother;x;");
    EXPECT_TRUE(dialogs.boxes().empty() && dialogs.messages().empty());
    // Unknown keys are passed over, missing names keep their defaults.
    ASSERT_EQ(exec("UPDATE exconf SET notes='[GROUP_NAME3]=換気\r\n[NOTE]=x\r\n[KETA]=4'"), 1);
    conf = ConfRecord{};
    readGroupNames(database, conf);
    EXPECT_EQ(QStringList({conf.GroupNames[2], conf.GroupNames[0], conf.Keta}),
              QStringList({"換気", "給水", "4"}));
}

TEST_F(ConfRecordTest, FailedInsertKeepsTheOldRecord) {
    conf.GroupNames = defaultGroupNames();
    conf.GroupNames[1] = "汚水";
    ASSERT_EQ(writeGroupNames(dialogs, database, conf), 1);
    // The insert fails (a trigger stands in for any failure after the delete).
    ASSERT_EQ(exec("CREATE TRIGGER no_insert BEFORE INSERT ON exconf BEGIN SELECT RAISE(ABORT, "
                   "'refused'); END"),
              1);
    conf.GroupNames[1] = "雨水";
    EXPECT_EQ(writeGroupNames(dialogs, database, conf), 0);
    ASSERT_TRUE(dialogs.messages().empty() && dialogs.boxes().size() == 1u);
    EXPECT_TRUE(dialogs.boxes()[0].content.startsWith("refused\r\n"));
    readGroupNames(database, conf);
    EXPECT_EQ(conf.GroupNames[1], "汚水");
}

} // namespace
