#pragma once
// The classes of the database layer: a connection, a result set held in
// memory, a forward-only cursor, named parameters, and the layer's one
// exception. Every failure is an SqliteError.

#include "store/sqliteapi.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <variant>
#include <vector>

// The exception of the layer; what() is the UTF-8 message.
class SqliteError : public std::runtime_error {
public:
    explicit SqliteError(const QString& message, const QString& reason = QString());
    QString message() const { return QString::fromUtf8(what()); }
    // The library's own words for what went wrong ("database is locked"),
    // or the whole message where the library said nothing.
    QString reason() const { return reason_.isEmpty() ? message() : reason_; }

private:
    QString reason_;
};

// Library type numbers of a value.
namespace SQLiteType {
constexpr int Integer = 1; // SQLITE_INTEGER
constexpr int Float = 2;   // SQLITE_FLOAT
constexpr int Text = 3;    // SQLITE_TEXT
constexpr int Blob = 4;    // SQLITE_BLOB
constexpr int Null = 5;    // SQLITE_NULL
} // namespace SQLiteType

// A prepared statement.
struct SqliteQuery {
    QString SQL;
    sqlite3_stmt* Statement = nullptr;
};

// One named parameter waiting for the next statement.
struct SqliteParam {
    QString name;
    int valuetype = SQLiteType::Null;
    std::int64_t valueinteger = 0;
    double valuefloat = 0;
    QString valuedata;
};

// Finalises a statement when the scope is left, also by an exception.
struct SqliteStatementGuard {
    sqlite3_stmt*& stmt;
    ~SqliteStatementGuard() {
        if (stmt) sqlite3_finalize(stmt);
        stmt = nullptr;
    }
};

class SqliteDatabase;
class SqliteTable;
class SqliteCursor;

// Called with the SQL of every statement that was prepared.
using QueryHook = std::function<void(SqliteDatabase* Sender, const QString& SQL)>;
// Collation over UTF-8 text.
using CollationCompare = int (*)(void* UserData, int Buf1Len, const void* Buf1, int Buf2Len,
                                 const void* Buf2);

// One open connection. Lives on the stack of the operation that needs it:
// its destructor rolls back an open transaction and may raise when the
// ROLLBACK itself fails.
//
// A connection opens an existing file only, unless asked to create it: the
// program never makes a database of its own where the suite's is missing.
// It waits out a lock that another program holds for up to BusyWaitMs
// before a statement fails with "database is locked".
class SqliteDatabase {
public:
    enum class OpenMode { Existing, CreateIfMissing };
    static constexpr int BusyWaitMs = 2000;

    explicit SqliteDatabase(const QString& FileName, OpenMode mode = OpenMode::Existing);
    ~SqliteDatabase() noexcept(false);
    SqliteDatabase(const SqliteDatabase&) = delete;
    SqliteDatabase& operator=(const SqliteDatabase&) = delete;

    sqlite3* db() const { return fDB; }
    bool isTransactionOpen() const { return fInTrans; }
    int rowsChanged() const;
    QueryHook onQuery;

    void execSql(const QString& SQL);
    // execSql of a statement already in UTF-8; the same failures.
    void execUtf8(const QByteArray& SQL);
    void execSql(SqliteQuery& Query);
    SqliteQuery prepareSql(const QString& SQL);
    void bindSql(SqliteQuery& Query, int Index, std::int64_t Value);
    void bindSql(SqliteQuery& Query, int Index, const QString& Value);
    void releaseSql(SqliteQuery& Query);

    std::unique_ptr<SqliteTable> getTable(const QString& SQL);
    std::unique_ptr<SqliteCursor> getUniTable(const QString& SQL);
    std::int64_t getTableValue(const QString& SQL);
    // A number that changes whenever another connection commits to the
    // file, and stays through the commits of this one.
    std::int64_t dataVersion();
    QString getTableString(const QString& SQL);
    void getTableStrings(const QString& SQL, QStringList& Value);
    // Every value of every row by its type and its bytes, with no conversion
    // to text: two images are equal exactly when the rows are.
    QByteArray getTableImage(const QString& SQL);
    void updateBlob(const QString& SQL, const QByteArray& BlobData);

    void beginTransaction();
    // A write transaction that takes the write lock at once ("BEGIN
    // IMMEDIATE"), so that what it reads stays as read until its commit.
    void beginImmediateTransaction();
    void commit();
    void rollback();
    bool tableExists(const QString& TableName);
    std::int64_t getLastInsertRowId() const;
    std::int64_t getLastChangedRows() const;
    void setTimeout(int Value);
    int backup(SqliteDatabase& TargetDB);
    int backup(SqliteDatabase& TargetDB, const QString& targetName, const QString& sourceName);
    static QString version();
    void addCustomCollate(const QString& name, CollationCompare xCompare);
    void addSystemCollate();

