#include "benchmarks/redraw.h"

#include <QAbstractEventDispatcher>
#include <QEvent>
#include <QWidget>

void settle()
{
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) { }
}

Redraw::Redraw(const QList<QWidget *> &watched)
{
    for (QWidget *widget : watched) {
        m_watched.append(widget);
        widget->installEventFilter(this);
    }
}

bool Redraw::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint)
        m_unpainted.removeOne(watched);
    return QObject::eventFilter(watched, event);
}
