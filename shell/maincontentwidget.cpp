#include "shell/maincontentwidget.h"

#include "control/maincontroller.h"
#include "control/services/language.h"
#include "control/services/options.h"
#include "control/services/services.h"
#include "pages/keyboard.h"
#include "pages/pagefactory.h"
#include "pages/pagestyle.h"
#include "pages/parametertabledialog.h"
#include "shell/keynames.h"
#include "shell/pageicon.h"
#include "shell/treekeys.h"
#include "ui_maincontentwidget.h"

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QShortcut>
#include <QTableWidget>
#include <QTreeWidgetItemIterator>

#include <algorithm>

namespace {

/// As the form has it.
constexpr qreal titlePoints = 12;

constexpr int pageRole = TreeKeys::pageRole;
constexpr int deviceRole = TreeKeys::deviceRole;

/// The titles of the tree's pages, by page number.
QVector<QString> pageTitles()
{
    QVector<QString> titles(PageNumber::Count);
    for (const int pageNumber : drivePages())
        titles[pageNumber] = pageTitle(pageNumber);
    return titles;
}

/// What a person does who has just started the program, in the words of the window.
QString startHint()
{
    return pictureText("StartHint",
        "So beginnen Sie:\n"
        "1. Oben auf \"%1\" klicken und einen Antrieb suchen.\n"
        "2. Sein Passwort eingeben und mit \"%2\" bestätigen.\n"
        "3. Links den Antrieb oder eine seiner Seiten anklicken.")
        .arg(commonText("Connect", "Verbindungen..."), commonText("OK", "OK"));
}

} // namespace

/// An item of the tree. It knows what it shows, so that a rebuild sees at a glance what differs.
class MainContentWidget::PageItem : public QTreeWidgetItem
{
public:
    static constexpr int itemType = UserType + 1;

    PageItem(int page, int device)
        : QTreeWidgetItem(itemType)
        , pageNumber(page)
        , deviceId(device)
    {
        setData(0, pageRole, page);
        setData(0, deviceRole, device);
    }

    void setBold(bool bold)
    {
        if (m_isBold == bold)
            return;
        m_isBold = bold;
        setData(0, Qt::FontRole, bold ? QVariant(PageStyle::boldFont()) : QVariant());
    }

    void setData(int column, int role, const QVariant &value) override
    {
        if (role == Qt::DisplayRole || role == Qt::EditRole)
            m_text = value.toString();
        if (role == Qt::DecorationRole)
            m_marks = unknownMarks;
        QTreeWidgetItem::setData(column, role, value);
    }

    QVariant data(int column, int role) const override
    {
        // Nothing is worked out for screen readers before they ask.
        return role == Qt::AccessibleTextRole ? m_text + pageMarks(pageNumber, m_isModified, m_isActive)
                                              : QTreeWidgetItem::data(column, role);
    }

    /// Sets only what differs: every setting has the item painted anew.
    void show(const QString &text, bool modified, bool active)
    {
        if (m_text != text)
            setText(0, text);
        const int marks = (modified ? 2 : 0) | (active ? 1 : 0);
        if (m_marks == marks)
            return;
        // Who hears of the icon's change asks what the marks are.
        m_isModified = modified;
        m_isActive = active;
        setIcon(0, pageIcon(pageNumber, deviceId, modified, active));
        m_marks = marks;
    }

    const int pageNumber;
    const int deviceId;

private:
    static constexpr int unknownMarks = -1;

    bool m_isModified = false;
    bool m_isActive = false;
    QString m_text;
    int m_marks = unknownMarks;
    bool m_isBold = false;
};

