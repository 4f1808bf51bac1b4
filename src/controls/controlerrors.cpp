#include "controls/controlerrors.h"

#include <QDebug>

namespace {
TControlsExceptionHandler& handlerSlot() {
    static TControlsExceptionHandler handler;
    return handler;
}
} // namespace

void SetControlsExceptionHandler(TControlsExceptionHandler handler) {
    handlerSlot() = std::move(handler);
}

void HandleControlsException(const QString& message) {
    if (handlerSlot())
        handlerSlot()(message);
    else
        qWarning().noquote() << message;
}
