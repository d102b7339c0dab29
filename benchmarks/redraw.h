#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QObject>

#include <cmath>

class QWidget;

/// Handles events until none is left, so that all that was to be redrawn is painted and flushed.
void settle();

/// Measures actions from their beginning to the finished redraw.
class Redraw : public QObject
{
public:
    /// Each action has to make all of `watched` paint. They stay the caller's and outlive the object.
    explicit Redraw(const QList<QWidget *> &watched);

    /// In ms; NaN if one of the watched widgets has not been painted.
    template<typename Action>
    double ms(Action action)
    {
        m_unpainted = m_watched;
        QElapsedTimer timer;
        timer.start();
        action();
        settle();
        const double elapsedMs = static_cast<double>(timer.nsecsElapsed()) / 1e6;
        return m_unpainted.isEmpty() ? elapsedMs : NAN;
    }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QList<QObject *> m_watched;
    QList<QObject *> m_unpainted; ///< since the beginning of the action
};
