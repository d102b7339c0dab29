// The course of the live values in the whole window: recorded from the beginning, shown when a person asks.

#include "shell/coursewindow.h"
#include "tests/shell/connectedwindow.h"
#include "tests/support/isolatedtest.h"

#include <QComboBox>

using namespace ShellTest;

class TestCourseJourney : public IsolatedTest
{
    Q_OBJECT

private slots:
    void courseWasRecordedBeforeItIsShown();
    void windowShowsSelectedDriveEachTime();
    void openWindowAsksForNothing();
    void courseClosesWithWindow();

private:
    void prepare() override;
    void tidyUp() override;

    /// Null until it has been opened.
    CourseWindow *course() const { return ui->window->findChild<CourseWindow *>(); }
    QString shownDrive() const { return child<QComboBox>(*course(), "CbCourseDrive").currentText(); }
    void open() const { ui->window->CallCourseWindow(); }

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

void TestCourseJourney::courseWasRecordedBeforeItIsShown()
{
    QVERIFY(ui->waitForAPass());
    QVERIFY(!course());
    open();
    QVERIFY(course()->isVisible());
    QVERIFY(!course()->isModal());
    QVERIFY(sees(*course(), "BtnCourseSave"));
    QVERIFY(child(*course(), "BtnCourseSave").isEnabled());
}

void TestCourseJourney::windowShowsSelectedDriveEachTime()
{
    open();
    QCOMPARE(shownDrive(), deviceName(drive(3)));
    QTest::keyClick(course(), Qt::Key_Escape);
    QVERIFY(ui->showDrive(4));
    open();
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
    open();
    QVERIFY(ui->waitForAPass());
    QCOMPARE(requestsSoFar(), before);
}

void TestCourseJourney::courseClosesWithWindow()
{
    open();
    ui->window->close();
    QVERIFY(!course()->isVisible());
}

QTEST_MAIN(TestCourseJourney)

#include "tst_coursejourney.moc"
