#include "shell/wizard/iwizardwidget.h"

#include "control/maincontroller.h"
#include "shell/wizard/connectionsdialog.h"

IWizardWidget::IWizardWidget(QWidget *widget, ConnectionsDialog *dialog)
    : m_widget(widget)
    , m_dialog(dialog)
{
}

void IWizardWidget::enterPage() { }

bool IWizardWidget::leavePage()
{
    return false;
}

void IWizardWidget::setNavigationEnabled(bool enabled, bool okOnly)
{
    m_dialog->setNavigationEnabled(enabled, okOnly);
}

void IWizardWidget::stopListening(IDeviceDataCallback *page)
{
    if (Z7MainController *controller = m_dialog->controller())
        controller->removeCallback(page);
}
