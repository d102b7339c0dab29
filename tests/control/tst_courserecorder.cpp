// The courses are kept from the passes that are run anyway, and hold only values that a pass has read.

#include "control/courserecorder.h"
#include "tests/control/controlleronabus.h"

#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <optional>

namespace {

constexpr int pauseMs = 20;
constexpr int turns = 12;
constexpr int speed = -77;

} // namespace

class TestCourseRecorder : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void eachPassIsRecorded();
    void recordingAsksForNothing();
    void storingBringsNoValues();
    void passThatIsCutShortBringsNoValues();
    void driveThatDoesNotAnswerLeavesGap();
    void driveWithoutAccessIsNotRecorded();
    void markStandsAtItsDrive();

private:
    void poll() { tested->showPage(TestedController::tablePage, id3); }
    /// Null before the first values.
    const LiveCourse *course() const
    {
        const DriveCourse *drive = recorder->courses().find(id3);
        return drive ? &drive->course : nullptr;
    }
    int count() const { return course() ? course()->count() : 0; }
    /// True if all values are those that the drive tells.
    bool areAllTrue() const;

    std::optional<ControllerOnABus> tested;
    std::optional<CourseRecorder> recorder;
    int id3 = 0;
};

void TestCourseRecorder::init()
{
    tested.emplace();
    recorder.emplace(tested->controller);
    Z7Services::instance()->options()->setPollingInterval(pauseMs);
    id3 = tested->drive3().deviceId();
    tested->bus.command("set 3 param 0x8001 " + QByteArray::number(speed));
    tested->bus.command("set 3 param 0x8004 " + QByteArray::number(turns));
    tested->connectDrives({tested->drive3()});
}

void TestCourseRecorder::cleanup()
{
    recorder.reset();
    tested.reset();
}

bool TestCourseRecorder::areAllTrue() const
{
    for (int i = 0; i < count(); ++i) {
        const LiveValues &values = course()->at(i);
        if (qRound(values.position) != turns || values.speed == 0)
            return false;
    }
    return count() > 0;
}

void TestCourseRecorder::eachPassIsRecorded()
{
    const qint64 begin = QDateTime::currentMSecsSinceEpoch();
    poll();
    QTRY_VERIFY(count() >= 4);
    QVERIFY(areAllTrue());
    QVERIFY(course()->at(0).timeMs >= begin);
    QVERIFY(course()->newest().timeMs <= QDateTime::currentMSecsSinceEpoch());
    QVERIFY(!course()->at(1).isAfterGap);
    QCOMPARE(recorder->courses().find(id3)->name, deviceName(tested->drive3()));
}

void TestCourseRecorder::recordingAsksForNothing()
{
    poll();
    QTRY_VERIFY(count() >= 3);
    // Which passwords are sent is another matter.
    const QStringList aPass =
        logOnRequests().mid(2) + readRequests(tested->controller.device(id3).parameterSet.params.keys());
    QStringList sent = tested->requests();
    sent.erase(std::remove_if(sent.begin(), sent.end(), [](const QString &r) { return r.startsWith("09"); }),
        sent.end());
    for (int i = 0; i < sent.size(); ++i)
        QCOMPARE(sent[i], aPass[i % aPass.size()]);
}

void TestCourseRecorder::storingBringsNoValues()
{
    poll();
    QTRY_VERIFY(count() >= 2);
    tested->forgetNotes();
    tested->controller.StoreData();
    QTRY_VERIFY(tested->isOver());
    const int before = count();
    QTRY_VERIFY(count() > before);
    QVERIFY(areAllTrue());
}

void TestCourseRecorder::passThatIsCutShortBringsNoValues()
{
    poll();
    QTRY_VERIFY(count() >= 2);
    tested->slowDown();
    tested->forgetRequests();
    // The position is read in the middle of a pass.
    QTRY_VERIFY(tested->requests().size() >= logOnRequests().size() / 2);
    const int before = count();
    tested->controller.StoreData();
    QTRY_VERIFY(tested->isOver());
    QCOMPARE(count(), before);
    QTRY_VERIFY(count() > before);
    QVERIFY(areAllTrue());
}

void TestCourseRecorder::driveThatDoesNotAnswerLeavesGap()
{
    poll();
    QTRY_VERIFY(count() >= 2);
    QSignalSpy lost(&tested->controller.knowledge(), SIGNAL(driveNotRead(int)));
    tested->bus.command("fault 3 no-answer count=1");
    QVERIFY(lost.wait());
    const int before = count();
    QTRY_VERIFY(count() > before + 1);
    QVERIFY(course()->at(before).isAfterGap);
    QVERIFY(!course()->at(before + 1).isAfterGap);
}

void TestCourseRecorder::driveWithoutAccessIsNotRecorded()
{
    tested->bus.command("set 3 password 99");
    poll();
    QTRY_VERIFY(tested->controller.device(id3).hasError());
    QVERIFY(!course());
}

void TestCourseRecorder::markStandsAtItsDrive()
{
    poll();
    QTRY_VERIFY(count() >= 1);
    recorder->mark(5, id3, QStringLiteral("Schreiben"));
    QCOMPARE(course()->marks().size(), 1);
}

QTEST_MAIN(TestCourseRecorder)

#include "tst_courserecorder.moc"
