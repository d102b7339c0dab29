// What screen readers and tool tips tell of everything on a page that can have the focus.

#include "tests/pages/samplepage.h"
#include "tests/support/isolatedtest.h"

#include <QPlainTextEdit>
#include <QTableWidget>

#include <optional>

namespace {

/// What on the page can have the focus.
QList<QWidget *> focusables(const QWidget &page)
{
    QList<QWidget *> found;
    for (QWidget *widget : page.findChildren<QWidget *>()) {
        if (widget->focusPolicy() != Qt::NoFocus && widget->isVisible())
            found.append(widget);
    }
    return found;
}

Z7Device driveOf(const QString &version)
{
    Z7Device drive = deviceWith({readParam(0x4A, 5)});
    drive.setSoftwareVersion(version);
    return drive;
}

void readEnglish()
{
    WorkingFolder::write(
        "english.z7lang", WorkingFolder::read(QStringLiteral(Z7_SOURCE_DIR "/languages/english.z7lang")));
    Z7Services::instance()->language()->load("english");
}

} // namespace

class TestFieldNames : public IsolatedTest
{
    Q_OBJECT

private slots:
    void everyFocusableHasNameOfItsOwn_data();
    void everyFocusableHasNameOfItsOwn();
    void everyUserFieldTellsItsParameter_data() { addPagesWithFields(); }
    void everyUserFieldTellsItsParameter();
    void everyTextIsInUsersLanguage_data();
    void everyTextIsInUsersLanguage();
    void fieldsOfOneNameAreToldApart();
    void curveTellsLimitsOfItsFields();
    void busAddressTellsLimitsOfItsField();
    void pointsOfCurveAreNamedAsPoints();
    void fieldOfVersionWithoutParameterSaysSo();
    void definitionsOfNextShowingAreTold();

private:
    static void addPages();
};

void TestFieldNames::addPages()
{
    QTest::addColumn<int>("page");
    for (int page = 0; page < PageNumber::Count; ++page)
        QTest::newRow(createDataPage(page)->metaObject()->className()) << page;
}

void TestFieldNames::everyFocusableHasNameOfItsOwn_data()
{
    addPages();
}

void TestFieldNames::everyFocusableHasNameOfItsOwn()
{
    QFETCH(int, page);
    const SamplePage shown(page);
    QSet<QString> names;
    for (const QWidget *widget : focusables(*shown.page)) {
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        const QString name =
            button && widget->accessibleName().isEmpty() ? button->text() : widget->accessibleName();
        QVERIFY2(!name.isEmpty(), qPrintable(widget->objectName()));
        QVERIFY2(!names.contains(name), qPrintable(name));
        names.insert(name);
    }
}

void TestFieldNames::everyUserFieldTellsItsParameter()
{
    QFETCH(int, page);
    const SamplePage shown(page);
    for (const QLineEdit *field : shown.fieldsAsSeen()) {
        const QStringList lines = field->toolTip().split('\n');
        QVERIFY2(lines.first().startsWith("Parameter "), qPrintable(field->objectName()));
        const int number = lines.first().section(' ', 1).section(':', 0, 0).toInt();
        QVERIFY(shown.page->hasParam(number));
        QVERIFY(lines.first().endsWith(": " + SamplePage::definitions().paramName(number)));
        QVERIFY(!lines.filter("Grenzen: ").isEmpty());
        QVERIFY(lines.contains(
            QStringLiteral("Werkseinstellung: %1").arg(SamplePage::definitions().paramDefault(number))));
        QCOMPARE(field->accessibleDescription(), field->toolTip());
    }
}

void TestFieldNames::everyTextIsInUsersLanguage_data()
{
    addPages();
}

