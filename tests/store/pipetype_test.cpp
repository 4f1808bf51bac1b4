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

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

std::string s(const QString& q) {
    return q.toStdString();
}
Currency c(const char* text) {
    return strToCurr(QString::fromLatin1(text));
}

class PipeTypeStore : public ::testing::Test, protected OwnWorkspace {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        ws().paths().exDatabase = dir.filePath(QStringLiteral("velmoraMainEX.db3"));
        createSuiteDatabase(ws().paths().exDatabase, false);
    }
    void TearDown() override { EXPECT_TRUE(dialogs.unanswered().isEmpty()); }

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
    void exec(const QString& sql) {
        ASSERT_EQ(execStatement(dialogs, ws().paths().exDatabase, sql), 1);
    }
    QString stored(const char* column, int grp, int kan, int no) {
        SqliteDatabase db(ws().paths().exDatabase);
        return db.getTableString(
            QStringLiteral("SELECT %1 FROM ex_kanzai WHERE GRP=%2 AND KAN=%3 AND NO=%4")
                .arg(QLatin1String(column))
                .arg(grp)
                .arg(kan)
                .arg(no));
    }

    QTemporaryDir dir;
    ScriptedDialogs dialogs;
};

TEST(PipeTypeStatements, LoadStatementText) {
    EXPECT_EQ(s(loadStatement(3, 7)),
              "SELECT *FROM ex_kanzai where CTG='1' and Grp='3' and KAN='7' order by no;");
}

TEST(PipeTypeStatements, SaveStatementText) {
    PipeRow r;
    r.setGoods(QStringLiteral("鋼管"));
    r.setKind(QStringLiteral("屋内一般"));
    r.setSize(QStringLiteral("15A"));
    r.setUnit(QStringLiteral("ｍ"));
    r.costPrice = c("1234.5");
    r.sortOrder = c("5");
    r.key = 60;
    EXPECT_EQ(s(saveStatement(r, 3, 7, 1)),
              "UPDATE ex_kanzai SET GOODS='鋼管',KIND='屋内一般',SIZE='15A',YOSAN='0',SORT='0',"
              "CI='ｍ',FLAG='0',NET='1234.5',GROSS='0',TEIKA='0',Data1='0',Data2='0',Data3='0',"
              "Data4='0',Data5='0',Data6='0',Data7='0',CALC1_G='0',CALC2_G='0',CALC3_G='0',"
              "CALC4_G='0',CALC5_G='0',CALC6_G='0',CALC7_G='0',CALC1_N='0',CALC2_N='0',"
              "CALC3_N='0',CALC4_N='0',CALC5_N='0',CALC6_N='0',CALC7_N='0',NTANKA='0',"
              "GTANKA='0',FTANKA='0' WHERE CTG='1' and GRP='3' and KAN='7' and NO='1';\r\n");
    // Quotes are doubled; CALC_G comes ahead of CALC_N; numbers are shortest text.
    r.setGoods(QStringLiteral("O'Neil;管"));
    r.submittedAmounts[0] = c("2");
    r.costAmounts[0] = c("-0.25");
    r.otherMethod = -1;
    const QString sql = saveStatement(r, 10, 20, 60);
    EXPECT_TRUE(sql.startsWith(QStringLiteral("UPDATE ex_kanzai SET GOODS='O''Neil;管',")));
    EXPECT_TRUE(sql.contains(QStringLiteral(",YOSAN='-1',")));
    EXPECT_TRUE(sql.contains(QStringLiteral(",CALC1_G='2',")));
    EXPECT_TRUE(sql.contains(QStringLiteral(",CALC1_N='-0.25',")));
    EXPECT_TRUE(sql.endsWith(QStringLiteral(" and GRP='10' and KAN='20' and NO='60';\r\n")));
}

