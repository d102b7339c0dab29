// A person goes through all pages of a drive: what each shows, what an edit on it does, and what it costs on
// the wire.

#include "pages/datawidget.h"
#include "pages/pagefactory.h"
#include "tests/e2e/desk.h"
#include "tests/e2e/telegrams.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <QtTest>

using namespace PageNumber;
using namespace Telegrams;

namespace {

/// The pages are asked for one after the other, and each waits for passes of its own.
const TestBench::Options quickPolling {20};

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

/// A person before two drives of different versions, who goes through the pages of one.
struct Walk : Desk
{
    Walk(int drive, const QByteArray &softwareVersion)
        : Desk({TestBench::fullDrive(1, 0, "V123"), TestBench::fullDrive(7, 0, "V200")}, quickPolling)
        , address(drive)
        , version(softwareVersion)
    {
    }

    QString drive() const { return driveName(address); }
    QList<int> numbersOf(const Entry &entry) const
    {
        if (entry.page == ParameterTable)
            return bench.numbers(version);
        QList<int> numbers = createDataPage(entry.page)->paramIds();
        std::sort(numbers.begin(), numbers.end());
        return numbers;
    }
    /// Waits for the last telegram of a pass: the page's last parameter, or the last live value.
    bool polls(const QList<int> &numbers) const
    {
        return waitForRequest(
            numbers.isEmpty() ? logOn(address, 0).constLast() : read(address, numbers.constLast()));
    }
    QString shown(const Entry &entry) const
    {
        if (entry.page == ParameterTable)
            return journey.row(entry.number).deviceValue;
        return Person::textOf(journey.window(), entry.deviceLabel.toLatin1().constData());
    }
    int heldBy(const Entry &entry) const { return bus.memory(address, entry.number); }
    bool isMarked(const Entry &entry, const char *mark) const
    {
        return journey.mark(drive(), entry.title) == QLatin1String(mark);
    }

    bool readsOnlyItsOwn(const Entry &entry)
    {
        const QList<int> numbers = numbersOf(entry);
        bus.clearLog();
        if (!polls(numbers))
            return false;
        bus.clearLog();
        return polls(numbers) && besides({address, 0, numbers}, requests()).isEmpty();
    }
    /// Types another value, writes it, and waits until drive and page have it.
    bool change(const Entry &entry) const
    {
        const int wanted = heldBy(entry) + (entry.number == 6 ? 1 : -1);
        const MessageBoxAnswerer writeAnyway(QMessageBox::Yes);
        return Person::type(journey.window(), entry.userField.toLatin1().constData(), QString::number(wanted))
            && isMarked(entry, "active_modified") && journey.press("BtnUpload")
            && Person::waitUntil([&] { return heldBy(entry) == wanted && isMarked(entry, "active"); })
            && shown(entry) == QString::number(wanted);
    }

    const int address;
    const QByteArray version;
};

} // namespace

class TestPageJourneys : public QObject
{
    Q_OBJECT

private slots:
    void everyPageShowsAndChangesWhatDriveHolds_data();
    void everyPageShowsAndChangesWhatDriveHolds();
};

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
    Walk walk(address, version);
    const Journey &journey = walk.journey;
    QVERIFY(journey.connectManually(port, address, 0));

    QVERIFY(journey.showPage(walk.drive()));
    QTRY_COMPARE(Person::textOf(journey.window(), "lMotorSoftwareVersion_2"), QString(version));
    // The first pass reads everything, once.
    QVERIFY(walk.waitForRequest(read(address, walk.bench.numbers(version).constLast())));

    QCOMPARE(entries.size(), drivePages().size());
    for (const Entry &entry : entries) {
        const QByteArray title = entry.title.toUtf8();
        QVERIFY2(journey.showPage(walk.drive(), entry.title), title.constData());
        QCOMPARE(journey.pageTitle(), entry.title);
        QVERIFY2(walk.readsOnlyItsOwn(entry), title.constData());
        if (entry.number != 0)
            QTRY_COMPARE(walk.shown(entry), QString::number(walk.heldBy(entry)));
        if (!entry.userField.isEmpty())
            QVERIFY2(walk.change(entry), title.constData());
    }
}

QTEST_MAIN(TestPageJourneys)

#include "tst_pagejourneys.moc"
