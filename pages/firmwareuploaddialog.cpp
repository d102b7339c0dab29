#include "pages/firmwareuploaddialog.h"

#include "ui_firmwareuploaddialog.h"

FirmwareUploadDialog::FirmwareUploadDialog(QWidget *parent)
    : EmptyDataWidget(parent)
    , m_ui(std::make_unique<Ui::FirmwareUploadDialog>())
{
    m_ui->setupUi(this);
    multiDevice = true;
}

FirmwareUploadDialog::~FirmwareUploadDialog() = default;
