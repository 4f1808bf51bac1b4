#include "controls/controlerrors.h"

#include <QDebug>

void reportControlFailure(const FailureHandler& handler, const QString& message) {
    if (handler)
        handler(message);
    else
        qWarning().noquote() << message;
}
