// The drives that the wizard has connected: which are listed and selected, and how far each has been read.

#include "control/devicelist.h"
#include "tests/control/testedcontroller.h"
#include "tests/support/isolatedtest.h"

#include <QTest>

namespace {

const int id3 = connectedDrive(3).deviceId();
const int id4 = connectedDrive(4).deviceId();
constexpr bool cutShort = true;
constexpr bool toTheEnd = false;

/// What a page shows.
const QList<int> shownNumbers {30};
const QList<int> everyParameter {11, 12, 13, 30, 31, 50, 83};

} // namespace

class TestDeviceList : public IsolatedTest
{
    Q_OBJECT

private slots:
    void drivesAreListedByTheirId();
    void addedDriveHasParametersOfItsVersion();
    void addedDriveCountsAsUnread();
    void driveWithoutDefinitionsIsRefusedWithReason();
    void drivesThatAreNotListedAreUnknown();
    void accessIsThatOfRecord();
    void clearedListHasNoDriveAndNoSelection();

    void selectedDriveIsCurrentOne();
    void idOfUnlistedDriveSelectsNone();
    void otherListedDriveIsAnotherThanSelectedOne();

    void reportedRecordReplacesListedOne();
    void recordOfUnlistedDriveChangesNothing();
    void recordWithoutParametersKeepsThoseThatWereRead();

    void unreadDriveIsPolledForEveryParameter();
    void endOfFirstLiveUpdateCompletesRead();
    void driveThatWasReadIsPolledForWhatIsShown();
    void laterLiveUpdateIsNoCompleteRead();
    void passThatWasCutShortCompletesNoRead();
    void cancelledReadIsNotCompleted();
    void recordBeforeLiveUpdateCompletesNoRead();
    void liveUpdateWithoutDriveIsHarmless();

    void movedDriveIsListedUnderItsNewAddressAlone();
    void movedDriveStaysSelected();
    void driveSelectedMeanwhileStaysSelected();
    void neighbourThatHasNotMovedReplacesNobody();
    void movedDriveThatWasNotListedIsNotListed();

private:
    void prepare() override;
    /// Drive 3 as it answers at address 4.
    Z7Device movedFrom3To4() const;
    DeviceList::Change report(int id, bool wasCutShort = toTheEnd);

    DeviceList list;
};

void TestDeviceList::prepare()
{
    writeDefinitionsV123();
    list = DeviceList();
    list.add(connectedDrive(3));
}

Z7Device TestDeviceList::movedFrom3To4() const
{
    Z7Device moved = list.value(id3);
    moved.setAddress(4);
    return moved;
}

DeviceList::Change TestDeviceList::report(int id, bool wasCutShort)
{
    return list.take(list.value(id), wasCutShort);
}

void TestDeviceList::drivesAreListedByTheirId()
{
    list.clear();
    QCOMPARE(list.add(connectedDrive(4)), QString());
    QCOMPARE(list.add(connectedDrive(3)), QString());
    QCOMPARE(list.ids(), (QList<int> {id3, id4}));
    QCOMPARE(list.records().first().address, 3);
    QCOMPARE(list.value(id4).address, 4);
    QVERIFY(list.contains(id3));
}

void TestDeviceList::addedDriveHasParametersOfItsVersion()
{
    list.add(withValue(connectedDrive(4), 4711, 1));
    QCOMPARE(list.value(id4).parameterSet.params.keys(), everyParameter);
    QVERIFY(!list.value(id4).parameterSet.value(30).hasValue);
}

void TestDeviceList::addedDriveCountsAsUnread()
{
    Z7Device known = connectedDrive(3);
    known.parametersComplete = known.fullReadPending = true;
    list.add(known);
    QVERIFY(!list.value(id3).parametersComplete);
    QVERIFY(!list.value(id3).fullReadPending);
}

void TestDeviceList::driveWithoutDefinitionsIsRefusedWithReason()
{
    Z7Device unknown;
    unknown.assignAddress(7);
    unknown.setSoftwareVersion(QStringLiteral("V999"));
    QCOMPARE(list.add(unknown),
        QStringLiteral("Der Motor kann nicht hinzugefügt werden:\n\n"
                       "Zur Versionnummer V999 im Motor Port - Z7.7 ist keine Parameter-Definition "
                       "verfügbar. Bitte fordern Sie die Datei mit den Parameter-Definitionen zur "
                       "Z7-Version V999 an."));
    QCOMPARE(list.ids(), QList<int> {id3});
}

void TestDeviceList::drivesThatAreNotListedAreUnknown()
{
    QVERIFY(!list.contains(id4));
    QVERIFY(!list.find(id4));
    QVERIFY(!list.isAccessGranted(id4));
    QCOMPARE(list.value(id4).softwareVersion, Z7Device::unknownVersion());
}

void TestDeviceList::accessIsThatOfRecord()
{
    Z7Device refused = connectedDrive(4);
    refused.setAccessGranted(false);
    list.add(refused);
    QVERIFY(list.isAccessGranted(id3));
    QVERIFY(!list.isAccessGranted(id4));
}

void TestDeviceList::clearedListHasNoDriveAndNoSelection()
{
    list.select(id3);
    list.clear();
    QCOMPARE(list.ids(), QList<int>());
    list.add(connectedDrive(3));
    QVERIFY(!list.hasCurrent());
}

void TestDeviceList::selectedDriveIsCurrentOne()
{
    list.select(id3);
    QVERIFY(list.hasCurrent());
    QCOMPARE(list.currentId(), id3);
    QCOMPARE(list.current().address, 3);
    QCOMPARE(list.findCurrent(), list.find(id3));
}

