#include "benchmarks/plainwidgets.h"

#include "benchmarks/workbench.h"

#include <QHBoxLayout>
#include <QLabel>

namespace {

/// A label or field with the place and the text of the child.
QWidget *plainChild(const QWidget &child, QWidget *parent)
{
    if (const auto *field = qobject_cast<const QLineEdit *>(&child))
        return new QLineEdit(field->text(), parent);
    const auto *label = qobject_cast<const QLabel *>(&child);
    return new QLabel(label ? label->text() : QString(), parent);
}

} // namespace

PlainWindow::PlainWindow(QWidget *content)
{
    (new QHBoxLayout(&m_window))->addWidget(content);
    showAtProgramSize(m_window);
}

PlainField::PlainField()
    : m_field(new QLineEdit)
    , m_window(m_field)
    , m_redraw({m_field})
{
    m_field->setFocus();
}

double PlainField::keystrokeMs()
{
    return m_redraw.ms([&] { typeKey(m_field); });
}

PlainTree::PlainTree()
    : m_tree(new QTreeWidget)
    , m_window(m_tree)
    , m_redraw({m_tree->viewport()})
{
}

double PlainTree::rebuildMs(int drives, int pages)
{
    return m_redraw.ms([&] { refill(drives, pages); });
}

void PlainTree::refill(int drives, int pages)
{
    m_tree->clear();
    auto *top = new QTreeWidgetItem(m_tree, {QStringLiteral("network")});
    for (int drive = 0; drive < drives; ++drive) {
        auto *parent = new QTreeWidgetItem(top, {QStringLiteral("drive %1").arg(drive)});
        for (int page = 0; page < pages; ++page)
            new QTreeWidgetItem(parent, {QStringLiteral("page %1").arg(page)});
    }
    m_tree->expandAll();
}

PlainPages::PlainPages()
    : m_stack(new QStackedWidget)
    , m_window(m_stack)
{
}

QWidget *PlainPages::addTwin(const QWidget &page)
{
    auto *twin = new QWidget;
    const QList<QWidget *> children = page.findChildren<QWidget *>();
    for (const QWidget *child : children)
        plainChild(*child, twin)->setGeometry(QRect(child->mapTo(&page, QPoint()), child->size()));
    m_stack->addWidget(twin);
    return twin;
}

double PlainPages::showMs(QWidget *twin)
{
    return Redraw({twin}).ms([&] { m_stack->setCurrentWidget(twin); });
}
