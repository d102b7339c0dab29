#include "simulator/configuration.h"
#include "simulator/controlloop.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

namespace {

int refuse(const QByteArray &reason)
{
    std::fprintf(stderr, "z7sim: %s\n", reason.constData());
    return EXIT_FAILURE;
}

void describe(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Z7 drives on one bus behind a pseudo terminal. Takes commands on standard input; try \"help\"."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("config"), QStringLiteral("Configuration file (JSON)."), QStringLiteral("file")},
        {QStringLiteral("definitions"), QStringLiteral("Folder of the definition files."),
            QStringLiteral("folder")},
        {QStringLiteral("drive"),
            QStringLiteral("A drive: 3,password=4711,version=V123,inputs=0x03,param.0x0B=500."),
            QStringLiteral("drive")},
        {QStringLiteral("link"), QStringLiteral("Symbolic link to the port."), QStringLiteral("path")},
        {QStringLiteral("control"), QStringLiteral("Unix socket that takes commands."),
            QStringLiteral("path")},
        {QStringLiteral("command"), QStringLiteral("Command to carry out after the start."),
            QStringLiteral("line")},
        {QStringLiteral("turnaround-us"), QStringLiteral("Answering time of the drives in microseconds."),
            QStringLiteral("time")},
        {QStringLiteral("unpaced"), QStringLiteral("Answer at once, without the time on the wire.")},
    });
}

QByteArray readCommandLine(const QCommandLineParser &parser, z7sim::Configuration &configuration)
{
    z7sim::BusConfig &bus = configuration.bus;
    const auto take = [&parser](const char *option, QString &field) {
        if (parser.isSet(QLatin1String(option)))
            field = parser.value(QLatin1String(option));
    };
    take("definitions", bus.definitionFolder);
    take("link", bus.link);
    take("control", configuration.controlPath);
    if (parser.isSet(QStringLiteral("turnaround-us")))
        bus.turnaroundUs = parser.value(QStringLiteral("turnaround-us")).toLongLong();
    if (parser.isSet(QStringLiteral("unpaced")))
        bus.paced = false;
    for (const QString &line : parser.values(QStringLiteral("command")))
        configuration.commands.append(line.toLocal8Bit());
    for (const QString &text : parser.values(QStringLiteral("drive"))) {
        z7sim::DriveConfig drive;
        const QByteArray error = z7sim::parseDrive(text.toLocal8Bit(), drive);
        if (!error.isEmpty())
            return error;
        bus.drives.append(drive);
    }
    return {};
}

QByteArray configure(const QCommandLineParser &parser, z7sim::Configuration &configuration)
{
    const QString file = parser.value(QStringLiteral("config"));
    const QByteArray error = file.isEmpty() ? QByteArray() : z7sim::readConfiguration(file, configuration);
    return error.isEmpty() ? readCommandLine(parser, configuration) : error;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    describe(parser);
    parser.process(application);

    z7sim::Configuration configuration;
    const QByteArray error = configure(parser, configuration);
    if (!error.isEmpty())
        return refuse(error);

    z7sim::SimulatedBus bus(configuration.bus);
    z7sim::ControlLoop loop(bus);
    if (!configuration.controlPath.isEmpty() && !loop.listen(configuration.controlPath))
        return refuse("no control socket at " + configuration.controlPath.toLocal8Bit());
    if (!bus.start())
        return refuse(bus.errorText().toLocal8Bit());
    std::printf("port %s\n", qPrintable(bus.portPath()));
    std::fflush(stdout);
    for (const QByteArray &command : configuration.commands) {
        const QByteArray answer = bus.command(command);
        if (answer.startsWith("error"))
            return refuse(command + ": " + answer);
    }
    loop.run();
    return EXIT_SUCCESS;
}
