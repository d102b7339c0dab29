#include "pages/firmwareuploaddialog.h"

#include "control/services/language.h"
#include "control/services/platform.h"
#include "model/errorcodes.h"
#include "pages/keyboard.h"
#include "pages/messages.h"
#include "pages/programmeroutput.h"
#include "ui_firmwareuploaddialog.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QProcess>
#include <QTimer>

namespace {

/// What the drive needs to be ready in its bootloader.
constexpr int bootloaderDelayMs = 200;

QString confirmationText()
{
    return FirmwareUploadDialog::texts("FirmwareUploadConfirm",
        "Mit dem Firmwareupdate aktualisieren Sie die Funktionalität Ihres Z7-Motors.\n\n"
        "Bitte beachten Sie:\n\n"
        "* Trennen Sie während des Updateprozess auf keinen Fall die Verbindung zum Motor.\n"
        "* Stellen Sie sicher, daß nur ein einziger Z7-Motor in ihrem Netzwerk angeschlossen ist.\n"
        "* Achten Sie darauf, dass der Motor während des Updateprozesses nicht von anderen Eingängen Signale "
        "erhält.");
}

bool isRegularFile(const QFile &file)
{
    return QFileInfo(file).isFile();
}

/// Lets programs in the working folder be found, behind all others, while it lives. Afterwards PATH is what
/// it was, so that nothing that is started later finds them.
class WorkingFolderOnPath
{
public:
    WorkingFolderOnPath()
    {
        // As "." the folder may have any name, also one with a colon.
        const QByteArray searched = m_wasSet ? m_before : Platform::defaultSearchPath();
        qputenv(
            "PATH", searched.isEmpty() ? QByteArray(".") : searched + QDir::listSeparator().toLatin1() + '.');
    }
    ~WorkingFolderOnPath()
    {
        if (m_wasSet)
            qputenv("PATH", m_before);
        else
            qunsetenv("PATH");
    }
    Q_DISABLE_COPY(WorkingFolderOnPath)

private:
    const bool m_wasSet = qEnvironmentVariableIsSet("PATH");
    const QByteArray m_before = qgetenv("PATH");
};

} // namespace

FirmwareUploadDialog::FirmwareUploadDialog(QWidget *parent)
    : Z7DataWidget(parent)
    , m_programmerFile(QStringLiteral("Z7Programmer.exe"))
    , m_ui(std::make_unique<Ui::FirmwareUploadDialog>())
{
    m_ui->setupUi(this);
    Keyboard::showFocus(m_ui->edOutput);
    multiDevice = true;
    m_ui->BtnSelectFile->setIcon(QIcon(QStringLiteral(":/images/open-file-icon_24px.png")));
    m_ui->BtnUploadFirmwareFile->setIcon(QIcon(QStringLiteral(":/images/Files-Upload-File-icon_24px.png")));
    connect(m_ui->BtnSelectFile, SIGNAL(clicked()), SLOT(selectBinFile()));
    connect(m_ui->BtnUploadFirmwareFile, SIGNAL(clicked()), SLOT(startUpload()));
    m_output = std::make_unique<ProgrammerOutput>(m_ui->edOutput);
    m_ui->edFirmwareFile->setReadOnly(true);
}

FirmwareUploadDialog::~FirmwareUploadDialog()
{
    if (m_uploadProcess)
        waitForProgrammer();
}

void FirmwareUploadDialog::waitForProgrammer()
{
    // The texts and the listeners of the page may be gone already.
    m_uploadProcess->disconnect(this);
    // Somebody has to read on, or the programmer gets stuck at a full pipe. The process ends this too.
    while (m_uploadProcess->waitForReadyRead(m_patienceMs))
        m_uploadProcess->readAllStandardOutput();
}

void FirmwareUploadDialog::initPage()
{
    m_connectedDrives = 0;
    m_countingDrives = true;
    setTexts();
    m_ui->edFirmwareFile->setText(QString());
    m_output->clear();
    refreshStatus();
}

