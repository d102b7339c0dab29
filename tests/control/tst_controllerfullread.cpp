// The first read of all parameters after connecting, and what the user does meanwhile.

#include "tests/control/controlleronabus.h"

#include <QTest>

#include <optional>

namespace {

constexpr int network = 0;
constexpr int status = 1;
constexpr int pauseMs = 20;
constexpr int lastParameter = 83;

const QList<int> writableParameters {11, 12, 13, 30, 31, 50};

} // namespace

class TestControllerFullRead : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { tested.reset(); }

    void writeDuringItIsSentAndReadCompletedAfterwards();
    void anotherPageDuringItDoesNotCutItShort();
    void cancelDuringItKeepsPollingOff();
    void logOnAfterCancelDoesNotBringPollingBack();
    void cancelLetsTreeTakeClicksAgain();

private:
    Z7MainController &controller() { return tested->controller; }
    bool isEverythingRead() { return controller().device(id3).parameterSet.value(lastParameter).valid; }
    /// Shows a page and waits until the first pass is reading parameters.
    void reachFullRead();

    std::optional<ControllerOnABus> tested;
    int id3 = 0;
};

void TestControllerFullRead::init()
{
    tested.emplace();
    tested->slowDown();
    Z7Services::instance()->options()->setPollingInterval(pauseMs);
    id3 = tested->drive3().deviceId();
    tested->connectDrives({tested->drive3()});
}

void TestControllerFullRead::reachFullRead()
{
    tested->showPage(network, id3);
    QTRY_VERIFY(tested->requests().contains(readRequests({writableParameters.first()}).constFirst()));
}

void TestControllerFullRead::writeDuringItIsSentAndReadCompletedAfterwards()
{
    reachFullRead();
    controller().postUserModifiedParameter(userChange(30, 77));
    controller().UploadData();
    QTRY_COMPARE(tested->bus.memory(3, 30), 77);
    QTRY_VERIFY(isEverythingRead());
    QTRY_VERIFY(controller().device(id3).parametersComplete);
}

void TestControllerFullRead::anotherPageDuringItDoesNotCutItShort()
{
    reachFullRead();
    tested->showPage(status, id3);
    QTRY_VERIFY(isEverythingRead());
    QTRY_VERIFY(controller().device(id3).parametersComplete);
}

void TestControllerFullRead::cancelDuringItKeepsPollingOff()
{
    reachFullRead();
    tested->forgetNotes();
    controller().cancelCommunication();
    QTRY_VERIFY(tested->isOver());
    tested->forgetRequests();
    QTest::qWait(10 * pauseMs);
    QCOMPARE(tested->requests(), QStringList());
}

void TestControllerFullRead::logOnAfterCancelDoesNotBringPollingBack()
{
    NotingListener wizard;
    Z7Services::instance()->options()->setPollingInterval(3600000);
    tested->showPage(network, id3);
    controller().cancelCommunication();
    controller().readDeviceStatus(controller().device(id3), &wizard);
    QTRY_VERIFY(wizard.notes.contains(QStringLiteral("terminated")));
    QVERIFY(!controller().device(id3).fullReadPending);
}

void TestControllerFullRead::cancelLetsTreeTakeClicksAgain()
{
    reachFullRead();
    tested->mainContent.notes.clear();
    controller().cancelCommunication();
    QCOMPARE(tested->mainContent.notes, QStringList {"tree"});
}

QTEST_MAIN(TestControllerFullRead)

#include "tst_controllerfullread.moc"
