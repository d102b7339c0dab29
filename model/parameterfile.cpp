#include "model/parameterfile.h"

#include "control/services/language.h"
#include "control/services/services.h"
#include "control/services/wholefile.h"
#include "model/parameterdefinitions.h"

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace {

QString cannotOpenText()
{
    return commonText("CannotOpenFile", "Die Datei kann nicht geöffnet werden");
}

/// Entities have no place in a parameter set, and a short document could grow without bounds by them.
void refuseEntities(QXmlStreamReader &reader)
{
    if (!reader.entityDeclarations().isEmpty())
        reader.raiseError(QStringLiteral("Entity declarations are not allowed."));
}

} // namespace

Z7ParameterFile::Z7ParameterFile(
    const QString &path, const Z7Device &savedDevice, const Z7DeviceParamSet &changes)
    : m_path(path)
    , m_softwareVersion(savedDevice.softwareVersion)
    , m_device(savedDevice)
    , m_userParams(changes)
{
}

QString Z7ParameterFile::save() const
{
    QByteArray document;
    QXmlStreamWriter writer(&document);
    writeDocument(writer);
    return WholeFile::write(m_path, document) ? QString() : cannotOpenText();
}

void Z7ParameterFile::writeDocument(QXmlStreamWriter &writer) const
{
    writer.writeStartDocument();
    writer.writeStartElement(QStringLiteral("Z7Device"));
    writer.writeEmptyElement(QStringLiteral("DeviceInfo"));
    writer.writeAttribute(QStringLiteral("SoftwareVersion"), m_softwareVersion);
    writer.writeStartElement(QStringLiteral("Z7-Parameter"));
    writeParameters(writer);
    writer.writeEndDocument();
}

void Z7ParameterFile::writeParameters(QXmlStreamWriter &writer) const
{
    const Z7ParamDefinitions *definitions = Z7Services::instance()->definitions(m_softwareVersion);
    for (const Z7DeviceParam &param : m_device.parameterSet.params) {
        if (definitions->isReadOnly(param.number))
            continue;
        const Z7DeviceParam *changed = m_userParams.find(param.number);
        const int value = changed ? changed->value : param.value;
        writer.writeEmptyElement(QStringLiteral("parameter"));
        writer.writeAttribute(QStringLiteral("id"), QString::number(param.number));
        writer.writeAttribute(QStringLiteral("val"), QString::number(value));
    }
}

QString Z7ParameterFile::load(const QString &path)
{
    m_userParams.params.clear();
    QFile file(path);
    // A pipe or a device in the place of a file could be read for ever.
    const bool isFile = QFileInfo(path).isFile();
    if (!isFile || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        return languageText("Parameterfile", "Parameterfile", "Parameterdatei");
    QXmlStreamReader reader(&file);
    // References inside of the document type are expanded before it can be refused.
    reader.setEntityExpansionLimit(0);
    if (file.size() > WholeFile::largestFile)
        reader.raiseError(QStringLiteral("The file is larger than 16 MB."));
    readDocument(reader);
    return reader.hasError() ? reader.errorString() : QString();
}

void Z7ParameterFile::readDocument(QXmlStreamReader &reader)
{
    while (!reader.atEnd() && !reader.hasError()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::DTD)
            refuseEntities(reader);
        else if (token != QXmlStreamReader::StartElement)
            continue;
        else if (reader.name() == QLatin1String("DeviceInfo"))
            readDeviceInfo(reader);
        else if (reader.name() == QLatin1String("Z7-Parameter"))
            readParameters(reader);
    }
}

void Z7ParameterFile::readDeviceInfo(const QXmlStreamReader &reader)
{
    const QString version = reader.attributes().value(QLatin1String("SoftwareVersion")).toString();
    if (version.isEmpty())
        return;
    m_softwareVersion = version;
    m_userParams.softwareVersion = version;
}

/// Goes to the end of the document: parameters behind the end of their element count too.
void Z7ParameterFile::readParameters(QXmlStreamReader &reader)
{
    while (!reader.atEnd() && !reader.hasError()) {
        if (reader.readNext() == QXmlStreamReader::StartElement
            && reader.name() == QLatin1String("parameter"))
            readParameter(reader);
    }
}

void Z7ParameterFile::readParameter(const QXmlStreamReader &reader)
{
    const QXmlStreamAttributes attributes = reader.attributes();
    const QStringRef id = attributes.value(QLatin1String("id"));
    const QStringRef value = attributes.value(QLatin1String("val"));
    if (id.isEmpty() || value.isEmpty())
        return;
    const int number = id.toInt();
    const int isUnsigned = Z7Services::instance()->definitions(m_softwareVersion)->isUnsigned(number);
    m_userParams.insert(Z7DeviceParam(number, value.toInt(), isUnsigned, true));
}
