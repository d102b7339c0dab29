#pragma once

#include <QMap>
#include <QString>

#include <array>

/// The settings that a user can change, kept in group OPTIONS of "Z7Properties.ini".
///
/// A getter stores its default under its key if the key is missing, so that a default that was asked for is
/// saved. A text that is no number reads as 0 and stays as it is. Main thread only.
class Z7Options
{
public:
    /// What there is to say of a setting stands in its row of the table in options.cpp; a name without its
    /// row does not compile.
    enum Name {
        Language,
        Timeout,
        TimeoutScanning,
        DefaultVendorID,
        PollingInterval,
        Count, ///< stays behind the last setting
    };
    enum Kind { Text, Number };
    struct Row
    {
        Name name;
        const char *key; ///< in the file
        Kind kind;
        const char *defaultText;
        int lowest; ///< of the numbers that the options dialog takes, as is `highest`
        int highest;
        const char *field; ///< object name of its widget in the options dialog
    };
    using Rows = std::array<Row, Count>;
    /// In the order of the names.
    static const Rows &rows();

    /// The file lies in `folder`; in the current folder of each access if that is empty.
    explicit Z7Options(const QString &folder = QString());

    /// Base name of the language file; default "deutsch".
    QString language() { return text(Language); }
    /// Time in ms that a transfer or polling pass waits for the write, and again for the first reply byte;
    /// 140.
    int timeout() { return number(Timeout); }
    /// The same in ms for the scan of a port; 20.
    int timeoutScanning() { return number(TimeoutScanning); }
    /// USB vendor identifier of the ports that the wizard prefers; 1027 (0x0403).
    int defaultVendorID() { return number(DefaultVendorID); }
    /// Pause in ms between the end of one polling pass and the start of the next; 1000. Below 1 polling is
    /// off.
    int pollingInterval() { return number(PollingInterval); }

    void setLanguage(const QString &language) { setText(Language, language); }
    void setTimeout(int ms) { setNumber(Timeout, ms); }
    void setTimeoutScanning(int ms) { setNumber(TimeoutScanning, ms); }
    void setDefaultVendorID(int vendorID) { setNumber(DefaultVendorID, vendorID); }
    void setPollingInterval(int ms) { setNumber(PollingInterval, ms); }

    /// The same for whoever goes through the rows.
    int number(Name name);
    void setNumber(Name name, int value);

    /// Reads every key of the group; a missing file leaves everything as it is.
    void load();
    /// Writes the keys of the rows that are known; foreign keys of the file stay.
    void save() const;

private:
    QString text(Name name);
    void setText(Name name, const QString &text);

    QString m_fileName;
    QMap<QString, QString> m_values;
};
