#include "benchmarks/bars.h"
#include "benchmarks/benchmarkgroups.h"
#include "benchmarks/figures.h"
#include "benchmarks/plainwidgets.h"
#include "benchmarks/workbench.h"
#include "control/services/language.h"
#include "pages/pagefactory.h"

#include <QPixmapCache>

#include <map>

namespace {

constexpr int rounds = 20;
constexpr int firstRounds = 5;

constexpr auto unit = "× plain widget";

/// A page, its plain twin and what their showings took.
struct MeasuredPage
{
    QWidget *page;
    QWidget *twin;
    Comparison showings;
};

/// All pages that can be clicked, each shown once.
class MeasuredPages
{
public:
    MeasuredPages();
    /// Shows a page and its twin, and adds the times to those of the page.
    void show(int number);
    void print() const;

private:
    Workbench m_bench {1};
    PlainPages m_plain;
    std::map<int, MeasuredPage> m_pages;
};

MeasuredPages::MeasuredPages()
{
    m_bench.deliver(m_bench.nextRecord());
    for (int number = PageNumber::Network; number < PageNumber::RemoteControl; ++number) {
        m_bench.showPage(number);
        m_pages[number] = {m_bench.page(), m_plain.addTwin(*m_bench.page()), {}};
    }
}

void MeasuredPages::show(int number)
{
    MeasuredPage &measured = m_pages.at(number);
    const double floorMs = m_plain.showMs(measured.twin);
    measured.showings.add(Redraw({measured.page}).ms([this, number] { m_bench.showPage(number); }), floorMs);
}

double barOf(int number)
{
    return number == PageNumber::ParameterTable ? Bars::tableShowing : Bars::pageShowing;
}

void MeasuredPages::print() const
{
    for (const auto &[number, measured] : m_pages)
        printFigure(QStringLiteral("showing %1").arg(pageTitle(number)), measured.showings.ratios().median(),
            barOf(number), unit, measured.showings.remark());
}

/// From the click to the painted page, coming from the fullest page, the parameter table, or going there.
void benchShowings()
{
    MeasuredPages pages;
    pages.show(PageNumber::ParameterTable);
    for (int i = 0; i < rounds; ++i) {
        for (int number = PageNumber::Network; number < PageNumber::RemoteControl; ++number) {
            if (number == PageNumber::ParameterTable)
                continue;
            pages.show(number);
            pages.show(PageNumber::ParameterTable);
        }
    }
    pages.print();
}

/// The first showing of each page, which makes what later ones find made.
void addFirstShowings(Comparison &sums)
{
    QPixmapCache::clear();
    Workbench bench(1);
    PlainPages plain;
    bench.deliver(bench.nextRecord());
    double ownMs = 0;
    double floorMs = 0;
    for (int number = PageNumber::Network; number < PageNumber::RemoteControl; ++number) {
        ownMs += Redraw({}).ms([&] { bench.showPage(number); });
        floorMs += plain.showMs(plain.addTwin(*bench.page()));
    }
    sums.add(ownMs, floorMs);
}

void benchFirstShowings()
{
    Comparison sums;
    for (int i = 0; i < firstRounds; ++i)
        addFirstShowings(sums);
    printFigure(QStringLiteral("first showings of all pages, together"), sums.ratios().median(),
        Bars::firstShowings, unit, sums.remark());
}

} // namespace

void runPageBenchmarks()
{
    benchFirstShowings();
    benchShowings();
}
