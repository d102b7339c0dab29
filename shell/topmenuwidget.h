#pragma once

#include <QWidget>

#include <memory>

class MainWindow;

namespace Ui {
class TopMenuWidget;
}

/// The band above the content: the tool buttons and the maker's logo.
class TopMenuWidget : public QWidget
{
    Q_OBJECT

public:
    /// Connects the buttons that work at all times to the window.
    explicit TopMenuWidget(MainWindow *window);
    ~TopMenuWidget() override;

    /// Enables the buttons that act on a drive and connects them to the window's slots. BtnResetChanges gets
    /// one more connection by every call.
    void enableDeviceActions(MainWindow *window);
    /// Takes the same buttons off again, all but BtnResetChanges, which stays as it is.
    void disableDeviceActions(MainWindow *window);

private:
    void setToolTips();

    const std::unique_ptr<Ui::TopMenuWidget> m_ui;
};
