// One pass of the thread that runs a transaction once.

#include "comm/commthreads.h"
#include "tests/comm/commnews.h"
#include "tests/comm/drivebus.h"

#include <QSerialPort>
#include <QtTest>

class TestTransferPass : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void passTellsItsStartEachReplyAndItsRecord();
    void passBeginsWithRecordAsItWasBuilt();
    void passIsAnnouncedBeforePortIsOpened();
    void portIsStillOpenWhenRecordIsReported();
    void portIsFreeAfterPass();
    void everyTelegramIsSentOnceInItsOrder();
    void stackIsDeletedAtEnd();
    void stackIsDeletedWhenPortDoesNotOpen();

    void missingPortGivesError3InOneRecord();
    void portThatIsInUseGivesError3InOneRecord();
    void recordWithoutPortEndsInError2();
    void secondPassOpensPortAgain();
    void passAfterFailedOneOpensPort();

    void cancelledPassEndsWithoutErrorOfItsOwn();
    void cancelledPassReportsWhatItReadUntilThen();
    void cancelOfEarlierPassDoesNotTouchNext();
    void startDuringPassBeginsNoSecondOne();
    void threadThatGoesAwayDuringPassWaitsForItsEnd();

private:
    template<typename Stack>
    std::weak_ptr<void> start(const Z7Device &device);
    void awaitEnd(int passes = 1) { QTRY_COMPARE(news->count("ended"), passes); }
    QStringList events() const { return news->events(); }

    std::unique_ptr<DriveBus> bus;
    std::unique_ptr<CommThreadTransferTelegramStack> thread;
    std::unique_ptr<CommNews> news;
};

void TestTransferPass::init()
{
    bus = std::make_unique<DriveBus>();
    thread = std::make_unique<CommThreadTransferTelegramStack>();
    news = std::make_unique<CommNews>(*thread);
}

void TestTransferPass::cleanup()
{
    thread.reset();
    news.reset();
    bus.reset();
}

template<typename Stack>
std::weak_ptr<void> TestTransferPass::start(const Z7Device &device)
{
    auto stack = std::make_unique<Stack>(device);
    const std::weak_ptr<void> life = stack->life();
    thread->start(std::move(stack), 1000);
    return life;
}

void TestTransferPass::passTellsItsStartEachReplyAndItsRecord()
{
    start<Status>(DriveBus::drive3());
    awaitEnd();
    const QStringList expected {"started 14", "progress 14", "record 0", "ended"};
    QCOMPARE(events(), expected);
    QVERIFY(news->lastRecord().isAccessGranted());
    QCOMPARE(news->lastRecord().softwareVersion, QStringLiteral("V123"));
}

void TestTransferPass::passBeginsWithRecordAsItWasBuilt()
{
    start<Probe>(DriveBus::drive3());
    awaitEnd();
    const Z7Device announced = news->startRecords().value(0);
    QCOMPARE(announced.address, 3);
    QCOMPARE(announced.portInfo.portName(), QStringLiteral("ttyUSB0"));
    QVERIFY(!announced.isConnected());
}

void TestTransferPass::passIsAnnouncedBeforePortIsOpened()
{
    bus->disconnectPort();
    connect(
        thread.get(), &CommThread::transactionStarted, this, [this] { bus->connectPort(); },
        Qt::DirectConnection);
    start<Probe>(DriveBus::drive3());
    awaitEnd();
    QVERIFY2(!news->lastRecord().hasError(), "the port was there in time");
}

void TestTransferPass::portIsStillOpenWhenRecordIsReported()
{
    std::atomic<bool> inUse {false};
    connect(
        thread.get(), &CommThread::updateDevice, this, [&inUse] { inUse = DriveBus::isPortInUse(); },
        Qt::DirectConnection);
    start<Probe>(DriveBus::drive3());
    awaitEnd();
    QVERIFY(inUse);
}

void TestTransferPass::portIsFreeAfterPass()
{
    start<Probe>(DriveBus::drive3());
    awaitEnd();
    QVERIFY(!DriveBus::isPortInUse());
}

void TestTransferPass::everyTelegramIsSentOnceInItsOrder()
{
    start<Status>(DriveBus::drive3());
    awaitEnd();
    const QByteArrayList expected {
        AccessWith3, AccessWith3,
        "05 03 5d", // status
        "07 03 5f", // software version
        "04 03 00 01 5d", "04 03 00 02 5c", // operation modes
        "04 03 80 01 dd", "04 03 80 07 db", "04 03 80 05 d9", // speed, current, temperature
        "04 03 80 03 df", "04 03 80 04 de", // position: fraction, turns
        "04 03 80 08 da", "04 03 80 09 c5", "04 03 80 0d c1", // outputs, inputs, analog input
    };
    QCOMPARE(bus->requests(), expected);
}

