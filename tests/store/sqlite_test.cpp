// The database layer on real SQLite files in a temporary folder.

#include "platform/scripteddialogs.h"
#include "store/modulewrappersqlite.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <ostream>

inline void PrintTo(const QString& s, std::ostream* os) {
    *os << '"' << s.toStdString() << '"';
}

namespace {

class SqliteLayer : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        path = dir.filePath(QStringLiteral("layer.db3"));
        SqliteDatabase db(path, SqliteDatabase::OpenMode::CreateIfMissing);
        db.ExecSQL(QStringLiteral("CREATE TABLE t (ID INTEGER, NAME TEXT, PRICE NUMERIC, "
                                  "CODE numeric, DATA BLOB)"));
        db.ExecSQL(QStringLiteral("INSERT INTO t VALUES (1, 'a;b', 1234.56789, 'x', NULL)"));
        db.ExecSQL(QStringLiteral("INSERT INTO t VALUES (2, NULL, 2.5, 7, x'414243')"));
    }
    void TearDown() override { EXPECT_TRUE(dialogs.Unanswered().isEmpty()); }

    QString message(const std::function<void()>& f) {
        try {
            f();
        } catch (const SqliteError& e) {
            return e.Message();
        }
        return QStringLiteral("<no exception>");
    }

    QTemporaryDir dir;
    QString path;
    ScriptedDialogs dialogs;
};

TEST(SqliteErrorTextTest, KnownAndUnknownCodes) {
    EXPECT_EQ(SQLiteErrorText(0), QStringLiteral("Successful result"));
    EXPECT_EQ(SQLiteErrorText(5), QStringLiteral("The database file is locked"));
    EXPECT_EQ(SQLiteErrorText(19), QStringLiteral("Abort due to contraint violation"));
    EXPECT_EQ(SQLiteErrorText(26), QStringLiteral("File opened that is not a database file"));
    EXPECT_EQ(SQLiteErrorText(101), QStringLiteral("sqlite3_step() has finished executing"));
    EXPECT_EQ(SQLiteErrorText(27), QStringLiteral("Unknown SQLite Error Code \"27\""));
    EXPECT_EQ(SQLiteErrorText(-3), QStringLiteral("Unknown SQLite Error Code \"-3\""));
}

TEST_F(SqliteLayer, QueryToLinesWritesEscapedLinesAndColumns) {
    QueryResult result =
        QueryToLines(path, QStringLiteral("SELECT ID, NAME, PRICE, CODE FROM t ORDER BY ID"));
    const QStringList& lines = result.lines;
    EXPECT_EQ(result.columns, (QStringList{"ID", "NAME", "PRICE", "CODE"}));
    ASSERT_EQ(lines.size(), 2);
    // A ";" in a value is escaped, a NULL gives an empty field, and the fields
    // behind both stay in place.
    EXPECT_EQ(lines[0], QStringLiteral("1;a\x1b:b;1234.56789;x;"));
    EXPECT_EQ(lines[1], QStringLiteral("2;;2.5;7;"));
    EXPECT_EQ(FieldOfLine(result.columns, lines[0], QStringLiteral("name")), QStringLiteral("a;b"));
    EXPECT_EQ(FieldOfLine(result.columns, lines[0], QStringLiteral("Price")),
              QStringLiteral("1234.56789"));
    EXPECT_EQ(FieldOfLine(result.columns, lines[1], QStringLiteral("NAME")), QString());
    EXPECT_EQ(FieldOfLine(result.columns, lines[1], QStringLiteral("code")), QStringLiteral("7"));
    EXPECT_EQ(FieldOfLine(result.columns, lines[1], QStringLiteral("NOPE")), QString());

    result = QueryToLines(path, QStringLiteral("SELECT * FROM t WHERE ID = 99"));
    EXPECT_TRUE(result.lines.isEmpty());
    EXPECT_EQ(FieldOfLine(result.columns, QStringLiteral("1;2;"), QStringLiteral("ID")), QString());
    // A name the list lacks is looked for in those names only.
    const QStringList two{QStringLiteral("ID"), QStringLiteral("NAME")};
    EXPECT_EQ(FieldOfLine(two, QStringLiteral("1;a;b;c;"), QStringLiteral("CODE")), QString());
}

