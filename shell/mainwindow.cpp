#include "shell/mainwindow.h"

#include "control/courserecorder.h"
#include "control/services/language.h"
#include "control/services/services.h"
#include "pages/pagefactory.h"
#include "pages/pagestyle.h"
#include "shell/aboutdialog.h"
#include "shell/changesdialog.h"
#include "shell/coursewindow.h"
#include "shell/devicecontrolwidget.h"
#include "shell/maincontentwidget.h"
#include "shell/maker.h"
#include "shell/optionsdialog.h"
#include "shell/topmenuwidget.h"
#include "shell/wizard/connectionsdialog.h"
#include "ui_mainwindow.h"

#include <QCloseEvent>
#include <QProxyStyle>
#include <QStyleOption>
#include <QVBoxLayout>

namespace {

constexpr int bandsMargin = 6;

/// Shows an ampersand between two words as it stands. Elsewhere it underlines the next letter.
class MenuStyle : public QProxyStyle
{
public:
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
        const QWidget *widget) const override
    {
        const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
        if (!item) {
            QProxyStyle::drawControl(element, option, painter, widget);
            return;
        }
        QStyleOptionMenuItem shown = *item;
        shown.text.replace(QStringLiteral("& "), QStringLiteral("&& "));
        QProxyStyle::drawControl(element, &shown, painter, widget);
    }
};

} // namespace

MainWindow::MainWindow()
    : m_ui(std::make_unique<Ui::MainWindow>())
{
    PageStyle::makeTextsReadable();
    m_ui->setupUi(this);
    setWindowIcon(QIcon(QStringLiteral(":/images/favicon.ico")));
    m_controller = std::make_unique<Z7MainController>();
    m_courses = std::make_unique<CourseRecorder>(*m_controller);
    setWindowTitle(commonText("ApplicationTitle", "Z7ConfigTool - Norvik & Tessel GmbH")
        + QStringLiteral(" - Version ") + Maker::programVersion());
    setActionTexts();
    auto *menuStyle = new MenuStyle;
    menuStyle->setParent(this);
    m_ui->menuHilfe->setStyle(menuStyle);
    for (int number = 0; number < PageNumber::Count; ++number)
        m_controller->createPage(number);
    createBands();
    createDialogs();
    m_controller->setDeviceControl(m_deviceControl);
    m_controller->setMainContent(m_mainContent);
    enableFileActions(false);
    connectActions();
    createStatusBar();
    // Every widget made so far would be polished before the first painting, with all that its style sheet
    // names, whether it is shown or not. What is shown is polished by being shown.
    QCoreApplication::removePostedEvents(nullptr, QEvent::PolishRequest);
}

MainWindow::~MainWindow()
{
    m_ui.reset();
    m_controller.reset();
}

void MainWindow::setActionTexts()
{
    m_ui->actionBeenden->setText(commonText("Cancel", "Beenden"));
    m_ui->actionOpen->setText(commonText("Open", "Öffnen..."));
    m_ui->actionSaveAs->setText(commonText("SaveAs", "Speichern unter..."));
    m_ui->actionInfo->setText(commonText("About", "Über Z7ConfigTool"));
    m_ui->actionHilfe->setText(commonText("Help", "Hilfe"));
    m_ui->actionSave->setText(commonText("Save", "Speichern"));
    m_ui->actionNorvik_Tessel_Home->setText(commonText("NorvikTesselHome", "Norvik & Tessel"));
    m_ui->actionConnect->setText(commonText("Connect", "Verbindungen..."));
    m_ui->actionOptions->setText(commonText("Options", "Optionen..."));
    m_ui->actionTeamviewer->setText(commonText("Teamviewer", "Teamviewer..."));
}

