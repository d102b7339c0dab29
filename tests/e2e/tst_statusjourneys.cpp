// What the status bar says while a person works with drives: what is known, and no more.

#include "shell/changesdialog.h"
#include "shell/statusfield.h"
#include "tests/e2e/desk.h"
#include "tests/e2e/telegrams.h"
#include "tests/support/filedialogs.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <QRegularExpression>
#include <QTableWidget>
#include <QtTest>

using namespace Telegrams;

namespace {

const QString drive = driveName(1);
const QString fixedSpeeds = QStringLiteral("Festdrehzahlen");
const QString speedCurve = QStringLiteral("Sollwertskalierung Drehzahl");

const QString readOfDrive1 = QStringLiteral("Z7.1 gelesen hh:mm:ss");
const QString stale = QStringLiteral("veraltet seit hh:mm:ss");
const QString held = QStringLiteral("angehalten – Seite anklicken");

/// Clock times as letters.
QString timeless(QString text)
{
    static const QRegularExpression time(QStringLiteral("\\d\\d:\\d\\d:\\d\\d"));
    return text.replace(time, QStringLiteral("hh:mm:ss"));
}

/// A desk with an eye on the status bar.
struct StatusDesk : Desk
{
    explicit StatusDesk(const QVector<z7sim::DriveConfig> &drivesThere = TestBench::shortDrives({1}),
        const TestBench::Options &options = TestBench::Options())
        : Desk(drivesThere, options)
    {
    }

    StatusField &field(const char *name) const
    {
        return *journey.window().findChild<StatusField *>(QString::fromLatin1(name));
    }
    QString says(const char *name) const { return timeless(field(name).said().text); }
    QString fresh() const { return says("StatusFresh"); }
    QString last() const { return says("StatusLastOperation"); }
    QString neverRun() const { return says("StatusNeverRun"); }
    bool press(const char *name) const
    {
        // It gets its place with the next event.
        return Person::waitUntil([&] { return field(name).width() > 0; }) && Person::press(&field(name));
    }

    /// Connects the drives and shows the table of the first, read at least once.
    bool begin() const
    {
        return connectAll() && showTable(drives.first().address)
            && Person::waitUntil([this] { return fresh().contains(QLatin1String("gelesen hh")); });
    }
    bool click(const QString &page) const { return journey.showPage(drive, page); }
    /// True once the live update has been round so often from now on.
    bool waitForPasses(int count) const
    {
        const int before = requests().count(statusRequest);
        return Person::waitUntil([&] { return requests().count(statusRequest) >= before + count; });
    }

    const QString statusRequest = QStringLiteral("05 A=1");
};

/// A drive whose one pass over all parameters breaks off, at number 82, with a page of few parameters shown.
struct HalfReadDesk : StatusDesk
{
    bool begin() const
    {
        bus.command("fault 1 truncate command=0x04 param=82 count=1");
        return connectAll() && click(fixedSpeeds);
    }
};

/// What a field has said while this lives, each text once.
class Heard : public QObject
{
public:
    explicit Heard(StatusField &field)
        : m_field(field)
    {
        field.installEventFilter(this);
    }

    QStringList texts;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const QString text = timeless(m_field.said().text);
        if (event->type() == QEvent::Paint && (texts.isEmpty() || texts.constLast() != text))
            texts.append(text);
        return QObject::eventFilter(watched, event);
    }

private:
    StatusField &m_field;
};

} // namespace

class TestStatusJourneys : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsSaidBeforeDriveIsSelected();
    void driveIsNotReadUntilItsFirstPassIsOver();
    void valuesThatStoppedComingAreStale();
    void retriesWithLostDriveDoNotFreshenValues();
    void recordWithErrorIsNoReading();
    void recordOfOtherDriveIsNoReading();
    void liveValuesThatAreSwitchedOffAreTold();
    void closedWizardHoldsLiveUpdateUntilPageIsClicked();
    void lateRecordDoesNotTakeHoldBack();
    void transferLetsValuesWait();

    void refusedValueStaysNamedAfterLaterPasses();
    void conflictIsNamedApart();
    void brokenWriteTellsWhatIsUncertain();
    void openedFileIsCounted();
    void operationOfOtherDriveIsNotShown();

    void storePressedDuringWriteIsNamedUntilItRuns_data();
    void storePressedDuringWriteIsNamedUntilItRuns();
    void writeThatClickedPageReplacedIsNamed();
    void whatDidNotRunIsClickedAway();
    void whatIsToldToHappenSilentlyIsNotNamed();

    void valuesBehindBrokenFullPassAreNeverRead();
    void clickOnNeverReadShowsTable();

    void changesAreCountedAsTheyAreMade();
    void listOfChangesFollowsAndLeadsToPage();
    void escapeClosesListOfChanges();
    void discardedChangesComeBack();
    void writeButtonsTellWhatTheyWouldSend();

    void twoDrivesOfOneIdAreTold();
};

