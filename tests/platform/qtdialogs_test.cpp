// The Qt dialogs, driven from a timer while their modal loop runs.
#include "platform/qtdialogs.h"

#include "support/modal.h"

#include <QClipboard>
#include <QEventLoop>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QThread>

#include <gtest/gtest.h>

namespace TD = ::TaskDialog;

namespace {

struct SeenBox {
    QString title, text, informative;
    QStringList captions; // of the buttons, as laid out
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
};

// Reads the box, then presses the given button (or Esc with NoButton).
void pressOnBox(SeenBox& seen, QMessageBox::StandardButton press) {
    whenModal([&seen, press](QWidget* w) {
        auto* box = qobject_cast<QMessageBox*>(w);
        if (!box) {
            ADD_FAILURE() << "no message box";
            w->close();
            return;
        }
        seen.title = box->windowTitle();
        seen.text = box->text();
        seen.informative = box->informativeText();
        seen.icon = box->icon();
        seen.buttons = box->standardButtons();
        for (QAbstractButton* b : box->buttons())
            seen.captions << b->text();
        if (box->defaultButton()) seen.defaultButton = box->standardButton(box->defaultButton());
        if (press == QMessageBox::NoButton)
            QTest::keyClick(box, Qt::Key_Escape);
        else
            box->button(press)->click();
    });
}

TEST(QtDialogsTest, EveryButtonReadsInJapanese) {
    QtDialogs dialogs;
    SeenBox seen;
    pressOnBox(seen, QMessageBox::Cancel);
    dialogs.taskDialog(nullptr, "Qorvale", "?", TD::IconQuestion,
                       TD::ButtonOk | TD::ButtonYes | TD::ButtonNo | TD::ButtonRetry |
                           TD::ButtonCancel | TD::ButtonClose,
                       QString());
    seen.captions.sort();
    QStringList expected{"OK", "はい", "いいえ", "再試行", "キャンセル", "閉じる"};
    expected.sort();
    EXPECT_EQ(seen.captions, expected);

    // The input box too.
    QStringList inputCaptions;
    whenModal([&](QWidget* w) {
        for (auto* b : w->findChildren<QPushButton*>())
            inputCaptions << b->text();
        QTest::keyClick(w, Qt::Key_Escape);
    });
    QString value = "x";
    EXPECT_FALSE(dialogs.inputQuery(nullptr, "Qorvale", "名称", value));
    inputCaptions.sort();
    EXPECT_EQ(inputCaptions, (QStringList{"OK", "キャンセル"}));
}

TEST(QtDialogsTest, TaskDialogShowsItsButtonsAndGivesThePressedId) {
    QtDialogs dialogs;
    SeenBox seen;
    pressOnBox(seen, QMessageBox::No);
    const int id = dialogs.taskDialog(nullptr, "Qorvale", "データを保存しますか?", TD::IconQuestion,
                                      TD::ButtonYes | TD::ButtonNo | TD::ButtonCancel, "内容");
    EXPECT_EQ(id, TD::IdNo);
    EXPECT_EQ(seen.title, "Qorvale");
    EXPECT_EQ(seen.text, "データを保存しますか?");
    EXPECT_EQ(seen.informative, "内容");
    EXPECT_EQ(seen.icon, QMessageBox::Question);
    EXPECT_EQ(seen.buttons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    EXPECT_EQ(seen.defaultButton, QMessageBox::Yes);

    pressOnBox(seen, QMessageBox::Close);
    EXPECT_EQ(dialogs.taskDialog(nullptr, "T", "i", TD::IconWarning,
                                 TD::ButtonRetry | TD::ButtonClose, ""),
              TD::IdClose);
    EXPECT_EQ(seen.buttons, QMessageBox::Retry | QMessageBox::Close);
    EXPECT_EQ(seen.icon, QMessageBox::Warning);

    pressOnBox(seen, QMessageBox::Ok);
    EXPECT_EQ(dialogs.taskDialog(nullptr, "T", "i", TD::IconError, TD::ButtonOk, ""), TD::IdOk);
    EXPECT_EQ(seen.icon, QMessageBox::Critical);
}

TEST(QtDialogsTest, EscapeAnswersCancelAndNoButtonsMeansOk) {
    QtDialogs dialogs;
    SeenBox seen;
    pressOnBox(seen, QMessageBox::NoButton);
    EXPECT_EQ(
        dialogs.taskDialog(nullptr, "T", "i", TD::IconNone, TD::ButtonYes | TD::ButtonCancel, ""),
        TD::IdCancel);
    EXPECT_EQ(seen.icon, QMessageBox::NoIcon);

    pressOnBox(seen, QMessageBox::NoButton);
    EXPECT_EQ(dialogs.taskDialog(nullptr, "T", "i", TD::IconInformation, 0, ""), TD::IdOk);
    EXPECT_EQ(seen.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    EXPECT_EQ(seen.icon, QMessageBox::Information);
}

TEST(QtDialogsTest, MessageAndInputBox) {
    QtDialogs dialogs;
    SeenBox seen;
    pressOnBox(seen, QMessageBox::Ok);
    dialogs.message(nullptr, "ERROR", "no such table: ex_kanzai");
    EXPECT_EQ(seen.title, "ERROR");
    EXPECT_EQ(seen.text, "no such table: ex_kanzai");

    QString prompt;
    whenModal([&prompt](QWidget* w) {
        auto* input = qobject_cast<QInputDialog*>(w);
        if (!input) {
            ADD_FAILURE() << "no input box";
            w->close();
            return;
        }
        prompt = input->labelText();
        EXPECT_EQ(input->textValue(), "給水");
        input->setTextValue("上水");
        input->accept();
    });
    QString value = "給水";
    EXPECT_TRUE(dialogs.inputQuery(nullptr, "Qorvale", "グル－プ名を入力してください", value));
    EXPECT_EQ(value, "上水");
    EXPECT_EQ(prompt, "グル－プ名を入力してください");

    whenModal([](QWidget* w) { qobject_cast<QDialog*>(w)->reject(); });
    EXPECT_FALSE(dialogs.inputQuery(nullptr, "Qorvale", "p", value));
    EXPECT_EQ(value, "上水");
}

TEST(QtDialogsTest, ClipboardAndProcesses) {
    QtDialogs dialogs;
    dialogs.setClipboardText("1;2;3");
    EXPECT_EQ(dialogs.clipboardText(), "1;2;3");
    EXPECT_TRUE(dialogs.startProcess("true", {}, QString()));
    EXPECT_FALSE(dialogs.startProcess("/nonexistent/program", {}, QString()));
}

// The group recalculation saves on a worker thread: its "ERROR" box and the
// clipboard copy of the statement must come out on the GUI thread, while the
// GUI thread goes on running its event loop.
TEST(QtDialogsTest, CallsFromAnotherThreadRunOnTheGuiThread) {
    QtDialogs dialogs;
    QThread* gui = QThread::currentThread();
    QThread* boxThread = nullptr;
    QString boxText;
    int boxes = 0;
    whenModal([&](QWidget* w) {
        auto* box = qobject_cast<QMessageBox*>(w);
        ASSERT_NE(box, nullptr);
        boxThread = box->thread();
        boxText = box->text();
        ++boxes;
        box->button(QMessageBox::Ok)->click();
        // The task dialog asked next from the worker.
        whenModal([&](QWidget* w2) {
            auto* box2 = qobject_cast<QMessageBox*>(w2);
            ASSERT_NE(box2, nullptr);
            ++boxes;
            box2->button(QMessageBox::No)->click();
        });
    });

    QString readBack;
    int answer = -1;
    QThread* worker = QThread::create([&] {
        dialogs.message(nullptr, "Qorvale", "ERROR");
        dialogs.setClipboardText("UPDATE ex_kanzai SET GOODS='x';\r\n");
        readBack = dialogs.clipboardText();
        answer = dialogs.taskDialog(nullptr, "T", "i", TD::IconQuestion,
                                    TD::ButtonYes | TD::ButtonNo, "");
    });
    QEventLoop loop;
    QObject::connect(worker, &QThread::finished, &loop, &QEventLoop::quit);
    worker->start();
    loop.exec();
    worker->wait();
    delete worker;

    EXPECT_EQ(boxes, 2);
    EXPECT_EQ(boxThread, gui);
    EXPECT_EQ(boxText, "ERROR");
    EXPECT_EQ(answer, TD::IdNo);
    EXPECT_EQ(readBack, "UPDATE ex_kanzai SET GOODS='x';\r\n");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), readBack);
}

} // namespace
