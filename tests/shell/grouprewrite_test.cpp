// The two group rewrites on the real window offscreen, on the demo database,
// with the person at the keyboard played by the scripted dialogs. What is
// stored is checked in the file, not in the rows in memory.
#include "controls/numberedit.h"
#include "engine/grouprewrite.h"
#include "shell/formwidgets.h"
#include "shell/grouprewritecommands.h"
#include "support/storedprices.h"
#include "support/workspace_fixture.h"

#include <QDialog>
#include <QProgressBar>

namespace {

namespace TD = ::TaskDialog;

class GroupRewrite : public WorkspaceFixture {
protected:
    void exec(const char* sql) { ASSERT_EQ(execStatement(dialogs, db, sql), 1); }
    QStringList lines(const QString& sql) { return queryToLines(db, sql).lines; }
    Currency storedCurrency(int grp, int kan, int no, const char* column) {
        return strToCurrDef(stored(grp, kan, no, column), Currency::fromInt(-999999));
    }
    // One column of the option rows of group 1, pipe types from..20.
    QStringList group1Options(const char* column, int from = 1) {
        QStringList out;
        for (int kan = from; kan <= GroupPipeTypes; ++kan)
            out << currToStr(storedCurrency(1, kan, 60, column));
        return out;
    }
    // The computed columns of each pipe type as stored and as the engine
    // computes them from the stored figures and options.
    void expectGroupComputed(int grp) {
        for (int kan = 1; kan <= GroupPipeTypes; ++kan)
            EXPECT_EQ(StoredPrices(db, grp, kan), computedPrices(db, grp, kan)) << "KAN " << kan;
    }
    // Every caption the form takes from now on.
    void recordCaptions() {
        QObject::connect(form.get(), &QWidget::windowTitleChanged,
                         [this](const QString& t) { captions << t; });
    }
    QStringList messageTexts() const {
        QStringList texts;
        for (const ScriptedDialogs::ShownMessage& m : dialogs.messages())
            texts << m.text;
        return texts;
    }
    // How often the end of a run was shown.
    int ends() const { return int(messageTexts().count(u("終了しました。"))); }
    bool formClosedToTheUser() const {
        QDialog* progress = form->groupRewrite()->progressWindow();
        return form->groupRewrite()->running() && !form->centralWidget()->isEnabled() &&
               !form->menuBar()->isEnabled() && progress && progress->isVisible() &&
               QApplication::activeModalWidget() == progress;
    }
    // Starts the option rewrite with a yes and waits until it ends.
    void runOptionChange() {
        dialogs.answerBox(TD::IdYes);
        form->menus().actions.optionChangeAction->trigger();
        form->groupRewrite()->waitForEnd();
    }
    bool openAgain() const {
        return !form->groupRewrite()->running() && form->centralWidget()->isEnabled() &&
               form->menuBar()->isEnabled() && !form->groupRewrite()->progressWindow()->isVisible();
    }

