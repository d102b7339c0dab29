#include "tests/soak/soak.h"

#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <QEventLoop>
#include <QLineEdit>

#include <algorithm>
#include <cstdio>
#include <limits>

namespace {

const QString network = QStringLiteral("Z7-Netzwerk");
const QString conflictQuestion = QStringLiteral("Die Parameterwerte enthalten einen Konflikt");

constexpr int minuteMs = 60000;
constexpr int pagePeriodMs = 5000;
constexpr int editPeriodMs = 1000;
constexpr int faultPeriodMs = 10000;
constexpr int faultMs = 4000; ///< after which one that lasts is ended
/// The full minute is for the figures, away from faults and writes.
constexpr int writeDelayMs = -minuteMs / 2;
constexpr int faultDelayMs = -faultPeriodMs / 2;

constexpr int pauseBetweenKeysMs = 5;
/// So many changes the person keeps of a drive, about, so that they are no growth of the process.
constexpr int pendingOfDrive = 6;

constexpr int figuresForMs = 1000;
constexpr int figuresEveryMs = 20;
/// In which every page and drive has been shown, and every fault has been once.
constexpr int warmUpMinutes = 5;
constexpr int leastJudged = 9;
/// Pictures that the toolkit keeps for a while, and what the allocator holds back, move a single figure by
/// about this much; over an hour it is some 50 bytes a record.
constexpr double heapToleranceKb = 256;

constexpr int mostPictures = 5;

void say(const QString &text)
{
    std::printf("%s\n", qPrintable(text));
    std::fflush(stdout);
}

QString counts(const QMap<QByteArray, int> &map)
{
    QStringList texts;
    for (auto entry = map.begin(); entry != map.end(); ++entry)
        texts.append(QStringLiteral("%1 %2").arg(QString::fromLatin1(entry.key())).arg(entry.value()));
    return texts.join(QStringLiteral(", "));
}

} // namespace

Soak::Soak(SimulatorLine &line, const Plan &plan)
    : m_plan(plan)
    , m_line(line)
    , m_random(plan.seed)
    , m_disturber(m_line, m_random)
    , m_drives(drivesOn(m_line))
    , m_pending(int(plan.minutes * minuteMs / editPeriodMs * plan.pace) + 1)
{
    m_figures.reserve(int(plan.minutes * plan.pace) + 1);
    m_witness.watchProgress(m_journey.window().findChild<QWidget *>(QStringLiteral("PgBarComm")));
}

Soak::~Soak() = default;

bool Soak::run()
{
    const MessageBoxAnswerer person([this](QMessageBox *box) { answer(box); });
    m_witness.setDoing(QStringLiteral("the drives were being connected"));
    if (connectDrives(m_journey, m_drives)) {
        live();
        m_disturber.end();
        lookAtEveryDrive();
        writeEverything();
        checkMemory();
    } else {
        find(QStringLiteral("not every drive could be connected"));
    }
    m_witness.lookForWindows();
    report();
    m_journey.closeWindow();
    return m_findings == 0;
}

// --- the rhythm
// ------------------------------------------------------------------------------------------------

void Soak::live()
{
    say(QStringLiteral("%1 drives are connected").arg(m_drives.size()));
    m_clock.start();
    changePage();
    addDuty(pagePeriodMs, 0, [this] { changePage(); });
    addDuty(editPeriodMs, 0, [this] { type(); });
    addDuty(faultPeriodMs, faultDelayMs, [this] { disturb(); });
    addDuty(faultPeriodMs, faultDelayMs + faultMs, [this] { m_disturber.end(); });
    addDuty(minuteMs, writeDelayMs, [this] { write(); });
    addDuty(minuteMs, 0, [this] { note(); });
    const qint64 endMs = qint64(m_plan.minutes * minuteMs);
    while (duty().nextMs <= endMs) {
        Duty &next = duty();
        letRun(next.nextMs - m_clock.elapsed());
        next.act();
        m_witness.lookForWindows();
        next.nextMs += next.periodMs; // what has become late is made up for
    }
}

/// The one whose time comes next.
Soak::Duty &Soak::duty()
{
    return *std::min_element(
        m_duties.begin(), m_duties.end(), [](const Duty &a, const Duty &b) { return a.nextMs < b.nextMs; });
}

/// The first time is one period and the delay from now on.
void Soak::addDuty(int periodMs, int delayMs, const std::function<void()> &act)
{
    m_duties.append({periodMs / m_plan.pace, (periodMs + delayMs) / m_plan.pace, act});
}

