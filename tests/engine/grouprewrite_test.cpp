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

#include <stdexcept>

namespace {

Currency c(const char* text) {
    return strToCurr(QString::fromLatin1(text));
}
// The factors of an option row are DATA1 to DATA7: DATA2 and DATA3 the adopted digits and
// fraction, DATA4 and DATA5 the labour costs (cost, submitted), DATA6 and DATA7 the element
// digits and fraction.
TEST(GroupRewriteStatements, OptionsLabourAndProgress) {
    PipeRow r;
    r.costPrice = c("62.5");    // rate, cost side
    r.submittedPrice = c("80"); // rate, submitted side (GROSS): stays out
    r.factors = {c("9"), c("1000"), c("0.9"), c("12500.5"), c("15000"), c("100"), c("0")};
    r.costUnitPrice = c("1");       // rate on
    r.submittedUnitPrice = c("10"); // unit digits
    r.adoptedUnitPrice = c("0.5");  // unit fraction
    r.modeFlag = r.otherMethod = 1;
    EXPECT_EQ(optionChangeStatement(r, 4).toStdString(),
              "UPDATE ex_kanzai SET DATA5='15000',DATA4='12500.5',NET='62.5',NTANKA='1',"
              "GTANKA='10',FTANKA='0.5',DATA2='1000',DATA3='0.9',DATA6='100',DATA7='0',"
              "FLAG='1',YOSAN='1' WHERE CTG='1' AND GRP='4' AND NO='60';");
    EXPECT_EQ(labourChangeStatement(c("9800.25"), c("-0.5")).toStdString(),
              "UPDATE ex_kanzai SET DATA4='9800.25',DATA5='-0.5' WHERE ukey='60';");
    EXPECT_EQ(groupProgressText(12, 0, 59, u("鋼管")), u("データ更新中:12-0-59/鋼管"));
}

class GroupRecalc : public ::testing::Test, protected OwnWorkspace {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        ws().paths().exDatabase = dir.filePath(QStringLiteral("velmoraMainEX.db3"));
        createSuiteDatabase(ws().paths().exDatabase, true);
    }
    void TearDown() override { EXPECT_TRUE(dialogs.unanswered().isEmpty()); }

    const QString& db() { return ws().paths().exDatabase; }
    void exec(const QString& sql) { ASSERT_EQ(execStatement(dialogs, db(), sql), 1); }
    // New options in the table for a whole group, as the option statement leaves them:
    // DATA1 to DATA7, and the unit digits.
    void setGroupOptions(int grp, const QString& factors, const char* unitDigits = "0") {
        PipeRow options;
        const QStringList f = factors.split(' ');
        for (int i = 0; i < 7; ++i)
            options.factors[std::size_t(i)] = strToCurr(f[i]);
        options.submittedUnitPrice = c(unitDigits);
        exec(optionChangeStatement(options, grp));
    }
    // The computed columns of one pipe type as stored, and as the engine computes them from
    // the stored figures and options; one line a row, 1 to 59.
    QStringList stored(int grp, int kan) { return StoredPrices(db(), grp, kan); }
    QStringList computed(int grp, int kan) { return computedPrices(db(), grp, kan); }
    // Runs the recalculation of group 1 with kan current, keeping the progress reported.
    void recalculate(int kan) {
        ws().recalculateGroup(1, 1, kan, dialogs, [&](const QString& text, int step) {
            progress.emplace_back(text, step);
        });
    }
    void expectRows(const RowTable& want) {
        for (int n = 1; n <= RowCount; ++n)
            ASSERT_EQ(rowLine(rows()[n]), rowLine(want[n])) << n;
    }

    QTemporaryDir dir;
    ScriptedDialogs dialogs;
    std::vector<std::pair<QString, int>> progress;
};

