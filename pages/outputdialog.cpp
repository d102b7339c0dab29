#include "pages/outputdialog.h"

#include "ui_outputdialog.h"

OutputDialog::OutputDialog(QWidget *parent)
    : LabelledDataWidget("DialogOutput", parent)
    , m_ui(std::make_unique<Ui::OutputDialog>())
{
    m_ui->setupUi(this);
}

OutputDialog::~OutputDialog() = default;
