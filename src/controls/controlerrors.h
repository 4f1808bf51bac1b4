#pragma once
// Failures of the controls and the application-wide handler that shows them.

#include <QString>

#include <functional>
#include <stdexcept>

// The plain failure of a control, with a fixed text.
class ControlError : public std::runtime_error {
public:
    explicit ControlError(const QString& message)
        : std::runtime_error(message.toUtf8().toStdString()) {}
    QString Message() const { return QString::fromUtf8(what()); }
};

// A value or an index outside its range.
class ControlRangeError : public ControlError {
public:
    using ControlError::ControlError;
};

// Where a failure goes that a widget's event handling cannot pass on (Qt
// event handlers must not throw): the program sets it to its top-level
// handler, which shows the text. Without one the text goes to qWarning.
using ControlsExceptionHandler = std::function<void(const QString& message)>;
void SetControlsExceptionHandler(ControlsExceptionHandler handler);
void HandleControlsException(const QString& message);
