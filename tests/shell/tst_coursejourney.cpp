// The course of the live values in the whole window: recorded from the beginning, shown when a person asks.

#include "shell/coursewindow.h"
#include "tests/shell/connectedwindow.h"
#include "tests/support/isolatedtest.h"

#include <QComboBox>
#include <QHelpEvent>
#include <QToolTip>

using namespace ShellTest;

class TestCourseJourney : public IsolatedTest
{
    Q_OBJECT

private slots:
    void courseWasRecordedBeforeItIsShown();
    void windowShowsSelectedDriveEachTime();
    void openWindowAsksForNothing();
    void operationIsMarkedWhereItEnded();
    void courseClosesWithWindow();

private:
    void prepare() override;
    void tidyUp() override;

    /// Null until it has been opened.
    CourseWindow *course() const { return ui->window->findChild<CourseWindow *>(); }
    QString shownDrive() const { return child<QComboBox>(*course(), "CbCourseDrive").currentText(); }
    bool open() const { return ui->press("StatusFresh"); }
    /// True if a tool tip somewhere over the uppermost plot tells this.
    bool toldInCourse(const char *text) const;

    std::unique_ptr<ConnectedWindow> ui;
};

void TestCourseJourney::prepare()
{
    writeDefinitions();
    ui = std::make_unique<ConnectedWindow>(QList<int> {3, 4});
    QVERIFY(ui->begin({3, 4}));
}

void TestCourseJourney::tidyUp()
{
    ui->window->close();
    ui.reset();
}

bool TestCourseJourney::toldInCourse(const char *text) const
{
    QWidget *canvas = course()->findChild<CoursePlot *>()->canvas();
    for (int x = 0; x < canvas->width(); ++x) {
        QHelpEvent event(QEvent::ToolTip, QPoint(x, 5), canvas->mapToGlobal(QPoint(x, 5)));
        QApplication::sendEvent(canvas, &event);
        if (QToolTip::text() == QLatin1String(text))
            return true;
    }
    return false;
}

void TestCourseJourney::courseWasRecordedBeforeItIsShown()
{
    QVERIFY(ui->waitForAPass());
    QVERIFY(!course());
    QVERIFY(open());
    QVERIFY(course()->isVisible());
    QVERIFY(!course()->isModal());
    QVERIFY(sees(*course(), "BtnCourseSave"));
    QVERIFY(child(*course(), "BtnCourseSave").isEnabled());
}

void TestCourseJourney::windowShowsSelectedDriveEachTime()
{
    QVERIFY(open());
    QCOMPARE(shownDrive(), deviceName(drive(3)));
    QTest::keyClick(course(), Qt::Key_Escape);
    QVERIFY(ui->showDrive(4));
    QVERIFY(open());
    QCOMPARE(ui->window->findChildren<CourseWindow *>().size(), 1);
    QCOMPARE(shownDrive(), deviceName(drive(4)));
}

void TestCourseJourney::openWindowAsksForNothing()
{
    const auto requestsSoFar = [this] {
        const QByteArrayList all = ui->drives.requests(firstPort);
        return QSet<QByteArray>(all.begin(), all.end());
    };
    QVERIFY(ui->waitForAPass());
    const QSet<QByteArray> before = requestsSoFar();
    QVERIFY(open());
    QVERIFY(ui->waitForAPass());
    QCOMPARE(requestsSoFar(), before);
}

void TestCourseJourney::operationIsMarkedWhereItEnded()
{
    // A drive of which nothing was read yet has no course to stand in.
    QVERIFY(ui->waitForAPass());
    QVERIFY(open());
    QVERIFY(!toldInCourse("Schreiben"));
    QVERIFY(ui->change("1234"));
    QVERIFY(ui->press("BtnUpload"));
    QVERIFY(Person::waitUntil([this] { return toldInCourse("Schreiben"); }));
}

void TestCourseJourney::courseClosesWithWindow()
{
    QVERIFY(open());
    ui->window->close();
    QVERIFY(!course()->isVisible());
}

QTEST_MAIN(TestCourseJourney)

#include "tst_coursejourney.moc"
