#pragma once

#include "control/maincontroller.h"
#include "pages/pagefactory.h"
#include "shell/devicecontrolwidget.h"
#include "shell/maincontentwidget.h"
#include "tests/shell/shelltest.h"
#include "tests/support/person.h"

#include <QTreeWidget>
#include <QVBoxLayout>

#include <memory>

/// The middle band and the control bar on a controller, put together as the window does it. The test takes
/// the place of the communication: it gives records to the slots of the controller.
template<typename Controller = Z7MainController>
class ContentBand
{
public:
    explicit ContentBand(int lastPage = PageNumber::Last)
        : window(std::make_unique<QWidget>())
        , content(new MainContentWidget(&controller))
        , bar(new DeviceControlWidget)
    {
        auto *layout = new QVBoxLayout(window.get());
        layout->addWidget(content);
        layout->addWidget(bar);
        for (int number = 0; number <= lastPage; ++number)
            controller.createPage(number);
        controller.setMainContent(content);
        controller.setDeviceControl(bar);
        window->resize(1200, 500);
        window->show();
        window->activateWindow();
    }

    QTreeWidget &tree() const { return ShellTest::child<QTreeWidget>(*content, "MainMenuTree"); }
    QTreeWidgetItem *item(int page, const Z7Device &device) const
    {
        return ShellTest::itemOf(tree(), page, device.deviceId());
    }
    bool click(int page, const Z7Device &device) const { return Person::click(item(page, device)); }
    /// A record as a polling pass brings it.
    void bring(const Z7Device &device)
    {
        controller.PostDeviceUpdate(Z7CommInterface::DevicePolling, device);
    }

private:
    const std::unique_ptr<QWidget> window;

public:
    /// Goes before the widgets, with its pages.
    Controller controller;
    MainContentWidget *const content;
    DeviceControlWidget *const bar;
};
