#pragma once

#include "shell/wizard/iwizardwidget.h"

#include <QWidget>

#include <memory>

namespace Ui {
class SetPasswordWizardWidget;
}

/// Asks for the password with which all drives of the list are logged on to.
class SetPasswordWizardWidget : public QWidget, public IWizardWidget
{
    Q_OBJECT

public:
    explicit SetPasswordWizardWidget(ConnectionsDialog *dialog);
    ~SetPasswordWizardWidget() override;

    bool leavePage() override;
    QList<Z7Device> selectedDevices() override { return {}; }

private:
    const std::unique_ptr<Ui::SetPasswordWizardWidget> m_ui;
};
