// What became of each operation: the last report of a drive, what came back of it later, and what has not
// run.

#include "control/operationjournal.h"
#include "model/parameterdefinitions.h"
#include "tests/control/testedcontroller.h"
#include "tests/support/isolatedtest.h"

#include <QTest>

#include <numeric>

using Z7CommInterface::NotRun;

namespace {

const QDateTime noon(QDate(2026, 11, 22), QTime(12, 0));

Z7ParamOutcome write(int number, Z7ParamOutcome::State state, bool conflict = false)
{
    Z7ParamOutcome param;
    param.kind = Z7ParamOutcome::Write;
    param.state = state;
    param.number = number;
    param.conflict = conflict;
    return param;
}

Z7ParamOutcome read(int number, int value, Z7ParamOutcome::State state = Z7ParamOutcome::Answered)
{
    Z7ParamOutcome param;
    param.state = state;
    param.number = number;
    param.value = value;
    return param;
}

/// A pass with the drive at this address that came to its end without an error.
Z7PassOutcome pass(const QVector<Z7ParamOutcome> &params, int address = 3)
{
    Z7PassOutcome outcome;
    outcome.deviceId = connectedDrive(address).deviceId();
    outcome.address = address;
    outcome.error = TelegramError::None;
    outcome.isComplete = true;
    outcome.params = params;
    return outcome;
}

QString textOf(const QVector<int> &numbers)
{
    const QString text = std::accumulate(numbers.cbegin(), numbers.cend(), QString(),
        [](const QString &before, int number) { return before + QStringLiteral(" %1").arg(number); });
    return text.mid(1);
}

} // namespace

class TestOperationJournal : public IsolatedTest
{
    Q_OBJECT

private slots:
    void unnamedOperationIsNotNoted();
    void operationUnderWayHasNoReport();
    void reportTellsWhatBecameOfEachValue();
    void conflictIsNamedApart();
    void passCutShortTellsItsErrorAndRest();
    void readTellsOfItsOwnNumbersAlone();
    void storeIsTold();
    void reportHasItsTimeAndDrive();
    void endOfOneOperationReplacesLastOne();
    void reportBelongsToItsDriveAlone();
    void endIsTakenOnce();
    void unknownRequestIsNoOperation();

    void laterReadingIsReadBack();
    void readingWithoutWriteSaysNothing();
    void otherValueIsReadBackAsDifferent();
    void differentValueThatComesRightIsEqual();
    void equalValueStaysReadBack();
    void readingOfAnotherDriveIsNotReadBack();
    void readingThatFailedIsNotReadBack_data();
    void readingThatFailedIsNotReadBack();
    void refusedAndUncertainValuesAreNotReadBack();
    void passWithErrorReadsNothingBack();
    void passOfWriteItselfReadsNothingBack();
    void drivesConnectedAnewReadNothingBack();
    void valueBeyondWireComesBackDifferent();

    void newAddressTakesReportAlong();
    void newAddressTakesWhatDidNotRunAlong();
    void refusedAddressLeavesDriveWhereItIs();

    void operationThatDidNotRunIsKept();
    void operationThatDidNotRunLeavesReport();
    void sameOperationThatRunsTakesItAway();
    void otherOperationOrDriveLeavesIt();
    void operationThatDidNotRunTwiceStandsOnce();
    void operationThatDidNotRunIsDismissed();
    void missingEntryIsNotDismissed();

    void fileIsComparedWithWhatWasRead();
    void fileReplacesReportOfItsDrive();

private:
    void prepare() override;
    int ask(DriveOperation operation, const QList<Z7DeviceParam> &params = {}, int address = 3);
    /// A write of 11 and 12 with the values 5 and 7 that the drive has taken.
    void writeTwo();
    const OperationReport &last(int address = 3) const
    {
        static const OperationReport nothing;
        const OperationReport *report = journal.last(connectedDrive(address).deviceId());
        return report ? *report : nothing;
    }

    OperationJournal journal;
};

void TestOperationJournal::prepare()
{
    writeDefinitionsV123();
    journal = OperationJournal();
}

int TestOperationJournal::ask(DriveOperation operation, const QList<Z7DeviceParam> &params, int address)
{
    return journal.ask(operation, connectedDrive(address), changeSet(params));
}

