#pragma once

#include "control/pendingoverview.h"

#include <QDialog>
#include <QVector>

class QPushButton;
class QTableWidget;
class QTableWidgetItem;

/// The list of a drive's changes, beside the window and not before it: the user goes on working, and the list
/// follows. It decides nothing; it leads to the page of a change.
class ChangesDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ChangesDialog(QWidget *parent);

    /// Shows these changes of that drive; the row that was chosen stays chosen as long as its parameter is
    /// there.
    void setChanges(const QString &drive, const QVector<PendingChange> &changes);

signals:
    /// The user wants to see the parameter of this number on its page.
    void pageWanted(int number);

private slots:
    void askForPage();
    void askForPage(int row);

private:
    void createTable();
    void fillRow(int row, const PendingChange &change);
    QTableWidgetItem *cell(int row, int column);
    /// Index of the chosen change; -1 if none is.
    int chosen() const;

    QVector<PendingChange> m_shown;
    QTableWidget *const m_table;
    QPushButton *const m_showPage;
};
