#pragma once

#include "control/operationreport.h"

#include <QDateTime>
#include <QHash>
#include <QMap>
#include <QString>
#include <QVector>

/// An operation that a person asked for and that has not begun.
struct NotRunOperation
{
    DriveOperation operation = DriveOperation::None;
    int deviceId = -1;
    QString driveName; ///< "Z7.3"
    QDateTime at;
    Z7CommInterface::NotRun reason = Z7CommInterface::NotRun::TransferRunning;
};

/// What became of the operations that were asked for: the last report of each drive, and what has not run.
/// Only the end of an operation replaces a drive's report; what is read later adds to it what came back. A
/// copied value, with no thread of its own; it holds one report a drive, and of what has not run one entry a
/// drive and operation.
class OperationJournal
{
public:
    /// Notes an operation that is about to be asked for, with the values that it is to read or write, and
    /// gives it the number under which its news come; 0 for DriveOperation::None, which is not noted.
    int ask(
        DriveOperation operation, const Z7Device &drive, const Z7DeviceParamSet &params = Z7DeviceParamSet());

    /// It has begun: what did not run of the same kind on the same drive is done now. True if there was such.
    bool began(int request);
    /// It has come to its end. False, with nothing noted, for an unknown number.
    bool ended(int request, const Z7PassOutcome &outcome, const QDateTime &at);
    /// It will not begin. False for an unknown number.
    bool notRun(int request, Z7CommInterface::NotRun reason, const QDateTime &at);
    /// A file's values have become changes of a drive.
    void fileOpened(const Z7Device &drive, const Z7DeviceParamSet &file, const QDateTime &at);

    /// Another pass has read from a drive: what it brought back of the values written last. True if that is
    /// news.
    bool takeReadings(const Z7PassOutcome &outcome);
    /// The drives are connected anew: nothing that is read from now on tells of what was written before.
    void endReadings();

    /// The last report of a drive; null if there is none. Valid until the next call of another function.
    const OperationReport *last(int deviceId) const;

    /// In the order of their times; one for each drive and operation.
    const QVector<NotRunOperation> &notRun() const { return m_notRun; }
    /// Takes the entry of that index away.
    void dismissNotRun(int index);

private:
    struct Asked
    {
        DriveOperation operation;
        int deviceId;
        QString driveName;
        Z7DeviceParamSet params;
    };
    struct Last
    {
        OperationReport report;
        QMap<int, int> awaited; ///< written values that were not read back as they are, by number
    };

    static bool takeReading(Last &last, int number, int value);
    bool removeNotRun(DriveOperation operation, int deviceId);
    /// A drive is listed under another id from now on.
    void moveDrive(int from, int to, const QString &name);

    int m_lastRequest = 0;
    QHash<int, Asked> m_asked; ///< by request; those whose end has not come
    QHash<int, Last> m_last; ///< by device id
    QVector<NotRunOperation> m_notRun;
};
