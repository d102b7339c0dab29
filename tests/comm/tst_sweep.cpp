// The thread that sweeps the addresses of one port for drives.

#include "comm/commthreads.h"
#include "tests/comm/commnews.h"
#include "tests/comm/drivebus.h"

#include <QtTest>

namespace {

QList<int> addresses(const QVector<Z7Device> &records)
{
    QList<int> addresses;
    for (const Z7Device &record : records)
        addresses.append(record.address);
    return addresses;
}

QVector<Z7Device> connected(const QVector<Z7Device> &records)
{
    QVector<Z7Device> found;
    std::copy_if(records.begin(), records.end(), std::back_inserter(found),
        [](const Z7Device &record) { return record.isConnected(); });
    return found;
}

QList<int> from1To255()
{
    QList<int> all;
    for (int address = 1; address <= 255; ++address)
        all.append(address);
    return all;
}

constexpr int defaultTimeoutMs = 20;
constexpr int patientTimeoutMs = 300; // no busy machine makes a drive seem silent

} // namespace

/// The sweep of a bus with drive 1.
class TestSweep : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void sweepFindsExactlyDrivesOnBus();
    void everyAddressTellsItsProgressAndThenItsRecord();
    void everyAddressIsAskedOnceInAscendingOrder();
    void sweptRecordsCarryNoMarkOfChangedAddress();
    void sweepBeginsAtAddress1WhateverRecordSays();
    void driveWithAnotherPasswordIsFound();
    void driveInTroubleIsNotFoundAndSweepGoesOn_data();
    void driveInTroubleIsNotFoundAndSweepGoesOn();
    void twoDrivesOfOneAddressGiveError();
    void lateReplyIsReadInPlaceOfNextAddress();
    void restOfCutReplyIsReadInPlaceOfNextAddress();

    void sweepIsAnnouncedBeforePortIsOpened();
    void missingPortGivesError3InOneRecord();
    void recordWithoutPortGivesError3InOneRecord();
    void secondSweepOpensPortAgain();
    void cancelledSweepEndsWithAddressInProgress();
    void pulledAdapterEndsSweepAtOnce();
    void threadThatGoesAwayDuringSweepWaitsForItsEnd();

private:
    void start(int timeoutMs, const Z7Device &device = DriveBus::drive(1, 1))
    {
        thread->start(device, timeoutMs);
    }
    void awaitEnd(int sweeps = 1) { QTRY_COMPARE_WITH_TIMEOUT(news->count("ended"), sweeps, 30000); }
    /// Sweeps only as far as this address, with drives behind it that do not keep the test waiting.
    void sweepTo(int address);
    Z7Device recordOf(int address) const { return news->records().value(address - 1); }

    std::unique_ptr<DriveBus> bus;
    std::unique_ptr<CommThreadScanDevice> thread;
    std::unique_ptr<CommNews> news;
};

void TestSweep::init()
{
    bus = std::make_unique<DriveBus>();
    bus->command("remove 3");
    bus->command("add-drive 1");
    thread = std::make_unique<CommThreadScanDevice>();
    news = std::make_unique<CommNews>(*thread);
}

void TestSweep::cleanup()
{
    thread.reset();
    news.reset();
    bus.reset();
}

void TestSweep::sweepTo(int address)
{
    for (int next = address + 1; next < address + 6; ++next)
        bus->command("add-drive " + QByteArray::number(next));
    start(patientTimeoutMs);
    QTRY_VERIFY(news->records().size() >= address);
    thread->cancel();
    awaitEnd();
}

void TestSweep::sweepFindsExactlyDrivesOnBus()
{
    bus->command("add-drive 77,password=4711");
    bus->command("add-drive 255");
    start(defaultTimeoutMs);
    awaitEnd();
    const QList<int> expected {1, 77, 255};
    QCOMPARE(addresses(connected(news->records())), expected);
    QVERIFY(recordOf(1).isAccessGranted());
    QCOMPARE(recordOf(1).error, 0);
    QVERIFY(!recordOf(77).isAccessGranted());
    QCOMPARE(recordOf(77).error, int(TelegramError::InvalidPassword));
    QCOMPARE(recordOf(2).error, int(TelegramError::NoAnswer));
    QCOMPARE(addresses(news->records()), from1To255());
}

void TestSweep::everyAddressTellsItsProgressAndThenItsRecord()
{
    bus->command("remove 1");
    start(1);
    awaitEnd();
    QStringList expected {"started 255"};
    for (int address = 1; address <= 255; ++address)
        expected << QStringLiteral("progress 1") << QStringLiteral("record 1");
    expected << QStringLiteral("ended");
    QCOMPARE(news->events(), expected);
}

void TestSweep::everyAddressIsAskedOnceInAscendingOrder()
{
    bus->command("remove 1");
    start(1);
    awaitEnd();
    QList<int> asked;
    for (const QByteArray &request : bus->requests()) {
        const QByteArray bytes = QByteArray::fromHex(request);
        QCOMPARE(bytes.left(1), QByteArray("\x09")); // an access telegram ...
        QCOMPARE(bytes.at(1), bytes.at(5)); // ... with the address as password
        asked.append(quint8(bytes.at(1)));
    }
    QCOMPARE(asked, from1To255());
}

