// z7soak SOCKET [--minutes N] [--pace N] [--seed N]
//
// Works with the drives of a running z7sim, whose control socket is SOCKET, for so many minutes, while the
// bus is disturbed. To be started like the program: in its working folder, with the serial port in its list.
// Exits with 0 if nothing was lost, nothing grew and nothing came up that nobody caused.

#include "tests/soak/soak.h"

#include <QApplication>
#include <QCommandLineParser>

#include <cstdio>

namespace {

int refuse(const char *reason)
{
    std::fprintf(stderr, "z7soak: %s\n", reason);
    return EXIT_FAILURE;
}

void describe(QCommandLineParser &parser)
{
    const Soak::Plan plan;
    parser.addPositionalArgument(
        QStringLiteral("socket"), QStringLiteral("Control socket of the simulator."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("minutes"), QStringLiteral("How long."), QStringLiteral("minutes"),
            QString::number(plan.minutes)},
        {QStringLiteral("pace"), QStringLiteral("How many times as fast as a person."),
            QStringLiteral("times"), QString::number(plan.pace)},
        {QStringLiteral("seed"), QStringLiteral("Of what is chosen at random."), QStringLiteral("number"),
            QString::number(plan.seed)},
    });
}

Soak::Plan planOf(const QCommandLineParser &parser)
{
    Soak::Plan plan;
    plan.minutes = parser.value(QStringLiteral("minutes")).toDouble();
    plan.pace = std::max(1, parser.value(QStringLiteral("pace")).toInt());
    plan.seed = parser.value(QStringLiteral("seed")).toUInt();
    return plan;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QCommandLineParser parser;
    describe(parser);
    parser.process(application);
    const Soak::Plan plan = planOf(parser);
    if (parser.positionalArguments().size() != 1 || plan.minutes <= 0)
        parser.showHelp(EXIT_FAILURE);
    SimulatorLine simulator;
    if (!simulator.open(parser.positionalArguments().first()))
        return refuse("no simulator at the socket");
    return Soak(simulator, plan).run() ? EXIT_SUCCESS : EXIT_FAILURE;
}
