// The main form: the standard labour library. An entry keeps every row of a
// pipe type; applying one takes back only the sizes and the labour factors,
// so the prices and the options of the pipe type on screen stay.
#include "shell/utankaregist.h"

#include "edit/fdkfile.h"
#include "edit/partslibrary.h"
#include "edit/upartsselect.h"
#include "engine/calcrow.h"
#include "platform/application.h"
#include "platform/dialogs.h"
#include "shell/formwidgets.h"
#include "store/ex_general.h"

#include <QAction>

#include <memory>

void TFtankaregist::SetupLibraryCommands() {
    connect(ActionSaveParts, &QAction::triggered, this, &TFtankaregist::ActionSavePartsExecute);
    connect(ActionLoadparts, &QAction::triggered, this, &TFtankaregist::ActionLoadpartsExecute);
    ActionSaveParts->setEnabled(true);
    ActionLoadparts->setEnabled(true);
}

void TFtankaregist::ActionSavePartsExecute() {
    // The name as it stands in the box, blanks and all.
    const QString name = GOODSBOX->Text();
    const QString problem = PartsNameProblem(name);
    if (!problem.isEmpty()) {
        ShowInfoDialog(this, QStringLiteral("確認"), problem);
        return;
    }
    // The rows as they stand: nothing is taken from the controls or
    // recalculated first.
    try {
        const QString folder = PartsLibraryFolder();
        MakePartsFolder(folder);
        WriteFdkFile(PartsEntryPath(folder, name), KanzaiRows);
    } catch (...) {
        HandleCurrentException();
        return;
    }
    ShowInfoDialog(this, QStringLiteral("確認"),
                   QStringLiteral("選択用標準歩掛として登録しました。"));
}

void TFtankaregist::ActionLoadpartsExecute() {
    TFpartsSelect* dialog = FpartsSelect;
    std::unique_ptr<TFpartsSelect> own;
    if (!dialog) {
        own = std::make_unique<TFpartsSelect>(this);
        dialog = own.get();
    }
    dialog->SetPanel(0, PartsExtension);
    if (dialog->exec() != TFpartsSelect::ResultSelect) return;
    // A pick with no entry selected (the button, or a double click beside the
    // entries) has nothing to apply.
    if (dialog->ItemIndex() < 0) return;
    const QString path =
        PartsEntryPath(dialog->Folder(), dialog->SelectedEntry(), dialog->Panel(0));
    try {
        // A file that ends early stops here: the rows read so far keep what
        // they took, and the message says which they are.
        ReadFdkFile(path, KanzaiRows);
        RecalcAndShowTab();
        // No snapshot: the undo keeps the state before the last edit.
        RefreshLines();
    } catch (...) {
        // The rows read before the failure count as changed all the same.
        RefreshLines();
        HandleCurrentException();
    }
}
