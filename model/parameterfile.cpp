#include "model/parameterfile.h"

#include "control/services/language.h"
#include "control/services/services.h"
#include "control/services/wholefile.h"
#include "model/parameterconflicts.h"
#include "model/parameterdefinitions.h"

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace {

using Kind = ParameterFileOddity::Kind;

/// A large file of another kind would fill the memory with what is odd in it.
constexpr int mostOddities = 1000;
constexpr int mostCharacters = 80;

constexpr QLatin1String documentElement("Z7Device");
constexpr QLatin1String infoElement("DeviceInfo");
constexpr QLatin1String listElement("Z7-Parameter");
constexpr QLatin1String parameterElement("parameter");

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
    writer.writeStartElement(documentElement);
    writer.writeEmptyElement(infoElement);
    writer.writeAttribute(QStringLiteral("SoftwareVersion"), m_softwareVersion);
    writer.writeStartElement(listElement);
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
        writer.writeEmptyElement(parameterElement);
        writer.writeAttribute(QStringLiteral("id"), QString::number(param.number));
        writer.writeAttribute(QStringLiteral("val"), QString::number(value));
    }
}

QString Z7ParameterFile::load(const QString &path)
{
    m_userParams.params.clear();
    m_oddities.clear();
    m_hasVersion = false;
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
    noteUnknownVersion();
    noteWhatIsMissing(reader);
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
        else if (reader.name() == infoElement)
            readDeviceInfo(reader);
        else if (reader.name() == listElement)
            readParameters(reader);
        else if (reader.name() != documentElement)
            noteElement(reader);
    }
}

void Z7ParameterFile::readDeviceInfo(const QXmlStreamReader &reader)
{
    const QString version = reader.attributes().value(QLatin1String("SoftwareVersion")).toString();
    if (version.isEmpty())
        return;
    if (m_hasVersion)
        noteElement(reader);
    m_hasVersion = true;
    m_softwareVersion = version;
    m_userParams.softwareVersion = version;
    m_versionLine = reader.lineNumber();
}

/// Goes to the end of the document: parameters behind the end of their element count too.
void Z7ParameterFile::readParameters(QXmlStreamReader &reader)
{
    const Z7ParamDefinitions *definitions = nullptr;
    bool isInside = true;
    while (!reader.atEnd() && !reader.hasError()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::EndElement && reader.name() == listElement)
            isInside = false;
        if (token != QXmlStreamReader::StartElement)
            continue;
        const bool isParameter = reader.name() == parameterElement;
        if (!isParameter || !isInside)
            noteElement(reader);
        if (!isParameter)
            continue;
        if (!definitions)
            definitions = Z7Services::instance()->definitions(m_softwareVersion);
        readParameter(reader, *definitions);
    }
}

void Z7ParameterFile::readParameter(const QXmlStreamReader &reader, const Z7ParamDefinitions &definitions)
{
    const QXmlStreamAttributes attributes = reader.attributes();
    const QStringRef id = attributes.value(QLatin1String("id"));
    const QStringRef value = attributes.value(QLatin1String("val"));
    if (id.isEmpty() || value.isEmpty()) {
        note(Kind::AttributeMissing, reader.lineNumber(), (id.isEmpty() ? value : id).toString());
        return;
    }
    bool isNumber = false;
    bool isValue = false;
    const int number = id.toInt(&isNumber);
    const Z7DeviceParam param(number, value.toInt(&isValue), definitions.isUnsigned(number), true);
    if (!isNumber)
        note(Kind::NumberUnreadable, reader.lineNumber(), id.toString());
    else if (m_userParams.contains(number))
        note(Kind::RepeatedParameter, reader.lineNumber(), value.toString(), number);
    if (!isValue)
        note(Kind::ValueUnreadable, reader.lineNumber(), value.toString(), number);
    else if (isNumber)
        noteObjection(reader, definitions, param);
    m_userParams.insert(param);
}

void Z7ParameterFile::noteElement(const QXmlStreamReader &reader)
{
    const QStringRef name = reader.name();
    const bool isKnown =
        name == documentElement || name == infoElement || name == listElement || name == parameterElement;
    note(isKnown ? Kind::MisplacedElement : Kind::UnknownElement, reader.lineNumber(), name.toString());
}

/// What would stand against writing the value.
void Z7ParameterFile::noteObjection(
    const QXmlStreamReader &reader, const Z7ParamDefinitions &definitions, const Z7DeviceParam &param)
{
    const auto objection =
        m_hasVersion && definitions.hasRows() ? definitionFinding(definitions, param) : std::nullopt;
    if (!objection)
        return;
    Kind kind = Kind::ValueOutOfLimits;
    if (objection->kind == WriteFinding::Kind::UnknownParameter)
        kind = Kind::UnknownParameter;
    else if (objection->kind == WriteFinding::Kind::ReadOnly)
        kind = Kind::ReadOnlyParameter;
    note(kind, reader.lineNumber(), QString::number(param.value), param.number);
}

/// Asks for the version in force alone: definitions that were asked for once are kept to the end.
void Z7ParameterFile::noteUnknownVersion()
{
    if (m_hasVersion && !Z7Services::instance()->definitions(m_softwareVersion)->hasRows())
        note(Kind::VersionUnknown, m_versionLine, m_softwareVersion);
}

void Z7ParameterFile::noteWhatIsMissing(const QXmlStreamReader &reader)
{
    if (reader.hasError())
        note(Kind::BrokenOff, reader.lineNumber(), reader.errorString());
    if (!m_hasVersion)
        note(Kind::VersionMissing, 0, QString());
    if (m_userParams.params.isEmpty())
        note(Kind::NoParameters, 0, QString());
}

void Z7ParameterFile::note(Kind kind, qint64 line, const QString &text, int number)
{
    if (m_oddities.size() < mostOddities)
        m_oddities.append({kind, number, text.left(mostCharacters), static_cast<int>(line)});
    else if (m_oddities.size() == mostOddities)
        m_oddities.append({Kind::More, -1, QString(), static_cast<int>(line)});
}
