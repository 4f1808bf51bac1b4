// The settings files and the configuration record, on real files and a real
// database in a temporary folder.

#include "platform/datapaths.h"
#include "platform/scripteddialogs.h"
#include "shell/confrecord.h"
#include "shell/settingsfiles.h"
#include "store/codepage.h"
#include "store/modulewrappersqlite.h"
#include "store/suitestandin.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

std::string s(const QString& q) {
    return q.toStdString();
}

class SettingsFiles : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        root = dir.path();
        QDir().mkpath(root + QStringLiteral("/conf"));
    }
    void writeRaw(const QString& path, const QByteArray& bytes) {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    QByteArray readRaw(const QString& path) {
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::ReadOnly));
        return f.readAll();
    }

    QTemporaryDir dir;
    QString root;
};

TEST(KeyStyle, SplitsAtTheFirstEqualsSignWithoutTrimming) {
    QString key, value;
    splitKeyLine(QStringLiteral("[A]= x=y "), key, value);
    EXPECT_EQ(s(key), "[A]");
    EXPECT_EQ(s(value), " x=y ");
    splitKeyLine(QStringLiteral("no equals"), key, value);
    EXPECT_TRUE(key.isEmpty());
    const auto map = readKeyLines({QStringLiteral("[K]=1"), QStringLiteral("=orphan"),
                                   QStringLiteral("[k]=lower"), QStringLiteral("[K]=2"),
                                   QStringLiteral("junk")});
    EXPECT_EQ(map.size(), 2);
    EXPECT_EQ(s(map.value(QStringLiteral("[K]"))), "2"); // the last value wins
    EXPECT_EQ(s(map.value(QStringLiteral("[k]"))), "lower");
    EXPECT_EQ(splitTextLines(QStringLiteral("a\r\nb\nc\rd\r\n")),
              (QStringList{"a", "b", "c", "d"}));
    EXPECT_EQ(splitTextLines(QStringLiteral("a\r\n\r\nb")), (QStringList{"a", "", "b"}));
}

TEST_F(SettingsFiles, WindowFile) {
    WindowRect r{1, 2, 3, 4};
    readWindowFile(root, QStringLiteral("qorvale_k"), r); // missing: zeros
    EXPECT_EQ(r.Left + r.Top + r.Width + r.Height, 0);

    writeWindowFile(root, QStringLiteral("qorvale_k"), 10, 20, -300, 400);
    const QString path = windowFilePath(root, QStringLiteral("qorvale_k"));
    EXPECT_EQ(path, root + QStringLiteral("/conf/qorvale_k.ini"));
    EXPECT_EQ(readRaw(path), QByteArray("[Screen_Top]=10\r\n[Screen_Left]=20\r\n"
                                        "[Screen_Width]=-300\r\n[Screen_Height]=400\r\n"));
    readWindowFile(root, QStringLiteral("qorvale_k"), r);
    EXPECT_EQ(r.Top, 10);
    EXPECT_EQ(r.Left, 20);
    EXPECT_EQ(r.Width, -300);
    EXPECT_EQ(r.Height, 400);

    writeRaw(path, "[Screen_Top]=abc\r\n[Screen_Left]=5\r\n[Screen_Left]=6\n[Screen_Width]=1.5");
    readWindowFile(root, QStringLiteral("qorvale_k"), r);
    EXPECT_EQ(r.Top, 0);
    EXPECT_EQ(r.Left, 6);
    EXPECT_EQ(r.Width, 0);
    EXPECT_EQ(r.Height, 0);

    // The program's one text-to-integer rule: leading blanks and a sign are
    // taken, anything behind the digits makes the value no integer.
    writeRaw(path, "[Screen_Top]=12 \r\n[Screen_Left]= 7\r\n[Screen_Width]=+8\r\n"
                   "[Screen_Height]=0x10\r\n");
    readWindowFile(root, QStringLiteral("qorvale_k"), r);
    EXPECT_EQ(r.Top, 0);
    EXPECT_EQ(r.Left, 7);
    EXPECT_EQ(r.Width, 8);
    EXPECT_EQ(r.Height, 0);
}

