#include "tests/support/looks.h"

#include <QIcon>
#include <QLabel>
#include <QToolButton>
#include <QtTest>

namespace Looks {

namespace {

QString wordsOf(const QAbstractButton &button)
{
    return qobject_cast<const QToolButton *>(&button) ? button.toolTip() : button.text();
}

} // namespace

QImage image(const QIcon &icon, int size)
{
    return icon.pixmap(QSize(size, size)).toImage();
}

QImage image(const char *resource, int size)
{
    return image(QIcon(QString::fromLatin1(resource)), size);
}

QList<QImage> picturesOf(const QWidget &parent)
{
    QList<QImage> pictures;
    const auto labels = parent.findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        const QImage shown = label->pixmap(Qt::ReturnByValue).toImage();
        if (label->isVisible() && !shown.isNull())
            pictures << shown;
    }
    return pictures;
}

void addButtonColumns()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("words");
    QTest::addColumn<QByteArray>("icon");
}

void addButton(const char *name, const char *words, const char *icon)
{
    QTest::newRow(name) << QString::fromLatin1(name) << QString::fromUtf8(words) << QByteArray(icon);
}

QString faultOf(
    const QWidget &window, const QString &button, const QString &words, const QByteArray &icon, int size)
{
    const auto *found = window.findChild<QAbstractButton *>(button);
    if (!found)
        return QStringLiteral("it is not there");
    if (wordsOf(*found) != words)
        return QStringLiteral("it bears the words ") + wordsOf(*found);
    const QImage expected = image(icon.constData(), size);
    if (expected.isNull())
        return QStringLiteral("there is no such file");
    return image(found->icon(), size) == expected ? QString() : QStringLiteral("it bears another icon");
}

void checkButton(const QWidget &window, int size)
{
    QFETCH(QString, button);
    QFETCH(QString, words);
    QFETCH(QByteArray, icon);
    QCOMPARE(faultOf(window, button, words, icon, size), QString());
}

} // namespace Looks
