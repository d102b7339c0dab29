// The person changes values in the table and is asked before a conflict is written.

#include "tests/e2e/desk.h"
#include "tests/e2e/telegrams.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <QtTest>

using namespace Telegrams;

namespace {

const QString drive = driveName(1);

const QColor differs(200, 200, 200);
const QColor equals(230, 230, 230);

const QString conflict = QStringLiteral("Parameterkonflikt Drehzahl: 600 <= 512 <= 768 verletzt.");

Polling polling()
{
    return {1, 0, TestBench::shortNumbers};
}

/// A drive whose table is on the screen and has been read.
struct ReadTable : Desk
{
    ReadTable()
        : Desk(TestBench::shortDrives({1}))
    {
    }

    bool show() const { return connectAll() && showTable(1); }
    bool waitForPasses(int count)
    {
        bus.clearLog();
        return Person::waitUntil(
            [&] { return requests().size() > (count + 1) * polling().firstPass().size(); });
    }
};

} // namespace

class TestEditJourneys : public QObject
{
    Q_OBJECT

private slots:
    void typedValueIsMarkedAndStaysAcrossPolling();
    void typedValueThatDriveHoldsIsNotMarked();
    void emptiedFieldWithdrawsChange();
    void typedValueComesBackWithPage();
    void readOnlyParameterTakesNoValue();
    void conflictIsShownAndAnsweredNoWritesNothing();
    void conflictAnsweredYesIsWritten();
    void conflictingParametersCannotBeStored();
};

void TestEditJourneys::typedValueIsMarkedAndStaysAcrossPolling()
{
    ReadTable read;
    const Journey &journey = read.journey;
    QVERIFY(read.show());
    QVERIFY(journey.typeValue(23, QStringLiteral("700")));
    QCOMPARE(journey.mark(drive, table), QStringLiteral("active_modified"));
    QCOMPARE(journey.mark(drive), QStringLiteral("active"));
    QCOMPARE(journey.row(23).colour, differs);
    QVERIFY(journey.row(23).bold);

    QVERIFY(read.waitForPasses(2));
    QCOMPARE(journey.row(23).userValue, QStringLiteral("700"));
    QCOMPARE(journey.row(23).deviceValue, QStringLiteral("500"));
    QCOMPARE(journey.row(23).colour, differs);
    QCOMPARE(journey.mark(drive, table), QStringLiteral("active_modified"));
    QCOMPARE(besides(polling(), read.requests()), QList<QStringList>());
    QCOMPARE(read.bus.memory(1, 23), 500);
}

void TestEditJourneys::typedValueThatDriveHoldsIsNotMarked()
{
    ReadTable read;
    const Journey &journey = read.journey;
    QVERIFY(read.show());
    QVERIFY(journey.typeValue(23, QStringLiteral("700")));
    read.bus.command("set 1 param 23 700");
    QTRY_COMPARE(journey.mark(drive, table), QStringLiteral("active"));
    QCOMPARE(journey.row(23).userValue, QStringLiteral("700"));
    QCOMPARE(journey.row(23).colour, equals);
    QVERIFY(!journey.row(23).bold);
}

void TestEditJourneys::emptiedFieldWithdrawsChange()
{
    ReadTable read;
    const Journey &journey = read.journey;
    QVERIFY(read.show());
    QVERIFY(journey.typeValue(23, QStringLiteral("-700")));
    QVERIFY(journey.typeValue(23, QString()));
    QCOMPARE(journey.mark(drive, table), QStringLiteral("active"));
    QCOMPARE(journey.row(23).colour, QColor(Qt::white));

    read.bus.clearLog();
    QVERIFY(journey.press("BtnUpload"));
    QVERIFY(read.waitForPasses(1));
    QCOMPARE(besides(polling(), read.requests()), QList<QStringList>());
}

