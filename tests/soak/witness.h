#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QTimer>

class QWidget;

/// Notices what nobody asked for: warnings that the process prints, windows that open by themselves, and an
/// event loop that stands still. One at a time, on the main thread.
class Witness : public QObject
{
    Q_OBJECT

public:
    Witness();
    ~Witness() override;

    /// What the person is doing, for the longest standstill.
    void setDoing(const QString &what) { m_doing = what; }
    /// Looks for a window that stands in the way; a person who causes one has answered it by then.
    void lookForWindows();
    /// Counts how often the bar that shows a transaction goes.
    void watchProgress(QWidget *bar);

    /// What was noticed, each with how often.
    QStringList messages() const;
    int transactions() const { return m_transactions; }
    int longestHoldMs() const { return m_longestHoldMs; }
    QString heldWhile() const { return m_heldWhile; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void beat();

private:
    QTimer m_heart;
    QElapsedTimer m_sinceBeat;
    QString m_doing;
    QString m_heldWhile;
    int m_longestHoldMs = 0;
    int m_transactions = 0;
};
