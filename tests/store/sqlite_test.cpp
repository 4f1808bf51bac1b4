// The database layer on real SQLite files in a temporary folder.

#include "platform/scripteddialogs.h"
#include "store/modulewrappersqlite.h"
#include "support/testing.h"

#include <gmock/gmock.h>

#include <ostream>
#include <sstream>

inline void PrintTo(const QString& s, std::ostream* os) {
    *os << '"' << s.toStdString() << '"';
}

namespace {

std::ostream& operator<<(std::ostream& o, const QString& s) {
    return o << s.toStdString();
}
// Values read left to right, as one text separated by blanks: true is 1, a float has 15
// digits.
struct Values {
    std::ostringstream s;
    Values() { s.precision(15); }
    template <class T> Values& operator<<(const T& v) {
        s << (s.tellp() > 0 ? " " : "") << v;
        return *this;
    }
};
const auto s = [](const QString& q) { return q.toStdString(); };
const auto text = [](const Values& v) { return v.s.str(); };

// The message of the SqliteError f raises, and with reason its reason behind a "|".
std::string err(const std::function<void()>& f, bool reason = false) {
    try {
        f();
    } catch (const SqliteError& e) {
        return s(e.message() + (reason ? "|" + e.reason() : QString()));
    }
    return "<no exception>";
}

class SqliteLayer : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        path = dir.filePath("layer.db3");
        SqliteDatabase db(path, SqliteDatabase::OpenMode::CreateIfMissing);
        db.execSql(
            "CREATE TABLE t (ID INTEGER, NAME TEXT, PRICE NUMERIC, CODE numeric, DATA BLOB)");
        db.execSql("INSERT INTO t VALUES (1, 'a;b', 1234.56789, 'x', NULL)");
        db.execSql("INSERT INTO t VALUES (2, NULL, 1e-5, 7, x'414243')");
    }
    void TearDown() override { EXPECT_TRUE(dialogs.unanswered().isEmpty()); }

    int exec(const QString& sql) { return execStatement(dialogs, path, sql); }
    QStringList lines(const QString& sql) { return queryToLines(path, sql).lines; }
    // Exactly one box "ERROR" since the last look, and no task dialog.
    void expectOneErrorBox() {
        EXPECT_TRUE(dialogs.boxes().empty());
        ASSERT_EQ(dialogs.messages().size(), 1u);
        EXPECT_EQ(dialogs.messages()[0].text, "ERROR");
        dialogs.clearRecords();
    }

    QTemporaryDir dir;
    QString path;
    ScriptedDialogs dialogs;
};

