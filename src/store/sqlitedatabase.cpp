#include "store/sqliteclasses.h"

#include <QByteArray>

#include <cstdio>
#include <exception>

SqliteError::SqliteError(const QString& message, const QString& reason)
    : std::runtime_error(message.toUtf8().toStdString()), reason_(reason) {}

namespace {

const void* utf16(const QString& s) {
    return s.utf16();
}

int byteLength(const QString& s) {
    return int(s.size() * 2);
}

int systemCollate(void*, int len1, const void* buf1, int len2, const void* buf2) {
    const QString a = QString::fromUtf16(static_cast<const char16_t*>(buf1), len1 / 2);
    const QString b = QString::fromUtf16(static_cast<const char16_t*>(buf2), len2 / 2);
    const int c = QString::localeAwareCompare(a, b);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

} // namespace

// ---------------------------------------------------------------- database

SqliteDatabase::SqliteDatabase(const QString& FileName, OpenMode mode) {
    int flags = SQLITE_OPEN_READWRITE;
    if (mode == OpenMode::CreateIfMissing) flags |= SQLITE_OPEN_CREATE;
    const int rc = sqlite3_open_v2(FileName.toUtf8().constData(), &fDB, flags, nullptr);
    if (rc == SQLITE_OK) sqlite3_busy_timeout(fDB, BusyWaitMs);
    if (rc != SQLITE_OK) {
        if (fDB) {
            const QString msg = QString::fromUtf8(sqlite3_errmsg(fDB));
            sqlite3_close(fDB);
            fDB = nullptr;
            throw SqliteError(
                QStringLiteral("Failed to open database \"%1\" : %2").arg(FileName, msg), msg);
        }
        throw SqliteError(
            QStringLiteral("Failed to open database \"%1\" : unknown error").arg(FileName));
    }
}

SqliteDatabase::~SqliteDatabase() noexcept(false) {
    std::exception_ptr failure;
    if (fInTrans) {
        try {
            rollback();
        } catch (...) {
            failure = std::current_exception();
            fInTrans = false;
        }
    }
    if (fImageStmt) sqlite3_finalize(fImageStmt);
    fImageStmt = nullptr;
    if (fVersionStmt) sqlite3_finalize(fVersionStmt);
    fVersionStmt = nullptr;
    if (fDB) sqlite3_close(fDB);
    fDB = nullptr;
    paramsClear();
    // A failed ROLLBACK leaves the destructor, unless another exception is
    // already on its way (two at once would end the program).
    if (failure && std::uncaught_exceptions() == 0) std::rethrow_exception(failure);
}

int SqliteDatabase::rowsChanged() const {
    return sqlite3_changes(fDB);
}

void SqliteDatabase::raiseSqlError(const QString& message, const QString& SQL) const {
    const int code = fDB ? sqlite3_errcode(fDB) : 0;
    if (code == SQLITE_OK) throw SqliteError(message);
    const QString text = QString::fromUtf8(sqlite3_errmsg(fDB));
    throw SqliteError(message + QStringLiteral(".\rError [%1]: %2.\r\"%3\": %4")
                                    .arg(code)
                                    .arg(sqliteErrorText(code), SQL, text),
                      text);
}

sqlite3_stmt* SqliteDatabase::prepare(const QString& SQL) {
    sqlite3_stmt* stmt = nullptr;
    const void* tail = nullptr;
    const int rc = sqlite3_prepare16_v2(fDB, utf16(SQL), byteLength(SQL), &stmt, &tail);
    if (onQuery) onQuery(this, SQL);
    if (rc != SQLITE_OK) {
        if (stmt) sqlite3_finalize(stmt);
        raiseSqlError(QStringLiteral("Error executing SQL"), SQL);
    }
    if (!stmt) raiseSqlError(QStringLiteral("Could not prepare SQL statement"), SQL);
    return stmt;
}

void SqliteDatabase::setParams(sqlite3_stmt* Stmt) {
    for (const SqliteParam& p : fParams) {
        const int i = sqlite3_bind_parameter_index(Stmt, p.name.toUtf8().constData());
        if (i <= 0) continue;
        switch (p.valuetype) {
        case SQLiteType::Integer:
            sqlite3_bind_int64(Stmt, i, p.valueinteger);
            break;
        case SQLiteType::Float:
            sqlite3_bind_double(Stmt, i, p.valuefloat);
            break;
        case SQLiteType::Text:
            sqlite3_bind_text16(Stmt, i, utf16(p.valuedata), byteLength(p.valuedata),
                                SQLITE_TRANSIENT);
            break;
        case SQLiteType::Null:
            sqlite3_bind_null(Stmt, i);
            break;
        default:
            break;
        }
    }
    paramsClear();
}

void SqliteDatabase::execSql(const QString& SQL) {
    sqlite3_stmt* stmt = prepare(SQL);
    SqliteStatementGuard guard{stmt};
    setParams(stmt);
    if (sqlite3_step(stmt) != SQLITE_DONE) {
        sqlite3_reset(stmt);
        raiseSqlError(QStringLiteral("Error executing SQL statement"), SQL);
    }
}

void SqliteDatabase::execUtf8(const QByteArray& SQL) {
    sqlite3_stmt* stmt = nullptr;
    const int rc = sqlite3_prepare_v2(fDB, SQL.constData(), int(SQL.size()), &stmt, nullptr);
    if (onQuery) onQuery(this, QString::fromUtf8(SQL));
    SqliteStatementGuard guard{stmt};
    if (rc != SQLITE_OK)
        raiseSqlError(QStringLiteral("Error executing SQL"), QString::fromUtf8(SQL));
    if (!stmt)
        raiseSqlError(QStringLiteral("Could not prepare SQL statement"), QString::fromUtf8(SQL));
    setParams(stmt);
    if (sqlite3_step(stmt) != SQLITE_DONE) {
        sqlite3_reset(stmt);
        raiseSqlError(QStringLiteral("Error executing SQL statement"), QString::fromUtf8(SQL));
    }
}

void SqliteDatabase::execSql(SqliteQuery& Query) {
    if (!Query.Statement) return;
    if (sqlite3_step(Query.Statement) != SQLITE_DONE) {
        sqlite3_reset(Query.Statement);
        raiseSqlError(QStringLiteral("Error executing prepared SQL statement"), Query.SQL);
    }
    sqlite3_reset(Query.Statement);
}

SqliteQuery SqliteDatabase::prepareSql(const QString& SQL) {
    SqliteQuery q;
    q.SQL = SQL;
    const void* tail = nullptr;
    const int rc = sqlite3_prepare16(fDB, utf16(SQL), byteLength(SQL), &q.Statement, &tail);
    if (onQuery) onQuery(this, SQL);
    if (rc != SQLITE_OK) {
        if (q.Statement) sqlite3_finalize(q.Statement);
        q.Statement = nullptr;
        raiseSqlError(QStringLiteral("Error executing SQL"), SQL);
    }
    if (!q.Statement) raiseSqlError(QStringLiteral("Could not prepare SQL statement"), SQL);
    return q;
}

void SqliteDatabase::bindSql(SqliteQuery& Query, int Index, std::int64_t Value) {
    if (!Query.Statement)
        raiseSqlError(QStringLiteral("Could not bind integer to prepared SQL statement"),
                      Query.SQL);
    sqlite3_bind_int64(Query.Statement, Index, Value);
}

void SqliteDatabase::bindSql(SqliteQuery& Query, int Index, const QString& Value) {
    if (!Query.Statement)
        raiseSqlError(QStringLiteral("Could not bind string to prepared SQL statement"), Query.SQL);
    // The library keeps its own copy, so the text need not outlive the call.
    sqlite3_bind_text16(Query.Statement, Index, utf16(Value), byteLength(Value), SQLITE_TRANSIENT);
}

void SqliteDatabase::releaseSql(SqliteQuery& Query) {
    if (!Query.Statement)
        raiseSqlError(QStringLiteral("Could not release prepared SQL statement"), Query.SQL);
    sqlite3_finalize(Query.Statement);
    Query.Statement = nullptr;
}

std::unique_ptr<SqliteTable> SqliteDatabase::getTable(const QString& SQL) {
    return std::make_unique<SqliteTable>(*this, SQL);
}

std::unique_ptr<SqliteCursor> SqliteDatabase::getUniTable(const QString& SQL) {
    return std::make_unique<SqliteCursor>(*this, SQL);
}

std::int64_t SqliteDatabase::getTableValue(const QString& SQL) {
    SqliteTable table(*this, SQL);
    return table.rowCount() > 0 ? table.fieldAsInteger(0) : 0;
}

QString SqliteDatabase::getTableString(const QString& SQL) {
    SqliteTable table(*this, SQL);
    return table.rowCount() > 0 ? table.fieldAsString(0) : QString();
}

std::int64_t SqliteDatabase::dataVersion() {
    const QString sql = QStringLiteral("PRAGMA data_version;");
    if (!fVersionStmt) fVersionStmt = prepare(sql);
    struct Reset {
        sqlite3_stmt* stmt;
        ~Reset() { sqlite3_reset(stmt); }
    } reset{fVersionStmt};
    if (sqlite3_step(fVersionStmt) != SQLITE_ROW)
        raiseSqlError(QStringLiteral("Error executing SQL statement"), sql);
    return sqlite3_column_int64(fVersionStmt, 0);
}

QByteArray SqliteDatabase::getTableImage(const QString& SQL) {
    // A save reads the same rows before and after it writes: the second read
    // runs the statement of the first again.
    if (fImageStmt && SQL != fImageSQL) {
        sqlite3_finalize(fImageStmt);
        fImageStmt = nullptr;
    }
    if (!fImageStmt) {
        fImageStmt = prepare(SQL);
        fImageSQL = SQL;
    }
    sqlite3_stmt* stmt = fImageStmt;
    struct Reset {
        sqlite3_stmt* stmt;
        ~Reset() { sqlite3_reset(stmt); }
    } reset{stmt};
    QByteArray image;
    image.reserve(4096);
    int rc;
    while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
        const int cols = sqlite3_column_count(stmt);
        for (int c = 0; c < cols; ++c) {
            const int type = sqlite3_column_type(stmt, c);
            image += char(type);
            if (type == SQLITE_INTEGER) {
                const sqlite3_int64 v = sqlite3_column_int64(stmt, c);
                image.append(reinterpret_cast<const char*>(&v), sizeof v);
            } else if (type == SQLITE_FLOAT) {
                const double v = sqlite3_column_double(stmt, c);
                image.append(reinterpret_cast<const char*>(&v), sizeof v);
            } else if (type != SQLITE_NULL) {
                const char* bytes = static_cast<const char*>(
                    type == SQLITE_TEXT ? static_cast<const void*>(sqlite3_column_text(stmt, c))
                                        : sqlite3_column_blob(stmt, c));
                const int n = sqlite3_column_bytes(stmt, c);
                image.append(reinterpret_cast<const char*>(&n), sizeof n);
                image.append(bytes, n);
            }
        }
    }
    if (rc != SQLITE_DONE) raiseSqlError(QStringLiteral("Error executing SQL statement"), SQL);
    return image;
}

