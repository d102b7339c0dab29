#pragma once

#include "pages/datawidget.h"

/// Base of the pages that show no parameters and keep no user values.
class EmptyDataWidget : public Z7DataWidget
{
    Q_OBJECT

public:
    explicit EmptyDataWidget(QWidget *parent = nullptr)
        : Z7DataWidget(parent)
    {
    }

    void clearUserValues() override { }
    void initPage() override { }
    void deviceUpdateFinished() override { }
    void newDeviceParam(const Z7DeviceParam &param) override { Q_UNUSED(param) }
    void newUserParam(const Z7DeviceParam &param) override { Q_UNUSED(param) }
};
