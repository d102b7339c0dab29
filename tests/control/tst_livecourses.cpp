// The courses of several drives: which records hold values, where there are gaps, and what stays of a drive
// that has gone.

#include "control/livecourses.h"
#include "tests/control/livevalues.h"

#include <QtTest>

namespace {

constexpr qint64 begin = 1'000'000'000;
constexpr qint64 staleAfterMs = 2000;

int idOf(int address)
{
    return pollingRecord(address).deviceId();
}

/// The speeds of a drive's course, with a bar before those after a gap: "| 5 6 | 7"; empty without a course.
QString speedsOf(const LiveCourses &courses, int address)
{
    const DriveCourse *drive = courses.find(idOf(address));
    QStringList texts;
    for (int i = 0; drive && i < drive->course.count(); ++i) {
        if (drive->course.at(i).isAfterGap)
            texts.append(QStringLiteral("|"));
        texts.append(QString::number(drive->course.at(i).speed));
    }
    return texts.join(QLatin1Char(' '));
}

} // namespace

class TestLiveCourses : public QObject
{
    Q_OBJECT

private slots:
    void init() { courses = LiveCourses(); }

    void allLiveValuesOfRecordAreTaken();
    void recordWithoutAnswerHoldsNoValues_data();
    void recordWithoutAnswerHoldsNoValues();
    void lostDriveLeavesGap();
    void staleValuesLeaveGap_data();
    void staleValuesLeaveGap();
    void eachDriveHasItsOwnCourse();
    void driveThatComesBackGoesOn();
    void driveHeardLongestAgoMakesWay();
    void driveIsNamedAsInTree();
    void markBelongsToItsDrive();
    void markOfUnknownDriveIsNotKept();

private:
    void take(const Z7Device &record, qint64 afterMs) { courses.take(record, begin + afterMs, staleAfterMs); }

    LiveCourses courses;
};

void TestLiveCourses::allLiveValuesOfRecordAreTaken()
{
    Z7Device record = pollingRecord(3, -1500);
    record.actualCurrent = 8500;
    record.actualTemperature = -7;
    record.actualPosition = 12.5;
    record.analogInputA1 = 1023;
    take(record, 0);
    const LiveValues &values = courses.find(idOf(3))->course.newest();
    QCOMPARE(values.timeMs, begin);
    QCOMPARE(values.speed, -1500);
    QCOMPARE(values.current, 8500);
    QCOMPARE(values.temperature, -7);
    QCOMPARE(values.position, 12.5);
    QCOMPARE(values.analogInput, 1023);
}

void TestLiveCourses::recordWithoutAnswerHoldsNoValues_data()
{
    QTest::addColumn<Z7Device>("record");
    Z7Device withError = pollingRecord(3, 7);
    withError.setDeviceError(1);
    Z7Device lost = pollingRecord(3, 7);
    lost.setConnected(false);
    Z7Device refused = pollingRecord(3, 7);
    refused.setAccessGranted(false);
    QTest::newRow("error") << withError;
    QTest::newRow("not connected") << lost;
    QTest::newRow("no access") << refused;
}

void TestLiveCourses::recordWithoutAnswerHoldsNoValues()
{
    QFETCH(Z7Device, record);
    take(record, 0);
    QVERIFY(courses.ids().isEmpty());
}

void TestLiveCourses::lostDriveLeavesGap()
{
    take(pollingRecord(3, 1), 0);
    courses.interrupt(idOf(3));
    take(pollingRecord(3, 2), 1000);
    take(pollingRecord(3, 3), 1500);
    QCOMPARE(speedsOf(courses, 3), QStringLiteral("| 1 | 2 3"));
}

void TestLiveCourses::staleValuesLeaveGap_data()
{
    QTest::addColumn<qint64>("afterMs");
    QTest::addColumn<QString>("speeds");
    QTest::newRow("in time") << staleAfterMs << "| 1 2";
    QTest::newRow("too late") << staleAfterMs + 1 << "| 1 | 2";
}

void TestLiveCourses::staleValuesLeaveGap()
{
    QFETCH(qint64, afterMs);
    take(pollingRecord(3, 1), 0);
    take(pollingRecord(3, 2), afterMs);
    QTEST(speedsOf(courses, 3), "speeds");
}

void TestLiveCourses::eachDriveHasItsOwnCourse()
{
    take(pollingRecord(3, 1), 0);
    take(pollingRecord(4, 10), 1000);
    take(pollingRecord(4, 11), 2000);
    QCOMPARE(speedsOf(courses, 3), QStringLiteral("| 1"));
    QCOMPARE(speedsOf(courses, 4), QStringLiteral("| 10 11"));
    QCOMPARE(courses.ids(), (QList<int> {idOf(3), idOf(4)}));
}

void TestLiveCourses::driveThatComesBackGoesOn()
{
    take(pollingRecord(3, 1), 0);
    take(pollingRecord(4, 10), 1000);
    take(pollingRecord(3, 2), 60000);
    QCOMPARE(speedsOf(courses, 3), QStringLiteral("| 1 | 2"));
}

void TestLiveCourses::driveHeardLongestAgoMakesWay()
{
    for (int address = 1; address <= LiveCourses::mostDrives; ++address)
        take(pollingRecord(address), address);
    take(pollingRecord(1), 1000);
    take(pollingRecord(LiveCourses::mostDrives + 1), 2000);
    QCOMPARE(courses.ids().size(), LiveCourses::mostDrives);
    QVERIFY(courses.find(idOf(1)));
    QVERIFY(!courses.find(idOf(2)));
}

void TestLiveCourses::driveIsNamedAsInTree()
{
    take(pollingRecord(3), 0);
    QCOMPARE(courses.find(idOf(3))->name, deviceName(pollingRecord(3)));
    QCOMPARE(courses.find(idOf(3))->version, QStringLiteral("V123"));
}

void TestLiveCourses::markBelongsToItsDrive()
{
    take(pollingRecord(3), 0);
    take(pollingRecord(4), 1000);
    courses.mark(begin + 1500, idOf(4), QStringLiteral("Schreiben"));
    QVERIFY(courses.find(idOf(3))->course.marks().isEmpty());
    QCOMPARE(courses.find(idOf(4))->course.marks().size(), 1);
    QCOMPARE(courses.find(idOf(4))->course.marks().first().timeMs, begin + 1500);
}

void TestLiveCourses::markOfUnknownDriveIsNotKept()
{
    courses.mark(begin, idOf(3), QStringLiteral("Schreiben"));
    QVERIFY(courses.ids().isEmpty());
}

QTEST_APPLESS_MAIN(TestLiveCourses)

#include "tst_livecourses.moc"
