// The instruction stream of the workbook output, from a real database.
#include "output/excelstream.h"

#include "output/exportrows.h"
#include "sheet/sheettexts.h"
#include "shell/settingsfiles.h"
#include "store/codepage.h"
#include "store/modulewrappersqlite.h"
#include "store/suitestandin.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QString u(const char* t) {
    return QString::fromUtf8(t);
}

QStringList goldenLines(const char* name) {
    QFile f(QStringLiteral(QORVALE_OUTPUT_TEST_DATA "/") + QString::fromLatin1(name));
    EXPECT_TRUE(f.open(QIODevice::ReadOnly)) << name;
    QStringList lines = QString::fromUtf8(f.readAll()).split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
    return lines;
}

class ExcelStreamTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        db = dir.filePath(QStringLiteral("velmoraMainEX.db3"));
        createSuiteDatabase(db, false);
    }
    // Sets columns of row no of pipe type kan of group 3.
    void setRow(int kan, int no, const QString& assignments) {
        QString reason;
        ASSERT_EQ(tryExecStatements(db,
                                    {QStringLiteral("UPDATE ex_kanzai SET %1 WHERE CTG='1' AND "
                                                    "GRP='3' AND KAN='%2' AND NO='%3';")
                                         .arg(assignments)
                                         .arg(kan)
                                         .arg(no)},
                                    reason),
                  1)
            << reason.toStdString();
    }
    // A size row with its prices, factors and amounts.
    void setSize(int kan, int no, const char* values) { setRow(kan, no, u(values)); }

    // Group 3: pipe type 1 has rows but no material name, pipe type 2 is in
    // piping mode with a detail without sizes, pipe type 20 follows after
    // 17 empty positions.
    void fillGroup() {
        // Left out: no GOODS on line 1, whatever the other rows hold.
        setRow(1, 2, u("GOODS='給水'"));
        setSize(1, 1, "SIZE='15A', CI='ｍ', GROSS='560'");

        setRow(2, 1, u("GOODS='配管用炭素鋼鋼管（白）', KIND='屋内一般'"));
        setRow(2, 2, u("GOODS='通気'"));
        setRow(2, 3, u("GOODS='ねじ接合'"));
        setRow(2, 4, u("GOODS='公共建築'"));
        setRow(2, 5, u("GOODS='P.12'"));
        setRow(2, 16, u("KIND='機械室・便所(2)'"));
        setRow(2, 31, u("KIND='屋外架空(2)'"));
        setRow(2, 60, u("DATA5='24200', SIZE='60A'"));
        setSize(2, 1,
                "SIZE='15A', CI='ｍ', GROSS='560', DATA1='1.1', DATA2='0.55', DATA3='0.05', "
                "DATA4='0.1', DATA5='0.123', DATA6='0.015', DATA7='0.1', CALC1_G='616', "
                "CALC2_G='308', CALC3_G='28', CALC4_G='56', CALC5_G='2976.6', CALC6_G='44.65', "
                "CALC7_G='302.1', GTANKA='4331.35', FTANKA='4330', CALC1_N='1'");
        // line 2 has no size: no row on the sheet.
        setSize(2, 2, "CI='ｍ', GROSS='800', DATA1='1.1'");
        setSize(2, 3,
                "SIZE='25A', CI='ｍ', GROSS='1090', DATA1='1.1', DATA2='0.55', DATA3='0.05', "
                "DATA4='0.1', DATA5='0.185', DATA6='0.015', DATA7='0.1', CALC1_G='1199', "
                "CALC2_G='599.5', CALC3_G='54.5', CALC4_G='109', CALC5_G='4477', CALC6_G='67.15', "
                "CALC7_G='454.4', GTANKA='6960.55', FTANKA='6960'");
        // Detail 2 (rows 16 to 29) has no size at all.
        setSize(2, 31,
                "SIZE='15A', CI='ｍ', GROSS='560', DATA1='1.05', DATA2='0.36', DATA3='0.04', "
                "DATA4='0.12', DATA5='0.111', DATA6='0', DATA7='0.1', CALC1_G='588', "
                "CALC2_G='201.6', CALC3_G='22.4', CALC4_G='67.2', CALC5_G='2686.2', CALC6_G='0', "
                "CALC7_G='268.6', GTANKA='3834', FTANKA='3830'");
        // line 15 of a detail is never exported.
        setSize(2, 45, "SIZE='99A', CI='ｍ', GROSS='1'");
        setSize(2, 59,
                "SIZE='20A', CI='ｍ', GROSS='700', DATA1='1.05', DATA2='0.25', DATA3='0.03', "
                "DATA4='0', DATA5='0.1', DATA6='0', DATA7='0.1', CALC1_G='735', CALC2_G='175', "
                "CALC3_G='21', CALC4_G='0', CALC5_G='2420', CALC6_G='0', CALC7_G='242', "
                "GTANKA='3593', FTANKA='3590'");

        setRow(20, 1, u("GOODS='冷媒用銅管'"));
        setRow(20, 2, u("GOODS='冷媒'"));
        setRow(20, 3, u("GOODS='溶接接合'"));
        setRow(20, 60, u("DATA5=''"));
        // A text in a number column reads as 0, in a sum too.
        setSize(20, 1,
                "SIZE='6.35', CI='ｍ', GROSS='300', DATA1='1.1', DATA2='0.35', DATA3='0.12', "
                "DATA4='0.05', DATA5='0.045', DATA6='', DATA7='0.1', CALC1_G='330', "
                "CALC2_G='abc', CALC3_G='36', CALC4_G='15', CALC5_G='1089', CALC6_G='0', "
                "CALC7_G='108.9', GTANKA='1700', FTANKA='1700'");
    }

    QTemporaryDir dir;
    QString db;
};

