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
        db.execSql(QStringLiteral("CREATE TABLE t (ID INTEGER, NAME TEXT, PRICE NUMERIC, "
                                  "CODE numeric, DATA BLOB)"));
        db.execSql(QStringLiteral("INSERT INTO t VALUES (1, 'a;b', 1234.56789, 'x', NULL)"));
        db.execSql(QStringLiteral("INSERT INTO t VALUES (2, NULL, 2.5, 7, x'414243')"));
    }
    void TearDown() override { EXPECT_TRUE(dialogs.unanswered().isEmpty()); }

    QString message(const std::function<void()>& f) {
        try {
            f();
        } catch (const SqliteError& e) {
            return e.message();
        }
        return QStringLiteral("<no exception>");
    }

    QTemporaryDir dir;
    QString path;
    ScriptedDialogs dialogs;
};

TEST(SqliteErrorTextTest, KnownAndUnknownCodes) {
    EXPECT_EQ(sqliteErrorText(0), QStringLiteral("Successful result"));
    EXPECT_EQ(sqliteErrorText(5), QStringLiteral("The database file is locked"));
    EXPECT_EQ(sqliteErrorText(19), QStringLiteral("Abort due to contraint violation"));
    EXPECT_EQ(sqliteErrorText(26), QStringLiteral("File opened that is not a database file"));
    EXPECT_EQ(sqliteErrorText(101), QStringLiteral("sqlite3_step() has finished executing"));
    EXPECT_EQ(sqliteErrorText(27), QStringLiteral("Unknown SQLite Error Code \"27\""));
    EXPECT_EQ(sqliteErrorText(-3), QStringLiteral("Unknown SQLite Error Code \"-3\""));
}

TEST_F(SqliteLayer, QueryToLinesWritesEscapedLinesAndColumns) {
    QueryResult result =
        queryToLines(path, QStringLiteral("SELECT ID, NAME, PRICE, CODE FROM t ORDER BY ID"));
    const QStringList& lines = result.lines;
    EXPECT_EQ(result.columns, (QStringList{"ID", "NAME", "PRICE", "CODE"}));
    ASSERT_EQ(lines.size(), 2);
    // A ";" in a value is escaped, a NULL gives an empty field, and the fields
    // behind both stay in place.
    EXPECT_EQ(lines[0], QStringLiteral("1;a\x1b:b;1234.56789;x;"));
    EXPECT_EQ(lines[1], QStringLiteral("2;;2.5;7;"));
    EXPECT_EQ(fieldOfLine(result.columns, lines[0], QStringLiteral("name")), QStringLiteral("a;b"));
    EXPECT_EQ(fieldOfLine(result.columns, lines[0], QStringLiteral("Price")),
              QStringLiteral("1234.56789"));
    EXPECT_EQ(fieldOfLine(result.columns, lines[1], QStringLiteral("NAME")), QString());
    EXPECT_EQ(fieldOfLine(result.columns, lines[1], QStringLiteral("code")), QStringLiteral("7"));
    EXPECT_EQ(fieldOfLine(result.columns, lines[1], QStringLiteral("NOPE")), QString());

    result = queryToLines(path, QStringLiteral("SELECT * FROM t WHERE ID = 99"));
    EXPECT_TRUE(result.lines.isEmpty());
    EXPECT_EQ(fieldOfLine(result.columns, QStringLiteral("1;2;"), QStringLiteral("ID")), QString());
    // A name the list lacks is looked for in those names only.
    const QStringList two{QStringLiteral("ID"), QStringLiteral("NAME")};
    EXPECT_EQ(fieldOfLine(two, QStringLiteral("1;a;b;c;"), QStringLiteral("CODE")), QString());
}

TEST_F(SqliteLayer, FailedQueryRaisesAndLeavesNoConnection) {
    queryToLines(path, QStringLiteral("SELECT ID FROM t"));
    const QString text = message([&] { queryToLines(path, QStringLiteral("SELECT * FROM nope")); });
    EXPECT_EQ(text, QStringLiteral("Error executing SQL.\rError [1]: SQL error or missing "
                                   "database.\r\"SELECT * FROM nope\": no such table: nope"));
    // The file is free again: an exclusive lock can be taken at once.
    SqliteDatabase db(path);
    EXPECT_NO_THROW(db.execSql(QStringLiteral("BEGIN EXCLUSIVE")));
    db.execSql(QStringLiteral("ROLLBACK"));
}

