#pragma once

#include <QMap>
#include <QString>

/// The settings that a user can change, kept in group OPTIONS of "Z7Properties.ini" in the working folder.
///
/// A getter stores its default under its key if the key is missing, so that a default that was asked for is
/// saved. A text that is no number reads as 0 and stays as it is. Main thread only.
class Z7Options
{
public:
    /// Base name of the language file; default "deutsch".
    QString language();
    /// Time in ms that a transfer or polling pass waits for the write, and again for the first reply byte;
    /// 140.
    int timeout();
    /// The same in ms for the scan of a port; 20.
    int timeoutScanning();
    /// USB vendor identifier of the ports that the wizard prefers; 1027 (0x0403).
    int defaultVendorID();
    /// Pause in ms between the end of one polling pass and the start of the next; 1000. Below 1 polling is
    /// off.
    int pollingInterval();

    void setLanguage(const QString &language);
    void setTimeout(int ms);
    void setTimeoutScanning(int ms);
    void setDefaultVendorID(int vendorID);
    void setPollingInterval(int ms);

    /// Reads every key of the group; a missing file leaves everything as it is.
    void load();
    /// Writes the keys above that are known; foreign keys of the file stay.
    void save() const;

private:
    QString text(const QString &key, const QString &defaultText);
    int number(const QString &key, const QString &defaultText);

    QMap<QString, QString> m_values;
};
