#pragma once
// The framework's standard controls that the main form needs and Qt lacks in
// that shape: a radio group with an item index, a toggle switch, a group box
// with a check box in its caption, and a combo box that reports its keys.
// Events are plain callbacks with the framework's names.

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QStringList>
#include <QWidget>

#include <functional>

class QButtonGroup;
class QCheckBox;
class QGridLayout;
class QLabel;

// A group box of radio buttons. Setting itemIndex from the program fires
// onClicked like a click does, when the index changes.
class RadioGroup : public QGroupBox {
    Q_OBJECT
public:
    explicit RadioGroup(const QString& caption, const QStringList& items, int columns = 1,
                        QWidget* parent = nullptr);

    int itemIndex() const { return itemIndex_; }
    void setItemIndex(int index);
    int count() const;
    QString item(int index) const;

    std::function<void()> onClicked;

private:
    void buttonClicked(int id);

    QButtonGroup* group_;
    int itemIndex_ = -1;
};

// An on/off switch with a caption for each state. onClicked fires when the
// person switches it.
class ToggleSwitch : public QAbstractButton {
    Q_OBJECT
public:
    ToggleSwitch(const QString& onCaption, const QString& offCaption, QWidget* parent = nullptr);

    bool isOn() const { return isChecked(); }
    // Sets the state without firing onClicked.
    void setOn(bool on) { setChecked(on); }

    QSize sizeHint() const override;

    // The user switched it.
    std::function<void()> onClicked;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString onCaption_, offCaption_;
};

// A check box. Setting checked from the program fires onClicked like a click
// does, when the state changes.
class CheckBox : public QCheckBox {
    Q_OBJECT
public:
    explicit CheckBox(const QString& caption, QWidget* parent = nullptr);

    bool checked() const { return isChecked(); }
    void SetChecked(bool checked);

    std::function<void()> onClicked;
};

// A combo box with free text that reports key presses before handling them;
// the handler sets handled to swallow the key.
class EditCombo : public QComboBox {
    Q_OBJECT
public:
    explicit EditCombo(QWidget* parent = nullptr);

    QString text() const { return currentText(); }
    void setText(const QString& text) { setEditText(text); }

    std::function<void(int key, bool& handled)> onKeyPress;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

// A fixed list whose selection by the person fires onSelect; setting
// itemIndex from the program does not.
class FixedList : public QComboBox {
    Q_OBJECT
public:
    explicit FixedList(const QStringList& items, QWidget* parent = nullptr);

    int itemIndex() const { return currentIndex(); }
    void setItemIndex(int index);

    std::function<void()> onSelect;
};
