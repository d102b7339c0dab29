#pragma once

#include "benchmarks/redraw.h"

#include <QLineEdit>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QWidget>

/// The floors of what happens in the window: the same done to bare widgets of the toolkit, in a bare window
/// of the size of the program's.

/// A window with nothing in it but one widget, shown while the object lives.
class PlainWindow
{
public:
    /// Takes the widget over.
    explicit PlainWindow(QWidget *content);

private:
    QWidget m_window;
};

/// Keystrokes into a bare field.
class PlainField
{
public:
    PlainField();
    /// The time of one keystroke in ms, see typeKey().
    double keystrokeMs();

private:
    QLineEdit *m_field; ///< child of the window
    const PlainWindow m_window;
    Redraw m_redraw;
};

/// A bare tree.
class PlainTree
{
public:
    PlainTree();
    /// The time in ms in which the tree is emptied and filled with `drives` times `pages` items below one.
    double rebuildMs(int drives, int pages);

private:
    void refill(int drives, int pages);

    QTreeWidget *m_tree; ///< child of the window
    const PlainWindow m_window;
    Redraw m_redraw;
};

/// Plain twins of pages: a bare label or field in place of each child.
class PlainPages
{
public:
    PlainPages();
    /// Adds a twin without showing it.
    QWidget *addTwin(const QWidget &page);
    /// The time in ms in which the twin takes the place of the one before it.
    double showMs(QWidget *twin);

private:
    QStackedWidget *m_stack; ///< child of the window
    const PlainWindow m_window;
};