void Soak::letRun(qint64 ms)
{
    if (ms <= 0)
        return;
    m_witness.setDoing(QStringLiteral("the person was at rest"));
    QEventLoop loop;
    QTimer timer;
    QObject::connect(&timer, SIGNAL(timeout()), &loop, SLOT(quit()));
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(int(ms));
    loop.exec();
}

// --- pages
// -----------------------------------------------------------------------------------------------------

void Soak::changePage()
{
    const SoakDrive &drive = nextDrive();
    if (const PageItem *page = nextPage())
        show(drive, *page);
    else
        showNetwork();
}

/// Each drive once, then each once more: another one at every page.
const SoakDrive &Soak::nextDrive()
{
    return m_drives.at(m_driveTurn++ % m_drives.size());
}

/// Each page once in an order of chance, the network among them as null, then all of them in another order.
/// The table comes more often: it has most of the fields, and reads everything.
const PageItem *Soak::nextPage()
{
    if (m_pagesAhead.isEmpty()) {
        m_pagesAhead = {nullptr, &tablePage(), &tablePage()};
        for (const PageItem &page : pageItems())
            m_pagesAhead.append(&page);
        std::shuffle(m_pagesAhead.begin(), m_pagesAhead.end(), m_random);
    }
    return m_pagesAhead.takeLast();
}

void Soak::show(const SoakDrive &drive, const PageItem &page)
{
    m_witness.setDoing(QStringLiteral("%1 %2 was being shown").arg(drive.name, page.title));
    ++m_pageChanges;
    m_shownDrive = &drive;
    m_shownPage = &page;
    if (!m_journey.showPage(drive.name, page.title))
        find(QStringLiteral("%1 %2: no click on it is heard").arg(drive.name, page.title));
    checkFields(drive, page);
}

void Soak::showNetwork()
{
    m_witness.setDoing(QStringLiteral("the network was being shown"));
    ++m_pageChanges;
    m_shownDrive = nullptr;
    m_shownPage = nullptr;
    if (!m_journey.showPage(network))
        find(QStringLiteral("the network: no click on it is heard"));
}

// --- typing
// ----------------------------------------------------------------------------------------------------

/// Where a page has nothing to type, the edits wait for the next one.
void Soak::type()
{
    ++m_editsDue;
    while (m_editsDue > 0 && !fieldsOfShownPage().isEmpty()) {
        --m_editsDue;
        editOnce();
    }
}

QVector<PageField> Soak::fieldsOfShownPage() const
{
    QVector<PageField> fields;
    if (!m_shownDrive)
        return fields;
    if (m_shownPage->isTable) {
        for (const int number : m_shownDrive->definitions.keys())
            fields.append({number, QString()});
    } else {
        fields = m_shownPage->fields;
    }
    const auto isFixed = [this](const PageField &field) { return !m_shownDrive->isWritable(field.number); };
    fields.erase(std::remove_if(fields.begin(), fields.end(), isFixed), fields.end());
    return fields;
}

/// Now and then a change is withdrawn, and the more often, the more of them there are.
void Soak::editOnce()
{
    const QVector<PageField> fields = fieldsOfShownPage();
    QVector<PageField> changed;
    for (const PageField &field : fields) {
        if (!m_pending.text(m_shownDrive->address, field.number).isEmpty())
            changed.append(field);
    }
    const bool isFull = m_pending.count(m_shownDrive->address) >= pendingOfDrive;
    if (!changed.isEmpty() && m_random.bounded(100) < (isFull ? 80 : 15)) {
        edit(pick(changed), QString());
    } else {
        const PageField field = pick(fields);
        edit(field, QString::number(valueFor(field.number)));
    }
}

PageField Soak::pick(const QVector<PageField> &fields)
{
    return fields.at(m_random.bounded(fields.size()));
}

int Soak::valueFor(int number)
{
    const z7sim::Definition definition = m_shownDrive->definitions.value(number);
    return m_random.bounded(definition.minimum, definition.maximum + 1);
}

void Soak::edit(const PageField &field, const QString &text)
{
    m_witness.setDoing(QStringLiteral("parameter %1 was being typed").arg(field.number));
    ++m_edits;
    bool typed = false;
    if (m_shownPage->isTable) {
        typed = m_journey.typeValue(field.number, text, pauseBetweenKeysMs);
    } else {
        auto *edit =
            qobject_cast<QLineEdit *>(Person::seen(m_journey.window(), field.name.toLatin1().constData()));
        typed = Person::type(edit, text, pauseBetweenKeysMs);
    }
    if (!typed)
        find(QStringLiteral("%1 %2: parameter %3 does not take \"%4\"")
                 .arg(m_shownDrive->name, m_shownPage->title)
                 .arg(field.number)
                 .arg(text));
    else if (text.isEmpty())
        m_pending.empty(m_shownDrive->address, field.number);
    else
        m_pending.type(m_shownDrive->address, field.number, text.toInt());
    m_emptied += text.isEmpty();
}

