#pragma once

#include "pages/emptydatawidget.h"

#include <memory>

namespace Ui {
class NetworkDialog;
}

/// The page behind the network item of the tree. It has no content of its own.
class NetworkDialog : public EmptyDataWidget
{
    Q_OBJECT

public:
    static constexpr TextSection texts {"DialogNetworkStatus"};

    explicit NetworkDialog(QWidget *parent = nullptr);
    ~NetworkDialog() override;

private:
    const std::unique_ptr<Ui::NetworkDialog> m_ui;
};
