#pragma once

#include "comm/commthreads.h"
#include "tests/comm/commnews.h"
#include "tests/comm/drivebus.h"

#include <QObject>

#include <memory>

/// What one pass does whichever thread runs it, with drive 3 on the bus. The test of a thread derives from
/// this class, so that the test functions here run for each of them.
class PassTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void passTellsItsStartEachReplyAndItsRecord();
    void passIsAnnouncedBeforePortIsOpened();
    void missingPortGivesError3InOneRecord();
    void recordWithoutPortEndsInError2();
    void cancelledPassReportsWhatItReadUntilThen();
    void threadThatGoesAwayDuringPassWaitsForItsEnd();

protected:
    virtual std::unique_ptr<CommThread> makeThread() = 0;
    /// Begins a pass of the stack, with a time-out of `timeoutMs`.
    virtual void begin(std::unique_ptr<Z7TelegramStack> stack) = 0;

    static constexpr int timeoutMs = 1000;

    /// Begins a pass. The stack is deleted when the result has expired.
    template<typename Stack>
    std::weak_ptr<void> start(const Z7Device &device = DriveBus::drive3())
    {
        auto stack = std::make_unique<Stack>(device);
        const std::weak_ptr<void> life = stack->life();
        begin(std::move(stack));
        return life;
    }
    /// True once so many passes have ended.
    bool hasEnded(int passes = 1) const;
    /// Runs one pass to its end; false if it does not come.
    template<typename Stack>
    bool run(const Z7Device &device = DriveBus::drive3())
    {
        const int before = news->count(QStringLiteral("ended"));
        start<Stack>(device);
        return hasEnded(before + 1);
    }
    /// True once a pass that has been started is under way.
    bool isUnderWay() const;
    QStringList events() const { return news->events(); }

    std::unique_ptr<DriveBus> bus;
    std::unique_ptr<CommThread> thread;
    std::unique_ptr<CommNews> news;
};
