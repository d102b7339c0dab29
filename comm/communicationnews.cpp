// What the scheduler can be asked, and what it tells when all else is done.

#include "comm/communicationinterface.h"

#include <utility>

using namespace Z7CommInterface;

bool Z7CommunicationInterface::isPassCutShort() const
{
    return m_busLent || m_currentThread == TransferTelegramStack || m_nextThread != noThread;
}

BusState Z7CommunicationInterface::busState() const
{
    if (m_busLent)
        return BusState::Lent;
    if (m_currentThread == TransferTelegramStack)
        return BusState::Transferring;
    if (m_currentThread == ScanDevice)
        return BusState::Scanning;
    if (m_pollingEnabled)
        return BusState::Polling;
    if (m_pollingTimer.isActive())
        return BusState::PollingOff;
    return m_pollingStack ? BusState::Held : BusState::Idle;
}

void Z7CommunicationInterface::tellNews()
{
    while (const auto news = m_ledger.takeNews()) {
        if (news->kind == Z7PassLedger::News::Began)
            emit passBegan(news->threadID, news->request);
        else if (news->kind == Z7PassLedger::News::Ended)
            emit passEnded(news->threadID, news->request, news->outcome);
        else
            emit transferNotRun(news->request, news->reason);
    }
    const BusState state = busState();
    if (std::exchange(m_toldState, state) != state)
        emit busStateChanged(state);
}
