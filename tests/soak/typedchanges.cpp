#include "tests/soak/typedchanges.h"

#include <algorithm>

void TypedChanges::type(int drive, int number, int value)
{
    m_pending[drive].insert(number, value);
    m_typed.append({drive, number, value});
}

QString TypedChanges::text(int drive, int number) const
{
    const QMap<int, int> changes = of(drive);
    const auto change = changes.constFind(number);
    return change == changes.constEnd() ? QString() : QString::number(change.value());
}

int TypedChanges::count() const
{
    int all = 0;
    for (const QMap<int, int> &changes : m_pending)
        all += changes.size();
    return all;
}

bool TypedChanges::wasTyped(int drive, int number, int value) const
{
    return std::any_of(m_typed.begin(), m_typed.end(), [&](const Typed &typed) {
        return typed.drive == drive && typed.number == number && typed.value == value;
    });
}
