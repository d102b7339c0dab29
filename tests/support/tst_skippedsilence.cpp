// What the tests of whole journeys rely on: a wait ends at once where no byte can come, and never before one
// comes.

#include "simulator/simulatedbus.h"
#include "tests/support/skippedsilence.h"

#include <QElapsedTimer>
#include <QSerialPort>
#include <QtTest>

#include <memory>

namespace {

/// Nobody waits for this long: a wait that is not cut short lets the test hang and fail.
constexpr int endlessMs = 3600000;
constexpr int aMomentMs = 50;

// Drive 3 is asked for its status.
const QByteArray statusRequest = QByteArray::fromHex("05 03 5d");

/// A bus with one drive, and its port as the program opens it.
struct Line
{
    explicit Line(bool paced = false)
        : bus(config(paced))
    {
        if (!bus.start())
            qFatal("%s", qPrintable(bus.errorText()));
        port.setPortName(bus.portPath());
        if (!port.open(QIODevice::ReadWrite))
            qFatal("%s", qPrintable(port.errorString()));
    }

    static z7sim::BusConfig config(bool paced)
    {
        z7sim::DriveConfig drive;
        drive.address = 3;
        z7sim::BusConfig bus;
        bus.paced = paced;
        bus.drives = {drive};
        return bus;
    }

    void ask(const QByteArray &request)
    {
        port.write(request);
        port.waitForBytesWritten(endlessMs);
    }
    /// All that comes until a silence.
    QByteArray reply()
    {
        QByteArray bytes;
        while (port.waitForReadyRead(endlessMs))
            bytes += port.readAll();
        return bytes;
    }
    /// What the drive has put on the wire.
    QByteArray sent() const
    {
        QByteArray bytes;
        for (const z7sim::WireEntry &entry : bus.log()) {
            if (entry.direction == z7sim::WireEntry::Reply)
                bytes += entry.bytes;
        }
        return bytes;
    }

    z7sim::SimulatedBus bus;
    QSerialPort port;
};

} // namespace

class TestSkippedSilence : public QObject
{
    Q_OBJECT

private slots:
    void waitForDriveThatIsMissingEndsAtOnce();
    void replyIsWholeAndItsEndTakesNoTime_data();
    void replyIsWholeAndItsEndTakesNoTime();
    void manyRepliesAreWhole();
    void adapterThatIsPulledEndsWait();
    void otherBusCutsNoWaitShort();
    void waitsTakeTheirTimeOnceItIsOver();
};

void TestSkippedSilence::waitForDriveThatIsMissingEndsAtOnce()
{
    Line line;
    const SkippedSilence silence(line.bus);
    line.ask(QByteArray::fromHex("05 04 5c"));
    QVERIFY(!line.port.waitForReadyRead(endlessMs));
    QCOMPARE(line.port.error(), QSerialPort::TimeoutError);
}

void TestSkippedSilence::replyIsWholeAndItsEndTakesNoTime_data()
{
    QTest::addColumn<bool>("paced");
    QTest::addColumn<QByteArray>("fault");
    QTest::newRow("at once") << false << QByteArray();
    QTest::newRow("at the pace of the wire") << true << QByteArray();
    QTest::newRow("late") << false << QByteArray("fault 3 late ms=50 count=1");
    QTest::newRow("in two parts") << false << QByteArray("fault 3 split at=4 ms=50 count=1");
    QTest::newRow("with noise behind it") << false << QByteArray("fault 3 babble count=5");
}

void TestSkippedSilence::replyIsWholeAndItsEndTakesNoTime()
{
    QFETCH(bool, paced);
    QFETCH(QByteArray, fault);
    Line line(paced);
    const SkippedSilence silence(line.bus);
    if (!fault.isEmpty())
        QCOMPARE(line.bus.command(fault), QByteArray("ok"));
    line.ask(statusRequest);
    const QByteArray reply = line.reply();
    QVERIFY(!reply.isEmpty());
    QCOMPARE(reply, line.sent());
}

void TestSkippedSilence::manyRepliesAreWhole()
{
    Line line;
    const SkippedSilence silence(line.bus);
    line.ask(statusRequest);
    const QByteArray first = line.reply();
    QCOMPARE(first, QByteArray::fromHex("85 03 00 10 cd"));
    for (int i = 0; i < 1000; ++i) {
        line.ask(statusRequest);
        QCOMPARE(line.reply(), first);
    }
}

void TestSkippedSilence::adapterThatIsPulledEndsWait()
{
    Line line;
    const SkippedSilence silence(line.bus);
    line.bus.command("pull");
    line.port.write(statusRequest);
    QVERIFY(!line.port.waitForReadyRead(endlessMs));
}

void TestSkippedSilence::otherBusCutsNoWaitShort()
{
    Line line;
    z7sim::SimulatedBus other;
    QVERIFY(other.start());
    const SkippedSilence silence(other);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!line.port.waitForReadyRead(aMomentMs));
    QVERIFY(timer.elapsed() >= aMomentMs - 1);
}

void TestSkippedSilence::waitsTakeTheirTimeOnceItIsOver()
{
    Line line;
    std::make_unique<SkippedSilence>(line.bus).reset();
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!line.port.waitForReadyRead(aMomentMs));
    QVERIFY(timer.elapsed() >= aMomentMs - 1);
}

QTEST_GUILESS_MAIN(TestSkippedSilence)

#include "tst_skippedsilence.moc"