TEST_F(PipeTypeStore, LoadRules) {
    exec(QStringLiteral("UPDATE ex_kanzai SET DATA1=0 WHERE GRP=3 AND KAN=7"));
    exec(QStringLiteral("UPDATE ex_kanzai SET FLAG=2, YOSAN=3 WHERE GRP=3 AND KAN=7 AND NO=60"));
    exec(QStringLiteral("UPDATE ex_kanzai SET FLAG=2 WHERE GRP=3 AND KAN=7 AND NO=59"));
    exec(QStringLiteral("UPDATE ex_kanzai SET GOODS='%1' WHERE GRP=3 AND KAN=7 AND NO=1")
             .arg(QString(100, QLatin1Char('x'))));
    exec(QStringLiteral("UPDATE ex_kanzai SET NET=1234.56789, SORT=5, SIZE=NULL, UKEY=77 "
                        "WHERE GRP=3 AND KAN=7 AND NO=2"));
    exec(QStringLiteral("UPDATE ex_kanzai SET SIZE='15A', TEIKA='abc' WHERE GRP=3 AND KAN=7 "
                        "AND NO=3"));
    rows()[2].sizeBytes = "old";
    rows()[2].submittedAmounts[3] = c("9"); // CALC fields keep their old values

    ws().load(3, 7);
    EXPECT_EQ(rows()[15].factor(1), c("1"));
    EXPECT_EQ(rows()[16].factor(1), c("0"));
    EXPECT_EQ(rows()[60].modeFlag, 0);
    EXPECT_EQ(rows()[60].otherMethod, 0);
    EXPECT_EQ(rows()[59].modeFlag, 2);
    EXPECT_EQ(rows()[1].goodsBytes, QByteArray(80, 'x'));
    EXPECT_EQ(rows()[2].costPrice, c("1234.5679"));
    EXPECT_EQ(rows()[2].sortOrder, c("5"));
    EXPECT_EQ(rows()[2].sizeBytes, QByteArray());
    EXPECT_EQ(rows()[2].key, 77);
    EXPECT_EQ(rows()[2].submittedAmounts[3], c("9"));
    EXPECT_EQ(rows()[3].sizeBytes, QByteArray("15A"));
    EXPECT_EQ(rows()[3].listPrice, c("0"));
    EXPECT_EQ(rows()[60].key, 60);
    ASSERT_EQ(doc().savedLines().size(), 60);
    EXPECT_TRUE(doc().savedLines()[0].startsWith(QString(80, QLatin1Char('x')) + QLatin1Char(';')));
    EXPECT_EQ(nthField(doc().savedLines()[14], 9), QStringLiteral("1")); // DATA1 after the default
    EXPECT_EQ(nthField(doc().savedLines()[59], 4), QStringLiteral("2")); // stored FLAG
    // So the pipe type counts as changed right after loading.
    doc().takeSnapshot();
    EXPECT_TRUE(doc().isChanged());

    // FLAG -1 stays; DATA1 2.5 in row 15 stays.
    exec(QStringLiteral("UPDATE ex_kanzai SET FLAG=-1 WHERE GRP=3 AND KAN=8 AND NO=60"));
    exec(QStringLiteral("UPDATE ex_kanzai SET DATA1=2.5 WHERE GRP=3 AND KAN=8 AND NO=15"));
    ws().load(3, 8);
    EXPECT_EQ(rows()[60].modeFlag, -1);
    EXPECT_EQ(rows()[15].factor(1), c("2.5"));
}

TEST_F(PipeTypeStore, MissingRowsStopTheLoad) {
    exec(QStringLiteral("DELETE FROM ex_kanzai WHERE GRP=2 AND KAN=2 AND NO>=30"));
    exec(QStringLiteral("UPDATE ex_kanzai SET GOODS='first' WHERE GRP=2 AND KAN=2 AND NO=1"));
    rows()[60].modeFlag = 5;
    rows()[40].setGoods(QStringLiteral("kept"));
    // All or nothing: not even the 29 rows read before the gap arrive.
    EXPECT_THROW(ws().load(2, 2), std::out_of_range);
    EXPECT_TRUE(rows()[1].goodsBytes.isEmpty());
    EXPECT_EQ(rows()[40].goodsBytes, QByteArray("kept"));
    EXPECT_EQ(rows()[60].modeFlag, 5);
    EXPECT_TRUE(doc().savedLines().isEmpty());
}

