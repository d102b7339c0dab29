// The pages of the content area: each is created once, and one at a time stands in it.

#include "control/datapages.h"
#include "pages/pagefactory.h"
#include "tests/control/testedcontroller.h"
#include "tests/support/isolatedtest.h"

#include <QTest>

#include <optional>

namespace {

/// A page that notes what is done with it.
class NotingPage : public Z7DataWidget
{
public:
    void clearUserValues() override { }
    void initPage() override { notes.append("init " + softwareVersion); }
    void deviceUpdateFinished() override { notes.append("finished " + shortDeviceName(device)); }
    void newDeviceParam(const Z7DeviceParam &param) override { Q_UNUSED(param) }
    void newUserParam(const Z7DeviceParam &param) override { Q_UNUSED(param) }

    QStringList notes;
};

} // namespace

class TestDataPages : public IsolatedTest
{
    Q_OBJECT

private slots:
    void pageIsCreatedOnce();
    void numberBeyondLastHasNoPage();
    void placedPageTakesPlaceOfFormerOne();
    void pageThatStandsThereStaysAsItIs();
    void pageThatWasTakenOutComesBack();
    void pageThatWasNotCreatedLeavesShownOne();
    void pageTakenOutIsNobodysChild();

    void pageOfOneDriveShowsThatDrive();
    void pageOfAllDrivesShowsEachOfThem();
    void pageReadsItsParameters();
    void pageOfEveryParameterReadsThoseOfDrive();

private:
    void prepare() override;
    void tidyUp() override;
    Z7DataWidget *place(int number, int former) { return pages->place(number, former, &*content, layout); }

    std::optional<QWidget> content;
    QVBoxLayout *layout = nullptr;
    std::optional<DataPages> pages;
};

void TestDataPages::prepare()
{
    content.emplace();
    layout = new QVBoxLayout(&*content);
    pages.emplace();
    pages->create(PageNumber::Network);
    pages->create(PageNumber::DeviceStatus);
}

void TestDataPages::tidyUp()
{
    for (const int number : {PageNumber::Network, PageNumber::DeviceStatus})
        pages->takeOut(number);
    pages.reset();
    content.reset();
}

void TestDataPages::pageIsCreatedOnce()
{
    Z7DataWidget *page = pages->create(PageNumber::Network);
    QCOMPARE(page->metaObject()->className(), "NetworkDialog");
    QCOMPARE(pages->create(PageNumber::Network), page);
    QCOMPARE(pages->page(PageNumber::Network), page);
}

void TestDataPages::numberBeyondLastHasNoPage()
{
    QVERIFY(!pages->create(PageNumber::Last + 1));
    QVERIFY(!pages->page(PageNumber::Last + 1));
    QVERIFY(!pages->page(PageNumber::none));
}

void TestDataPages::placedPageTakesPlaceOfFormerOne()
{
    const Z7DataWidget *former = place(PageNumber::Network, PageNumber::none);
    QCOMPARE(former->parentWidget(), &*content);
    const Z7DataWidget *placed = place(PageNumber::DeviceStatus, PageNumber::Network);
    QVERIFY(!former->parentWidget());
    QCOMPARE(layout->count(), 1);
    QCOMPARE(layout->itemAt(0)->widget(), placed);
}

void TestDataPages::pageThatStandsThereStaysAsItIs()
{
    Z7DataWidget *shown = place(PageNumber::Network, PageNumber::none);
    shown->show();
    QCOMPARE(place(PageNumber::Network, PageNumber::Network), shown);
    QVERIFY2(!shown->isHidden(), "it was taken out on the way");
    QCOMPARE(layout->count(), 1);
}

void TestDataPages::pageThatWasTakenOutComesBack()
{
    Z7DataWidget *page = place(PageNumber::Network, PageNumber::none);
    page->setParent(nullptr);
    place(PageNumber::Network, PageNumber::Network);
    QCOMPARE(page->parentWidget(), &*content);
    QCOMPARE(layout->count(), 1);
}

void TestDataPages::pageThatWasNotCreatedLeavesShownOne()
{
    const Z7DataWidget *shown = place(PageNumber::Network, PageNumber::none);
    QVERIFY(!place(PageNumber::ParameterTable, PageNumber::Network));
    QCOMPARE(layout->itemAt(0)->widget(), shown);
}

void TestDataPages::pageTakenOutIsNobodysChild()
{
    const Z7DataWidget *page = place(PageNumber::Network, PageNumber::none);
    QVERIFY(pages->takeOut(PageNumber::Network));
    QVERIFY(!page->parentWidget());
    QVERIFY(page->isHidden());
    QCOMPARE(layout->count(), 0);
    QVERIFY(!pages->takeOut(PageNumber::ParameterTable));
    QVERIFY(!pages->takeOut(PageNumber::none));
}

void TestDataPages::pageOfOneDriveShowsThatDrive()
{
    NotingPage page;
    DataPages::fill(page, connectedDrive(4), {connectedDrive(3), connectedDrive(4)});
    QCOMPARE(page.notes, (QStringList {"init V123", "finished Z7.4"}));
}

void TestDataPages::pageOfAllDrivesShowsEachOfThem()
{
    NotingPage page;
    page.multiDevice = true;
    DataPages::fill(page, connectedDrive(3), {connectedDrive(3), connectedDrive(4)});
    QCOMPARE(page.notes, (QStringList {"init V123", "finished Z7.3", "finished Z7.4", "finished Z7.4"}));
}

void TestDataPages::pageReadsItsParameters()
{
    NotingPage page;
    page.addParamId(30);
    const Z7DeviceParamSet read =
        DataPages::parametersFor(page, withValue(withValue(connectedDrive(3), 30, 7), 31, 8));
    QCOMPARE(read.params.keys(), QList<int> {30});
    QCOMPARE(read.softwareVersion, QStringLiteral("V123"));
    QVERIFY(!read.value(30).hasValue);
}

void TestDataPages::pageOfEveryParameterReadsThoseOfDrive()
{
    NotingPage page;
    page.allParameters = true;
    const Z7DeviceParamSet read = DataPages::parametersFor(page, withValue(connectedDrive(3), 4711, 8));
    QCOMPARE(read.params.keys(), QList<int> {4711});
}

QTEST_MAIN(TestDataPages)

#include "tst_datapages.moc"
