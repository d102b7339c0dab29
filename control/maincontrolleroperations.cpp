// What the controller asks for on the bus.

#include "comm/telegramstackcatalogue.h"
#include "control/maincontroller.h"
#include "control/services/language.h"
#include "pages/datawidget.h"
#include "pages/messages.h"

using namespace Z7CommInterface;

namespace {

/// The parameters that an operation reads or writes; none of one that is about something else.
Z7DeviceParamSet paramsAmong()
{
    return Z7DeviceParamSet();
}

Z7DeviceParamSet paramsAmong(const Z7DeviceParamSet &params)
{
    return params;
}

Z7DeviceParamSet paramsAmong(int)
{
    return Z7DeviceParamSet();
}

} // namespace

void Z7MainController::scanDevice(const Z7Device &device, IDeviceDataCallback *callback)
{
    m_callbacks.add(ScanDevice, {callback});
    m_commInterface.scanDevice(device);
}

void Z7MainController::readDeviceStatus(const Z7Device &device, IDeviceDataCallback *callback)
{
    handOver(std::make_unique<Z7DeviceStatusTelegramStack>(device), {m_deviceControl, callback});
}

void Z7MainController::handOver(
    std::unique_ptr<Z7TelegramStack> stack, const QList<TransactionListener> &listeners, int request)
{
    m_callbacks.add(TransferTelegramStack, listeners);
    m_commInterface.transferTelegramStack(std::move(stack), request);
}

template<typename Stack, typename... Arguments>
void Z7MainController::transfer(
    DriveOperation operation, const QList<TransactionListener> &listeners, const Arguments &...arguments)
{
    const Z7Device device = currentDeviceRecord();
    const int request = m_knowledge.operationAsked(operation, device, paramsAmong(arguments...));
    handOver(std::make_unique<Stack>(device, arguments...), listeners, request);
}

void Z7MainController::cancelCommunication()
{
    // The record of a cancelled pass must not bring polling back. Showing a page begins the full read anew.
    m_devices.cancelFullReads();
    m_commInterface.cancelCommunication();
    // No record may come that would make the tree take clicks again.
    rebuildTree();
}

void Z7MainController::DownloadData()
{
    if (isPageOfDriveShown())
        transfer<Z7UpdateParameterSetTelegramStack>(DriveOperation::Read, barAndPage(),
            DataPages::parametersFor(*currentPage(), currentDeviceRecord()));
}

bool Z7MainController::confirmConflicts() const
{
    const QString conflicts = calcConflicts();
    return conflicts.isEmpty()
        || Messages::isConfirmed(nullptr, QMessageBox::Warning,
            commonText("ConflictingParameterMessage", "Die Parameterwerte enthalten einen Konflikt:\n\n")
                + conflicts,
            commonText("WriteAnyway", "Trotzdem schreiben?"));
}

template<typename Stack>
void Z7MainController::writeUserParams(DriveOperation operation, AfterWriting afterWriting)
{
    if (!isPageOfDriveShown() || !m_userParams.contains(m_devices.currentId()))
        return;
    m_mainContent->disableDataButtons();
    if (confirmConflicts()) {
        transfer<Stack>(operation, barAndPage(), m_userParams.value(m_devices.currentId()));
        if (afterWriting == AfterWriting::RefreshWindow)
            refreshWindow();
    }
    m_mainContent->enableDataButtons();
}

void Z7MainController::UploadData()
{
    writeUserParams<Z7TelegramstackWriteParameterSet>(DriveOperation::Write, AfterWriting::LeaveWindow);
}

void Z7MainController::WriteAndStoreData()
{
    writeUserParams<Z7TelegramstackWriteAndStoreParameterSet>(
        DriveOperation::WriteAndStore, AfterWriting::RefreshWindow);
}

void Z7MainController::StoreData()
{
    if (!isPageOfDriveShown())
        return;
    transfer<Z7TelegramstackStoreParameter>(DriveOperation::Store, barAndPage());
    refreshWindow();
}

void Z7MainController::SetFactorySettingsData()
{
    if (hasCurrentDevice())
        transfer<Z7TelegramstackFactoryReset>(DriveOperation::FactoryReset, {m_deviceControl});
}

void Z7MainController::SetNewPasswordData(int newPassword)
{
    if (hasCurrentDevice())
        transfer<Z7TelegramstackPasswordReset>(
            DriveOperation::ChangePassword, {m_deviceControl}, newPassword);
}

void Z7MainController::sendBootloaderInitCommand()
{
    if (!isPageOfDriveShown())
        return;
    // The page waits for the outcome and cannot go on without it, but its place among the listeners may be
    // taken away: when another page is shown, and at once if the traffic that ended for this was a transfer.
    auto *asking = qobject_cast<Z7DataWidget *>(sender());
    const TransactionListener waiting(asking ? asking : currentPage());
    m_callbacks.awaitTransfer(waiting);
    transfer<Z7TelegramstackBootloaderInit>(DriveOperation::EnterBootloader, {waiting});
}

void Z7MainController::sendChangeAdress(int NewAdress)
{
    if (isPageOfDriveShown())
        transfer<Z7TelegramstackChangeAdress>(DriveOperation::ChangeAddress, barAndPage(), NewAdress);
}
