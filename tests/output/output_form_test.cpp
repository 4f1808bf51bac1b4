// The outputs on the main window: CSV file, clipboard, the print data and
// the workbook of a group, on the demo database.
#include "../support/modal.h"
#include "../support/workspace_fixture.h"
#include "output/outputcommands.h"

#include "output/exceloptionsdialog.h"
#include "output/excelstream.h"
#include "output/exportrows.h"
#include "shell/settingsfiles.h"
#include "store/codepage.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabBar>

namespace {

QByteArray readBytes(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return QByteArray();
    return f.readAll();
}

// A golden text (UTF-8 with LF in the repository) as the bytes of the file:
// code page 932 with CR LF.
QByteArray Golden(const char* name, const QByteArray& actual) {
    const QString path = QStringLiteral(QORVALE_OUTPUT_TEST_DATA "/") + QString::fromLatin1(name);
    if (!qEnvironmentVariableIsEmpty("QORVALE_UPDATE_GOLDEN")) {
        QFile f(path);
        if (f.open(QIODevice::WriteOnly))
            f.write(
                fromAnsi(actual).replace(QStringLiteral("\r\n"), QStringLiteral("\n")).toUtf8());
    }
    const QString text = QString::fromUtf8(readBytes(path));
    EXPECT_FALSE(text.isEmpty()) << name;
    return toAnsi(QString(text).replace(QStringLiteral("\n"), QStringLiteral("\r\n")));
}

class OutputForm : public WorkspaceFixture {
protected:
    // Answers the options dialog: headings, results, then run or cancel.
    void answerOptions(bool headings, bool results, bool run = true) {
        whenModal([headings, results, run](QWidget* w) {
            auto* d = qobject_cast<ExcelOptionsDialog*>(w);
            ASSERT_NE(d, nullptr);
            EXPECT_EQ(d->windowTitle(), u("Qorvale"));
            EXPECT_FALSE(d->headingsCheck->isChecked());
            EXPECT_FALSE(d->resultsCheck->isChecked());
            d->headingsCheck->setChecked(headings);
            d->resultsCheck->setChecked(results);
            (run ? d->runButton : d->cancelButton)->click();
        });
    }
    QByteArray csv(bool headings, bool results) {
        const QString path = dir.filePath(QStringLiteral("out.CSV"));
        answerOptions(headings, results);
        dialogs.answerFile(path);
        form->outputs()->exportCsvFile();
        return readBytes(path);
    }
    void selectGrid2(int col, int row) {
        form->sheet()->materialGrid()->selectCells(QRect(col, row, 1, 1));
    }
    // The refrigerant demo pipe type of group 10.
    void openRefrigerant() {
        clickNode(9 * 21 + 1);
        ASSERT_EQ(form->sheet()->tabs()->count(), 1);
    }
};

TEST_F(OutputForm, DialogTextsAndCloseCountsAsCancel) {
    ExcelOptionsDialog d;
    EXPECT_EQ(d.settingsLabel->text(), u("出力設定"));
    EXPECT_EQ(d.headingsCheck->text(), u("見出しを出力"));
    EXPECT_EQ(d.resultsCheck->text(), u("計算結果を出力"));
    EXPECT_EQ(d.runButton->text(), u("実　行"));
    EXPECT_EQ(d.cancelButton->text(), u("キャンセル"));
    whenModal([](QWidget* w) { w->close(); });
    EXPECT_EQ(d.exec(), ExcelOptionsDialog::ResultCancel);
}

TEST_F(OutputForm, MenuItemsAreJoined) {
    open();
    EXPECT_TRUE(form->menus().externalData.csvFileItem->isEnabled());
    EXPECT_TRUE(form->menus().externalData.clipboardItem->isEnabled());
    EXPECT_TRUE(form->menus().externalData.excelOutItem->isEnabled());
    answerOptions(false, false, false);
    form->menus().externalData.clipboardItem->trigger();
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_TRUE(dialogs.boxes().empty());
}

TEST_F(OutputForm, CsvOfPipingTypeWithHeadingsAndFactors) {
    open();
    ASSERT_EQ(form->sheet()->tabs()->count(), 4);
    const QByteArray bytes = csv(true, false);
    EXPECT_EQ(bytes, Golden("csv_piping_headings_factors.txt", bytes));
    EXPECT_TRUE(bytes.endsWith(",\r\n"));
    EXPECT_FALSE(bytes.startsWith("\xEF\xBB\xBF"));
    ASSERT_EQ(dialogs.fileQuestions().size(), 1u);
    EXPECT_EQ(dialogs.fileQuestions()[0].kind, u("save"));
    EXPECT_EQ(dialogs.fileQuestions()[0].filter, u("*.CSV"));
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_EQ(dialogs.boxes()[0].instruction, u("確認"));
    EXPECT_EQ(dialogs.boxes()[0].content, u("ＣＳＶ出力しました。"));
}

TEST_F(OutputForm, CsvOfPipingTypeWithResultsOnly) {
    open();
    const QByteArray bytes = csv(false, true);
    EXPECT_EQ(bytes, Golden("csv_piping_results.txt", bytes));
}

TEST_F(OutputForm, CsvGetsItsDefaultExtensionAndReplacesTheFile) {
    open();
    const QString path = dir.filePath(QStringLiteral("plain"));
    QFile old(path + QStringLiteral(".CSV"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write(QByteArray(20000, 'x'));
    old.close();
    answerOptions(false, true);
    dialogs.answerFile(path);
    form->outputs()->exportCsvFile();
    const QByteArray bytes = readBytes(path + QStringLiteral(".CSV"));
    EXPECT_EQ(bytes, Golden("csv_piping_results.txt", bytes));
}

TEST_F(OutputForm, CsvOfRefrigerantTypeWithHeadingsAndResults) {
    open();
    openRefrigerant();
    const QByteArray bytes = csv(true, true);
    EXPECT_EQ(bytes, Golden("csv_refrigerant_headings_results.txt", bytes));
    // Element 6 is an empty field: 12 fields, two delimiters in a row.
    EXPECT_TRUE(bytes.contains(",,"));
}

TEST_F(OutputForm, ClipboardOfRefrigerantTypeWithFactors) {
    open();
    openRefrigerant();
    answerOptions(false, false);
    form->outputs()->exportToClipboard();
    const QByteArray text = toAnsi(dialogs.clipboard());
    QByteArray golden = Golden("csv_refrigerant_factors.txt", text + "\r\n");
    EXPECT_EQ(text + "\r\n", golden);
    EXPECT_FALSE(text.endsWith("\n")) << "no line end after the last row";
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_EQ(dialogs.boxes()[0].content, u("クリップボ－ドへコピ－しました。"));
}

TEST_F(OutputForm, ClipboardMatchesTheCsvFileWithoutItsLastLineEnd) {
    open();
    const QByteArray file = csv(true, false);
    answerOptions(true, false);
    form->outputs()->exportToClipboard();
    EXPECT_EQ(toAnsi(dialogs.clipboard()) + "\r\n", file);
}

TEST_F(OutputForm, CancelProducesNothingAndStillMovesTheSelection) {
    open();
    selectGrid2(3, 5);
    answerOptions(true, true, false);
    form->outputs()->exportCsvFile();
    EXPECT_TRUE(dialogs.fileQuestions().empty());
    EXPECT_TRUE(dialogs.boxes().empty());
    EXPECT_EQ(form->sheet()->materialGrid()->selectedCells().left(), 1);
    EXPECT_EQ(form->sheet()->materialGrid()->selectedCells().right(), 1);
    EXPECT_EQ(form->sheet()->materialGrid()->selectedCells().top(), 5);
    EXPECT_EQ(form->sheet()->materialGrid()->selectedCells().bottom(), 5);

    selectGrid2(2, 3);
    dialogs.setClipboard(u("before"));
    answerOptions(true, true, false);
    form->outputs()->exportToClipboard();
    EXPECT_EQ(dialogs.clipboard(), u("before"));
    EXPECT_EQ(form->sheet()->materialGrid()->selectedCells().left(), 1);
    EXPECT_EQ(form->sheet()->materialGrid()->selectedCells().top(), 3);
}

TEST_F(OutputForm, CancelledSaveDialogWritesNothingAndSaysNothing) {
    open();
    answerOptions(true, false);
    dialogs.answerFile(QString());
    form->outputs()->exportCsvFile();
    EXPECT_TRUE(dialogs.boxes().empty());
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList());
}

TEST_F(OutputForm, PrintDataHasNoDialogNoMessageAndKeepsTheMinus) {
    open();
    selectGrid2(2, 4);
    rows()[1].submittedUnitPrice = strToCurr(u("-1234"));
    rows()[1].submittedAmounts[4] = strToCurr(u("-56789"));
    form->outputs()->exportRows(ExportPrint);
    EXPECT_EQ(form->sheet()->materialGrid()->selectedCells().left(), 1);
    EXPECT_TRUE(dialogs.boxes().empty());
    const QByteArray bytes = readBytes(printDataPath(dataRoot));
    const QList<QByteArray> lines = bytes.split('\n');
    ASSERT_EQ(lines.size(), 57); // 56 lines and the final line end
    EXPECT_TRUE(lines[56].isEmpty());
    const QByteArray first = lines[0];
    EXPECT_TRUE(first.startsWith(toAnsi(form->statusPanel(0) + u(";") + form->statusPanel(1) +
                                        u(";") + form->statusPanel(2) + u(";屋内一般;"))));
    EXPECT_TRUE(first.endsWith(";-1,234;\r")) << first.constData();
    EXPECT_TRUE(first.contains(";-56,789;"));
    EXPECT_EQ(first.count(';'), 23);
}

TEST_F(OutputForm, ExcelOutWritesStreamAndWorkbookAndOpensIt) {
    open();
    const QString title = form->windowTitle();
    form->menus().actions.excelOutAction->trigger();
    EXPECT_EQ(form->windowTitle(), title);
    const QByteArray stream = readBytes(excelStreamPath(dataRoot));
    EXPECT_EQ(stream,
              toAnsi(excelStream(db, 1, form->sheet()->tabCaptions()).join(u("\r\n")) + u("\r\n")));
    EXPECT_EQ(stream.count("AutoFit;1;1;;\r\n"), 6);
    ASSERT_EQ(dialogs.documents().size(), 1);
    const QString book = dialogs.documents()[0];
    EXPECT_TRUE(QFile::exists(book));
    EXPECT_EQ(QFileInfo(book).absolutePath(), QFileInfo(dataRoot).absoluteFilePath());
    EXPECT_TRUE(QRegularExpression(u("^\\d{8} \\d{6}\\.xlsx$"))
                    .match(QFileInfo(book).fileName())
                    .hasMatch())
        << book.toStdString();
    EXPECT_TRUE(dialogs.boxes().empty());
}

TEST_F(OutputForm, ExcelOutExportsWhatIsSavedNotTheScreen) {
    open();
    rows()[2].setGoods(u("未保存の用途"));
    form->menus().actions.excelOutAction->trigger();
    const QString stream = fromAnsi(readBytes(excelStreamPath(dataRoot)));
    EXPECT_FALSE(stream.contains(u("未保存の用途")));
    EXPECT_TRUE(stream.contains(u("DATA;2;2;給水;")));
}

TEST_F(OutputForm, ExcelOutFailingToOpenShowsTheErrorBoxUnderTheBusyCaption) {
    open();
    const QString title = form->windowTitle();
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

TEST_F(OutputForm, ExcelOutWithoutTempFolderFailsAndGivesTheCaptionBack) {
    open();
    const QString title = form->windowTitle();
    ASSERT_TRUE(QDir(dataRoot + u("/temp")).removeRecursively());
    EXPECT_THROW(form->outputs()->exportWorkbook(), FileError);
    EXPECT_EQ(form->windowTitle(), title);
    EXPECT_TRUE(dialogs.documents().isEmpty());
    EXPECT_TRUE(QDir(dataRoot).entryList({u("*.xlsx")}, QDir::Files).isEmpty());
}

} // namespace
