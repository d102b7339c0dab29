// What the window can say, from the controller at work on a bus: each word only when it is known.

#include "tests/control/controlleronabus.h"
#include "tests/support/messageboxes.h"

#include <QSignalSpy>
#include <QTest>

#include <optional>

using Z7CommInterface::NotRun;
using State = Freshness::State;

namespace {

constexpr int status = 1;
constexpr int table = TestedController::tablePage;
constexpr int quickMs = 10;
constexpr int neverMs = 3600000;

void setInterval(int ms)
{
    Z7Services::instance()->options()->setPollingInterval(ms);
}

using Request = void (*)(Z7MainController &);

} // namespace

Q_DECLARE_METATYPE(Request)
Q_DECLARE_METATYPE(State)

class TestKnowledge : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { tested.reset(); }

    void driveIsReadWhenFirstFullPassIsOver();
    void driveThatDoesNotAnswerIsNeverRead();
    void passCutShortReadsNothing();
    void passWithErrorReadsNothing();
    void recordOfAnotherDriveReadsNothing();
    void operationThatReadsNoPageReadsNothing_data();
    void operationThatReadsNoPageReadsNothing();
    void readingOnRequestCounts();
    void frozenValuesBecomeStale();
    void sleepingComputerCountsToo();
    void driveThatAnswersAgainIsRead();
    void passFromBeforeConnectingReadsNothing();
    void switchedOffLiveUpdateIsSaid();
    void cancelledLiveUpdateIsHeldUntilPageIsShown();
    void transferAndLentBusLetDriveWait();
    void freshnessIsToldOncePerSecond();
    void newAddressHasNotBeenRead();

    void writeTellsWhatWasTakenAndReadBack();
    void refusalStaysWhilePollingGoesOn();
    void writeThatEndsEarlyTellsRest();
    void storedIsSaidWhereDriveHasStored();
    void operationEndsUnderItsName_data();
    void operationEndsUnderItsName();
    void reportFollowsSelectedDrive();
    void reportFollowsNewAddress();
    void readBackWaitsForItsPage();
    void endIsToldWithItsReport();

    void storeDuringWriteIsNotRun();
    void writeBeforeClickOnAnotherPageIsNotRun();
    void waitingStoreIsCancelled();
    void programmerHoldsOperationBack();
    void nextStoreTakesNoteAway();
    void dismissedNoteIsGone();
    void nothingToDoSaysNothing_data();
    void nothingToDoSaysNothing();
    void answerNoSaysNothing();
    void wizardsLogOnSaysNothing();

    void valuesThatWereNeverReadAreCounted();
    void beforeFullReadNothingIsSaidOfUnreadValues();
    void allValuesReadIsNone();

    void changesAreCountedByPage();
    void changesOfAnotherDriveDoNotCount();
    void changeFromFileOrDefaultsCounts();
    void rowTellsPageOfItsParameter();
    void withoutDriveNothingIsPending();

    void secondDriveOfSameIdIsNamed();
    void sameDriveTwiceIsNoSecondDrive();
    void refusedDriveIsNamed();
    void folderWithoutDefinitionsIsNoticed();

private:
    Z7MainController &controller() { return tested->controller; }
    Z7Knowledge &knowledge() { return tested->controller.knowledge(); }
    State state() { return knowledge().fresh().state; }
    const OperationReport &report()
    {
        static const OperationReport nothing;
        return knowledge().lastOperation() ? *knowledge().lastOperation() : nothing;
    }
    bool hasEnded(DriveOperation operation) { return report().operation == operation; }
    /// Shows a page of drive 3 with the live update on, and waits for the first full pass.
    void showReadDrive(int page = table);
    /// The same, and the next pass of the live update is far away.
    void showReadDriveInPause(int page = table);
    /// Slows the bus down, and waits for the begin of a pass of half a second.
    void reachSlowPass();
    bool isUnderWay() { return tested->deviceControl.notes.contains(QStringLiteral("progress")); }
    const NotRunOperation onlyNotRun() { return knowledge().notRun().value(0); }

    std::optional<ControllerOnABus> tested;
    int id3 = 0;
    qint64 nowMs = 0; ///< what the clock shows
};

