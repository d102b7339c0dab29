#include "pages/fieldtexts.h"

#include "control/services/language.h"
#include "model/parameterconflicts.h"

#include <QIntValidator>
#include <QStringList>
#include <QTextDocument>

#include <limits>

namespace FieldTexts {

namespace {

QString limitsText(const Z7ParamDefinition &definition)
{
    return toolTipText("FieldLimits", "Grenzen: %1 bis %2")
        .arg(QString::number(definition.minimum), QString::number(definition.maximum));
}

/// The named values, a line each. A line end that a definition has in the place of a text names nothing.
QStringList optionTexts(const Z7ParamDefinition &definition)
{
    QStringList lines;
    for (auto option = definition.options.begin(); option != definition.options.end(); ++option) {
        if (!option.value().trimmed().isEmpty())
            lines.append(QStringLiteral("%1 = ").arg(option.key()) + definitionText(option.value()));
    }
    return lines;
}

bool isOpen(const QIntValidator &validator)
{
    return validator.bottom() == std::numeric_limits<int>::min()
        && validator.top() == std::numeric_limits<int>::max();
}

} // namespace

QString nameOf(int number, const QString &name)
{
    return name.isEmpty() ? toolTipText("FieldNumber", "Parameter %1").arg(number) : name;
}

QString describe(const Z7ParamDefinition &definition, const QString &name)
{
    QStringList lines {toolTipText("FieldNumber", "Parameter %1").arg(definition.number)};
    if (!name.isEmpty())
        lines.first() += QStringLiteral(": ") + name;
    lines.append(limitsText(definition));
    if (!definition.unit.isEmpty())
        lines.append(toolTipText("FieldUnit", "Einheit: %1").arg(definitionText(definition.unit)));
    lines.append(toolTipText("FieldFactoryValue", "Werkseinstellung: %1").arg(definition.defaultValue));
    if (definition.readOnly)
        lines.append(toolTipText("FieldReadOnly", "Nur lesbar"));
    return (lines + optionTexts(definition)).join(QLatin1Char('\n'));
}

QString describeUnknown(int number)
{
    return nameOf(number, QString()) + QLatin1Char('\n')
        + toolTipText("FieldUnknown", "In den Parameter-Definitionen des Antriebs nicht enthalten");
}

QString whatIsTaken(const QValidator *validator)
{
    const auto *numbers = qobject_cast<const QIntValidator *>(validator);
    if (!numbers || isOpen(*numbers))
        return toolTipText("FieldTakesNumbers", "Nur ganze Zahlen");
    return toolTipText("FieldTakes", "Nur ganze Zahlen von %1 bis %2")
        .arg(QString::number(numbers->bottom()), QString::number(numbers->top()));
}

QString beyondLimits(const WriteFinding &finding)
{
    if (finding.kind != WriteFinding::Kind::OutOfLimits)
        return QString();
    return toolTipText("FieldBeyondLimits", "%1 liegt außerhalb der Grenzen %2 bis %3")
        .arg(QString::number(finding.values.first()), QString::number(finding.minimum),
            QString::number(finding.maximum));
}

QString asToolTip(const QString &text)
{
    // A name with an angle bracket would be taken for a mark of rich text.
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

} // namespace FieldTexts
