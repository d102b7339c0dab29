// The clock by which the age of values is told: it runs on while the computer sleeps.

#include "control/services/platform.h"

#include <QFile>
#include <QTest>

class TestPlatformClock : public QObject
{
    Q_OBJECT

private slots:
    void clockGoesOn();
    void clockCountsSleep();
};

void TestPlatformClock::clockGoesOn()
{
    const qint64 before = Platform::millisecondsWithSleep();
    QTRY_VERIFY(Platform::millisecondsWithSleep() > before);
}

void TestPlatformClock::clockCountsSleep()
{
    QFile uptime(QStringLiteral("/proc/uptime"));
    if (!uptime.open(QIODevice::ReadOnly))
        QSKIP("this system does not tell how long it has been up, sleep included");
    const double seconds = uptime.readAll().split(' ').first().toDouble();
    const double clock = static_cast<double>(Platform::millisecondsWithSleep()) / 1000;
    QVERIFY2(qAbs(clock - seconds) < 60, qPrintable(QString::number(clock - seconds)));
}

QTEST_GUILESS_MAIN(TestPlatformClock)

#include "tst_platformclock.moc"
