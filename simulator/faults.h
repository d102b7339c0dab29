#pragma once

#include <QByteArray>
#include <QMap>
#include <QVector>
#include <optional>

namespace z7sim {

/// What is about to go on the wire as the answer to one request.
struct ReplyPlan
{
    struct Gap
    {
        int position; ///< bytes before the gap
        qint64 us;
    };
    QByteArray bytes; ///< empty for silence
    qint64 delayUs = 0; ///< on top of the drive's own answering time
    QVector<Gap> gaps;
};

/// One kind of disturbance; see faultKinds.
struct FaultKind;

/// A disturbance of the exchanges with a drive, or of all exchanges on the bus.
struct Fault
{
    const FaultKind *kind = nullptr;
    QByteArray text; ///< as it was given
    int remaining = -1; ///< exchanges that it still disturbs, -1 for all to come
    int skip = 0; ///< matching exchanges that it spares first
    std::optional<int> command; ///< disturbs only requests with this command
    std::optional<int> parameter; ///< disturbs only reads and writes of this parameter
    bool resealed = false; ///< the checksum is made right again
    bool withoutEffect = false; ///< the drive forgets that it did what was asked
    QMap<QByteArray, int> numbers;
    QByteArray bytes;

    bool matches(const QByteArray &request) const;
    int number(const char *name) const { return numbers.value(name); }
    /// Disturbs a reply. Length-bound changes leave a reply of another length as it is.
    void apply(ReplyPlan &plan) const;
};

struct FaultKind
{
    const char *name;
    /// Names of the arguments with their defaults, "at=1 ms=30"; "hex=" takes bytes.
    const char *arguments;
    const char *help;
    bool resealsByDefault;
    /// True for the requests whose replies the fault can change; null for all.
    bool (*touches)(quint8 command);
    /// Null for the kinds that act on the drive or the line instead of the reply.
    void (*change)(const Fault &fault, ReplyPlan &plan);
};

/// Names of the kinds that the bus itself carries out.
constexpr char resetFault[] = "reset"; ///< power cycle before the exchange
constexpr char pullFault[] = "pull"; ///< the adapter is pulled instead of an answer
constexpr char babbleFault[] = "babble"; ///< a byte again and again, exchange or not

const QVector<FaultKind> &faultKinds();

/// Reads "late ms=30 count=2 command=0x04" into fault. Returns an empty text, or what is wrong.
QByteArray parseFault(const QByteArray &text, Fault &fault);

/// The faults of one drive or of the bus, in the order given.
class FaultList
{
public:
    void add(const Fault &fault, qint64 now);
    void clear() { m_faults.clear(); }
    const QVector<Fault> &all() const { return m_faults; }

    /// Counts the exchange against every fault that it matches and returns those that disturb it.
    QVector<Fault> take(const QByteArray &request);

    /// Time in microseconds of the next babbled byte, a very late one if nothing babbles.
    qint64 nextBabble() const;
    /// The babbled bytes that are due.
    QByteArray takeBabble(qint64 now);

private:
    bool isBabbling() const;
    void dropSpent();

    QVector<Fault> m_faults;
    qint64 m_nextBabble = 0;
};

} // namespace z7sim
