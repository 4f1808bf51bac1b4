// The two group rewrites on the real window offscreen, on the demo database,
// with the person at the keyboard played by the scripted dialogs. What is
// stored is checked in the file, not in the rows in memory.
#include "controls/numberedit.h"
#include "controls/pricegrid.h"
#include "engine/calcrow.h"
#include "engine/grouprewrite.h"
#include "shell/formwidgets.h"
#include "shell/grouprewritecommands.h"
#include "store/pipetypestore.h"
#include "support/storedprices.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

#include "support/workspace_fixture.h"

namespace {

namespace TD = ::TaskDialog;

const char* const OptionColumns[12] = {"DATA5", "DATA4", "NET",   "NTANKA", "GTANKA", "FTANKA",
                                       "DATA2", "DATA3", "DATA6", "DATA7",  "FLAG",   "YOSAN"};

class GroupRewrite : public WorkspaceFixture {
protected:
    void exec(const QString& sql) { ASSERT_EQ(execStatement(dialogs, db, sql), 1); }

    // The whole table, one line a row.
    QStringList table() {
        return queryToLines(db, QStringLiteral("SELECT * FROM ex_kanzai ORDER BY CTG,GRP,KAN,NO;"))
            .lines;
    }

    // The option rows of every group but grp.
    QStringList optionRowsOutside(int grp) {
        return queryToLines(db,
                            QStringLiteral("SELECT * FROM ex_kanzai WHERE NO='60' AND GRP<>'%1' "
                                           "ORDER BY GRP,KAN;")
                                .arg(grp))
            .lines;
    }

    Currency storedCurrency(int grp, int kan, int no, const char* column) {
        return strToCurrDef(stored(grp, kan, no, column), Currency::fromInt(-999999));
    }

    // The computed columns of one pipe type as stored, one line a row.
    QStringList storedPrices(int grp, int kan) { return StoredPrices(db, grp, kan); }
    // The same columns as the engine computes them from the stored figures
    // and options.
    QStringList expectedPrices(int grp, int kan) { return computedPrices(db, grp, kan); }
    void expectGroupComputed(int grp) {
        for (int kan = 1; kan <= GroupPipeTypes; ++kan)
            EXPECT_EQ(storedPrices(grp, kan), expectedPrices(grp, kan)) << "KAN " << kan;
    }

    // Every caption the form takes from now on.
    void recordCaptions() {
        QObject::connect(form.get(), &QWidget::windowTitleChanged,
                         [this](const QString& t) { captions << t; });
    }
    int messagesWith(const char* text) const {
        int n = 0;
        for (const ScriptedDialogs::ShownMessage& m : dialogs.messages())
            n += m.text == u(text);
        return n;
    }
    bool formClosedToTheUser() const {
        return form->groupRewrite()->running() && !form->centralWidget()->isEnabled() &&
               !form->menuBar()->isEnabled() && form->groupRewrite()->progressWindow() &&
               form->groupRewrite()->progressWindow()->isVisible() &&
               QApplication::activeModalWidget() == form->groupRewrite()->progressWindow();
    }

