#include "store/sqliteclasses.h"

#include <QByteArray>

#include <cstdio>

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

} // namespace

// ---------------------------------------------------------------- table

SqliteTable::SqliteTable(SqliteDatabase& DB, const QString& SQL) {
    sqlite3_stmt* stmt = DB.prepare(SQL);
    SqliteStatementGuard guard{stmt};
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
