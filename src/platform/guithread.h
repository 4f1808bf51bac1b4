#pragma once
// Running a piece of work on the GUI thread from any thread.

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QThread>

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <type_traits>

#if defined(__SANITIZE_THREAD__)
#include <sanitizer/tsan_interface.h>
#endif

namespace guithread {

// The hand-over of a call between two threads goes through Qt's event queue,
// whose locks the thread sanitizer cannot see (Qt is not built with it); the
// two marks tell it that the work was made before it is run.
inline void markHandedOver([[maybe_unused]] void* token) {
#if defined(__SANITIZE_THREAD__)
    __tsan_release(token);
#endif
}
inline void markTakenOver([[maybe_unused]] void* token) {
#if defined(__SANITIZE_THREAD__)
    __tsan_acquire(token);
#endif
}

// Lives on the GUI thread for one call: runs the work when its event comes,
// then goes away.
class CallReceiver : public QObject {
public:
    explicit CallReceiver(std::function<void()> work) : m_work(std::move(work)) {}

protected:
    bool event(QEvent* event) override {
        markTakenOver(this);
        if (event->type() != QEvent::User) return QObject::event(event);
        m_work();
        deleteLater();
        return true;
    }

private:
    std::function<void()> m_work;
};

} // namespace guithread

// Runs f on the thread of the application object and gives back its result.
// Boxes, the clipboard and the keyboard state belong to that thread; a call
// from another thread (the group recalculation saves from a worker) waits
// until the GUI thread has run f. An exception of f is raised again in the
// calling thread. Without an application object, or on its thread, f runs at
// once.
template <typename F> auto onGuiThread(F&& f) -> std::invoke_result_t<F&> {
    using Result = std::invoke_result_t<F&>;
    QCoreApplication* app = QCoreApplication::instance();
    if (!app || QThread::currentThread() == app->thread()) return f();

    using Stored = std::conditional_t<std::is_void_v<Result>, bool, Result>;
    std::optional<Stored> result;
    std::exception_ptr failure;
    std::mutex lock;
    std::condition_variable finished;
    bool done = false;
    auto* receiver = new guithread::CallReceiver([&] {
        try {
            if constexpr (std::is_void_v<Result>) {
                f();
                result = true;
            } else {
                result = f();
            }
        } catch (...) {
            failure = std::current_exception();
        }
        const std::lock_guard<std::mutex> guard(lock);
        done = true;
        finished.notify_one();
    });
    receiver->moveToThread(app->thread());
    auto* event = new QEvent(QEvent::User);
    guithread::markHandedOver(receiver);
    QCoreApplication::postEvent(receiver, event);
    {
        std::unique_lock<std::mutex> guard(lock);
        finished.wait(guard, [&] { return done; });
    }
    if (failure) std::rethrow_exception(failure);
    if constexpr (!std::is_void_v<Result>) return std::move(*result);
}

// Runs f later on the thread of context, unless context is gone by then; the
// caller goes on at once. Calls from one thread run in the order they were
// made.
template <typename F> void postToThreadOf(QObject* context, F&& f) {
    auto* receiver = new guithread::CallReceiver(
        [alive = QPointer<QObject>(context), f = std::forward<F>(f)]() mutable {
            if (alive) f();
        });
    receiver->moveToThread(context->thread());
    auto* event = new QEvent(QEvent::User);
    guithread::markHandedOver(receiver);
    QCoreApplication::postEvent(receiver, event);
}

// Runs f on the thread of the application object without waiting for it:
// at once on that thread, later (in the order of the calls) from any other.
template <typename F> void postToGuiThread(F&& f) {
    QCoreApplication* app = QCoreApplication::instance();
    if (!app || QThread::currentThread() == app->thread()) {
        f();
        return;
    }
    postToThreadOf(app, std::forward<F>(f));
}