    QStringList captions;
};

const QString OptionQuestion =
    u("グループ内の計算オプションを、表示中のものに変更していいですか?\r\n"
      "複合単価を再計算し、データベースに登録し直します。時間がかかりますので、変換中は少々お待"
      "ちください。");

TEST_F(GroupRewrite, NoOnEitherQuestionChangesNothing) {
    MainWindow& f = open();
    EXPECT_TRUE(f.menus().edit.optionChangeItem->isEnabled());
    EXPECT_TRUE(f.menus().edit.labourCostChangeItem->isEnabled());
    f.optionPanel()->digitsRadio()->setItemIndex(1);
    f.optionPanel()->labourCostSubmittedEdit()->setValue(12345);
    f.optionPanel()->labourCostCostEdit()->setValue(2345.04); // as a float x 10000: 23450399.99...
    const QStringList before = table();

    dialogs.answerBox(TD::IdNo);
    f.menus().edit.optionChangeItem->trigger();
    dialogs.answerBox(TD::IdNo);
    f.menus().edit.labourCostChangeItem->trigger();
    EXPECT_FALSE(f.groupRewrite()->running());
    EXPECT_EQ(f.groupRewrite()->progressWindow(), nullptr);
    EXPECT_EQ(table(), before);
    EXPECT_TRUE(dialogs.messages().empty());

    ASSERT_EQ(dialogs.boxes().size(), 2u);
    const ScriptedDialogs::Box& option = dialogs.boxes()[0];
    EXPECT_EQ(option.title, applicationTitle());
    EXPECT_EQ(option.instruction, u("確認"));
    EXPECT_EQ(option.content, OptionQuestion);
    EXPECT_EQ(option.icon, TD::IconQuestion);
    EXPECT_EQ(option.buttons, TD::ButtonYes | TD::ButtonNo);
    const ScriptedDialogs::Box& labour = dialogs.boxes()[1];
    EXPECT_EQ(labour.instruction, u("確認"));
    EXPECT_EQ(labour.content,
              u("全データの基礎工費を変更しますか?\r\n原価=2345.04円 提出=12345円\r\n"
                "複合単価を再計算し、データベースに登録し直します。時間がかかりますので、変換中は"
                "少々お待ちください。"));
    EXPECT_EQ(labour.buttons, TD::ButtonYes | TD::ButtonNo);
}

TEST_F(GroupRewrite, OptionChangeGivesTheGroupTheDisplayedOptionsAndRecomputesIt) {
    // Two pipe types with rates of their own on the submitted side.
    exec(QStringLiteral("UPDATE ex_kanzai SET GROSS='55' WHERE GRP='1' AND KAN='3' AND NO='60';"));
    exec(
        QStringLiteral("UPDATE ex_kanzai SET GROSS='12.5' WHERE GRP='1' AND KAN='8' AND NO='60';"));
    const QStringList otherGroupOptions = optionRowsOutside(1);
    MainWindow& f = open();
    recordCaptions();
    f.optionPanel()->digitsRadio()->setItemIndex(1);
    f.optionPanel()->elementRadio()->setItemIndex(2);
    f.optionPanel()->fractionRadio()->setItemIndex(2);
    f.optionPanel()->otherCostRadio()->setItemIndex(1);
    // shown and not applied yet: the command's own applyControls takes them.
    f.optionPanel()->rateSubmittedEdit()->setValue(91);
    f.optionPanel()->rateCostEdit()->setValue(47.5);
    f.optionPanel()->labourCostSubmittedEdit()->setValue(20500);
    // An entry not saved yet: the command saves first, so it stays.
    rows()[4].listPrice = Currency::fromInt(4321);
    doc().refreshLines();
    int stale = 0;
    for (int kan = 2; kan <= GroupPipeTypes; ++kan)
        stale += storedCurrency(1, kan, 60, "DATA2") != doc().options().adoptedDigits();
    ASSERT_GT(stale, 0);

    dialogs.answerBox(TD::IdYes);
    f.menus().actions.optionChangeAction->trigger();
    EXPECT_TRUE(f.groupRewrite()->running()); // the command ends while the thread works
    f.groupRewrite()->waitForEnd();
    EXPECT_FALSE(f.groupRewrite()->running());

    PipeRow shown = rows()[OptionRow];
    PipeTypeOptions o(shown);
    EXPECT_EQ(o.labourSubmitted(), Currency::fromInt(20500));
    EXPECT_EQ(o.rateCost(), strToCurr("47.5"));
    const QStringList expected = {currToStr(o.labourSubmitted()), currToStr(o.labourCost()),
                                  currToStr(o.rateCost()),        currToStr(o.rateOn()),
                                  currToStr(o.unitDigits()),      currToStr(o.unitFraction()),
                                  currToStr(o.adoptedDigits()),   currToStr(o.adoptedFraction()),
                                  currToStr(o.elementDigits()),   currToStr(o.elementFraction()),
                                  QString::number(o.modeFlag()),  QString::number(o.otherMethod())};
    for (int kan = 1; kan <= GroupPipeTypes; ++kan)
        for (int i = 0; i < 12; ++i)
            EXPECT_EQ(currToStr(storedCurrency(1, kan, 60, OptionColumns[i])), expected[i])
                << "KAN " << kan << " " << OptionColumns[i];
    // Each keeps its own submitted rate; the current one has the displayed one.
    EXPECT_EQ(stored(1, 3, 60, "GROSS"), "55");
    EXPECT_EQ(stored(1, 8, 60, "GROSS"), "12.5");
    EXPECT_EQ(stored(1, 1, 60, "GROSS"), "91");
    expectGroupComputed(1);
    // Other groups are not touched.
    EXPECT_EQ(optionRowsOutside(1), otherGroupOptions);

    // The entry was saved and is in the rows brought back.
    EXPECT_EQ(rows()[4].listPrice, Currency::fromInt(4321));
    EXPECT_EQ(stored(1, 1, 4, "TEIKA"), "4321");
    EXPECT_FALSE(doc().isChanged());
    // The undo would bring back rows from before the run.
    EXPECT_FALSE(f.menus().actions.undoAction->isEnabled());

    // The progress, then the caption back and the end shown once.
    EXPECT_EQ(captions.size(), GroupRewriteSteps + 1);
    EXPECT_TRUE(captions.contains(u("データ更新中:1-5-12/")));
    EXPECT_EQ(captions.first(), u("データ更新中:1-0-1/") + rows()[1].goods());
    EXPECT_EQ(captions.last(), u("Qorvale-Ostrel-"));
    EXPECT_EQ(f.windowTitle(), u("Qorvale-Ostrel-"));
    EXPECT_EQ(messagesWith("終了しました。"), 1);
    EXPECT_EQ(dialogs.messages().back().title, applicationTitle());
    // No "保存しました。": every save was silent.
    ASSERT_EQ(dialogs.boxes().size(), 1u);
}

TEST_F(GroupRewrite, RefrigerantModeGoesToTheWholeGroup) {
    MainWindow& f = open();
    f.optionPanel()->modeRadio()->setItemIndex(1);
    dialogs.answerBox(TD::IdYes);
    f.menus().actions.optionChangeAction->trigger();
    f.groupRewrite()->waitForEnd();
    for (int kan = 1; kan <= GroupPipeTypes; ++kan)
        EXPECT_EQ(stored(1, kan, 60, "FLAG"), "1") << kan;
    EXPECT_EQ(stored(2, 1, 60, "FLAG"), "0");
    expectGroupComputed(1);
}

TEST_F(GroupRewrite, BaseLabourCostsGoToEveryGroupButOnlyTheCurrentIsRecomputed) {
    exec(QStringLiteral("UPDATE ex_kanzai SET UKEY='61' WHERE GRP='3' AND KAN='2' AND NO='60';"));
    const QString keptCost = stored(3, 2, 60, "DATA4");
    const QString keptSubmitted = stored(3, 2, 60, "DATA5");
    MainWindow& f = open();
    clickNode(21 + 4); // group 2, pipe type 4
    ASSERT_EQ(f.currentGroup, 2);
    ASSERT_EQ(f.currentPipeType, 4);
    const QStringList group1Before = storedPrices(1, 6);
    // An entry not saved: the run loads the pipe type from the table.
    const Currency entered = Currency::fromInt(98765);
    rows()[3].listPrice = entered;
    doc().refreshLines();
    // A base labour cost typed and not applied by Enter.
    f.activateWindow();
    f.optionPanel()->labourCostSubmittedEdit()->setFocus();
    f.optionPanel()->labourCostSubmittedEdit()->selectAll();
    QTest::keyClicks(f.optionPanel()->labourCostSubmittedEdit(), QStringLiteral("31234"));
    f.optionPanel()->labourCostCostEdit()->setValue(27000);
    ASSERT_NE(doc().options().labourSubmitted(), Currency::fromInt(31234));

    dialogs.answerBox(TD::IdYes);
    f.menus().actions.labourCostChangeAction->trigger();
    // "基礎工費を変更しました。" at once, while the thread works.
    EXPECT_TRUE(f.groupRewrite()->running());
    ASSERT_EQ(dialogs.boxes().size(), 2u);
    EXPECT_EQ(dialogs.boxes()[0].content.section(u("\r\n"), 1, 1), u("原価=27000円 提出=31234円"));
    EXPECT_EQ(dialogs.boxes()[1].instruction, u("確認"));
    EXPECT_EQ(dialogs.boxes()[1].content, u("基礎工費を変更しました。"));
    EXPECT_EQ(dialogs.boxes()[1].buttons, TD::ButtonOk);
    EXPECT_EQ(messagesWith("終了しました。"), 0);
    f.groupRewrite()->waitForEnd();
    EXPECT_EQ(messagesWith("終了しました。"), 1);

    // Every option row with UKEY 60, in every group, and no other.
    const QStringList optionRows =
        queryToLines(db,
                     QStringLiteral("SELECT GRP,KAN,DATA4,DATA5 FROM ex_kanzai WHERE NO='60' AND "
                                    "UKEY='60';"))
            .lines;
    EXPECT_EQ(optionRows.size(), 199);
    for (const QString& line : optionRows) {
        ASSERT_EQ(nthField(line, 3), "27000") << line.toStdString();
        ASSERT_EQ(nthField(line, 4), "31234") << line.toStdString();
    }
    EXPECT_EQ(stored(3, 2, 60, "DATA4"), keptCost);
    EXPECT_EQ(stored(3, 2, 60, "DATA5"), keptSubmitted);
    EXPECT_NE(keptSubmitted, "31234");
    // The current group is recomputed under the new costs, the others keep
    // their stored prices until shown and saved.
    expectGroupComputed(2);
    EXPECT_EQ(storedPrices(1, 6), group1Before);
    EXPECT_NE(storedPrices(1, 6), expectedPrices(1, 6));
    // The entry is gone from the rows and from the file.
    EXPECT_NE(rows()[3].listPrice, entered);
    EXPECT_EQ(currToStr(rows()[3].listPrice), stored(2, 4, 3, "TEIKA"));
    EXPECT_EQ(rows()[OptionRow].factor(5), Currency::fromInt(31234));
}

TEST_F(GroupRewrite, TheFormIsClosedToTheUserUntilTheEndHasBeenShown) {
    MainWindow& f = open();
    const QString cellBefore = cell1(2, 3);
    QWidget* focusBefore = QApplication::focusWidget();
    bool checked = false, lockedAtTheEnd = false;
    QObject scope; // ends the connection with the test
    QObject::connect(&f, &QWidget::windowTitleChanged, &scope, [&](const QString& t) {
        if (t != u("データ更新中:1-5-12/") || checked) return;
        checked = true;
        EXPECT_TRUE(formClosedToTheUser());
        auto* bar =
            f.groupRewrite()->progressWindow()->findChild<QProgressBar*>("GroupProgressBar");
        ASSERT_NE(bar, nullptr);
        EXPECT_EQ(bar->maximum(), GroupRewriteSteps);
        // The bar follows at most a screen frame behind the caption.
        EXPECT_GE(bar->value(), 1);
        EXPECT_LE(bar->value(), 5 * GroupCalcRows + 12);
        // Grid entry, a tree click, an option and a second run: none reaches
        // the rows.
        QTest::keyClicks(f.sheet()->compositeGrid(), QStringLiteral("7"));
        QTest::keyClick(f.sheet()->compositeGrid(), Qt::Key_Return);
        const QRect r = f.tree->visualItemRect(f.tree->node(5));
        QTest::mouseClick(f.tree->viewport(), Qt::LeftButton, {}, r.center());
        QTest::mouseClick(f.header()->saveButton(), Qt::LeftButton);
        f.menus().actions.optionChangeAction->trigger(); // asks nothing while a run works
        // The progress window stays up against Esc.
        QTest::keyClick(f.groupRewrite()->progressWindow(), Qt::Key_Escape);
        EXPECT_TRUE(f.groupRewrite()->progressWindow()->isVisible());
        // It still paints.
        EXPECT_FALSE(f.groupRewrite()->progressWindow()->grab().isNull());
    });
    dialogs.onMessage = [&] { lockedAtTheEnd = formClosedToTheUser(); };
    dialogs.answerBox(TD::IdYes);
    f.menus().actions.optionChangeAction->trigger();
    f.groupRewrite()->waitForEnd();
    EXPECT_TRUE(checked);
    EXPECT_TRUE(lockedAtTheEnd);
    EXPECT_EQ(messagesWith("終了しました。"), 1);
    EXPECT_EQ(dialogs.boxes().size(), 1u); // the question, and no save
    EXPECT_EQ(f.currentPipeType, 1);
    EXPECT_EQ(cell1(2, 3), cellBefore);

    // Open again afterwards.
    EXPECT_TRUE(f.centralWidget()->isEnabled());
    EXPECT_TRUE(f.menuBar()->isEnabled());
    EXPECT_FALSE(f.groupRewrite()->progressWindow()->isVisible());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    if (focusBefore) {
        EXPECT_EQ(f.focusWidget(), focusBefore);
    }
    clickNode(5);
    EXPECT_EQ(f.currentPipeType, 5);
}

TEST_F(GroupRewrite, AFailingStatementShowsErrorAndTheRunGoesOn) {
    // The table refuses the option statement for the other pipe types of
    // group 1, and lets the saves through.
    exec(QStringLiteral("CREATE TRIGGER refuse BEFORE UPDATE ON ex_kanzai WHEN NEW.NO=60 AND "
                        "NEW.GRP=1 AND NEW.KAN<>1 AND NEW.DATA6<>OLD.DATA6 BEGIN SELECT "
                        "RAISE(ABORT,'refused'); END;"));
    QStringList optionsBefore;
    for (int kan = 2; kan <= GroupPipeTypes; ++kan)
        optionsBefore << stored(1, kan, 60, "DATA6");
    MainWindow& f = open();
    f.optionPanel()->elementRadio()->setItemIndex(
        f.optionPanel()->elementRadio()->itemIndex() == 1 ? 2 : 1);
    ASSERT_LT(optionsBefore.count(currToStr(doc().options().elementDigits())),
              optionsBefore.size());
    dialogs.answerBox(TD::IdYes);
    f.menus().actions.optionChangeAction->trigger();
    f.groupRewrite()->waitForEnd();

    ASSERT_EQ(dialogs.messages().size(), 2u);
    EXPECT_EQ(dialogs.messages()[0].text, "ERROR");
    EXPECT_EQ(dialogs.messages()[1].text, u("終了しました。"));
    QStringList optionsAfter;
    for (int kan = 2; kan <= GroupPipeTypes; ++kan)
        optionsAfter << stored(1, kan, 60, "DATA6");
    EXPECT_EQ(optionsAfter, optionsBefore);
    EXPECT_EQ(storedCurrency(1, 1, 60, "DATA6"), doc().options().elementDigits());
    expectGroupComputed(1);
}

TEST_F(GroupRewrite, OptionChangeStopsWhenTheCurrentPipeTypeCannotBeSaved) {
    // The run would load the current pipe type from the table and so lose
    // rows whose save failed: they stay on the form, and no run starts.
    exec(QStringLiteral("CREATE TRIGGER refuse BEFORE UPDATE ON ex_kanzai WHEN NEW.GRP=1 AND "
                        "NEW.KAN=1 AND NEW.NO=5 BEGIN SELECT RAISE(ABORT,'refused'); END;"));
    MainWindow& f = open();
    recordCaptions();
    rows()[3].listPrice = Currency::fromInt(2468);
    doc().refreshLines();
    const Currency otherDigits = storedCurrency(1, 2, 60, "DATA6");
    f.optionPanel()->elementRadio()->setItemIndex(digitIndexOf(otherDigits) == 3 ? 2 : 3);
    dialogs.answerBox(TD::IdYes);
    f.menus().actions.optionChangeAction->trigger();
    // The other pipe types keep their options: none has new options with
    // prices computed under the old ones.
    EXPECT_EQ(storedCurrency(1, 2, 60, "DATA6"), otherDigits);
    EXPECT_FALSE(f.groupRewrite()->running());
    f.groupRewrite()->waitForEnd();
    ASSERT_EQ(dialogs.boxes().size(), 2u);
    EXPECT_EQ(dialogs.boxes()[1].instruction, "ERROR");
    EXPECT_TRUE(captions.filter(u("データ更新中:")).isEmpty());
    EXPECT_EQ(messagesWith("終了しました。"), 0);
    EXPECT_EQ(rows()[3].listPrice, Currency::fromInt(2468));
    EXPECT_TRUE(doc().isChanged());
}

TEST_F(GroupRewrite, ClosingDuringARunLeavesEveryPipeTypeOfTheGroupWhole) {
    MainWindow& f = open();
    recordCaptions();
    f.optionPanel()->elementRadio()->setItemIndex(3);
    f.optionPanel()->digitsRadio()->setItemIndex(0);
    const Currency digits = doc().options().elementDigits();
    bool closeAsked = false;
    bool closedAtOnce = true;
    bool visibleAtTheEnd = false;
    QObject scope; // ends the connection with the test
    QObject::connect(&f, &QWidget::windowTitleChanged, &scope, [&](const QString& t) {
        if (closeAsked || !t.startsWith(u("データ更新中:1-1-"))) return;
        closeAsked = true;
        QTimer::singleShot(0, &f, [&] { closedAtOnce = f.close(); });
    });
    // The close is refused while the run goes and taken up after its end.
    dialogs.onMessage = [&] { visibleAtTheEnd = f.isVisible(); };
    dialogs.answerBox(TD::IdYes);
    f.menus().actions.optionChangeAction->trigger();
    QElapsedTimer waited;
    waited.start();
    while (f.isVisible() && waited.elapsed() < 60000)
        QTest::qWait(5);
    ASSERT_TRUE(closeAsked);
    EXPECT_FALSE(closedAtOnce);
    EXPECT_TRUE(visibleAtTheEnd);
    EXPECT_FALSE(f.isVisible());
    EXPECT_FALSE(f.groupRewrite()->running());
    EXPECT_EQ(messagesWith("終了しました。"), 1);
    EXPECT_EQ(captions.filter(u("データ更新中:")).size(), GroupRewriteSteps);
    form.reset();

    for (int kan = 1; kan <= GroupPipeTypes; ++kan)
        EXPECT_EQ(storedCurrency(1, kan, 60, "DATA6"), digits) << kan;
    expectGroupComputed(1);
}

TEST_F(GroupRewrite, AFailureOnTheWorkerOpensTheFormAgainAndIsShown) {
    exec(QStringLiteral("DELETE FROM ex_kanzai WHERE GRP='1' AND KAN='7' AND NO='60';"));
    MainWindow& f = open();
    recordCaptions();
    const QByteArray goods = rows()[1].goodsBytes;
    dialogs.answerBox(TD::IdYes);
    f.menus().actions.optionChangeAction->trigger();
    f.groupRewrite()->waitForEnd();

    ASSERT_EQ(dialogs.boxes().size(), 2u);
    const ScriptedDialogs::Box& failure = dialogs.boxes()[1];
    // Where the run stopped, and why: pipe types 7 to 20 are as they were.
    EXPECT_TRUE(failure.instruction.startsWith(
        u("グループの再計算を管種7で中止しました。管種7から後は変更されていません。")))
        << failure.instruction.toStdString();
    EXPECT_TRUE(failure.instruction.endsWith(u("List index out of bounds (59)")));
    EXPECT_EQ(failure.icon, TD::IconError);
    EXPECT_EQ(failure.buttons, TD::ButtonOk);
    EXPECT_EQ(messagesWith("終了しました。"), 0);
    EXPECT_EQ(f.windowTitle(), u("データ更新中:1-5-59/"));
    EXPECT_FALSE(f.groupRewrite()->running());
    EXPECT_TRUE(f.centralWidget()->isEnabled());
    EXPECT_TRUE(f.menuBar()->isEnabled());
    EXPECT_FALSE(f.groupRewrite()->progressWindow()->isVisible());
    // The rows are the current pipe type's, not the broken one's.
    EXPECT_EQ(rows()[1].goodsBytes, goods);
    // The commands work again.
    dialogs.answerBox(TD::IdNo);
    f.menus().edit.optionChangeItem->trigger();
    EXPECT_EQ(dialogs.boxes().size(), 3u);
}

TEST_F(GroupRewrite, ACloseWhileTheFailureIsShownClosesAfterItWithoutHanging) {
    // The worker waits for the failure box to be dismissed; a close that
    // came then and waited for the worker would wait for ever.
    exec(QStringLiteral("DELETE FROM ex_kanzai WHERE GRP='1' AND KAN='7' AND NO='60';"));
    MainWindow& f = open();
    dialogs.answerBox(TD::IdYes);
    bool closedInBox = true;
    dialogs.onBox = [&] {
        if (dialogs.boxes().size() == 2) closedInBox = f.close();
    };
    f.menus().actions.optionChangeAction->trigger();
    QElapsedTimer waited;
    waited.start();
    while (f.isVisible() && waited.elapsed() < 60000)
        QTest::qWait(5);
    dialogs.onBox = nullptr;
    ASSERT_GE(dialogs.boxes().size(), 2u);
    EXPECT_TRUE(dialogs.boxes()[1].instruction.endsWith(u("List index out of bounds (59)")));
    EXPECT_FALSE(closedInBox);
    EXPECT_FALSE(f.isVisible());
    EXPECT_FALSE(f.groupRewrite()->running());
}

} // namespace
