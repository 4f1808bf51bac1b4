#include "platform/commandline.h"

#include <cstdio>

QString versionLine(const QString& program) {
    return program + QStringLiteral(" ") + QStringLiteral(QORVALE_VERSION);
}

int standardOptions(const QStringList& args, const QString& program, const QString& usage,
                    const QStringList& allowedOptions, QTextStream& out, QTextStream& err) {
    for (const QString& a : args) {
        if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            out << usage;
            return 0;
        }
        if (a == QLatin1String("--version")) {
            out << versionLine(program) << "\n";
            return 0;
        }
    }
    for (const QString& a : args) {
        if (a.startsWith(QLatin1Char('-')) && !allowedOptions.contains(a)) {
            err << program << ": unknown option: " << a << "\n" << usage;
            return 2;
        }
    }
    return -1;
}

int standardOptions(int argc, char** argv, const QString& program, const QString& usage,
                    const QStringList& allowedOptions) {
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    QTextStream out(stdout), err(stderr);
    return standardOptions(args, program, usage, allowedOptions, out, err);
}