void TestKnowledge::init()
{
    tested.emplace();
    id3 = tested->drive3().deviceId();
    nowMs = 1000;
    knowledge().setClock([this] { return nowMs; });
    setInterval(quickMs);
    tested->connectDrives({tested->drive3()});
}

void TestKnowledge::showReadDrive(int page)
{
    tested->showPage(page, id3);
    QTRY_COMPARE(state(), State::Read);
}

void TestKnowledge::showReadDriveInPause(int page)
{
    showReadDrive(page);
    setInterval(neverMs);
    // Only the end of another pass makes it fresh again.
    nowMs += 60000;
    QCOMPARE(state(), State::Stale);
    QTRY_COMPARE(state(), State::Read);
    tested->forgetNotes();
    tested->forgetRequests();
}

void TestKnowledge::reachSlowPass()
{
    tested->slowDown();
    tested->forgetNotes();
    const QStringList &notes = tested->deviceControl.notes;
    // The news of one may have been under way, and its pass be over by now.
    QTRY_VERIFY(notes.filter(QStringLiteral("started")).size() >= 2);
}

// --- Fresh ---

void TestKnowledge::driveIsReadWhenFirstFullPassIsOver()
{
    QCOMPARE(state(), State::NoDrive);
    tested->showPage(table, id3);
    QCOMPARE(state(), State::NeverRead);
    const QDateTime before = QDateTime::currentDateTime();
    QTRY_COMPARE(state(), State::Read);
    QVERIFY(controller().device(id3).parametersComplete);
    QCOMPARE(knowledge().fresh().driveName, QStringLiteral("Z7.3"));
    QVERIFY(before.msecsTo(knowledge().fresh().readAt) >= -1);
    QCOMPARE(knowledge().fresh().readAt.timeSpec(), Qt::LocalTime);
}

void TestKnowledge::driveThatDoesNotAnswerIsNeverRead()
{
    tested->bus.command("fault 3 no-answer");
    tested->showPage(table, id3);
    const QSignalSpy records(&knowledge(), SIGNAL(recordChanged()));
    QTRY_VERIFY(records.size() >= 2);
    QCOMPARE(state(), State::NeverRead);
    QVERIFY(knowledge().fresh().readAt.isNull());
}

void TestKnowledge::passCutShortReadsNothing()
{
    tested->slowDown();
    tested->showPage(table, id3);
    QTRY_VERIFY(isUnderWay());
    const QSignalSpy records(&knowledge(), SIGNAL(recordChanged()));
    controller().cancelCommunication();
    QTRY_VERIFY(!records.isEmpty());
    QCOMPARE(controller().device(id3).error, 0);
    QTRY_COMPARE(state(), State::Held);
    QVERIFY(knowledge().fresh().readAt.isNull());
}

void TestKnowledge::passWithErrorReadsNothing()
{
    // The last telegram of each pass.
    tested->bus.command("fault 3 no-answer param=83");
    tested->showPage(table, id3);
    const QSignalSpy records(&knowledge(), SIGNAL(recordChanged()));
    QTRY_VERIFY(records.size() >= 2);
    QCOMPARE(state(), State::NeverRead);
}

void TestKnowledge::recordOfAnotherDriveReadsNothing()
{
    tested->connectDrives({tested->drive3(), connectedDrive(4)});
    showReadDriveInPause();
    const int id4 = connectedDrive(4).deviceId();
    tested->showPage(table, id4);
    QCOMPARE(state(), State::NeverRead);
    controller().PostDeviceUpdate(Z7CommInterface::DevicePolling, controller().device(id3));
    QCOMPARE(state(), State::NeverRead);
    QCOMPARE(knowledge().fresh().driveName, QStringLiteral("Z7.4"));
}