// --- Fresh ---

void TestStatusJourneys::nothingIsSaidBeforeDriveIsSelected()
{
    const StatusDesk desk;
    QVERIFY(desk.connectAll());
    for (const StatusField *field : desk.journey.window().findChildren<StatusField *>())
        QCOMPARE(field->said().text, QString());
}

void TestStatusJourneys::driveIsNotReadUntilItsFirstPassIsOver()
{
    StatusDesk desk;
    QVERIFY(desk.connectAll());
    desk.slowDown();
    QVERIFY(desk.click(table));
    QCOMPARE(desk.fresh(), QStringLiteral("noch nicht gelesen"));
    QTRY_COMPARE_WITH_TIMEOUT(desk.fresh(), readOfDrive1, Person::patienceMs);
}

void TestStatusJourneys::valuesThatStoppedComingAreStale()
{
    const StatusDesk desk;
    QVERIFY(desk.begin());
    desk.bus.command("fault 1 no-answer");
    QTRY_COMPARE_WITH_TIMEOUT(desk.fresh(), stale, Person::patienceMs);
    QVERIFY(desk.field("StatusFresh").said().isWarning);
    desk.bus.command("clear-faults");
    QTRY_COMPARE(desk.fresh(), readOfDrive1);
    QVERIFY(!desk.field("StatusFresh").said().isWarning);
}

void TestStatusJourneys::retriesWithLostDriveDoNotFreshenValues()
{
    const StatusDesk desk;
    QVERIFY(desk.begin());
    desk.bus.command("fault 1 no-answer");
    QTRY_COMPARE_WITH_TIMEOUT(desk.fresh(), stale, Person::patienceMs);
    const Heard heard(desk.field("StatusFresh"));
    const int before = desk.requests().size();
    QTRY_VERIFY(desk.requests().size() > before + 5);
    QVERIFY(!heard.texts.contains(readOfDrive1));
    QCOMPARE(desk.fresh(), stale);
}

void TestStatusJourneys::recordWithErrorIsNoReading()
{
    const StatusDesk desk;
    QVERIFY(desk.begin());
    // The drive answers, but the end of each pass is missing.
    desk.bus.command("fault 1 truncate command=0x04 param=96");
    QTRY_COMPARE_WITH_TIMEOUT(desk.fresh(), stale, Person::patienceMs);
    QVERIFY(desk.waitForPasses(3));
    QCOMPARE(desk.fresh(), stale);
}

void TestStatusJourneys::recordOfOtherDriveIsNoReading()
{
    StatusDesk desk(TestBench::shortDrives({1, 2}));
    QVERIFY(desk.begin());
    desk.slowDown();
    // A pass of drive 1 is under way while drive 2 is clicked, which then keeps silent.
    desk.bus.clearLog();
    QVERIFY(desk.waitForRequest(read(1, 23)));
    desk.bus.command("fault 2 no-answer");
    QVERIFY(desk.journey.showPage(driveName(2), table));
    const Heard heard(desk.field("StatusFresh"));
    desk.bus.clearLog();
    QVERIFY(desk.waitForRequest(access(2, 2)));
    QCOMPARE(desk.fresh(), QStringLiteral("noch nicht gelesen"));
    QVERIFY(!heard.texts.contains(readOfDrive1));
}

void TestStatusJourneys::liveValuesThatAreSwitchedOffAreTold()
{
    const StatusDesk desk(TestBench::shortDrives({1}), {0});
    QVERIFY(desk.connectAll());
    QVERIFY(desk.click(table));
    QTRY_COMPARE(desk.fresh(), QStringLiteral("Live-Werte aus"));
    QVERIFY(desk.journey.press("BtnDownload"));
    QTRY_VERIFY(desk.field("StatusFresh").toolTip().contains("Z7.1 zuletzt gelesen"));
    QCOMPARE(desk.fresh(), QStringLiteral("Live-Werte aus"));
}

