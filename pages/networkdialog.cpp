#include "pages/networkdialog.h"

#include "ui_networkdialog.h"

NetworkDialog::NetworkDialog(QWidget *parent)
    : EmptyDataWidget(parent)
    , m_ui(std::make_unique<Ui::NetworkDialog>())
{
    m_ui->setupUi(this);
}

NetworkDialog::~NetworkDialog() = default;