void TestKnowledge::operationThatReadsNoPageReadsNothing_data()
{
    QTest::addColumn<Request>("request");
    const auto row = [](const char *name, Request request) { QTest::newRow(name) << request; };
    row("store", [](Z7MainController &c) { c.StoreData(); });
    row("log on", [](Z7MainController &c) { c.readDeviceStatus(c.currentDeviceRecord(), nullptr); });
    row("write", [](Z7MainController &c) {
        c.postUserModifiedParameter(userChange(30, 7));
        c.UploadData();
    });
}

void TestKnowledge::operationThatReadsNoPageReadsNothing()
{
    QFETCH(Request, request);
    showReadDriveInPause();
    nowMs += qint64(3) * neverMs;
    QCOMPARE(state(), State::Stale);
    request(controller());
    QTRY_VERIFY(tested->isOver());
    QCOMPARE(state(), State::Stale);
}

void TestKnowledge::readingOnRequestCounts()
{
    showReadDriveInPause();
    nowMs += qint64(3) * neverMs;
    QCOMPARE(state(), State::Stale);
    controller().DownloadData();
    QTRY_VERIFY(hasEnded(DriveOperation::Read));
    QCOMPARE(state(), State::Read);
    QCOMPARE(report().done.size(), 7);
}

void TestKnowledge::frozenValuesBecomeStale()
{
    showReadDrive();
    tested->bus.command("fault 3 no-answer");
    const QSignalSpy records(&knowledge(), SIGNAL(recordChanged()));
    QTRY_VERIFY(records.size() >= 2);
    const QDateTime readAt = knowledge().fresh().readAt;
    QVERIFY(readAt.isValid());
    const QSignalSpy told(&knowledge(), SIGNAL(freshChanged()));
    nowMs += 60000;
    QTRY_VERIFY2(!told.isEmpty(), "the timer tells it, with no record at all");
    QCOMPARE(state(), State::Stale);
    QCOMPARE(knowledge().fresh().readAt, readAt);
}

void TestKnowledge::sleepingComputerCountsToo()
{
    showReadDriveInPause();
    const QSignalSpy told(&knowledge(), SIGNAL(freshChanged()));
    QCOMPARE(state(), State::Read);
    nowMs += qint64(3) * neverMs;
    QTRY_VERIFY(!told.isEmpty());
    QCOMPARE(state(), State::Stale);
}

void TestKnowledge::driveThatAnswersAgainIsRead()
{
    showReadDrive();
    tested->bus.command("fault 3 no-answer");
    nowMs += 60000;
    QTRY_COMPARE(state(), State::Stale);
    tested->bus.command("clear-faults");
    QTRY_COMPARE(state(), State::Read);
}

void TestKnowledge::passFromBeforeConnectingReadsNothing()
{
    tested->slowDown();
    tested->showPage(status, id3);
    QTRY_VERIFY(isUnderWay());
    const QSignalSpy records(&knowledge(), SIGNAL(recordChanged()));
    setInterval(neverMs);
    tested->connectDrives({tested->drive3()});
    QTRY_VERIFY(!records.isEmpty());
    tested->showPage(status, id3);
    QVERIFY(knowledge().fresh().readAt.isNull());
    QCOMPARE(state(), State::NeverRead);
}

void TestKnowledge::switchedOffLiveUpdateIsSaid()
{
    showReadDrive();
    setInterval(0);
    QTRY_COMPARE(state(), State::LiveValuesOff);
    setInterval(quickMs);
    QTRY_COMPARE(state(), State::Read);
}

void TestKnowledge::cancelledLiveUpdateIsHeldUntilPageIsShown()
{
    showReadDrive();
    controller().cancelCommunication();
    QTRY_COMPARE(state(), State::Held);
    tested->showPage(status, id3);
    QCOMPARE(state(), State::Read);
}

