#pragma once

#include "comm/commfronts.h"
#include "model/device.h"

#include <QObject>
#include <QStringList>
#include <QVector>

class Z7CommunicationInterface;

/// Notes what a worker thread, a front or the scheduler tells, in the order of its arrival.
///
/// An event of the scheduler or a front is written as "transfer started 14" (number of steps), "transfer
/// progress 3" (so many in a row), "transfer record 0" (error number), "transfer terminated"; "all
/// terminated" stands for all communication. A worker thread has no name of its own: "started 14", and at the
/// end "ended".
class CommNews : public QObject
{
    Q_OBJECT

public:
    explicit CommNews(CommThread &thread);
    explicit CommNews(const Z7CommInterfaceFront &front);
    explicit CommNews(const Z7CommunicationInterface &scheduler);

    const QStringList &events() const { return m_events; }
    /// The same without the steps of progress and, as a sweep has so many, without the records of addresses
    /// that did not answer.
    QStringList milestones() const;
    /// Records of all threads.
    const QVector<Z7Device> &records() const { return m_records; }
    Z7Device lastRecord() const { return m_records.value(m_records.size() - 1); }
    /// Records that came when a pass was announced.
    const QVector<Z7Device> &startRecords() const { return m_startRecords; }

    /// How often an event has come; a text without its number counts all numbers.
    int count(const QString &event) const;
    bool has(const QString &event) const { return count(event) > 0; }
    void clear();

private:
    template<typename Source>
    void listenToNamed(const Source &source);
    void noteStart(const QString &name, int maxProgress, const Z7Device &device);
    void noteProgress(const QString &name);
    void noteRecord(const QString &name, const Z7Device &device);

    QStringList m_events;
    QVector<Z7Device> m_records;
    QVector<Z7Device> m_startRecords;
};
