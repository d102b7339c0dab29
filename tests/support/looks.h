#pragma once

#include <QImage>
#include <QList>
#include <QWidget>

class QIcon;

/// What a person sees of icons, pictures and buttons. Main thread only.
namespace Looks {

/// What an icon, or a file of the resources, looks like at `size` pixels.
QImage image(const QIcon &icon, int size = 24);
QImage image(const char *resource, int size = 24);
/// The pictures on the labels below `parent` that are on the screen, in their order.
QList<QImage> picturesOf(const QWidget &parent);

/// The data of a test on buttons: the name of each, the words on it and the file of its icon. The words of a
/// tool button are those of its tool tip.
void addButtonColumns();
void addButton(const char *name, const char *words, const char *icon);
/// What is wrong with a button below `window`, whose icon counts at `size` pixels; empty if nothing is.
QString faultOf(const QWidget &window, const QString &button, const QString &words, const QByteArray &icon,
    int size = 24);
/// Fails the test function unless the button of its row below `window` bears words and icon, the latter at
/// `size` pixels.
void checkButton(const QWidget &window, int size = 24);

} // namespace Looks