MainContentWidget::MainContentWidget(Z7MainController *controller, QWidget *parent)
    : QWidget(parent)
    , m_controller(controller)
    , m_ui(std::make_unique<Ui::MainContentWidget>())
{
    m_ui->setupUi(this);
    registerDeviceTypes();
    PageStyle::paintGround(m_ui->DataWidgetContent, Qt::white);
    PageStyle::paintGround(m_ui->DeviceCommButtonFrame, PageStyle::lightGrey());
    m_ui->DeviceCommButtonFrame->setEnabled(false);
    m_ui->LContentTitle->setText(QString());
    m_ui->LParamWarning->setText(QString());
    m_ui->LParamWarning->setTextFormat(Qt::PlainText);
    PageStyle::paintText(m_ui->LParamWarning, Qt::red);
    m_ui->LParamWarning->setFont(PageStyle::loudFont());
    PageStyle::keepPlaceWhenHidden(m_ui->LParamWarning);
    setButtonTexts();
    createKeys();
    disableDataButtons();
    m_ui->LStartHint->setText(startHint());
    fitTitleFont();
    // What does not fit is scrolled to; a column as wide as the tree would cut it.
    m_ui->MainMenuTree->header()->setStretchLastSection(false);
    m_ui->MainMenuTree->viewport()->installEventFilter(this);
    connect(m_controller, SIGNAL(NoDeviceSelected()), SLOT(nameShownPage()));
}

MainContentWidget::~MainContentWidget() = default;

void MainContentWidget::setButtonTexts()
{
    m_ui->BtnStore->setText(commonText("Store", "Im Motor speichern"));
    m_ui->BtnWriteAndStore->setText(commonText("WriteAndStore", "Schreiben+Speichern"));
    m_ui->BtnDownload->setText(commonText("Download", "Lesen"));
    m_ui->BtnUpload->setText(commonText("Upload", "Schreiben"));
    m_ui->BtnDownload->setToolTip(KeyNames::read());
    m_ui->BtnUpload->setToolTip(KeyNames::write());
    m_ui->BtnWriteAndStore->setToolTip(KeyNames::writeAndStore());
    m_ui->MainMenuTree->setAccessibleName(toolTipText("Tree", "Antriebe und Seiten"));
    m_ui->MainContentScrollArea->setAccessibleName(toolTipText("Page", "Inhalt der Seite"));
    m_ui->LParamWarning->setAccessibleDescription(toolTipText("ConflictLine", "Konflikt der Werte"));
}

void MainContentWidget::createKeys()
{
    Keyboard::pressByKey(this, Qt::Key_F5, m_ui->BtnDownload);
    // The key of the number block is another one.
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        Keyboard::pressByKey(this, Qt::CTRL + key, m_ui->BtnUpload);
        Keyboard::pressByKey(this, Qt::CTRL + Qt::SHIFT + key, m_ui->BtnWriteAndStore);
    }
    auto *find = new QShortcut(Qt::CTRL + Qt::SHIFT + Qt::Key_F, this);
    find->setAutoRepeat(false);
    connect(find, SIGNAL(activated()), SLOT(findParameter()));
    Keyboard::showFocus(m_ui->MainMenuTree);
    Keyboard::showFocus(m_ui->MainContentScrollArea);
    m_treeKeys = new TreeKeys(m_ui->MainMenuTree);
}

void MainContentWidget::enableDataButtons()
{
    m_ui->LParamWarning->show();
    connect(m_ui->BtnStore, SIGNAL(clicked()), m_controller, SLOT(StoreData()), Qt::UniqueConnection);
    connect(m_ui->BtnWriteAndStore, SIGNAL(clicked()), m_controller, SLOT(WriteAndStoreData()),
        Qt::UniqueConnection);
    connect(m_ui->BtnDownload, SIGNAL(clicked()), m_controller, SLOT(DownloadData()), Qt::UniqueConnection);
    connect(m_ui->BtnUpload, SIGNAL(clicked()), m_controller, SLOT(UploadData()), Qt::UniqueConnection);
}

