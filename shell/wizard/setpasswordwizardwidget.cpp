#include "shell/wizard/setpasswordwizardwidget.h"

#include "control/services/language.h"
#include "pages/integervalidator.h"
#include "shell/wizard/wizardrows.h"
#include "ui_setpasswordwizardwidget.h"

SetPasswordWizardWidget::SetPasswordWizardWidget(ConnectionsDialog *dialog)
    : IWizardWidget(this, dialog)
    , m_ui(std::make_unique<Ui::SetPasswordWizardWidget>())
{
    m_ui->setupUi(this);
    m_ui->LPassword->setText(connectionText("Password", "Passwort"));
    m_ui->lIntro->setText(connectionText("PasswordInfo", "Bitte geben Sie das Passwort ein!"));
    m_ui->EdPassword->setValidator(new IntegerValidator(this));
    m_firstField = m_ui->EdPassword;
}

SetPasswordWizardWidget::~SetPasswordWizardWidget() = default;

bool SetPasswordWizardWidget::leavePage()
{
    const int password = m_ui->EdPassword->text().toInt();
    for (Z7Device &device : m_devices)
        device.setPassword(password);
    return true;
}
