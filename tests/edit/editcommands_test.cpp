// The edit commands on the real window offscreen, on a demo database made by
// the suite stand-in: the menu items are triggered as the user's clicks would,
// and the questions are answered by the scripted dialogs.
#include "controls/numberedit.h"
#include "edit/editcommands.h"
#include "shell/formwidgets.h"
#include "util/textlines.h"

#include "fdkgolden.h"
#include "support/sqliterows.h"
#include "support/workspace_fixture.h"

namespace {

class EditCommands : public WorkspaceFixture {
protected:
    EditMenu& edit() { return form->menus().edit; }
    DetailMenu& detail() { return form->menus().detail; }
    QAction* undo() { return form->menus().actions.undoAction; }
    QTabBar* tabs() { return form->sheet()->tabs(); }
    QString node(int index) { return form->tree->node(index)->text(0); }
    // The rows of pipe type kan of group 1 (0: of the whole group) as SQLite
    // itself reads them from the file, but for CTG, GRP and the place KAN.
    QStringList storedRows(int kan = 0) {
        const QString sql = QStringLiteral("SELECT * FROM ex_kanzai WHERE CTG=1 AND GRP=1 AND "
                                           "(KAN=%1 OR %1=0) ORDER BY KAN, NO;");
        QStringList rows = sqliteRows(db, sql.arg(kan), SQLITE_OPEN_READONLY);
        for (QString& row : rows)
            row = row.section(QLatin1Char('|'), 3);
        return rows;
    }
    void escape() {
        form->activateWindow();
        (void)QTest::qWaitForWindowActive(form.get());
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : form.get(),
                        Qt::Key_Escape);
    }
    // The paste items that are enabled, by name.
    QStringList enabledPastes() {
        QStringList names;
        for (QAction* a : {edit().pasteWholeTableItem, edit().pastePricesItem,
                           edit().pasteAllFactorsItem, edit().pasteLabourFactorsItem,
                           detail().pasteDetailItem, detail().pasteDetailPricesItem,
                           detail().pasteDetailFactorsItem, detail().pasteDetailLabourItem})
            if (a->isEnabled()) names << a->objectName();
        return names;
    }
    // The texts, prices and factors of a row: what no calculation changes.
    static std::string entered(const PipeRow& r) {
        return rowImage(mix({}, r, Texts | Prices | Labour));
    }
};

// At start no paste item is enabled. Each paste carries exactly the fields its
// copy took, from tab 0 to the whole table or to tab 2. Only its paste item is
// enabled, and stays so; after it tab 0 is current and shown, and the rows
// count as changed and can be undone.
TEST_F(EditCommands, EachPasteCarriesExactlyItsFields) {
    MainWindow& f = open();
    EXPECT_TRUE(enabledPastes().isEmpty());
    // The separator of the detail price items is out of reach as they are
    // (their items: MainFormTest.CreationTakesThePaths...).
    QAction* separator = f.edits()->detailPricesSeparator();
    EXPECT_TRUE(separator->isSeparator() && detail().menu->actions().contains(separator) &&
                !separator->isVisible());
    // A copy item, its paste item, the fields they carry, and whether of a detail.
    using Case = std::tuple<QAction*, QAction*, unsigned, bool>;
    for (const auto& [copy, paste, fields, ofDetail] : std::initializer_list<Case>{
             {edit().copyWholeTableItem, edit().pasteWholeTableItem, All, false},
             {edit().copyPricesItem, edit().pastePricesItem, Prices, false},
             {edit().copyAllFactorsItem, edit().pasteAllFactorsItem, Labour, false},
             {edit().copyLabourFactorsItem, edit().pasteLabourFactorsItem, Pipefitter, false},
             {detail().copyDetailItem, detail().pasteDetailItem, All, true},
             {detail().copyDetailPricesItem, detail().pasteDetailPricesItem, Prices, true},
             {detail().copyDetailFactorsItem, detail().pasteDetailFactorsItem, Labour, true},
             {detail().copyDetailLabourItem, detail().pasteDetailLabourItem, Pipefitter, true}}) {
        const std::string name = paste->objectName().toStdString();
        // A hidden item is never enabled.
        const QStringList only =
            paste->isVisible() ? QStringList{paste->objectName()} : QStringList();
        const auto seed = [this](int base) {
            for (int r = 1; r < OptionRow; ++r)
                rows()[r] = seeded(base + r);
        };
        seed(0);
        doc().markSaved();
        copy->trigger();
        EXPECT_EQ(enabledPastes(), only) << name;
        seed(100);
        tabs()->setCurrentIndex(ofDetail ? 2 : 3);
        paste->trigger();
        for (int r = 1; r < OptionRow; ++r) {
            const int from = !ofDetail ? r : r > 30 && r <= 45 ? r - 30 : 0;
            const PipeRow mine = seeded(100 + r);
            EXPECT_EQ(entered(rows()[r]), entered(from ? mix(mine, seeded(from), fields) : mine))
                << name << " row " << r;
        }
        EXPECT_EQ(enabledPastes(), only) << name;
        EXPECT_TRUE(tabs()->currentIndex() == 0 && cell1(0, 1) == rows()[1].size() &&
                    undo()->isEnabled() && doc().isChanged())
            << name;
    }
}

