#pragma once

#include <QMap>
#include <QString>
#include <QVector>

/// What the person has typed and not withdrawn, drive by drive: so the fields of the program have to look.
class TypedChanges
{
public:
    /// Takes the room for so many edits at once, so that keeping count of them is no growth of the process.
    explicit TypedChanges(int edits) { m_typed.reserve(edits); }

    void type(int drive, int number, int value);
    void empty(int drive, int number) { m_pending[drive].remove(number); }

    QMap<int, int> of(int drive) const { return m_pending.value(drive); }
    /// The text that stands in the field of a parameter.
    QString text(int drive, int number) const;
    int count(int drive) const { return m_pending.value(drive).size(); }
    int count() const;
    /// True if the person has ever typed that value for that parameter of that drive.
    bool wasTyped(int drive, int number, int value) const;

private:
    struct Typed
    {
        int drive;
        int number;
        int value;
    };

    QMap<int, QMap<int, int>> m_pending; ///< by bus address, then by parameter
    QVector<Typed> m_typed;
};
