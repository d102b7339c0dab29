#pragma once

#include "pages/idevicedatacallback.h"
#include "shell/wizard/iwizardwidget.h"

#include <QTimer>
#include <QVector>
#include <QWidget>

#include <memory>

class QCheckBox;
class QLabel;

namespace Ui {
class ConfirmConnectionWizardWidget;
}

/// Logs on to the drives of the list, one after the other, and lets the user tick those to be taken over.
class ConfirmConnectionWizardWidget : public QWidget, public IDeviceDataCallback, public IWizardWidget
{
    Q_OBJECT

public:
    enum Way {
        QuickConnect, ///< tries the first drive of the list only
        EachDrive,
    };

    ConfirmConnectionWizardWidget(Way way, ConnectionsDialog *dialog);
    ~ConfirmConnectionWizardWidget() override;

    void enterPage() override;
    bool leavePage() override;
    QList<Z7Device> selectedDevices() override;

    void DeviceUpdate(const Z7Device &device) override;
    void transactionStarted(int maxProgress, const Z7Device &device) override;
    void transactionTerminated() override;
    void transactionProgress() override { }

public slots:
    /// Logs on to the current drive.
    void SendConnectCurrentDevice();

protected:
    /// A page that the user has left waits for nothing any more and asks for nothing more.
    void hideEvent(QHideEvent *event) override;

private slots:
    /// Says in each row what is known against its port.
    void tellOfPorts();

private:
    struct Row
    {
        QCheckBox *check;
        QLabel *status;
        QLabel *text;
        QString portName;
    };

    void addRow(const Z7Device &device);
    void forgetLogOn();
    /// News may come, and slots be called, while no drive is shown.
    bool hasCurrentDevice() const { return isShown(m_currentDevice); }
    bool isShown(int number) const { return number < m_rows.size() && number < m_devices.size(); }
    bool isAboutCurrentDevice(const Z7Device &device) const;
    void showOutcome(const Z7Device &device);
    void goToFirstTick();

    const Way m_way;
    QVector<Row> m_rows; ///< one per drive; the widgets belong to the form
    int m_currentDevice = 0;
    /// The log-on to the current drive has begun. A log-on of an earlier page may still hold the bus.
    bool m_started = false;
    bool m_answered = false; ///< the record of that log-on has come
    QTimer m_pause {this}; ///< before the next log-on
    const std::unique_ptr<Ui::ConfirmConnectionWizardWidget> m_ui;
};