void TestOperationJournal::writeTwo()
{
    const int request = ask(DriveOperation::Write, {userChange(11, 5), userChange(12, 7)});
    journal.ended(
        request, pass({write(11, Z7ParamOutcome::Answered), write(12, Z7ParamOutcome::Answered)}), noon);
}

void TestOperationJournal::unnamedOperationIsNotNoted()
{
    QCOMPARE(ask(DriveOperation::None), 0);
    QVERIFY(!journal.ended(0, pass({}), noon));
    QVERIFY(!journal.notRun(0, NotRun::Replaced, noon));
}

void TestOperationJournal::operationUnderWayHasNoReport()
{
    const int request = ask(DriveOperation::Store);
    journal.began(request);
    QCOMPARE(journal.last(connectedDrive(3).deviceId()), nullptr);
}

void TestOperationJournal::reportTellsWhatBecameOfEachValue()
{
    const int request = ask(
        DriveOperation::Write, {userChange(11, 1), userChange(12, 2), userChange(13, 3), userChange(30, 4)});
    const Z7PassOutcome outcome =
        pass({read(1, 0), write(11, Z7ParamOutcome::Answered), write(12, Z7ParamOutcome::Refused),
            write(13, Z7ParamOutcome::Uncertain), write(30, Z7ParamOutcome::Unsent)});
    QVERIFY(journal.ended(request, outcome, noon));
    QCOMPARE(last().operation, DriveOperation::Write);
    QCOMPARE(textOf(last().done), QStringLiteral("11"));
    QCOMPARE(textOf(last().refused), QStringLiteral("12"));
    QCOMPARE(textOf(last().uncertain), QStringLiteral("13"));
    QCOMPARE(textOf(last().unsent), QStringLiteral("30"));
    QCOMPARE(last().asked(), 4);
}

void TestOperationJournal::conflictIsNamedApart()
{
    const int request = ask(DriveOperation::Write, {userChange(11, 1), userChange(12, 2)});
    journal.ended(request,
        pass({write(11, Z7ParamOutcome::Answered, true), write(12, Z7ParamOutcome::Refused, true)}), noon);
    QCOMPARE(textOf(last().conflicts), QStringLiteral("11 12"));
    QCOMPARE(textOf(last().done), QStringLiteral("11"));
    QCOMPARE(textOf(last().refused), QStringLiteral("12"));
}

void TestOperationJournal::passCutShortTellsItsErrorAndRest()
{
    const int request = ask(DriveOperation::Write, {userChange(11, 1), userChange(12, 2)});
    Z7PassOutcome outcome = pass({write(11, Z7ParamOutcome::Answered), write(12, Z7ParamOutcome::Uncertain)});
    outcome.error = TelegramError::NoAnswer;
    outcome.isComplete = false;
    journal.ended(request, outcome, noon);
    QCOMPARE(last().error, int(TelegramError::NoAnswer));
    QVERIFY(!last().isComplete);
    QCOMPARE(last().asked(), 2);
}

void TestOperationJournal::readTellsOfItsOwnNumbersAlone()
{
    const int request = ask(DriveOperation::Read, {userChange(1, 0), userChange(30, 0), userChange(31, 0)});
    // The log-on reads 1 and 2 before the page's own.
    journal.ended(request,
        pass({read(1, 0), read(2, 0), read(1, 0), read(30, 120), read(31, 0, Z7ParamOutcome::Refused)}),
        noon);
    QCOMPARE(textOf(last().done), QStringLiteral("1 30"));
    QCOMPARE(textOf(last().refused), QStringLiteral("31"));
    QCOMPARE(last().asked(), 3);
}

void TestOperationJournal::storeIsTold()
{
    Z7PassOutcome outcome = pass({});
    outcome.store = Z7PassOutcome::Stored;
    journal.ended(ask(DriveOperation::Store), outcome, noon);
    QCOMPARE(last().store, Z7PassOutcome::Stored);
    writeTwo();
    QCOMPARE(last().store, Z7PassOutcome::NotAsked);
}

void TestOperationJournal::reportHasItsTimeAndDrive()
{
    writeTwo();
    QCOMPARE(last().endedAt, noon);
    QCOMPARE(last().driveName, QStringLiteral("Z7.3"));
    QCOMPARE(last().deviceId, connectedDrive(3).deviceId());
}

