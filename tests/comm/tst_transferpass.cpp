// What a pass of the thread that runs a transaction once does besides what every pass does.

#include "tests/comm/passtest.h"

#include <QSerialPort>
#include <QtTest>

#include <atomic>

class TestTransferPass : public PassTest
{
    Q_OBJECT

private slots:
    void passBeginsWithRecordAsItWasBuilt();
    void portIsStillOpenWhenRecordIsReported();
    void portIsFreeAfterPass();
    void everyTelegramIsSentOnceInItsOrder();
    void stackIsDeletedAtEnd();
    void stackIsDeletedWhenPortDoesNotOpen();
    void stackIsDeletedWhenThreadGoesAway();

    void portThatIsInUseGivesError3InOneRecord();
    void secondPassOpensPortAgain();
    void passAfterFailedOneOpensPort();

    void cancelledPassEndsWithoutErrorOfItsOwn();
    void cancelOfEarlierPassDoesNotTouchNext();
    void startDuringPassBeginsNoSecondOne();

protected:
    std::unique_ptr<CommThread> makeThread() override;
    void begin(std::unique_ptr<Z7TelegramStack> stack) override;

private:
    CommThreadTransferTelegramStack *transfer = nullptr;
};

std::unique_ptr<CommThread> TestTransferPass::makeThread()
{
    auto made = std::make_unique<CommThreadTransferTelegramStack>();
    transfer = made.get();
    return made;
}

void TestTransferPass::begin(std::unique_ptr<Z7TelegramStack> stack)
{
    transfer->start(std::move(stack), timeoutMs);
}

void TestTransferPass::passBeginsWithRecordAsItWasBuilt()
{
    QVERIFY(run<Probe>());
    const Z7Device announced = news->startRecords().value(0);
    QCOMPARE(announced.address, 3);
    QCOMPARE(announced.portInfo.portName(), QStringLiteral("ttyUSB0"));
    QVERIFY(!announced.isConnected());
}

void TestTransferPass::portIsStillOpenWhenRecordIsReported()
{
    std::atomic<bool> inUse {false};
    connect(
        thread.get(), &CommThread::updateDevice, this, [&inUse] { inUse = DriveBus::isPortInUse(); },
        Qt::DirectConnection);
    QVERIFY(run<Probe>());
    QVERIFY(inUse);
}

void TestTransferPass::portIsFreeAfterPass()
{
    QVERIFY(run<Probe>());
    QVERIFY(!DriveBus::isPortInUse());
}

void TestTransferPass::everyTelegramIsSentOnceInItsOrder()
{
    QVERIFY(run<Status>());
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
    const auto stack = start<Probe>();
    QVERIFY(hasEnded());
    QVERIFY(stack.expired());
}

void TestTransferPass::stackIsDeletedWhenPortDoesNotOpen()
{
    bus->pullAdapter();
    const auto stack = start<Probe>();
    QVERIFY(hasEnded());
    QVERIFY(stack.expired());
}

void TestTransferPass::stackIsDeletedWhenThreadGoesAway()
{
    const auto stack = start<Status>();
    QVERIFY(isUnderWay());
    thread.reset();
    QVERIFY(stack.expired());
}

void TestTransferPass::portThatIsInUseGivesError3InOneRecord()
{
    QSerialPort otherProgram(QStringLiteral("ttyUSB0"));
    QVERIFY(otherProgram.open(QIODevice::ReadWrite));
    QVERIFY(run<Status>());
    const QStringList expected {"started 14", "record 3", "ended"};
    QCOMPARE(events(), expected);
    QCOMPARE(bus->requests(), QByteArrayList());
}

void TestTransferPass::secondPassOpensPortAgain()
{
    QVERIFY(run<Probe>());
    QVERIFY(run<Probe>());
    const QStringList pass {"started 1", "progress 1", "record 0", "ended"};
    QCOMPARE(events(), pass + pass);
}

void TestTransferPass::passAfterFailedOneOpensPort()
{
    bus->disconnectPort();
    QVERIFY(run<Probe>());
    bus->connectPort();
    QVERIFY(run<Probe>());
    QVERIFY(!news->lastRecord().hasError());
}

void TestTransferPass::cancelledPassEndsWithoutErrorOfItsOwn()
{
    bus->command("fault 3 late ms=100 skip=3");
    start<Status>();
    QVERIFY(isUnderWay());
    thread->cancel();
    QVERIFY(hasEnded());
    QCOMPARE(news->count("record 0"), 1);
    QVERIFY2(bus->requests().size() < 14, "the rest is not sent");
}

void TestTransferPass::cancelOfEarlierPassDoesNotTouchNext()
{
    thread->cancel();
    QVERIFY(run<Probe>());
    QCOMPARE(bus->requests().size(), 1);
}

void TestTransferPass::startDuringPassBeginsNoSecondOne()
{
    start<Status>();
    QVERIFY(isUnderWay());
    const auto second = start<Probe>();
    QVERIFY(hasEnded());
    QVERIFY2(!second.expired(), "it would be the stack of the next pass");
    QCOMPARE(bus->requests().size(), 14);
    QCOMPARE(news->count("started"), 1);
    thread.reset();
    QVERIFY(second.expired());
}

QTEST_GUILESS_MAIN(TestTransferPass)

#include "tst_transferpass.moc"
