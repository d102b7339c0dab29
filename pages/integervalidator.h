#pragma once

#include <QIntValidator>
#include <QLocale>

/// Lets whole numbers be typed as the program reads them: digits and a sign. A plain QIntValidator would take
/// the separators that the user's language puts between groups of digits; "1.200" could then stand in a field
/// whose last accepted value is 1.
class IntegerValidator : public QIntValidator
{
public:
    explicit IntegerValidator(QObject *parent)
        : QIntValidator(parent)
    {
        rejectSeparators();
    }

    IntegerValidator(int bottom, int top, QObject *parent)
        : QIntValidator(bottom, top, parent)
    {
        rejectSeparators();
    }

private:
    void rejectSeparators()
    {
        QLocale plain = QLocale::c();
        plain.setNumberOptions(QLocale::RejectGroupSeparator);
        setLocale(plain);
    }
};
