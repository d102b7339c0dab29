// The window with the course of the live values: what is drawn of which drive, how a person looks closer, and
// that nothing is drawn or written unasked.

#include "control/coursequantities.h"
#include "control/services/options.h"
#include "model/parameterdefinitions.h"
#include "shell/coursewindow.h"
#include "tests/shell/contentband.h"
#include "tests/support/filedialogs.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/messageboxes.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QHelpEvent>
#include <QLabel>
#include <QToolTip>
#include <QtTest>

#include <qwt_plot.h>
#include <qwt_scale_div.h>
#include <qwt_scale_map.h>

#include <optional>

using namespace ShellTest;

namespace {

constexpr int anyPage = 4;
constexpr qint64 staleAfterMs = 2600;

/// What a pass reports.
Z7Device withSpeed(Z7Device record, int speed)
{
    record.actualSpeed = speed;
    return record;
}

/// A press, a move and a release; the window hears of the way as of a mouse that is really there.
void drag(QWidget *canvas, int from, int to)
{
    const int y = canvas->height() / 2;
    QTest::mousePress(canvas, Qt::LeftButton, {}, {from, y});
    QMouseEvent move(QEvent::MouseMove, QPoint(to, y + 5), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(canvas, &move);
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, {to, y + 5});
}

} // namespace

class TestCourseWindow : public IsolatedTest
{
    Q_OBJECT

private slots:
    void withoutValuesWindowSaysSo();
    void selectedDriveIsShown();
    void windowFollowsSelection();
    void otherDriveCanBeChosen();
    void courseStaysWhenNoDriveIsSelected();
    void quantitiesHaveNamesAndUnits();
    void wholeCourseIsShown();
    void firstSecondsDoNotFillWidth();
    void scaleFitsValues();
    void gapIsNotBridged();
    void loneValuesAreSeen();
    void peakAmongManyValuesIsSeen();
    void operationIsNamedAtItsLine();
    void valueUnderPointerIsTold();

    void draggedRangeIsShownInAllPlots();
    void clickIsNoRange();
    void rangeStaysWhileTimeGoesOn();
    void rangeUpToEndGoesAlong();
    void zoomGoesBackStepByStep_data();
    void zoomGoesBackStepByStep();
    void keyShowsNewerHalf();

    void pauseStopsDrawingOnly();
    void closedWindowDoesNotDraw();
    void escapeCloses();

    void courseIsSavedOnRequest_data();
    void courseIsSavedOnRequest();
    void cancelledSavingWritesNothing();
    void fileThatCannotBeWrittenGetsBox();
    void nothingIsWrittenUnasked();

    void everyControlIsReachedAndNamed();
    void windowFitsSmallScreen();

private:
    void prepare() override;
    void tidyUp() override;

    /// Shows a page of the drive, as a person does in the tree.
    bool select(int address)
    {
        const bool isClicked = band->click(anyPage, drive(address));
        band->bring(drive(address));
        return isClicked;
    }
    /// So many passes up to now, one a second; each has its number as speed.
    void recordPasses(int address, int count, qint64 endMs = QDateTime::currentMSecsSinceEpoch())
    {
        const Z7Device record = drive(address);
        for (int i = 0; i < count; ++i)
            courses.take(withSpeed(record, i), endMs - 1000 * (count - 1 - i), staleAfterMs);
    }
    void open()
    {
        window = std::make_unique<CourseWindow>(band->controller, courses);
        window->show();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }

    QList<CoursePlot *> plots() const { return window->findChildren<CoursePlot *>(); }
    CoursePlot *speedPlot() const { return plots().constFirst(); }
    QWidget *canvas() const { return speedPlot()->canvas(); }
    QwtInterval times(int plot = 0) const
    {
        return plots().at(plot)->axisScaleDiv(QwtPlot::xBottom).interval();
    }
    /// True if the curve of the speed is in this column of its plot.
    bool isDrawnAt(double timeMs) const;
    QString toolTipAt(double timeMs) const;
    bool isDrawing() const { return window->findChild<QTimer *>("courseRefreshing")->isActive(); }
    QString shownDrive() const { return child<QComboBox>(*window, "CbCourseDrive").currentText(); }
    bool press(const char *button) const { return Person::press(*window, button); }

