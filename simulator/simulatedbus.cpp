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
        : wakeUp_(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC))
    {
        bus.timing = {config.paced, config.turnaroundUs};
        bus.definitionFolder = config.definitionFolder;
        port.setLink(config.link);
        for (const DriveConfig &drive : config.drives)
            addDrive(drive);
    }

    ~Worker()
    {
        if (!thread_.joinable())
            return;
        run([this] { stopping_ = true; });
        thread_.join();
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
        if (thread_.joinable())
            return true;
        if (errorText.isEmpty())
            errorText = port.open();
        if (errorText.isEmpty())
            thread_ = std::thread([this] { loop(); });
        return errorText.isEmpty();
    }

    /// Carries out a job between two exchanges and waits for its end.
    void run(const std::function<void()> &job)
    {
        std::unique_lock<std::mutex> lock(mutex_);
        if (!thread_.joinable())
            return job();
        bool done = false;
        jobs_.push_back([&] { job(), done = true; });
        ::eventfd_write(wakeUp_.get(), 1);
        finished_.wait(lock, [&done] { return done; });
    }

    Bus bus;
    PseudoTerminal port;
    QString errorText;

private:
    void loop()
    {
        askForExactTimers();
        while (!stopping_) {
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
        pollfd waits[] = {{wakeUp_.get(), POLLIN, 0}, {port.descriptor(), POLLIN, 0}};
        const qint64 due = bus.nextDue();
        if (due == std::numeric_limits<qint64>::max()) {
            ::ppoll(waits, 2, nullptr, nullptr);
            return;
        }
        const qint64 us = std::max<qint64>(0, due - monotonicUs());
        const timespec timeout = {time_t(us / 1000000), long(us % 1000000 * 1000)};
        ::ppoll(waits, 2, &timeout, nullptr);
    }

    void receive()
    {
        const QByteArray bytes = port.read();
        if (!bytes.isEmpty())
            bus.receive(bytes, monotonicUs());
        if (bus.takePullRequest())
            port.close();
    }

    void runJobs()
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        eventfd_t ignored = 0;
        ::eventfd_read(wakeUp_.get(), &ignored);
        for (; !jobs_.empty(); jobs_.pop_front())
            jobs_.front()();
        finished_.notify_all();
    }

    const FileDescriptor wakeUp_;
    std::mutex mutex_;
    std::condition_variable finished_;
    std::deque<std::function<void()>> jobs_;
    bool stopping_ = false;
    std::thread thread_;
};

SimulatedBus::SimulatedBus(const BusConfig &config)
    : worker_(std::make_unique<Worker>(config))
{
}

SimulatedBus::~SimulatedBus() = default;

bool SimulatedBus::start()
{
    return worker_->start();
}

QString SimulatedBus::errorText() const
{
    QString text;
    worker_->run([&] { text = worker_->errorText; });
    return text;
}

QString SimulatedBus::portPath() const
{
    QString path;
    worker_->run([&] { path = worker_->port.path(); });
    return path;
}

bool SimulatedBus::addDrive(const DriveConfig &config)
{
    bool added = false;
    worker_->run([&] { added = worker_->addDrive(config); });
    return added;
}

int SimulatedBus::memory(int address, int number) const
{
    std::optional<int> value;
    worker_->run([&] {
        if (Bus::Station *station = worker_->bus.find(address))
            value = station->drive.memory(number, monotonicUs());
    });
    return value.value_or(NoValue);
}

int SimulatedBus::flash(int address, int number) const
{
    std::optional<int> value;
    worker_->run([&] {
        if (const Bus::Station *station = worker_->bus.find(address))
            value = station->drive.flash(number);
    });
    return value.value_or(NoValue);
}

QVector<WireEntry> SimulatedBus::log() const
{
    QVector<WireEntry> entries;
    worker_->run([&] { entries = worker_->bus.log.entries(); });
    return entries;
}

void SimulatedBus::clearLog()
{
    worker_->run([this] { worker_->bus.log.clear(); });
}

QByteArray SimulatedBus::command(const QByteArray &line)
{
    QByteArray answer;
    worker_->run([&] { answer = runCommand({worker_->bus, worker_->port, monotonicUs()}, line); });
    return answer;
}

} // namespace z7sim
