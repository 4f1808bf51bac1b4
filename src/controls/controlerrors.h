#pragma once
// Failures of the controls, and where a control hands those of its own event
// handling.

#include <QString>

#include <functional>
#include <stdexcept>

// The plain failure of a control, with a fixed text.
class ControlError : public std::runtime_error {
public:
    explicit ControlError(const QString& message)
        : std::runtime_error(message.toUtf8().toStdString()) {}
    QString message() const { return QString::fromUtf8(what()); }
};

// A value or an index outside its range.
class ControlRangeError : public ControlError {
public:
    using ControlError::ControlError;
};

// Where a control hands a failure that its event handling cannot pass on
// (Qt event handlers must not throw): the window sets each control's
// onFailure to show the text as it shows any failure.
using FailureHandler = std::function<void(const QString& message)>;
// Hands message to handler; without one the text goes to qWarning.
void reportControlFailure(const FailureHandler& handler, const QString& message);
