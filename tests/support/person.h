#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>

class QAbstractButton;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPixmap;
class QTreeWidgetItem;

/// The hands and eyes of a person before the program: only what is on the screen can be pressed, typed into
/// and read.
///
/// A hand that finds nothing to press says why in a warning and returns false. Main thread only.
namespace Person {

/// How long a person waits for something that is under way on the bus, in milliseconds.
constexpr int patienceMs = 20000;

/// Lets the program run until the condition holds; false if it does not within that time.
bool waitUntil(const std::function<bool()> &condition, int ms = patienceMs);

/// Brings a window to the front, as a desktop does with the one behind a dialog that has closed; false if it
/// does not come.
bool bringToFront(QWidget *window);

/// The widget of that name below `window` if it is on the screen, or null.
QWidget *seen(const QWidget &window, const char *name);

/// Clicks a button that is on the screen, enabled and not behind a modal window.
bool press(const QWidget &window, const char *button);
bool press(QWidget *button);

/// Clicks an entry of a tree, which is scrolled to it; false if there is none.
bool click(QTreeWidgetItem *item);
/// The two halves of that click.
bool pressDown(QTreeWidgetItem *item);
bool letGo(QTreeWidgetItem *item);
/// Puts the tick into a box or takes it out, with the mouse on its indicator.
bool tick(QAbstractButton *box);
/// Goes to a row of a list and puts its tick or takes it out, with the keyboard.
bool tickRow(QListWidget *list, int row);
/// Chooses the first entry that begins with a text, with the keyboard; false if another one is chosen then.
bool choose(QComboBox *box, const QString &begin);

/// Replaces what stands in an edit field, with the keyboard; false if the field holds something else then,
/// for it refuses keys. With a pause in milliseconds the program runs on between the keys.
bool type(QLineEdit *field, const QString &text, int pauseMs = 0);
bool type(const QWidget &window, const char *field, const QString &text);
/// Types after the last character of an edit field; false as above.
bool typeAtEnd(QLineEdit *field, const QString &text);
/// Marks all that stands in an edit field and deletes it.
bool empty(QLineEdit *field);

/// What a label shows; empty if it is hidden.
QString textOf(const QWidget &window, const char *label);

/// The part in the middle of the name of the picture that a label shows: "green" for usb_green_24px.png
/// under the pattern "usb_%1_24px.png". Empty if the label is hidden or shows none of these.
QString pictureOf(const QLabel *label, const QString &pattern, const QStringList &names);
QString pictureOf(const QPixmap &pixmap, const QString &pattern, const QStringList &names);

} // namespace Person
