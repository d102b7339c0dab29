// What a person is told about the ports, in German and in English.

#include "control/services/language.h"
#include "control/services/services.h"
#include "shell/portwording.h"
#include "tests/support/isolatedtest.h"

#include <QFile>
#include <QtTest>

namespace {

PortState of(Z7PortDiagnosis::Kind kind)
{
    PortState state;
    state.portName = QStringLiteral("ttyUSB0");
    state.diagnosis.kind = kind;
    state.diagnosis.time = QDateTime(QDate(2026, 3, 5), QTime(14, 3, 12));
    return state;
}

PortState noRights(const QString &group)
{
    PortState state = of(Z7PortDiagnosis::NoRights);
    state.diagnosis.group = group;
    return state;
}

PortState held(qint64 id, const QString &program)
{
    PortState state = of(Z7PortDiagnosis::Held);
    state.diagnosis.holder = {id, program};
    return state;
}

PortState lockedOut()
{
    PortState state = of(Z7PortDiagnosis::NotOpened);
    state.diagnosis.lockFile = QStringLiteral("/var/lock/LCK..ttyUSB0");
    return state;
}

PortState returned(const QString &name)
{
    PortState state = of(Z7PortDiagnosis::Gone);
    state.returnedAs = name;
    return state;
}

/// A scan that ended so many seconds after the failure was noticed.
PortState scanned(int asked, int lastAsked, Z7PortDiagnosis::Kind kind = Z7PortDiagnosis::Fine, int later = 1)
{
    PortState state = of(kind);
    state.partialScan = ScanReach {asked, lastAsked, false, state.diagnosis.time.addSecs(later)};
    return state;
}

PortState stoppedScan()
{
    PortState state = scanned(12, 12);
    state.partialScan->wasStopped = true;
    return state;
}

} // namespace

Q_DECLARE_METATYPE(PortState)

class TestPortWording : public IsolatedTest
{
    Q_OBJECT

private slots:
    void stateIsWorded_data();
    void stateIsWorded();
    void toolTipTellsAllThatIsKnown_data();
    void toolTipTellsAllThatIsKnown();
    void fieldTellsLatestNewsAndHowManyMore();
    void nothingIsSaidOfPortsThatWork();

private:
    /// As shipped.
    static void takeEnglish();
};

void TestPortWording::takeEnglish()
{
    QFile::copy(QStringLiteral(Z7_SOURCE_DIR "/languages/english.z7lang"), QStringLiteral("english.z7lang"));
    Z7Services::instance()->language()->load(QStringLiteral("english"));
}

void TestPortWording::stateIsWorded_data()
{
    QTest::addColumn<PortState>("state");
    QTest::addColumn<QString>("german");
    QTest::addColumn<QString>("english");
    const auto row = [](const char *name, const PortState &state, const char *german, const char *english) {
        QTest::newRow(name) << state << QString::fromUtf8(german) << QString::fromUtf8(english);
    };
    row("works", of(Z7PortDiagnosis::Fine), "", "");
    row("no rights", noRights("dialout"), "ttyUSB0: keine Rechte (Gruppe dialout)",
        "ttyUSB0: no permission (group dialout)");
    row("no rights for any group", noRights(""), "ttyUSB0: keine Rechte", "ttyUSB0: no permission");
    row("held", held(4711, "z7ctl"), "ttyUSB0 gehalten von z7ctl (4711)", "ttyUSB0 held by z7ctl (4711)");
    row("held by process", held(4711, ""), "ttyUSB0 gehalten von Prozess 4711",
        "ttyUSB0 held by process 4711");
    row("held by somebody", held(0, ""), "ttyUSB0 von einem anderen Programm gehalten",
        "ttyUSB0 held by another program");
    row("name like a placeholder", held(4711, "%3"), "ttyUSB0 gehalten von %3 (4711)",
        "ttyUSB0 held by %3 (4711)");
    row("gone", of(Z7PortDiagnosis::Gone), "ttyUSB0 fort seit 14:03:12", "ttyUSB0 gone since 14:03:12");
    row("settings", of(Z7PortDiagnosis::SettingsRefused), "ttyUSB0: Einstellungen abgelehnt",
        "ttyUSB0: settings refused");
    row("anything else", of(Z7PortDiagnosis::NotOpened), "ttyUSB0 lässt sich nicht öffnen",
        "ttyUSB0 cannot be opened");
    row("back", returned("ttyUSB1"), "Adapter wieder da als ttyUSB1, neu verbinden",
        "adapter is back as ttyUSB1, connect again");
    row("back as before", returned("ttyUSB0"), "Adapter wieder da als ttyUSB0", "adapter is back as ttyUSB0");
    row("scan up to address", scanned(95, 95), "Scan ttyUSB0: nur bis Adresse 95 von 255",
        "Scan ttyUSB0: only up to address 95 of 255");
    row("scan with gaps", scanned(254, 255), "Scan ttyUSB0: nur 254 von 255 Adressen",
        "Scan ttyUSB0: only 254 of 255 addresses");
    row("scan of nothing", scanned(0, 0), "Scan ttyUSB0: keine von 255 Adressen",
        "Scan ttyUSB0: none of 255 addresses");
    row("scan of port without rights", scanned(0, 0, Z7PortDiagnosis::NotOpened),
        "ttyUSB0 lässt sich nicht öffnen", "ttyUSB0 cannot be opened");
    row("scan that lost its port", scanned(95, 95, Z7PortDiagnosis::Gone),
        "Scan ttyUSB0: nur bis Adresse 95 von 255", "Scan ttyUSB0: only up to address 95 of 255");
    row("port lost after its scan", scanned(95, 95, Z7PortDiagnosis::Gone, -1), "ttyUSB0 fort seit 14:03:12",
        "ttyUSB0 gone since 14:03:12");
}

