#pragma once

#include "model/device.h"

#include <QMap>
#include <QMutex>
#include <QString>

#include <atomic>
#include <memory>
#include <vector>

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

    bool isApplFunction() const { return applFunction == 0; }
    bool isWithinLimits(int value) const { return minimum <= value && value <= maximum; }
    /// Text of one value of an enumerated parameter; empty if there is none.
    QString optionText(int value) const { return options.value(value); }
};

bool operator==(const Z7ParamDefinition &a, const Z7ParamDefinition &b);

/// The rows of the file "Z7ParamDef_<version>.csv": what the parameters of the drives of one software version
/// mean.
///
/// Any thread: a version that turns up in a reply makes a worker ask, while the main thread may be loading
/// it. Nobody who asks waits for a lock: the rows stand in tables that never change, and a load puts a new
/// table into the place of the former one, all its rows at once. Former tables are kept, so a reference that
/// was given out stays valid, with the row of its time, as long as the definitions live.
class Z7ParamDefinitions
{
public:
    /// The file lies in `folder`; in the current folder of each access if that is empty.
    explicit Z7ParamDefinitions(const QString &version, const QString &folder = QString());
    ~Z7ParamDefinitions();

    /// Reads the file over the rows that exist. False if the file does not exist, or if no parameter is known
    /// afterwards. Malformed lines are skipped. A pipe or a device counts as missing, a folder and a file of
    /// more than 16 MB as one that cannot be opened. A file that tells nothing new costs no memory, however
    /// often it is read.
    bool load();

    /// True if the folder, the current one if its name is empty, has such a file of whatever version.
    static bool isAnyFileIn(const QString &folder);

    /// Takes one line, ';' between its columns. A line without a number in column 0, or whose column 9 is not
    /// exactly "0", leaves nothing behind. Of two lines with one number the later one counts. Each line makes
    /// a table of its own; load() takes all lines of a file together.
    void parseLine(const QString &line);

    /// All that is known of a parameter, by one look-up; a default row for an unknown number. Whoever needs
    /// more than one field of a parameter asks once and keeps the reference:
    ///
    ///     const Z7ParamDefinition &row = definitions->row(number);
    ///     validator->setRange(row.minimum, row.maximum);
    ///
    /// It is valid until Z7Services::shutdown(). A later load shows only in a row asked for anew, so a page
    /// asks again at each showing.
    const Z7ParamDefinition &row(int number) const;

    /// True if a row tells of this number.
    bool contains(int number) const;
    /// True if any parameter is known.
    bool hasRows() const;

    /// Each of these answers for an unknown number with the field of a default row.
    QString paramName(int number) const { return row(number).name; }
    QString paramUnit(int number) const { return row(number).unit; }
    int paramDefault(int number) const { return row(number).defaultValue; }
    int paramMin(int number) const { return row(number).minimum; }
    int paramMax(int number) const { return row(number).maximum; }
    int isUnsigned(int number) const { return row(number).isUnsigned; }
    bool isApplFunction(int number) const { return row(number).isApplFunction(); }
    bool isReadOnly(int number) const { return row(number).readOnly; }
    QString paramOptionText(int number, int value) const { return row(number).optionText(value); }

    /// One record without a value per row: what a drive of this version has before it has been read. Valid as
    /// long as a row is.
    const Z7DeviceParamSet &emptyParameterSet() const;

    /// The records of `params`, a drive's own, with the factory value in the place of theirs; those of
    /// read-only parameters are left out.
    Z7DeviceParamSet factoryValues(const Z7DeviceParamSet &params) const;

private:
    struct Table;

    /// Puts rows over those of the table in force.
    void takeRows(const std::vector<Z7ParamDefinition> &rows);
    const Table &table() const { return *m_table.load(std::memory_order_acquire); }

    const QString m_softwareVersion;
    const QString m_fileName;

    QMutex m_writeMutex; ///< guards m_tables against a second load; readers do without it
    std::vector<std::unique_ptr<const Table>> m_tables; ///< the last one is in force
    std::atomic<const Table *> m_table;
};
