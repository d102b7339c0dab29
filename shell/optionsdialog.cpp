#include "shell/optionsdialog.h"

#include "ui_optionsdialog.h"

optionsdialog::optionsdialog(QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::optionsdialog>())
{
    m_ui->setupUi(this);
}

optionsdialog::~optionsdialog() = default;
