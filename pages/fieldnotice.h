#pragma once

#include <QLabel>
#include <QPointer>

class QLineEdit;

/// Says beside a field what the field takes, at once when it does not take a key. It goes with the next key
/// that is taken, and when the field loses the focus.
///
/// One notice serves all fields of a page or a dialog, whose child it is. It lies above what is there, in no
/// layout, and takes neither focus nor mouse. Main thread only.
class FieldNotice : public QLabel
{
    Q_OBJECT

public:
    /// Says what a field below `surface` takes. The notice of the surface is made when it is first needed.
    static void sayWhatIsTaken(QWidget *surface, QLineEdit *field);

protected:
    bool eventFilter(QObject *field, QEvent *event) override;

private:
    explicit FieldNotice(QWidget *surface);

    void watch(QLineEdit *field);
    void placeBeside(const QLineEdit &field);
    QRect placeOf(const QLineEdit &field) const;
    bool coversAnotherField(const QRect &covered, const QLineEdit &field) const;

    QPointer<QLineEdit> m_field; ///< the one that did not take a key last
};
