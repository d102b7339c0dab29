#include "simulator/commands.h"

#include "simulator/text.h"

#include <algorithm>

namespace z7sim {

namespace {

using Arguments = QByteArrayList;

QByteArray ok(const QByteArray &text = {})
{
    return text.isEmpty() ? QByteArray("ok") : "ok " + text;
}

QByteArray failure(const QByteArray &text)
{
    return "error " + text;
}

QByteArray okOrError(const QByteArray &error)
{
    return error.isEmpty() ? ok() : failure(error);
}

QByteArray listing(const QByteArrayList &lines)
{
    QByteArrayList all = lines;
    all.prepend("ok " + QByteArray::number(lines.size()) + ":");
    all.append(".");
    return all.join('\n');
}

QByteArray noDrive(const QByteArray &name)
{
    return failure("no drive " + name);
}

/// The drive "3", or with "3#1" the second of those with address 3.
Bus::Station *stationOf(const CommandContext &context, const QByteArray &name)
{
    const QByteArrayList parts = name.split('#');
    return context.bus.find(parseNumber(parts.at(0)).value_or(0), parseNumber(parts.value(1)).value_or(0));
}

QByteArray number(const std::optional<int> &value)
{
    return value ? ok(QByteArray::number(*value)) : failure("nothing of this number");
}

QByteArray flag(bool value)
{
    return ok(value ? "1" : "0");
}

QByteArray drives(const CommandContext &context, const Arguments &)
{
    QByteArrayList lines;
    for (const Bus::Station &station : context.bus.stations()) {
        const Drive &drive = station.drive;
        lines.append(QByteArray::number(drive.address()) + " version=" + drive.version()
            + " password=" + QByteArray::number(static_cast<qint32>(drive.password())) + " access="
            + (drive.hasAccess() ? "1" : "0") + " bootloader=" + (drive.isInBootloader() ? "1" : "0"));
    }
    return listing(lines);
}

QByteArray addDrive(const CommandContext &context, const Arguments &arguments)
{
    DriveConfig config;
    const QByteArray error = parseDrive(arguments.at(0), config);
    return okOrError(error.isEmpty() ? context.bus.addDrive(config) : error);
}

QByteArray removeDrive(const CommandContext &context, const Arguments &arguments)
{
    const QByteArrayList parts = arguments.at(0).split('#');
    const bool removed =
        context.bus.remove(parseNumber(parts.at(0)).value_or(0), parseNumber(parts.value(1)).value_or(0));
    return removed ? ok() : noDrive(arguments.at(0));
}

QByteArray powerCycle(const CommandContext &context, const Arguments &arguments)
{
    Bus::Station *station = stationOf(context, arguments.at(0));
    if (!station)
        return noDrive(arguments.at(0));
    station->drive.powerCycle(context.now);
    return ok();
}

QByteArray getNumbered(Drive &drive, const QByteArray &what, int which, qint64 now)
{
    return number(what == "flash" ? drive.flash(which) : drive.memory(which, now));
}

QByteArray getProperty(Drive &drive, const QByteArray &what, qint64 now)
{
    if (what == "address")
        return number(drive.address());
    if (what == "password")
        return number(static_cast<qint32>(drive.password()));
    if (what == "version")
        return ok(drive.version());
    if (what == "access")
        return flag(drive.hasAccess());
    if (what == "bootloader")
        return flag(drive.isInBootloader());
    if (what == "status")
        return number(drive.statusBits(now));
    if (what == "inputs")
        return number(drive.surroundings().digitalInputs);
    if (what == "analog")
        return number(drive.surroundings().analogInput);
    return failure("nothing of this name: " + what);
}

bool isNumbered(const QByteArray &what)
{
    return what == "param" || what == "flash";
}

QByteArray get(const CommandContext &context, const Arguments &arguments)
{
    Bus::Station *station = stationOf(context, arguments.at(0));
    if (!station)
        return noDrive(arguments.at(0));
    if (!isNumbered(arguments.at(1)))
        return getProperty(station->drive, arguments.at(1), context.now);
    return getNumbered(
        station->drive, arguments.at(1), parseNumber(arguments.value(2)).value_or(-1), context.now);
}

QByteArray setNumbered(
    Drive &drive, const QByteArray &what, const QByteArray &numberText, const QByteArray &valueText)
{
    const std::optional<int> which = parseNumber(numberText);
    const std::optional<int> value = parseNumber(valueText);
    if (which && isLiveValue(*which) && valueText == "auto")
        return drive.surroundings().liveValues.remove(*which), ok();
    if (!which || !value)
        return failure("no number: " + numberText + " " + valueText);
    const bool known = what == "flash" ? drive.setFlash(*which, *value) : drive.setMemory(*which, *value);
    return known ? ok() : failure("nothing of this number");
}

QByteArray setProperty(Drive &drive, const QByteArray &what, const QByteArray &value)
{
    if (what != "password")
        return okOrError(setSurrounding(drive.surroundings(), what, value));
    const std::optional<int> password = parseNumber(value);
    if (!password)
        return failure("no number: " + value);
    drive.setPassword(static_cast<quint32>(*password));
    return ok();
}

QByteArray set(const CommandContext &context, const Arguments &arguments)
{
    Bus::Station *station = stationOf(context, arguments.at(0));
    if (!station)
        return noDrive(arguments.at(0));
    const QByteArray what = arguments.at(1);
    return isNumbered(what) ? setNumbered(station->drive, what, arguments.at(2), arguments.value(3))
                            : setProperty(station->drive, what, arguments.at(2));
}

QByteArray inputs(const CommandContext &context, const Arguments &arguments)
{
    return set(context, {arguments.at(0), "inputs", arguments.at(1)});
}

QByteArray changeLock(const CommandContext &context, const Arguments &arguments, bool locked)
{
    Bus::Station *station = stationOf(context, arguments.at(0));
    const std::optional<int> which = parseNumber(arguments.at(1));
    if (!station || !which)
        return noDrive(arguments.join(' '));
    QSet<int> &all = station->drive.surroundings().lockedParameters;
    all.remove(*which);
    if (locked)
        all.insert(*which);
    return ok();
}

QByteArray lock(const CommandContext &context, const Arguments &arguments)
{
    return changeLock(context, arguments, true);
}

QByteArray unlock(const CommandContext &context, const Arguments &arguments)
{
    return changeLock(context, arguments, false);
}

FaultList *faultsOf(const CommandContext &context, const QByteArray &target)
{
    if (target == "*")
        return &context.bus.faults;
    Bus::Station *station = stationOf(context, target);
    return station ? &station->faults : nullptr;
}

QByteArray addFault(const CommandContext &context, const Arguments &arguments)
{
    FaultList *list = faultsOf(context, arguments.at(0));
    if (!list)
        return noDrive(arguments.at(0));
    Fault fault;
    const QByteArray error = parseFault(QByteArrayList(arguments.mid(1)).join(' '), fault);
    if (error.isEmpty())
        list->add(fault, context.now);
    return okOrError(error);
}

void describe(const QByteArray &target, const FaultList &list, QByteArrayList &lines)
{
    for (const Fault &fault : list.all())
        lines.append(target + " " + fault.text + " remaining=" + QByteArray::number(fault.remaining));
}

QByteArray listFaults(const CommandContext &context, const Arguments &)
{
    QByteArrayList lines;
    describe("*", context.bus.faults, lines);
    for (const Bus::Station &station : context.bus.stations())
        describe(QByteArray::number(station.drive.address()), station.faults, lines);
    return listing(lines);
}

QByteArray clearFaults(const CommandContext &context, const Arguments &arguments)
{
    if (arguments.isEmpty())
        return context.bus.clearFaults(), ok();
    FaultList *list = faultsOf(context, arguments.at(0));
    if (!list)
        return noDrive(arguments.at(0));
    list->clear();
    return ok();
}

QByteArray logLine(const WireEntry &entry)
{
    static const char directions[] = {'>', '<', '?'};
    return QByteArray::number(entry.us) + " " + directions[entry.direction] + " "
        + QByteArray::number(entry.address) + " " + entry.bytes.toHex(' ');
}

QByteArray showLog(const CommandContext &context, const Arguments &arguments)
{
    QByteArrayList lines;
    const QVector<WireEntry> entries = context.bus.log.entries();
    const int count = parseNumber(arguments.value(0)).value_or(entries.size());
    for (const WireEntry &entry : entries.mid(std::max(0, entries.size() - count)))
        lines.append(logLine(entry));
    return listing(lines);
}

QByteArray clearLog(const CommandContext &context, const Arguments &)
{
    context.bus.log.clear();
    return ok();
}

QByteArray pull(const CommandContext &context, const Arguments &)
{
    context.port.close();
    return ok();
}

QByteArray plug(const CommandContext &context, const Arguments &)
{
    const QString error = context.port.open();
    return error.isEmpty() ? ok("port " + context.port.path().toLocal8Bit()) : failure(error.toLocal8Bit());
}

QByteArray showPort(const CommandContext &context, const Arguments &)
{
    return context.port.isOpen() ? ok("port " + context.port.path().toLocal8Bit()) : failure("pulled");
}

QByteArray pace(const CommandContext &context, const Arguments &arguments)
{
    context.bus.timing.paced = arguments.at(0) != "off";
    return ok();
}

QByteArray turnaround(const CommandContext &context, const Arguments &arguments)
{
    const std::optional<int> us = parseNumber(arguments.at(0));
    if (!us || *us < 0)
        return failure("no time: " + arguments.at(0));
    context.bus.timing.turnaroundUs = *us;
    return ok();
}

QByteArray quit(const CommandContext &, const Arguments &)
{
    return failure("only the program z7sim quits");
}

QByteArray help(const CommandContext &context, const Arguments &arguments);

struct CommandRow
{
    const char *name;
    int leastArguments;
    QByteArray (*run)(const CommandContext &, const Arguments &);
    const char *usage;
};

const CommandRow commandRows[] = {
    {"help", 0, help, "help"},
    {"drives", 0, drives, "drives"},
    {"add-drive", 1, addDrive, "add-drive ADDRESS[,password=N,version=V123,param.N=VALUE,inputs=N,...]"},
    {"remove", 1, removeDrive, "remove ADDRESS[#INDEX]"},
    {"power-cycle", 1, powerCycle, "power-cycle ADDRESS"},
    {"get", 2, get,
        "get ADDRESS param N | flash N | address | password | version | access | bootloader | status | "
        "inputs | analog"},
    {"set", 3, set,
        "set ADDRESS param N VALUE | flash N VALUE | password N | inputs N | outputs N | status N | analog N "
        "| setpoint N | flash-broken 0|1"},
    {"inputs", 2, inputs, "inputs ADDRESS N"},
    {"lock", 2, lock, "lock ADDRESS N"},
    {"unlock", 2, unlock, "unlock ADDRESS N"},
    {"fault", 2, addFault,
        "fault ADDRESS|* KIND [count=N] [skip=N] [command=N] [param=N] [checksum=right|keep] [effect=none] "
        "[...]"},
    {"faults", 0, listFaults, "faults"},
    {"clear-faults", 0, clearFaults, "clear-faults [ADDRESS|*]"},
    {"log", 0, showLog, "log [NEWEST]"},
    {"clear-log", 0, clearLog, "clear-log"},
    {"pull", 0, pull, "pull"},
    {"plug", 0, plug, "plug"},
    {"port", 0, showPort, "port"},
    {"pace", 1, pace, "pace on|off"},
    {"turnaround", 1, turnaround, "turnaround MICROSECONDS"},
    {"quit", 0, quit, "quit"},
};

QByteArray help(const CommandContext &, const Arguments &)
{
    QByteArrayList lines;
    for (const CommandRow &row : commandRows)
        lines.append(row.usage);
    for (const FaultKind &kind : faultKinds())
        lines.append(QByteArray("  ") + kind.name + " " + kind.arguments + ": " + kind.help);
    return listing(lines);
}

} // namespace

QByteArray runCommand(const CommandContext &context, const QByteArray &line)
{
    Arguments arguments = line.simplified().split(' ');
    const QByteArray name = arguments.takeFirst();
    for (const CommandRow &row : commandRows) {
        if (name != row.name)
            continue;
        return arguments.size() < row.leastArguments ? failure(QByteArray("usage: ") + row.usage)
                                                     : row.run(context, arguments);
    }
    return failure("no command: " + name);
}

} // namespace z7sim
