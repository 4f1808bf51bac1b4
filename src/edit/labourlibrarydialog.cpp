#include "edit/labourlibrarydialog.h"

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

LabourLibraryDialog::LabourLibraryDialog(Dialogs& dialogs, QWidget* parent)
    : QDialog(parent), m_dialogs(dialogs) {
    setObjectName(QStringLiteral("LabourLibraryDialog"));
    setWindowTitle(QStringLiteral("標準歩掛選択"));
    setModal(true);

    captionLabel = new QLabel(QStringLiteral("標準歩掛選択"), this);
    captionLabel->setObjectName(QStringLiteral("captionLabel"));
    entryList = new QListWidget(this);
    entryList->setObjectName(QStringLiteral("entryList"));
    entryList->setSelectionMode(QAbstractItemView::SingleSelection);
    entryList->setSortingEnabled(false);
    selectButton = new QPushButton(QStringLiteral("選択実行"), this);
    selectButton->setObjectName(QStringLiteral("selectButton"));
    cancelButton = new QPushButton(QStringLiteral("キャンセル"), this);
    cancelButton->setObjectName(QStringLiteral("cancelButton"));
    deleteButton = new QPushButton(QStringLiteral("削　除"), this);
    deleteButton->setObjectName(QStringLiteral("deleteButton"));
    // Enter picks; no other button answers Enter, least of all the delete.
    selectButton->setDefault(true);
    cancelButton->setAutoDefault(false);
    deleteButton->setAutoDefault(false);
    statusLine = new QStatusBar(this);
    statusLine->setObjectName(QStringLiteral("statusLine"));
    statusLine->setSizeGripEnabled(false);
    statusPanel_ = new QLabel(statusLine);
    statusPanel_->setObjectName(QStringLiteral("statusPanel"));
    statusLine->addWidget(statusPanel_, 1);

    auto* layout = new QGridLayout(this);
    layout->addWidget(captionLabel, 0, 0, 1, 2);
    layout->addWidget(entryList, 1, 0, 4, 1);
    layout->addWidget(selectButton, 1, 1);
    layout->addWidget(cancelButton, 2, 1);
    layout->setRowStretch(3, 1);
    layout->addWidget(deleteButton, 4, 1);
    layout->addWidget(statusLine, 5, 0, 1, 2);
    resize(380, 420);

    connect(selectButton, &QPushButton::clicked, this, [this] { done(ResultSelect); });
    connect(cancelButton, &QPushButton::clicked, this, [this] { done(ResultCancel); });
    connect(deleteButton, &QPushButton::clicked, this, &LabourLibraryDialog::deleteEntry);
    // A double click anywhere in the list, on an entry or not.
    entryList->viewport()->installEventFilter(this);
}

LabourLibraryDialog::~LabourLibraryDialog() = default;

QString LabourLibraryDialog::panel(int index) const {
    return index == 0 ? statusPanel_->text() : QString();
}

void LabourLibraryDialog::setPanel(int index, const QString& text) {
    if (index == 0) statusPanel_->setText(text);
}

QString LabourLibraryDialog::extension() const {
    return panel(0);
}

int LabourLibraryDialog::itemIndex() const {
    const QList<QListWidgetItem*> selected = entryList->selectedItems();
    return selected.isEmpty() ? -1 : entryList->row(selected.first());
}

QString LabourLibraryDialog::selectedEntry() const {
    const int index = itemIndex();
    return index < 0 ? QString() : entryList->item(index)->text();
}

void LabourLibraryDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    centreOnScreen(this);
    if (!event->spontaneous()) prepareShow();
}

void LabourLibraryDialog::prepareShow() {
    folder_ = partsLibraryFolder();
    entryList->clear();
    entryList->addItems(partsEntryNames(folder_, extension()));
}

void LabourLibraryDialog::deleteEntry() {
    const int index = itemIndex();
    if (index < 0) return;
    if (showTaskDialog(m_dialogs, this, applicationTitle(), QStringLiteral("確認"),
                       TaskDialog::IconQuestion, TaskDialog::ButtonYes | TaskDialog::ButtonNo,
                       QStringLiteral("削除していいですか?")) != TaskDialog::IdYes)
        return;
    // A file that will not go reports nothing; the entry leaves the list all
    // the same, as the folder will be read again at the next show.
    QFile::remove(partsEntryPath(folder_, entryList->item(index)->text(), extension()));
    delete entryList->takeItem(index);
}

void LabourLibraryDialog::entryDoubleClicked() {
    done(ResultSelect);
}

bool LabourLibraryDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched == entryList->viewport() && event->type() == QEvent::MouseButtonDblClick &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        entryDoubleClicked();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}
