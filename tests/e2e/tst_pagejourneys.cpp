// A person goes through all pages of a drive: what each shows, what an edit on it does, and what it costs on
// the wire.

#include "pages/datawidget.h"
#include "pages/pagefactory.h"
#include "tests/e2e/journey.h"
#include "tests/e2e/telegrams.h"
#include "tests/e2e/testbench.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <QLabel>
#include <QLineEdit>
#include <QtTest>

using namespace PageNumber;
using namespace Telegrams;

namespace {

const QString port = QStringLiteral("ttyUSB0");

/// A page as it stands in the tree, and one parameter that is changed on it. Without a field nothing is.
struct Entry
{
    int page;
    QString title;
    int number;
    QString deviceLabel;
    QString userField;
};

Entry labelled(int page, const char *title, int number)
{
    const QString stem = QString("Param0x%1").arg(QString::number(number, 16).toUpper(), 2, QLatin1Char('0'));
    return {page, QString::fromUtf8(title), number, "l" + stem + "Device", "ed" + stem + "User"};
}

const QVector<Entry> entries {
    labelled(SpeedRegulation, "Regelung", 0x1E),
    labelled(Accelerations, "Dynamik", 0x1C),
    labelled(CurrentLimits, "Stromgrenzen", 0x36),
    labelled(FixedResolutions, "Festdrehzahlen", 0x18),
    labelled(Positioning, "Positionierung", 0x41),
    labelled(Output, "Digitale Ausgänge", 0x23),
    {OperationsMode, "Betriebsmodus", 6, "lRevolutionN3Device", "edRevolutionN3User"},
    {ParameterTable, "Parametertabelle", 0x17, {}, {}},
    {FirmwareUpload, "Firmware update", 0, {}, {}},
    {CalibrationRotations, "Sollwertskalierung Drehzahl", 0x0F, "edValY1_Device", "edValY1_User"},
    {CalibrationCurrent, "Sollwertskalierung Strom", 0x2B, "edValY2_Device", "edValY2_User"},
    labelled(FixResistance, "Ballastwiderstand", 0x4D),
    labelled(VoltageLimits, "Spannungsgrenzen", 0x4B),
    {RS485, "RS485", 0x52, "lParam0x52Device", {}},
};

z7sim::DriveConfig driveOf(int address, const char *version)
{
    z7sim::DriveConfig config;
    config.address = address;
    config.password = 0;
    config.version = version;
    return config;
}

} // namespace

class TestPageJourneys : public QObject
{
    Q_OBJECT

private slots:
    void everyPageShowsAndChangesWhatDriveHolds_data();
    void everyPageShowsAndChangesWhatDriveHolds();

private:
    struct Walk
    {
        TestBench &bench;
        z7sim::SimulatedBus &bus;
        const Journey &journey;
        const int address;
        const QByteArray version;

        QString drive() const { return QStringLiteral("Port0 - Z7.%1").arg(address); }
        QList<int> numbersOf(const Entry &entry) const;
        bool polls(const QList<int> &numbers) const;
        QString shown(const Entry &entry) const;
        int heldBy(const Entry &entry) const { return bus.memory(address, entry.number); }
    };
    static void readsOnlyItsOwn(const Walk &walk, const Entry &entry);
    static void changes(const Walk &walk, const Entry &entry);
};

QList<int> TestPageJourneys::Walk::numbersOf(const Entry &entry) const
{
    if (entry.page == ParameterTable)
        return bench.numbers(version);
    QList<int> numbers = createDataPage(entry.page)->paramIds();
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

bool TestPageJourneys::Walk::polls(const QList<int> &numbers) const
{
    // The last telegram of a pass: the page's last parameter, or the last live value.
    const QString last =
        numbers.isEmpty() ? logOn(address, 0).constLast() : read(address, numbers.constLast());
    return Person::waitUntil([this, last] { return requests(bus.log()).contains(last); });
}

QString TestPageJourneys::Walk::shown(const Entry &entry) const
{
    if (entry.page == ParameterTable)
        return journey.row(entry.number).deviceValue;
    return Person::textOf(journey.window(), entry.deviceLabel.toLatin1().constData());
}

void TestPageJourneys::everyPageShowsAndChangesWhatDriveHolds_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<QByteArray>("version");
    QTest::newRow("V123") << 1 << QByteArray("V123");
    QTest::newRow("V200") << 7 << QByteArray("V200");
}

void TestPageJourneys::everyPageShowsAndChangesWhatDriveHolds()
{
    QFETCH(int, address);
    QFETCH(QByteArray, version);
    TestBench bench;
    auto &bus = bench.plugIn(port, {driveOf(1, "V123"), driveOf(7, "V200")});
    const Journey journey;
    const Walk walk {bench, bus, journey, address, version};
    QVERIFY(journey.connectManually(port, address, 0));

    QVERIFY(journey.showPage(walk.drive()));
    QTRY_COMPARE(Person::textOf(journey.window(), "lMotorSoftwareVersion_2"), QString(version));
    // The first pass reads everything, once.
    QVERIFY(Person::waitUntil(
        [&] { return requests(bus.log()).contains(read(address, bench.numbers(version).constLast())); }));

    for (const Entry &entry : entries) {
        QVERIFY2(journey.showPage(walk.drive(), entry.title), qPrintable(entry.title));
        QCOMPARE(journey.pageTitle(), entry.title);
        readsOnlyItsOwn(walk, entry);
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(entry.title));
        if (entry.number != 0)
            QTRY_COMPARE(walk.shown(entry), QString::number(walk.heldBy(entry)));
        changes(walk, entry);
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(entry.title));
    }
}

void TestPageJourneys::readsOnlyItsOwn(const Walk &walk, const Entry &entry)
{
    const QList<int> numbers = walk.numbersOf(entry);
    walk.bus.clearLog();
    QVERIFY(walk.polls(numbers));
    walk.bus.clearLog();
    QVERIFY(walk.polls(numbers));
    QCOMPARE(besides({walk.address, 0, numbers}, requests(walk.bus.log())), {});
}

void TestPageJourneys::changes(const Walk &walk, const Entry &entry)
{
    if (entry.userField.isEmpty())
        return;
    const int wanted = walk.heldBy(entry) + (entry.number == 6 ? 1 : -1);
    auto *field = walk.journey.window().findChild<QLineEdit *>(entry.userField);
    QVERIFY(Person::type(field, QString::number(wanted)));
    QCOMPARE(walk.journey.mark(walk.drive(), entry.title), QStringLiteral("active_modified"));

    const MessageBoxAnswerer writeAnyway(QMessageBox::Yes);
    QVERIFY(walk.journey.press("BtnUpload"));
    QTRY_COMPARE(walk.heldBy(entry), wanted);
    QTRY_COMPARE(walk.journey.mark(walk.drive(), entry.title), QStringLiteral("active"));
    QCOMPARE(walk.shown(entry), QString::number(wanted));
}

QTEST_MAIN(TestPageJourneys)

#include "tst_pagejourneys.moc"
