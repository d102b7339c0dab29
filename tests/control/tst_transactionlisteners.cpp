// Who hears from which thread, and how long: the list alone, without a bus and without pages.

#include "control/transactionlisteners.h"
#include "tests/control/testedcontroller.h"

#include <QTest>

#include <optional>

using namespace Z7CommInterface;

namespace {

const Z7Device drive = connectedDrive(3);

bool isOfTheShownDrive()
{
    return false;
}

bool isOfAnotherDrive()
{
    return true;
}

TransactionListener page(IDeviceDataCallback *callback)
{
    TransactionListener listener(callback);
    listener.keepsToOneDrive = true;
    return listener;
}

/// When a listener signs up.
enum class SignUp { BeforeThePass, WhileTheStartIsOnItsWay, DuringThePass };

} // namespace

Q_DECLARE_METATYPE(SignUp)

class TestTransactionListeners : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void listenersHearNewsInOrderInWhichTheySignedUp();
    void listenerThatSignsUpTwiceHearsOnce();
    void listenerThatIsMissingHearsNothing();
    void listenerHearsItsThreadAlone();
    void endOfTransactionForgetsItsListeners();
    void emptiedListsHearNothing();
    void removedListenerHearsNothing();
    void listenerRemovedByAnotherHearsNothing();

    void awaitedTransferIsHeardThoughListsWereEmptied();
    void awaitedTransferIsHeardOnce();
    void recordOfAnotherThreadIsNotAwaitedOne();
    void newestAwaitingListenerHears();
    void removedListenerAwaitsNothing();

    void recordOfAnotherDriveReachesPageThatKnewOfPass_data();
    void recordOfAnotherDriveReachesPageThatKnewOfPass();
    void recordOfShownDriveReachesPageThatSignedUpLate();
    void recordOfAnotherDriveReachesWhoeverIsAboutAllDrives();
    void recordOfNextPassReachesPageThatSignedUpLate();
    void driveSelectedByListenerBeforeCounts();

private:
    /// A pass of the live update has begun, and its start has been heard of.
    void beginPass() { listeners->transactionStarted(DevicePolling, 21, drive); }

    QStringList journal;
    NotingListener first {"first", &journal};
    NotingListener second {"second", &journal};
    bool isBusy = false;
    std::optional<TransactionListeners> listeners;
};

void TestTransactionListeners::init()
{
    isBusy = false;
    listeners.emplace([this](ThreadID) { return isBusy; });
    journal.clear();
    first.notes.clear();
    second.notes.clear();
}

void TestTransactionListeners::listenersHearNewsInOrderInWhichTheySignedUp()
{
    listeners->add(DevicePolling, {&second, &first});
    listeners->transactionStarted(DevicePolling, 21, drive);
    listeners->transactionProgress(DevicePolling);
    listeners->deviceUpdate(DevicePolling, drive, isOfTheShownDrive);
    listeners->transactionTerminated(DevicePolling);
    QCOMPARE(journal,
        (QStringList {"second: started 21 Z7.3", "first: started 21 Z7.3", "second: progress",
            "first: progress", "second: record Z7.3", "first: record Z7.3", "second: terminated",
            "first: terminated"}));
}

void TestTransactionListeners::listenerThatSignsUpTwiceHearsOnce()
{
    listeners->add(DevicePolling, {&first, &second, &first});
    listeners->add(DevicePolling, {&first});
    listeners->transactionProgress(DevicePolling);
    QCOMPARE(journal, (QStringList {"first: progress", "second: progress"}));
}

void TestTransactionListeners::listenerThatIsMissingHearsNothing()
{
    IDeviceDataCallback *const noBar = nullptr;
    listeners->add(DevicePolling, {noBar, &first});
    listeners->transactionProgress(DevicePolling);
    QCOMPARE(journal, QStringList {"first: progress"});
}

void TestTransactionListeners::listenerHearsItsThreadAlone()
{
    listeners->add(DevicePolling, {&first});
    for (const ThreadID other : {ScanDevice, TransferTelegramStack}) {
        listeners->transactionStarted(other, 14, drive);
        listeners->transactionProgress(other);
        listeners->deviceUpdate(other, drive, isOfTheShownDrive);
        listeners->transactionTerminated(other);
    }
    QCOMPARE(journal, QStringList());
}

void TestTransactionListeners::endOfTransactionForgetsItsListeners()
{
    listeners->add(DevicePolling, {&first});
    listeners->add(ScanDevice, {&second});
    listeners->transactionTerminated(DevicePolling);
    journal.clear();
    listeners->deviceUpdate(DevicePolling, drive, isOfTheShownDrive);
    listeners->deviceUpdate(ScanDevice, drive, isOfTheShownDrive);
    QCOMPARE(journal, QStringList {"second: record Z7.3"});
}

void TestTransactionListeners::emptiedListsHearNothing()
{
    listeners->add(DevicePolling, {&first});
    listeners->add(ScanDevice, {&second});
    listeners->removeAll();
    listeners->transactionProgress(DevicePolling);
    listeners->transactionProgress(ScanDevice);
    QCOMPARE(journal, QStringList());
}

void TestTransactionListeners::removedListenerHearsNothing()
{
    listeners->add(DevicePolling, {&first, &second});
    listeners->add(ScanDevice, {&first});
    listeners->remove(&first);
    listeners->transactionProgress(DevicePolling);
    listeners->transactionProgress(ScanDevice);
    QCOMPARE(journal, QStringList {"second: progress"});
}

