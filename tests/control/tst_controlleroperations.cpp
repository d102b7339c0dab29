// What each operation puts on the bus, and what the drive holds afterwards.

#include "tests/control/controlleronabus.h"
#include "tests/support/messageboxes.h"

#include <QTest>

#include <optional>

namespace {

constexpr int network = 0;
constexpr int table = TestedController::tablePage;

using Operation = void (*)(Z7MainController &);

} // namespace

Q_DECLARE_METATYPE(Operation)

class TestControllerOperations : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { tested.reset(); }

    void readingPageReadsItsParametersAlone();
    void readingTableReadsEveryParameter();
    void writingSendsEveryChangeInAscendingOrder();
    void writingChangesWorkingMemoryAlone();
    void writtenChangesStayUntilTheyAreReset();
    void valueReadBackEndsModifiedMark();
    void conflictThatUserAcceptsIsWritten();
    void writingAndStoringEndsWithOneStore();
    void storingNeedsNoChanges();
    void factoryResetBringsFactoryValuesBack();
    void newPasswordIsUsedFromThenOn();
    void driveIsSentIntoItsBootloader();
    void newAddressIsWritten();
    void wrongPasswordWritesNothingAndTellsError10();
    void controlBarHearsEveryStepOfTransfer();

    void operationWithoutPageSendsNothing_data() { operations(); }
    void operationWithoutPageSendsNothing();
    void operationWithoutDriveSendsNothing_data() { operations(); }
    void operationWithoutDriveSendsNothing();

private:
    static void operations();
    Z7MainController &controller() { return tested->controller; }
    QStringList requestsUpToAStatusRead();
    int memory(int number) const { return tested->bus.memory(3, number); }
    int flash(int number) const { return tested->bus.flash(3, number); }

    std::optional<ControllerOnABus> tested;
};

void TestControllerOperations::init()
{
    tested.emplace();
    tested->showTableOf({tested->drive3()});
}

void TestControllerOperations::readingPageReadsItsParametersAlone()
{
    tested->showPage(network, tested->drive3().deviceId());
    tested->shownPage()->addParamId(30);
    tested->shownPage()->addParamId(11);
    tested->forgetNotes();
    controller().DownloadData();
    QTRY_VERIFY(tested->isOver());
    QCOMPARE(tested->requests(), logOnRequests() + readRequests({11, 30}));
    QCOMPARE(controller().currentDeviceRecord().parameterSet.value(30).value, 120);
    QVERIFY(!controller().currentDeviceRecord().parameterSet.value(12).hasValue);
}

void TestControllerOperations::readingTableReadsEveryParameter()
{
    controller().DownloadData();
    QTRY_VERIFY(tested->isOver());
    QCOMPARE(tested->requests(), logOnRequests() + readRequests({11, 12, 13, 30, 31, 50, 83}));
    QCOMPARE(tested->tableText(31, TestedController::deviceValueColumn), QStringLiteral("-5"));
    QCOMPARE(tested->tableText(83, TestedController::deviceValueColumn), QStringLiteral("777"));
}

void TestControllerOperations::writingSendsEveryChangeInAscendingOrder()
{
    tested->typeInTable(31, "-1");
    tested->typeInTable(11, "0");
    tested->forgetNotes();
    controller().UploadData();
    QTRY_VERIFY(tested->isOver());
    const QStringList writes {"03 03 00 0b 00 00 44", // 11 = 0
        "03 03 00 1f ff ff 76"}; // 31 = -1
    QCOMPARE(tested->requests(), logOnRequests() + writes);
}

void TestControllerOperations::writingChangesWorkingMemoryAlone()
{
    tested->typeInTable(31, "-7");
    controller().UploadData();
    QTRY_COMPARE(memory(31), -7);
    QTRY_VERIFY(tested->isOver());
    QCOMPARE(flash(31), -5);
}

void TestControllerOperations::writtenChangesStayUntilTheyAreReset()
{
    tested->typeInTable(31, "-7");
    controller().UploadData();
    QTRY_VERIFY(tested->isOver());
    QCOMPARE(tested->userChanges(), QStringLiteral("31=-7"));
    QCOMPARE(tested->tableField(31)->text(), QStringLiteral("-7"));
}

void TestControllerOperations::valueReadBackEndsModifiedMark()
{
    const int id3 = tested->drive3().deviceId();
    tested->typeInTable(31, "-7");
    controller().UploadData();
    QTRY_VERIFY(tested->isOver());
    QVERIFY2(controller().hasModifiedParams(table, id3), "a write does not tell the drive's value");
    tested->forgetNotes();
    controller().DownloadData();
    QTRY_VERIFY(tested->isOver());
    QVERIFY(!controller().hasModifiedParams(table, id3));
}

void TestControllerOperations::conflictThatUserAcceptsIsWritten()
{
    tested->typeInTable(11, "500");
    const MessageBoxAnswerer user(QMessageBox::Yes);
    controller().UploadData();
    QCOMPARE(user.count(), 1);
    QTRY_COMPARE(memory(11), 500);
    QTRY_VERIFY(controller().currentDeviceRecord().parameterSet.value(11).conflict);
}

void TestControllerOperations::writingAndStoringEndsWithOneStore()
{
    tested->typeInTable(31, "-7");
    tested->forgetNotes();
    controller().WriteAndStoreData();
    QTRY_VERIFY(tested->isOver());
    const QStringList writeAndStore {"03 03 00 1f ff f9 48", // 31 = -7
        "02 03 00 00 12 67 2b"}; // store
    QCOMPARE(tested->requests(), logOnRequests() + writeAndStore);
    QCOMPARE(flash(31), -7);
}

