#include "controls/controlerrors.h"

#include <QDebug>

namespace {
ControlsExceptionHandler& handlerSlot() {
    static ControlsExceptionHandler handler;
    return handler;
}
} // namespace

void SetControlsExceptionHandler(ControlsExceptionHandler handler) {
    handlerSlot() = std::move(handler);
}

void HandleControlsException(const QString& message) {
    if (handlerSlot())
        handlerSlot()(message);
    else
        qWarning().noquote() << message;
}
