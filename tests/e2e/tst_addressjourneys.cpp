// A drive gets another bus address, and another operating mode, under a person's hands.

#include "tests/e2e/journey.h"
#include "tests/e2e/telegrams.h"
#include "tests/e2e/testbench.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <QLabel>
#include <QLineEdit>
#include <QtTest>

using namespace Telegrams;

namespace {

const QString port = QStringLiteral("ttyUSB0");

QString driveName(int address)
{
    return QStringLiteral("Port0 - Z7.%1").arg(address);
}

QLineEdit *field(const Journey &journey, const char *name)
{
    return journey.window().findChild<QLineEdit *>(QString::fromLatin1(name));
}

} // namespace

class TestAddressJourneys : public QObject
{
    Q_OBJECT

private slots:
    void driveIsFollowedToItsNewAddressAndBack();
    void addressOutOfRangeIsNotSent();
    void hintComesAndGoesWithMode_data();
    void hintComesAndGoesWithMode();

private:
    static void move(const Journey &journey, z7sim::SimulatedBus &bus, int from, int to);
};

void TestAddressJourneys::move(const Journey &journey, z7sim::SimulatedBus &bus, int from, int to)
{
    QVERIFY(journey.showPage(driveName(from), QStringLiteral("RS485")));
    QTRY_COMPARE(Person::textOf(journey.window(), "lParam0x52Device"), QString::number(from));
    QVERIFY(Person::type(field(journey, "edParam0x52User"), QString::number(to)));
    QVERIFY(journey.press("BtnChangeAdress"));

    QTRY_COMPARE_WITH_TIMEOUT(bus.command("get " + QByteArray::number(to) + " address"),
        "ok " + QByteArray::number(to), Person::patienceMs);
    QTRY_VERIFY(journey.drives().contains(driveName(to) + ", active"));
    QVERIFY(!journey.drives().join(' ').contains(driveName(from) + ","));
    QTRY_COMPARE(journey.bar().device, QStringLiteral("Z7.%1").arg(to));
    // The live update goes on at the new address alone.
    bus.clearLog();
    QVERIFY(Person::waitUntil([&] { return requests(bus.log()).count(read(to, 0x52)) >= 2; }));
    QVERIFY(!requests(bus.log()).join(' ').contains(QStringLiteral("A=%1 ").arg(from)));
    QTRY_COMPARE(Person::textOf(journey.window(), "lParam0x52Device"), QString::number(to));
}

void TestAddressJourneys::driveIsFollowedToItsNewAddressAndBack()
{
    TestBench bench;
    auto &bus =
        bench.plugIn(port, {TestBench::shortDrive(1), TestBench::shortDrive(3), TestBench::shortDrive(7)});
    const Journey journey;
    for (const int address : {1, 3, 7})
        QVERIFY(journey.connectManually(port, address, 0));
    move(journey, bus, 3, 77);
    if (!QTest::currentTestFailed())
        move(journey, bus, 77, 3);
    for (const int address : {1, 7})
        QVERIFY(journey.drives().contains(driveName(address) + ", active"));
}

void TestAddressJourneys::addressOutOfRangeIsNotSent()
{
    TestBench bench;
    auto &bus = bench.plugIn(port, {TestBench::shortDrive(3)});
    const Journey journey;
    QVERIFY(journey.connectManually(port, 3, 0));
    QVERIFY(journey.showPage(driveName(3), QStringLiteral("RS485")));
    QVERIFY(Person::type(field(journey, "edParam0x52User"), QStringLiteral("256")));
    const MessageBoxAnswerer user(QMessageBox::Ok);
    QVERIFY(journey.press("BtnChangeAdress"));
    QCOMPARE(user.count(), 1);
    QCOMPARE(bus.command("get 3 address"), QByteArray("ok 3"));
}

void TestAddressJourneys::hintComesAndGoesWithMode_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<int>("mode");
    QTest::newRow("positioning") << "Positionierung" << 3;
    QTest::newRow("fixed speeds") << "Festdrehzahlen" << 1;
    QTest::newRow("current curve") << "Sollwertskalierung Strom" << 2;
}

void TestAddressJourneys::hintComesAndGoesWithMode()
{
    QFETCH(QString, page);
    QFETCH(int, mode);
    TestBench bench;
    z7sim::DriveConfig config = TestBench::shortDrive(1);
    config.version = "V200";
    // None of the modes that are written, so that each write can be seen to arrive.
    config.parameters = {{1, 5}, {2, 5}};
    auto &bus = bench.plugIn(port, {config});
    const Journey journey;
    QVERIFY(journey.connectManually(port, 1, 0));
    const auto warns = [&journey] {
        return !Person::textOf(journey.window(), "lSwitchOperationsModeInfo").isEmpty();
    };
    // Another mode first, then the page's, then the other one again.
    for (const int written : {0, mode, 0}) {
        QVERIFY(journey.showPage(driveName(1), QStringLiteral("Betriebsmodus")));
        QVERIFY(Person::type(field(journey, "edRevolutionN1User"), QString::number(written)));
        QVERIFY(Person::type(field(journey, "edRevolutionN2User"), QStringLiteral("0")));
        const MessageBoxAnswerer writeAnyway(QMessageBox::Yes);
        QVERIFY(journey.press("BtnUpload"));
        QTRY_COMPARE_WITH_TIMEOUT(bus.memory(1, 1), written, Person::patienceMs);
        QTRY_COMPARE(bus.memory(1, 2), 0);
        QVERIFY(journey.showPage(driveName(1), page));
        QTRY_COMPARE_WITH_TIMEOUT(warns(), written != mode, Person::patienceMs);
    }
}

QTEST_MAIN(TestAddressJourneys)

#include "tst_addressjourneys.moc"