TEST_F(PipeTypeStore, SaveWritesAllRowsAndMarksSaved) {
    ws().load(4, 5);
    rows()[1].setGoods(QStringLiteral("配管用炭素鋼鋼管（白）"));
    rows()[2].sortOrder = c("5");
    rows()[2].key = 999;
    rows()[7].costPrice = c("1234.5");
    rows()[7].costAmounts[6] = c("17");
    rows()[60].otherMethod = 1;
    doc().takeSnapshot();
    EXPECT_TRUE(doc().isChanged());

    EXPECT_EQ(save(4, 5), SaveOutcome::Saved);
    EXPECT_TRUE(dialogs.boxes().empty());
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_EQ(dialogs.clipboard(), saveStatement(rows()[1], 4, 5, 1));
    EXPECT_FALSE(doc().isChanged());
    EXPECT_EQ(stored("GOODS", 4, 5, 1), QStringLiteral("配管用炭素鋼鋼管（白）"));
    EXPECT_EQ(stored("SORT", 4, 5, 2), QStringLiteral("0"));
    EXPECT_EQ(stored("UKEY", 4, 5, 2), QStringLiteral("2"));
    EXPECT_EQ(stored("NET", 4, 5, 7), QStringLiteral("1234.5"));
    EXPECT_EQ(stored("CALC7_N", 4, 5, 7), QStringLiteral("17"));
    EXPECT_EQ(stored("YOSAN", 4, 5, 60), QStringLiteral("1"));
    EXPECT_EQ(stored("GOODS", 4, 6, 1), QString()); // other pipe types untouched
}

TEST_F(PipeTypeStore, TextsRoundTripThroughSaveAndLoad) {
    ws().load(1, 1);
    const QStringList texts = {QStringLiteral("O'Brien's ;pipe; 'x'"),
                               QStringLiteral("給水、給湯';--"),
                               QStringLiteral("ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVA)"),
                               QStringLiteral("\x1b;\x1b\x1b:;"), QStringLiteral("～－∥―￠")};
    for (int i = 0; i < int(texts.size()); ++i)
        rows()[i + 1].setGoods(texts[i]);
    rows()[1].setKind(QStringLiteral("屋内;一般'"));
    rows()[2].setSize(QStringLiteral("1';2"));
    rows()[3].setUnit(QStringLiteral("ｍ;"));
    std::array<PipeRow, 5> before;
    for (int i = 0; i < 5; ++i)
        before[std::size_t(i)] = rows()[i + 1];
    doc().takeSnapshot();
    save(1, 1);
    EXPECT_TRUE(dialogs.boxes().empty());
    EXPECT_TRUE(dialogs.messages().empty());

    doc().clearRows(RowCount);
    ws().load(1, 1);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(rows()[i + 1].goodsBytes, before[std::size_t(i)].goodsBytes) << i;
        EXPECT_EQ(rows()[i + 1].goods(), texts[i]) << i;
    }
    EXPECT_EQ(rows()[1].kind(), QStringLiteral("屋内;一般'"));
    EXPECT_EQ(rows()[2].size(), QStringLiteral("1';2"));
    EXPECT_EQ(rows()[3].unit(), QStringLiteral("ｍ;"));
    EXPECT_EQ(rows()[4].costPrice, before[3].costPrice);
}

