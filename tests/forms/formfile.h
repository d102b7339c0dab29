#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// An object that a form makes: a widget, a layout, a spacer or an action.
struct FormObject
{
    QString name;
    QString kind; ///< its class

    bool operator==(const FormObject &other) const { return name == other.name && kind == other.kind; }
};

/// A form as its file has it.
class FormFile
{
public:
    /// Reads a form of the forms folder, "rs485dialog"; ends the test program if it cannot be read.
    explicit FormFile(const QString &form);

    /// All forms of the forms folder, by name.
    static QStringList all();

    /// In the order of the file, the form's own widget first.
    const QList<FormObject> &objects() const { return m_objects; }
    QStringList names() const;
    bool has(const QString &name) const { return names().contains(name); }
    /// Class of the object of that name; empty if there is none.
    QString kindOf(const QString &name) const;

private:
    QList<FormObject> m_objects;
};

/// The names that stand more than once in a list.
QStringList repeatedNames(QStringList names);
