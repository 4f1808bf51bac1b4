// The form's print command: the hand-off files and the start of the print
// program.
#include "controls/strcgrid.h"
#include "output/printhandoff.h"
#include "platform/application.h"
#include "platform/datapaths.h"
#include "platform/dialogs.h"
#include "shell/formwidgets.h"
#include "shell/mainwindow.h"

#include <QAction>
#include <QTabBar>

void MainWindow::setupPrintAction() {
    printAction->setEnabled(true);
    connect(printAction, &QAction::triggered, this, [this] {
        try {
            printPipeType();
        } catch (...) {
            HandleCurrentException();
        }
    });
}

void MainWindow::printPipeType() {
    // The export of mode 2 puts materialGrid on column 1 of its row, so the
    // next redisplay shows the submitted side.
    materialGrid->SetSelection(TGridRect{1, materialGrid->Row(), 1, materialGrid->Row()});

    ExportSheet sheet;
    for (int t = 0; t < tabs->count(); ++t)
        sheet.tabCaptions << tabs->tabText(t);
    for (int i = 0; i < 3; ++i)
        sheet.statusPanels[std::size_t(i)] = statusPanel(i);

    PrintHandOff h;
    h.dataRoot = paths().dataRoot;
    h.styleIndex = printStyleRadio->ItemIndex();
    h.iconPath = ApplicationIconPath();
    h.date = PrintDate();
    // The rows as they stand: no snapshot, no save, no recalculation. A
    // failed write raises and stops here, before the program is started.
    WritePrintHandOff(h, rows(), sheet);

    // Not waited for; a failed start is not reported.
    CurrentDialogs().StartProcess(PrintProgramPath(), PrintProgramArguments(paths().dataRoot),
                                  QString());
}
