#include "controls/controlerrors.h"

#include <QDebug>

void ReportControlFailure(const FailureHandler& handler, const QString& message) {
    if (handler)
        handler(message);
    else
        qWarning().noquote() << message;
}
