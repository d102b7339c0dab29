// A drive's pending changes in numbers and as rows.

#include "control/pendingoverview.h"
#include "model/parameterdefinitions.h"
#include "tests/control/testedcontroller.h"
#include "tests/support/isolatedtest.h"

#include <QTest>

namespace {

bool isThirty(int number)
{
    return number == 30;
}

int pageTen(int)
{
    return 10;
}

} // namespace

class TestPendingOverview : public IsolatedTest
{
    Q_OBJECT

private slots:
    void noChangesAreNoChanges();
    void everyChangeCounts();
    void changeOfShownPageCountsThere();
    void valueBeyondLimitsCounts_data();
    void valueBeyondLimitsCounts();

    void rowTellsWhatDefinitionsSay();
    void rowTellsValueOfDrive();
    void unreadValueOfDriveIsNoValue();
    void unknownParameterHasNoLimits();
    void rowTellsPage();
    void rowsAscend();

private:
    void prepare() override;
    PendingChange onlyRow(const Z7Device &drive, const Z7DeviceParam &change) const;
};

void TestPendingOverview::prepare()
{
    writeDefinitionsV123();
    Z7Services::instance()->definitions(QStringLiteral("V123"))->load();
}

PendingChange TestPendingOverview::onlyRow(const Z7Device &drive, const Z7DeviceParam &change) const
{
    return pendingChanges(drive, changeSet({change}), pageTen).value(0);
}

void TestPendingOverview::noChangesAreNoChanges()
{
    QVERIFY(pendingOverview(connectedDrive(3), Z7DeviceParamSet(), isThirty) == PendingOverview());
}

void TestPendingOverview::everyChangeCounts()
{
    const Z7Device drive = withValue(connectedDrive(3), 11, 5);
    const PendingOverview overview = pendingOverview(
        drive, changeSet({userChange(11, 5), userChange(12, 5), userChange(30, 5)}), isThirty);
    QCOMPARE(overview.total, 3);
}

void TestPendingOverview::changeOfShownPageCountsThere()
{
    const PendingOverview overview = pendingOverview(
        connectedDrive(3), changeSet({userChange(11, 5), userChange(12, 5), userChange(30, 5)}), isThirty);
    QCOMPARE(overview.onShownPage, 1);
    QCOMPARE(overview.onOtherPages(), 2);
}

void TestPendingOverview::valueBeyondLimitsCounts_data()
{
    QTest::addColumn<Z7DeviceParam>("change");
    QTest::addColumn<int>("outOfLimits");
    QTest::newRow("at the upper limit") << userChange(30, 1000) << 0;
    QTest::newRow("above it") << userChange(30, 1001) << 1;
    QTest::newRow("at the lower limit") << userChange(31, -100) << 0;
    QTest::newRow("below it") << userChange(31, -101) << 1;
    QTest::newRow("without limits, being unknown") << userChange(4711, 70000) << 0;
}

void TestPendingOverview::valueBeyondLimitsCounts()
{
    QFETCH(Z7DeviceParam, change);
    QTEST(pendingOverview(connectedDrive(3), changeSet({change}), isThirty).outOfLimits, "outOfLimits");
    QTEST(int(onlyRow(connectedDrive(3), change).isOutOfLimits), "outOfLimits");
}

void TestPendingOverview::rowTellsWhatDefinitionsSay()
{
    const PendingChange row = onlyRow(connectedDrive(3), userChange(31, -7));
    QCOMPARE(row.number, 31);
    QCOMPARE(row.name, QStringLiteral("Versatz"));
    QCOMPARE(row.unit, QString());
    QCOMPARE(row.wanted, -7);
    QVERIFY(row.hasLimits);
    QCOMPARE(row.minimum, -100);
    QCOMPARE(row.maximum, 100);
}

void TestPendingOverview::rowTellsValueOfDrive()
{
    const PendingChange row = onlyRow(withValue(connectedDrive(3), 30, 120), userChange(30, 7));
    QVERIFY(row.hasActual);
    QCOMPARE(row.actual, 120);
}

void TestPendingOverview::unreadValueOfDriveIsNoValue()
{
    Z7Device drive = connectedDrive(3);
    QVERIFY(!onlyRow(drive, userChange(30, 7)).hasActual);
    drive.parameterSet.insert(Z7DeviceParam(30, 0, 1, false));
    QVERIFY(!onlyRow(drive, userChange(30, 7)).hasActual);
}

void TestPendingOverview::unknownParameterHasNoLimits()
{
    QVERIFY(!onlyRow(connectedDrive(3), userChange(4711, 1)).hasLimits);
}

void TestPendingOverview::rowTellsPage()
{
    QCOMPARE(onlyRow(connectedDrive(3), userChange(30, 7)).page, 10);
}

void TestPendingOverview::rowsAscend()
{
    const QVector<PendingChange> rows =
        pendingChanges(connectedDrive(3), changeSet({userChange(31, 1), userChange(11, 2)}), pageTen);
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows.at(0).number, 11);
    QCOMPARE(rows.at(1).number, 31);
}

QTEST_GUILESS_MAIN(TestPendingOverview)

#include "tst_pendingoverview.moc"