void SqliteDatabase::getTableStrings(const QString& SQL, QStringList& Value) {
    Value.clear();
    SqliteTable table(*this, SQL);
    while (!table.eof()) {
        Value.append(table.fieldAsString(0));
        table.next();
    }
}

void SqliteDatabase::updateBlob(const QString& SQL, const QByteArray& BlobData) {
    if (!SQL.contains(QLatin1Char('?')))
        raiseSqlError(QStringLiteral("SQL must include a ? parameter"), SQL);
    sqlite3_stmt* stmt = nullptr;
    const void* tail = nullptr;
    const int rc = sqlite3_prepare16_v2(fDB, utf16(SQL), byteLength(SQL), &stmt, &tail);
    SqliteStatementGuard guard{stmt};
    if (rc != SQLITE_OK || !stmt)
        raiseSqlError(QStringLiteral("Could not prepare SQL statement"), SQL);
    if (sqlite3_bind_blob(stmt, 1, BlobData.constData(), int(BlobData.size()), SQLITE_TRANSIENT) !=
        SQLITE_OK)
        raiseSqlError(QStringLiteral("Error binding blob to database"), SQL);
    if (sqlite3_step(stmt) != SQLITE_DONE) {
        sqlite3_reset(stmt);
        raiseSqlError(QStringLiteral("Error executing SQL statement"), SQL);
    }
}

