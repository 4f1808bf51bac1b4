// The main form: the status bar and its seven panels.
#include "shell/utankaregist.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStatusBar>

// 0-2: the three names of the pipe type, 3: the detail shown, 4: the 15th
// size, 5: the database folder, 6: empty.
const std::array<int, TFtankaregist::StatusPanelCount> TFtankaregist::StatusPanelWidths = {
    200, 200, 150, 100, 50, 300, 50};

void TFtankaregist::buildStatusBar() {
    StatusBar1 = new QStatusBar(this);
    StatusBar1->setObjectName(QStringLiteral("StatusBar1"));
    StatusBar1->setSizeGripEnabled(true);
    // The panels keep their widths and are cut off at the right of a narrow
    // window; they never make the window wider than the screen.
    auto* row = new QWidget(StatusBar1);
    row->setObjectName(QStringLiteral("StatusPanels"));
    row->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    for (int i = 0; i < StatusPanelCount; ++i) {
        auto* panel = new QLabel(row);
        panel->setObjectName(QStringLiteral("StatusPanel%1").arg(i));
        panel->setFixedWidth(StatusPanelWidths[std::size_t(i)]);
        panel->setFrameShape(QFrame::StyledPanel);
        panel->setFrameShadow(QFrame::Sunken);
        panel->setTextFormat(Qt::PlainText);
        layout->addWidget(panel);
        statusPanels[std::size_t(i)] = panel;
    }
    layout->addStretch(1);
    StatusBar1->addWidget(row, 1);
    setStatusBar(StatusBar1);
}

QLabel* TFtankaregist::StatusPanelLabel(int index) const {
    return index >= 0 && index < StatusPanelCount ? statusPanels[std::size_t(index)] : nullptr;
}

void TFtankaregist::SetStatusPanel(int index, const QString& text) {
    if (QLabel* panel = StatusPanelLabel(index)) panel->setText(text);
}

QString TFtankaregist::StatusPanel(int index) const {
    QLabel* panel = StatusPanelLabel(index);
    return panel ? panel->text() : QString();
}
