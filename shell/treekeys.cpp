#include "shell/treekeys.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

TreeKeys::TreeKeys(QTreeWidget *tree)
    : QObject(tree)
    , m_tree(tree)
{
    tree->installEventFilter(this);
    tree->viewport()->installEventFilter(this);
}

bool TreeKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress)
        m_walks = false;
    else if (event->type() == QEvent::KeyPress)
        return isKeyTaken(static_cast<const QKeyEvent &>(*event));
    else if (event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
            walk();
    }
    return QObject::eventFilter(watched, event);
}

bool TreeKeys::isKeyTaken(const QKeyEvent &key)
{
    walk();
    const bool clicks =
        key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter || key.key() == Qt::Key_Space;
    if (!clicks || (key.modifiers() & ~Qt::KeypadModifier))
        return false;
    QTreeWidgetItem *item = m_tree->currentItem();
    if (item && !key.isAutoRepeat())
        emit m_tree->itemClicked(item, 0);
    return true;
}

void TreeKeys::walk()
{
    m_walks = true;
    returnToPlace();
}

void TreeKeys::returnToPlace()
{
    if (m_tree->currentItem())
        return;
    if (QTreeWidgetItem *item = itemOf(m_page, m_device))
        m_tree->setCurrentItem(item, 0, QItemSelectionModel::NoUpdate);
}

void TreeKeys::comeBack(bool hadFocus)
{
    if (m_walks || hadFocus)
        returnToPlace();
}

QTreeWidgetItem *TreeKeys::itemOf(int page, int device) const
{
    for (QTreeWidgetItemIterator item(m_tree); *item; ++item) {
        if ((*item)->data(0, pageRole).toInt() == page && (*item)->data(0, deviceRole).toInt() == device)
            return *item;
    }
    return nullptr;
}

void TreeKeys::forgetSelection()
{
    if (const QTreeWidgetItem *current = m_tree->currentItem()) {
        m_page = current->data(0, pageRole).toInt();
        m_device = current->data(0, deviceRole).toInt();
    }
    if (m_walks)
        m_tree->clearSelection();
    else if (m_tree->currentIndex().isValid() || m_tree->selectionModel()->hasSelection())
        m_tree->setCurrentItem(nullptr);
}
