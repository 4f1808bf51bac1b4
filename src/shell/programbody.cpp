#include "shell/programbody.h"

#include "edit/upartsselect.h"
#include "platform/application.h"
#include "platform/dialogs.h"
#include "sheet/usizeset.h"
#include "shell/utankaregist.h"
#include "shell/uversioninfo.h"

int ProgramBody(TApplication& app) {
    app.TrySetStyle(QStringLiteral("Fusion"));
    app.SetTitle(ApplicationTitle());

    TFtankaregist mainForm;
    TFversionInfo versionInfo;
    TfsizeSet sizeSet;
    TFpartsSelect partsSelect;

    mainForm.show();
    app.exec();
    return 0;
}
