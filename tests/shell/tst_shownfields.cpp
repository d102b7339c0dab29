// The fields of the shown page in the window: where they are seen, and what records leave alone.

#include "control/services/options.h"
#include "control/services/services.h"
#include "pages/pagefactory.h"
#include "pages/parametertabledialog.h"
#include "tests/shell/contentband.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/listedports.h"
#include "tests/support/person.h"
#include "tests/support/tablerows.h"

#include <QApplication>
#include <QTableWidget>
#include <QtTest>

#include <memory>

using namespace ShellTest;

class TestShownFields : public IsolatedTest
{
    Q_OBJECT

private slots:
    void focusedRowIsSeenInWindow();
    void parameterIsFoundInWindow();
    void noticeIsSeenInWindow();
    void manyRecordsLeaveWhatIsTyped();
    void rowsOfLaterRecordFollowInTabOrder();
    void escapeTakesChangeOutOfPendingSet();

private:
    void prepare() override;
    void tidyUp() override;

    QTableWidget &table() const { return child<QTableWidget>(*band->content, "ParameterTable"); }
    QLineEdit *field(int number) const { return tableField(table(), number); }
    bool isSeenWhole(const QWidget *widget) const
    {
        return widget && widget->visibleRegion().boundingRect() == widget->rect();
    }
    bool show(int page) const { return band->click(page, first); }

    std::unique_ptr<ListedPorts> ports;
    std::unique_ptr<ContentBand<>> band;
    Z7Device first;
    Z7Device second;
};

void TestShownFields::prepare()
{
    writeDefinitions();
    ports = std::make_unique<ListedPorts>();
    ports->plugUsb(firstPort, QString());
    // Clicks count at once, and the test alone brings records.
    Z7Services::instance()->options()->setPollingInterval(0);
    band = std::make_unique<ContentBand<>>();
    QVERIFY(QTest::qWaitForWindowActive(band->content));
    first = drive(1);
    second = drive(2);
    band->controller.setDevices({first, second});
    first = *band->controller.findDevice(first.deviceId());
    second = *band->controller.findDevice(second.deviceId());
}

void TestShownFields::tidyUp()
{
    band.reset();
    ports.reset();
}

void TestShownFields::focusedRowIsSeenInWindow()
{
    QVERIFY(show(PageNumber::ParameterTable));
    QVERIFY(!isSeenWhole(field(129)));
    field(1)->setFocus(Qt::TabFocusReason);
    while (QApplication::focusWidget() != field(129)) {
        const QWidget *before = QApplication::focusWidget();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QVERIFY(QApplication::focusWidget() != before);
        QVERIFY(isSeenWhole(QApplication::focusWidget()));
    }
}

void TestShownFields::parameterIsFoundInWindow()
{
    QVERIFY(show(PageNumber::ParameterTable));
    band->content->findChild<ParameterTableDialog *>()->findParameter();
    QTest::keyClicks(QApplication::focusWidget(), "129");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(field(129)->hasFocus());
    QVERIFY(isSeenWhole(field(129)));
    QTest::keyClicks(QApplication::focusWidget(), "12");
    QVERIFY(band->controller.hasModifiedParams(PageNumber::ParameterTable, first.deviceId()));
}

void TestShownFields::noticeIsSeenInWindow()
{
    QVERIFY(show(PageNumber::ParameterTable));
    for (const int number : {1, 129}) {
        field(number)->setFocus(Qt::TabFocusReason);
        QTest::keyClicks(field(number), "x");
        QVERIFY(isSeenWhole(Person::seen(*band->content, "FieldNotice")));
    }
}

void TestShownFields::manyRecordsLeaveWhatIsTyped()
{
    QVERIFY(show(PageNumber::FixedResolutions));
    QLineEdit &typed = child<QLineEdit>(*band->content, "edParam0x17User");
    QVERIFY(Person::type(&typed, "123"));
    typed.setSelection(1, 1);
    for (int record = 0; record < 200; ++record) {
        for (Z7Device *drive : {&first, &second}) {
            for (Z7DeviceParam &param : drive->parameterSet.params)
                param.value = record;
            band->bring(*drive);
        }
    }
    QVERIFY(typed.hasFocus());
    QCOMPARE(typed.selectedText(), QStringLiteral("2"));
    QTest::keyClicks(&typed, "9");
    QCOMPARE(typed.text(), QStringLiteral("193"));
}

void TestShownFields::rowsOfLaterRecordFollowInTabOrder()
{
    const Z7DeviceParam late = *first.parameterSet.find(129);
    first.parameterSet.params.remove(129);
    band->bring(first);
    QVERIFY(show(PageNumber::ParameterTable));
    first.parameterSet.insert(late);
    band->bring(first);
    field(128)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(field(128), Qt::Key_Tab);
    QVERIFY(field(129)->hasFocus());
}

void TestShownFields::escapeTakesChangeOutOfPendingSet()
{
    QVERIFY(show(PageNumber::FixedResolutions));
    QLineEdit &typed = child<QLineEdit>(*band->content, "edParam0x17User");
    QVERIFY(Person::type(&typed, "123"));
    QVERIFY(band->controller.hasModifiedParams(PageNumber::FixedResolutions, first.deviceId()));
    QTest::keyClick(&typed, Qt::Key_Escape);
    QVERIFY(!band->controller.hasModifiedParams(PageNumber::FixedResolutions, first.deviceId()));
}

QTEST_MAIN(TestShownFields)

#include "tst_shownfields.moc"
