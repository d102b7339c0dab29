#include "pages/parametertabledialog.h"

#include "control/services/language.h"
#include "model/errorcodes.h"
#include "model/parameterconflicts.h"
#include "model/parameterdefinitions.h"
#include "pages/fieldguide.h"
#include "pages/integervalidator.h"
#include "pages/keyboard.h"
#include "pages/pagestyle.h"
#include "pages/parameterfinder.h"
#include "ui_parametertabledialog.h"

#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSignalMapper>

namespace {

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

/// What a title leaves of its column, a number of its cell, and a line of its row.
constexpr int titleMargin = 16;
constexpr QSize numberMargins(12, 2);

/// Those that fit their contents.
constexpr int fittedColumns[] = {NumberColumn, NameColumn, UnitColumn};

/// The ground of a disabled field, and of a row whose user wants what the drive has.
constexpr QRgb lightGrey = qRgb(230, 230, 230);
constexpr QRgb darkGrey = qRgb(200, 200, 200);

/// What a key does to the rows; nothing for any other.
QAbstractSlider::SliderAction scrollingOf(int key)
{
    switch (key) {
    case Qt::Key_Up:
        return QAbstractSlider::SliderSingleStepSub;
    case Qt::Key_Down:
        return QAbstractSlider::SliderSingleStepAdd;
    case Qt::Key_PageUp:
        return QAbstractSlider::SliderPageStepSub;
    case Qt::Key_PageDown:
        return QAbstractSlider::SliderPageStepAdd;
    case Qt::Key_Home:
        return QAbstractSlider::SliderToMinimum;
    case Qt::Key_End:
        return QAbstractSlider::SliderToMaximum;
    default:
        return QAbstractSlider::SliderNoAction;
    }
}

} // namespace

ParameterTableDialog::ParameterTableDialog(QWidget *parent)
    : Z7DataWidget(parent)
    , m_ui(std::make_unique<Ui::ParameterTableDialog>())
{
    m_ui->setupUi(this);
    Keyboard::showFocus(m_ui->ParameterTable);
    PageStyle::paintHeader(m_ui->TopFrame);
    // The style's own minimum would make the rows higher.
    m_ui->ParameterTable->verticalHeader()->setMinimumSectionSize(rowHeight);
    // Its cells take no focus, so that Tab has nowhere to go among them.
    m_ui->ParameterTable->setTabKeyNavigation(false);
    m_ui->ParameterTable->installEventFilter(this);
    m_finder = new ParameterFinder(m_ui->ParameterTable, {NumberColumn, NameColumn, UserColumn}, this);
    m_ui->verticalLayout->addWidget(m_finder);
    allParameters = true;
    initPage();
}

ParameterTableDialog::~ParameterTableDialog() = default;

void ParameterTableDialog::initPage()
{
    m_ui->LIntro->setText(texts("Introduction", ""));
    m_ui->ParameterTable->setAccessibleName(texts("Title", "Parametertabelle"));
    // An empty band above the table would only take room from it.
    m_ui->TopFrame->setVisible(!m_ui->LIntro->text().isEmpty());
    m_ui->ParameterTable->setColumnCount(ColumnCount);
    for (int column = 0; column < ColumnCount; ++column) {
        const ColumnTitle &title = columnTitles[column];
        m_ui->ParameterTable->setHorizontalHeaderItem(
            column, new QTableWidgetItem(texts(title.key, title.text)));
    }
    m_ui->ParameterTable->setColumnWidth(DeviceColumn, valueColumnWidth);
    m_ui->ParameterTable->setColumnWidth(UserColumn, valueColumnWidth);
    fitFonts();
    removeRows();
    m_paramRows.clear();
    m_fittedWidths.clear();
    delete m_mapper;
    m_mapper = new QSignalMapper(this);
    connect(m_mapper, SIGNAL(mapped(int)), SLOT(TextChanged(int)));
}

void ParameterTableDialog::fitFonts()
{
    QTableWidget *table = m_ui->ParameterTable;
    const QSize cellSize = QSize(valueColumnWidth, rowHeight) - numberMargins;
    table->setFont(PageStyle::fittingFont(*table, QFont(), cellSize, QStringLiteral("-32768")));
    QFont titleFont;
    for (const int column : {DeviceColumn, UserColumn}) {
        const QSize place(valueColumnWidth - titleMargin, QWIDGETSIZE_MAX);
        titleFont =
            PageStyle::fittingFont(*table, titleFont, place, table->horizontalHeaderItem(column)->text());
    }
    table->horizontalHeader()->setFont(titleFont);
    for (const Row &row : qAsConst(m_rows))
        row.user->setFont(fieldFont(row.user->isEnabled() ? row.painted : Wish::Different));
}

QFont ParameterTableDialog::fieldFont(Wish wish) const
{
    QFont font = m_ui->ParameterTable->font();
    if (wish == Wish::Different)
        font.setWeight(QFont::Bold);
    return font;
}

