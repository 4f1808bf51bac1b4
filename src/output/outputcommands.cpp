#include "output/outputcommands.h"

#include "controls/pricegrid.h"
#include "output/exceloptionsdialog.h"
#include "output/excelstream.h"
#include "output/excelworkbook.h"
#include "output/exportrows.h"
#include "output/printhandoff.h"
#include "platform/application.h"
#include "platform/datapaths.h"
#include "platform/dialogs.h"
#include "sheet/pipetypeheader.h"
#include "sheet/pricesheet.h"
#include "shell/formwidgets.h"
#include "shell/mainmenu.h"
#include "shell/mainwindow.h"
#include "store/codepage.h"
#include "store/piperow.h"

#include <QAction>
#include <QCheckBox>
#include <QDateTime>
#include <QFileInfo>

#include <memory>

OutputCommands::OutputCommands(MainWindow& window, Dialogs& dialogs)
    : QObject(&window), m_window(window), m_dialogs(dialogs) {
    connect(window.menus().externalData.csvFileItem, &QAction::triggered, this,
            &OutputCommands::exportCsvFile);
    connect(window.menus().externalData.clipboardItem, &QAction::triggered, this,
            &OutputCommands::exportToClipboard);
    connect(window.menus().actions.excelOutAction, &QAction::triggered, this,
            &OutputCommands::exportWorkbook);
    connect(window.menus().actions.printAction, &QAction::triggered, this, [this] {
        try {
            printPipeType();
        } catch (...) {
            handleCurrentException(m_dialogs);
        }
    });
    for (QAction* a :
         {window.menus().externalData.csvFileItem, window.menus().externalData.clipboardItem,
          window.menus().actions.excelOutAction, window.menus().actions.printAction})
        a->setEnabled(true);
}

ExportSheet OutputCommands::sheetTexts() const {
    ExportSheet sheet;
    sheet.tabCaptions = m_window.sheet()->tabCaptions();
    for (int i = 0; i < 3; ++i)
        sheet.statusPanels[std::size_t(i)] = m_window.statusPanel(i);
    return sheet;
}

void OutputCommands::showSubmittedSide(int row) {
    m_window.sheet()->materialGrid()->selectCells(QRect(1, row, 1, 1));
}

void OutputCommands::exportRows(int mode) {
    const auto dialog = std::make_unique<ExcelOptionsDialog>(&m_window);
    int result = ExcelOptionsDialog::ResultCancel;
    if (mode != ExportPrint) result = dialog->exec();
    showSubmittedSide(m_window.sheet()->materialGrid()->selectedCells().top());
    if (mode != ExportPrint && result == ExcelOptionsDialog::ResultCancel) return;

    ExportOptions options;
    options.headings = dialog->headingsCheck->isChecked();
    options.resultsOnly = dialog->resultsCheck->isChecked();
    const QByteArray text = exportRowsText(mode, m_window.document().rows(), sheetTexts(), options);

    if (mode == ExportCsv) {
        QString name =
            m_dialogs.saveFileName(&m_window, QString(), QString(), QStringLiteral("*.CSV"));
        if (name.isEmpty()) return;
        if (QFileInfo(name).suffix().isEmpty()) name += QStringLiteral(".CSV");
        writeExportFile(name, text);
        showInfoDialog(m_dialogs, &m_window, QStringLiteral("確認"),
                       QStringLiteral("ＣＳＶ出力しました。"));
    } else if (mode == ExportClipboard) {
        m_dialogs.setClipboardText(fromAnsi(text));
        showInfoDialog(m_dialogs, &m_window, QStringLiteral("確認"),
                       QStringLiteral("クリップボ－ドへコピ－しました。"));
    } else if (mode == ExportPrint) {
        writeExportFile(printDataPath(m_window.workspace().paths().dataRoot), text);
    }
}

void OutputCommands::exportCsvFile() {
    exportRows(ExportCsv);
}

void OutputCommands::exportToClipboard() {
    exportRows(ExportClipboard);
}

void OutputCommands::exportWorkbook() {
    // The caption comes back also when the output fails half way.
    struct CaptionBack {
        MainWindow& window;
        QString kept;
        ~CaptionBack() { window.setWindowTitle(kept); }
    } captionBack{m_window, m_window.windowTitle()};
    m_window.setWindowTitle(ExcelOutCaption);

    const DataPaths& paths = m_window.workspace().paths();
    const QString streamPath = excelStreamPath(paths.dataRoot);
    writeExcelStream(streamPath, excelStream(paths.exDatabase, m_window.currentGroup,
                                             m_window.sheet()->tabCaptions()));
    const QString book = excelWorkbookPath(paths.dataRoot, QDateTime::currentDateTime());
    writeExcelWorkbook(streamPath, book);
    if (!m_dialogs.openDocument(book))
        showTaskDialog(m_dialogs, &m_window, QStringLiteral("エラー"),
                       QStringLiteral("起動に失敗しました"), TaskDialog::IconError,
                       TaskDialog::ButtonOk, QString());
}

void OutputCommands::printPipeType() {
    showSubmittedSide(m_window.sheet()->materialGrid()->row());
    PrintHandOff h;
    h.dataRoot = m_window.workspace().paths().dataRoot;
    h.styleIndex = m_window.header()->printStyleRadio()->itemIndex();
    h.iconPath = applicationIconPath();
    h.date = m_printDate.isValid() ? m_printDate : QDate::currentDate();
    // The rows as they stand: no snapshot, no save, no recalculation. A
    // failed write raises and stops here, before the program is started.
    writePrintHandOff(h, m_window.document().rows(), sheetTexts());

    // Not waited for; a failed start is not reported.
    m_dialogs.startProcess(printProgramPath(), printProgramArguments(h.dataRoot), QString());
}
