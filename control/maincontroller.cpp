#include "control/maincontroller.h"

#include "comm/telegramstackcatalogue.h"
#include "control/imaincontent.h"
#include "control/services/language.h"
#include "control/services/services.h"
#include "model/parameterconflicts.h"
#include "model/parameterdefinitions.h"
#include "pages/datawidget.h"
#include "pages/pagefactory.h"
#include "pages/pagestyle.h"

#include <QLayout>
#include <QMessageBox>

#include <utility>

using namespace Z7CommInterface;

namespace {

Z7ParamDefinitions *definitionsOf(const Z7Device &device)
{
    return Z7Services::instance()->definitions(device.softwareVersion);
}

/// Stands in where there is no window.
class NoMainContent : public IMainContent
{
public:
    void rebuildTree(const QList<int> &deviceIds) override { Q_UNUSED(deviceIds) }
    void enableDataButtons() override { }
    void disableDataButtons() override { }
    void setConflictLine(const QString &text) override { Q_UNUSED(text) }
};

IMainContent *noMainContent()
{
    static NoMainContent content;
    return &content;
}

/// True for a page that keeps the record of the selected drive alone.
bool keepsToOneDrive(const IDeviceDataCallback *listener)
{
    const auto *page = dynamic_cast<const Z7DataWidget *>(listener);
    return page && !page->multiDevice;
}

} // namespace

Z7MainController::Z7MainController()
    : m_mainContent(noMainContent())
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
}

Z7MainController::~Z7MainController() = default;

void Z7MainController::createPage(int number)
{
    if (!page(number)) {
        if (std::unique_ptr<Z7DataWidget> created = createDataPage(number))
            m_pages[number] = std::move(created);
    }
    Z7DataWidget *source = page(number);
    if (!source)
        return;
    connect(source, SIGNAL(parameterModified(Z7DeviceParam)), this,
        SLOT(postUserModifiedParameter(Z7DeviceParam)), Qt::UniqueConnection);
    connect(source, SIGNAL(parameterDeleted(Z7DeviceParam)), this,
        SLOT(postUserDeletedParameter(Z7DeviceParam)), Qt::UniqueConnection);
    connect(source, SIGNAL(stopAllDeviceCommunication()), this, SLOT(cancelCommunication()),
        Qt::UniqueConnection);
    connect(source, SIGNAL(sendBootloaderInitCommand()), this, SLOT(sendBootloaderInitCommand()),
        Qt::UniqueConnection);
    connect(source, SIGNAL(sendChangeAdress(int)), this, SLOT(sendChangeAdress(int)), Qt::UniqueConnection);
    connect(source, SIGNAL(programmerUsesBus(bool)), this, SLOT(lendBus(bool)), Qt::UniqueConnection);
}

void Z7MainController::setMainContent(IMainContent *mainContent)
{
    m_mainContent = mainContent ? mainContent : noMainContent();
}

Z7DataWidget *Z7MainController::page(int number) const
{
    const auto entry = m_pages.find(number);
    return entry == m_pages.end() ? nullptr : entry->second.get();
}

// --- the device list ---

void Z7MainController::setDevices(const QList<Z7Device> &list)
{
    m_devices.clear();
    m_currentDevice = -1;
    for (const Z7Device &device : list) {
        if (definitionsOf(device)->load())
            addDevice(device);
        else
            refuseDevice(device);
    }
    rebuildTree();
    if (Z7DataWidget *shown = currentPage()) {
        takeOutPage(shown);
        m_currentPage = PageNumber::none;
        m_mainContent->disableDataButtons();
    }
    emit NoDeviceSelected();
}

void Z7MainController::addDevice(const Z7Device &device)
{
    Z7Device added = device;
    added.setParameterSet(definitionsOf(device)->emptyParameterSet());
    // The drive may have been away or exchanged: its first pass reads everything.
    added.parametersComplete = false;
    added.fullReadPending = false;
    m_devices.insert(added.deviceId(), added);
}

