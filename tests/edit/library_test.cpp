// The standard labour library on the real window: saving an entry, the
// selection dialog, applying an entry, deleting one, and what fails.
#include "edit/fdkfile.h"
#include "edit/labourlibrarydialog.h"
#include "edit/partslibrary.h"
#include "engine/calcrow.h"
#include "sheet/sheettexts.h"
#include "shell/formwidgets.h"

#include <QListWidget>

#include "fdkgolden.h"
#include "support/workspace_fixture.h"

namespace {

const char* const Saved = "選択用標準歩掛として登録しました。";

class Library : public WorkspaceFixture {
protected:
    void SetUp() override {
        WorkspaceFixture::SetUp();
        library = dir.filePath(QStringLiteral("library/ex_data"));
        qputenv("QORVALE_LIBRARY_DIR", library.toUtf8());
        // Made at start-up, as the program body does.
        partsSelect = std::make_unique<LabourLibraryDialog>(dialogs);
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
    // Opens the dialog by the button beside the name, or from the menu; act
    // runs while it is up and must end it.
    void runDialog(std::function<void(LabourLibraryDialog*)> act, bool fromMenu = false) {
        whenModal([act](QWidget* w) {
            if (auto* d = qobject_cast<LabourLibraryDialog*>(w)) act(d);
            if (w->isVisible()) {
                ADD_FAILURE() << "not the selection dialog, or it stayed up";
                w->close();
            }
        });
        if (fromMenu)
            form->menus().edit.labourLibraryItem->trigger();
        else
            QTest::mouseClick(form->header()->labourLibraryButton(), Qt::LeftButton);
    }
    static void select(LabourLibraryDialog* d, const char* name) {
        const auto found = d->entryList->findItems(QString::fromUtf8(name), Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1);
        d->entryList->setCurrentItem(found.first());
    }
    static QStringList listed(LabourLibraryDialog* d) {
        QStringList names;
        for (int i = 0; i < d->entryList->count(); ++i)
            names << d->entryList->item(i)->text();
        return names;
    }
    // An entry of the rows seeded seed + 1 to seed + 60, the CALC place
    // filled; records whole records and 200 bytes when fewer than 60.
    void writeEntry(const char* name, int seed = 100, int records = 60) {
        GoldenRecords golden;
        golden.fill(264, 112, char(0x55));
        for (int r = 1; r <= 60; ++r)
            golden.append(seeded(seed + r));
        QDir().mkpath(library);
        writeFileBytes(entry(u(name)), golden.file.left(records * 376 + (records < 60 ? 200 : 0)));
    }
    void expectRows(const RowTable& expected) {
        for (int r = 1; r <= RowCount; ++r)
            EXPECT_EQ(rowImage(rows()[r]), rowImage(expected[r])) << r;
    }

    QString library;
    std::unique_ptr<LabourLibraryDialog> partsSelect;
};

TEST_F(Library, SaveWritesTheRowsAsTheyStandByteForByte) {
    open();
    ASSERT_FALSE(QFileInfo::exists(library)); // the first save makes the folder
    // Known rows: the demo pipe type with a longer size in row 1, so that row
    // 2's shorter one leaves bytes behind it.
    rows()[1].setSize(QStringLiteral("1000A-"));
    rows()[7].otherMethod = -3;
    rows()[8].key = 123456;
    const RowTable shown = rows();
    // Typed into the box but not applied: the file has the row's old GOODS.
    // The name is not trimmed.
    const QString name = u(" 標準　鋼管 ");
    saveAs(name);
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_EQ(dialogs.boxes()[0].instruction + dialogs.boxes()[0].content, u("確認") + u(Saved));

    const QByteArray bytes = fileBytes(library + u("/ 標準　鋼管 .fdk"));
    GoldenRecords golden;
    for (int r = 1; r <= 60; ++r)
        golden.append(shown[r]);
    // The old GOODS of row 1, the longer size of row 1 behind row 2's, the
    // changed fields of rows 7 and 8: all in the golden records.
    EXPECT_EQ(bytes, golden.file);

    // Saving again replaces without asking.
    rows()[3].factor(5) = Currency::fromRaw(777);
    saveAs(name);
    ASSERT_EQ(dialogs.boxes().size(), 2u);
    EXPECT_EQ(intIn<qint64>(fileBytes(entry(name)), 3, 184 + 4 * 8), 777);
}

// Names of no file are refused with a message. The file name, ".fdk"
// included, may take 255 bytes in the file system's encoding and no more; a
// double-byte name counts its bytes, not characters.
TEST_F(Library, AFileNameOf255BytesIsTakenAndOneOf256IsRefused) {
    open();
    const QString kanji = QString(83, QChar(0x92FC)); // 鋼: three bytes each
    const struct {
        QString name;
        const char* refusal; // nullptr: saved
        int bytes;           // of the file name, 0 for no matter
    } cases[] = {{QString(), "標準歩掛の名前がありません", 0},
                 {QStringLiteral("  "), "標準歩掛の名前がありません", 0},
                 {QStringLiteral("a/b"), "標準歩掛の名前に「/」", 0},
                 {QStringLiteral("../outside"), "標準歩掛の名前に「/」", 0},
                 {QString(251, QLatin1Char('a')), nullptr, 255},
                 {QStringLiteral("ab") + kanji, nullptr, 255},
                 {QString(252, QLatin1Char('a')), "標準歩掛の名前が長すぎます。", 256},
                 {QStringLiteral("abc") + kanji, "標準歩掛の名前が長すぎます。", 256}};
    for (const auto& c : cases) {
        if (c.name.size() == 251) { // after the names of no file
            EXPECT_FALSE(QFileInfo::exists(library));
            EXPECT_FALSE(QFileInfo::exists(dir.filePath(QStringLiteral("library/outside.fdk"))));
        }
        ASSERT_TRUE(!c.bytes || QFile::encodeName(c.name + ".fdk").size() == c.bytes);
        dialogs.clearRecords();
        saveAs(c.name);
        ASSERT_EQ(dialogs.boxes().size(), 1u) << c.name.toStdString();
        const QString text = dialogs.boxes()[0].instruction + dialogs.boxes()[0].content;
        EXPECT_TRUE(text.startsWith(u("確認") + u(c.refusal ? c.refusal : Saved)))
            << text.toStdString();
        EXPECT_EQ(QFileInfo(entry(c.name)).isFile(), !c.refusal) << c.name.toStdString();
    }
    // A library "folder" that is a file: it can't be made, and the error says so.
    ASSERT_TRUE(QDir(library).removeRecursively());
    writeFileBytes(library, QByteArray("x"));
    dialogs.clearRecords();
    saveAs(QStringLiteral("entry"));
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_EQ(dialogs.boxes()[0].icon, TaskDialog::IconError);
    EXPECT_TRUE(dialogs.boxes()[0].instruction.startsWith(u("入出力エラー: 標準歩掛のフォルダー")));
    EXPECT_TRUE(dialogs.boxes()[0].instruction.contains(library));
}

// The dialog lists the entries; nothing selected, the deletions, キャンセル
// and Escape change no row. Then a double click on an entry applies it: sizes
// and factors of rows 1 to 59, nothing else. A file that ends early stops
// with the error and keeps the rows read before it.
TEST_F(Library, AnEntryChangesSizesAndFactorsOfRowsOneTo59AndNothingElse) {
    MainWindow& f = open();
    for (const char* name : {"entry", "gone", "lost"})
        writeEntry(name);
    const RowTable before = rows();
    const QStringList saved = doc().savedLines();
    QStringList names;
    LabourLibraryDialog* seen = nullptr;
    runDialog([&](LabourLibraryDialog* d) {
        seen = d;
        names = listed(d);
        // Laid out: the caption, the list and the buttons lie apart inside the dialog.
        const QWidget* parts[] = {d->captionLabel, d->entryList, d->selectButton, d->cancelButton,
                                  d->deleteButton};
        for (const QWidget* a : parts) {
            EXPECT_TRUE(d->rect().contains(a->geometry())) << a->objectName().toStdString();
            for (const QWidget* b : parts)
                EXPECT_TRUE(a == b || !a->geometry().intersects(b->geometry()))
                    << a->objectName().toStdString() << " " << b->objectName().toStdString();
        }
        d->selectButton->click();
    });
    EXPECT_EQ(names, partsEntryNames(library)); // listed with the extension set on the panel
    EXPECT_EQ(seen, partsSelect.get());         // the instance made at start-up
    for (int answer : {TaskDialog::IdNo, TaskDialog::IdYes, TaskDialog::IdYes})
        dialogs.answerBox(answer);
    QStringList afterNo, left;
    runDialog([&](LabourLibraryDialog* d) {
        d->deleteButton->click(); // nothing selected: the button asks nothing
        select(d, "gone");
        d->deleteButton->click();
        afterNo = listed(d);
        d->deleteButton->click();
        // Gone from the folder behind the dialog's back: the delete fails
        // quietly and the entry leaves the list.
        select(d, "lost");
        QFile::remove(entry(QStringLiteral("lost")));
        d->deleteButton->click();
        left = listed(d);
        d->cancelButton->click();
    });
    ASSERT_EQ(dialogs.boxes().size(), 3u);
    const auto& question = dialogs.boxes()[0];
    EXPECT_EQ(question.instruction + question.content, u("確認削除していいですか?"));
    EXPECT_EQ(question.icon, TaskDialog::IconQuestion);
    EXPECT_EQ(question.buttons, TaskDialog::ButtonYes | TaskDialog::ButtonNo);
    EXPECT_EQ(afterNo, names);
    EXPECT_EQ(left, QStringList{QStringLiteral("entry")});
    EXPECT_EQ(QDir(library).entryList(QDir::Files), QStringList{QStringLiteral("entry.fdk")});
    // Escape answers as キャンセル.
    runDialog([](LabourLibraryDialog* d) {
        d->entryList->setCurrentRow(0);
        QTest::keyClick(d->entryList, Qt::Key_Escape);
    });
    EXPECT_EQ(partsSelect->result(), LabourLibraryDialog::ResultCancel);
    expectRows(before);
    EXPECT_EQ(doc().currentLines(), saved);
    EXPECT_FALSE(f.menus().actions.undoAction->isEnabled());

    // From the menu item, a person's double click on the entry: a click, then
    // the second press. The sheet shows the current tab, the price grid the
    // prices of rows 1 to 14 whatever the tab.
    f.sheet()->tabs()->setCurrentIndex(2);
    runDialog(
        [](LabourLibraryDialog* d) {
            const QRect rect = d->entryList->visualItemRect(d->entryList->item(0));
            QTest::mouseClick(d->entryList->viewport(), Qt::LeftButton, {}, rect.center());
            QTest::mouseDClick(d->entryList->viewport(), Qt::LeftButton, {}, rect.center());
        },
        true);
    RowTable expected = before;
    for (int r = 1; r <= 59; ++r) {
        expected[r] = mix(before[r], seeded(100 + r), Size | Yosan | Labour);
        calcRowWith(expected[r], PipeTypeOptions(expected[OptionRow]));
    }
    expectRows(expected);
    for (int g = 1; g <= 14; ++g) {
        EXPECT_EQ(cell1(0, g) + cell2(0, g), QStringLiteral("%1A%1A").arg(130 + g));
        EXPECT_EQ(cell1(2, g), formatAmount(rows()[30 + g].submittedUnitPrice)) << g;
    }
    EXPECT_EQ(cell2(1, 1), priceTexts(rows()[1])[0]);
    // Leaving the pipe type asks to save it.
    EXPECT_TRUE(f.menus().actions.undoAction->isEnabled() && doc().isChanged());

    // 20 records and 200 bytes: rows 1 to 20 take their sizes and factors and
    // are not recalculated; the sheet is not refreshed.
    writeEntry("short", 200, 20);
    const RowTable read = rows();
    const QStringList lines = doc().currentLines();
    const QString shown = cell1(0, 1);
    runDialog([](LabourLibraryDialog* d) {
        select(d, "short");
        d->selectButton->click();
    });
    ASSERT_EQ(dialogs.boxes().size(), 4u);
    const auto& box = dialogs.boxes()[3];
    EXPECT_EQ(box.icon, TaskDialog::IconError);
    EXPECT_TRUE(box.instruction.contains(u("1 行目から 20 行目まで")));
    expected = read;
    for (int r = 1; r <= 20; ++r)
        expected[r] = mix(read[r], seeded(200 + r), Size | Yosan | Labour);
    expectRows(expected);
    EXPECT_EQ(cell1(0, 1), shown);
    // The rows read count as changed, so that the next click asks to save them.
    EXPECT_NE(doc().currentLines(), lines);
}

} // namespace