void MainContentWidget::disableDataButtons()
{
    m_ui->LParamWarning->hide();
    disconnect(m_ui->BtnStore, SIGNAL(clicked()), m_controller, SLOT(StoreData()));
    disconnect(m_ui->BtnWriteAndStore, SIGNAL(clicked()), m_controller, SLOT(WriteAndStoreData()));
    disconnect(m_ui->BtnDownload, SIGNAL(clicked()), m_controller, SLOT(DownloadData()));
    disconnect(m_ui->BtnUpload, SIGNAL(clicked()), m_controller, SLOT(UploadData()));
}

void MainContentWidget::setConflictLine(const QString &text)
{
    m_ui->LParamWarning->setText(text);
}

void MainContentWidget::setClickConnected(bool connected)
{
    // Every record and every keystroke comes here.
    if (m_clickConnected == connected)
        return;
    m_clickConnected = connected;
    if (connected)
        connect(m_ui->MainMenuTree, SIGNAL(itemClicked(QTreeWidgetItem *, int)),
            SLOT(MainMenuItemClicked(QTreeWidgetItem *, int)));
    else
        disconnect(m_ui->MainMenuTree, SIGNAL(itemClicked(QTreeWidgetItem *, int)), this,
            SLOT(MainMenuItemClicked(QTreeWidgetItem *, int)));
}

void MainContentWidget::MainMenuItemClicked(QTreeWidgetItem *item, int column)
{
    Q_UNUSED(column)
    if (!item)
        return;
    setClickConnected(false);
    m_ui->DeviceCommButtonFrame->setEnabled(false);
    // Showing the page may rebuild the tree, which deletes the item.
    const int pageNumber = item->data(0, pageRole).toInt();
    const int deviceId = item->data(0, deviceRole).toInt();
    if (m_controller->showPage(pageNumber, deviceId, m_ui->MainContentScrollArea, m_ui->DataLayout)) {
        enableDataButtons();
        m_ui->LContentTitle->setText(pageTitle(pageNumber));
        m_shownPage = pageNumber;
        m_ui->DeviceCommButtonFrame->setEnabled(true);
        Keyboard::putInTabOrder(m_ui->DataWidgetContent, m_ui->MainContentScrollArea);
    } else {
        takeOutShownPage();
    }
    nameShownPage();
    // With polling on, the next record rebuilds the tree, and that connects it again. Without a drive none
    // comes.
    const bool rebuildComes =
        Z7Services::instance()->options()->pollingInterval() >= 1 && m_controller->hasCurrentDevice();
    if (!rebuildComes)
        setClickConnected(true);
}

QList<QWidget *> MainContentWidget::pagesInContent() const
{
    return m_ui->DataWidgetContent->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
}

void MainContentWidget::takeOutShownPage()
{
    const QList<QWidget *> pages = pagesInContent();
    std::for_each(pages.cbegin(), pages.cend(), PageStyle::takeOut);
}

// --- what is shown ---

void MainContentWidget::nameShownPage()
{
    if (pagesInContent().isEmpty())
        m_shownPage = noPage;
    m_ui->LStartHint->setVisible(m_shownPage == noPage);
    nameShownDrive();
    for (QTreeWidgetItemIterator item(m_ui->MainMenuTree); *item; ++item) {
        if (PageItem *page = pageItem(*item))
            markWhetherShown(page);
    }
    fitTreeColumn();
}

void MainContentWidget::nameShownDrive()
{
    const bool hasDrive = m_shownPage != noPage && m_controller->hasCurrentDevice();
    m_ui->LContentDrive->setText(hasDrive ? deviceName(m_controller->currentDeviceRecord()) : QString());
}

void MainContentWidget::markWhetherShown(PageItem *item) const
{
    const bool isOfShownDrive =
        m_controller->hasCurrentDevice() && item->deviceId == m_controller->currentDeviceId();
    const bool isNetwork = item->pageNumber == PageNumber::Network;
    const bool isDrive = item->pageNumber == PageNumber::DeviceStatus;
    const bool isShownPage = item->pageNumber == m_shownPage && (isOfShownDrive || isNetwork);
    item->setBold(isShownPage || (isDrive && isOfShownDrive && m_shownPage != noPage));
}

