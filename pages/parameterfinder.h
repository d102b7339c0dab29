#pragma once

#include <QFrame>
#include <QPointer>
#include <QVector>

class QLabel;
class QLineEdit;
class QTableWidget;

/// A line in which a person types the number of a parameter or a part of its name; each key shows the first
/// row of a table that fits. Return and F3 go to the next one, with Shift to the one before. Escape takes the
/// line away and leaves the cursor in the row's field.
///
/// Hidden until it is opened. It is made for the table, whose rows it only reads. Main thread only.
class ParameterFinder : public QFrame
{
    Q_OBJECT

public:
    struct Columns
    {
        int number;
        int name;
        int field; ///< whose cells are the user's fields
    };

    ParameterFinder(QTableWidget *table, const Columns &columns, QWidget *parent);

    /// The rows are about to go, and what was found in them with them.
    void forgetRows();
    /// The first and the last field in the order of the Tab key.
    QLineEdit *input() const { return m_input; }

public slots:
    /// Shows the line with the cursor in it; what was searched last is marked, to be typed over.
    void open();

protected:
    bool eventFilter(QObject *input, QEvent *event) override;

private slots:
    void search(const QString &wanted);
    void goForward();
    void goBack();

private:
    void addShortcut(int key, const char *slot);
    void setTexts();
    bool takeKey(int key, Qt::KeyboardModifiers modifiers);
    void step(int by);
    void leave();
    void showHit();
    void showRow(int row);
    void say(const QString &text);
    QString textOf(int row, int column) const;
    QVector<int> rowsFor(const QString &wanted) const;
    QWidget *fieldOfHit() const;

    QTableWidget *const m_table;
    const Columns m_columns;
    QLabel *const m_prompt;
    QLineEdit *const m_input;
    QLabel *const m_result;
    QFrame *const m_frame; ///< around the row that was found
    QVector<int> m_hits; ///< rows; that with the very number comes first
    int m_hit = 0; ///< which of them is shown
    QPointer<QWidget> m_focusBefore;
};
