// The main form: construction and the creation step.
#include "shell/mainwindow.h"
#include "shell/mainmenu.h"

#include "controls/controlerrors.h"
#include "controls/gradpan.h"
#include "controls/numberedit.h"
#include "edit/editcommands.h"
#include "edit/librarycommands.h"
#include "output/outputcommands.h"
#include "platform/application.h"
#include "platform/datapaths.h"
#include "platform/dialogs.h"
#include "sheet/pricesheet.h"
#include "shell/grouprewritecommands.h"
#include "shell/settingsfiles.h"
#include "store/piperow.h"

#include <QCoreApplication>
#include <QFont>

QString launchStringArgument() {
    return QCoreApplication::arguments().value(1);
}

MainWindow::MainWindow(Dialogs& dialogs, const QString& launchString, QWidget* parent)
    : QMainWindow(parent), dialogs_(dialogs) {
    setObjectName(QStringLiteral("MainWindow"));
    workspace_ = new Workspace(this);
    // The form's font: a Japanese UI face at the size of a desktop form.
    QFont formFont(QStringLiteral("Noto Sans CJK JP"));
    formFont.setPointSize(9);
    setFont(formFont);
    buildMenu();
    buildStatusBar();
    centralArea_ = new QWidget(this);
    centralArea_->setObjectName(QStringLiteral("centralArea_"));
    setCentralWidget(centralArea_);
    buildSheet();
    library_ = new LibraryCommands(*this, dialogs_);
    groupRewrite_ = new GroupRewriteCommands(*this, dialogs_);
    outputs_ = new OutputCommands(*this, dialogs_);
    setGeometry(DefaultLeft, DefaultTop, DefaultWidth, DefaultHeight);
    connect(&document(), &PipeTypeDocument::undoAvailableChanged, menus_->actions.undoAction,
            &QAction::setEnabled);
    edits_ = new EditCommands(*this, dialogs_);
    // Failures inside the controls' own event handling are shown like any
    // other failure.
    const FailureHandler showFailure = [this](const QString& message) {
        showException(dialogs_, std::make_exception_ptr(std::runtime_error(message.toStdString())));
    };
    for (NumberEdit* edit : findChildren<NumberEdit*>())
        edit->onFailure = showFailure;
    sheet_->setFailureHandler(showFailure);
    velmoraEmblem->onFailure = showFailure;

    // A failure in the creation step is shown like any other, and the form
    // stays.
    try {
        initialise(launchString);
    } catch (...) {
        handleCurrentException(dialogs_);
    }
}

MainWindow::~MainWindow() {
    groupRewrite_->waitForEnd();
}

void MainWindow::initialise(const QString& launchString) {
    workspace_->paths() = DataPaths::fromLaunchString(launchString);
    networkFolder = readNetworkDir(paths().dataRoot);
    setWindowTitle(QStringLiteral("Qorvale-Ostrel-"));
}
