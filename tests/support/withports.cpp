// z7withports NAME=TERMINAL[,VENDOR]... -- PROGRAM [ARGUMENT...]
//
// Runs a program whose serial ports are these and no others: each behind a USB adapter of the vendor
// (decimal, 1027 if none is given) and leading to the pseudo terminal. TERMINAL may be a symbolic link that
// comes and goes: without it the port is listed but does not open. Exits as the program does, and passes a
// request to terminate on to it.

#include "tests/support/listedports.h"

#include <QByteArray>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <sys/wait.h>
#include <unistd.h>

namespace {

pid_t program = 0;

bool plug(ListedPorts &ports, const QString &description)
{
    const QString name = description.section(QLatin1Char('='), 0, 0);
    const QString target = description.section(QLatin1Char('='), 1);
    const QString vendor = target.section(QLatin1Char(','), 1);
    ListedPorts::UsbAdapter adapter = ListedPorts::ftdiAdapter();
    bool valid = !name.isEmpty() && !target.isEmpty();
    if (valid && !vendor.isEmpty()) {
        adapter = ListedPorts::otherAdapter();
        adapter.vendorId = vendor.toUShort(&valid);
    }
    if (valid)
        ports.plugUsb(name, target.section(QLatin1Char(','), 0, 0), adapter);
    return valid;
}

[[noreturn]] void become(char **command)
{
    qputenv("LD_PRELOAD", QByteArray(Z7_PRELOAD));
    execvp(command[0], command);
    perror(command[0]);
    _exit(127);
}

void passOn(int signal)
{
    kill(program, signal);
}

int exitCodeOf(pid_t child)
{
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) { }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace

int main(int argc, char *argv[])
{
    ListedPorts ports;
    int next = 1;
    while (next < argc && qstrcmp(argv[next], "--") != 0) {
        if (!plug(ports, QString::fromLocal8Bit(argv[next++]))) {
            fprintf(stderr, "not a port: %s\n", argv[next - 1]);
            return 2;
        }
    }
    if (next + 1 >= argc) {
        fprintf(stderr, "usage: z7withports NAME=TERMINAL[,VENDOR]... -- PROGRAM [ARGUMENT...]\n");
        return 2;
    }

    program = fork();
    if (program == 0)
        become(argv + next + 1);
    std::signal(SIGTERM, passOn);
    std::signal(SIGINT, passOn);
    return exitCodeOf(program);
}
