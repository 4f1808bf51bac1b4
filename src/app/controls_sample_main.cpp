// Writes a picture of the controls: controls-sample [out.png]
#include "controls/controlssample.h"
#include "platform/commandline.h"

#include <QApplication>
#include <QWidget>

#include <cstdio>
#include <memory>

int main(int argc, char** argv) {
    const int standard = standardOptions(
        argc, argv, QStringLiteral("controls-sample"),
        QStringLiteral("usage: controls-sample [OUT.png]\n"
                       "       controls-sample --help | --version\n"
                       "  Draws the program's own controls into a picture (controls.png).\n"));
    if (standard >= 0) return standard;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QString out = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("controls.png");
    std::unique_ptr<QWidget> sample(createControlsSample());
    if (!grabControlsSample(sample.get()).save(out)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(out));
        return 1;
    }
    return 0;
}
