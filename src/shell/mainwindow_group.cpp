// The main form: the two group rewrites and the run of the recalculation on a
// worker thread, with the progress window that keeps the user off the rows
// while the worker owns them.
#include "shell/mainwindow.h"

#include "platform/guithread.h"

#include "controls/numberedit.h"
#include "engine/grouprewrite.h"
#include "platform/application.h"
#include "platform/datapaths.h"
#include "platform/dialogs.h"
#include "store/modulewrappersqlite.h"
#include "store/pipetypestore.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QThread>
#include <QVBoxLayout>

#include <type_traits>
#include <utility>

namespace {

const QString RecalcNotice =
    QStringLiteral("複合単価を再計算し、データベースに登録し直します。時間がかかりますので、"
                   "変換中は少々お待ちください。");

bool askToGoOn(QWidget* form, const QString& question) {
    return ShowTaskDialog(form, ApplicationTitle(), QStringLiteral("確認"),
                          TaskDialog::IconQuestion, TaskDialog::ButtonYes | TaskDialog::ButtonNo,
                          question) != TaskDialog::IdNo;
}

// The window over the form while a run works: the progress text and a bar
// over the 20 x 59 steps. The person cannot close it; it goes when the run
// has ended.
class GroupProgressDialog : public QDialog {
public:
    explicit GroupProgressDialog(QWidget* form) : QDialog(form) {
        setObjectName(QStringLiteral("GroupProgress"));
        setWindowTitle(ApplicationTitle());
        setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
        setWindowModality(Qt::ApplicationModal);
        auto* layout = new QVBoxLayout(this);
        auto* notice =
            new QLabel(QStringLiteral("複合単価を再計算し、データベースに登録しています。"
                                      "しばらくお待ちください。"),
                       this);
        Text = new QLabel(this);
        Text->setObjectName(QStringLiteral("GroupProgressText"));
        Bar = new QProgressBar(this);
        Bar->setObjectName(QStringLiteral("GroupProgressBar"));
        Bar->setRange(0, GroupRewriteSteps);
        Bar->setMinimumWidth(420);
        layout->addWidget(notice);
        layout->addWidget(Text);
        layout->addWidget(Bar);
    }

    void Start() {
        Text->clear();
        Bar->setValue(0);
        closable = false;
        show();
        raise();
        activateWindow();
    }
    void Finish() {
        closable = true;
        hide();
    }

    QLabel* Text = nullptr;
    QProgressBar* Bar = nullptr;

protected:
    // Esc and the window's close do nothing while the run works.
    void reject() override {
        if (closable) QDialog::reject();
    }
    void closeEvent(QCloseEvent* event) override {
        if (closable)
            QDialog::closeEvent(event);
        else
            event->ignore();
    }

private:
    bool closable = true;
};

} // namespace

void MainWindow::connectGroupRewrites() {
    for (QAction* a : {optionChangeAction, labourCostChangeAction})
        a->setEnabled(true);
    connect(optionChangeAction, &QAction::triggered, this, &MainWindow::changeGroupOptions);
    connect(labourCostChangeAction, &QAction::triggered, this, &MainWindow::changeGroupLabourCosts);
}

void MainWindow::changeGroupOptions() {
    if (groupRewriteRunning() || !rowsAreLoaded(QStringLiteral("実行できません。"))) return;
    if (!askToGoOn(this, QStringLiteral("グループ内の計算オプションを、表示中のものに変更していい"
                                        "ですか?\r\n") +
                             RecalcNotice))
        return;
    applyControls();
    // The run loads the current pipe type from the table again: rows whose
    // save did not reach the database would be lost by it, so they stay on
    // the form (the save has shown why). Only then do the other pipe types
    // take the options, so that none is left with new options and prices
    // computed under the old ones.
    if (saveCurrentPipeType(0) != SaveResult::Saved) return;
    ExecStatement(paths().exDatabase, OptionChangeStatement(rows()[OptionRow], currentGroup));
    rewriteGroup(1);
}

void MainWindow::changeGroupLabourCosts() {
    if (groupRewriteRunning() || !rowsAreLoaded(QStringLiteral("実行できません。"))) return;
    const Currency cost = labourCostCostEdit->StoredCurrency();
    const Currency submitted = labourCostSubmittedEdit->StoredCurrency();
    if (!askToGoOn(this, QStringLiteral("全データの基礎工費を変更しますか?\r\n原価=") +
                             CurrToStr(cost) + QStringLiteral("円 提出=") + CurrToStr(submitted) +
                             QStringLiteral("円\r\n") + RecalcNotice))
        return;
    ExecStatement(paths().exDatabase, LabourChangeStatement(cost, submitted));
    rewriteGroup(1);
    ShowInfoDialog(this, QStringLiteral("確認"), QStringLiteral("基礎工費を変更しました。"));
}