void TestKnowledge::transferAndLentBusLetDriveWait()
{
    showReadDriveInPause();
    controller().StoreData();
    QCOMPARE(state(), State::Waiting);
    QTRY_COMPARE(state(), State::Read);
    controller().lendBus(true);
    QCOMPARE(state(), State::Waiting);
    controller().lendBus(false);
    QCOMPARE(state(), State::Read);
}

void TestKnowledge::freshnessIsToldOncePerSecond()
{
    showReadDrive();
    const QSignalSpy records(&knowledge(), SIGNAL(recordChanged()));
    const QSignalSpy told(&knowledge(), SIGNAL(freshChanged()));
    const QDateTime before = QDateTime::currentDateTime();
    QTRY_VERIFY(records.size() >= 10);
    QVERIFY(told.size() <= before.secsTo(QDateTime::currentDateTime()) + 2);
}

void TestKnowledge::newAddressHasNotBeenRead()
{
    showReadDriveInPause();
    controller().sendChangeAdress(5);
    QTRY_VERIFY(hasEnded(DriveOperation::ChangeAddress));
    QCOMPARE(knowledge().fresh().driveName, QStringLiteral("Z7.5"));
    QCOMPARE(state(), State::NeverRead);
}

// --- operations ---

void TestKnowledge::writeTellsWhatWasTakenAndReadBack()
{
    showReadDriveInPause();
    tested->typeInTable(30, "7");
    tested->typeInTable(31, "-7");
    controller().UploadData();
    QTRY_VERIFY(hasEnded(DriveOperation::Write));
    QCOMPARE(report().done, QVector<int>({30, 31}));
    QCOMPARE(report().store, Z7PassOutcome::NotAsked);
    QVERIFY(report().isComplete);
    QVERIFY2(report().readBackEqual.isEmpty(), "what was read before the write is no reading back");
    controller().cancelCommunication();
    setInterval(quickMs);
    tested->showPage(table, id3);
    QTRY_COMPARE(report().readBackEqual, QVector<int>({30, 31}));
    QVERIFY(report().readBackDifferent.isEmpty());
}

void TestKnowledge::refusalStaysWhilePollingGoesOn()
{
    showReadDrive();
    tested->bus.command("fault 3 flags param=31 command=3");
    tested->typeInTable(30, "7");
    tested->typeInTable(31, "-7");
    controller().UploadData();
    QTRY_VERIFY(hasEnded(DriveOperation::Write));
    const QSignalSpy records(&knowledge(), SIGNAL(recordChanged()));
    QTRY_VERIFY(records.size() >= 3);
    QCOMPARE(report().refused, QVector<int>({31}));
    QCOMPARE(report().done, QVector<int>({30}));
    QCOMPARE(report().readBackEqual, QVector<int>({30}));
}

void TestKnowledge::writeThatEndsEarlyTellsRest()
{
    showReadDriveInPause();
    tested->bus.command("fault 3 no-answer param=30 command=3");
    tested->typeInTable(11, "5");
    tested->typeInTable(30, "7");
    tested->typeInTable(31, "-7");
    controller().UploadData();
    QTRY_VERIFY(hasEnded(DriveOperation::Write));
    QCOMPARE(report().done, QVector<int>({11}));
    QCOMPARE(report().uncertain, QVector<int>({30}));
    QCOMPARE(report().unsent, QVector<int>({31}));
    QCOMPARE(report().error, 1);
}

void TestKnowledge::storedIsSaidWhereDriveHasStored()
{
    showReadDriveInPause();
    tested->typeInTable(30, "7");
    controller().WriteAndStoreData();
    QTRY_VERIFY(hasEnded(DriveOperation::WriteAndStore));
    QCOMPARE(report().store, Z7PassOutcome::Stored);
    tested->bus.command("set 3 flash-broken 1");
    tested->typeInTable(30, "71");
    controller().UploadData();
    QTRY_VERIFY(hasEnded(DriveOperation::Write));
    controller().StoreData();
    QTRY_VERIFY(hasEnded(DriveOperation::Store));
    QCOMPARE(report().store, Z7PassOutcome::NotStored);
    QVERIFY(report().error != 0);
}