TEST_F(SqliteLayer, ExecStatementCommitsOrShowsError) {
    EXPECT_EQ(execStatement(dialogs, path, QStringLiteral("UPDATE t SET NAME='z' WHERE ID=2")), 1);
    EXPECT_TRUE(dialogs.boxes().empty());
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_EQ(execStatement(dialogs, path, QStringLiteral("UPDATE nope SET x=1")), 0);
    EXPECT_TRUE(dialogs.boxes().empty());
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(dialogs.messages()[0].text, QStringLiteral("ERROR"));
    EXPECT_EQ(queryToLines(path, QStringLiteral("SELECT NAME FROM t WHERE ID=2")).lines,
              QStringList{QStringLiteral("z;")});
    // All or nothing for several statements.
    EXPECT_EQ(
        execStatements(dialogs, path, {QStringLiteral("DELETE FROM t"), QStringLiteral("bad sql")}),
        0);
    EXPECT_EQ(queryToLines(path, QStringLiteral("SELECT count(*) FROM t")).lines,
              QStringList{QStringLiteral("2;")});
}

TEST_F(SqliteLayer, OpenFailures) {
    const QString bad = dir.filePath(QStringLiteral("missing/sub/x.db3"));
    EXPECT_EQ(
        message([&] { SqliteDatabase db(bad); }),
        QStringLiteral("Failed to open database \"%1\" : unable to open database file").arg(bad));
    // execStatement does not catch a failed open.
    EXPECT_THROW(execStatement(dialogs, bad, QStringLiteral("SELECT 1")), SqliteError);
    // A missing file in a folder that is there is not created either.
    const QString missing = dir.filePath(QStringLiteral("none.db3"));
    EXPECT_THROW(queryToLines(missing, QStringLiteral("SELECT 1")), SqliteError);
    EXPECT_FALSE(QFile::exists(missing));
    EXPECT_TRUE(dialogs.boxes().empty());
    EXPECT_TRUE(dialogs.messages().empty());
}

TEST_F(SqliteLayer, StatementFailureTexts) {
    SqliteDatabase db(path);
    SqliteQuery empty;
    empty.SQL = QStringLiteral("q");
    EXPECT_EQ(message([&] { db.bindSql(empty, 1, std::int64_t(1)); }),
              QStringLiteral("Could not bind integer to prepared SQL statement"));
    EXPECT_EQ(message([&] { db.bindSql(empty, 1, QStringLiteral("x")); }),
              QStringLiteral("Could not bind string to prepared SQL statement"));
    EXPECT_EQ(message([&] { db.releaseSql(empty); }),
              QStringLiteral("Could not release prepared SQL statement"));
    EXPECT_NO_THROW(db.execSql(empty)); // an empty statement does nothing
    EXPECT_EQ(message([&] { db.execSql(QStringLiteral("   ")); }),
              QStringLiteral("Could not prepare SQL statement"));
    EXPECT_EQ(
        message([&] { db.execSql(QStringLiteral("INSERT INTO t SELECT * FROM t AS a, t AS b")); }),
        QStringLiteral("Error executing SQL.\rError [1]: SQL error or missing database.\r"
                       "\"INSERT INTO t SELECT * FROM t AS a, t AS b\": "
                       "table t has 5 columns but 10 values were supplied"));
    db.execSql(QStringLiteral("CREATE TABLE u (K INTEGER PRIMARY KEY)"));
    db.execSql(QStringLiteral("INSERT INTO u VALUES (1)"));
    EXPECT_EQ(message([&] { db.execSql(QStringLiteral("INSERT INTO u VALUES (1)")); }),
              QStringLiteral("Error executing SQL statement.\rError [19]: Abort due to contraint "
                             "violation.\r\"INSERT INTO u VALUES (1)\": UNIQUE constraint failed: "
                             "u.K"));

    SqliteQuery q = db.prepareSql(QStringLiteral("INSERT INTO u VALUES (?)"));
    db.bindSql(q, 1, std::int64_t(1));
    EXPECT_EQ(message([&] { db.execSql(q); }),
              QStringLiteral("Error executing prepared SQL statement.\rError [19]: Abort due to "
                             "contraint violation.\r\"INSERT INTO u VALUES (?)\": UNIQUE "
                             "constraint failed: u.K"));
    db.bindSql(q, 1, QStringLiteral("2"));
    db.execSql(q);
    db.releaseSql(q);
    EXPECT_EQ(q.Statement, nullptr);
    EXPECT_EQ(db.getTableValue(QStringLiteral("SELECT max(K) FROM u")), 2);

    EXPECT_EQ(message([&] { db.updateBlob(QStringLiteral("UPDATE t SET DATA = x''"), {}); }),
              QStringLiteral("SQL must include a ? parameter"));
    db.updateBlob(QStringLiteral("UPDATE t SET DATA = ? WHERE ID = 1"), QByteArray("\0\1z", 3));
    auto table = db.getTable(QStringLiteral("SELECT DATA FROM t ORDER BY ID"));
    ASSERT_NE(table->fieldAsBlob(0), nullptr);
    EXPECT_EQ(*table->fieldAsBlob(0), QByteArray("\0\1z", 3));
    table->next();
    EXPECT_EQ(table->fieldAsBlobText(0), QStringLiteral("ABC"));
}

