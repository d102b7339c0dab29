#pragma once

#include "model/device.h"

#include <QMap>
#include <QMutex>
#include <QString>

/// What one parameter number means in one software version. Labels and limits only: nothing scales a value.
struct Z7ParamDefinition
{
    int isUnsigned = 0;
    int number = 0;
    QString name; ///< German, and the key of its translation
    QString unit; ///< likewise
    int defaultValue = 0; ///< factory value, raw
    int minimum = 0;
    int maximum = 0;
    int applFunction = 0; ///< 0: writable only while digital inputs 1 and 2 are low
    bool readOnly = false;
    int variant = 0;
    QMap<int, QString> options; ///< text of a value, 0 to 12
};

/// The rows of the file "Z7ParamDef_<version>.csv" in the working folder: what the parameters of the drives
/// of one software version mean.
///
/// Any thread: a version that turns up in a reply makes a worker ask, while the main thread may be loading
/// it. Each operation holds the lock for itself and no other with it.
class Z7ParamDefinitions
{
public:
    explicit Z7ParamDefinitions(const QString &version);

    /// Reads the file over the rows that exist. False if the file does not exist, or if no parameter is known
    /// afterwards. Malformed lines are skipped; a file of more than 16 MB counts as one that cannot be
    /// opened.
    bool load();

    /// Takes one line, ';' between its columns. A line without a number in column 0, or whose column 9 is not
    /// exactly "0", leaves nothing behind. Of two lines with one number the later one counts.
    void parseLine(const QString &line);

    /// Each of these answers for an unknown number with the field of a default row.
    QString paramName(int number) const { return row(number).name; }
    QString paramUnit(int number) const { return row(number).unit; }
    int paramDefault(int number) const { return row(number).defaultValue; }
    int paramMin(int number) const { return row(number).minimum; }
    int paramMax(int number) const { return row(number).maximum; }
    int isUnsigned(int number) const { return row(number).isUnsigned; }
    bool isApplFunction(int number) const { return row(number).applFunction == 0; }
    bool isReadOnly(int number) const { return row(number).readOnly; }
    /// Text of one value of an enumerated parameter; empty if there is none.
    QString paramOptionText(int number, int value) const { return row(number).options.value(value); }

    /// One record without a value per row: what a drive of this version has before it has been read.
    Z7DeviceParamSet emptyParameterSet() const;

private:
    Z7ParamDefinition row(int number) const;
    bool hasRows() const;

    const QString m_softwareVersion;
    const QString m_fileName;

    mutable QMutex m_mutex; ///< guards what follows
    QMap<int, Z7ParamDefinition> m_rows;
    Z7DeviceParamSet m_emptyParameterSet;
};
