#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/// An empty folder that is the current one while the object lives.
class WorkingFolder
{
public:
    WorkingFolder() { QDir::setCurrent(m_folder.path()); }
    ~WorkingFolder() { QDir::setCurrent(m_before); }
    Q_DISABLE_COPY(WorkingFolder)

    QString path() const { return m_folder.path(); }

    static void write(const QString &fileName, const QByteArray &content)
    {
        QFile file(fileName);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("%s: %s", qPrintable(fileName), qPrintable(file.errorString()));
    }
    /// The content of a file; nothing if it does not exist.
    static QByteArray read(const QString &fileName)
    {
        QFile file(fileName);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QString m_before = QDir::currentPath();
    QTemporaryDir m_folder;
};