    void paramsClear();
    void addParamInt(const QString& name, std::int64_t value);
    void addParamFloat(const QString& name, double value);
    void addParamText(const QString& name, const QString& value);
    void addParamNull(const QString& name);
    void synchronised(bool write);

    // Raises the library's current error with message and SQL.
    [[noreturn]] void raiseSqlError(const QString& message, const QString& SQL) const;
    // Binds the waiting parameters to a fresh statement, then clears them.
    void setParams(sqlite3_stmt* Stmt);
    // Prepares by sqlite3_prepare16_v2 and hands the SQL to onQuery; raises
    // on failure and when no statement came back.
    sqlite3_stmt* prepare(const QString& SQL);

private:
    sqlite3* fDB = nullptr;
    bool fInTrans = false;
    bool fSync = false;
    std::vector<SqliteParam> fParams;
    // The statement of the last getTableImage, kept for the next one.
    sqlite3_stmt* fImageStmt = nullptr;
    sqlite3_stmt* fVersionStmt = nullptr;
    QString fImageSQL;
};

// A whole result set in memory; needs no connection once built.
class SqliteTable {
public:
    SqliteTable(SqliteDatabase& DB, const QString& SQL);
    SqliteTable(const SqliteTable&) = delete;
    SqliteTable& operator=(const SqliteTable&) = delete;

    unsigned rowCount() const { return fRowCount; }
    unsigned count() const { return fRowCount; }
    unsigned colCount() const { return fColCount; }
    unsigned row() const { return fRow; }

    QString fields(int I) const;
    QString fieldAsString(int I) const;
    std::int64_t fieldAsInteger(int I) const;
    double fieldAsDouble(int I) const;
    // The stream, still owned by the table; null for a NULL.
    const QByteArray* fieldAsBlob(int I) const;
    QString fieldAsBlobText(int I) const;
    bool fieldIsNull(int I) const;
    QString fieldByName(const QString& name) const;
    int fieldIndex(const QString& name) const;
    QString columns(int I) const;
    const QStringList& columnNames() const { return fCols; }

    // EOF (the name is taken by the C library).
    bool eof() const { return fRow >= fRowCount; }
    bool bof() const { return fRow == 0; }
    bool isLastRow() const { return fRowCount > 0 && fRow == fRowCount - 1; }
    bool next();
    bool previous();
    bool moveFirst();
    bool moveLast();
    bool moveTo(unsigned position);
    std::int64_t countResult() const;

private:
    using Value = std::variant<std::monostate, std::int64_t, double, QString, QByteArray>;
    const Value& current(int I) const;

    std::vector<Value> fResults;
    unsigned fRowCount = 0;
    unsigned fColCount = 0;
    QStringList fCols;
    std::vector<int> fColTypes;
    unsigned fRow = 0;
};

// A forward-only result set that keeps its statement open on the connection.
class SqliteCursor {
public:
    SqliteCursor(SqliteDatabase& DB, const QString& SQL);
    ~SqliteCursor();
    SqliteCursor(const SqliteCursor&) = delete;
    SqliteCursor& operator=(const SqliteCursor&) = delete;

    int colCount() const { return fColCount; }
    unsigned row() const { return fRow; }
    bool eof() const { return fEOF; }
    const QStringList& columnNames() const { return fCols; }
    QString columns(int I) const { return fCols.value(I); }

    bool next();
    QString fields(int I) const;
    QString fieldAsString(int I) const { return fields(I); }
    std::int64_t fieldAsInteger(int I) const;
    double fieldAsDouble(int I) const;
    bool fieldIsNull(int I) const;
    // A new stream owned by the caller; null when the value has under 1 byte.
    std::unique_ptr<QByteArray> fieldAsBlob(int I) const;
    const void* fieldAsBlobPtr(int I, int& iNumBytes) const;
    QString fieldAsBlobText(int I) const;
    QString fieldByName(const QString& name) const { return fields(fieldIndex(name)); }
    int fieldIndex(const QString& name) const;

private:
    int fColCount = 0;
    QStringList fCols;
    unsigned fRow = 0;
    bool fEOF = false;
    sqlite3_stmt* fStmt = nullptr;
    SqliteDatabase* fDB;
    QString fSQL;
};
