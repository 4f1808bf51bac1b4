#pragma once
// The manners every program of the package shares on the command line:
// --help and --version answer before anything else runs, an unknown option
// gives the usage and exit code 2.

#include <QStringList>
#include <QTextStream>

// The version all programs print: "<program> <version>".
QString versionLine(const QString& program);

// Looks at the arguments (without the program name). --help or -h prints
// the usage to out and gives 0, --version the version line and 0; an
// argument that starts with "-" and is none of allowedOptions prints the
// usage to err and gives 2. -1 when the program goes on.
int standardOptions(const QStringList& args, const QString& program, const QString& usage,
                    const QStringList& allowedOptions, QTextStream& out, QTextStream& err);

// The same on the raw argv of main, before any application object exists
// (a desktop program must answer --help without a display).
int standardOptions(int argc, char** argv, const QString& program, const QString& usage,
                    const QStringList& allowedOptions = {});
