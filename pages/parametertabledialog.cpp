#include "pages/parametertabledialog.h"

#include "control/services/language.h"
#include "model/errorcodes.h"
#include "model/parameterdefinitions.h"
#include "pages/integervalidator.h"
#include "pages/pagestyle.h"
#include "ui_parametertabledialog.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSignalMapper>

namespace {

const char *const section = "DialogParamTable";

enum Column {
    NumberColumn,
    NameColumn,
    DeviceColumn,
    UnitColumn,
    UserColumn,
    RemarkColumn,
    ColumnCount,
};

struct ColumnTitle
{
    const char *key;
    const char *text;
};

constexpr ColumnTitle columnTitles[ColumnCount] = {
    {"ColParamIDTitle", "ID"},
    {"ColParamNameTitle", "Parameter"},
    {"ColDeviceDataTitle", "Ist-Wert"},
    {"ColUnit", "Einheit"},
    {"ColUserDataTitle", "Soll-Wert"},
    {"ColParamInfo", "Bemerkung"},
};

constexpr int valueColumnWidth = 100;
constexpr int rowHeight = 22;

QColor equalColour()
{
    return {230, 230, 230};
}

QColor differentColour()
{
    return {200, 200, 200};
}

bool hasSameBase(const QPalette &a, const QPalette &b)
{
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        if (a.color(group, QPalette::Base) != b.color(group, QPalette::Base))
            return false;
    }
    return true;
}

QString tableText(const char *key, const char *defaultText)
{
    return languageText(section, key, defaultText);
}

} // namespace

ParameterTableDialog::ParameterTableDialog(QWidget *parent)
    : Z7DataWidget(parent)
    , m_ui(std::make_unique<Ui::ParameterTableDialog>())
{
    m_ui->setupUi(this);
    PageStyle::paintHeader(m_ui->TopFrame);
    // The style's own minimum would make the rows higher.
    m_ui->ParameterTable->verticalHeader()->setMinimumSectionSize(rowHeight);
    allParameters = true;
    initPage();
}

ParameterTableDialog::~ParameterTableDialog() = default;

void ParameterTableDialog::initPage()
{
    m_ui->LIntro->setText(tableText("Introduction", ""));
    // An empty band above the table would only take room from it.
    m_ui->TopFrame->setVisible(!m_ui->LIntro->text().isEmpty());
    m_ui->ParameterTable->setColumnCount(ColumnCount);
    for (int column = 0; column < ColumnCount; ++column) {
        const ColumnTitle &title = columnTitles[column];
        m_ui->ParameterTable->setHorizontalHeaderItem(
            column, new QTableWidgetItem(tableText(title.key, title.text)));
    }
    m_ui->ParameterTable->setColumnWidth(DeviceColumn, valueColumnWidth);
    m_ui->ParameterTable->setColumnWidth(UserColumn, valueColumnWidth);
    m_ui->ParameterTable->setRowCount(0);
    m_paramRows.clear();
    delete m_mapper;
    m_mapper = new QSignalMapper(this);
    connect(m_mapper, SIGNAL(mapped(int)), SLOT(TextChanged(int)));
}

int ParameterTableDialog::rowForParam(int number)
{
    const auto existing = m_paramRows.constFind(number);
    if (existing != m_paramRows.constEnd())
        return existing.value();
    const int row = m_ui->ParameterTable->rowCount();
    m_paramRows.insert(number, row);
    m_ui->ParameterTable->setRowCount(row + 1);
    addCells(row);
    addUserField(row, number);
    m_ui->ParameterTable->setRowHeight(row, rowHeight);
    const Z7ParamDefinitions *definitions = paramDefinitions();
    m_ui->ParameterTable->item(row, NumberColumn)->setText(QString::number(number));
    m_ui->ParameterTable->item(row, UnitColumn)->setText(definitionText(definitions->paramUnit(number)));
    m_ui->ParameterTable->item(row, NameColumn)->setText(definitionText(definitions->paramName(number)));
    return row;
}