void TestSweep::sweptRecordsCarryNoMarkOfChangedAddress()
{
    start(1);
    awaitEnd();
    for (const Z7Device &record : news->records()) {
        QVERIFY(!record.addressChanged);
        QCOMPARE(record.previousAddress, record.address);
    }
}

void TestSweep::sweepBeginsAtAddress1WhateverRecordSays()
{
    start(1, DriveBus::drive(200, 0));
    QTRY_VERIFY(!news->records().isEmpty());
    QCOMPARE(news->startRecords().first().address, 1);
    QCOMPARE(news->records().first().address, 1);
}

void TestSweep::driveWithAnotherPasswordIsFound()
{
    bus->command("set 1 password 4711");
    sweepTo(1);
    QVERIFY(recordOf(1).isConnected());
    QVERIFY(!recordOf(1).isAccessGranted());
    QCOMPARE(recordOf(1).error, int(TelegramError::InvalidPassword));
}

void TestSweep::driveInTroubleIsNotFoundAndSweepGoesOn_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<int>("error");
    QTest::newRow("silent") << QByteArray("no-answer") << 1;
    QTest::newRow("reply too long") << QByteArray("longer bytes=1 checksum=right") << 6;
    QTest::newRow("address of another drive") << QByteArray("wrong-address address=9") << 7;
    QTest::newRow("flipped bit") << QByteArray("flip byte=2 bit=5") << 8;
}

void TestSweep::driveInTroubleIsNotFoundAndSweepGoesOn()
{
    QFETCH(QByteArray, fault);
    bus->command("add-drive 2");
    bus->command("fault 1 " + fault);
    sweepTo(2);
    QTEST(recordOf(1).error, "error");
    QVERIFY(!recordOf(1).isConnected());
    QVERIFY(recordOf(2).isConnected());
}

void TestSweep::twoDrivesOfOneAddressGiveError()
{
    bus->command("add-drive 1");
    sweepTo(1);
    QVERIFY(recordOf(1).hasError());
    QVERIFY(!recordOf(1).isConnected());
}

void TestSweep::lateReplyIsReadInPlaceOfNextAddress()
{
    bus->command("fault 1 late ms=400");
    sweepTo(3);
    QCOMPARE(recordOf(1).error, int(TelegramError::NoAnswer));
    QCOMPARE(recordOf(2).error, int(TelegramError::InvalidReplyData));
    QVERIFY(!recordOf(2).isConnected());
    QCOMPARE(recordOf(3).error, int(TelegramError::NoAnswer));
}

void TestSweep::restOfCutReplyIsReadInPlaceOfNextAddress()
{
    bus->command("fault 1 split at=2 ms=100");
    sweepTo(3);
    QCOMPARE(recordOf(1).error, int(TelegramError::WrongChecksum));
    QCOMPARE(recordOf(2).error, int(TelegramError::InvalidReplyData));
    QCOMPARE(recordOf(3).error, int(TelegramError::NoAnswer));
}

void TestSweep::sweepIsAnnouncedBeforePortIsOpened()
{
    bus->disconnectPort();
    connect(
        thread.get(), &CommThread::transactionStarted, this, [this] { bus->connectPort(); },
        Qt::DirectConnection);
    sweepTo(1);
    QVERIFY2(recordOf(1).isConnected(), "the port was there in time");
}

void TestSweep::missingPortGivesError3InOneRecord()
{
    bus->disconnectPort();
    start(1);
    awaitEnd();
    const QStringList expected {"started 255", "record 3", "ended"};
    QCOMPARE(news->events(), expected);
    QCOMPARE(news->lastRecord().address, 1);
}

void TestSweep::recordWithoutPortGivesError3InOneRecord()
{
    bus.reset(); // with the ports of the machine
    start(1, Z7Device());
    awaitEnd();
    const QStringList expected {"started 255", "record 3", "ended"};
    QCOMPARE(news->events(), expected);
}

void TestSweep::secondSweepOpensPortAgain()
{
    sweepTo(1);
    news->clear();
    sweepTo(1);
    QVERIFY(recordOf(1).isConnected());
}

void TestSweep::cancelledSweepEndsWithAddressInProgress()
{
    start(patientTimeoutMs);
    QTRY_COMPARE(bus->requests().size(), 4);
    thread->cancel();
    awaitEnd();
    QCOMPARE(bus->requests().size(), 4);
    QCOMPARE(news->lastRecord().address, 4);
    QCOMPARE(news->records().size(), 4);
}

void TestSweep::pulledAdapterEndsSweepAtOnce()
{
    bus->command("fault 1 pull");
    start(10000);
    QTRY_COMPARE(bus->requests().size(), 1);
    bus->pullAdapter();
    awaitEnd();
    QCOMPARE(addresses(news->records()), from1To255());
    QCOMPARE(recordOf(1).error, int(TelegramError::NoAnswer));
    QCOMPARE(recordOf(2).error, int(TelegramError::WriteNotCompleted));
    QCOMPARE(recordOf(255).error, int(TelegramError::WriteNotCompleted));
}

void TestSweep::threadThatGoesAwayDuringSweepWaitsForItsEnd()
{
    start(20);
    QTRY_VERIFY(!news->records().isEmpty());
    thread.reset();
    QVERIFY(!DriveBus::isPortInUse());
    QVERIFY(bus->requests().size() < 255);
}

QTEST_GUILESS_MAIN(TestSweep)

#include "tst_sweep.moc"
