// The tree of the drives and their pages, and how a person's clicks in it fare while records come in.

#include "control/services/language.h"
#include "control/services/options.h"
#include "control/services/services.h"
#include "pages/fixedresolutionsdialog.h"
#include "pages/pagefactory.h"
#include "tests/shell/contentband.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/listedports.h"
#include "tests/support/person.h"

#include <QLineEdit>
#include <QScrollBar>
#include <QtTest>

#include <memory>

using namespace PageNumber;
using namespace ShellTest;

namespace {

constexpr int pageRole = Qt::UserRole + 1;
constexpr int deviceRole = Qt::UserRole + 2;
constexpr int fixedSpeed = 0x17;

const char table[] = ":images/table-icon_24px_active.png";
const char modifiedTable[] = ":images/table-icon_24px_active_modified.png";

QStringList textsBelow(const QTreeWidgetItem *parent)
{
    QStringList texts;
    for (int i = 0; i < parent->childCount(); ++i)
        texts << parent->child(i)->text(0);
    return texts;
}

} // namespace

class TestPageTree : public IsolatedTest
{
    Q_OBJECT

private slots:
    void treeIsEmptyWithoutDrive();
    void singleDriveStandsAtTop();
    void twoDrivesStandBelowNetwork();
    void networkGoesWithSecondDrive();
    void drivesStandInOrderOfController();
    void pagesStandInSameOrderBelowEveryDrive();
    void remoteControlHasNoItem();
    void itemsKnowTheirPageAndTheirDrive();
    void itemsAreTitledFromLanguageFile();
    void everythingIsExpanded();
    void collapsedItemIsExpandedByNextRecord_data();
    void collapsedItemIsExpandedByNextRecord();
    void expandingKeepsScrollPosition();
    void clickOnDriveThatWasCollapsedIsNotLost();
    void itemsAreTitledAnewByNextRecord_data();
    void itemsAreTitledAnewByNextRecord();
    void titleOfNetworkIsAskedForWithItsItem();

    void driveWithoutAccessHasInactiveIcons();
    void iconsFollowAccessOfDrive();
    void unwrittenChangeMarksItsPage();
    void unwrittenChangeDoesNotMarkDrive();
    void changeOfOneDriveMarksNoOther();
    void markGoesWhenDriveHasValue();
    void markReturnsWhenDriveLosesValue();

    void selectionGoesWithRebuild();
    void scrollPositionIsKeptByRebuild_data();
    void scrollPositionIsKeptByRebuild();
    void clickThatBeginsBeforeRefreshIsNotLost();
    void focusStaysInTree_data();
    void focusStaysInTree();
    void focusStaysInFieldOfPage();

private:
    void prepare() override;
    void tidyUp() override;

    void list(const QList<Z7Device> &devices) { band->controller.setDevices(devices); }
    QTreeWidget &tree() const { return band->tree(); }
    QImage icon(int page, const Z7Device &device) const { return image(band->item(page, device)->icon(0)); }
    QTreeWidgetItem *top(int place) const { return tree().topLevelItem(place); }
    /// Makes page 5 one that is about the fixed speed, whatever fields its form has.
    void letPageBeAboutTheFixedSpeed(const Z7Device &device);

    std::unique_ptr<ListedPorts> ports;
    std::unique_ptr<ContentBand<>> band;
    Z7Device first;
    Z7Device second;
};

void TestPageTree::prepare()
{
    writeDefinitions();
    ports = std::make_unique<ListedPorts>();
    ports->plugUsb(firstPort, QString());
    // No test of this file lasts that long, so nothing moves on the bus.
    Z7Services::instance()->options()->setPollingInterval(1000000);
    band = std::make_unique<ContentBand<>>();
    QVERIFY(QTest::qWaitForWindowActive(band->content->window()));
    first = drive(1);
    second = drive(2);
}

void TestPageTree::tidyUp()
{
    band.reset();
    ports.reset();
}

void TestPageTree::letPageBeAboutTheFixedSpeed(const Z7Device &device)
{
    band->click(FixedResolutions, device);
    band->content->findChild<FixedResolutionsDialog *>()->addParamId(fixedSpeed);
}

