#include "tests/e2e/tour/transcript.h"

#include "tests/e2e/telegrams.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

#include <cstdio>

namespace {

using z7sim::WireEntry;

const QString fileName = QStringLiteral("tour.md");

/// Runs of telegrams up to this length are shown whole.
constexpr int shortRun = 4;

struct Exchange
{
    qint64 us;
    QString request;
    QByteArray reply;

    /// Telegrams of one command make a run, the unanswered ones another.
    QString kind() const { return request.left(2) + (reply.isEmpty() ? QStringLiteral("-") : QString()); }
};

QVector<Exchange> exchanges(const QVector<WireEntry> &log)
{
    QVector<Exchange> list;
    for (const WireEntry &entry : log) {
        if (entry.direction == WireEntry::Request)
            list.append({entry.us, Telegrams::text(entry.bytes), QByteArray()});
        else if (entry.direction == WireEntry::Reply && !list.isEmpty())
            list.last().reply += entry.bytes;
    }
    return list;
}

QString line(const Exchange &exchange, qint64 startUs)
{
    const QString reply = exchange.reply.isEmpty() ? QStringLiteral("no answer")
                                                   : QString::fromLatin1(exchange.reply.toHex(' '));
    return QStringLiteral("%1 ms  %2 %3")
        .arg((exchange.us - startUs) / 1000.0, 9, 'f', 1)
        .arg(exchange.request, -28)
        .arg(reply);
}

int endOfRun(const QVector<Exchange> &list, int begin)
{
    int end = begin;
    while (end < list.size() && list.at(end).kind() == list.at(begin).kind())
        ++end;
    return end;
}

void appendRun(QStringList &lines, const QVector<Exchange> &run, qint64 startUs)
{
    if (run.size() <= shortRun) {
        for (const Exchange &exchange : run)
            lines.append(line(exchange, startUs));
        return;
    }
    lines.append(line(run.first(), startUs));
    lines.append(QStringLiteral("              ... %1 more of this kind ...").arg(run.size() - 2));
    lines.append(line(run.last(), startUs));
}

} // namespace

Transcript::Transcript(const QString &folder)
    : m_folder(folder)
    , m_file(m_folder.filePath(fileName))
{
    for (const QString &picture : m_folder.entryList({QStringLiteral("[0-9][0-9]-*.png")}))
        m_folder.remove(picture);
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return;
    write(QStringLiteral("# Guided tour\n"));
    write(
        QStringLiteral("On the wire: request, then the bytes of the reply. 09 log on, 05 status, 07 version, "
                       "04 read, 03 write, 02 store; A is the bus address, pw the password, p the "
                       "parameter, v the value.\n"));
}

void Transcript::beginStep(const QString &title)
{
    write(QStringLiteral("\n## %1. %2\n").arg(++m_step).arg(title));
    std::printf("%2d. %s\n", m_step, qPrintable(title));
    std::fflush(stdout);
}

void Transcript::say(const QString &text)
{
    write(text + QLatin1Char('\n'));
}

void Transcript::showWire(const QVector<WireEntry> &log)
{
    const QVector<Exchange> list = exchanges(log);
    if (list.isEmpty())
        return;
    QStringList lines;
    for (int begin = 0; begin < list.size(); begin = endOfRun(list, begin))
        appendRun(lines, list.mid(begin, endOfRun(list, begin) - begin), list.first().us);
    write(QStringLiteral("```\n") + lines.join(QLatin1Char('\n')) + QStringLiteral("\n```\n"));
}

void Transcript::takePicture(const QString &name)
{
    const QString file = QStringLiteral("%1-%2.png").arg(++m_picture, 2, 10, QLatin1Char('0')).arg(name);
    if (!QGuiApplication::primaryScreen()->grabWindow(0).save(m_folder.filePath(file)))
        qWarning("no picture %s", qPrintable(file));
    write(QStringLiteral("![%1](%1)\n").arg(file));
}

void Transcript::write(const QString &text)
{
    m_file.write(text.toUtf8() + '\n');
    m_file.flush();
}
