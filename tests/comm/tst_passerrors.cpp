// What can go wrong in an exchange with a drive, and the error number with which the pass ends. A failed
// exchange is never tried again.

#include "comm/commthreads.h"
#include "model/drivefacts.h"
#include "tests/comm/commnews.h"
#include "tests/comm/drivebus.h"

#include <QtTest>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace {

enum Operation { ReadStatus, StoreParameters, ResetToFactory, ChangePassword, EnterBootloader };

std::unique_ptr<Z7TelegramStack> stackFor(Operation operation, const Z7Device &device)
{
    switch (operation) {
    case StoreParameters:
        return std::make_unique<Z7TelegramstackStoreParameter>(device);
    case ResetToFactory:
        return std::make_unique<Z7TelegramstackFactoryReset>(device);
    case ChangePassword:
        return std::make_unique<Z7TelegramstackPasswordReset>(device, 4711);
    case EnterBootloader:
        return std::make_unique<Z7TelegramstackBootloaderInit>(device);
    default:
        return std::make_unique<Z7DeviceStatusTelegramStack>(device);
    }
}

constexpr int timeoutMs = 300;

} // namespace
Q_DECLARE_METATYPE(Operation)

class TestPassErrors : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void statusReplyInTroubleEndsPass_data();
    void statusReplyInTroubleEndsPass();
    void operationRefusedByDriveEndsPass_data();
    void operationRefusedByDriveEndsPass();
    void bootloaderIsRefusedWhileMotorTurns();
    void lineThatTakesNoBytesGivesError2();
    void silentDriveOnlyEndsPassAfterTimeout();
    void refusedPasswordStillCountsAsConnected();
    void driveOfAnotherVersionGivesError15();
    void driveThatSawDamagedRequestGivesError8AndCountsAsLost();
    void valuesReadBeforeErrorAreReportedWithIt();
    void adapterPulledDuringExchangeEndsPassAtOnce();
    void babblingLineEndsPassWithError();
    void cancelIsSeenOnBabblingLine();

private:
    void runTransfer(Operation operation, const Z7Device &device, int timeout = timeoutMs);
    void runPolling(Operation operation, const Z7Device &device);
    void checkBothThreads(Operation operation, const Z7Device &device, int error, int answered, int sent);

    std::unique_ptr<DriveBus> bus;
    std::unique_ptr<CommNews> news;
};

void TestPassErrors::init()
{
    bus = std::make_unique<DriveBus>();
}

void TestPassErrors::cleanup()
{
    news.reset();
    bus.reset();
}

void TestPassErrors::runTransfer(Operation operation, const Z7Device &device, int timeout)
{
    CommThreadTransferTelegramStack thread;
    news = std::make_unique<CommNews>(thread);
    thread.start(stackFor(operation, device), timeout);
    QTRY_VERIFY(news->has("ended"));
}

void TestPassErrors::runPolling(Operation operation, const Z7Device &device)
{
    const auto stack = stackFor(operation, device);
    CommThreadDevicePolling thread;
    news = std::make_unique<CommNews>(thread);
    thread.start(stack.get(), timeoutMs);
    QTRY_VERIFY(news->has("ended"));
}

void TestPassErrors::checkBothThreads(
    Operation operation, const Z7Device &device, int error, int answered, int sent)
{
    const auto check = [&] {
        QCOMPARE(news->count("record"), 1);
        QCOMPARE(news->lastRecord().error, error);
        QCOMPARE(news->count(QStringLiteral("progress %1").arg(answered)), answered ? 1 : 0);
        QCOMPARE(bus->requests().size(), sent);
    };
    runTransfer(operation, device);
    check();
    bus->forgetWire();
    runPolling(operation, device);
    check();
}

void TestPassErrors::statusReplyInTroubleEndsPass_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("answered");
    QTest::addColumn<int>("sent");
    const auto row = [](const char *name, const char *fault, int error, int answered, int sent) {
        QTest::newRow(name) << QByteArray(fault) << error << answered << sent;
    };
    row("no answer", "no-answer", 1, 0, 1);
    row("no answer in the middle of the list", "no-answer command=0x05", 1, 2, 3);
    row("answer that comes too late", "late ms=700", 1, 0, 1);
    row("too long under a right checksum", "longer bytes=1 checksum=right", 6, 1, 1);
    row("too short under a right checksum", "truncate bytes=3 checksum=right", 6, 1, 1);
    row("a single byte", "truncate bytes=1", 6, 1, 1);
    row("error reply of another length", "raw hex=85:03:00:00:02", 6, 1, 1);
    row("address of another drive", "wrong-address", 7, 1, 1);
    row("garbage before the reply", "garbage-before hex=FF", 7, 1, 1);
    row("error reply without a known reason", "short-error bits=0x08", 7, 1, 1);
    row("flipped bit", "flip byte=2 bit=5", 8, 1, 1);
    row("bytes missing", "truncate bytes=3", 8, 1, 1);
    row("garbage after the reply", "garbage-after hex=FF", 8, 1, 1);
    row("cut by a silence", "split at=3 ms=60", 8, 1, 1);
    row("error reply: damaged request", "short-error bits=0x02", 8, 1, 1);
    row("another parameter number", "wrong-number command=0x04", 9, 5, 5);
    row("error reply: unknown parameter", "short-error bits=0x04 command=0x04", 9, 5, 5);
}

void TestPassErrors::statusReplyInTroubleEndsPass()
{
    QFETCH(QByteArray, fault);
    QFETCH(int, error);
    QFETCH(int, answered);
    QFETCH(int, sent);
    bus->command("fault 3 " + fault);
    runTransfer(ReadStatus, DriveBus::drive3());
    QCOMPARE(news->lastRecord().error, error);
    QCOMPARE(news->count(QStringLiteral("progress %1").arg(answered)), answered ? 1 : 0);
    QCOMPARE(bus->requests().size(), sent);
}

