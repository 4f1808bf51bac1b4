#include "store/sqliteclasses.h"

#include <QByteArray>

#include <cstdio>
#include <exception>

SqliteError::SqliteError(const QString& message, const QString& reason)
    : std::runtime_error(message.toUtf8().toStdString()), reason_(reason) {}

namespace {

// The index of a column by name, without regard to case, for tables and
// cursors alike.
int columnIndex(const QStringList& cols, const QString& name) {
    if (cols.isEmpty())
        throw SqliteError(QStringLiteral("Field ") + name +
                          QStringLiteral(" Not found. Empty dataset"));
    const int i = int(cols.indexOf(name.toUpper()));
    if (i < 0) throw SqliteError(QStringLiteral("Field not found in dataset: ") + name);
    return i;
}

const void* utf16(const QString& s) {
    return s.utf16();
}
int byteLength(const QString& s) {
    return int(s.size() * 2);
}

QString columnName16(sqlite3_stmt* stmt, int i) {
    const void* p = sqlite3_column_name16(stmt, i);
    return p ? QString::fromUtf16(static_cast<const char16_t*>(p)) : QString();
}

QString columnText16(sqlite3_stmt* stmt, int i) {
    const void* p = sqlite3_column_text16(stmt, i);
    if (!p) return QString();
    return QString::fromUtf16(static_cast<const char16_t*>(p), sqlite3_column_bytes16(stmt, i) / 2);
}

// The general float-to-text conversion: 15 significant digits, no trailing
// zeros, exponent form "1E20" / "1E-5" for very large and small values.
QString floatToStr(double v) {
    // The C library's conversion: a load turns some 1,400 of these to text.
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.15G", v);
    QString s = QString::fromLatin1(buf);
    const int e = int(s.indexOf(QLatin1Char('E')));
    if (e < 0) return s;
    QString mant = s.left(e);
    QString exp = s.mid(e + 1);
    const bool neg = exp.startsWith(QLatin1Char('-'));
    if (exp.startsWith(QLatin1Char('+')) || neg) exp.remove(0, 1);
    while (exp.size() > 1 && exp.startsWith(QLatin1Char('0')))
        exp.remove(0, 1);
    return mant + QLatin1Char('E') + (neg ? QStringLiteral("-") : QString()) + exp;
}

// Type number of a column from its declared type, compared exactly.
int declaredType(const QString& decl) {
    if (decl == QLatin1String("INTEGER") || decl == QLatin1String("BOOLEAN"))
        return SQLiteType::Integer;
    if (decl == QLatin1String("NUMERIC") || decl == QLatin1String("FLOAT") ||
        decl == QLatin1String("DOUBLE") || decl == QLatin1String("REAL"))
        return SQLiteType::Float;
    if (decl == QLatin1String("BLOB")) return SQLiteType::Blob;
    return SQLiteType::Text;
}

int systemCollate(void*, int len1, const void* buf1, int len2, const void* buf2) {
    const QString a = QString::fromUtf16(static_cast<const char16_t*>(buf1), len1 / 2);
    const QString b = QString::fromUtf16(static_cast<const char16_t*>(buf2), len2 / 2);
    const int c = QString::localeAwareCompare(a, b);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

// Finalises a statement when the scope is left by an exception.
struct StmtGuard {
    sqlite3_stmt*& stmt;
    ~StmtGuard() {
        if (stmt) sqlite3_finalize(stmt);
        stmt = nullptr;
    }
};

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
    if (OnQuery) OnQuery(this, SQL);
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
    StmtGuard guard{stmt};
    setParams(stmt);
    if (sqlite3_step(stmt) != SQLITE_DONE) {
        sqlite3_reset(stmt);
        raiseSqlError(QStringLiteral("Error executing SQL statement"), SQL);
    }
}

void SqliteDatabase::execUtf8(const QByteArray& SQL) {
    sqlite3_stmt* stmt = nullptr;
    const int rc = sqlite3_prepare_v2(fDB, SQL.constData(), int(SQL.size()), &stmt, nullptr);
    if (OnQuery) OnQuery(this, QString::fromUtf8(SQL));
    StmtGuard guard{stmt};
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
    if (OnQuery) OnQuery(this, SQL);
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
    StmtGuard guard{stmt};
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

// ---------------------------------------------------------------- table

SqliteTable::SqliteTable(SqliteDatabase& DB, const QString& SQL) {
    sqlite3_stmt* stmt = DB.prepare(SQL);
    StmtGuard guard{stmt};
    DB.setParams(stmt);
    for (;;) {
        const int rc = sqlite3_step(stmt);
        if (rc == SQLITE_DONE) break;
        if (rc == SQLITE_BUSY) throw SqliteError(QStringLiteral("Could not prepare SQL statement"));
        if (rc != SQLITE_ROW) {
            sqlite3_reset(stmt);
            DB.raiseSqlError(QStringLiteral("Could not retrieve data"), SQL);
        }
        if (fRowCount == 0) {
            fColCount = unsigned(sqlite3_column_count(stmt));
            for (unsigned c = 0; c < fColCount; ++c) {
                fCols.append(columnName16(stmt, int(c)).toUpper());
                const void* decl = sqlite3_column_decltype16(stmt, int(c));
                if (decl)
                    fColTypes.push_back(
                        declaredType(QString::fromUtf16(static_cast<const char16_t*>(decl))));
                else
                    fColTypes.push_back(sqlite3_column_type(stmt, int(c)));
            }
        }
        for (unsigned c = 0; c < fColCount; ++c) {
            const int i = int(c);
            if (sqlite3_column_type(stmt, i) == SQLITE_NULL) {
                fResults.emplace_back();
                continue;
            }
            switch (fColTypes[c]) {
            case SQLiteType::Integer:
                fResults.emplace_back(std::int64_t(sqlite3_column_int64(stmt, i)));
                break;
            case SQLiteType::Float:
                fResults.emplace_back(sqlite3_column_double(stmt, i));
                break;
            case SQLiteType::Blob: {
                const int n = sqlite3_column_bytes(stmt, i);
                const void* p = sqlite3_column_blob(stmt, i);
                if (n > 0 && p)
                    fResults.emplace_back(QByteArray(static_cast<const char*>(p), n));
                else
                    fResults.emplace_back();
                break;
            }
            default:
                fResults.emplace_back(columnText16(stmt, i));
                break;
            }
        }
        ++fRowCount;
    }
    fRow = 0;
}

const SqliteTable::Value& SqliteTable::current(int I) const {
    if (eof()) throw SqliteError(QStringLiteral("Table is at End of File"));
    if (I < 0 || unsigned(I) >= fColCount)
        throw SqliteError(QStringLiteral("List index out of bounds (%1)").arg(I));
    return fResults[std::size_t(fRow) * fColCount + unsigned(I)];
}

QString SqliteTable::fields(int I) const {
    const Value& v = current(I);
    if (const auto* i = std::get_if<std::int64_t>(&v)) return QString::number(*i);
    if (const auto* d = std::get_if<double>(&v)) return floatToStr(*d);
    if (const auto* s = std::get_if<QString>(&v)) return *s;
    if (std::holds_alternative<QByteArray>(v)) return fieldAsBlobText(I);
    return QString();
}

QString SqliteTable::fieldAsString(int I) const {
    return fieldIsNull(I) ? QString() : fields(I);
}

std::int64_t SqliteTable::fieldAsInteger(int I) const {
    const Value& v = current(I);
    if (std::holds_alternative<std::monostate>(v)) return 0;
    if (const auto* i = std::get_if<std::int64_t>(&v)) return *i;
    if (const auto* d = std::get_if<double>(&v)) return std::int64_t(*d);
    throw SqliteError(QStringLiteral("Not an integer or numeric field"));
}

double SqliteTable::fieldAsDouble(int I) const {
    const Value& v = current(I);
    if (std::holds_alternative<std::monostate>(v)) return 0;
    if (const auto* i = std::get_if<std::int64_t>(&v)) return double(*i);
    if (const auto* d = std::get_if<double>(&v)) return *d;
    throw SqliteError(QStringLiteral("Not an integer or numeric field"));
}

const QByteArray* SqliteTable::fieldAsBlob(int I) const {
    const Value& v = current(I);
    if (std::holds_alternative<std::monostate>(v)) return nullptr;
    if (fColTypes[std::size_t(I)] != SQLiteType::Blob)
        throw SqliteError(QStringLiteral("Not a Blob field"));
    return std::get_if<QByteArray>(&v);
}

QString SqliteTable::fieldAsBlobText(int I) const {
    const QByteArray* b = fieldAsBlob(I);
    return b ? QString::fromUtf8(*b) : QString();
}

bool SqliteTable::fieldIsNull(int I) const {
    return std::holds_alternative<std::monostate>(current(I));
}

QString SqliteTable::fieldByName(const QString& name) const {
    return fields(fieldIndex(name));
}

int SqliteTable::fieldIndex(const QString& name) const {
    return columnIndex(fCols, name);
}

QString SqliteTable::columns(int I) const {
    return fCols.value(I);
}

bool SqliteTable::next() {
    if (eof()) return false;
    ++fRow;
    return true;
}

bool SqliteTable::previous() {
    if (bof()) return false;
    --fRow;
    return true;
}

bool SqliteTable::moveFirst() {
    if (fRowCount == 0) return false;
    fRow = 0;
    return true;
}

bool SqliteTable::moveLast() {
    if (fRowCount == 0) return false;
    fRow = fRowCount - 1;
    return true;
}

bool SqliteTable::moveTo(unsigned position) {
    if (fRowCount == 0 || position >= fRowCount) return false;
    fRow = position;
    return true;
}

std::int64_t SqliteTable::countResult() const {
    if (eof()) return 0;
    bool ok = false;
    const std::int64_t n = fields(0).toLongLong(&ok);
    if (!ok) throw SqliteError(QStringLiteral("'%1' is not a valid integer value").arg(fields(0)));
    return n;
}

// ---------------------------------------------------------------- cursor

SqliteCursor::SqliteCursor(SqliteDatabase& DB, const QString& SQL) : fDB(&DB), fSQL(SQL) {
    fStmt = DB.prepare(SQL);
    try {
        DB.setParams(fStmt);
        fColCount = sqlite3_column_count(fStmt);
        for (int c = 0; c < fColCount; ++c)
            fCols.append(columnName16(fStmt, c).toUpper());
        next();
    } catch (...) {
        sqlite3_finalize(fStmt);
        fStmt = nullptr;
        throw;
    }
}

SqliteCursor::~SqliteCursor() {
    if (fStmt) sqlite3_finalize(fStmt);
}

bool SqliteCursor::next() {
    fEOF = true;
    const int rc = sqlite3_step(fStmt);
    if (rc == SQLITE_ROW) {
        fEOF = false;
        ++fRow;
        return true;
    }
    if (rc != SQLITE_DONE) {
        sqlite3_reset(fStmt);
        fDB->raiseSqlError(QStringLiteral("Could not retrieve data"), fSQL);
    }
    return false;
}

QString SqliteCursor::fields(int I) const {
    return columnText16(fStmt, I);
}

std::int64_t SqliteCursor::fieldAsInteger(int I) const {
    return sqlite3_column_int64(fStmt, I);
}

double SqliteCursor::fieldAsDouble(int I) const {
    return sqlite3_column_double(fStmt, I);
}

bool SqliteCursor::fieldIsNull(int I) const {
    return sqlite3_column_text16(fStmt, I) == nullptr;
}

std::unique_ptr<QByteArray> SqliteCursor::fieldAsBlob(int I) const {
    const void* p = sqlite3_column_blob(fStmt, I);
    const int n = sqlite3_column_bytes(fStmt, I);
    if (n < 1 || !p) return nullptr;
    return std::make_unique<QByteArray>(static_cast<const char*>(p), n);
}

const void* SqliteCursor::fieldAsBlobPtr(int I, int& iNumBytes) const {
    const void* p = sqlite3_column_blob(fStmt, I);
    iNumBytes = sqlite3_column_bytes(fStmt, I);
    return p;
}

QString SqliteCursor::fieldAsBlobText(int I) const {
    const std::unique_ptr<QByteArray> b = fieldAsBlob(I);
    return b ? QString::fromUtf8(*b) : QString();
}

int SqliteCursor::fieldIndex(const QString& name) const {
    return columnIndex(fCols, name);
}