void TestOperationJournal::endOfOneOperationReplacesLastOne()
{
    writeTwo();
    journal.ended(ask(DriveOperation::FactoryReset), pass({}), noon.addSecs(1));
    QCOMPARE(last().operation, DriveOperation::FactoryReset);
    QCOMPARE(last().endedAt, noon.addSecs(1));
}

void TestOperationJournal::reportBelongsToItsDriveAlone()
{
    writeTwo();
    journal.ended(ask(DriveOperation::Store, {}, 4), pass({}, 4), noon);
    QCOMPARE(last(3).operation, DriveOperation::Write);
    QCOMPARE(last(4).operation, DriveOperation::Store);
    QCOMPARE(last(5).operation, DriveOperation::None);
}

void TestOperationJournal::endIsTakenOnce()
{
    const int request = ask(DriveOperation::Store);
    QVERIFY(journal.ended(request, pass({}), noon));
    QVERIFY(!journal.ended(request, pass({}), noon.addSecs(1)));
    QVERIFY(!journal.notRun(request, NotRun::Replaced, noon));
    QCOMPARE(last().endedAt, noon);
    QVERIFY(journal.notRun().isEmpty());
}

void TestOperationJournal::unknownRequestIsNoOperation()
{
    QVERIFY(!journal.began(4711));
    QVERIFY(!journal.ended(4711, pass({}), noon));
    QVERIFY(!journal.notRun(4711, NotRun::Cancelled, noon));
}

void TestOperationJournal::laterReadingIsReadBack()
{
    writeTwo();
    QCOMPARE(textOf(last().readBackEqual), QString());
    QVERIFY(journal.takeReadings(pass({read(11, 5)})));
    QCOMPARE(textOf(last().readBackEqual), QStringLiteral("11"));
    QVERIFY(journal.takeReadings(pass({read(11, 5), read(12, 7)})));
    QCOMPARE(textOf(last().readBackEqual), QStringLiteral("11 12"));
    QCOMPARE(textOf(last().readBackDifferent), QString());
}

void TestOperationJournal::readingWithoutWriteSaysNothing()
{
    QVERIFY(!journal.takeReadings(pass({read(11, 5)})));
    journal.ended(ask(DriveOperation::Store), pass({}), noon);
    QVERIFY(!journal.takeReadings(pass({read(11, 5)})));
    QCOMPARE(textOf(last().readBackEqual), QString());
}

void TestOperationJournal::otherValueIsReadBackAsDifferent()
{
    writeTwo();
    QVERIFY(journal.takeReadings(pass({read(11, 6)})));
    QCOMPARE(textOf(last().readBackDifferent), QStringLiteral("11"));
    QVERIFY2(!journal.takeReadings(pass({read(11, 6)})), "the same again is no news");
}

void TestOperationJournal::differentValueThatComesRightIsEqual()
{
    writeTwo();
    journal.takeReadings(pass({read(11, 6)}));
    QVERIFY(journal.takeReadings(pass({read(11, 5)})));
    QCOMPARE(textOf(last().readBackEqual), QStringLiteral("11"));
    QCOMPARE(textOf(last().readBackDifferent), QString());
}

void TestOperationJournal::equalValueStaysReadBack()
{
    writeTwo();
    journal.takeReadings(pass({read(11, 5)}));
    QVERIFY(!journal.takeReadings(pass({read(11, 6)})));
    QCOMPARE(textOf(last().readBackEqual), QStringLiteral("11"));
}

void TestOperationJournal::readingOfAnotherDriveIsNotReadBack()
{
    writeTwo();
    QVERIFY(!journal.takeReadings(pass({read(11, 5)}, 4)));
    QCOMPARE(textOf(last().readBackEqual), QString());
}

void TestOperationJournal::readingThatFailedIsNotReadBack_data()
{
    QTest::addColumn<int>("state");
    QTest::newRow("refused") << int(Z7ParamOutcome::Refused);
    QTest::newRow("damaged") << int(Z7ParamOutcome::Uncertain);
    QTest::newRow("not sent in a pass cut short") << int(Z7ParamOutcome::Unsent);
}

