// A controller that nobody has given a window, drives or pages yet: every call is harmless.

#include "control/maincontroller.h"
#include "pages/idevicedatacallback.h"
#include "tests/control/testedcontroller.h"
#include "tests/support/workingfolder.h"

#include <QTest>

using namespace Z7CommInterface;

namespace {

using Call = void (*)(Z7MainController &);

constexpr int noDrive = 1;

} // namespace

Q_DECLARE_METATYPE(Call)

class TestControllerAlone : public QObject
{
    Q_OBJECT

private slots:
    void callWithoutWindowIsHarmless_data();
    void callWithoutWindowIsHarmless();
    void windowThatComesLaterIsTold();
    void windowThatGoesIsNotToldAnyMore();
    void driveIsShownWithoutControlBar();
};

void TestControllerAlone::callWithoutWindowIsHarmless_data()
{
    QTest::addColumn<Call>("call");
    const auto row = [](const char *name, Call call) { QTest::newRow(name) << call; };
    row("cancel", [](Z7MainController &c) { c.cancelCommunication(); });
    row("drives from the wizard", [](Z7MainController &c) { c.setDevices({}); });
    row("record", [](Z7MainController &c) { c.PostDeviceUpdate(DevicePolling, connectedDrive(3)); });
    row("start of a pass",
        [](Z7MainController &c) { c.PostTransactionStarted(ScanDevice, 255, Z7Device()); });
    row("progress", [](Z7MainController &c) { c.PostTransactionProgress(ScanDevice); });
    row("end of a transaction", [](Z7MainController &c) { c.PostTransactionTerminated(ScanDevice); });
    row("all communication stopped", [](Z7MainController &c) { c.allCommunicationStopped(); });
    row("write", [](Z7MainController &c) { c.UploadData(); });
    row("read", [](Z7MainController &c) { c.DownloadData(); });
    row("store", [](Z7MainController &c) { c.StoreData(); });
    row("write and store", [](Z7MainController &c) { c.WriteAndStoreData(); });
    row("factory settings", [](Z7MainController &c) { c.SetFactorySettingsData(); });
    row("password", [](Z7MainController &c) { c.SetNewPasswordData(1); });
    row("bus address", [](Z7MainController &c) { c.sendChangeAdress(9); });
    row("bootloader", [](Z7MainController &c) { c.sendBootloaderInitCommand(); });
    row("change", [](Z7MainController &c) { c.postUserModifiedParameter(userChange(30, 7)); });
    row("withdrawn change", [](Z7MainController &c) { c.postUserDeletedParameter(userChange(30, 0)); });
    row("parameter file", [](Z7MainController &c) {
        Z7DeviceParamSet set(QStringLiteral("V123"));
        set.insert(userChange(30, 7));
        c.setUserParams(noDrive, set);
    });
    row("discard", [](Z7MainController &c) { c.resetChanges(noDrive); });
    row("defaults", [](Z7MainController &c) { c.setDefaults(noDrive); });
    row("page that nobody knows", [](Z7MainController &c) { c.createPage(PageNumber::Count); });
    row("page that was not created", [](Z7MainController &c) { c.showPage(9, noDrive, nullptr, nullptr); });
    row("programmer on the bus", [](Z7MainController &c) {
        c.lendBus(true);
        c.lendBus(false);
    });
}

void TestControllerAlone::callWithoutWindowIsHarmless()
{
    QFETCH(Call, call);
    const WorkingFolder folder;
    Z7MainController controller;
    call(controller);
    controller.createPage(TestedController::tablePage);
    call(controller);
    QVERIFY(controller.connectedDevices().isEmpty());
}

void TestControllerAlone::windowThatComesLaterIsTold()
{
    const WorkingFolder folder;
    Z7MainController controller;
    NotingMainContent window;
    controller.setDevices({});
    controller.setMainContent(&window);
    controller.setDevices({});
    QCOMPARE(window.notes, QStringList {"tree"});
}

void TestControllerAlone::windowThatGoesIsNotToldAnyMore()
{
    const WorkingFolder folder;
    Z7MainController controller;
    {
        NotingMainContent window;
        controller.setMainContent(&window);
        controller.setMainContent(nullptr);
    }
    controller.setDevices({});
    QVERIFY(controller.deviceIds().isEmpty());
}

void TestControllerAlone::driveIsShownWithoutControlBar()
{
    TestedController tested;
    tested.connectDrives({connectedDrive(3)});
    tested.controller.setDeviceControl(nullptr);
    tested.controller.setMainContent(nullptr);
    QVERIFY(tested.showPage(TestedController::tablePage, connectedDrive(3).deviceId()));
    tested.controller.StoreData();
    tested.controller.stopCommunication();
    QCOMPARE(tested.controller.currentDeviceRecord().address, 3);
}

QTEST_MAIN(TestControllerAlone)

#include "tst_controlleralone.moc"
