// The bus while an external programmer has it: nothing is asked of a drive, and nothing is kept for later.

#include "tests/control/controlleronabus.h"

#include <QLabel>
#include <QTest>

#include <optional>

using namespace Z7CommInterface;

namespace {

constexpr int status = 1;
constexpr int firmware = TestedController::firmwarePage;
constexpr int aborted = 19;
constexpr int pauseMs = 20;

using Request = void (*)(Z7MainController &);

} // namespace

Q_DECLARE_METATYPE(Request)

class TestLentBus : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { tested.reset(); }

    void requestEndsAtOnceAsAborted_data();
    void requestEndsAtOnceAsAborted();
    void scanEndsAtOnceAsAborted();
    void pageShowsItsLastValues();
    void refusedRequestIsNoFullRead();
    void liveUpdateGoesOnAfterwards();
    void requestGoesThroughAfterwards();

private:
    Z7MainController &controller() { return tested->controller; }
    /// The firmware page tells it, as from the accepted bootloader command to the programmer's end.
    void programmerUsesBus(bool uses) { emit firmwarePage->programmerUsesBus(uses); }

    std::optional<ControllerOnABus> tested;
    Z7DataWidget *firmwarePage = nullptr;
    int id3 = 0;
};

void TestLentBus::init()
{
    tested.emplace();
    id3 = tested->drive3().deviceId();
    tested->connectDrives({tested->drive3()});
    tested->showPage(firmware, id3);
    firmwarePage = tested->shownPage();
    programmerUsesBus(true);
    tested->forgetNotes();
}

void TestLentBus::requestEndsAtOnceAsAborted_data()
{
    QTest::addColumn<Request>("request");
    const auto row = [](const char *name, Request request) { QTest::newRow(name) << request; };
    row("read", [](Z7MainController &c) { c.DownloadData(); });
    row("store", [](Z7MainController &c) { c.StoreData(); });
    row("factory reset", [](Z7MainController &c) { c.SetFactorySettingsData(); });
    row("set a password", [](Z7MainController &c) { c.SetNewPasswordData(9); });
    row("change the address", [](Z7MainController &c) { c.sendChangeAdress(9); });
    row("write", [](Z7MainController &c) {
        c.postUserModifiedParameter(userChange(30, 7));
        c.UploadData();
    });
}

void TestLentBus::requestEndsAtOnceAsAborted()
{
    QFETCH(Request, request);
    request(controller());
    QCOMPARE(tested->deviceControl.notes, (QStringList {"record Z7.3", "terminated"}));
    QCOMPARE(tested->deviceControl.records.last().error, aborted);
    QCOMPARE(tested->requests(), QStringList());
}

void TestLentBus::scanEndsAtOnceAsAborted()
{
    NotingListener callback;
    controller().scanDevice(tested->drive3(), &callback);
    QCOMPARE(callback.notes, (QStringList {"record Z7.3", "terminated"}));
    QCOMPARE(callback.records.last().error, aborted);
    QCOMPARE(tested->requests(), QStringList());
}

void TestLentBus::pageShowsItsLastValues()
{
    Z7Device last = controller().device(id3);
    last.actualSpeed = 1234;
    controller().PostDeviceUpdate(DevicePolling, last);
    tested->showPage(status, id3);
    QCOMPARE(
        tested->shownPage()->findChild<QLabel *>("lCurrentRotationsDevice")->text(), QStringLiteral("1234"));
}

void TestLentBus::refusedRequestIsNoFullRead()
{
    tested->showPage(status, id3);
    controller().DownloadData();
    QVERIFY(!controller().device(id3).parametersComplete);
}

void TestLentBus::liveUpdateGoesOnAfterwards()
{
    Z7Services::instance()->options()->setPollingInterval(pauseMs);
    tested->showPage(status, id3);
    QCOMPARE(tested->requests(), QStringList());
    programmerUsesBus(false);
    QTRY_VERIFY(controller().device(id3).parametersComplete);
}

void TestLentBus::requestGoesThroughAfterwards()
{
    controller().StoreData();
    programmerUsesBus(false);
    tested->forgetNotes();
    controller().StoreData();
    QTRY_VERIFY(tested->isOver());
    // Store with the password 4711.
    QCOMPARE(tested->requests(), QStringList("02 03 00 00 12 67 2b"));
}

QTEST_MAIN(TestLentBus)

#include "tst_lentbus.moc"
