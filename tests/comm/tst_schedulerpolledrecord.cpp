// What becomes of a polling stack that is replaced, and how the live update learns what other passes changed.

#include "model/drivefacts.h"
#include "tests/comm/schedulerbench.h"

#include <QtTest>

namespace {

/// A change of the password from 3 to 4711.
class NewPassword : public Watched<Z7TelegramstackPasswordReset>
{
public:
    explicit NewPassword(const Z7Device &device)
        : Watched(device, 4711)
    {
    }
};

/// Its only telegram.
const QByteArray passwordChange = "0c 03 00 00 00 03 00 00 12 67 de";

/// Reads the operation mode into the drive's own set.
class ModeRead : public Watched<Z7UpdateParameterSetTelegramStack>
{
public:
    explicit ModeRead(const Z7Device &device)
        : Watched(device, device.parameterSet)
    {
    }
};

Z7Device drive3WithMode()
{
    Z7Device device = DriveBus::drive3();
    device.setSoftwareVersion(QStringLiteral("V123"));
    device.setParameterSet(Z7DeviceParamSet(QStringLiteral("V123"), {ParameterNumber::OperationMode1}));
    return device;
}

} // namespace

class TestSchedulerPolledRecord : public QObject
{
    Q_OBJECT

private slots:
    void init() { bench = std::make_unique<SchedulerBench>(); }
    void cleanup() { bench.reset(); }

    void stackReplacedDuringItsPassLivesUntilNextPass();
    void stackReplacedInPauseLivesUntilNextPass();
    void passOfReplacedStackIsCutShort();
    void stackReplacedInPauseWaitsOneInterval();
    void stackReplacedTwiceInOnePassLivesUntilNext();
    void stackReplacedTwiceInPauseIsFreedAtOnce();
    void pollingStackIsFreedWithInterface();

    void passwordChangedByTransferReachesNextPass();
    void parametersReadByTransferReachNextPass();
    void recordThatComesDuringPassDoesNotChangeItsTelegrams();
    void recordThatComesInPauseIsAdoptedAtOnce();
    void recordOfFormerDriveIsNotAdoptedByNewStack();

private:
    std::unique_ptr<SchedulerBench> bench;
};

void TestSchedulerPolledRecord::stackReplacedDuringItsPassLivesUntilNextPass()
{
    const auto former = bench->poll<Status>();
    QTRY_VERIFY(bench->has("polling progress"));
    bench->poll<Probe>();
    QVERIFY2(!former.expired(), "its pass still uses it");
    QTRY_VERIFY(bench->has("polling started 1"));
    QVERIFY(former.expired());
}

void TestSchedulerPolledRecord::stackReplacedInPauseLivesUntilNextPass()
{
    const auto former = bench->poll<Probe>();
    setPollingInterval(300);
    QTRY_VERIFY(bench->has("polling record"));
    bench->poll<Status>();
    QVERIFY(!former.expired());
    QTRY_VERIFY(bench->has("polling started 14"));
    QVERIFY(former.expired());
}

void TestSchedulerPolledRecord::passOfReplacedStackIsCutShort()
{
    QVERIFY(bench->reachPollingPass());
    bench->poll<Probe>();
    QTRY_VERIFY(bench->has("polling started 1"));
    QVERIFY(bench->requestCount() < 14);
    QCOMPARE(bench->news.milestones().mid(0, 3),
        QStringList({"polling record 0", "all terminated", "polling started 1"}));
}

void TestSchedulerPolledRecord::stackReplacedInPauseWaitsOneInterval()
{
    QVERIFY(bench->reachPollingPause());
    bench->poll<Status>();
    QCOMPARE(bench->news.events(), QStringList {"all terminated"});
    QTest::qWait(100);
    QCOMPARE(bench->requestCount(), 0);
}

void TestSchedulerPolledRecord::stackReplacedTwiceInOnePassLivesUntilNext()
{
    const auto inUse = bench->poll<Status>();
    QTRY_VERIFY(bench->has("polling progress"));
    const auto neverUsed = bench->poll<Status>();
    bench->poll<Probe>();
    QVERIFY(!inUse.expired());
    QTRY_VERIFY(bench->has("polling started 1"));
    QVERIFY(neverUsed.expired());
    QVERIFY(inUse.expired());
}

