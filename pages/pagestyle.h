#pragma once

#include <QFont>
#include <QPixmap>

class QColor;
class QWidget;

/// The colours that the window, the pages and the dialogs share.
namespace PageStyle {

/// The blue of the window and of the headers, (72, 131, 181).
QColor blue();
/// The light grey of the window's bands, (240, 240, 240).
QColor lightGrey();

/// Gives a widget an own ground of this colour.
void paintGround(QWidget *widget, const QColor &colour);
/// Makes a frame a header: white text on the blue.
void paintHeader(QWidget *frame);
/// Gives a label a text colour through its palette.
void paintText(QWidget *label, const QColor &colour);
/// What stands around the widget does not move when it is hidden.
void keepPlaceWhenHidden(QWidget *widget);

QFont boldFont();

/// Takes a page out of the layout and the widget that show it; it is nobody's child then. It is hidden first,
/// or the layout might yet show it, as a window of its own.
void takeOut(QWidget *page);

/// A picture of the resources at `size` pixels, drawn sharply on a screen of any scale.
QPixmap sharpPixmap(const char *resource, const QSize &size);
/// The lamps and small marks are 16, the other icons 24 pixels wide.
QPixmap smallPixmap(const char *resource);
QPixmap mediumPixmap(const char *resource);

} // namespace PageStyle
