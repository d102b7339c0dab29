// The slots of the main window behind the menus and the tool buttons.

#include "control/courserecorder.h"
#include "control/services/language.h"
#include "control/services/services.h"
#include "model/parameterfile.h"
#include "pages/messages.h"
#include "pages/setpassworddialog.h"
#include "shell/aboutdialog.h"
#include "shell/coursewindow.h"
#include "shell/deviceselectiondialog.h"
#include "shell/mainwindow.h"
#include "shell/maker.h"
#include "shell/optionsdialog.h"
#include "shell/topmenuwidget.h"
#include "shell/wizard/connectionsdialog.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QUrl>

namespace {

constexpr TextSection fileText("Parameterfile");

QString parameterFileFilter()
{
    return fileText("Z7ParameterFile", "Z7-Parameterdatei") + QStringLiteral(" (*")
        + Z7ParameterFile::fileSuffix() + QLatin1Char(')');
}

/// The suffix counts wherever it stands in the path.
QString withSuffix(const QString &path)
{
    const QString suffix = Z7ParameterFile::fileSuffix();
    return path.lastIndexOf(suffix) < 0 ? path + suffix : path;
}

void showFileError(const QString &text)
{
    if (!text.isEmpty())
        Messages::showError(nullptr, fileText("Parameterfile", "Parameterdatei"), text);
}

QString nameAndVersion(const Z7Device &device)
{
    return QStringLiteral("%1 (%2)").arg(deviceName(device), device.softwareVersion);
}

/// Shows the failure if there is no such file: what the system starts to open one may say nothing of it.
void openFromWorkingFolder(QWidget *window, const QString &fileName, const QString &failure)
{
    const QUrl url(QStringLiteral("file:///") + QDir::currentPath() + QLatin1Char('/') + fileName);
    // A "#" or "%" in the name of a folder makes another file of it.
    const bool isThere = QFileInfo(url.toLocalFile()).isFile();
    if (!QDesktopServices::openUrl(url) || !isThere)
        Messages::showError(window, failure);
}

} // namespace

// --- dialogs ---

void MainWindow::CallConnectionsDialog()
{
    m_controller->cancelCommunication();
    m_connectionsDialog->fill(m_controller->connectedDevices());
    m_connectionsDialog->show();
}

void MainWindow::CallOptionsDialog()
{
    m_optionsDialog->refresh();
    m_optionsDialog->show();
}

void MainWindow::CallAboutDialog()
{
    m_aboutDialog->show();
}

void MainWindow::CallCourseWindow()
{
    if (!m_courseWindow)
        m_courseWindow = new CourseWindow(*m_controller, m_courses->courses(), this);
    m_courseWindow->show();
    m_courseWindow->raise();
    m_courseWindow->activateWindow();
}

// --- documents and programs ---

void MainWindow::CallWebbrowserHomepage()
{
    QDesktopServices::openUrl(QUrl(Maker::homePage()));
}

void MainWindow::CallPdfHelpFile()
{
    openFromWorkingFolder(this, commonText("PdfHelpFile", "Z7Manual.pdf"),
        commonText("UnableToOpenPdfHelpFile", "Die PDF-Hilfedatei kann nicht geöffnet werden."));
}

void MainWindow::CallTeamviewer()
{
    openFromWorkingFolder(this, commonText("TeamviewerExe", "TeamViewerQS_de_NuT.exe"),
        commonText("UnableToOpenTeamviewerFile", "Der Teamviewer kann nicht geöffnet werden."));
}

// --- parameter files ---

void MainWindow::SaveFileAs()
{
    const QString path = QFileDialog::getSaveFileName(
        this, commonText("SaveFile", "Datei speichern"), QDir::currentPath(), parameterFileFilter());
    if (path.isNull())
        return;
    Z7DeviceParamSet changes;
    m_controller->currentUserParams(changes);
    showFileError(Z7Services::instance()->saveParameterFile(
        withSuffix(path), m_controller->currentDeviceRecord(), changes));
}

void MainWindow::SaveFile()
{
    SaveFileAs();
}

