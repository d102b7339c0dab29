// The slots of the main window behind the menus and the tool buttons.

#include "control/services/language.h"
#include "shell/aboutdialog.h"
#include "shell/mainwindow.h"
#include "shell/optionsdialog.h"
#include "shell/wizard/connectionsdialog.h"

void MainWindow::CallConnectionsDialog()
{
    m_controller->cancelCommunication();
    m_connectionsDialog->fill(m_controller->connectedDevices());
    m_connectionsDialog->show();
}

void MainWindow::CallOptionsDialog()
{
    m_optionsDialog->show();
}

void MainWindow::CallAboutDialog()
{
    m_aboutDialog->show();
}

// Files, documents, passwords and actions on several drives are not offered yet.

void MainWindow::CallWebbrowserHomepage() { }

void MainWindow::CallPdfHelpFile() { }

void MainWindow::CallTeamviewer() { }

void MainWindow::CallResetChanges() { }

void MainWindow::SetDefaultValues() { }

void MainWindow::CallFactoryReset() { }

void MainWindow::CallChangePassword() { }

void MainWindow::SaveFileAs() { }

void MainWindow::SaveFile()
{
    SaveFileAs();
}

void MainWindow::OpenFile() { }

void MainWindow::setParameterFileToDevice(int deviceID)
{
    Q_UNUSED(deviceID)
}
