#pragma once

#include "control/services/services.h"
#include "model/device.h"
#include "model/parameterdefinitions.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QStringList>
#include <QTest>

// What the tests of the pages share: definitions, records of drives, and what a person gets back.

/// Makes parameters known in a version, each as its line in a definition file.
inline void defineParameters(const QString &version, const QStringList &lines)
{
    for (const QString &line : lines)
        Z7Services::instance()->definitions(version)->parseLine(line);
}

/// A parameter as a successful read leaves it.
inline Z7DeviceParam readParam(int number, int value)
{
    Z7DeviceParam param(number, value, 1, true);
    param.valid = true;
    return param;
}

inline Z7DeviceParamSet paramSet(const QList<Z7DeviceParam> &params)
{
    Z7DeviceParamSet set;
    for (const Z7DeviceParam &param : params)
        set.insert(param);
    return set;
}

inline Z7Device deviceWith(const QList<Z7DeviceParam> &params)
{
    Z7Device device;
    device.setParameterSet(paramSet(params));
    return device;
}

/// What stands in a field once a person has pressed the keys for undo and redo: another text than before if
/// any of them has brought one back.
inline QString textAfterUndo(QLineEdit *field)
{
    const QString before = field->text();
    for (const QKeySequence::StandardKey key : {QKeySequence::Undo, QKeySequence::Undo, QKeySequence::Redo}) {
        QTest::keySequence(field, key);
        if (field->text() != before)
            break;
    }
    return field->text();
}

/// The parameter that a page reported last; a default record if it reported none.
inline Z7DeviceParam lastReported(const QSignalSpy &spy)
{
    return spy.isEmpty() ? Z7DeviceParam() : spy.last().first().value<Z7DeviceParam>();
}
