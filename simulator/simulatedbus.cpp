#include "simulator/simulatedbus.h"

#include "simulator/bus.h"
#include "simulator/commands.h"
#include "simulator/pseudoterminal.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <limits>
#include <mutex>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/prctl.h>
#include <thread>

namespace z7sim {

namespace {

constexpr qint64 never = std::numeric_limits<qint64>::max();

qint64 monotonicUs()
{
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(sinceStart).count();
}

// The default slack of 50 µs is half a byte on the wire.
void askForExactTimers()
{
    ::prctl(PR_SET_TIMERSLACK, 1000UL, 0UL, 0UL, 0UL);
}

} // namespace

/// The thread that the drives live on. While it runs, it alone touches bus and port; everyone else hands it
/// jobs.
class SimulatedBus::Worker
{
public:
    explicit Worker(const BusConfig &config)
        : m_wakeUp(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC))
    {
        bus.timing = {config.paced, config.turnaroundUs};
        bus.definitionFolder = config.definitionFolder;
        port.setLink(config.link);
        for (const DriveConfig &drive : config.drives)
            addDrive(drive);
    }

    ~Worker()
    {
        if (!m_thread.joinable())
            return;
        run([this] { m_stopping = true; });
        m_thread.join();
    }

    bool addDrive(const DriveConfig &config)
    {
        const QByteArray error = bus.addDrive(config);
        if (!error.isEmpty())
            errorText = QString::fromLocal8Bit(error);
        return error.isEmpty();
    }

    bool start()
    {
        if (m_thread.joinable())
            return true;
        if (errorText.isEmpty())
            errorText = port.open();
        if (errorText.isEmpty())
            m_thread = std::thread([this] { loop(); });
        return errorText.isEmpty();
    }

    /// Carries out a job between two exchanges and waits for its end.
    void run(const std::function<void()> &job)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (!m_thread.joinable())
            return job();
        bool done = false;
        m_jobs.push_back([&] { job(), done = true; });
        ::eventfd_write(m_wakeUp.get(), 1);
        m_finished.wait(lock, [&done] { return done; });
    }

    void receive()
    {
        const QByteArray bytes = port.read();
        if (!bytes.isEmpty())
            bus.receive(bytes, monotonicUs());
        if (bus.takePullRequest())
            port.close();
    }

    Bus bus;
    PseudoTerminal port;
    QString errorText;

private:
    void loop()
    {
        askForExactTimers();
        while (!m_stopping) {
            waitForWork();
            if (port.isOpen())
                receive();
            runJobs();
            const QByteArray due = bus.takeDue(monotonicUs());
            if (!due.isEmpty() && port.isOpen())
                port.write(due);
        }
    }

    void waitForWork()
    {
        pollfd waits[] = {{m_wakeUp.get(), POLLIN, 0}, {port.descriptor(), POLLIN, 0}};
        const qint64 due = bus.nextDue();
        if (due == never) {
            ::ppoll(waits, 2, nullptr, nullptr);
            return;
        }
        const qint64 us = std::max<qint64>(0, due - monotonicUs());
        const timespec timeout = {static_cast<time_t>(us / 1000000), static_cast<long>(us % 1000000 * 1000)};
        ::ppoll(waits, 2, &timeout, nullptr);
    }

    void runJobs()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        eventfd_t ignored = 0;
        ::eventfd_read(m_wakeUp.get(), &ignored);
        for (; !m_jobs.empty(); m_jobs.pop_front())
            m_jobs.front()();
        m_finished.notify_all();
    }

    const FileDescriptor m_wakeUp;
    std::mutex m_mutex;
    std::condition_variable m_finished;
    std::deque<std::function<void()>> m_jobs;
    bool m_stopping = false;
    std::thread m_thread;
};

SimulatedBus::SimulatedBus(const BusConfig &config)
    : m_worker(std::make_unique<Worker>(config))
{
}

SimulatedBus::~SimulatedBus() = default;

bool SimulatedBus::start()
{
    return m_worker->start();
}

QString SimulatedBus::errorText() const
{
    QString text;
    m_worker->run([&] { text = m_worker->errorText; });
    return text;
}

QString SimulatedBus::portPath() const
{
    QString path;
    m_worker->run([&] { path = m_worker->port.path(); });
    return path;
}

bool SimulatedBus::isSilent(const QString &path) const
{
    bool silent = false;
    m_worker->run([&] {
        if (!m_worker->port.isOpen())
            return;
        m_worker->receive(); // what was written before this call may not have been taken yet
        silent = m_worker->port.path() == path && m_worker->bus.nextDue() == never;
    });
    return silent;
}

bool SimulatedBus::addDrive(const DriveConfig &config)
{
    bool added = false;
    m_worker->run([&] { added = m_worker->addDrive(config); });
    return added;
}

int SimulatedBus::memory(int address, int number) const
{
    std::optional<int> value;
    m_worker->run([&] {
        if (Bus::Station *station = m_worker->bus.find(address))
            value = station->drive.memory(number, monotonicUs());
    });
    return value.value_or(noValue);
}

int SimulatedBus::flash(int address, int number) const
{
    std::optional<int> value;
    m_worker->run([&] {
        if (const Bus::Station *station = m_worker->bus.find(address))
            value = station->drive.flash(number);
    });
    return value.value_or(noValue);
}

QVector<WireEntry> SimulatedBus::log() const
{
    QVector<WireEntry> entries;
    m_worker->run([&] { entries = m_worker->bus.log.entries(); });
    return entries;
}

void SimulatedBus::clearLog()
{
    m_worker->run([this] { m_worker->bus.log.clear(); });
}

QByteArray SimulatedBus::command(const QByteArray &line)
{
    QByteArray answer;
    m_worker->run([&] { answer = runCommand({m_worker->bus, m_worker->port, monotonicUs()}, line); });
    return answer;
}

} // namespace z7sim
