// How far a scan came: an address counts as asked when its telegram went onto the bus, whoever answered.

#include "control/scantally.h"
#include "protocol/telegram.h"

#include <QtTest>

namespace {

Z7Device record(int address, int error, bool connected = false)
{
    Z7Device device;
    device.assignAddress(address);
    device.setConnected(connected);
    device.setDeviceError(error);
    return device;
}

/// Records of these addresses with that error.
void take(ScanTally &tally, int first, int last, int error)
{
    for (int address = first; address <= last; ++address)
        tally.take(record(address, error));
}

} // namespace

class TestScanTally : public QObject
{
    Q_OBJECT

private slots:
    void silentAddressesWereAsked();
    void answerOfAnyKindWasAsked_data();
    void answerOfAnyKindWasAsked();
    void telegramThatDidNotGoOutWasNotAsked();
    void portThatFailsWasNotAskedAnything_data();
    void portThatFailsWasNotAskedAnything();
    void stoppedScanTellsSo();
    void addressInProgressOfStoppedScanMayNotHaveBeenAsked();
    void gapIsNoEnd();
};

void TestScanTally::silentAddressesWereAsked()
{
    ScanTally tally;
    take(tally, 1, 255, TelegramError::NoAnswer);
    QVERIFY(tally.reach().isWhole());
    QVERIFY(!tally.reach().wasStopped);
    QVERIFY(!tally.endedInFailure());
}

void TestScanTally::answerOfAnyKindWasAsked_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("drive that takes the password") << int(TelegramError::None);
    QTest::newRow("drive that does not") << int(TelegramError::InvalidPassword);
    QTest::newRow("garbage") << int(TelegramError::WrongChecksum);
}

void TestScanTally::answerOfAnyKindWasAsked()
{
    QFETCH(int, error);
    ScanTally tally;
    tally.take(record(1, error, error == TelegramError::None));
    QCOMPARE(tally.reach().asked, 1);
}

void TestScanTally::telegramThatDidNotGoOutWasNotAsked()
{
    ScanTally tally;
    take(tally, 1, 95, TelegramError::NoAnswer);
    take(tally, 96, 255, TelegramError::WriteNotCompleted);
    QCOMPARE(tally.reach().asked, 95);
    QCOMPARE(tally.reach().lastAsked, 95);
    QVERIFY(!tally.reach().wasStopped);
    QVERIFY(tally.endedInFailure());
}

void TestScanTally::portThatFailsWasNotAskedAnything_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("not opened") << int(TelegramError::PortNotOpened);
    QTest::newRow("settings refused") << int(TelegramError::PortSettingsRefused);
}

void TestScanTally::portThatFailsWasNotAskedAnything()
{
    QFETCH(int, error);
    ScanTally tally;
    tally.take(record(1, error));
    QCOMPARE(tally.reach().asked, 0);
    QVERIFY(!tally.reach().wasStopped);
    QVERIFY(tally.endedInFailure());
}

void TestScanTally::stoppedScanTellsSo()
{
    ScanTally tally;
    take(tally, 1, 12, TelegramError::NoAnswer);
    QCOMPARE(tally.reach().lastAsked, 12);
    QVERIFY(tally.reach().wasStopped);
    QVERIFY(!tally.reach().isWhole());
}

void TestScanTally::addressInProgressOfStoppedScanMayNotHaveBeenAsked()
{
    ScanTally tally;
    take(tally, 1, 12, TelegramError::NoAnswer);
    tally.take(record(13, TelegramError::None));
    QCOMPARE(tally.reach().lastAsked, 12);
}

void TestScanTally::gapIsNoEnd()
{
    ScanTally tally;
    take(tally, 1, 16, TelegramError::NoAnswer);
    tally.take(record(17, TelegramError::WriteNotCompleted));
    take(tally, 18, 255, TelegramError::NoAnswer);
    QCOMPARE(tally.reach().asked, 254);
    QCOMPARE(tally.reach().lastAsked, 255);
    QVERIFY(!tally.reach().isWhole());
    QVERIFY(!tally.endedInFailure());
}

QTEST_APPLESS_MAIN(TestScanTally)

#include "tst_scantally.moc"