void TestTransferPass::stackIsDeletedAtEnd()
{
    const auto stack = start<Probe>(DriveBus::drive3());
    awaitEnd();
    QVERIFY(stack.expired());
}

void TestTransferPass::stackIsDeletedWhenPortDoesNotOpen()
{
    bus->pullAdapter();
    const auto stack = start<Probe>(DriveBus::drive3());
    awaitEnd();
    QVERIFY(stack.expired());
}

void TestTransferPass::missingPortGivesError3InOneRecord()
{
    const Z7Device drive3 = DriveBus::drive3();
    bus->pullAdapter();
    start<Status>(drive3);
    awaitEnd();
    const QStringList expected {"started 14", "record 3", "ended"};
    QCOMPARE(events(), expected);
}

void TestTransferPass::portThatIsInUseGivesError3InOneRecord()
{
    QSerialPort otherProgram(QStringLiteral("ttyUSB0"));
    QVERIFY(otherProgram.open(QIODevice::ReadWrite));
    start<Status>(DriveBus::drive3());
    awaitEnd();
    const QStringList expected {"started 14", "record 3", "ended"};
    QCOMPARE(events(), expected);
    QCOMPARE(bus->requests(), QByteArrayList());
}

void TestTransferPass::recordWithoutPortEndsInError2()
{
    start<Status>(Z7Device());
    awaitEnd();
    const QStringList expected {"started 14", "record 2", "ended"};
    QCOMPARE(events(), expected);
}

void TestTransferPass::secondPassOpensPortAgain()
{
    start<Probe>(DriveBus::drive3());
    awaitEnd();
    start<Probe>(DriveBus::drive3());
    awaitEnd(2);
    const QStringList pass {"started 1", "progress 1", "record 0", "ended"};
    QCOMPARE(events(), pass + pass);
}

void TestTransferPass::passAfterFailedOneOpensPort()
{
    bus->disconnectPort();
    start<Probe>(DriveBus::drive3());
    awaitEnd();
    bus->connectPort();
    start<Probe>(DriveBus::drive3());
    awaitEnd(2);
    QVERIFY(!news->lastRecord().hasError());
}

void TestTransferPass::cancelledPassEndsWithoutErrorOfItsOwn()
{
    bus->command("fault 3 late ms=100 skip=3");
    start<Status>(DriveBus::drive3());
    QTRY_VERIFY(news->has("progress"));
    thread->cancel();
    awaitEnd();
    QCOMPARE(news->count("record 0"), 1);
    QVERIFY2(bus->requests().size() < 14, "the rest is not sent");
}

void TestTransferPass::cancelledPassReportsWhatItReadUntilThen()
{
    bus->command("fault 3 late ms=500 command=0x05"); // the status telegram, after both access telegrams
    start<Status>(DriveBus::drive3());
    QTRY_COMPARE(bus->requests().size(), 3);
    thread->cancel();
    awaitEnd();
    QCOMPARE(bus->requests().size(), 3);
    QVERIFY(news->lastRecord().isAccessGranted());
    QVERIFY2(news->lastRecord().statusBits != 0, "the telegram on its way is waited for");
    QCOMPARE(news->lastRecord().softwareVersion, Z7Device::unknownVersion());
}

void TestTransferPass::cancelOfEarlierPassDoesNotTouchNext()
{
    thread->cancel();
    start<Probe>(DriveBus::drive3());
    awaitEnd();
    QCOMPARE(bus->requests().size(), 1);
}

void TestTransferPass::startDuringPassBeginsNoSecondOne()
{
    start<Status>(DriveBus::drive3());
    QTRY_VERIFY(news->has("progress"));
    const auto second = start<Probe>(DriveBus::drive3());
    awaitEnd();
    QVERIFY2(!second.expired(), "it would be the stack of the next pass");
    QCOMPARE(bus->requests().size(), 14);
    QCOMPARE(news->count("started"), 1);
    thread.reset();
    QVERIFY(second.expired());
}

void TestTransferPass::threadThatGoesAwayDuringPassWaitsForItsEnd()
{
    const auto stack = start<Status>(DriveBus::drive3());
    QTRY_VERIFY(news->has("progress"));
    thread.reset();
    QVERIFY(stack.expired());
    QVERIFY(!DriveBus::isPortInUse());
    QVERIFY(bus->requests().size() < 14);
}

QTEST_GUILESS_MAIN(TestTransferPass)

#include "tst_transferpass.moc"
