#include "simulator/text.h"

namespace z7sim {

std::optional<int> parseNumber(const QByteArray &text)
{
    bool ok = false;
    const bool isHex = text.startsWith("0x") || text.startsWith("0X");
    const qlonglong value = isHex ? text.mid(2).toLongLong(&ok, 16) : text.toLongLong(&ok, 10);
    if (!ok || value < INT_MIN || value > 0xFFFFFFFFLL)
        return std::nullopt;
    return static_cast<int>(static_cast<quint32>(value));
}

std::optional<QByteArray> parseHex(const QByteArray &text)
{
    QByteArray digits = text;
    digits.replace(' ', "").replace(':', "");
    const QByteArray bytes = QByteArray::fromHex(digits);
    if (bytes.toHex() != digits.toLower())
        return std::nullopt;
    return bytes;
}

Words parseWords(const QByteArray &line, char separator)
{
    Words words;
    for (const QByteArray &part : line.split(separator)) {
        const QByteArray word = part.trimmed();
        const int equals = word.indexOf('=');
        if (equals > 0)
            words.named.insert(word.left(equals), word.mid(equals + 1));
        else if (!word.isEmpty())
            words.plain.append(word);
    }
    return words;
}

QByteArray hexNumber(int value)
{
    return "0x" + QByteArray::number(value, 16).rightJustified(2, '0');
}

} // namespace z7sim
