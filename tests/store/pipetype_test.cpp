// Loading and saving a pipe type on a real database made by the suite
// stand-in in a temporary folder.

#include "platform/datapaths.h"
#include "platform/scripteddialogs.h"
#include "store/codepage.h"
#include "store/modulewrappersqlite.h"
#include "store/pipetypestore.h"
#include "store/suitestandin.h"
#include "support/lockholder.h"
#include "support/ownworkspace.h"
#include "support/sqliterows.h"

namespace {

const auto c = [](const char* text) { return strToCurr(QString::fromLatin1(text)); };

class PipeTypeStore : public ::testing::Test, protected OwnWorkspace {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        ws().paths().exDatabase = dir.filePath("velmoraMainEX.db3");
        createSuiteDatabase(db(), false);
    }
    void TearDown() override {
        EXPECT_TRUE(dialogs.unanswered().isEmpty() && dialogs.boxes().empty() &&
                    dialogs.messages().empty());
    }

    SaveOutcome save(int grp, int kan, SaveCheck check = SaveCheck::AgainstLoaded) {
        return ws().save(grp, kan, check, dialogs);
    }
    // The database's reason when a save is refused, empty when it is not.
    QString refusal(int grp, int kan) {
        try {
            save(grp, kan);
        } catch (const SqliteError& e) {
            return e.reason();
        }
        return QString();
    }
    void exec(const QString& sql) { ASSERT_EQ(execStatement(dialogs, db(), sql), 1); }
    const QString& db() { return ws().paths().exDatabase; }
    // Columns of one row as stored, joined by "|".
    QString stored(const char* columns, int grp, int kan, int no) {
        return dump(grp, kan, QString(" AND NO=%1").arg(no), columns).value(0);
    }
    // Every column of the 60 rows, read with the library itself.
    QStringList dump(int grp, int kan, const QString& where = {}, const char* columns = "*") {
        const QString sql("SELECT %1 FROM ex_kanzai WHERE GRP=%2 AND KAN=%3%4 ORDER BY NO");
        return sqliteRows(db(), sql.arg(columns, QString::number(grp), QString::number(kan), where),
                          SQLITE_OPEN_READONLY);
    }

    QTemporaryDir dir;
    ScriptedDialogs dialogs;
};

TEST(PipeTypeStatements, LoadAndSaveStatementTexts) {
    EXPECT_EQ(loadStatement(3, 7).toStdString(),
              "SELECT *FROM ex_kanzai where CTG='1' and Grp='3' and KAN='7' order by no;");
    PipeRow r;
    r.setGoods("鋼管"), r.setKind("屋内一般"), r.setSize("15A"), r.setUnit("ｍ");
    r.costPrice = c("1234.5");
    r.sortOrder = c("5");
    EXPECT_EQ(saveStatement(r, 3, 7, 1).toStdString(),
              "UPDATE ex_kanzai SET GOODS='鋼管',KIND='屋内一般',SIZE='15A',YOSAN='0',SORT='0',"
              "CI='ｍ',FLAG='0',NET='1234.5',GROSS='0',TEIKA='0',Data1='0',Data2='0',Data3='0',"
              "Data4='0',Data5='0',Data6='0',Data7='0',CALC1_G='0',CALC2_G='0',CALC3_G='0',"
              "CALC4_G='0',CALC5_G='0',CALC6_G='0',CALC7_G='0',CALC1_N='0',CALC2_N='0',"
              "CALC3_N='0',CALC4_N='0',CALC5_N='0',CALC6_N='0',CALC7_N='0',NTANKA='0',"
              "GTANKA='0',FTANKA='0' WHERE CTG='1' and GRP='3' and KAN='7' and NO='1';\r\n");
    // CALC_G comes ahead of CALC_N; numbers are shortest text. (Quotes doubled: the round trip
    // of SaveWritesAllRowsAndTextsRoundTrip.)
    r.submittedAmounts[0] = c("2"), r.costAmounts[0] = c("-0.25"), r.otherMethod = -1;
    const QString sql = saveStatement(r, 10, 20, 60);
    for (const char* part : {",YOSAN='-1',", ",CALC1_G='2',", ",CALC1_N='-0.25',",
                             " and GRP='10' and KAN='20' and NO='60';\r\n"})
        EXPECT_TRUE(sql.contains(part)) << part;
}