// --- writing
// ---------------------------------------------------------------------------------------------------

void Soak::write()
{
    static const char *const buttons[] = {
        "BtnUpload", "BtnDownload", "BtnUpload", "BtnStore", "BtnUpload", "BtnWriteAndStore", "BtnUpload"};
    constexpr int count = sizeof buttons / sizeof buttons[0];
    int turn = 0;
    for (const int presses : m_presses)
        turn += presses;
    if (!m_shownDrive)
        show(nextDrive(), tablePage());
    press(buttons[turn % count]);
}

bool Soak::press(const char *button)
{
    m_witness.setDoing(QStringLiteral("%1 was being pressed").arg(QLatin1String(button)));
    ++m_presses[button];
    m_writes = true;
    const bool pressed = m_journey.press(button);
    m_writes = false;
    return pressed;
}

void Soak::answer(QMessageBox *box)
{
    if (!m_writes || !box->text().startsWith(conflictQuestion)) {
        find(QStringLiteral("a message that nobody caused: ") + box->text());
        return;
    }
    const bool yes = m_agrees || m_random.bounded(4) > 0;
    ++(yes ? m_yes : m_no);
    Person::press(box->button(yes ? QMessageBox::Yes : QMessageBox::No));
}

void Soak::disturb()
{
    m_disturber.begin(m_shownDrive ? m_shownDrive->address : m_drives.first().address);
}

// --- the figures
// -----------------------------------------------------------------------------------------------

/// Always on the same page, after the same one, since a page keeps what it showed last: the table of another
/// version has more rows or fewer. The least that was in use meanwhile counts.
void Soak::note()
{
    m_disturber.end();
    show(m_drives.first(), tablePage());
    waitForPasses();
    show(m_drives.first(), pageItems().first());
    waitForPasses();
    ProcessFigures figures = ProcessFigures::now();
    QElapsedTimer timer;
    for (timer.start(); timer.elapsed() < figuresForMs;) {
        letRun(figuresEveryMs);
        figures = figures.lesser(ProcessFigures::now());
    }
    m_figures.append(figures);
    sayProgress();
}

void Soak::sayProgress()
{
    const ProcessFigures &figures = m_figures.last();
    say(QStringLiteral(
        "minute %1: %2 pages, %3 edits, %4 faults, %5 changes pending, %6 questions; heap %7 KB, resident "
        "%8 KB, %9 threads, %10 descriptors")
            .arg(m_figures.size())
            .arg(m_pageChanges)
            .arg(m_edits)
            .arg(m_disturber.count())
            .arg(m_pending.count())
            .arg(m_yes + m_no)
            .arg(figures.heapKb, 0, 'f', 0)
            .arg(figures.residentKb, 0, 'f', 0)
            .arg(figures.threads)
            .arg(figures.descriptors));
}

/// Until the live update has been round for the shown page.
void Soak::waitForPasses()
{
    const int before = m_witness.transactions();
    if (!Person::waitUntil([&] { return m_witness.transactions() >= before + 2; }))
        find(QStringLiteral("no pass of the live update comes to its end"));
}

// --- what must be
// ----------------------------------------------------------------------------------------------

void Soak::checkFields(const SoakDrive &drive, const PageItem &page)
{
    const auto check = [&](int number, const QString &seen) {
        const QString wanted = m_pending.text(drive.address, number);
        if (seen != wanted)
            find(QStringLiteral("%1 %2: parameter %3 shows \"%4\", typed was \"%5\"")
                     .arg(drive.name, page.title)
                     .arg(number)
                     .arg(seen, wanted));
    };
    for (const PageField &field : page.fields) {
        const QByteArray name = field.name.toLatin1();
        const auto *edit = qobject_cast<QLineEdit *>(Person::seen(m_journey.window(), name.constData()));
        if (edit)
            check(field.number, edit->text());
    }
    if (!page.isTable)
        return;
    for (const int number : drive.definitions.keys())
        check(number, m_journey.row(number).userValue);
    if (m_journey.rowCount() != drive.definitions.size())
        find(QStringLiteral("%1: the table has %2 rows, the drive %3 parameters")
                 .arg(drive.name)
                 .arg(m_journey.rowCount())
                 .arg(drive.definitions.size()));
}

void Soak::lookAtEveryDrive()
{
    for (const SoakDrive &drive : m_drives) {
        show(drive, tablePage());
        waitForPasses();
        checkFields(drive, tablePage());
    }
    say(QStringLiteral("All tables have been looked through"));
}

