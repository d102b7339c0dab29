#pragma once

#include "pages/idevicedatacallback.h"
#include "shell/wizard/iwizardwidget.h"

#include <QTimer>
#include <QVector>
#include <QWidget>

#include <memory>

class QLabel;
class QProgressBar;
class QPushButton;

namespace Ui {
class ScanningWizardWidget;
}

/// Sweeps the ports of the list for drives, one port after the other, and leaves the list with the drives
/// found. A scan that finds nothing keeps the wizard here.
class ScanningWizardWidget : public QWidget, public IDeviceDataCallback, public IWizardWidget
{
    Q_OBJECT

public:
    explicit ScanningWizardWidget(ConnectionsDialog *dialog);
    ~ScanningWizardWidget() override;

    void enterPage() override;
    bool leavePage() override;
    QList<Z7Device> selectedDevices() override { return {}; }

    void DeviceUpdate(const Z7Device &device) override;
    void transactionStarted(int maxProgress, const Z7Device &device) override;
    void transactionTerminated() override;
    void transactionProgress() override;

public slots:
    /// Scans the current port.
    void scanDevice();
    /// Ends the scan; the ports behind the current one are left out.
    void abortScanning();

protected:
    /// A page that is put away scans no further port and gives the dialog its buttons back.
    void hideEvent(QHideEvent *event) override;

private slots:
    /// Says in each row what is known against its port.
    void tellOfPorts();

private:
    struct Row
    {
        QProgressBar *progress;
        QPushButton *abort;
        QLabel *text;
        QLabel *status;
        QString portName;
    };

    void addRow(const Z7Device &device);
    void announceScan();
    void forgetScan();
    void endScan();
    bool isScanning() const { return m_scanning || m_pause.isActive(); }
    /// News may come, and slots be called, while no port is shown.
    bool hasCurrentPort() const { return m_currentPort < m_rows.size(); }
    int countFoundOnPort(const QString &portName) const;

    bool m_scanning = false;
    bool m_aborted = false;
    QVector<Row> m_rows; ///< one per port; the widgets belong to the form
    int m_currentPort = 0;
    QList<Z7Device> m_foundDevices;
    QTimer m_pause {this}; ///< before the next port
    const std::unique_ptr<Ui::ScanningWizardWidget> m_ui;
};
