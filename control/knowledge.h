#pragma once

#include "comm/busnews.h"
#include "comm/commfronts.h"
#include "control/freshness.h"
#include "control/operationjournal.h"
#include "control/pendingoverview.h"

#include <QDateTime>
#include <QObject>
#include <QTimer>
#include <QVector>

#include <functional>
#include <tuple>

class DataPages;
class DeviceList;
class PendingChanges;
class Z7CommunicationInterface;
class Z7DataWidget;

/// What the program knows beside the records: how old the shown values are, what became of the operations,
/// what did not run, what was never read, what is pending, and what is wrong with the list of drives. It says
/// nothing that it does not know, and words nothing: a window asks for numbers, times and enums, and is told
/// when to ask again.
///
/// The controller and the bus feed it, last in what they do. It asks for nothing on the bus and changes
/// nothing. Main thread only.
class Z7Knowledge : public QObject
{
    Q_OBJECT

public:
    /// What it looks at belongs to the controller, which owns it too; all of that outlives it.
    Z7Knowledge(const Z7CommunicationInterface &bus, const DeviceList &drives, const PendingChanges &changes,
        const DataPages &pages);

    // --- Fresh ---

    struct Fresh
    {
        Freshness::State state = Freshness::State::NoDrive;
        QString driveName; ///< "Z7.3", of the selected drive
        QDateTime readAt; ///< of its last reading, in every state; null if there is none
    };
    Fresh fresh() const;

    // --- operations ---

    /// The last report of the selected drive; null if there is none. Valid until the next event.
    const OperationReport *lastOperation() const;
    /// Of all drives, in the order of their times.
    const QVector<NotRunOperation> &notRun() const { return m_journal.notRun(); }
    void dismissNotRun(int index);

    // --- values ---

    struct NeverRead
    {
        bool isKnown = false; ///< everything has been asked for once; before that nothing is to be said
        int total = 0; ///< parameters of the selected drive
        QVector<int> numbers; ///< of those that have no value, ascending

        bool operator==(const NeverRead &other) const
        {
            return isKnown == other.isKnown && total == other.total && numbers == other.numbers;
        }
    };
    const NeverRead &neverRead() const { return m_neverRead; }

    // --- pending changes of the selected drive ---

    const PendingOverview &pending() const { return m_pending; }
    /// Made anew at each call, with the drive's present values.
    QVector<PendingChange> pendingChanges() const;
    /// True from "Änderungen verwerfen" of the selected drive until its next change, if there was something
    /// to discard. The controller's restoreChanges() brings it back.
    bool canRestoreChanges() const;

    // --- list of drives ---

    /// Drives that are connected and not listed, since another drive has the same device id.
    const QVector<Z7Device> &hiddenDrives() const;
    /// Drives that were refused at the last connecting, for want of definitions of their version.
    const QVector<Z7Device> &refusedDrives() const;
    /// True if the folder has no file of parameter definitions at all. Looked for at the start, at each
    /// connecting and by lookForDefinitions().
    bool areDefinitionsMissing() const { return m_areDefinitionsMissing; }
    void lookForDefinitions();

    /// For tests: a clock in ms that counts sleep, in the place of the system's.
    void setClock(const std::function<qint64()> &clock);

    // --- what the controller tells ---

    /// An operation is about to be handed to the bus: the number to name it by.
    int operationAsked(DriveOperation operation, const Z7Device &drive, const Z7DeviceParamSet &params);
    void fileOpened(const Z7Device &drive, const Z7DeviceParamSet &file);
    void drivesConnected();
    /// Another page or drive is shown; null if no page is.
    void pageShown(const Z7DataWidget *page);
    void changesEdited();
    /// A record was taken into the list, `hasMoved` if under another id than before.
    void recordTaken(bool hasMoved);

signals:
    void freshChanged();
    /// A pass has read everything that it asked for, the live values among it, and the drive's record is in
    /// the list. From `staleAfterMs` later on it is stale.
    void driveRead(int deviceId, qint64 staleAfterMs);
    /// A pass that was to read has ended with an error.
    void driveNotRead(int deviceId);
    void lastOperationChanged();
    /// An operation has ended, of whatever drive. Comes before lastOperationChanged().
    void operationEnded(OperationReport report);
    void notRunChanged();
    void neverReadChanged();
    void pendingChanged();
    /// A record has come: pendingChanges() may tell other values of the drive.
    void recordChanged();
    /// hiddenDrives(), refusedDrives() or areDefinitionsMissing().
    void drivesChanged();

private slots:
    void passBegan(Z7CommInterface::ThreadID threadID, int request);
    void passEnded(Z7CommInterface::ThreadID threadID, int request, Z7PassOutcome outcome);
    void transferNotRun(int request, Z7CommInterface::NotRun reason);
    void busStateChanged(Z7CommInterface::BusState state);
    void lookAtClock();

private:
    /// What freshChanged() was told of.
    using ToldFresh = std::tuple<Freshness::State, int, qint64>;

    void selectDrive();
    void updateNeverRead();
    void takeReading(const Z7PassOutcome &outcome);
    void tellEnd(int deviceId);
    void tellLastOperation(int deviceId);

    const DeviceList &m_drives;
    const PendingChanges &m_changes;
    const DataPages &m_pages;
    const Z7DataWidget *m_page = nullptr;

    std::function<qint64()> m_clock;
    QTimer m_look {this};
    qint64 m_passBeganMs = 0;
    bool m_isPassOutdated = false; ///< it began before the drives were connected
    Freshness m_freshness;
    ToldFresh m_toldFresh {Freshness::State::NoDrive, Freshness::none, 0};
    OperationJournal m_journal;
    NeverRead m_neverRead;
    PendingOverview m_pending;
    bool m_areDefinitionsMissing = false;
};