void FirmwareUploadDialog::setTexts()
{
    m_ui->lFormDescription->setText(texts("DialogDescription",
        "Mit dem Firmwareupdate können die Funktionen Ihres Antrieb aktualisiert werden. Dafür ist eine "
        "Firmwaredatei erforderlich, die Sie bei Ihrem Vertriebspartner erhalten können."));
    m_ui->lIntro->setText(texts("Introduction", ""));
    m_ui->lFirmwareFile->setText(texts("FirmwareFile", "Firmwaredatei:"));
    m_ui->BtnUploadFirmwareFile->setText(texts("StartUploadFirmware", "Starte Firmwareupdate..."));
    m_ui->lProcess->setText(texts("UploadProcess", "Prozess:"));
    m_ui->lStatus->setText(texts("UploadStatus", "Status:"));
    const QString select = toolTipText("FirmwareSelect", "Firmwaredatei auswählen");
    m_ui->BtnSelectFile->setAccessibleName(select);
    m_ui->BtnSelectFile->setToolTip(select);
    m_ui->edFirmwareFile->setAccessibleName(m_ui->lFirmwareFile->text());
    m_ui->edFirmwareFile->setToolTip(
        toolTipText("FirmwarePath", "Pfad der Datei, die der Antrieb bekommen soll"));
    m_ui->edFirmwareFile->setAccessibleDescription(m_ui->edFirmwareFile->toolTip());
    m_ui->edOutput->setAccessibleName(toolTipText("FirmwareOutput", "Verlauf des Firmwareupdates"));
}

QString FirmwareUploadDialog::statusText() const
{
    switch (m_uploadStatus) {
    case StatusIdle:
        return texts("StatusIdle", "Idle");
    case StatusAwaitingCommunicationStopped:
        return texts("StatusAwaitingCommunicationStopped", "Beende Kommunication...");
    case StatusSendingBooltloaderInitCommand:
        return texts("StatusSendingBooltloaderInitCommand", "Aktiviere Bootloader...");
    case StatusUploadProcessRunning:
        return texts("StatusUploadProcessRunning", "Upload wurde gestartet, bitte warten...");
    }
    return QStringLiteral("n/a");
}

void FirmwareUploadDialog::refreshStatus()
{
    const QString status = statusText();
    m_ui->lUpdateStarted->setText(m_uploadStatus == StatusIdle
            ? texts("UploadNotRunning", "Bereit")
            : texts("UploadRunning", "Firmwareupdate läuft..."));
    m_output->append(status + QLatin1Char('\n'));
    m_ui->lCurrentStatus->setText(status);
}

void FirmwareUploadDialog::setBusy(bool busy)
{
    m_ui->fFileSelect->setEnabled(!busy);
    m_ui->BtnUploadFirmwareFile->setEnabled(!busy);
}

void FirmwareUploadDialog::DeviceUpdate(const Z7Device &d)
{
    if (m_countingDrives)
        ++m_connectedDrives;
    device = d;
    // The records of a showing are those of the list: they tell nothing of the command that is under way.
    if (m_countingDrives || m_uploadStatus != StatusSendingBooltloaderInitCommand || !m_uploadProcess)
        return;
    if (d.bootloaderActive && !d.hasError()) {
        m_uploadStatus = StatusUploadProcessRunning;
        takeBus();
        QTimer::singleShot(bootloaderDelayMs, this, SLOT(startUploadProc()));
    } else {
        showBootloaderError();
        uploadProcFinished();
    }
}

void FirmwareUploadDialog::showBootloaderError()
{
    const QString text =
        texts("ErrorBootloaderInitFailed", "Der Bootloader konnte nicht aktiviert werden: %1");
    m_output->append(text.arg(localizedErrorText(device.error)) + QLatin1Char('\n'));
}

void FirmwareUploadDialog::deviceUpdateFinished()
{
    m_countingDrives = false;
}

void FirmwareUploadDialog::selectBinFile()
{
    const QString filter = texts("Z7FirmwareFile", "Z7-Firmwaredatei") + QStringLiteral(" (*.bin)");
    const QString path = QFileDialog::getOpenFileName(
        this, commonText("OpenFile", "Datei öffnen"), QDir::currentPath(), filter);
    if (!path.isEmpty())
        m_ui->edFirmwareFile->setText(path);
}

