#include "shell/wizard/detectingportswidget.h"

#include "ui_detectingportswidget.h"

DetectingPortsWidget::DetectingPortsWidget(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::DetectingPortsWidget>())
{
    m_ui->setupUi(this);
}

DetectingPortsWidget::~DetectingPortsWidget() = default;
