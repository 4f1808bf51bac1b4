// The main form: opening and closing the workspace, and the settings files
// applied to the window.
#include "shell/utankaregist.h"

#include "controls/strcgrid.h"
#include "platform/application.h"
#include "platform/datapaths.h"
#include "platform/dialogs.h"
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

void TFtankaregist::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (shown_) return;
    shown_ = true;
    // The show step runs once the window is on the screen, as the first
    // event handler of the message loop; a failure in it is shown like any
    // other and leaves the window open.
    QTimer::singleShot(0, this, [this] {
        try {
            FormShow();
        } catch (...) {
            HandleCurrentException();
        }
    });
}

void TFtankaregist::FormShow() {
    NoDataFolder = false;
    if (!QDir(DataRoot).exists()) {
        ShowTaskDialog(
            this, ApplicationTitle(),
            QStringLiteral("インストール直後は、Velmora本体を先に一度起動してください。"),
            TaskDialog::IconInformation, TaskDialog::ButtonYes, QString());
        NoDataFolder = true;
        close();
        return;
    }
    WindowRect rect;
    ReadWindowFile(DataRoot, WindowFileName, rect);
    if (rect.Height > 0)
        setGeometry(rect.Left, rect.Top, rect.Width, rect.Height);
    else
        setGeometry(DefaultGeometry());
    ReleaseLabel->setText(ReleaseText);
    ReadDisplayFile();

    SetStatusPanel(5, DatabaseFolder);
    N20->setVisible(true);
    N24->setVisible(true);
    QPalette tips = QToolTip::palette();
    tips.setColor(QPalette::ToolTipBase, QColor(0, 255, 0));
    QToolTip::setPalette(tips);
    SetupSheet();
    ClearRows(RowCount);
    ClearSheet();
    for (QAction* a : {all_paste_1, all_paste_2, all_paste_3, all_paste_4, item_paste_1,
                       item_paste_2, item_paste_3, item_paste_4})
        a->setEnabled(false);
    MainDatabasePath = NativePath(DatabaseFolder + QStringLiteral("\\velmoraMain.db3"));
    AddressDatabasePath = NativePath(DatabaseFolder + QStringLiteral("\\velmoraAddr.db3"));
    ExDatabasePath = ExDatabasePathIn(DatabaseFolder);
    DxDatabasePath = NativePath(DatabaseFolder + QStringLiteral("\\velmoraMainDX.db3"));

    // A file that is no database of the suite is named and left as it is:
    // the window stays empty and nothing is written to the file.
    const QString problem = ExDatabaseProblem(ExDatabasePath);
    if (!problem.isEmpty()) {
        NoDatabase = true;
        if (QWidget* sheet = centralWidget()) sheet->setEnabled(false);
        ShowTaskDialog(this, ApplicationTitle(), QStringLiteral("データベースを開けません。"),
                       TaskDialog::IconError, TaskDialog::ButtonOk,
                       problem + QStringLiteral("\r\nファイル: ") + ExDatabasePath);
        return;
    }

    LoadGroupNames();
    for (int g = 1; g <= 10; ++g)
        FillGroupNodes(g);
    CurrentCtg = CurrentGrp = CurrentKan = 1;
    TreeView1->setCurrentItem(TreeNode(1));
    lastTreeNode_ = TreeNode(1);
    TakeSelection();
    LoadPipeType(CurrentCtg, CurrentGrp, CurrentKan);
    RowsLoaded = true;
    TakeSnapshot();
    ShowPipeType();
    Grid1Col = Grid2Col = 4;
    Grid1Row = Grid2Row = 1;
    for (TStrColGrid* grid : {StrColGrid1, StrColGrid2})
        grid->SetCellColors(0, 1, TColor(SheetMark));
}

