#include "edit/upartsselect.h"

#include "edit/partslibrary.h"
#include "platform/application.h"
#include "platform/dialogs.h"

#include <QFile>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QStatusBar>

TFpartsSelect* FpartsSelect = nullptr;

TFpartsSelect::TFpartsSelect(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("FpartsSelect"));
    setWindowTitle(QStringLiteral("標準歩掛選択"));
    setModal(true);

    Label1 = new QLabel(QStringLiteral("標準歩掛選択"), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    ListBox1 = new QListWidget(this);
    ListBox1->setObjectName(QStringLiteral("ListBox1"));
    ListBox1->setSelectionMode(QAbstractItemView::SingleSelection);
    ListBox1->setSortingEnabled(false);
    Button1 = new QPushButton(QStringLiteral("選択実行"), this);
    Button1->setObjectName(QStringLiteral("Button1"));
    Button2 = new QPushButton(QStringLiteral("キャンセル"), this);
    Button2->setObjectName(QStringLiteral("Button2"));
    Button3 = new QPushButton(QStringLiteral("削　除"), this);
    Button3->setObjectName(QStringLiteral("Button3"));
    // Enter picks; no other button answers Enter, least of all the delete.
    Button1->setDefault(true);
    Button2->setAutoDefault(false);
    Button3->setAutoDefault(false);
    StatusBar1 = new QStatusBar(this);
    StatusBar1->setObjectName(QStringLiteral("StatusBar1"));
    StatusBar1->setSizeGripEnabled(false);
    panel0_ = new QLabel(StatusBar1);
    panel0_->setObjectName(QStringLiteral("Panel0"));
    StatusBar1->addWidget(panel0_, 1);

    auto* layout = new QGridLayout(this);
    layout->addWidget(Label1, 0, 0, 1, 2);
    layout->addWidget(ListBox1, 1, 0, 4, 1);
    layout->addWidget(Button1, 1, 1);
    layout->addWidget(Button2, 2, 1);
    layout->setRowStretch(3, 1);
    layout->addWidget(Button3, 4, 1);
    layout->addWidget(StatusBar1, 5, 0, 1, 2);
    resize(380, 420);

    connect(Button1, &QPushButton::clicked, this, [this] { done(ResultSelect); });
    connect(Button2, &QPushButton::clicked, this, [this] { done(ResultCancel); });
    connect(Button3, &QPushButton::clicked, this, &TFpartsSelect::Button3Click);
    // A double click anywhere in the list, on an entry or not.
    ListBox1->viewport()->installEventFilter(this);
    if (!FpartsSelect) FpartsSelect = this;
}

TFpartsSelect::~TFpartsSelect() {
    if (FpartsSelect == this) FpartsSelect = nullptr;
}

QString TFpartsSelect::Panel(int index) const {
    return index == 0 ? panel0_->text() : QString();
}

void TFpartsSelect::SetPanel(int index, const QString& text) {
    if (index == 0) panel0_->setText(text);
}

QString TFpartsSelect::extension() const {
    return Panel(0);
}

int TFpartsSelect::ItemIndex() const {
    const QList<QListWidgetItem*> selected = ListBox1->selectedItems();
    return selected.isEmpty() ? -1 : ListBox1->row(selected.first());
}

QString TFpartsSelect::SelectedEntry() const {
    const int index = ItemIndex();
    return index < 0 ? QString() : ListBox1->item(index)->text();
}

void TFpartsSelect::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    CentreOnScreen(this);
    if (!event->spontaneous()) FormShow();
}

void TFpartsSelect::FormShow() {
    folder_ = PartsLibraryFolder();
    ListBox1->clear();
    ListBox1->addItems(PartsEntryNames(folder_, extension()));
}

void TFpartsSelect::Button3Click() {
    const int index = ItemIndex();
    if (index < 0) return;
    if (ShowTaskDialog(this, ApplicationTitle(), QStringLiteral("確認"), TaskDialog::IconQuestion,
                       TaskDialog::ButtonYes | TaskDialog::ButtonNo,
                       QStringLiteral("削除していいですか?")) != TaskDialog::IdYes)
        return;
    // A file that will not go reports nothing; the entry leaves the list all
    // the same, as the folder will be read again at the next show.
    QFile::remove(PartsEntryPath(folder_, ListBox1->item(index)->text(), extension()));
    delete ListBox1->takeItem(index);
}

void TFpartsSelect::ListBox1DblClick() {
    done(ResultSelect);
}

bool TFpartsSelect::eventFilter(QObject* watched, QEvent* event) {
    if (watched == ListBox1->viewport() && event->type() == QEvent::MouseButtonDblClick &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        ListBox1DblClick();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}