void TestOperationJournal::readingThatFailedIsNotReadBack()
{
    QFETCH(int, state);
    writeTwo();
    QVERIFY(!journal.takeReadings(pass({read(11, 5, Z7ParamOutcome::State(state))})));
    QVERIFY(!journal.takeReadings(pass({read(11, 6, Z7ParamOutcome::State(state))})));
    QCOMPARE(textOf(last().readBackEqual + last().readBackDifferent), QString());
}

void TestOperationJournal::refusedAndUncertainValuesAreNotReadBack()
{
    const int request = ask(DriveOperation::Write, {userChange(11, 5), userChange(12, 7), userChange(13, 9)});
    journal.ended(request,
        pass({write(11, Z7ParamOutcome::Refused), write(12, Z7ParamOutcome::Uncertain),
            write(13, Z7ParamOutcome::Unsent)}),
        noon);
    QVERIFY(!journal.takeReadings(pass({read(11, 5), read(12, 7), read(13, 9)})));
}

void TestOperationJournal::passWithErrorReadsNothingBack()
{
    writeTwo();
    Z7PassOutcome outcome = pass({read(11, 5)});
    outcome.error = TelegramError::WrongChecksum;
    QVERIFY(!journal.takeReadings(outcome));
}

void TestOperationJournal::passOfWriteItselfReadsNothingBack()
{
    const int request = ask(DriveOperation::Write, {userChange(1, 5)});
    journal.ended(request, pass({read(1, 5), write(1, Z7ParamOutcome::Answered)}), noon);
    QCOMPARE(textOf(last().done), QStringLiteral("1"));
    QCOMPARE(textOf(last().readBackEqual), QString());
}

void TestOperationJournal::drivesConnectedAnewReadNothingBack()
{
    writeTwo();
    journal.takeReadings(pass({read(11, 5)}));
    journal.endReadings();
    QVERIFY(!journal.takeReadings(pass({read(12, 7)})));
    QCOMPARE(textOf(last().readBackEqual), QStringLiteral("11"));
}

void TestOperationJournal::valueBeyondWireComesBackDifferent()
{
    const int request = ask(DriveOperation::Write, {userChange(11, 99999)});
    journal.ended(request, pass({write(11, Z7ParamOutcome::Answered)}), noon);
    journal.takeReadings(pass({read(11, 99999 & 0xFFFF)}));
    QCOMPARE(textOf(last().readBackDifferent), QStringLiteral("11"));
}

void TestOperationJournal::newAddressTakesReportAlong()
{
    writeTwo();
    const int request = ask(DriveOperation::ChangeAddress);
    journal.ended(request, pass({write(82, Z7ParamOutcome::Answered)}, 5), noon);
    QCOMPARE(last(5).operation, DriveOperation::ChangeAddress);
    QCOMPARE(last(5).driveName, QStringLiteral("Z7.5"));
    QCOMPARE(last(3).operation, DriveOperation::None);
}

void TestOperationJournal::newAddressTakesWhatDidNotRunAlong()
{
    journal.notRun(ask(DriveOperation::Store), NotRun::Replaced, noon);
    journal.notRun(ask(DriveOperation::Store, {}, 4), NotRun::Replaced, noon);
    journal.ended(ask(DriveOperation::ChangeAddress), pass({write(82, Z7ParamOutcome::Answered)}, 5), noon);
    QCOMPARE(journal.notRun().at(0).deviceId, connectedDrive(5).deviceId());
    QCOMPARE(journal.notRun().at(0).driveName, QStringLiteral("Z7.5"));
    QCOMPARE(journal.notRun().at(1).driveName, QStringLiteral("Z7.4"));
}

void TestOperationJournal::refusedAddressLeavesDriveWhereItIs()
{
    journal.ended(ask(DriveOperation::ChangeAddress), pass({write(82, Z7ParamOutcome::Refused)}), noon);
    QCOMPARE(textOf(last(3).refused), QStringLiteral("82"));
}

void TestOperationJournal::operationThatDidNotRunIsKept()
{
    QVERIFY(journal.notRun(ask(DriveOperation::Store), NotRun::TransferRunning, noon));
    QCOMPARE(journal.notRun().size(), 1);
    const NotRunOperation entry = journal.notRun().first();
    QCOMPARE(entry.operation, DriveOperation::Store);
    QCOMPARE(entry.driveName, QStringLiteral("Z7.3"));
    QCOMPARE(entry.at, noon);
    QCOMPARE(entry.reason, NotRun::TransferRunning);
}

