#pragma once

#include "pages/emptydatawidget.h"

#include <memory>

namespace Ui {
class FirmwareUploadDialog;
}

/// Replaces the firmware of a drive through an external programmer.
class FirmwareUploadDialog : public EmptyDataWidget
{
    Q_OBJECT

public:
    explicit FirmwareUploadDialog(QWidget *parent = nullptr);
    ~FirmwareUploadDialog() override;

private:
    const std::unique_ptr<Ui::FirmwareUploadDialog> m_ui;
};
