#pragma once

#include <QAccessible>
#include <QStringList>
#include <QWidget>

#include <vector>

/// What holds for every window that a person works in without a mouse. Each rule tells what breaks it, by
/// object names; nothing if all is well. The window must be on the screen and in front. Main thread only.
namespace KeyboardRules {

/// The fields that Tab is to reach, grey ones and those of tables included.
QList<QWidget *> fields(const QWidget &window);

/// Fields without a name for screen readers, and those with the name of another one.
QStringList unnamed(const QWidget &window);
/// Tab that does not reach each field that can be used once, and come back, or Shift+Tab that does not go the
/// same way back.
QStringList unreached(const QWidget &window);
/// Fields that look the same with and without the focus.
QStringList unlit(const QWidget &window);
/// Keys that two things of the window answer to.
QStringList doubleKeys(const QWidget &window);
/// Boxes that the wheel changes while they do not have the focus, and those that it could not change.
QStringList turnedByWheel(const QWidget &window);

/// What breaks any of these rules.
QStringList faults(const QWidget &window);

/// Turns the wheel over a widget by a notch, up or down.
void turnWheel(QWidget *widget, bool up);

/// Counts what screen readers are told while it lives.
class AccessibilityWatch
{
public:
    AccessibilityWatch();
    ~AccessibilityWatch();
    Q_DISABLE_COPY(AccessibilityWatch)

    /// The events of that kind about that object so far.
    int count(const QObject *object, QAccessible::Event kind) const;
    /// All events about that object so far.
    int count(const QObject *object) const;
};

} // namespace KeyboardRules
