#pragma once

#include "shell/mainwindow.h"
#include "tests/e2e/wizarduser.h"

#include <QColor>
#include <QStringList>

#include <memory>

class QDialog;
class QLineEdit;
class QTableWidget;
class QTreeWidgetItem;

/// What the control bar shows; what is hidden is empty.
struct ControlBar
{
    QString port;
    QString usb; ///< "green", "yellow" or "red"
    QString device;
    QString lamp; ///< "Green", "Yellow", "Red" or "Gray"
    QString speed;
    QString current;
    QString message;
    bool progress = false; ///< a transaction is shown as under way
};

/// What one row of the parameter table shows.
struct TableRow
{
    QString name;
    QString deviceValue;
    QString unit;
    QString userValue;
    QString remark;
    bool writable = false;
    QColor colour;
    bool bold = false;
};

/// A person at the main window of the program, from its start to its end.
///
///     Journey journey;
///     QVERIFY(journey.openWizard());
///     QVERIFY(journey.wizard().press("BtnQuickConnect"));
///
/// A hand returns false, with a warning, where there is nothing to press; the eyes tell what is on the
/// screen. A working folder must be there before (TestBench). Main thread only.
class Journey
{
public:
    /// Starts the program and waits for its window.
    Journey();
    /// Closes the window if the person has not.
    ~Journey();

    MainWindow &window() const { return *m_window; }
    /// Closes the window as the person does; false if it stays.
    bool closeWindow() const;

    WizardUser wizard() const { return WizardUser(*m_window); }
    bool openWizard() const;
    /// Quick connect, from the tool button to OK; false if the drive did not let the person in.
    bool connectQuickly() const;
    /// The way by hand, from the tool button to OK, by `port`, `address` and `password`.
    bool connectManually(const QString &port, int address, int password) const;

    /// Clicks a page below a drive, or with an empty title the drive itself, until the click is heard: while
    /// a page is being changed the tree takes none. The name is as in the tree, "Port0 - Z7.1".
    bool showPage(const QString &drive, const QString &title = QString()) const;
    QString pageTitle() const;
    /// The tree's entries down to the drives, each with the look of its icon: "Port0 - Z7.1, active".
    QStringList drives() const;
    /// Look of a page's icon in the tree, or with an empty title of the drive's: "active", "inactive",
    /// "active_modified" or "inactive_modified".
    QString mark(const QString &drive, const QString &title = QString()) const;

    /// The four buttons: "BtnDownload", "BtnUpload", "BtnWriteAndStore", "BtnStore".
    bool press(const char *button) const;
    QString conflictLine() const;
    ControlBar bar() const;

    /// The dialog of that name that was made last; ends the test program if there is none.
    const QDialog &dialog(const char *name) const;
    /// Ticks rows of the dialog that offers drives.
    bool tickDrives(const QList<int> &rows) const;
    /// The same, and confirms.
    bool pickDrives(const QList<int> &rows) const;
    /// Fills in the dialog for a new password and confirms.
    bool changePassword(const QString &from, const QString &to) const;

    /// Types a value into the row of a parameter in the table; an empty text empties the field.
    bool typeValue(int number, const QString &text, int pauseMs = 0) const;
    TableRow row(int number) const;
    /// The field of a parameter in the table; null if there is no such row.
    QLineEdit *valueField(int number) const;
    int rowCount() const;

private:
    QTreeWidgetItem *item(const QString &drive, const QString &title) const;
    bool clickIsHeard(QTreeWidgetItem *item) const;
    QTableWidget *table() const;
    int rowOf(int number) const;

    std::unique_ptr<MainWindow> m_window;
};