void MainContentWidget::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::ApplicationFontChange && event->type() != QEvent::FontChange)
        return;
    m_ui->LParamWarning->setFont(PageStyle::loudFont());
    fitTitleFont();
    fitTreeColumn();
}

void MainContentWidget::fitTitleFont()
{
    // A title stays larger than the text.
    QFont font = m_ui->LContentTitle->font();
    font.setPointSizeF(std::max(titlePoints, PageStyle::pointsOf(QApplication::font()) + 2));
    m_ui->LContentTitle->setFont(font);
}

void MainContentWidget::fitTreeColumn()
{
    QTreeWidget *tree = m_ui->MainMenuTree;
    const int needed = static_cast<QAbstractItemView *>(tree)->sizeHintForColumn(0);
    tree->setColumnWidth(0, std::max(tree->viewport()->width(), needed));
}

void MainContentWidget::setWriteTip(const QString &text)
{
    const QString above = text.isEmpty() ? text : text + QLatin1Char('\n');
    m_ui->BtnUpload->setToolTip(above + KeyNames::write());
    m_ui->BtnWriteAndStore->setToolTip(above + KeyNames::writeAndStore());
}

void MainContentWidget::clickPage(int pageNumber, int deviceId)
{
    QTreeWidgetItem *item = m_treeKeys->itemOf(pageNumber, deviceId);
    if (!item)
        return;
    m_ui->MainMenuTree->scrollToItem(item);
    emit m_ui->MainMenuTree->itemClicked(item, 0);
}

void MainContentWidget::focusParameter(int number)
{
    QWidget *field = userField(number);
    if (field && field->isVisible() && field->isEnabled())
        field->setFocus(Qt::OtherFocusReason);
}

QWidget *MainContentWidget::userField(int number) const
{
    constexpr int fieldColumn = 4;
    const auto *table = m_ui->DataWidgetContent->findChild<QTableWidget *>(QStringLiteral("ParameterTable"));
    if (!table) {
        const QString hex = QString::number(number, 16).toUpper().rightJustified(2, QLatin1Char('0'));
        return m_ui->DataWidgetContent->findChild<QWidget *>(QStringLiteral("edParam0x%1User").arg(hex));
    }
    for (int row = 0; row < table->rowCount(); ++row) {
        if (table->item(row, 0)->text().toInt() == number)
            return table->cellWidget(row, fieldColumn);
    }
    return nullptr;
}

bool MainContentWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        fitTreeColumn();
    return QWidget::eventFilter(watched, event);
}

void MainContentWidget::findParameter()
{
    if (!m_controller->hasCurrentDevice())
        return;
    const bool isShown = m_ui->DataWidgetContent->findChild<ParameterTableDialog *>();
    const int drive = m_controller->currentDeviceRecord().deviceId();
    if (!isShown)
        clickPage(PageNumber::ParameterTable, drive);
    if (auto *table = m_ui->DataWidgetContent->findChild<ParameterTableDialog *>())
        table->findParameter();
}

// --- the tree ---

void MainContentWidget::rebuildTree(const QList<int> &deviceIds)
{
    if (m_rebuilding || !m_ui->MainMenuTree->isEnabled())
        return;
    m_rebuilding = true;
    // Where only marks change, the items stay, so that a click that has begun on one of them is not lost.
    if (showsSameDrives(deviceIds))
        refreshTree(deviceIds);
    else
        refillTree(deviceIds);
    nameShownDrive();
    m_rebuilding = false;
    setClickConnected(true);
}

bool MainContentWidget::showsSameDrives(const QList<int> &deviceIds) const
{
    const QTreeWidgetItem *parent = parentOfDrives(deviceIds.size());
    if (!parent || parent->childCount() != deviceIds.size())
        return false;
    for (int i = 0; i < deviceIds.size(); ++i) {
        const PageItem *drive = pageItem(parent->child(i));
        if (!drive || drive->pageNumber != PageNumber::DeviceStatus || drive->deviceId != deviceIds.at(i))
            return false;
    }
    return true;
}

