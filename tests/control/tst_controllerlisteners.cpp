// Who hears of what: a listener signs up for one transaction of one thread and is forgotten when it ends.

#include "tests/control/testedcontroller.h"

#include <QTest>

#include <optional>

using namespace Z7CommInterface;

namespace {

const int id3 = connectedDrive(3).deviceId();

using Operation = void (*)(Z7MainController &);

} // namespace

Q_DECLARE_METATYPE(Operation)

class TestControllerListeners : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { tested.reset(); }

    void operationIsHeardByThoseItConcerns_data();
    void operationIsHeardByThoseItConcerns();
    void scanIsHeardByItsCallbackAlone();
    void statusReadIsHeardByControlBarBeforeItsCallback();
    void pollingIsHeardByControlBarAndShownPage();

    void listenerHearsStartProgressAndEnd();
    void listenerHearsRecordAsItCame();
    void listenerHearsOfDriveThatIsNotListed();
    void listenerOfOneThreadHearsNothingOfAnother();
    void listenerIsCalledOnceHoweverOftenItSignedUp();
    void recordAfterEndOfTransactionReachesNobody();
    void removedListenerHearsNothing();
    void listenerThatRemovesNextOneIsLastToHear();

private:
    Z7MainController &controller() { return tested->controller; }
    Z7Device record() { return controller().device(id3); }

    std::optional<TestedController> tested;
};

void TestControllerListeners::init()
{
    tested.emplace();
    tested->showTableOf({connectedDrive(3)});
}

void TestControllerListeners::operationIsHeardByThoseItConcerns_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<bool>("controlBarHears");
    QTest::addColumn<bool>("pageHears");
    const auto row = [](const char *name, Operation operation, bool controlBarHears, bool pageHears) {
        QTest::newRow(name) << operation << controlBarHears << pageHears;
    };
    row(
        "read", [](Z7MainController &c) { c.DownloadData(); }, true, true);
    row(
        "write", [](Z7MainController &c) { c.UploadData(); }, true, true);
    row(
        "write and store", [](Z7MainController &c) { c.WriteAndStoreData(); }, true, true);
    row(
        "store", [](Z7MainController &c) { c.StoreData(); }, true, true);
    row(
        "change the address", [](Z7MainController &c) { c.sendChangeAdress(9); }, true, true);
    row(
        "factory reset", [](Z7MainController &c) { c.SetFactorySettingsData(); }, true, false);
    row(
        "set a password", [](Z7MainController &c) { c.SetNewPasswordData(9); }, true, false);
    row(
        "go into the bootloader", [](Z7MainController &c) { c.sendBootloaderInitCommand(); }, false, true);
}

void TestControllerListeners::operationIsHeardByThoseItConcerns()
{
    QFETCH(Operation, operation);
    tested->typeInTable(30, "7");
    operation(controller());
    tested->forgetNotes();
    controller().PostDeviceUpdate(TransferTelegramStack, withValue(record(), 11, 555));
    QTEST(!tested->deviceControl.notes.isEmpty(), "controlBarHears");
    QTEST(tested->tableText(11, TestedController::deviceValueColumn) == QStringLiteral("555"), "pageHears");
}

void TestControllerListeners::scanIsHeardByItsCallbackAlone()
{
    NotingListener callback;
    controller().scanDevice(connectedDrive(1), &callback);
    tested->forgetNotes();
    controller().PostDeviceUpdate(ScanDevice, connectedDrive(5));
    QCOMPARE(callback.notes, QStringList {"record Z7.5"});
    QCOMPARE(tested->deviceControl.notes, QStringList());
}

void TestControllerListeners::statusReadIsHeardByControlBarBeforeItsCallback()
{
    QStringList journal;
    NotingListener bar("bar", &journal);
    NotingListener callback("callback", &journal);
    controller().setDeviceControl(&bar);
    controller().readDeviceStatus(connectedDrive(5), &callback);
    journal.clear();
    controller().PostDeviceUpdate(TransferTelegramStack, connectedDrive(5));
    QCOMPARE(journal, (QStringList {"bar: record Z7.5", "callback: record Z7.5"}));
    controller().setDeviceControl(&tested->deviceControl);
    controller().removeCallback(&bar);
    controller().removeCallback(&callback);
}

