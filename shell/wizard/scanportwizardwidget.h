#pragma once

#include "shell/wizard/iwizardwidget.h"

#include <QWidget>

#include <memory>

namespace Ui {
class ScanPortWizardWidget;
}

/// Lets the user choose a port and, on the manual way, an address and a password. It leaves the list with
/// exactly one drive. The ports are those that the wizard was started with.
class ScanPortWizardWidget : public QWidget, public IWizardWidget
{
    Q_OBJECT

public:
    enum Way {
        PortOnly,
        Manual, ///< asks for address and password too
    };

    ScanPortWizardWidget(Way way, ConnectionsDialog *dialog);
    ~ScanPortWizardWidget() override;

    void enterPage() override;
    bool leavePage() override;
    QList<Z7Device> selectedDevices() override { return {}; }

public slots:
    /// Lists the ports of the drives given to the page; the system is not asked again.
    void updatePorts();

private:
    const Way m_way;
    const std::unique_ptr<Ui::ScanPortWizardWidget> m_ui;
};
