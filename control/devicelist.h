#pragma once

#include "model/device.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QVector>

/// The drives that the wizard has connected, by device id, which of them is selected, and how far the live
/// update has read each: everything once after connecting, and from then on what is shown. A copied value,
/// with no thread of its own.
class DeviceList
{
public:
    /// The id of no drive.
    static constexpr int none = -1;

    /// What a reported record has changed.
    enum Change {
        NoChange, ///< it is of no listed drive
        NewRecord, ///< a listed drive has another record
        CompleteRead, ///< and every parameter of the drive has been read once by now
        NewAddress, ///< a listed drive is listed under its new address, and no other
    };

    /// Lists no drive, and selects none.
    void clear();
    /// Lists a drive that was connected just now, with nothing read of it. Without parameter definitions of
    /// its version it is refused: returns the reason, as a text for the user, or an empty text.
    QString add(const Z7Device &device);
    /// Takes a record that was reported; that of a pass that was cut short completes no read. A selected
    /// drive that has moved stays selected, unless the user has selected another one meanwhile.
    Change take(const Z7Device &reported, bool wasCutShort);

    bool contains(int id) const { return m_devices.contains(id); }
    /// Drives that were listed until another one with the same id took their place, since the list was
    /// cleared.
    const QVector<Z7Device> &hidden() const { return m_hidden; }
    /// Drives that were refused since then.
    const QVector<Z7Device> &refused() const { return m_refused; }
    /// The record of a drive; a default record if it is not listed.
    Z7Device value(int id) const { return m_devices.value(id); }
    /// The record in its place, valid until the next change; null if the drive is not listed.
    const Z7Device *find(int id) const;
    QList<int> ids() const { return m_devices.keys(); }
    QList<Z7Device> records() const { return m_devices.values(); }

    /// True if the drive is listed and has accepted the password.
    bool isAccessGranted(int id) const;

    /// Selects a drive, or none.
    void select(int id) { m_currentDevice = id; }
    /// The id that was selected, of a listed drive or not.
    int currentId() const { return m_currentDevice; }
    bool hasCurrent() const { return contains(m_currentDevice); }
    Z7Device current() const { return value(m_currentDevice); }
    const Z7Device *findCurrent() const { return find(m_currentDevice); }
    /// True for a listed drive that is not selected.
    bool isAnother(int id) const { return id != m_currentDevice && contains(id); }

    /// What the live update reads of the selected drive: `shown`, once everything has been read.
    Z7DeviceParamSet polledParameters(const Z7DeviceParamSet &shown) const;
    /// Notes that the live update of the selected drive begins: until one has come to its end, it reads
    /// everything.
    void pollingStarted();
    /// The records of the passes that are under way complete no read.
    void cancelFullReads();

private:
    Change replaceDevice(const Z7Device &reported, bool wasCutShort);
    void moveToNewAddress(const Z7Device &reported);

    QMap<int, Z7Device> m_devices;
    QVector<Z7Device> m_hidden;
    QVector<Z7Device> m_refused;
    int m_currentDevice = none;
};
