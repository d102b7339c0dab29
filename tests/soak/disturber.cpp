#include "tests/soak/disturber.h"

#include "simulator/faults.h"

#include <QDebug>

#include <numeric>

namespace {

const QByteArray pullCommand = QByteArrayLiteral("pull");
const QByteArray powerCycleCommand = QByteArrayLiteral("power-cycle");

constexpr int mostExchanges = 8;
constexpr int mostBabble = 400;

} // namespace

Disturber::Disturber(SimulatorLine &line, QRandomGenerator &random)
    : m_line(line)
    , m_random(random)
{
    for (const z7sim::FaultKind &kind : z7sim::faultKinds())
        m_kinds.append(QByteArrayLiteral("fault ") + kind.name);
    m_kinds << powerCycleCommand << pullCommand;
}

void Disturber::begin(int address)
{
    const QByteArray kind = m_kinds.at(m_next);
    m_next = (m_next + 1) % m_kinds.size();
    ++m_done[kind];
    const QByteArray command = fault(kind, address);
    if (m_line.ask(command).isEmpty())
        qWarning() << "the simulator refuses" << command;
}

QByteArray Disturber::fault(const QByteArray &kind, int address)
{
    const QByteArray drive = QByteArray::number(address);
    if (kind == pullCommand)
        return kind;
    if (kind == powerCycleCommand)
        return kind + ' ' + drive;
    const QByteArray name = kind.mid(kind.indexOf(' ') + 1);
    QByteArray command = "fault " + (m_random.bounded(2) ? drive : QByteArray("*")) + ' ' + name;
    if (name == z7sim::babbleFault)
        command += " count=" + QByteArray::number(m_random.bounded(1, mostBabble));
    else if (m_random.bounded(3))
        command += " count=" + QByteArray::number(m_random.bounded(1, mostExchanges));
    if (name == "raw") {
        const quint64 bytes = m_random.generate64();
        command += " hex=" + QByteArray(reinterpret_cast<const char *>(&bytes), sizeof bytes).toHex();
    }
    return command;
}

void Disturber::end()
{
    m_line.ask("clear-faults");
    if (m_line.ask("port").isEmpty())
        m_line.ask("plug");
}

int Disturber::count() const
{
    return std::accumulate(m_done.begin(), m_done.end(), 0);
}
