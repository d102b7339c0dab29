#include "pages/pagestyle.h"

#include <QColor>
#include <QIcon>
#include <QPalette>
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

QPixmap sharpPixmap(const char *resource, const QSize &size)
{
    return QIcon(QString::fromLatin1(resource)).pixmap(size);
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