// The flags of the rows, the mode in the option row among them, come back
// with the values; Esc undoes as the action does, and only once.
TEST_F(EditCommands, UndoOfAClearOrAPasteBringsTheFlagsBack) {
    open();
    edit().copyWholeTableItem->trigger(); // piping mode, no row flagged
    clickNode(9 * 21 + 1);                // group 10, pipe type 1: refrigerant mode
    rows()[7].modeFlag = 2;
    const RowTable before = rows();
    for (QAction* command : {edit().clearPipeTypeItem, edit().pasteWholeTableItem}) {
        const std::string name = command->objectName().toStdString();
        const bool clear = command == edit().clearPipeTypeItem;
        if (clear) dialogs.answerBox(TaskDialog::IdYes);
        command->trigger();
        ASSERT_EQ(rows()[7].modeFlag + rows()[OptionRow].modeFlag, 0);
        ASSERT_NE(node(9 * 21 + 1), trimBlanks(before[1].goods()));
        clear ? undo()->trigger() : escape();
        EXPECT_EQ(std::tuple(rows()[7].modeFlag, rows()[OptionRow].modeFlag, tabs()->count()),
                  std::tuple(2, 1, 1))
            << name;
        for (int r = 1; r <= RowCount; ++r)
            EXPECT_EQ(rowLine(rows()[r]), rowLine(before[r])) << name << " row " << r;
        EXPECT_FALSE(undo()->isEnabled() || edit().undoItem->isEnabled()) << name;
        EXPECT_EQ(node(9 * 21 + 1), trimBlanks(before[1].goods())) << name;
    }
    // A second Esc finds the command disabled: the rows stay as they are now.
    rows()[7].costPrice = Currency::fromInt(12345);
    escape();
    EXPECT_EQ(rows()[7].costPrice, Currency::fromInt(12345));
}

// No changes nothing; yes clears the rows and shows them on tab 0. The tree
// text and its undo: UndoOfAClearOrAPasteBringsTheFlagsBack.
TEST_F(EditCommands, ClearPipeTypeAsksClearsAndUndoShowsTheRowsAgain) {
    open();
    const RowTable before = rows();
    tabs()->setCurrentIndex(2);
    for (int answer : {TaskDialog::IdNo, TaskDialog::IdYes})
        dialogs.answerBox(answer);
    edit().clearPipeTypeItem->trigger();
    EXPECT_TRUE(rowImage(rows()[1]) == rowImage(before[1]) && tabs()->currentIndex() == 2);
    edit().clearPipeTypeItem->trigger();
    ASSERT_EQ(dialogs.boxes().size(), 2u);
    EXPECT_EQ(dialogs.boxes()[0].instruction + dialogs.boxes()[0].content,
              u("確認現在の内容をすべてクリア－しますか？"));
    EXPECT_EQ(tabs()->currentIndex(), 0);
    for (int g : {1, 14})
        EXPECT_EQ(cell1(0, g) + cell2(1, g), formatAmount(Currency())) << g;
    EXPECT_TRUE(undo()->isEnabled() && doc().isChanged());
    undo()->trigger();
    EXPECT_EQ(cell1(0, 1), before[1].size());
}

