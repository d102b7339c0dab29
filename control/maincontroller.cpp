#include "control/maincontroller.h"

#include "comm/telegramstackcatalogue.h"
#include "pages/datawidget.h"
#include "pages/messages.h"

using namespace Z7CommInterface;

Z7MainController::Z7MainController()
{
    registerDeviceTypes();
    connect(&m_commInterface, SIGNAL(DeviceUpdate(Z7CommInterface::ThreadID, Z7Device)),
        SLOT(PostDeviceUpdate(Z7CommInterface::ThreadID, Z7Device)));
    connect(&m_commInterface, SIGNAL(transactionStarted(Z7CommInterface::ThreadID, int, Z7Device)),
        SLOT(PostTransactionStarted(Z7CommInterface::ThreadID, int, Z7Device)));
    connect(&m_commInterface, SIGNAL(transactionProgress(Z7CommInterface::ThreadID)),
        SLOT(PostTransactionProgress(Z7CommInterface::ThreadID)));
    connect(&m_commInterface, SIGNAL(transactionTerminated(Z7CommInterface::ThreadID)),
        SLOT(PostTransactionTerminated(Z7CommInterface::ThreadID)));
    connect(&m_commInterface, SIGNAL(allCommunicationTerminated()), SLOT(allCommunicationStopped()));
    m_portWatch.listenTo(m_commInterface);
}

Z7MainController::~Z7MainController() = default;

// --- drives and pages ---

void Z7MainController::createPage(int number)
{
    const Z7DataWidget *page = m_pages.create(number);
    if (!page)
        return;
    constexpr auto once = Qt::UniqueConnection;
    connect(
        page, SIGNAL(parameterModified(Z7DeviceParam)), SLOT(postUserModifiedParameter(Z7DeviceParam)), once);
    connect(
        page, SIGNAL(parameterDeleted(Z7DeviceParam)), SLOT(postUserDeletedParameter(Z7DeviceParam)), once);
    connect(page, SIGNAL(stopAllDeviceCommunication()), SLOT(cancelCommunication()), once);
    connect(page, SIGNAL(sendBootloaderInitCommand()), SLOT(sendBootloaderInitCommand()), once);
    connect(page, SIGNAL(sendChangeAdress(int)), SLOT(sendChangeAdress(int)), once);
    connect(page, SIGNAL(programmerUsesBus(bool)), SLOT(lendBus(bool)), once);
}

void Z7MainController::setDevices(const QList<Z7Device> &list)
{
    m_devices.clear();
    for (const Z7Device &device : list) {
        const QString refusal = m_devices.add(device);
        if (!refusal.isEmpty())
            Messages::showError(nullptr, refusal);
    }
    m_portWatch.drivesListed(m_devices.records());
    rebuildTree();
    if (m_pages.takeOut(m_currentPage)) {
        m_currentPage = PageNumber::none;
        m_mainContent->disableDataButtons();
    }
    emit NoDeviceSelected();
    m_knowledge.drivesConnected();
}

bool Z7MainController::showPage(int number, int deviceId, QWidget *contentWidget, QLayout *layout)
{
    Z7DataWidget *shown = m_pages.place(number, m_currentPage, contentWidget, layout);
    if (!shown)
        return false;
    m_currentPage = number;
    if (m_devices.contains(deviceId)) {
        selectDevice(deviceId);
    } else {
        m_devices.select(DeviceList::none);
        emit NoDeviceSelected();
    }
    shown->clearUserValues();
    if (m_userParams.contains(m_devices.currentId()))
        shown->applyUserParams(m_userParams.value(m_devices.currentId()));
    else
        m_mainContent->setConflictLine(QString());
    shown->show();
    updatePolling();
    m_knowledge.pageShown(shown);
    return true;
}

void Z7MainController::selectDevice(int deviceId)
{
    m_callbacks.removeAll();
    // The control bar will not hear the end of what it was watching.
    if (m_deviceControl)
        m_deviceControl->transactionTerminated();
    const Z7Device record = m_devices.value(deviceId);
    Z7DataWidget *shown = currentPage();
    DataPages::fill(*shown, record, m_devices.records());
    if (deviceId != m_devices.currentId()) {
        if (shown->multiDevice)
            emit NoDeviceSelected();
        else
            emit NewDeviceSelected(record);
    }
    m_devices.select(deviceId);
}

