// The serial port as the worker threads use it: its settings, its errors, and where a reply ends.

#include "comm/busport.h"
#include "comm/commthreads.h"
#include "protocol/telegram.h"
#include "tests/comm/commnews.h"
#include "tests/comm/drivebus.h"

#include <QElapsedTimer>
#include <QtTest>

#include <atomic>
#include <cerrno>
#include <dlfcn.h>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace {

/// The settings in the order in which the adapter gets them.
enum Setting { None = -1, BaudRate, DataBits, Parity, StopBits, FlowControl, SettingCount };

/// What the test sees of the settings on their way to the adapter, and which of them the adapter refuses.
struct Adapter
{
    std::atomic<int> nextSetting {None};
    std::atomic<int> refusedSetting {None};
    termios settings[SettingCount] = {}; ///< of each call, since a pseudo terminal does not keep its parity
} adapter;

bool isRefused(const termios &settings)
{
    const int setting = adapter.nextSetting++;
    adapter.settings[setting % SettingCount] = settings;
    return setting == adapter.refusedSetting;
}

} // namespace

// Comes before the function of the system's library, which the serial port calls for each of its settings.
extern "C" int tcsetattr(int fd, int actions, const termios *settings)
{
    using SetAttributes = int (*)(int, int, const termios *);
    const auto next = reinterpret_cast<SetAttributes>(dlsym(RTLD_NEXT, "tcsetattr"));
    if (cfgetospeed(settings) != B115200) {
        adapter.nextSetting = BaudRate; // the port opens at a rate of its own
    } else if (adapter.nextSetting != None && isRefused(*settings)) {
        errno = EINVAL;
        return -1;
    }
    return next(fd, actions, settings);
}

class TestBusPort : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void openPortRunsAt115200BaudWithEightDataBitsEvenParityAndOneStopBit();
    void portThatDoesNotExistGivesError3();
    void portWithoutNameGivesError3();
    void portThatAnotherProgramHasOpenGivesError3();
    void pulledAdapterGivesError3();
    void adapterThatRefusesSettingGivesError4_data();
    void adapterThatRefusesSettingGivesError4();
    void passOnAdapterThatRefusesSettingGivesError4InOneRecord();
    void sweepOnAdapterThatRefusesSettingGivesError4InOneRecord();
    void portOpensAfterEarlierFailure();
    void openPortOpensAgain();
    void closedPortIsFreeForOthers();

    void requestReachesDriveAndItsReplyComesBack();
    void requestThatLineDoesNotTakeInTimeIsReported();
    void requestOnPortThatIsNotOpenIsReported();
    void silentDriveIsReportedAfterTimeout();
    void negativeTimeoutDoesNotWaitForEver();
    void replyTakesNoMoreRoomThanItsBytes();
    void replyWithPauseOf10MsIsOne();
    void replyWithPauseOf40MsIsCut();
    void restOfCutReplyBeginsNext();
    void babblingLineIsCutOffAfterTime();
    void floodedLineIsCutOffAtLength();

    void waitForReplyEndsAtOnceWhenAdapterIsPulled();
    void replyEndsAtOnceWhenAdapterIsPulled();
    void requestToPulledAdapterIsReportedAtOnce();

private:
    int open() { return port->open(QStringLiteral("ttyUSB0")); }
    bool send() { return port->send(QByteArray::fromHex(AccessWith3), 1000); }
    QByteArray exchange();
    bool hasSentTheRest() const;
    int wholeRepliesOfTen();

    std::unique_ptr<DriveBus> bus;
    std::unique_ptr<Z7BusPort> port;
    const QByteArray accepted = "89 03 00 d9"; // reply to the right password
};

void TestBusPort::init()
{
    bus = std::make_unique<DriveBus>();
    port = std::make_unique<Z7BusPort>();
    adapter.nextSetting = None;
    adapter.refusedSetting = None;
}

void TestBusPort::cleanup()
{
    port.reset();
    bus.reset();
}

QByteArray TestBusPort::exchange()
{
    if (!send() || !port->waitForReply(1000))
        return {};
    return port->readReply().toHex(' ');
}

void TestBusPort::openPortRunsAt115200BaudWithEightDataBitsEvenParityAndOneStopBit()
{
    QCOMPARE(open(), int(TelegramError::None));
    const termios &parity = adapter.settings[Parity];
    QVERIFY(parity.c_cflag & PARENB);
    QVERIFY2(!(parity.c_cflag & PARODD), "even, not odd");
    const termios &last = adapter.settings[FlowControl];
    QCOMPARE(cfgetospeed(&last), speed_t(B115200));
    QCOMPARE(cfgetispeed(&last), speed_t(B115200));
    QCOMPARE(last.c_cflag & CSIZE, tcflag_t(CS8));
    QVERIFY2(!(last.c_cflag & CSTOPB), "one stop bit, not two");
    QVERIFY2(!(last.c_cflag & CRTSCTS), "no flow control by wires");
    QVERIFY2(!(last.c_iflag & (IXON | IXOFF)), "no flow control by characters");
}