void TestFieldNames::everyTextIsInUsersLanguage()
{
    QFETCH(int, page);
    readEnglish();
    const SamplePage shown(page);
    static const QRegularExpression german(
        "[äöüÄÖÜß]|Werkseinstellung|Grenzen|Einheit|\\bSoll\\b|zweites|"
        "drehzahl|Drehzahl|strom\\b|Strom|rampe|Modus|modus|Datei\\b|Nur ");
    for (const QWidget *widget : shown.page->findChildren<QWidget *>()) {
        if (!widget->isVisible())
            continue;
        for (const QString &text :
            {widget->toolTip(), widget->accessibleName(), widget->accessibleDescription()}) {
            const auto match = german.match(text);
            QVERIFY2(!match.hasMatch(), qPrintable(widget->objectName() + ": " + text));
        }
    }
}

void TestFieldNames::fieldsOfOneNameAreToldApart()
{
    const SamplePage shown(PageNumber::CurrentLimits);
    QCOMPARE(shown.field("edParam0x36User")->accessibleName(), QStringLiteral("Reversierschwelle"));
    QCOMPARE(shown.field("edParam0x36User_2")->accessibleName(),
        QStringLiteral("Reversierschwelle (zweites Feld)"));

    SamplePage other(PageNumber::FixedResolutions);
    defineParameters(
        "V123", {"23;Festdrehzahl;;0;0;9;Unsigned;1;rw;0;", "24;Festdrehzahl;;0;0;9;Unsigned;1;rw;0;"});
    other.showFor(SamplePage::drive());
    QCOMPARE(other.field("edParam0x17User")->accessibleName(), QStringLiteral("Festdrehzahl"));
    QCOMPARE(other.field("edParam0x18User")->accessibleName(), QStringLiteral("Festdrehzahl (Parameter 24)"));
}

void TestFieldNames::curveTellsLimitsOfItsFields()
{
    SamplePage shown(PageNumber::CalibrationRotations);
    defineParameters("V123", {"14;FE-Drehzahl Y0;1/min;0;-7;7;Signed;1;rw;0;"});
    shown.showFor(SamplePage::drive());
    QVERIFY(shown.field("edValY0_User")->toolTip().contains("\nGrenzen: -30000 bis 29999\n"));
}

void TestFieldNames::busAddressTellsLimitsOfItsField()
{
    SamplePage shown(PageNumber::RS485);
    defineParameters("V123", {"82;Busadresse;;1;3;7;Unsigned;1;r;0;"});
    shown.showFor(SamplePage::drive());
    QCOMPARE(shown.field("edParam0x52User")->toolTip(),
        QStringLiteral("Parameter 82: Busadresse\nGrenzen: 1 bis 255\nWerkseinstellung: 1"));
}

void TestFieldNames::pointsOfCurveAreNamedAsPoints()
{
    const SamplePage shown(PageNumber::CalibrationCurrent);
    for (const char *place : {"X0", "X1", "X4", "Y0", "Y4"})
        QCOMPARE(shown.field(QStringLiteral("edVal%1_User").arg(place))->accessibleName(),
            QStringLiteral("%1 Soll").arg(place));
}

void TestFieldNames::fieldOfVersionWithoutParameterSaysSo()
{
    SamplePage shown(PageNumber::VoltageLimits);
    shown.showFor(driveOf("V999"));
    QCOMPARE(shown.field("edParam0x4AUser")->accessibleName(), QStringLiteral("Parameter 74"));
    QVERIFY(shown.field("edParam0x4AUser")->toolTip().contains("nicht enthalten"));
}

void TestFieldNames::definitionsOfNextShowingAreTold()
{
    SamplePage shown(PageNumber::VoltageLimits);
    defineParameters("V200", {"74;Unterspannung;V;5;0;9;Unsigned;1;rw;0;"});
    shown.showFor(driveOf("V200"));
    QCOMPARE(shown.field("edParam0x4AUser")->toolTip(),
        QStringLiteral("Parameter 74: Unterspannung\nGrenzen: 0 bis 9\nEinheit: V\nWerkseinstellung: 5"));
}

QTEST_MAIN(TestFieldNames)

#include "tst_fieldnames.moc"