TEST_F(SqliteLayer, FailedQueryRaisesAndLeavesNoConnection) {
    QueryToLines(path, QStringLiteral("SELECT ID FROM t"));
    const QString text = message([&] { QueryToLines(path, QStringLiteral("SELECT * FROM nope")); });
    EXPECT_EQ(text, QStringLiteral("Error executing SQL.\rError [1]: SQL error or missing "
                                   "database.\r\"SELECT * FROM nope\": no such table: nope"));
    // The file is free again: an exclusive lock can be taken at once.
    SqliteDatabase db(path);
    EXPECT_NO_THROW(db.ExecSQL(QStringLiteral("BEGIN EXCLUSIVE")));
    db.ExecSQL(QStringLiteral("ROLLBACK"));
}

TEST_F(SqliteLayer, ExecStatementCommitsOrShowsError) {
    EXPECT_EQ(ExecStatement(dialogs, path, QStringLiteral("UPDATE t SET NAME='z' WHERE ID=2")), 1);
    EXPECT_TRUE(dialogs.Boxes().empty());
    EXPECT_TRUE(dialogs.Messages().empty());
    EXPECT_EQ(ExecStatement(dialogs, path, QStringLiteral("UPDATE nope SET x=1")), 0);
    EXPECT_TRUE(dialogs.Boxes().empty());
    ASSERT_EQ(dialogs.Messages().size(), 1u);
    EXPECT_EQ(dialogs.Messages()[0].text, QStringLiteral("ERROR"));
    EXPECT_EQ(QueryToLines(path, QStringLiteral("SELECT NAME FROM t WHERE ID=2")).lines,
              QStringList{QStringLiteral("z;")});
    // All or nothing for several statements.
    EXPECT_EQ(
        ExecStatements(dialogs, path, {QStringLiteral("DELETE FROM t"), QStringLiteral("bad sql")}),
        0);
    EXPECT_EQ(QueryToLines(path, QStringLiteral("SELECT count(*) FROM t")).lines,
              QStringList{QStringLiteral("2;")});
}

TEST_F(SqliteLayer, OpenFailures) {
    const QString bad = dir.filePath(QStringLiteral("missing/sub/x.db3"));
    EXPECT_EQ(
        message([&] { SqliteDatabase db(bad); }),
        QStringLiteral("Failed to open database \"%1\" : unable to open database file").arg(bad));
    // ExecStatement does not catch a failed open.
    EXPECT_THROW(ExecStatement(dialogs, bad, QStringLiteral("SELECT 1")), SqliteError);
    // A missing file in a folder that is there is not created either.
    const QString missing = dir.filePath(QStringLiteral("none.db3"));
    EXPECT_THROW(QueryToLines(missing, QStringLiteral("SELECT 1")), SqliteError);
    EXPECT_FALSE(QFile::exists(missing));
    EXPECT_TRUE(dialogs.Boxes().empty());
    EXPECT_TRUE(dialogs.Messages().empty());
}

