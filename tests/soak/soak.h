#pragma once

#include "tests/e2e/journey.h"
#include "tests/e2e/simulatorline.h"
#include "tests/soak/disturber.h"
#include "tests/soak/drives.h"
#include "tests/soak/figures.h"
#include "tests/soak/pageitems.h"
#include "tests/soak/typedchanges.h"
#include "tests/soak/witness.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QStringList>

#include <functional>

class QMessageBox;

/// A person who works with many drives for a long time, on a bus that is disturbed again and again: shows
/// page after page, types, writes. What a field must hold is known at every moment, and what the process uses
/// is noted once a minute.
///
/// The simulator's drives, their addresses and passwords are asked of its line. Texts about what went wrong
/// go to standard output at once, and pictures of the window into the working folder. Main thread only.
class Soak
{
public:
    struct Plan
    {
        double minutes = 60;
        /// How many times as fast as told: 2 shows a page every 2.5 s.
        int pace = 1;
        quint32 seed = 1;
    };

    /// The line is open and belongs to the caller.
    Soak(SimulatorLine &line, const Plan &plan);
    ~Soak();

    /// From connecting the drives to the last look at each of them; prints the report. False if anything was
    /// not as it should be.
    bool run();

private:
    /// Something that is done again and again.
    struct Duty
    {
        int periodMs;
        qint64 nextMs;
        std::function<void()> act;
    };

    void live();
    Duty &duty();
    void addDuty(int periodMs, int delayMs, const std::function<void()> &act);
    void letRun(qint64 ms);

    void changePage();
    void show(const SoakDrive &drive, const PageItem &page);
    void showNetwork();
    const SoakDrive &nextDrive();
    const PageItem *nextPage();

    void type();
    void editOnce();
    QVector<PageField> fieldsOfShownPage() const;
    void edit(const PageField &field, const QString &text);
    PageField pick(const QVector<PageField> &fields);
    int valueFor(int number);

    void write();
    bool press(const char *button);
    void answer(QMessageBox *box);
    void disturb();
    void note();
    void waitForPasses();
    void sayProgress();

    void checkFields(const SoakDrive &drive, const PageItem &page);
    void lookAtEveryDrive();
    void writeEverything();
    bool isWritten(const SoakDrive &drive);
    void checkMemory();
    void checkMemory(const SoakDrive &drive, const char *where);

    void report();
    void judgeFigures();
    void judge(const char *name, double ProcessFigures::*figure, double tolerance);
    void find(const QString &what);

    const Plan m_plan;
    SimulatorLine &m_line;
    QRandomGenerator m_random;
    Witness m_witness;
    Journey m_journey;
    Disturber m_disturber;
    const QVector<SoakDrive> m_drives;
    TypedChanges m_pending;

    QVector<Duty> m_duties;
    QElapsedTimer m_clock;
    const SoakDrive *m_shownDrive = nullptr; ///< null while the network or nothing is shown
    const PageItem *m_shownPage = nullptr;
    int m_driveTurn = 0;
    QVector<const PageItem *> m_pagesAhead;
    bool m_writes = false; ///< a conflict question is the person's own doing
    bool m_agrees = false; ///< the answer to every conflict question is yes

    int m_editsDue = 0;
    int m_edits = 0;
    int m_emptied = 0;
    int m_pageChanges = 0;
    int m_yes = 0;
    int m_no = 0;
    QMap<QByteArray, int> m_presses;
    QVector<ProcessFigures> m_figures;
    int m_findings = 0;
};
