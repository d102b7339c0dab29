// holdport PORT | holdport --file FILE
//
// Opens a serial port as any program does that uses Qt, or a file without any lock, says so and keeps it open
// until its input ends.

#include <QFile>
#include <QSerialPort>

#include <cstdio>

namespace {

/// Says that it is open, and returns when nothing more is to be read.
int keepOpen()
{
    puts("open");
    fflush(stdout);
    while (getchar() != EOF) { }
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    const QString name = QString::fromLocal8Bit(argv[argc - 1]);
    if (argc == 3) {
        QFile file(name);
        return file.open(QIODevice::ReadWrite | QIODevice::Unbuffered) ? keepOpen() : 1;
    }
    QSerialPort port(name);
    return port.open(QIODevice::ReadWrite) ? keepOpen() : 1;
}
