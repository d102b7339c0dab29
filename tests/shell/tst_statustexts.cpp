// What the fields of the status bar say of what is known, in both languages.

#include "control/services/language.h"
#include "control/services/services.h"
#include "shell/statustexts.h"
#include "tests/support/isolatedtest.h"

#include <QDir>
#include <QFile>
#include <QtTest>

Q_DECLARE_METATYPE(Z7Knowledge::Fresh)
Q_DECLARE_METATYPE(QVector<NotRunOperation>)
Q_DECLARE_METATYPE(Z7Knowledge::NeverRead)
Q_DECLARE_METATYPE(PendingOverview)

namespace {

const QDateTime noon(QDate(2026, 11, 22), QTime(14, 3, 12));
constexpr int drive = 7;

Z7Knowledge::Fresh fresh(Freshness::State state, const QDateTime &readAt = noon)
{
    Z7Knowledge::Fresh known;
    known.state = state;
    known.driveName = QStringLiteral("Z7.1");
    known.readAt = readAt;
    return known;
}

QVector<int> numbers(int first, int count)
{
    QVector<int> list;
    for (int number = first; number < first + count; ++number)
        list.append(number);
    return list;
}

OperationReport report(DriveOperation operation, int error = 0)
{
    OperationReport ended;
    ended.operation = operation;
    ended.deviceId = drive;
    ended.driveName = QStringLiteral("Z7.1");
    ended.endedAt = noon;
    ended.error = error;
    ended.isComplete = error == 0;
    return ended;
}

OperationReport written(DriveOperation operation, int done, const QVector<int> &refused = {})
{
    OperationReport ended = report(operation);
    ended.done = numbers(1, done);
    ended.refused = refused;
    ended.isComplete = refused.isEmpty();
    return ended;
}

OperationReport withStore(OperationReport ended, Z7PassOutcome::Store store, int error = 0)
{
    ended.store = store;
    ended.error = error;
    ended.isComplete = error == 0;
    return ended;
}

NotRunOperation notRun(DriveOperation operation, Z7CommInterface::NotRun reason, int deviceId = drive)
{
    NotRunOperation one;
    one.operation = operation;
    one.deviceId = deviceId;
    one.driveName = deviceId == drive ? QStringLiteral("Z7.1") : QStringLiteral("Z7.2");
    one.at = noon;
    one.reason = reason;
    return one;
}

PendingOverview changes(int total, int onShownPage, int outOfLimits)
{
    PendingOverview overview;
    overview.total = total;
    overview.onShownPage = onShownPage;
    overview.outOfLimits = outOfLimits;
    return overview;
}

Z7Device hiddenDrive(int address, const QString &version = QStringLiteral("V123"))
{
    Z7Device hidden;
    hidden.address = address;
    hidden.softwareVersion = version;
    return hidden;
}

/// The words of this field in the language of the row.
void inLanguage(const QString &language)
{
    if (language == QLatin1String("english"))
        QVERIFY(QFile::copy(QStringLiteral(Z7_SOURCE_DIR "/languages/english.z7lang"), "english.z7lang"));
    Z7Services::instance()->language()->load(language);
}

/// Rows of a value and its text in both languages.
template<typename Value>
class Rows
{
public:
    Rows()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<Value>("known");
        QTest::addColumn<QString>("text");
    }
    void operator()(const char *name, const Value &known, const char *german, const char *english) const
    {
        QTest::addRow("%s", name) << QStringLiteral("deutsch") << known << QString::fromUtf8(german);
        QTest::addRow("%s, in English", name)
            << QStringLiteral("english") << known << QString::fromUtf8(english);
    }
};

/// The row of a function whose rows are `Rows<Value>`.
template<typename Value>
struct Row
{
    Row()
    {
        QFETCH(QString, language);
        QFETCH(Value, known);
        QFETCH(QString, text);
        inLanguage(language);
        value = known;
        expected = text;
    }

    Value value;
    QString expected;
};

} // namespace

