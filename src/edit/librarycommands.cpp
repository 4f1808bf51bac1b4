#include "edit/librarycommands.h"

#include "edit/fdkfile.h"
#include "edit/labourlibrarydialog.h"
#include "edit/partslibrary.h"
#include "platform/application.h"
#include "platform/dialogs.h"
#include "sheet/pipetypeheader.h"
#include "shell/formwidgets.h"
#include "shell/mainmenu.h"
#include "shell/mainwindow.h"
#include "store/piperow.h"

#include <QAction>

#include <memory>

LibraryCommands::LibraryCommands(MainWindow& window, Dialogs& dialogs)
    : QObject(&window), m_window(window), m_dialogs(dialogs) {
    connect(window.menus().actions.saveLibraryAction, &QAction::triggered, this,
            &LibraryCommands::saveLibraryEntry);
    connect(window.menus().actions.loadLibraryAction, &QAction::triggered, this,
            &LibraryCommands::applyLibraryEntry);
    window.menus().actions.saveLibraryAction->setEnabled(true);
    window.menus().actions.loadLibraryAction->setEnabled(true);
}

void LibraryCommands::saveLibraryEntry() {
    // The name as it stands in the box, blanks and all.
    const QString name = m_window.header()->goods();
    const QString problem = partsNameProblem(name);
    if (!problem.isEmpty()) {
        showInfoDialog(m_dialogs, &m_window, QStringLiteral("確認"), problem);
        return;
    }
    // The rows as they stand: nothing is taken from the controls or
    // recalculated first.
    try {
        const QString folder = partsLibraryFolder();
        makePartsFolder(folder);
        writeFdkFile(partsEntryPath(folder, name), m_window.document().rows(), m_recordBuffer);
    } catch (...) {
        handleCurrentException(m_dialogs);
        return;
    }
    showInfoDialog(m_dialogs, &m_window, QStringLiteral("確認"),
                   QStringLiteral("選択用標準歩掛として登録しました。"));
}

void LibraryCommands::applyLibraryEntry() {
    LabourLibraryDialog* dialog = m_window.formDialogs().library;
    std::unique_ptr<LabourLibraryDialog> own;
    if (!dialog) {
        own = std::make_unique<LabourLibraryDialog>(m_dialogs, &m_window);
        dialog = own.get();
    }
    dialog->setPanel(0, PartsExtension);
    if (dialog->exec() != LabourLibraryDialog::ResultSelect) return;
    // A pick with no entry selected (the button, or a double click beside the
    // entries) has nothing to apply.
    if (dialog->itemIndex() < 0) return;
    const QString path =
        partsEntryPath(dialog->folder(), dialog->selectedEntry(), dialog->panel(0));
    try {
        // A file that ends early stops here: the rows read so far keep what
        // they took, and the message says which they are.
        readFdkFile(path, m_window.document().rows(), m_recordBuffer);
        m_window.recalcAndShowTab();
        // No snapshot: the undo keeps the state before the last edit.
        m_window.document().refreshLines();
    } catch (...) {
        // The rows read before the failure count as changed all the same.
        m_window.document().refreshLines();
        handleCurrentException(m_dialogs);
    }
}
