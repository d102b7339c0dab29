#pragma once

#include "pages/parametertabledialog.h"
#include "tests/pages/pagetests.h"
#include "tests/support/tablerows.h"

#include <QIntValidator>
#include <QTableWidget>

/// The parameter table as the controller shows it for a drive, and what a person sees in it.
class ShownParameterTable
{
public:
    explicit ShownParameterTable(const Z7Device &drive = Z7Device())
        : table(page.findChild<QTableWidget *>(QStringLiteral("ParameterTable")))
    {
        showFor(drive);
        page.show();
    }

    void showFor(const Z7Device &drive)
    {
        page.softwareVersion = drive.softwareVersion;
        page.initPage();
        page.DeviceUpdate(drive);
        page.clearUserValues();
    }

    /// The row of a parameter; -1 if the table has none.
    int row(int number) const { return tableRow(*table, number); }
    QTableWidgetItem *cell(int number, int column) const { return table->item(row(number), column); }
    QString text(int number, int column) const { return cell(number, column)->text(); }
    QString remark(int number) const { return text(number, TableColumn::Remark); }
    QColor ground(int number, int column) const { return cell(number, column)->background().color(); }
    QLineEdit *field(int number) const { return tableField(*table, number); }
    QColor fieldGround(int number) const { return field(number)->palette().color(QPalette::Base); }
    QString header(int column) const { return table->horizontalHeaderItem(column)->text(); }

    /// The texts of one column from the first row to the last.
    QStringList column(int column) const
    {
        QStringList texts;
        for (int row = 0; row < table->rowCount(); ++row)
            texts.append(table->item(row, column)->text());
        return texts;
    }

    ParameterTableDialog page;
    QTableWidget *const table;
};

/// Definitions of version V123 for the table.
inline void defineTableParameters()
{
    defineParameters("V123",
        {"11;Rampe;ms;5;10;500;Unsigned;1;rw;0;", "30;Drehzahl;1/min;0;-6000;6000;Signed;1;rw;0;",
            "50;Funktion;;0;0;12;Unsigned;0;rw;0;", "83;Seriennummer;;0;;;Unsigned;1;r;0;"});
}

/// A drive of version V123 with these values.
inline Z7Device tableDrive(const QList<Z7DeviceParam> &params)
{
    Z7Device drive = deviceWith(params);
    drive.setSoftwareVersion("V123");
    return drive;
}
