// The application object: exceptions that reach the event loop are shown and
// the program goes on; the style; the program body from start to end.
#include "platform/application.h"

#include "edit/labourlibrarydialog.h"
#include "engine/currency.h"
#include "platform/scripteddialogs.h"
#include "sheet/sizedialog.h"
#include "shell/aboutdialog.h"
#include "shell/mainwindow.h"
#include "shell/programbody.h"
#include "store/suitestandin.h"

#include <QEventLoop>
#include <QLabel>
#include <QProxyStyle>
#include <QPushButton>
#include <QStyle>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <stdexcept>

namespace TD = ::TaskDialog;

namespace {

Application& app() {
    return *qobject_cast<Application*>(QCoreApplication::instance());
}

// Scripted dialogs set on the application for the life of one test.
struct AppDialogs {
    ScriptedDialogs* dialogs = new ScriptedDialogs;
    AppDialogs() { app().setDialogs(std::unique_ptr<Dialogs>(dialogs)); }
    ~AppDialogs() { app().setDialogs(nullptr); }
};

// Throws from its mouse handler.
class ThrowingWidget : public QWidget {
protected:
    void mousePressEvent(QMouseEvent*) override { throw 42; }
};

TEST(ApplicationTest, ExceptionFromATimerIsShownAndTheLoopGoesOn) {
    const AppDialogs scope;
    ScriptedDialogs& dialogs = *scope.dialogs;
    QEventLoop loop;
    bool after = false;
    QTimer::singleShot(0, [] { throw std::runtime_error("no such table: ex_kanzai"); });
    QTimer::singleShot(20, [&] {
        after = true;
        loop.quit();
    });
    loop.exec();
    EXPECT_TRUE(after);
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    const ScriptedDialogs::Box& box = dialogs.boxes()[0];
    EXPECT_EQ(box.title, app().title());
    EXPECT_EQ(box.title, applicationTitle());
    EXPECT_EQ(box.instruction, "no such table: ex_kanzai");
    EXPECT_EQ(box.icon, TD::IconError);
    EXPECT_EQ(box.buttons, TD::ButtonOk);
    EXPECT_TRUE(dialogs.unanswered().isEmpty());
}

TEST(ApplicationTest, ExceptionsFromHandlersOfWidgets) {
    const AppDialogs scope;
    ScriptedDialogs& dialogs = *scope.dialogs;
    QPushButton button("登　録");
    QObject::connect(&button, &QPushButton::clicked,
                     [] { throw ConvertError("'1,2x' is not a valid floating point value"); });
    button.show();
    QTest::mouseClick(&button, Qt::LeftButton);
    ThrowingWidget widget;
    widget.resize(50, 50);
    widget.show();
    QTest::mouseClick(&widget, Qt::LeftButton);
    // The button still works after its handler failed.
    QTest::mouseClick(&button, Qt::LeftButton);

    ASSERT_EQ(dialogs.boxes().size(), 3u);
    EXPECT_EQ(dialogs.boxes()[0].instruction, "'1,2x' is not a valid floating point value");
    EXPECT_EQ(dialogs.boxes()[1].instruction, "不明な例外が発生しました。");
    EXPECT_EQ(dialogs.boxes()[2].instruction, dialogs.boxes()[0].instruction);
}

TEST(ApplicationTest, StyleThatCannotBeSetShowsAnErrorAndGoesOn) {
    const AppDialogs scope;
    ScriptedDialogs& dialogs = *scope.dialogs;
    EXPECT_FALSE(app().trySetStyle("NoSuchStyle"));
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(dialogs.boxes()[0].instruction.contains("NoSuchStyle"));
    EXPECT_EQ(dialogs.boxes()[0].icon, TD::IconError);
    EXPECT_FALSE(app().trySetStyle("NoSuchStyle", false));
    EXPECT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(app().trySetStyle("Fusion"));
}

TEST(ApplicationTest, ProgramBodyShowsTheMainFormAndEndsWithZero) {
    const AppDialogs scope;
    ScriptedDialogs& dialogs = *scope.dialogs;
    QTemporaryDir common;
    qputenv("QORVALE_COMMON_DATA", common.path().toUtf8());
    QString out;
    QTextStream sink(&out);
    ASSERT_EQ(runVelmoraSuite({QStringLiteral("init")}, sink, sink), 0);
    // A pipe type of zeros gets its default captions and options on the
    // screen, so closing asks about saving: the answer is cancel.
    dialogs.answerBox(TaskDialog::IdCancel);
    QString caption;
    bool dialogsMade = false;
    QString release;
    QTimer::singleShot(50, [&] {
        auto* form = qobject_cast<MainWindow*>(QApplication::activeWindow());
        if (!form) {
            for (QWidget* w : QApplication::topLevelWidgets())
                if (auto* f = qobject_cast<MainWindow*>(w)) form = f;
        }
        ASSERT_NE(form, nullptr);
        caption = form->windowTitle();
        const FormDialogs& made = form->formDialogs();
        dialogsMade = made.about && made.sizes && made.library;
        release = form->releaseLabel->text();
        form->close();
    });
    EXPECT_EQ(programBody(app()), 0);
    qunsetenv("QORVALE_COMMON_DATA");
    EXPECT_EQ(caption, "Qorvale-Ostrel-");
    EXPECT_TRUE(dialogsMade);
    EXPECT_EQ(app().title(), "Qorvale Works\u3000配管材");
    auto* proxy = qobject_cast<QProxyStyle*>(app().style());
    ASSERT_NE(proxy, nullptr);
    EXPECT_EQ(proxy->baseStyle()->name().toLower(), "fusion");
    EXPECT_EQ(app().style()->styleHint(QStyle::SH_ToolTip_WakeUpDelay), 600);
    EXPECT_TRUE(release.startsWith("Release Version "));
    EXPECT_TRUE(dialogs.unanswered().isEmpty());
}

} // namespace

namespace {

TEST(ApplicationTest, QtsOwnTextsAreJapanese) {
    // The file dialogs and the standard buttons speak Japanese.
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"),
              QStringLiteral("キャンセル"));
    EXPECT_NE(QCoreApplication::translate("QFileDialog", "Look in:"), QStringLiteral("Look in:"));
}

} // namespace
