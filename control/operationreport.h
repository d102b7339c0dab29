#pragma once

#include "comm/busnews.h"
#include "control/driveoperation.h"
#include "model/device.h"

#include <QDateTime>
#include <QString>
#include <QVector>

/// How the values of a parameter file compare with what was read from the drive when it was opened.
struct FileComparison
{
    int different = 0; ///< from the value in the drive
    int equal = 0;
    int unread = 0; ///< the drive has the parameter, but it was not read yet: nobody knows
    int unknown = 0; ///< the drive's version does not have the parameter
    int outOfLimits = 0; ///< of all of these, those that the definitions find beyond their limits
};

/// What became of one operation on one drive. The lists hold numbers of parameters, and each number stands in
/// exactly one of `done`, `refused`, `uncertain` and `unsent`. A copied value.
struct OperationReport
{
    DriveOperation operation = DriveOperation::None;
    int deviceId = -1; ///< of the drive as it is listed afterwards
    QString driveName; ///< "Z7.3", as deviceId
    QDateTime endedAt;

    int error = 0; ///< error number with which the pass ended
    bool isComplete = false; ///< everything was sent and answered, without an error; always so of a file
    QVector<int> done; ///< answered and not refused: written, or read by DriveOperation::Read
    QVector<int> refused;
    QVector<int>
        conflicts; ///< of the written and refused ones: the drive told of a conflict, perhaps passing
    QVector<int> uncertain; ///< sent without a valid answer: the drive may hold the one or the other value
    QVector<int> unsent; ///< the pass ended before: not written for certain
    Z7PassOutcome::Store store = Z7PassOutcome::NotAsked;

    /// Of the written ones, those that a valid reading after the end has brought back: with the value that
    /// was asked for, or with another one so far.
    QVector<int> readBackEqual;
    QVector<int> readBackDifferent;

    FileComparison file; ///< of DriveOperation::OpenFile alone

    /// How many values the operation was about.
    int asked() const { return done.size() + refused.size() + uncertain.size() + unsent.size(); }
};

Q_DECLARE_METATYPE(OperationReport)

/// The report of an operation whose pass has come to its end. `asked` holds what a read was to read.
OperationReport reportOf(
    DriveOperation operation, const Z7DeviceParamSet &asked, const Z7PassOutcome &outcome);
/// The report of a file whose values have become changes of a drive.
OperationReport reportOfFile(const Z7Device &drive, const Z7DeviceParamSet &file);
