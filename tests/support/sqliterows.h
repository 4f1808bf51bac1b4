#pragma once
// One query with the SQLite library itself, not through the program: every
// column of every row as text, joined by "|". "cannot open" when the file
// can't be opened; the library's message when the query can't be prepared.

#include "support/testing.h"

#include <sqlite3.h>

inline QStringList sqliteRows(const QString& path, const QString& sql, int openFlags) {
    QStringList rows;
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(path.toUtf8().constData(), &db, openFlags, nullptr) != SQLITE_OK) {
        sqlite3_close(db);
        return {QStringLiteral("cannot open")};
    }
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &st, nullptr) != SQLITE_OK)
        rows << QString::fromUtf8(sqlite3_errmsg(db));
    while (st && sqlite3_step(st) == SQLITE_ROW) {
        QStringList cols;
        for (int c = 0; c < sqlite3_column_count(st); ++c)
            cols << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, c)));
        rows << cols.join(QLatin1Char('|'));
    }
    sqlite3_finalize(st);
    sqlite3_close(db);
    return rows;
}
