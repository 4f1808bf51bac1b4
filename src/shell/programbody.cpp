#include "shell/programbody.h"

#include "edit/labourlibrarydialog.h"
#include "platform/application.h"
#include "platform/dialogs.h"
#include "sheet/sizedialog.h"
#include "shell/aboutdialog.h"
#include "shell/mainwindow.h"

int ProgramBody(Application& app) {
    app.TrySetStyle(QStringLiteral("Fusion"));
    app.SetTitle(ApplicationTitle());

    MainWindow mainForm;
    AboutDialog versionInfo;
    SizeDialog sizeSet;
    LabourLibraryDialog partsSelect;
    mainForm.setFormDialogs({&versionInfo, &sizeSet, &partsSelect});

    mainForm.show();
    app.exec();
    return 0;
}
