#pragma once
// The common base of the controls that raise events of their own.

#include <functional>

// Handed to handlers as the Sender; a handler that needs the concrete class
// casts.
class ControlObject {
public:
    virtual ~ControlObject() = default;
};

using NotifyEvent = std::function<void(ControlObject* Sender)>;
