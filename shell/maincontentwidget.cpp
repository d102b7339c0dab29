#include "shell/maincontentwidget.h"

#include "control/maincontroller.h"
#include "control/services/language.h"
#include "control/services/options.h"
#include "control/services/services.h"
#include "pages/pagefactory.h"
#include "pages/pagestyle.h"
#include "shell/pageicon.h"
#include "ui_maincontentwidget.h"

#include <QScrollBar>

namespace {

constexpr int pageRole = Qt::UserRole + 1;
constexpr int deviceRole = Qt::UserRole + 2;

/// The pages below a drive, from top to bottom.
constexpr int drivePages[] = {
    PageNumber::OperationsMode,
    PageNumber::FixedResolutions,
    PageNumber::Positioning,
    PageNumber::CalibrationRotations,
    PageNumber::CalibrationCurrent,
    PageNumber::Accelerations,
    PageNumber::SpeedRegulation,
    PageNumber::CurrentLimits,
    PageNumber::Output,
    PageNumber::FixResistance,
    PageNumber::VoltageLimits,
    PageNumber::RS485,
    PageNumber::ParameterTable,
    PageNumber::FirmwareUpload,
};

int pageOf(const QTreeWidgetItem *item)
{
    return item->data(0, pageRole).toInt();
}

int deviceOf(const QTreeWidgetItem *item)
{
    return item->data(0, deviceRole).toInt();
}

QTreeWidgetItem *makeItem(int pageNumber, int deviceId)
{
    auto *item = new QTreeWidgetItem;
    item->setData(0, pageRole, pageNumber);
    item->setData(0, deviceRole, deviceId);
    return item;
}

/// In the order of the pages below a drive.
QStringList drivePageTitles()
{
    QStringList titles;
    for (const int pageNumber : drivePages)
        titles.append(pageTitle(pageNumber));
    return titles;
}

} // namespace

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
    PageStyle::keepPlaceWhenHidden(m_ui->LParamWarning);
    setButtonTexts();
    disableDataButtons();
}

MainContentWidget::~MainContentWidget() = default;

