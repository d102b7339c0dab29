#pragma once

#include "model/device.h"
#include "model/parameterfileoddity.h"

#include <QString>
#include <QVector>

class QXmlStreamReader;
class QXmlStreamWriter;
class Z7ParamDefinitions;

/// A parameter set in a file ".z7param": the writable parameters of one drive of one software version, to be
/// put on another drive of that version, or on the same one later.
///
///     <Z7Device><DeviceInfo SoftwareVersion="V123"/><Z7-Parameter><parameter id="11" val="100"/>...
///
/// Neither reading nor writing touches a drive or the user's pending changes. Both return the text of what
/// went wrong, in the user's language or in that of the XML reader, and an empty text if nothing did. Main
/// thread only.
class Z7ParameterFile
{
public:
    Z7ParameterFile() = default;
    /// What save() is to write: every writable parameter of `savedDevice`, those in `changes` with the user's
    /// value, and one that was never read with 0.
    Z7ParameterFile(const QString &path, const Z7Device &savedDevice, const Z7DeviceParamSet &changes);

    /// Writes the file, or fails and leaves what stood there byte for byte. A link stays, and its target is
    /// written. What is no file, a pipe or a device for instance, is not written to.
    QString save() const;
    /// Replaces the parameters by those of the file. What was read before an error stays usable. The version
    /// is not judged, nor are the values: a bad number is 0, read-only and unknown numbers are taken. All
    /// that is in oddities().
    QString load(const QString &path);

    const QString &softwareVersion() const { return m_softwareVersion; }
    /// The user's changes on saving; what the file held on reading.
    const Z7DeviceParamSet &userParams() const { return m_userParams; }

    /// What was odd in the file that was opened last, in the order in which it was met; of a very odd file
    /// the first thousand. Where nothing could be looked up, the parameters themselves count as right.
    const QVector<ParameterFileOddity> &oddities() const { return m_oddities; }

    static QString fileSuffix() { return QStringLiteral(".z7param"); }

private:
    void writeDocument(QXmlStreamWriter &writer) const;
    void writeParameters(QXmlStreamWriter &writer) const;
    void readDocument(QXmlStreamReader &reader);
    void readDeviceInfo(const QXmlStreamReader &reader);
    void readParameters(QXmlStreamReader &reader);
    void readParameter(const QXmlStreamReader &reader, const Z7ParamDefinitions &definitions);
    void noteElement(const QXmlStreamReader &reader);
    void noteObjection(
        const QXmlStreamReader &reader, const Z7ParamDefinitions &definitions, const Z7DeviceParam &param);
    void noteUnknownVersion();
    void noteWhatIsMissing(const QXmlStreamReader &reader);
    void note(ParameterFileOddity::Kind kind, qint64 line, const QString &text, int number = -1);

    QString m_path;
    QString m_softwareVersion;
    Z7Device m_device;
    Z7DeviceParamSet m_userParams;
    QVector<ParameterFileOddity> m_oddities;
    bool m_hasVersion = false; ///< the file that was opened last tells its version
    qint64 m_versionLine = 0; ///< where it does so last
};