TEST_F(ExcelStreamTest, GroupStreamMatchesTheGoldenStreamLineByLine) {
    fillGroup();
    // Refrigerant mode on screen: one tab.
    const QStringList stream = excelStream(db, 3, {u("一般")});
    const QStringList golden = goldenLines("excelstream_golden.txt");
    ASSERT_FALSE(golden.isEmpty());
    for (int i = 0; i < std::min(stream.size(), golden.size()); ++i)
        ASSERT_EQ(stream[i], golden[i]) << "line " << i + 1;
    EXPECT_EQ(stream.size(), golden.size());
}

TEST_F(ExcelStreamTest, SecondPipeTypeContinuesTheRowCounter) {
    fillGroup();
    const QStringList stream = excelStream(db, 3, {u("一般")});
    // Pipe type 2: title row 1, names row 2, details at 3 (2 sizes), 7 (none),
    // 9 (1 size), 12 (1 size), next block at 15.
    EXPECT_EQ(stream.count(u("AutoFit;1;1;;")), 2);
    EXPECT_TRUE(stream.contains(u("DATA;15;5;複 合 単 価 計 算 書;")));
    EXPECT_TRUE(stream.contains(u("DATA;16;1;冷媒用銅管;")));
    EXPECT_TRUE(stream.contains(u("DATA;18;1;冷媒用銅管;")));
    for (int r : {3, 7, 9, 12, 17, 20, 22, 24})
        EXPECT_TRUE(stream.contains(QStringLiteral("xlEdgeBottom;A%1;Q%1;;").arg(r))) << r;
    EXPECT_EQ(stream.filter(u("xlEdgeBottom")).size(), 8);
    // Nothing of the pipe type without a material name.
    EXPECT_FALSE(stream.join(QString()).contains(u("給水")));
}

TEST_F(ExcelStreamTest, ScreenCaptionsNameTheDetails) {
    fillGroup();
    const QStringList tabs = {u("A屋内"), u("B機械室"), u("C屋外"), u("D地中")};
    const QStringList stream = excelStream(db, 3, tabs);
    EXPECT_TRUE(stream.contains(u("DATA;4;3;A屋内;")));
    EXPECT_TRUE(stream.contains(u("DATA;10;3;C屋外;")));
    EXPECT_TRUE(stream.contains(u("DATA;13;3;D地中;")));
    EXPECT_FALSE(stream.join(QString()).contains(u("屋外架空(2)")));
}

TEST_F(ExcelStreamTest, EmptyGroupGivesAnEmptyStream) {
    EXPECT_TRUE(excelStream(db, 4, {u("一般")}).isEmpty());
}

TEST_F(ExcelStreamTest, DemoGroupHasAllItsPipeTypes) {
    const QString demo = dir.filePath(QStringLiteral("demo.db3"));
    createSuiteDatabase(demo, true);
    const QStringList stream = excelStream(demo, 1,
                                           {DefaultDetailCaptions[0], DefaultDetailCaptions[1],
                                            DefaultDetailCaptions[2], DefaultDetailCaptions[3]});
    EXPECT_EQ(stream.count(u("AutoFit;1;1;;")), 6);
    EXPECT_EQ(stream.filter(u("複 合 単 価 計 算 書")).size(), 6);
}

TEST_F(ExcelStreamTest, StreamFileIsCodePage932WithCrLf) {
    fillGroup();
    const QString path = excelStreamPath(dir.path());
    EXPECT_EQ(path, dir.path() + u("/temp/excelout.txt"));
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("temp")));
    const QStringList stream = excelStream(db, 3, {u("一般")});
    writeExcelStream(path, stream);
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QByteArray bytes = f.readAll();
    EXPECT_EQ(bytes, toAnsi(stream.join(u("\r\n")) + u("\r\n")));
    EXPECT_TRUE(bytes.startsWith(toAnsi(u("DATA;1;5;複 合 単 価 計 算 書;\r\n"))));
    EXPECT_EQ(bytes.count("\r\n"), stream.size());
    EXPECT_EQ(bytes.count('\n'), stream.size());
}

TEST_F(ExcelStreamTest, MissingTempFolderRaises) {
    EXPECT_THROW(writeExcelStream(excelStreamPath(dir.path()), {u("AutoFit;1;1;;")}), FileError);
}

TEST(ExcelWorkbookPathTest, NamedByDateAndTime) {
    const QDateTime t(QDate(2026, 3, 4), QTime(5, 6, 7));
    EXPECT_EQ(excelWorkbookPath(u("/data/root"), t), u("/data/root/20260304 050607.xlsx"));
}

} // namespace
