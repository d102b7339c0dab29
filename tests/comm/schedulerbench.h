#pragma once

#include "comm/communicationinterface.h"
#include "tests/comm/commnews.h"
#include "tests/comm/drivebus.h"

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

    bool has(const char *event) const { return news.has(QLatin1String(event)); }
    int count(const char *event) const { return news.count(QLatin1String(event)); }
    int requestCount() const { return bus.requests().size(); }

    DriveBus bus;
    std::unique_ptr<Z7CommunicationInterface> scheduler = std::make_unique<Z7CommunicationInterface>();
    CommNews news {*scheduler};
};

/// Polls with a single telegram, and waits until the first pass is over and the pause, too long for any test,
/// has begun.
#define REACH_POLLING_PAUSE(bench)                                                                           \
    (bench)->poll<Probe>();                                                                                  \
    setPollingInterval(3600000);                                                                             \
    QTRY_VERIFY((bench)->has("all terminated"));                                                             \
    (bench)->news.clear();                                                                                   \
    (bench)->bus.forgetWire();

/// Waits for the news that a pass of 14 telegrams has begun to run.
#define REACH_POLLING_PASS(bench)                                                                            \
    (bench)->poll<Status>();                                                                                 \
    QTRY_VERIFY((bench)->has("polling progress"));                                                           \
    (bench)->news.clear();
