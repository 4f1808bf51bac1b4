// The application object: exceptions that reach the event loop are shown and
// the program goes on; the style; the program body from start to end.
#include "platform/application.h"

#include "engine/currency.h"
#include "platform/scripteddialogs.h"
#include "shell/mainwindow.h"
#include "shell/programbody.h"
#include "store/suitestandin.h"
#include "support/guitesting.h"

#include <QProxyStyle>
#include <QStyle>

#include <stdexcept>

namespace {

namespace TD = ::TaskDialog;

Application& app() {
    return *qobject_cast<Application*>(QCoreApplication::instance());
}

// Scripted dialogs set on the application for the life of one test.
class ApplicationTest : public ::testing::Test {
protected:
    ApplicationTest() { app().setDialogs(std::unique_ptr<Dialogs>(&dialogs)); }
    ~ApplicationTest() override { app().setDialogs(nullptr); }
    ScriptedDialogs& dialogs = *new ScriptedDialogs; // the application's from the start
};

// Throws from its mouse handler.
class ThrowingWidget : public QWidget {
protected:
    void mousePressEvent(QMouseEvent*) override { throw 42; }
};

TEST_F(ApplicationTest, ExceptionsFromATimerAndFromHandlersOfWidgetsAreShownAndTheLoopGoesOn) {
    QEventLoop loop;
    bool after = false;
    QTimer::singleShot(0, [] { throw std::runtime_error("no such table: ex_kanzai"); });
    QTimer::singleShot(20, [&] {
        after = true;
        loop.quit();
    });
    loop.exec();
    ASSERT_TRUE(after && dialogs.boxes().size() == 1u);
    EXPECT_EQ(dialogs.boxes()[0].instruction, "no such table: ex_kanzai");
    EXPECT_EQ(dialogs.boxes()[0].icon, TD::IconError);

    QPushButton button("登　録");
    QObject::connect(&button, &QPushButton::clicked,
                     [] { throw ConvertError("'1,2x' is not a valid floating point value"); });
    button.show();
    QTest::mouseClick(&button, Qt::LeftButton);
    ThrowingWidget widget;
    widget.resize(50, 50);
    widget.show();
    QTest::mouseClick(&widget, Qt::LeftButton);
    QTest::mouseClick(&button, Qt::LeftButton); // it still works after its handler failed
    ASSERT_EQ(dialogs.boxes().size(), 4u);
    EXPECT_EQ(dialogs.boxes()[1].instruction, "'1,2x' is not a valid floating point value");
    EXPECT_EQ(dialogs.boxes()[2].instruction, "不明な例外が発生しました。");
    EXPECT_EQ(dialogs.boxes()[3].instruction, dialogs.boxes()[1].instruction);
}

TEST_F(ApplicationTest, StyleThatCannotBeSetShowsAnErrorAndGoesOn) {
    EXPECT_FALSE(app().trySetStyle("NoSuchStyle"));
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(dialogs.boxes()[0].instruction.contains("NoSuchStyle"));
    EXPECT_FALSE(app().trySetStyle("NoSuchStyle", false)); // quiet: no box
    EXPECT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(app().trySetStyle("Fusion"));
}

TEST_F(ApplicationTest, ProgramBodyShowsTheMainFormAndEndsWithZero) {
    QTemporaryDir common;
    qputenv("QORVALE_COMMON_DATA", common.path().toUtf8());
    QString out;
    QTextStream sink(&out);
    ASSERT_EQ(runVelmoraSuite({"init"}, sink, sink), 0);
    // A pipe type of zeros gets its default captions and options on the
    // screen, so closing asks about saving: the answer is cancel.
    dialogs.answerBox(TaskDialog::IdCancel);
    bool dialogsMade = false;
    QTimer::singleShot(50, [&] {
        MainWindow* form = nullptr;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* f = qobject_cast<MainWindow*>(w)) form = f;
        ASSERT_NE(form, nullptr);
        const FormDialogs& made = form->formDialogs();
        dialogsMade = made.about && made.sizes && made.library &&
                      form->releaseLabel->text() == "Release Version " QORVALE_VERSION;
        form->close();
    });
    EXPECT_EQ(programBody(app()), 0);
    qunsetenv("QORVALE_COMMON_DATA");
    EXPECT_TRUE(dialogsMade && dialogs.unanswered().isEmpty());
    auto* proxy = qobject_cast<QProxyStyle*>(app().style());
    ASSERT_NE(proxy, nullptr);
    EXPECT_EQ(proxy->baseStyle()->name().toLower() + ' ' +
                  QString::number(proxy->styleHint(QStyle::SH_ToolTip_WakeUpDelay)),
              "fusion 600");
}

TEST_F(ApplicationTest, QtsOwnTextsAreJapanese) {
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "キャンセル");
    EXPECT_NE(QCoreApplication::translate("QFileDialog", "Look in:"), "Look in:");
}

} // namespace
