#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class DeviceSelectionDialog;
}

/// Lets the user pick drives for an action on several of them.
class DeviceSelectionDialog : public QDialog
{
    Q_OBJECT

public:
    explicit DeviceSelectionDialog(QWidget *parent = nullptr);
    ~DeviceSelectionDialog() override;

    /// Empties the dialog before each use, the introduction too. Each call connects the buttons once more,
    /// and nothing takes off what was connected before: a dialog that is used again reports each drive as
    /// often as it was reset.
    void reset();
    void setIntro(const QString &text);
    void addDevice(int deviceID, const QString &text);

public slots:
    /// Reports each ticked drive, from top to bottom, and closes the dialog.
    void postSelectedDevices();

signals:
    /// One of the drives that the user has ticked.
    void deviceSelected(int deviceID);

private:
    const std::unique_ptr<Ui::DeviceSelectionDialog> m_ui;
};