void TestKnowledge::operationEndsUnderItsName_data()
{
    QTest::addColumn<Request>("request");
    QTest::addColumn<int>("operation");
    const auto row = [](const char *name, DriveOperation operation, Request request) {
        QTest::newRow(name) << request << int(operation);
    };
    row("read", DriveOperation::Read, [](Z7MainController &c) { c.DownloadData(); });
    row("store", DriveOperation::Store, [](Z7MainController &c) { c.StoreData(); });
    row("factory reset", DriveOperation::FactoryReset,
        [](Z7MainController &c) { c.SetFactorySettingsData(); });
    row("password", DriveOperation::ChangePassword, [](Z7MainController &c) { c.SetNewPasswordData(9); });
    row("bootloader", DriveOperation::EnterBootloader,
        [](Z7MainController &c) { c.sendBootloaderInitCommand(); });
}

void TestKnowledge::operationEndsUnderItsName()
{
    QFETCH(Request, request);
    QFETCH(int, operation);
    showReadDriveInPause();
    request(controller());
    QTRY_VERIFY(hasEnded(DriveOperation(operation)));
    QCOMPARE(report().driveName, QStringLiteral("Z7.3"));
}

void TestKnowledge::reportFollowsSelectedDrive()
{
    tested->connectDrives({tested->drive3(), connectedDrive(4)});
    showReadDriveInPause();
    controller().StoreData();
    QTRY_VERIFY(hasEnded(DriveOperation::Store));
    const QSignalSpy told(&knowledge(), SIGNAL(lastOperationChanged()));
    tested->showPage(table, connectedDrive(4).deviceId());
    QCOMPARE(told.size(), 1);
    QCOMPARE(knowledge().lastOperation(), nullptr);
    tested->showPage(table, id3);
    QVERIFY(hasEnded(DriveOperation::Store));
}

void TestKnowledge::reportFollowsNewAddress()
{
    showReadDriveInPause();
    controller().sendChangeAdress(5);
    QTRY_VERIFY(hasEnded(DriveOperation::ChangeAddress));
    QCOMPARE(report().driveName, QStringLiteral("Z7.5"));
    QCOMPARE(report().done, QVector<int>({82}));
}

void TestKnowledge::readBackWaitsForItsPage()
{
    showReadDriveInPause();
    tested->typeInTable(30, "7");
    controller().UploadData();
    QTRY_VERIFY(hasEnded(DriveOperation::Write));
    controller().cancelCommunication();
    setInterval(quickMs);
    const QSignalSpy records(&knowledge(), SIGNAL(recordChanged()));
    // The status page reads no parameter; what it shows of 30 is from before the write.
    tested->showPage(status, id3);
    QTRY_VERIFY(records.size() >= 3);
    QVERIFY(report().readBackEqual.isEmpty());
    QVERIFY(report().readBackDifferent.isEmpty());
    tested->showPage(table, id3);
    QTRY_COMPARE(report().readBackEqual, QVector<int>({30}));
}

void TestKnowledge::endIsToldWithItsReport()
{
    QVector<DriveOperation> ends;
    connect(&knowledge(), &Z7Knowledge::operationEnded, this,
        [&ends](const OperationReport &ended) { ends.append(ended.operation); });
    showReadDriveInPause();
    controller().StoreData();
    QTRY_COMPARE(ends, QVector<DriveOperation>({DriveOperation::Store}));
}

// --- what has not run ---

void TestKnowledge::storeDuringWriteIsNotRun()
{
    showReadDriveInPause();
    tested->slowDown();
    tested->typeInTable(30, "7");
    controller().UploadData();
    QTRY_VERIFY(isUnderWay());
    controller().StoreData();
    QCOMPARE(knowledge().notRun().size(), 1);
    QCOMPARE(onlyNotRun().operation, DriveOperation::Store);
    QCOMPARE(onlyNotRun().reason, NotRun::TransferRunning);
    QCOMPARE(onlyNotRun().driveName, QStringLiteral("Z7.3"));
    QTRY_VERIFY(hasEnded(DriveOperation::Write));
    QCOMPARE(knowledge().notRun().size(), 1);
}