void TestPageTree::treeIsEmptyWithoutDrive()
{
    list({});
    QCOMPARE(tree().topLevelItemCount(), 0);
}

void TestPageTree::singleDriveStandsAtTop()
{
    list({first});
    QCOMPARE(tree().topLevelItemCount(), 1);
    QCOMPARE(top(0)->text(0), QStringLiteral("Port0 - Z7.1"));
    QVERIFY(!band->item(Network, Z7Device()));
}

void TestPageTree::twoDrivesStandBelowNetwork()
{
    list({first, second});
    QCOMPARE(tree().topLevelItemCount(), 1);
    QCOMPARE(top(0)->text(0), QStringLiteral("Z7-Netzwerk"));
    QCOMPARE(image(top(0)->icon(0)), image(":images/network-icon-hi_24px.png"));
    QCOMPARE(
        textsBelow(top(0)), QStringList({QStringLiteral("Port0 - Z7.1"), QStringLiteral("Port0 - Z7.2")}));
}

void TestPageTree::networkGoesWithSecondDrive()
{
    list({first, second});
    list({second});
    QCOMPARE(tree().topLevelItemCount(), 1);
    QCOMPARE(top(0)->text(0), QStringLiteral("Port0 - Z7.2"));
}

void TestPageTree::drivesStandInOrderOfController()
{
    list({drive(30), second, first});
    QCOMPARE(textsBelow(top(0)),
        QStringList({QStringLiteral("Port0 - Z7.1"), QStringLiteral("Port0 - Z7.2"),
            QStringLiteral("Port0 - Z7.30")}));
}

void TestPageTree::pagesStandInSameOrderBelowEveryDrive()
{
    list({first, driveWithoutAccess(2)});
    const QStringList pages {QStringLiteral("Betriebsmodus"), QStringLiteral("Festdrehzahlen"),
        QStringLiteral("Positionierung"), QStringLiteral("Sollwertskalierung Drehzahl"),
        QStringLiteral("Sollwertskalierung Strom"), QStringLiteral("Dynamik"), QStringLiteral("Regelung"),
        QStringLiteral("Stromgrenzen"), QStringLiteral("Digitale Ausgänge"),
        QStringLiteral("Ballastwiderstand"), QStringLiteral("Spannungsgrenzen"), QStringLiteral("RS485"),
        QStringLiteral("Parametertabelle"), QStringLiteral("Firmware update")};
    QCOMPARE(textsBelow(band->item(DeviceStatus, first)), pages);
    QCOMPARE(textsBelow(band->item(DeviceStatus, second)), pages);
}

void TestPageTree::remoteControlHasNoItem()
{
    list({first});
    QVERIFY(!band->item(RemoteControl, first));
}

void TestPageTree::itemsKnowTheirPageAndTheirDrive()
{
    list({first, second});
    const int pages[] = {8, 5, 6, 11, 12, 3, 2, 4, 7, 13, 14, 15, 9, 10};
    QCOMPARE(top(0)->data(0, pageRole), QVariant(0));
    for (int i = 0; i < 2; ++i) {
        const QTreeWidgetItem *item = top(0)->child(i);
        const int id = (i == 0 ? first : second).deviceId();
        QCOMPARE(item->data(0, pageRole), QVariant(1));
        QCOMPARE(item->data(0, deviceRole), QVariant(id));
        for (int place = 0; place < item->childCount(); ++place) {
            QCOMPARE(item->child(place)->data(0, pageRole), QVariant(pages[place]));
            QCOMPARE(item->child(place)->data(0, deviceRole), QVariant(id));
        }
    }
}

void TestPageTree::itemsAreTitledFromLanguageFile()
{
    languageText("DialogNetworkStatus", "Title", QStringLiteral("Network"));
    languageText("DialogRS485", "Title", QStringLiteral("Bus"));
    list({first, second});
    QCOMPARE(top(0)->text(0), QStringLiteral("Network"));
    QCOMPARE(band->item(15, first)->text(0), QStringLiteral("Bus"));
}

void TestPageTree::everythingIsExpanded()
{
    list({first, second});
    QVERIFY(top(0)->isExpanded());
    QVERIFY(band->item(DeviceStatus, first)->isExpanded());
    QVERIFY(band->item(DeviceStatus, second)->isExpanded());
}

