// The main form: construction and the creation step.
#include "shell/utankaregist.h"

#include "controls/controlerrors.h"
#include "platform/application.h"
#include "platform/datapaths.h"
#include "shell/settingsfiles.h"
#include "store/ex_general.h"

#include <QCoreApplication>
#include <QFont>

QString LaunchStringArgument() {
    return QCoreApplication::arguments().value(1);
}

TFtankaregist::TFtankaregist(const QString& launchString, QWidget* parent) : QMainWindow(parent) {
    setObjectName(QStringLiteral("Ftankaregist"));
    // The form's font: a Japanese UI face at the size of a desktop form.
    QFont formFont(QStringLiteral("Noto Sans CJK JP"));
    formFont.setPointSize(9);
    setFont(formFont);
    buildMenu();
    buildStatusBar();
    CentralArea = new QWidget(this);
    CentralArea->setObjectName(QStringLiteral("CentralArea"));
    setCentralWidget(CentralArea);
    buildSheet();
    SetupLibraryCommands();
    connectGroupRewrites();
    ConnectOutputs();
    SetupPrintAction();
    setGeometry(DefaultLeft, DefaultTop, DefaultWidth, DefaultHeight);
    SetUndoEnabledHandler([this](bool enabled) { ActionUndo->setEnabled(enabled); });
    ConnectEditCommands();
    // Failures inside the controls' own event handling are shown like any
    // other failure.
    SetControlsExceptionHandler([](const QString& message) {
        ShowException(std::make_exception_ptr(std::runtime_error(message.toStdString())));
    });

    // A failure in the creation step is shown like any other, and the form
    // stays.
    try {
        FormCreate(launchString);
    } catch (...) {
        HandleCurrentException();
    }
}

TFtankaregist::~TFtankaregist() {
    WaitForGroupRewrite();
    SetUndoEnabledHandler(nullptr);
}

void TFtankaregist::FormCreate(const QString& launchString) {
    DataRoot = DataRootPath();
    NetworkFolder = ReadNetworkDir(DataRoot);
    DatabaseFolder = DatabaseFolderFrom(launchString); // the default string when empty
    SavedLines.clear();
    CurrentLines.clear();
    setWindowTitle(QStringLiteral("Qorvale-Ostrel-"));
}
