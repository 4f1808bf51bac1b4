#include "shell/utankaregist.h"

#include "controls/strcgrid.h"
#include "output/excelstream.h"
#include "output/excelworkbook.h"
#include "output/exportrows.h"
#include "output/ulevel_select.h"
#include "platform/datapaths.h"
#include "platform/dialogs.h"
#include "store/codepage.h"
#include "store/ex_general.h"

#include <QCheckBox>
#include <QDateTime>
#include <QFileInfo>
#include <QTabBar>

#include <memory>

// The outputs of the menu "外部データ入出力(&O)": the pipe type on screen as CSV or
// clipboard text, the data of the print hand-off, and the group as a workbook.

void TFtankaregist::ConnectOutputs() {
    connect(CSV1, &QAction::triggered, this, &TFtankaregist::CSV1Click);
    connect(N19, &QAction::triggered, this, &TFtankaregist::N19Click);
    connect(ActionExcelOut, &QAction::triggered, this, &TFtankaregist::ActionExcelOutExecute);
    CSV1->setEnabled(true);
    N19->setEnabled(true);
    ActionExcelOut->setEnabled(true);
}

QStringList TFtankaregist::TabCaptions() const {
    QStringList captions;
    for (int t = 0; t < TabControl1->count(); ++t)
        captions << TabControl1->tabText(t);
    return captions;
}

void TFtankaregist::ExportRows(int mode) {
    const auto dialog = std::make_unique<Tflevel_select>(this);
    int result = Tflevel_select::ResultCancel;
    if (mode != ExportPrint) result = dialog->exec();

    // The sheet shows the submitted side at its next redisplay.
    const int top = StrColGrid2->Selection().Top;
    TGridRect cell;
    cell.Left = 1;
    cell.Top = top;
    cell.Right = 1;
    cell.Bottom = top;
    StrColGrid2->SetSelection(cell);

    if (mode != ExportPrint && result == Tflevel_select::ResultCancel) return;

    ExportOptions options;
    options.headings = dialog->CheckBox7->isChecked();
    options.resultsOnly = dialog->CheckBox8->isChecked();
    ExportSheet sheet;
    sheet.tabCaptions = TabCaptions();
    for (int i = 0; i < 3; ++i)
        sheet.statusPanels[std::size_t(i)] = StatusPanel(i);
    const QByteArray text = ExportRowsText(mode, KanzaiRows, sheet, options);

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
        WriteExportFile(PrintDataPath(DataRoot), text);
    }
}

void TFtankaregist::CSV1Click() {
    ExportRows(ExportCsv);
}

void TFtankaregist::N19Click() {
    ExportRows(ExportClipboard);
}

void TFtankaregist::ActionExcelOutExecute() {
    // The caption comes back also when the output fails half way.
    struct CaptionBack {
        TFtankaregist* form;
        QString kept;
        ~CaptionBack() { form->setWindowTitle(kept); }
    } captionBack{this, windowTitle()};
    setWindowTitle(ExcelOutCaption);

    const QString streamPath = ExcelStreamPath(DataRoot);
    WriteExcelStream(streamPath, ExcelStream(ExDatabasePath, CurrentGrp, TabCaptions()));
    const QString book = ExcelWorkbookPath(DataRoot, QDateTime::currentDateTime());
    WriteExcelWorkbook(streamPath, book);
    if (!CurrentDialogs().OpenDocument(book))
        ShowTaskDialog(this, QStringLiteral("エラー"), QStringLiteral("起動に失敗しました"),
                       TaskDialog::IconError, TaskDialog::ButtonOk, QString());
}
