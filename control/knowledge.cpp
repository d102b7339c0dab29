#include "control/knowledge.h"

#include "comm/communicationinterface.h"
#include "control/datapages.h"
#include "control/devicelist.h"
#include "control/pendingchanges.h"
#include "control/services/options.h"
#include "control/services/platform.h"
#include "control/services/services.h"
#include "model/parameterdefinitions.h"
#include "pages/datawidget.h"
#include "pages/pagefactory.h"

#include <utility>

using namespace Z7CommInterface;

Z7Knowledge::Z7Knowledge(const Z7CommunicationInterface &bus, const DeviceList &drives,
    const PendingChanges &changes, const DataPages &pages)
    : m_drives(drives)
    , m_changes(changes)
    , m_pages(pages)
    , m_clock(Platform::millisecondsWithSleep)
{
    qRegisterMetaType<OperationReport>("OperationReport");
    connect(&bus, SIGNAL(passBegan(Z7CommInterface::ThreadID, int)),
        SLOT(passBegan(Z7CommInterface::ThreadID, int)));
    connect(&bus, SIGNAL(passEnded(Z7CommInterface::ThreadID, int, Z7PassOutcome)),
        SLOT(passEnded(Z7CommInterface::ThreadID, int, Z7PassOutcome)));
    connect(&bus, SIGNAL(transferNotRun(int, Z7CommInterface::NotRun)),
        SLOT(transferNotRun(int, Z7CommInterface::NotRun)));
    connect(&bus, SIGNAL(busStateChanged(Z7CommInterface::BusState)),
        SLOT(busStateChanged(Z7CommInterface::BusState)));
    m_look.setSingleShot(true);
    connect(&m_look, SIGNAL(timeout()), SLOT(lookAtClock()));
    lookForDefinitions();
}

// --- what the window asks ---

Z7Knowledge::Fresh Z7Knowledge::fresh() const
{
    Fresh fresh;
    fresh.state = m_freshness.state(m_clock());
    fresh.readAt = m_freshness.readAt().toLocalTime();
    if (const Z7Device *drive = m_drives.findCurrent())
        fresh.driveName = shortDeviceName(*drive);
    return fresh;
}

const OperationReport *Z7Knowledge::lastOperation() const
{
    return m_drives.hasCurrent() ? m_journal.last(m_drives.currentId()) : nullptr;
}

void Z7Knowledge::dismissNotRun(int index)
{
    m_journal.dismissNotRun(index);
    emit notRunChanged();
}

QVector<PendingChange> Z7Knowledge::pendingChanges() const
{
    const Z7Device *drive = m_drives.findCurrent();
    if (!drive)
        return {};
    return ::pendingChanges(
        *drive, m_changes.value(m_drives.currentId()), [this](int number) { return m_pages.pageOf(number); });
}

bool Z7Knowledge::canRestoreChanges() const
{
    return m_drives.hasCurrent() && m_changes.hasDiscarded(m_drives.currentId());
}

const QVector<Z7Device> &Z7Knowledge::hiddenDrives() const
{
    return m_drives.hidden();
}

const QVector<Z7Device> &Z7Knowledge::refusedDrives() const
{
    return m_drives.refused();
}

void Z7Knowledge::lookForDefinitions()
{
    const bool areMissing = !Z7ParamDefinitions::isAnyFileIn(Z7Services::instance()->folder());
    if (std::exchange(m_areDefinitionsMissing, areMissing) != areMissing)
        emit drivesChanged();
}

void Z7Knowledge::setClock(const std::function<qint64()> &clock)
{
    m_clock = clock;
}

// --- what the controller tells ---

int Z7Knowledge::operationAsked(
    DriveOperation operation, const Z7Device &drive, const Z7DeviceParamSet &params)
{
    return m_journal.ask(operation, drive, params);
}

void Z7Knowledge::fileOpened(const Z7Device &drive, const Z7DeviceParamSet &file)
{
    m_journal.fileOpened(drive, file, QDateTime::currentDateTime());
    tellEnd(drive.deviceId());
}

void Z7Knowledge::drivesConnected()
{
    m_freshness.forgetReadings();
    m_journal.endReadings();
    m_isPassOutdated = true;
    lookForDefinitions();
    emit drivesChanged();
    pageShown(nullptr);
}

void Z7Knowledge::pageShown(const Z7DataWidget *page)
{
    m_page = page;
    selectDrive();
}

