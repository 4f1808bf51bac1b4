// Whole files as bytes, for comparing what the program wrote.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <gtest/gtest.h>

// The bytes of a file, or "<missing>" when it cannot be read, so that a
// missing file never compares equal to an empty one.
inline QByteArray fileBytes(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

// Replaces a file with bytes; the test fails when that cannot be done.
inline void writeFileBytes(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    ASSERT_EQ(f.write(bytes), bytes.size());
}
