// The main form: opening and closing the workspace, and the settings files
// applied to the window.
#include "sheet/pipetypeheader.h"
#include "shell/mainmenu.h"
#include "shell/mainwindow.h"
#include "shell/pipetypetree.h"

#include "shell/grouprewritecommands.h"

#include "shell/aboutdialog.h"

#include "platform/application.h"
#include "platform/datapaths.h"
#include "platform/dialogs.h"
#include "sheet/pricesheet.h"
#include "sheet/sheettexts.h"
#include "shell/formwidgets.h"
#include "shell/settingsfiles.h"
#include "shell/versionblock.h"
#include "store/pipetypestore.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QLabel>
#include <QPalette>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QTimer>
#include <QToolTip>
#include <QTreeWidget>

namespace {
const QString WindowFileName = QStringLiteral("qorvale_k");
}

void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (shown_) return;
    shown_ = true;
    // The show step runs once the window is on the screen, as the first
    // event handler of the message loop; a failure in it is shown like any
    // other and leaves the window open.
    QTimer::singleShot(0, this, [this] {
        try {
            prepareShow();
        } catch (...) {
            handleCurrentException(dialogs_);
        }
    });
}

void MainWindow::prepareShow() {
    noDataFolder = false;
    if (!QDir(paths().dataRoot).exists()) {
        showTaskDialog(
            dialogs_, this, applicationTitle(),
            QStringLiteral("インストール直後は、Velmora本体を先に一度起動してください。"),
            TaskDialog::IconInformation, TaskDialog::ButtonYes, QString());
        noDataFolder = true;
        close();
        return;
    }
    WindowRect rect;
    readWindowFile(paths().dataRoot, WindowFileName, rect);
    if (rect.Height > 0)
        setGeometry(rect.Left, rect.Top, rect.Width, rect.Height);
    else
        setGeometry(defaultGeometry());
    releaseLabel->setText(formDialogs_.about ? formDialogs_.about->releaseText() : QString());
    readDisplayFile();

    setStatusPanel(5, paths().databaseFolder);
    menus_->file.separator->setVisible(true);
    menus_->edit.separator->setVisible(true);
    QPalette tips = QToolTip::palette();
    tips.setColor(QPalette::ToolTipBase, QColor(0, 255, 0));
    QToolTip::setPalette(tips);
    document().clearRows(RowCount);
    clearSheet();
    for (QAction* a : {menus_->edit.pasteWholeTableItem, menus_->edit.pastePricesItem,
                       menus_->edit.pasteAllFactorsItem, menus_->edit.pasteLabourFactorsItem,
                       menus_->detail.pasteDetailItem, menus_->detail.pasteDetailPricesItem,
                       menus_->detail.pasteDetailFactorsItem, menus_->detail.pasteDetailLabourItem})
        a->setEnabled(false);
    workspace_->paths().nameDatabaseFiles();

    // A file that is no database of the suite is named and left as it is:
    // the window stays empty and nothing is written to the file.
    const QString problem = exDatabaseProblem(paths().exDatabase);
    if (!problem.isEmpty()) {
        noDatabase = true;
        if (QWidget* sheet = centralWidget()) sheet->setEnabled(false);
        showTaskDialog(dialogs_, this, applicationTitle(),
                       QStringLiteral("データベースを開けません。"), TaskDialog::IconError,
                       TaskDialog::ButtonOk,
                       problem + QStringLiteral("\r\nファイル: ") + paths().exDatabase);
        return;
    }

    loadGroupNames();
    for (int g = 1; g <= 10; ++g)
        fillGroupNodes(g);
    currentCategory = currentGroup = currentPipeType = 1;
    tree->setCurrentItem(tree->node(1));
    lastTreeNode_ = tree->node(1);
    takeSelection();
    workspace_->load(currentGroup, currentPipeType);
    rowsLoaded = true;
    document().takeSnapshot();
    showPipeType();
    sheet_->resetCells();
}

