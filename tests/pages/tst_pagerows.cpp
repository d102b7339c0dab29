// What the pages are called, and where they stand in the tree.

#include "control/services/language.h"
#include "pages/pagefactory.h"
#include "tests/support/germantexts.h"
#include "tests/support/isolatedtest.h"

#include <QSet>
#include <QtTest>

class TestPageRows : public IsolatedTest
{
    Q_OBJECT

private slots:
    void eachPageHasItsTitle_data();
    void eachPageHasItsTitle();
    void titleCanBeTranslated();
    void anyOtherPageHasNoTitleAndMakesNoLookUp_data();
    void anyOtherPageHasNoTitleAndMakesNoLookUp();
    void everyTitleIsListedForTranslators();
    void everyPageButThreeStandsBelowDrives();
};

void TestPageRows::eachPageHasItsTitle_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("title");

    int page = 0;
    const auto row = [&page](const char *section, const char *title) {
        QTest::newRow(section) << page++ << QString::fromLatin1(section) << QString::fromUtf8(title);
    };
    row("DialogNetworkStatus", "Z7-Netzwerk");
    row("DialogDeviceStatus", "Z7-Motorstatus");
    row("DialogSpeedRegulation", "Regelung");
    row("DialogAcceleration", "Dynamik");
    row("DialogCurrentLimits", "Stromgrenzen");
    row("DialogFixedResolutions", "Festdrehzahlen");
    row("DialogPositioning", "Positionierung");
    row("DialogOutput", "Digitale Ausgänge");
    row("DialogOperationsMode", "Betriebsmodus");
    row("DialogParamTable", "Parametertabelle");
    row("DialogFirmwareUpdate", "Firmware update");
    row("DialogValueCalibrationRotations", "Sollwertskalierung Drehzahl");
    row("DialogValueCalibrationCurrent", "Sollwertskalierung Strom");
    row("DialogFixResistance", "Ballastwiderstand");
    row("DialogVoltageLimits", "Spannungsgrenzen");
    row("DialogRS485", "RS485");
    row("DialogRemoteControl", "Fernsteuerung");
    QCOMPARE(page, int(PageNumber::Count));
}

void TestPageRows::eachPageHasItsTitle()
{
    QFETCH(int, page);
    QFETCH(QString, section);
    QFETCH(QString, title);
    QCOMPARE(pageTitle(page), title);
    // The look-up has left the title under its key, so another default no longer counts.
    QCOMPARE(languageText(qPrintable(section), "Title", QStringLiteral("x")), title);
}

void TestPageRows::titleCanBeTranslated()
{
    WorkingFolder::write("deutsch.z7lang", "[DialogNetworkStatus]\nTitle=Network\n");
    QCOMPARE(pageTitle(0), QStringLiteral("Network"));
}

void TestPageRows::anyOtherPageHasNoTitleAndMakesNoLookUp_data()
{
    QTest::addColumn<int>("page");
    QTest::newRow("behind the last one") << int(PageNumber::Count);
    QTest::newRow("no page") << PageNumber::none;
}

void TestPageRows::anyOtherPageHasNoTitleAndMakesNoLookUp()
{
    QFETCH(int, page);
    QCOMPARE(pageTitle(page), QStringLiteral("n/a"));
    Z7Services::shutdown();
    QVERIFY(!QFile::exists("deutsch.z7lang"));
}

void TestPageRows::everyTitleIsListedForTranslators()
{
    QStringList listed;
    const QMap<QString, GermanText> all = germanTexts();
    for (auto text = all.begin(); text != all.end(); ++text) {
        if (text.key().endsWith("/Title"))
            listed.append(text->text);
    }
    for (int page = 0; page < PageNumber::Count; ++page)
        QVERIFY2(listed.contains(pageTitle(page)), qPrintable(pageTitle(page)));
}

void TestPageRows::everyPageButThreeStandsBelowDrives()
{
    QSet<int> notThere;
    for (int page = 0; page < PageNumber::Count; ++page) {
        if (!drivePages().contains(page))
            notThere.insert(page);
    }
    QCOMPARE(notThere, QSet<int>({PageNumber::Network, PageNumber::DeviceStatus, PageNumber::RemoteControl}));
    QCOMPARE(drivePages().size(), PageNumber::Count - notThere.size());
}

QTEST_APPLESS_MAIN(TestPageRows)

#include "tst_pagerows.moc"
