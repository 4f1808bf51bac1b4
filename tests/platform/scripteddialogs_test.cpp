// The scripted dialogs that tests answer through, and the two box helpers.
#include "platform/scripteddialogs.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace TD = ::TaskDialog;

namespace {

TEST(ScriptedDialogsTest, BoxesTakeScriptedAnswersInOrder) {
    ScriptedDialogs d;
    d.answerBox(TD::IdYes);
    d.answerBox(TD::IdCancel);
    const int yesCancel = TD::ButtonYes | TD::ButtonCancel;
    EXPECT_EQ(showTaskDialog(d, nullptr, "T", "確認", TD::IconQuestion, yesCancel, "body"),
              TD::IdYes);
    EXPECT_EQ(showTaskDialog(d, nullptr, "T", "again", TD::IconQuestion, yesCancel, ""),
              TD::IdCancel);
    ASSERT_EQ(d.boxes().size(), 2u);
    const ScriptedDialogs::Box& b = d.boxes()[0];
    EXPECT_EQ(b.title, "T");
    EXPECT_EQ(b.instruction, "確認");
    EXPECT_EQ(b.content, "body");
    EXPECT_EQ(b.icon, TD::IconQuestion);
    EXPECT_EQ(b.buttons, yesCancel);
    EXPECT_EQ(b.result, TD::IdYes);
    EXPECT_TRUE(d.unanswered().isEmpty());
    EXPECT_EQ(d.pendingAnswers(), 0);
}

TEST(ScriptedDialogsTest, OkBoxesNeedNoAnswerButQuestionsDo) {
    ScriptedDialogs d;
    EXPECT_EQ(showInfoDialog(d, nullptr, "確認", "保存しました。"), TD::IdOk);
    EXPECT_TRUE(d.unanswered().isEmpty());
    const ScriptedDialogs::Box& info = d.boxes().at(0);
    EXPECT_EQ(info.title, applicationTitle());
    EXPECT_EQ(info.icon, TD::IconNone);
    EXPECT_EQ(info.buttons, TD::ButtonOk);

    // Unscripted questions get the answer that changes nothing, and are noted.
    EXPECT_EQ(showTaskDialog(d, nullptr, "T", "q1", 0, TD::ButtonYes | TD::ButtonCancel, ""),
              TD::IdCancel);
    EXPECT_EQ(showTaskDialog(d, nullptr, "T", "q2", 0, TD::ButtonYes | TD::ButtonNo, ""), TD::IdNo);
    EXPECT_EQ(showTaskDialog(d, nullptr, "T", "q3", 0, TD::ButtonRetry | TD::ButtonClose, ""),
              TD::IdClose);
    EXPECT_EQ(d.unanswered().size(), 3);
    EXPECT_TRUE(d.unanswered()[0].contains("q1"));

    // An answer that is none of the box's buttons is a scripting mistake.
    d.answerBox(TD::IdNo);
    EXPECT_EQ(showTaskDialog(d, nullptr, "T", "q4", 0, TD::ButtonYes | TD::ButtonCancel, ""),
              TD::IdCancel);
    EXPECT_EQ(d.unanswered().size(), 4);
}

TEST(ScriptedDialogsTest, TextsAreCutAt2049Characters) {
    ScriptedDialogs d;
    const QString longText(3000, QChar(u'あ'));
    showTaskDialog(d, nullptr, longText, longText, 0, TD::ButtonOk, longText);
    const ScriptedDialogs::Box& b = d.boxes().at(0);
    EXPECT_EQ(b.title.size(), 2049);
    EXPECT_EQ(b.instruction.size(), 2049);
    EXPECT_EQ(b.content.size(), 2049);
}

TEST(ScriptedDialogsTest, InputsAndFiles) {
    ScriptedDialogs d;
    d.answerInput("新しい名前");
    d.cancelInput();
    QString value = "給水";
    EXPECT_TRUE(d.inputQuery(nullptr, "Qorvale", "prompt", value));
    EXPECT_EQ(value, "新しい名前");
    value = "kept";
    EXPECT_FALSE(d.inputQuery(nullptr, "Qorvale", "prompt", value));
    EXPECT_EQ(value, "kept");
    EXPECT_TRUE(d.unanswered().isEmpty());
    EXPECT_FALSE(d.inputQuery(nullptr, "Qorvale", "unscripted", value));
    EXPECT_EQ(value, "kept");
    EXPECT_EQ(d.unanswered().size(), 1);
    ASSERT_EQ(d.inputs().size(), 3u);
    EXPECT_EQ(d.inputs()[0].initial, "給水");
    EXPECT_EQ(d.inputs()[1].accepted, false);

    d.answerFile("/tmp/out.csv");
    d.answerFile(QString());
    d.answerFile("/tmp/folder");
    EXPECT_EQ(d.saveFileName(nullptr, "CSV", "/tmp", "CSV (*.csv)"), "/tmp/out.csv");
    EXPECT_EQ(d.openFileName(nullptr, "Open", "/tmp", "*"), QString());
    EXPECT_EQ(d.folderName(nullptr, "Folder", "/tmp"), "/tmp/folder");
    EXPECT_EQ(d.unanswered().size(), 1);
    EXPECT_EQ(d.openFileName(nullptr, "Open", "/tmp", "*"), QString());
    EXPECT_EQ(d.unanswered().size(), 2);
    ASSERT_EQ(d.fileQuestions().size(), 4u);
    EXPECT_EQ(d.fileQuestions()[0].kind, "save");
    EXPECT_EQ(d.fileQuestions()[0].filter, "CSV (*.csv)");
    EXPECT_EQ(d.fileQuestions()[2].kind, "folder");
}

TEST(ScriptedDialogsTest, SideEffectsAreRecorded) {
    ScriptedDialogs d;
    Dialogs& dialogs = d;
    dialogs.setClipboardText("a\tb\r\n");
    EXPECT_EQ(dialogs.clipboardText(), "a\tb\r\n");
    dialogs.beep();
    dialogs.beep();
    EXPECT_EQ(d.beeps(), 2);
    EXPECT_TRUE(dialogs.startProcess("/usr/bin/listpress", {"a", "b"}, "/work"));
    d.setStartResult(false);
    EXPECT_FALSE(dialogs.startProcess("calc", {}, QString()));
    ASSERT_EQ(d.processes().size(), 2u);
    EXPECT_EQ(d.processes()[0].arguments, QStringList({"a", "b"}));
    EXPECT_EQ(d.processes()[0].workingDir, "/work");
    EXPECT_TRUE(dialogs.openDocument("/tmp/book.xlsx"));
    EXPECT_EQ(d.documents(), QStringList{"/tmp/book.xlsx"});
    dialogs.message(nullptr, "ERROR", "no such table");
    ASSERT_EQ(d.messages().size(), 1u);
    EXPECT_EQ(d.messages()[0].text, "no such table");
    d.clearRecords();
    EXPECT_TRUE(d.messages().empty());
    EXPECT_EQ(d.beeps(), 0);
}

TEST(ScriptedDialogsTest, CallsFromAnotherThreadRunOnTheGuiThreadAndWait) {
    // The group recalculation saves, and so puts text on the clipboard and
    // may show boxes, from a worker thread while the test reads the records.
    ScriptedDialogs d;
    QThread* gui = QThread::currentThread();
    ASSERT_EQ(gui, QCoreApplication::instance()->thread());
    std::vector<QThread*> messageThreads;
    d.onMessage = [&] { messageThreads.push_back(QThread::currentThread()); };
    d.answerBox(TD::IdNo);
    std::atomic<bool> done{false};
    int answer = 0;
    QString clipboardSeen;
    std::thread worker([&] {
        for (int i = 0; i < 50; ++i)
            d.setClipboardText(QStringLiteral("UPDATE %1").arg(i));
        clipboardSeen = d.clipboardText();
        d.message(nullptr, "T", "ERROR");
        answer = showTaskDialog(d, nullptr, "T", "確認", TD::IconQuestion,
                                TD::ButtonYes | TD::ButtonNo, "q");
        d.beep();
        done = true;
    });
    // Nothing of the worker's happens while this thread serves no events.
    QThread::msleep(50);
    EXPECT_TRUE(d.clipboard().isEmpty());
    EXPECT_FALSE(done);
    while (!done)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    worker.join();
    EXPECT_EQ(clipboardSeen, "UPDATE 49");
    EXPECT_EQ(d.clipboard(), "UPDATE 49");
    ASSERT_EQ(d.messages().size(), 1u);
    EXPECT_EQ(d.messages()[0].text, "ERROR");
    ASSERT_EQ(messageThreads.size(), 1u);
    EXPECT_EQ(messageThreads[0], gui);
    EXPECT_EQ(answer, TD::IdNo);
    EXPECT_EQ(d.boxes().size(), 1u);
    EXPECT_EQ(d.beeps(), 1);
    EXPECT_TRUE(d.unanswered().isEmpty());
}

} // namespace
