#include "tests/e2e/person.h"

#include <QAbstractButton>
#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
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
    if (!widget->isVisible())
        return refuse(name, "is not on the screen");
    if (!widget->isEnabled())
        return refuse(name, "is grey");
    return !isBehindModalWindow(widget) || refuse(name, "is behind a modal window");
}

} // namespace

bool waitUntil(const std::function<bool()> &condition, int ms)
{
    return QTest::qWaitFor(condition, ms);
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
    const QByteArray name = button->objectName().toLatin1();
    if (!isReachable(button, name.constData()))
        return false;
    QTest::mouseClick(button, Qt::LeftButton);
    return true;
}

bool type(QLineEdit *field, const QString &text, int pauseMs)
{
    if (!field)
        return refuse("the edit field", "is not on the screen");
    const QByteArray name = field->objectName().toLatin1();
    if (!isReachable(field, name.constData()))
        return false;
    QTest::mouseClick(field, Qt::LeftButton);
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text, Qt::NoModifier, pauseMs);
    return field->text() == text;
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
