#include "controls/fldrdlg.h"

#include <QDir>
#include <QFileDialog>
#include <QTimer>
#include <QWidget>

unsigned folderDlgFlags(FolderDialogOptions options) {
    static const unsigned flags[] = {0x1000, 0x2000, 0x0002, 0x0008, 0x0001, 0x0004};
    unsigned out = 0;
    for (int i = 0; i < 6; ++i)
        if (options & (1u << i)) out |= flags[i];
    return out;
}

FolderDialog::FolderDialog(QObject* owner) : QObject(owner) {}

FolderDialog::~FolderDialog() = default;

bool FolderDialog::execute() {
    QWidget* ownerWidget = qobject_cast<QWidget*>(parent());
    QFileDialog dialog(ownerWidget, FTitle, FRootID);
    dialog.setObjectName(QStringLiteral("FolderDialog"));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::DontUseNativeDialog, true);
    dialog.setOption(QFileDialog::ShowDirsOnly, (FOptions & (1u << bifReturnOnlyFSDirs)) != 0);
    if (FBrowseCallBackProc) {
        QObject::connect(&dialog, &QFileDialog::directoryEntered, &dialog,
                         [this, &dialog](const QString& folder) {
                             FBrowseCallBackProc(&dialog, BFFM_SELCHANGED,
                                                 QDir::toNativeSeparators(folder), FParam);
                         });
        QTimer::singleShot(0, &dialog, [this, &dialog] {
            FBrowseCallBackProc(&dialog, BFFM_INITIALIZED, QString(), FParam);
        });
    }
    if (dialog.exec() != QDialog::Accepted) return false;
    const QStringList chosen = dialog.selectedFiles();
    if (chosen.isEmpty()) return false;
    FFolderName = QDir::toNativeSeparators(chosen.first()).left(260);
    FImage = 0;
    return true;
}
