#include "testdrives.h"

#include <QtTest>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

/// The preload library, which is linked here instead: what a program finds that sets parity on the port.
class TestParityPty : public QObject
{
    Q_OBJECT

private slots:
    void evenParityIsTakenByPseudoTerminal();
    void otherSettingsReachPseudoTerminal();
};

namespace {

termios settingsOf(int fd)
{
    termios settings = {};
    if (::tcgetattr(fd, &settings) != 0)
        qFatal("no terminal");
    return settings;
}

int openPort(const z7sim::SimulatedBus &bus)
{
    return ::open(qPrintable(bus.portPath()), O_RDWR | O_NOCTTY);
}

} // namespace

void TestParityPty::evenParityIsTakenByPseudoTerminal()
{
    z7sim::SimulatedBus bus;
    QVERIFY(bus.start());
    const int fd = openPort(bus);
    termios settings = settingsOf(fd);
    settings.c_cflag |= PARENB;
    QCOMPARE(::tcsetattr(fd, TCSANOW, &settings), 0);
    QVERIFY(settings.c_cflag & PARENB); // the program's own copy stays as it was
    ::close(fd);
}

void TestParityPty::otherSettingsReachPseudoTerminal()
{
    z7sim::SimulatedBus bus;
    QVERIFY(bus.start());
    const int fd = openPort(bus);
    termios settings = settingsOf(fd);
    settings.c_cflag |= PARENB | CSTOPB;
    QCOMPARE(::tcsetattr(fd, TCSANOW, &settings), 0);
    QVERIFY(settingsOf(fd).c_cflag & CSTOPB);
    ::close(fd);
}

QTEST_GUILESS_MAIN(TestParityPty)
#include "tst_paritypty.moc"
