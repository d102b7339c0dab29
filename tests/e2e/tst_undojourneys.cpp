// What the program has emptied stays away, also from a person who presses the keys for undo.

#include "tests/e2e/journey.h"
#include "tests/e2e/testbench.h"
#include "tests/support/person.h"

#include <QDialog>
#include <QLineEdit>
#include <QtTest>

namespace {

const QString port = QStringLiteral("ttyUSB0");
const QString fixedSpeeds = QStringLiteral("Festdrehzahlen");

QString driveName(int address)
{
    return QStringLiteral("Port0 - Z7.%1").arg(address);
}

/// What stands in a field after a click into it and as many undo keys as a hand presses in a row.
QString textAfterUndo(QLineEdit *field)
{
    QTest::mouseClick(field, Qt::LeftButton);
    for (int i = 0; i < 3 && field->text().isEmpty(); ++i)
        QTest::keySequence(field, QKeySequence::Undo);
    return field->text();
}

/// A person who is connected to two drives and has typed a fixed speed for the first.
struct Desk
{
    Desk() { bench.plugIn(port, {TestBench::shortDrive(1), TestBench::shortDrive(2)}); }

    bool typeFixedSpeed() const
    {
        return journey.connectManually(port, 1, 0) && journey.connectManually(port, 2, 0) && show(1)
            && Person::type(field(), QStringLiteral("700")) && mark(1) == QLatin1String("active_modified");
    }
    bool show(int address) const { return journey.showPage(driveName(address), fixedSpeeds); }
    QString mark(int address) const { return journey.mark(driveName(address), fixedSpeeds); }
    QLineEdit *field() const
    {
        return qobject_cast<QLineEdit *>(Person::seen(journey.window(), "edParam0x17User"));
    }

    TestBench bench;
    Journey journey;
};

} // namespace

class TestUndoJourneys : public QObject
{
    Q_OBJECT

private slots:
    void passwordsAreGoneWhenDialogIsOpenedAgain();
    void changeOfOneDriveIsNotBroughtBackOnAnother();
    void discardedChangeIsNotBroughtBack();
};

void TestUndoJourneys::passwordsAreGoneWhenDialogIsOpenedAgain()
{
    TestBench bench;
    z7sim::SimulatedBus &bus = bench.plugIn(port, {TestBench::shortDrive(1)});
    const Journey journey;
    QVERIFY(journey.connectQuickly());
    QVERIFY(journey.showPage(driveName(1)));
    QVERIFY(journey.press("BtnSetPassword"));
    QVERIFY(journey.changePassword("0", "4711"));
    QTRY_COMPARE(bus.command("get 1 password"), QByteArray("ok 4711"));

    QVERIFY(journey.press("BtnSetPassword"));
    for (const char *field : {"edOldPassword", "edNewPassword_1", "edNewPassword_2"})
        QCOMPARE(textAfterUndo(journey.dialog("SetPasswordDialog").findChild<QLineEdit *>(field)), QString());
}

void TestUndoJourneys::changeOfOneDriveIsNotBroughtBackOnAnother()
{
    const Desk desk;
    QVERIFY(desk.typeFixedSpeed());
    QVERIFY(desk.show(2));
    QCOMPARE(textAfterUndo(desk.field()), QString());
    QCOMPARE(desk.mark(2), QStringLiteral("active"));
    QCOMPARE(desk.mark(1), QStringLiteral("active_modified"));
}

void TestUndoJourneys::discardedChangeIsNotBroughtBack()
{
    const Desk desk;
    QVERIFY(desk.typeFixedSpeed());
    QVERIFY(desk.journey.press("BtnResetChanges"));
    QVERIFY(desk.journey.pickDrives({0}));
    QTRY_COMPARE(desk.mark(1), QStringLiteral("active"));
    QCOMPARE(textAfterUndo(desk.field()), QString());
    QCOMPARE(desk.mark(1), QStringLiteral("active"));
}

QTEST_MAIN(TestUndoJourneys)

#include "tst_undojourneys.moc"
