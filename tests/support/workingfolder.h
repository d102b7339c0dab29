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

    /// Puts a file there, its text as Latin-1 bytes.
    void write(const QString &fileName, const QString &text) const
    {
        QFile file(m_folder.filePath(fileName));
        if (!file.open(QIODevice::WriteOnly) || file.write(text.toLatin1()) < 0)
            qFatal("cannot write %s", qPrintable(fileName));
    }

private:
    const QString m_before = QDir::currentPath();
    QTemporaryDir m_folder;
};