TEST_F(PipeTypeStore, LoadRules) {
    ASSERT_EQ(execStatements(
                  dialogs, db(),
                  {"UPDATE ex_kanzai SET FLAG=2, YOSAN=3 WHERE GRP=3 AND KAN=7 AND NO=60",
                   "UPDATE ex_kanzai SET FLAG=2 WHERE GRP=3 AND KAN=7 AND NO=59",
                   "UPDATE ex_kanzai SET GOODS=replace(hex(zeroblob(100)), '00', 'x') "
                   "WHERE GRP=3 AND KAN=7 AND NO=1",
                   "UPDATE ex_kanzai SET NET=1234.56789, SORT=5, SIZE=NULL, UKEY=77 "
                   "WHERE GRP=3 AND KAN=7 AND NO=2",
                   "UPDATE ex_kanzai SET SIZE='15A', TEIKA='abc' WHERE GRP=3 AND KAN=7 AND NO=3",
                   "UPDATE ex_kanzai SET FLAG=-1 WHERE GRP=3 AND KAN=8 AND NO=60",
                   "UPDATE ex_kanzai SET DATA1=2.5 WHERE GRP=3 AND KAN=8 AND NO=15"}),
              1);
    rows()[2].sizeBytes = "old";
    rows()[2].submittedAmounts[3] = c("9"); // CALC fields keep their old values
    ws().load(3, 7);
    doc().takeSnapshot();
    // The lines as read and as loaded: texts cut to their width, a NULL or no number read as
    // empty or 0, row 15's supply rate 1 when 0, the option row's FLAG 0 when above 1.
    const QString zeros = QString("0;").repeated(12);
    const std::pair<int, QString> lines[] = {{1, QString(80, 'x') + ";;;0;;0;" + zeros},
                                             {2, ";;;0;;1234.5679;" + zeros},
                                             {3, ";15A;;0;;0;" + zeros},
                                             {15, ";;;0;;0;0;0;1;" + QString("0;").repeated(9)},
                                             {16, ";;;0;;0;" + zeros},
                                             {59, ";;;2;;0;" + zeros},
                                             {60, ";;;2;;0;" + zeros}};
    for (const auto& [n, saved] : lines) {
        EXPECT_EQ(doc().savedLines()[n - 1], saved) << n;
        EXPECT_EQ(doc().currentLines()[n - 1], n == 60 ? ";;;0;;0;" + zeros : saved) << n;
    }
    EXPECT_EQ(QList<int>({rows()[60].otherMethod, rows()[60].key, rows()[2].key}),
              QList<int>({0, 60, 77}));
    EXPECT_TRUE(rows()[2].sortOrder == c("5") && rows()[2].submittedAmounts[3] == c("9"));
    // So the pipe type counts as changed right after loading.
    EXPECT_TRUE(doc().isChanged());
    // FLAG -1 stays; DATA1 2.5 in row 15 stays.
    ws().load(3, 8);
    EXPECT_TRUE(rows()[60].modeFlag == -1 && rows()[15].factor(1) == c("2.5"));

    // All or nothing: with rows 30 to 60 gone, not even the 29 read before the gap arrive.
    exec("DELETE FROM ex_kanzai WHERE GRP=2 AND KAN=2 AND NO>=30");
    exec("UPDATE ex_kanzai SET GOODS='first' WHERE GRP=2 AND KAN=2 AND NO=1");
    rows()[40].setGoods("kept");
    const QStringList saved = doc().savedLines();
    const RowTable shown = rows();
    EXPECT_THROW(ws().load(2, 2), std::out_of_range);
    for (int n = 1; n <= RowCount; ++n)
        EXPECT_EQ(rowLine(rows()[n]), rowLine(shown[n])) << n;
    EXPECT_EQ(doc().savedLines(), saved);
}

TEST_F(PipeTypeStore, SaveWritesAllRowsAndTextsRoundTrip) {
    ws().load(1, 1);
    const QStringList texts = {
        "O'Brien's ;pipe; 'x'", "給水、給湯';--", "ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVA)",
        "\x1b;\x1b\x1b:;",      "～－∥―￠",       "配管用炭素鋼鋼管（白）"};
    for (int i = 0; i < int(texts.size()); ++i)
        rows()[i + 1].setGoods(texts[i]);
    rows()[1].setKind("屋内;一般'"), rows()[2].setSize("1';2"), rows()[3].setUnit("ｍ;");
    rows()[2].sortOrder = c("5"), rows()[2].key = 999, rows()[60].otherMethod = 1;
    rows()[7].costPrice = c("1234.5"), rows()[7].costAmounts[6] = c("17");
    const RowTable before = rows();
    doc().takeSnapshot();
    EXPECT_EQ(save(1, 1), SaveOutcome::Saved);
    EXPECT_EQ(dialogs.clipboard(), saveStatement(rows()[1], 1, 1, 1));
    EXPECT_FALSE(doc().isChanged());
    // Another pipe type's first row stays untouched.
    EXPECT_EQ(QStringList({stored("GOODS", 1, 1, 6), stored("SORT,UKEY", 1, 1, 2),
                           stored("NET,CALC7_N", 1, 1, 7), stored("YOSAN", 1, 1, 60),
                           stored("GOODS", 1, 2, 1)}),
              QStringList({"配管用炭素鋼鋼管（白）", "0|2", "1234.5|17", "1", ""}));

    doc().clearRows(RowCount);
    ws().load(1, 1);
    for (int i = 0; i < int(texts.size()); ++i)
        EXPECT_EQ(rows()[i + 1].goods(), texts[i]) << i;
    EXPECT_EQ(rows()[1].kind() + rows()[2].size() + rows()[3].unit(), "屋内;一般'1';2ｍ;");
    EXPECT_EQ(rows()[7].costPrice, before[7].costPrice);
}

