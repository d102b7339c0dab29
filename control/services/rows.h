#pragma once

/// Ties a table to the enumeration that counts its rows: true if each number from 0 to `count` - 1 has one
/// row, at its place. Beside such a table a number without its row, or a row at another's place, does not
/// compile:
///
///     static_assert(eachHasItsRow(colours, &Colour::name, ColourName::Count), "a colour lacks its row");
template<typename Rows, typename Row, typename Number>
constexpr bool eachHasItsRow(const Rows &rows, Number Row::*number, int count)
{
    int place = 0;
    for (const Row &row : rows) {
        if (row.*number != place++)
            return false;
    }
    return place == count;
}