void Z7MainController::refuseDevice(const Z7Device &device)
{
    const QString reason = commonText("ParamDefFileNotFound",
        "Zur Versionnummer %1 im Motor %2 ist keine Parameter-Definition verfügbar. Bitte fordern Sie die "
        "Datei "
        "mit den Parameter-Definitionen zur Z7-Version %1 an.")
                               .arg(device.softwareVersion, deviceName(device));
    QMessageBox::critical(nullptr, commonText("ApplicationTitle", "Z7ConfigTool"),
        commonText("UnableToAddDevice", "Der Motor kann nicht hinzugefügt werden:") + QStringLiteral("\n\n")
            + reason,
        QMessageBox::Ok);
}

const Z7Device *Z7MainController::findDevice(int id) const
{
    const auto device = m_devices.constFind(id);
    return device == m_devices.constEnd() ? nullptr : &device.value();
}

bool Z7MainController::isAccessGranted(int deviceId) const
{
    const Z7Device *device = findDevice(deviceId);
    return device && device->accessGranted;
}

bool Z7MainController::currentUserParams(Z7DeviceParamSet &out) const
{
    const auto changes = m_userParams.constFind(m_currentDevice);
    if (changes == m_userParams.constEnd())
        return false;
    out = changes.value();
    return true;
}

// --- showing pages ---

bool Z7MainController::showPage(int number, int deviceId, QWidget *contentWidget, QLayout *layout)
{
    Z7DataWidget *shown = page(number);
    if (!shown)
        return false;
    if (number != m_currentPage || !shown->parentWidget()) {
        takeOutPage(currentPage());
        shown->setParent(contentWidget);
        if (layout)
            layout->addWidget(shown);
        m_currentPage = number;
    }
    if (m_devices.contains(deviceId)) {
        fillPage(shown, deviceId);
    } else {
        m_currentDevice = -1;
        emit NoDeviceSelected();
    }
    shown->clearUserValues();
    if (m_userParams.contains(m_currentDevice))
        shown->applyUserParams(m_userParams.value(m_currentDevice));
    else
        m_mainContent->setConflictLine(QString());
    shown->show();
    updatePolling();
    return true;
}

void Z7MainController::takeOutPage(Z7DataWidget *page)
{
    if (page)
        PageStyle::takeOut(page);
}

void Z7MainController::fillPage(Z7DataWidget *page, int deviceId)
{
    forgetAllCallbacks();
    const Z7Device record = m_devices.value(deviceId);
    page->softwareVersion = record.softwareVersion;
    page->initPage();
    if (page->multiDevice) {
        for (const Z7Device &device : qAsConst(m_devices))
            page->DeviceUpdate(device);
        page->deviceUpdateFinished();
    } else {
        page->DeviceUpdate(record);
    }
    if (deviceId != m_currentDevice) {
        if (page->multiDevice)
            emit NoDeviceSelected();
        else
            emit NewDeviceSelected(record);
    }
    m_currentDevice = deviceId;
}

bool Z7MainController::hasModifiedParams(int pageNumber, int deviceId) const
{
    const Z7DataWidget *asked = page(pageNumber);
    const auto changes = m_userParams.constFind(deviceId);
    const auto device = m_devices.constFind(deviceId);
    if (!asked || changes == m_userParams.constEnd() || device == m_devices.constEnd())
        return false;
    for (const Z7DeviceParam &change : changes->params) {
        if (change.hasValue && asked->hasParam(change.number)
            && change.value != device->parameterSet.value(change.number).value)
            return true;
    }
    return false;
}

/// What the live update reads: after connecting everything, once; from then on the parameters of the shown
/// page.
void Z7MainController::updatePolling()
{
    const Z7DataWidget *shown = currentPage();
    if (!hasCurrentDevice() || !shown)
        return;
    addCallback(DevicePolling, m_deviceControl);
    addCallback(DevicePolling, currentPage());
    const Z7Device record = currentDeviceRecord();
    const bool readsAll = shown->allParameters || !record.parametersComplete;
    const Z7DeviceParamSet polled =
        readsAll ? record.parameterSet : Z7DeviceParamSet(record.softwareVersion, shown->paramIds());
    m_commInterface.setPollingStack(std::make_unique<Z7UpdateParameterSetTelegramStack>(record, polled));
    if (!record.parametersComplete)
        m_devices[m_currentDevice].fullReadPending = true;
}

