#pragma once

class QAbstractButton;
class QComboBox;
class QKeySequence;
class QString;
class QWidget;

/// What lets a person work without a mouse, and screen readers tell what the mouse sees. Main thread only.
namespace Keyboard {

/// A key of the window that `owner` is in presses the button, once however long it is held, and nothing
/// where the button is grey. It lasts as long as its owner. A button's own key would go with every new text.
void pressByKey(QWidget *owner, const QKeySequence &key, QAbstractButton *button);

/// Puts the fields of a group behind `before`, in the order that they have among themselves: what has been
/// given to a window comes last in it.
void putInTabOrder(const QWidget *group, QWidget *before);

/// The wheel changes the box only while it has the focus, and scrolls what is around it otherwise.
void letWheelPass(QComboBox *box);

/// Draws a line around a widget that looks the same with and without the focus: an area that scrolls, or a
/// button that the return key presses from elsewhere too. None comes by the mouse.
void showFocus(QWidget *widget);

/// Names a widget for screen readers, which hear of a change only where there is one.
void setName(QWidget *widget, const QString &name);

} // namespace Keyboard
