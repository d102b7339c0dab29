// The words in which a field tells what it is.

#include "model/parameterconflicts.h"
#include "pages/fieldtexts.h"
#include "pages/integervalidator.h"
#include "tests/pages/pagetests.h"
#include "tests/support/isolatedtest.h"

class TestFieldTexts : public IsolatedTest
{
    Q_OBJECT

private slots:
    void numberIsDescribedInLines();
    void unitThatIsNoneHasNoLine();
    void namedValuesFollowInTheirOrder();
    void lineEndInPlaceOfOptionNamesNothing();
    void readOnlyParameterIsCalledSo();
    void descriptionIsInUsersLanguage();
    void parameterWithoutNameIsCalledByItsNumber();
    void unknownParameterIsCalledSo();
    void fieldTellsWhatItTakes_data();
    void fieldTellsWhatItTakes();
    void valueBeyondLimitsIsWorded();
    void otherFindingIsNotWorded();
    void toolTipShowsEachCharacter();

private:
    static QString described(const QString &line);
};

QString TestFieldTexts::described(const QString &line)
{
    defineParameters("V123", {line});
    const int number = line.section(';', 0, 0).toInt();
    const Z7ParamDefinition &row = Z7Services::instance()->definitions("V123")->row(number);
    return FieldTexts::describe(row, row.name);
}

void TestFieldTexts::numberIsDescribedInLines()
{
    QCOMPARE(described("11;Rampe;ms;5;10;500;Unsigned;1;rw;0;"),
        QStringLiteral("Parameter 11: Rampe\nGrenzen: 10 bis 500\nEinheit: ms\nWerkseinstellung: 5"));
}

void TestFieldTexts::unitThatIsNoneHasNoLine()
{
    QCOMPARE(described("11;Rampe;;5;10;500;Unsigned;1;rw;0;"),
        QStringLiteral("Parameter 11: Rampe\nGrenzen: 10 bis 500\nWerkseinstellung: 5"));
}

void TestFieldTexts::namedValuesFollowInTheirOrder()
{
    QCOMPARE(described("1;Modus;;0;0;2;Unsigned;1;rw;0;frei;;Halt;").section('\n', -2),
        QStringLiteral("0 = frei\n2 = Halt"));
}

void TestFieldTexts::lineEndInPlaceOfOptionNamesNothing()
{
    QVERIFY(!described("1;Modus;;0;0;2;Unsigned;1;rw;0;\n").contains("0 ="));
}

void TestFieldTexts::readOnlyParameterIsCalledSo()
{
    QVERIFY(described("83;Seriennummer;;0;;;Unsigned;1;r;0;").endsWith("\nNur lesbar"));
    QVERIFY(!described("84;Rampe;;0;;;Unsigned;1;rw;0;").contains("Nur lesbar"));
}

void TestFieldTexts::descriptionIsInUsersLanguage()
{
    WorkingFolder::writeText("deutsch.z7lang",
        "[DialogToolTip]\nFieldLimits=Limits: %1 to %2\n[ParamDefinition]\nms=millis\nfrei=free\n");
    QCOMPARE(described("11;Rampe;ms;5;10;500;Unsigned;1;rw;0;frei;"),
        QStringLiteral(
            "Parameter 11: Rampe\nLimits: 10 to 500\nEinheit: millis\nWerkseinstellung: 5\n0 = free"));
}

void TestFieldTexts::parameterWithoutNameIsCalledByItsNumber()
{
    QCOMPARE(
        described("11;;ms;5;10;500;Unsigned;1;rw;0;").section('\n', 0, 0), QStringLiteral("Parameter 11"));
    QCOMPARE(FieldTexts::nameOf(11, QString()), QStringLiteral("Parameter 11"));
    QCOMPARE(FieldTexts::nameOf(11, "Rampe"), QStringLiteral("Rampe"));
}

void TestFieldTexts::unknownParameterIsCalledSo()
{
    QCOMPARE(FieldTexts::describeUnknown(11),
        QStringLiteral("Parameter 11\nIn den Parameter-Definitionen des Antriebs nicht enthalten"));
}

void TestFieldTexts::fieldTellsWhatItTakes_data()
{
    QTest::addColumn<bool>("hasLimits");
    QTest::addColumn<QString>("text");
    QTest::newRow("with limits") << true << "Nur ganze Zahlen von -5 bis 12";
    QTest::newRow("without") << false << "Nur ganze Zahlen";
}

void TestFieldTexts::fieldTellsWhatItTakes()
{
    QFETCH(bool, hasLimits);
    IntegerValidator validator(this);
    if (hasLimits)
        validator.setRange(-5, 12);
    QTEST(FieldTexts::whatIsTaken(&validator), "text");
}

void TestFieldTexts::valueBeyondLimitsIsWorded()
{
    const WriteFinding finding {WriteFinding::Kind::OutOfLimits, {11}, {99999}, 0, 30000};
    QCOMPARE(
        FieldTexts::beyondLimits(finding), QStringLiteral("99999 liegt außerhalb der Grenzen 0 bis 30000"));
}

void TestFieldTexts::otherFindingIsNotWorded()
{
    QCOMPARE(FieldTexts::beyondLimits({WriteFinding::Kind::ReadOnly, {11}, {7}}), QString());
}

void TestFieldTexts::toolTipShowsEachCharacter()
{
    QCOMPARE(FieldTexts::asToolTip("Rampe\n5 < 6"), QStringLiteral("Rampe\n5 < 6"));
    QVERIFY(FieldTexts::asToolTip("<b>Rampe</b>\n5").contains("&lt;b&gt;Rampe"));
}

QTEST_MAIN(TestFieldTexts)

#include "tst_fieldtexts.moc"
