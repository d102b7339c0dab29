// The course of a drive as a table for other programs, to the byte.

#include "control/coursequantities.h"
#include "control/livecourses.h"
#include "control/services/language.h"
#include "model/parameterdefinitions.h"
#include "tests/control/livevalues.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

namespace {

/// 2026-11-22 13:03:12.045 in UTC.
constexpr qint64 time = 1795352592045;

const char *const definitions = "Nummer;Name;Einheit;Werk;Min;Max;Vorzeichen;Jederzeit;Zugriff;Variante;\n"
                                "32769;n;1/min;0;;;Signed;1;r;0;\n"
                                "32772;s;Umdr.;0;;;Signed;1;r;0;\n"
                                "32773;T;°C;0;;;Signed;1;r;0;\n"
                                "32775;I;mA;0;;;Signed;1;r;0;\n";

DriveCourse courseOf(const QList<LiveValues> &all)
{
    DriveCourse drive;
    drive.name = QStringLiteral("Port0 - Z7.3");
    drive.version = QStringLiteral("V123");
    for (const LiveValues &values : all)
        drive.course.append(values);
    return drive;
}

LiveValues values()
{
    LiveValues values = valuesAt(time, -1500);
    values.current = 8500;
    values.temperature = 41;
    values.position = -2.00002;
    values.analogInput = 1023;
    return values;
}

} // namespace

class TestCourseTable : public IsolatedTest
{
    Q_OBJECT

private slots:
    void tableHasTitlesUnitsAndValues();
    void tableIsWrittenInLanguageInForce();
    void unknownUnitIsLeftOut();
    void separatorWithinTextIsQuoted();
    void emptyCourseHasTitlesOnly();
    void timeHasZoneOfComputer_data();
    void timeHasZoneOfComputer();

private:
    void prepare() override
    {
        setZone("CET-1");
        WorkingFolder::writeText(QStringLiteral("Z7ParamDef_V123.csv"), QString::fromUtf8(definitions));
        Z7Services::instance()->definitions(QStringLiteral("V123"))->load();
    }
    void tidyUp() override { setZone("UTC"); }

    static void setZone(const char *zone)
    {
        qputenv("TZ", zone);
        tzset();
    }
};

void TestCourseTable::tableHasTitlesUnitsAndValues()
{
    LiveValues later = values();
    later.timeMs += 1300;
    later.speed = 0;
    later.position = 30000.5;
    QCOMPARE(courseTable(courseOf({values(), later})),
        QByteArray("\xEF\xBB\xBF"
                   "Zeit;Antrieb;Drehzahl [1/min];Strom [mA];Temperatur [\xC2\xB0"
                   "C];Position [Umdr.];Analogeingang A1\r\n"
                   "2026-11-22T14:03:12.045+01:00;Port0 - Z7.3;-1500;8500;41;-2.00002;1023\r\n"
                   "2026-11-22T14:03:13.345+01:00;Port0 - Z7.3;0;8500;41;30000.50000;1023\r\n"));
}

void TestCourseTable::tableIsWrittenInLanguageInForce()
{
    WorkingFolder::writeText(QStringLiteral("other.z7lang"),
        QStringLiteral("[General]\nUmdr.=rev.\n[DialogStatusBar]\nCourseTime=Time\nCoursePosition=Place\n"));
    Z7Services::instance()->language()->load(QStringLiteral("other"));
    const QByteArray titles = courseTable(courseOf({})).split('\r').first();
    QVERIFY2(titles.startsWith("\xEF\xBB\xBFTime;Antrieb;"), titles.constData());
    QVERIFY2(titles.contains(";Place ["), titles.constData());
}

void TestCourseTable::unknownUnitIsLeftOut()
{
    DriveCourse drive = courseOf({});
    drive.version = QStringLiteral("V999");
    QCOMPARE(courseTable(drive),
        QByteArray("\xEF\xBB\xBFZeit;Antrieb;Drehzahl;Strom;Temperatur;Position;Analogeingang A1\r\n"));
}

void TestCourseTable::separatorWithinTextIsQuoted()
{
    DriveCourse drive = courseOf({values()});
    drive.name = QStringLiteral("a;\"b\"");
    const QByteArray line = courseTable(drive).split('\n').value(1);
    QVERIFY2(line.contains(";\"a;\"\"b\"\"\";-1500;"), line.constData());
}

void TestCourseTable::emptyCourseHasTitlesOnly()
{
    QCOMPARE(courseTable(courseOf({})).count('\n'), 1);
}

void TestCourseTable::timeHasZoneOfComputer_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("UTC") << QByteArray("UTC") << QByteArray("2026-11-22T13:03:12.045Z");
    QTest::newRow("west") << QByteArray("NST3:30") << QByteArray("2026-11-22T09:33:12.045-03:30");
}

void TestCourseTable::timeHasZoneOfComputer()
{
    QFETCH(QByteArray, zone);
    setZone(zone.constData());
    QTEST(courseTable(courseOf({values()})).split('\n').value(1).split(';').first(), "text");
}

QTEST_GUILESS_MAIN(TestCourseTable)

#include "tst_coursetable.moc"