void SqliteDatabase::beginTransaction() {
    if (fInTrans) throw SqliteError(QStringLiteral("Transaction already open"));
    execSql(QStringLiteral("BEGIN TRANSACTION"));
    fInTrans = true;
}

void SqliteDatabase::beginImmediateTransaction() {
    if (fInTrans) throw SqliteError(QStringLiteral("Transaction already open"));
    execSql(QStringLiteral("BEGIN IMMEDIATE TRANSACTION"));
    fInTrans = true;
}

void SqliteDatabase::commit() {
    execSql(QStringLiteral("COMMIT"));
    fInTrans = false;
}

void SqliteDatabase::rollback() {
    execSql(QStringLiteral("ROLLBACK"));
    fInTrans = false;
}

bool SqliteDatabase::tableExists(const QString& TableName) {
    const QString sql = QStringLiteral("select [sql] from sqlite_master where [type] = 'table' "
                                       "and lower(name) = '") +
                        TableName.toLower() + QStringLiteral("' ");
    SqliteTable table(*this, sql);
    return table.count() > 0;
}

std::int64_t SqliteDatabase::getLastInsertRowId() const {
    return sqlite3_last_insert_rowid(fDB);
}

std::int64_t SqliteDatabase::getLastChangedRows() const {
    return sqlite3_total_changes(fDB);
}