TEST_F(SqliteLayer, QueryToLinesAndWritesCommitWholeOrShowError) {
    QueryResult result = queryToLines(path, "SELECT ID, NAME, PRICE, CODE FROM t ORDER BY ID");
    EXPECT_EQ(result.columns, (QStringList{"ID", "NAME", "PRICE", "CODE"}));
    // A ";" in a value is escaped, a NULL gives an empty field, and the fields behind both
    // stay in place; floats are written in the shortest general form.
    EXPECT_EQ(result.lines, (QStringList{"1;a\x1b:b;1234.56789;x;", "2;;1E-5;7;"}));
    const auto field = [&](int line, const char* name) {
        return fieldOfLine(result.columns, result.lines[line], name);
    };
    EXPECT_EQ(QStringList({field(0, "name"), field(0, "Price"), field(1, "NAME"), field(1, "code"),
                           field(1, "NOPE")}),
              QStringList({"a;b", "1234.56789", "", "7", ""}));
    result = queryToLines(path, "SELECT * FROM t WHERE ID = 99");
    EXPECT_TRUE(result.lines.isEmpty() && fieldOfLine(result.columns, "1;2;", "ID").isNull());
    // A name the list lacks is looked for in those names only.
    EXPECT_EQ(fieldOfLine({"ID", "NAME"}, "1;a;b;c;", "CODE"), QString());

    // A failed query raises and leaves no connection: an exclusive lock can be taken at once.
    EXPECT_EQ(err([&] { lines("SELECT * FROM nope"); }),
              "Error executing SQL.\rError [1]: SQL error or missing database.\r"
              "\"SELECT * FROM nope\": no such table: nope");
    SqliteDatabase db(path);
    EXPECT_NO_THROW(db.execSql("BEGIN EXCLUSIVE"));
    db.execSql("ROLLBACK");

    // Writes commit whole or show an error.
    EXPECT_EQ(exec("UPDATE t SET NAME='z' WHERE ID=2"), 1);
    EXPECT_EQ(exec("UPDATE nope SET x=1"), 0);
    expectOneErrorBox();
    EXPECT_EQ(lines("SELECT NAME FROM t WHERE ID=2"), QStringList{"z;"});
    // All or nothing for several statements.
    EXPECT_EQ(execStatements(dialogs, path, {"DELETE FROM t", "bad sql"}), 0);
    expectOneErrorBox();
    EXPECT_EQ(lines("SELECT count(*) FROM t"), QStringList{"2;"});

    // A file that can't be opened raises, in a missing folder or not, and creates nothing.
    const QString bad = dir.filePath("missing/sub/x.db3");
    EXPECT_EQ(err([&] { SqliteDatabase db(bad); }),
              s("Failed to open database \"" + bad + "\" : unable to open database file"));
    EXPECT_THROW(execStatement(dialogs, bad, "SELECT 1"), SqliteError);
    const QString missing = dir.filePath("none.db3");
    EXPECT_THROW(queryToLines(missing, "SELECT 1"), SqliteError);
    EXPECT_FALSE(QFile::exists(missing));

    // Another connection holds the file: a read fails with the busy code once the wait is
    // over, a write shows "ERROR" and gives 0, and goes through once the lock is gone. A
    // connection that has read the schema already meets the writer at its first step, not while
    // preparing: the table gives the direct busy text, the cursor the text of a failed retrieval
    // with the busy code.
    EXPECT_EQ(db.getTableValue("SELECT count(*) FROM t"), 2);
    SqliteDatabase other(path);
    other.execSql("BEGIN EXCLUSIVE");
    EXPECT_THAT(err([&] { lines("SELECT * FROM t"); }, true),
                testing::AllOf(testing::HasSubstr("The database file is locked"),
                               testing::EndsWith("|database is locked")));
    EXPECT_EQ(exec("UPDATE t SET NAME='q'"), 0);
    expectOneErrorBox();
    EXPECT_EQ(err([&] { db.getTable("SELECT * FROM t"); }), "Could not prepare SQL statement");
    EXPECT_EQ(err([&] { db.getUniTable("SELECT ID FROM t"); }),
              "Could not retrieve data.\rError [5]: The database file is locked.\r"
              "\"SELECT ID FROM t\": database is locked");
    other.execSql("ROLLBACK");
    EXPECT_EQ(exec("UPDATE t SET NAME='q'"), 1);
    EXPECT_EQ(db.getTable("SELECT * FROM t")->rowCount(), 2u);
    EXPECT_EQ(sqliteErrorText(27), "Unknown SQLite Error Code \"27\"");
}