class TestStatusTexts : public IsolatedTest
{
    Q_OBJECT

private slots:
    void fresh_data();
    void fresh();
    void staleValuesAloneAreWarning();
    void valuesThatMayBeOldTellTheirAge();

    void lastOperation_data();
    void lastOperation();
    void nothingIsSaidBeforeFirstOperation();
    void longListOfNumbersIsWholeInToolTip();
    void wordsOfErrorAreInToolTipAlone();

    void neverRun_data();
    void neverRun();
    void neverRead_data();
    void neverRead();
    void numbersNeverReadAreInToolTip();
    void pending_data();
    void pending();
    void undoIsOfferedWhereThereIsSomethingToBringBack();
    void drivesOfOneIdAreCounted_data();
    void drivesOfOneIdAreCounted();
    void missingDefinitionsAreTold();
    void wouldBeSent_data();
    void wouldBeSent();
};

void TestStatusTexts::fresh_data()
{
    using State = Freshness::State;
    const Rows<Z7Knowledge::Fresh> row;
    row("no drive", ::fresh(State::NoDrive, QDateTime()), "", "");
    row("never read", ::fresh(State::NeverRead, QDateTime()), "noch nicht gelesen", "not read yet");
    row("read", ::fresh(State::Read), "Z7.1 gelesen 14:03:12", "Z7.1 read 14:03:12");
    row("stale", ::fresh(State::Stale), "veraltet seit 14:03:12", "stale since 14:03:12");
    row("live values off", ::fresh(State::LiveValuesOff), "Live-Werte aus", "live values off");
    row("held", ::fresh(State::Held), "angehalten – Seite anklicken", "held – click a page");
    row("waiting", ::fresh(State::Waiting), "wartet", "waiting");
}

void TestStatusTexts::fresh()
{
    const Row<Z7Knowledge::Fresh> row;
    QCOMPARE(StatusTexts::fresh(row.value).text, row.expected);
}

void TestStatusTexts::staleValuesAloneAreWarning()
{
    using State = Freshness::State;
    QVERIFY(StatusTexts::fresh(::fresh(State::Stale)).isWarning);
    for (const State state :
        {State::NeverRead, State::Read, State::LiveValuesOff, State::Held, State::Waiting})
        QVERIFY(!StatusTexts::fresh(::fresh(state)).isWarning);
}

void TestStatusTexts::valuesThatMayBeOldTellTheirAge()
{
    using State = Freshness::State;
    for (const State state : {State::Stale, State::LiveValuesOff, State::Held, State::Waiting}) {
        QCOMPARE(StatusTexts::fresh(::fresh(state)).detail,
            QStringLiteral("Z7.1 zuletzt gelesen: 2026-11-22 14:03:12"));
    }
    QCOMPARE(StatusTexts::fresh(::fresh(State::Held, QDateTime())).detail, QString());
}