QTreeWidgetItem *MainContentWidget::parentOfDrives(int drives) const
{
    if (drives < 2)
        return m_ui->MainMenuTree->invisibleRootItem();
    PageItem *network = pageItem(m_ui->MainMenuTree->topLevelItem(0));
    return network && network->pageNumber == PageNumber::Network ? network : nullptr;
}

MainContentWidget::PageItem *MainContentWidget::pageItem(QTreeWidgetItem *item)
{
    return item && item->type() == PageItem::itemType ? static_cast<PageItem *>(item) : nullptr;
}

void MainContentWidget::refreshTree(const QList<int> &deviceIds)
{
    QTreeWidget *tree = m_ui->MainMenuTree;
    QTreeWidgetItem *parent = parentOfDrives(deviceIds.size());
    const QVector<QString> titles = pageTitles();
    PageItem *network = pageItem(parent);
    bool isExpanded = !network || network->isExpanded();
    if (network)
        refreshNetwork(network);
    for (int i = 0; i < deviceIds.size(); ++i) {
        refreshDrive(pageItem(parent->child(i)), titles);
        isExpanded = isExpanded && parent->child(i)->isExpanded();
    }
    if (!isExpanded)
        tree->expandAll();
    m_treeKeys->forgetSelection();
}

void MainContentWidget::refillTree(const QList<int> &deviceIds)
{
    QTreeWidget *tree = m_ui->MainMenuTree;
    const int scrollPosition = tree->verticalScrollBar()->value();
    const bool hadFocus = tree->hasFocus();
    m_treeKeys->forgetSelection();
    setClickConnected(false);
    tree->setUpdatesEnabled(false);
    tree->setEnabled(false);
    tree->clear();
    tree->addTopLevelItems(makeItems(deviceIds));
    tree->expandAll();
    tree->setEnabled(true);
    m_treeKeys->comeBack(hadFocus);
    tree->doItemsLayout();
    fitTreeColumn();
    tree->verticalScrollBar()->setValue(scrollPosition);
    tree->setUpdatesEnabled(true);
    // Disabling the tree has passed the focus on, to a button for all that is known.
    if (hadFocus)
        tree->setFocus();
}

QList<QTreeWidgetItem *> MainContentWidget::makeItems(const QList<int> &deviceIds) const
{
    const QVector<QString> titles = pageTitles();
    QList<QTreeWidgetItem *> drives;
    for (const int deviceId : deviceIds) {
        auto *drive = new PageItem(PageNumber::DeviceStatus, deviceId);
        for (const int pageNumber : drivePages())
            drive->addChild(new PageItem(pageNumber, deviceId));
        refreshDrive(drive, titles);
        drives.append(drive);
    }
    if (drives.size() < 2)
        return drives;
    auto *network = new PageItem(PageNumber::Network, 0);
    refreshNetwork(network);
    network->addChildren(drives);
    return {network};
}

void MainContentWidget::refreshNetwork(PageItem *network) const
{
    network->show(pageTitle(PageNumber::Network), false, false);
}

void MainContentWidget::refreshDrive(PageItem *drive, const QVector<QString> &titles) const
{
    const int deviceId = drive->deviceId;
    const Z7Device *device = m_controller->findDevice(deviceId);
    const bool active = m_controller->isAccessGranted(deviceId);
    const auto refresh = [this, deviceId, active](PageItem *item, const QString &text) {
        item->show(text, m_controller->hasModifiedParams(item->pageNumber, deviceId), active);
        markWhetherShown(item);
    };
    refresh(drive, deviceName(device ? *device : Z7Device()));
    for (int i = 0; i < drive->childCount(); ++i) {
        PageItem *page = pageItem(drive->child(i));
        refresh(page, titles.at(page->pageNumber));
    }
}
