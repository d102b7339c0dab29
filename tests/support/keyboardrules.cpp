#include "tests/support/keyboardrules.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QKeySequence>
#include <QLabel>
#include <QShortcut>
#include <QWheelEvent>
#include <QtTest>

#include <algorithm>

/// Qt tells nothing without a screen reader. The switch of the platform is exported, but its headers are not
/// installed.
class QPlatformAccessibility
{
public:
    void setActive(bool active);
};

class QPlatformIntegration
{
public:
    /// Of all platforms that have no bridge of their own; it uses nothing of its object.
    QPlatformAccessibility *accessibility() const;
};

namespace KeyboardRules {

namespace {

void listen(bool active)
{
    const QPlatformIntegration platform;
    platform.accessibility()->setActive(active);
}

QString describe(const QWidget *field)
{
    const QString name = field->objectName();
    return name.isEmpty() ? QString::fromLatin1(field->metaObject()->className()) : name;
}

/// A box is named by its text on this platform, so its label is looked for.
QString nameOf(QWidget *field)
{
    if (!field->accessibleName().isEmpty())
        return field->accessibleName();
    if (qobject_cast<QComboBox *>(field)) {
        const QList<QLabel *> labels = field->window()->findChildren<QLabel *>();
        const auto label = std::find_if(
            labels.begin(), labels.end(), [field](const QLabel *other) { return other->buddy() == field; });
        return label == labels.end() ? QString() : (*label)->text();
    }
    const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(field);
    return interface ? interface->text(QAccessible::Name) : QString();
}

/// The fields that a key leads to, beginning with the one that has the focus, until it comes to one again.
QList<QWidget *> walk(const QWidget &window, Qt::Key key)
{
    QList<QWidget *> seen;
    while (window.focusWidget() && !seen.contains(window.focusWidget())) {
        seen.append(window.focusWidget());
        QTest::keyClick(window.focusWidget(), key);
    }
    return seen;
}

QStringList namesOf(const QList<QWidget *> &fields)
{
    QStringList names;
    for (const QWidget *field : fields)
        names.append(describe(field));
    return names;
}

QList<QKeySequence> keysOf(const QObject *object)
{
    if (const auto *action = qobject_cast<const QAction *>(object))
        return action->shortcuts();
    if (const auto *button = qobject_cast<const QAbstractButton *>(object))
        return {button->shortcut()};
    if (const auto *shortcut = qobject_cast<const QShortcut *>(object))
        return {shortcut->key()};
    return {};
}

struct Told
{
    const QObject *object;
    QAccessible::Event kind;
};

std::vector<Told> told;

void note(QAccessibleEvent *event)
{
    told.push_back({event->object(), event->type()});
}

} // namespace

QList<QWidget *> fields(const QWidget &window)
{
    QList<QWidget *> found;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        if (widget->window() == &window && widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus)
            && !widget->focusProxy())
            found.append(widget);
    }
    return found;
}

QStringList unnamed(const QWidget &window)
{
    QStringList faults;
    QStringList names;
    for (QWidget *field : fields(window)) {
        const QString name = nameOf(field);
        if (name.trimmed().isEmpty())
            faults.append(describe(field) + QStringLiteral(" has no name"));
        else if (names.contains(name))
            faults.append(describe(field) + QStringLiteral(" is another one named ") + name);
        names.append(name);
    }
    return faults;
}

