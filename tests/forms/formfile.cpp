#include "tests/forms/formfile.h"

#include <QDir>
#include <QFile>
#include <QXmlStreamReader>

namespace {

const QString folder = QStringLiteral(Z7_SOURCE_DIR "/forms");

/// The class of what the element makes; empty if it makes nothing.
QString kindMadeBy(const QXmlStreamReader &xml)
{
    if (xml.name() == QLatin1String("action"))
        return QStringLiteral("QAction");
    if (xml.name() == QLatin1String("spacer"))
        return QStringLiteral("QSpacerItem");
    if (xml.name() != QLatin1String("widget") && xml.name() != QLatin1String("layout"))
        return {};
    const QString kind = xml.attributes().value(QLatin1String("class")).toString();
    return kind == QLatin1String("Line") ? QStringLiteral("QFrame") : kind;
}

} // namespace

FormFile::FormFile(const QString &form)
{
    QFile file(folder + QLatin1Char('/') + form + QStringLiteral(".ui"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s: %s", qPrintable(file.fileName()), qPrintable(file.errorString()));
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QString kind = kindMadeBy(xml);
        if (!kind.isEmpty())
            m_objects.append({xml.attributes().value(QLatin1String("name")).toString(), kind});
    }
    if (xml.hasError())
        qFatal("%s: %s", qPrintable(file.fileName()), qPrintable(xml.errorString()));
}

QStringList FormFile::all()
{
    QStringList forms;
    const QStringList files = QDir(folder).entryList({QStringLiteral("*.ui")}, QDir::Files);
    for (const QString &file : files)
        forms.append(file.chopped(3));
    return forms;
}

QStringList FormFile::names() const
{
    QStringList names;
    for (const FormObject &object : m_objects)
        names.append(object.name);
    return names;
}

QString FormFile::kindOf(const QString &name) const
{
    const int index = names().indexOf(name);
    return index < 0 ? QString() : m_objects.at(index).kind;
}

QStringList repeatedNames(QStringList names)
{
    QStringList repeated;
    names.sort();
    for (int i = 1; i < names.size(); ++i) {
        if (names.at(i) == names.at(i - 1))
            repeated.append(names.at(i));
    }
    return repeated;
}
