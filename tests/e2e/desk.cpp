#include "tests/e2e/desk.h"

#include "tests/e2e/telegrams.h"
#include "tests/support/person.h"

#include <algorithm>

namespace {

constexpr int fixedSpeed = 23;

} // namespace

Desk::Desk(const QVector<z7sim::DriveConfig> &drivesThere, const TestBench::Options &options)
    : bench(options)
    , bus(bench.plugIn(port, drivesThere))
    , drives(drivesThere)
{
}

bool Desk::connectAll() const
{
    return std::all_of(drives.begin(), drives.end(), [this](const z7sim::DriveConfig &drive) {
        return journey.connectManually(port, drive.address, drive.password.value_or(drive.address));
    });
}

bool Desk::showTable(int address) const
{
    return journey.showPage(driveName(address), table) && Person::waitUntil([this, address] {
        return journey.row(fixedSpeed).deviceValue == QString::number(bus.memory(address, fixedSpeed));
    });
}

QStringList Desk::requests() const
{
    return Telegrams::requests(bus.log());
}

bool Desk::waitForRequest(const QString &request) const
{
    return Person::waitUntil([this, &request] { return requests().contains(request); });
}
