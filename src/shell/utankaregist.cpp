// The main form: construction and the creation step.
#include "shell/utankaregist.h"

#include "shell/application.h"
#include "shell/datapaths.h"
#include "store/ex_general.h"

#include <QCoreApplication>

QString LaunchStringArgument() {
    return QCoreApplication::arguments().value(1);
}

TFtankaregist::TFtankaregist(const QString& launchString, QWidget* parent) : QMainWindow(parent) {
    setObjectName(QStringLiteral("Ftankaregist"));
    buildMenu();
    buildStatusBar();
    CentralArea = new QWidget(this);
    CentralArea->setObjectName(QStringLiteral("CentralArea"));
    setCentralWidget(CentralArea);
    setGeometry(DefaultLeft, DefaultTop, DefaultWidth, DefaultHeight);

    // A failure in the creation step is shown like any other, and the form
    // stays.
    try {
        FormCreate(launchString);
    } catch (...) {
        HandleCurrentException();
    }
}

TFtankaregist::~TFtankaregist() = default;

void TFtankaregist::FormCreate(const QString& launchString) {
    DataRoot = DataRootPath();
    DatabaseFolder = DatabaseFolderFrom(launchString); // the default string when empty
    SavedLines.clear();
    CurrentLines.clear();
    setWindowTitle(QStringLiteral("Qorvale-Ostrel-"));
}