TEST_F(SqliteLayer, StatementFailureTexts) {
    SqliteDatabase db(path);
    SqliteQuery empty;
    empty.SQL = "q";
    EXPECT_EQ(err([&] { db.bindSql(empty, 1, std::int64_t(1)); }),
              "Could not bind integer to prepared SQL statement");
    EXPECT_EQ(err([&] { db.bindSql(empty, 1, QString("x")); }),
              "Could not bind string to prepared SQL statement");
    EXPECT_EQ(err([&] { db.releaseSql(empty); }), "Could not release prepared SQL statement");
    EXPECT_NO_THROW(db.execSql(empty)); // an empty statement does nothing
    EXPECT_EQ(err([&] { db.execSql("   "); }), "Could not prepare SQL statement");
    EXPECT_EQ(err([&] { db.execSql("INSERT INTO t SELECT * FROM t AS a, t AS b"); }).substr(0, 32),
              "Error executing SQL.\rError [1]: ");
    for (const char* sql : {"CREATE TABLE u (K INTEGER PRIMARY KEY)", "INSERT INTO u VALUES (1)"})
        db.execSql(sql);
    EXPECT_EQ(err([&] { db.execSql("INSERT INTO u VALUES (1)"); }),
              "Error executing SQL statement.\rError [19]: Abort due to contraint violation.\r"
              "\"INSERT INTO u VALUES (1)\": UNIQUE constraint failed: u.K");

    SqliteQuery q = db.prepareSql("INSERT INTO u VALUES (?)");
    db.bindSql(q, 1, std::int64_t(1));
    EXPECT_EQ(err([&] { db.execSql(q); }).substr(0, 50),
              "Error executing prepared SQL statement.\rError [19]");
    db.bindSql(q, 1, QString("2"));
    db.execSql(q);
    db.releaseSql(q);
    EXPECT_TRUE(q.Statement == nullptr && db.getTableValue("SELECT max(K) FROM u") == 2);

    EXPECT_EQ(err([&] { db.updateBlob("UPDATE t SET DATA = x''", {}); }),
              "SQL must include a ? parameter");
    db.updateBlob("UPDATE t SET DATA = ? WHERE ID = 1", QByteArray("\0\1z", 3));
    auto table = db.getTable("SELECT DATA FROM t ORDER BY ID");
    ASSERT_NE(table->fieldAsBlob(0), nullptr);
    EXPECT_EQ(*table->fieldAsBlob(0), QByteArray("\0\1z", 3));
    EXPECT_TRUE(table->next() && table->fieldAsBlobText(0) == "ABC");
}

TEST_F(SqliteLayer, TableAndCursorFieldAccess) {
    SqliteDatabase db(path);
    auto t = db.getTable("SELECT ID, NAME, PRICE, CODE, DATA, ID * 2 AS twice FROM t ORDER BY ID");
    // Counts, a column's name, an integer, a float (truncated as integer), a field by name,
    // NULL, an expression as text, the first field as a count.
    EXPECT_EQ(text(Values() << t->rowCount() << t->colCount() << t->columns(5) << t->bof()
                            << t->fieldAsInteger(0) << t->fieldAsDouble(2) << t->fieldAsInteger(2)
                            << t->fieldByName("code") << t->fieldIsNull(4)
                            << (t->fieldAsBlob(4) == nullptr) << t->fieldAsString(5)
                            << t->countResult()),
              "2 6 TWICE 1 1 1234.56789 1234 x 1 1 2 1");
    // A column declared numeric in lower case counts as text.
    EXPECT_EQ(err([&] { t->fieldAsInteger(3); }), "Not an integer or numeric field");
    EXPECT_EQ(err([&] { t->fieldAsBlob(1); }), "Not a Blob field");
    EXPECT_EQ(err([&] { t->fieldIndex("nope"); }), "Field not found in dataset: nope");
    // Row 2, the end, and back.
    EXPECT_EQ(text(Values() << t->next() << t->isLastRow() << t->fieldIsNull(1)
                            << t->fieldAsInteger(1) << t->fields(3) << t->next() << t->eof()
                            << t->next() << t->countResult()),
              "1 1 1 0 7 1 1 0 0");
    EXPECT_EQ(err([&] { t->fields(0); }), "Table is at End of File");
    EXPECT_EQ(text(Values() << t->previous() << t->moveFirst() << t->moveLast() << t->moveTo(2)
                            << t->moveTo(0)),
              "1 1 1 0 1");
    auto none = db.getTable("SELECT * FROM t WHERE 0");
    EXPECT_EQ(text(Values() << none->colCount() << none->moveFirst()), "0 0");
    EXPECT_EQ(err([&] { none->fieldIndex("ID"); }), "Field ID Not found. Empty dataset");
    EXPECT_EQ(db.getTableString("SELECT NAME FROM t WHERE 0"), QString());

    // The cursor walks forward.
    auto c = db.getUniTable("SELECT ID, NAME, DATA FROM t ORDER BY ID");
    EXPECT_EQ(text(Values() << c->colCount() << c->eof() << c->row() << c->fieldByName("name")
                            << (c->fieldAsBlob(2) == nullptr)),
              "3 0 1 a;b 1");
    int n = 0;
    EXPECT_EQ(text(Values() << c->next() << c->fieldIsNull(1) << c->fieldAsInteger(0)
                            << c->fieldAsBlobText(2) << (c->fieldAsBlobPtr(2, n) != nullptr) << n),
              "1 1 2 ABC 1 3");
    EXPECT_EQ(err([&] { c->fieldIndex("x"); }), "Field not found in dataset: x");
    EXPECT_EQ(text(Values() << c->next() << c->eof()), "0 1");
}