TEST_F(GroupRecalc, EveryPipeTypeIsComputedAndSavedAndTheCurrentComesBackAsStored) {
    setGroupOptions(1, "0 100 0.5 17000 21000 10 0.9", "1");
    const QStringList otherGroupBefore = stored(3, 4);
    int stale = 0;
    for (int kan = 1; kan <= GroupPipeTypes; ++kan)
        stale += stored(1, kan) != computed(1, kan);
    ASSERT_GT(stale, 0);
    // The current pipe type, 3 of group 1, with an entry and an option not saved.
    ws().load(1, 3);
    doc().takeSnapshot();
    rows()[3].listPrice = c("123456");
    doc().options().elementDigits() = c("1000");
    doc().calculateAll();
    doc().refreshLines();
    ASSERT_TRUE(doc().isChanged());
    recalculate(3);
    // Each pipe type is loaded from the table, computed under its stored options and saved.
    for (int kan = 1; kan <= GroupPipeTypes; ++kan)
        EXPECT_EQ(stored(1, kan), computed(1, kan)) << "KAN " << kan;
    EXPECT_EQ(stored(3, 4), otherGroupBefore);
    // The current one is shown as stored now, computed; its saved lines are the table's, so
    // it counts as changed against the lines of the rows before the run.
    EXPECT_NE(rows()[3].listPrice, c("123456"));
    EXPECT_TRUE(doc().isChanged());
    const QStringList prices = computed(1, 3);
    for (int n : {1, 59}) { // the first and the last row calculated
        const QStringList fields = prices[n - 1].split(' ');
        EXPECT_FALSE(rows()[n].adoptedUnitPrice.isZero()) << n;
        EXPECT_EQ(currToStr(rows()[n].adoptedUnitPrice), fields[19]) << n;
        EXPECT_EQ(currToStr(rows()[n].submittedAmounts[4]), fields[7]) << n;
    }
    const QStringList saved = doc().savedLines();
    ws().load(1, 3);
    EXPECT_EQ(saved, doc().savedLines());
    // Nothing was asked; the statement of the last save is on the clipboard.
    EXPECT_TRUE(dialogs.boxes().empty());
    EXPECT_TRUE(dialogs.clipboard().contains("GRP='1' and KAN='20' and NO='1';"));
    // 20 x 59 steps in order, each before its row is calculated.
    ASSERT_EQ(int(progress.size()), GroupRewriteSteps);
    for (int s = 0; s < GroupRewriteSteps; ++s)
        ASSERT_EQ(progress[std::size_t(s)].second, s + 1);
    EXPECT_EQ(progress[5 * 59 + 11].first, u("データ更新中:1-5-12/"));
}

TEST_F(GroupRecalc, AFailedLoadEndsTheRunWithTheCurrentRowsBack) {
    setGroupOptions(1, "0 10 0 25000 30000 1 0");
    exec(u("DELETE FROM ex_kanzai WHERE CTG='1' AND GRP='1' AND KAN='7' AND NO='60';"));
    ASSERT_NE(stored(1, 1), computed(1, 1));
    ws().load(1, 2);
    doc().takeSnapshot();
    const RowTable current = rows();
    EXPECT_THROW(recalculate(2), std::runtime_error);
    EXPECT_EQ(progress.back(), std::pair(u("データ更新中:1-5-59/"), 6 * 59));
    // The rows are pipe type 2's again as stored by the run, not the broken seventh's.
    const RowTable after = rows();
    EXPECT_TRUE(after[1].goodsBytes == current[1].goodsBytes &&
                after[3].listPrice == current[3].listPrice);
    ws().load(1, 2);
    PipeRow first = rows()[1];
    calcRowWith(first, PipeTypeOptions(rows()[OptionRow]));
    EXPECT_EQ(after[1].submittedAmounts, first.submittedAmounts);
    expectRows(after);
    // Pipe types 1 to 6 were saved before the failure.
    for (int kan = 1; kan <= 6; ++kan)
        EXPECT_EQ(stored(1, kan), computed(1, kan));

    // When the current pipe type itself cannot be loaded, the rows stay as they were.
    doc().takeSnapshot();
    const RowTable before = rows();
    exec(u("DELETE FROM ex_kanzai WHERE CTG='1' AND GRP='1' AND KAN='2' AND NO='60';"));
    EXPECT_THROW(ws().recalculateGroup(1, 1, 2, dialogs, nullptr), std::runtime_error);
    expectRows(before);
}

} // namespace