void TestPortWording::stateIsWorded()
{
    QFETCH(PortState, state);
    QTEST(PortWording::text(state), "german");
    Z7Services::shutdown();
    takeEnglish();
    QTEST(PortWording::text(state), "english");
}

void TestPortWording::toolTipTellsAllThatIsKnown_data()
{
    QTest::addColumn<PortState>("state");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("works") << of(Z7PortDiagnosis::Fine) << QStringList("");
    QTest::newRow("no rights") << noRights("dialout")
                               << QStringList({"ttyUSB0: keine Rechte (Gruppe dialout)",
                                      QStringLiteral(
                                          u"Wer zur Gruppe dialout gehört, darf den Port benutzen.")});
    QTest::newRow("lock file left behind") << lockedOut()
                                           << QStringList({QStringLiteral(u"ttyUSB0 lässt sich nicht öffnen"),
                                                  "Im Weg ist die Sperrdatei /var/lock/LCK..ttyUSB0."});
    QTest::newRow("back") << returned("ttyUSB1")
                          << QStringList({"Adapter wieder da als ttyUSB1, neu verbinden",
                                 "ttyUSB0 fort seit 14:03:12"});
    QTest::newRow("scan that lost its port")
        << scanned(95, 95, Z7PortDiagnosis::Gone)
        << QStringList({"Scan ttyUSB0: nur bis Adresse 95 von 255", "ttyUSB0 fort seit 14:03:12"});
    QTest::newRow("stopped scan") << stoppedScan()
                                  << QStringList({"Scan ttyUSB0: nur bis Adresse 12 von 255",
                                         "Der Scan wurde abgebrochen."});
}

void TestPortWording::toolTipTellsAllThatIsKnown()
{
    QFETCH(PortState, state);
    QFETCH(QStringList, lines);
    QCOMPARE(PortWording::toolTip(state).split('\n'), lines);
}

void TestPortWording::fieldTellsLatestNewsAndHowManyMore()
{
    const QList<PortState> troubles {held(4711, "z7ctl"), stoppedScan()};
    QCOMPARE(PortWording::text(troubles), QStringLiteral("ttyUSB0 gehalten von z7ctl (4711) (+1)"));
    QCOMPARE(PortWording::toolTip(troubles),
        QStringLiteral("ttyUSB0 gehalten von z7ctl (4711)\n"
                       "Scan ttyUSB0: nur bis Adresse 12 von 255\nDer Scan wurde abgebrochen."));
    QCOMPARE(PortWording::text(troubles.mid(0, 1)), QStringLiteral("ttyUSB0 gehalten von z7ctl (4711)"));
}

void TestPortWording::nothingIsSaidOfPortsThatWork()
{
    QCOMPARE(PortWording::text(QList<PortState>()), QString());
    QCOMPARE(PortWording::toolTip(QList<PortState>()), QString());
}

QTEST_MAIN(TestPortWording)

#include "tst_portwording.moc"
