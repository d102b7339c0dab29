#include "pages/rs485dialog.h"

#include "ui_rs485dialog.h"

RS485Dialog::RS485Dialog(QWidget *parent)
    : EmptyDataWidget(parent)
    , m_ui(std::make_unique<Ui::RS485Dialog>())
{
    m_ui->setupUi(this);
}

RS485Dialog::~RS485Dialog() = default;
