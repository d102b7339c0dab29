// What the program has emptied stays away, also from a person who presses the keys for undo.

#include "tests/e2e/desk.h"
#include "tests/support/person.h"

#include <QDialog>
#include <QLineEdit>
#include <QtTest>

namespace {

const QString fixedSpeeds = QStringLiteral("Festdrehzahlen");

/// What stands in a field after a click into it and as many undo keys as a hand presses in a row.
QString textAfterUndo(QLineEdit *field)
{
    QTest::mouseClick(field, Qt::LeftButton);
    for (int i = 0; i < 3 && field->text().isEmpty(); ++i)
        QTest::keySequence(field, QKeySequence::Undo);
    return field->text();
}

/// A person who is connected to two drives and has typed a fixed speed for the first.
struct SpeedDesk : Desk
{
    SpeedDesk()
        : Desk(TestBench::shortDrives({1, 2}))
    {
    }

    bool typeFixedSpeed() const
    {
        return connectAll() && show(1) && Person::type(field(), QStringLiteral("700"))
            && mark(1) == QLatin1String("active_modified");
    }
    bool show(int address) const { return journey.showPage(driveName(address), fixedSpeeds); }
    QString mark(int address) const { return journey.mark(driveName(address), fixedSpeeds); }
    QLineEdit *field() const
    {
        return qobject_cast<QLineEdit *>(Person::seen(journey.window(), "edParam0x17User"));
    }
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
    const Desk desk(TestBench::shortDrives({1}));
    const Journey &journey = desk.journey;
    QVERIFY(desk.connectAll());
    QVERIFY(journey.showPage(driveName(1)));
    QVERIFY(journey.press("BtnSetPassword"));
    QVERIFY(journey.changePassword("0", "4711"));
    QTRY_COMPARE(desk.bus.command("get 1 password"), QByteArray("ok 4711"));

    QVERIFY(journey.press("BtnSetPassword"));
    for (const char *field : {"edOldPassword", "edNewPassword_1", "edNewPassword_2"})
        QCOMPARE(textAfterUndo(journey.dialog("SetPasswordDialog").findChild<QLineEdit *>(field)), QString());
}

void TestUndoJourneys::changeOfOneDriveIsNotBroughtBackOnAnother()
{
    const SpeedDesk desk;
    QVERIFY(desk.typeFixedSpeed());
    QVERIFY(desk.show(2));
    QCOMPARE(textAfterUndo(desk.field()), QString());
    QCOMPARE(desk.mark(2), QStringLiteral("active"));
    QCOMPARE(desk.mark(1), QStringLiteral("active_modified"));
}

void TestUndoJourneys::discardedChangeIsNotBroughtBack()
{
    const SpeedDesk desk;
    QVERIFY(desk.typeFixedSpeed());
    QVERIFY(desk.journey.press("BtnResetChanges"));
    QVERIFY(desk.journey.pickDrives({0}));
    QTRY_COMPARE(desk.mark(1), QStringLiteral("active"));
    QCOMPARE(textAfterUndo(desk.field()), QString());
    QCOMPARE(desk.mark(1), QStringLiteral("active"));
}

QTEST_MAIN(TestUndoJourneys)

#include "tst_undojourneys.moc"
