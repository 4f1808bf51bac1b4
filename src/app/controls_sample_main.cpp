// Writes a picture of the controls: controls-sample [out.png]
#include "controls/controlssample.h"

#include <QApplication>
#include <QWidget>

#include <cstdio>
#include <memory>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QString out = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("controls.png");
    std::unique_ptr<QWidget> sample(CreateControlsSample());
    if (!GrabControlsSample(sample.get()).save(out)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(out));
        return 1;
    }
    return 0;
}