// Every character of the code page, in its own bytes, survives the store.
TEST_F(PipeTypeStore, EveryCodePageCharacterSurvivesByteForByte) {
    QList<QByteArray> chars;
    for (int b = 0x20; b < 0x7F; ++b)
        if (b != ';' && b != '\'') chars << QByteArray(1, char(b));
    for (int b = 0xA1; b <= 0xDF; ++b)
        chars << QByteArray(1, char(b));
    for (int lead = 0x81; lead <= 0xFC; ++lead) {
        if (!isLeadByte(static_cast<unsigned char>(lead))) continue;
        for (int trail = 0x40; trail <= 0xFC; ++trail) {
            if (trail == 0x7F) continue;
            QByteArray bytes;
            bytes.append(char(lead)).append(char(trail));
            const QString u = fromAnsi(bytes);
            // Only the code page's own form of a character: duplicates
            // (NEC/IBM rows) have one canonical code.
            if (u.size() != 1 || u[0] == QChar(0xFFFD) || toAnsi(u) != bytes) continue;
            chars << bytes;
        }
    }
    ASSERT_GT(chars.size(), 7000);
    int next = 0;
    while (next < int(chars.size())) {
        ws().load(6, 1);
        for (int r = 1; r <= RowCount; ++r) {
            QByteArray goods;
            while (next < int(chars.size()) && goods.size() + chars[next].size() <= GoodsWidth)
                goods += chars[next++];
            rows()[r].goodsBytes = goods;
        }
        std::array<QByteArray, RowCount> written;
        for (int r = 1; r <= RowCount; ++r)
            written[std::size_t(r - 1)] = rows()[r].goodsBytes;
        save(6, 1);
        doc().clearRows(RowCount);
        ws().load(6, 1);
        for (int r = 1; r <= RowCount; ++r)
            ASSERT_EQ(rows()[r].goodsBytes, written[std::size_t(r - 1)]) << "row " << r;
    }
    EXPECT_TRUE(dialogs.boxes().empty());
    EXPECT_TRUE(dialogs.messages().empty());
}

// Every column of the 60 rows, read with the library itself.
QStringList dump(const QString& database, int grp, int kan) {
    return sqliteRows(database,
                      QStringLiteral("SELECT * FROM ex_kanzai WHERE GRP=%1 AND KAN=%2 ORDER BY NO")
                          .arg(grp)
                          .arg(kan),
                      SQLITE_OPEN_READONLY);
}

TEST_F(PipeTypeStore, ASaveLandsWholeOrNotAtAll) {
    ws().load(7, 3);
    const QStringList saved = doc().savedLines();
    for (int r = 1; r <= RowCount; ++r)
        rows()[r].setGoods(QStringLiteral("new%1").arg(r));
    doc().takeSnapshot();
    const QStringList before = dump(ws().paths().exDatabase, 7, 3);
    auto failsWithNothingWritten = [&](const char* reason) {
        // Refused with the database's reason; the rows stay unsaved, so the
        // question comes again.
        EXPECT_EQ(refusal(7, 3), QString::fromUtf8(reason));
        EXPECT_EQ(doc().savedLines(), saved);
        EXPECT_TRUE(doc().isChanged());
        EXPECT_EQ(dump(ws().paths().exDatabase, 7, 3), before);
    };
    {
        // A trigger of another program refuses row 30 alone.
        SqliteDatabase other(ws().paths().exDatabase);
        other.execSql(QStringLiteral(
            "CREATE TRIGGER no30 BEFORE UPDATE ON ex_kanzai WHEN old.GRP=7 AND old.KAN=3 AND "
            "old.NO=30 BEGIN SELECT RAISE(ABORT, 'row 30 is held'); END;"));
    }
    failsWithNothingWritten("row 30 is held");
    exec(QStringLiteral("DROP TRIGGER no30;"));
    {
        // A lock held for longer than the wait.
        LockHolder other(ws().paths().exDatabase, "IMMEDIATE");
        failsWithNothingWritten("database is locked");
    }
    // A lock let go within the wait is waited out, and the save goes through.
    {
        LockHolder other(ws().paths().exDatabase, "EXCLUSIVE", 0.5);
        EXPECT_EQ(save(7, 3), SaveOutcome::Saved);
    }
    EXPECT_FALSE(doc().isChanged());
    EXPECT_EQ(stored("GOODS", 7, 3, 1), QStringLiteral("new1"));
    EXPECT_EQ(stored("GOODS", 7, 3, 60), QStringLiteral("new60"));
}

