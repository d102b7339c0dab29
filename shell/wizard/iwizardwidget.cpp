#include "shell/wizard/iwizardwidget.h"

#include "control/maincontroller.h"
#include "shell/wizard/connectionsdialog.h"

#include <QTimer>
#include <QWidget>

namespace {

constexpr int pauseMs = 200;

} // namespace

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

void IWizardWidget::preparePause(QTimer *pause, const char *slot)
{
    pause->setSingleShot(true);
    pause->setTimerType(Qt::PreciseTimer);
    pause->setInterval(pauseMs);
    QObject::connect(pause, SIGNAL(timeout()), m_widget, slot);
}

void IWizardWidget::watchPorts(const char *slot)
{
    QObject::connect(&m_dialog->controller()->portWatch(), SIGNAL(changed()), m_widget, slot);
}

PortState IWizardWidget::portState(const QString &portName) const
{
    return m_dialog->controller()->portWatch().state(portName);
}

bool IWizardWidget::hasDialogsFocus(const QWidget *field) const
{
    return m_dialog->focusWidget() == field;
}

void IWizardWidget::stopListening(IDeviceDataCallback *page)
{
    if (Z7MainController *controller = m_dialog->controller())
        controller->removeCallback(page);
}
