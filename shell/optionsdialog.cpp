#include "shell/optionsdialog.h"

#include "control/services/language.h"
#include "control/services/services.h"
#include "pages/integervalidator.h"
#include "pages/keyboard.h"
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
    PageStyle::growWithTexts(this);
    PageStyle::paintHeader(m_ui->fTop);
    PageStyle::paintText(m_ui->lRestartRequired, Qt::darkRed);
    PageStyle::keepPlaceWhenHidden(m_ui->lRestartRequired);
    m_ui->BtnCancel->setIcon(QIcon(QStringLiteral(":images/cancel-icon.png")));
    m_ui->BtnOK->setIcon(QIcon(QStringLiteral(":images/tick-icon_24px.png")));
    connect(m_ui->BtnOK, SIGNAL(clicked()), SLOT(saveAndCloseDialog()));
    connect(m_ui->BtnCancel, SIGNAL(clicked()), SLOT(close()));
    connect(m_ui->cbLanguage, SIGNAL(currentIndexChanged(int)), SLOT(languageChanged(int)));
    prepareNumberFields();
    Keyboard::letWheelPass(m_ui->cbLanguage);
    Keyboard::showFocus(m_ui->BtnOK);
}

optionsdialog::~optionsdialog() = default;

void optionsdialog::prepareNumberFields()
{
    for (const Z7Options::Row &row : Z7Options::rows()) {
        if (row.kind != Z7Options::Number)
            continue;
        auto *field = findChild<QLineEdit *>(QLatin1String(row.field));
        Q_ASSERT_X(field, row.key, row.field);
        field->setValidator(new IntegerValidator(row.lowest, row.highest, this));
        m_numberFields.append({row.name, field});
    }
}

void optionsdialog::refresh()
{
    setTexts();
    listLanguages();
    m_ui->lRestartRequired->hide();
    for (const NumberField &shown : qAsConst(m_numberFields))
        shown.field->setText(QString::number(options()->number(shown.option)));
    m_ui->cbLanguage->setFocus();
}

void optionsdialog::setTexts()
{
    setWindowTitle(optionText("Title", "Optionen"));
    m_ui->BtnOK->setText(commonText("OK", "OK"));
    m_ui->BtnCancel->setText(commonText("Close", "Schließen"));
    m_ui->gbCommon->setTitle(optionText("Common", "Allgemein"));
    m_ui->gbCommunication->setTitle(optionText("Communication", "Kommunikation"));
    m_ui->lLanguage->setText(optionText("Language", "Sprache"));
    m_ui->cbLanguage->setAccessibleName(m_ui->lLanguage->text());
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
        QDir(Z7Services::instance()->folder())
            .entryInfoList({QLatin1Char('*') + Z7Language::fileSuffix()}, QDir::Files);
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
    for (const NumberField &shown : qAsConst(m_numberFields))
        options()->setNumber(shown.option, shown.field->text().toInt());
    options()->setLanguage(m_ui->cbLanguage->currentText());
    close();
}
