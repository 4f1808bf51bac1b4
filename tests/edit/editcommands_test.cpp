// The edit commands on the real window offscreen, on a demo database made by
// the suite stand-in: the menu items are triggered as the user's clicks would,
// and the questions are answered by the scripted dialogs.
#include "controls/numberedit.h"
#include "controls/pricegrid.h"
#include "edit/editcommands.h"
#include "engine/calcrow.h"
#include "shell/formwidgets.h"
#include "store/pipetypestore.h"
#include "util/textlines.h"

#include <QMenu>
#include <QPushButton>
#include <QTabBar>

#include <sqlite3.h>

#include "support/workspace_fixture.h"

namespace {

class EditCommands : public WorkspaceFixture {
protected:
    // Every stored column of the 60 rows of one pipe type, read afresh from
    // the file by SQLite itself: type and bytes of each value.
    QByteArray storedBytes(int grp, int kan) {
        sqlite3* conn = nullptr;
        EXPECT_EQ(sqlite3_open_v2(db.toUtf8().constData(), &conn, SQLITE_OPEN_READONLY, nullptr),
                  SQLITE_OK);
        sqlite3_stmt* st = nullptr;
        const QByteArray sql = QStringLiteral("SELECT * FROM ex_kanzai WHERE CTG=1 AND GRP=%1 AND "
                                              "KAN=%2 ORDER BY NO;")
                                   .arg(grp)
                                   .arg(kan)
                                   .toUtf8();
        EXPECT_EQ(sqlite3_prepare_v2(conn, sql.constData(), -1, &st, nullptr), SQLITE_OK);
        QByteArray out;
        int rows = 0;
        while (sqlite3_step(st) == SQLITE_ROW) {
            ++rows;
            for (int c = 0; c < sqlite3_column_count(st); ++c) {
                if (QByteArray(sqlite3_column_name(st, c)) == "KAN") continue; // the place
                out += QByteArray::number(sqlite3_column_type(st, c)) + ':';
                const auto* p = static_cast<const char*>(sqlite3_column_blob(st, c));
                out += QByteArray(p, sqlite3_column_bytes(st, c)) + '|';
            }
            out += '\n';
        }
        sqlite3_finalize(st);
        sqlite3_close(conn);
        EXPECT_EQ(rows, 60);
        return out;
    }
    QByteArray storedGroup(int grp) {
        QByteArray all;
        for (int kan = 1; kan <= 20; ++kan)
            all += storedBytes(grp, kan) + "#\n";
        return all;
    }
    // The state of one row that any command could touch, CALC amounts and
    // the fields outside the change line included.
    static QString fullRow(const PipeRow& r) {
        QString s = rowLine(r) + QString::number(r.key) + ';' + QString::number(r.otherMethod) +
                    ';' + currToStr(r.sortOrder) + ';';
        for (Currency c : r.costAmounts)
            s += currToStr(c) + ';';
        for (Currency c : r.submittedAmounts)
            s += currToStr(c) + ';';
        return s;
    }
    void escape() {
        form->activateWindow();
        (void)QTest::qWaitForWindowActive(form.get());
        QWidget* target = QApplication::focusWidget() ? QApplication::focusWidget() : form.get();
        QTest::keyClick(target, Qt::Key_Escape);
    }
    std::vector<QAction*> pasteItems() const {
        return {form->menus().edit.pasteWholeTableItem,
                form->menus().edit.pastePricesItem,
                form->menus().edit.pasteAllFactorsItem,
                form->menus().edit.pasteLabourFactorsItem,
                form->menus().detail.pasteDetailItem,
                form->menus().detail.pasteDetailPricesItem,
                form->menus().detail.pasteDetailFactorsItem,
                form->menus().detail.pasteDetailLabourItem};
    }
    // The paste items that are enabled, by name.
    QStringList enabledPastes() const {
        QStringList names;
        for (QAction* a : pasteItems())
            if (a->isEnabled()) names << a->objectName();
        return names;
    }
    Currency c(const char* t) { return strToCurr(QString::fromLatin1(t)); }
};

// A paste or a clearing counts as a change: the next tree click asks to save
// it instead of dropping it.
TEST_F(EditCommands, EveryCommandThatChangesTheRowsMakesTheNextClickAsk) {
    MainWindow& f = open();
    f.menus().edit.copyWholeTableItem->trigger();
    clickNode(2);
    struct Step {
        QAction* command;
        bool confirm; // the clearings ask first
    };
    const Step steps[] = {{f.menus().edit.pasteWholeTableItem, false},
                          {f.menus().detail.clearDetailItem, true},
                          {f.menus().edit.clearPipeTypeItem, true},
                          {f.menus().detail.copyFirstDetailAcrossItem, false}};
    int kan = 2;
    for (const Step& step : steps) {
        if (step.confirm) dialogs.answerBox(TaskDialog::IdYes);
        step.command->trigger();
        const std::size_t boxes = dialogs.boxes().size();
        dialogs.answerBox(TaskDialog::IdCancel); // do not save, go on
        clickNode(++kan);
        ASSERT_EQ(dialogs.boxes().size(), boxes + 1) << step.command->objectName().toStdString();
        EXPECT_TRUE(dialogs.boxes().back().content.endsWith(u("データを保存しますか?")));
        EXPECT_EQ(f.currentPipeType, kan);
    }
}

TEST_F(EditCommands, MenuStateAtStartAfterACopyAndAfterAPaste) {
    MainWindow& f = open();
    EXPECT_TRUE(enabledPastes().isEmpty());
    for (QAction* a :
         {f.menus().edit.copyWholeTableItem, f.menus().edit.copyPricesItem,
          f.menus().edit.copyAllFactorsItem, f.menus().edit.copyLabourFactorsItem,
          f.menus().detail.copyDetailItem, f.menus().detail.copyDetailFactorsItem,
          f.menus().detail.copyDetailLabourItem, f.menus().edit.clearPipeTypeItem,
          f.menus().detail.clearDetailItem, f.menus().edit.moveUpItem, f.menus().edit.moveDownItem,
          f.menus().treePopup.popupMoveUpItem, f.menus().treePopup.popupMoveDownItem})
        EXPECT_TRUE(a->isEnabled()) << a->objectName().toStdString();
    EXPECT_FALSE(f.menus().edit.undoItem->isEnabled());
    EXPECT_FALSE(f.menus().actions.undoAction->isEnabled());
    // Out of reach.
    ASSERT_NE(f.edits()->detailPricesSeparator(), nullptr);
    EXPECT_TRUE(f.edits()->detailPricesSeparator()->isSeparator());
    EXPECT_TRUE(f.menus().detail.menu->actions().contains(f.edits()->detailPricesSeparator()));
    for (QAction* a :
         {f.menus().detail.copyDetailPricesItem, f.menus().detail.pasteDetailPricesItem,
          f.edits()->detailPricesSeparator(), f.menus().detail.copyDetailPricesAcrossItem})
        EXPECT_FALSE(a->isVisible()) << a->objectName().toStdString();
    // Piping mode: the spreading item is enabled and named by the tabs.
    EXPECT_TRUE(f.menus().detail.copyFirstDetailAcrossItem->isEnabled());
    EXPECT_EQ(f.menus().detail.copyFirstDetailAcrossItem->text(),
              u("屋内一般のデータを機械室・便所・屋外架空・地中埋設へコピ－"));

    f.menus().edit.copyAllFactorsItem->trigger();
    EXPECT_EQ(enabledPastes(), QStringList{QStringLiteral("pasteAllFactorsItem")});
    f.menus().detail.copyDetailLabourItem->trigger();
    EXPECT_EQ(enabledPastes(), QStringList{QStringLiteral("pasteDetailLabourItem")});
    f.menus().detail.pasteDetailLabourItem->trigger();
    EXPECT_EQ(enabledPastes(), QStringList{QStringLiteral("pasteDetailLabourItem")});
    EXPECT_TRUE(f.menus().edit.undoItem->isEnabled());
    // Another pipe type changes nothing of it either.
    clickNode(3);
    EXPECT_EQ(enabledPastes(), QStringList{QStringLiteral("pasteDetailLabourItem")});
    f.menus().edit.copyWholeTableItem->trigger();
    EXPECT_EQ(enabledPastes(), QStringList{QStringLiteral("pasteWholeTableItem")});
    // A copy takes no snapshot and changes nothing on the screen.
    EXPECT_FALSE(f.menus().actions.undoAction->isEnabled());
}

TEST_F(EditCommands, PasteOnTheSourceRestoresTheCopiedFieldsAndLeavesTheRest) {
    MainWindow& f = open();
    const Currency net3 = rows()[3].costPrice, teika20 = rows()[20].listPrice;
    f.menus().edit.copyPricesItem->trigger(); // prices
    rows()[3].costPrice = c("1");
    rows()[20].listPrice = c("2");
    rows()[3].factor(5) = c("0.5");
    rows()[2].setGoods(u("別の用途"));
    f.menus().edit.pastePricesItem->trigger();
    EXPECT_EQ(rows()[3].costPrice, net3);
    EXPECT_EQ(rows()[20].listPrice, teika20);
    EXPECT_EQ(rows()[3].factor(5), c("0.5"));
    EXPECT_EQ(rows()[2].goods(), u("別の用途"));
    // The sheet shows the rows, recalculated.
    PipeRow expected = rows()[3];
    calcRowWith(expected, doc().options());
    EXPECT_EQ(rows()[3].submittedUnitPrice, expected.submittedUnitPrice);
    EXPECT_EQ(cell1(8, 3), QStringLiteral("0.500"));
    EXPECT_EQ(f.header()->useBox()->text(), u("別の用途"));
}

TEST_F(EditCommands, WholeAllCopyCarriesModeRatesAndRoundingToAnotherPipeType) {
    MainWindow& f = open();
    const QString source = rows()[1].goods();
    // Options of pipe type 1 set by the user.
    f.optionPanel()->digitsRadio()->setItemIndex(0);
    f.optionPanel()->fractionRadio()->setItemIndex(1);
    f.optionPanel()->rateSubmittedEdit()->setValue(70);
    f.optionPanel()->useRateCheck()->SetChecked(true); // unit prices from the list price
    f.applyControls();
    f.optionPanel()->modeRadio()->setItemIndex(1); // refrigerant mode
    ASSERT_EQ(doc().options().modeFlag(), 1);
    f.menus().edit.copyWholeTableItem->trigger();
    dialogs.answerBox(TaskDialog::IdCancel); // not saved
    clickNode(2);
    ASSERT_EQ(f.currentPipeType, 2);
    ASSERT_EQ(f.optionPanel()->modeRadio()->itemIndex(), 0);
    ASSERT_EQ(f.sheet()->tabs()->count(), 4);
    ASSERT_FALSE(f.optionPanel()->useRateCheck()->checked());
    f.menus().edit.pasteWholeTableItem->trigger();
    EXPECT_TRUE(f.optionPanel()->useRateCheck()->checked());
    EXPECT_EQ(f.optionPanel()->modeRadio()->itemIndex(), 1);
    EXPECT_EQ(f.sheet()->tabs()->count(), 1);
    EXPECT_FALSE(f.menus().detail.copyFirstDetailAcrossItem->isEnabled());
    EXPECT_EQ(f.optionPanel()->digitsRadio()->itemIndex(), 0);
    EXPECT_EQ(f.optionPanel()->fractionRadio()->itemIndex(), 1);
    EXPECT_EQ(f.optionPanel()->rateSubmittedEdit()->value(), 70);
    EXPECT_EQ(doc().options().rateSubmitted(), Currency::fromInt(70));
    EXPECT_EQ(f.header()->goodsBox()->text(), source);
    // The node of the pipe type on the sheet takes the name.
    EXPECT_EQ(f.tree->node(2)->text(0), trimBlanks(source));
    EXPECT_TRUE(f.menus().actions.undoAction->isEnabled());
    // Nothing reaches the database before a save.
    EXPECT_EQ(stored(1, 2, 60, "FLAG"), QStringLiteral("0"));
}

// Each paste carries exactly the fields its copy took: the texts and flag,
// the prices, the factors but the pipefitter's, the pipefitter's factor.
TEST_F(EditCommands, EachPasteCarriesExactlyItsFields) {
    MainWindow& f = open();
    enum Part { Texts = 1, Prices = 2, Factors = 4, Pipefitter = 8, Every = 15 };
    const auto mark = [](PipeRow& row, int r, int k) {
        row.setGoods(QStringLiteral("g%1-%2").arg(k).arg(r));
        row.setKind(QStringLiteral("k%1").arg(k));
        row.setSize(QStringLiteral("%1-%2").arg(k).arg(r));
        row.setUnit(QStringLiteral("c%1").arg(k));
        row.modeFlag = k;
        row.costPrice = Currency::fromInt(100 * k + r);
        row.submittedPrice = Currency::fromInt(200 * k + r);
        row.listPrice = Currency::fromInt(300 * k + r);
        for (int n = 1; n <= 7; ++n)
            row.factor(n) = Currency::fromInt(10 * k + n);
    };
    const auto part = [](const PipeRow& row, int p) {
        QStringList s;
        if (p == Texts)
            s << row.goods() << row.kind() << row.size() << row.unit()
              << QString::number(row.modeFlag);
        if (p == Prices)
            s << currToStr(row.costPrice) << currToStr(row.submittedPrice)
              << currToStr(row.listPrice);
        for (int n = 1; n <= 7; ++n)
            if ((p == Factors && n != 5) || (p == Pipefitter && n == 5))
                s << currToStr(row.factor(n));
        return s.join(QLatin1Char('|'));
    };
    const struct {
        QAction *copy, *paste;
        int parts;
        bool detail; // tab 0 copied, pasted on tab 2
    } cases[] = {
        {f.menus().edit.copyWholeTableItem, f.menus().edit.pasteWholeTableItem, Every, false},
        {f.menus().edit.copyPricesItem, f.menus().edit.pastePricesItem, Prices, false},
        {f.menus().edit.copyAllFactorsItem, f.menus().edit.pasteAllFactorsItem,
         Factors | Pipefitter, false},
        {f.menus().edit.copyLabourFactorsItem, f.menus().edit.pasteLabourFactorsItem, Pipefitter,
         false},
        {f.menus().detail.copyDetailItem, f.menus().detail.pasteDetailItem, Every, true},
        {f.menus().detail.copyDetailPricesItem, f.menus().detail.pasteDetailPricesItem, Prices,
         true},
        {f.menus().detail.copyDetailFactorsItem, f.menus().detail.pasteDetailFactorsItem,
         Factors | Pipefitter, true},
        {f.menus().detail.copyDetailLabourItem, f.menus().detail.pasteDetailLabourItem, Pipefitter,
         true}};
    for (const auto& c : cases) {
        const std::string name = c.paste->objectName().toStdString();
        RowTable copied, other;
        for (int r = 1; r < OptionRow; ++r) {
            mark(copied[r], r, 1);
            mark(other[r], r, 2);
        }
        for (int r = 1; r < OptionRow; ++r)
            rows()[r] = copied[r];
        c.copy->trigger();
        for (int r = 1; r < OptionRow; ++r)
            rows()[r] = other[r];
        f.sheet()->tabs()->setCurrentIndex(c.detail ? 2 : 0);
        c.paste->trigger();
        for (int r = 1; r < OptionRow; ++r) {
            const bool target = !c.detail || (r > 30 && r <= 45);
            for (int p : {Texts, Prices, Factors, Pipefitter}) {
                const bool carried = target && (c.parts & p);
                EXPECT_EQ(part(rows()[r], p),
                          part(carried ? copied[c.detail ? r - 30 : r] : other[r], p))
                    << name << " row " << r << " part " << p;
            }
        }
    }
}

TEST_F(EditCommands, DetailAllPasteRewritesGoodsAndKindOfTheTabAndItsCaption) {
    MainWindow& f = open();
    RowTable source = rows();
    f.menus().detail.copyDetailItem->trigger(); // tab 0 of pipe type 1
    clickNode(4);
    const RowTable before = rows();
    f.sheet()->tabs()->setCurrentIndex(2);
    f.menus().detail.pasteDetailItem->trigger();
    for (int i = 1; i <= 15; ++i) {
        EXPECT_EQ(rows()[30 + i].goodsBytes, source[i].goodsBytes) << i;
        EXPECT_EQ(rows()[30 + i].kindBytes, source[i].kindBytes) << i;
        EXPECT_EQ(rows()[30 + i].factor(2), source[i].factor(2)) << i;
    }
    EXPECT_EQ(f.sheet()->tabs()->tabText(2), u("屋内一般"));
    EXPECT_EQ(f.sheet()->tabs()->currentIndex(), 0);
    // Other tabs as they were.
    for (int r : {1, 16, 29, 46, 60})
        EXPECT_EQ(rowLine(rows()[r]), rowLine(before[r])) << r;
    // An empty KIND gets the default caption.
    f.sheet()->tabs()->setCurrentIndex(1);
    ws().copyBuffer()[1].kindBytes.clear();
    f.menus().detail.pasteDetailItem->trigger();
    EXPECT_EQ(f.sheet()->tabs()->tabText(1), u("機械室・便所"));
    EXPECT_EQ(f.sheet()->tabs()->currentIndex(), 0);
}

TEST_F(EditCommands, AfterEveryPasteTabZeroIsCurrent) {
    MainWindow& f = open();
    f.menus().edit.copyWholeTableItem->trigger();
    for (QAction* paste :
         {f.menus().edit.pasteWholeTableItem, f.menus().detail.pasteDetailFactorsItem,
          f.menus().detail.copyFirstDetailAcrossItem}) {
        if (paste == f.menus().detail.pasteDetailFactorsItem)
            f.menus().detail.copyDetailFactorsItem->trigger();
        f.sheet()->tabs()->setCurrentIndex(3);
        paste->trigger();
        EXPECT_EQ(f.sheet()->tabs()->currentIndex(), 0) << paste->objectName().toStdString();
        EXPECT_TRUE(f.menus().actions.undoAction->isEnabled());
    }
}

TEST_F(EditCommands, RefrigerantModeHasOneTabAndDetailCommandsOnRowsOneToFifteen) {
    MainWindow& f = open();
    clickNode(9 * 21 + 1); // group 10, pipe type 1
    ASSERT_EQ(doc().options().modeFlag(), 1);
    EXPECT_EQ(f.sheet()->tabs()->count(), 1);
    EXPECT_FALSE(f.menus().detail.copyFirstDetailAcrossItem->isEnabled());
    f.menus().detail.copyDetailFactorsItem->trigger();
    const RowTable before = rows();
    for (int r = 1; r <= RowCount; ++r)
        for (int n = 1; n <= 7; ++n)
            rows()[r].factor(n) = c("0.9");
    f.menus().detail.pasteDetailFactorsItem->trigger();
    for (int r = 1; r <= 15; ++r)
        EXPECT_EQ(rows()[r].factors, before[r].factors) << r;
    for (int r = 16; r <= RowCount; ++r)
        EXPECT_EQ(rows()[r].factor(4), c("0.9")) << r;
    // The item stays disabled, and triggering it does nothing.
    f.menus().detail.copyFirstDetailAcrossItem->trigger();
    EXPECT_EQ(rows()[16].factor(4), c("0.9"));
}

TEST_F(EditCommands, PasteThenUndoGivesTheRowsBackAndASecondEscDoesNothing) {
    MainWindow& f = open();
    QStringList before;
    for (int r = 1; r <= RowCount; ++r)
        before << rowLine(rows()[r]);
    clickNode(2);
    f.menus().edit.copyWholeTableItem->trigger();
    clickNode(1);
    f.menus().edit.pasteWholeTableItem->trigger();
    ASSERT_NE(rowLine(rows()[1]), before[0]);
    escape();
    for (int r = 1; r <= RowCount; ++r)
        EXPECT_EQ(rowLine(rows()[r]), before[r - 1]) << r;
    EXPECT_FALSE(f.menus().actions.undoAction->isEnabled());
    EXPECT_FALSE(f.menus().edit.undoItem->isEnabled());
    EXPECT_EQ(f.tree->node(1)->text(0), trimBlanks(rows()[1].goods()));
    // A second Esc finds the command disabled: the rows stay as they are now.
    rows()[7].costPrice = c("12345");
    escape();
    EXPECT_EQ(rows()[7].costPrice, c("12345"));
}

// The flags of the rows, the mode in the option row among them, come back with
// the values.
TEST_F(EditCommands, UndoOfAClearOrAPasteBringsTheFlagsBack) {
    MainWindow& f = open();
    f.menus().edit.copyWholeTableItem->trigger(); // piping mode, no row flagged
    clickNode(9 * 21 + 1);                        // group 10, pipe type 1: refrigerant mode
    rows()[7].modeFlag = 2;
    for (QAction* command :
         {f.menus().edit.clearPipeTypeItem, f.menus().edit.pasteWholeTableItem}) {
        if (command == f.menus().edit.clearPipeTypeItem) dialogs.answerBox(TaskDialog::IdYes);
        command->trigger();
        ASSERT_EQ(rows()[7].modeFlag + rows()[OptionRow].modeFlag, 0);
        f.menus().actions.undoAction->trigger();
        EXPECT_EQ(rows()[7].modeFlag, 2) << command->objectName().toStdString();
        EXPECT_EQ(rows()[OptionRow].modeFlag, 1) << command->objectName().toStdString();
        EXPECT_EQ(f.sheet()->tabs()->count(), 1);
    }
}

TEST_F(EditCommands, TwoEditsThenUndoUndoesOnlyTheSecond) {
    MainWindow& f = open();
    auto enter = [&](int col, int row, const char* text) {
        ASSERT_TRUE(f.sheet()->compositeGrid()->focusCell(col, row));
        for (char ch : QByteArray(text)) {
            QWidget* target =
                f.sheet()->compositeGrid()->editorMode()
                    ? static_cast<QWidget*>(f.sheet()->compositeGrid()->inplaceEditor())
                    : f.sheet()->compositeGrid();
            QTest::keyClick(target, ch);
        }
        QWidget* target = f.sheet()->compositeGrid()->editorMode()
                              ? static_cast<QWidget*>(f.sheet()->compositeGrid()->inplaceEditor())
                              : f.sheet()->compositeGrid();
        QTest::keyClick(target, Qt::Key_Return);
    };
    const Currency old4 = rows()[4].factor(2);
    enter(5, 3, "0.75");
    enter(5, 4, "0.85");
    ASSERT_EQ(rows()[3].factor(2), c("0.75"));
    ASSERT_EQ(rows()[4].factor(2), c("0.85"));
    f.menus().edit.undoItem->trigger(); // the menu item
    EXPECT_EQ(rows()[3].factor(2), c("0.75"));
    EXPECT_EQ(rows()[4].factor(2), old4);
    EXPECT_EQ(cell1(5, 4), currToStr(old4));
    EXPECT_FALSE(f.menus().actions.undoAction->isEnabled());
}

TEST_F(EditCommands, ClearPipeTypeAsksClearsAndUndoBringsTheTreeTextBack) {
    MainWindow& f = open();
    const QString name = f.tree->node(1)->text(0);
    const RowTable before = rows();
    dialogs.answerBox(TaskDialog::IdNo);
    f.menus().edit.clearPipeTypeItem->trigger();
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_EQ(dialogs.boxes()[0].instruction, u("確認"));
    EXPECT_EQ(dialogs.boxes()[0].content, u("現在の内容をすべてクリア－しますか？"));
    EXPECT_EQ(dialogs.boxes()[0].icon, TaskDialog::IconQuestion);
    EXPECT_EQ(dialogs.boxes()[0].buttons, TaskDialog::ButtonYes | TaskDialog::ButtonNo);
    EXPECT_EQ(fullRow(rows()[1]), fullRow(before[1]));
    EXPECT_EQ(f.tree->node(1)->text(0), name);

    f.sheet()->tabs()->setCurrentIndex(2);
    dialogs.answerBox(TaskDialog::IdYes);
    f.menus().edit.clearPipeTypeItem->trigger();
    for (int r = 1; r <= RowCount; ++r) {
        EXPECT_TRUE(rows()[r].goodsBytes.isEmpty() && rows()[r].sizeBytes.isEmpty() &&
                    rows()[r].kindBytes.isEmpty() && rows()[r].unitBytes.isEmpty())
            << r;
        EXPECT_TRUE(rows()[r].costPrice.isZero() && rows()[r].factor(5).isZero() &&
                    rows()[r].modeFlag == 0)
            << r;
        EXPECT_EQ(rows()[r].key, before[r].key);
        EXPECT_EQ(rows()[r].otherMethod, before[r].otherMethod);
    }
    EXPECT_EQ(f.sheet()->tabs()->currentIndex(), 0);
    EXPECT_EQ(cell1(0, 1), QString());
    EXPECT_EQ(cell2(1, 1), formatAmount(Currency()));
    EXPECT_EQ(f.tree->node(1)->text(0), QString());
    // The controls above the grids keep what they showed.
    EXPECT_EQ(f.header()->goodsBox()->text(), before[1].goods());
    EXPECT_TRUE(f.menus().actions.undoAction->isEnabled());

    f.menus().actions.undoAction->trigger();
    for (int r = 1; r <= RowCount; ++r)
        EXPECT_EQ(rowLine(rows()[r]), rowLine(before[r])) << r;
    EXPECT_EQ(f.tree->node(1)->text(0), name);
    EXPECT_EQ(cell1(0, 1), before[1].size());
}

TEST_F(EditCommands, MoveAtTheEndsSaysSoAndChangesNothing) {
    MainWindow& f = open();
    const QByteArray group = storedGroup(1);
    f.menus().edit.moveUpItem->trigger(); // up on the first
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_EQ(dialogs.boxes()[0].instruction, u("確認"));
    EXPECT_EQ(dialogs.boxes()[0].content, u("移動できません。"));
    EXPECT_EQ(f.currentPipeType, 1);
    clickNode(20);
    f.menus().treePopup.popupMoveDownItem->trigger(); // down on the twentieth, from the tree's
                                                      // pop-up menu
    ASSERT_EQ(dialogs.boxes().size(), 2u);
    EXPECT_EQ(dialogs.boxes()[1].content, u("移動できません。"));
    EXPECT_EQ(f.currentPipeType, 20);
    EXPECT_EQ(storedGroup(1), group);
}

TEST_F(EditCommands, MoveCarriesTheSelectionAndASaveLeavesTheNeighbourByteIdentical) {
    MainWindow& f = open();
    const QByteArray first = storedBytes(1, 1);
    const QByteArray second = storedBytes(1, 2);
    const QByteArray third = storedBytes(1, 3);
    const QString name1 = f.tree->node(1)->text(0);
    clickNode(2);
    const QString name2 = f.tree->node(2)->text(0);
    // An unsaved change of the pipe type that moves.
    f.optionPanel()->labourCostSubmittedEdit()->setValue(31000);
    f.applyControls();
    ASSERT_TRUE(doc().isChanged());
    f.menus().treePopup.popupMoveUpItem->trigger(); // up, from the tree's pop-up menu
    EXPECT_EQ(f.currentPipeType, 1);
    EXPECT_EQ(f.selectedNode(), f.tree->node(1));
    EXPECT_EQ(f.tree->node(1)->text(0), name2);
    EXPECT_EQ(f.tree->node(2)->text(0), name1);
    EXPECT_FALSE(f.menus().actions.undoAction->isEnabled());
    EXPECT_TRUE(doc().isChanged()); // the change is still unsaved
    EXPECT_EQ(f.optionPanel()->labourCostSubmittedEdit()->value(), 31000);
    // The two swapped places in the file, nothing else moved.
    EXPECT_EQ(storedBytes(1, 1), second);
    EXPECT_EQ(storedBytes(1, 2), first);
    EXPECT_EQ(storedBytes(1, 3), third);

    QTest::mouseClick(f.header()->saveButton(), Qt::LeftButton);
    ASSERT_FALSE(dialogs.boxes().empty());
    EXPECT_EQ(dialogs.boxes().back().content, u("保存しました。"));
    EXPECT_EQ(storedBytes(1, 2), first); // the neighbour, untouched
    EXPECT_EQ(stored(1, 1, 60, "DATA5"), QStringLiteral("31000"));
    EXPECT_EQ(stored(1, 1, 1, "GOODS"), name2);

    // And back down from the menu.
    f.menus().edit.moveDownItem->trigger();
    EXPECT_EQ(f.currentPipeType, 2);
    EXPECT_EQ(f.selectedNode(), f.tree->node(2));
    EXPECT_EQ(storedBytes(1, 1), first);
    EXPECT_EQ(f.tree->node(2)->text(0), name2);
}

TEST_F(EditCommands, ClearDetailKeepsSizesAndPricesAndShowsZeroFactors) {
    MainWindow& f = open();
    const RowTable before = rows();
    f.sheet()->tabs()->setCurrentIndex(1);
    dialogs.answerBox(TaskDialog::IdYes);
    f.menus().detail.clearDetailItem->trigger();
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_EQ(dialogs.boxes()[0].content, u("現在の細目をクリア－しますか？"));
    EXPECT_EQ(f.sheet()->tabs()->currentIndex(), 1);
    for (int g = 1; g <= 14; ++g) {
        const int r = 15 + g;
        EXPECT_EQ(rows()[r].sizeBytes, before[r].sizeBytes);
        EXPECT_EQ(rows()[r].costPrice, before[r].costPrice);
        EXPECT_EQ(rows()[r].listPrice, before[r].listPrice);
        for (int n = 1; n <= 7; ++n)
            EXPECT_TRUE(rows()[r].factor(n).isZero()) << r;
        EXPECT_EQ(cell1(0, g), before[r].size());
        EXPECT_EQ(cell1(5, g), QStringLiteral("0"));
        EXPECT_EQ(cell1(8, g), QStringLiteral("0.000"));
    }
    // The other tabs keep their factors.
    EXPECT_EQ(rows()[3].factors, before[3].factors);
    EXPECT_EQ(rows()[33].factors, before[33].factors);
    f.menus().actions.undoAction->trigger();
    EXPECT_EQ(rows()[17].factors, before[17].factors);
}

TEST_F(EditCommands, OptionRowIntactAfterTheDetailCommandsOnTheFourthTab) {
    MainWindow& f = open();
    const QString option = fullRow(rows()[OptionRow]);
    const RowTable loaded = rows();
    // A detail copy from another pipe type, with other figures.
    clickNode(5);
    f.menus().detail.copyDetailItem->trigger();
    clickNode(1);
    auto onTab4 = [&](QAction* command) {
        f.sheet()->tabs()->setCurrentIndex(3);
        command->trigger();
        EXPECT_EQ(fullRow(rows()[OptionRow]), option) << command->objectName().toStdString();
    };
    onTab4(f.menus().detail.pasteDetailItem);
    EXPECT_EQ(rows()[59].goodsBytes, ws().copyBuffer()[14].goodsBytes); // the tab's rows did change
    EXPECT_NE(rows()[59].listPrice, loaded[59].listPrice);
    f.menus().detail.copyDetailFactorsItem->trigger();
    onTab4(f.menus().detail.pasteDetailFactorsItem);
    f.menus().detail.copyDetailLabourItem->trigger();
    onTab4(f.menus().detail.pasteDetailLabourItem);
    onTab4(f.menus().detail.copyFirstDetailAcrossItem);
    dialogs.answerBox(TaskDialog::IdYes);
    onTab4(f.menus().detail.clearDetailItem);
    EXPECT_TRUE(rows()[59].factor(5).isZero());
    // The controls still show the options, and a save stores them.
    EXPECT_EQ(f.optionPanel()->labourCostSubmittedEdit()->value(), 24200);
    EXPECT_EQ(f.optionPanel()->rateCostEdit()->value(), 55);
    QTest::mouseClick(f.header()->saveButton(), Qt::LeftButton);
    EXPECT_EQ(stored(1, 1, 60, "DATA5"), QStringLiteral("24200"));
    EXPECT_EQ(stored(1, 1, 60, "DATA2"), QStringLiteral("10"));
    EXPECT_EQ(stored(1, 1, 60, "NET"), QStringLiteral("55"));
}

TEST_F(EditCommands, WholeTablePasteStillCarriesTheOptionRow) {
    MainWindow& f = open();
    f.optionPanel()->labourCostSubmittedEdit()->setValue(27000);
    f.applyControls();
    f.menus()
        .edit.copyLabourFactorsItem->trigger(); // pipefitter: DATA5 of every row, row 60 included
    dialogs.answerBox(TaskDialog::IdCancel);
    clickNode(2);
    ASSERT_EQ(f.optionPanel()->labourCostSubmittedEdit()->value(), 24200);
    const Currency labour3 = rows()[3].factor(2);
    f.menus().edit.pasteLabourFactorsItem->trigger();
    EXPECT_EQ(f.optionPanel()->labourCostSubmittedEdit()->value(), 27000);
    EXPECT_EQ(rows()[3].factor(2), labour3);
}

TEST_F(EditCommands, SpreadCopiesTheFirstDetailToTheOtherThree) {
    MainWindow& f = open();
    const RowTable before = rows();
    ASSERT_NE(rows()[17].factor(2), rows()[2].factor(2));
    f.menus().detail.copyFirstDetailAcrossItem->trigger();
    for (int k = 1; k <= 3; ++k)
        for (int i = 1; i <= 14; ++i) {
            const int r = k * 15 + i;
            EXPECT_EQ(rows()[r].factors, rows()[i].factors) << r;
            EXPECT_EQ(rows()[r].kindBytes, before[r].kindBytes) << r;
        }
    EXPECT_EQ(f.sheet()->tabs()->tabText(1), u("機械室・便所"));
    f.menus().actions.undoAction->trigger();
    EXPECT_EQ(rows()[17].factors, before[17].factors);
}

TEST_F(EditCommands, HiddenPriceSpreadTakesTheCopiedPricesAndDisablesThePastes) {
    MainWindow& f = open();
    // Out of the user's reach (a hidden item does not even trigger), so the
    // handlers are called as such: the prices of the first detail copied,
    // then spread over the other three.
    f.menus().detail.copyDetailPricesItem->trigger();
    EXPECT_TRUE(enabledPastes().isEmpty());
    f.edits()->copyDetailPrices();
    f.menus().edit.copyAllFactorsItem->trigger();
    ASSERT_EQ(enabledPastes(), QStringList{QStringLiteral("pasteAllFactorsItem")});
    const QString option = fullRow(rows()[OptionRow]);
    for (int r = 16; r < OptionRow; ++r)
        rows()[r].costPrice = c("1");
    f.edits()->copyDetailPricesAcross();
    for (int r = 16; r < OptionRow; ++r)
        EXPECT_EQ(rows()[r].costPrice, ws().copyBuffer()[(r - 1) % 15 + 1].costPrice) << r;
    EXPECT_NE(rows()[17].costPrice, c("1"));
    EXPECT_EQ(fullRow(rows()[OptionRow]), option);
    EXPECT_TRUE(enabledPastes().isEmpty());
}

} // namespace