void TestControllerListeners::pollingIsHeardByControlBarAndShownPage()
{
    controller().PostDeviceUpdate(DevicePolling, withValue(record(), 11, 555));
    QCOMPARE(tested->deviceControl.notes, QStringList {"record Z7.3"});
    QCOMPARE(tested->tableText(11, TestedController::deviceValueColumn), QStringLiteral("555"));
}

void TestControllerListeners::listenerHearsStartProgressAndEnd()
{
    controller().PostTransactionStarted(DevicePolling, 21, record());
    controller().PostTransactionProgress(DevicePolling);
    controller().PostTransactionTerminated(DevicePolling);
    QCOMPARE(tested->deviceControl.notes, (QStringList {"started 21 Z7.3", "progress", "terminated"}));
}

void TestControllerListeners::listenerHearsRecordAsItCame()
{
    Z7Device reported = record();
    reported.setDeviceError(12);
    reported.parameterSet.params.clear();
    controller().PostDeviceUpdate(DevicePolling, reported);
    QCOMPARE(tested->deviceControl.records.last().error, 12);
    QVERIFY(tested->deviceControl.records.last().parameterSet.params.isEmpty());
}

void TestControllerListeners::listenerHearsOfDriveThatIsNotListed()
{
    controller().PostDeviceUpdate(DevicePolling, connectedDrive(5));
    QCOMPARE(tested->deviceControl.notes, QStringList {"record Z7.5"});
}

void TestControllerListeners::listenerOfOneThreadHearsNothingOfAnother()
{
    for (const ThreadID thread : {ScanDevice, TransferTelegramStack}) {
        controller().PostTransactionStarted(thread, 14, record());
        controller().PostDeviceUpdate(thread, record());
        controller().PostTransactionProgress(thread);
        controller().PostTransactionTerminated(thread);
    }
    QCOMPARE(tested->deviceControl.notes, QStringList());
}

void TestControllerListeners::listenerIsCalledOnceHoweverOftenItSignedUp()
{
    controller().StoreData();
    controller().StoreData();
    tested->forgetNotes();
    controller().PostDeviceUpdate(TransferTelegramStack, record());
    QCOMPARE(tested->deviceControl.notes, QStringList {"record Z7.3"});
}

void TestControllerListeners::recordAfterEndOfTransactionReachesNobody()
{
    controller().StoreData();
    controller().PostTransactionTerminated(TransferTelegramStack);
    tested->forgetNotes();
    controller().PostDeviceUpdate(TransferTelegramStack, withValue(record(), 11, 555));
    QCOMPARE(tested->deviceControl.notes, QStringList());
    QVERIFY(tested->tableText(11, TestedController::deviceValueColumn) != QStringLiteral("555"));
    QCOMPARE(record().parameterSet.value(11).value, 555);
}

void TestControllerListeners::removedListenerHearsNothing()
{
    NotingListener callback;
    controller().readDeviceStatus(connectedDrive(5), &callback);
    controller().scanDevice(connectedDrive(5), &callback);
    controller().removeCallback(&callback);
    callback.notes.clear();
    controller().PostDeviceUpdate(TransferTelegramStack, connectedDrive(5));
    controller().PostDeviceUpdate(ScanDevice, connectedDrive(5));
    QCOMPARE(callback.notes, QStringList());
}

void TestControllerListeners::listenerThatRemovesNextOneIsLastToHear()
{
    class Remover : public NotingListener
    {
    public:
        Remover(Z7MainController &controller, IDeviceDataCallback &victim)
            : m_controller(controller)
            , m_victim(victim)
        {
        }
        void DeviceUpdate(const Z7Device &device) override
        {
            NotingListener::DeviceUpdate(device);
            m_controller.removeCallback(&m_victim);
        }

    private:
        Z7MainController &m_controller;
        IDeviceDataCallback &m_victim;
    };
    NotingListener victim;
    Remover remover(controller(), victim);
    controller().scanDevice(connectedDrive(1), &remover);
    controller().scanDevice(connectedDrive(1), &victim);
    controller().PostDeviceUpdate(ScanDevice, connectedDrive(5));
    QCOMPARE(remover.notes, QStringList {"record Z7.5"});
    QCOMPARE(victim.notes, QStringList());
    controller().removeCallback(&remover);
}

QTEST_MAIN(TestControllerListeners)

#include "tst_controllerlisteners.moc"