TEST_F(SqliteLayer, TableTypesAndFieldAccess) {
    SqliteDatabase db(path);
    auto t = db.getTable(QStringLiteral("SELECT ID, NAME, PRICE, CODE, DATA, ID * 2 AS twice "
                                        "FROM t ORDER BY ID"));
    EXPECT_EQ(t->rowCount(), 2u);
    EXPECT_EQ(t->colCount(), 6u);
    EXPECT_EQ(t->columns(5), QStringLiteral("TWICE"));
    EXPECT_TRUE(t->bof());
    EXPECT_EQ(t->fieldAsInteger(0), 1);
    EXPECT_DOUBLE_EQ(t->fieldAsDouble(2), 1234.56789);
    EXPECT_EQ(t->fieldAsInteger(2), 1234); // a float is truncated
    EXPECT_EQ(t->fieldByName(QStringLiteral("code")), QStringLiteral("x"));
    // A column declared numeric in lower case counts as text.
    EXPECT_EQ(message([&] { t->fieldAsInteger(3); }),
              QStringLiteral("Not an integer or numeric field"));
    EXPECT_EQ(message([&] { t->fieldAsBlob(1); }), QStringLiteral("Not a Blob field"));
    EXPECT_TRUE(t->fieldIsNull(4));
    EXPECT_EQ(t->fieldAsBlob(4), nullptr);
    EXPECT_EQ(t->fieldAsString(5), QStringLiteral("2"));
    EXPECT_EQ(t->countResult(), 1);
    EXPECT_EQ(message([&] { t->fieldIndex(QStringLiteral("nope")); }),
              QStringLiteral("Field not found in dataset: nope"));
    EXPECT_TRUE(t->next());
    EXPECT_TRUE(t->isLastRow());
    EXPECT_TRUE(t->fieldIsNull(1));
    EXPECT_EQ(t->fieldAsInteger(1), 0);
    EXPECT_EQ(t->fields(3), QStringLiteral("7"));
    EXPECT_TRUE(t->next());
    EXPECT_TRUE(t->eof());
    EXPECT_FALSE(t->next());
    EXPECT_EQ(t->countResult(), 0);
    EXPECT_EQ(message([&] { t->fields(0); }), QStringLiteral("Table is at End of File"));
    EXPECT_TRUE(t->previous());
    EXPECT_TRUE(t->moveFirst());
    EXPECT_TRUE(t->moveLast());
    EXPECT_FALSE(t->moveTo(2));
    EXPECT_TRUE(t->moveTo(0));

    auto none = db.getTable(QStringLiteral("SELECT * FROM t WHERE 0"));
    EXPECT_EQ(none->colCount(), 0u);
    EXPECT_FALSE(none->moveFirst());
    EXPECT_EQ(message([&] { none->fieldIndex(QStringLiteral("ID")); }),
              QStringLiteral("Field ID Not found. Empty dataset"));
    EXPECT_EQ(db.getTableString(QStringLiteral("SELECT NAME FROM t WHERE 0")), QString());
    QStringList names;
    db.getTableStrings(QStringLiteral("SELECT ID FROM t ORDER BY ID"), names);
    EXPECT_EQ(names, (QStringList{"1", "2"}));
}

