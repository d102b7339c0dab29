#pragma once

#include "pages/emptydatawidget.h"

#include <memory>

namespace Ui {
class RemoteControlDialog;
}

/// An empty page without an entry in the tree.
class RemoteControlDialog : public EmptyDataWidget
{
    Q_OBJECT

public:
    static constexpr TextSection texts {"DialogRemoteControl"};

    explicit RemoteControlDialog(QWidget *parent = nullptr);
    ~RemoteControlDialog() override;

private:
    const std::unique_ptr<Ui::RemoteControlDialog> m_ui;
};