    std::optional<ContentBand<>> band;
    LiveCourses courses;
    std::unique_ptr<CourseWindow> window;
};

void TestCourseWindow::prepare()
{
    writeDefinitions();
    Z7Services::instance()->options()->setPollingInterval(0);
    courses = LiveCourses();
    band.emplace();
    band->controller.setDevices({drive(3), drive(4)});
    QVERIFY(select(3));
}

void TestCourseWindow::tidyUp()
{
    window.reset();
    band.reset();
}

bool TestCourseWindow::isDrawnAt(double timeMs) const
{
    const QImage image = canvas()->grab().toImage();
    const int column =
        qRound(speedPlot()->canvasMap(QwtPlot::xBottom).transform(timeMs) * image.devicePixelRatio());
    for (int x = qMax(0, column - 1); x <= qMin(image.width() - 1, column + 1); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (image.pixelColor(x, y).hsvSaturation() > 60)
                return true;
        }
    }
    return false;
}

QString TestCourseWindow::toolTipAt(double timeMs) const
{
    const QPoint place(qRound(speedPlot()->canvasMap(QwtPlot::xBottom).transform(timeMs)), 5);
    QHelpEvent event(QEvent::ToolTip, place, canvas()->mapToGlobal(place));
    QApplication::sendEvent(canvas(), &event);
    return QToolTip::text();
}

// --- drives ---

void TestCourseWindow::withoutValuesWindowSaysSo()
{
    open();
    QCOMPARE(Person::textOf(*window, "LCourseNothing"),
        QStringLiteral(
            "Noch keine Werte. Aufgezeichnet wird, solange die Live-Werte eines Antriebs gelesen werden."));
    QCOMPARE(shownDrive(), deviceName(drive(3)));
    QVERIFY(!speedPlot()->isVisible());
    QVERIFY(!child(*window, "BtnCourseSave").isEnabled());
    recordPasses(3, 2);
    QVERIFY(Person::waitUntil([this] { return speedPlot()->isVisible(); }));
    QVERIFY(!sees(*window, "LCourseNothing"));
}

void TestCourseWindow::selectedDriveIsShown()
{
    recordPasses(3, 5);
    recordPasses(4, 5);
    QVERIFY(select(4));
    open();
    QCOMPARE(shownDrive(), deviceName(drive(4)));
}

void TestCourseWindow::windowFollowsSelection()
{
    recordPasses(3, 5);
    recordPasses(4, 5);
    open();
    QCOMPARE(shownDrive(), deviceName(drive(3)));
    QVERIFY(select(4));
    QVERIFY(Person::waitUntil([this] { return shownDrive() == deviceName(drive(4)); }));
}

void TestCourseWindow::otherDriveCanBeChosen()
{
    const qint64 earlier = QDateTime::currentMSecsSinceEpoch() - 600000;
    recordPasses(4, 70, earlier);
    recordPasses(3, 5);
    open();
    QTest::keyClick(&child(*window, "CbCourseDrive"), Qt::Key_Down);
    QCOMPARE(shownDrive(), deviceName(drive(4)));
    QCOMPARE(times().maxValue(), double(earlier));
    // And back, where the course has gone on.
    recordPasses(3, 1, QDateTime::currentMSecsSinceEpoch() + 10);
    QTest::keyClick(&child(*window, "CbCourseDrive"), Qt::Key_Up);
    QCOMPARE(shownDrive(), deviceName(drive(3)));
    QVERIFY(times().maxValue() > double(earlier));
    QCOMPARE(courses.find(drive(3).deviceId())->course.count(), 6);
}

void TestCourseWindow::courseStaysWhenNoDriveIsSelected()
{
    recordPasses(3, 5);
    open();
    band->controller.setDevices({});
    QVERIFY(Person::waitUntil([this] {
        return times().maxValue() == double(courses.find(drive(3).deviceId())->course.newest().timeMs);
    }));
    QCOMPARE(shownDrive(), deviceName(drive(3)));
}

// --- drawing ---

