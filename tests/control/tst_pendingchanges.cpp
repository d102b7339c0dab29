// The user's pending changes as a value: which drive they belong to, what replaces them, what they differ
// from.

#include "control/pendingchanges.h"
#include "model/parameterdefinitions.h"
#include "tests/control/testedcontroller.h"
#include "tests/support/isolatedtest.h"

#include <QTest>

namespace {

constexpr int drive = 3;
constexpr int otherDrive = 4;
const QString version = QStringLiteral("V123");

/// The changes of a drive as "11=5 30=7"; "none" if there are none.
QString textOf(const PendingChanges &changes, int deviceId)
{
    if (!changes.contains(deviceId))
        return QStringLiteral("none");
    QStringList texts;
    for (const Z7DeviceParam &change : changes.value(deviceId).params)
        texts.append(QStringLiteral("%1=%2").arg(change.number).arg(change.value));
    return texts.join(QLatin1Char(' '));
}

Z7DeviceParamSet setOf(const Z7DeviceParam &change)
{
    Z7DeviceParamSet set(version);
    set.insert(change);
    return set;
}

bool isEvery(int)
{
    return true;
}

/// A drive with all parameters of its version, none of them read yet.
Z7Device unreadDrive()
{
    Z7Device device = connectedDrive(3);
    Z7ParamDefinitions *definitions = Z7Services::instance()->definitions(version);
    definitions->load();
    device.setParameterSet(definitions->emptyParameterSet());
    return device;
}

} // namespace

class TestPendingChanges : public IsolatedTest
{
    Q_OBJECT

private slots:
    void firstChangeMakesSetOfVersion();
    void laterChangeOfParameterReplacesFormerOne();
    void changesBelongToTheirDriveAlone();
    void withdrawnChangeLeavesOthers();
    void driveWithoutItsLastChangeHasNone();
    void withdrawingFromDriveWithoutChangesLeavesNone();
    void newSetReplacesAllChanges();
    void discardedChangesAreGone();
    void readingNoChangesLeavesSetAsItWas();
    void readingGivesChanges();

    void factoryValuesBecomeChangesOfEveryWritableParameter();
    void factoryValuesReplaceWhatWasTyped();
    void driveWithoutWritableParametersGetsNoFactoryValues();

    void changeIsModifiedWhereItDiffersFromDrive_data();
    void changeIsModifiedWhereItDiffersFromDrive();
    void onlyAskedParametersCountAsModified();
    void oneOfSeveralChangesIsEnough();

    void noConflictWithoutChanges();
    void conflictIsToldOfDrivesOwnChanges();

private:
    void prepare() override;

    PendingChanges changes;
};

void TestPendingChanges::prepare()
{
    writeDefinitionsV123();
    changes = PendingChanges();
}

void TestPendingChanges::firstChangeMakesSetOfVersion()
{
    QCOMPARE(textOf(changes, drive), QStringLiteral("none"));
    changes.insert(drive, version, userChange(30, 7));
    QCOMPARE(textOf(changes, drive), QStringLiteral("30=7"));
    QCOMPARE(changes.value(drive).softwareVersion, version);
}

void TestPendingChanges::laterChangeOfParameterReplacesFormerOne()
{
    changes.insert(drive, version, userChange(30, 7));
    changes.insert(drive, version, userChange(11, 5));
    changes.insert(drive, version, userChange(30, 71));
    QCOMPARE(textOf(changes, drive), QStringLiteral("11=5 30=71"));
}

void TestPendingChanges::changesBelongToTheirDriveAlone()
{
    changes.insert(drive, version, userChange(30, 7));
    changes.insert(otherDrive, version, userChange(30, 8));
    QCOMPARE(textOf(changes, drive), QStringLiteral("30=7"));
    QCOMPARE(textOf(changes, otherDrive), QStringLiteral("30=8"));
}

void TestPendingChanges::withdrawnChangeLeavesOthers()
{
    changes.insert(drive, version, userChange(30, 7));
    changes.insert(drive, version, userChange(11, 5));
    changes.withdraw(drive, userChange(30, 0));
    QCOMPARE(textOf(changes, drive), QStringLiteral("11=5"));
}

void TestPendingChanges::driveWithoutItsLastChangeHasNone()
{
    changes.insert(drive, version, userChange(30, 7));
    changes.withdraw(drive, userChange(30, 7));
    QVERIFY(!changes.contains(drive));
}

void TestPendingChanges::withdrawingFromDriveWithoutChangesLeavesNone()
{
    changes.withdraw(drive, userChange(30, 7));
    QVERIFY(!changes.contains(drive));
}

