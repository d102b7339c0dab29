#pragma once

#include "control/services/services.h"
#include "model/device.h"
#include "model/parameterdefinitions.h"

#include <QByteArray>
#include <QMap>
#include <QString>

/// A parameter file as the program writes it, but for the line feed at its end.
inline QByteArray parameterDocument(const QByteArray &parameters, const QByteArray &version = "V123")
{
    return R"(<?xml version="1.0" encoding="UTF-8"?><Z7Device><DeviceInfo SoftwareVersion=")" + version
        + R"("/><Z7-Parameter>)" + parameters + "</Z7-Parameter></Z7Device>";
}

/// Tells the program of one parameter: "Signed" or "Unsigned", and "rw" or "r".
inline void defineParameter(
    const QString &version, int number, const char *signedness, const char *access = "rw")
{
    Z7Services::instance()->definitions(version)->parseLine(
        QStringLiteral("%1;Name;;;;;%2;1;%3;0;")
            .arg(number)
            .arg(QLatin1String(signedness), QLatin1String(access)));
}

inline Z7DeviceParamSet setOf(const QMap<int, int> &values)
{
    Z7DeviceParamSet set(QStringLiteral("V123"));
    for (auto it = values.begin(); it != values.end(); ++it)
        set.insert({it.key(), it.value(), 0, true});
    return set;
}

inline QMap<int, int> valuesOf(const Z7DeviceParamSet &set)
{
    QMap<int, int> values;
    for (auto it = set.params.begin(); it != set.params.end(); ++it)
        values.insert(it.key(), it->value);
    return values;
}

/// A drive of version V123 that has these parameters.
inline Z7Device driveWithSet(const Z7DeviceParamSet &set)
{
    Z7Device drive;
    drive.softwareVersion = QStringLiteral("V123");
    drive.parameterSet = set;
    return drive;
}

inline Z7Device driveWith(const QMap<int, int> &values)
{
    return driveWithSet(setOf(values));
}