void TestKnowledge::writeBeforeClickOnAnotherPageIsNotRun()
{
    showReadDrive();
    tested->typeInTable(30, "7");
    reachSlowPass();
    controller().UploadData();
    tested->showPage(status, id3);
    QCOMPARE(knowledge().notRun().size(), 1);
    QCOMPARE(onlyNotRun().operation, DriveOperation::Write);
    QCOMPARE(onlyNotRun().reason, NotRun::Replaced);
}

void TestKnowledge::waitingStoreIsCancelled()
{
    showReadDrive();
    reachSlowPass();
    controller().StoreData();
    controller().cancelCommunication();
    QCOMPARE(onlyNotRun().operation, DriveOperation::Store);
    QCOMPARE(onlyNotRun().reason, NotRun::Cancelled);
}

void TestKnowledge::programmerHoldsOperationBack()
{
    showReadDriveInPause();
    controller().lendBus(true);
    controller().DownloadData();
    QCOMPARE(onlyNotRun().operation, DriveOperation::Read);
    QCOMPARE(onlyNotRun().reason, NotRun::BusLent);
    QCOMPARE(knowledge().lastOperation(), nullptr);
}

void TestKnowledge::nextStoreTakesNoteAway()
{
    showReadDriveInPause();
    controller().lendBus(true);
    controller().StoreData();
    controller().lendBus(false);
    const QSignalSpy told(&knowledge(), SIGNAL(notRunChanged()));
    controller().DownloadData();
    QTRY_VERIFY(hasEnded(DriveOperation::Read));
    QCOMPARE(knowledge().notRun().size(), 1);
    controller().StoreData();
    QTRY_VERIFY(hasEnded(DriveOperation::Store));
    QVERIFY(knowledge().notRun().isEmpty());
    QCOMPARE(told.size(), 1);
}

void TestKnowledge::dismissedNoteIsGone()
{
    showReadDriveInPause();
    controller().lendBus(true);
    controller().StoreData();
    const QSignalSpy told(&knowledge(), SIGNAL(notRunChanged()));
    knowledge().dismissNotRun(0);
    QVERIFY(knowledge().notRun().isEmpty());
    QCOMPARE(told.size(), 1);
}

void TestKnowledge::nothingToDoSaysNothing_data()
{
    QTest::addColumn<Request>("request");
    QTest::addColumn<bool>("isDriveShown");
    const auto row = [](const char *name, bool isDriveShown, Request request) {
        QTest::newRow(name) << request << isDriveShown;
    };
    row("write without changes", true, [](Z7MainController &c) { c.UploadData(); });
    row("write and store without changes", true, [](Z7MainController &c) { c.WriteAndStoreData(); });
    row("write without drive", false, [](Z7MainController &c) { c.UploadData(); });
    row("read without drive", false, [](Z7MainController &c) { c.DownloadData(); });
    row("store without drive", false, [](Z7MainController &c) { c.StoreData(); });
    row("factory reset without drive", false, [](Z7MainController &c) { c.SetFactorySettingsData(); });
    row("password without drive", false, [](Z7MainController &c) { c.SetNewPasswordData(9); });
}

void TestKnowledge::nothingToDoSaysNothing()
{
    QFETCH(Request, request);
    QFETCH(bool, isDriveShown);
    if (isDriveShown)
        showReadDriveInPause();
    else
        tested->showPage(table, 1);
    controller().lendBus(true);
    request(controller());
    QVERIFY(knowledge().notRun().isEmpty());
    QCOMPARE(knowledge().lastOperation(), nullptr);
}