void TestBusPort::portThatDoesNotExistGivesError3()
{
    QCOMPARE(port->open(QStringLiteral("ttyUSB9")), int(TelegramError::PortNotOpened));
}

void TestBusPort::portWithoutNameGivesError3()
{
    bus.reset(); // the ports of the machine do as well
    QCOMPARE(port->open(QString()), int(TelegramError::PortNotOpened));
}

void TestBusPort::portThatAnotherProgramHasOpenGivesError3()
{
    Z7BusPort other;
    QCOMPARE(other.open(QStringLiteral("ttyUSB0")), int(TelegramError::None));
    QCOMPARE(open(), int(TelegramError::PortNotOpened));
}

void TestBusPort::pulledAdapterGivesError3()
{
    bus->pullAdapter();
    QCOMPARE(open(), int(TelegramError::PortNotOpened));
}

void TestBusPort::adapterThatRefusesSettingGivesError4_data()
{
    QTest::addColumn<int>("setting");
    QTest::newRow("baud rate") << int(BaudRate);
    QTest::newRow("data bits") << int(DataBits);
    QTest::newRow("parity") << int(Parity);
    QTest::newRow("stop bits") << int(StopBits);
    QTest::newRow("flow control") << int(FlowControl);
}

void TestBusPort::adapterThatRefusesSettingGivesError4()
{
    QFETCH(int, setting);
    adapter.refusedSetting = setting;
    QCOMPARE(open(), int(TelegramError::PortSettingsRefused));
    QVERIFY2(adapter.nextSetting == setting + 1, "what follows a refused setting is not tried");
}

void TestBusPort::passOnAdapterThatRefusesSettingGivesError4InOneRecord()
{
    adapter.refusedSetting = Parity;
    CommThreadTransferTelegramStack thread;
    const CommNews news(thread);
    auto stack = std::make_unique<Status>(DriveBus::drive3());
    const auto life = stack->life();
    thread.start(std::move(stack), 1000);
    QTRY_VERIFY(news.has(QStringLiteral("ended")));
    QCOMPARE(news.events(), QStringList({"started 14", "record 4", "ended"}));
    QVERIFY(life.expired());
    QCOMPARE(bus->requests(), QByteArrayList());
}

void TestBusPort::sweepOnAdapterThatRefusesSettingGivesError4InOneRecord()
{
    adapter.refusedSetting = Parity;
    CommThreadScanDevice thread;
    const CommNews news(thread);
    thread.start(DriveBus::drive3(), 1000);
    QTRY_VERIFY(news.has(QStringLiteral("ended")));
    QCOMPARE(news.events(), QStringList({"started 255", "record 4", "ended"}));
    QCOMPARE(bus->requests(), QByteArrayList());
}

void TestBusPort::portOpensAfterEarlierFailure()
{
    bus->disconnectPort();
    QCOMPARE(open(), int(TelegramError::PortNotOpened));
    bus->connectPort();
    QCOMPARE(open(), int(TelegramError::None));
    QCOMPARE(exchange(), accepted);
}

void TestBusPort::openPortOpensAgain()
{
    QCOMPARE(open(), int(TelegramError::None));
    QCOMPARE(open(), int(TelegramError::None));
    QCOMPARE(exchange(), accepted);
}

void TestBusPort::closedPortIsFreeForOthers()
{
    QCOMPARE(open(), int(TelegramError::None));
    QVERIFY(DriveBus::isPortInUse());
    port->close();
    QVERIFY(!DriveBus::isPortInUse());
}

void TestBusPort::requestReachesDriveAndItsReplyComesBack()
{
    QCOMPARE(open(), int(TelegramError::None));
    QCOMPARE(exchange(), accepted);
    QCOMPARE(bus->requests(), QByteArrayList {AccessWith3});
}

void TestBusPort::requestThatLineDoesNotTakeInTimeIsReported()
{
    const int line = ::open(qPrintable(bus->portPath()), O_RDWR | O_NOCTTY);
    QCOMPARE(open(), int(TelegramError::None));
    QCOMPARE(tcflow(line, TCOOFF), 0);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!port->send(QByteArray::fromHex(AccessWith3), 100));
    QVERIFY(timer.elapsed() >= 90);
    tcflow(line, TCOON);
    ::close(line);
}

void TestBusPort::requestOnPortThatIsNotOpenIsReported()
{
    QVERIFY(!send());
}