void TestTransactionListeners::listenerRemovedByAnotherHearsNothing()
{
    class Remover : public NotingListener
    {
    public:
        std::function<void()> removeNext;
        void transactionProgress() override { removeNext(); }
    };
    Remover remover;
    remover.removeNext = [this] { listeners->remove(&first); };
    listeners->add(DevicePolling, {&remover, &first, &second});
    listeners->transactionProgress(DevicePolling);
    QCOMPARE(journal, QStringList {"second: progress"});
}

void TestTransactionListeners::awaitedTransferIsHeardThoughListsWereEmptied()
{
    listeners->awaitTransfer(&first);
    listeners->add(TransferTelegramStack, {&first, &second});
    listeners->removeAll();
    listeners->deviceUpdate(TransferTelegramStack, drive, isOfTheShownDrive);
    listeners->transactionTerminated(TransferTelegramStack);
    QCOMPARE(journal, (QStringList {"first: record Z7.3", "first: terminated"}));
}

void TestTransactionListeners::awaitedTransferIsHeardOnce()
{
    listeners->awaitTransfer(&first);
    for (int transfer = 0; transfer < 2; ++transfer) {
        listeners->deviceUpdate(TransferTelegramStack, drive, isOfTheShownDrive);
        listeners->transactionTerminated(TransferTelegramStack);
    }
    QCOMPARE(journal, (QStringList {"first: record Z7.3", "first: terminated"}));
}

void TestTransactionListeners::recordOfAnotherThreadIsNotAwaitedOne()
{
    listeners->awaitTransfer(&first);
    listeners->deviceUpdate(DevicePolling, drive, isOfTheShownDrive);
    QCOMPARE(journal, QStringList());
    listeners->deviceUpdate(TransferTelegramStack, drive, isOfTheShownDrive);
    QCOMPARE(journal, QStringList {"first: record Z7.3"});
}

void TestTransactionListeners::newestAwaitingListenerHears()
{
    listeners->awaitTransfer(&first);
    listeners->awaitTransfer(&second);
    listeners->deviceUpdate(TransferTelegramStack, drive, isOfTheShownDrive);
    QCOMPARE(journal, QStringList {"second: record Z7.3"});
}

void TestTransactionListeners::removedListenerAwaitsNothing()
{
    listeners->awaitTransfer(&first);
    listeners->remove(&second);
    listeners->remove(&first);
    listeners->deviceUpdate(TransferTelegramStack, drive, isOfTheShownDrive);
    QCOMPARE(journal, QStringList());
}

void TestTransactionListeners::recordOfAnotherDriveReachesPageThatKnewOfPass_data()
{
    QTest::addColumn<SignUp>("signUp");
    QTest::addColumn<bool>("hears");
    QTest::newRow("before the pass") << SignUp::BeforeThePass << true;
    QTest::newRow("while the start is on its way") << SignUp::WhileTheStartIsOnItsWay << false;
    QTest::newRow("during the pass") << SignUp::DuringThePass << false;
}

void TestTransactionListeners::recordOfAnotherDriveReachesPageThatKnewOfPass()
{
    QFETCH(SignUp, signUp);
    isBusy = signUp != SignUp::BeforeThePass;
    if (signUp == SignUp::DuringThePass)
        beginPass();
    listeners->add(DevicePolling, {page(&first)});
    if (signUp != SignUp::DuringThePass)
        beginPass();
    first.notes.clear();
    listeners->deviceUpdate(DevicePolling, drive, isOfAnotherDrive);
    QTEST(!first.notes.isEmpty(), "hears");
}

void TestTransactionListeners::recordOfShownDriveReachesPageThatSignedUpLate()
{
    beginPass();
    listeners->add(DevicePolling, {page(&first)});
    listeners->deviceUpdate(DevicePolling, drive, isOfTheShownDrive);
    QCOMPARE(journal, QStringList {"first: record Z7.3"});
}

void TestTransactionListeners::recordOfAnotherDriveReachesWhoeverIsAboutAllDrives()
{
    beginPass();
    listeners->add(DevicePolling, {&first});
    listeners->deviceUpdate(DevicePolling, drive, isOfAnotherDrive);
    QCOMPARE(journal, QStringList {"first: record Z7.3"});
}

void TestTransactionListeners::recordOfNextPassReachesPageThatSignedUpLate()
{
    beginPass();
    listeners->add(DevicePolling, {page(&first)});
    listeners->deviceUpdate(DevicePolling, drive, isOfAnotherDrive);
    beginPass();
    journal.clear();
    listeners->deviceUpdate(DevicePolling, drive, isOfAnotherDrive);
    QCOMPARE(journal, QStringList {"first: record Z7.3"});
}

void TestTransactionListeners::driveSelectedByListenerBeforeCounts()
{
    beginPass();
    listeners->add(DevicePolling, {&first, page(&second)});
    // The control bar has a dialog up, in which the user clicks on another drive.
    listeners->deviceUpdate(DevicePolling, drive, [this] { return !first.notes.isEmpty(); });
    QCOMPARE(journal, QStringList {"first: record Z7.3"});
}

QTEST_GUILESS_MAIN(TestTransactionListeners)

#include "tst_transactionlisteners.moc"
