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

/// Drives in a full network, for figures that grow with their number.
constexpr int manyDrives = 32;

/// Shows a window at the size at which the program is measured.
void showAtProgramSize(QWidget &window);

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
    /// The tree of the drives and their pages.
    QTreeWidget *tree() const;
    /// The shown page.
    QWidget *page() const;
    /// A writable field of the shown page, which has the focus then; null if there is none.
    QLineEdit *userField() const;

    /// Clicks the entry of a page of the first drive.
    void clickPage(int number);
    /// Clicks it and waits until the page has been painted.
    void showPage(int number);

    /// A record of the first drive as a polling pass would bring it; values differ from call to call.
    Z7Device nextRecord();
    void deliver(const Z7Device &record);

private:
    void listDrives(int count);

    const WorkingFolder m_folder;
    QWidget m_window;
    std::unique_ptr<Z7MainController> m_controller;
    MainContentWidget *m_content; ///< child of the window
    DeviceControlWidget *m_bar; ///< child of the window
    int m_records = 0;
};

/// Types a digit into an empty field, and the backspace key into any other.
void typeKey(QLineEdit *field);
