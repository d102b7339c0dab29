#pragma once

#include "pages/idevicedatacallback.h"
#include "shell/wizard/iwizardwidget.h"

#include <QVector>
#include <QWidget>

#include <memory>

class QCheckBox;
class QLabel;

namespace Ui {
class ConfirmConnectionWizardWidget;
}

/// Logs on to the drives of the list, one after the other, and lets the user tick those to be taken over.
/// The quick way tries the first drive only.
class ConfirmConnectionWizardWidget : public QWidget, public IDeviceDataCallback, public IWizardWidget
{
    Q_OBJECT

public:
    ConfirmConnectionWizardWidget(bool quickConnect, ConnectionsDialog *dialog);
    ~ConfirmConnectionWizardWidget() override;

    void enterPage() override;
    bool leavePage() override;
    QList<Z7Device> selectedDevices() override;

    void DeviceUpdate(const Z7Device &device) override;
    void transactionStarted(int maxProgress, const Z7Device &device) override;
    void transactionTerminated() override;
    void transactionProgress() override { }

private slots:
    void SendConnectCurrentDevice();

private:
    struct Row
    {
        QCheckBox *check;
        QLabel *status;
        QLabel *text;
    };

    void addRow(const Z7Device &device);
    /// False once the user has gone on.
    bool isConnecting() const;
    bool isAboutCurrentDevice(const Z7Device &device) const;

    const bool m_quickConnect;
    QVector<Row> m_rows; ///< one per drive; the widgets belong to the form
    int m_currentDevice = 0;
    bool m_answered = false; ///< the record of the current drive has come
    const std::unique_ptr<Ui::ConfirmConnectionWizardWidget> m_ui;
};
