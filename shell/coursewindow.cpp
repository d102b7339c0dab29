#include "shell/coursewindow.h"

#include "control/maincontroller.h"
#include "control/services/language.h"
#include "control/services/wholefile.h"
#include "pages/messages.h"
#include "pages/pagestyle.h"

#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>

#include <qwt_date_scale_draw.h>
#include <qwt_date_scale_engine.h>
#include <qwt_scale_widget.h>

#include <algorithm>

namespace {

constexpr int refreshMs = 500;
constexpr QSize firstSize(900, 620);
/// Less would make a plot of its own of the first seconds.
constexpr double leastWholeMs = 60000;
constexpr double leastViewMs = 5000;
/// A person who draws a range up to the newest values hardly meets the last pixel.
constexpr double nearEnd = 0.02;
constexpr int pixelsOfTime = 90;

/// Dark enough on white for lines and names.
const QColor plotColours[courseQuantityCount] = {
    QColor(0, 84, 166), QColor(0, 110, 60), QColor(168, 72, 0), QColor(112, 48, 160), QColor(0, 105, 115)};

/// Times of the day, without the names of days, which would come in the system's language.
QwtScaleDraw *timesOfDay()
{
    auto *times = new QwtDateScaleDraw(Qt::LocalTime);
    times->setDateFormat(QwtDate::Millisecond, QStringLiteral("hh:mm:ss.zzz"));
    times->setDateFormat(QwtDate::Second, QStringLiteral("hh:mm:ss"));
    for (const QwtDate::IntervalType type : {QwtDate::Minute, QwtDate::Hour, QwtDate::Day})
        times->setDateFormat(type, QStringLiteral("hh:mm"));
    return times;
}

/// The name, and the unit below it.
QString titleOf(const CourseQuantity &quantity, const QString &version)
{
    const QString unit = quantity.unit(version);
    return unit.isEmpty() ? quantity.text() : quantity.text() + QStringLiteral("\n[%1]").arg(unit);
}

QString fileFilter()
{
    return statusBarText("CourseFile", "CSV-Datei") + QStringLiteral(" (*.csv)");
}

QString withSuffix(const QString &path)
{
    return QFileInfo(path).suffix().isEmpty() ? path + QStringLiteral(".csv") : path;
}

} // namespace

CourseWindow::CourseWindow(const Z7MainController &controller, const LiveCourses &courses, QWidget *parent)
    : QDialog(parent, Qt::Window)
    , m_controller(controller)
    , m_courses(courses)
    , m_selectedId(DeviceList::none)
    , m_shownId(DeviceList::none)
{
    setObjectName(QStringLiteral("CourseWindow"));
    setWindowTitle(statusBarText("CourseTitle", "Verlauf der Live-Werte"));
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(createBar());
    layout->addWidget(createPlots(), 1);
    m_nothing = new QLabel(statusBarText("CourseNothing",
        "Noch keine Werte. Aufgezeichnet wird, solange die Live-Werte eines Antriebs gelesen werden."));
    m_nothing->setObjectName(QStringLiteral("LCourseNothing"));
    m_nothing->setAlignment(Qt::AlignCenter);
    m_nothing->setWordWrap(true);
    layout->addWidget(m_nothing, 1);
    createKeys();
    resize(firstSize.boundedTo(screen()->availableSize() * 0.9));
    m_refreshing.setObjectName(QStringLiteral("courseRefreshing"));
    m_refreshing.setInterval(refreshMs);
    connect(&m_refreshing, SIGNAL(timeout()), SLOT(refresh()));
}

QBoxLayout *CourseWindow::createBar()
{
    const QString drive = statusBarText("CourseDrive", "Antrieb");
    m_drives = new QComboBox;
    m_drives->setObjectName(QStringLiteral("CbCourseDrive"));
    m_drives->setAccessibleName(drive);
    m_drives->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    connect(m_drives, SIGNAL(activated(int)), SLOT(showChosenDrive()));
    m_state = new QLabel;
    m_state->setObjectName(QStringLiteral("LCourseState"));
    m_back = createButton("BtnCourseBack", statusBarText("CourseZoomBack", "Zoom zurück"),
        statusBarText("CourseZoomKeys",
            "Zoom: mit der Maus einen Zeitraum aufziehen, oder Strg und +; zurück mit Strg und -"),
        SLOT(zoomBack()));
    m_pause = createButton("BtnCoursePause", statusBarText("CoursePause", "Pause"),
        statusBarText("CoursePauseInfo", "Hält nur die Anzeige an, aufgezeichnet wird weiter"), nullptr);
    m_pause->setCheckable(true);
    connect(m_pause, SIGNAL(toggled(bool)), SLOT(setPaused(bool)));
    m_save =
        createButton("BtnCourseSave", statusBarText("CourseSave", "Als CSV speichern..."), {}, SLOT(save()));

    auto *bar = new QHBoxLayout;
    auto *label = new QLabel(drive + QLatin1Char(':'));
    label->setBuddy(m_drives);
    bar->addWidget(label);
    bar->addWidget(m_drives);
    bar->addWidget(m_state, 1);
    for (QPushButton *button : {m_back, m_pause, m_save})
        bar->addWidget(button);
    return bar;
}

