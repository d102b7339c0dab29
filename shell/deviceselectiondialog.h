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

private:
    const std::unique_ptr<Ui::DeviceSelectionDialog> m_ui;
};