TEST_F(SqliteLayer, CursorWalksForward) {
    SqliteDatabase db(path);
    auto c = db.getUniTable(QStringLiteral("SELECT ID, NAME, DATA FROM t ORDER BY ID"));
    EXPECT_EQ(c->colCount(), 3);
    EXPECT_FALSE(c->eof());
    EXPECT_EQ(c->row(), 1u);
    EXPECT_EQ(c->fieldByName(QStringLiteral("name")), QStringLiteral("a;b"));
    EXPECT_EQ(c->fieldAsBlob(2), nullptr);
    EXPECT_TRUE(c->next());
    EXPECT_TRUE(c->fieldIsNull(1));
    EXPECT_EQ(c->fieldAsInteger(0), 2);
    EXPECT_EQ(c->fieldAsBlobText(2), QStringLiteral("ABC"));
    int n = 0;
    EXPECT_NE(c->fieldAsBlobPtr(2, n), nullptr);
    EXPECT_EQ(n, 3);
    EXPECT_EQ(message([&] { c->fieldIndex(QStringLiteral("x")); }),
              QStringLiteral("Field not found in dataset: x"));
    EXPECT_FALSE(c->next());
    EXPECT_TRUE(c->eof());
}

TEST_F(SqliteLayer, ParametersHooksAndTransactions) {
    SqliteDatabase db(path);
    QStringList seen;
    db.onQuery = [&](SqliteDatabase*, const QString& sql) { seen << sql; };
    db.addParamInt(QStringLiteral(":id"), 3);
    db.addParamText(QStringLiteral(":name"), QStringLiteral("鋼管'"));
    db.addParamFloat(QStringLiteral(":price"), 0.25);
    db.addParamNull(QStringLiteral(":code"));
    db.addParamInt(QStringLiteral(":unused"), 9); // not in the statement: passed over
    db.execSql(QStringLiteral("INSERT INTO t VALUES (:id, :name, :price, :code, NULL)"));
    EXPECT_EQ(db.rowsChanged(), 1);
    EXPECT_EQ(db.getLastInsertRowId(), 3);
    EXPECT_EQ(db.getTableString(QStringLiteral("SELECT NAME FROM t WHERE ID=3")),
              QStringLiteral("鋼管'"));
    EXPECT_EQ(seen.first(),
              QStringLiteral("INSERT INTO t VALUES (:id, :name, :price, :code, NULL)"));
    EXPECT_TRUE(db.tableExists(QStringLiteral("T")));
    EXPECT_FALSE(db.tableExists(QStringLiteral("nope")));
    EXPECT_FALSE(SqliteDatabase::version().isEmpty());

    db.beginTransaction();
    EXPECT_EQ(message([&] { db.beginTransaction(); }), QStringLiteral("Transaction already open"));
    EXPECT_TRUE(db.isTransactionOpen());
    db.execSql(QStringLiteral("DELETE FROM t"));
    db.rollback();
    EXPECT_EQ(db.getTableValue(QStringLiteral("SELECT count(*) FROM t")), 3);
    db.synchronised(true);
    EXPECT_EQ(seen.last(), QStringLiteral("PRAGMA synchronous = ON;"));
    const auto before = seen.size();
    db.synchronised(true); // unchanged: no statement
    EXPECT_EQ(seen.size(), before);
}

