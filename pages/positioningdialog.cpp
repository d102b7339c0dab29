#include "pages/positioningdialog.h"

#include "ui_positioningdialog.h"

PositioningDialog::PositioningDialog(QWidget *parent)
    : LabelledDataWidget("DialogPositioning", parent)
    , m_ui(std::make_unique<Ui::PositioningDialog>())
{
    m_ui->setupUi(this);
}

PositioningDialog::~PositioningDialog() = default;
