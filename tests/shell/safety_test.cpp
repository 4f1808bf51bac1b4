// The real window against a database that another process holds or changes,
// and the paths that must keep the rows, the triple and the selection
// together when a load or a save fails.
#include "shell/formwidgets.h"
#include "shell/settingsfiles.h"
#include "support/lockholder.h"
#include "support/sqliterows.h"
#include "support/workspace_fixture.h"

#include <QScrollArea>
#include <QScrollBar>

namespace {

class Safety : public WorkspaceFixture {
protected:
    // Every column of the 60 rows of a pipe type, read with the library itself.
    QStringList dump(int kan) {
        const QString sql = "SELECT * FROM ex_kanzai WHERE GRP=1 AND KAN=%1 ORDER BY NO";
        return sqliteRows(db, sql.arg(kan), SQLITE_OPEN_READONLY);
    }
    // The pipe type on screen and the node selected.
    bool stillOn(int pipeType) const {
        return form->currentPipeType == pipeType &&
               form->selectedNode() == form->tree->node(pipeType);
    }
    testing::AssertionResult boxSays(std::size_t i, const char* instruction,
                                     const char* content = "") const {
        const auto& boxes = dialogs.boxes();
        if (i < boxes.size() && boxes[i].instruction == u(instruction) &&
            boxes[i].content.contains(u(content)))
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << (i < boxes.size() ? (boxes[i].instruction + '|' + boxes[i].content).toStdString()
                                    : "no box " + std::to_string(i));
    }
    testing::AssertionResult locked(std::size_t i) const {
        return boxSays(i, "ERROR", "database is locked");
    }
};

TEST_F(Safety, AFailedLoadLeavesTheClickUndone) {
    MainWindow& f = open();
    typeFactor(4, 3, "7");
    const RowTable edited = rows();
    const QStringList saved = doc().savedLines(), a = dump(1), b = dump(2);
    ASSERT_EQ(b.size(), 60);
    {
        LockHolder other(db, "EXCLUSIVE");
        dialogs.answerBox(TaskDialog::IdCancel); // do not save, go to pipe type 2
        clickNode(2);
        // The failure is shown, and everything stays with pipe type 1.
        ASSERT_EQ(dialogs.boxes().size(), 2u);
        EXPECT_TRUE(dialogs.boxes()[1].instruction.contains(u("locked")) && f.currentGroup == 1 &&
                    stillOn(1));
        EXPECT_TRUE(doc().savedLines() == saved && rowLine(rows()[3]) == rowLine(edited[3]) &&
                    doc().isChanged());
    }
    // The next save writes pipe type 1, and pipe type 2 is untouched.
    f.header()->saveButton()->click();
    EXPECT_TRUE(boxSays(2, "確認", "保存しました。"));
    EXPECT_TRUE(dump(2) == b && dump(1) != a && stored(1, 1, 3, "DATA1") == "7");
}

// A pipe type whose rows end at 29: its load stops half-way, and all 60 rows
// stay those of the pipe type that was on screen.
TEST_F(Safety, ALoadThatStopsHalfWayLeavesTheRowsThatWereShown) {
    const char* cut = "DELETE FROM ex_kanzai WHERE CTG='1' AND GRP='1' AND KAN='2' AND NO>='30';";
    ASSERT_EQ(execStatement(dialogs, db, cut), 1);
    MainWindow& f = open();
    const RowTable shown = rows();
    clickNode(2);
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(boxSays(0, "List index out of bounds (29)") && f.currentPipeType == 1);
    for (int r = 1; r <= RowCount; ++r)
        EXPECT_EQ(rowLine(rows()[r]), rowLine(shown[r])) << r;
    EXPECT_FALSE(doc().isChanged());
}

// Another program changes a price of the pipe type on screen after it was
// loaded: every save asks before it writes over that, and each answer does
// what it says.
TEST_F(Safety, ASaveAsksBeforeWritingOverAChangeMadeElsewhere) {
    MainWindow& f = open();
    auto otherChanges = [&](const char* gross) {
        const QString sql = "UPDATE ex_kanzai SET GROSS='%1' WHERE GRP=1 AND KAN=1 AND NO=2";
        ASSERT_EQ(sqliteRows(db, sql.arg(gross), SQLITE_OPEN_READWRITE), QStringList());
    };
    auto asked = [&](std::size_t i) {
        return boxSays(i, "この管種は読み込んだ後に他で変更されています。") &&
               dialogs.boxes()[i].buttons == (TaskDialog::ButtonOverwrite |
                                              TaskDialog::ButtonReload | TaskDialog::ButtonCancel);
    };
    // キャンセル: nothing written, the user's rows stay on screen, unsaved.
    typeFactor(4, 3, "7");
    otherChanges("1111");
    const QStringList theirs = dump(1);
    dialogs.answerBox(TaskDialog::IdCancel);
    f.header()->saveButton()->click();
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(asked(0) && dump(1) == theirs);
    EXPECT_TRUE(rows()[3].factor(1) == Currency::fromInt(7) && doc().isChanged());

    // 上書き保存: the user's rows are written, the other change is gone.
    dialogs.answerBox(TaskDialog::IdOverwrite);
    f.menus().file.saveItem->trigger();
    EXPECT_TRUE(asked(1) && boxSays(2, "確認", "保存しました。"));
    EXPECT_EQ(stored(1, 1, 3, "DATA1") + '|' + stored(1, 1, 2, "GROSS"),
              "7|" + currToStr(rows()[2].submittedPrice));
    EXPECT_FALSE(rows()[2].submittedPrice == Currency::fromInt(1111) || doc().isChanged());

    // 読み直す, confirmed: the stored rows are shown and the user's dropped.
    typeFactor(4, 4, "5");
    otherChanges("2222");
    const QStringList before = dump(1);
    dialogs.answerBox(TaskDialog::IdReload);
    dialogs.answerBox(TaskDialog::IdYes);
    f.header()->saveButton()->click();
    EXPECT_TRUE(asked(3) && boxSays(4, "確認", "変更を破棄して読み直しますか?"));
    EXPECT_TRUE(dump(1) == before && rows()[2].submittedPrice == Currency::fromInt(2222));
    EXPECT_TRUE(rows()[4].factor(1) == strToCurr(stored(1, 1, 4, "DATA1")) && !doc().isChanged());

    // The question of a tree click: キャンセル keeps the user on the rows.
    typeFactor(4, 5, "6");
    otherChanges("3333");
    dialogs.answerBox(TaskDialog::IdYes); // save?
    dialogs.answerBox(TaskDialog::IdCancel);
    clickNode(2);
    EXPECT_TRUE(asked(6) && stillOn(1) && stored(1, 1, 2, "GROSS") == "3333");
    // At closing, キャンセル keeps the window; 上書き保存 saves and closes.
    dialogs.answerBox(TaskDialog::IdYes);
    dialogs.answerBox(TaskDialog::IdCancel);
    EXPECT_TRUE(!f.close() && asked(8));
    dialogs.answerBox(TaskDialog::IdYes);
    dialogs.answerBox(TaskDialog::IdOverwrite);
    EXPECT_TRUE(f.close() && stored(1, 1, 5, "DATA1") == "6");
    EXPECT_EQ(dialogs.boxes().size(), 11u);
}

// Every save, a Shift+click and a group name under another program's lock:
// each says it failed and loses nothing; at closing, a retry once the file
// is free saves.
TEST_F(Safety, SavesUnderALockSayTheyFailedAndLoseNothing) {
    MainWindow& f = open();
    typeFactor(5, 2, "3");
    const QStringList before = dump(1) + dump(2) + dump(3);
    auto other = std::make_unique<LockHolder>(db, "IMMEDIATE");

    // The button: one box with the database's reason, no success; Ctrl+S the same.
    f.header()->saveButton()->click();
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(locked(0) && dialogs.messages().empty() && doc().isChanged());
    f.menus().file.saveItem->trigger();
    EXPECT_TRUE(dialogs.boxes().size() == 2u && locked(1));

    // The save of a tree click fails: the user stays on the rows, and a
    // Shift+click that was undone so names nothing.
    dialogs.answerBox(TaskDialog::IdYes);
    clickNode(3);
    EXPECT_TRUE(locked(3));
    dialogs.answerBox(TaskDialog::IdYes);
    clickNode(4, Qt::ShiftModifier);
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    EXPECT_TRUE(locked(5) && stillOn(1) && dialogs.inputs().empty());
    EXPECT_EQ(rows()[2].factor(2), Currency::fromInt(3));

    // A group name that cannot be saved says so once.
    dialogs.answerInput(u("上水"));
    f.groupNamingItem(1)->trigger();
    ASSERT_EQ(dialogs.boxes().size(), 7u);
    EXPECT_TRUE(locked(6) && dialogs.messages().empty());

    // Closing: the failed save asks what to do; cancel keeps the window.
    dialogs.answerBox(TaskDialog::IdYes);    // save?
    dialogs.answerBox(TaskDialog::IdCancel); // try again, stay, or close?
    EXPECT_TRUE(!f.close() && f.isVisible());
    ASSERT_EQ(dialogs.boxes().size(), 10u);
    EXPECT_TRUE(locked(8) &&
                boxSays(9, "データを保存できませんでした。", "「閉じる」で保存せずに終了します。"));
    EXPECT_EQ(dialogs.boxes()[9].buttons,
              TaskDialog::ButtonRetry | TaskDialog::ButtonCancel | TaskDialog::ButtonClose);
    // Nothing of the store changed all along.
    EXPECT_EQ(dump(1) + dump(2) + dump(3), before);

    // The other program lets go while the question is up; the retry saves.
    dialogs.onBox = [&] {
        if (dialogs.boxes().back().instruction == u("データを保存できませんでした。"))
            other.reset();
    };
    dialogs.answerBox(TaskDialog::IdYes);   // save?
    dialogs.answerBox(TaskDialog::IdRetry); // try again
    EXPECT_TRUE(f.close());
    dialogs.onBox = nullptr;
    EXPECT_TRUE(stored(1, 1, 2, "DATA2") == "3" && dump(2) == before.mid(60, 60));
}

TEST_F(Safety, AStartWhoseLoadFailedNeverWritesItsEmptyRows) {
    const QStringList before = dump(1), group2 = dump(2);
    {
        LockHolder other(db, "EXCLUSIVE");
        open();
    }
    MainWindow& f = *form;
    ASSERT_FALSE(dialogs.boxes().empty() || f.rowsLoaded); // the start's failure was shown
    dialogs.clearRecords();
    f.header()->saveButton()->click();
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(boxSays(0, "確認", "管種が読み込まれていないため、保存できません。"));
    // Nor do the group commands write the empty options over the group.
    f.menus().edit.optionChangeItem->trigger();
    f.menus().edit.labourCostChangeItem->trigger();
    ASSERT_EQ(dialogs.boxes().size(), 3u);
    EXPECT_TRUE(boxSays(2, "確認", "管種が読み込まれていないため、実行できません。"));
    EXPECT_TRUE(f.close() && dialogs.boxes().size() == 3u); // nothing to ask
    EXPECT_TRUE(dump(1) == before && dump(2) == group2);
}

TEST_F(Safety, AnOverflowInShowPipeTypeLeavesTheOptionsWorking) {
    MainWindow& f = open();
    // Prices that no Currency can hold once multiplied.
    for (int r = 1; r <= 14; ++r) {
        rows()[r].submittedPrice = Currency::fromRaw(INT64_MAX / 4);
        rows()[r].factor(1) = Currency::fromInt(100000);
    }
    EXPECT_ANY_THROW(f.showPipeType());
    EXPECT_FALSE(f.refreshing);
    // A name applied with rows that overflow still counts as a change.
    doc().takeSnapshot();
    doc().markSaved();
    f.header()->goodsBox()->setText(u("新しい管材"));
    EXPECT_ANY_THROW(f.applyControls());
    EXPECT_TRUE(doc().isChanged());
    // Sane rows again; an option click is taken at once.
    ws().load(1, 1);
    doc().takeSnapshot();
    const QString before = cell1(2, 4);
    rows()[4].factor(2) = Currency::fromInt(2);
    f.optionPanel()->fractionRadio()->setItemIndex(2);
    f.optionPanel()->fractionRadio()->onClicked();
    EXPECT_EQ(doc().options().elementFraction(), FractionSteps[2]);
    EXPECT_NE(cell1(2, 4), before);
}

// The window file and the network file, read as the form is created.
TEST_F(Safety, TheSavedGeometryAndTheNetworkFileAreTakenUnchanged) {
    QDir().mkpath(dataRoot + "/conf");
    writeWindowFile(dataRoot, "qorvale_k", 30, 20, 1300, 800);
    ASSERT_TRUE(writeTextFile(networkFilePath(dataRoot), {u("[Network_Dir]=//server/共有")}));
    MainWindow created{dialogs, QString()}; // not shown: creation alone
    EXPECT_EQ(created.networkFolder, u("//server/共有"));
    MainWindow& f = open();
    EXPECT_EQ(f.geometry(), QRect(20, 30, 1300, 800));
    // Small screens: the window may be smaller than the form's sheet, which
    // then scrolls.
    EXPECT_TRUE(f.minimumSizeHint().width() <= 1024 && f.minimumSizeHint().height() <= 700);
    f.resize(1024, 700);
    QCoreApplication::processEvents();
    EXPECT_EQ(f.size(), QSize(1024, 700));
    EXPECT_TRUE(f.sheetScroll->verticalScrollBar()->maximum() > 0 ||
                f.sheetScroll->horizontalScrollBar()->maximum() > 0);
}

} // namespace