void MainWindow::rewriteGroup(int kind) {
    if (groupRunning_) return;
    // What was left of an earlier run's thread.
    if (groupThread_) {
        groupThread_->wait();
        delete groupThread_;
        groupThread_ = nullptr;
    }
    if (!groupProgress_) groupProgress_ = new GroupProgressDialog(this);

    // From here until the end has been shown the worker is the one user of
    // the rows: every control of the form and the menu are closed, and the
    // modal progress window takes the keyboard and the mouse.
    groupRunning_ = true;
    groupFocus_ = QApplication::focusWidget();
    centralWidget()->setEnabled(false);
    menuBar()->setEnabled(false);
    static_cast<GroupProgressDialog*>(groupProgress_)->Start();
    groupProgressShown_.invalidate();

    // The worker has its own rows and connections and touches nothing of
    // the form: it hands the progress and its end over to this thread.
    const QString caption = windowTitle();
    const QString path = paths().exDatabase;
    Dialogs& dialogs = CurrentDialogs();
    const int grp = currentGroup;
    groupThread_ = QThread::create([this, kind, caption, path, &dialogs, grp] {
        std::exception_ptr failure;
        // The rows' progress goes over in batches, a few a screen frame; the
        // window still shows every row's caption in turn.
        QStringList texts;
        int lastStep = 0;
        QElapsedTimer sinceSent;
        auto send = [&] {
            if (texts.isEmpty()) return;
            PostToThreadOf(this, [this, batch = std::exchange(texts, {}), step = lastStep] {
                showGroupProgress(batch, step);
            });
            sinceSent.start();
        };
        try {
            RewriteGroup(path, dialogs, kind, grp, [&](const QString& text, int step) {
                texts.append(text);
                lastStep = step;
                if (!sinceSent.isValid() || sinceSent.elapsed() >= 4) send();
            });
        } catch (...) {
            failure = std::current_exception();
        }
        send(); // the last rows, before the end
        OnGuiThread([this, caption, failure] { endGroupRewrite(caption, failure); });
    });
    groupThread_->setObjectName(QStringLiteral("groupRewrite"));
    groupThread_->start();
}

void MainWindow::showGroupProgress(const QStringList& texts, int step) {
    for (const QString& text : texts)
        setWindowTitle(text);
    const QString& text = texts.last();
    // The caption follows every row; the progress window, whose layout costs
    // far more than the row, at most once a screen frame, and at the end.
    if (groupProgressShown_.isValid() && groupProgressShown_.elapsed() < 16 &&
        step < GroupRewriteSteps)
        return;
    groupProgressShown_.start();
    auto* progress = static_cast<GroupProgressDialog*>(groupProgress_);
    progress->Text->setText(text);
    progress->Bar->setValue(step);
}

void MainWindow::endGroupRewrite(const QString& caption, std::exception_ptr failure) {
    auto reopen = [this] {
        // The snapshot is of the rows before the run: an undo now would bring
        // them back out of step with the group.
        document().setUndoAvailable(false);
        static_cast<GroupProgressDialog*>(groupProgress_)->Finish();
        centralWidget()->setEnabled(true);
        menuBar()->setEnabled(true);
        activateWindow();
        if (groupFocus_) groupFocus_->setFocus();
        groupRunning_ = false;
    };
    // A close that came during the run goes on once the end has been shown.
    struct CloseWhenShown {
        MainWindow* form;
        ~CloseWhenShown() {
            if (!form->closeAfterGroupRewrite_) return;
            form->closeAfterGroupRewrite_ = false;
            QMetaObject::invokeMethod(
                form, [f = form] { f->close(); }, Qt::QueuedConnection);
        }
    } closeWhenShown{this};
    // The pipe type on the sheet as the run has stored it; the rows stay as
    // they were when it cannot be read.
    try {
        workspace_->bringBackPipeType(currentGroup, currentPipeType);
    } catch (...) {
        if (!failure) failure = std::current_exception();
    }
    if (failure) {
        // The run ends where it failed, its last progress in the caption;
        // the failure is shown like any other and the form opens again. The
        // run counts as going until then, so a close during the box waits
        // for its end like any other.
        static_cast<GroupProgressDialog*>(groupProgress_)->Finish();
        ShowException(failure);
        reopen();
        return;
    }
    setWindowTitle(caption);
    try {
        CurrentDialogs().Message(this, ApplicationTitle(), QStringLiteral("終了しました。"));
    } catch (...) {
        reopen();
        throw;
    }
    reopen();
}

void MainWindow::waitForGroupRewrite() {
    // The worker's last step is a call into this thread, so the wait serves
    // events instead of blocking.
    while (groupRunning_)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    if (groupThread_) {
        groupThread_->wait();
        delete groupThread_;
        groupThread_ = nullptr;
    }
}
