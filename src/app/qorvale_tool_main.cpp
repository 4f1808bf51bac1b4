// Batch tool: shows, recalculates or prints pipe types from the command line.
#include "print/listpress.h"
#include "shell/batchtool.h"

#include <QCoreApplication>
#include <QGuiApplication>

#include <cstdio>

int main(int argc, char** argv) {
    QTextStream out(stdout);
    QTextStream err(stderr);
    if (argc > 1 && QByteArray(argv[1]) == "print") {
        // The page is drawn with fonts, which need the GUI application
        // object, but no display.
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
        QGuiApplication app(argc, argv);
        return runPrintTool(app.arguments().mid(1), out, err);
    }
    QCoreApplication app(argc, argv);
    return runQorvaleTool(app.arguments().mid(1), out, err);
}
