#pragma once

#include "control/services/services.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/// An empty working folder, in which the program's services begin as at its start. At the end the services
/// are shut down, as when the window closes, and the working folder of before is back.
class WorkingFolder
{
public:
    WorkingFolder() { QDir::setCurrent(m_folder.path()); }
    ~WorkingFolder()
    {
        Z7Services::shutdown();
        QDir::setCurrent(m_before);
    }
    Q_DISABLE_COPY(WorkingFolder)

    QString path() const { return m_folder.path(); }

    /// Puts a file into the current folder.
    static void write(const QString &fileName, const QByteArray &content)
    {
        QFile file(fileName);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("%s: %s", qPrintable(fileName), qPrintable(file.errorString()));
    }
    /// The same with a text, in the bytes of the definition and language files, Latin-1.
    static void writeText(const QString &fileName, const QString &text) { write(fileName, text.toLatin1()); }
    /// The content of a file; nothing if it does not exist.
    static QByteArray read(const QString &fileName)
    {
        QFile file(fileName);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// What the current folder holds, hidden files and devices too.
    static QStringList files()
    {
        return QDir().entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

private:
    const QString m_before = QDir::currentPath();
    QTemporaryDir m_folder;
};
