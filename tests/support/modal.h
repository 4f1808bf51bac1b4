#pragma once
// For widget tests: acts on the next modal widget once it is shown.

#include <QApplication>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

// Calls act with the modal widget as soon as one is up; gives up after about
// five seconds so that a test that opens nothing does not hang.
inline void whenModal(std::function<void(QWidget*)> act) {
    auto* timer = new QTimer;
    auto tries = std::make_shared<int>(0);
    QObject::connect(timer, &QTimer::timeout, [timer, tries, act] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal && ++*tries < 500) return;
        timer->stop();
        timer->deleteLater();
        if (modal) act(modal);
    });
    timer->start(10);
}
