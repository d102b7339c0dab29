// What one drive told over the last hour: bounds, order and gaps of the ring.

#include "tests/control/livevalues.h"

#include <QtTest>

#include <malloc.h>

namespace {

constexpr qint64 begin = 1'000'000'000;
constexpr qint64 second = 1000;
constexpr qint64 hour = LiveCourse::spanMs;

/// So many values at this distance, the first at `begin`; each has its number as speed.
LiveCourse filled(int count, qint64 distance = 100)
{
    LiveCourse course;
    for (int i = 0; i < count; ++i)
        course.append(valuesAt(begin + i * distance, i));
    return course;
}

bool isInOrder(const LiveCourse &course)
{
    for (int i = 1; i < course.count(); ++i) {
        const LiveValues &before = course.at(i - 1);
        if (course.at(i).timeMs < before.timeMs || course.at(i).speed != before.speed + 1)
            return false;
    }
    return true;
}

} // namespace

class TestLiveCourse : public QObject
{
    Q_OBJECT

private slots:
    void newCourseIsEmpty();
    void valuesAreKeptAsTheyCame();
    void hourAndNoMoreIsKept();
    void valuesAfterMoreThanHourAreAlone();
    void oldestMakesWayWhenThereAreTooMany();
    void fullCourseTakesNoMemory();
    void valuesAreFoundByTime_data();
    void valuesAreFoundByTime();
    void nextValuesComeAfterInterruption();
    void courseMovesBackWithClock();
    void sameTimeIsNoJumpOfClock();
    void marksAreKept();
    void oldestMarkMakesWay();
    void marksMoveBackWithClock();
};

void TestLiveCourse::newCourseIsEmpty()
{
    const LiveCourse course;
    QVERIFY(course.isEmpty());
    QCOMPARE(course.firstFrom(begin), 0);
    QVERIFY(course.marks().isEmpty());
}

void TestLiveCourse::valuesAreKeptAsTheyCame()
{
    LiveValues values = valuesAt(begin, -1500);
    values.position = -12.25;
    values.current = 65535;
    values.temperature = -20;
    values.analogInput = 1023;
    LiveCourse course;
    course.append(values);
    const LiveValues &kept = course.newest();
    QCOMPARE(kept.timeMs, begin);
    QCOMPARE(kept.speed, -1500);
    QCOMPARE(kept.position, -12.25);
    QCOMPARE(kept.current, 65535);
    QCOMPARE(kept.temperature, -20);
    QCOMPARE(kept.analogInput, 1023);
    QVERIFY(!kept.isAfterGap);
}

void TestLiveCourse::hourAndNoMoreIsKept()
{
    const LiveCourse course = filled(3 * 3600, second);
    QCOMPARE(course.newest().timeMs - course.at(0).timeMs, hour);
    QCOMPARE(course.count(), 3601);
    QVERIFY(isInOrder(course));
}

void TestLiveCourse::valuesAfterMoreThanHourAreAlone()
{
    LiveCourse course = filled(5000);
    course.append(valuesAt(course.newest().timeMs + hour + 1, 7));
    QCOMPARE(course.count(), 1);
    QCOMPARE(course.at(0).speed, 7);
}

void TestLiveCourse::oldestMakesWayWhenThereAreTooMany()
{
    const int count = 5 * LiveCourse::mostValues + 300;
    const LiveCourse course = filled(count);
    QCOMPARE(course.count(), LiveCourse::mostValues);
    QCOMPARE(course.newest().speed, count - 1);
    QVERIFY(isInOrder(course));
}

void TestLiveCourse::fullCourseTakesNoMemory()
{
    LiveCourse course = filled(2 * LiveCourse::mostValues);
    const size_t before = mallinfo2().uordblks;
    for (int i = 1; i <= LiveCourse::mostValues; ++i)
        course.append(valuesAt(course.newest().timeMs + 100));
    QCOMPARE(mallinfo2().uordblks, before);
}

void TestLiveCourse::valuesAreFoundByTime_data()
{
    QTest::addColumn<qint64>("time");
    QTest::addColumn<int>("index");
    QTest::newRow("before all") << begin - 1 << 0;
    QTest::newRow("time of the first") << begin << 0;
    QTest::newRow("between two") << begin + 101 << 2;
    QTest::newRow("time of the last") << begin + 400 << 4;
    QTest::newRow("behind all") << begin + 401 << 5;
}

void TestLiveCourse::valuesAreFoundByTime()
{
    QFETCH(qint64, time);
    QTEST(filled(5).firstFrom(time), "index");
}

void TestLiveCourse::nextValuesComeAfterInterruption()
{
    LiveCourse course = filled(2);
    course.interrupt();
    course.append(valuesAt(begin + 200));
    course.append(valuesAt(begin + 300));
    QVERIFY(!course.at(1).isAfterGap);
    QVERIFY(course.at(2).isAfterGap);
    QVERIFY(!course.at(3).isAfterGap);
}

void TestLiveCourse::courseMovesBackWithClock()
{
    LiveCourse course = filled(3, second);
    course.append(valuesAt(begin - hour, 3));
    QCOMPARE(course.count(), 4);
    QVERIFY(isInOrder(course));
    QCOMPARE(course.at(2).timeMs - course.at(0).timeMs, 2 * second);
    QVERIFY(course.newest().isAfterGap);
}

void TestLiveCourse::sameTimeIsNoJumpOfClock()
{
    LiveCourse course = filled(1);
    course.append(valuesAt(begin));
    QCOMPARE(course.count(), 2);
    QVERIFY(!course.newest().isAfterGap);
}

void TestLiveCourse::marksAreKept()
{
    LiveCourse course;
    course.mark({begin, QStringLiteral("Schreiben")});
    course.mark({begin + second, QStringLiteral("Lesen")});
    QCOMPARE(course.marks().size(), 2);
    QCOMPARE(course.marks().first().timeMs, begin);
    QCOMPARE(course.marks().first().text, QStringLiteral("Schreiben"));
}

void TestLiveCourse::oldestMarkMakesWay()
{
    LiveCourse course;
    for (int i = 0; i <= LiveCourse::mostMarks; ++i)
        course.mark({begin + i, QString::number(i)});
    QCOMPARE(course.marks().size(), LiveCourse::mostMarks);
    QCOMPARE(course.marks().first().text, QStringLiteral("1"));
    QCOMPARE(course.marks().last().text, QString::number(LiveCourse::mostMarks));
}

void TestLiveCourse::marksMoveBackWithClock()
{
    LiveCourse course = filled(3, second);
    course.mark({begin + second, QStringLiteral("Schreiben")});
    course.append(valuesAt(begin - hour));
    QCOMPARE(course.marks().first().timeMs, course.at(1).timeMs);
}

QTEST_APPLESS_MAIN(TestLiveCourse)

#include "tst_livecourse.moc"
