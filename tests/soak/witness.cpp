#include "tests/soak/witness.h"

#include <QApplication>
#include <QEvent>
#include <QMap>
#include <QMessageBox>
#include <QMutex>
#include <QWidget>

#include <cstdio>

namespace {

constexpr int beatMs = 10;
/// More different ones would tell nothing new.
constexpr int mostMessages = 50;

QMutex mutex;
QMap<QString, int> seenMessages;

void remember(const QString &message)
{
    const QMutexLocker locker(&mutex);
    if (seenMessages.contains(message) || seenMessages.size() < mostMessages)
        ++seenMessages[message];
}

bool isOfThePlatform(const QString &message)
{
    return message == QLatin1String("This plugin does not support propagateSizeHints()");
}

// May be called on any thread.
void takeMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (isOfThePlatform(message))
        return;
    std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
    if (type != QtDebugMsg && type != QtInfoMsg)
        remember(QStringLiteral("printed: ") + message);
}

QString describe(const QWidget *window)
{
    if (const auto *box = qobject_cast<const QMessageBox *>(window))
        return QStringLiteral("message box: %1 %2").arg(box->text(), box->informativeText());
    return QStringLiteral("window: %1 %2").arg(window->objectName(), window->windowTitle());
}

} // namespace

Witness::Witness()
{
    qInstallMessageHandler(takeMessage);
    connect(&m_heart, SIGNAL(timeout()), SLOT(beat()));
    m_heart.setTimerType(Qt::PreciseTimer);
    m_sinceBeat.start();
    m_heart.start(beatMs);
}

Witness::~Witness()
{
    qInstallMessageHandler(nullptr);
}

void Witness::beat()
{
    const int heldMs = int(m_sinceBeat.restart()) - beatMs;
    if (heldMs <= m_longestHoldMs)
        return;
    m_longestHoldMs = heldMs;
    m_heldWhile = m_doing;
}

void Witness::lookForWindows()
{
    for (QWidget *window : {QApplication::activeModalWidget(), QApplication::activePopupWidget()}) {
        if (!window)
            continue;
        remember(describe(window));
        window->close();
    }
}

void Witness::watchProgress(QWidget *bar)
{
    bar->installEventFilter(this);
}

bool Witness::eventFilter(QObject *watched, QEvent *event)
{
    m_transactions += event->type() == QEvent::Hide;
    return QObject::eventFilter(watched, event);
}

QStringList Witness::messages() const
{
    const QMutexLocker locker(&mutex);
    QStringList texts;
    for (auto message = seenMessages.constBegin(); message != seenMessages.constEnd(); ++message)
        texts.append(QStringLiteral("%1 time(s) %2").arg(message.value()).arg(message.key()));
    return texts;
}
