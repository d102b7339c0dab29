#include "comm/passledger.h"

#include <utility>

using namespace Z7CommInterface;

void PassLedger::transferWaits(int request)
{
    waitingDropped(NotRun::Replaced);
    m_waiting = request;
}

void PassLedger::transferDropped(int request, NotRun reason)
{
    m_news.push_back({News::NotRun, TransferTelegramStack, request, reason});
}

void PassLedger::waitingDropped(NotRun reason)
{
    if (const auto request = std::exchange(m_waiting, std::nullopt))
        transferDropped(*request, reason);
}

void PassLedger::passBegan(ThreadID threadID)
{
    const bool isTransfer = threadID == TransferTelegramStack;
    const int request = isTransfer ? std::exchange(m_waiting, std::nullopt).value_or(0) : 0;
    m_running[threadID] = request;
    m_news.push_back({News::Began, threadID, request});
}

void PassLedger::passEnded(ThreadID threadID, const Z7PassOutcome &outcome)
{
    if (const auto request = std::exchange(m_running[threadID], std::nullopt))
        m_news.push_back({News::Ended, threadID, *request, {}, outcome});
}

std::optional<PassLedger::News> PassLedger::takeNews()
{
    if (m_news.empty())
        return std::nullopt;
    News news = std::move(m_news.front());
    m_news.pop_front();
    return news;
}

void PassLedger::clear()
{
    *this = PassLedger();
}
