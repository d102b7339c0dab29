#pragma once

#include "comm/busnews.h"
#include "comm/commfronts.h"

#include <deque>
#include <map>
#include <optional>

/// Which transfer waits and which passes run, and what is to be told of them. The scheduler notes each change
/// as it happens, and tells the news, oldest first, when it has done and told all else. Main thread only.
class Z7PassLedger
{
public:
    struct News
    {
        enum Kind { Began, Ended, NotRun };

        Kind kind;
        Z7CommInterface::ThreadID threadID;
        int request;
        Z7CommInterface::NotRun reason = {}; ///< of NotRun alone
        Z7PassOutcome outcome = {}; ///< of Ended alone
    };

    /// A transfer waits for its thread, in the place of one that was waiting.
    void transferWaits(int request);
    /// A transfer will not begin and has never been waiting.
    void transferDropped(int request, Z7CommInterface::NotRun reason);
    /// The transfer that is waiting, if one is, will not begin.
    void waitingDropped(Z7CommInterface::NotRun reason);

    /// A pass begins; that of a transfer is the one that was waiting.
    void passBegan(Z7CommInterface::ThreadID threadID);
    /// The pass of a thread is over. Without one that has begun nothing is noted.
    void passEnded(Z7CommInterface::ThreadID threadID, const Z7PassOutcome &outcome);

    /// The oldest news, which is told then; nothing if all has been told.
    std::optional<News> takeNews();
    /// For the end of the program: nothing is told any more.
    void clear();

private:
    std::optional<int> m_waiting; ///< request of the transfer
    std::map<Z7CommInterface::ThreadID, int> m_running; ///< request of each pass that has begun
    std::deque<News> m_news;
};
