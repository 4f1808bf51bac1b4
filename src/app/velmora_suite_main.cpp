// Stand-in for the Velmora suite: creates the data folder and the database.
#include "store/suitestandin.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return runVelmoraSuite(app.arguments().mid(1), out, err);
}
