#include "control/scantally.h"

#include "protocol/telegram.h"

namespace {

/// A scan that is stopped reports the address in progress, whether its telegram was sent or not.
bool wasAsked(const Z7Device &record)
{
    switch (record.error) {
    case TelegramError::None:
        return record.isConnected();
    case TelegramError::WriteNotCompleted:
    case TelegramError::PortNotOpened:
    case TelegramError::PortSettingsRefused:
    case TelegramError::TransactionAborted:
        return false;
    default:
        return true;
    }
}

} // namespace

bool operator==(const ScanReach &a, const ScanReach &b)
{
    return a.asked == b.asked && a.lastAsked == b.lastAsked && a.wasStopped == b.wasStopped;
}

void ScanTally::take(const Z7Device &record)
{
    ++m_records;
    m_lastError = record.error;
    if (!wasAsked(record))
        return;
    ++m_reach.asked;
    m_reach.lastAsked = record.address;
}

ScanReach ScanTally::reach() const
{
    ScanReach reach = m_reach;
    const bool portFailed =
        m_lastError == TelegramError::PortNotOpened || m_lastError == TelegramError::PortSettingsRefused;
    reach.endedAt = QDateTime::currentDateTime();
    reach.wasStopped = m_records < ScanReach::allAddresses && !portFailed;
    return reach;
}

bool ScanTally::endedInFailure() const
{
    return m_lastError == TelegramError::WriteNotCompleted || m_lastError == TelegramError::PortNotOpened
        || m_lastError == TelegramError::PortSettingsRefused;
}
