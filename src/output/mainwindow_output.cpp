#include "shell/mainwindow.h"

#include "controls/strcgrid.h"
#include "output/exceloptionsdialog.h"
#include "output/excelstream.h"
#include "output/excelworkbook.h"
#include "output/exportrows.h"
#include "platform/datapaths.h"
#include "platform/dialogs.h"
#include "store/codepage.h"
#include "store/piperow.h"

#include <QCheckBox>
#include <QDateTime>
#include <QFileInfo>
#include <QTabBar>

#include <memory>

// The outputs of the menu "外部データ入出力(&O)": the pipe type on screen as CSV or
// clipboard text, the data of the print hand-off, and the group as a workbook.

void MainWindow::connectOutputs() {
    connect(csvFileItem, &QAction::triggered, this, &MainWindow::exportCsvFile);
    connect(clipboardItem, &QAction::triggered, this, &MainWindow::exportToClipboard);
    connect(excelOutAction, &QAction::triggered, this, &MainWindow::exportWorkbook);
    csvFileItem->setEnabled(true);
    clipboardItem->setEnabled(true);
    excelOutAction->setEnabled(true);
}

QStringList MainWindow::tabCaptions() const {
    QStringList captions;
    for (int t = 0; t < tabs->count(); ++t)
        captions << tabs->tabText(t);
    return captions;
}

void MainWindow::exportRows(int mode) {
    const auto dialog = std::make_unique<ExcelOptionsDialog>(this);
    int result = ExcelOptionsDialog::ResultCancel;
    if (mode != ExportPrint) result = dialog->exec();

    // The sheet shows the submitted side at its next redisplay.
    const int top = materialGrid->Selection().Top;
    TGridRect cell;
    cell.Left = 1;
    cell.Top = top;
    cell.Right = 1;
    cell.Bottom = top;
    materialGrid->SetSelection(cell);

    if (mode != ExportPrint && result == ExcelOptionsDialog::ResultCancel) return;

    ExportOptions options;
    options.headings = dialog->headingsCheck->isChecked();
    options.resultsOnly = dialog->resultsCheck->isChecked();
    ExportSheet sheet;
    sheet.tabCaptions = tabCaptions();
    for (int i = 0; i < 3; ++i)
        sheet.statusPanels[std::size_t(i)] = statusPanel(i);
    const QByteArray text = ExportRowsText(mode, rows(), sheet, options);

    if (mode == ExportCsv) {
        QString name =
            CurrentDialogs().SaveFileName(this, QString(), QString(), QStringLiteral("*.CSV"));
        if (name.isEmpty()) return;
        if (QFileInfo(name).suffix().isEmpty()) name += QStringLiteral(".CSV");
        WriteExportFile(name, text);
        ShowInfoDialog(this, QStringLiteral("確認"), QStringLiteral("ＣＳＶ出力しました。"));
    } else if (mode == ExportClipboard) {
        CurrentDialogs().SetClipboardText(FromAnsi(text));
        ShowInfoDialog(this, QStringLiteral("確認"),
                       QStringLiteral("クリップボ－ドへコピ－しました。"));
    } else if (mode == ExportPrint) {
        WriteExportFile(PrintDataPath(paths().dataRoot), text);
    }
}

void MainWindow::exportCsvFile() {
    exportRows(ExportCsv);
}

void MainWindow::exportToClipboard() {
    exportRows(ExportClipboard);
}

void MainWindow::exportWorkbook() {
    // The caption comes back also when the output fails half way.
    struct CaptionBack {
        MainWindow* form;
        QString kept;
        ~CaptionBack() { form->setWindowTitle(kept); }
    } captionBack{this, windowTitle()};
    setWindowTitle(ExcelOutCaption);

    const QString streamPath = ExcelStreamPath(paths().dataRoot);
    WriteExcelStream(streamPath, ExcelStream(paths().exDatabase, currentGroup, tabCaptions()));
    const QString book = ExcelWorkbookPath(paths().dataRoot, QDateTime::currentDateTime());
    WriteExcelWorkbook(streamPath, book);
    if (!CurrentDialogs().OpenDocument(book))
        ShowTaskDialog(this, QStringLiteral("エラー"), QStringLiteral("起動に失敗しました"),
                       TaskDialog::IconError, TaskDialog::ButtonOk, QString());
}