void TestControllerOperations::storingNeedsNoChanges()
{
    tested->bus.command("set 3 param 31 -7");
    controller().StoreData();
    QTRY_VERIFY(tested->isOver());
    QCOMPARE(tested->requests(), QStringList {"02 03 00 00 12 67 2b"});
    QCOMPARE(flash(31), memory(31));
}

void TestControllerOperations::factoryResetBringsFactoryValuesBack()
{
    tested->typeInTable(31, "-7");
    controller().WriteAndStoreData();
    QTRY_VERIFY(tested->isOver());
    tested->forgetNotes();
    tested->forgetRequests();
    controller().SetFactorySettingsData();
    QTRY_VERIFY(tested->isOver());
    QCOMPARE(tested->requests(), QStringList {"06 03 00 00 12 67 d7"});
    QCOMPARE(memory(31), -5);
    QCOMPARE(flash(31), -5);
}

void TestControllerOperations::newPasswordIsUsedFromThenOn()
{
    controller().SetNewPasswordData(123);
    QTRY_VERIFY(tested->isOver());
    QCOMPARE(tested->requests(), QStringList {"0c 03 00 00 12 67 00 00 00 7b 56"});
    tested->forgetNotes();
    tested->forgetRequests();
    controller().StoreData();
    QTRY_VERIFY(tested->isOver());
    QCOMPARE(tested->requests(), QStringList {"02 03 00 00 00 7b d5"});
}

void TestControllerOperations::driveIsSentIntoItsBootloader()
{
    emit tested->shownPage()->sendBootloaderInitCommand();
    QTRY_VERIFY(controller().currentDeviceRecord().bootloaderActive);
    QCOMPARE(tested->requests(), QStringList {"0b 03 00 00 12 67 d2"});
}

void TestControllerOperations::newAddressIsWritten()
{
    emit tested->shownPage()->sendChangeAdress(5);
    QTRY_COMPARE(controller().currentDeviceRecord().address, 5);
    const QStringList change {"09 03 00 00 12 67 d0", // access
        "03 03 00 52 00 05 08"}; // 82, the bus address, = 5
    QCOMPARE(tested->requests(), change);
    QCOMPARE(tested->bus.memory(5, 31), -5);
}

void TestControllerOperations::wrongPasswordWritesNothingAndTellsError10()
{
    Z7Device drive = tested->drive3();
    drive.password = 4712;
    tested->showTableOf({drive});
    tested->typeInTable(31, "-7");
    controller().UploadData();
    QTRY_VERIFY(tested->isOver());
    QCOMPARE(tested->deviceControl.records.last().error, 10);
    const QStringList attempts {"09 03 00 00 00 03 5a", // access with the address
        "09 03 00 00 12 68 d3"}; // access with the password 4712
    QCOMPARE(tested->requests(), attempts);
    QCOMPARE(memory(31), -5);
}

void TestControllerOperations::controlBarHearsEveryStepOfTransfer()
{
    tested->typeInTable(31, "-7");
    tested->forgetNotes();
    controller().UploadData();
    QTRY_VERIFY(tested->isOver());
    QStringList heard {"started 15 Z7.3"};
    for (int step = 0; step < 15; ++step)
        heard.append("progress");
    heard += {"record Z7.3", "terminated"};
    QCOMPARE(tested->deviceControl.notes, heard);
}

void TestControllerOperations::operations()
{
    QTest::addColumn<Operation>("operation");
    QTest::newRow("read") << Operation([](Z7MainController &c) { c.DownloadData(); });
    QTest::newRow("write") << Operation([](Z7MainController &c) { c.UploadData(); });
    QTest::newRow("write and store") << Operation([](Z7MainController &c) { c.WriteAndStoreData(); });
    QTest::newRow("store") << Operation([](Z7MainController &c) { c.StoreData(); });
    QTest::newRow("factory reset") << Operation([](Z7MainController &c) { c.SetFactorySettingsData(); });
    QTest::newRow("set a password") << Operation([](Z7MainController &c) { c.SetNewPasswordData(9); });
    QTest::newRow("go into the bootloader")
        << Operation([](Z7MainController &c) { c.sendBootloaderInitCommand(); });
    QTest::newRow("change the address") << Operation([](Z7MainController &c) { c.sendChangeAdress(9); });
}

/// What went out, with a status read behind it: its end tells that the bus has done all it was asked.
QStringList TestControllerOperations::requestsUpToAStatusRead()
{
    NotingListener callback;
    controller().readDeviceStatus(tested->drive3(), &callback);
    const bool over = QTest::qWaitFor([&callback] { return callback.notes.contains("terminated"); });
    controller().removeCallback(&callback);
    return over ? tested->requests() : QStringList {"the bus came to no end"};
}

void TestControllerOperations::operationWithoutPageSendsNothing()
{
    QFETCH(Operation, operation);
    tested->typeInTable(31, "-7");
    tested->connectDrives({tested->drive3()});
    operation(controller());
    QCOMPARE(requestsUpToAStatusRead(), logOnRequests());
}

void TestControllerOperations::operationWithoutDriveSendsNothing()
{
    QFETCH(Operation, operation);
    constexpr int unlisted = 1;
    tested->showPage(table, unlisted);
    tested->typeInTable(31, "-7");
    operation(controller());
    QCOMPARE(requestsUpToAStatusRead(), logOnRequests());
}

QTEST_MAIN(TestControllerOperations)

#include "tst_controlleroperations.moc"
