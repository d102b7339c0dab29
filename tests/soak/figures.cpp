#include "tests/soak/figures.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <malloc.h>
#include <unistd.h>

namespace {

double entriesOf(const char *folder)
{
    return QDir(QLatin1String(folder))
        .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
        .size();
}

double residentPages()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    return statm.open(QIODevice::ReadOnly) ? statm.readAll().split(' ').value(1).toDouble() : 0;
}

double median(QVector<double> figures)
{
    const auto middle = figures.begin() + figures.size() / 2;
    std::nth_element(figures.begin(), middle, figures.end());
    return *middle;
}

} // namespace

ProcessFigures ProcessFigures::now()
{
    const auto heap = mallinfo2();
    ProcessFigures figures;
    figures.heapKb = double(heap.uordblks + heap.hblkhd) / 1024;
    figures.residentKb = residentPages() * double(sysconf(_SC_PAGESIZE)) / 1024;
    figures.threads = entriesOf("/proc/self/task");
    figures.descriptors = entriesOf("/proc/self/fd");
    return figures;
}

ProcessFigures ProcessFigures::lesser(const ProcessFigures &other) const
{
    return {std::min(heapKb, other.heapKb), std::min(residentKb, other.residentKb),
        std::min(threads, other.threads), std::min(descriptors, other.descriptors)};
}

double growth(const QVector<double> &figures)
{
    const int third = figures.size() / 3;
    return third ? median(figures.mid(figures.size() - third)) - median(figures.mid(0, third)) : 0;
}
