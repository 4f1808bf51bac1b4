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
    QFileDialog dialog(ownerWidget, m_title, m_rootID);
    dialog.setObjectName(QStringLiteral("FolderDialog"));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::DontUseNativeDialog, true);
    dialog.setOption(QFileDialog::ShowDirsOnly, (m_options & (1u << bifReturnOnlyFSDirs)) != 0);
    if (m_browseCallBackProc) {
        QObject::connect(&dialog, &QFileDialog::directoryEntered, &dialog,
                         [this, &dialog](const QString& folder) {
                             m_browseCallBackProc(&dialog, BFFM_SELCHANGED,
                                                  QDir::toNativeSeparators(folder), m_param);
                         });
        QTimer::singleShot(0, &dialog, [this, &dialog] {
            m_browseCallBackProc(&dialog, BFFM_INITIALIZED, QString(), m_param);
        });
    }
    if (dialog.exec() != QDialog::Accepted) return false;
    const QStringList chosen = dialog.selectedFiles();
    if (chosen.isEmpty()) return false;
    m_folderName = QDir::toNativeSeparators(chosen.first()).left(260);
    m_image = 0;
    return true;
}
