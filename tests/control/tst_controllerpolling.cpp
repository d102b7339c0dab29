// The live update: what it reads after connecting, for each page, and after the drive has moved.

#include "tests/control/controlleronabus.h"

#include <QTest>

#include <optional>

namespace {

constexpr int network = 0;
constexpr int status = 1;
constexpr int table = TestedController::tablePage;
constexpr int pauseMs = 20;
constexpr int accessRequests = 2;

const QList<int> everyParameter {11, 12, 13, 30, 31, 50, 83};

} // namespace

class TestControllerPolling : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { tested.reset(); }

    void firstPassReadsEverythingAndNextThoseOfPage();
    void tableGoesOnReadingEveryParameter();
    void pollingFollowsShownPage();
    void driveConnectedAgainIsReadCompletelyOnce();
    void drivesValuesReachPageAndControlBar();
    void pollingGoesOnAtNewAddress();
    void pageCanStopAllCommunication();

private:
    Z7MainController &controller() { return tested->controller; }
    /// What each finished pass has read behind access, status, version and live values.
    QList<QStringList> passes() const;

    std::optional<ControllerOnABus> tested;
    int id3 = 0;
};

void TestControllerPolling::init()
{
    tested.emplace();
    Z7Services::instance()->options()->setPollingInterval(pauseMs);
    id3 = tested->drive3().deviceId();
    tested->connectDrives({tested->drive3()});
}

QList<QStringList> TestControllerPolling::passes() const
{
    const QStringList status = logOnRequests().mid(accessRequests);
    QList<QStringList> passes;
    for (const QString &request : tested->requests()) {
        if (request == status.first())
            passes.append(QStringList());
        if (!passes.isEmpty() && !request.startsWith("09"))
            passes.last().append(request);
    }
    // The newest may still be under way.
    if (!passes.isEmpty())
        passes.removeLast();
    for (QStringList &pass : passes)
        pass = pass.mid(0, status.size()) == status ? pass.mid(status.size()) : QStringList {"no status"};
    return passes;
}

void TestControllerPolling::firstPassReadsEverythingAndNextThoseOfPage()
{
    tested->showPage(network, id3);
    tested->shownPage()->addParamId(30);
    QTRY_VERIFY(passes().size() >= 3);
    QCOMPARE(passes().mid(0, 3),
        (QList<QStringList> {readRequests(everyParameter), readRequests({30}), readRequests({30})}));
    QVERIFY(controller().device(id3).parametersComplete);
}

void TestControllerPolling::tableGoesOnReadingEveryParameter()
{
    tested->showPage(table, id3);
    QTRY_VERIFY(passes().size() >= 2);
    QCOMPARE(passes().at(1), readRequests(everyParameter));
}

void TestControllerPolling::pollingFollowsShownPage()
{
    tested->showPage(network, id3);
    tested->shownPage()->addParamId(30);
    QTRY_VERIFY(controller().device(id3).parametersComplete);
    tested->showPage(status, id3);
    QTRY_COMPARE(passes().value(passes().size() - 1, {"no pass"}), QStringList());
}

void TestControllerPolling::driveConnectedAgainIsReadCompletelyOnce()
{
    tested->showPage(network, id3);
    QTRY_VERIFY(controller().device(id3).parametersComplete);
    tested->forgetNotes();
    controller().cancelCommunication();
    QTRY_VERIFY(tested->isOver());
    tested->connectDrives({controller().device(id3)});
    tested->forgetRequests();
    tested->showPage(network, id3);
    QTRY_VERIFY(passes().contains(readRequests(everyParameter)));
    QTRY_VERIFY(controller().device(id3).parametersComplete);
    tested->forgetRequests();
    QTRY_VERIFY(passes().size() >= 2);
    QVERIFY(!passes().contains(readRequests(everyParameter)));
}

void TestControllerPolling::drivesValuesReachPageAndControlBar()
{
    tested->showPage(table, id3);
    QTRY_COMPARE(tested->tableText(31, TestedController::deviceValueColumn), QStringLiteral("-5"));
    tested->bus.command("set 3 param 31 -7");
    QTRY_COMPARE(tested->tableText(31, TestedController::deviceValueColumn), QStringLiteral("-7"));
    QCOMPARE(tested->deviceControl.records.last().parameterSet.value(31).value, -7);
}

void TestControllerPolling::pollingGoesOnAtNewAddress()
{
    tested->showPage(network, id3);
    QTRY_VERIFY(controller().device(id3).parametersComplete);
    emit tested->shownPage()->sendChangeAdress(5);
    QTRY_COMPARE(controller().currentDeviceRecord().address, 5);
    QVERIFY2(
        !controller().currentDeviceRecord().addressChanged, "another drive may take the old address now");
    tested->forgetRequests();
    QTRY_VERIFY(tested->requests().contains("09 05 00 00 12 67 d2")); // access to 5 with the password
    QTRY_VERIFY(controller().currentDeviceRecord().isAccessGranted());
    QVERIFY(!tested->requests().contains("09 03 00 00 12 67 d0"));
}

void TestControllerPolling::pageCanStopAllCommunication()
{
    NotingListener callback;
    tested->slowDown();
    tested->showPage(network, id3);
    controller().scanDevice(Z7Device(tested->drive3().portInfo), &callback);
    QTRY_VERIFY(callback.notes.contains("progress"));
    emit tested->shownPage()->stopAllDeviceCommunication();
    QTRY_VERIFY(callback.notes.contains("terminated"));
    QVERIFY2(callback.records.size() < 255, "the sweep was cut short");
}

QTEST_MAIN(TestControllerPolling)

#include "tst_controllerpolling.moc"
