// The Qt dialogs, driven from a timer while their modal loop runs.
#include "platform/qtdialogs.h"
#include "support/guitesting.h"

#include <QInputDialog>
#include <QMessageBox>

namespace TD = ::TaskDialog;
using MB = QMessageBox;

namespace {

struct SeenBox {
    QString title, text, informative;
    QStringList captions; // of the buttons, sorted
    MB::Icon icon = MB::NoIcon;
    MB::StandardButtons buttons;
    MB::StandardButton defaultButton = MB::NoButton;
};

// Reads the next box, then presses the given button (or Esc with NoButton).
void pressOnBox(SeenBox& seen, MB::StandardButton press) {
    whenModal([&seen, press](QWidget* w) {
        auto* box = qobject_cast<MB*>(w);
        if (!box) {
            ADD_FAILURE() << "no message box";
            return w->close(), void();
        }
        seen = {box->windowTitle(), box->text(),           box->informativeText(), {},
                box->icon(),        box->standardButtons()};
        for (QAbstractButton* b : box->buttons())
            seen.captions << b->text();
        seen.captions.sort();
        if (box->defaultButton()) seen.defaultButton = box->standardButton(box->defaultButton());
        if (press == MB::NoButton)
            QTest::keyClick(box, Qt::Key_Escape);
        else
            box->button(press)->click();
    });
}

TEST(QtDialogsTest, TaskDialogShowsItsButtonsAndGivesThePressedId) {
    QtDialogs dialogs;
    SeenBox seen;
    pressOnBox(seen, MB::No);
    EXPECT_EQ(dialogs.taskDialog(nullptr, "Qorvale", "データを保存しますか?", TD::IconQuestion,
                                 TD::ButtonYes | TD::ButtonNo | TD::ButtonCancel, "内容"),
              TD::IdNo);
    EXPECT_EQ(QStringList({seen.title, seen.text, seen.informative, seen.captions.join('|')}),
              QStringList({"Qorvale", "データを保存しますか?", "内容", "いいえ|はい|キャンセル"}));
    EXPECT_EQ(std::pair(seen.icon, seen.defaultButton), std::pair(MB::Question, MB::Yes));
    // icon, buttons, the button pressed (Escape for none): the id, the box's icon and buttons
    const struct {
        int icon, buttons;
        MB::StandardButton press;
        int id;
        MB::Icon boxIcon;
        MB::StandardButtons boxButtons;
        const char* captions;
    } cases[] = {{TD::IconWarning, TD::ButtonRetry | TD::ButtonClose, MB::Close, TD::IdClose,
                  MB::Warning, MB::Retry | MB::Close, "再試行|閉じる"},
                 {TD::IconError, TD::ButtonOk, MB::Ok, TD::IdOk, MB::Critical, MB::Ok, "OK"},
                 {TD::IconNone, TD::ButtonYes | TD::ButtonCancel, MB::NoButton, TD::IdCancel,
                  MB::NoIcon, MB::Yes | MB::Cancel, "はい|キャンセル"},
                 {TD::IconInformation, 0, MB::NoButton, TD::IdOk, MB::Information, MB::Ok, "OK"}};
    for (const auto& c : cases) {
        pressOnBox(seen, c.press);
        EXPECT_EQ(dialogs.taskDialog(nullptr, "T", "i", c.icon, c.buttons, ""), c.id);
        EXPECT_EQ(std::tuple(seen.icon, seen.buttons, seen.captions.join('|')),
                  std::tuple(c.boxIcon, c.boxButtons, QString::fromUtf8(c.captions)));
    }
}

// (The clipboard on the GUI thread: every paste test, through the same hand-over; the message
// box: CallsFromAnotherThreadRunOnTheGuiThread.)
TEST(QtDialogsTest, InputAndProcesses) {
    QtDialogs dialogs;
    QString prompt;
    QStringList inputCaptions;
    whenModal([&prompt, &inputCaptions](QWidget* w) {
        auto* input = qobject_cast<QInputDialog*>(w);
        if (!input) {
            ADD_FAILURE() << "no input box";
            return w->close(), void();
        }
        prompt = input->labelText();
        for (const QPushButton* b : input->findChildren<QPushButton*>())
            inputCaptions << b->text();
        inputCaptions.sort();
        EXPECT_EQ(input->textValue(), "給水");
        input->setTextValue("上水");
        input->accept();
    });
    QString value = "給水";
    EXPECT_TRUE(dialogs.inputQuery(nullptr, "Qorvale", "グル－プ名", value));
    EXPECT_EQ(value + prompt + inputCaptions.join('|'), "上水グル－プ名OK|キャンセル");
    whenModal([](QWidget* w) { qobject_cast<QDialog*>(w)->reject(); });
    EXPECT_TRUE(!dialogs.inputQuery(nullptr, "Qorvale", "p", value) && value == "上水");

    EXPECT_TRUE(dialogs.startProcess("true", {}, QString()));
    EXPECT_FALSE(dialogs.startProcess("/nonexistent/program", {}, QString()));
}

// The group recalculation saves on a worker thread: its "ERROR" box and the clipboard copy of
// the statement must come out on the GUI thread, while the GUI thread goes on running its
// event loop.
TEST(QtDialogsTest, CallsFromAnotherThreadRunOnTheGuiThread) {
    QtDialogs dialogs;
    QString boxText;
    QThread* gui = QThread::currentThread();
    QList<QThread*> boxThreads;
    whenModal([&](QWidget* w) {
        auto* box = qobject_cast<MB*>(w);
        ASSERT_NE(box, nullptr);
        boxText = box->windowTitle() + '|' + box->text();
        boxThreads << box->thread();
        box->button(MB::Ok)->click();
        // The task dialog asked next from the worker.
        whenModal([&](QWidget* w2) {
            auto* box2 = qobject_cast<MB*>(w2);
            ASSERT_NE(box2, nullptr);
            boxThreads << box2->thread();
            box2->button(MB::No)->click();
        });
    });
    const QString sql = "UPDATE ex_kanzai SET GOODS='x';\r\n";
    QString readBack;
    int answer = -1;
    QThread* worker = QThread::create([&] {
        dialogs.message(nullptr, "Qorvale", "ERROR");
        dialogs.setClipboardText(sql);
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
    EXPECT_EQ(boxThreads, QList<QThread*>({gui, gui}));
    EXPECT_EQ(QStringList({boxText, QString::number(answer), readBack,
                           QGuiApplication::clipboard()->text()}),
              QStringList({"Qorvale|ERROR", QString::number(TD::IdNo), sql, sql}));
}

} // namespace
