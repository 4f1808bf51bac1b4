#pragma once
// The application object: title, visual style, and the top-level handler
// that shows an exception reaching the event loop and lets the program go on.

#include <QApplication>
#include <QString>

#include <exception>
#include <memory>

class Dialogs;

class Application : public QApplication {
    Q_OBJECT
public:
    Application(int& argc, char** argv);
    ~Application() override;

    QString title() const { return m_title; }
    // The dialogs of the program: the boxes of the top-level handler and of
    // a style that can't be applied. Until they are set, failures go to
    // standard error.
    void setDialogs(std::unique_ptr<Dialogs> dialogs);
    Dialogs* dialogs() const { return m_dialogs.get(); }
    void setTitle(const QString& text) { m_title = text; }

    // Applies a built-in visual style. On failure the error box is shown
    // (when showError is set) and the result is false; the program goes on.
    bool trySetStyle(const QString& name, bool showError = true);

    // The top-level handler: every exception thrown by an event handler
    // ends here and is shown by showException.
    bool notify(QObject* receiver, QEvent* event) override;

private:
    QString m_title;
    std::unique_ptr<Dialogs> m_dialogs;
};

// Puts a window in the middle of the screen it is on (or the primary one).
void centreOnScreen(QWidget* window);

// Installs Qt's Japanese translation on app; false when it is not on the
// system (Qt's texts then stay English).
bool installJapaneseTranslation(QCoreApplication& app);

// The text of an exception as the top-level handler shows it.
QString exceptionText(const std::exception_ptr& error);
// Shows an exception as the top-level handler does: a box with the
// application title, the exception's text, an error icon and OK.
void showException(Dialogs& dialogs, const std::exception_ptr& error);
// showException of the exception being handled; for catch (...) blocks.
void handleCurrentException(Dialogs& dialogs);
