#pragma once

#include <QObject>

#include <optional>

class QKeyEvent;
class QLabel;
class QLineEdit;
class Z7DataWidget;

/// Looks after one user field of a page: what it tells of itself, the mark of a value beyond the limits, the
/// keys that lead from field to field, and that a person sees the field that has the focus.
///
/// What a field holds is judged by the model whenever it changes, typed or not. A record of the drive costs
/// nothing here. The guide belongs to its field. Main thread only.
class FieldGuide : public QObject
{
    Q_OBJECT

public:
    /// Limits that are the field's own and not the definition's, whatever that says of writing.
    struct Limits
    {
        int lowest;
        int highest;
    };

    /// Looks after a field below `page`.
    FieldGuide(Z7DataWidget *page, QLineEdit *field);

    /// Gives the field its tool tip and description, with what the page's definitions now say of a parameter.
    /// `name` is in the user's language.
    void tell(int number, const QString &name, const std::optional<Limits> &limits = std::nullopt);
    /// Judges anew what the field holds, for the definitions may be others.
    void judge();

protected:
    bool eventFilter(QObject *field, QEvent *event) override;

private slots:
    void takeChange();
    void sayWhatIsTaken();

private:
    enum class Direction { Forward, Backward };

    void takeFocus(Qt::FocusReason reason);
    bool takeKey(const QKeyEvent &key);
    bool goToNextField(Direction direction) const;
    QLineEdit *nextField(Direction direction) const;
    bool giveBack();
    void scrollIntoView() const;
    QString findingOn(int value) const;
    void setFinding(const QString &finding);
    void showTexts();
    void showMark();
    void placeMark();

    Z7DataWidget *const m_page;
    QLineEdit *const m_field;
    int m_number = 0;
    QString m_description;
    QString m_finding; ///< empty as long as the value lies within the limits
    QLabel *m_mark = nullptr; ///< made when it is first needed
    std::optional<QString> m_held; ///< what the field held when it got the focus
};
