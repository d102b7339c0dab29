#pragma once

#include "pages/datawidget.h"

#include <memory>

class FieldGuide;

namespace Ui {
class RS485Dialog;
}

/// The drive's bus address, and its change. A new address goes to the drive at the press of the button; it
/// never becomes one of the user's pending changes.
class RS485Dialog : public Z7DataWidget
{
    Q_OBJECT

public:
    static constexpr TextSection texts {"DialogRS485"};

    explicit RS485Dialog(QWidget *parent = nullptr);
    ~RS485Dialog() override;

    void clearUserValues() override;
    void initPage() override;
    void deviceUpdateFinished() override { }
    void newDeviceParam(const Z7DeviceParam &param) override;
    void newUserParam(const Z7DeviceParam &param) override { Q_UNUSED(param) }
    /// An address that the user has typed is no pending change: a file for another drive leaves it.
    void showUserValues(const Z7DeviceParamSet &own) override { Q_UNUSED(own) }

public slots:
    /// Sends an address from 1 to 255; anything else gets a message box and is not sent.
    void updateAdress();

private:
    const std::unique_ptr<Ui::RS485Dialog> m_ui;
    FieldGuide *m_guide = nullptr;
};
