#include "pages/operationsmodedialog.h"

#include "ui_operationsmodedialog.h"

OperationsModeDialog::OperationsModeDialog(QWidget *parent)
    : LabelledDataWidget("DialogOperationsMode", parent)
    , m_ui(std::make_unique<Ui::OperationsModeDialog>())
{
    m_ui->setupUi(this);
}

OperationsModeDialog::~OperationsModeDialog() = default;
