#pragma once

#include <QMap>
#include <QString>

/// The texts of the language in force, kept in "<language>.z7lang".
///
/// The table fills itself: a text that the file lacks is added with the default of the place that asks, and
/// the whole table is written back at the end of a run. Copying and translating that file makes a new
/// language. Main thread only.
class Z7Language
{
public:
    /// The files lie in `folder`; in the current folder of each access if that is empty.
    explicit Z7Language(const QString &folder = QString())
        : m_folder(folder)
    {
    }

    /// The text of `section`/`key`. The first default that a run meets for a key wins; an entry of the file,
    /// an empty one too, beats every default.
    QString text(const QString &section, const QString &key, const QString &defaultText);

    /// Reads the file of the language `name`; a missing file leaves the table empty.
    void load(const QString &name);
    /// Writes the table into the file of the language last loaded.
    void save() const;

    static QString fileSuffix() { return QStringLiteral(".z7lang"); }

private:
    QString fileName() const;

    QString m_folder;
    QString m_language;
    QMap<QString, QString> m_texts;
};

/// The text of `section`/`key` in the process's language table. The default is UTF-8.
QString languageText(const char *section, const char *key, const char *defaultText);
QString languageText(const char *section, const char *key, const QString &defaultText);

/// One section of the process's language table, called as a function for each of its texts:
///
///     constexpr TextSection addressTexts("DialogRS485");
///     label->setText(addressTexts("NewAdress", "Neue Adresse:"));
class TextSection
{
public:
    /// `name` has static lifetime.
    constexpr explicit TextSection(const char *name)
        : m_name(name)
    {
    }

    /// The text of `key`. The default is UTF-8.
    QString operator()(const char *key, const char *defaultText) const
    {
        return languageText(m_name, key, defaultText);
    }

private:
    const char *m_name;
};

inline constexpr TextSection commonText("Common");
/// What the window knows, in its status bar and in what opens from there.
inline constexpr TextSection statusBarText("DialogStatusBar");
/// Tool tips and descriptions of fields and marks, which screen readers tell as well.
inline constexpr TextSection toolTipText("DialogToolTip");
/// What keys do, and the answers to the program's own questions.
inline constexpr TextSection keyboardText("DialogKeyboard");
/// The words on the pictures, the legends of the columns, and what to do first.
inline constexpr TextSection pictureText("DialogPicture");

/// The translation of a text of the parameter definitions (a name, a unit, an option), which is its own key
/// and default. An empty one is looked up as well; the file keeps it outside of the sections.
QString definitionText(const QString &text);
