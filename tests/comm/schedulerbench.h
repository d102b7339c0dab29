#pragma once

#include "comm/communicationinterface.h"
#include "tests/comm/commnews.h"
#include "tests/comm/drivebus.h"

#include <QTest>

/// The scheduler with drive 3 on its bus, and what it tells. The pause between polling passes is short, and
/// silent addresses cost a scan no time.
class SchedulerBench
{
public:
    SchedulerBench()
    {
        setTimeout(300);
        setTimeoutScanning(1);
        setPollingInterval(10);
    }

    /// Requests a transfer. The stack is deleted when the result has expired.
    template<typename Stack>
    std::weak_ptr<void> transfer(const Z7Device &device = DriveBus::drive3())
    {
        auto stack = std::make_unique<Stack>(device);
        const std::weak_ptr<void> life = stack->life();
        scheduler->transferTelegramStack(std::move(stack));
        return life;
    }
    /// Makes drive 3 the polled one.
    template<typename Stack>
    std::weak_ptr<void> poll(const Z7Device &device = DriveBus::drive3())
    {
        auto stack = std::make_unique<Stack>(device);
        const std::weak_ptr<void> life = stack->life();
        scheduler->setPollingStack(std::move(stack));
        return life;
    }
    void scan(const Z7Device &device = DriveBus::drive3()) { scheduler->scanDevice(device); }

    /// Polls with a single telegram, and waits until the first pass is over and the pause, too long for any
    /// test, has begun. What has come until then is forgotten. False if the pass does not end.
    bool reachPollingPause();
    /// Polls, and waits for the news that a pass of 14 telegrams has begun to run, which are forgotten. False
    /// if they do not come.
    bool reachPollingPass();

    bool has(const char *event) const { return news.has(QLatin1String(event)); }
    int count(const char *event) const { return news.count(QLatin1String(event)); }
    int requestCount() const { return bus.requests().size(); }

    DriveBus bus;
    std::unique_ptr<Z7CommunicationInterface> scheduler = std::make_unique<Z7CommunicationInterface>();
    CommNews news {*scheduler};
};

inline bool SchedulerBench::reachPollingPause()
{
    poll<Probe>();
    setPollingInterval(3600000);
    if (!QTest::qWaitFor([this] { return has("all terminated"); }))
        return false;
    news.clear();
    bus.forgetWire();
    return true;
}

inline bool SchedulerBench::reachPollingPass()
{
    poll<Status>();
    if (!QTest::qWaitFor([this] { return has("polling progress"); }))
        return false;
    news.clear();
    return true;
}
