// The group rewrites without the form: the two statements, the progress text,
// and the recalculation of a group on a real demo database.

#include "engine/calcrow.h"
#include "engine/grouprewrite.h"
#include "platform/datapaths.h"
#include "platform/scripteddialogs.h"
#include "store/modulewrappersqlite.h"
#include "store/pipetypestore.h"
#include "store/suitestandin.h"
#include "support/ownworkspace.h"
#include "support/storedprices.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

Currency c(const char* text) {
    return strToCurr(QString::fromLatin1(text));
}

TEST(GroupRewriteStatements, OptionChangeTakesTwelveOptionsAndNotGross) {
    PipeRow r;
    PipeTypeOptions o(r);
    o.labourSubmitted() = c("15000");
    o.labourCost() = c("12500.5");
    o.rateCost() = c("62.5");
    o.rateSubmitted() = c("80"); // GROSS: stays out
    o.rateOn() = c("1");
    o.unitDigits() = c("10");
    o.unitFraction() = c("0.5");
    o.adoptedDigits() = c("1000");
    o.adoptedFraction() = c("0.9");
    o.elementDigits() = c("100");
    o.elementFraction() = c("0");
    o.modeFlag() = 1;
    o.otherMethod() = 1;
    EXPECT_EQ(optionChangeStatement(r, 4).toStdString(),
              "UPDATE ex_kanzai SET DATA5='15000',DATA4='12500.5',NET='62.5',NTANKA='1',"
              "GTANKA='10',FTANKA='0.5',DATA2='1000',DATA3='0.9',DATA6='100',DATA7='0',"
              "FLAG='1',YOSAN='1' WHERE CTG='1' AND GRP='4' AND NO='60';");
}

TEST(GroupRewriteStatements, LabourChangeReachesEveryOptionRow) {
    EXPECT_EQ(labourChangeStatement(c("9800.25"), c("-0.5")).toStdString(),
              "UPDATE ex_kanzai SET DATA4='9800.25',DATA5='-0.5' WHERE ukey='60';");
}

TEST(GroupRewriteStatements, ProgressText) {
    EXPECT_EQ(groupProgressText(1, 5, 12, QString()), QString::fromUtf8("データ更新中:1-5-12/"));
    EXPECT_EQ(groupProgressText(1, 0, 1, QString::fromUtf8("鋼管")),
              QString::fromUtf8("データ更新中:1-0-1/鋼管"));
    EXPECT_EQ(groupProgressText(12, 19, 59, QString()),
              QString::fromUtf8("データ更新中:12-19-59/"));
}

class GroupRecalc : public ::testing::Test, protected OwnWorkspace {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        ws().paths().exDatabase = dir.filePath(QStringLiteral("velmoraMainEX.db3"));
        createSuiteDatabase(ws().paths().exDatabase, true);
    }
    void TearDown() override { EXPECT_TRUE(dialogs.unanswered().isEmpty()); }

    void exec(const QString& sql) {
        ASSERT_EQ(execStatement(dialogs, ws().paths().exDatabase, sql), 1);
    }

    // The computed columns of one pipe type as stored, one line a row.
    QStringList storedPrices(int grp, int kan) {
        return StoredPrices(ws().paths().exDatabase, grp, kan);
    }
    // The same columns as the engine computes them from the stored figures
    // and options.
    QStringList expectedPrices(int grp, int kan) {
        return computedPrices(ws().paths().exDatabase, grp, kan);
    }

    // Row n of a pipe type as the engine computes it from the table.
    PipeRow expectedRow(int grp, int kan, int n) {
        const RowTable keep = rows();
        ws().load(grp, kan);
        PipeRow row = rows()[n];
        calcRowWith(row, PipeTypeOptions(rows()[OptionRow]));
        rows() = keep;
        return row;
    }

    QTemporaryDir dir;
    ScriptedDialogs dialogs;
};

TEST_F(GroupRecalc, EveryPipeTypeOfTheGroupIsComputedUnderItsStoredOptionsAndSaved) {
    // New options in the table for group 2 only, as the option statement
    // leaves them; the stored prices are now stale.
    PipeRow options;
    PipeTypeOptions o(options);
    o.adoptedDigits() = c("100");
    o.adoptedFraction() = c("0.5");
    o.elementDigits() = c("10");
    o.elementFraction() = c("0.9");
    o.labourSubmitted() = c("21000");
    o.labourCost() = c("17000");
    o.unitDigits() = c("1");
    o.unitFraction() = c("0");
    exec(optionChangeStatement(options, 2));
    const QStringList otherGroupBefore = storedPrices(3, 4);
    int stale = 0;
    for (int kan = 1; kan <= GroupPipeTypes; ++kan)
        stale += storedPrices(2, kan) != expectedPrices(2, kan);
    ASSERT_GT(stale, 0);

    // The current pipe type is 7 of group 2, with rows in memory of its own.
    ws().load(2, 7);
    doc().takeSnapshot();
    rows()[3].listPrice = c("123456"); // not saved: the run loads from the table
    std::vector<std::pair<QString, int>> progress;
    ws().recalculateGroup(1, 2, 7, dialogs, [&](const QString& text, int step) {
        progress.emplace_back(text, step);
    });

    for (int kan = 1; kan <= GroupPipeTypes; ++kan)
        EXPECT_EQ(storedPrices(2, kan), expectedPrices(2, kan)) << "KAN " << kan;
    EXPECT_EQ(storedPrices(3, 4), otherGroupBefore);

    // 20 x 59 steps in order, each before its row is calculated.
    ASSERT_EQ(int(progress.size()), GroupRewriteSteps);
    for (int s = 0; s < GroupRewriteSteps; ++s)
        ASSERT_EQ(progress[std::size_t(s)].second, s + 1);
    EXPECT_EQ(progress[5 * 59 + 11].first, QString::fromUtf8("データ更新中:1-5-12/"));
    ws().load(2, 1);
    EXPECT_FALSE(rows()[1].goodsBytes.isEmpty());
    EXPECT_EQ(progress[0].first, QString::fromUtf8("データ更新中:1-0-1/") + rows()[1].goods());
}