TEST_F(SqliteLayer, DestroyRollsBackOpenTransaction) {
    {
        SqliteDatabase db(path);
        db.beginTransaction();
        db.execSql(QStringLiteral("DELETE FROM t"));
    }
    SqliteDatabase db(path);
    EXPECT_EQ(db.getTableValue(QStringLiteral("SELECT count(*) FROM t")), 2);
}

TEST_F(SqliteLayer, BackupAndCollations) {
    const QString copy = dir.filePath(QStringLiteral("copy.db3"));
    {
        SqliteDatabase source(path);
        SqliteDatabase target(copy, SqliteDatabase::OpenMode::CreateIfMissing);
        EXPECT_EQ(source.backup(target), SQLITE_DONE);
        EXPECT_EQ(message([&] {
                      source.backup(target, QStringLiteral("nosuch"), QStringLiteral("main"));
                  }),
                  QStringLiteral("Could not initialize backup"));
    }
    SqliteDatabase db(copy);
    EXPECT_EQ(db.getTableValue(QStringLiteral("SELECT count(*) FROM t")), 2);
    db.addCustomCollate(QStringLiteral("REVERSE"),
                        [](void*, int l1, const void* b1, int l2, const void* b2) {
                            const QByteArray a(static_cast<const char*>(b1), l1);
                            const QByteArray b(static_cast<const char*>(b2), l2);
                            return a < b ? 1 : (b < a ? -1 : 0);
                        });
    QStringList ids;
    db.getTableStrings(QStringLiteral("SELECT ID FROM t ORDER BY CAST(ID AS TEXT) COLLATE REVERSE"),
                       ids);
    EXPECT_EQ(ids, (QStringList{"2", "1"}));
    db.addSystemCollate();
    db.getTableStrings(QStringLiteral("SELECT ID FROM t ORDER BY CAST(ID AS TEXT) COLLATE SYSTEM"),
                       ids);
    EXPECT_EQ(ids, (QStringList{"1", "2"}));
}

TEST_F(SqliteLayer, BusyDatabase) {
    SqliteDatabase other(path);
    other.execSql(QStringLiteral("BEGIN EXCLUSIVE"));
    // A read fails with the busy code once the wait is over.
    try {
        queryToLines(path, QStringLiteral("SELECT * FROM t"));
        ADD_FAILURE() << "the read went through";
    } catch (const SqliteError& e) {
        EXPECT_TRUE(e.message().contains(QStringLiteral("The database file is locked")))
            << e.message().toStdString();
        EXPECT_EQ(e.reason(), QStringLiteral("database is locked"));
    }
    // A write reports "ERROR" with result 0.
    EXPECT_EQ(execStatement(dialogs, path, QStringLiteral("UPDATE t SET NAME='q'")), 0);
    EXPECT_TRUE(dialogs.boxes().empty());
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(dialogs.messages()[0].text, QStringLiteral("ERROR"));
    other.execSql(QStringLiteral("ROLLBACK"));
    EXPECT_EQ(execStatement(dialogs, path, QStringLiteral("UPDATE t SET NAME='q'")), 1);
}

// A connection that has read the schema already meets a competing writer at
// its first step, not while preparing: the table gives the direct busy text,
// the cursor the text of a failed retrieval with the busy code.
TEST_F(SqliteLayer, BusyAtTheFirstStep) {
    SqliteDatabase db(path);
    EXPECT_EQ(db.getTableValue(QStringLiteral("SELECT count(*) FROM t")), 2);
    SqliteDatabase other(path);
    other.execSql(QStringLiteral("BEGIN EXCLUSIVE"));
    EXPECT_EQ(message([&] { db.getTable(QStringLiteral("SELECT * FROM t")); }),
              QStringLiteral("Could not prepare SQL statement"));
    EXPECT_EQ(message([&] { db.getUniTable(QStringLiteral("SELECT ID FROM t")); }),
              QStringLiteral("Could not retrieve data.\rError [5]: The database file is locked.\r"
                             "\"SELECT ID FROM t\": database is locked"));
    other.execSql(QStringLiteral("ROLLBACK"));
    EXPECT_EQ(db.getTable(QStringLiteral("SELECT * FROM t"))->rowCount(), 2u);
}

} // namespace
