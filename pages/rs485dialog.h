#pragma once

#include "pages/emptydatawidget.h"

#include <memory>

namespace Ui {
class RS485Dialog;
}

/// The drive's bus address, and its change.
class RS485Dialog : public EmptyDataWidget
{
    Q_OBJECT

public:
    explicit RS485Dialog(QWidget *parent = nullptr);
    ~RS485Dialog() override;

private:
    const std::unique_ptr<Ui::RS485Dialog> m_ui;
};
