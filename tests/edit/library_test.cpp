// The standard labour library on the real window: saving an entry, the
// selection dialog, applying an entry, deleting one, and what fails.
#include "edit/fdkfile.h"
#include "edit/labourlibrarydialog.h"
#include "edit/partslibrary.h"
#include "engine/calcrow.h"
#include "sheet/sheettexts.h"
#include "shell/formwidgets.h"
#include "store/codepage.h"

#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QStatusBar>
#include <QTabBar>

#include <dirent.h>

#include "fdkgolden.h"
#include "support/modal.h"
#include "support/workspace_fixture.h"

namespace {

QByteArray readAll(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return QByteArray();
    return f.readAll();
}

void writeAll(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    ASSERT_EQ(f.write(bytes), bytes.size());
}

// Every field of two rows.
void expectSameRow(const PipeRow& a, const PipeRow& b, int r) {
    EXPECT_EQ(a.key, b.key) << r;
    EXPECT_EQ(a.goodsBytes, b.goodsBytes) << r;
    EXPECT_EQ(a.kindBytes, b.kindBytes) << r;
    EXPECT_EQ(a.sortOrder, b.sortOrder) << r;
    EXPECT_EQ(a.sizeBytes, b.sizeBytes) << r;
    EXPECT_EQ(a.otherMethod, b.otherMethod) << r;
    EXPECT_EQ(a.unitBytes, b.unitBytes) << r;
    EXPECT_EQ(a.modeFlag, b.modeFlag) << r;
    EXPECT_EQ(a.costPrice, b.costPrice) << r;
    EXPECT_EQ(a.submittedPrice, b.submittedPrice) << r;
    EXPECT_EQ(a.listPrice, b.listPrice) << r;
    EXPECT_EQ(a.factors, b.factors) << r;
    EXPECT_EQ(a.costUnitPrice, b.costUnitPrice) << r;
    EXPECT_EQ(a.submittedUnitPrice, b.submittedUnitPrice) << r;
    EXPECT_EQ(a.adoptedUnitPrice, b.adoptedUnitPrice) << r;
    EXPECT_EQ(a.costAmounts, b.costAmounts) << r;
    EXPECT_EQ(a.submittedAmounts, b.submittedAmounts) << r;
}

void expectSameRows(const RowTable& a, const RowTable& b) {
    for (int r = 1; r <= RowCount; ++r)
        expectSameRow(a[r], b[r], r);
}

class Library : public WorkspaceFixture {
protected:
    void SetUp() override {
        WorkspaceFixture::SetUp();
        library = dir.filePath(QStringLiteral("library/ex_data"));
        qputenv("QORVALE_LIBRARY_DIR", library.toUtf8());
        // Made at start-up, as the program body does.
        partsSelect = std::make_unique<LabourLibraryDialog>(dialogs);
    }
    void TearDown() override {
        partsSelect.reset();
        qunsetenv("QORVALE_LIBRARY_DIR");
        WorkspaceFixture::TearDown();
    }

    MainWindow& open() {
        MainWindow& f = WorkspaceFixture::open();
        f.setFormDialogs({nullptr, nullptr, partsSelect.get()});
        return f;
    }

    QString entry(const QString& name) const { return partsEntryPath(library, name); }

    // Saves the rows on screen as an entry named as goodsBox says.
    void saveAs(const QString& name) {
        form->header()->goodsBox()->setText(name);
        form->menus().edit.saveLibraryItem->trigger();
    }

    // Opens the dialog by the button beside the name; act runs while it is up.
    void runDialog(std::function<void(LabourLibraryDialog*)> act) {
        bool shown = false;
        whenModal([act, &shown](QWidget* w) {
            auto* dialog = qobject_cast<LabourLibraryDialog*>(w);
            shown = true;
            if (!dialog) {
                ADD_FAILURE() << "not the selection dialog";
                w->close();
                return;
            }
            act(dialog);
            if (dialog->isVisible()) {
                ADD_FAILURE() << "the dialog stayed up";
                dialog->done(LabourLibraryDialog::ResultCancel);
            }
        });
        QTest::mouseClick(form->header()->labourLibraryButton(), Qt::LeftButton);
        EXPECT_TRUE(shown);
    }
    // Selects the entry of that name and presses 選択実行.
    void pick(const QString& name) {
        runDialog([name](LabourLibraryDialog* d) {
            const auto found = d->entryList->findItems(name, Qt::MatchExactly);
            ASSERT_EQ(found.size(), 1);
            d->entryList->setCurrentItem(found.first());
            d->selectButton->click();
        });
    }