TEST_F(SettingsFiles, NetworkFile) {
    EXPECT_TRUE(readNetworkDir(root).isEmpty());
    writeRaw(networkFilePath(root),
             toAnsi(QStringLiteral("[Other]=x\r\n[Network_Dir]=\\\\srv\\共有\r\n")));
    EXPECT_EQ(readNetworkDir(root), QStringLiteral("\\\\srv\\共有"));
    writeRaw(networkFilePath(root), "[Other]=x\r\n");
    EXPECT_TRUE(readNetworkDir(root).isEmpty());
}

TEST_F(SettingsFiles, DisplayFile) {
    DisplaySettings d;
    EXPECT_FALSE(readDisplaySettings(root, d)); // missing: both checked
    EXPECT_TRUE(d.TreeUse);
    EXPECT_TRUE(d.StatusUse);

    d.resultsSwitch = true;
    d.StatusUse = false;
    d.TreeViewWidth = 230;
    writeDisplaySettings(root, d);
    EXPECT_EQ(readRaw(displayFilePath(root)),
              QByteArray("[Version]=2.00\r\n[CheckBox1]=TRUE\r\n[TREE_USE]=TRUE\r\n"
                         "[STATUS_USE]=FALSE\r\n[TREEVIEW_WIDTH]=230\r\n"));
    DisplaySettings back;
    EXPECT_TRUE(readDisplaySettings(root, back));
    EXPECT_FALSE(back.resultsSwitch); // stored, never read back
    EXPECT_TRUE(back.TreeUse);
    EXPECT_FALSE(back.StatusUse);
    EXPECT_EQ(back.TreeViewWidth, 230);

    // Exact comparison: lower-case false changes nothing; a bad width is 100.
    DisplaySettings e;
    applyDisplayLines({QStringLiteral("[TREE_USE]=false"), QStringLiteral("[STATUS_USE]=FALSE "),
                       QStringLiteral("[TREEVIEW_WIDTH]=wide")},
                      e);
    EXPECT_TRUE(e.TreeUse);
    EXPECT_TRUE(e.StatusUse);
    EXPECT_EQ(e.TreeViewWidth, 100);
    applyDisplayLines({QStringLiteral("[TREE_USE]=FALSE"), QStringLiteral("[TREEVIEW_WIDTH]=-5")},
                      e);
    EXPECT_FALSE(e.TreeUse);
    EXPECT_EQ(e.TreeViewWidth, -5);
    applyDisplayLines({QStringLiteral("[TREEVIEW_WIDTH]=230 ")}, e);
    EXPECT_EQ(e.TreeViewWidth, 100);

    // A display file that can't be written raises.
    DisplaySettings f;
    EXPECT_THROW(writeDisplaySettings(root + QStringLiteral("/conf/qorvale_p.disp/x"), f),
                 FileError);
}

class ConfRecordTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        database = dir.filePath(QStringLiteral("velmoraMainEX.db3"));
        createSuiteDatabase(database, false);
    }
    void TearDown() override { EXPECT_TRUE(dialogs.unanswered().isEmpty()); }

    ConfRecord conf;
    QTemporaryDir dir;
    QString database;
    ScriptedDialogs dialogs;
};

TEST_F(ConfRecordTest, StatementsAndText) {
    ConfRecord c;
    c.GroupNames = defaultGroupNames();
    c.Keta = QStringLiteral("3");
    c.GroupNames[9] = QStringLiteral("冷媒's");
    EXPECT_EQ(s(confSelectStatement()), "SELECT notes FROM exconf where conf='kanzai';");
    EXPECT_EQ(s(confDeleteStatement()), "delete from exconf where conf='kanzai';");
    EXPECT_EQ(s(confInsertStatement(c)),
              "INSERT INTO exconf(conf,notes) VALUES('kanzai','[REMOVAL]=\r\n[RECYCLE]=\r\n"
              "[KETA]=3\r\n[CUTLEVEL]=\r\n[GROUP_NAME1]=給水\r\n[GROUP_NAME2]=排水\r\n"
              "[GROUP_NAME3]=通気\r\n[GROUP_NAME4]=給湯\r\n[GROUP_NAME5]=消火\r\n"
              "[GROUP_NAME6]=冷温水\r\n[GROUP_NAME7]=冷却水\r\n[GROUP_NAME8]=蒸気\r\n"
              "[GROUP_NAME9]=油\r\n[GROUP_NAME10]=冷媒''s\r\n');");
}