void MainWindow::createBands()
{
    QPalette lightPalette = palette();
    lightPalette.setBrush(QPalette::Window, PageStyle::lightGrey());
    QPalette bluePalette = palette();
    bluePalette.setBrush(QPalette::Window, PageStyle::blue());
    setPalette(lightPalette);

    m_topMenu = new TopMenuWidget(this);
    m_mainContent = new MainContentWidget(m_controller.get(), this);
    m_deviceControl = new DeviceControlWidget(this);
    auto *bands = new QWidget;
    auto *layout = new QVBoxLayout(bands);
    layout->setMargin(bandsMargin);
    layout->setSpacing(0);
    const auto addBand = [layout](QWidget *band, const QPalette &bandPalette) {
        band->setAutoFillBackground(true);
        band->setPalette(bandPalette);
        layout->addWidget(band);
    };
    addBand(m_topMenu, lightPalette);
    addBand(m_mainContent, bluePalette);
    addBand(m_deviceControl, lightPalette);
    layout->setStretchFactor(m_mainContent, 1);
    setCentralWidget(bands);
}

void MainWindow::createDialogs()
{
    m_connectionsDialog = new ConnectionsDialog(m_controller.get(), this);
    m_optionsDialog = new optionsdialog(this);
    m_aboutDialog = new AboutDialog(this);
    for (QDialog *dialog : {static_cast<QDialog *>(m_connectionsDialog),
             static_cast<QDialog *>(m_optionsDialog), static_cast<QDialog *>(m_aboutDialog)})
        dialog->setModal(true);
}

void MainWindow::connectActions()
{
    connect(m_controller.get(), SIGNAL(NewDeviceSelected(Z7Device)), SLOT(enableDeviceActions(Z7Device)));
    connect(m_controller.get(), SIGNAL(NoDeviceSelected()), SLOT(disableDeviceActions()));
    connect(m_ui->actionOpen, SIGNAL(triggered()), SLOT(OpenFile()));
    connect(m_ui->actionSaveAs, SIGNAL(triggered()), SLOT(SaveFileAs()));
    connect(m_ui->actionInfo, SIGNAL(triggered()), SLOT(CallAboutDialog()));
    connect(m_ui->actionHilfe, SIGNAL(triggered()), SLOT(CallPdfHelpFile()));
    connect(m_ui->actionSave, SIGNAL(triggered()), SLOT(SaveFile()));
    connect(m_ui->actionNorvik_Tessel_Home, SIGNAL(triggered()), SLOT(CallWebbrowserHomepage()));
    connect(m_ui->actionConnect, SIGNAL(triggered()), SLOT(CallConnectionsDialog()));
    connect(m_ui->actionOptions, SIGNAL(triggered()), SLOT(CallOptionsDialog()));
    connect(m_ui->actionTeamviewer, SIGNAL(triggered()), SLOT(CallTeamviewer()));
}

void MainWindow::enableFileActions(bool enabled)
{
    m_ui->actionSave->setEnabled(enabled);
    m_ui->actionOpen->setEnabled(enabled);
    m_ui->actionSaveAs->setEnabled(enabled);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    // A wizard at work would ask for the next port.
    m_connectionsDialog->hide();
    if (m_changesDialog)
        m_changesDialog->hide();
    if (m_courseWindow)
        m_courseWindow->hide();
    m_controller->stopCommunication();
    Z7Services::shutdown();
    event->accept();
}

void MainWindow::enableDeviceActions(Z7Device device)
{
    Q_UNUSED(device)
    enableFileActions(true);
    m_topMenu->enableDeviceActions(this);
}

void MainWindow::disableDeviceActions()
{
    enableFileActions(false);
    m_topMenu->disableDeviceActions(this);
}

void MainWindow::resetChanges(int deviceID)
{
    m_controller->resetChanges(deviceID);
}

void MainWindow::setDefault(int deviceID)
{
    m_controller->setDefaults(deviceID);
}

void MainWindow::sendNewPassword(int newPassword)
{
    m_controller->SetNewPasswordData(newPassword);
}