void TestStatusJourneys::closedWizardHoldsLiveUpdateUntilPageIsClicked()
{
    const StatusDesk desk;
    QVERIFY(desk.begin());
    QVERIFY(desk.journey.openWizard());
    QVERIFY(desk.journey.wizard().close());
    QTRY_COMPARE(desk.fresh(), held);
    QVERIFY(desk.click(fixedSpeeds));
    QTRY_COMPARE(desk.fresh(), readOfDrive1);
}

void TestStatusJourneys::lateRecordDoesNotTakeHoldBack()
{
    StatusDesk desk;
    QVERIFY(desk.begin());
    desk.slowDown();
    desk.bus.clearLog();
    QVERIFY(desk.waitForRequest(read(1, 23)));
    const QString readAt = desk.field("StatusFresh").said().text;
    QVERIFY(desk.journey.openWizard());
    QVERIFY(desk.journey.wizard().close());
    QTRY_COMPARE(desk.fresh(), held);
    const Heard heard(desk.field("StatusFresh"));
    QTest::qWait(500);
    QCOMPARE(desk.fresh(), held);
    QVERIFY(!heard.texts.contains(readOfDrive1));
    QVERIFY(desk.field("StatusFresh").toolTip().contains(readAt.right(8)));
}

void TestStatusJourneys::transferLetsValuesWait()
{
    StatusDesk desk;
    QVERIFY(desk.begin());
    QVERIFY(desk.journey.typeValue(23, "700"));
    desk.slowDown();
    QVERIFY(desk.journey.press("BtnUpload"));
    QTRY_COMPARE(desk.fresh(), QStringLiteral("wartet"));
    QTRY_COMPARE_WITH_TIMEOUT(desk.fresh(), readOfDrive1, Person::patienceMs);
}

// --- Last operation ---

void TestStatusJourneys::refusedValueStaysNamedAfterLaterPasses()
{
    const StatusDesk desk;
    QVERIFY(desk.begin());
    // The drive refuses one value, and the next pass clears the remark on it.
    desk.bus.command("fault 1 flags value=0x20 effect=none command=0x03 param=24");
    QVERIFY(desk.journey.typeValue(23, "700"));
    QVERIFY(desk.journey.typeValue(24, "1700"));
    QVERIFY(desk.journey.press("BtnUpload"));
    const QString outcome = QStringLiteral("hh:mm:ss Schreiben: 1 geschrieben, 1 abgelehnt (24); 1 "
                                           "zurückgelesen, gleich; nicht im Motor gespeichert");
    QTRY_COMPARE(desk.last(), outcome);
    QVERIFY(desk.waitForPasses(5));
    QCOMPARE(desk.last(), outcome);
    QCOMPARE(desk.journey.row(24).remark, QString());
}

void TestStatusJourneys::conflictIsNamedApart()
{
    const StatusDesk desk;
    QVERIFY(desk.begin());
    desk.bus.command("fault 1 conflict value=1 command=0x03 count=1");
    QVERIFY(desk.journey.typeValue(23, "700"));
    QVERIFY(desk.journey.press("BtnUpload"));
    QTRY_VERIFY(desk.last().contains("1 mit Konflikt (23)"));
    QVERIFY(!desk.last().contains("abgelehnt"));
}

void TestStatusJourneys::brokenWriteTellsWhatIsUncertain()
{
    const StatusDesk desk;
    QVERIFY(desk.begin());
    for (const int number : {23, 24, 25})
        QVERIFY(desk.journey.typeValue(number, "70"));
    desk.bus.command("fault 1 no-answer command=0x03 param=24");
    QVERIFY(desk.journey.press("BtnUpload"));
    QTRY_VERIFY(desk.last().startsWith("hh:mm:ss Schreiben: 1 von 3 geschrieben, Rest ungewiss (Fehler 1)"));
    const QString tip = desk.field("StatusLastOperation").toolTip();
    QVERIFY(tip.contains("ohne gültige Antwort: 24\n"));
    QVERIFY(tip.contains("nicht gesendet: 25\n"));
    QVERIFY(tip.contains("Fehler 1: Das Gerät antwortet nicht (timeout)"));
}

