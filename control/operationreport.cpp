#include "control/operationreport.h"

#include "control/pendingoverview.h"
#include "control/services/services.h"
#include "model/parameterdefinitions.h"

namespace {

/// True for what the operation itself was about: a write also reads live values, as does a read of a page.
bool isAskedFor(const Z7ParamOutcome &param, DriveOperation operation, const Z7DeviceParamSet &asked)
{
    if (operation == DriveOperation::Read)
        return param.kind == Z7ParamOutcome::Read && asked.contains(param.number);
    return param.kind == Z7ParamOutcome::Write;
}

QVector<int> &listFor(OperationReport &report, Z7ParamOutcome::State state)
{
    switch (state) {
    case Z7ParamOutcome::Answered:
        return report.done;
    case Z7ParamOutcome::Refused:
        return report.refused;
    case Z7ParamOutcome::Uncertain:
        return report.uncertain;
    case Z7ParamOutcome::Unsent:
        break;
    }
    return report.unsent;
}

void compare(FileComparison &comparison, const Z7DeviceParam &wanted, const Z7DeviceParam *actual)
{
    if (!actual)
        ++comparison.unknown;
    else if (!actual->hasValue)
        ++comparison.unread;
    else if (actual->value == wanted.value)
        ++comparison.equal;
    else
        ++comparison.different;
}

} // namespace

OperationReport reportOf(
    DriveOperation operation, const Z7DeviceParamSet &asked, const Z7PassOutcome &outcome)
{
    OperationReport report;
    report.operation = operation;
    report.deviceId = outcome.deviceId;
    report.error = outcome.error;
    report.isComplete = outcome.isComplete;
    report.store = outcome.store;
    // What the log-on reads of a page's own numbers comes before, and the page's own reading counts.
    QMap<int, Z7ParamOutcome> params;
    for (const Z7ParamOutcome &param : outcome.params) {
        if (isAskedFor(param, operation, asked))
            params.insert(param.number, param);
    }
    for (const Z7ParamOutcome &param : qAsConst(params)) {
        listFor(report, param.state).append(param.number);
        if (param.conflict)
            report.conflicts.append(param.number);
    }
    return report;
}

OperationReport reportOfFile(const Z7Device &drive, const Z7DeviceParamSet &file)
{
    const Z7ParamDefinitions *definitions = Z7Services::instance()->definitions(drive.softwareVersion);
    OperationReport report;
    report.operation = DriveOperation::OpenFile;
    report.deviceId = drive.deviceId();
    report.error = TelegramError::None;
    report.isComplete = true;
    for (const Z7DeviceParam &param : file.params) {
        compare(report.file, param, drive.parameterSet.find(param.number));
        if (isOutOfLimits(*definitions, param))
            ++report.file.outOfLimits;
    }
    return report;
}
