#pragma once

#include "control/livecourses.h"
#include "shell/courseplot.h"

#include <QDialog>
#include <QTimer>
#include <QVariant>

#include <array>

class QBoxLayout;
class QComboBox;
class QLabel;
class QPushButton;
class QwtScaleWidget;
class Z7MainController;

/// The course of the live values of one drive over the last hour: five plots one above the other over the
/// same times, with a line where an operation ended.
///
/// It shows the drive that is selected in the main window, until another one is chosen in it or selected
/// there. It draws twice a second while it is open, and looks at nothing while it is closed or paused.
class CourseWindow : public QDialog
{
    Q_OBJECT

public:
    /// Controller and courses outlive the window.
    CourseWindow(const Z7MainController &controller, const LiveCourses &courses, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private slots:
    void refresh();
    void showChosenDrive();
    void setPaused(bool paused);
    void showRange(const QRectF &range);
    void zoomIn();
    void zoomBack();
    void save();

private:
    /// A part of the time that a person looks at.
    struct View
    {
        QwtInterval times;
        bool goesAlong; ///< with the newest time; only the width counts then
    };

    QBoxLayout *createBar();
    QPushButton *createButton(
        const char *name, const QString &text, const QString &toolTip, const char *slot);
    QWidget *createPlots();
    QWidget *createTimeScale();
    void createKeys();

    void followSelection();
    void fillDrives();
    void showDrive(int deviceId);
    const DriveCourse *shownDrive() const { return m_courses.find(m_shownId); }
    void runWhileSeen();
    void draw();
    void drawTimeScale(const QwtScaleDiv &times);
    void addView(const QwtInterval &times);
    /// In ms since 1970 in UTC, as all times of the window; invalid without values.
    QwtInterval wholeTime() const;
    QwtInterval shownTime() const;

    const Z7MainController &m_controller;
    const LiveCourses &m_courses;
    int m_selectedId;
    int m_shownId;
    QVariantList m_listedIds; ///< of the drives that can be chosen, in their order
    qint64 m_drawnMs = 0; ///< the time up to which the selected drive's course is drawn
    QList<View> m_views; ///< the last one is shown; all there is if there are none

    QComboBox *m_drives = nullptr;
    QLabel *m_state = nullptr;
    QLabel *m_nothing = nullptr;
    QPushButton *m_back = nullptr;
    QPushButton *m_pause = nullptr;
    QPushButton *m_save = nullptr;
    QWidget *m_plotArea = nullptr;
    std::array<QLabel *, courseQuantityCount> m_titles {};
    std::array<CoursePlot *, courseQuantityCount> m_plots {};
    QwtScaleWidget *m_timeScale = nullptr;
    QTimer m_refreshing {this};
};