void TestCourseWindow::quantitiesHaveNamesAndUnits()
{
    Z7Services::instance()
        ->definitions(QStringLiteral("V123"))
        ->parseLine(QStringLiteral("32769;n;1/min;0;;;Signed;1;r;0;"));
    recordPasses(3, 5);
    open();
    QStringList names;
    for (const CoursePlot *plot : plots())
        names.append(plot->accessibleName());
    QCOMPARE(
        names, (QStringList {"Drehzahl [1/min]", "Strom", "Temperatur", "Position", "Analogeingang A1"}));
    QStringList labels;
    for (const QLabel *label : window->findChildren<QLabel *>())
        labels.append(label->text());
    QVERIFY(labels.contains("Drehzahl\n[1/min]"));
    QVERIFY(labels.contains("Position"));
}

void TestCourseWindow::wholeCourseIsShown()
{
    recordPasses(3, 900);
    open();
    const LiveCourse &course = courses.find(drive(3).deviceId())->course;
    for (int i = 0; i < courseQuantityCount; ++i) {
        QCOMPARE(times(i).minValue(), double(course.at(0).timeMs));
        QVERIFY(times(i).maxValue() >= double(course.newest().timeMs));
    }
    QVERIFY(isDrawnAt(double(course.at(0).timeMs)));
    QVERIFY(isDrawnAt(double(course.newest().timeMs)));
}

void TestCourseWindow::firstSecondsDoNotFillWidth()
{
    recordPasses(3, 3);
    open();
    QCOMPARE(times().width(), 60000.0);
}

void TestCourseWindow::scaleFitsValues()
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    courses.take(withSpeed(drive(3), -1500), now - 2000, staleAfterMs);
    courses.take(withSpeed(drive(3), 1500), now - 1000, staleAfterMs);
    open();
    QVERIFY(speedPlot()->axisScaleDiv(QwtPlot::yLeft).contains(-1500));
    QVERIFY(speedPlot()->axisScaleDiv(QwtPlot::yLeft).contains(1500));
    QVERIFY(!plots().at(1)->axisScaleDiv(QwtPlot::yLeft).contains(1500));
}

void TestCourseWindow::gapIsNotBridged()
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    recordPasses(3, 100, now - 300000);
    recordPasses(3, 100, now);
    open();
    QVERIFY(isDrawnAt(double(now - 350000)));
    QVERIFY(!isDrawnAt(double(now - 200000)));
    QVERIFY(isDrawnAt(double(now - 50000)));
}

void TestCourseWindow::loneValuesAreSeen()
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    courses.take(withSpeed(drive(3), 5), now - 30000, staleAfterMs);
    open();
    QVERIFY(isDrawnAt(double(now - 30000)));
    QVERIFY(!isDrawnAt(double(now - 15000)));
}

void TestCourseWindow::peakAmongManyValuesIsSeen()
{
    const qint64 end = QDateTime::currentMSecsSinceEpoch();
    const int count = LiveCourse::mostValues;
    const int peak = count / 2 + 3;
    const Z7Device record = drive(3);
    for (int i = 0; i < count; ++i)
        courses.take(withSpeed(record, i == peak ? 1000 : 0), end - 280 * (count - 1 - i), staleAfterMs);
    open();
    const QImage image = canvas()->grab().toImage();
    const QwtScaleMap map = speedPlot()->canvasMap(QwtPlot::xBottom);
    const int column = qRound(map.transform(double(end - 280 * (count - 1 - peak))));
    bool isSeen = false;
    for (int x = column - 2; x <= column + 2; ++x)
        isSeen |= image.pixelColor(x, image.height() / 2).hsvSaturation() > 60;
    QVERIFY(isSeen);
}

void TestCourseWindow::operationIsNamedAtItsLine()
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    recordPasses(3, 100, now);
    courses.mark(now - 50000, drive(3).deviceId(), QStringLiteral("Schreiben"));
    open();
    const QImage before = canvas()->grab().toImage();
    QCOMPARE(toolTipAt(double(now - 50000)), QStringLiteral("Schreiben"));
    courses.mark(now - 80000, drive(3).deviceId(), QStringLiteral("Lesen"));
    speedPlot()->replot();
    QVERIFY(canvas()->grab().toImage() != before);
    QCOMPARE(toolTipAt(double(now - 80000)), QStringLiteral("Lesen"));
}