void MainContentWidget::setButtonTexts()
{
    m_ui->BtnStore->setText(commonText("Store", "Im Motor speichern"));
    m_ui->BtnWriteAndStore->setText(commonText("WriteAndStore", "Schreiben+Speichern"));
    m_ui->BtnDownload->setText(commonText("Download", "Lesen"));
    m_ui->BtnUpload->setText(commonText("Upload", "Schreiben"));
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
    disconnect(m_ui->MainMenuTree, SIGNAL(itemClicked(QTreeWidgetItem *, int)), this,
        SLOT(MainMenuItemClicked(QTreeWidgetItem *, int)));
    if (connected)
        connect(m_ui->MainMenuTree, SIGNAL(itemClicked(QTreeWidgetItem *, int)),
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
    const int pageNumber = pageOf(item);
    const int deviceId = deviceOf(item);
    if (m_controller->showPage(pageNumber, deviceId, m_ui->MainContentScrollArea, m_ui->DataLayout)) {
        enableDataButtons();
        m_ui->LContentTitle->setText(pageTitle(pageNumber));
        m_ui->DeviceCommButtonFrame->setEnabled(true);
    } else {
        takeOutShownPage();
    }
    // With polling on, the next record rebuilds the tree, and that connects it again. Without a drive none
    // comes.
    const bool rebuildComes =
        Z7Services::instance()->options()->pollingInterval() >= 1 && m_controller->hasCurrentDevice();
    if (!rebuildComes)
        setClickConnected(true);
}

void MainContentWidget::takeOutShownPage()
{
    const QObjectList children = m_ui->DataWidgetContent->children();
    for (QObject *child : children) {
        if (auto *page = qobject_cast<QWidget *>(child))
            PageStyle::takeOut(page);
    }
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
    m_rebuilding = false;
    setClickConnected(true);
}

QTreeWidgetItem *MainContentWidget::networkItem() const
{
    QTreeWidgetItem *first = m_ui->MainMenuTree->topLevelItem(0);
    return first && pageOf(first) == PageNumber::Network ? first : nullptr;
}

bool MainContentWidget::showsSameDrives(const QList<int> &deviceIds) const
{
    const QTreeWidgetItem *network = networkItem();
    if ((network != nullptr) != (deviceIds.size() > 1))
        return false;
    const QTreeWidgetItem *parent = network ? network : m_ui->MainMenuTree->invisibleRootItem();
    if (parent->childCount() != deviceIds.size())
        return false;
    for (int i = 0; i < deviceIds.size(); ++i) {
        if (deviceOf(parent->child(i)) != deviceIds.at(i))
            return false;
    }
    return true;
}

void MainContentWidget::refreshTree(const QList<int> &deviceIds)
{
    QTreeWidget *tree = m_ui->MainMenuTree;
    QTreeWidgetItem *network = networkItem();
    const QTreeWidgetItem *parent = network ? network : tree->invisibleRootItem();
    const QStringList titles = drivePageTitles();
    bool isExpanded = !network || network->isExpanded();
    if (network)
        refreshNetwork(network);
    for (int i = 0; i < deviceIds.size(); ++i) {
        refreshDrive(parent->child(i), deviceIds.at(i), titles);
        isExpanded = isExpanded && parent->child(i)->isExpanded();
    }
    if (!isExpanded)
        tree->expandAll();
    if (tree->currentIndex().isValid() || tree->selectionModel()->hasSelection())
        tree->setCurrentItem(nullptr);
}

void MainContentWidget::refillTree(const QList<int> &deviceIds)
{
    QTreeWidget *tree = m_ui->MainMenuTree;
    const int scrollPosition = tree->verticalScrollBar()->value();
    const bool hadFocus = tree->hasFocus();
    setClickConnected(false);
    tree->setUpdatesEnabled(false);
    tree->setEnabled(false);
    tree->clear();
    tree->addTopLevelItems(makeItems(deviceIds));
    tree->expandAll();
    tree->setEnabled(true);
    tree->doItemsLayout();
    tree->verticalScrollBar()->setValue(scrollPosition);
    tree->setUpdatesEnabled(true);
    // Disabling the tree has passed the focus on, to a button for all that is known.
    if (hadFocus)
        tree->setFocus();
}

QList<QTreeWidgetItem *> MainContentWidget::makeItems(const QList<int> &deviceIds) const
{
    const QStringList titles = drivePageTitles();
    QList<QTreeWidgetItem *> drives;
    for (const int deviceId : deviceIds) {
        QTreeWidgetItem *drive = makeItem(PageNumber::DeviceStatus, deviceId);
        for (const int pageNumber : drivePages)
            drive->addChild(makeItem(pageNumber, deviceId));
        refreshDrive(drive, deviceId, titles);
        drives.append(drive);
    }
    if (drives.size() < 2)
        return drives;
    QTreeWidgetItem *network = makeItem(PageNumber::Network, 0);
    refreshNetwork(network);
    network->addChildren(drives);
    return {network};
}

void MainContentWidget::refreshNetwork(QTreeWidgetItem *network) const
{
    refreshItem(network, PageNumber::Network, 0, pageTitle(PageNumber::Network), false);
}

void MainContentWidget::refreshDrive(QTreeWidgetItem *drive, int deviceId, const QStringList &titles) const
{
    const bool active = m_controller->isAccessGranted(deviceId);
    refreshItem(
        drive, PageNumber::DeviceStatus, deviceId, deviceName(m_controller->device(deviceId)), active);
    for (int i = 0; i < drive->childCount(); ++i)
        refreshItem(drive->child(i), drivePages[i], deviceId, titles.at(i), active);
}

/// Sets only what differs: every setting has the item painted anew.
void MainContentWidget::refreshItem(
    QTreeWidgetItem *item, int pageNumber, int deviceId, const QString &text, bool active) const
{
    if (item->text(0) != text)
        item->setText(0, text);
    const bool modified = m_controller->hasModifiedParams(pageNumber, deviceId);
    const QIcon icon = pageIcon(pageNumber, deviceId, modified, active);
    if (item->icon(0).cacheKey() != icon.cacheKey())
        item->setIcon(0, icon);
}