// --- news from the bus ---

void Z7MainController::PostDeviceUpdate(ThreadID threadID, Z7Device device)
{
    if (threadID == TransferTelegramStack)
        addCallback(threadID, std::exchange(m_bootloaderListener, nullptr));
    const bool isListed = m_devices.contains(device.deviceId());
    const bool hasMoved = !isListed && device.addressChanged && m_devices.contains(device.previousDeviceId());
    if (isListed)
        replaceDevice(device);
    else if (hasMoved)
        moveToNewAddress(device);
    tellListeners(threadID, device, hasMoved);
    m_callbacks.passReported(threadID);
    rebuildTree();
}

/// A page that was shown for another drive while the pass was under way must not take this record for that
/// of its own drive: its values would be edited there, and written to it.
void Z7MainController::tellListeners(ThreadID threadID, const Z7Device &device, bool hasMoved)
{
    m_callbacks.call(threadID, [&](IDeviceDataCallback *listener) {
        const bool isForeign = !hasMoved && isRecordOfAnotherDrive(device) && keepsToOneDrive(listener)
            && m_callbacks.joinedLate(threadID, listener);
        if (!isForeign)
            listener->DeviceUpdate(device);
    });
}

bool Z7MainController::isRecordOfAnotherDrive(const Z7Device &device) const
{
    const int id = device.deviceId();
    return id != m_currentDevice && m_devices.contains(id);
}

void Z7MainController::replaceDevice(const Z7Device &device)
{
    Z7Device &stored = m_devices[device.deviceId()];
    const bool wasFullRead = stored.fullReadPending;
    const Z7DeviceParamSet storedParameters = stored.parameterSet;
    stored = device;
    // The wizard's log-on to a drive that is already listed brings a record without parameters.
    if (stored.parameterSet.params.isEmpty())
        stored.parameterSet = storedParameters;
    stored.fullReadPending = wasFullRead;
    // A pass that was cut short for a request has not read everything. The request goes first, and
    // the full read after it.
    if (!wasFullRead || m_commInterface.isPassCutShort())
        return;
    stored.fullReadPending = false;
    stored.parametersComplete = true;
    updatePolling();
}

void Z7MainController::moveToNewAddress(const Z7Device &device)
{
    const int id = device.deviceId();
    m_devices.remove(device.previousDeviceId());
    // The user may have gone to another drive meanwhile, and works on that one.
    if (!hasCurrentDevice())
        m_currentDevice = id;
    m_devices.insert(id, device);
    // From now on the old address may be another drive's.
    m_devices[id].addressChanged = false;
    rebuildTree();
    updatePolling();
}

void Z7MainController::PostTransactionStarted(ThreadID threadID, int maxProgress, Z7Device device)
{
    m_callbacks.passStarted(threadID);
    m_callbacks.call(threadID, [maxProgress, &device](IDeviceDataCallback *listener) {
        listener->transactionStarted(maxProgress, device);
    });
}

void Z7MainController::PostTransactionTerminated(ThreadID threadID)
{
    m_callbacks.call(threadID, [](IDeviceDataCallback *listener) { listener->transactionTerminated(); });
    m_callbacks.transactionTerminated(threadID);
}

void Z7MainController::PostTransactionProgress(ThreadID threadID)
{
    m_callbacks.call(threadID, [](IDeviceDataCallback *listener) { listener->transactionProgress(); });
}

void Z7MainController::allCommunicationStopped()
{
    for (const auto &entry : m_pages)
        entry.second->AllDeviceCommunicationStopped();
}

void Z7MainController::addCallback(ThreadID threadID, IDeviceDataCallback *callback)
{
    m_callbacks.add(threadID, callback, m_commInterface.isPassUnderWay(threadID));
}

