#pragma once
// The wait cursor for the life of a scope: the program is busy, for instance
// waiting for another program to let go of the database.

#include <QGuiApplication>

class WaitCursor {
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};