TEST_F(GroupRecalc, TheCurrentPipeTypeComesBackAsStoredWithItsPrices) {
    ws().load(1, 3);
    doc().takeSnapshot();
    const QStringList asLoaded = doc().savedLines();
    // An unsaved entry and option: the prices in the rows are not the table's.
    rows()[2].listPrice = c("777");
    doc().options().elementDigits() = c("10");
    doc().calculateAll();
    doc().refreshLines();
    ASSERT_TRUE(doc().isChanged());
    ws().recalculateGroup(1, 1, 3, dialogs, nullptr);
    // Group 1's pipe type 3, computed, with doc().savedLines() from the table: the
    // entry is gone from the rows, and the rows differ from doc().currentLines().
    EXPECT_EQ(doc().savedLines(), asLoaded);
    EXPECT_NE(rows()[2].listPrice, c("777"));
    EXPECT_TRUE(doc().isChanged());
    const RowTable shown = rows();
    const QStringList prices = expectedPrices(1, 3);
    EXPECT_EQ(storedPrices(1, 3), prices);
    for (int n : {1, 59}) { // the first and the last row calculated
        const QStringList fields = prices[n - 1].split(QLatin1Char(' '));
        EXPECT_FALSE(shown[n].adoptedUnitPrice.isZero()) << n;
        EXPECT_EQ(currToStr(shown[n].adoptedUnitPrice), fields[19]) << n;
        EXPECT_EQ(currToStr(shown[n].submittedAmounts[4]), fields[7]) << n;
    }
    // Nothing was asked; the statement of the last save is on the clipboard.
    EXPECT_TRUE(dialogs.boxes().empty());
    EXPECT_TRUE(dialogs.clipboard().contains(QStringLiteral("KAN='20' and NO='1';")));
}

TEST_F(GroupRecalc, AFailedLoadEndsTheRunWithTheCurrentRowsBack) {
    PipeRow options;
    PipeTypeOptions o(options);
    o.adoptedDigits() = c("10");
    o.elementDigits() = c("1");
    o.labourSubmitted() = c("30000");
    o.labourCost() = c("25000");
    exec(optionChangeStatement(options, 1));
    exec(
        QStringLiteral("DELETE FROM ex_kanzai WHERE CTG='1' AND GRP='1' AND KAN='7' AND NO='60';"));
    ASSERT_NE(storedPrices(1, 1), expectedPrices(1, 1));
    ws().load(1, 2);
    doc().takeSnapshot();
    const RowTable current = rows();
    int lastStep = 0;
    QString lastText;
    EXPECT_THROW(ws().recalculateGroup(1, 1, 2, dialogs,
                                       [&](const QString& text, int step) {
                                           lastStep = step;
                                           lastText = text;
                                       }),
                 std::runtime_error);
    EXPECT_EQ(lastStep, 6 * 59);
    EXPECT_EQ(lastText, QString::fromUtf8("データ更新中:1-5-59/"));
    // The rows are pipe type 2's again as stored by the run, not the broken
    // seventh's.
    const RowTable after = rows();
    EXPECT_EQ(after[1].goodsBytes, current[1].goodsBytes);
    EXPECT_EQ(after[3].listPrice, current[3].listPrice);
    ws().load(1, 2);
    for (int n = 1; n <= RowCount; ++n)
        ASSERT_EQ(rowLine(after[n]), rowLine(rows()[n])) << n;
    EXPECT_EQ(after[1].submittedAmounts, expectedRow(1, 2, 1).submittedAmounts);
    // Pipe types 1 to 6 were saved before the failure.
    for (int kan = 1; kan <= 6; ++kan)
        EXPECT_EQ(storedPrices(1, kan), expectedPrices(1, kan));

    // When the current pipe type itself cannot be loaded, the rows stay as
    // they were before the run.
    ws().load(1, 2);
    doc().takeSnapshot();
    const RowTable before = rows();
    exec(
        QStringLiteral("DELETE FROM ex_kanzai WHERE CTG='1' AND GRP='1' AND KAN='2' AND NO='60';"));
    EXPECT_THROW(ws().recalculateGroup(1, 1, 2, dialogs, nullptr), std::runtime_error);
    for (int n = 1; n <= RowCount; ++n)
        ASSERT_EQ(rowLine(rows()[n]), rowLine(before[n])) << n;
}

} // namespace