void TestPendingChanges::newSetReplacesAllChanges()
{
    changes.insert(drive, version, userChange(11, 5));
    changes.replace(drive, setOf(userChange(30, 7)));
    QCOMPARE(textOf(changes, drive), QStringLiteral("30=7"));
}

void TestPendingChanges::discardedChangesAreGone()
{
    changes.insert(drive, version, userChange(30, 7));
    changes.insert(otherDrive, version, userChange(30, 8));
    changes.discard(drive);
    QCOMPARE(textOf(changes, drive), QStringLiteral("none"));
    QCOMPARE(textOf(changes, otherDrive), QStringLiteral("30=8"));
}

void TestPendingChanges::readingNoChangesLeavesSetAsItWas()
{
    Z7DeviceParamSet untouched(QStringLiteral("as it was"));
    QVERIFY(!changes.read(drive, untouched));
    QCOMPARE(untouched.softwareVersion, QStringLiteral("as it was"));
}

void TestPendingChanges::readingGivesChanges()
{
    changes.insert(drive, version, userChange(30, 7));
    Z7DeviceParamSet read;
    QVERIFY(changes.read(drive, read));
    QCOMPARE(read.value(30).value, 7);
}

void TestPendingChanges::factoryValuesBecomeChangesOfEveryWritableParameter()
{
    changes.insertFactoryValues(drive, unreadDrive());
    QCOMPARE(textOf(changes, drive), QStringLiteral("11=100 12=200 13=300 30=120 31=-5 50=3"));
    QCOMPARE(textOf(changes, otherDrive), QStringLiteral("none"));
    QCOMPARE(changes.value(drive).softwareVersion, version);
}

void TestPendingChanges::factoryValuesReplaceWhatWasTyped()
{
    changes.insert(drive, version, userChange(30, 7));
    changes.insert(drive, version, userChange(4711, 1));
    changes.insertFactoryValues(drive, unreadDrive());
    QCOMPARE(textOf(changes, drive), QStringLiteral("11=100 12=200 13=300 30=120 31=-5 50=3 4711=1"));
}

void TestPendingChanges::driveWithoutWritableParametersGetsNoFactoryValues()
{
    Z7Device device = unreadDrive();
    for (const int number : {11, 12, 13, 30, 31, 50})
        device.parameterSet.remove(userChange(number, 0));
    changes.insertFactoryValues(drive, device);
    QVERIFY(!changes.contains(drive));
}

void TestPendingChanges::changeIsModifiedWhereItDiffersFromDrive_data()
{
    QTest::addColumn<Z7DeviceParam>("change");
    QTest::addColumn<bool>("modified");
    QTest::newRow("another value") << userChange(30, 8) << true;
    QTest::newRow("value of the drive") << userChange(30, 7) << false;
    QTest::newRow("no value") << Z7DeviceParam(30, 8, 1, false) << false;
    QTest::newRow("zero that the drive lacks") << userChange(4711, 0) << false;
    QTest::newRow("other value that the drive lacks") << userChange(4711, 1) << true;
}

void TestPendingChanges::changeIsModifiedWhereItDiffersFromDrive()
{
    QFETCH(Z7DeviceParam, change);
    changes.insert(drive, version, change);
    QTEST(changes.isModified(drive, withValue(connectedDrive(3), 30, 7), isEvery), "modified");
    QVERIFY(!changes.isModified(otherDrive, connectedDrive(4), isEvery));
}

void TestPendingChanges::onlyAskedParametersCountAsModified()
{
    changes.insert(drive, version, userChange(30, 7));
    QVERIFY(changes.isModified(drive, connectedDrive(3), [](int number) { return number == 30; }));
    QVERIFY(!changes.isModified(drive, connectedDrive(3), [](int number) { return number != 30; }));
}

void TestPendingChanges::oneOfSeveralChangesIsEnough()
{
    changes.insert(drive, version, userChange(11, 0));
    changes.insert(drive, version, userChange(30, 7));
    QVERIFY(changes.isModified(drive, connectedDrive(3), isEvery));
}

void TestPendingChanges::noConflictWithoutChanges()
{
    QCOMPARE(changes.conflicts(drive, withValue(unreadDrive(), 11, 500)), QString());
}

void TestPendingChanges::conflictIsToldOfDrivesOwnChanges()
{
    changes.insert(drive, version, userChange(11, 500));
    QCOMPARE(changes.conflicts(drive, unreadDrive()),
        QStringLiteral("Parameterkonflikt Drehzahl: 500 <= 0 <= 0 verletzt."));
    QCOMPARE(changes.conflicts(otherDrive, unreadDrive()), QString());
}

QTEST_GUILESS_MAIN(TestPendingChanges)

#include "tst_pendingchanges.moc"