void TestStatusJourneys::openedFileIsCounted()
{
    const StatusDesk desk;
    QVERIFY(desk.begin());
    QVERIFY(desk.journey.typeValue(23, "700"));
    {
        const FileDialogUser user("set");
        QVERIFY(desk.journey.press("BtnSaveAs"));
    }
    {
        const FileDialogUser user("set.z7param");
        QVERIFY(desk.journey.press("BtnOpen"));
    }
    QVERIFY(desk.journey.pickDrives({0}));
    // A file holds the eight values that can be written.
    QTRY_COMPARE(desk.last(), QStringLiteral("hh:mm:ss Datei öffnen: 1 neu, 7 gleich"));
}

void TestStatusJourneys::operationOfOtherDriveIsNotShown()
{
    const StatusDesk desk(TestBench::shortDrives({1, 2}));
    QVERIFY(desk.begin());
    QVERIFY(desk.journey.typeValue(23, "700"));
    QVERIFY(desk.journey.press("BtnUpload"));
    QTRY_VERIFY(desk.last().contains("1 geschrieben"));
    QVERIFY(desk.showTable(2));
    QCOMPARE(desk.last(), QString());
    QVERIFY(desk.showTable(1));
    QVERIFY(desk.last().contains("1 geschrieben"));
}

// --- Never run ---

void TestStatusJourneys::storePressedDuringWriteIsNamedUntilItRuns_data()
{
    QTest::addColumn<int>("pauseMs");
    for (const int pauseMs : {50, 200, 350})
        QTest::addRow("%d ms after the write", pauseMs) << pauseMs;
}

void TestStatusJourneys::storePressedDuringWriteIsNamedUntilItRuns()
{
    QFETCH(int, pauseMs);
    StatusDesk desk;
    QVERIFY(desk.begin());
    for (const int number : {23, 24, 25})
        QVERIFY(desk.journey.typeValue(number, "70"));
    desk.slowDown();
    desk.bus.clearLog();
    QVERIFY(desk.journey.press("BtnUpload"));
    QTest::qWait(pauseMs);
    QVERIFY(desk.journey.press("BtnStore"));
    QTRY_COMPARE(desk.neverRun(), QStringLiteral("Nicht ausgeführt: Im Motor speichern (Übertragung lief)"));
    QTRY_VERIFY_WITH_TIMEOUT(desk.last().contains("3 geschrieben"), Person::patienceMs);
    QVERIFY(desk.last().endsWith("nicht im Motor gespeichert"));
    QVERIFY(desk.waitForPasses(1));
    QVERIFY(!desk.neverRun().isEmpty());
    QVERIFY(!desk.requests().contains(store(1, 0)));

    QVERIFY(desk.journey.press("BtnStore"));
    QTRY_COMPARE_WITH_TIMEOUT(
        desk.last(), QStringLiteral("hh:mm:ss Im Motor speichern: im Motor gespeichert"), Person::patienceMs);
    QCOMPARE(desk.neverRun(), QString());
}

void TestStatusJourneys::writeThatClickedPageReplacedIsNamed()
{
    StatusDesk desk;
    QVERIFY(desk.begin());
    QVERIFY(desk.journey.typeValue(23, "700"));
    desk.slowDown();
    desk.bus.clearLog();
    QVERIFY(desk.waitForRequest(read(1, 11)));
    QVERIFY(desk.journey.press("BtnUpload"));
    QVERIFY(desk.click(fixedSpeeds));
    QTRY_COMPARE(desk.neverRun(),
        QStringLiteral("Nicht ausgeführt: Schreiben (durch eine andere Anforderung ersetzt)"));
    QCOMPARE(desk.last(), QString());
    QVERIFY(desk.waitForPasses(1));
    QCOMPARE(desk.bus.memory(1, 23), 500);
}

void TestStatusJourneys::whatDidNotRunIsClickedAway()
{
    StatusDesk desk;
    QVERIFY(desk.begin());
    QVERIFY(desk.journey.typeValue(23, "700"));
    desk.slowDown();
    QVERIFY(desk.journey.press("BtnUpload"));
    QVERIFY(desk.journey.press("BtnStore"));
    QTRY_VERIFY(!desk.neverRun().isEmpty());
    QVERIFY(desk.press("StatusNeverRun"));
    QCOMPARE(desk.neverRun(), QString());
}

