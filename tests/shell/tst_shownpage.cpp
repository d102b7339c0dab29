// The page beside the tree: what a click shows, and when clicks count.

#include "control/services/options.h"
#include "control/services/services.h"
#include "pages/datawidget.h"
#include "pages/pagefactory.h"
#include "tests/shell/contentband.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/listedports.h"
#include "tests/support/person.h"

#include <QLabel>
#include <QPushButton>
#include <QSet>
#include <QSplitter>
#include <QTreeWidgetItemIterator>
#include <QtTest>

#include <memory>

using namespace ShellTest;

namespace {

enum Page { Network, DeviceStatus, CurrentLimits = 4, ParameterTable = 9, FirmwareUpload = 10, RS485 = 15 };

} // namespace

class TestShownPage : public IsolatedTest
{
    Q_OBJECT

private slots:
    void nothingIsShownAtStart();
    void contentHasItsColours();
    void titleHasItsFont();
    void clickShowsPageUnderItsTitle_data();
    void clickShowsPageUnderItsTitle();
    void nextPageTakesPlaceOfFormer();
    void samePageOfAnotherDriveIsShown();
    void networkPageIsEmpty();
    void drivesCanBeClickedAfterNetwork();

    void clickDuringSwitchIsIgnored();
    void nextRecordLetsClicksThrough();
    void withPollingOffEveryClickCounts();
    void clickIsOnlyOneSwitchAfterManyRecords();

    void pageWithoutObjectTakesFormerPageOut();
    void pageIsShownAgainAfterOneWithoutObject();
    void newListOfDrivesTakesPageOut();

    void driveOfPageIsNamedBesideTitle();
    void driveIsNamedWholeAtAnyWidthOfTree();
    void onlyShownPageAndItsDriveAreBold();
    void recordsLeaveWhatIsBold();
    void networkIsBoldAloneAndNamesNoDrive();
    void newListOfDrivesNamesAndMarksNothing();
    void windowSaysWhatToDoFirstUntilPageIsShown();

private:
    void prepare() override;
    void tidyUp() override;

    QString title() const { return textOf(*band->content, "LContentTitle"); }
    QString namedDrive() const { return textOf(*band->content, "LContentDrive"); }
    bool saysWhatToDoFirst() const { return sees(*band->content, "LStartHint"); }
    /// What is bold in the tree, from the top.
    QStringList boldItems() const;
    bool buttonsAreOffered() const { return child(*band->content, "DeviceCommButtonFrame").isEnabled(); }
    /// Class names of the pages that a person sees.
    QStringList shownPages() const;
    void listDrives() { band->controller.setDevices({first, second}); }

    std::unique_ptr<ListedPorts> ports;
    std::unique_ptr<ContentBand<>> band;
    Z7Device first;
    Z7Device second;
};

void TestShownPage::prepare()
{
    writeDefinitions();
    ports = std::make_unique<ListedPorts>();
    ports->plugUsb(firstPort, QString());
    Z7Services::instance()->options()->setPollingInterval(1000000);
    band = std::make_unique<ContentBand<>>();
    first = drive(1);
    second = drive(2);
}

void TestShownPage::tidyUp()
{
    band.reset();
    ports.reset();
}

QStringList TestShownPage::shownPages() const
{
    QStringList names;
    for (const auto *page : band->content->findChildren<Z7DataWidget *>()) {
        if (page->isVisible())
            names << QString::fromLatin1(page->metaObject()->className());
    }
    return names;
}

void TestShownPage::nothingIsShownAtStart()
{
    QCOMPARE(title(), QString());
    QCOMPARE(textOf(*band->content, "LParamWarning"), QString());
    QVERIFY(!buttonsAreOffered());
    QVERIFY(shownPages().isEmpty());
}

void TestShownPage::contentHasItsColours()
{
    const auto ground = [this](const char *name) {
        return child(*band->content, name).palette().color(QPalette::Window);
    };
    QCOMPARE(ground("DataWidgetContent"), QColor(Qt::white));
    QCOMPARE(ground("DeviceCommButtonFrame"), QColor(240, 240, 240));
    QCOMPARE(child(*band->content, "LParamWarning").palette().color(QPalette::WindowText), QColor(Qt::red));
}

void TestShownPage::titleHasItsFont()
{
    QCOMPARE(
        child<QLabel>(*band->content, "LContentTitle").font().family(), QStringLiteral("MS Shell Dlg 2"));
}

