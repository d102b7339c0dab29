#include "shell/optionsdialog.h"

#include "control/services/language.h"
#include "control/services/options.h"
#include "control/services/services.h"
#include "pages/integervalidator.h"
#include "pages/pagestyle.h"
#include "ui_optionsdialog.h"

#include <QDir>

namespace {

Z7Options *options()
{
    return Z7Services::instance()->options();
}

constexpr TextSection optionText("DialogOptions");

} // namespace

optionsdialog::optionsdialog(QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::optionsdialog>())
{
    m_ui->setupUi(this);
    PageStyle::paintHeader(m_ui->fTop);
    PageStyle::paintText(m_ui->lRestartRequired, Qt::darkRed);
    PageStyle::keepPlaceWhenHidden(m_ui->lRestartRequired);
    m_ui->BtnCancel->setIcon(QIcon(QStringLiteral(":images/cancel-icon.png")));
    m_ui->BtnOK->setIcon(QIcon(QStringLiteral(":images/tick-icon_24px.png")));
    connect(m_ui->BtnOK, SIGNAL(clicked()), SLOT(saveAndCloseDialog()));
    connect(m_ui->BtnCancel, SIGNAL(clicked()), SLOT(close()));
    connect(m_ui->cbLanguage, SIGNAL(currentIndexChanged(int)), SLOT(languageChanged(int)));
    for (QLineEdit *field : {m_ui->edTimeout, m_ui->edTimeoutScanning})
        field->setValidator(new IntegerValidator(20, 1000, this));
    for (QLineEdit *field : {m_ui->edPreselectVendorID, m_ui->edPollingCycle})
        field->setValidator(new IntegerValidator(0, 10000, this));
}

optionsdialog::~optionsdialog() = default;

void optionsdialog::refresh()
{
    setTexts();
    listLanguages();
    m_ui->lRestartRequired->hide();
    m_ui->edTimeout->setText(QString::number(options()->timeout()));
    m_ui->edTimeoutScanning->setText(QString::number(options()->timeoutScanning()));
    m_ui->edPreselectVendorID->setText(QString::number(options()->defaultVendorID()));
    m_ui->edPollingCycle->setText(QString::number(options()->pollingInterval()));
}

void optionsdialog::setTexts()
{
    setWindowTitle(optionText("Title", "Optionen"));
    m_ui->BtnOK->setText(commonText("OK", "OK"));
    m_ui->BtnCancel->setText(commonText("Close", "Schließen"));
    m_ui->gbCommon->setTitle(optionText("Common", "Allgemein"));
    m_ui->gbCommunication->setTitle(optionText("Communication", "Kommunikation"));
    m_ui->lLanguage->setText(optionText("Language", "Sprache"));
    m_ui->lTimeout->setText(optionText("Timeout", "Timeout [ms]"));
    m_ui->lTimeoutPolling->setText(optionText("TimeoutScaning", "Timeout Scannen [ms]"));
    m_ui->lPreselectVendorId->setText(optionText("preselectVendorID", "Vorauswahl Vendor ID"));
    m_ui->lPollingCycle->setText(optionText("PollingInterval", "Polling-Intervall [ms] (0=aus)"));
    m_ui->lRestartRequired->setText(optionText(
        "RestartRequired", "Ihre Änderungen werden erst nach einem Neustart der Anwendung wirksam!"));
}

void optionsdialog::listLanguages()
{
    // Filling the list is no change of the user's.
    const QSignalBlocker blocker(m_ui->cbLanguage);
    m_ui->cbLanguage->clear();
    const QString inForce = options()->language();
    const QFileInfoList files =
        QDir().entryInfoList({QLatin1Char('*') + Z7Language::fileSuffix()}, QDir::Files);
    for (const QFileInfo &file : files) {
        m_ui->cbLanguage->addItem(file.completeBaseName());
        if (file.completeBaseName() == inForce)
            m_ui->cbLanguage->setCurrentIndex(m_ui->cbLanguage->count() - 1);
    }
}

void optionsdialog::languageChanged(int index)
{
    Q_UNUSED(index)
    m_ui->lRestartRequired->show();
}

void optionsdialog::saveAndCloseDialog()
{
    options()->setTimeout(m_ui->edTimeout->text().toInt());
    options()->setTimeoutScanning(m_ui->edTimeoutScanning->text().toInt());
    options()->setDefaultVendorID(m_ui->edPreselectVendorID->text().toInt());
    options()->setPollingInterval(m_ui->edPollingCycle->text().toInt());
    options()->setLanguage(m_ui->cbLanguage->currentText());
    close();
}