TEST_F(SqliteLayer, ParametersHooksTransactionsBackupAndCollations) {
    {
        QStringList seen; // outlives the connection, whose close runs a statement too
        SqliteDatabase db(path);
        db.onQuery = [&](SqliteDatabase*, const QString& sql) { seen << sql; };
        db.addParamInt(":id", 3), db.addParamText(":name", "鋼管'");
        db.addParamFloat(":price", 0.25), db.addParamNull(":code");
        db.addParamInt(":unused", 9); // not in the statement: passed over
        db.execSql("INSERT INTO t VALUES (:id, :name, :price, :code, NULL)");
        EXPECT_EQ(text(Values() << db.rowsChanged() << db.getLastInsertRowId()
                                << db.tableExists("T") << db.tableExists("nope")
                                << db.getTableString("SELECT NAME || PRICE || ifnull(CODE, '-') "
                                                     "FROM t WHERE ID=3")),
                  "1 3 1 0 鋼管'0.25-");
        EXPECT_EQ(seen.first(), "INSERT INTO t VALUES (:id, :name, :price, :code, NULL)");

        db.beginTransaction();
        EXPECT_EQ(err([&] { db.beginTransaction(); }), "Transaction already open");
        db.execSql("DELETE FROM t");
        db.rollback();
        EXPECT_EQ(db.getTableValue("SELECT count(*) FROM t"), 3);
        db.synchronised(true);
        db.synchronised(true); // unchanged: no statement
        EXPECT_EQ(seen.mid(seen.size() - 2),
                  (QStringList{"SELECT count(*) FROM t", "PRAGMA synchronous = ON;"}));
        // A connection closed inside a transaction rolls it back.
        db.beginTransaction();
        db.execSql("DELETE FROM t WHERE ID=3");
    }
    const QString copy = dir.filePath("copy.db3");
    {
        SqliteDatabase source(path);
        SqliteDatabase target(copy, SqliteDatabase::OpenMode::CreateIfMissing);
        EXPECT_EQ(source.backup(target), SQLITE_DONE);
        EXPECT_EQ(err([&] { source.backup(target, "nosuch", "main"); }),
                  "Could not initialize backup");
    }
    SqliteDatabase db(copy);
    EXPECT_EQ(db.getTableValue("SELECT count(*) FROM t"), 3);
    db.addCustomCollate("REVERSE", [](void*, int l1, const void* b1, int l2, const void* b2) {
        const QByteArray a(static_cast<const char*>(b1), l1), b(static_cast<const char*>(b2), l2);
        return a < b ? 1 : (b < a ? -1 : 0);
    });
    QStringList ids;
    db.getTableStrings("SELECT ID FROM t ORDER BY CAST(ID AS TEXT) COLLATE REVERSE", ids);
    EXPECT_EQ(ids, (QStringList{"3", "2", "1"}));
    db.addSystemCollate();
    db.getTableStrings("SELECT ID FROM t ORDER BY CAST(ID AS TEXT) COLLATE SYSTEM", ids);
    EXPECT_EQ(ids, (QStringList{"1", "2", "3"}));
    EXPECT_EQ(
        db.getTableValue("SELECT count(*) FROM t WHERE CAST(ID AS TEXT) = '2' COLLATE SYSTEM"), 1);
}

} // namespace