void MainWindow::OpenFile()
{
    const QString path = QFileDialog::getOpenFileName(
        this, commonText("OpenFile", "Datei öffnen"), QDir::currentPath(), parameterFileFilter());
    if (path.isNull())
        return;
    Z7ParameterFile *file = Z7Services::instance()->newParameterFile();
    showFileError(file->load(path));

    // A dialog for each file. One that was used before stays a child of the window.
    m_deviceSelectionDialog = new DeviceSelectionDialog(this);
    m_deviceSelectionDialog->setIntro(commonText("IntroOpenParamFile",
        "Bitte wählen Sie die Motoren, die Sie mit den Werten aus der Parameterdatei konfigurieren "
        "möchten."));
    m_deviceSelectionDialog->reset();
    offerDevices(
        [file](const Z7Device &device) { return device.softwareVersion == file->softwareVersion(); });
    showDeviceSelection(SLOT(setParameterFileToDevice(int)));
}

void MainWindow::setParameterFileToDevice(int deviceID)
{
    if (const Z7ParameterFile *file = Z7Services::instance()->parameterFile())
        m_controller->setUserParams(deviceID, file->userParams());
}

// --- actions on several drives ---

void MainWindow::CallResetChanges()
{
    selectDevices(commonText("IntroResetChanges",
                      "Bitte wählen Sie die Motoren, für die Sie die Änderungen verwerfen möchten."),
        SLOT(resetChanges(int)));
}

void MainWindow::SetDefaultValues()
{
    m_topMenu->disableDeviceActions(this);
    selectDevices(commonText("IntroSetDefaultValues",
                      "Bitte wählen Sie die Motoren, für die Sie die Änderungen auf die Standardwerte setzen "
                      "möchten. (Die eingegebenen Änderungen werden überschrieben)"),
        SLOT(setDefault(int)));
    m_topMenu->enableDeviceActions(this);
}

void MainWindow::selectDevices(const QString &intro, const char *slot)
{
    if (!m_deviceSelectionDialog)
        m_deviceSelectionDialog = new DeviceSelectionDialog(this);
    m_deviceSelectionDialog->reset();
    m_deviceSelectionDialog->setIntro(intro);
    offerDevices([](const Z7Device &) { return true; });
    showDeviceSelection(slot);
}

void MainWindow::offerDevices(const std::function<bool(const Z7Device &)> &isOffered)
{
    const QList<int> ids = m_controller->deviceIds();
    for (const int id : ids) {
        const Z7Device device = m_controller->device(id);
        if (isOffered(device))
            m_deviceSelectionDialog->addDevice(id, nameAndVersion(device));
    }
}

void MainWindow::showDeviceSelection(const char *slot)
{
    connect(m_deviceSelectionDialog, SIGNAL(deviceSelected(int)), slot);
    m_deviceSelectionDialog->setModal(true);
    m_deviceSelectionDialog->show();
}

// --- actions on the selected drive ---

void MainWindow::CallFactoryReset()
{
    m_topMenu->disableDeviceActions(this);
    const QString text = commonText("ConfirmFactoryReset",
        "Alle Parameter im Motor \"%1\" werden auf die Werkseinstellungen zurücksetzt.");
    if (Messages::isConfirmed(this, QMessageBox::Warning,
            text.arg(deviceName(m_controller->currentDeviceRecord())),
            commonText("QuestionContinue", "Fortfahren?")))
        m_controller->SetFactorySettingsData();
    m_topMenu->enableDeviceActions(this);
}

void MainWindow::CallChangePassword()
{
    m_topMenu->disableDeviceActions(this);
    if (!m_setPasswordDialog)
        m_setPasswordDialog = new SetPasswordDialog(this);
    const Z7Device drive = m_controller->currentDeviceRecord();
    m_setPasswordDialog->prepare(drive.password, deviceName(drive));
    connect(m_setPasswordDialog, SIGNAL(sendNewPassword(int)), SLOT(sendNewPassword(int)));
    m_setPasswordDialog->setModal(true);
    m_setPasswordDialog->show();
    m_topMenu->enableDeviceActions(this);
}