void Z7Knowledge::selectDrive()
{
    m_freshness.select(m_drives.hasCurrent() ? m_drives.currentId() : Freshness::none);
    lookAtClock();
    updateNeverRead();
    emit lastOperationChanged();
    changesEdited();
}

void Z7Knowledge::changesEdited()
{
    const Z7Device *drive = m_drives.findCurrent();
    const auto isShown = [this](int number) { return m_page && m_page->hasParam(number); };
    m_pending =
        drive ? pendingOverview(*drive, m_changes.value(m_drives.currentId()), isShown) : PendingOverview();
    emit pendingChanged();
}

void Z7Knowledge::recordTaken(bool hasMoved)
{
    updateNeverRead();
    emit recordChanged();
    if (!hasMoved)
        return;
    selectDrive();
    emit drivesChanged();
}

void Z7Knowledge::updateNeverRead()
{
    NeverRead neverRead;
    const Z7Device *drive = m_drives.findCurrent();
    if (drive && drive->parametersComplete) {
        neverRead.isKnown = true;
        neverRead.total = drive->parameterSet.params.size();
        for (const Z7DeviceParam &param : drive->parameterSet.params) {
            if (!param.hasValue)
                neverRead.numbers.append(param.number);
        }
    }
    if (neverRead == m_neverRead)
        return;
    m_neverRead = neverRead;
    emit neverReadChanged();
}

// --- what the bus tells ---

void Z7Knowledge::passBegan(ThreadID, int request)
{
    m_passBeganMs = m_clock();
    m_isPassOutdated = false;
    if (m_journal.began(request))
        emit notRunChanged();
}

void Z7Knowledge::passEnded(ThreadID threadID, int request, Z7PassOutcome outcome)
{
    // What was read of a drive that has been connected anew meanwhile tells nothing of it.
    if (!m_isPassOutdated && m_journal.takeReadings(outcome))
        tellLastOperation(outcome.deviceId);
    // The time of the calendar costs more than all the rest, and most passes are of the live update.
    const bool isOperation = request != 0 && m_journal.ended(request, outcome, QDateTime::currentDateTime());
    if (m_isPassOutdated)
        m_journal.endReadings();
    else if (threadID == DevicePolling
        || (isOperation && m_journal.last(outcome.deviceId)->operation == DriveOperation::Read))
        takeReading(outcome);
    if (isOperation)
        tellEnd(outcome.deviceId);
}

void Z7Knowledge::takeReading(const Z7PassOutcome &outcome)
{
    if (!m_drives.contains(outcome.deviceId))
        return;
    if (!outcome.isComplete) {
        // One that was cut short for another request has none.
        if (outcome.error != TelegramError::None)
            emit driveNotRead(outcome.deviceId);
        return;
    }
    const qint64 now = m_clock();
    const int interval = Z7Services::instance()->options()->pollingInterval();
    const qint64 staleAfterMs = Freshness::limitMs(interval, now - m_passBeganMs);
    m_freshness.noteReading(outcome.deviceId, now, QDateTime::currentDateTimeUtc(), staleAfterMs);
    lookAtClock();
    emit driveRead(outcome.deviceId, staleAfterMs);
}

void Z7Knowledge::tellEnd(int deviceId)
{
    emit operationEnded(*m_journal.last(deviceId));
    tellLastOperation(deviceId);
}

void Z7Knowledge::tellLastOperation(int deviceId)
{
    if (deviceId == m_drives.currentId())
        emit lastOperationChanged();
}

void Z7Knowledge::transferNotRun(int request, NotRun reason)
{
    if (m_journal.notRun(request, reason, QDateTime::currentDateTime()))
        emit notRunChanged();
}

void Z7Knowledge::busStateChanged(BusState state)
{
    m_freshness.setBus(state);
    lookAtClock();
}

void Z7Knowledge::lookAtClock()
{
    const qint64 now = m_clock();
    const int nextMs = m_freshness.nextLookMs(now);
    if (nextMs < 0)
        m_look.stop();
    else
        m_look.start(nextMs);
    // People read seconds.
    const ToldFresh fresh {
        m_freshness.state(now), m_drives.currentId(), m_freshness.readAt().toSecsSinceEpoch()};
    if (std::exchange(m_toldFresh, fresh) != fresh)
        emit freshChanged();
}
