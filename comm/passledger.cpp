#include "comm/passledger.h"

#include <utility>

using namespace Z7CommInterface;

void Z7PassLedger::transferWaits(int request)
{
    waitingDropped(NotRun::Replaced);
    m_waiting = request;
}

void Z7PassLedger::transferDropped(int request, NotRun reason)
{
    m_news.push_back({News::NotRun, TransferTelegramStack, request, reason});
}

void Z7PassLedger::waitingDropped(NotRun reason)
{
    if (const auto request = std::exchange(m_waiting, std::nullopt))
        transferDropped(*request, reason);
}

void Z7PassLedger::passBegan(ThreadID threadID)
{
    const bool isTransfer = threadID == TransferTelegramStack;
    const int request = isTransfer ? std::exchange(m_waiting, std::nullopt).value_or(0) : 0;
    m_running[threadID] = request;
    m_news.push_back({News::Began, threadID, request});
}

void Z7PassLedger::passEnded(ThreadID threadID, const Z7PassOutcome &outcome)
{
    const auto running = m_running.find(threadID);
    if (running == m_running.end())
        return;
    m_news.push_back({News::Ended, threadID, running->second, {}, outcome});
    m_running.erase(running);
}

std::optional<Z7PassLedger::News> Z7PassLedger::takeNews()
{
    if (m_news.empty())
        return std::nullopt;
    News news = std::move(m_news.front());
    m_news.pop_front();
    return news;
}

void Z7PassLedger::clear()
{
    *this = Z7PassLedger();
}
