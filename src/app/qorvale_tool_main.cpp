// Batch tool: shows or recalculates pipe types from the command line.
#include "shell/batchtool.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return RunQorvaleTool(app.arguments().mid(1), out, err);
}
