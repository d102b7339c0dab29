// What a person does with drives through the tool bar: passwords, parameter files, factory settings, changes.

#include "pages/setpassworddialog.h"
#include "shell/deviceselectiondialog.h"
#include "tests/e2e/desk.h"
#include "tests/e2e/telegrams.h"
#include "tests/support/filedialogs.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <QXmlStreamReader>
#include <QtTest>

using namespace Telegrams;

namespace {

/// What a parameter file holds.
QMap<int, int> valuesIn(const QString &fileName)
{
    QFile file(fileName);
    QMap<int, int> values;
    if (!file.open(QIODevice::ReadOnly))
        return values;
    QXmlStreamReader reader(&file);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == "parameter")
            values.insert(reader.attributes().value("id").toInt(), reader.attributes().value("val").toInt());
    }
    return values;
}

} // namespace

class TestDialogJourneys : public QObject
{
    Q_OBJECT

private slots:
    void newPasswordIsInForceAfterWrongOldOne();
    void parameterSetOfOneDriveIsPutOnTwoOfThree();
    void factorySettingsComeBackOnceAnswerIsYes();
    void changesOfTwoDrivesAreDiscardedTogether();
};

void TestDialogJourneys::newPasswordIsInForceAfterWrongOldOne()
{
    const Desk desk(TestBench::shortDrives({1}));
    const Journey &journey = desk.journey;
    QVERIFY(desk.connectAll());
    QVERIFY(desk.showTable(1));

    QVERIFY(journey.press("BtnSetPassword"));
    QVERIFY(journey.changePassword("5", "4711"));
    QCOMPARE(Person::textOf(*journey.window().findChild<SetPasswordDialog *>(), "lError"),
        QStringLiteral("Falsches Passwort, bitte wiederholen Sie Ihre Eingabe."));
    QCOMPARE(desk.bus.command("get 1 password"), QByteArray("ok 0"));

    QVERIFY(journey.changePassword("0", "4711"));
    QTRY_COMPARE(desk.bus.command("get 1 password"), QByteArray("ok 4711"));

    // The live update logs on with it from the next pass on, and so does whoever connects after a power
    // failure.
    QVERIFY(desk.waitForRequest(access(1, 4711)));
    desk.bus.command("power-cycle 1");
    QVERIFY(journey.connectManually(port, 1, 4711));
    QVERIFY(desk.showTable(1));
    QCOMPARE(journey.drives(), QStringList(driveName(1) + ", active"));
}

void TestDialogJourneys::parameterSetOfOneDriveIsPutOnTwoOfThree()
{
    const Desk desk(TestBench::shortDrives({1, 2, 3}));
    const Journey &journey = desk.journey;
    QVERIFY(desk.connectAll());
    QVERIFY(desk.showTable(1));
    QVERIFY(journey.typeValue(23, "-777"));
    {
        const FileDialogUser user("set");
        QVERIFY(journey.press("BtnSaveAs"));
        QCOMPARE(user.count(), 1);
    }
    const QMap<int, int> saved = valuesIn("set.z7param");
    QCOMPARE(saved.value(23), -777);

    // The drive moves on; the file is what it was.
    QVERIFY(journey.typeValue(23, "100"));
    QVERIFY(journey.press("BtnUpload"));
    QTRY_COMPARE(desk.bus.memory(1, 23), 100);

    {
        const FileDialogUser user("set.z7param");
        QVERIFY(journey.press("BtnOpen"));
    }
    QVERIFY(journey.pickDrives({0, 2}));
    for (const int address : {1, 3}) {
        QVERIFY(desk.showTable(address));
        QVERIFY(journey.mark(driveName(address), table).endsWith("modified"));
        const MessageBoxAnswerer writeAnyway(QMessageBox::Yes);
        QVERIFY(journey.press("BtnWriteAndStore"));
        QTRY_COMPARE_WITH_TIMEOUT(desk.bus.flash(address, 23), -777, Person::patienceMs);
        for (auto value = saved.begin(); value != saved.end(); ++value)
            QCOMPARE(desk.bus.flash(address, value.key()), value.value());
    }
    QCOMPARE(desk.bus.memory(2, 23), 500);
}

void TestDialogJourneys::factorySettingsComeBackOnceAnswerIsYes()
{
    const Desk desk(TestBench::shortDrives({1}));
    const Journey &journey = desk.journey;
    QVERIFY(desk.connectAll());
    QVERIFY(desk.showTable(1));
    QVERIFY(journey.typeValue(23, "333"));
    QVERIFY(journey.press("BtnUpload"));
    QTRY_COMPARE(desk.bus.memory(1, 23), 333);
    {
        const MessageBoxAnswerer user(QMessageBox::No);
        QVERIFY(journey.press("BtnFactoryReset"));
        QCOMPARE(user.count(), 1);
    }
    QTRY_COMPARE(journey.row(23).deviceValue, QStringLiteral("333"));
    {
        const MessageBoxAnswerer user(QMessageBox::Yes);
        QVERIFY(journey.press("BtnFactoryReset"));
        QCOMPARE(user.count(), 1);
    }
    QTRY_COMPARE_WITH_TIMEOUT(desk.bus.memory(1, 23), 500, Person::patienceMs);
    QTRY_COMPARE_WITH_TIMEOUT(journey.row(23).deviceValue, QStringLiteral("500"), Person::patienceMs);
}

void TestDialogJourneys::changesOfTwoDrivesAreDiscardedTogether()
{
    const Desk desk(TestBench::shortDrives({1, 2, 3}));
    const Journey &journey = desk.journey;
    QVERIFY(desk.connectAll());
    for (const int address : {1, 2, 3}) {
        QVERIFY(desk.showTable(address));
        QVERIFY(journey.typeValue(23, QString::number(address)));
    }
    // The dialog is used for the second time, and every drive is reported once more by each use.
    QVERIFY(journey.press("BtnResetChanges"));
    auto *dialog = journey.window().findChild<DeviceSelectionDialog *>();
    QVERIFY(Person::press(*dialog, "BtnAbort"));
    QSignalSpy selected(dialog, SIGNAL(deviceSelected(int)));
    QVERIFY(journey.press("BtnResetChanges"));
    QVERIFY(journey.pickDrives({0, 1}));
    QVERIFY(selected.count() >= 4);
    QCOMPARE(selected.count() % 2, 0);
    QTRY_COMPARE(journey.mark(driveName(1), table), QStringLiteral("active"));
    QCOMPARE(journey.mark(driveName(2), table), QStringLiteral("active"));
    QCOMPARE(journey.mark(driveName(3), table), QStringLiteral("active_modified"));
    QVERIFY(desk.showTable(1));
    QCOMPARE(journey.row(23).userValue, QString());
}

QTEST_MAIN(TestDialogJourneys)

#include "tst_dialogjourneys.moc"
