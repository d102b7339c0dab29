#pragma once

#include <QProcess>
#include <QString>

#include <memory>

/// Another program, "holdport", that has a serial port open for as long as this lives. The port is one of
/// ListedPorts.
class PortHolder
{
public:
    /// Opens the port as a program does that uses Qt, with a lock file. Ends the test program if that fails.
    explicit PortHolder(const QString &portName);
    /// Opens a file without any lock.
    static std::unique_ptr<PortHolder> ofFile(const QString &file);
    ~PortHolder() { end(); }

    qint64 processId() const { return m_program.processId(); }
    static QString name() { return QStringLiteral("holdport"); }
    /// Ends it as a person does.
    void end();
    /// Ends it so that it cannot tidy up.
    void kill();

private:
    explicit PortHolder(const QStringList &arguments);

    QProcess m_program;
};