void Z7MainController::removeCallback(IDeviceDataCallback *callback)
{
    m_callbacks.remove(callback);
}

void Z7MainController::forgetAllCallbacks()
{
    m_callbacks.removeAll();
    // The control bar will not hear the end of what it was watching.
    if (m_deviceControl)
        m_deviceControl->transactionTerminated();
}

// --- operations on the bus ---

void Z7MainController::scanDevice(const Z7Device &device, IDeviceDataCallback *callback)
{
    addCallback(ScanDevice, callback);
    m_commInterface.scanDevice(device);
}

void Z7MainController::readDeviceStatus(const Z7Device &device, IDeviceDataCallback *callback)
{
    transfer(std::make_unique<Z7DeviceStatusTelegramStack>(device), {m_deviceControl, callback});
}

void Z7MainController::transfer(
    std::unique_ptr<Z7TelegramStack> stack, const QList<IDeviceDataCallback *> &listeners)
{
    for (IDeviceDataCallback *listener : listeners)
        addCallback(TransferTelegramStack, listener);
    m_commInterface.transferTelegramStack(std::move(stack));
}

void Z7MainController::cancelCommunication()
{
    // The record of a cancelled pass must not bring polling back. Showing a page begins the full read anew.
    for (Z7Device &device : m_devices)
        device.fullReadPending = false;
    m_commInterface.cancelCommunication();
    // No record may come that would make the tree take clicks again.
    rebuildTree();
}

void Z7MainController::lendBus(bool toProgrammer)
{
    m_commInterface.setBusLent(toProgrammer);
}

void Z7MainController::DownloadData()
{
    Z7DataWidget *shown = currentPage();
    if (!shown || !hasCurrentDevice())
        return;
    const Z7Device record = currentDeviceRecord();
    const Z7DeviceParamSet wanted = shown->allParameters
        ? record.parameterSet
        : Z7DeviceParamSet(record.softwareVersion, shown->paramIds());
    transfer(std::make_unique<Z7UpdateParameterSetTelegramStack>(record, wanted), {m_deviceControl, shown});
}

bool Z7MainController::hasUserChanges() const
{
    return !m_userParams.value(m_currentDevice).params.isEmpty();
}

bool Z7MainController::confirmConflicts() const
{
    const QString conflicts = calcConflicts();
    if (conflicts.isEmpty())
        return true;
    QMessageBox question;
    question.setIcon(QMessageBox::Warning);
    question.setText(
        commonText("ConflictingParameterMessage", "Die Parameterwerte enthalten einen Konflikt:\n\n")
        + conflicts);
    question.setInformativeText(commonText("WriteAnyway", "Trotzdem schreiben?"));
    question.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    question.setDefaultButton(QMessageBox::No);
    return question.exec() == QMessageBox::Yes;
}

void Z7MainController::UploadData()
{
    if (!currentPage() || !hasCurrentDevice() || !hasUserChanges())
        return;
    m_mainContent->disableDataButtons();
    if (confirmConflicts())
        transfer(std::make_unique<Z7TelegramstackWriteParameterSet>(
                     currentDeviceRecord(), m_userParams.value(m_currentDevice)),
            {m_deviceControl, currentPage()});
    m_mainContent->enableDataButtons();
}

void Z7MainController::WriteAndStoreData()
{
    if (!currentPage() || !hasCurrentDevice() || !hasUserChanges())
        return;
    m_mainContent->disableDataButtons();
    if (confirmConflicts()) {
        transfer(std::make_unique<Z7TelegramstackWriteAndStoreParameterSet>(
                     currentDeviceRecord(), m_userParams.value(m_currentDevice)),
            {m_deviceControl, currentPage()});
        rebuildTree();
        showConflicts();
    }
    m_mainContent->enableDataButtons();
}

void Z7MainController::StoreData()
{
    if (!currentPage() || !hasCurrentDevice())
        return;
    transfer(std::make_unique<Z7TelegramstackStoreParameter>(currentDeviceRecord()),
        {m_deviceControl, currentPage()});
    rebuildTree();
    showConflicts();
}

