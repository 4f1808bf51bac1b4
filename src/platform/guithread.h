#pragma once
// Running a piece of work on the GUI thread from any thread.

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>

#include <exception>
#include <type_traits>

// Runs f on the thread of the application object and gives back its result.
// Boxes, the clipboard and the keyboard state belong to that thread; a call
// from another thread (the group recalculation saves from a worker) waits
// there until the GUI thread has run f, by a blocking queued call on the
// application object. An exception of f is raised again in the calling
// thread. Without an application object, or on its thread, f runs at once.
template <typename F> auto OnGuiThread(F&& f) -> std::invoke_result_t<F&> {
    using Result = std::invoke_result_t<F&>;
    QCoreApplication* app = QCoreApplication::instance();
    if (!app || QThread::currentThread() == app->thread()) return f();
    std::exception_ptr failure;
    if constexpr (std::is_void_v<Result>) {
        QMetaObject::invokeMethod(
            app,
            [&] {
                try {
                    f();
                } catch (...) {
                    failure = std::current_exception();
                }
            },
            Qt::BlockingQueuedConnection);
        if (failure) std::rethrow_exception(failure);
    } else {
        Result result{};
        QMetaObject::invokeMethod(
            app,
            [&] {
                try {
                    result = f();
                } catch (...) {
                    failure = std::current_exception();
                }
            },
            Qt::BlockingQueuedConnection);
        if (failure) std::rethrow_exception(failure);
        return result;
    }
}
