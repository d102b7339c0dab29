#pragma once

#include "control/maincontroller.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class AboutDialog;
class ChangesDialog;
class ConnectionsDialog;
class CourseRecorder;
class CourseWindow;
class DeviceControlWidget;
class DeviceSelectionDialog;
class MainContentWidget;
class SetPasswordDialog;
class StatusBar;
class TopMenuWidget;
class optionsdialog;

namespace Ui {
class MainWindow;
}

/// The top of the program: owns the controller and the long-lived dialogs, lays out the three bands of the
/// window and holds the slots behind the menus and the tool buttons. It decides nothing about drives; every
/// operation on them goes to the controller.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow();
    ~MainWindow() override;

public slots:
    void CallConnectionsDialog();
    void CallOptionsDialog();
    void CallAboutDialog();
    /// Opens the course of the live values, of the selected drive.
    void CallCourseWindow();
    void CallWebbrowserHomepage();
    void CallPdfHelpFile();
    void CallTeamviewer();
    void CallResetChanges();
    void SetDefaultValues();
    void CallFactoryReset();
    void CallChangePassword();
    void SaveFileAs();
    void SaveFile();
    void OpenFile();
    void enableDeviceActions(Z7Device device);
    void disableDeviceActions();
    void setParameterFileToDevice(int deviceID);
    void resetChanges(int deviceID);
    void setDefault(int deviceID);
    void sendNewPassword(int newPassword);
    /// The list of changes, beside the window.
    void showChanges();
    void showTable();

protected:
    /// Looks anew for definitions that were missing.
    void changeEvent(QEvent *event) override;
    /// Ends all communication, then writes the language file and the options file.
    void closeEvent(QCloseEvent *event) override;

private slots:
    void followChanges();
    /// Shows the page of one of the selected drive's changes, with the focus in its field.
    void showChange(int number);
    void showWorkingFolder();
    void markOperation(OperationReport report);

private:
    void setActionTexts();
    void createBands();
    void createDialogs();
    void createStatusBar();
    void connectActions();
    void enableFileActions(bool enabled);
    /// Lets the user pick drives for `slot`, in the dialog used last; it stays connected to the slots before.
    void selectDevices(const QString &intro, const char *slot);
    /// Adds those drives to the dialog for which `isOffered` is true.
    void offerDevices(const std::function<bool(const Z7Device &)> &isOffered);
    void showDeviceSelection(const char *slot);

    TopMenuWidget *m_topMenu = nullptr;
    MainContentWidget *m_mainContent = nullptr;
    DeviceControlWidget *m_deviceControl = nullptr;
    ConnectionsDialog *m_connectionsDialog = nullptr;
    DeviceSelectionDialog *m_deviceSelectionDialog = nullptr;
    SetPasswordDialog *m_setPasswordDialog = nullptr;
    optionsdialog *m_optionsDialog = nullptr;
    AboutDialog *m_aboutDialog = nullptr;
    ChangesDialog *m_changesDialog = nullptr;
    StatusBar *m_status = nullptr;
    CourseWindow *m_courseWindow = nullptr; ///< null until it is opened for the first time
    /// Deleted after the form object and before the widgets, which are children of the window.
    std::unique_ptr<Z7MainController> m_controller;
    std::unique_ptr<CourseRecorder> m_courses;
    std::unique_ptr<Ui::MainWindow> m_ui;
};
