#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// The sources of the project, as the tests of this folder read them.

struct Include
{
    QString path;
    bool isQuoted;
};

/// UTF-8; nothing if there is no such file.
QString contentOf(const QString &fileName);

/// True if a path is the file or folder, or inside it. Both relative to the same root.
bool isInside(const QString &path, const QString &folder);

/// The sources and forms in these folders, relative to the root, each once. A folder may be a single source
/// as well.
QStringList sourcesUnder(const QString &root, const QStringList &folders);

/// What a source includes, and what a form makes its ui_ header include.
QList<Include> includesOf(const QString &fileName);