void ParameterTableDialog::addCells(int row)
{
    for (int column = 0; column < ColumnCount; ++column) {
        auto *item = new QTableWidgetItem;
        item->setFlags(item->flags() & ~Qt::ItemIsEnabled);
        item->setForeground(column == RemarkColumn ? Qt::red : Qt::black);
        m_ui->ParameterTable->setItem(row, column, item);
    }
    m_ui->ParameterTable->item(row, NumberColumn)->setTextAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    m_ui->ParameterTable->item(row, DeviceColumn)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void ParameterTableDialog::addUserField(int row, int number)
{
    const Z7ParamDefinitions *definitions = paramDefinitions();
    auto *field = new QLineEdit;
    field->setFrame(false);
    field->setValidator(
        new IntegerValidator(definitions->paramMin(number), definitions->paramMax(number), field));
    field->setAlignment(Qt::AlignRight);
    field->setFont(PageStyle::boldFont());
    field->setDisabled(definitions->isReadOnly(number));
    m_ui->ParameterTable->setCellWidget(row, UserColumn, field);
    connect(field, SIGNAL(textChanged(QString)), m_mapper, SLOT(map()));
    m_mapper->setMapping(field, row);
}

void ParameterTableDialog::newDeviceParam(const Z7DeviceParam &param)
{
    const int row = rowForParam(param.number);
    m_ui->ParameterTable->item(row, DeviceColumn)->setText(QString::number(param.value));
    QTableWidgetItem *remarkCell = m_ui->ParameterTable->item(row, RemarkColumn);
    remarkCell->setText(remark(row, param));
    // Several findings are wider than the column.
    remarkCell->setToolTip(remarkCell->text());
    formatRow(row);
}

QString ParameterTableDialog::remark(int row, const Z7DeviceParam &param) const
{
    QString remark;
    const auto add = [&remark](const QString &finding) {
        if (!remark.isEmpty())
            remark += QStringLiteral(", ");
        remark += finding;
    };
    if (param.error != 0)
        add(localizedErrorText(param.error));
    if (param.readFailed)
        add(tableText("ParamReadingFailed", "Der Parameter konnte nicht gelesen werden"));
    if (param.writeFailed)
        add(tableText("ParamWritingFailed", "Der Parameter konnte nicht geschrieben werden"));
    if (param.accessDenied)
        add(tableText("AccessKeyIncorrectDesc",
            "Sie haben nicht die erforderliche Berechtigung, um diesen Parameter zu ändern"));
    // The record keeps only the fact of a conflict, so the number in this text is that of the flag.
    if (param.conflict)
        add(tableText("ConflictingParam", "Das Schreiben des Parameters steht im Konflikt mit Parameter %1")
                .arg(static_cast<int>(param.conflict)));
    if (isOutOfScope(param))
        add(tableText("ParamOutOfScope", "Parameterwert außerhalb des zulässigen Bereichs"));
    if (isCurrentlyNotWritable(row, param.number))
        add(commonText("ApplFunctionCurrentlyNotWritable",
            "Der Parameter kann zur Zeit nicht geschrieben werden (Digitaleingänge A+B nicht auf low)"));
    return remark;
}

bool ParameterTableDialog::isOutOfScope(const Z7DeviceParam &param) const
{
    const Z7ParamDefinitions *definitions = paramDefinitions();
    return param.valid
        && (param.value < definitions->paramMin(param.number)
            || param.value > definitions->paramMax(param.number));
}

bool ParameterTableDialog::isCurrentlyNotWritable(int row, int number) const
{
    return !userField(row)->text().isEmpty() && paramDefinitions()->isApplFunction(number)
        && (device.isDigitalInputSet(1) || device.isDigitalInputSet(2));
}

void ParameterTableDialog::newUserParam(const Z7DeviceParam &param)
{
    if (!param.hasValue)
        return;
    const QSignalBlocker blocker(m_mapper);
    const int row = rowForParam(param.number);
    userField(row)->setText(QString::number(param.value));
    formatRow(row);
}

void ParameterTableDialog::clearUserValues()
{
    const QSignalBlocker blocker(m_mapper);
    for (int row = 0; row < m_ui->ParameterTable->rowCount(); ++row) {
        PageStyle::emptyField(userField(row));
        formatRow(row);
    }
}

void ParameterTableDialog::showUserValues(const Z7DeviceParamSet &own)
{
    // Another drive's file makes rows behind all others.
    int rows = m_ui->ParameterTable->rowCount();
    for (; rows > 0 && isForeignRow(rows - 1, own); --rows)
        m_paramRows.remove(numberInCell(rows - 1, NumberColumn));
    m_ui->ParameterTable->setRowCount(rows);
    Z7DataWidget::showUserValues(own);
}

bool ParameterTableDialog::isForeignRow(int row, const Z7DeviceParamSet &own) const
{
    const int number = numberInCell(row, NumberColumn);
    return m_ui->ParameterTable->item(row, DeviceColumn)->text().isEmpty()
        && !device.parameterSet.contains(number) && !own.contains(number);
}

void ParameterTableDialog::deviceUpdateFinished()
{
    for (const int column : {NumberColumn, NameColumn, UnitColumn})
        m_ui->ParameterTable->resizeColumnToContents(column);
}

void ParameterTableDialog::TextChanged(int row)
{
    reportUserText(numberInCell(row, NumberColumn), userField(row)->text());
    formatRow(row);
}

void ParameterTableDialog::formatRow(int row)
{
    QLineEdit *field = userField(row);
    bool isNumber = false;
    const int wanted = field->text().toInt(&isNumber);
    QColor colour = Qt::white;
    QFont font;
    if (isNumber) {
        const bool differs = wanted != numberInCell(row, DeviceColumn);
        colour = differs ? differentColour() : equalColour();
        font = differs ? PageStyle::boldFont() : QFont();
    }
    for (const int column : {NumberColumn, NameColumn, DeviceColumn, UnitColumn, RemarkColumn})
        m_ui->ParameterTable->item(row, column)->setBackground(colour);
    formatUserField(field, colour, font);
}

void ParameterTableDialog::formatUserField(QLineEdit *field, const QColor &colour, const QFont &font) const
{
    QPalette fieldPalette = palette();
    fieldPalette.setColor(QPalette::Base, field->isEnabled() ? colour : equalColour());
    // Setting a palette or a font repaints and lays out anew; most records change nothing.
    if (!hasSameBase(field->palette(), fieldPalette))
        field->setPalette(fieldPalette);
    if (field->isEnabled() && field->font().weight() != font.weight())
        field->setFont(font);
}

QLineEdit *ParameterTableDialog::userField(int row) const
{
    return static_cast<QLineEdit *>(m_ui->ParameterTable->cellWidget(row, UserColumn));
}

int ParameterTableDialog::numberInCell(int row, int column) const
{
    return m_ui->ParameterTable->item(row, column)->text().toInt();
}
