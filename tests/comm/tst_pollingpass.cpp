// What a pass of the live update's thread does besides what every pass does.

#include "tests/comm/passtest.h"

#include <QtTest>

#include <atomic>

class TestPollingPass : public PassTest
{
    Q_OBJECT

private slots:
    void portIsFreeWhenRecordIsReported();
    void stackOutlivesPass();
    void stackOutlivesPortThatDoesNotOpen();
    void secondPassOpensPortAgain();

protected:
    std::unique_ptr<CommThread> makeThread() override;
    void begin(std::unique_ptr<Z7TelegramStack> stack) override;

private:
    CommThreadDevicePolling *polling = nullptr;
    std::unique_ptr<Z7TelegramStack> polled;
};

std::unique_ptr<CommThread> TestPollingPass::makeThread()
{
    auto made = std::make_unique<CommThreadDevicePolling>();
    polling = made.get();
    return made;
}

void TestPollingPass::begin(std::unique_ptr<Z7TelegramStack> stack)
{
    polled = std::move(stack);
    polling->start(polled.get(), timeoutMs);
}

void TestPollingPass::portIsFreeWhenRecordIsReported()
{
    std::atomic<bool> inUse {true};
    connect(
        thread.get(), &CommThread::updateDevice, this, [&inUse] { inUse = DriveBus::isPortInUse(); },
        Qt::DirectConnection);
    QVERIFY(run<Probe>());
    QVERIFY(!inUse);
}

void TestPollingPass::stackOutlivesPass()
{
    const auto stack = start<Probe>();
    QVERIFY(hasEnded());
    QVERIFY(!stack.expired());
}

void TestPollingPass::stackOutlivesPortThatDoesNotOpen()
{
    bus->disconnectPort();
    const auto stack = start<Probe>();
    QVERIFY(hasEnded());
    QVERIFY(!stack.expired());
}

void TestPollingPass::secondPassOpensPortAgain()
{
    QVERIFY(run<Probe>());
    polled->restart();
    polling->start(polled.get(), timeoutMs);
    QVERIFY(hasEnded(2));
    const QStringList pass {"started 1", "progress 1", "record 0", "ended"};
    QCOMPARE(events(), pass + pass);
    const QByteArrayList twice {AccessWith3, AccessWith3};
    QCOMPARE(bus->requests(), twice);
}

QTEST_GUILESS_MAIN(TestPollingPass)

#include "tst_pollingpass.moc"
