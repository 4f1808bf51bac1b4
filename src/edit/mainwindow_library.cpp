// The main form: the standard labour library. An entry keeps every row of a
// pipe type; applying one takes back only the sizes and the labour factors,
// so the prices and the options of the pipe type on screen stay.
#include "shell/mainwindow.h"

#include "edit/fdkfile.h"
#include "edit/labourlibrarydialog.h"
#include "edit/partslibrary.h"
#include "engine/calcrow.h"
#include "platform/application.h"
#include "platform/dialogs.h"
#include "shell/formwidgets.h"
#include "store/piperow.h"

#include <QAction>

#include <memory>

void MainWindow::setupLibraryCommands() {
    connect(saveLibraryAction, &QAction::triggered, this, &MainWindow::saveLibraryEntry);
    connect(loadLibraryAction, &QAction::triggered, this, &MainWindow::applyLibraryEntry);
    saveLibraryAction->setEnabled(true);
    loadLibraryAction->setEnabled(true);
}

void MainWindow::saveLibraryEntry() {
    // The name as it stands in the box, blanks and all.
    const QString name = goodsBox->Text();
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
        WriteFdkFile(PartsEntryPath(folder, name), rows());
    } catch (...) {
        HandleCurrentException();
        return;
    }
    ShowInfoDialog(this, QStringLiteral("確認"),
                   QStringLiteral("選択用標準歩掛として登録しました。"));
}

void MainWindow::applyLibraryEntry() {
    LabourLibraryDialog* dialog = formDialogs_.library;
    std::unique_ptr<LabourLibraryDialog> own;
    if (!dialog) {
        own = std::make_unique<LabourLibraryDialog>(this);
        dialog = own.get();
    }
    dialog->setPanel(0, PartsExtension);
    if (dialog->exec() != LabourLibraryDialog::ResultSelect) return;
    // A pick with no entry selected (the button, or a double click beside the
    // entries) has nothing to apply.
    if (dialog->itemIndex() < 0) return;
    const QString path =
        PartsEntryPath(dialog->Folder(), dialog->selectedEntry(), dialog->panel(0));
    try {
        // A file that ends early stops here: the rows read so far keep what
        // they took, and the message says which they are.
        ReadFdkFile(path, rows());
        recalcAndShowTab();
        // No snapshot: the undo keeps the state before the last edit.
        document().refreshLines();
    } catch (...) {
        // The rows read before the failure count as changed all the same.
        document().refreshLines();
        HandleCurrentException();
    }
}
