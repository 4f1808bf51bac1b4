#pragma once
// Another program on the same database file: the sqlite3 shell in a process
// of its own, holding a transaction.

#include "support/testing.h"

#include <sqlite3.h>

class LockHolder {
public:
    // kind "IMMEDIATE" keeps writers out, "EXCLUSIVE" readers too. The lock
    // is held until release(), or for holdSeconds when that is above 0.
    LockHolder(const QString& path, const char* kind, double holdSeconds = 0) {
        proc.start(QStringLiteral("sqlite3"), {path});
        EXPECT_TRUE(proc.waitForStarted()) << "the sqlite3 shell is needed for this test";
        proc.write(QByteArray("BEGIN ") + kind + ";\n");
        if (holdSeconds > 0) {
            proc.write(".shell sleep " + QByteArray::number(holdSeconds) + "\n");
            proc.closeWriteChannel(); // the shell ends after the sleep
        }
        // Held once no other connection can begin a write.
        for (int i = 0; i < 500 && !writeRefused(path); ++i)
            proc.waitForReadyRead(10);
        EXPECT_TRUE(writeRefused(path)) << "the other process holds no lock";
    }
    ~LockHolder() { release(); }
    LockHolder(const LockHolder&) = delete;
    LockHolder& operator=(const LockHolder&) = delete;

    void release() {
        if (proc.state() == QProcess::NotRunning) return;
        proc.closeWriteChannel(); // the shell ends, its transaction is rolled back
        proc.waitForFinished(10000);
    }

private:
    static bool writeRefused(const QString& path) {
        sqlite3* db = nullptr;
        sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
        const int rc = sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
        if (rc == SQLITE_OK) sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(db);
        return rc == SQLITE_BUSY;
    }
    QProcess proc;
};
