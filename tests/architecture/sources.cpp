#include "tests/architecture/sources.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

QString contentOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

bool isInside(const QString &path, const QString &folder)
{
    return path == folder || path.startsWith(folder + QLatin1Char('/'));
}

QStringList sourcesUnder(const QString &root, const QStringList &folders)
{
    QStringList sources;
    const QStringList names {"*.cpp", "*.h", "*.c", "*.ui"};
    for (const QString &folder : folders) {
        const QString path = root + QLatin1Char('/') + folder;
        QDirIterator it(path, names, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
            sources.append(QDir(root).relativeFilePath(it.next()));
        if (folder.endsWith(QLatin1String(".cpp")) && QFile::exists(path))
            sources.append(folder);
    }
    sources.removeDuplicates();
    return sources;
}

QList<Include> includesOf(const QString &fileName)
{
    static const QRegularExpression pattern(
        QStringLiteral(R"((?:^\s*#\s*include\s*|<header[^>]*>)([<"]?)([^<>"\n]+))"),
        QRegularExpression::MultilineOption);
    QList<Include> includes;
    auto matches = pattern.globalMatch(contentOf(fileName));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        includes.append({match.captured(2), match.captured(1) == QLatin1String("\"")});
    }
    return includes;
}