void Z7MainController::SetFactorySettingsData()
{
    if (hasCurrentDevice())
        transfer(std::make_unique<Z7TelegramstackFactoryReset>(currentDeviceRecord()), {m_deviceControl});
}

void Z7MainController::SetNewPasswordData(int newPassword)
{
    if (hasCurrentDevice())
        transfer(std::make_unique<Z7TelegramstackPasswordReset>(currentDeviceRecord(), newPassword),
            {m_deviceControl});
}

void Z7MainController::sendBootloaderInitCommand()
{
    if (!currentPage() || !hasCurrentDevice())
        return;
    // The page waits for the outcome and cannot go on without it, but its place among the listeners may be
    // taken away: when another page is shown, and at once if the traffic that ended for this was a transfer.
    auto *asking = qobject_cast<Z7DataWidget *>(sender());
    m_bootloaderListener = asking ? asking : currentPage();
    transfer(std::make_unique<Z7TelegramstackBootloaderInit>(currentDeviceRecord()), {m_bootloaderListener});
}

void Z7MainController::sendChangeAdress(int NewAdress)
{
    if (currentPage() && hasCurrentDevice())
        transfer(std::make_unique<Z7TelegramstackChangeAdress>(currentDeviceRecord(), NewAdress),
            {m_deviceControl, currentPage()});
}

// --- the user's changes ---

void Z7MainController::postUserModifiedParameter(Z7DeviceParam param)
{
    auto changes = m_userParams.find(m_currentDevice);
    if (changes == m_userParams.end())
        changes =
            m_userParams.insert(m_currentDevice, Z7DeviceParamSet(currentDeviceRecord().softwareVersion));
    changes->insert(param);
    rebuildTree();
    showConflicts();
}

void Z7MainController::postUserDeletedParameter(Z7DeviceParam param)
{
    const auto changes = m_userParams.find(m_currentDevice);
    if (changes != m_userParams.end()) {
        changes->remove(param);
        if (changes->params.isEmpty())
            m_userParams.erase(changes);
    }
    rebuildTree();
    showConflicts();
}

void Z7MainController::setUserParams(int deviceId, const Z7DeviceParamSet &set)
{
    if (set.params.isEmpty())
        return;
    m_userParams.insert(deviceId, set);
    if (Z7DataWidget *shown = currentPage())
        shown->applyUserParams(set);
    showConflicts();
    rebuildTree();
    showOwnUserParams(deviceId);
}

void Z7MainController::resetChanges(int deviceId)
{
    m_userParams.remove(deviceId);
    rebuildTree();
    showConflicts();
    if (Z7DataWidget *shown = currentPage())
        shown->clearUserValues();
    showOwnUserParams(deviceId);
}

/// What was done to another drive's changes has gone through the fields of the shown page.
void Z7MainController::showOwnUserParams(int changedDeviceId)
{
    Z7DataWidget *shown = currentPage();
    if (shown && changedDeviceId != m_currentDevice)
        shown->showUserValues(m_userParams.value(m_currentDevice));
}

void Z7MainController::setDefaults(int deviceId)
{
    if (const Z7Device *device = findDevice(deviceId)) {
        const Z7DeviceParamSet values = definitionsOf(*device)->factoryValues(device->parameterSet);
        Z7DeviceParamSet changes = m_userParams.value(deviceId, values);
        changes.insertAll(values);
        if (!changes.params.isEmpty())
            m_userParams.insert(deviceId, changes);
    }
    rebuildTree();
}

QString Z7MainController::calcConflicts() const
{
    const auto device = m_devices.constFind(m_currentDevice);
    const auto changes = m_userParams.constFind(m_currentDevice);
    if (device == m_devices.constEnd() || changes == m_userParams.constEnd())
        return QString();
    return writeConflicts(*device, *changes);
}

// --- the middle band of the window ---

void Z7MainController::rebuildTree()
{
    m_mainContent->rebuildTree(m_devices.keys());
}

void Z7MainController::showConflicts()
{
    m_mainContent->setConflictLine(calcConflicts());
}