    QString library;
    std::unique_ptr<LabourLibraryDialog> partsSelect;
};

TEST_F(Library, CommandsAreEnabledOnTheMenuAndTheButton) {
    MainWindow& f = open();
    EXPECT_TRUE(f.menus().actions.saveLibraryAction->isEnabled());
    EXPECT_TRUE(f.menus().actions.loadLibraryAction->isEnabled());
    EXPECT_TRUE(f.menus().edit.saveLibraryItem->isEnabled());
    EXPECT_TRUE(f.menus().edit.labourLibraryItem->isEnabled());
    EXPECT_TRUE(f.header()->labourLibraryButton()->isEnabled());
    EXPECT_TRUE(f.menus().edit.menu->actions().contains(f.menus().edit.saveLibraryItem));
    EXPECT_TRUE(f.menus().edit.menu->actions().contains(f.menus().edit.labourLibraryItem));
    EXPECT_EQ(f.menus().edit.saveLibraryItem->text(), u("選択用標準歩掛として登録"));
    EXPECT_EQ(f.menus().edit.labourLibraryItem->text(), u("標準歩掛選択"));
    EXPECT_EQ(f.header()->labourLibraryButton()->text(), u("標準歩掛選択"));
}

TEST_F(Library, SaveWritesTheRowsAsTheyStandByteForByte) {
    MainWindow& f = open();
    // Known rows: the demo pipe type with a longer size in row 1, so that row
    // 2's shorter one leaves bytes behind it.
    rows()[1].setSize(QStringLiteral("1000A-"));
    rows()[7].otherMethod = -3;
    rows()[8].key = 123456;
    const RowTable shown = rows();
    // Typed into the box but not applied: the file has the row's old GOODS.
    saveAs(u("標準　鋼管"));
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_EQ(dialogs.boxes()[0].instruction, u("確認"));
    EXPECT_EQ(dialogs.boxes()[0].content, u("選択用標準歩掛として登録しました。"));
    EXPECT_EQ(dialogs.boxes()[0].title, applicationTitle());

    const QByteArray bytes = readAll(entry(u("標準　鋼管")));
    GoldenRecords golden;
    for (int r = 1; r <= 60; ++r)
        golden.append(shown[r]);
    ASSERT_EQ(bytes.size(), 22560);
    EXPECT_EQ(bytes, golden.file);
    // By hand: record 2's SIZE "20A" and then the "0A-" of "1000A-".
    EXPECT_EQ(bytes.mid(376 + 136, 7), QByteArray("\x03"
                                                  "20A0A-",
                                                  7));
    EXPECT_EQ(bytes.mid(5, shown[1].goodsBytes.size()),
              toAnsi(u("水道用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(VA)")));
    EXPECT_EQ(int32In(bytes, 60, 0), 60);                // UKEY of the option row
    EXPECT_EQ(int64In(bytes, 60, 208), 20500 * 10000LL); // DATA4 of row 60
    EXPECT_EQ(int32In(bytes, 7, 144), -3);
    EXPECT_EQ(int32In(bytes, 8, 0), 123456);
    // The shown and the lines are as they were.
    EXPECT_EQ(rows()[1].size(), QStringLiteral("1000A-"));
    EXPECT_EQ(f.header()->goodsBox()->text(), u("標準　鋼管"));
}

TEST_F(Library, SavingTwiceReplacesWithoutAsking) {
    open();
    saveAs(QStringLiteral("entry"));
    rows()[3].factor(5) = Currency::fromRaw(777);
    saveAs(QStringLiteral("entry"));
    ASSERT_EQ(dialogs.boxes().size(), 2u);
    for (const auto& box : dialogs.boxes())
        EXPECT_EQ(box.content, u("選択用標準歩掛として登録しました。"));
    const QByteArray bytes = readAll(entry(QStringLiteral("entry")));
    EXPECT_EQ(bytes.size(), 22560);
    EXPECT_EQ(int64In(bytes, 3, 184 + 4 * 8), 777);
    EXPECT_EQ(QDir(library).entryList(QDir::Files | QDir::Hidden),
              QStringList{QStringLiteral("entry.fdk")});
}

TEST_F(Library, FirstSaveMakesTheFolderAndTheNameIsNotTrimmed) {
    open();
    ASSERT_FALSE(QFileInfo::exists(library));
    saveAs(QStringLiteral(" padded "));
    EXPECT_TRUE(QFileInfo(library + "/ padded .fdk").isFile());
}

TEST_F(Library, NamesThatCanNotBeAFileGiveAMessageAndNoFile) {
    open();
    for (const QString& name :
         {QString(), QStringLiteral("  "), QStringLiteral("a/b"), QStringLiteral("../outside")}) {
        dialogs.clearRecords();
        saveAs(name);
        ASSERT_EQ(dialogs.boxes().size(), 1u) << name.toStdString();
        EXPECT_EQ(dialogs.boxes()[0].instruction, u("確認"));
        EXPECT_TRUE(dialogs.boxes()[0].content.startsWith(u("標準歩掛の名前")))
            << dialogs.boxes()[0].content.toStdString();
        EXPECT_NE(dialogs.boxes()[0].content, u("選択用標準歩掛として登録しました。"));
    }
    EXPECT_FALSE(QFileInfo::exists(library));
    EXPECT_FALSE(QFileInfo::exists(dir.filePath(QStringLiteral("library/outside.fdk"))));
}

// The file name, ".fdk" included, may take 255 bytes in the file system's
// encoding and no more; a double-byte name counts its bytes, not characters.
TEST_F(Library, AFileNameOf255BytesIsTakenAndOneOf256IsRefused) {
    open();
    const QString kanji = QString(83, QChar(0x92FC)); // 鋼: three bytes each
    for (const QString& name : {QString(251, QLatin1Char('a')), QStringLiteral("ab") + kanji,
                                QString(252, QLatin1Char('a')), QStringLiteral("abc") + kanji}) {
        const bool fits = QFile::encodeName(name + QStringLiteral(".fdk")).size() == 255;
        dialogs.clearRecords();
        saveAs(name);
        ASSERT_EQ(dialogs.boxes().size(), 1u);
        EXPECT_EQ(dialogs.boxes()[0].content.startsWith(u("標準歩掛の名前が長すぎます。")), !fits);
        EXPECT_EQ(QFileInfo(library + QLatin1Char('/') + name + QStringLiteral(".fdk")).isFile(),
                  fits);
    }
}

TEST_F(Library, ASaveThatCanNotWriteSaysSoInJapanese) {
    open();
    // The library "folder" is a file.
    QDir().mkpath(dir.filePath(QStringLiteral("library")));
    writeAll(library, QByteArray("x"));
    saveAs(QStringLiteral("entry"));
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_EQ(dialogs.boxes()[0].icon, TaskDialog::IconError);
    EXPECT_TRUE(dialogs.boxes()[0].instruction.startsWith(u("入出力エラー")));
    EXPECT_TRUE(dialogs.boxes()[0].instruction.contains(library));
}

TEST_F(Library, TheDialogListsTheEntriesInTheFoldersOrder) {
    open();
    QDir().mkpath(library);
    const QStringList names = {QStringLiteral("m"),  QStringLiteral("b"), u("鋼管"),
                               QStringLiteral("a"),  QStringLiteral("z"), QStringLiteral("k"),
                               QStringLiteral("c"),  u("銅管"),           QStringLiteral("x"),
                               QStringLiteral("y1"), QStringLiteral("q")};
    for (const QString& n : names)
        writeAll(entry(n), QByteArray(22560, '\0'));
    writeAll(library + "/note.txt", QByteArray("x"));
    QDir(library).mkdir(QStringLiteral("sub.fdk"));
    QStringList expected;
    DIR* d = opendir(QFile::encodeName(library).constData());
    ASSERT_NE(d, nullptr);
    while (dirent* e = readdir(d)) {
        const QString n = QFile::decodeName(e->d_name);
        if (n.endsWith(QStringLiteral(".fdk")) && n != QStringLiteral("sub.fdk"))
            expected << n.chopped(4);
    }
    closedir(d);
    QStringList sorted = expected;
    sorted.sort();
    ASSERT_NE(expected, sorted); // else the order would prove nothing
    QStringList listed;
    QString panel, caption, label;
    QStringList buttons;
    LabourLibraryDialog* seen = nullptr;
    runDialog([&](LabourLibraryDialog* dlg) {
        seen = dlg;
        for (int i = 0; i < dlg->entryList->count(); ++i)
            listed << dlg->entryList->item(i)->text();
        panel = dlg->panel(0);
        caption = dlg->windowTitle();
        label = dlg->captionLabel->text();
        buttons << dlg->selectButton->text() << dlg->cancelButton->text()
                << dlg->deleteButton->text();
        dlg->cancelButton->click();
    });
    EXPECT_EQ(listed, expected);
    EXPECT_EQ(panel, QStringLiteral("fdk"));
    EXPECT_EQ(caption, u("標準歩掛選択"));
    EXPECT_EQ(label, u("標準歩掛選択"));
    EXPECT_EQ(buttons, (QStringList{u("選択実行"), u("キャンセル"), u("削　除")}));
    // The instance made at start-up is the one shown.
    EXPECT_EQ(seen, partsSelect.get());
}

TEST_F(Library, AMissingFolderListsNothing) {
    open();
    int count = -1;
    runDialog([&count](LabourLibraryDialog* d) {
        count = d->entryList->count();
        d->selectButton->click(); // nothing selected: the command ends
    });
    EXPECT_EQ(count, 0);
    EXPECT_FALSE(QFileInfo::exists(library));
    EXPECT_TRUE(dialogs.boxes().empty());
}

class LibraryLoad : public Library {
protected:
    // A file written from the offset table: every record different, and
    // fields that must not be read filled with other values.
    void writeEntry(const QString& name, int records = 60) {
        GoldenRecords golden;
        for (int r = 1; r <= 60; ++r) {
            PipeRow x;
            x.key = 9000 + r;
            x.goodsBytes = "FILE-GOODS";
            x.kindBytes = "FILE-KIND";
            x.sortOrder = Currency::fromInt(42);
            x.sizeBytes = QByteArray("F") + QByteArray::number(r);
            x.otherMethod = 300 + r;
            x.unitBytes = "kg";
            x.modeFlag = 7;
            x.costPrice = Currency::fromInt(11);
            x.submittedPrice = Currency::fromInt(22);
            x.listPrice = Currency::fromInt(33);
            for (int n = 1; n <= 7; ++n)
                x.factor(n) = Currency::fromRaw(r * 100 + n * 10);
            x.costUnitPrice = x.submittedUnitPrice = x.adoptedUnitPrice = Currency::fromInt(-1);
            golden.fill(264, 112, char(0x55));
            golden.append(x);
            fileRows[r] = x;
        }
        QDir().mkpath(library);
        writeAll(entry(name), golden.file.left(records * 376 + (records < 60 ? 200 : 0)));
    }
    // The rows expected after applying fileRows to before.
    RowTable applied(const RowTable& before) {
        RowTable rows = before;
        for (int r = 1; r <= 59; ++r) {
            rows[r].otherMethod = fileRows[r].otherMethod;
            rows[r].sizeBytes = fileRows[r].sizeBytes;
            rows[r].factors = fileRows[r].factors;
            calcRowWith(rows[r], PipeTypeOptions(rows[OptionRow]));
        }
        return rows;
    }
    RowTable fileRows;
};

TEST_F(LibraryLoad, AnEntryChangesSizesAndFactorsOfRowsOneTo59AndNothingElse) {
    MainWindow& f = open();
    writeEntry(QStringLiteral("entry"));
    const RowTable before = rows();
    const RowTable undoBefore = doc().snapshot();
    const QStringList saved = doc().savedLines();
    pick(QStringLiteral("entry"));
    const RowTable expected = applied(before);
    expectSameRows(rows(), expected);
    // Row 60, the options, stays whole; so do the prices and names.
    expectSameRow(rows()[60], before[60], 60);
    EXPECT_EQ(rows()[1].goods(), before[1].goods());
    EXPECT_EQ(rows()[5].costPrice, before[5].costPrice);
    // The sheet shows them, the lines follow, the snapshot stays.
    for (int g = 1; g <= 14; ++g) {
        EXPECT_EQ(cell1(0, g), QStringLiteral("F%1").arg(g));
        EXPECT_EQ(cell2(0, g), QStringLiteral("F%1").arg(g));
        EXPECT_EQ(cell1(2, g), formatAmount(rows()[g].submittedUnitPrice)) << g;
    }
    QStringList lines;
    for (int r = 1; r <= 60; ++r)
        lines << rowLine(rows()[r]);
    EXPECT_EQ(doc().currentLines(), lines);
    EXPECT_EQ(doc().savedLines(), saved);
    EXPECT_TRUE(doc().isChanged());
    expectSameRows(doc().snapshot(), undoBefore);
    EXPECT_TRUE(f.menus().actions.undoAction->isEnabled());
    EXPECT_TRUE(dialogs.boxes().empty());
}

TEST_F(LibraryLoad, TheCurrentTabIsShown) {
    MainWindow& f = open();
    writeEntry(QStringLiteral("entry"));
    f.sheet()->tabs()->setCurrentIndex(2);
    pick(QStringLiteral("entry"));
    EXPECT_EQ(cell1(0, 1), QStringLiteral("F31"));
    EXPECT_EQ(cell1(0, 14), QStringLiteral("F44"));
    // The price grid shows rows 1 to 14 whatever the tab.
    EXPECT_EQ(cell2(1, 1), priceTexts(rows()[1])[0]);
}

TEST_F(LibraryLoad, TheMenuItemAndADoubleClickApplyToo) {
    MainWindow& f = open();
    writeEntry(QStringLiteral("entry"));
    whenModal([](QWidget* w) {
        auto* d = qobject_cast<LabourLibraryDialog*>(w);
        ASSERT_NE(d, nullptr);
        QListWidgetItem* item = d->entryList->item(0);
        const QRect rect = d->entryList->visualItemRect(item);
        // A person's double click: a click, then the second press.
        QTest::mouseClick(d->entryList->viewport(), Qt::LeftButton, {}, rect.center());
        QTest::mouseDClick(d->entryList->viewport(), Qt::LeftButton, {}, rect.center());
    });
    f.menus().edit.labourLibraryItem->trigger();
    EXPECT_EQ(rows()[1].size(), QStringLiteral("F1"));
    EXPECT_EQ(partsSelect->result(), LabourLibraryDialog::ResultSelect);
}

TEST_F(LibraryLoad, NoEntrySelectedTouchesNothing) {
    open();
    writeEntry(QStringLiteral("entry"));
    const RowTable before = rows();
    const QStringList lines = doc().currentLines();
    runDialog([](LabourLibraryDialog* d) { d->selectButton->click(); });
    // A double click on the empty part of the list ends the dialog as well.
    runDialog([](LabourLibraryDialog* d) {
        const QPoint below(5, d->entryList->viewport()->height() - 3);
        ASSERT_FALSE(d->entryList->itemAt(below));
        QTest::mouseClick(d->entryList->viewport(), Qt::LeftButton, {}, below);
        QTest::mouseDClick(d->entryList->viewport(), Qt::LeftButton, {}, below);
    });
    EXPECT_EQ(partsSelect->result(), LabourLibraryDialog::ResultSelect);
    expectSameRows(rows(), before);
    EXPECT_EQ(doc().currentLines(), lines);
    EXPECT_TRUE(dialogs.boxes().empty());
}

TEST_F(LibraryLoad, CancelCloseAndEscapeChangeNothingWhileADeletionStays) {
    MainWindow& f = open();
    writeEntry(QStringLiteral("keep"));
    writeEntry(QStringLiteral("gone"));
    const RowTable before = rows();
    const QStringList lines = doc().currentLines();
    const bool undo = f.menus().actions.undoAction->isEnabled();
    dialogs.answerBox(TaskDialog::IdYes);
    QStringList left;
    runDialog([&left](LabourLibraryDialog* d) {
        d->entryList->setCurrentItem(d->entryList->findItems("gone", Qt::MatchExactly).first());
        d->deleteButton->click();
        for (int i = 0; i < d->entryList->count(); ++i)
            left << d->entryList->item(i)->text();
        d->cancelButton->click();
    });
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    const auto& question = dialogs.boxes()[0];
    EXPECT_EQ(question.instruction, u("確認"));
    EXPECT_EQ(question.content, u("削除していいですか?"));
    EXPECT_EQ(question.icon, TaskDialog::IconQuestion);
    EXPECT_EQ(question.buttons, TaskDialog::ButtonYes | TaskDialog::ButtonNo);
    EXPECT_EQ(left, QStringList{QStringLiteral("keep")});
    EXPECT_FALSE(QFileInfo::exists(entry(QStringLiteral("gone"))));
    EXPECT_TRUE(QFileInfo::exists(entry(QStringLiteral("keep"))));
    // The window's close button and Escape answer as キャンセル.
    runDialog([](LabourLibraryDialog* d) {
        d->entryList->setCurrentRow(0);
        d->close();
    });
    EXPECT_EQ(partsSelect->result(), LabourLibraryDialog::ResultCancel);
    runDialog([](LabourLibraryDialog* d) {
        d->entryList->setCurrentRow(0);
        QTest::keyClick(d->entryList, Qt::Key_Escape);
    });
    EXPECT_EQ(partsSelect->result(), LabourLibraryDialog::ResultCancel);
    expectSameRows(rows(), before);
    EXPECT_EQ(doc().currentLines(), lines);
    EXPECT_EQ(f.menus().actions.undoAction->isEnabled(), undo);
}

TEST_F(LibraryLoad, DeleteAnsweredNoKeepsTheEntryAndAFailedDeleteStillLeavesTheList) {
    open();
    writeEntry(QStringLiteral("a"));
    writeEntry(QStringLiteral("b"));
    dialogs.answerBox(TaskDialog::IdNo);
    dialogs.answerBox(TaskDialog::IdYes);
    int afterNo = 0, afterFailed = 0;
    runDialog([&](LabourLibraryDialog* d) {
        // With nothing selected the button asks nothing.
        d->deleteButton->click();
        d->entryList->setCurrentItem(d->entryList->findItems("a", Qt::MatchExactly).first());
        d->deleteButton->click();
        afterNo = d->entryList->count();
        // Gone from the folder behind the dialog's back: the delete fails
        // quietly and the entry leaves the list.
        QFile::remove(partsEntryPath(d->folder(), QStringLiteral("a")));
        d->deleteButton->click();
        afterFailed = d->entryList->count();
        d->cancelButton->click();
    });
    EXPECT_EQ(afterNo, 2);
    EXPECT_EQ(afterFailed, 1);
    EXPECT_EQ(dialogs.boxes().size(), 2u);
    EXPECT_TRUE(QFileInfo::exists(entry(QStringLiteral("b"))));
}

TEST_F(LibraryLoad, AShortFileStopsWithTheErrorAndKeepsTheRowsReadBeforeIt) {
    MainWindow& f = open();
    writeEntry(QStringLiteral("short"), 20); // 20 records and 200 bytes
    const RowTable before = rows();
    const QStringList lines = doc().currentLines();
    const QString shown = cell1(0, 1);
    pick(QStringLiteral("short"));
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    const auto& box = dialogs.boxes()[0];
    EXPECT_EQ(box.icon, TaskDialog::IconError);
    EXPECT_TRUE(box.instruction.startsWith(u("入出力エラー"))) << box.instruction.toStdString();
    EXPECT_TRUE(box.instruction.contains(entry(QStringLiteral("short"))));
    EXPECT_TRUE(box.instruction.contains(u("7720 バイト"))) << box.instruction.toStdString();
    EXPECT_TRUE(box.instruction.contains(u("1 行目から 20 行目まで")));
    for (int r = 1; r <= 20; ++r) {
        EXPECT_EQ(rows()[r].sizeBytes, fileRows[r].sizeBytes) << r;
        EXPECT_EQ(rows()[r].factors, fileRows[r].factors) << r;
        // Not recalculated.
        EXPECT_EQ(rows()[r].submittedUnitPrice, before[r].submittedUnitPrice) << r;
    }
    for (int r = 21; r <= 60; ++r)
        expectSameRow(rows()[r], before[r], r);
    // No refresh of the sheet; the rows read count as changed, so that the
    // next click asks to save them.
    EXPECT_EQ(cell1(0, 1), shown);
    EXPECT_NE(doc().currentLines(), lines);
    EXPECT_TRUE(doc().isChanged());
    (void)f;
}

TEST_F(LibraryLoad, AfterALoadLeavingThePipeTypeAsksToSave) {
    open();
    writeEntry(QStringLiteral("entry"));
    pick(QStringLiteral("entry"));
    dialogs.answerBox(TaskDialog::IdCancel);
    clickNode(2);
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(dialogs.boxes()[0].content.endsWith(u("データを保存しますか?")));
    EXPECT_EQ(stored(1, 1, 1, "SIZE"), QStringLiteral("15A")); // not saved
}

// What a person does: an entry from one pipe type applied to another keeps
// the prices of the second, and survives a save and a restart.
TEST_F(LibraryLoad, EntryFromOnePipeTypeOnAnotherSurvivesARestart) {
    MainWindow& f = open();
    clickNode(9 * 21 + 1); // 冷媒用銅管: copper sizes, refrigerant factors
    const RowTable first = rows();
    saveAs(u("冷媒標準"));
    f.header()->goodsBox()->setText(first[1].goods()); // the name box as it was
    clickNode(4);                                      // ステンレス鋼鋼管
    ASSERT_NE(rows()[1].size(), first[1].size());
    const RowTable second = rows();
    pick(u("冷媒標準"));
    for (int r = 1; r <= 59; ++r) {
        EXPECT_EQ(rows()[r].sizeBytes, first[r].sizeBytes) << r;
        EXPECT_EQ(rows()[r].factors, first[r].factors) << r;
        EXPECT_EQ(rows()[r].costPrice, second[r].costPrice) << r;
        EXPECT_EQ(rows()[r].submittedPrice, second[r].submittedPrice) << r;
        EXPECT_EQ(rows()[r].listPrice, second[r].listPrice) << r;
        EXPECT_EQ(rows()[r].goodsBytes, second[r].goodsBytes) << r;
    }
    expectSameRow(rows()[60], second[60], 60);
    EXPECT_EQ(cell1(0, 1), first[1].size());
    const RowTable applied = rows();
    // Leaving the pipe type asks; yes saves.
    dialogs.answerBox(TaskDialog::IdYes);
    clickNode(1);
    closeForm();
    open();
    clickNode(4);
    for (int r = 1; r <= 59; ++r) {
        EXPECT_EQ(rows()[r].sizeBytes, first[r].sizeBytes) << r;
        EXPECT_EQ(rows()[r].factors, first[r].factors) << r;
        EXPECT_EQ(rows()[r].costPrice, second[r].costPrice) << r;
        EXPECT_EQ(rows()[r].submittedUnitPrice, applied[r].submittedUnitPrice) << r;
    }
    EXPECT_EQ(cell1(0, 1), first[1].size());
}

} // namespace
