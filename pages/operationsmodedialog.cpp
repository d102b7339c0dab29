#include "pages/operationsmodedialog.h"

#include "control/services/language.h"
#include "model/drivefacts.h"
#include "model/parameterdefinitions.h"
#include "ui_operationsmodedialog.h"

OperationsModeDialog::OperationsModeDialog(QWidget *parent)
    : LabelledDataWidget(texts, "", parent)
    , m_ui(std::make_unique<Ui::OperationsModeDialog>())
{
    m_ui->setupUi(this);
    addParam(ParameterNumber::OperationMode1, QStringLiteral("RevolutionN1"));
    addParam(ParameterNumber::OperationMode2, QStringLiteral("RevolutionN2"));
    addParam(ParameterNumber::Restart, QStringLiteral("RevolutionN3"));
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
    case ParameterNumber::OperationMode1:
        return m_ui->lTextI1;
    case ParameterNumber::OperationMode2:
        return m_ui->lTextI2;
    case ParameterNumber::Restart:
        return m_ui->lTextWiederanlauf;
    default:
        return nullptr;
    }
}