// Every character of the code page, in its own bytes, survives the store.
TEST_F(PipeTypeStore, EveryCodePageCharacterSurvivesByteForByte) {
    QList<QByteArray> chars;
    for (int b = 0x20; b <= 0xDF; ++b)
        if (b < 0x7F ? b != ';' && b != '\'' : b >= 0xA1) chars << QByteArray(1, char(b));
    // Only the code page's own form of a character: duplicates (NEC/IBM rows) have one
    // canonical code.
    for (int lead = 0x81; lead <= 0xFC; ++lead)
        for (int trail = 0x40; trail <= 0xFC; ++trail) {
            const QByteArray bytes = QByteArray(1, char(lead)) + char(trail);
            const QString u = fromAnsi(bytes);
            if (u.size() == 1 && u[0] != QChar(0xFFFD) && toAnsi(u) == bytes) chars << bytes;
        }
    ASSERT_GT(chars.size(), 7000);
    for (int next = 0; next < int(chars.size());) {
        ws().load(6, 1);
        RowTable written;
        for (int r = 1; r <= RowCount; ++r) {
            QByteArray goods;
            while (next < int(chars.size()) && goods.size() + chars[next].size() <= GoodsWidth)
                goods += chars[next++];
            written[r].goodsBytes = rows()[r].goodsBytes = goods;
        }
        save(6, 1);
        doc().clearRows(RowCount);
        ws().load(6, 1);
        for (int r = 1; r <= RowCount; ++r)
            ASSERT_EQ(rows()[r].goodsBytes, written[r].goodsBytes) << "row " << r;
    }
}

TEST_F(PipeTypeStore, ASaveLandsWholeOrNotAtAllAndGoesToTheFileAtThePathNow) {
    ws().load(7, 3);
    const QStringList saved = doc().savedLines();
    for (int r = 1; r <= RowCount; ++r)
        rows()[r].setGoods(QString("new%1").arg(r));
    doc().takeSnapshot();
    const QStringList before = dump(7, 3);
    auto failsWithNothingWritten = [&](const char* reason) {
        // Refused with the database's reason; the rows stay unsaved, so the question comes
        // again.
        EXPECT_EQ(refusal(7, 3), reason);
        EXPECT_EQ(doc().savedLines(), saved);
        EXPECT_TRUE(doc().isChanged());
        EXPECT_EQ(dump(7, 3), before);
    };
    {
        // A trigger of another program refuses row 30 alone.
        SqliteDatabase other(db());
        other.execSql("CREATE TRIGGER no30 BEFORE UPDATE ON ex_kanzai WHEN old.GRP=7 AND "
                      "old.KAN=3 AND old.NO=30 BEGIN SELECT RAISE(ABORT, 'row 30 is held'); END;");
    }
    failsWithNothingWritten("row 30 is held");
    exec("DROP TRIGGER no30;");
    {
        // A lock held for longer than the wait.
        LockHolder other(db(), "IMMEDIATE");
        failsWithNothingWritten("database is locked");
    }
    // A lock let go within the wait is waited out, and the save goes through.
    {
        LockHolder other(db(), "EXCLUSIVE", 0.5);
        EXPECT_EQ(save(7, 3), SaveOutcome::Saved);
    }
    EXPECT_FALSE(doc().isChanged());
    EXPECT_EQ(stored("GOODS", 7, 3, 1) + stored("GOODS", 7, 3, 60), "new1new60");

    // The connection stays open from one load or save to the next, yet a save always goes to
    // the file that is at the path now: a file put in its place takes it, a removed one refuses it
    // without creating anything.
    ws().load(1, 1);
    doc().takeSnapshot();
    rows()[1].setGoods("x");
    doc().refreshLines();
    const QString copy = dir.filePath("copy.db3");
    ASSERT_TRUE(QFile::copy(db(), copy) && QFile::remove(db()) && QFile::rename(copy, db()));
    EXPECT_EQ(save(1, 1), SaveOutcome::Saved);
    EXPECT_EQ(stored("GOODS", 1, 1, 1), "x");

    const QStringList savedBefore = doc().savedLines();
    rows()[1].setGoods("y");
    doc().refreshLines();
    ASSERT_TRUE(QFile::remove(db()));
    EXPECT_TRUE(refusal(1, 1).contains("unable to open"));
    EXPECT_FALSE(QFileInfo::exists(db()));
    EXPECT_EQ(doc().savedLines(), savedBefore);
}

} // namespace
