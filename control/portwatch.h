#pragma once

#include "comm/adapters.h"
#include "comm/commfronts.h"
#include "comm/portdiagnosis.h"
#include "control/scantally.h"

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <optional>

class Z7CommunicationInterface;

/// What is known against one port. A copied value.
struct PortState
{
    bool isTrouble() const { return diagnosis.kind != Z7PortDiagnosis::Fine || partialScan; }

    QString portName;
    Z7PortDiagnosis diagnosis; ///< why it could not be used, the last time that it was tried
    /// The last scan of it, if that did not ask every address.
    std::optional<ScanReach> partialScan;
    QString returnedAs; ///< the port under which its adapter is there again; empty if it is not
};
bool operator==(const PortState &a, const PortState &b);

/// What the program knows about its serial ports: why one cannot be used, how far a scan came, and where an
/// adapter that was gone is there again. It learns from the records that come anyway and looks at the system
/// only when one of them tells of a failure, or now and then while an adapter is gone.
///
/// Knowledge is kept until there is better: of a failure until a pass over the port succeeds, of a scan until
/// a whole one, of both at the latest until the drives are listed anew. It never asks a drive anything. Main
/// thread only.
class PortWatch : public QObject
{
    Q_OBJECT

public:
    PortWatch();

    /// Hears of all that happens on the bus from now on. Once.
    void listenTo(const Z7CommunicationInterface &bus);
    /// The drives have been listed anew. What is known of ports without any of them is forgotten, but not the
    /// scan that has just led to this list.
    void drivesListed(const QList<Z7Device> &drives);

    /// The ports against which something is known, the latest news first.
    QList<PortState> troubles() const;
    /// What is known of one port.
    PortState state(const QString &portName) const;

signals:
    /// What troubles() gives has changed.
    void changed();

private slots:
    void portRefused(const QString &portName, int reason);
    void deviceUpdate(Z7CommInterface::ThreadID threadID, const Z7Device &device);
    void transactionStarted(Z7CommInterface::ThreadID threadID, int maxProgress, const Z7Device &device);
    void communicationEnded();
    void lookForAdapters();

private:
    struct Entry
    {
        bool isAdapterGone() const { return state.diagnosis.kind == Z7PortDiagnosis::Gone; }
        void clearDiagnosis()
        {
            state.diagnosis = Z7PortDiagnosis();
            state.returnedAs.clear();
        }

        PortState state;
        QSerialPortInfo port;
        QElapsedTimer sinceSearch; ///< for the program that holds the port
        QStringList portsBeside; ///< that were there when the adapter was found to be gone
        bool hasLedToList = false; ///< the drives have been listed since the scan
    };

    int indexOf(const QString &portName) const;
    /// Changes what is known of a port; what is nothing any more is forgotten.
    template<typename Change>
    void update(const QSerialPortInfo &port, Change change);

    void takeScanned(const Z7Device &device);
    void diagnose(const QSerialPortInfo &port, int error);
    static ProgramSearch dueSearch(Entry &entry);
    void portOpened(const Z7Device &device);
    bool isWatched(const Entry &entry) const;
    void adapterIsGone(Entry &entry) const;
    void lookFor(Entry &entry, const QList<Z7Adapter> &listed) const;
    void keepLooking();

    QList<Entry> m_entries; ///< the latest news first
    std::optional<ScanTally> m_scan; ///< under way
    QString m_refusedPort;
    QSerialPort::SerialPortError m_refusal = QSerialPort::NoError;
    QStringList m_portsOfDrives;
    QList<Z7Adapter> m_adaptersAtListing;
    QTimer m_lookForAdapters {this}; ///< runs only while the adapter of a listed drive is gone
};