void TestStatusJourneys::whatIsToldToHappenSilentlyIsNotNamed()
{
    const StatusDesk desk;
    QVERIFY(desk.begin());
    QVERIFY(desk.journey.press("BtnUpload"));
    QVERIFY(desk.journey.press("BtnWriteAndStore"));
    // 11, 12 and 13 have to rise.
    QVERIFY(desk.journey.typeValue(11, "999"));
    const MessageBoxAnswerer user(QMessageBox::No);
    QVERIFY(desk.journey.press("BtnUpload"));
    QCOMPARE(user.count(), 1);
    QVERIFY(desk.waitForPasses(2));
    QCOMPARE(desk.neverRun(), QString());
    QCOMPARE(desk.last(), QString());
}

// --- Never read ---

void TestStatusJourneys::valuesBehindBrokenFullPassAreNeverRead()
{
    const HalfReadDesk desk;
    QVERIFY(desk.begin());
    QTRY_COMPARE(desk.says("StatusNeverRead"), QStringLiteral("2 von 12 nie gelesen (in einer Datei als 0)"));
    QVERIFY(desk.field("StatusNeverRead").toolTip().endsWith("\n82, 96"));
    QVERIFY(desk.waitForPasses(2));
    QVERIFY(!desk.says("StatusNeverRead").isEmpty());
}

void TestStatusJourneys::clickOnNeverReadShowsTable()
{
    const HalfReadDesk desk;
    QVERIFY(desk.begin());
    QTRY_VERIFY(!desk.says("StatusNeverRead").isEmpty());
    QVERIFY(desk.waitForPasses(2));
    QVERIFY(desk.press("StatusNeverRead"));
    QCOMPARE(desk.journey.pageTitle(), table);
    // There everything is read.
    QTRY_COMPARE(desk.says("StatusNeverRead"), QString());
}

// --- Pending ---

void TestStatusJourneys::changesAreCountedAsTheyAreMade()
{
    const StatusDesk desk;
    QVERIFY(desk.begin());
    QCOMPARE(desk.says("StatusPending"), QString());
    QVERIFY(desk.journey.typeValue(23, "700"));
    QCOMPARE(desk.says("StatusPending"), QStringLiteral("1 Änderung, 1 auf dieser Seite"));
    QVERIFY(desk.journey.typeValue(24, "9999"));
    QVERIFY(desk.journey.typeValue(11, "5"));
    QCOMPARE(desk.says("StatusPending"),
        QStringLiteral("3 Änderungen, 3 auf dieser Seite, 1 außerhalb der Grenzen"));
    QVERIFY(desk.click(fixedSpeeds));
    QCOMPARE(desk.says("StatusPending"),
        QStringLiteral("3 Änderungen, 2 auf dieser Seite, 1 außerhalb der Grenzen"));
}

void TestStatusJourneys::listOfChangesFollowsAndLeadsToPage()
{
    const StatusDesk desk;
    QVERIFY(desk.begin());
    QVERIFY(desk.journey.typeValue(24, "9999"));
    QVERIFY(desk.press("StatusPending"));
    const auto &list = static_cast<const ChangesDialog &>(desk.journey.dialog("ChangesDialog"));
    QVERIFY(list.isVisible() && !list.isModal());
    QCOMPARE(list.windowTitle(), QStringLiteral("Änderungen von Z7.1"));
    auto &rows = *list.findChild<QTableWidget *>(QStringLiteral("ChangesTable"));
    const auto row = [&rows](int number) {
        QStringList texts;
        for (int column = 0; column < rows.columnCount(); ++column)
            texts.append(rows.item(number, column)->text());
        return texts;
    };
    QCOMPARE(rows.rowCount(), 1);
    QCOMPARE(row(0), QStringList({"24", "Festdrehzahl n2 [1/min]", "1500", "9999", "-6000 ... 6000"}));
    QVERIFY(!rows.item(0, 3)->icon().isNull());

    // Typing goes on beside it.
    QVERIFY(desk.journey.typeValue(11, "5"));
    QTRY_COMPARE(rows.rowCount(), 2);
    QCOMPARE(row(0), QStringList({"11", "FE-Drehzahl X1 [Digit]", "256", "5", "0 ... 1023"}));
    QVERIFY(rows.item(0, 3)->icon().isNull());
    QCOMPARE(rows.currentRow(), 1);
    desk.bus.command("set 1 param 11 300");
    QTRY_COMPARE(row(0).at(2), QStringLiteral("300"));

    rows.setFocus();
    QTest::keyClick(&rows, Qt::Key_Up);
    QTest::keyClick(&rows, Qt::Key_Return);
    QTRY_COMPARE(desk.journey.pageTitle(), speedCurve);
    QVERIFY(desk.waitForPasses(2));
    const QPoint second = rows.visualItemRect(rows.item(1, 1)).center();
    QTest::mouseClick(rows.viewport(), Qt::LeftButton, {}, second);
    QTest::mouseDClick(rows.viewport(), Qt::LeftButton, {}, second);
    QTRY_COMPARE(desk.journey.pageTitle(), fixedSpeeds);
}