void TestShownPage::clickShowsPageUnderItsTitle_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("title");

    QSet<int> pages;
    const auto row = [&pages](int page, const char *name, const char *title) {
        pages.insert(page);
        QTest::newRow(name) << page << QString::fromLatin1(name) << QString::fromUtf8(title);
    };
    row(1, "DeviceStatusDialog", "Z7-Motorstatus");
    row(2, "SpeedRegulationDialog", "Regelung");
    row(3, "AccelerationsDialog", "Dynamik");
    row(4, "CurrentLimitsDialog", "Stromgrenzen");
    row(5, "FixedResolutionsDialog", "Festdrehzahlen");
    row(6, "PositioningDialog", "Positionierung");
    row(7, "OutputDialog", "Digitale Ausgänge");
    row(8, "OperationsModeDialog", "Betriebsmodus");
    row(9, "ParameterTableDialog", "Parametertabelle");
    row(10, "FirmwareUploadDialog", "Firmware update");
    row(11, "ValueCalibrationRotations", "Sollwertskalierung Drehzahl");
    row(12, "ValueCalibrationCurrent", "Sollwertskalierung Strom");
    row(13, "FixResistanceDialog", "Ballastwiderstand");
    row(14, "VoltageLimitsDialog", "Spannungsgrenzen");
    row(15, "RS485Dialog", "RS485");
    // The drive's own entry shows its status.
    QCOMPARE(pages.size(), drivePages().size() + 1);
}

void TestShownPage::clickShowsPageUnderItsTitle()
{
    QFETCH(int, page);
    QFETCH(QString, name);
    QFETCH(QString, title);
    listDrives();
    band->click(page, second);
    QCOMPARE(shownPages(), QStringList {name});
    QCOMPARE(this->title(), title);
    QVERIFY(buttonsAreOffered());
}

void TestShownPage::nextPageTakesPlaceOfFormer()
{
    listDrives();
    band->click(ParameterTable, first);
    band->bring(first);
    band->click(CurrentLimits, first);
    QCOMPARE(shownPages(), QStringList {QStringLiteral("CurrentLimitsDialog")});
    QCOMPARE(title(), QStringLiteral("Stromgrenzen"));
}

void TestShownPage::samePageOfAnotherDriveIsShown()
{
    listDrives();
    QSignalSpy selected(&band->controller, SIGNAL(NewDeviceSelected(Z7Device)));
    band->click(ParameterTable, first);
    band->bring(first);
    band->click(ParameterTable, second);
    QCOMPARE(shownPages(), QStringList {QStringLiteral("ParameterTableDialog")});
    QCOMPARE(selected.size(), 2);
    QCOMPARE(selected.last().first().value<Z7Device>().address, 2);
}

void TestShownPage::networkPageIsEmpty()
{
    listDrives();
    QVERIFY(Person::click(band->tree().topLevelItem(0)));
    QCOMPARE(shownPages(), QStringList {QStringLiteral("NetworkDialog")});
    QCOMPARE(title(), QStringLiteral("Z7-Netzwerk"));
    QVERIFY(band->content->findChild<Z7DataWidget *>()->findChildren<QWidget *>().isEmpty());
}

// No drive is polled then, so no record would come to let the next click through.
void TestShownPage::drivesCanBeClickedAfterNetwork()
{
    listDrives();
    QVERIFY(Person::click(band->tree().topLevelItem(0)));
    band->click(ParameterTable, second);
    QCOMPARE(title(), QStringLiteral("Parametertabelle"));
}

void TestShownPage::clickDuringSwitchIsIgnored()
{
    listDrives();
    band->click(ParameterTable, first);
    band->click(CurrentLimits, second);
    QCOMPARE(title(), QStringLiteral("Parametertabelle"));
}

void TestShownPage::nextRecordLetsClicksThrough()
{
    listDrives();
    band->click(ParameterTable, first);
    band->bring(first);
    band->click(CurrentLimits, second);
    QCOMPARE(title(), QStringLiteral("Stromgrenzen"));
}

void TestShownPage::withPollingOffEveryClickCounts()
{
    Z7Services::instance()->options()->setPollingInterval(0);
    listDrives();
    band->click(ParameterTable, first);
    band->click(CurrentLimits, second);
    QCOMPARE(title(), QStringLiteral("Stromgrenzen"));
    band->click(RS485, second);
    QCOMPARE(title(), QStringLiteral("RS485"));
}

void TestShownPage::clickIsOnlyOneSwitchAfterManyRecords()
{
    listDrives();
    for (int time = 0; time < 10; ++time)
        band->bring(first);
    QSignalSpy selected(&band->controller, SIGNAL(NewDeviceSelected(Z7Device)));
    QSignalSpy deselected(&band->controller, SIGNAL(NoDeviceSelected()));
    band->click(ParameterTable, first);
    QCOMPARE(selected.size(), 1);
    band->bring(first);
    QVERIFY(Person::click(band->tree().topLevelItem(0)));
    QCOMPARE(deselected.size(), 1);
}

