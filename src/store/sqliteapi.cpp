#include "store/sqliteapi.h"

QString sqliteErrorText(int code) {
    switch (code) {
    case 0:
        return QStringLiteral("Successful result");
    case 1:
        return QStringLiteral("SQL error or missing database");
    case 2:
        return QStringLiteral("An internal logic error in SQLite");
    case 3:
        return QStringLiteral("Access permission denied");
    case 4:
        return QStringLiteral("Callback routine requested an abort");
    case 5:
        return QStringLiteral("The database file is locked");
    case 6:
        return QStringLiteral("A table in the database is locked");
    case 7:
        return QStringLiteral("A malloc() failed");
    case 8:
        return QStringLiteral("Attempt to write a readonly database");
    case 9:
        return QStringLiteral("Operation terminated by sqlite3_interrupt()");
    case 10:
        return QStringLiteral("Some kind of disk I/O error occurred");
    case 11:
        return QStringLiteral("The database disk image is malformed");
    case 12:
        return QStringLiteral("(Internal Only) Table or record not found");
    case 13:
        return QStringLiteral("Insertion failed because database is full");
    case 14:
        return QStringLiteral("Unable to open the database file");
    case 15:
        return QStringLiteral("Database lock protocol error");
    case 16:
        return QStringLiteral("Database is empty");
    case 17:
        return QStringLiteral("The database schema changed");
    case 18:
        return QStringLiteral("Too much data for one row of a table");
    case 19:
        return QStringLiteral("Abort due to contraint violation");
    case 20:
        return QStringLiteral("Data type mismatch");
    case 21:
        return QStringLiteral("Library used incorrectly");
    case 22:
        return QStringLiteral("Uses OS features not supported on host");
    case 23:
        return QStringLiteral("Authorization denied");
    case 24:
        return QStringLiteral("Auxiliary database format error");
    case 25:
        return QStringLiteral("2nd parameter to sqlite3_bind out of range");
    case 26:
        return QStringLiteral("File opened that is not a database file");
    case 100:
        return QStringLiteral("sqlite3_step() has another row ready");
    case 101:
        return QStringLiteral("sqlite3_step() has finished executing");
    default:
        return QStringLiteral("Unknown SQLite Error Code \"%1\"").arg(code);
    }
}