void TestStatusJourneys::escapeClosesListOfChanges()
{
    const StatusDesk desk;
    QVERIFY(desk.begin());
    QVERIFY(desk.journey.typeValue(24, "99"));
    QVERIFY(desk.press("StatusPending"));
    const QDialog &list = desk.journey.dialog("ChangesDialog");
    QTest::keyClick(const_cast<QDialog *>(&list), Qt::Key_Escape);
    QVERIFY(!list.isVisible());
    QCOMPARE(desk.says("StatusPending"), QStringLiteral("1 Änderung, 1 auf dieser Seite"));
}

void TestStatusJourneys::discardedChangesComeBack()
{
    const StatusDesk desk;
    QVERIFY(desk.begin());
    QVERIFY(desk.journey.typeValue(23, "700"));
    QVERIFY(desk.journey.typeValue(24, "900"));
    QVERIFY(desk.journey.press("BtnResetChanges"));
    QVERIFY(desk.journey.pickDrives({0}));
    QCOMPARE(desk.says("StatusPending"), QString());
    QCOMPARE(desk.says("StatusUndo"), QStringLiteral("Rückgängig"));

    QVERIFY(desk.press("StatusUndo"));
    QCOMPARE(desk.says("StatusUndo"), QString());
    QCOMPARE(desk.says("StatusPending"), QStringLiteral("2 Änderungen, 2 auf dieser Seite"));
    QCOMPARE(desk.journey.row(23).userValue, QStringLiteral("700"));
    QCOMPARE(desk.journey.mark(drive, table), QStringLiteral("active_modified"));

    // The next change is the end of it.
    QVERIFY(desk.journey.press("BtnResetChanges"));
    QVERIFY(desk.journey.pickDrives({0}));
    QVERIFY(desk.journey.typeValue(25, "5"));
    QCOMPARE(desk.says("StatusUndo"), QString());
}

void TestStatusJourneys::writeButtonsTellWhatTheyWouldSend()
{
    const StatusDesk desk;
    QVERIFY(desk.begin());
    const auto tips = [&desk] {
        QStringList texts;
        for (const char *button : {"BtnUpload", "BtnWriteAndStore"})
            texts.append(Person::seen(desk.journey.window(), button)->toolTip().section('\n', 0, 0));
        return texts;
    };
    const QString none = QStringLiteral("0 Änderungen");
    QCOMPARE(tips(), QStringList({none, none}));
    QVERIFY(desk.journey.typeValue(23, "700"));
    QVERIFY(desk.journey.typeValue(11, "5"));
    QVERIFY(desk.click(fixedSpeeds));
    const QString two = QStringLiteral("2 Änderungen, 1 von anderen Seiten");
    QCOMPARE(tips(), QStringList({two, two}));
}

// --- Drives ---

void TestStatusJourneys::twoDrivesOfOneIdAreTold()
{
    TestBench bench;
    // The digits of the names give the same sum.
    const QStringList ports {QStringLiteral("ttyUSB12"), QStringLiteral("ttyUSB21")};
    for (const QString &name : ports)
        bench.plugIn(name, {TestBench::shortDrive(1)});
    const Journey journey;
    for (const QString &name : ports)
        QVERIFY(journey.connectManually(name, 1, 0));
    QTRY_COMPARE(journey.window().findChild<StatusField *>("StatusDrives")->said().text,
        QStringLiteral("2 Antriebe mit derselben Kennung, nur einer gezeigt"));
    QCOMPARE(journey.drives().size(), 1);
}

QTEST_MAIN(TestStatusJourneys)

#include "tst_statusjourneys.moc"
