// What counts as growth over a long run, and what does not.

#include "tests/soak/figures.h"

#include <QtTest>

#include <fcntl.h>
#include <thread>
#include <unistd.h>

class TestGrowth : public QObject
{
    Q_OBJECT

private slots:
    void steadyFiguresHaveNotGrown();
    void figuresThatRiseFromMinuteToMinuteHaveGrown();
    void figuresThatComeAndGoHaveNotGrown();
    void oneFigureThatStandsOutIsNoGrowth();
    void oneThreadMoreFromMiddleOnIsGrowth();
    void fewerThanThreeFiguresTellNothing();
    void openFileIsOneDescriptorMore();
    void runningThreadIsOneThreadMore();
    void allocatedMemoryIsHeap();
};

void TestGrowth::steadyFiguresHaveNotGrown()
{
    QCOMPARE(growth({4, 4, 4, 4, 4, 4}), 0.0);
}

void TestGrowth::figuresThatRiseFromMinuteToMinuteHaveGrown()
{
    QCOMPARE(growth({100, 110, 120, 130, 140, 150, 160, 170, 180}), 60.0);
}

void TestGrowth::figuresThatComeAndGoHaveNotGrown()
{
    QCOMPARE(growth({4, 5, 4, 5, 4, 5, 4, 5, 4}), 0.0);
}

void TestGrowth::oneFigureThatStandsOutIsNoGrowth()
{
    QCOMPARE(growth({4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 90, 4}), 0.0);
}

void TestGrowth::oneThreadMoreFromMiddleOnIsGrowth()
{
    QCOMPARE(growth({4, 4, 4, 4, 5, 5, 5, 5, 5}), 1.0);
}

void TestGrowth::fewerThanThreeFiguresTellNothing()
{
    QCOMPARE(growth({}), 0.0);
    QCOMPARE(growth({1, 9}), 0.0);
}

void TestGrowth::openFileIsOneDescriptorMore()
{
    const double before = ProcessFigures::now().descriptors;
    const int file = ::open("/dev/null", O_RDONLY);
    QCOMPARE(ProcessFigures::now().descriptors, before + 1);
    ::close(file);
    QCOMPARE(ProcessFigures::now().descriptors, before);
}

void TestGrowth::runningThreadIsOneThreadMore()
{
    const double before = ProcessFigures::now().threads;
    QSemaphore end;
    std::thread thread([&end] { end.acquire(); });
    QCOMPARE(ProcessFigures::now().threads, before + 1);
    end.release();
    thread.join();
}

void TestGrowth::allocatedMemoryIsHeap()
{
    const double before = ProcessFigures::now().heapKb;
    if (before == 0)
        QSKIP("a sanitizer's allocator keeps no such account");
    const QByteArray megabyte(1024 * 1024, 'x');
    QVERIFY(ProcessFigures::now().heapKb >= before + 1024);
    QCOMPARE(megabyte.size(), 1024 * 1024);
}

QTEST_GUILESS_MAIN(TestGrowth)
#include "tst_growth.moc"
