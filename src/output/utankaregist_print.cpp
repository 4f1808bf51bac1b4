// The form's print command: the hand-off files and the start of the print
// program.
#include "controls/strcgrid.h"
#include "output/printhandoff.h"
#include "platform/application.h"
#include "platform/datapaths.h"
#include "platform/dialogs.h"
#include "shell/formwidgets.h"
#include "shell/utankaregist.h"

#include <QAction>
#include <QTabBar>

void TFtankaregist::SetupPrintAction() {
    ActionPrint->setEnabled(true);
    connect(ActionPrint, &QAction::triggered, this, [this] {
        try {
            ActionPrintExecute();
        } catch (...) {
            HandleCurrentException();
        }
    });
}

void TFtankaregist::ActionPrintExecute() {
    // The export of mode 2 puts StrColGrid2 on column 1 of its row, so the
    // next redisplay shows the submitted side.
    StrColGrid2->SetSelection(TGridRect{1, StrColGrid2->Row(), 1, StrColGrid2->Row()});

    ExportSheet sheet;
    for (int t = 0; t < TabControl1->count(); ++t)
        sheet.tabCaptions << TabControl1->tabText(t);
    for (int i = 0; i < 3; ++i)
        sheet.statusPanels[std::size_t(i)] = StatusPanel(i);

    PrintHandOff h;
    h.dataRoot = DataRoot;
    h.styleIndex = stylegr->ItemIndex();
    h.iconPath = ApplicationIconPath();
    h.date = PrintDate();
    // The rows as they stand: no snapshot, no save, no recalculation. A
    // failed write raises and stops here, before the program is started.
    WritePrintHandOff(h, KanzaiRows, sheet);

    // Not waited for; a failed start is not reported.
    CurrentDialogs().StartProcess(PrintProgramPath(), PrintProgramArguments(DataRoot), QString());
}