int ParameterTableDialog::rowForParam(int number)
{
    const auto existing = m_paramRows.constFind(number);
    if (existing != m_paramRows.constEnd())
        return existing.value();
    const int row = m_ui->ParameterTable->rowCount();
    const Z7ParamDefinition &definition = paramDefinitions()->row(number);
    m_paramRows.insert(number, row);
    m_ui->ParameterTable->setRowCount(row + 1);
    addCells(row);
    Row shown;
    shown.number = number;
    shown.user = addUserField(row, definition);
    shown.guide = new FieldGuide(this, shown.user);
    m_rows.append(shown);
    m_ui->ParameterTable->setRowHeight(row, rowHeight);
    cell(row, NumberColumn)->setText(QString::number(number));
    cell(row, UnitColumn)->setText(definitionText(definition.unit));
    cell(row, NameColumn)->setText(definitionText(definition.name));
    tellField(row);
    m_fittedWidths.clear();
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
    cell(row, NumberColumn)->setTextAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    cell(row, DeviceColumn)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

QLineEdit *ParameterTableDialog::addUserField(int row, const Z7ParamDefinition &definition)
{
    auto *field = new QLineEdit;
    field->setFrame(false);
    field->setValidator(new IntegerValidator(definition.minimum, definition.maximum, field));
    field->setAlignment(Qt::AlignRight);
    field->setFont(fieldFont(Wish::Different));
    field->setDisabled(definition.readOnly);
    m_ui->ParameterTable->setCellWidget(row, UserColumn, field);
    connect(field, SIGNAL(textChanged(QString)), m_mapper, SLOT(map()));
    m_mapper->setMapping(field, row);
    // What is made in a window that is shown comes last in it otherwise.
    QWidget *before =
        m_rows.isEmpty() ? static_cast<QWidget *>(m_ui->ParameterTable) : m_rows.constLast().user;
    QWidget::setTabOrder(before, field);
    return field;
}

void ParameterTableDialog::tellField(int row) const
{
    const Row &shown = m_rows.at(row);
    const QString name = cell(row, NameColumn)->text();
    shown.user->setAccessibleName(QStringLiteral("%1 %2").arg(QString::number(shown.number), name).trimmed());
    shown.guide->tell(shown.number, name);
}

/// A field whose row goes under it is deleted, but the view keeps a note of it to the end; one that is taken
/// out first leaves none.
void ParameterTableDialog::removeRows()
{
    m_finder->forgetRows();
    for (int row = 0; row < m_rows.size(); ++row) {
        m_rows.at(row).user->hide();
        m_ui->ParameterTable->removeCellWidget(row, UserColumn);
    }
    m_ui->ParameterTable->setRowCount(0);
    m_rows.clear();
}

void ParameterTableDialog::newDeviceParam(const Z7DeviceParam &param)
{
    const int row = rowForParam(param.number);
    showDeviceValue(row, param.value);
    showRemark(row, remark(m_rows.at(row), param));
    formatRow(row);
}

void ParameterTableDialog::showDeviceValue(int row, int value)
{
    Row &shown = m_rows[row];
    if (shown.isReported && shown.deviceValue == value)
        return;
    shown.isReported = true;
    shown.deviceValue = value;
    cell(row, DeviceColumn)->setText(QString::number(value));
}

void ParameterTableDialog::showRemark(int row, const QString &remark)
{
    Row &shown = m_rows[row];
    if (shown.remark == remark)
        return;
    shown.remark = remark;
    cell(row, RemarkColumn)->setText(remark);
    // Several findings are wider than the column.
    cell(row, RemarkColumn)->setToolTip(remark);
}

QString ParameterTableDialog::remark(const Row &row, const Z7DeviceParam &param) const
{
    QString remark;
    const auto add = [&remark](const QString &finding) {
        if (!remark.isEmpty())
            remark += QStringLiteral(", ");
        remark += finding;
    };
    const Z7ParamDefinition &definition = paramDefinitions()->row(param.number);
    if (param.error != 0)
        add(localizedErrorText(param.error));
    if (param.readFailed)
        add(texts("ParamReadingFailed", "Der Parameter konnte nicht gelesen werden"));
    if (param.writeFailed)
        add(texts("ParamWritingFailed", "Der Parameter konnte nicht geschrieben werden"));
    if (param.accessDenied)
        add(texts("AccessKeyIncorrectDesc",
            "Sie haben nicht die erforderliche Berechtigung, um diesen Parameter zu ändern"));
    // The record keeps only the fact of a conflict, so the number in this text is that of the flag.
    if (param.conflict)
        add(texts("ConflictingParam", "Das Schreiben des Parameters steht im Konflikt mit Parameter %1")
                .arg(static_cast<int>(param.conflict)));
    if (param.valid && !definition.isWithinLimits(param.value))
        add(texts("ParamOutOfScope", "Parameterwert außerhalb des zulässigen Bereichs"));
    if (isCurrentlyNotWritable(row, definition))
        add(barredByInputsText());
    return remark;
}

bool ParameterTableDialog::isCurrentlyNotWritable(const Row &row, const Z7ParamDefinition &definition) const
{
    return !row.user->text().isEmpty() && isBarredByInputs(definition, device);
}

void ParameterTableDialog::newUserParam(const Z7DeviceParam &param)
{
    if (!param.hasValue)
        return;
    const QSignalBlocker blocker(m_mapper);
    const int row = rowForParam(param.number);
    m_rows.at(row).user->setText(QString::number(param.value));
    formatRow(row);
}

void ParameterTableDialog::clearUserValues()
{
    const QSignalBlocker blocker(m_mapper);
    for (int row = 0; row < m_rows.size(); ++row) {
        PageStyle::emptyField(m_rows.at(row).user);
        formatRow(row);
    }
}

void ParameterTableDialog::showUserValues(const Z7DeviceParamSet &own)
{
    m_finder->forgetRows();
    // Another drive's file makes rows behind all others.
    while (!m_rows.isEmpty() && isForeignRow(m_rows.constLast(), own)) {
        m_paramRows.remove(m_rows.constLast().number);
        m_rows.removeLast();
        m_fittedWidths.clear();
    }
    m_ui->ParameterTable->setRowCount(m_rows.size());
    Z7DataWidget::showUserValues(own);
}

bool ParameterTableDialog::isForeignRow(const Row &row, const Z7DeviceParamSet &own) const
{
    return !row.isReported && !device.parameterSet.contains(row.number) && !own.contains(row.number);
}

void ParameterTableDialog::deviceUpdateFinished()
{
    // Fitting is most of what a record costs, and as a rule changes nothing. The user may have dragged a
    // column, though, and of very many rows only those near the screen are measured.
    const bool measuresAllRows =
        m_rows.size() <= m_ui->ParameterTable->horizontalHeader()->resizeContentsPrecision();
    if (measuresAllRows && m_fittedWidths == fittedWidths())
        return;
    for (const int column : fittedColumns)
        m_ui->ParameterTable->resizeColumnToContents(column);
    m_fittedWidths = fittedWidths();
}

QVector<int> ParameterTableDialog::fittedWidths() const
{
    QVector<int> widths;
    for (const int column : fittedColumns)
        widths.append(m_ui->ParameterTable->columnWidth(column));
    return widths;
}

bool ParameterTableDialog::event(QEvent *event)
{
    if (event->type() == QEvent::ApplicationFontChange || event->type() == QEvent::FontChange)
        fitFonts();
    switch (event->type()) {
    // The same texts may be of another width now.
    case QEvent::ApplicationFontChange:
    case QEvent::FontChange:
    case QEvent::LayoutDirectionChange:
    case QEvent::ScreenChangeInternal:
    case QEvent::Show:
    case QEvent::StyleChange:
        m_fittedWidths.clear();
        break;
    default:
        break;
    }
    return Z7DataWidget::event(event);
}

void ParameterTableDialog::findParameter()
{
    m_finder->open();
}

bool ParameterTableDialog::eventFilter(QObject *table, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return Z7DataWidget::eventFilter(table, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    const QAbstractSlider::SliderAction scrolling = scrollingOf(key->key());
    if (scrolling == QAbstractSlider::SliderNoAction || (key->modifiers() & ~Qt::KeypadModifier))
        return false;
    m_ui->ParameterTable->verticalScrollBar()->triggerAction(scrolling);
    return true;
}

void ParameterTableDialog::TextChanged(int row)
{
    if (row < 0 || row >= m_rows.size())
        return;
    reportUserText(m_rows.at(row).number, m_rows.at(row).user->text());
    formatRow(row);
}

ParameterTableDialog::Wish ParameterTableDialog::wish(const Row &row)
{
    bool isNumber = false;
    const int wanted = row.user->text().toInt(&isNumber);
    if (!isNumber)
        return Wish::None;
    return wanted == row.deviceValue ? Wish::Equal : Wish::Different;
}

QColor ParameterTableDialog::groundOf(Wish wish)
{
    switch (wish) {
    case Wish::Equal:
        return lightGrey;
    case Wish::Different:
        return darkGrey;
    default:
        return Qt::white;
    }
}

void ParameterTableDialog::formatRow(int row)
{
    const Wish wanted = wish(m_rows.at(row));
    if (m_rows.at(row).painted == wanted)
        return;
    m_rows[row].painted = wanted;
    for (const int column : {NumberColumn, NameColumn, DeviceColumn, UnitColumn, RemarkColumn})
        cell(row, column)->setBackground(groundOf(wanted));
    formatUserField(m_rows.at(row).user, wanted);
}

void ParameterTableDialog::formatUserField(QLineEdit *field, Wish wish) const
{
    QPalette fieldPalette = palette();
    fieldPalette.setColor(QPalette::Base, field->isEnabled() ? groundOf(wish) : QColor(lightGrey));
    field->setPalette(fieldPalette);
    if (field->isEnabled())
        field->setFont(fieldFont(wish));
}

QTableWidgetItem *ParameterTableDialog::cell(int row, int column) const
{
    return m_ui->ParameterTable->item(row, column);
}