void TestEditJourneys::typedValueComesBackWithPage()
{
    ReadTable read;
    const Journey &journey = read.journey;
    QVERIFY(read.show());
    QVERIFY(journey.typeValue(25, QStringLiteral("-300")));
    QVERIFY(journey.showPage(drive));
    QCOMPARE(journey.pageTitle(), QStringLiteral("Z7-Motorstatus"));
    QVERIFY(journey.showPage(drive, table));
    QCOMPARE(journey.row(25).userValue, QStringLiteral("-300"));
    QCOMPARE(journey.row(25).deviceValue, QStringLiteral("-1500"));
    QCOMPARE(journey.mark(drive, table), QStringLiteral("active_modified"));
}

void TestEditJourneys::readOnlyParameterTakesNoValue()
{
    ReadTable read;
    QVERIFY(read.show());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("is grey")));
    QVERIFY(!read.journey.typeValue(96, QStringLiteral("100")));
    QVERIFY(!read.journey.row(96).writable);
    QCOMPARE(read.journey.row(96).userValue, QString());
}

void TestEditJourneys::conflictIsShownAndAnsweredNoWritesNothing()
{
    ReadTable read;
    const Journey &journey = read.journey;
    QVERIFY(read.show());
    QVERIFY(journey.typeValue(11, QStringLiteral("600")));
    QCOMPARE(journey.conflictLine(), conflict);

    const MessageBoxAnswerer user(QMessageBox::No);
    QVERIFY(journey.press("BtnUpload"));
    QCOMPARE(user.count(), 1);
    QCOMPARE(user.last().text, QStringLiteral("Die Parameterwerte enthalten einen Konflikt:\n\n") + conflict);
    QCOMPARE(user.last().informativeText, QStringLiteral("Trotzdem schreiben?"));
    QCOMPARE(user.last().defaultButton, QMessageBox::No);
    QCOMPARE(journey.conflictLine(), conflict);

    QVERIFY(read.waitForPasses(1));
    QCOMPARE(besides(polling(), read.requests()), QList<QStringList>());
    QCOMPARE(read.bus.memory(1, 11), 256);
    QCOMPARE(journey.row(11).userValue, QStringLiteral("600"));
}

void TestEditJourneys::conflictAnsweredYesIsWritten()
{
    ReadTable read;
    const Journey &journey = read.journey;
    QVERIFY(read.show());
    QVERIFY(journey.typeValue(11, QStringLiteral("600")));
    {
        const MessageBoxAnswerer user(QMessageBox::No);
        QVERIFY(journey.press("BtnUpload"));
        QCOMPARE(user.count(), 1);
    }
    read.bus.clearLog();
    {
        const MessageBoxAnswerer user(QMessageBox::Yes);
        QVERIFY(journey.press("BtnUpload"));
        QCOMPARE(user.count(), 1);
    }
    QTRY_COMPARE(journey.row(11).remark,
        QStringLiteral("Das Schreiben des Parameters steht im Konflikt mit Parameter 1"));
    QTRY_COMPARE(journey.row(11).deviceValue, QStringLiteral("600"));

    const QList<QStringList> written {logOn(1, 0) + QStringList(write(1, 11, 600))};
    QCOMPARE(besides(polling(), read.requests()), written);
    QCOMPARE(read.bus.memory(1, 11), 600);
    QCOMPARE(read.bus.flash(1, 11), 256);
    QCOMPARE(journey.mark(drive, table), QStringLiteral("active"));
}

void TestEditJourneys::conflictingParametersCannotBeStored()
{
    ReadTable read;
    const Journey &journey = read.journey;
    QVERIFY(read.show());
    QVERIFY(journey.typeValue(11, QStringLiteral("600")));
    read.slowDown();
    read.bus.clearLog();
    const MessageBoxAnswerer user(QMessageBox::Yes);
    QVERIFY(journey.press("BtnWriteAndStore"));
    QTRY_COMPARE(journey.bar().message, QStringLiteral("Inkonsistente Parameter"));
    QCOMPARE(user.count(), 1);

    const QList<QStringList> sent {logOn(1, 0) + QStringList({write(1, 11, 600), store(1, 0)})};
    QCOMPARE(besides(polling(), read.requests()), sent);
    QCOMPARE(read.bus.memory(1, 11), 600);
    QCOMPARE(read.bus.flash(1, 11), 256);
}

QTEST_MAIN(TestEditJourneys)

#include "tst_editjourneys.moc"