TEST_F(SqliteLayer, StatementFailureTexts) {
    SqliteDatabase db(path);
    SqliteQuery empty;
    empty.SQL = QStringLiteral("q");
    EXPECT_EQ(message([&] { db.BindSQL(empty, 1, std::int64_t(1)); }),
              QStringLiteral("Could not bind integer to prepared SQL statement"));
    EXPECT_EQ(message([&] { db.BindSQL(empty, 1, QStringLiteral("x")); }),
              QStringLiteral("Could not bind string to prepared SQL statement"));
    EXPECT_EQ(message([&] { db.ReleaseSQL(empty); }),
              QStringLiteral("Could not release prepared SQL statement"));
    EXPECT_NO_THROW(db.ExecSQL(empty)); // an empty statement does nothing
    EXPECT_EQ(message([&] { db.ExecSQL(QStringLiteral("   ")); }),
              QStringLiteral("Could not prepare SQL statement"));
    EXPECT_EQ(
        message([&] { db.ExecSQL(QStringLiteral("INSERT INTO t SELECT * FROM t AS a, t AS b")); }),
        QStringLiteral("Error executing SQL.\rError [1]: SQL error or missing database.\r"
                       "\"INSERT INTO t SELECT * FROM t AS a, t AS b\": "
                       "table t has 5 columns but 10 values were supplied"));
    db.ExecSQL(QStringLiteral("CREATE TABLE u (K INTEGER PRIMARY KEY)"));
    db.ExecSQL(QStringLiteral("INSERT INTO u VALUES (1)"));
    EXPECT_EQ(message([&] { db.ExecSQL(QStringLiteral("INSERT INTO u VALUES (1)")); }),
              QStringLiteral("Error executing SQL statement.\rError [19]: Abort due to contraint "
                             "violation.\r\"INSERT INTO u VALUES (1)\": UNIQUE constraint failed: "
                             "u.K"));

    SqliteQuery q = db.PrepareSQL(QStringLiteral("INSERT INTO u VALUES (?)"));
    db.BindSQL(q, 1, std::int64_t(1));
    EXPECT_EQ(message([&] { db.ExecSQL(q); }),
              QStringLiteral("Error executing prepared SQL statement.\rError [19]: Abort due to "
                             "contraint violation.\r\"INSERT INTO u VALUES (?)\": UNIQUE "
                             "constraint failed: u.K"));
    db.BindSQL(q, 1, QStringLiteral("2"));
    db.ExecSQL(q);
    db.ReleaseSQL(q);
    EXPECT_EQ(q.Statement, nullptr);
    EXPECT_EQ(db.GetTableValue(QStringLiteral("SELECT max(K) FROM u")), 2);

    EXPECT_EQ(message([&] { db.UpdateBlob(QStringLiteral("UPDATE t SET DATA = x''"), {}); }),
              QStringLiteral("SQL must include a ? parameter"));
    db.UpdateBlob(QStringLiteral("UPDATE t SET DATA = ? WHERE ID = 1"), QByteArray("\0\1z", 3));
    auto table = db.GetTable(QStringLiteral("SELECT DATA FROM t ORDER BY ID"));
    ASSERT_NE(table->FieldAsBlob(0), nullptr);
    EXPECT_EQ(*table->FieldAsBlob(0), QByteArray("\0\1z", 3));
    table->Next();
    EXPECT_EQ(table->FieldAsBlobText(0), QStringLiteral("ABC"));
}

TEST_F(SqliteLayer, TableTypesAndFieldAccess) {
    SqliteDatabase db(path);
    auto t = db.GetTable(QStringLiteral("SELECT ID, NAME, PRICE, CODE, DATA, ID * 2 AS twice "
                                        "FROM t ORDER BY ID"));
    EXPECT_EQ(t->RowCount(), 2u);
    EXPECT_EQ(t->ColCount(), 6u);
    EXPECT_EQ(t->Columns(5), QStringLiteral("TWICE"));
    EXPECT_TRUE(t->BOF());
    EXPECT_EQ(t->FieldAsInteger(0), 1);
    EXPECT_DOUBLE_EQ(t->FieldAsDouble(2), 1234.56789);
    EXPECT_EQ(t->FieldAsInteger(2), 1234); // a float is truncated
    EXPECT_EQ(t->FieldByName(QStringLiteral("code")), QStringLiteral("x"));
    // A column declared numeric in lower case counts as text.
    EXPECT_EQ(message([&] { t->FieldAsInteger(3); }),
              QStringLiteral("Not an integer or numeric field"));
    EXPECT_EQ(message([&] { t->FieldAsBlob(1); }), QStringLiteral("Not a Blob field"));
    EXPECT_TRUE(t->FieldIsNull(4));
    EXPECT_EQ(t->FieldAsBlob(4), nullptr);
    EXPECT_EQ(t->FieldAsString(5), QStringLiteral("2"));
    EXPECT_EQ(t->CountResult(), 1);
    EXPECT_EQ(message([&] { t->FieldIndex(QStringLiteral("nope")); }),
              QStringLiteral("Field not found in dataset: nope"));
    EXPECT_TRUE(t->Next());
    EXPECT_TRUE(t->IsLastRow());
    EXPECT_TRUE(t->FieldIsNull(1));
    EXPECT_EQ(t->FieldAsInteger(1), 0);
    EXPECT_EQ(t->Fields(3), QStringLiteral("7"));
    EXPECT_TRUE(t->Next());
    EXPECT_TRUE(t->Eof());
    EXPECT_FALSE(t->Next());
    EXPECT_EQ(t->CountResult(), 0);
    EXPECT_EQ(message([&] { t->Fields(0); }), QStringLiteral("Table is at End of File"));
    EXPECT_TRUE(t->Previous());
    EXPECT_TRUE(t->MoveFirst());
    EXPECT_TRUE(t->MoveLast());
    EXPECT_FALSE(t->MoveTo(2));
    EXPECT_TRUE(t->MoveTo(0));

    auto none = db.GetTable(QStringLiteral("SELECT * FROM t WHERE 0"));
    EXPECT_EQ(none->ColCount(), 0u);
    EXPECT_FALSE(none->MoveFirst());
    EXPECT_EQ(message([&] { none->FieldIndex(QStringLiteral("ID")); }),
              QStringLiteral("Field ID Not found. Empty dataset"));
    EXPECT_EQ(db.GetTableString(QStringLiteral("SELECT NAME FROM t WHERE 0")), QString());
    QStringList names;
    db.GetTableStrings(QStringLiteral("SELECT ID FROM t ORDER BY ID"), names);
    EXPECT_EQ(names, (QStringList{"1", "2"}));
}

