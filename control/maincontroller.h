#pragma once

#include "comm/communicationinterface.h"
#include "control/transactionlisteners.h"
#include "model/device.h"

#include <QList>
#include <QMap>
#include <QObject>

#include <map>
#include <memory>

class IDeviceDataCallback;
class IMainContent;
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
    void setMainContent(IMainContent *mainContent);

    /// Takes over the drives that the wizard has connected. A drive without parameter definitions is refused
    /// with a message. The user's changes stay, so those of a drive that comes back are still there.
    void setDevices(const QList<Z7Device> &list);
    QList<Z7Device> connectedDevices() const { return m_devices.values(); }
    QList<int> deviceIds() const { return m_devices.keys(); }
    Z7Device device(int id) const { return m_devices.value(id); }
    /// The record in the list, valid until the next record or list comes; null if the drive is not listed.
    const Z7Device *findDevice(int id) const;
    Z7Device currentDeviceRecord() const { return m_devices.value(m_currentDevice); }
    /// True while a drive of the list is selected.
    bool hasCurrentDevice() const { return m_devices.contains(m_currentDevice); }
    /// False, with `out` as it was, if the user has changed nothing on the current drive.
    bool currentUserParams(Z7DeviceParamSet &out) const;

    /// Shows a page for a drive: as child of `contentWidget`, in `layout`. False if there is no such page.
    bool showPage(int number, int deviceId, QWidget *contentWidget, QLayout *layout);
    bool isAccessGranted(int deviceId) const;
    /// True if a change of this drive that the page is about differs from the drive's value.
    bool hasModifiedParams(int pageNumber, int deviceId) const;

    /// Sweeps the record's port; `callback` hears of it.
    void scanDevice(const Z7Device &device, IDeviceDataCallback *callback);
    /// Logs on and reads status and live values; the control bar and `callback` hear of it.
    void readDeviceStatus(const Z7Device &device, IDeviceDataCallback *callback);
    /// Forgets a listener that goes away before its transaction has ended.
    void removeCallback(IDeviceDataCallback *callback);

    /// Replaces the pending changes of a drive; an empty set does nothing. The shown page ends up with those
    /// of its own drive, here as in resetChanges().
    void setUserParams(int deviceId, const Z7DeviceParamSet &set);
    void resetChanges(int deviceId);
    /// Makes the factory value of every writable parameter a pending change.
    void setDefaults(int deviceId);
    /// Text of the conflict line: what stands against writing the current drive's changes; empty if nothing
    /// does.
    QString calcConflicts() const;

    /// For the end of the program: returns when no thread talks to the bus any more.
    void stopCommunication() { m_commInterface.stopAndWait(); }

signals:
    void NewDeviceSelected(Z7Device device);
    void NoDeviceSelected();

public slots:
    void PostDeviceUpdate(Z7CommInterface::ThreadID threadID, Z7Device device);
    void PostTransactionStarted(Z7CommInterface::ThreadID threadID, int maxProgress, Z7Device device);
    void PostTransactionTerminated(Z7CommInterface::ThreadID threadID);
    void PostTransactionProgress(Z7CommInterface::ThreadID threadID);
    void cancelCommunication();
    void sendBootloaderInitCommand();
    void sendChangeAdress(int NewAdress);
    void allCommunicationStopped();
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
    void lendBus(bool toProgrammer);

private:
    Z7DataWidget *page(int number) const;
    Z7DataWidget *currentPage() const { return page(m_currentPage); }
    bool hasUserChanges() const;
    bool confirmConflicts() const;
    void transfer(std::unique_ptr<Z7TelegramStack> stack, const QList<IDeviceDataCallback *> &listeners);

    void addCallback(Z7CommInterface::ThreadID threadID, IDeviceDataCallback *callback);
    void forgetAllCallbacks();
    void tellListeners(Z7CommInterface::ThreadID threadID, const Z7Device &device, bool hasMoved);
    bool isRecordOfAnotherDrive(const Z7Device &device) const;

    void addDevice(const Z7Device &device);
    void refuseDevice(const Z7Device &device);
    void moveToNewAddress(const Z7Device &device);
    void replaceDevice(const Z7Device &device);
    void updatePolling();
    void takeOutPage(Z7DataWidget *page);
    void fillPage(Z7DataWidget *page, int deviceId);
    void showOwnUserParams(int changedDeviceId);

    void rebuildTree();
    void showConflicts();

    int m_currentPage = -1;
    int m_currentDevice = -1;
    std::map<int, std::unique_ptr<Z7DataWidget>> m_pages;
    QMap<int, Z7Device> m_devices; ///< by device id
    QMap<int, Z7DeviceParamSet> m_userParams; ///< by device id
    TransactionListeners m_callbacks;
    /// Hears the record of the bootloader command, whatever page is shown by then.
    IDeviceDataCallback *m_bootloaderListener = nullptr;
    IDeviceDataCallback *m_deviceControl = nullptr;
    IMainContent *m_mainContent; ///< never null
    /// Behind the pages, so that it goes, with its threads, before the listeners do.
    Z7CommunicationInterface m_commInterface;
};
