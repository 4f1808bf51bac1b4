#include "shell/grouprewritecommands.h"

#include "sheet/optionpanel.h"

#include "controls/numberedit.h"
#include "engine/grouprewrite.h"
#include "platform/application.h"
#include "platform/datapaths.h"
#include "platform/dialogs.h"
#include "platform/guithread.h"
#include "shell/mainmenu.h"
#include "shell/mainwindow.h"
#include "store/modulewrappersqlite.h"
#include "store/pipetypestore.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QThread>
#include <QVBoxLayout>

#include <utility>

namespace {

const QString RecalcNotice =
    QStringLiteral("複合単価を再計算し、データベースに登録し直します。時間がかかりますので、"
                   "変換中は少々お待ちください。");

bool askToGoOn(Dialogs& dialogs, QWidget* form, const QString& question) {
    return showTaskDialog(dialogs, form, applicationTitle(), QStringLiteral("確認"),
                          TaskDialog::IconQuestion, TaskDialog::ButtonYes | TaskDialog::ButtonNo,
                          question) != TaskDialog::IdNo;
}

} // namespace

// The window over the form while a run works: the progress text and a bar
// over the 20 x 59 steps. The person cannot close it; it goes when the run
// has ended.
class GroupProgressDialog : public QDialog {
public:
    explicit GroupProgressDialog(QWidget* form) : QDialog(form) {
        setObjectName(QStringLiteral("GroupProgress"));
        setWindowTitle(applicationTitle());
        setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
        setWindowModality(Qt::ApplicationModal);
        auto* layout = new QVBoxLayout(this);
        auto* notice =
            new QLabel(QStringLiteral("複合単価を再計算し、データベースに登録しています。"
                                      "しばらくお待ちください。"),
                       this);
        text = new QLabel(this);
        text->setObjectName(QStringLiteral("GroupProgressText"));
        bar = new QProgressBar(this);
        bar->setObjectName(QStringLiteral("GroupProgressBar"));
        bar->setRange(0, GroupRewriteSteps);
        bar->setMinimumWidth(420);
        layout->addWidget(notice);
        layout->addWidget(text);
        layout->addWidget(bar);
    }

    void start() {
        text->clear();
        bar->setValue(0);
        closable = false;
        show();
        raise();
        activateWindow();
    }
    void finish() {
        closable = true;
        hide();
    }