void TestDeviceList::idOfUnlistedDriveSelectsNone()
{
    list.select(id4);
    QVERIFY(!list.hasCurrent());
    QVERIFY(!list.findCurrent());
    QCOMPARE(list.current().softwareVersion, Z7Device::unknownVersion());
}

void TestDeviceList::otherListedDriveIsAnotherThanSelectedOne()
{
    list.select(id3);
    QVERIFY(!list.isAnother(id3));
    QVERIFY(!list.isAnother(id4));
    list.add(connectedDrive(4));
    QVERIFY(list.isAnother(id4));
}

void TestDeviceList::reportedRecordReplacesListedOne()
{
    Z7Device reported = withValue(list.value(id3), 11, 555);
    reported.setDeviceError(1);
    QCOMPARE(list.take(reported, toTheEnd), DeviceList::NewRecord);
    QCOMPARE(list.value(id3).parameterSet.value(11).value, 555);
    QCOMPARE(list.value(id3).error, 1);
}

void TestDeviceList::recordOfUnlistedDriveChangesNothing()
{
    QCOMPARE(list.take(connectedDrive(4), toTheEnd), DeviceList::NoChange);
    QCOMPARE(list.ids(), QList<int> {id3});
}

void TestDeviceList::recordWithoutParametersKeepsThoseThatWereRead()
{
    list.take(withValue(list.value(id3), 11, 555), toTheEnd);
    list.take(connectedDrive(3), toTheEnd);
    QCOMPARE(list.value(id3).parameterSet.value(11).value, 555);
}

void TestDeviceList::unreadDriveIsPolledForEveryParameter()
{
    list.select(id3);
    QCOMPARE(list.polledParameters(Z7DeviceParamSet("V123", shownNumbers)).params.keys(), everyParameter);
}

void TestDeviceList::endOfFirstLiveUpdateCompletesRead()
{
    list.select(id3);
    list.pollingStarted();
    QVERIFY(list.value(id3).fullReadPending);
    // A pass knows nothing of the read that it completes.
    QCOMPARE(list.take(connectedDrive(3), toTheEnd), DeviceList::CompleteRead);
    QVERIFY(list.value(id3).parametersComplete);
    QVERIFY(!list.value(id3).fullReadPending);
}

void TestDeviceList::driveThatWasReadIsPolledForWhatIsShown()
{
    list.select(id3);
    list.pollingStarted();
    report(id3);
    QCOMPARE(list.polledParameters(Z7DeviceParamSet("V123", shownNumbers)).params.keys(), shownNumbers);
}

void TestDeviceList::laterLiveUpdateIsNoCompleteRead()
{
    list.select(id3);
    list.pollingStarted();
    report(id3);
    list.pollingStarted();
    QVERIFY(!list.value(id3).fullReadPending);
    QCOMPARE(report(id3), DeviceList::NewRecord);
}

void TestDeviceList::passThatWasCutShortCompletesNoRead()
{
    list.select(id3);
    list.pollingStarted();
    QCOMPARE(report(id3, cutShort), DeviceList::NewRecord);
    QVERIFY(!list.value(id3).parametersComplete);
    QCOMPARE(report(id3), DeviceList::CompleteRead);
}

void TestDeviceList::cancelledReadIsNotCompleted()
{
    list.select(id3);
    list.pollingStarted();
    list.cancelFullReads();
    QCOMPARE(report(id3), DeviceList::NewRecord);
    QVERIFY(!list.value(id3).parametersComplete);
}

void TestDeviceList::recordBeforeLiveUpdateCompletesNoRead()
{
    QCOMPARE(report(id3), DeviceList::NewRecord);
    QVERIFY(!list.value(id3).parametersComplete);
}

void TestDeviceList::liveUpdateWithoutDriveIsHarmless()
{
    list.pollingStarted();
    QVERIFY(!list.value(id3).fullReadPending);
    QCOMPARE(list.ids(), QList<int> {id3});
}

void TestDeviceList::movedDriveIsListedUnderItsNewAddressAlone()
{
    QCOMPARE(list.take(movedFrom3To4(), toTheEnd), DeviceList::NewAddress);
    QCOMPARE(list.ids(), QList<int> {id4});
    QVERIFY2(!list.value(id4).addressChanged, "another drive may take the old address now");
}

void TestDeviceList::movedDriveStaysSelected()
{
    list.select(id3);
    list.take(movedFrom3To4(), toTheEnd);
    QCOMPARE(list.currentId(), id4);
}

void TestDeviceList::driveSelectedMeanwhileStaysSelected()
{
    const int id5 = connectedDrive(5).deviceId();
    list.add(connectedDrive(5));
    list.select(id5);
    list.take(movedFrom3To4(), toTheEnd);
    QCOMPARE(list.currentId(), id5);
}

void TestDeviceList::neighbourThatHasNotMovedReplacesNobody()
{
    Z7Device neighbour = connectedDrive(4);
    neighbour.previousAddress = 3;
    QCOMPARE(list.take(neighbour, toTheEnd), DeviceList::NoChange);
    QCOMPARE(list.ids(), QList<int> {id3});
}

void TestDeviceList::movedDriveThatWasNotListedIsNotListed()
{
    const Z7Device moved = movedFrom3To4();
    list.clear();
    QCOMPARE(list.take(moved, toTheEnd), DeviceList::NoChange);
    QCOMPARE(list.ids(), QList<int>());
}

QTEST_GUILESS_MAIN(TestDeviceList)

#include "tst_devicelist.moc"
