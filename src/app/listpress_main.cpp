// listpress: the print program started by "印  刷".
#include "platform/commandline.h"
#include "platform/qtdialogs.h"
#include "print/listpress.h"

#include <QApplication>

#include <cstdio>
#include <memory>

int main(int argc, char** argv) {
    // Help, version and a wrong option are answered before any window.
    const int standard = standardOptions(argc, argv, QStringLiteral("listpress"), listpressUsage(),
                                         {QStringLiteral("--pdf"), QStringLiteral("--screenshot")});
    if (standard >= 0) return standard;
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    // Writing a PDF needs no display.
    if (listpressNeedsNoWindow(args) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QtDialogs dialogs;
    QTextStream out(stdout);
    QTextStream err(stderr);
    return runListpress(app.arguments().mid(1), dialogs, out, err);
}