bool Z7MainController::hasModifiedParams(int pageNumber, int deviceId) const
{
    const Z7DataWidget *asked = m_pages.page(pageNumber);
    const Z7Device *device = findDevice(deviceId);
    const auto isAsked = [asked](int parameter) { return asked->hasParam(parameter); };
    return asked && device && m_userParams.isModified(deviceId, *device, isAsked);
}

// --- news from the bus ---

void Z7MainController::PostDeviceUpdate(ThreadID threadID, Z7Device device)
{
    const DeviceList::Change change = m_devices.take(device, m_commInterface.isPassCutShort());
    const bool hasMoved = change == DeviceList::NewAddress;
    if (hasMoved)
        rebuildTree();
    if (hasMoved || change == DeviceList::CompleteRead)
        updatePolling();
    m_callbacks.deviceUpdate(
        threadID, device, [&] { return !hasMoved && m_devices.isAnother(device.deviceId()); });
    rebuildTree();
    m_knowledge.recordTaken(hasMoved);
}

void Z7MainController::updatePolling()
{
    if (!isPageOfDriveShown())
        return;
    m_callbacks.add(DevicePolling, barAndPage());
    const Z7Device record = currentDeviceRecord();
    const Z7DeviceParamSet polled =
        m_devices.polledParameters(DataPages::parametersFor(*currentPage(), record));
    m_commInterface.setPollingStack(std::make_unique<Z7UpdateParameterSetTelegramStack>(record, polled));
    m_devices.pollingStarted();
}

// --- the user's changes ---

void Z7MainController::postUserModifiedParameter(Z7DeviceParam param)
{
    m_userParams.insert(m_devices.currentId(), currentDeviceRecord().softwareVersion, param);
    refreshWindow();
    m_knowledge.changesEdited();
}

void Z7MainController::postUserDeletedParameter(Z7DeviceParam param)
{
    m_userParams.withdraw(m_devices.currentId(), param);
    refreshWindow();
    m_knowledge.changesEdited();
}

void Z7MainController::setUserParams(int deviceId, const Z7DeviceParamSet &set)
{
    if (set.params.isEmpty())
        return;
    m_userParams.replace(deviceId, set);
    if (Z7DataWidget *shown = currentPage())
        shown->applyUserParams(set);
    showConflicts();
    rebuildTree();
    showOwnUserParams(deviceId);
    m_knowledge.changesEdited();
    if (const Z7Device *device = findDevice(deviceId))
        m_knowledge.fileOpened(*device, set);
}

void Z7MainController::resetChanges(int deviceId)
{
    m_userParams.discard(deviceId);
    refreshWindow();
    if (Z7DataWidget *shown = currentPage())
        shown->clearUserValues();
    showOwnUserParams(deviceId);
    m_knowledge.changesEdited();
}

void Z7MainController::restoreChanges(int deviceId)
{
    if (!m_userParams.restore(deviceId))
        return;
    Z7DataWidget *shown = currentPage();
    if (shown && deviceId == m_devices.currentId())
        shown->showUserValues(m_userParams.value(deviceId));
    refreshWindow();
    m_knowledge.changesEdited();
}

void Z7MainController::showOwnUserParams(int changedDeviceId)
{
    Z7DataWidget *shown = currentPage();
    if (shown && changedDeviceId != m_devices.currentId())
        shown->showUserValues(m_userParams.value(m_devices.currentId()));
}

void Z7MainController::setDefaults(int deviceId)
{
    if (const Z7Device *device = findDevice(deviceId))
        m_userParams.insertFactoryValues(deviceId, *device);
    rebuildTree();
    m_knowledge.changesEdited();
}

QString Z7MainController::calcConflicts() const
{
    const Z7Device *device = m_devices.findCurrent();
    return device ? m_userParams.conflicts(m_devices.currentId(), *device) : QString();
}
