// Write, read, store: what the four buttons send, and what the drive then holds in its memory and its flash.

#include "tests/e2e/desk.h"
#include "tests/e2e/telegrams.h"
#include "tests/support/person.h"

#include <QtTest>

using namespace Telegrams;

namespace {

const QString drive = driveName(1);

/// A drive whose table is on the screen, with 500 in parameter 23 and 1500 in 24.
struct ReadTable : Desk
{
    explicit ReadTable(
        const z7sim::DriveConfig &config, const TestBench::Options &options = TestBench::Options())
        : Desk({config}, options)
        , polling {1, *config.password, bench.numbers(config.version)}
    {
    }

    const Polling polling;

    bool show() const { return connectAll() && journey.showPage(drive, table); }
    bool hasRead() const
    {
        return Person::waitUntil([this] { return journey.row(23).deviceValue == QLatin1String("500"); });
    }
    /// What has been sent since the log was cleared, without the live update.
    QList<QStringList> sent() const { return besides(polling, requests()); }
    bool press(const char *button)
    {
        bus.clearLog();
        return journey.press(button);
    }
};

} // namespace

class TestWriteJourneys : public QObject
{
    Q_OBJECT

private slots:
    void changedValueIsWrittenReadBackAndStored();
    void writingWithoutChangeSendsNothing();
    void readingAsksForEveryParameterOfTable();
    void storingWithNothingNewIsReported();
    void writeAndStoreSendsBothInOneTransaction();
    void valueThatDriveRefusesStaysUnwritten();
    void changesOfFullTableSurvivePowerCycleOnceStored();
};

void TestWriteJourneys::changedValueIsWrittenReadBackAndStored()
{
    ReadTable read(TestBench::shortDrive(1));
    const Journey &journey = read.journey;
    QVERIFY(read.show());
    QVERIFY(read.hasRead());
    QVERIFY(journey.typeValue(23, QStringLiteral("-700")));

    QVERIFY(read.press("BtnUpload"));
    QTRY_COMPARE(journey.row(23).deviceValue, QStringLiteral("-700"));
    QCOMPARE(read.sent(), {logOn(1, 0) + QStringList(write(1, 23, -700))});
    QCOMPARE(read.bus.memory(1, 23), -700);
    QCOMPARE(read.bus.flash(1, 23), 500);
    QTRY_COMPARE(journey.mark(drive, table), QStringLiteral("active"));

    QVERIFY(read.press("BtnStore"));
    QTRY_COMPARE(read.bus.flash(1, 23), -700);
    QCOMPARE(read.sent(), {QStringList(store(1, 0))});
    QTRY_COMPARE(journey.bar().usb, QStringLiteral("green"));
}

void TestWriteJourneys::writingWithoutChangeSendsNothing()
{
    ReadTable read(TestBench::shortDrive(1));
    QVERIFY(read.show());
    QVERIFY(read.hasRead());
    for (const char *button : {"BtnUpload", "BtnWriteAndStore"}) {
        QVERIFY(read.press(button));
        QTRY_VERIFY(read.bus.log().size() > 3 * read.polling.firstPass().size());
        QCOMPARE(read.sent(), QList<QStringList>());
    }
}

// Without the live update, so that every telegram is the button's.
void TestWriteJourneys::readingAsksForEveryParameterOfTable()
{
    ReadTable read(TestBench::shortDrive(1), {0});
    const Journey &journey = read.journey;
    QVERIFY(read.show());
    QCOMPARE(journey.row(23).deviceValue, QStringLiteral("0"));
    read.bus.command("set 1 param 24 1600");

    QVERIFY(read.press("BtnDownload"));
    QVERIFY(read.hasRead());
    QCOMPARE(journey.row(24).deviceValue, QStringLiteral("1600"));
    QCOMPARE(read.requests(), logOn(1, 0) + reads(1, TestBench::shortNumbers));
}

void TestWriteJourneys::storingWithNothingNewIsReported()
{
    ReadTable read(TestBench::shortDrive(1));
    QVERIFY(read.show());
    QVERIFY(read.hasRead());
    read.slowDown();
    QVERIFY(read.press("BtnStore"));
    QTRY_COMPARE(read.journey.bar().message, QStringLiteral("Keine Parameteränderung"));
    QCOMPARE(read.journey.bar().usb, QStringLiteral("yellow"));
    QCOMPARE(read.sent(), {QStringList(store(1, 0))});
    QTRY_COMPARE(read.journey.bar().usb, QStringLiteral("green"));
    QCOMPARE(read.journey.bar().message, QString());
}