TEST_F(SqliteLayer, CursorWalksForward) {
    SqliteDatabase db(path);
    auto c = db.GetUniTable(QStringLiteral("SELECT ID, NAME, DATA FROM t ORDER BY ID"));
    EXPECT_EQ(c->ColCount(), 3);
    EXPECT_FALSE(c->Eof());
    EXPECT_EQ(c->Row(), 1u);
    EXPECT_EQ(c->FieldByName(QStringLiteral("name")), QStringLiteral("a;b"));
    EXPECT_EQ(c->FieldAsBlob(2), nullptr);
    EXPECT_TRUE(c->Next());
    EXPECT_TRUE(c->FieldIsNull(1));
    EXPECT_EQ(c->FieldAsInteger(0), 2);
    EXPECT_EQ(c->FieldAsBlobText(2), QStringLiteral("ABC"));
    int n = 0;
    EXPECT_NE(c->FieldAsBlobPtr(2, n), nullptr);
    EXPECT_EQ(n, 3);
    EXPECT_EQ(message([&] { c->FieldIndex(QStringLiteral("x")); }),
              QStringLiteral("Field not found in dataset: x"));
    EXPECT_FALSE(c->Next());
    EXPECT_TRUE(c->Eof());
}

TEST_F(SqliteLayer, ParametersHooksAndTransactions) {
    SqliteDatabase db(path);
    QStringList seen;
    db.OnQuery = [&](SqliteDatabase*, const QString& sql) { seen << sql; };
    db.AddParamInt(QStringLiteral(":id"), 3);
    db.AddParamText(QStringLiteral(":name"), QStringLiteral("鋼管'"));
    db.AddParamFloat(QStringLiteral(":price"), 0.25);
    db.AddParamNull(QStringLiteral(":code"));
    db.AddParamInt(QStringLiteral(":unused"), 9); // not in the statement: passed over
    db.ExecSQL(QStringLiteral("INSERT INTO t VALUES (:id, :name, :price, :code, NULL)"));
    EXPECT_EQ(db.RowsChanged(), 1);
    EXPECT_EQ(db.GetLastInsertRowID(), 3);
    EXPECT_EQ(db.GetTableString(QStringLiteral("SELECT NAME FROM t WHERE ID=3")),
              QStringLiteral("鋼管'"));
    EXPECT_EQ(seen.first(),
              QStringLiteral("INSERT INTO t VALUES (:id, :name, :price, :code, NULL)"));
    EXPECT_TRUE(db.TableExists(QStringLiteral("T")));
    EXPECT_FALSE(db.TableExists(QStringLiteral("nope")));
    EXPECT_FALSE(SqliteDatabase::Version().isEmpty());

    db.BeginTransaction();
    EXPECT_EQ(message([&] { db.BeginTransaction(); }), QStringLiteral("Transaction already open"));
    EXPECT_TRUE(db.IsTransactionOpen());
    db.ExecSQL(QStringLiteral("DELETE FROM t"));
    db.Rollback();
    EXPECT_EQ(db.GetTableValue(QStringLiteral("SELECT count(*) FROM t")), 3);
    db.Synchronised(true);
    EXPECT_EQ(seen.last(), QStringLiteral("PRAGMA synchronous = ON;"));
    const auto before = seen.size();
    db.Synchronised(true); // unchanged: no statement
    EXPECT_EQ(seen.size(), before);
}