void TestBusPort::silentDriveIsReportedAfterTimeout()
{
    bus->command("fault 3 no-answer");
    QCOMPARE(open(), int(TelegramError::None));
    QVERIFY(send());
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!port->waitForReply(100));
    QVERIFY(timer.elapsed() >= 90);
}

void TestBusPort::negativeTimeoutDoesNotWaitForEver()
{
    bus->command("fault 3 no-answer");
    QCOMPARE(open(), int(TelegramError::None));
    QVERIFY(send());
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!port->waitForReply(-1));
    QVERIFY2(timer.elapsed() < 5000, "no time at all is meant");
}

bool TestBusPort::hasSentTheRest() const
{
    return bus->wire().last().bytes.toHex(' ') == "00 d9";
}

// Ten exchanges, each on an empty line.
int TestBusPort::wholeRepliesOfTen()
{
    int whole = 0;
    for (int i = 0; i < 10; ++i) {
        whole += open() == TelegramError::None && exchange() == accepted;
        if (!QTest::qWaitFor([this] { return hasSentTheRest(); }))
            return -1;
    }
    return whole;
}

void TestBusPort::replyTakesNoMoreRoomThanItsBytes()
{
    // In one piece, and gathered in two.
    for (const int pauseMs : {0, 5}) {
        bus->command("fault 3 split at=2 count=1 ms=" + QByteArray::number(pauseMs));
        QVERIFY(open() == 0 && send() && port->waitForReply(1000));
        const QByteArray reply = port->readReply();
        QCOMPARE(reply.toHex(' '), accepted);
        QVERIFY2(reply.capacity() < 64, qPrintable(QString::number(reply.capacity())));
    }
}

// A busy machine may stretch a pause or sleep through one, but not most of the time.
void TestBusPort::replyWithPauseOf10MsIsOne()
{
    bus->command("fault 3 split at=2 ms=10");
    QVERIFY(wholeRepliesOfTen() > 5);
}

void TestBusPort::replyWithPauseOf40MsIsCut()
{
    bus->command("fault 3 split at=2 ms=40");
    const int whole = wholeRepliesOfTen();
    QVERIFY(whole >= 0 && whole < 5);
}

void TestBusPort::restOfCutReplyBeginsNext()
{
    bus->command("fault 3 split at=2 ms=100 count=1");
    QCOMPARE(open(), int(TelegramError::None));
    QCOMPARE(exchange(), QByteArray("89 03"));
    QTRY_VERIFY(hasSentTheRest());
    QCOMPARE(exchange(), QByteArray("00 d9 89 03 00 d9"));
}

void TestBusPort::babblingLineIsCutOffAfterTime()
{
    bus->command("fault * babble byte=0x2A ms=5");
    QCOMPARE(open(), int(TelegramError::None));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(port->waitForReply(1000));
    QVERIFY(!port->readReply().isEmpty());
    QVERIFY2(timer.elapsed() < 5000, "a second is meant");
}

void TestBusPort::floodedLineIsCutOffAtLength()
{
    for (int address = 10; address < 40; ++address) {
        bus->command("add-drive " + QByteArray::number(address));
        bus->command("fault " + QByteArray::number(address) + " babble ms=1");
    }
    QCOMPARE(open(), int(TelegramError::None));
    QVERIFY(port->waitForReply(1000));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(port->readReply().size() >= 1024);
    QVERIFY2(timer.elapsed() < 900, "milliseconds are meant; the time comes after a second");
}

void TestBusPort::waitForReplyEndsAtOnceWhenAdapterIsPulled()
{
    bus->command("fault 3 pull");
    QCOMPARE(open(), int(TelegramError::None));
    QVERIFY(send());
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!port->waitForReply(20000));
    QVERIFY2(timer.elapsed() < 10000, "ten seconds are the longest wait");
}

void TestBusPort::replyEndsAtOnceWhenAdapterIsPulled()
{
    bus->command("fault * babble ms=5");
    QCOMPARE(open(), int(TelegramError::None));
    QVERIFY(port->waitForReply(1000));
    bus->pullAdapter();
    QElapsedTimer timer;
    timer.start();
    port->readReply();
    QVERIFY2(timer.elapsed() < 900, "not only when the time for a reply is up, after a second");
}

void TestBusPort::requestToPulledAdapterIsReportedAtOnce()
{
    QCOMPARE(open(), int(TelegramError::None));
    bus->pullAdapter();
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!port->send(QByteArray::fromHex(AccessWith3), 20000));
    QVERIFY2(timer.elapsed() < 10000, "ten seconds are the longest wait");
}

QTEST_GUILESS_MAIN(TestBusPort)

#include "tst_busport.moc"
