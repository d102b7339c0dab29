#include "benchmarks/bars.h"
#include "benchmarks/benchmarkgroups.h"
#include "benchmarks/figures.h"
#include "pages/datawidget.h"
#include "pages/pagefactory.h"
#include "pages/programmeroutput.h"
#include "tests/support/firmwareuser.h"

#include <QPlainTextEdit>
#include <QProcess>

#include <cmath>
#include <ctime>
#include <memory>

namespace {

constexpr int twoMegabytes = 2 * 1024 * 1024;

/// The processor's time, which does not count what other programs hold up.
double processorMs()
{
    timespec now {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double msOfOneTurn()
{
    const double beginMs = processorMs();
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return processorMs() - beginMs;
}

/// A page, and a programmer in the working folder that prints the letter x.
class OutputPage
{
public:
    OutputPage()
        : m_page(createDataPage(PageNumber::FirmwareUpload))
        , m_user(m_page.get())
    {
        FirmwareUser::writeImageAndProgrammer();
        m_folder.write(QStringLiteral("Z7Programmer.exe"),
            "#!/bin/sh\nhead -c " + QByteArray::number(twoMegabytes) + " /dev/zero | tr '\\0' x\n");
        QFile::setPermissions(QStringLiteral("Z7Programmer.exe"), QFile::ReadOwner | QFile::ExeOwner);
        m_page->initPage();
        m_page->deviceUpdateFinished();
        m_page->resize(1100, 600);
        m_page->show();
        QCoreApplication::processEvents();
    }

    void startProgrammer()
    {
        m_user.choose(QStringLiteral("image.bin"));
        m_user.start(QMessageBox::Yes);
        m_page->AllDeviceCommunicationStopped();
        Z7Device drive;
        drive.bootloaderActive = true;
        m_page->DeviceUpdate(drive);
    }
    bool isReady() const { return m_user.isReady(); }
    int outputSize() const { return m_user.log().size(); }

private:
    const WorkingFolder m_folder;
    const std::unique_ptr<Z7DataWidget> m_page;
    const FirmwareUser m_user;
};

/// As a programmer's output comes, in reads of what a pipe holds.
void benchPipedOutput()
{
    OutputPage page;
    page.startProgrammer();
    Samples turns;
    while (!page.isReady())
        turns.add(msOfOneTurn());
    printFigure(
        QStringLiteral("2 MB of programmer output without a line feed, longest hold of the event loop"),
        page.outputSize() < twoMegabytes ? NAN : turns.quantile(1), Bars::outputHoldMs, QStringLiteral("ms"),
        QStringLiteral("processor time, %1 turns").arg(turns.count()));
}

void benchOneRead()
{
    QPlainTextEdit field;
    ProgrammerOutput output(&field);
    field.resize(1100, 600);
    field.show();
    QCoreApplication::processEvents();
    const double beginMs = processorMs();
    output.append(QString(twoMegabytes, QLatin1Char('x')));
    QCoreApplication::processEvents();
    printFigure(QStringLiteral("2 MB of programmer output in one read, to its redraw"),
        processorMs() - beginMs, Bars::outputHoldMs, QStringLiteral("ms"), QStringLiteral("processor time"));
}

} // namespace

void runOutputBenchmarks()
{
    benchPipedOutput();
    benchOneRead();
}