void TestOperationJournal::operationThatDidNotRunLeavesReport()
{
    writeTwo();
    journal.notRun(ask(DriveOperation::Store), NotRun::TransferRunning, noon);
    QCOMPARE(last().operation, DriveOperation::Write);
    QVERIFY2(journal.takeReadings(pass({read(11, 5)})), "and what it waits for");
}

void TestOperationJournal::sameOperationThatRunsTakesItAway()
{
    journal.notRun(ask(DriveOperation::Store), NotRun::TransferRunning, noon);
    const int request = ask(DriveOperation::Store);
    QCOMPARE(journal.notRun().size(), 1);
    QVERIFY(journal.began(request));
    QVERIFY(journal.notRun().isEmpty());
}

void TestOperationJournal::otherOperationOrDriveLeavesIt()
{
    journal.notRun(ask(DriveOperation::Store), NotRun::TransferRunning, noon);
    QVERIFY(!journal.began(ask(DriveOperation::Write)));
    QVERIFY(!journal.began(ask(DriveOperation::Store, {}, 4)));
    QCOMPARE(journal.notRun().size(), 1);
}

void TestOperationJournal::operationThatDidNotRunTwiceStandsOnce()
{
    journal.notRun(ask(DriveOperation::Store), NotRun::TransferRunning, noon);
    journal.notRun(ask(DriveOperation::Write), NotRun::Replaced, noon.addSecs(1));
    journal.notRun(ask(DriveOperation::Store), NotRun::Cancelled, noon.addSecs(2));
    QCOMPARE(journal.notRun().size(), 2);
    QCOMPARE(journal.notRun().last().operation, DriveOperation::Store);
    QCOMPARE(journal.notRun().last().reason, NotRun::Cancelled);
}

void TestOperationJournal::operationThatDidNotRunIsDismissed()
{
    journal.notRun(ask(DriveOperation::Store), NotRun::TransferRunning, noon);
    journal.notRun(ask(DriveOperation::Write), NotRun::Replaced, noon);
    journal.dismissNotRun(0);
    QCOMPARE(journal.notRun().size(), 1);
    QCOMPARE(journal.notRun().first().operation, DriveOperation::Write);
}

void TestOperationJournal::missingEntryIsNotDismissed()
{
    journal.notRun(ask(DriveOperation::Store), NotRun::TransferRunning, noon);
    journal.dismissNotRun(1);
    journal.dismissNotRun(-1);
    QCOMPARE(journal.notRun().size(), 1);
}

void TestOperationJournal::fileIsComparedWithWhatWasRead()
{
    Z7Services::instance()->definitions(QStringLiteral("V123"))->load();
    Z7Device drive = withValue(withValue(connectedDrive(3), 11, 100), 12, 200);
    drive.parameterSet.insert(Z7DeviceParam(13, 0, 1, false));
    const Z7DeviceParamSet file = changeSet({userChange(11, 100), userChange(12, 5000), userChange(13, 0),
        userChange(4711, 1), userChange(30, 1)});
    journal.fileOpened(drive, file, noon);
    const FileComparison comparison = last().file;
    QCOMPARE(last().operation, DriveOperation::OpenFile);
    QVERIFY(last().isComplete);
    QCOMPARE(comparison.equal, 1);
    QCOMPARE(comparison.different, 1);
    QCOMPARE(comparison.unread, 1);
    QCOMPARE(comparison.unknown, 2);
    QCOMPARE(comparison.outOfLimits, 1);
}

void TestOperationJournal::fileReplacesReportOfItsDrive()
{
    writeTwo();
    journal.fileOpened(connectedDrive(4), changeSet({userChange(11, 1)}), noon);
    QCOMPARE(last(3).operation, DriveOperation::Write);
    journal.fileOpened(connectedDrive(3), changeSet({userChange(11, 1)}), noon);
    QCOMPARE(last(3).operation, DriveOperation::OpenFile);
    QVERIFY2(!journal.takeReadings(pass({read(11, 5)})), "nothing of a file was written");
}

QTEST_GUILESS_MAIN(TestOperationJournal)

#include "tst_operationjournal.moc"
