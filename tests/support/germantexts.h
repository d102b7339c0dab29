#pragma once

#include <QFile>
#include <QMap>
#include <QString>
#include <QStringList>

/// A text of the program in German, which is what it shows without a translation.
struct GermanText
{
    QString text;
    bool onlyWhenItHappens = false; ///< a person who opens everything once may not have met it
};

/// Every text of the program, by "section/key", from the list beside this header. Needs Z7_SOURCE_DIR, the
/// folder of the sources.
inline QMap<QString, GermanText> germanTexts()
{
    QFile file(QStringLiteral(Z7_SOURCE_DIR "/tests/support/germantexts.txt"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s", qPrintable(file.errorString()));
    QMap<QString, GermanText> texts;
    QString section;
    const QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
    for (const QString &line : lines) {
        if (line.startsWith('['))
            section = line.mid(1, line.size() - 2);
        const bool isText = line.contains('=') && !line.startsWith("# ");
        if (!isText || line.startsWith('['))
            continue;
        const bool rare = line.startsWith('*');
        QString text = line.section('=', 1);
        texts.insert(section + '/' + line.section('=', 0, 0).mid(rare), {text.replace("\\n", "\n"), rare});
    }
    return texts;
}
