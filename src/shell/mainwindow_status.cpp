// The main form: the status bar and its seven panels.
#include "shell/mainwindow.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStatusBar>

// 0-2: the three names of the pipe type, 3: the detail shown, 4: the 15th
// size, 5: the database folder, 6: empty.
const std::array<int, MainWindow::StatusPanelCount> MainWindow::StatusPanelWidths = {
    200, 200, 150, 100, 50, 300, 50};

void MainWindow::buildStatusBar() {
    statusLine = new QStatusBar(this);
    statusLine->setObjectName(QStringLiteral("statusLine"));
    statusLine->setSizeGripEnabled(true);
    // The panels keep their widths and are cut off at the right of a narrow
    // window; they never make the window wider than the screen.
    auto* row = new QWidget(statusLine);
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
    statusLine->addWidget(row, 1);
    setStatusBar(statusLine);
}

QLabel* MainWindow::statusPanelLabel(int index) const {
    return index >= 0 && index < StatusPanelCount ? statusPanels[std::size_t(index)] : nullptr;
}

void MainWindow::setStatusPanel(int index, const QString& text) {
    if (QLabel* panel = statusPanelLabel(index)) panel->setText(text);
}

QString MainWindow::statusPanel(int index) const {
    QLabel* panel = statusPanelLabel(index);
    return panel ? panel->text() : QString();
}
