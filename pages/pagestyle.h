#pragma once

#include <QFont>
#include <QPixmap>

class QColor;
class QDialog;
class QLabel;
class QLineEdit;
class QWidget;

/// The colours that the window, the pages and the dialogs share.
namespace PageStyle {

/// The blue of the window and of the headers, (72, 131, 181).
QColor blue();
/// The light grey of the window's bands, (240, 240, 240).
QColor lightGrey();

/// The red of a warning, readable on white and on the light grey.
QColor warningRed();

/// Makes every text of the program readable, before the first widget is made. The grounds of window and pages
/// are light on every desktop: where the desktop's own are dark, the whole program, its menus and tool tips
/// included, takes a light palette, and else it keeps the desktop's. Drives' values are shown as disabled
/// texts and are read all day, so that the grey of all such texts becomes dark enough, 5.8 to 1 on white. The
/// application's palette alone reaches the children of widgets that have a style sheet.
void makeTextsReadable();

/// Gives a widget an own ground of this colour.
void paintGround(QWidget *widget, const QColor &colour);
/// Makes a frame a header: white text on the blue, large and bold, as white on this blue has to be.
void paintHeader(QWidget *frame);
/// Gives a label a text colour through its palette.
void paintText(QWidget *label, const QColor &colour);
/// What stands around the widget does not move when it is hidden.
void keepPlaceWhenHidden(QWidget *widget);

/// Sets a text that a page may have or not, and takes the label away if it has none. The label never comes
/// back by this: a text that appears only at a later showing stays hidden.
void setTextOrHide(QLabel *label, const QString &text);

/// Empties a field for good: the keys for undo and redo bring nothing back of what stood in it.
void emptyField(QLineEdit *field);

QFont boldFont();
/// The size of a font, in whatever it was given.
qreal pointsOf(const QFont &font);
/// The bold font of what is red or stands on the blue: at least 14 points, for these colours contrast less.
QFont loudFont();
/// `wanted`, or as much smaller as `text` needs in order to fit into `place` on the widget; `flags` are those
/// of the text.
QFont fittingFont(
    const QWidget &widget, QFont wanted, const QSize &place, const QString &text, int flags = 0);

/// Has the dialog grow, at each showing and with each text that needs more lines, until no text is cut: a
/// form's size is made for one font, and a layout by itself keeps no room for lines that a text wraps into.
void growWithTexts(QDialog *dialog);

/// Takes a page out of the layout and the widget that show it; it is nobody's child then. It is hidden first,
/// or the layout might yet show it, as a window of its own.
void takeOut(QWidget *page);

/// A picture of the resources at `size` pixels, drawn sharply on a screen of any scale.
QPixmap sharpPixmap(const char *resource, const QSize &size);
/// The lamps and small marks are 16, the other icons 24 pixels wide.
QPixmap smallPixmap(const char *resource);
QPixmap mediumPixmap(const char *resource);

} // namespace PageStyle