void TestStatusTexts::lastOperation_data()
{
    const Rows<OperationReport> row;

    OperationReport write = written(DriveOperation::Write, 11, {24});
    write.readBackEqual = write.done;
    row("write with a refusal, read back", write,
        "14:03:12 Schreiben: 11 geschrieben, 1 abgelehnt (24); 11 zurückgelesen, gleich; "
        "nicht im Motor gespeichert",
        "14:03:12 Write: 11 written, 1 refused (24); 11 read back, equal; not stored in the drive");

    row("write, not read back yet", written(DriveOperation::Write, 2),
        "14:03:12 Schreiben: 2 geschrieben; nicht im Motor gespeichert",
        "14:03:12 Write: 2 written; not stored in the drive");

    OperationReport changed = written(DriveOperation::Write, 3);
    changed.readBackEqual = {1, 2};
    changed.readBackDifferent = {3};
    row("value came back different", changed,
        "14:03:12 Schreiben: 3 geschrieben; 2 zurückgelesen, gleich; 1 zurückgelesen, anders (3); "
        "nicht im Motor gespeichert",
        "14:03:12 Write: 3 written; 2 read back, equal; 1 read back, different (3); "
        "not stored in the drive");

    OperationReport conflict = written(DriveOperation::Write, 2);
    conflict.conflicts = {2};
    row("conflict is named apart", conflict,
        "14:03:12 Schreiben: 2 geschrieben, 1 mit Konflikt (2); nicht im Motor gespeichert",
        "14:03:12 Write: 2 written, 1 with a conflict (2); not stored in the drive");

    OperationReport broken = written(DriveOperation::Write, 7);
    broken.error = 1;
    broken.isComplete = false;
    broken.uncertain = {8};
    broken.unsent = {9, 10, 11, 12};
    row("write that broke off", broken,
        "14:03:12 Schreiben: 7 von 12 geschrieben, Rest ungewiss (Fehler 1); nicht im Motor gespeichert",
        "14:03:12 Write: 7 of 12 written, rest uncertain (error 1); not stored in the drive");

    OperationReport unsent = report(DriveOperation::Write, 3);
    unsent.unsent = {1, 2};
    row("write on a port that did not open", unsent,
        "14:03:12 Schreiben: 0 von 2 geschrieben, Rest nicht gesendet (Fehler 3); "
        "nicht im Motor gespeichert",
        "14:03:12 Write: 0 of 2 written, rest not sent (error 3); not stored in the drive");

    row("write and store", withStore(written(DriveOperation::WriteAndStore, 1), Z7PassOutcome::Stored),
        "14:03:12 Schreiben+Speichern: 1 geschrieben; im Motor gespeichert",
        "14:03:12 Write+store: 1 written; stored in the drive");

    row("write whose store failed",
        withStore(written(DriveOperation::WriteAndStore, 1), Z7PassOutcome::NotStored, 17),
        "14:03:12 Schreiben+Speichern: 1 geschrieben; nicht im Motor gespeichert (Fehler 17)",
        "14:03:12 Write+store: 1 written; not stored in the drive (error 17)");
    row("write whose store was not answered",
        withStore(written(DriveOperation::WriteAndStore, 1), Z7PassOutcome::StoreUncertain, 1),
        "14:03:12 Schreiben+Speichern: 1 geschrieben; Speichern ungewiss (Fehler 1)",
        "14:03:12 Write+store: 1 written; storing uncertain (error 1)");

    row("store", withStore(report(DriveOperation::Store), Z7PassOutcome::Stored),
        "14:03:12 Im Motor speichern: im Motor gespeichert",
        "14:03:12 Store in the drive: stored in the drive");
    row("store with nothing new", withStore(report(DriveOperation::Store), Z7PassOutcome::NotStored, 16),
        "14:03:12 Im Motor speichern: nicht im Motor gespeichert (Fehler 16)",
        "14:03:12 Store in the drive: not stored in the drive (error 16)");

    row("read", written(DriveOperation::Read, 12), "14:03:12 Lesen: 12 gelesen", "14:03:12 Read: 12 read");
    OperationReport halfRead = written(DriveOperation::Read, 3, {24});
    halfRead.error = 1;
    halfRead.unsent = {5, 6};
    row("read that broke off", halfRead,
        "14:03:12 Lesen: 3 von 6 gelesen, 1 abgelehnt (24), Rest nicht gesendet (Fehler 1)",
        "14:03:12 Read: 3 of 6 read, 1 refused (24), rest not sent (error 1)");

    row("factory reset", report(DriveOperation::FactoryReset),
        "14:03:12 Auf Werkseinstellungen zurücksetzen: ausgeführt",
        "14:03:12 Reset to factory settings: done");
    row("factory reset without an answer", report(DriveOperation::FactoryReset, 1),
        "14:03:12 Auf Werkseinstellungen zurücksetzen: nicht bestätigt (Fehler 1)",
        "14:03:12 Reset to factory settings: not confirmed (error 1)");
    row("password", report(DriveOperation::ChangePassword), "14:03:12 Neues Passwort setzen: ausgeführt",
        "14:03:12 Set new password: done");
    row("address", report(DriveOperation::ChangeAddress), "14:03:12 Adresse ändern: ausgeführt",
        "14:03:12 Change address: done");
    row("bootloader", report(DriveOperation::EnterBootloader, 20),
        "14:03:12 Bootloader aktivieren: nicht bestätigt (Fehler 20)",
        "14:03:12 Activate the bootloader: not confirmed (error 20)");

    OperationReport file = report(DriveOperation::OpenFile);
    file.file = {12, 90, 0, 2, 1};
    row("file", file, "14:03:12 Datei öffnen: 12 neu, 90 gleich, 2 unbekannt, 1 außerhalb der Grenzen",
        "14:03:12 Open file: 12 new, 90 equal, 2 unknown, 1 out of limits");
    file.file = {0, 3, 5, 0, 0};
    row("file on a drive that is half read", file,
        "14:03:12 Datei öffnen: 0 neu, 3 gleich, 5 noch nicht gelesen",
        "14:03:12 Open file: 0 new, 3 equal, 5 not read yet");
}

