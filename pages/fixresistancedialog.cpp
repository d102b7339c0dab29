#include "pages/fixresistancedialog.h"

#include "ui_fixresistancedialog.h"

FixResistanceDialog::FixResistanceDialog(QWidget *parent)
    : LabelledDataWidget("DialogFixResistance", parent)
    , m_ui(std::make_unique<Ui::FixResistanceDialog>())
{
    m_ui->setupUi(this);
}

FixResistanceDialog::~FixResistanceDialog() = default;
