#include "control/coursequantities.h"

#include "control/livecourses.h"
#include "control/services/language.h"
#include "control/services/services.h"
#include "model/drivefacts.h"
#include "model/parameterdefinitions.h"

#include <QDateTime>
#include <QStringList>

namespace {

constexpr char byteOrderMark[] = "\xEF\xBB\xBF";

/// The next place behind the point would be finer than the 65535th of a turn that a drive tells.
constexpr int turnDecimals = 5;

/// A text that holds what parts the columns stands in quotes.
QString cell(QString text)
{
    if (!text.contains(QLatin1Char(';')) && !text.contains(QLatin1Char('"')))
        return text;
    return QLatin1Char('"') + text.replace(QLatin1String("\""), QLatin1String("\"\"")) + QLatin1Char('"');
}

QByteArray line(const QStringList &cells)
{
    return cells.join(QLatin1Char(';')).toUtf8() + "\r\n";
}

QByteArray titleLine(const QString &version)
{
    QStringList cells {
        cell(statusBarText("CourseTime", "Zeit")), cell(statusBarText("CourseDrive", "Antrieb"))};
    for (const CourseQuantity &quantity : courseQuantities())
        cells.append(cell(quantity.title(version)));
    return line(cells);
}

QByteArray valueLine(const LiveValues &values, const QString &drive)
{
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(values.timeMs);
    QStringList cells {time.toOffsetFromUtc(time.offsetFromUtc()).toString(Qt::ISODateWithMs), drive};
    for (const CourseQuantity &quantity : courseQuantities())
        cells.append(quantity.number(quantity.valueOf(values)));
    return line(cells);
}

} // namespace

QString CourseQuantity::text() const
{
    return statusBarText(key, name);
}

QString CourseQuantity::unit(const QString &version) const
{
    const QString german = Z7Services::instance()->definitions(version)->paramUnit(parameter);
    return german.isEmpty() ? QString() : definitionText(german);
}

QString CourseQuantity::title(const QString &version) const
{
    const QString unitText = unit(version);
    return unitText.isEmpty() ? text() : QStringLiteral("%1 [%2]").arg(text(), unitText);
}

const std::array<CourseQuantity, courseQuantityCount> &courseQuantities()
{
    static constexpr std::array<CourseQuantity, courseQuantityCount> quantities {{
        {"CourseSpeed", "Drehzahl", ParameterNumber::ActualSpeed,
            [](const LiveValues &values) { return double(values.speed); }, 0},
        {"CourseCurrent", "Strom", ParameterNumber::ActualCurrent,
            [](const LiveValues &values) { return double(values.current); }, 0},
        {"CourseTemperature", "Temperatur", ParameterNumber::ActualTemperature,
            [](const LiveValues &values) { return double(values.temperature); }, 0},
        {"CoursePosition", "Position", ParameterNumber::ActualPositionTurns,
            [](const LiveValues &values) { return values.position; }, turnDecimals},
        {"CourseAnalogInput", "Analogeingang A1", ParameterNumber::AnalogInputA1,
            [](const LiveValues &values) { return double(values.analogInput); }, 0},
    }};
    return quantities;
}

QByteArray courseTable(const DriveCourse &drive)
{
    QByteArray table(byteOrderMark);
    table += titleLine(drive.version);
    const QString name = cell(drive.name);
    for (int i = 0; i < drive.course.count(); ++i)
        table += valueLine(drive.course.at(i), name);
    return table;
}
