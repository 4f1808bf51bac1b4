#include "shell/formwidgets.h"

#include <QButtonGroup>
#include <QEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QRadioButton>
#include <QSignalBlocker>

// RadioGroup

RadioGroup::RadioGroup(const QString& caption, const QStringList& items, int columns,
                       QWidget* parent)
    : QGroupBox(caption, parent), group_(new QButtonGroup(this)) {
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(6, 4, 6, 4);
    layout->setVerticalSpacing(2);
    const int perColumn = (int(items.size()) + columns - 1) / std::max(columns, 1);
    for (int i = 0; i < int(items.size()); ++i) {
        auto* button = new QRadioButton(items[i], this);
        group_->addButton(button, i);
        layout->addWidget(button, i % perColumn, i / perColumn);
    }
    connect(group_, &QButtonGroup::idClicked, this, &RadioGroup::buttonClicked);
}

int RadioGroup::count() const {
    return int(group_->buttons().size());
}

QString RadioGroup::item(int index) const {
    QAbstractButton* b = group_->button(index);
    return b ? b->text() : QString();
}

void RadioGroup::setItemIndex(int index) {
    if (index < -1) index = -1;
    if (index >= count()) index = count() - 1;
    if (index == itemIndex_) return;
    itemIndex_ = index;
    if (index >= 0) {
        group_->button(index)->setChecked(true);
    } else if (QAbstractButton* b = group_->checkedButton()) {
        group_->setExclusive(false);
        b->setChecked(false);
        group_->setExclusive(true);
    }
    if (onClicked) onClicked();
}

void RadioGroup::buttonClicked(int id) {
    if (id == itemIndex_) return;
    itemIndex_ = id;
    if (onClicked) onClicked();
}

// ToggleSwitch

ToggleSwitch::ToggleSwitch(const QString& onCaption, const QString& offCaption, QWidget* parent)
    : QAbstractButton(parent), onCaption_(onCaption), offCaption_(offCaption) {
    // A checkable button: the mouse and the space key switch it, and
    // assistive technology reads its caption and whether it is on.
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setText(offCaption_);
    connect(this, &QAbstractButton::toggled, this,
            [this](bool on) { setText(on ? onCaption_ : offCaption_); });
    connect(this, &QAbstractButton::clicked, this, [this] {
        if (onClicked) onClicked();
    });
}

QSize ToggleSwitch::sizeHint() const {
    const QFontMetrics fm(font());
    const int text = std::max(fm.horizontalAdvance(onCaption_), fm.horizontalAdvance(offCaption_));
    return {44 + 8 + text + 4, std::max(22, fm.height() + 6)};
}

void ToggleSwitch::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRect track(2, (height() - 18) / 2, 40, 18);
    p.setPen(Qt::NoPen);
    p.setBrush(isOn() ? QColor(0x2E, 0x7D, 0x32) : QColor(0x9E, 0x9E, 0x9E));
    p.drawRoundedRect(track, 9, 9);
    p.setBrush(Qt::white);
    const int knobX = isOn() ? track.right() - 15 : track.left() + 2;
    p.drawEllipse(QRect(knobX, track.top() + 2, 14, 14));
    p.setPen(palette().color(isEnabled() ? QPalette::WindowText : QPalette::PlaceholderText));
    p.drawText(QRect(track.right() + 8, 0, width() - track.right() - 8, height()),
               Qt::AlignVCenter | Qt::AlignLeft, text());
    if (hasFocus()) {
        p.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
        p.setBrush(Qt::NoBrush);
        p.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

// CheckBox

CheckBox::CheckBox(const QString& caption, QWidget* parent) : QCheckBox(caption, parent) {
    setChecked(true);
    connect(this, &QCheckBox::clicked, this, [this] {
        if (onClicked) onClicked();
    });
}

void CheckBox::SetChecked(bool checked) {
    if (checked == isChecked()) return;
    setChecked(checked);
    if (onClicked) onClicked();
}

// EditCombo

EditCombo::EditCombo(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    // The line edit forwards its focus to the box, so the box sees every key.
    installEventFilter(this);
}

bool EditCombo::eventFilter(QObject* watched, QEvent* event) {
    if (watched == this && event->type() == QEvent::KeyPress && onKeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        bool handled = false;
        onKeyPress(key->key(), handled);
        if (handled) return true;
    }
    return QComboBox::eventFilter(watched, event);
}

// FixedList

FixedList::FixedList(const QStringList& items, QWidget* parent) : QComboBox(parent) {
    addItems(items);
    connect(this, QOverload<int>::of(&QComboBox::activated), this, [this](int) {
        if (onSelect) onSelect();
    });
}

void FixedList::setItemIndex(int index) {
    const QSignalBlocker block(this);
    setCurrentIndex(index);
}