void TestStatusTexts::lastOperation()
{
    const Row<OperationReport> row;
    QCOMPARE(StatusTexts::lastOperation(&row.value).text, row.expected);
}

void TestStatusTexts::nothingIsSaidBeforeFirstOperation()
{
    QVERIFY(StatusTexts::lastOperation(nullptr).isEmpty());
}

void TestStatusTexts::longListOfNumbersIsWholeInToolTip()
{
    const OperationReport refused = written(DriveOperation::Write, 0, numbers(30, 14));
    const StatusText said = StatusTexts::lastOperation(&refused);
    QVERIFY(said.text.contains("14 abgelehnt (30, 31, 32, 33, 34, 35, ...)"));
    QVERIFY(said.detail.contains("abgelehnt: 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41,\n42, 43"));
}

void TestStatusTexts::wordsOfErrorAreInToolTipAlone()
{
    const OperationReport failed = report(DriveOperation::FactoryReset, 1);
    const StatusText said = StatusTexts::lastOperation(&failed);
    QVERIFY(!said.text.contains("antwortet"));
    QVERIFY(said.detail.contains("Fehler 1: Das Gerät antwortet nicht (timeout)"));
}

void TestStatusTexts::neverRun_data()
{
    using Z7CommInterface::NotRun;
    const Rows<QVector<NotRunOperation>> row;
    row("nothing", {}, "", "");
    row("store during a transfer", {notRun(DriveOperation::Store, NotRun::TransferRunning)},
        "Nicht ausgeführt: Im Motor speichern (Übertragung lief)",
        "Not run: Store in the drive (a transfer was running)");
    row("write that was replaced", {notRun(DriveOperation::Write, NotRun::Replaced)},
        "Nicht ausgeführt: Schreiben (durch eine andere Anforderung ersetzt)",
        "Not run: Write (replaced by another request)");
    row("cancelled read", {notRun(DriveOperation::Read, NotRun::Cancelled)},
        "Nicht ausgeführt: Lesen (abgebrochen)", "Not run: Read (cancelled)");
    row("programmer had the bus", {notRun(DriveOperation::FactoryReset, NotRun::BusLent)},
        "Nicht ausgeführt: Auf Werkseinstellungen zurücksetzen (Programmierer lief)",
        "Not run: Reset to factory settings (the programmer was running)");
    row("two, one of another drive",
        {notRun(DriveOperation::Store, NotRun::TransferRunning),
            notRun(DriveOperation::Write, NotRun::Cancelled, 8)},
        "Nicht ausgeführt: Im Motor speichern (Übertragung lief), Z7.2 Schreiben (abgebrochen)",
        "Not run: Store in the drive (a transfer was running), Z7.2 Write (cancelled)");
}

void TestStatusTexts::neverRun()
{
    const Row<QVector<NotRunOperation>> row;
    QCOMPARE(StatusTexts::neverRun(row.value, drive).text, row.expected);
}

