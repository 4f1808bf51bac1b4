// The Qt dialogs, driven from a timer while their modal loop runs.
#include "shell/qtdialogs.h"

#include "modal.h"

#include <QClipboard>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace TD = ::TaskDialog;

namespace {

struct SeenBox {
    QString title, text, informative;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
};

// Reads the box, then presses the given button (or Esc with NoButton).
void pressOnBox(SeenBox& seen, QMessageBox::StandardButton press) {
    WhenModal([&seen, press](QWidget* w) {
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
        if (box->defaultButton()) seen.defaultButton = box->standardButton(box->defaultButton());
        if (press == QMessageBox::NoButton)
            QTest::keyClick(box, Qt::Key_Escape);
        else
            box->button(press)->click();
    });
}

TEST(QtDialogsTest, TaskDialogShowsItsButtonsAndGivesThePressedId) {
    QtDialogs dialogs;
    SeenBox seen;
    pressOnBox(seen, QMessageBox::No);
    const int id = dialogs.TaskDialog(nullptr, "Qorvale", "データを保存しますか?", TD::IconQuestion,
                                      TD::ButtonYes | TD::ButtonNo | TD::ButtonCancel, "内容");
    EXPECT_EQ(id, TD::IdNo);
    EXPECT_EQ(seen.title, "Qorvale");
    EXPECT_EQ(seen.text, "データを保存しますか?");
    EXPECT_EQ(seen.informative, "内容");
    EXPECT_EQ(seen.icon, QMessageBox::Question);
    EXPECT_EQ(seen.buttons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    EXPECT_EQ(seen.defaultButton, QMessageBox::Yes);

    pressOnBox(seen, QMessageBox::Close);
    EXPECT_EQ(dialogs.TaskDialog(nullptr, "T", "i", TD::IconWarning,
                                 TD::ButtonRetry | TD::ButtonClose, ""),
              TD::IdClose);
    EXPECT_EQ(seen.buttons, QMessageBox::Retry | QMessageBox::Close);
    EXPECT_EQ(seen.icon, QMessageBox::Warning);

    pressOnBox(seen, QMessageBox::Ok);
    EXPECT_EQ(dialogs.TaskDialog(nullptr, "T", "i", TD::IconError, TD::ButtonOk, ""), TD::IdOk);
    EXPECT_EQ(seen.icon, QMessageBox::Critical);
}

TEST(QtDialogsTest, EscapeAnswersCancelAndNoButtonsMeansOk) {
    QtDialogs dialogs;
    SeenBox seen;
    pressOnBox(seen, QMessageBox::NoButton);
    EXPECT_EQ(
        dialogs.TaskDialog(nullptr, "T", "i", TD::IconNone, TD::ButtonYes | TD::ButtonCancel, ""),
        TD::IdCancel);
    EXPECT_EQ(seen.icon, QMessageBox::NoIcon);

    pressOnBox(seen, QMessageBox::NoButton);
    EXPECT_EQ(dialogs.TaskDialog(nullptr, "T", "i", TD::IconInformation, 0, ""), TD::IdOk);
    EXPECT_EQ(seen.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    EXPECT_EQ(seen.icon, QMessageBox::Information);
}

TEST(QtDialogsTest, MessageAndInputBox) {
    QtDialogs dialogs;
    SeenBox seen;
    pressOnBox(seen, QMessageBox::Ok);
    dialogs.Message(nullptr, "ERROR", "no such table: ex_kanzai");
    EXPECT_EQ(seen.title, "ERROR");
    EXPECT_EQ(seen.text, "no such table: ex_kanzai");

    QString prompt;
    WhenModal([&prompt](QWidget* w) {
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
    EXPECT_TRUE(dialogs.InputQuery(nullptr, "Qorvale", "グル－プ名を入力してください", value));
    EXPECT_EQ(value, "上水");
    EXPECT_EQ(prompt, "グル－プ名を入力してください");

    WhenModal([](QWidget* w) { qobject_cast<QDialog*>(w)->reject(); });
    EXPECT_FALSE(dialogs.InputQuery(nullptr, "Qorvale", "p", value));
    EXPECT_EQ(value, "上水");
}

TEST(QtDialogsTest, ClipboardShiftAndProcesses) {
    QtDialogs dialogs;
    dialogs.SetClipboardText("1;2;3");
    EXPECT_EQ(dialogs.ClipboardText(), "1;2;3");
    EXPECT_FALSE(dialogs.ShiftDown());
    EXPECT_TRUE(dialogs.StartProcess("true", {}, QString()));
    EXPECT_FALSE(dialogs.StartProcess("/nonexistent/program", {}, QString()));
}

} // namespace
