// The base of all pages: which parameters of a record reach a page, in which order, and what a page keeps.

#include "pages/datawidget.h"
#include "tests/pages/pagetests.h"
#include "tests/support/isolatedtest.h"

namespace {

/// Notes what it is handed.
class NotingPage : public Z7DataWidget
{
public:
    void clearUserValues() override { notes.append(QStringLiteral("cleared")); }
    void initPage() override { }
    void deviceUpdateFinished() override { notes.append(QStringLiteral("finished")); }
    void newDeviceParam(const Z7DeviceParam &param) override
    {
        note("device", param);
        speedSeenByParam = device.actualSpeed;
    }
    void newUserParam(const Z7DeviceParam &param) override { note("user", param); }

    QStringList notes;
    int speedSeenByParam = 0;

private:
    void note(const char *what, const Z7DeviceParam &param)
    {
        notes.append(QStringLiteral("%1 %2=%3").arg(QLatin1String(what)).arg(param.number).arg(param.value));
    }
};

} // namespace

class TestDataWidget : public IsolatedTest
{
    Q_OBJECT

private slots:
    void pageBeginsWithoutParentAndWithoutParameters();
    void pageIsAboutParametersThatItNames();
    void numberNamedTwiceKeepsItsFirstPlace();
    void pageOfAllParametersIsAboutEveryNumber();

    void recordIsHandedOutInAscendingOrderAndThenFinished();
    void parametersOfOtherPagesAreNotHandedOut();
    void pageOfAllParametersIsHandedEveryOne();
    void recordWithoutParametersGoesStraightToEnd();
    void pageKeepsCopyOfWholeRecord();
    void liveValuesAreFreshWhenFirstParameterArrives();

    void userChangesAreHandedOutInAscendingOrder();
    void userChangesOfOtherPagesAreNotHandedOut();
    void changesOfShownDriveTakePlaceOfAllOthers();

    void softwareVersionSelectsDefinitions();
    void unknownVersionHasNoNames();
};

void TestDataWidget::pageBeginsWithoutParentAndWithoutParameters()
{
    const NotingPage page;
    QVERIFY(!page.parentWidget());
    QVERIFY(page.paramIds().isEmpty());
    QVERIFY(!page.allParameters);
    QVERIFY(!page.multiDevice);
    QCOMPARE(page.device.softwareVersion, Z7Device::unknownVersion());
}

void TestDataWidget::pageIsAboutParametersThatItNames()
{
    NotingPage page;
    page.addParamId(12);
    QVERIFY(page.hasParam(12));
    QVERIFY(!page.hasParam(13));
}

void TestDataWidget::numberNamedTwiceKeepsItsFirstPlace()
{
    NotingPage page;
    for (const int number : {30, 12, 30})
        page.addParamId(number);
    QCOMPARE(page.paramIds(), (QList<int> {30, 12}));
}

void TestDataWidget::pageOfAllParametersIsAboutEveryNumber()
{
    NotingPage page;
    page.allParameters = true;
    QVERIFY(page.hasParam(0));
    QVERIFY(page.hasParam(0xFFFF));
}

void TestDataWidget::recordIsHandedOutInAscendingOrderAndThenFinished()
{
    NotingPage page;
    for (const int number : {30, 2, 12})
        page.addParamId(number);
    page.DeviceUpdate(deviceWith({readParam(12, 120), readParam(30, 300), readParam(2, 20)}));
    QCOMPARE(page.notes, (QStringList {"device 2=20", "device 12=120", "device 30=300", "finished"}));
}

void TestDataWidget::parametersOfOtherPagesAreNotHandedOut()
{
    NotingPage page;
    page.addParamId(12);
    page.DeviceUpdate(deviceWith({readParam(11, 110), readParam(12, 120), readParam(13, 130)}));
    QCOMPARE(page.notes, (QStringList {"device 12=120", "finished"}));
}

void TestDataWidget::pageOfAllParametersIsHandedEveryOne()
{
    NotingPage page;
    page.allParameters = true;
    page.DeviceUpdate(deviceWith({readParam(11, 110), readParam(0x8001, 5)}));
    QCOMPARE(page.notes, (QStringList {"device 11=110", "device 32769=5", "finished"}));
}

void TestDataWidget::recordWithoutParametersGoesStraightToEnd()
{
    NotingPage page;
    page.allParameters = true;
    page.DeviceUpdate(Z7Device());
    QCOMPARE(page.notes, QStringList {"finished"});
}

void TestDataWidget::pageKeepsCopyOfWholeRecord()
{
    NotingPage page;
    Z7Device reported = deviceWith({readParam(11, 110)});
    reported.address = 7;
    reported.setDeviceError(1);
    reported.digitalInputs = 3;
    page.DeviceUpdate(reported);
    reported.parameterSet.params.clear();
    QCOMPARE(page.device.address, 7);
    QCOMPARE(page.device.error, 1);
    QCOMPARE(page.device.digitalInputs, quint8(3));
    QCOMPARE(page.device.parameterSet.value(11).value, 110);
}

void TestDataWidget::liveValuesAreFreshWhenFirstParameterArrives()
{
    NotingPage page;
    page.addParamId(11);
    Z7Device reported = deviceWith({readParam(11, 110)});
    reported.actualSpeed = 1450;
    page.DeviceUpdate(reported);
    QCOMPARE(page.speedSeenByParam, 1450);
}

void TestDataWidget::userChangesAreHandedOutInAscendingOrder()
{
    NotingPage page;
    page.addParamId(30);
    page.addParamId(2);
    page.applyUserParams(paramSet({readParam(30, 300), readParam(2, 20)}));
    QCOMPARE(page.notes, (QStringList {"user 2=20", "user 30=300"}));
}

void TestDataWidget::userChangesOfOtherPagesAreNotHandedOut()
{
    NotingPage page;
    page.addParamId(30);
    page.applyUserParams(paramSet({readParam(30, 300), readParam(31, 310)}));
    QCOMPARE(page.notes, QStringList {"user 30=300"});
}

void TestDataWidget::changesOfShownDriveTakePlaceOfAllOthers()
{
    NotingPage page;
    page.addParamId(30);
    page.showUserValues(paramSet({readParam(30, 300), readParam(31, 310)}));
    QCOMPARE(page.notes, (QStringList {"cleared", "user 30=300"}));
}

void TestDataWidget::softwareVersionSelectsDefinitions()
{
    defineParameters("V123", {"11;Rampe;ms;0;0;10;Unsigned;1;rw;0;"});
    defineParameters("V200", {"11;Steigung;s;0;0;10;Unsigned;1;rw;0;"});
    NotingPage page;
    page.softwareVersion = "V123";
    QCOMPARE(page.paramDefinitions()->paramName(11), QStringLiteral("Rampe"));
    page.softwareVersion = "V200";
    QCOMPARE(page.paramDefinitions()->paramName(11), QStringLiteral("Steigung"));
}

void TestDataWidget::unknownVersionHasNoNames()
{
    NotingPage page;
    page.softwareVersion = "V999";
    QCOMPARE(page.paramDefinitions()->paramName(11), QString());
}

QTEST_MAIN(TestDataWidget)

#include "tst_datawidget.moc"
