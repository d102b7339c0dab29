#include "shell/wizard/setpasswordwizardwidget.h"

#include "control/services/language.h"
#include "ui_setpasswordwizardwidget.h"

#include <QIntValidator>

SetPasswordWizardWidget::SetPasswordWizardWidget(ConnectionsDialog *dialog)
    : IWizardWidget(this, dialog)
    , m_ui(std::make_unique<Ui::SetPasswordWizardWidget>())
{
    m_ui->setupUi(this);
    m_ui->LPassword->setText(languageText("DialogConnection", "Password", QStringLiteral("Passwort")));
    m_ui->lIntro->setText(languageText(
        "DialogConnection", "PasswordInfo", QStringLiteral("Bitte geben Sie das Passwort ein!")));
    m_ui->EdPassword->setValidator(new QIntValidator(this));
    setFocusProxy(m_ui->EdPassword);
}

SetPasswordWizardWidget::~SetPasswordWizardWidget() = default;

bool SetPasswordWizardWidget::leavePage()
{
    const int password = m_ui->EdPassword->text().toInt();
    for (Z7Device &device : m_devices)
        device.setPassword(password);
    return true;
}
