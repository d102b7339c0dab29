#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class DetectingPortsWidget;
}

/// Says that the ports are being looked at. No way to connect drives shows it.
class DetectingPortsWidget : public QWidget
{
    Q_OBJECT

public:
    explicit DetectingPortsWidget(QWidget *parent = nullptr);
    ~DetectingPortsWidget() override;

private:
    const std::unique_ptr<Ui::DetectingPortsWidget> m_ui;
};
