#pragma once

#include "comm/communicationinterface.h"
#include "control/datapages.h"
#include "control/devicelist.h"
#include "control/imaincontent.h"
#include "control/knowledge.h"
#include "control/pendingchanges.h"
#include "control/portwatch.h"
#include "control/transactionlisteners.h"
#include "model/device.h"
#include "pages/pagefactory.h"

#include <QList>
#include <QObject>

#include <memory>

class IDeviceDataCallback;
class QLayout;
class QWidget;
class Z7DataWidget;

/// The one object between the windows and the bus. It owns the list of drives, the user's pending changes per
/// drive, the pages and the communication.
///
/// Upload writes the user's changes into the drive's working memory, download reads, store makes the drive
/// keep what it has. Every operation builds a telegram stack on a copy of the drive's record, notes who wants
/// to hear of it and hands it over; the outcome comes back as a whole record, its error in it. Operations
/// without a selected drive or page return silently. Main thread only.
class Z7MainController : public QObject
{
    Q_OBJECT

public:
    Z7MainController();
    ~Z7MainController() override;

    /// Creates the page of that number if it is missing, and connects its signals.
    void createPage(int number);
    /// Neither is owned; both outlive the last record. Without one, nobody hears what it would be told.
    void setDeviceControl(IDeviceDataCallback *deviceControl) { m_deviceControl = deviceControl; }
    void setMainContent(IMainContent *content) { m_mainContent = content ? content : noMainContent(); }

    /// Takes over the drives that the wizard has connected. A drive without parameter definitions is refused
    /// with a message. The user's changes stay, so those of a drive that comes back are still there.
    void setDevices(const QList<Z7Device> &list);
    QList<Z7Device> connectedDevices() const { return m_devices.records(); }
    QList<int> deviceIds() const { return m_devices.ids(); }
    Z7Device device(int id) const { return m_devices.value(id); }
    /// The record in the list, valid until the next record or list comes; null if the drive is not listed.
    const Z7Device *findDevice(int id) const { return m_devices.find(id); }
    Z7Device currentDeviceRecord() const { return m_devices.current(); }
    /// True while a drive of the list is selected.
    /// As the tree was told it; -1 without a drive.
    int currentDeviceId() const { return m_devices.currentId(); }
    bool hasCurrentDevice() const { return m_devices.hasCurrent(); }
    /// False, with `out` as it was, if the user has changed nothing on the current drive.
    bool currentUserParams(Z7DeviceParamSet &out) const
    {
        return m_userParams.read(m_devices.currentId(), out);
    }

    /// Shows a page for a drive: as child of `contentWidget`, in `layout`. False if there is no such page.
    bool showPage(int number, int deviceId, QWidget *contentWidget, QLayout *layout);
    bool isAccessGranted(int deviceId) const { return m_devices.isAccessGranted(deviceId); }
    /// True if a change of this drive that the page is about differs from the drive's value.
    bool hasModifiedParams(int pageNumber, int deviceId) const;

    /// Sweeps the record's port; `callback` hears of it.
    void scanDevice(const Z7Device &device, IDeviceDataCallback *callback);
    /// Logs on and reads status and live values; the control bar and `callback` hear of it.
    void readDeviceStatus(const Z7Device &device, IDeviceDataCallback *callback);
    /// Forgets a listener that goes away before its transaction has ended.
    void removeCallback(IDeviceDataCallback *callback) { m_callbacks.remove(callback); }

    /// Replaces the pending changes of a drive; an empty set does nothing. The shown page ends up with those
    /// of its own drive, here as in resetChanges().
    void setUserParams(int deviceId, const Z7DeviceParamSet &set);
    void resetChanges(int deviceId);
    /// Brings back what resetChanges() has discarded of a drive, until that drive's next change.
    void restoreChanges(int deviceId);
    /// Makes the factory value of every writable parameter a pending change.
    void setDefaults(int deviceId);
    /// Text of the conflict line: what stands against writing the current drive's changes; empty if nothing
    /// does.
    QString calcConflicts() const;