    QStringList captions;
};

TEST_F(GroupRewrite, OptionChangeGivesTheGroupTheDisplayedOptionsAndRecomputesIt) {
    // Two pipe types with rates of their own on the submitted side.
    exec("UPDATE ex_kanzai SET GROSS='55' WHERE GRP='1' AND KAN='3' AND NO='60';");
    exec("UPDATE ex_kanzai SET GROSS='12.5' WHERE GRP='1' AND KAN='8' AND NO='60';");
    const QString outside = "SELECT * FROM ex_kanzai WHERE NO='60' AND GRP<>'1' ORDER BY GRP,KAN;";
    const QStringList otherGroupOptions = lines(outside);
    MainWindow& f = open();
    recordCaptions();
    OptionPanel& p = *f.optionPanel();
    p.digitsRadio()->setItemIndex(1);
    p.elementRadio()->setItemIndex(2);
    p.fractionRadio()->setItemIndex(2);
    p.otherCostRadio()->setItemIndex(1);
    p.modeRadio()->setItemIndex(1); // refrigerant
    // Shown and not applied yet: the command's own applyControls takes them.
    p.rateSubmittedEdit()->setValue(91);
    p.rateCostEdit()->setValue(47.5);
    p.labourCostSubmittedEdit()->setValue(20500);
    // An entry not saved yet: the command saves first, so it stays.
    rows()[4].listPrice = Currency::fromInt(4321);
    doc().refreshLines();
    ASSERT_GT(group1Options("DATA2", 2).size(),
              group1Options("DATA2", 2).count(currToStr(doc().options().adoptedDigits())));

    dialogs.answerBox(TD::IdYes);
    f.menus().actions.optionChangeAction->trigger();
    EXPECT_TRUE(f.groupRewrite()->running()); // the command ends while the thread works
    f.groupRewrite()->waitForEnd();

    PipeTypeOptions o(rows()[OptionRow]);
    EXPECT_TRUE(o.labourSubmitted() == Currency::fromInt(20500) &&
                o.rateCost() == strToCurr("47.5") && o.modeFlag() == 1);
    QStringList shown;
    for (Currency v :
         {o.labourSubmitted(), o.labourCost(), o.rateCost(), o.rateOn(), o.unitDigits(),
          o.unitFraction(), o.adoptedDigits(), o.adoptedFraction(), o.elementDigits(),
          o.elementFraction(), Currency::fromInt(o.modeFlag()), Currency::fromInt(o.otherMethod())})
        shown << currToStr(v);
    const char* columns[] = {"DATA5", "DATA4", "NET",   "NTANKA", "GTANKA", "FTANKA",
                             "DATA2", "DATA3", "DATA6", "DATA7",  "FLAG",   "YOSAN"};
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(group1Options(columns[i]), QStringList(GroupPipeTypes, shown[i])) << columns[i];
    // Each keeps its own submitted rate; the current one has the displayed one.
    EXPECT_EQ(QStringList({stored(1, 3, 60, "GROSS"), stored(1, 8, 60, "GROSS"),
                           stored(1, 1, 60, "GROSS")}),
              QStringList({"55", "12.5", "91"}));
    expectGroupComputed(1);
    EXPECT_EQ(lines(outside), otherGroupOptions); // other groups are not touched

    // The entry was saved and is in the rows brought back.
    EXPECT_TRUE(rows()[4].listPrice == Currency::fromInt(4321) &&
                stored(1, 1, 4, "TEIKA") == "4321");
    // The undo would bring back rows from before the run.
    EXPECT_FALSE(doc().isChanged() || f.menus().actions.undoAction->isEnabled());

    // The progress, then the caption back and the end shown once.
    // No "保存しました。": every save was silent.
    EXPECT_EQ(std::tuple(captions.size(), captions.last(), ends(), dialogs.boxes().size()),
              std::tuple(GroupRewriteSteps + 1, u("Qorvale-Ostrel-"), 1, std::size_t(1)));
}

TEST_F(GroupRewrite, BaseLabourCostsGoToEveryGroupButOnlyTheCurrentIsRecomputed) {
    exec("UPDATE ex_kanzai SET UKEY='61' WHERE GRP='3' AND KAN='2' AND NO='60';");
    auto ownCosts = [&] { return stored(3, 2, 60, "DATA4") + '|' + stored(3, 2, 60, "DATA5"); };
    const QString kept = ownCosts();
    MainWindow& f = open();
    clickNode(21 + 4); // group 2, pipe type 4
    const QStringList group1Before = StoredPrices(db, 1, 6);
    // An entry not saved: the run loads the pipe type from the table.
    const Currency entered = Currency::fromInt(98765);
    rows()[3].listPrice = entered;
    doc().refreshLines();
    // A base labour cost typed and not applied by Enter.
    f.activateWindow();
    NumberEdit* submitted = f.optionPanel()->labourCostSubmittedEdit();
    submitted->setFocus();
    submitted->selectAll();
    QTest::keyClicks(submitted, "31234");
    f.optionPanel()->labourCostCostEdit()->setValue(27000);
    ASSERT_NE(doc().options().labourSubmitted(), Currency::fromInt(31234));

    dialogs.answerBox(TD::IdYes);
    f.menus().actions.labourCostChangeAction->trigger();
    // "基礎工費を変更しました。" at once, while the thread works.
    EXPECT_TRUE(f.groupRewrite()->running() && ends() == 0);
    ASSERT_EQ(dialogs.boxes().size(), 2u);
    EXPECT_EQ(dialogs.boxes()[0].content.section(u("\r\n"), 1, 1), u("原価=27000円 提出=31234円"));
    f.groupRewrite()->waitForEnd();
    EXPECT_EQ(ends(), 1);

    // Every option row with UKEY 60, in every group, and no other.
    const QStringList optionRows =
        lines("SELECT GRP,KAN,DATA4,DATA5 FROM ex_kanzai WHERE NO='60' AND UKEY='60';");
    EXPECT_EQ(optionRows.size(), 199);
    for (const QString& line : optionRows)
        ASSERT_TRUE(nthField(line, 3) == "27000" && nthField(line, 4) == "31234")
            << line.toStdString();
    EXPECT_EQ(ownCosts(), kept);
    // The current group is recomputed under the new costs, the others keep
    // their stored prices until shown and saved.
    expectGroupComputed(2);
    EXPECT_EQ(StoredPrices(db, 1, 6), group1Before);
    // The entry is gone from the rows and from the file.
    EXPECT_TRUE(rows()[3].listPrice != entered &&
                currToStr(rows()[3].listPrice) == stored(2, 4, 3, "TEIKA"));
    EXPECT_EQ(rows()[OptionRow].factor(5), Currency::fromInt(31234));
}

// No to either question changes nothing; after a yes the form is closed to
// the user until the end has been shown.
TEST_F(GroupRewrite, NoChangesNothingAndAfterAYesTheFormIsClosedUntilTheEndHasBeenShown) {
    MainWindow& f = open();
    f.optionPanel()->digitsRadio()->setItemIndex(1);
    f.optionPanel()->labourCostSubmittedEdit()->setValue(12345);
    f.optionPanel()->labourCostCostEdit()->setValue(2345.04); // as a float x 10000: 23450399.99...
    const QString all = "SELECT * FROM ex_kanzai ORDER BY CTG,GRP,KAN,NO;";
    const QStringList before = lines(all);
    for (QAction* item : {f.menus().edit.optionChangeItem, f.menus().edit.labourCostChangeItem}) {
        dialogs.answerBox(TD::IdNo);
        item->trigger();
    }
    EXPECT_FALSE(f.groupRewrite()->running() || f.groupRewrite()->progressWindow() ||
                 !dialogs.messages().empty());
    EXPECT_EQ(lines(all), before);
    ASSERT_EQ(dialogs.boxes().size(), 2u);
    EXPECT_EQ(dialogs.boxes()[0].buttons, TD::ButtonYes | TD::ButtonNo);
    EXPECT_EQ(dialogs.boxes()[1].content.section(u("\r\n"), 1, 1),
              u("原価=2345.04円 提出=12345円"));

    f.showPipeType(); // the costs shown are the stored ones again
    const QString cellBefore = cell1(2, 3);
    QWidget* focusBefore = QApplication::focusWidget();
    bool checked = false, lockedAtTheEnd = false;
    QObject scope; // ends the connection with the test
    QObject::connect(&f, &QWidget::windowTitleChanged, &scope, [&](const QString& t) {
        if (t != u("データ更新中:1-5-12/") || checked) return;
        checked = true;
        EXPECT_TRUE(formClosedToTheUser());
        QDialog* progress = f.groupRewrite()->progressWindow();
        auto* bar = progress->findChild<QProgressBar*>("GroupProgressBar");
        ASSERT_TRUE(bar && bar->maximum() == GroupRewriteSteps);
        // The bar follows at most a screen frame behind the caption.
        EXPECT_TRUE(bar->value() >= 1 && bar->value() <= 5 * GroupCalcRows + 12) << bar->value();
        // Grid entry, a tree click, an option and a second run: none reaches
        // the rows.
        QTest::keyClicks(f.sheet()->compositeGrid(), "7");
        QTest::keyClick(f.sheet()->compositeGrid(), Qt::Key_Return);
        const QRect r = f.tree->visualItemRect(f.tree->node(5));
        QTest::mouseClick(f.tree->viewport(), Qt::LeftButton, {}, r.center());
        QTest::mouseClick(f.header()->saveButton(), Qt::LeftButton);
        f.menus().actions.optionChangeAction->trigger(); // asks nothing while a run works
        // The progress window stays up against Esc, and still paints.
        QTest::keyClick(progress, Qt::Key_Escape);
        EXPECT_TRUE(progress->isVisible() && !progress->grab().isNull());
    });
    dialogs.onMessage = [&] { lockedAtTheEnd = formClosedToTheUser(); };
    runOptionChange();
    EXPECT_TRUE(checked && lockedAtTheEnd && ends() == 1);
    // The question and no save; nothing reached the rows.
    EXPECT_EQ(std::tuple(dialogs.boxes().size(), f.currentPipeType, cell1(2, 3)),
              std::tuple(std::size_t(3), 1, cellBefore));
    EXPECT_TRUE(openAgain() && !QApplication::activeModalWidget() &&
                (!focusBefore || f.focusWidget() == focusBefore));
    clickNode(5);
    EXPECT_EQ(f.currentPipeType, 5);
}

TEST_F(GroupRewrite, AFailingStatementShowsErrorAndTheRunGoesOn) {
    // The table refuses the option statement for the other pipe types of
    // group 1, and lets the saves through.
    exec("CREATE TRIGGER refuse BEFORE UPDATE ON ex_kanzai WHEN NEW.NO=60 AND NEW.GRP=1 AND "
         "NEW.KAN<>1 AND NEW.DATA6<>OLD.DATA6 BEGIN SELECT RAISE(ABORT,'refused'); END;");
    const QStringList optionsBefore = group1Options("DATA6", 2);
    MainWindow& f = open();
    RadioGroup* element = f.optionPanel()->elementRadio();
    element->setItemIndex(element->itemIndex() == 1 ? 2 : 1);
    runOptionChange();
    EXPECT_EQ(messageTexts(), QStringList({"ERROR", u("終了しました。")}));
    EXPECT_EQ(group1Options("DATA6", 2), optionsBefore);
    EXPECT_EQ(storedCurrency(1, 1, 60, "DATA6"), doc().options().elementDigits());
    expectGroupComputed(1);
}

TEST_F(GroupRewrite, OptionChangeStopsWhenTheCurrentPipeTypeCannotBeSaved) {
    // The run would load the current pipe type from the table and so lose
    // rows whose save failed: they stay on the form, and no run starts.
    exec("CREATE TRIGGER refuse BEFORE UPDATE ON ex_kanzai WHEN NEW.GRP=1 AND NEW.KAN=1 AND "
         "NEW.NO=5 BEGIN SELECT RAISE(ABORT,'refused'); END;");
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
    EXPECT_TRUE(captions.filter(u("データ更新中:")).isEmpty() && ends() == 0);
    EXPECT_TRUE(rows()[3].listPrice == Currency::fromInt(2468) && doc().isChanged());
}

TEST_F(GroupRewrite, ClosingDuringARunLeavesEveryPipeTypeOfTheGroupWhole) {
    MainWindow& f = open();
    recordCaptions();
    f.optionPanel()->elementRadio()->setItemIndex(3);
    f.optionPanel()->digitsRadio()->setItemIndex(0);
    const Currency digits = doc().options().elementDigits();
    bool closeAsked = false, closedAtOnce = true, visibleAtTheEnd = false;
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
    EXPECT_TRUE(QTest::qWaitFor([&] { return !f.isVisible(); }, 60000));
    EXPECT_EQ(std::tuple(closeAsked, closedAtOnce, visibleAtTheEnd, f.isVisible(),
                         f.groupRewrite()->running(), ends()),
              std::tuple(true, false, true, false, false, 1));
    EXPECT_EQ(captions.filter(u("データ更新中:")).size(), GroupRewriteSteps);
    form.reset();
    EXPECT_EQ(group1Options("DATA6"), QStringList(GroupPipeTypes, currToStr(digits)));
    expectGroupComputed(1);
}

// A pipe type without its option row stops the run on the worker: the form
// opens again and the failure is shown; a close while it is shown waits for
// no worker and closes after it.
TEST_F(GroupRewrite, AFailureOnTheWorkerOpensTheFormAgainAndIsShown) {
    exec("DELETE FROM ex_kanzai WHERE GRP='1' AND KAN='7' AND NO='60';");
    MainWindow& f = open();
    runOptionChange();
    ASSERT_EQ(dialogs.boxes().size(), 2u);
    const ScriptedDialogs::Box& failure = dialogs.boxes()[1];
    // Where the run stopped, and why: pipe types 7 to 20 are as they were.
    EXPECT_TRUE(failure.instruction.contains(u("管種7で中止")) &&
                failure.instruction.endsWith(u("List index out of bounds (59)")))
        << failure.instruction.toStdString();
    EXPECT_TRUE(openAgain() && ends() == 0);
    EXPECT_EQ(f.windowTitle(), u("データ更新中:1-5-59/"));
    dialogs.answerBox(TD::IdNo); // the commands work again
    f.menus().edit.optionChangeItem->trigger();
    EXPECT_EQ(dialogs.boxes().size(), 3u);

    bool closedInBox = true;
    dialogs.onBox = [&] {
        if (dialogs.boxes().size() == 5) closedInBox = f.close();
    };
    dialogs.answerBox(TD::IdYes);
    f.menus().actions.optionChangeAction->trigger();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !f.isVisible(); }, 60000));
    dialogs.onBox = nullptr;
    ASSERT_GE(dialogs.boxes().size(), 5u);
    EXPECT_TRUE(dialogs.boxes()[4].instruction.endsWith(u("List index out of bounds (59)")));
    EXPECT_FALSE(closedInBox || f.isVisible() || f.groupRewrite()->running());
}

} // namespace
