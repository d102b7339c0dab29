#pragma once

#include <QLineEdit>
#include <QTableWidget>

namespace TableColumn {
enum { Number, Name, DeviceValue, Unit, UserValue, Remark, Count };
}

/// The row of a parameter in the parameter table; -1 if the table has none.
inline int tableRow(const QTableWidget &table, int number)
{
    for (int row = 0; row < table.rowCount(); ++row) {
        if (table.item(row, TableColumn::Number)->text() == QString::number(number))
            return row;
    }
    return -1;
}

/// The user's field in the row of a parameter; null if the table has no such row.
inline QLineEdit *tableField(const QTableWidget &table, int number)
{
    const int row = tableRow(table, number);
    return row < 0 ? nullptr : qobject_cast<QLineEdit *>(table.cellWidget(row, TableColumn::UserValue));
}