    /// What is known beside the records: for what the window says of them. Lives as long as the controller.
    Z7Knowledge &knowledge() { return m_knowledge; }
    const Z7Knowledge &knowledge() const { return m_knowledge; }
    /// What is known about the ports.
    const PortWatch &portWatch() const { return m_portWatch; }

    /// For the end of the program: returns when no thread talks to the bus any more.
    void stopCommunication() { m_commInterface.stopAndWait(); }

signals:
    void NewDeviceSelected(Z7Device device);
    void NoDeviceSelected();

public slots:
    void PostDeviceUpdate(Z7CommInterface::ThreadID threadID, Z7Device device);
    void PostTransactionStarted(Z7CommInterface::ThreadID threadID, int maxProgress, Z7Device device)
    {
        m_callbacks.transactionStarted(threadID, maxProgress, device);
    }
    void PostTransactionTerminated(Z7CommInterface::ThreadID threadID)
    {
        m_callbacks.transactionTerminated(threadID);
    }
    void PostTransactionProgress(Z7CommInterface::ThreadID threadID)
    {
        m_callbacks.transactionProgress(threadID);
    }
    void cancelCommunication();
    void sendBootloaderInitCommand();
    void sendChangeAdress(int NewAdress);
    void allCommunicationStopped() { m_pages.tellThatCommunicationStopped(); }
    void UploadData();
    void DownloadData();
    void StoreData();
    void WriteAndStoreData();
    void SetFactorySettingsData();
    void SetNewPasswordData(int newPassword);
    void postUserModifiedParameter(Z7DeviceParam param);
    void postUserDeletedParameter(Z7DeviceParam param);
    /// While an external programmer has the bus, nothing else goes on it: the live update waits, and what is
    /// asked for ends at once with error 19.
    void lendBus(bool toProgrammer) { m_commInterface.setBusLent(toProgrammer); }

private:
    Z7DataWidget *currentPage() const { return m_pages.page(m_currentPage); }
    bool isPageOfDriveShown() const { return currentPage() && hasCurrentDevice(); }
    void selectDevice(int deviceId);
    /// What the live update reads: after connecting everything, once; from then on the parameters of the
    /// shown page.
    void updatePolling();

    /// Those who hear of most that happens to the selected drive.
    QList<TransactionListener> barAndPage() const { return {m_deviceControl, currentPage()}; }
    /// Hands a stack to the bus; `request` is the number of the operation, 0 of none.
    void handOver(
        std::unique_ptr<Z7TelegramStack> stack, const QList<TransactionListener> &listeners, int request = 0);
    /// An operation with a stack that is built on a copy of the selected drive's record.
    template<typename Stack, typename... Arguments>
    void transfer(
        DriveOperation operation, const QList<TransactionListener> &listeners, const Arguments &...arguments);

    enum class AfterWriting { LeaveWindow, RefreshWindow };
    /// Writes the user's changes of the selected drive, if there are any and the user stands by them.
    template<typename Stack>
    void writeUserParams(DriveOperation operation, AfterWriting afterWriting);
    bool confirmConflicts() const;
    /// What was done to another drive's changes has gone through the fields of the shown page.
    void showOwnUserParams(int changedDeviceId);

    void rebuildTree() { m_mainContent->rebuildTree(m_devices.ids()); }
    void showConflicts() { m_mainContent->setConflictLine(calcConflicts()); }
    void refreshWindow()
    {
        rebuildTree();
        showConflicts();
    }

    int m_currentPage = PageNumber::none;
    DataPages m_pages;
    DeviceList m_devices;
    PendingChanges m_userParams;
    TransactionListeners m_callbacks {
        [this](Z7CommInterface::ThreadID threadID) { return m_commInterface.isPassUnderWay(threadID); }};
    IDeviceDataCallback *m_deviceControl = nullptr;
    IMainContent *m_mainContent = noMainContent(); ///< never null
    PortWatch m_portWatch;
    /// Behind the pages, so that it goes, with its threads, before the listeners do.
    Z7CommunicationInterface m_commInterface;
    Z7Knowledge m_knowledge {m_commInterface, m_devices, m_userParams, m_pages};
};