TEST_F(SqliteLayer, DestroyRollsBackOpenTransaction) {
    {
        SqliteDatabase db(path);
        db.BeginTransaction();
        db.ExecSQL(QStringLiteral("DELETE FROM t"));
    }
    SqliteDatabase db(path);
    EXPECT_EQ(db.GetTableValue(QStringLiteral("SELECT count(*) FROM t")), 2);
}

TEST_F(SqliteLayer, BackupAndCollations) {
    const QString copy = dir.filePath(QStringLiteral("copy.db3"));
    {
        SqliteDatabase source(path);
        SqliteDatabase target(copy, SqliteDatabase::OpenMode::CreateIfMissing);
        EXPECT_EQ(source.Backup(target), SQLITE_DONE);
        EXPECT_EQ(message([&] {
                      source.Backup(target, QStringLiteral("nosuch"), QStringLiteral("main"));
                  }),
                  QStringLiteral("Could not initialize backup"));
    }
    SqliteDatabase db(copy);
    EXPECT_EQ(db.GetTableValue(QStringLiteral("SELECT count(*) FROM t")), 2);
    db.AddCustomCollate(QStringLiteral("REVERSE"),
                        [](void*, int l1, const void* b1, int l2, const void* b2) {
                            const QByteArray a(static_cast<const char*>(b1), l1);
                            const QByteArray b(static_cast<const char*>(b2), l2);
                            return a < b ? 1 : (b < a ? -1 : 0);
                        });
    QStringList ids;
    db.GetTableStrings(QStringLiteral("SELECT ID FROM t ORDER BY CAST(ID AS TEXT) COLLATE REVERSE"),
                       ids);
    EXPECT_EQ(ids, (QStringList{"2", "1"}));
    db.AddSystemCollate();
    db.GetTableStrings(QStringLiteral("SELECT ID FROM t ORDER BY CAST(ID AS TEXT) COLLATE SYSTEM"),
                       ids);
    EXPECT_EQ(ids, (QStringList{"1", "2"}));
}

TEST_F(SqliteLayer, BusyDatabase) {
    SqliteDatabase other(path);
    other.ExecSQL(QStringLiteral("BEGIN EXCLUSIVE"));
    // A read fails with the busy code once the wait is over.
    try {
        QueryToLines(path, QStringLiteral("SELECT * FROM t"));
        ADD_FAILURE() << "the read went through";
    } catch (const SqliteError& e) {
        EXPECT_TRUE(e.Message().contains(QStringLiteral("The database file is locked")))
            << e.Message().toStdString();
        EXPECT_EQ(e.Reason(), QStringLiteral("database is locked"));
    }
    // A write reports "ERROR" with result 0.
    EXPECT_EQ(ExecStatement(dialogs, path, QStringLiteral("UPDATE t SET NAME='q'")), 0);
    EXPECT_TRUE(dialogs.Boxes().empty());
    ASSERT_EQ(dialogs.Messages().size(), 1u);
    EXPECT_EQ(dialogs.Messages()[0].text, QStringLiteral("ERROR"));
    other.ExecSQL(QStringLiteral("ROLLBACK"));
    EXPECT_EQ(ExecStatement(dialogs, path, QStringLiteral("UPDATE t SET NAME='q'")), 1);
}

// A connection that has read the schema already meets a competing writer at
// its first step, not while preparing: the table gives the direct busy text,
// the cursor the text of a failed retrieval with the busy code.
TEST_F(SqliteLayer, BusyAtTheFirstStep) {
    SqliteDatabase db(path);
    EXPECT_EQ(db.GetTableValue(QStringLiteral("SELECT count(*) FROM t")), 2);
    SqliteDatabase other(path);
    other.ExecSQL(QStringLiteral("BEGIN EXCLUSIVE"));
    EXPECT_EQ(message([&] { db.GetTable(QStringLiteral("SELECT * FROM t")); }),
              QStringLiteral("Could not prepare SQL statement"));
    EXPECT_EQ(message([&] { db.GetUniTable(QStringLiteral("SELECT ID FROM t")); }),
              QStringLiteral("Could not retrieve data.\rError [5]: The database file is locked.\r"
                             "\"SELECT ID FROM t\": database is locked"));
    other.ExecSQL(QStringLiteral("ROLLBACK"));
    EXPECT_EQ(db.GetTable(QStringLiteral("SELECT * FROM t"))->RowCount(), 2u);
}

} // namespace