void TestCourseWindow::valueUnderPointerIsTold()
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    recordPasses(3, 60, now);
    open();
    const QString time = QDateTime::fromMSecsSinceEpoch(now - 9000).toString(QStringLiteral("hh:mm"));
    QVERIFY2(toolTipAt(double(now - 9000)).startsWith(time), qPrintable(QToolTip::text()));
    const QStringList words = toolTipAt(double(now - 9000)).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QVERIFY2(qAbs(words.value(1).toInt() - 50) <= 1, qPrintable(words.join(QLatin1Char(' '))));
}

// --- a closer look ---

void TestCourseWindow::draggedRangeIsShownInAllPlots()
{
    recordPasses(3, 1000);
    open();
    const QwtInterval whole = times();
    QWidget *drawnOver = plots().at(2)->canvas();
    drag(drawnOver, drawnOver->width() / 4, drawnOver->width() / 2);
    for (int i = 0; i < courseQuantityCount; ++i) {
        QVERIFY(qAbs(times(i).minValue() - (whole.minValue() + whole.width() / 4)) < whole.width() / 50);
        QVERIFY(qAbs(times(i).maxValue() - (whole.minValue() + whole.width() / 2)) < whole.width() / 50);
    }
}

void TestCourseWindow::clickIsNoRange()
{
    recordPasses(3, 1000);
    open();
    QTest::mouseClick(canvas(), Qt::LeftButton, {}, canvas()->rect().center());
    QVERIFY(!child(*window, "BtnCourseBack").isEnabled());
}

void TestCourseWindow::rangeStaysWhileTimeGoesOn()
{
    recordPasses(3, 1000);
    open();
    drag(canvas(), canvas()->width() / 4, canvas()->width() / 2);
    const QwtInterval drawn = times();
    recordPasses(3, 1, QDateTime::currentMSecsSinceEpoch() + 5000);
    QSignalSpy redraws(window->findChild<QTimer *>("courseRefreshing"), SIGNAL(timeout()));
    QVERIFY(redraws.wait());
    QCOMPARE(times(), drawn);
}

void TestCourseWindow::rangeUpToEndGoesAlong()
{
    recordPasses(3, 1000);
    open();
    drag(canvas(), canvas()->width() / 2, canvas()->width() - 1);
    const QwtInterval drawn = times();
    QVERIFY(Person::waitUntil([&] { return times().maxValue() > drawn.maxValue(); }));
    QVERIFY(qAbs(times().width() - drawn.width()) < 1);
}

void TestCourseWindow::zoomGoesBackStepByStep_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("button") << false;
    QTest::newRow("key") << true;
}

void TestCourseWindow::zoomGoesBackStepByStep()
{
    QFETCH(bool, byKey);
    recordPasses(3, 2000);
    open();
    QVERIFY(press("BtnCoursePause"));
    QList<QwtInterval> views {times()};
    for (int i = 0; i < 2; ++i) {
        drag(canvas(), canvas()->width() / 4, canvas()->width() / 2);
        views.append(times());
    }
    while (views.size() > 1) {
        QCOMPARE(times(), views.takeLast());
        if (byKey)
            QTest::keyClick(window.get(), Qt::Key_Minus, Qt::ControlModifier);
        else
            QVERIFY(press("BtnCourseBack"));
    }
    QCOMPARE(times(), views.first());
    QVERIFY(!child(*window, "BtnCourseBack").isEnabled());
}

