// The outputs on the main window: CSV file, clipboard, the print data and the workbook of a
// group, on the demo database.
#include "../support/modal.h"
#include "../support/workspace_fixture.h"
#include "output/exceloptionsdialog.h"
#include "output/excelstream.h"
#include "output/exportrows.h"
#include "output/outputcommands.h"
#include "shell/settingsfiles.h"
#include "store/codepage.h"
#include "support/guitesting.h"

namespace {

// A golden text (UTF-8 with LF in the repository) as the bytes of the file: code page 932
// with CR LF.
QByteArray golden(const char* name) {
    const QByteArray text =
        fileBytes(QStringLiteral(QORVALE_OUTPUT_TEST_DATA "/") + QString::fromLatin1(name));
    return toAnsi(QString::fromUtf8(text)).replace("\n", "\r\n");
}

class OutputForm : public WorkspaceFixture {
protected:
    // Triggers the menu item and answers the options dialog: headings, results, run or cancel.
    void output(QAction* item, bool headings, bool results, bool run = true) {
        whenModal([=](QWidget* w) {
            auto* d = qobject_cast<ExcelOptionsDialog*>(w);
            ASSERT_NE(d, nullptr);
            d->headingsCheck->setChecked(headings);
            d->resultsCheck->setChecked(results);
            (run ? d->runButton : d->cancelButton)->click();
        });
        item->trigger();
    }
    // out.CSV in the test's folder after saving under name (null: the save dialog cancelled).
    QByteArray csv(bool headings, bool results, const char* name = "out.CSV") {
        dialogs.answerFile(name ? dir.filePath(QString::fromLatin1(name)) : QString());
        output(form->menus().externalData.csvFileItem, headings, results);
        return fileBytes(dir.filePath(QStringLiteral("out.CSV")));
    }
    QByteArray clipboard(bool headings, bool results) {
        output(form->menus().externalData.clipboardItem, headings, results);
        return toAnsi(dialogs.clipboard()) + "\r\n";
    }
};

// The clipboard has the text of the file without its last line end.
TEST_F(OutputForm, CsvAndClipboardOfBothModesMatchTheirGoldenTexts) {
    open();
    const QByteArray file = csv(true, false);
    EXPECT_EQ(file, golden("csv_piping_headings_factors.txt"));
    EXPECT_EQ(clipboard(true, false), file);
    // A name without extension gets ".CSV"; the longer file of that name is replaced.
    EXPECT_EQ(csv(false, true, "out"), golden("csv_piping_results.txt"));

    clickNode(9 * 21 + 1); // the refrigerant demo pipe type of group 10
    ASSERT_EQ(form->sheet()->tabs()->count(), 1);
    EXPECT_EQ(csv(true, true), golden("csv_refrigerant_headings_results.txt"));
    EXPECT_EQ(clipboard(false, false), golden("csv_refrigerant_factors.txt"));
    EXPECT_EQ(dialogs.boxes().size(), 5u); // one for each text
}

// Cancel, or no dialog at all for the print data: the submitted side is selected all the same.
TEST_F(OutputForm, CancelWritesNothingPrintDataNeedsNoDialogAndExcelOutWritesTheSavedGroup) {
    ExcelOptionsDialog d;
    whenModal([](QWidget* w) { w->close(); });
    EXPECT_EQ(d.exec(), ExcelOptionsDialog::ResultCancel);

    open();
    const auto& items = form->menus().externalData;
    PriceGrid* grid = form->sheet()->materialGrid();
    grid->selectCells(QRect(3, 5, 1, 1));
    output(items.csvFileItem, true, true, false); // no save dialog: none is answered
    EXPECT_EQ(grid->selectedCells(), QRect(1, 5, 1, 1));
    csv(true, false, nullptr);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList());
    grid->selectCells(QRect(2, 4, 1, 1));
    form->outputs()->exportRows(ExportPrint);
    EXPECT_EQ(grid->selectedCells(), QRect(1, 4, 1, 1));
    EXPECT_EQ(fileBytes(printDataPath(dataRoot)), golden("print_data_piping.txt"));
    EXPECT_TRUE(dialogs.boxes().empty() && dialogs.messages().empty());

    // Excel out writes the saved group and opens the workbook, or says why.
    const QString title = form->windowTitle();
    // Without the temp folder: no workbook, the caption given back.
    ASSERT_TRUE(QDir(dataRoot + u("/temp")).removeRecursively());
    EXPECT_THROW(form->outputs()->exportWorkbook(), FileError);
    EXPECT_EQ(form->windowTitle(), title);
    EXPECT_TRUE(dialogs.documents().isEmpty());
    EXPECT_TRUE(QDir(dataRoot).entryList({u("*.xlsx")}, QDir::Files).isEmpty());
    ASSERT_TRUE(QDir(dataRoot).mkdir(u("temp")));

    rows()[2].setGoods(u("未保存の用途"));
    form->menus().actions.excelOutAction->trigger();
    EXPECT_EQ(form->windowTitle(), title);
    const QByteArray stream = fileBytes(excelStreamPath(dataRoot));
    EXPECT_EQ(stream,
              toAnsi(excelStream(db, 1, form->sheet()->tabCaptions()).join(u("\r\n")) + u("\r\n")));
    EXPECT_FALSE(fromAnsi(stream).contains(u("未保存の用途")));
    ASSERT_EQ(dialogs.documents().size(), 1);
    const QFileInfo book(dialogs.documents()[0]);
    EXPECT_TRUE(book.exists() && book.absolutePath() == QFileInfo(dataRoot).absoluteFilePath());

    dialogs.setOpenResult(false);
    QString captionDuringBox;
    dialogs.onBox = [&] { captionDuringBox = form->windowTitle(); };
    form->outputs()->exportWorkbook();
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_EQ(dialogs.boxes()[0].title, u("エラー"));
    EXPECT_EQ(dialogs.boxes()[0].instruction, u("起動に失敗しました"));
    EXPECT_EQ(dialogs.boxes()[0].icon, TaskDialog::IconError);
    EXPECT_EQ(captionDuringBox, u("エクセルファイル出力中・・・しばらくお待ちください"));
    EXPECT_EQ(form->windowTitle(), title);
}

} // namespace
