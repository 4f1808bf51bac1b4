// The scripted dialogs that tests answer through, and the two box helpers. Their records of
// inputs, files and processes are checked by the tests that use them.
#include "platform/scripteddialogs.h"
#include "support/testing.h"

#include <atomic>
#include <thread>

namespace TD = ::TaskDialog;

namespace {

TEST(ScriptedDialogsTest, BoxesTakeScriptedAnswersInOrderAndNoteTheMissingOnes) {
    ScriptedDialogs d;
    d.answerBox(TD::IdYes);
    d.answerBox(TD::IdCancel);
    const int yesCancel = TD::ButtonYes | TD::ButtonCancel;
    EXPECT_EQ(showTaskDialog(d, nullptr, "T", "確認", TD::IconQuestion, yesCancel, "body"),
              TD::IdYes);
    EXPECT_EQ(showTaskDialog(d, nullptr, "T", "again", 0, yesCancel, ""), TD::IdCancel);
    const ScriptedDialogs::Box& b = d.boxes().at(0);
    EXPECT_EQ(QStringList({b.title, b.instruction, b.content}), QStringList({"T", "確認", "body"}));
    EXPECT_EQ(QList<int>({b.icon, b.buttons, b.result}),
              QList<int>({TD::IconQuestion, yesCancel, TD::IdYes}));
    // Ok boxes need no answer (nor are they noted: four below).
    EXPECT_EQ(showInfoDialog(d, nullptr, "確認", "保存しました。"), TD::IdOk);
    EXPECT_EQ(d.boxes().at(2).title, applicationTitle());
    // Unscripted questions get the answer that changes nothing, and are noted; so is an
    // answer that is none of the box's buttons.
    EXPECT_EQ(showTaskDialog(d, nullptr, "T", "q1", 0, yesCancel, ""), TD::IdCancel);
    EXPECT_EQ(showTaskDialog(d, nullptr, "T", "q2", 0, TD::ButtonYes | TD::ButtonNo, ""), TD::IdNo);
    EXPECT_EQ(showTaskDialog(d, nullptr, "T", "q3", 0, TD::ButtonRetry | TD::ButtonClose, ""),
              TD::IdClose);
    d.answerBox(TD::IdNo);
    EXPECT_EQ(showTaskDialog(d, nullptr, "T", "q4", 0, yesCancel, ""), TD::IdCancel);
    EXPECT_TRUE(d.unanswered().size() == 4 && d.unanswered()[0].contains("q1"));
    // Texts are cut at 2049 characters.
    const QString longText(3000, QChar(u'あ'));
    showTaskDialog(d, nullptr, longText, longText, 0, TD::ButtonOk, longText);
    const ScriptedDialogs::Box& cut = d.boxes().back();
    EXPECT_EQ(QList<qsizetype>({cut.title.size(), cut.instruction.size(), cut.content.size()}),
              QList<qsizetype>({2049, 2049, 2049}));
}

TEST(ScriptedDialogsTest, CallsFromAnotherThreadRunOnTheGuiThreadAndWait) {
    // The group recalculation saves, and so puts text on the clipboard and may show boxes,
    // from a worker thread while the test reads the records.
    ScriptedDialogs d;
    QThread* gui = QThread::currentThread();
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
    EXPECT_TRUE(d.clipboard().isEmpty() && !done);
    while (!done)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    worker.join();
    EXPECT_EQ(clipboardSeen + d.clipboard(), "UPDATE 49UPDATE 49");
    EXPECT_EQ(messageThreads, std::vector<QThread*>{gui});
    EXPECT_EQ(d.messages().at(0).text, "ERROR");
    EXPECT_EQ(
        QList<qsizetype>({answer, qsizetype(d.boxes().size()), d.beeps(), d.unanswered().size()}),
        QList<qsizetype>({TD::IdNo, 1, 1, 0}));
}

} // namespace
