#include "shell/pipetypetree.h"

#include "util/textlines.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QTimer>
#include <QToolTip>

PipeTypeTree::PipeTypeTree(QWidget* parent) : QTreeWidget(parent) {
    setObjectName(QStringLiteral("tree"));
    setHeaderHidden(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setMinimumWidth(0);
    for (int g = 1; g <= GroupCount; ++g) {
        auto* group = new QTreeWidgetItem(this);
        for (int k = 1; k <= PipeTypesPerGroup; ++k)
            new QTreeWidgetItem(group, {QStringLiteral("----")});
    }
    // The menu key opens the pop-up menu where the tree is.
    connect(this, &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        if (m_popupMenu) m_popupMenu->popup(viewport()->mapToGlobal(pos));
    });
}

QTreeWidgetItem* PipeTypeTree::node(int absoluteIndex) const {
    if (absoluteIndex < 0 || absoluteIndex >= GroupCount * 21) return nullptr;
    QTreeWidgetItem* group = topLevelItem(absoluteIndex / 21);
    const int k = absoluteIndex % 21;
    return k == 0 ? group : group->child(k - 1);
}

int PipeTypeTree::absoluteIndex(QTreeWidgetItem* node) const {
    if (!node) return -1;
    if (QTreeWidgetItem* parent = node->parent())
        return indexOfTopLevelItem(parent) * 21 + parent->indexOfChild(node) + 1;
    return indexOfTopLevelItem(node) * 21;
}

bool PipeTypeTree::pipeTypeOf(QTreeWidgetItem* node, int& group, int& pipeType) const {
    QTreeWidgetItem* parent = node ? node->parent() : nullptr;
    if (!parent) return false;
    group = indexOfTopLevelItem(parent) + 1;
    pipeType = parent->indexOfChild(node) + 1;
    return true;
}

void PipeTypeTree::selectQuietly(QTreeWidgetItem* node) {
    if (!node) return;
    const QSignalBlocker block(this);
    setCurrentItem(node);
    scrollToItem(node);
}

void PipeTypeTree::setPipeTypeNames(int group, const QStringList& names) {
    for (int i = 0; i < int(names.size()); ++i) {
        const QString text = names[i].isEmpty() ? QStringLiteral("----") : names[i];
        if (QTreeWidgetItem* n = node((group - 1) * 21 + 1 + i)) n->setText(0, trimBlanks(text));
    }
}

void PipeTypeTree::reportInput(QTreeWidgetItem* namingNode) {
    QTimer::singleShot(0, this, [this, namingNode] { emit inputHandled(namingNode); });
}

void PipeTypeTree::keyPressEvent(QKeyEvent* event) {
    QTreeWidget::keyPressEvent(event);
    // Once the tree has moved its selection by the key.
    reportInput(nullptr);
}

void PipeTypeTree::mousePressEvent(QMouseEvent* event) {
    // The right button only opens the pop-up menu, which acts on the pipe
    // type on the sheet: it must not move the selection away from it.
    if (event->button() == Qt::RightButton) {
        if (m_popupMenu) m_popupMenu->popup(event->globalPosition().toPoint());
        return;
    }
    QTreeWidget::mousePressEvent(event);
}

void PipeTypeTree::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton) return;
    QTreeWidget::mouseDoubleClickEvent(event);
}

void PipeTypeTree::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton) return;
    // The Shift key counts as the release carries it; the naming follows the
    // click that the same release makes, on its node.
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    QTreeWidgetItem* at = itemAt(event->position().toPoint());
    reportInput(shift ? at : nullptr);
    QTreeWidget::mouseReleaseEvent(event);
}

bool PipeTypeTree::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        // A long name cut off by the tree's width reads whole in the hint.
        auto* help = static_cast<QHelpEvent*>(event);
        if (QTreeWidgetItem* item = itemAt(help->pos()))
            QToolTip::showText(help->globalPos(), item->text(0), viewport());
        else
            QToolTip::hideText();
        return true;
    }
    if (event->type() == QEvent::ContextMenu &&
        static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Mouse)
        return true; // the press has opened the menu already
    return QTreeWidget::viewportEvent(event);
}