QStringList unreached(const QWidget &window)
{
    QList<QWidget *> usable = fields(window);
    usable.erase(
        std::remove_if(usable.begin(), usable.end(), [](QWidget *field) { return !field->isEnabled(); }),
        usable.end());
    if (usable.isEmpty())
        return {};
    usable.first()->setFocus(Qt::TabFocusReason);
    QWidget *const start = window.focusWidget();
    QList<QWidget *> forth = walk(window, Qt::Key_Tab);
    QStringList faults;
    if (window.focusWidget() != start)
        faults.append(QStringLiteral("Tab comes back to ") + describe(window.focusWidget())
            + QStringLiteral(" over ") + namesOf(forth).join(QLatin1Char(' ')));
    for (QWidget *field : usable) {
        if (!forth.contains(field))
            faults.append(QStringLiteral("Tab does not reach ") + describe(field));
    }
    for (QWidget *field : qAsConst(forth)) {
        if (!usable.contains(field))
            faults.append(QStringLiteral("Tab goes to ") + describe(field));
    }
    start->setFocus(Qt::TabFocusReason);
    QList<QWidget *> back = walk(window, Qt::Key_Backtab);
    std::reverse(back.begin() + 1, back.end());
    if (back != forth)
        faults.append(QStringLiteral("Shift+Tab goes ") + namesOf(back).join(QLatin1Char(' ')));
    return faults;
}

QStringList unlit(const QWidget &window)
{
    QStringList faults;
    for (QWidget *field : fields(window)) {
        if (!field->isEnabled())
            continue;
        if (QWidget *other = window.focusWidget())
            other->clearFocus();
        const QImage without = field->grab().toImage();
        field->setFocus(Qt::TabFocusReason);
        if (field->grab().toImage() == without)
            faults.append(describe(field));
    }
    return faults;
}

QStringList doubleKeys(const QWidget &window)
{
    QStringList faults;
    QList<QKeySequence> keys;
    for (const QObject *object : window.findChildren<QObject *>()) {
        const auto *widget = qobject_cast<const QWidget *>(object);
        if (widget && (widget->window() != &window || !widget->isVisible()))
            continue;
        for (const QKeySequence &key : keysOf(object)) {
            if (!key.isEmpty() && keys.contains(key))
                faults.append(key.toString());
            keys.append(key);
        }
    }
    return faults;
}

QStringList turnedByWheel(const QWidget &window)
{
    QStringList faults;
    for (QComboBox *box : window.findChildren<QComboBox *>()) {
        if (box->window() != &window || !box->isVisible() || !box->isEnabled())
            continue;
        if (box->count() < 2)
            faults.append(describe(box) + QStringLiteral(" has nothing to be turned to"));
        box->clearFocus();
        const int before = box->currentIndex();
        turnWheel(box, before > 0);
        if (box->currentIndex() != before || box->hasFocus())
            faults.append(describe(box));
    }
    return faults;
}

QStringList faults(const QWidget &window)
{
    QStringList all;
    const auto add = [&all](const char *rule, const QStringList &found) {
        for (const QString &fault : found)
            all.append(QString::fromLatin1(rule) + QStringLiteral(": ") + fault);
    };
    add("named", unnamed(window));
    add("reached", unreached(window));
    add("seen", unlit(window));
    add("keys", doubleKeys(window));
    add("wheel", turnedByWheel(window));
    return all;
}

void turnWheel(QWidget *widget, bool up)
{
    constexpr int notch = 120;
    const QPoint place = widget->rect().center();
    QWheelEvent event(place, widget->mapToGlobal(place), QPoint(), QPoint(0, up ? notch : -notch),
        Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    // As from the window system: what takes the focus by the wheel gets it, and who wants no wheel passes it
    // on.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(widget, &event);
}

AccessibilityWatch::AccessibilityWatch()
{
    told.clear();
    listen(true);
    QAccessible::installUpdateHandler(note);
}

AccessibilityWatch::~AccessibilityWatch()
{
    QAccessible::installUpdateHandler(nullptr);
    listen(false);
}

int AccessibilityWatch::count(const QObject *object, QAccessible::Event kind) const
{
    return int(std::count_if(told.begin(), told.end(),
        [object, kind](const Told &event) { return event.object == object && event.kind == kind; }));
}

int AccessibilityWatch::count(const QObject *object) const
{
    return int(std::count_if(
        told.begin(), told.end(), [object](const Told &event) { return event.object == object; }));
}

} // namespace KeyboardRules
