#include "pages/fixedresolutionsdialog.h"

#include "pages/operationmodepanel.h"
#include "ui_fixedresolutionsdialog.h"

FixedResolutionsDialog::FixedResolutionsDialog(QWidget *parent)
    : LabelledDataWidget(
        texts, "Die Festdrehzahlen können über die digitalen Eingänge I1 und I2 vorgegeben werden.", parent)
    , m_ui(std::make_unique<Ui::FixedResolutionsDialog>())
    , m_modePanel(new OperationModePanel(FixedSpeedMode, this))
{
    m_ui->setupUi(this);
    for (const int number : {0x17, 0x18, 0x19})
        addParam(number);
    m_ui->modeLayout->addWidget(m_modePanel);
}

FixedResolutionsDialog::~FixedResolutionsDialog() = default;

void FixedResolutionsDialog::initPage()
{
    m_modePanel->setTexts(
        texts, "Die Parameter der Festdrehzahlen kommen nur im Betriebsmodus 1/x oder x/1 zur Anwendung.");
    LabelledDataWidget::initPage();
}

void FixedResolutionsDialog::newDeviceParam(const Z7DeviceParam &param)
{
    LabelledDataWidget::newDeviceParam(param);
    m_modePanel->showModes(device, modePairText());
}
