#pragma once

#include <QByteArray>

/// A frame as one reads it off the bus: bytes("05 01 53").
inline QByteArray bytes(const char *hexadecimal)
{
    return QByteArray::fromHex(hexadecimal);
}