void TestShownPage::pageWithoutObjectTakesFormerPageOut()
{
    band = std::make_unique<ContentBand<>>(ParameterTable);
    listDrives();
    band->click(ParameterTable, first);
    band->bring(first);
    band->click(RS485, first);
    QVERIFY(shownPages().isEmpty());
    QVERIFY(!buttonsAreOffered());
    QCOMPARE(title(), QStringLiteral("Parametertabelle"));
    QVERIFY(sees(*band->content, "LParamWarning"));
}

void TestShownPage::pageIsShownAgainAfterOneWithoutObject()
{
    pageWithoutObjectTakesFormerPageOut();
    band->bring(first);
    band->click(ParameterTable, first);
    QCOMPARE(shownPages(), QStringList {QStringLiteral("ParameterTableDialog")});
    QVERIFY(buttonsAreOffered());
}

void TestShownPage::newListOfDrivesTakesPageOut()
{
    listDrives();
    band->click(ParameterTable, first);
    listDrives();
    QVERIFY(shownPages().isEmpty());
    band->click(CurrentLimits, first);
    QCOMPARE(shownPages(), QStringList {QStringLiteral("CurrentLimitsDialog")});
}

QStringList TestShownPage::boldItems() const
{
    QStringList texts;
    for (QTreeWidgetItemIterator item(&band->tree()); *item; ++item) {
        if ((*item)->font(0).bold())
            texts << (*item)->text(0);
    }
    return texts;
}

void TestShownPage::driveOfPageIsNamedBesideTitle()
{
    listDrives();
    QCOMPARE(namedDrive(), QString());
    QVERIFY(band->click(CurrentLimits, second));
    QCOMPARE(namedDrive(), QStringLiteral("Port0 - Z7.2"));
    band->bring(second);
    QVERIFY(band->click(CurrentLimits, first));
    QCOMPARE(namedDrive(), QStringLiteral("Port0 - Z7.1"));
    QCOMPARE(title(), QStringLiteral("Stromgrenzen"));
}

void TestShownPage::driveIsNamedWholeAtAnyWidthOfTree()
{
    listDrives();
    QVERIFY(band->click(11, first));
    auto &splitter = child<QSplitter>(*band->content, "ContentSplitter");
    const auto &name = child<QLabel>(*band->content, "LContentDrive");
    for (const int treeWidth : {0, 400, 600, 10000}) {
        splitter.setSizes({treeWidth, 10000 - treeWidth});
        QCoreApplication::processEvents();
        const QRect words = name.fontMetrics().boundingRect(name.rect(), Qt::TextWordWrap, name.text());
        QVERIFY(name.rect().contains(words));
        QVERIFY(name.parentWidget()->rect().contains(name.geometry()));
    }
}

void TestShownPage::onlyShownPageAndItsDriveAreBold()
{
    listDrives();
    QCOMPARE(boldItems(), QStringList());
    QVERIFY(band->click(CurrentLimits, first));
    QCOMPARE(boldItems(), QStringList({"Port0 - Z7.1", "Stromgrenzen"}));
    band->bring(first);
    QVERIFY(band->click(DeviceStatus, second));
    QCOMPARE(boldItems(), QStringList({"Port0 - Z7.2"}));
}

void TestShownPage::recordsLeaveWhatIsBold()
{
    listDrives();
    QVERIFY(band->click(CurrentLimits, first));
    const QTreeWidgetItem *item = band->item(CurrentLimits, first);
    band->bring(first);
    band->bring(first);
    QCOMPARE(band->item(CurrentLimits, first), item);
    QCOMPARE(boldItems(), QStringList({"Port0 - Z7.1", "Stromgrenzen"}));
}

void TestShownPage::networkIsBoldAloneAndNamesNoDrive()
{
    listDrives();
    QVERIFY(band->click(CurrentLimits, first));
    band->bring(first);
    QVERIFY(Person::click(band->tree().topLevelItem(0)));
    QCOMPARE(boldItems(), QStringList({"Z7-Netzwerk"}));
    QCOMPARE(namedDrive(), QString());
    QVERIFY(!saysWhatToDoFirst());
}

void TestShownPage::newListOfDrivesNamesAndMarksNothing()
{
    listDrives();
    QVERIFY(band->click(CurrentLimits, first));
    listDrives();
    QCOMPARE(boldItems(), QStringList());
    QCOMPARE(namedDrive(), QString());
}

void TestShownPage::windowSaysWhatToDoFirstUntilPageIsShown()
{
    QVERIFY(saysWhatToDoFirst());
    QVERIFY(textOf(*band->content, "LStartHint").contains("\"Verbindungen...\""));
    listDrives();
    QVERIFY(band->click(CurrentLimits, first));
    QVERIFY(!saysWhatToDoFirst());
    band->controller.setDevices({});
    QVERIFY(saysWhatToDoFirst());
}

QTEST_MAIN(TestShownPage)

#include "tst_shownpage.moc"