QPushButton *CourseWindow::createButton(
    const char *name, const QString &text, const QString &toolTip, const char *slot)
{
    auto *button = new QPushButton(text);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(toolTip);
    // Return presses the one that has the focus, and no other.
    button->setAutoDefault(false);
    if (slot)
        connect(button, SIGNAL(clicked()), slot);
    return button;
}

QWidget *CourseWindow::createPlots()
{
    m_plotArea = new QWidget;
    auto *grid = new QGridLayout(m_plotArea);
    grid->setContentsMargins(0, 0, 0, 0);
    for (int row = 0; row < courseQuantityCount; ++row) {
        const QColor &colour = plotColours[row];
        m_titles[row] = new QLabel;
        m_titles[row]->setFont(PageStyle::boldFont());
        PageStyle::paintText(m_titles[row], colour);
        m_plots[row] = new CoursePlot(m_courses, courseQuantities()[row], colour,
            row == 0 ? CourseMarks::NamesShown : CourseMarks::NamesHidden);
        connect(m_plots[row], SIGNAL(rangeDrawn(QRectF)), SLOT(showRange(QRectF)));
        grid->addWidget(m_titles[row], row, 0);
        grid->addWidget(m_plots[row], row, 1);
        grid->setRowStretch(row, 1);
    }
    grid->addWidget(createTimeScale(), courseQuantityCount, 1);
    grid->setColumnStretch(1, 1);
    return m_plotArea;
}

QWidget *CourseWindow::createTimeScale()
{
    m_timeScale = new QwtScaleWidget(QwtScaleDraw::BottomScale);
    m_timeScale->setFont(font());
    m_timeScale->setScaleDraw(timesOfDay());
    m_timeScale->setMargin(0);
    m_timeScale->setMinimumWidth(1);
    return m_timeScale;
}

void CourseWindow::createKeys()
{
    connect(new QShortcut(QKeySequence::ZoomIn, this), SIGNAL(activated()), SLOT(zoomIn()));
    connect(new QShortcut(QKeySequence::ZoomOut, this), SIGNAL(activated()), SLOT(zoomBack()));
}

// --- drives ---

void CourseWindow::followSelection()
{
    const int selected = m_controller.hasCurrentDevice() ? m_controller.currentDeviceRecord().deviceId()
                                                         : int(DeviceList::none);
    if (selected == m_selectedId)
        return;
    m_selectedId = selected;
    if (selected != DeviceList::none)
        showDrive(selected);
}

void CourseWindow::showDrive(int deviceId)
{
    m_shownId = deviceId;
    m_views.clear();
    for (CoursePlot *plot : m_plots)
        plot->setDrive(deviceId);
}

void CourseWindow::showChosenDrive()
{
    showDrive(m_drives->currentData().toInt());
    draw();
}

void CourseWindow::fillDrives()
{
    QStringList names;
    QVariantList ids;
    const QList<int> recorded = m_courses.ids();
    for (const int id : recorded) {
        names.append(m_courses.find(id)->name);
        ids.append(id);
    }
    if (m_selectedId != DeviceList::none && !recorded.contains(m_selectedId)) {
        names.append(deviceName(m_controller.currentDeviceRecord()));
        ids.append(m_selectedId);
    }
    if (ids != m_listedIds) {
        m_listedIds = ids;
        m_drives->clear();
        for (int row = 0; row < ids.size(); ++row)
            m_drives->addItem(names[row], ids[row]);
    }
    m_drives->setCurrentIndex(m_drives->findData(m_shownId));
}

// --- time ---

QwtInterval CourseWindow::wholeTime() const
{
    const LiveCourse &course = shownDrive()->course;
    double end = double(course.newest().timeMs);
    if (m_shownId == m_selectedId) // goes on, whether values come or not
        end = double(m_drawnMs);
    const double begin = std::max(double(course.at(0).timeMs), end - double(LiveCourse::spanMs));
    return {std::min(begin, end - leastWholeMs), end};
}