TEST_F(ConfRecordTest, NoRecordGivesDefaults) {
    readGroupNames(database, conf);
    EXPECT_EQ(conf.GroupNames, defaultGroupNames());
    EXPECT_TRUE(conf.Removal.isEmpty());
    EXPECT_TRUE(conf.CutLevel.isEmpty());
}

TEST_F(ConfRecordTest, SaveAndLoadRoundTrip) {
    readGroupNames(database, conf);
    conf.Removal = QStringLiteral("r=1");
    conf.Recycle = QStringLiteral(" spaced ");
    conf.CutLevel = QStringLiteral("2");
    conf.GroupNames[0] = QStringLiteral("給水 (O'Neil; 改)");
    conf.GroupNames[4] = QString();
    ASSERT_EQ(writeGroupNames(dialogs, database, conf), 1);
    ASSERT_EQ(writeGroupNames(dialogs, database, conf), 1); // replaced, not added
    const ConfRecord saved = conf;

    conf = ConfRecord{};
    readGroupNames(database, conf);
    EXPECT_EQ(conf.GroupNames, saved.GroupNames);
    EXPECT_EQ(s(conf.Removal), "r=1");
    EXPECT_EQ(s(conf.Recycle), " spaced ");
    EXPECT_EQ(s(conf.CutLevel), "2");
    EXPECT_EQ(queryToLines(database, QStringLiteral("SELECT count(*) FROM exconf")).lines,
              QStringList{QStringLiteral("1;")});
    EXPECT_TRUE(dialogs.boxes().empty());
    EXPECT_TRUE(dialogs.messages().empty());
}

TEST_F(ConfRecordTest, UnknownKeysAndMissingLinesInTheRecord) {
    ASSERT_EQ(execStatement(dialogs, database,
                            QStringLiteral("INSERT INTO exconf VALUES ('kanzai', "
                                           "'[GROUP_NAME3]=換気\r\n[NOTE]=x\r\n[KETA]=4')")),
              1);
    readGroupNames(database, conf);
    EXPECT_EQ(conf.GroupNames[2], QStringLiteral("換気"));
    EXPECT_EQ(conf.GroupNames[0], QStringLiteral("給水"));
    EXPECT_EQ(s(conf.Keta), "4");
}

TEST_F(ConfRecordTest, FailedInsertKeepsTheOldRecord) {
    conf.GroupNames = defaultGroupNames();
    conf.GroupNames[1] = QStringLiteral("汚水");
    ASSERT_EQ(writeGroupNames(dialogs, database, conf), 1);
    // The insert fails (a trigger stands in for any failure after the delete).
    ASSERT_EQ(execStatement(dialogs, database,
                            QStringLiteral("CREATE TRIGGER no_insert BEFORE INSERT ON exconf "
                                           "BEGIN SELECT RAISE(ABORT, 'refused'); END")),
              1);
    conf.GroupNames[1] = QStringLiteral("雨水");
    EXPECT_EQ(writeGroupNames(dialogs, database, conf), 0);
    EXPECT_TRUE(dialogs.messages().empty());
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_EQ(dialogs.boxes()[0].instruction, QStringLiteral("ERROR"));
    EXPECT_TRUE(dialogs.boxes()[0].content.startsWith(QStringLiteral("refused\r\n")))
        << dialogs.boxes()[0].content.toStdString();
    readGroupNames(database, conf);
    EXPECT_EQ(conf.GroupNames[1], QStringLiteral("汚水"));
}

} // namespace
