#pragma once
// The two group rewrites of the edit menu (the options and the base labour
// cost of the group on the sheet) and the run of the recalculation on a
// worker thread, with the progress window that keeps the person off the
// rows while the run works.

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <exception>

class Dialogs;
class MainWindow;
class QDialog;
class QThread;
class QWidget;
class GroupProgressDialog;

class GroupRewriteCommands : public QObject {
    Q_OBJECT
public:
    // Joins the two commands to the window's actions and enables them.
    GroupRewriteCommands(MainWindow& window, Dialogs& dialogs);
    ~GroupRewriteCommands() override;

    // The execute handlers of the option change and the labour cost change.
    void changeGroupOptions();
    void changeGroupLabourCosts();
    // Recalculates and saves the 20 pipe types of the current group on a
    // worker thread; kind shows in the progress text. The window stays
    // closed to the person until "終了しました。" has been shown.
    void rewriteGroup(int kind);
    // True from the start of a run until its end has been shown.
    bool running() const { return m_running; }
    // Serves events until the run has ended and its thread is gone; at once
    // when none runs.
    void waitForEnd();
    // A close of the window that came during a run: the window is closed
    // again once the end of the run has been shown.
    void closeWhenEnded() { m_closeWhenEnded = true; }
    // The modal progress window of a run; null before the first run.
    QDialog* progressWindow() const;

private:
    void showProgress(const QStringList& texts, int step);
    void end(const QString& caption, std::exception_ptr failure);
    void reopenWindow();

    MainWindow& m_window;
    Dialogs& m_dialogs;
    bool m_running = false;
    bool m_closeWhenEnded = false;
    QThread* m_thread = nullptr;
    GroupProgressDialog* m_progress = nullptr;
    QElapsedTimer m_progressShown; // when the progress window last changed
    QPointer<QWidget> m_focus;
};
