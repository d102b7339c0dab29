#include "pages/operationsmodedialog.h"

#include "control/services/language.h"
#include "model/parameterdefinitions.h"
#include "ui_operationsmodedialog.h"

namespace {

enum Param { ModeInput1 = 1, ModeInput2 = 2, Restart = 6 };

} // namespace

OperationsModeDialog::OperationsModeDialog(QWidget *parent)
    : LabelledDataWidget("DialogOperationsMode", "", parent)
    , m_ui(std::make_unique<Ui::OperationsModeDialog>())
{
    m_ui->setupUi(this);
    addParam(ModeInput1, QStringLiteral("RevolutionN1"));
    addParam(ModeInput2, QStringLiteral("RevolutionN2"));
    addParam(Restart, QStringLiteral("RevolutionN3"));
}

OperationsModeDialog::~OperationsModeDialog() = default;

void OperationsModeDialog::initPage()
{
    LabelledDataWidget::initPage();
    for (const int number : paramIds())
        meaningLabel(number)->clear();
}

void OperationsModeDialog::newDeviceParam(const Z7DeviceParam &param)
{
    if (QLabel *label = meaningLabel(param.number)) {
        const QString text = paramDefinitions()->paramOptionText(param.number, param.value);
        label->setText(text.isEmpty() ? text : QStringLiteral("(%1)").arg(definitionText(text)));
    }
    LabelledDataWidget::newDeviceParam(param);
}

QLabel *OperationsModeDialog::meaningLabel(int number) const
{
    switch (number) {
    case ModeInput1:
        return m_ui->lTextI1;
    case ModeInput2:
        return m_ui->lTextI2;
    case Restart:
        return m_ui->lTextWiederanlauf;
    default:
        return nullptr;
    }
}
