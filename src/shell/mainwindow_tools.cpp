// The main form: the about dialog and the small tools of the File menu.
#include "shell/mainwindow.h"

#include "platform/dialogs.h"
#include "shell/aboutdialog.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

QString installFolder() {
    return QDir::toNativeSeparators(QCoreApplication::applicationDirPath());
}

QString calculatorProgram() {
    for (const char* name : {"gnome-calculator", "kcalc", "mate-calc", "galculator", "qalculate-qt",
                             "qalculate-gtk", "xcalc"}) {
        const QString path = QStandardPaths::findExecutable(QString::fromLatin1(name));
        if (!path.isEmpty()) return path;
    }
    return QString();
}

void MainWindow::showAbout() {
    if (formDialogs_.about) {
        formDialogs_.about->exec();
        return;
    }
    AboutDialog dialog(dialogs_, this);
    dialog.exec();
}

void MainWindow::showInstallFolder() {
    showInfoDialog(dialogs_, this, QStringLiteral("確認"),
                   QStringLiteral("現在のインストールフォルダー\r\n") + installFolder());
}

void MainWindow::startCalculator() {
    const QString program = calculatorProgram();
    if (program.isEmpty()) return;
    dialogs_.startProcess(program, {}, QString());
}