void TestStatusTexts::neverRead_data()
{
    const Rows<Z7Knowledge::NeverRead> row;
    Z7Knowledge::NeverRead known;
    known.total = 118;
    known.numbers = {3, 24, 96};
    row("first full pass is not over", known, "", "");
    known.isKnown = true;
    row("three", known, "3 von 118 nie gelesen (in einer Datei als 0)", "3 of 118 never read");
    known.numbers.clear();
    row("everything was read", known, "", "");
}

void TestStatusTexts::neverRead()
{
    const Row<Z7Knowledge::NeverRead> row;
    QCOMPARE(StatusTexts::neverRead(row.value).text, row.expected);
}

void TestStatusTexts::numbersNeverReadAreInToolTip()
{
    Z7Knowledge::NeverRead known;
    known.isKnown = true;
    known.total = 118;
    known.numbers = {3, 24, 96};
    QCOMPARE(StatusTexts::neverRead(known).detail, QStringLiteral("3, 24, 96"));
}

void TestStatusTexts::pending_data()
{
    const Rows<PendingOverview> row;
    row("none", changes(0, 0, 0), "", "");
    row("five", changes(5, 2, 1), "5 Änderungen, 2 auf dieser Seite, 1 außerhalb der Grenzen",
        "5 changes, 2 on this page, 1 out of limits");
    row("all within limits", changes(5, 0, 0), "5 Änderungen, 0 auf dieser Seite",
        "5 changes, 0 on this page");
    row("one", changes(1, 1, 0), "1 Änderung, 1 auf dieser Seite", "1 change, 1 on this page");
}

void TestStatusTexts::pending()
{
    const Row<PendingOverview> row;
    QCOMPARE(StatusTexts::pending(row.value).text, row.expected);
}

void TestStatusTexts::undoIsOfferedWhereThereIsSomethingToBringBack()
{
    QCOMPARE(StatusTexts::undo(true).text, QStringLiteral("Rückgängig"));
    QVERIFY(StatusTexts::undo(false).isEmpty());
}

void TestStatusTexts::drivesOfOneIdAreCounted_data()
{
    QTest::addColumn<QVector<Z7Device>>("hidden");
    QTest::addColumn<QString>("text");
    const QString two = QStringLiteral("2 Antriebe mit derselben Kennung, nur einer gezeigt");
    QTest::newRow("none") << QVector<Z7Device>() << QString();
    QTest::newRow("one") << QVector<Z7Device> {hiddenDrive(1)} << two;
    QTest::newRow("two of one id") << QVector<Z7Device> {hiddenDrive(1), hiddenDrive(1)}
                                   << QString(two).replace('2', '3');
    QTest::newRow("two of two ids") << QVector<Z7Device> {hiddenDrive(1), hiddenDrive(2)} << two + "; " + two;
}

void TestStatusTexts::drivesOfOneIdAreCounted()
{
    QFETCH(QVector<Z7Device>, hidden);
    QTEST(StatusTexts::hiddenDrives(hidden).text, "text");
}

void TestStatusTexts::missingDefinitionsAreTold()
{
    QCOMPARE(StatusTexts::missingDefinitions(true).text,
        QStringLiteral("Arbeitsordner ohne Parameter-Definitionen"));
    QVERIFY(StatusTexts::missingDefinitions(false).isEmpty());
}

void TestStatusTexts::wouldBeSent_data()
{
    const Rows<PendingOverview> row;
    row("none", changes(0, 0, 0), "0 Änderungen", "0 changes");
    row("some from other pages", changes(5, 2, 1), "5 Änderungen, 3 von anderen Seiten",
        "5 changes, 3 from other pages");
    row("all on this page", changes(1, 1, 0), "1 Änderung", "1 change");
}

void TestStatusTexts::wouldBeSent()
{
    const Row<PendingOverview> row;
    QCOMPARE(StatusTexts::wouldBeSent(row.value), row.expected);
}

QTEST_MAIN(TestStatusTexts)

#include "tst_statustexts.moc"
