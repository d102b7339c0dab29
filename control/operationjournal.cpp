#include "control/operationjournal.h"

#include <algorithm>

namespace {

/// Adds a number to an ascending list, if it is not there yet. True if it was not.
bool add(QVector<int> &numbers, int number)
{
    const auto place = std::lower_bound(numbers.begin(), numbers.end(), number);
    if (place != numbers.end() && *place == number)
        return false;
    numbers.insert(place, number);
    return true;
}

/// The values of these numbers as a person asked for them.
QMap<int, int> valuesOf(const QVector<int> &numbers, const Z7DeviceParamSet &params)
{
    QMap<int, int> values;
    for (const int number : numbers) {
        if (params.contains(number))
            values.insert(number, params.value(number).value);
    }
    return values;
}

/// The short name of the drive at the end of the pass.
QString nameOf(const Z7PassOutcome &outcome)
{
    Z7Device drive;
    drive.assignAddress(outcome.address);
    return shortDeviceName(drive);
}

bool isWrite(DriveOperation operation)
{
    return operation == DriveOperation::Write || operation == DriveOperation::WriteAndStore;
}

} // namespace

int OperationJournal::ask(DriveOperation operation, const Z7Device &drive, const Z7DeviceParamSet &params)
{
    if (operation == DriveOperation::None)
        return 0;
    m_asked.insert(++m_lastRequest, {operation, drive.deviceId(), shortDeviceName(drive), params});
    return m_lastRequest;
}

bool OperationJournal::began(int request)
{
    const auto asked = m_asked.constFind(request);
    return asked != m_asked.constEnd() && removeNotRun(asked->operation, asked->deviceId);
}

bool OperationJournal::ended(int request, const Z7PassOutcome &outcome, const QDateTime &at)
{
    const auto found = m_asked.find(request);
    if (found == m_asked.end())
        return false;
    const Asked asked = *found;
    m_asked.erase(found);
    Last last {reportOf(asked.operation, asked.params, outcome), {}};
    last.report.endedAt = at;
    last.report.driveName = nameOf(outcome);
    if (isWrite(asked.operation))
        last.awaited = valuesOf(last.report.done, asked.params);
    if (outcome.deviceId != asked.deviceId)
        moveDrive(asked.deviceId, outcome.deviceId, last.report.driveName);
    m_last.insert(outcome.deviceId, last);
    return true;
}

void OperationJournal::moveDrive(int from, int to, const QString &name)
{
    m_last.remove(from);
    for (NotRunOperation &entry : m_notRun) {
        if (entry.deviceId == from) {
            entry.deviceId = to;
            entry.driveName = name;
        }
    }
}

bool OperationJournal::notRun(int request, Z7CommInterface::NotRun reason, const QDateTime &at)
{
    const auto found = m_asked.find(request);
    if (found == m_asked.end())
        return false;
    const Asked asked = *found;
    m_asked.erase(found);
    removeNotRun(asked.operation, asked.deviceId);
    m_notRun.append({asked.operation, asked.deviceId, asked.driveName, at, reason});
    return true;
}

bool OperationJournal::removeNotRun(DriveOperation operation, int deviceId)
{
    const auto isIt = [operation, deviceId](const NotRunOperation &entry) {
        return entry.operation == operation && entry.deviceId == deviceId;
    };
    const auto rest = std::remove_if(m_notRun.begin(), m_notRun.end(), isIt);
    const bool isThere = rest != m_notRun.end();
    m_notRun.erase(rest, m_notRun.end());
    return isThere;
}

void OperationJournal::dismissNotRun(int index)
{
    if (index >= 0 && index < m_notRun.size())
        m_notRun.remove(index);
}

void OperationJournal::fileOpened(const Z7Device &drive, const Z7DeviceParamSet &file, const QDateTime &at)
{
    Last last {reportOfFile(drive, file), {}};
    last.report.endedAt = at;
    last.report.driveName = shortDeviceName(drive);
    m_last.insert(last.report.deviceId, last);
}

bool OperationJournal::takeReadings(const Z7PassOutcome &outcome)
{
    const auto last = m_last.find(outcome.deviceId);
    if (last == m_last.end() || last->awaited.isEmpty() || outcome.error != TelegramError::None)
        return false;
    bool isNews = false;
    for (const Z7ParamOutcome &param : outcome.params) {
        if (param.kind == Z7ParamOutcome::Read && param.state == Z7ParamOutcome::Answered)
            isNews |= takeReading(*last, param.number, param.value);
    }
    return isNews;
}

bool OperationJournal::takeReading(Last &last, int number, int value)
{
    const auto awaited = last.awaited.find(number);
    if (awaited == last.awaited.end())
        return false;
    OperationReport &report = last.report;
    if (*awaited != value)
        return add(report.readBackDifferent, number);
    last.awaited.erase(awaited);
    report.readBackDifferent.removeOne(number);
    return add(report.readBackEqual, number);
}

void OperationJournal::endReadings()
{
    for (Last &last : m_last)
        last.awaited.clear();
}

const OperationReport *OperationJournal::last(int deviceId) const
{
    const auto last = m_last.constFind(deviceId);
    return last == m_last.constEnd() ? nullptr : &last->report;
}
