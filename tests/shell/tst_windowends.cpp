// The end of the program while something moves on the bus.

#include "control/services/options.h"
#include "control/services/services.h"
#include "tests/shell/drivenwindow.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>

using namespace ShellTest;

namespace {

enum Page { ParameterTable = 9 };
/// Far above two time-outs and the silence behind a reply, and far below what is still to come: a busy
/// machine gets most of it.
constexpr int boundMs = 5000;

/// A thread that was waited for may stand in this list for a moment longer: the wait ends with the last thing
/// that the thread does, before the system has taken it away.
int threadCount()
{
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

} // namespace

class TestWindowEnds : public IsolatedTest
{
    Q_OBJECT

private slots:
    void closingEndsThreads_data();
    void closingEndsThreads();
    void nothingMovesOnBusAfterClosing_data() { situations(); }
    void nothingMovesOnBusAfterClosing();
    void filesAreWrittenInEverySituation_data() { situations(); }
    void filesAreWrittenInEverySituation();
    void goingWithoutBeingClosedIsNoCrash_data() { situations(); }
    void goingWithoutBeingClosedIsNoCrash();

private:
    void prepare() override;
    void tidyUp() override;

    static void situations();

    void idle();
    void pollingPause();
    void pollingPass();
    void transfer();
    void scan();
    void pauseBetweenTwoPorts();
    void logOn();

    void begin();
    void showTable();
    bool isAnnounced(int row) const;

    std::unique_ptr<DrivenWindow> ui;
    int threadsBefore = 0;
};

using Situation = void (TestWindowEnds::*)();
Q_DECLARE_METATYPE(Situation)

void TestWindowEnds::situations()
{
    QTest::addColumn<Situation>("situation");
    QTest::newRow("no drive") << &TestWindowEnds::idle;
    QTest::newRow("pause between two polling passes") << &TestWindowEnds::pollingPause;
    QTest::newRow("polling pass") << &TestWindowEnds::pollingPass;
    QTest::newRow("transfer") << &TestWindowEnds::transfer;
    QTest::newRow("scan") << &TestWindowEnds::scan;
    QTest::newRow("pause between the scans of two ports") << &TestWindowEnds::pauseBetweenTwoPorts;
    QTest::newRow("log-on") << &TestWindowEnds::logOn;
}

void TestWindowEnds::prepare()
{
    writeDefinitions();
    ui = std::make_unique<DrivenWindow>(QList<int> {3});
    QVERIFY(QTest::qWaitForWindowActive(ui->window.get()));
    threadsBefore = threadCount();
}

void TestWindowEnds::tidyUp()
{
    ui.reset();
}

void TestWindowEnds::showTable()
{
    QVERIFY(ui->connectDrives({3}));
    ui->drives.slowDown(firstPort);
    ui->click(ParameterTable, 3);
    ui->bus.clearLog();
}

void TestWindowEnds::idle() { }

void TestWindowEnds::pollingPause()
{
    Z7Services::instance()->options()->setPollingInterval(1000000);
    showTable();
}

void TestWindowEnds::pollingPass()
{
    Z7Services::instance()->options()->setPollingInterval(1);
    showTable();
    QVERIFY(ui->waitForTraffic());
}

void TestWindowEnds::transfer()
{
    Z7Services::instance()->options()->setPollingInterval(1000000);
    showTable();
    ui->press("BtnDownload");
    QVERIFY(ui->waitForTraffic());
}

void TestWindowEnds::scan()
{
    ui->drives.slowDown(firstPort);
    ui->press("BtnConnection");
    QVERIFY(Person::press(*ui->wizard, "BtnScanPort"));
    QVERIFY(Person::press(*ui->wizard, "BtnNext"));
    QVERIFY(ui->waitForTraffic());
}

void TestWindowEnds::pauseBetweenTwoPorts()
{
    ui->drives.plugDeadPort(QStringLiteral("ttyUSB1"));
    ui->press("BtnConnection");
    QVERIFY(Person::press(*ui->wizard, "BtnScanAllPorts"));
    QVERIFY(Person::press(*ui->wizard, "BtnNext"));
    // The dead port comes first. Once the next one is announced, the pause before its scan runs.
    QTRY_VERIFY(isAnnounced(1));
}

bool TestWindowEnds::isAnnounced(int row) const
{
    int texts = 0;
    for (const auto *label : child(*ui->wizard, "WizardWidget").findChildren<QLabel *>())
        texts += !label->text().trimmed().isEmpty() && !label->text().endsWith(QLatin1String(": "));
    return texts > row;
}

void TestWindowEnds::logOn()
{
    ui->drives.slowDown(firstPort);
    ui->press("BtnConnection");
    ui->logOn(3);
    QVERIFY(ui->waitForTraffic());
}

void TestWindowEnds::begin()
{
    QFETCH(Situation, situation);
    (this->*situation)();
}

void TestWindowEnds::closingEndsThreads_data()
{
    situations();
}

void TestWindowEnds::closingEndsThreads()
{
    begin();
    QElapsedTimer timer;
    timer.start();
    QVERIFY(ui->window->close());
    QVERIFY(timer.elapsed() < boundMs);
    QTRY_COMPARE(threadCount(), threadsBefore);
}

void TestWindowEnds::nothingMovesOnBusAfterClosing()
{
    begin();
    ui->window->close();
    QVERIFY(ui->staysSilent(300));
}

void TestWindowEnds::filesAreWrittenInEverySituation()
{
    begin();
    ui->window->close();
    QVERIFY(QFile::exists(QStringLiteral("deutsch.z7lang")));
    QVERIFY(QFile::exists(QStringLiteral("Z7Properties.ini")));
}

void TestWindowEnds::goingWithoutBeingClosedIsNoCrash()
{
    begin();
    QElapsedTimer timer;
    timer.start();
    ui->window.reset();
    QVERIFY(timer.elapsed() < boundMs);
    QTRY_COMPARE(threadCount(), threadsBefore);
    QVERIFY(ui->staysSilent(300));
}

QTEST_MAIN(TestWindowEnds)

#include "tst_windowends.moc"