QRect MainWindow::defaultGeometry() const {
    // The form's own size, unless the screen is smaller: then the window
    // fills the screen and the sheet scrolls. A saved geometry is never
    // changed.
    QRect g(DefaultLeft, DefaultTop, DefaultWidth, DefaultHeight);
    if (const QScreen* s = screen() ? screen() : QGuiApplication::primaryScreen()) {
        // The window frame: as the desktop has put it around the window, or
        // a title bar's height before it has.
        QSize frame = frameGeometry().size() - geometry().size();
        if (frame.isEmpty())
            frame = QSize(0, style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this));
        const QRect avail = s->availableGeometry().adjusted(0, 0, -frame.width(), -frame.height());
        if (g.width() > avail.width() || g.height() > avail.height()) {
            g.moveTopLeft(avail.topLeft());
            g.setSize(g.size().boundedTo(avail.size()));
        }
    }
    return g;
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // A group rewrite ends before anything is asked or saved: the close is
    // taken up again once its end has been shown. Waiting here instead would
    // mean an event loop inside the delivery of this event, which is where
    // the worker's calls into this thread can go unserved.
    if (groupRewrite_->running()) {
        groupRewrite_->closeWhenEnded();
        event->ignore();
        return;
    }
    // The one way a close is refused: the user's rows could not be saved and
    // the user chooses to stay with them.
    bool canClose = true;
    try {
        canClose = mayClose();
    } catch (...) {
        handleCurrentException(dialogs_);
        canClose = noDataFolder || !rowsLoaded || !document().isChanged() ||
                   closeWithUnsavedRows(QStringLiteral("変更が保存されていません。"));
    }
    if (!canClose) {
        event->ignore();
        return;
    }
    finishClose();
    event->accept();
}

bool MainWindow::closeWithUnsavedRows(const QString& heading) {
    // The safe answers come first and with Escape: try again, or go back to
    // the window. Only "閉じる" drops the rows.
    for (;;) {
        const int answer = showTaskDialog(
            dialogs_, this, applicationTitle(), heading, TaskDialog::IconWarning,
            TaskDialog::ButtonRetry | TaskDialog::ButtonCancel | TaskDialog::ButtonClose,
            QStringLiteral("「再試行」でもう一度保存します。\r\n"
                           "「キャンセル」で画面に戻ります。\r\n"
                           "「閉じる」で保存せずに終了します。"));
        if (answer == TaskDialog::IdClose) return true;
        if (answer != TaskDialog::IdRetry) return false;
        const SaveResult result = saveCurrentPipeType(0);
        if (result != SaveResult::Failed) return result == SaveResult::Saved;
    }
}

bool MainWindow::mayClose() {
    if (noDataFolder) return true;
    groupRewrite_->waitForEnd(); // no pipe type of a running group rewrite is left half-written
    if (!noDatabase) {
        applyControls();
        // A change made elsewhere: the user's answer keeps the window, with
        // the rows kept or read again.
        const SaveResult result = askToSave();
        if (result == SaveResult::Declined) return false;
        if (result == SaveResult::Failed &&
            !closeWithUnsavedRows(QStringLiteral("データを保存できませんでした。")))
            return false;
    }
    // The rows are safe by now; a display file that cannot be written (the
    // data folder gone, the disk full) is said and does not keep the window.
    try {
        writeDisplayFile();
    } catch (const FileError& e) {
        showTaskDialog(dialogs_, this, applicationTitle(),
                       QStringLiteral("表示設定を保存できませんでした。"), TaskDialog::IconWarning,
                       TaskDialog::ButtonOk, QString::fromUtf8(e.what()));
    }
    return true;
}

void MainWindow::finishClose() {
    if (noDataFolder) return;
    const QRect g = geometry();
    writeWindowFile(paths().dataRoot, WindowFileName, g.top(), g.left(), g.width(), g.height());
}

void MainWindow::readDisplayFile() {
    DisplaySettings s;
    s.TreeUse = menus_->view.treeListItem->isChecked();
    s.StatusUse = menus_->view.statusBarItem->isChecked();
    if (readDisplaySettings(paths().dataRoot, s)) {
        menus_->view.treeListItem->setChecked(s.TreeUse);
        menus_->view.statusBarItem->setChecked(s.StatusUse);
        if (s.HasTreeViewWidth) setTreeWidth(s.TreeViewWidth);
    }
    if (!menus_->view.treeListItem->isChecked()) tree->hide();
    if (!menus_->view.statusBarItem->isChecked()) statusLine->hide();
}

void MainWindow::setTreeWidth(int width) {
    // The left panel is as wide as the tree in it.
    QList<int> sizes = treeSplitter->sizes();
    const int total = sizes.value(0) + sizes.value(1);
    const int w = std::max(0, width);
    treeSplitter->setSizes({w, std::max(0, total - w)});
}

void MainWindow::writeDisplayFile() {
    DisplaySettings s;
    s.resultsSwitch = header_->resultsSwitch()->isOn();
    s.TreeUse = menus_->view.treeListItem->isChecked();
    s.StatusUse = menus_->view.statusBarItem->isChecked();
    s.TreeViewWidth = tree->width();
    writeDisplaySettings(paths().dataRoot, s);
}
