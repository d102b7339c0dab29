#pragma once

#include "shell/wizard/iwizardwidget.h"

#include <QWidget>

#include <memory>

namespace Ui {
class IntroductionWizardWidget;
}

/// Says what the next page will do.
class IntroductionWizardWidget : public QWidget, public IWizardWidget
{
    Q_OBJECT

public:
    IntroductionWizardWidget(const QString &text, ConnectionsDialog *dialog);
    ~IntroductionWizardWidget() override;

    bool leavePage() override { return true; }
    QList<Z7Device> selectedDevices() override { return {}; }

private:
    const std::unique_ptr<Ui::IntroductionWizardWidget> m_ui;
};
