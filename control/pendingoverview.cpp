#include "control/pendingoverview.h"

#include "control/services/services.h"
#include "model/parameterconflicts.h"
#include "model/parameterdefinitions.h"

namespace {

const Z7ParamDefinitions &definitionsOf(const Z7Device &drive)
{
    return *Z7Services::instance()->definitions(drive.softwareVersion);
}

/// What the version's definitions say of a change.
PendingChange definedChange(const Z7ParamDefinitions &definitions, const Z7DeviceParam &change)
{
    const Z7ParamDefinition &definition = definitions.row(change.number);
    PendingChange row;
    row.number = change.number;
    row.name = definition.name;
    row.unit = definition.unit;
    row.wanted = change.value;
    row.hasLimits = definitions.contains(change.number);
    row.minimum = definition.minimum;
    row.maximum = definition.maximum;
    row.isOutOfLimits = isOutOfLimits(definitions, change);
    return row;
}

} // namespace

bool operator==(const PendingOverview &a, const PendingOverview &b)
{
    return a.total == b.total && a.onShownPage == b.onShownPage && a.outOfLimits == b.outOfLimits;
}

bool isOutOfLimits(const Z7ParamDefinitions &definitions, const Z7DeviceParam &change)
{
    const auto finding = definitionFinding(definitions, change);
    return finding && finding->kind == WriteFinding::Kind::OutOfLimits;
}

PendingOverview pendingOverview(
    const Z7Device &drive, const Z7DeviceParamSet &changes, const std::function<bool(int number)> &isShown)
{
    const Z7ParamDefinitions &definitions = definitionsOf(drive);
    PendingOverview overview;
    for (const Z7DeviceParam &change : changes.params) {
        ++overview.total;
        overview.onShownPage += isShown(change.number);
        overview.outOfLimits += isOutOfLimits(definitions, change);
    }
    return overview;
}

QVector<PendingChange> pendingChanges(
    const Z7Device &drive, const Z7DeviceParamSet &changes, const std::function<int(int number)> &pageOf)
{
    const Z7ParamDefinitions &definitions = definitionsOf(drive);
    QVector<PendingChange> rows;
    rows.reserve(changes.params.size());
    for (const Z7DeviceParam &change : changes.params) {
        PendingChange row = definedChange(definitions, change);
        const Z7DeviceParam *actual = drive.parameterSet.find(change.number);
        row.hasActual = actual && actual->hasValue;
        row.actual = row.hasActual ? actual->value : 0;
        row.page = pageOf(change.number);
        rows.append(row);
    }
    return rows;
}