void TestPageTree::collapsedItemIsExpandedByNextRecord_data()
{
    QTest::addColumn<int>("page");
    QTest::newRow("drive") << int(DeviceStatus);
    QTest::newRow("network") << int(Network);
}

void TestPageTree::collapsedItemIsExpandedByNextRecord()
{
    QFETCH(int, page);
    list({first, second});
    QTreeWidgetItem *item = page == Network ? top(0) : band->item(DeviceStatus, second);
    tree().setCurrentItem(item);
    QTest::keyClick(&tree(), Qt::Key_Minus);
    QVERIFY(!item->isExpanded());
    band->bring(first);
    QVERIFY(item->isExpanded());
}

void TestPageTree::expandingKeepsScrollPosition()
{
    list({first, second, drive(3)});
    tree().setCurrentItem(band->item(DeviceStatus, drive(3)));
    QTest::keyClick(&tree(), Qt::Key_Minus);
    QScrollBar *bar = tree().verticalScrollBar();
    QVERIFY(bar->maximum() > 5);
    bar->setValue(5);
    band->bring(first);
    QCOMPARE(bar->value(), 5);
}

void TestPageTree::clickOnDriveThatWasCollapsedIsNotLost()
{
    list({first, second});
    tree().setCurrentItem(band->item(DeviceStatus, second));
    QTest::keyClick(&tree(), Qt::Key_Minus);
    QTreeWidgetItem *item = band->item(ParameterTable, first);
    QVERIFY(Person::pressDown(item));
    band->bring(second);
    QVERIFY(Person::letGo(item));
    QCOMPARE(textOf(*band->content, "LContentTitle"), QStringLiteral("Parametertabelle"));
}

void TestPageTree::itemsAreTitledAnewByNextRecord_data()
{
    QTest::addColumn<int>("page");
    QTest::newRow("network") << int(Network);
    QTest::newRow("drive") << int(DeviceStatus);
    QTest::newRow("page") << int(ParameterTable);
}

void TestPageTree::itemsAreTitledAnewByNextRecord()
{
    QFETCH(int, page);
    list({first, second});
    QTreeWidgetItem *item = page == Network ? top(0) : band->item(page, second);
    const QString title = item->text(0);
    item->setText(0, QStringLiteral("?"));
    band->bring(first);
    item = page == Network ? top(0) : band->item(page, second);
    QCOMPARE(item->text(0), title);
}

void TestPageTree::titleOfNetworkIsAskedForWithItsItem()
{
    const auto title = [] { return languageText("DialogNetworkStatus", "Title", QStringLiteral("?")); };
    list({first});
    QCOMPARE(title(), QStringLiteral("?"));
}

void TestPageTree::driveWithoutAccessHasInactiveIcons()
{
    list({driveWithoutAccess(1), second});
    QCOMPARE(icon(DeviceStatus, first), image(":images/home-icon_24px_inactive.png"));
    QCOMPARE(icon(ParameterTable, first), image(":images/table-icon_24px_inactive.png"));
    QCOMPARE(icon(DeviceStatus, second), image(":images/home-icon_24px_active.png"));
    QCOMPARE(icon(ParameterTable, second), image(table));
}

void TestPageTree::iconsFollowAccessOfDrive()
{
    list({first});
    band->bring(driveWithoutAccess(1));
    QCOMPARE(icon(DeviceStatus, first), image(":images/home-icon_24px_inactive.png"));
    QCOMPARE(icon(ParameterTable, first), image(":images/table-icon_24px_inactive.png"));
    band->bring(first);
    QCOMPARE(icon(DeviceStatus, first), image(":images/home-icon_24px_active.png"));
}

void TestPageTree::unwrittenChangeMarksItsPage()
{
    list({first});
    letPageBeAboutTheFixedSpeed(first);
    band->controller.setUserParams(first.deviceId(), change(fixedSpeed, 500));
    for (int page : {8, 6, 11, 12, 3, 2, 4, 7, 13, 14, 15, 10})
        QVERIFY2(icon(page, first) == image(table), QByteArray::number(page).constData());
    QCOMPARE(icon(FixedResolutions, first), image(modifiedTable));
    // The table shows every parameter.
    QCOMPARE(icon(ParameterTable, first), image(modifiedTable));
}

