#include "pages/datawidget.h"

#include "control/services/language.h"
#include "control/services/services.h"
#include "model/drivefacts.h"
#include "model/parameterdefinitions.h"

Z7DataWidget::Z7DataWidget(QWidget *parent)
    : QWidget(parent)
{
    // The ground that the page has with and without a parent. If it took its parent's, each showing would
    // carry the change through all the widgets of the page, which is most of the time that a showing takes.
    QPalette ownPalette = palette();
    ownPalette.setColor(QPalette::Window, Qt::white);
    setPalette(ownPalette);
}

void Z7DataWidget::DeviceUpdate(const Z7Device &d)
{
    device = d;
    for (const Z7DeviceParam &param : d.parameterSet.params) {
        if (hasParam(param.number))
            newDeviceParam(param);
    }
    deviceUpdateFinished();
}

void Z7DataWidget::transactionStarted(int maxProgress, const Z7Device &startedDevice)
{
    Q_UNUSED(maxProgress)
    Q_UNUSED(startedDevice)
}

void Z7DataWidget::transactionTerminated() { }

void Z7DataWidget::transactionProgress() { }

void Z7DataWidget::AllDeviceCommunicationStopped() { }

void Z7DataWidget::addParamId(int number)
{
    if (!m_paramIds.contains(number))
        m_paramIds.append(number);
}

bool Z7DataWidget::hasParam(int number) const
{
    return allParameters || m_paramIds.contains(number);
}

void Z7DataWidget::applyUserParams(const Z7DeviceParamSet &params)
{
    for (const Z7DeviceParam &param : params.params) {
        if (hasParam(param.number))
            newUserParam(param);
    }
}

void Z7DataWidget::showUserValues(const Z7DeviceParamSet &own)
{
    clearUserValues();
    applyUserParams(own);
}

Z7ParamDefinitions *Z7DataWidget::paramDefinitions() const
{
    return Z7Services::instance()->definitions(softwareVersion);
}

QString Z7DataWidget::optionText(int number, int value) const
{
    const QString text = paramDefinitions()->paramOptionText(number, value);
    return text.isEmpty() ? text : definitionText(text);
}

QString Z7DataWidget::modePairText() const
{
    const int mode1 = device.operationMode1;
    const int mode2 = device.operationMode2;
    return QStringLiteral("%1/%2 (%3/%4)")
        .arg(QString::number(mode1), QString::number(mode2),
            optionText(ParameterNumber::OperationMode1, mode1),
            optionText(ParameterNumber::OperationMode2, mode2));
}

void Z7DataWidget::reportUserText(int number, const QString &text)
{
    const int isUnsigned = paramDefinitions()->isUnsigned(number);
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    if (text.isEmpty())
        emit parameterDeleted(Z7DeviceParam(number, 0, isUnsigned, true));
    else if (isNumber)
        emit parameterModified(Z7DeviceParam(number, value, isUnsigned, true));
}
