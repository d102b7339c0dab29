#include "tests/soak/pageitems.h"

#include <algorithm>

namespace {

PageField named(int number, const char *name)
{
    return {number, QLatin1String(name)};
}

/// Fields that are named after their parameters.
QVector<PageField> labelled(const QVector<int> &numbers)
{
    QVector<PageField> fields;
    for (const int number : numbers) {
        const QString digits = QString::number(number, 16).toUpper().rightJustified(2, QLatin1Char('0'));
        fields.append({number, QStringLiteral("edParam0x%1User").arg(digits)});
    }
    return fields;
}

/// The fields of a scaling curve: three points with an X, five with a Y.
QVector<PageField> curve(int firstX, int firstY)
{
    QVector<PageField> fields;
    for (int point = 1; point <= 3; ++point)
        fields.append({firstX + point - 1, QStringLiteral("edValX%1_User").arg(point)});
    for (int point = 0; point <= 4; ++point)
        fields.append({firstY + point, QStringLiteral("edValY%1_User").arg(point)});
    return fields;
}

PageItem page(const char *title, const QVector<PageField> &fields = {})
{
    return {QString::fromUtf8(title), fields, false};
}

} // namespace

const QVector<PageItem> &pageItems()
{
    static const QVector<PageItem> items {
        page(""),
        page("Betriebsmodus",
            {named(1, "edRevolutionN1User"), named(2, "edRevolutionN2User"), named(6, "edRevolutionN3User")}),
        page("Festdrehzahlen", labelled({0x17, 0x18, 0x19})),
        page("Positionierung",
            labelled({0x21, 0x3C, 0x3F, 0x40, 0x41, 0x42, 0x43, 0x44, 0x45, 0x46, 0x47, 0x48, 0x49})),
        page("Sollwertskalierung Drehzahl", curve(0x0B, 0x0E)),
        page("Sollwertskalierung Strom", curve(0x26, 0x29)),
        page("Dynamik", labelled({0x1A, 0x1B, 0x1C, 0x1D})),
        page("Regelung",
            labelled({0x1E, 0x1F})
                + QVector<PageField> {named(0x21, "edParam0x20User"), named(0x3C, "edParam0x22User")}),
        page("Stromgrenzen",
            labelled({0x36, 0x38, 0x39, 0x3A, 0x3B}) + QVector<PageField> {named(0x36, "edParam0x36User_2")}),
        page("Digitale Ausgänge",
            labelled({0x03, 0x04, 0x05, 0x23, 0x24, 0x25, 0x32, 0x33, 0x34, 0x35, 0x4F, 0x50, 0x46, 0x47,
                0x48, 0x49})),
        page("Ballastwiderstand", labelled({0x4D, 0x4E})),
        page("Spannungsgrenzen", labelled({0x4A, 0x4B, 0x4C})),
        page("RS485"), // a new address waits for no write, it goes out at once
        {QStringLiteral("Parametertabelle"), {}, true},
        page("Firmware update"),
    };
    return items;
}

const PageItem &tablePage()
{
    const auto isTable = [](const PageItem &item) { return item.isTable; };
    return *std::find_if(pageItems().begin(), pageItems().end(), isTable);
}