QRect TFtankaregist::DefaultGeometry() const {
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

void TFtankaregist::closeEvent(QCloseEvent* event) {
    // A group rewrite ends before anything is asked or saved: the close is
    // taken up again once its end has been shown. Waiting here instead would
    // mean an event loop inside the delivery of this event, which is where
    // the worker's calls into this thread can go unserved.
    if (groupRunning_) {
        closeAfterGroupRewrite_ = true;
        event->ignore();
        return;
    }
    // The one way a close is refused: the user's rows could not be saved and
    // the user chooses to stay with them.
    bool canClose = true;
    try {
        canClose = FormCloseQuery();
    } catch (...) {
        HandleCurrentException();
        canClose = NoDataFolder || !RowsLoaded || !PipeTypeChanged() ||
                   CloseWithUnsavedRows(QStringLiteral("変更が保存されていません。"));
    }
    if (!canClose) {
        event->ignore();
        return;
    }
    FormClose();
    event->accept();
}

bool TFtankaregist::CloseWithUnsavedRows(const QString& heading) {
    // The safe answers come first and with Escape: try again, or go back to
    // the window. Only "閉じる" drops the rows.
    for (;;) {
        const int answer = ShowTaskDialog(
            this, ApplicationTitle(), heading, TaskDialog::IconWarning,
            TaskDialog::ButtonRetry | TaskDialog::ButtonCancel | TaskDialog::ButtonClose,
            QStringLiteral("「再試行」でもう一度保存します。\r\n"
                           "「キャンセル」で画面に戻ります。\r\n"
                           "「閉じる」で保存せずに終了します。"));
        if (answer == TaskDialog::IdClose) return true;
        if (answer != TaskDialog::IdRetry) return false;
        const SaveResult result = SaveCurrentPipeType(0);
        if (result != SaveResult::Failed) return result == SaveResult::Saved;
    }
}

bool TFtankaregist::FormCloseQuery() {
    if (NoDataFolder) return true;
    WaitForGroupRewrite(); // no pipe type of a running group rewrite is left half-written
    if (!NoDatabase) {
        ApplyControls();
        // A change made elsewhere: the user's answer keeps the window, with
        // the rows kept or read again.
        const SaveResult result = AskToSave();
        if (result == SaveResult::Declined) return false;
        if (result == SaveResult::Failed &&
            !CloseWithUnsavedRows(QStringLiteral("データを保存できませんでした。")))
            return false;
    }
    // The rows are safe by now; a display file that cannot be written (the
    // data folder gone, the disk full) is said and does not keep the window.
    try {
        WriteDisplayFile();
    } catch (const EInOutError& e) {
        ShowTaskDialog(this, ApplicationTitle(), QStringLiteral("表示設定を保存できませんでした。"),
                       TaskDialog::IconWarning, TaskDialog::ButtonOk, QString::fromUtf8(e.what()));
    }
    return true;
}

void TFtankaregist::FormClose() {
    if (NoDataFolder) return;
    const QRect g = geometry();
    WriteWindowFile(DataRoot, WindowFileName, g.top(), g.left(), g.width(), g.height());
}

void TFtankaregist::ReadDisplayFile() {
    DisplaySettings s;
    s.TreeUse = tree_list->isChecked();
    s.StatusUse = status_bar->isChecked();
    if (ReadDisplaySettings(DataRoot, s)) {
        tree_list->setChecked(s.TreeUse);
        status_bar->setChecked(s.StatusUse);
        if (s.HasTreeViewWidth) SetTreeViewWidth(s.TreeViewWidth);
    }
    if (!tree_list->isChecked()) TreeView1->hide();
    if (!status_bar->isChecked()) StatusBar1->hide();
}

void TFtankaregist::SetTreeViewWidth(int width) {
    // The left panel is as wide as the tree in it.
    QList<int> sizes = TreeSplitter->sizes();
    const int total = sizes.value(0) + sizes.value(1);
    const int w = std::max(0, width);
    TreeSplitter->setSizes({w, std::max(0, total - w)});
}

void TFtankaregist::WriteDisplayFile() {
    DisplaySettings s;
    s.CheckBox1 = CheckBox1->IsOn();
    s.TreeUse = tree_list->isChecked();
    s.StatusUse = status_bar->isChecked();
    s.TreeViewWidth = TreeView1->width();
    WriteDisplaySettings(DataRoot, s);
}