void TestCourseWindow::keyShowsNewerHalf()
{
    recordPasses(3, 2000);
    open();
    QVERIFY(press("BtnCoursePause"));
    const QwtInterval whole = times();
    QTest::keyClick(window.get(), Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(times(), QwtInterval(whole.maxValue() - whole.width() / 2, whole.maxValue()));
}

// --- rest ---

void TestCourseWindow::pauseStopsDrawingOnly()
{
    recordPasses(3, 100);
    open();
    QVERIFY(isDrawing());
    QVERIFY(press("BtnCoursePause"));
    QVERIFY(!isDrawing());
    QVERIFY(Person::textOf(*window, "LCourseState").startsWith(QStringLiteral("angehalten um ")));
    const QwtInterval paused = times();
    recordPasses(3, 1, QDateTime::currentMSecsSinceEpoch() + 10000);
    // Neither another size nor a new showing brings what came since.
    window->resize(window->width() + 50, window->height());
    window->hide();
    window->show();
    QCOMPARE(times(), paused);
    QVERIFY(!isDrawing());
    QCOMPARE(courses.find(drive(3).deviceId())->course.count(), 101);
    QVERIFY(press("BtnCoursePause"));
    QVERIFY(isDrawing());
    QVERIFY(times().maxValue() > paused.maxValue());
    QCOMPARE(Person::textOf(*window, "LCourseState"), QString());
}

void TestCourseWindow::closedWindowDoesNotDraw()
{
    recordPasses(3, 100);
    open();
    window->close();
    QVERIFY(!isDrawing());
    const QwtInterval last = times();
    window->show();
    QVERIFY(isDrawing());
    QVERIFY(times().maxValue() >= last.maxValue());
}

void TestCourseWindow::escapeCloses()
{
    open();
    QTest::keyClick(window.get(), Qt::Key_Escape);
    QVERIFY(!window->isVisible());
}

// --- file ---

void TestCourseWindow::courseIsSavedOnRequest_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("written");
    QTest::newRow("name alone") << "course"
                                << "course.csv";
    QTest::newRow("name with suffix") << "course.txt"
                                      << "course.txt";
}

void TestCourseWindow::courseIsSavedOnRequest()
{
    QFETCH(QString, typed);
    QFETCH(QString, written);
    recordPasses(3, 5);
    open();
    const FileDialogUser user(typed);
    QVERIFY(press("BtnCourseSave"));
    QCOMPARE(user.count(), 1);
    QCOMPARE(user.folder(), QDir::currentPath());
    QCOMPARE(user.filters(), QStringList("CSV-Datei (*.csv)"));
    QCOMPARE(WorkingFolder::read(written), courseTable(*courses.find(drive(3).deviceId())));
}

void TestCourseWindow::cancelledSavingWritesNothing()
{
    recordPasses(3, 5);
    open();
    const QStringList before = WorkingFolder::files();
    const FileDialogUser user {QString()};
    QVERIFY(press("BtnCourseSave"));
    QCOMPARE(user.count(), 1);
    QCOMPARE(WorkingFolder::files(), before);
}

void TestCourseWindow::fileThatCannotBeWrittenGetsBox()
{
    recordPasses(3, 5);
    open();
    const FileDialogUser user("missing/course");
    const MessageBoxAnswerer box(QMessageBox::Ok);
    QVERIFY(press("BtnCourseSave"));
    QCOMPARE(box.count(), 1);
    QCOMPARE(box.last().text, QStringLiteral("Die Datei kann nicht geschrieben werden"));
    QCOMPARE(box.last().icon, QMessageBox::Critical);
    QVERIFY(box.last().hasParent);
}

void TestCourseWindow::nothingIsWrittenUnasked()
{
    const QStringList before = WorkingFolder::files();
    recordPasses(3, 2000);
    open();
    QVERIFY(press("BtnCoursePause"));
    drag(canvas(), 10, 100);
    window->close();
    QCOMPARE(WorkingFolder::files(), before);
}

// --- controls ---

void TestCourseWindow::everyControlIsReachedAndNamed()
{
    recordPasses(3, 2000);
    open();
    drag(canvas(), 10, 100);
    QStringList reached;
    auto &drives = child<QComboBox>(*window, "CbCourseDrive");
    drives.setFocus();
    for (int i = 0; i < 4; ++i) {
        const QWidget *focus = window->focusWidget();
        const auto *button = qobject_cast<const QAbstractButton *>(focus);
        reached.append(button ? button->text() : focus->accessibleName());
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(reached, (QStringList {"Antrieb", "Zoom zurück", "Pause", "Als CSV speichern..."}));
    QVERIFY(drives.hasFocus());
}

void TestCourseWindow::windowFitsSmallScreen()
{
    recordPasses(3, 100);
    open();
    const QSize least = window->minimumSizeHint();
    QVERIFY2(least.width() <= 640 && least.height() <= 440,
        qPrintable(QStringLiteral("%1 x %2").arg(least.width()).arg(least.height())));
}

QTEST_MAIN(TestCourseWindow)

#include "tst_coursewindow.moc"
