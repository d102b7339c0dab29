#pragma once

#include "shell/statusfield.h"

#include <QVector>
#include <QWidget>

/// What each of several fields gets of the room that there is, in their order: what it wants, or, where there
/// is not enough for all, as much as every other that does not get what it wants.
QVector<int> fairShares(const QVector<int> &wanted, int room);

/// Fields in a row, as wide as what they say and no wider than fair. One of them takes the room that is left,
/// so that those before it stand at the left end and those behind it at the right end, and stay there.
class StatusFieldRow : public QWidget
{
    Q_OBJECT

public:
    explicit StatusFieldRow(QWidget *parent = nullptr);

    /// A new field behind those before it.
    StatusField *add(const char *objectName, const QString &title, StatusField::Click click);
    /// The field, one of those of the row, that takes what is left.
    void setStretched(StatusField *field) { m_stretched = field; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void arrange();

    QVector<StatusField *> m_fields;
    StatusField *m_stretched = nullptr;
};
