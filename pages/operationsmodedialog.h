#pragma once

#include "pages/labelleddatawidget.h"

#include <memory>

namespace Ui {
class OperationsModeDialog;
}

/// How the drive reacts to its two mode inputs, and whether it restarts by itself. Beside each value of the
/// drive stands what it means; what the user types is put into words once it has been written and read back.
class OperationsModeDialog : public LabelledDataWidget
{
    Q_OBJECT

public:
    static constexpr TextSection texts {"DialogOperationsMode"};

    explicit OperationsModeDialog(QWidget *parent = nullptr);
    ~OperationsModeDialog() override;

    void initPage() override;
    void newDeviceParam(const Z7DeviceParam &param) override;

private:
    QLabel *meaningLabel(int number) const;

    const std::unique_ptr<Ui::OperationsModeDialog> m_ui;
};
