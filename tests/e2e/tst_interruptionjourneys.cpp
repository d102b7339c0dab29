// Something goes away in the middle of the live update and comes back.

#include "tests/e2e/desk.h"
#include "tests/e2e/telegrams.h"
#include "tests/support/person.h"

#include <QtTest>

using namespace Telegrams;

namespace {

const QString drive = driveName(1);

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

    std::unique_ptr<Desk> m_desk;
};

void TestInterruptionJourneys::init()
{
    m_desk = std::make_unique<Desk>(TestBench::shortDrives({1}));
    QVERIFY(m_desk->connectAll());
    QVERIFY(m_desk->showTable(1));
    QCOMPARE(bar(), QStringList({"green", "Z7.1", "Green", ""}));
}

void TestInterruptionJourneys::cleanup()
{
    m_desk.reset();
}

/// State of the port, drive, lamp and message, as the control bar shows them.
QStringList TestInterruptionJourneys::bar() const
{
    const ControlBar bar = m_desk->journey.bar();
    return {bar.usb, bar.device, bar.lamp, bar.message};
}

void TestInterruptionJourneys::driveThatFallsSilentIsShownUntilItAnswersAgain()
{
    m_desk->bus.command("fault 1 no-answer");
    QTRY_COMPARE(bar(), QStringList({"yellow", "Z7.1", "", "Das Gerät antwortet nicht (timeout)"}));
    m_desk->bus.command("clear-faults");
    QTRY_COMPARE(bar(), QStringList({"green", "Z7.1", "Green", ""}));
}

void TestInterruptionJourneys::silentDriveIsAskedOncePerPass()
{
    m_desk->bus.command("fault 1 no-answer");
    QTRY_COMPARE(bar().first(), QStringLiteral("yellow"));
    m_desk->bus.clearLog();
    QTRY_VERIFY(m_desk->bus.log().size() >= 4);
    for (const QString &request : m_desk->requests())
        QCOMPARE(request, access(1, 0));
}

void TestInterruptionJourneys::driveThatRestartsIsLoggedOnAgain()
{
    m_desk->bus.command("set 1 param 23 700");
    QTRY_COMPARE(m_desk->journey.row(23).deviceValue, QStringLiteral("700"));
    m_desk->bus.command("power-cycle 1");
    QTRY_COMPARE(m_desk->journey.row(23).deviceValue, QStringLiteral("500"));
    QTRY_COMPARE(bar(), QStringList({"green", "Z7.1", "Green", ""}));
    QCOMPARE(m_desk->bus.command("get 1 access"), QByteArray("ok 1"));
}

void TestInterruptionJourneys::pulledAdapterIsShownUntilItIsPutBack()
{
    // In the middle of the parameters, instead of an answer.
    m_desk->bus.command("fault 1 pull command=0x04 param=12 count=1");
    QTRY_COMPARE(m_desk->bus.portPath(), QString());
    m_desk->bench.pull(port);
    QTRY_COMPARE(bar(), QStringList({"yellow", "Z7.1", "", "Der Port kann nicht geöffnet werden"}));
    QCOMPARE(m_desk->requests().last(), read(1, 12));

    m_desk->bus.clearLog();
    m_desk->bench.putBack(port);
    QTRY_COMPARE(bar(), QStringList({"green", "Z7.1", "Green", ""}));
    QCOMPARE(besides(polling(), m_desk->requests()), QList<QStringList>());
}

void TestInterruptionJourneys::driveThatSawChecksumErrorIsRedUntilNextPass()
{
    m_desk->slowDown();
    m_desk->bus.command("fault 1 comm-status value=2 count=1");
    QTRY_COMPARE(bar(), QStringList({"red", "", "", "Telegramm mit falscher Prüfsumme empfangen"}));
    QTRY_COMPARE(bar(), QStringList({"green", "Z7.1", "Green", ""}));
}

void TestInterruptionJourneys::valuesAreStillThereAfterInterruption()
{
    QVERIFY(m_desk->journey.typeValue(24, QStringLiteral("1700")));
    m_desk->bench.pull(port);
    QTRY_COMPARE(bar().last(), QStringLiteral("Der Port kann nicht geöffnet werden"));
    QCOMPARE(m_desk->journey.row(23).deviceValue, QStringLiteral("500"));
    QCOMPARE(m_desk->journey.row(24).userValue, QStringLiteral("1700"));
    QCOMPARE(m_desk->journey.mark(drive, table), QStringLiteral("active_modified"));

    m_desk->bench.putBack(port);
    QTRY_COMPARE(bar().first(), QStringLiteral("green"));
    QCOMPARE(m_desk->journey.row(23).deviceValue, QStringLiteral("500"));
    QCOMPARE(m_desk->journey.row(24).userValue, QStringLiteral("1700"));
    QCOMPARE(m_desk->bus.memory(1, 24), 1500);
}

void TestInterruptionJourneys::writeToSilentDriveFailsAndSucceedsLater()
{
    QVERIFY(m_desk->journey.typeValue(24, QStringLiteral("1700")));
    m_desk->slowDown();
    m_desk->bus.command("fault 1 no-answer command=0x03");
    m_desk->bus.clearLog();
    QVERIFY(m_desk->journey.press("BtnUpload"));
    QTRY_COMPARE(bar().last(), QStringLiteral("Das Gerät antwortet nicht (timeout)"));
    QTRY_COMPARE(bar(), QStringList({"green", "Z7.1", "Green", ""}));
    const QStringList written = logOn(1, 0) + QStringList(write(1, 24, 1700));
    QCOMPARE(besides(polling(), m_desk->requests()), {written});

    m_desk->bus.command("clear-faults");
    QVERIFY(m_desk->journey.press("BtnUpload"));
    QTRY_COMPARE(m_desk->bus.memory(1, 24), 1700);
    QTRY_COMPARE(besides(polling(), m_desk->requests()), QList<QStringList>({written, written}));
}

QTEST_MAIN(TestInterruptionJourneys)

#include "tst_interruptionjourneys.moc"