void TestKnowledge::answerNoSaysNothing()
{
    showReadDriveInPause();
    tested->typeInTable(11, "900");
    const MessageBoxAnswerer user(QMessageBox::No);
    controller().UploadData();
    QCOMPARE(user.count(), 1);
    QVERIFY(knowledge().notRun().isEmpty());
    QCOMPARE(knowledge().lastOperation(), nullptr);
}

void TestKnowledge::wizardsLogOnSaysNothing()
{
    showReadDriveInPause();
    controller().lendBus(true);
    controller().readDeviceStatus(tested->drive3(), nullptr);
    QVERIFY(knowledge().notRun().isEmpty());
    controller().lendBus(false);
    controller().readDeviceStatus(tested->drive3(), nullptr);
    QTRY_VERIFY(tested->isOver());
    QCOMPARE(knowledge().lastOperation(), nullptr);
}

// --- values ---

void TestKnowledge::valuesThatWereNeverReadAreCounted()
{
    // Parameter 30 ends each pass; the first full pass is over all the same.
    tested->bus.command("fault 3 no-answer param=30");
    tested->showPage(table, id3);
    QTRY_VERIFY(knowledge().neverRead().isKnown);
    QCOMPARE(knowledge().neverRead().total, 7);
    QCOMPARE(knowledge().neverRead().numbers, QVector<int>({30, 31, 50, 83}));
    const QSignalSpy told(&knowledge(), SIGNAL(neverReadChanged()));
    tested->bus.command("clear-faults");
    QTRY_VERIFY(knowledge().neverRead().numbers.isEmpty());
    QCOMPARE(told.size(), 1);
}

void TestKnowledge::beforeFullReadNothingIsSaidOfUnreadValues()
{
    setInterval(neverMs);
    tested->showPage(table, id3);
    QVERIFY(!knowledge().neverRead().isKnown);
    QVERIFY(knowledge().neverRead().numbers.isEmpty());
}

void TestKnowledge::allValuesReadIsNone()
{
    showReadDrive();
    QVERIFY(knowledge().neverRead().isKnown);
    QVERIFY(knowledge().neverRead().numbers.isEmpty());
    tested->showPage(table, 1);
    QVERIFY(!knowledge().neverRead().isKnown);
}

// --- pending changes ---

void TestKnowledge::changesAreCountedByPage()
{
    showReadDriveInPause();
    const QSignalSpy told(&knowledge(), SIGNAL(pendingChanged()));
    tested->typeInTable(30, "7");
    QVERIFY(!told.isEmpty());
    tested->typeInTable(31, "-7");
    QCOMPARE(knowledge().pending().total, 2);
    QCOMPARE(knowledge().pending().onShownPage, 2);
    tested->showPage(status, id3);
    QCOMPARE(knowledge().pending().onShownPage, 0);
    QCOMPARE(knowledge().pending().onOtherPages(), 2);
    tested->showPage(table, id3);
    tested->emptyInTable(30);
    QCOMPARE(knowledge().pending().total, 1);
}

void TestKnowledge::changesOfAnotherDriveDoNotCount()
{
    tested->connectDrives({tested->drive3(), connectedDrive(4)});
    tested->showPage(table, id3);
    controller().setUserParams(connectedDrive(4).deviceId(), changeSet({userChange(30, 7)}));
    QCOMPARE(knowledge().pending().total, 0);
    QCOMPARE(knowledge().lastOperation(), nullptr);
    tested->showPage(table, connectedDrive(4).deviceId());
    QCOMPARE(knowledge().pending().total, 1);
    QVERIFY(hasEnded(DriveOperation::OpenFile));
}

void TestKnowledge::changeFromFileOrDefaultsCounts()
{
    showReadDriveInPause();
    controller().setDefaults(id3);
    QCOMPARE(knowledge().pending().total, 6);
    QCOMPARE(knowledge().pending().outOfLimits, 0);
    controller().setUserParams(id3, changeSet({userChange(30, 5000)}));
    QCOMPARE(knowledge().pending().total, 1);
    QCOMPARE(knowledge().pending().outOfLimits, 1);
    QCOMPARE(report().file.different, 1);
    controller().resetChanges(id3);
    QCOMPARE(knowledge().pending().total, 0);
}