// At the ends a move says so and changes nothing; else the two pipe types
// change places in the file, the selection and an unsaved change go along.
TEST_F(EditCommands, MoveCarriesTheSelectionAndASaveLeavesTheNeighbourByteIdentical) {
    MainWindow& f = open();
    const QStringList group = storedRows();
    const QStringList first = storedRows(1), second = storedRows(2), third = storedRows(3);
    edit().moveUpItem->trigger(); // up on the first
    EXPECT_EQ(f.currentPipeType, 1);
    clickNode(20);
    f.menus().treePopup.popupMoveDownItem->trigger(); // down on the twentieth, from the pop-up
    ASSERT_EQ(dialogs.boxes().size(), 2u);
    for (const auto& box : dialogs.boxes())
        EXPECT_EQ(box.instruction + box.content, u("確認移動できません。"));
    EXPECT_TRUE(f.currentPipeType == 20 && storedRows() == group);

    const QString name1 = node(1);
    clickNode(2);
    const QString name2 = node(2);
    // An unsaved change of the pipe type that moves.
    f.optionPanel()->labourCostSubmittedEdit()->setValue(31000);
    f.applyControls();
    ASSERT_TRUE(doc().isChanged());
    f.menus().treePopup.popupMoveUpItem->trigger(); // up, from the tree's pop-up menu
    EXPECT_TRUE(f.currentPipeType == 1 && f.selectedNode() == f.tree->node(1));
    EXPECT_EQ(QStringList({node(1), node(2)}), QStringList({name2, name1}));
    EXPECT_TRUE(!undo()->isEnabled() && doc().isChanged()); // the change is still unsaved
    // The two swapped places in the file, nothing else moved.
    EXPECT_EQ(storedRows(1) + storedRows(2) + storedRows(3), second + first + third);

    QTest::mouseClick(f.header()->saveButton(), Qt::LeftButton);
    EXPECT_EQ(storedRows(2), first); // the neighbour, untouched
    EXPECT_EQ(stored(1, 1, 60, "DATA5") + "|" + stored(1, 1, 1, "GOODS"), "31000|" + name2);

    // And back down from the menu.
    edit().moveDownItem->trigger();
    EXPECT_TRUE(f.currentPipeType == 2 && f.selectedNode() == f.tree->node(2));
    EXPECT_TRUE(storedRows(1) == first && node(2) == name2);
}

// A detail cleared keeps sizes and prices and shows zero factors; the first
// detail spread over the other three keeps their kinds; undo gives the rows
// back. The hidden price spread takes the copied prices.
TEST_F(EditCommands, ClearDetailKeepsSizesAndPricesAndShowsZeroFactors) {
    open();
    const RowTable before = rows();
    tabs()->setCurrentIndex(1);
    dialogs.answerBox(TaskDialog::IdYes);
    detail().clearDetailItem->trigger();
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(dialogs.boxes()[0].content == u("現在の細目をクリア－しますか？") &&
                tabs()->currentIndex() == 1);
    for (int g = 1; g <= 14; ++g) {
        EXPECT_EQ(entered(rows()[15 + g]), entered(mix({}, before[15 + g], Texts | Prices))) << g;
        EXPECT_EQ(QStringList({cell1(0, g), cell1(5, g), cell1(8, g)}),
                  QStringList({before[15 + g].size(), QStringLiteral("0"), u("0.000")}))
            << g;
    }
    // The other tabs keep their factors.
    EXPECT_TRUE(rows()[3].factors == before[3].factors && rows()[33].factors == before[33].factors);
    EXPECT_TRUE(undo()->isEnabled() && doc().isChanged());
    undo()->trigger();
    EXPECT_EQ(rows()[17].factors, before[17].factors);

    ASSERT_NE(rows()[17].factor(2), rows()[2].factor(2));
    tabs()->setCurrentIndex(3);
    detail().copyFirstDetailAcrossItem->trigger();
    // A row of the second detail; every row: FieldSets.EachOperationCarries...
    EXPECT_TRUE(rows()[17].factors == rows()[2].factors &&
                rows()[17].kindBytes == before[17].kindBytes);
    EXPECT_TRUE(tabs()->currentIndex() == 0 && undo()->isEnabled() && doc().isChanged());
    undo()->trigger();
    EXPECT_EQ(rows()[17].factors, before[17].factors);

    // Out of the user's reach, so the handlers are called as such.
    form->edits()->copyDetailPrices();
    edit().copyAllFactorsItem->trigger();
    rows()[17].costPrice = Currency::fromInt(1);
    form->edits()->copyDetailPricesAcross();
    EXPECT_EQ(rows()[17].costPrice, ws().copyBuffer()[2].costPrice);
    EXPECT_NE(rows()[17].costPrice, Currency::fromInt(1));
    EXPECT_EQ(rowImage(rows()[OptionRow]), rowImage(before[OptionRow]));
    EXPECT_TRUE(enabledPastes().isEmpty());
}

} // namespace