TEST_F(PipeTypeStore, AChangeMadeElsewhereIsNotWrittenOverUnasked) {
    ws().load(7, 4);
    doc().takeSnapshot();
    rows()[3].costPrice = c("111");
    doc().refreshLines();
    // Another program changes one price of this pipe type, and a price of
    // the next one, after the load.
    exec(QStringLiteral("UPDATE ex_kanzai SET GROSS='999' WHERE GRP=7 AND KAN=4 AND NO=5;"));
    exec(QStringLiteral("UPDATE ex_kanzai SET GROSS='888' WHERE GRP=7 AND KAN=5 AND NO=5;"));
    const QStringList theirs = dump(ws().paths().exDatabase, 7, 4);
    EXPECT_EQ(save(7, 4), SaveOutcome::ChangedElsewhere);
    EXPECT_TRUE(dialogs.boxes().empty());
    EXPECT_EQ(dump(ws().paths().exDatabase, 7, 4), theirs);
    EXPECT_TRUE(doc().isChanged());

    // Written over on purpose; from then on our own save is what is stored.
    EXPECT_EQ(save(7, 4, SaveCheck::Overwrite), SaveOutcome::Saved);
    EXPECT_EQ(stored("GROSS", 7, 4, 5), currToStr(rows()[5].submittedPrice));
    EXPECT_EQ(stored("NET", 7, 4, 3), QStringLiteral("111"));
    rows()[3].costPrice = c("112");
    doc().refreshLines();
    EXPECT_EQ(save(7, 4), SaveOutcome::Saved);
    EXPECT_EQ(stored("NET", 7, 4, 3), QStringLiteral("112"));
    EXPECT_EQ(stored("GROSS", 7, 5, 5), QStringLiteral("888"));
}

// The connection stays open from one load or save to the next, yet a save
// always goes to the file that is at the path now: a file put in its place
// takes it, and a removed one, or a path that leads nowhere, refuses it
// without creating anything.
TEST_F(PipeTypeStore, ASaveGoesToTheFileAtThePathNow) {
    ws().load(1, 1);
    doc().takeSnapshot();
    rows()[1].setGoods(QStringLiteral("x"));
    doc().refreshLines();
    const QString copy = dir.filePath(QStringLiteral("copy.db3"));
    ASSERT_TRUE(QFile::copy(ws().paths().exDatabase, copy));
    ASSERT_TRUE(QFile::remove(ws().paths().exDatabase));
    ASSERT_TRUE(QFile::rename(copy, ws().paths().exDatabase));
    EXPECT_EQ(save(1, 1), SaveOutcome::Saved);
    EXPECT_EQ(stored("GOODS", 1, 1, 1), QStringLiteral("x"));

    const QStringList saved = doc().savedLines();
    rows()[1].setGoods(QStringLiteral("y"));
    doc().refreshLines();
    ASSERT_TRUE(QFile::remove(ws().paths().exDatabase));
    EXPECT_TRUE(refusal(1, 1).contains(QStringLiteral("unable to open")));
    EXPECT_FALSE(QFileInfo::exists(ws().paths().exDatabase));
    ws().paths().exDatabase = dir.filePath(QStringLiteral("no/such/folder/x.db3"));
    EXPECT_TRUE(refusal(1, 1).contains(QStringLiteral("unable to open")));
    EXPECT_EQ(doc().savedLines(), saved);
    EXPECT_TRUE(dialogs.boxes().empty());
}

} // namespace