void TestWriteJourneys::writeAndStoreSendsBothInOneTransaction()
{
    ReadTable read(TestBench::shortDrive(1, 4711));
    const Journey &journey = read.journey;
    QVERIFY(read.show());
    QVERIFY(read.hasRead());
    QVERIFY(journey.typeValue(24, QStringLiteral("1700")));
    QVERIFY(journey.typeValue(23, QStringLiteral("700")));

    QVERIFY(read.press("BtnWriteAndStore"));
    QTRY_COMPARE(journey.row(24).deviceValue, QStringLiteral("1700"));
    QCOMPARE(
        read.sent(), {logOn(1, 4711) + QStringList({write(1, 23, 700), write(1, 24, 1700), store(1, 4711)})});
    QCOMPARE(read.bus.memory(1, 23), 700);
    QCOMPARE(read.bus.flash(1, 23), 700);
    QCOMPARE(read.bus.flash(1, 24), 1700);
    QTRY_COMPARE(journey.mark(drive, table), QStringLiteral("active"));
}

void TestWriteJourneys::valueThatDriveRefusesStaysUnwritten()
{
    ReadTable read(TestBench::shortDrive(1));
    const Journey &journey = read.journey;
    QVERIFY(read.show());
    QVERIFY(read.hasRead());
    read.bus.command("lock 1 24");
    QVERIFY(journey.typeValue(23, QStringLiteral("700")));
    QVERIFY(journey.typeValue(24, QStringLiteral("1700")));
    QVERIFY(journey.typeValue(25, QStringLiteral("-700")));

    QVERIFY(read.press("BtnUpload"));
    QTRY_COMPARE(journey.row(25).deviceValue, QStringLiteral("-700"));
    QCOMPARE(read.sent(),
        {logOn(1, 0) + QStringList({write(1, 23, 700), write(1, 24, 1700), write(1, 25, -700)})});
    QCOMPARE(read.bus.memory(1, 24), 1500);
    QTRY_COMPARE(journey.row(24).remark,
        QStringLiteral("Sie haben nicht die erforderliche Berechtigung, um diesen Parameter zu ändern"));
    QCOMPARE(journey.mark(drive, table), QStringLiteral("active_modified"));
}

void TestWriteJourneys::changesOfFullTableSurvivePowerCycleOnceStored()
{
    ReadTable read(TestBench::fullDrive(1, 4711));
    const Journey &journey = read.journey;
    QVERIFY(read.show());
    QVERIFY(read.hasRead());
    QCOMPARE(journey.rowCount(), 120);
    QVERIFY(journey.typeValue(23, QStringLiteral("700")));
    QVERIFY(read.press("BtnWriteAndStore"));
    QTRY_COMPARE_WITH_TIMEOUT(journey.row(23).deviceValue, QStringLiteral("700"), Person::patienceMs);
    QCOMPARE(read.bus.flash(1, 23), 700);
    QVERIFY(journey.typeValue(24, QStringLiteral("1700")));
    QVERIFY(journey.press("BtnUpload"));
    QTRY_COMPARE(read.bus.memory(1, 24), 1700);
    const QStringList access = logOn(1, 4711);
    QTRY_COMPARE(read.sent(),
        QList<QStringList>({access + QStringList({write(1, 23, 700), store(1, 4711)}),
            access + QStringList({write(1, 23, 700), write(1, 24, 1700)})}));

    read.bus.command("power-cycle 1");
    QCOMPARE(read.bus.memory(1, 23), 700);
    QCOMPARE(read.bus.memory(1, 24), 1500);
    QTRY_COMPARE_WITH_TIMEOUT(journey.row(23).deviceValue, QStringLiteral("700"), Person::patienceMs);
    QCOMPARE(journey.row(24).deviceValue, QStringLiteral("1500"));
    QCOMPARE(journey.row(24).userValue, QStringLiteral("1700"));
}

QTEST_MAIN(TestWriteJourneys)

#include "tst_writejourneys.moc"