void TestPageTree::unwrittenChangeDoesNotMarkDrive()
{
    list({first});
    band->controller.setUserParams(first.deviceId(), change(fixedSpeed, 500));
    QCOMPARE(icon(ParameterTable, first), image(modifiedTable));
    QCOMPARE(icon(DeviceStatus, first), image(":images/home-icon_24px_active.png"));
}

void TestPageTree::changeOfOneDriveMarksNoOther()
{
    list({first, second});
    band->controller.setUserParams(second.deviceId(), change(fixedSpeed, 500));
    QCOMPARE(icon(ParameterTable, first), image(table));
    QCOMPARE(icon(ParameterTable, second), image(modifiedTable));
}

void TestPageTree::markGoesWhenDriveHasValue()
{
    list({first});
    band->controller.setUserParams(first.deviceId(), change(fixedSpeed, 500));
    Z7Device written = band->controller.device(first.deviceId());
    written.updateParam(Z7DeviceParam(fixedSpeed, 500, 1, true));
    band->bring(written);
    QCOMPARE(icon(ParameterTable, first), image(table));
}

void TestPageTree::markReturnsWhenDriveLosesValue()
{
    list({first});
    markGoesWhenDriveHasValue();
    Z7Device reset = band->controller.device(first.deviceId());
    reset.updateParam(Z7DeviceParam(fixedSpeed, 1200, 1, true));
    band->bring(reset);
    QCOMPARE(icon(ParameterTable, first), image(modifiedTable));
}

void TestPageTree::selectionGoesWithRebuild()
{
    list({first});
    band->click(ParameterTable, first);
    band->bring(first);
    QVERIFY(tree().selectedItems().isEmpty());
    QVERIFY(!tree().currentItem());
}

void TestPageTree::scrollPositionIsKeptByRebuild_data()
{
    QTest::addColumn<bool>("anotherDriveComes");
    QTest::newRow("record of a listed drive") << false;
    QTest::newRow("another drive") << true;
}

void TestPageTree::scrollPositionIsKeptByRebuild()
{
    QFETCH(bool, anotherDriveComes);
    list({first, second, drive(3)});
    QScrollBar *bar = tree().verticalScrollBar();
    QVERIFY(bar->maximum() > 5);
    bar->setValue(bar->maximum() / 2);
    const int position = bar->value();
    if (anotherDriveComes)
        list({first, second, drive(3), drive(4)});
    else
        band->bring(first);
    QCOMPARE(bar->value(), position);
}

void TestPageTree::clickThatBeginsBeforeRefreshIsNotLost()
{
    list({first, second});
    QTreeWidgetItem *item = band->item(ParameterTable, first);
    QVERIFY(Person::pressDown(item));
    band->bring(second);
    QVERIFY(Person::letGo(item));
    QCOMPARE(textOf(*band->content, "LContentTitle"), QStringLiteral("Parametertabelle"));
}

void TestPageTree::focusStaysInTree_data()
{
    QTest::addColumn<bool>("anotherDriveComes");
    QTest::newRow("record of a listed drive") << false;
    QTest::newRow("another drive") << true;
}

void TestPageTree::focusStaysInTree()
{
    QFETCH(bool, anotherDriveComes);
    list({first});
    band->click(ParameterTable, first);
    QVERIFY(tree().hasFocus());
    if (anotherDriveComes)
        list({first, second});
    else
        band->bring(first);
    QVERIFY(tree().hasFocus());
}

void TestPageTree::focusStaysInFieldOfPage()
{
    list({first});
    band->bring(band->controller.device(first.deviceId()));
    band->click(ParameterTable, first);
    const QList<QLineEdit *> fields = band->content->findChildren<QLineEdit *>();
    QVERIFY(!fields.isEmpty());
    QVERIFY(Person::type(fields.first(), "7"));
    QVERIFY(fields.first()->hasFocus());
    band->bring(band->controller.device(first.deviceId()));
    QVERIFY(fields.first()->hasFocus());
    QCOMPARE(fields.first()->text(), QStringLiteral("7"));
}

QTEST_MAIN(TestPageTree)

#include "tst_pagetree.moc"