QwtInterval CourseWindow::shownTime() const
{
    const QwtInterval whole = wholeTime();
    if (m_views.isEmpty())
        return whole;
    const View &view = m_views.last();
    return view.goesAlong ? QwtInterval(whole.maxValue() - view.times.width(), whole.maxValue()) : view.times;
}

void CourseWindow::addView(const QwtInterval &times)
{
    const QwtInterval shown = shownTime();
    const double missing = std::max(0.0, leastViewMs - times.width());
    const bool goesAlong = shown.maxValue() == wholeTime().maxValue()
        && times.maxValue() >= shown.maxValue() - nearEnd * shown.width();
    m_views.append({{times.minValue() - missing / 2, times.maxValue() + missing / 2}, goesAlong});
    draw();
}

void CourseWindow::showRange(const QRectF &range)
{
    // A click draws a range without width.
    if (shownDrive() && range.width() > 0)
        addView({range.left(), range.right()});
}

void CourseWindow::zoomIn()
{
    if (!shownDrive())
        return;
    const QwtInterval shown = shownTime();
    const bool isNewest = shown.maxValue() == wholeTime().maxValue();
    const double end = shown.maxValue() - (isNewest ? 0 : shown.width() / 4);
    addView({end - shown.width() / 2, end});
}

void CourseWindow::zoomBack()
{
    if (m_views.isEmpty())
        return;
    m_views.removeLast();
    draw();
}

void CourseWindow::setPaused(bool paused)
{
    const QTime drawn = QDateTime::fromMSecsSinceEpoch(m_drawnMs).time();
    m_state->setText(paused ? statusBarText("CoursePaused", "angehalten um %1")
                                  .arg(drawn.toString(QStringLiteral("hh:mm:ss")))
                            : QString());
    refresh();
    runWhileSeen();
}

// --- drawing ---

void CourseWindow::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    refresh();
    runWhileSeen();
}

void CourseWindow::hideEvent(QHideEvent *event)
{
    QDialog::hideEvent(event);
    m_refreshing.stop();
}

void CourseWindow::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    if (isVisible())
        draw();
}

void CourseWindow::runWhileSeen()
{
    if (isVisible() && !m_pause->isChecked())
        m_refreshing.start();
    else
        m_refreshing.stop();
}

void CourseWindow::refresh()
{
    if (isMinimized())
        return;
    if (!m_pause->isChecked())
        m_drawnMs = QDateTime::currentMSecsSinceEpoch();
    followSelection();
    fillDrives();
    draw();
}

void CourseWindow::draw()
{
    const DriveCourse *drive = shownDrive();
    m_plotArea->setVisible(drive);
    m_nothing->setVisible(!drive);
    m_save->setEnabled(drive);
    m_back->setEnabled(!m_views.isEmpty());
    if (!drive)
        return;
    const QwtInterval shown = shownTime();
    const QwtScaleDiv times = QwtDateScaleEngine(Qt::LocalTime)
                                  .divideScale(shown.minValue(), shown.maxValue(),
                                      std::max(1, m_timeScale->width() / pixelsOfTime), 0);
    for (int row = 0; row < courseQuantityCount; ++row) {
        m_titles[row]->setText(titleOf(courseQuantities()[row], drive->version));
        m_plots[row]->showTimes(times);
    }
    drawTimeScale(times);
}

void CourseWindow::drawTimeScale(const QwtScaleDiv &times)
{
    CoursePlot *plot = m_plots.back();
    plot->updateLayout();
    const QRect canvas = plot->canvas()->geometry();
    m_timeScale->setBorderDist(canvas.left(), plot->width() - canvas.right());
    m_timeScale->setScaleDiv(times);
}

// --- file ---

void CourseWindow::save()
{
    const DriveCourse *drive = shownDrive();
    if (!drive)
        return;
    // As it is now: the drive goes on while a person looks for a folder.
    const QByteArray table = courseTable(*drive);
    const QString proposed = QDir::current().filePath(drive->name + QStringLiteral(".csv"));
    const QString path = QFileDialog::getSaveFileName(this, windowTitle(), proposed, fileFilter());
    if (!path.isNull() && !WholeFile::write(withSuffix(path), table))
        Messages::showError(
            this, windowTitle(), statusBarText("CourseNotSaved", "Die Datei kann nicht geschrieben werden"));
}
