#include "benchmarks/bars.h"
#include "benchmarks/benchmarkgroups.h"
#include "benchmarks/figures.h"
#include "pages/pagefactory.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>

#include <cmath>

namespace {

constexpr int processes = 3;
constexpr int batches = 7;
constexpr int timeoutMs = 60000;

constexpr auto unit = "× the program before";

/// A running z7steps.
class Steps
{
public:
    Steps(const QString &program, const QStringList &arguments);
    ~Steps();
    /// The median time of a step in ms, over one batch; NaN if the program does not answer.
    double batchMs();

private:
    QProcess m_process;
};

Steps::Steps(const QString &program, const QStringList &arguments)
{
    m_process.start(program, arguments);
}

Steps::~Steps()
{
    m_process.closeWriteChannel();
    m_process.waitForFinished();
}

double Steps::batchMs()
{
    m_process.write("\n");
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(timeoutMs))
            return NAN;
    }
    bool isNumber = false;
    const double ms = m_process.readLine().trimmed().toDouble(&isNumber);
    return isNumber ? ms : NAN;
}

QString todaysProgram()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/z7steps");
}

/// The z7steps of the program before; scripts/bench builds it and tells where it is.
QString programBefore()
{
    return qEnvironmentVariable("Z7_BENCH_BASELINE");
}

/// New processes now and then, since each lies differently in memory.
Comparison comparePrograms(const QStringList &arguments)
{
    Comparison comparison;
    for (int process = 0; process < processes; ++process) {
        Steps before(programBefore(), arguments);
        Steps today(todaysProgram(), arguments);
        for (int batch = 0; batch < batches; ++batch) {
            const double beforeMs = before.batchMs();
            comparison.add(today.batchMs(), beforeMs);
        }
    }
    return comparison;
}

void benchPaired(const QString &what, const QString &step, int page, double bar)
{
    if (!QFileInfo(programBefore()).isExecutable()) {
        printUnmeasured(what, bar, unit, QStringLiteral("the program before is not there"));
        return;
    }
    const Comparison comparison = comparePrograms({step, QString::number(page)});
    printFigure(what, comparison.ratios().median(), bar, unit, comparison.remark());
}

} // namespace

void runPairedBenchmarks()
{
    benchPaired(QStringLiteral("keystroke, Positionierung, 32 drives"), QStringLiteral("keystroke"),
        PageNumber::Positioning, Bars::pairedKeystroke);
    benchPaired(QStringLiteral("keystroke, Parametertabelle, 32 drives"), QStringLiteral("keystroke"),
        PageNumber::ParameterTable, Bars::pairedKeystroke);
    benchPaired(QStringLiteral("record, Parametertabelle, 32 drives"), QStringLiteral("record"),
        PageNumber::ParameterTable, Bars::pairedRecord);
}
