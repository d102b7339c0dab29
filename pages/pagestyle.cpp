#include "pages/pagestyle.h"

#include <QApplication>
#include <QColor>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QPixmapCache>
#include <QWidget>

namespace PageStyle {

QColor blue()
{
    return {72, 131, 181};
}

QColor lightGrey()
{
    return {240, 240, 240};
}

QColor warningRed()
{
    return {198, 40, 40};
}

void darkenDisabledTexts()
{
    QPalette palette = QApplication::palette();
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text})
        palette.setColor(QPalette::Disabled, role, QColor(100, 104, 110));
    QApplication::setPalette(palette);
}

void paintGround(QWidget *widget, const QColor &colour)
{
    QPalette palette = widget->palette();
    palette.setBrush(QPalette::Window, colour);
    widget->setPalette(palette);
    widget->setAutoFillBackground(true);
}

void paintHeader(QWidget *frame)
{
    paintGround(frame, blue());
    paintText(frame, Qt::white);
}

void paintText(QWidget *label, const QColor &colour)
{
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, colour);
    label->setPalette(palette);
}

void keepPlaceWhenHidden(QWidget *widget)
{
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

void setTextOrHide(QLabel *label, const QString &text)
{
    label->setText(text);
    if (text.isEmpty())
        label->hide();
}

void emptyField(QLineEdit *field)
{
    // clear() is an edit that can be undone; a text that is set drops the history, also where it is the same.
    field->setText(QString());
}

QFont boldFont()
{
    QFont font;
    font.setWeight(QFont::Bold);
    return font;
}

void takeOut(QWidget *page)
{
    page->hide();
    page->setParent(nullptr);
}

QPixmap sharpPixmap(const char *resource, const QSize &size)
{
    // Every QIcon leaves a pixmap of its own in the cache, so the picture is kept under its name.
    const QString key =
        QStringLiteral("%1@%2x%3").arg(QLatin1String(resource)).arg(size.width()).arg(size.height());
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = QIcon(QString::fromLatin1(resource)).pixmap(size);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

QPixmap smallPixmap(const char *resource)
{
    return sharpPixmap(resource, QSize(16, 16));
}

QPixmap mediumPixmap(const char *resource)
{
    return sharpPixmap(resource, QSize(24, 24));
}

} // namespace PageStyle
