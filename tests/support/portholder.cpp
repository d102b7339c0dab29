#include "tests/support/portholder.h"

PortHolder::PortHolder(const QString &portName)
    : PortHolder(QStringList(portName))
{
}

std::unique_ptr<PortHolder> PortHolder::ofFile(const QString &file)
{
    return std::unique_ptr<PortHolder>(new PortHolder({QStringLiteral("--file"), file}));
}

PortHolder::PortHolder(const QStringList &arguments)
{
    m_program.start(QStringLiteral(Z7_HOLDPORT), arguments);
    if (!m_program.waitForReadyRead())
        qFatal("%s opens nothing", Z7_HOLDPORT);
}

void PortHolder::end()
{
    m_program.closeWriteChannel();
    m_program.waitForFinished();
}

void PortHolder::kill()
{
    m_program.kill();
    m_program.waitForFinished();
}
