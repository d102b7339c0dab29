#pragma once

#include "model/device.h"

#include <QTemporaryDir>
#include <QWidget>

#include <memory>

class DeviceControlWidget;
class MainContentWidget;
class QLineEdit;
class QTreeWidget;
class Z7MainController;

/// A working folder with the sample definitions and polling turned off, current while the object lives.
class WorkingFolder
{
public:
    WorkingFolder();
    ~WorkingFolder();

private:
    QTemporaryDir m_folder;
    QString m_previous;
};

/// The middle and the bottom of the window with `drives` drives of version V123, not on any bus.
class Workbench
{
public:
    explicit Workbench(int drives);
    ~Workbench();

    Z7MainController &controller() { return *m_controller; }
    MainContentWidget &content() { return *m_content; }
    QWidget &window() { return m_window; }

    /// Clicks the entry of a page of the first drive, and waits until it has been painted.
    void showPage(int number);
    /// A record of the first drive as a polling pass would bring it; values differ from call to call.
    void deliverRecord();
    /// A writable field of the shown page.
    QLineEdit *userField() const;

private:
    const WorkingFolder m_folder;
    QWidget m_window;
    std::unique_ptr<Z7MainController> m_controller;
    MainContentWidget *m_content; ///< child of the window
    DeviceControlWidget *m_bar; ///< child of the window
    int m_records = 0;
};
