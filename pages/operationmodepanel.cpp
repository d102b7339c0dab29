#include "pages/operationmodepanel.h"

#include "model/device.h"
#include "pages/pagestyle.h"
#include "ui_operationmodepanel.h"

OperationModePanel::OperationModePanel(OperationMode effectiveMode, QWidget *parent)
    : QFrame(parent)
    , m_ui(std::make_unique<Ui::OperationModePanel>())
    , m_effectiveMode(effectiveMode)
{
    setObjectName(QStringLiteral("fCurrentOperationMode"));
    m_ui->setupUi(this);
    PageStyle::paintText(m_ui->lSwitchOperationsModeInfo, PageStyle::warningRed());
    // The fields below must not move away from under the mouse when the drive changes its mode.
    PageStyle::keepPlaceWhenHidden(m_ui->lSwitchOperationsModeInfo);
}

OperationModePanel::~OperationModePanel() = default;

void OperationModePanel::setTexts(TextSection texts, const char *modeInfo)
{
    m_ui->lOperationsModeIntro->setText(texts("OperationsModeInfo", modeInfo));
    m_ui->lCurrentOperationsMode->setText(texts("CurrentOperaionsMode", "Aktueller Betriebsmodus:"));
    m_ui->LCurrentOperationsModeTxt->clear();
    m_ui->lSwitchOperationsModeInfo->setText(texts("SwitchOperationsModeInfo",
        "Bitte wechseln Sie den aktuellen Betriebsmodus, um die Parameter zur Anwendung zu bringen!"));
}

void OperationModePanel::showModes(const Z7Device &device, const QString &modePair)
{
    const bool isEffective =
        device.operationMode1 == m_effectiveMode || device.operationMode2 == m_effectiveMode;
    m_ui->lSwitchOperationsModeInfo->setHidden(isEffective);
    m_ui->LCurrentOperationsModeTxt->setText(modePair);
}
