#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QMap>
#include <optional>

namespace z7sim {

/// A whole number in decimal or, behind "0x", in hexadecimal; nothing if the text is neither.
std::optional<int> parseNumber(const QByteArray &text);

/// Bytes written as hex digits, blanks and colons allowed between them; nothing if anything else is in the
/// text.
std::optional<QByteArray> parseHex(const QByteArray &text);

/// The words of a line, told apart into plain ones and ones of the form key=value.
struct Words
{
    QByteArrayList plain;
    QMap<QByteArray, QByteArray> named;
};

/// Splits a line at blanks (or at another separator); several separators count as one.
Words parseWords(const QByteArray &line, char separator = ' ');

/// "0x0b" style, at least two digits.
QByteArray hexNumber(int value);

} // namespace z7sim
