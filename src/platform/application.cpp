#include "platform/application.h"

#include "platform/dialogs.h"

#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QProxyStyle>
#include <QScreen>
#include <QStyle>
#include <QStyleFactory>
#include <QTranslator>
#include <QWidget>

namespace {

// The chosen style with the program's hint pause.
class HintPauseStyle : public QProxyStyle {
public:
    explicit HintPauseStyle(QStyle* base) : QProxyStyle(base) {}
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override {
        if (hint == SH_ToolTip_WakeUpDelay) return 600;
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};

} // namespace

static QIcon programIcon() {
    // The icons are compiled into the library; the program must ask for them.
    Q_INIT_RESOURCE(qorvale);
    QIcon icon;
    for (int size : {16, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icons/qorvale-%1.png").arg(size), QSize(size, size));
    return icon;
}

Application::Application(int& argc, char** argv)
    : QApplication(argc, argv), m_title(applicationTitle()) {
    installJapaneseTranslation(*this);
    // The desktop matches the windows to the launcher by this name.
    setDesktopFileName(QStringLiteral("com.ostrel.Qorvale"));
    setWindowIcon(programIcon());
}

void centreOnScreen(QWidget* window) {
    QScreen* screen = window->screen() ? window->screen() : QGuiApplication::primaryScreen();
    if (!screen) return;
    QRect frame = window->frameGeometry();
    frame.moveCenter(screen->availableGeometry().center());
    window->move(frame.topLeft());
}

bool installJapaneseTranslation(QCoreApplication& app) {
    // Qt's own texts (file dialogs, context menus, standard buttons) in
    // Japanese, like every text of the program.
    auto* translator = new QTranslator(&app);
    if (translator->load(QLocale(QLocale::Japanese, QLocale::Japan), QStringLiteral("qtbase"),
                         QStringLiteral("_"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        app.installTranslator(translator);
        return true;
    }
    delete translator;
    return false;
}

bool Application::trySetStyle(const QString& name, bool showError) {
    if (QStyle* style = QStyleFactory::create(name)) {
        setStyle(new HintPauseStyle(style));
        return true;
    }
    if (showError && m_dialogs)
        showTaskDialog(*m_dialogs, activeWindow(), m_title,
                       QStringLiteral("スタイル \"%1\" を適用できません。").arg(name),
                       TaskDialog::IconError, TaskDialog::ButtonOk, QString());
    return false;
}

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        if (m_dialogs)
            handleCurrentException(*m_dialogs);
        else
            qWarning("%s", qPrintable(exceptionText(std::current_exception())));
        return false;
    }
}

QString exceptionText(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const std::exception& e) {
        return QString::fromUtf8(e.what());
    } catch (...) {
        return QStringLiteral("不明な例外が発生しました。");
    }
}

Application::~Application() = default;

void Application::setDialogs(std::unique_ptr<Dialogs> dialogs) {
    m_dialogs = std::move(dialogs);
}

void showException(Dialogs& dialogs, const std::exception_ptr& error) {
    const QString text = exceptionText(error);
    auto* app = qobject_cast<Application*>(QCoreApplication::instance());
    const QString title = app ? app->title() : applicationTitle();
    try {
        showTaskDialog(dialogs, QApplication::activeWindow(), title, text, TaskDialog::IconError,
                       TaskDialog::ButtonOk, QString());
    } catch (...) {
        // No dialog implementation to show it with: the text goes to stderr.
        qWarning("%s", qPrintable(text));
    }
}

void handleCurrentException(Dialogs& dialogs) {
    showException(dialogs, std::current_exception());
}
