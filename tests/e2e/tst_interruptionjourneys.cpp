// Something goes away in the middle of the live update and comes back.

#include "tests/e2e/journey.h"
#include "tests/e2e/telegrams.h"
#include "tests/e2e/testbench.h"
#include "tests/support/person.h"

#include <QtTest>

using namespace Telegrams;

namespace {

const QString port = QStringLiteral("ttyUSB0");
const QString drive = QStringLiteral("Port0 - Z7.1");
const QString table = QStringLiteral("Parametertabelle");

Polling polling()
{
    return {1, 0, TestBench::shortNumbers};
}

} // namespace

class TestInterruptionJourneys : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void driveThatFallsSilentIsShownUntilItAnswersAgain();
    void silentDriveIsAskedOncePerPass();
    void driveThatRestartsIsLoggedOnAgain();
    void pulledAdapterIsShownUntilItIsPutBack();
    void driveThatSawChecksumErrorIsRedUntilNextPass();
    void valuesAreStillThereAfterInterruption();
    void writeToSilentDriveFailsAndSucceedsLater();

private:
    QStringList bar() const;

    std::unique_ptr<TestBench> m_bench;
    z7sim::SimulatedBus *m_bus = nullptr;
    std::unique_ptr<Journey> m_journey;
};

void TestInterruptionJourneys::init()
{
    m_bench = std::make_unique<TestBench>();
    m_bus = &m_bench->plugIn(port, {TestBench::shortDrive(1)});
    m_journey = std::make_unique<Journey>();
    QVERIFY(m_journey->connectQuickly());
    QVERIFY(m_journey->showPage(drive, table));
    QTRY_COMPARE(m_journey->row(23).deviceValue, QStringLiteral("500"));
    QCOMPARE(bar(), QStringList({"green", "Z7.1", "Green", ""}));
}

void TestInterruptionJourneys::cleanup()
{
    m_journey.reset();
    m_bench.reset();
}

/// State of the port, drive, lamp and message, as the control bar shows them.
QStringList TestInterruptionJourneys::bar() const
{
    const ControlBar bar = m_journey->bar();
    return {bar.usb, bar.device, bar.lamp, bar.message};
}

void TestInterruptionJourneys::driveThatFallsSilentIsShownUntilItAnswersAgain()
{
    m_bus->command("fault 1 no-answer");
    QTRY_COMPARE(bar(), QStringList({"yellow", "Z7.1", "", "Das Gerät antwortet nicht (timeout)"}));
    m_bus->command("clear-faults");
    QTRY_COMPARE(bar(), QStringList({"green", "Z7.1", "Green", ""}));
}

void TestInterruptionJourneys::silentDriveIsAskedOncePerPass()
{
    m_bus->command("fault 1 no-answer");
    QTRY_COMPARE(bar().first(), QStringLiteral("yellow"));
    m_bus->clearLog();
    QTRY_VERIFY(m_bus->log().size() >= 4);
    for (const QString &request : requests(m_bus->log()))
        QCOMPARE(request, access(1, 0));
}

void TestInterruptionJourneys::driveThatRestartsIsLoggedOnAgain()
{
    m_bus->command("set 1 param 23 700");
    QTRY_COMPARE(m_journey->row(23).deviceValue, QStringLiteral("700"));
    m_bus->command("power-cycle 1");
    QTRY_COMPARE(m_journey->row(23).deviceValue, QStringLiteral("500"));
    QTRY_COMPARE(bar(), QStringList({"green", "Z7.1", "Green", ""}));
    QCOMPARE(m_bus->command("get 1 access"), QByteArray("ok 1"));
}

void TestInterruptionJourneys::pulledAdapterIsShownUntilItIsPutBack()
{
    // In the middle of the parameters, instead of an answer.
    m_bus->command("fault 1 pull command=0x04 param=12 count=1");
    QTRY_COMPARE(m_bus->portPath(), QString());
    m_bench->pull(port);
    QTRY_COMPARE(bar(), QStringList({"yellow", "Z7.1", "", "Der Port kann nicht geöffnet werden"}));
    QCOMPARE(requests(m_bus->log()).last(), read(1, 12));

    m_bus->clearLog();
    m_bench->putBack(port);
    QTRY_COMPARE(bar(), QStringList({"green", "Z7.1", "Green", ""}));
    QCOMPARE(besides(polling(), requests(m_bus->log())), QList<QStringList>());
}

void TestInterruptionJourneys::driveThatSawChecksumErrorIsRedUntilNextPass()
{
    m_bench->slowDown(port);
    m_bus->command("fault 1 comm-status value=2 count=1");
    QTRY_COMPARE(bar(), QStringList({"red", "", "", "Telegramm mit falscher Prüfsumme empfangen"}));
    QTRY_COMPARE(bar(), QStringList({"green", "Z7.1", "Green", ""}));
}

void TestInterruptionJourneys::valuesAreStillThereAfterInterruption()
{
    QVERIFY(m_journey->typeValue(24, QStringLiteral("1700")));
    m_bench->pull(port);
    QTRY_COMPARE(bar().last(), QStringLiteral("Der Port kann nicht geöffnet werden"));
    QCOMPARE(m_journey->row(23).deviceValue, QStringLiteral("500"));
    QCOMPARE(m_journey->row(24).userValue, QStringLiteral("1700"));
    QCOMPARE(m_journey->mark(drive, table), QStringLiteral("active_modified"));

    m_bench->putBack(port);
    QTRY_COMPARE(bar().first(), QStringLiteral("green"));
    QCOMPARE(m_journey->row(23).deviceValue, QStringLiteral("500"));
    QCOMPARE(m_journey->row(24).userValue, QStringLiteral("1700"));
    QCOMPARE(m_bus->memory(1, 24), 1500);
}

void TestInterruptionJourneys::writeToSilentDriveFailsAndSucceedsLater()
{
    QVERIFY(m_journey->typeValue(24, QStringLiteral("1700")));
    m_bench->slowDown(port);
    m_bus->command("fault 1 no-answer command=0x03");
    m_bus->clearLog();
    QVERIFY(m_journey->press("BtnUpload"));
    QTRY_COMPARE(bar().last(), QStringLiteral("Das Gerät antwortet nicht (timeout)"));
    QTRY_COMPARE(bar(), QStringList({"green", "Z7.1", "Green", ""}));
    const QStringList written = logOn(1, 0) + QStringList(write(1, 24, 1700));
    QCOMPARE(besides(polling(), requests(m_bus->log())), {written});

    m_bus->command("clear-faults");
    QVERIFY(m_journey->press("BtnUpload"));
    QTRY_COMPARE(m_bus->memory(1, 24), 1700);
    QTRY_COMPARE(besides(polling(), requests(m_bus->log())), QList<QStringList>({written, written}));
}

QTEST_MAIN(TestInterruptionJourneys)

#include "tst_interruptionjourneys.moc"