    QLabel* text = nullptr;
    QProgressBar* bar = nullptr;

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

GroupRewriteCommands::GroupRewriteCommands(MainWindow& window, Dialogs& dialogs)
    : QObject(&window), m_window(window), m_dialogs(dialogs) {
    for (QAction* a :
         {window.menus().actions.optionChangeAction, window.menus().actions.labourCostChangeAction})
        a->setEnabled(true);
    connect(window.menus().actions.optionChangeAction, &QAction::triggered, this,
            &GroupRewriteCommands::changeGroupOptions);
    connect(window.menus().actions.labourCostChangeAction, &QAction::triggered, this,
            &GroupRewriteCommands::changeGroupLabourCosts);
}

GroupRewriteCommands::~GroupRewriteCommands() {
    waitForEnd();
}

QDialog* GroupRewriteCommands::progressWindow() const {
    return m_progress;
}

void GroupRewriteCommands::changeGroupOptions() {
    if (m_running || !m_window.rowsAreLoaded(QStringLiteral("実行できません。"))) return;
    if (!askToGoOn(m_dialogs, &m_window,
                   QStringLiteral("グループ内の計算オプションを、表示中のものに変更していい"
                                  "ですか?\r\n") +
                       RecalcNotice))
        return;
    m_window.applyControls();
    // The run loads the current pipe type from the table again: rows whose
    // save did not reach the database would be lost by it, so they stay on
    // the form (the save has shown why). Only then do the other pipe types
    // take the options, so that none is left with new options and prices
    // computed under the old ones.
    if (m_window.saveCurrentPipeType(0) != MainWindow::SaveResult::Saved) return;
    execStatement(
        m_dialogs, m_window.workspace().paths().exDatabase,
        optionChangeStatement(m_window.document().rows()[OptionRow], m_window.currentGroup));
    rewriteGroup(1);
}

void GroupRewriteCommands::changeGroupLabourCosts() {
    if (m_running || !m_window.rowsAreLoaded(QStringLiteral("実行できません。"))) return;
    const Currency cost = m_window.optionPanel()->labourCostCostEdit()->storedCurrency();
    const Currency submitted = m_window.optionPanel()->labourCostSubmittedEdit()->storedCurrency();
    if (!askToGoOn(m_dialogs, &m_window,
                   QStringLiteral("全データの基礎工費を変更しますか?\r\n原価=") + currToStr(cost) +
                       QStringLiteral("円 提出=") + currToStr(submitted) +
                       QStringLiteral("円\r\n") + RecalcNotice))
        return;
    execStatement(m_dialogs, m_window.workspace().paths().exDatabase,
                  labourChangeStatement(cost, submitted));
    rewriteGroup(1);
    showInfoDialog(m_dialogs, &m_window, QStringLiteral("確認"),
                   QStringLiteral("基礎工費を変更しました。"));
}

void GroupRewriteCommands::rewriteGroup(int kind) {
    if (m_running) return;
    // What was left of an earlier run's thread.
    if (m_thread) {
        m_thread->wait();
        delete m_thread;
        m_thread = nullptr;
    }
    if (!m_progress) m_progress = new GroupProgressDialog(&m_window);

    // From here until the end has been shown the worker is the one user of
    // the rows: every control of the form and the menu are closed, and the
    // modal progress window takes the keyboard and the mouse.
    m_running = true;
    m_focus = QApplication::focusWidget();
    m_window.centralWidget()->setEnabled(false);
    m_window.menuBar()->setEnabled(false);
    m_progress->start();
    m_progressShown.invalidate();

    // The worker has its own rows and connections and touches nothing of
    // the window: it hands the progress and its end over to this thread.
    const QString caption = m_window.windowTitle();
    const QString path = m_window.workspace().paths().exDatabase;
    Dialogs& dialogs = m_dialogs;
    const int grp = m_window.currentGroup;
    m_thread = QThread::create([this, kind, caption, path, &dialogs, grp] {
        std::exception_ptr failure;
        // The rows' progress goes over in batches, a few a screen frame; the
        // window still shows every row's caption in turn.
        QStringList texts;
        int lastStep = 0;
        QElapsedTimer sinceSent;
        auto send = [&] {
            if (texts.isEmpty()) return;
            postToThreadOf(this, [this, batch = std::exchange(texts, {}), step = lastStep] {
                showProgress(batch, step);
            });
            sinceSent.start();
        };
        try {
            runGroupRewrite(path, dialogs, kind, grp, [&](const QString& text, int step) {
                texts.append(text);
                lastStep = step;
                if (!sinceSent.isValid() || sinceSent.elapsed() >= 4) send();
            });
        } catch (...) {
            failure = std::current_exception();
        }
        send(); // the last rows, before the end
        onGuiThread([this, caption, failure] { end(caption, failure); });
    });
    m_thread->setObjectName(QStringLiteral("groupRewrite"));
    m_thread->start();
}

void GroupRewriteCommands::showProgress(const QStringList& texts, int step) {
    for (const QString& text : texts)
        m_window.setWindowTitle(text);
    const QString& text = texts.last();
    // The caption follows every row; the progress window, whose layout costs
    // far more than the row, at most once a screen frame, and at the end.
    if (m_progressShown.isValid() && m_progressShown.elapsed() < 16 && step < GroupRewriteSteps)
        return;
    m_progressShown.start();
    m_progress->text->setText(text);
    m_progress->bar->setValue(step);
}

void GroupRewriteCommands::reopenWindow() {
    // The snapshot is of the rows before the run: an undo now would bring
    // them back out of step with the group.
    m_window.document().setUndoAvailable(false);
    m_progress->finish();
    m_window.centralWidget()->setEnabled(true);
    m_window.menuBar()->setEnabled(true);
    m_window.activateWindow();
    if (m_focus) m_focus->setFocus();
    m_running = false;
}

void GroupRewriteCommands::end(const QString& caption, std::exception_ptr failure) {
    // A close that came during the run goes on once the end has been shown.
    struct CloseWhenShown {
        GroupRewriteCommands* commands;
        ~CloseWhenShown() {
            if (!commands->m_closeWhenEnded) return;
            commands->m_closeWhenEnded = false;
            QMetaObject::invokeMethod(
                &commands->m_window, [w = &commands->m_window] { w->close(); },
                Qt::QueuedConnection);
        }
    } closeWhenShown{this};
    // The pipe type on the sheet as the run has stored it; the rows stay as
    // they were when it cannot be read.
    try {
        m_window.workspace().bringBackPipeType(m_window.currentGroup, m_window.currentPipeType);
    } catch (...) {
        if (!failure) failure = std::current_exception();
    }
    if (failure) {
        // The run ends where it failed, its last progress in the caption;
        // the failure is shown like any other and the window opens again.
        // The run counts as going until then, so a close during the box
        // waits for its end like any other.
        m_progress->finish();
        showException(m_dialogs, failure);
        reopenWindow();
        return;
    }
    m_window.setWindowTitle(caption);
    try {
        m_dialogs.message(&m_window, applicationTitle(), QStringLiteral("終了しました。"));
    } catch (...) {
        reopenWindow();
        throw;
    }
    reopenWindow();
}

void GroupRewriteCommands::waitForEnd() {
    // The worker's last step is a call into this thread, so the wait serves
    // events instead of blocking.
    while (m_running)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    if (m_thread) {
        m_thread->wait();
        delete m_thread;
        m_thread = nullptr;
    }
}