void TestPassErrors::operationRefusedByDriveEndsPass_data()
{
    QTest::addColumn<QByteArray>("drive");
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<int>("error");
    const QByteArray otherPassword("set 3 password 99");
    QTest::newRow("store with a wrong password") << otherPassword << StoreParameters << 10;
    QTest::newRow("factory reset with a wrong password") << otherPassword << ResetToFactory << 10;
    QTest::newRow("new password on a wrong one") << otherPassword << ChangePassword << 10;
    QTest::newRow("bootloader with a wrong password") << otherPassword << EnterBootloader << 10;
    QTest::newRow("nothing to store") << QByteArray("clear-faults") << StoreParameters << 16;
    QTest::newRow("flash that fails") << QByteArray("fault 3 status value=0x40") << StoreParameters << 17;
    QTest::newRow("inconsistent parameters")
        << QByteArray("fault 3 status value=0x80") << StoreParameters << 18;
}

void TestPassErrors::operationRefusedByDriveEndsPass()
{
    QFETCH(QByteArray, drive);
    QFETCH(Operation, operation);
    QFETCH(int, error);
    bus->command(drive);
    checkBothThreads(operation, DriveBus::drive3(), error, 1, 1);
}

void TestPassErrors::bootloaderIsRefusedWhileMotorTurns()
{
    bus->command("set 3 setpoint 1000");
    QTRY_VERIFY(bus->memory(3, ParameterNumber::ActualSpeed) > 100);
    checkBothThreads(EnterBootloader, DriveBus::drive3(), TelegramError::MotorNotInFreeRun, 1, 1);
}

void TestPassErrors::lineThatTakesNoBytesGivesError2()
{
    const int line = ::open(qPrintable(bus->portPath()), O_RDWR | O_NOCTTY);
    QCOMPARE(tcflow(line, TCOOFF), 0);
    checkBothThreads(ReadStatus, DriveBus::drive3(), TelegramError::WriteNotCompleted, 0, 0);
    tcflow(line, TCOON);
    ::close(line);
}

void TestPassErrors::silentDriveOnlyEndsPassAfterTimeout()
{
    bus->command("fault 3 no-answer");
    QElapsedTimer timer;
    timer.start();
    runTransfer(ReadStatus, DriveBus::drive3());
    QVERIFY(timer.elapsed() >= timeoutMs);
    QCOMPARE(news->lastRecord().error, int(TelegramError::NoAnswer));
}

void TestPassErrors::refusedPasswordStillCountsAsConnected()
{
    bus->command("set 3 password 99");
    checkBothThreads(ReadStatus, DriveBus::drive3(), TelegramError::InvalidPassword, 2, 2);
    QVERIFY(news->lastRecord().isConnected());
    QVERIFY(!news->lastRecord().isAccessGranted());
}

void TestPassErrors::driveOfAnotherVersionGivesError15()
{
    Z7Device device = DriveBus::drive3();
    device.setSoftwareVersion(QStringLiteral("V200"));
    checkBothThreads(ReadStatus, device, TelegramError::VersionNotCompatible, 4, 4);
    QCOMPARE(news->lastRecord().softwareVersion, QStringLiteral("V200"));
}

void TestPassErrors::driveThatSawDamagedRequestGivesError8AndCountsAsLost()
{
    bus->command("fault 3 comm-status value=0x02");
    checkBothThreads(ReadStatus, DriveBus::drive3(), TelegramError::WrongChecksum, 3, 3);
    QVERIFY(!news->lastRecord().isConnected());
}

void TestPassErrors::valuesReadBeforeErrorAreReportedWithIt()
{
    bus->command("set 3 param 0x8001 -77");
    bus->command("fault 3 flip param=0x8007"); // the current, read behind the speed
    checkBothThreads(ReadStatus, DriveBus::drive3(), TelegramError::WrongChecksum, 8, 8);
    QCOMPARE(news->lastRecord().actualSpeed, -77);
    QCOMPARE(news->lastRecord().softwareVersion, QStringLiteral("V123"));
}

void TestPassErrors::adapterPulledDuringExchangeEndsPassAtOnce()
{
    bus->command("fault 3 pull skip=1");
    runTransfer(ReadStatus, DriveBus::drive3(), 60000);
    QCOMPARE(news->lastRecord().error, int(TelegramError::NoAnswer));
    QCOMPARE(bus->requests().size(), 2);
}

void TestPassErrors::babblingLineEndsPassWithError()
{
    bus->command("fault 3 no-answer");
    bus->command("fault * babble byte=0x2A ms=1");
    runTransfer(ReadStatus, DriveBus::drive3());
    QCOMPARE(news->lastRecord().error, int(TelegramError::InvalidReplyData));
    QCOMPARE(bus->requests().size(), 1);
}

// A babble of the drive's own address is no error, so the pass would go on.
void TestPassErrors::cancelIsSeenOnBabblingLine()
{
    bus->command("fault 3 no-answer");
    bus->command("fault * babble byte=3 ms=1");
    CommThreadTransferTelegramStack thread;
    news = std::make_unique<CommNews>(thread);
    thread.start(stackFor(ReadStatus, DriveBus::drive3()), timeoutMs);
    QTRY_VERIFY(news->has("progress"));
    thread.cancel();
    QTRY_VERIFY(news->has("ended"));
    QCOMPARE(news->count("record 0"), 1);
    QVERIFY(bus->requests().size() < 14);
}

QTEST_GUILESS_MAIN(TestPassErrors)

#include "tst_passerrors.moc"
