#include "pages/fixedresolutionsdialog.h"

#include "ui_fixedresolutionsdialog.h"

FixedResolutionsDialog::FixedResolutionsDialog(QWidget *parent)
    : LabelledDataWidget("DialogFixedResolutions", parent)
    , m_ui(std::make_unique<Ui::FixedResolutionsDialog>())
{
    m_ui->setupUi(this);
}

FixedResolutionsDialog::~FixedResolutionsDialog() = default;