void TestSchedulerPolledRecord::stackReplacedTwiceInPauseIsFreedAtOnce()
{
    const auto used = bench->poll<Probe>();
    setPollingInterval(3600000);
    QTRY_VERIFY(bench->has("all terminated"));
    bench->poll<Probe>();
    bench->poll<Probe>();
    QVERIFY(used.expired());
}

void TestSchedulerPolledRecord::pollingStackIsFreedWithInterface()
{
    const auto stack = bench->poll<Status>();
    QTRY_VERIFY(bench->has("polling progress"));
    bench->scheduler.reset();
    QVERIFY(stack.expired());
}

void TestSchedulerPolledRecord::passwordChangedByTransferReachesNextPass()
{
    bench->poll<Status>(drive3WithMode());
    QTRY_VERIFY(bench->has("polling progress"));
    bench->transfer<NewPassword>(drive3WithMode());
    QTRY_VERIFY(bench->has("polling progress 14"));
    QTRY_VERIFY(bench->news.lastRecord().isAccessGranted());
    QCOMPARE(bench->news.lastRecord().password, 4711);
    const QByteArrayList requests = bench->bus.requests();
    const QByteArrayList access {AccessWith4711, AccessWith4711};
    QCOMPARE(requests.mid(requests.indexOf(passwordChange) + 1, 2), access);
}

void TestSchedulerPolledRecord::parametersReadByTransferReachNextPass()
{
    setPollingInterval(200);
    bench->poll<Probe>(drive3WithMode());
    QTRY_VERIFY(bench->has("polling record 0"));
    QVERIFY(!bench->news.lastRecord().parameterSet.value(ParameterNumber::OperationMode1).valid);
    bench->bus.command("set 3 param 1 4");
    bench->transfer<ModeRead>(drive3WithMode());
    QTRY_VERIFY(bench->has("transfer record 0"));
    QTRY_VERIFY(bench->count("polling record 0") >= 2);
    const Z7DeviceParam mode = bench->news.lastRecord().parameterSet.value(ParameterNumber::OperationMode1);
    QVERIFY(mode.valid);
    QCOMPARE(mode.value, 4);
}

void TestSchedulerPolledRecord::recordThatComesDuringPassDoesNotChangeItsTelegrams()
{
    bench->bus.command("fault 3 late ms=200 count=1");
    bench->poll<Status>();
    QTRY_COMPARE(bench->requestCount(), 1);
    bench->scheduler->threadDeviceUpdate(Z7CommInterface::TransferTelegramStack, DriveBus::drive(3, 4711));
    QTRY_VERIFY(bench->has("polling progress"));
    QTRY_VERIFY(bench->requestCount() >= 2);
    QCOMPARE(bench->bus.requests().at(1), QByteArray(AccessWith3));
}

void TestSchedulerPolledRecord::recordThatComesInPauseIsAdoptedAtOnce()
{
    setPollingInterval(200);
    bench->poll<Status>();
    bench->scheduler->threadDeviceUpdate(Z7CommInterface::TransferTelegramStack, DriveBus::drive(3, 4711));
    QVERIFY(bench->has("transfer record 0"));
    QTRY_VERIFY(bench->requestCount() >= 1);
    QCOMPARE(bench->bus.requests().at(0), QByteArray(AccessWith4711));
}

void TestSchedulerPolledRecord::recordOfFormerDriveIsNotAdoptedByNewStack()
{
    bench->bus.command("fault 3 late ms=200 count=1");
    bench->poll<Status>();
    QTRY_COMPARE(bench->requestCount(), 1);
    bench->scheduler->threadDeviceUpdate(Z7CommInterface::TransferTelegramStack, DriveBus::drive(5, 5));
    bench->poll<Probe>();
    QTRY_VERIFY(bench->has("polling started 1"));
    QTRY_COMPARE(bench->bus.requests().last(), QByteArray(AccessWith3));
}

QTEST_GUILESS_MAIN(TestSchedulerPolledRecord)

#include "tst_schedulerpolledrecord.moc"
