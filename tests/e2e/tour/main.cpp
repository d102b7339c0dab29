// z7tour FOLDER SOCKET
//
// Leads through the program on the drives of a running z7sim, whose control socket is SOCKET, and leaves a
// numbered picture of each step and a transcript, tour.md, in FOLDER. To be started like the program: in its
// working folder, with the serial port in its list. Exits with 0 if every step succeeded.

#include "tests/e2e/tour/tour.h"

#include <QApplication>

#include <cstdio>

namespace {

int refuse(const char *reason)
{
    std::fprintf(stderr, "z7tour: %s\n", reason);
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    if (argc != 3)
        return refuse("usage: z7tour FOLDER SOCKET");
    Transcript transcript(QString::fromLocal8Bit(argv[1]));
    if (!transcript.isOpen())
        return refuse("cannot write into the folder");
    SimulatorLine simulator;
    if (!simulator.open(QString::fromLocal8Bit(argv[2])))
        return refuse("no simulator at the socket");
    return Tour(simulator, transcript).run() ? EXIT_SUCCESS : refuse("a step did not succeed");
}
