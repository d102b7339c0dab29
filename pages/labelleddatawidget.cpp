#include "pages/labelleddatawidget.h"

#include "model/parameterdefinitions.h"
#include "pages/fieldguide.h"
#include "pages/fieldtexts.h"
#include "pages/integervalidator.h"
#include "pages/pagestyle.h"
#include "pages/picturewords.h"

#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSignalMapper>

#include <algorithm>

namespace {

/// The first record of a showing connects a field to the mapper and the second does so again, so that a
/// keystroke is reported twice from then on. That is meant: a report says what the field holds, and whoever
/// hears it has to take it any number of times. Each further record would go on like this; the line is drawn
/// at two, since a page that is watched for a working day must not grow slower by every record.
constexpr int mostConnections = 2;

QString paramStem(int number)
{
    return QStringLiteral("Param0x%1").arg(QString::number(number, 16).toUpper(), 2, QLatin1Char('0'));
}

} // namespace

LabelledDataWidget::LabelledDataWidget(TextSection texts, const char *description, QWidget *parent)
    : Z7DataWidget(parent)
    , m_texts(texts)
    , m_description(description)
{
}

void LabelledDataWidget::addParam(int number)
{
    addParam(number, paramStem(number));
}

void LabelledDataWidget::addParam(int number, const QString &stem)
{
    addParamId(number);
    m_fields.append(findField(number, number, stem, QString()));
}

void LabelledDataWidget::addSecondField(int number, int mappingNumber)
{
    m_fields.append(findField(number, mappingNumber, paramStem(number), QStringLiteral("_2")));
}

LabelledDataWidget::ParamField LabelledDataWidget::findField(
    int number, int mapping, const QString &stem, const QString &suffix)
{
    ParamField field {};
    field.number = number;
    field.mapping = mapping;
    field.user = findChild<QLineEdit *>(QStringLiteral("ed%1User%2").arg(stem, suffix));
    field.deviceValue = findChild<QLabel *>(QStringLiteral("l%1Device%2").arg(stem, suffix));
    field.unit = findChild<QLabel *>(QStringLiteral("l%1Unit%2").arg(stem, suffix));
    field.name = findChild<QLabel *>(QStringLiteral("l%1ParamName%2").arg(stem, suffix));
    if (!field.name)
        field.name = findChild<QLabel *>(QStringLiteral("l") + stem);
    Q_ASSERT_X(field.user && field.deviceValue, metaObject()->className(), qPrintable(stem));
    field.guide = new FieldGuide(this, field.user);
    return field;
}

void LabelledDataWidget::initPage()
{
    PageStyle::setTextOrHide(
        findChild<QLabel *>(QStringLiteral("lFormDescription")), m_texts("DialogDescription", m_description));
    PageStyle::setTextOrHide(findChild<QLabel *>(QStringLiteral("lIntro")), m_texts("Introduction", ""));
    for (ParamField &field : m_fields)
        initParamWidgets(field);
    PictureWords::setTexts(this);
    fitFonts();
    delete m_mapper;
    m_mapper = new QSignalMapper(this);
    connect(m_mapper, SIGNAL(mapped(int)), SLOT(ParamChanged(int)));
}

void LabelledDataWidget::fitFonts()
{
    PictureWords::fitFonts(findChild<QWidget *>(QStringLiteral("bg")));
}

void LabelledDataWidget::changeEvent(QEvent *event)
{
    Z7DataWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange)
        fitFonts();
}

void LabelledDataWidget::initParamWidgets(ParamField &field)
{
    const Z7ParamDefinition &definition = paramDefinitions()->row(field.number);
    // A name that is nowhere on the screen gets no entry in the language file.
    const bool isNameShown = field.name || m_fieldsTellNames;
    const QString name = isNameShown ? definitionText(definition.name) : definition.name;
    if (field.name)
        field.name->setText(name);
    nameField(field, name);
    field.guide->tell(field.number, name);
    field.deviceValue->setEnabled(false);
    field.deviceValue->setAlignment(Qt::AlignRight);
    field.user->setAlignment(Qt::AlignRight);
    // The limits come with the first value of the drive.
    delete field.user->validator();
    field.user->setValidator(new IntegerValidator(this));
    field.user->setHidden(definition.readOnly);
    if (!definition.readOnly)
        field.user->setFont(PageStyle::boldFont());
    if (field.unit) {
        field.unit->setText(definitionText(definition.unit));
        field.unit->setEnabled(false);
    }
    field.connections = 0;
}

void LabelledDataWidget::nameField(const ParamField &field, const QString &parameterName)
{
    QString name = FieldTexts::nameOf(field.number, parameterName);
    if (field.mapping != field.number)
        name = toolTipText("FieldSecond", "%1 (zweites Feld)").arg(name);
    else if (isNameTaken(field, name))
        name += QStringLiteral(" (%1)").arg(FieldTexts::nameOf(field.number, QString()));
    field.user->setAccessibleName(name);
}

/// By a field before this one; those behind it still have the names of the last showing.
bool LabelledDataWidget::isNameTaken(const ParamField &field, const QString &name) const
{
    for (const ParamField &other : m_fields) {
        if (other.user == field.user)
            return false;
        if (other.user->accessibleName() == name)
            return true;
    }
    return false;
}

void LabelledDataWidget::newDeviceParam(const Z7DeviceParam &param)
{
    for (ParamField &field : m_fields) {
        if (field.number == param.number)
            showDeviceValue(field, param.value);
    }
}

void LabelledDataWidget::showDeviceValue(ParamField &field, int value)
{
    field.deviceValue->setText(QString::number(value));
    // A page that was never shown for a drive has no limits and no mapper yet.
    if (!m_mapper)
        return;
    auto *validator = qobject_cast<QIntValidator *>(const_cast<QValidator *>(field.user->validator()));
    const Z7ParamDefinition &definition = paramDefinitions()->row(field.number);
    if (validator->bottom() != definition.minimum || validator->top() != definition.maximum) {
        validator->setRange(definition.minimum, definition.maximum);
        field.guide->judge();
    }
    if (field.connections < mostConnections) {
        connect(field.user, SIGNAL(textChanged(QString)), m_mapper, SLOT(map()));
        // Each call leaves a connection behind as well.
        m_mapper->setMapping(field.user, field.mapping);
        ++field.connections;
    }
}

void LabelledDataWidget::deviceUpdateFinished() { }

void LabelledDataWidget::newUserParam(const Z7DeviceParam &param)
{
    if (!param.hasValue)
        return;
    const QSignalBlocker blocker(m_mapper);
    for (const ParamField &field : qAsConst(m_fields)) {
        if (field.number == param.number)
            field.user->setText(QString::number(param.value));
    }
}

void LabelledDataWidget::clearUserValues()
{
    const QSignalBlocker blocker(m_mapper);
    for (const ParamField &field : qAsConst(m_fields))
        PageStyle::emptyField(field.user);
}

void LabelledDataWidget::ParamChanged(int nParamID)
{
    const auto field = std::find_if(m_fields.cbegin(), m_fields.cend(),
        [nParamID](const ParamField &candidate) { return candidate.mapping == nParamID; });
    if (field == m_fields.cend())
        return;
    copyToOtherFields(*field);
    reportUserText(field->number, field->user->text());
}

void LabelledDataWidget::copyToOtherFields(const ParamField &source)
{
    const QSignalBlocker blocker(m_mapper);
    for (const ParamField &field : qAsConst(m_fields)) {
        if (field.number == source.number && field.user != source.user)
            field.user->setText(source.user->text());
    }
}
