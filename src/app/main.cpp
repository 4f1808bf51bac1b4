// Qorvale Works 配管材: the program.
#include "platform/application.h"
#include "platform/commandline.h"
#include "platform/qtdialogs.h"
#include "shell/programbody.h"

#include <memory>

int main(int argc, char** argv) {
    const int standard = standardOptions(
        argc, argv, QStringLiteral("qorvale"),
        QStringLiteral(
            "usage: qorvale [LAUNCHSTRING]\n"
            "       qorvale --help | --version\n"
            "  Opens the workspace of composite unit prices of piping work.\n"
            "  LAUNCHSTRING is the semicolon-separated text the Velmora suite starts\n"
            "  the program with; its field 5 names the database folder. Without it\n"
            "  the default folder under $QORVALE_COMMON_DATA or ~/.local/share is used.\n"));
    if (standard >= 0) return standard;
    Application app(argc, argv);
    app.setDialogs(std::make_unique<QtDialogs>());
    return programBody(app);
}