void FirmwareUploadDialog::startUpload()
{
    m_firmwareFile.setFileName(m_ui->edFirmwareFile->text());
    const QString text = objection();
    if (!text.isEmpty()) {
        Messages::showError(this, text);
        return;
    }
    if (!m_uploadProcess) {
        m_uploadProcess = new QProcess(this);
        m_uploadProcess->setStandardErrorFile(QProcess::nullDevice());
        connect(m_uploadProcess, SIGNAL(readyReadStandardOutput()), SLOT(uploadProcReadyRead()));
        connect(m_uploadProcess, SIGNAL(finished(int, QProcess::ExitStatus)), SLOT(uploadProcFinished()));
    }
    m_output->clear();
    if (!confirmUpload())
        return;
    m_uploadStatus = StatusAwaitingCommunicationStopped;
    refreshStatus();
    setBusy(true);
    emit stopAllDeviceCommunication();
}

QString FirmwareUploadDialog::objection() const
{
    if (m_uploadStatus != StatusIdle)
        return texts(
            "FirmwareUpdateCurrentlyRunning", "Ein Prozess zum Update der Firmware wurde bereits gestartet.");
    if (m_connectedDrives > 1)
        return texts("OnlyOneMotorConflict",
            "Es sind zur Zeit %1 Motoren verbunden. Das Update kann nur durchgeführt werden, wenn im "
            "Netzwerk "
            "nur ein einziger Motor erreichbar ist.")
            .arg(m_connectedDrives);
    if (!isRegularFile(m_firmwareFile))
        return texts("UnableToOpenFirmwareFile", "Die Firmwaredatei \"%1\" kann nicht geöffnet werden.")
            .arg(m_ui->edFirmwareFile->text());
    if (!isRegularFile(m_programmerFile))
        return texts("ProgrammerNotAvailable", "Das Ladeprogramm \"%1\" kann nicht gefunden werden.")
            .arg(m_programmerFile.fileName());
    return QString();
}

bool FirmwareUploadDialog::confirmUpload()
{
    return Messages::isConfirmed(this, QMessageBox::NoIcon, confirmationText(),
        texts("QuestionStartUpload", "Soll das Update jetzt gestatet werden?"));
}

void FirmwareUploadDialog::AllDeviceCommunicationStopped()
{
    // Every page hears of it, and also when the traffic ends for another reason.
    if (m_uploadStatus != StatusAwaitingCommunicationStopped)
        return;
    m_uploadStatus = StatusSendingBooltloaderInitCommand;
    refreshStatus();
    emit sendBootloaderInitCommand();
}

void FirmwareUploadDialog::startUploadProc()
{
    refreshStatus();
    if (!m_uploadProcess || !startProgrammer())
        giveBusBack();
}

bool FirmwareUploadDialog::startProgrammer()
{
    const QString command =
        QStringLiteral("%1 -i%2 -a\"%3\"")
            .arg(m_programmerFile.fileName(), device.portInfo.portName(), m_firmwareFile.fileName());
    QStringList arguments = QProcess::splitCommand(command);
    const QString program = arguments.takeFirst();
    {
        const WorkingFolderOnPath path;
        m_uploadProcess->start(program, arguments, QIODevice::ReadWrite);
    }
    m_uploadProcess->waitForStarted();
    return m_uploadProcess->state() != QProcess::NotRunning;
}

void FirmwareUploadDialog::takeBus()
{
    m_programmerUsesBus = true;
    emit programmerUsesBus(true);
}

void FirmwareUploadDialog::giveBusBack()
{
    if (!m_programmerUsesBus)
        return;
    m_programmerUsesBus = false;
    emit programmerUsesBus(false);
}

void FirmwareUploadDialog::uploadProcReadyRead()
{
    if (!m_uploadProcess)
        return;
    // A zero byte ends what is shown of this read.
    const QByteArray output = m_uploadProcess->readAllStandardOutput();
    m_output->append(QString::fromLatin1(output.constData()));
}

void FirmwareUploadDialog::uploadProcFinished()
{
    m_uploadStatus = StatusIdle;
    refreshStatus();
    setBusy(false);
    giveBusBack();
}