/// What still waits goes to the drives, on a bus that nothing disturbs any more.
void Soak::writeEverything()
{
    m_agrees = true;
    for (const SoakDrive &drive : m_drives) {
        show(drive, pageItems().first());
        if (m_pending.count(drive.address) == 0)
            continue;
        press("BtnUpload");
        if (!Person::waitUntil([&] { return isWritten(drive); }))
            find(QStringLiteral("%1: \"Schreiben\" has not brought every change into the drive")
                     .arg(drive.name));
        // The program takes no second write while the first goes on.
        waitForPasses();
    }
}

bool Soak::isWritten(const SoakDrive &drive)
{
    const QMap<int, int> changes = m_pending.of(drive.address);
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        if (drive.value(m_line, "param", change.key()) != change.value())
            return false;
    }
    return true;
}

/// A drive holds nothing but what it came with and what was typed for it, and not for another.
void Soak::checkMemory()
{
    for (const SoakDrive &drive : m_drives) {
        checkMemory(drive, "param");
        checkMemory(drive, "flash");
    }
}

void Soak::checkMemory(const SoakDrive &drive, const char *where)
{
    for (const int number : drive.definitions.keys()) {
        if (!drive.isWritable(number))
            continue;
        const int value = drive.value(m_line, where, number);
        if (value != drive.definitions.value(number).factoryValue
            && !m_pending.wasTyped(drive.address, number, value))
            find(QStringLiteral("%1: parameter %2 holds %3 (%4), which nobody typed for it")
                     .arg(drive.name)
                     .arg(number)
                     .arg(value)
                     .arg(QLatin1String(where)));
    }
}

// --- the report
// ------------------------------------------------------------------------------------------------

void Soak::find(const QString &what)
{
    say(QStringLiteral("FOUND: ") + what);
    if (++m_findings <= mostPictures)
        m_journey.window().grab().save(QStringLiteral("found-%1.png").arg(m_findings));
}

void Soak::report()
{
    say(QStringLiteral("\n%1 minutes with %2 drives, seed %3")
            .arg(m_plan.minutes)
            .arg(m_drives.size())
            .arg(m_plan.seed));
    say(QStringLiteral("  %1 page changes, %2 edits, of which %3 emptied a field; %4 changes are pending")
            .arg(m_pageChanges)
            .arg(m_edits)
            .arg(m_emptied)
            .arg(m_pending.count()));
    say(QStringLiteral("  pressed: %1; conflict questions: %2 yes, %3 no")
            .arg(counts(m_presses))
            .arg(m_yes)
            .arg(m_no));
    say(QStringLiteral("  %1 faults: %2").arg(m_disturber.count()).arg(counts(m_disturber.done())));
    say(QStringLiteral("  %1 transactions shown in the control bar").arg(m_witness.transactions()));
    say(QStringLiteral("  the event loop was held for %1 ms at most, while %2")
            .arg(m_witness.longestHoldMs())
            .arg(m_witness.heldWhile()));
    judgeFigures();
    for (const QString &message : m_witness.messages())
        find(message);
    if (m_witness.transactions() == 0)
        find(QStringLiteral("nothing was on the bus"));
    say(m_findings ? QStringLiteral("%1 finding(s)").arg(m_findings)
                   : QStringLiteral("All is as it should be"));
}

void Soak::judgeFigures()
{
    judge("heap, KB", &ProcessFigures::heapKb, heapToleranceKb);
    judge("threads", &ProcessFigures::threads, 0);
    judge("descriptors", &ProcessFigures::descriptors, 0);
    judge("resident, KB, for information", &ProcessFigures::residentKb,
        std::numeric_limits<double>::infinity());
}

void Soak::judge(const char *name, double ProcessFigures::*figure, double tolerance)
{
    QVector<double> figures;
    for (const ProcessFigures &noted : m_figures.mid(warmUpMinutes))
        figures.append(noted.*figure);
    if (figures.size() < leastJudged) {
        say(QStringLiteral("  %1: the run was too short to judge").arg(QLatin1String(name)));
        return;
    }
    const auto range = std::minmax_element(figures.begin(), figures.end());
    const QString text = QStringLiteral("%1: %2 to %3 from minute %4 on, grown by %5, tolerated %6")
                             .arg(QLatin1String(name))
                             .arg(*range.first, 0, 'f', 0)
                             .arg(*range.second, 0, 'f', 0)
                             .arg(warmUpMinutes + 1)
                             .arg(growth(figures), 0, 'f', 1)
                             .arg(tolerance);
    say(QStringLiteral("  ") + text);
    if (growth(figures) > tolerance)
        find(text);
}
