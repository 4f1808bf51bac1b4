#pragma once
// The tests write their Japanese texts as UTF-8 literals.

#include <QString>

inline QString u(const char* t) {
    return QString::fromUtf8(t);
}
