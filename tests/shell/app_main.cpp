// Test entry for the application object: the program's own Application on
// the offscreen platform.
#include "platform/application.h"

#include <gtest/gtest.h>

// Under the sanitizers. Qt's GUI and widget libraries are built without
// exception cleanups: an exception that a handler throws while Qt delivers an
// event is caught by the program's handler around QApplication::notify, and
// the event copies Qt made on the way in are never freed. The handler's tests
// throw on purpose; these Qt allocations alone are passed over, found by
// their full stacks.
extern "C" const char* __asan_default_options() {
    return "fast_unwind_on_malloc=0";
}
extern "C" const char* __lsan_default_suppressions() {
    return "leak:QSinglePointEvent::QSinglePointEvent\nleak:QMutableEventPoint::detach\n"
           "leak:QEventPoint::QEventPoint\nleak:QtSharedPointer::ExternalRefCountData::getAndRef\n";
}

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    Application app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