void SqliteDatabase::setTimeout(int Value) {
    sqlite3_busy_timeout(fDB, Value);
}

int SqliteDatabase::backup(SqliteDatabase& TargetDB) {
    return backup(TargetDB, QStringLiteral("main"), QStringLiteral("main"));
}

int SqliteDatabase::backup(SqliteDatabase& TargetDB, const QString& targetName,
                           const QString& sourceName) {
    sqlite3_backup* b = sqlite3_backup_init(TargetDB.db(), targetName.toUtf8().constData(), fDB,
                                            sourceName.toUtf8().constData());
    if (!b) throw SqliteError(QStringLiteral("Could not initialize backup"));
    const int rc = sqlite3_backup_step(b, -1);
    sqlite3_backup_finish(b);
    return rc;
}

QString SqliteDatabase::version() {
    return QString::fromUtf8(sqlite3_libversion());
}

void SqliteDatabase::addCustomCollate(const QString& name, CollationCompare xCompare) {
    sqlite3_create_collation(fDB, name.toUtf8().constData(), SQLITE_UTF8, nullptr, xCompare);
}

void SqliteDatabase::addSystemCollate() {
    sqlite3_create_collation(fDB, "SYSTEM", SQLITE_UTF16, nullptr, systemCollate);
}

void SqliteDatabase::paramsClear() {
    fParams.clear();
}

void SqliteDatabase::addParamInt(const QString& name, std::int64_t value) {
    SqliteParam p;
    p.name = name;
    p.valuetype = SQLiteType::Integer;
    p.valueinteger = value;
    fParams.push_back(p);
}

void SqliteDatabase::addParamFloat(const QString& name, double value) {
    SqliteParam p;
    p.name = name;
    p.valuetype = SQLiteType::Float;
    p.valuefloat = value;
    fParams.push_back(p);
}

void SqliteDatabase::addParamText(const QString& name, const QString& value) {
    SqliteParam p;
    p.name = name;
    p.valuetype = SQLiteType::Text;
    p.valuedata = value;
    fParams.push_back(p);
}

void SqliteDatabase::addParamNull(const QString& name) {
    SqliteParam p;
    p.name = name;
    p.valuetype = SQLiteType::Null;
    fParams.push_back(p);
}

void SqliteDatabase::synchronised(bool write) {
    if (write == fSync) return;
    execSql(write ? QStringLiteral("PRAGMA synchronous = ON;")
                  : QStringLiteral("PRAGMA synchronous = OFF;"));
    fSync = write;
}
