#pragma once

#include <QObject>

class QKeyEvent;
class QTreeWidget;
class QTreeWidgetItem;

/// The tree of the drives and their pages by keys: return and space click the current item, and the arrows go
/// on from where they were although records rebuild the tree. What the mouse has clicked is left at the next
/// record, as ever; the first key comes back to it. Belongs to its tree. Main thread only.
class TreeKeys : public QObject
{
public:
    static constexpr int pageRole = Qt::UserRole + 1;
    static constexpr int deviceRole = Qt::UserRole + 2;

    explicit TreeKeys(QTreeWidget *tree);

    /// Takes the selection away, and what was clicked with it; whoever walks by keys stays where he is.
    void forgetSelection();
    /// After the items have been made anew, makes that current which was, without selecting it, if the focus
    /// was in the tree or the keyboard was the last to touch it.
    void comeBack(bool hadFocus);
    /// The item of a page of a drive; null if there is none.
    QTreeWidgetItem *itemOf(int page, int device) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// True if the key needs no more looking at.
    bool isKeyTaken(const QKeyEvent &key);
    void walk();
    void returnToPlace();

    QTreeWidget *const m_tree;
    bool m_walks = false; ///< the last to touch the tree was no mouse
    int m_page = -1; ///< what the current item shows, or the last one
    int m_device = 0;
};
