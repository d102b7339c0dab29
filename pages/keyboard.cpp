#include "pages/keyboard.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFocusEvent>
#include <QKeySequence>
#include <QPainter>
#include <QShortcut>

namespace Keyboard {

namespace {

class WheelGuard : public QObject
{
public:
    explicit WheelGuard(QComboBox *box)
        : QObject(box)
    {
        box->installEventFilter(this);
    }

    bool eventFilter(QObject *box, QEvent *event) override
    {
        if (event->type() != QEvent::Wheel || static_cast<QWidget *>(box)->hasFocus())
            return false;
        event->ignore();
        return true;
    }
};

class FocusLine : public QWidget
{
public:
    explicit FocusLine(QWidget *widget)
        : QWidget(widget)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        resize(widget->size());
        hide();
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            resize(static_cast<QResizeEvent *>(event)->size());
        else if (event->type() == QEvent::FocusIn)
            showFor(static_cast<QFocusEvent *>(event)->reason());
        else if (event->type() == QEvent::FocusOut)
            hide();
        return QWidget::eventFilter(watched, event);
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        Q_UNUSED(event)
        QPainter painter(this);
        painter.setPen(QPen(palette().color(QPalette::Highlight), lineWidth));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }

private:
    static constexpr int lineWidth = 2;

    void showFor(Qt::FocusReason reason)
    {
        // A window that comes back to the front gives the focus back as it was.
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            m_byMouse = reason == Qt::MouseFocusReason;
        setVisible(!m_byMouse);
        raise();
    }

    bool m_byMouse = false;
};

} // namespace

void pressByKey(QWidget *owner, const QKeySequence &key, QAbstractButton *button)
{
    auto *shortcut = new QShortcut(key, owner);
    shortcut->setAutoRepeat(false);
    QObject::connect(shortcut, SIGNAL(activated()), button, SLOT(click()));
}

void putInTabOrder(const QWidget *group, QWidget *before)
{
    QList<QWidget *> fields;
    for (QWidget *widget = group->nextInFocusChain(); widget != group; widget = widget->nextInFocusChain()) {
        if (group->isAncestorOf(widget) && (widget->focusPolicy() & Qt::TabFocus))
            fields.append(widget);
    }
    for (QWidget *field : qAsConst(fields)) {
        QWidget::setTabOrder(before, field);
        before = field;
    }
}

void letWheelPass(QComboBox *box)
{
    // With the policy of its own the box would have the focus before the wheel is heard.
    box->setFocusPolicy(Qt::StrongFocus);
    new WheelGuard(box);
}

void showFocus(QWidget *widget)
{
    new FocusLine(widget);
}

void setName(QWidget *widget, const QString &name)
{
    if (widget->accessibleName() != name)
        widget->setAccessibleName(name);
}

} // namespace Keyboard
