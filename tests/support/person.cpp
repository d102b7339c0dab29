#include "tests/support/person.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTreeWidget>
#include <QtTest>

namespace Person {

namespace {

bool isBehindModalWindow(const QWidget *widget)
{
    const QWidget *modal = QApplication::activeModalWidget();
    return modal && modal != widget->window();
}

bool refuse(const char *what, const char *why)
{
    qWarning("%s %s", what, why);
    return false;
}

bool isReachable(const QWidget *widget, const char *name)
{
    if (!widget || !widget->isVisible())
        return refuse(name, "is not on the screen");
    if (!widget->isEnabled())
        return refuse(name, "is grey");
    return !isBehindModalWindow(widget) || refuse(name, "is behind a modal window");
}

bool isReachable(const QWidget *widget)
{
    return isReachable(widget, widget ? widget->objectName().toLatin1().constData() : "what is wanted");
}

/// With the mouse, the cursor goes to where the field is clicked.
bool takeUp(QLineEdit *field)
{
    if (!isReachable(field))
        return false;
    QTest::mouseClick(field, Qt::LeftButton);
    return true;
}

bool isReachable(QTreeWidgetItem *item)
{
    if (!item || item->isHidden())
        return refuse("the entry", "is not in the tree");
    item->treeWidget()->scrollToItem(item);
    return isReachable(item->treeWidget());
}

QPoint middleOf(QTreeWidgetItem *item)
{
    return item->treeWidget()->visualItemRect(item).center();
}

QWidget *viewportOf(QTreeWidgetItem *item)
{
    return item->treeWidget()->viewport();
}

QPoint indicatorOf(const QAbstractButton *box)
{
    QStyleOptionButton option;
    option.initFrom(box);
    return box->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, box).center();
}

} // namespace

bool waitUntil(const std::function<bool()> &condition, int ms)
{
    return QTest::qWaitFor(condition, ms);
}

bool bringToFront(QWidget *window)
{
    window->activateWindow();
    return QTest::qWaitFor([window] { return QApplication::activeWindow() == window; });
}

QWidget *seen(const QWidget &window, const char *name)
{
    auto *widget = window.findChild<QWidget *>(QString::fromLatin1(name));
    return widget && widget->isVisible() ? widget : nullptr;
}

bool press(const QWidget &window, const char *button)
{
    QWidget *found = seen(window, button);
    return found ? press(found) : refuse(button, "is not on the screen");
}

bool press(QWidget *button)
{
    if (!isReachable(button))
        return false;
    QTest::mouseClick(button, Qt::LeftButton);
    return true;
}

bool click(QTreeWidgetItem *item)
{
    if (!isReachable(item))
        return false;
    QTest::mouseClick(viewportOf(item), Qt::LeftButton, Qt::NoModifier, middleOf(item));
    return true;
}

bool pressDown(QTreeWidgetItem *item)
{
    if (!isReachable(item))
        return false;
    QTest::mousePress(viewportOf(item), Qt::LeftButton, Qt::NoModifier, middleOf(item));
    return true;
}

bool letGo(QTreeWidgetItem *item)
{
    if (!item)
        return refuse("the entry", "is not in the tree");
    QTest::mouseRelease(viewportOf(item), Qt::LeftButton, Qt::NoModifier, middleOf(item));
    return true;
}

bool tick(QAbstractButton *box)
{
    if (!isReachable(box))
        return false;
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, indicatorOf(box));
    return true;
}

bool tickRow(QListWidget *list, int row)
{
    if (!isReachable(list))
        return false;
    if (!list->item(row))
        return refuse("the row", "is not in the list");
    list->setCurrentRow(row);
    QTest::keyClick(list, Qt::Key_Space);
    return true;
}

bool choose(QComboBox *box, const QString &begin)
{
    if (!isReachable(box))
        return false;
    box->setFocus();
    QTest::keyClicks(box, begin);
    return box->currentText().startsWith(begin);
}

bool type(QLineEdit *field, const QString &text, int pauseMs)
{
    if (!empty(field))
        return false;
    QTest::keyClicks(field, text, Qt::NoModifier, pauseMs);
    return field->text() == text;
}

bool type(const QWidget &window, const char *field, const QString &text)
{
    auto *found = qobject_cast<QLineEdit *>(seen(window, field));
    return found ? type(found, text) : refuse(field, "is not on the screen");
}

bool typeAtEnd(QLineEdit *field, const QString &text)
{
    if (!takeUp(field))
        return false;
    const QString before = field->text();
    QTest::keyClick(field, Qt::Key_End);
    QTest::keyClicks(field, text);
    return field->text() == before + text;
}

bool empty(QLineEdit *field)
{
    if (!takeUp(field))
        return false;
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    return true;
}

QString textOf(const QWidget &window, const char *label)
{
    const auto *found = qobject_cast<QLabel *>(seen(window, label));
    return found ? found->text() : QString();
}

QString pictureOf(const QLabel *label, const QString &pattern, const QStringList &names)
{
    if (!label || !label->isVisible())
        return QString();
    return pictureOf(label->pixmap(Qt::ReturnByValue), pattern, names);
}

QString pictureOf(const QPixmap &pixmap, const QString &pattern, const QStringList &names)
{
    for (const QString &name : names) {
        const QIcon icon(QStringLiteral(":/images/") + pattern.arg(name));
        const QSize size = pixmap.size() / pixmap.devicePixelRatio();
        if (!pixmap.isNull() && pixmap.toImage() == icon.pixmap(size).toImage())
            return name;
    }
    return QString();
}

} // namespace Person
