#pragma once

#include "control/imaincontent.h"
#include "control/maincontroller.h"
#include "control/services/options.h"
#include "pages/datawidget.h"
#include "pages/idevicedatacallback.h"
#include "tests/support/workingfolder.h"

#include <QLineEdit>
#include <QStringList>
#include <QTableWidget>
#include <QVBoxLayout>
#include <QWidget>

/// The middle band of the window, as far as the controller sees it.
class NotingMainContent : public IMainContent
{
public:
    void rebuildTree(const QList<int> &deviceIds) override;
    void enableDataButtons() override;
    void disableDataButtons() override;
    void setConflictLine(const QString &text) override;

    QStringList notes; ///< "tree", "enable", "disable", "conflict line", in the order of the calls
    QList<int> tree; ///< the drives of the last rebuild
    QString conflictLine;
    bool buttonsWork = false;
};

/// A listener such as the control bar.
class NotingListener : public IDeviceDataCallback
{
public:
    /// Notes go into `journal` too, after `name`, where several listeners' order matters.
    explicit NotingListener(const QString &name = {}, QStringList *journal = nullptr)
        : m_name(name)
        , m_journal(journal)
    {
    }

    void DeviceUpdate(const Z7Device &device) override;
    void transactionStarted(int maxProgress, const Z7Device &device) override;
    void transactionTerminated() override;
    void transactionProgress() override;

    QStringList notes; ///< "record Z7.3", "started 14 Z7.3", "progress", "terminated"
    QList<Z7Device> records;

private:
    void note(const QString &text);

    const QString m_name;
    QStringList *const m_journal;
};

/// Makes the working folder know the version V123: parameters 11, 12 and 13 (the support points of the speed
/// curve), 30, 31 (signed), 50 (writable only while the inputs A and B are low) and 83 (read-only).
void writeDefinitionsV123();

/// A controller with its pages between a main content and a control bar that take notes. The working
/// folder knows the version V123. Polling is off unless a test turns it on.
class TestedController
{
public:
    TestedController();

    /// Connects drives as the wizard does and selects none of them.
    void connectDrives(const QList<Z7Device> &drives) { controller.setDevices(drives); }
    bool showPage(int number, int deviceId);
    /// Connects these drives and shows the parameter table of the first, as it is after the first polling
    /// pass: no full read is under way any more, and a record has no further consequence.
    void showTableOf(const QList<Z7Device> &drives);

    /// The page in the content area; null if there is none.
    Z7DataWidget *shownPage() const { return content.findChild<Z7DataWidget *>(); }
    /// What the shown parameter table has in a column of a parameter's row.
    QString tableText(int number, int column) const;
    /// The user's field in the shown parameter table; null without such a row.
    QLineEdit *tableField(int number) const;
    bool typeInTable(int number, const QString &text) const;
    bool emptyInTable(int number) const;

    /// The user's changes of the current drive as "11=5 30=7"; "none" if there are none.
    QString userChanges() const;
    void forgetNotes();

    static constexpr int tablePage = 9;
    static constexpr int firmwarePage = 10;
    static constexpr int deviceValueColumn = 2;

    const WorkingFolder folder;
    NotingMainContent mainContent;
    NotingListener deviceControl;
    QWidget content;
    QVBoxLayout layout;
    Z7MainController controller;

private:
    QTableWidget *table() const;
};

/// A drive of version V123 at this address, connected and open, its address being its password.
Z7Device connectedDrive(int address);

/// The listed drive with another value of a parameter, as a pass reports it.
Z7Device withValue(Z7Device device, int number, int value);

/// A change as a page reports it.
Z7DeviceParam userChange(int number, int value);
/// Changes of a drive of version V123.
Z7DeviceParamSet changeSet(const QList<Z7DeviceParam> &changes);
