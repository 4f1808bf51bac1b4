#include "shell/programbody.h"

#include "edit/labourlibrarydialog.h"
#include "platform/application.h"
#include "platform/dialogs.h"
#include "sheet/sizedialog.h"
#include "shell/aboutdialog.h"
#include "shell/mainwindow.h"

int programBody(Application& app) {
    app.trySetStyle(QStringLiteral("Fusion"));
    app.setTitle(applicationTitle());

    Dialogs& dialogs = *app.dialogs();
    MainWindow mainForm(dialogs);
    AboutDialog versionInfo(dialogs);
    SizeDialog sizeSet;
    LabourLibraryDialog partsSelect(dialogs);
    mainForm.setFormDialogs({&versionInfo, &sizeSet, &partsSelect});

    mainForm.show();
    app.exec();
    return 0;
}
