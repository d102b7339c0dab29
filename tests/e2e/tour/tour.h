#pragma once

#include "tests/e2e/journey.h"
#include "tests/e2e/simulatorline.h"
#include "tests/e2e/tour/transcript.h"

#include <functional>

/// Leads through the program on three simulated drives: with the addresses 1 and 7 and the password 0, and
/// with the address 3 and the password 4711. Presses what a person would press, and takes a picture at each
/// step.
class Tour
{
public:
    /// The line of the simulator is open. Both belong to the caller.
    Tour(SimulatorLine &simulator, Transcript &transcript);

    /// False if a step did not succeed; the last picture shows where.
    bool run();

private:
    using Action = std::function<bool()>;

    bool step(const QString &title, const QString &picture, const Action &action);
    bool part(const QString &picture, const Action &action);
    void describe();

    bool start();
    bool quickConnect();
    bool scan();
    bool connectByHand();
    bool takeOver();
    bool showStatus();
    bool showTable();
    bool showRemarks();
    bool edit();
    bool answerNo();
    bool write();
    bool store();
    bool writeAndStore();
    bool showPages();
    bool saveParameters();
    bool openParameters();
    bool showDialogs();
    bool loseAccess();
    bool pullAdapter();
    bool putAdapterBack();
    bool keepOneDrive();
    bool updateFirmware();
    bool close();

    QString value(const char *where, int number);

    SimulatorLine &m_simulator;
    Transcript &m_transcript;
    Journey m_journey;
};