void TestKnowledge::rowTellsPageOfItsParameter()
{
    showReadDriveInPause();
    controller().postUserModifiedParameter(userChange(30, 7)); // 0x1E
    controller().postUserModifiedParameter(userChange(82, 7)); // the address
    controller().postUserModifiedParameter(userChange(4711, 7));
    const QVector<PendingChange> rows = knowledge().pendingChanges();
    QCOMPARE(rows.size(), 3);
    QCOMPARE(rows.at(0).page, int(PageNumber::SpeedRegulation));
    QVERIFY(rows.at(0).hasActual);
    QCOMPARE(rows.at(1).page, int(PageNumber::ParameterTable));
    QCOMPARE(rows.at(2).page, int(PageNumber::ParameterTable));
}

void TestKnowledge::withoutDriveNothingIsPending()
{
    showReadDriveInPause();
    tested->typeInTable(30, "7");
    tested->connectDrives({tested->drive3()});
    QCOMPARE(knowledge().pending().total, 0);
    QVERIFY(knowledge().pendingChanges().isEmpty());
    QVERIFY(!knowledge().canRestoreChanges());
    tested->showPage(table, id3);
    QCOMPARE(knowledge().pending().total, 1);
}

// --- list of drives ---

void TestKnowledge::secondDriveOfSameIdIsNamed()
{
    tested->ports.plugUsb(QStringLiteral("ttyUSB00"), tested->bus.portPath());
    Z7Device twin = tested->drive3();
    twin.portInfo = QSerialPortInfo(QStringLiteral("ttyUSB00"));
    QCOMPARE(twin.deviceId(), id3);
    const QSignalSpy told(&knowledge(), SIGNAL(drivesChanged()));
    tested->connectDrives({tested->drive3(), twin});
    QVERIFY(!told.isEmpty());
    QCOMPARE(controller().connectedDevices().size(), 1);
    QCOMPARE(knowledge().hiddenDrives().size(), 1);
    QCOMPARE(knowledge().hiddenDrives().first().portInfo.portName(), QStringLiteral("ttyUSB0"));
    tested->connectDrives({tested->drive3()});
    QVERIFY(knowledge().hiddenDrives().isEmpty());
}

void TestKnowledge::sameDriveTwiceIsNoSecondDrive()
{
    tested->connectDrives({tested->drive3(), tested->drive3()});
    QVERIFY(knowledge().hiddenDrives().isEmpty());
}

void TestKnowledge::refusedDriveIsNamed()
{
    Z7Device unknown;
    unknown.setSoftwareVersion(QStringLiteral("V999"));
    const MessageBoxAnswerer user(QMessageBox::Ok);
    tested->connectDrives({tested->drive3(), unknown});
    QCOMPARE(knowledge().refusedDrives().size(), 1);
    QCOMPARE(knowledge().refusedDrives().first().softwareVersion, QStringLiteral("V999"));
    QVERIFY2(!knowledge().areDefinitionsMissing(), "there is a file, of another version");
}

void TestKnowledge::folderWithoutDefinitionsIsNoticed()
{
    QVERIFY(!knowledge().areDefinitionsMissing());
    QVERIFY(QFile::remove(QStringLiteral("Z7ParamDef_V123.csv")));
    const QSignalSpy told(&knowledge(), SIGNAL(drivesChanged()));
    knowledge().lookForDefinitions();
    QVERIFY(knowledge().areDefinitionsMissing());
    QCOMPARE(told.size(), 1);
    writeDefinitionsV123();
    knowledge().lookForDefinitions();
    QVERIFY(!knowledge().areDefinitionsMissing());
}

QTEST_MAIN(TestKnowledge)

#include "tst_knowledge.moc"
