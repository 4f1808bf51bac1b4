#pragma once
// The tree of the pipe types: the ten system groups, each with its twenty
// pipe types. A node is found by its absolute index: group g (1 to 10) is
// (g - 1) x 21, its pipe type k (1 to 20) is (g - 1) x 21 + k.
//
// The tree only shows and reports: a click on a node is itemClicked; after
// every key and every release of the left button the tree has handled,
// inputHandled reports it (with the node a release with Shift came on, to
// be named). The right button opens the pop-up menu and moves nothing; a
// name cut off by the tree's width reads whole in the hint.

#include <QTreeWidget>

class QMenu;

class PipeTypeTree : public QTreeWidget {
    Q_OBJECT
public:
    static constexpr int GroupCount = 10;
    static constexpr int PipeTypesPerGroup = 20;

    explicit PipeTypeTree(QWidget* parent = nullptr);

    // The menu the right button and the menu key open.
    void setPopupMenu(QMenu* menu) { m_popupMenu = menu; }

    // Node by absolute index; null outside the tree.
    QTreeWidgetItem* node(int absoluteIndex) const;
    int absoluteIndex(QTreeWidgetItem* node) const;
    // Group (1 to 10) and pipe type (1 to 20) of a pipe type's node; false
    // for a group's node or none.
    bool pipeTypeOf(QTreeWidgetItem* node, int& group, int& pipeType) const;
    // Selects the node and brings it into view without a click.
    void selectQuietly(QTreeWidgetItem* node);
    // The names of group g's pipe types, in order; an empty name shows as
    // "----".
    void setPipeTypeNames(int group, const QStringList& names);

signals:
    void inputHandled(QTreeWidgetItem* namingNode);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    // Reports the input once the tree has handled it.
    void reportInput(QTreeWidgetItem* namingNode);

    QMenu* m_popupMenu = nullptr;
};
