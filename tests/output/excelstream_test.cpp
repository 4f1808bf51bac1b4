// The instruction stream of the workbook output, from a real database.
#include "output/excelstream.h"

#include "shell/settingsfiles.h"
#include "store/codepage.h"
#include "store/modulewrappersqlite.h"
#include "store/suitestandin.h"
#include "support/testing.h"

#include <QDateTime>

namespace {

QString dataText(const char* name) {
    return QString::fromUtf8(
        fileBytes(QStringLiteral(QORVALE_OUTPUT_TEST_DATA "/") + QString::fromLatin1(name)));
}

// Group 3 of a database of the suite stand-in, as data/excelstream_group.sql sets it.
TEST(ExcelStream, GroupGivesTheGoldenStreamAndItsFile) {
    QTemporaryDir dir;
    const QString db = dir.filePath(QStringLiteral("velmoraMainEX.db3"));
    createSuiteDatabase(db, false);
    QStringList sql;
    for (const QString& l : dataText("excelstream_group.sql").split(QLatin1Char('\n')))
        if (l.startsWith(QLatin1String("UPDATE"))) sql << l;
    QString reason;
    ASSERT_EQ(tryExecStatements(db, sql, reason), 1) << reason.toStdString();

    // Refrigerant mode on screen: one tab.
    const QStringList stream = excelStream(db, 3, {u("一般")});
    const QString golden = dataText("excelstream_golden.txt");
    EXPECT_EQ((stream.join(QLatin1Char('\n')) + QLatin1Char('\n')).toStdString(),
              golden.toStdString());
    const QString path = excelStreamPath(dir.path());
    EXPECT_EQ(path, dir.path() + u("/temp/excelout.txt"));
    EXPECT_THROW(writeExcelStream(path, stream), FileError);
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("temp")));
    writeExcelStream(path, stream);
    EXPECT_EQ(fileBytes(path), toAnsi(golden).replace("\n", "\r\n"));

    // The captions on screen name the details.
    const QStringList four = excelStream(db, 3, {u("A屋内"), u("B機械室"), u("C屋外"), u("D地中")});
    for (const char* line : {"DATA;4;3;A屋内;", "DATA;10;3;C屋外;", "DATA;13;3;D地中;"})
        EXPECT_TRUE(four.contains(u(line))) << line;
    EXPECT_FALSE(four.join(QString()).contains(u("屋外架空(2)")));
    EXPECT_TRUE(excelStream(db, 4, {u("一般")}).isEmpty());
    EXPECT_EQ(excelWorkbookPath(u("/data/root"), QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7))),
              u("/data/root/20260304 050607.xlsx"));
}

} // namespace
