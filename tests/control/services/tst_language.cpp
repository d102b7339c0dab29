// The texts of the language in force: a table that fills itself and is written back at the end of a run.

#include "control/services/language.h"
#include "control/services/services.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

namespace {

const QString fileName = QStringLiteral("deutsch.z7lang");

void writeFile(const QByteArray &content)
{
    WorkingFolder::write(fileName, content);
}

/// What the file holds after the program's normal end.
QByteArray fileAfterTheEnd()
{
    Z7Services::shutdown();
    return WorkingFolder::read(fileName);
}

QString utf8(const char *text)
{
    return QString::fromUtf8(text);
}

} // namespace

class TestLanguage : public IsolatedTest
{
    Q_OBJECT

private slots:
    void textWithoutFileIsItsDefaultAndIsWrittenAtEnd();
    void firstDefaultWins();
    void oneKeyInTwoSectionsMakesTwoTexts();
    void keysDifferInCase();
    void fileBeatsDefault();
    void emptyTextOfFileStaysEmpty();
    void unquotedCommaMakesEmptyText();
    void quotedCommaIsPartOfText();
    void keysOutsideOfSectionsAreNotTaken();
    void umlautsSurviveAndAreEscapedInFile();
    void textNoLongerAskedForSurvivesRun();
    void anotherLanguageIsReadFromItsOwnFile();
    void fileIsReadOnceInRun();

    void definitionTextIsItsOwnKeyAndDefault();
    void unitWithSlashKeepsItsTranslation();
    void emptyUnitStaysEmptyAndStandsOutsideOfSections();

    void sectionLooksUpItsOwnTexts();
    void defaultOfSectionIsUtf8();
};

void TestLanguage::textWithoutFileIsItsDefaultAndIsWrittenAtEnd()
{
    QCOMPARE(languageText("Common", "OK", QStringLiteral("OK")), QStringLiteral("OK"));
    QVERIFY(!QFile::exists(fileName));
    QCOMPARE(fileAfterTheEnd(), QByteArray("[Common]\nOK=OK\n"));
}

void TestLanguage::firstDefaultWins()
{
    languageText("Common", "Cancel", QStringLiteral("Beenden"));
    QCOMPARE(languageText("Common", "Cancel", QStringLiteral("Abbrechen")), QStringLiteral("Beenden"));
    QCOMPARE(fileAfterTheEnd(), QByteArray("[Common]\nCancel=Beenden\n"));
}

void TestLanguage::oneKeyInTwoSectionsMakesTwoTexts()
{
    languageText("DialogRS485", "Title", QStringLiteral("RS485"));
    QCOMPARE(languageText("DialogOutput", "Title", QStringLiteral("Aus")), QStringLiteral("Aus"));
}

void TestLanguage::keysDifferInCase()
{
    writeFile("[Common]\nok=klein\n");
    QCOMPARE(languageText("Common", "OK", QStringLiteral("OK")), QStringLiteral("OK"));
    QCOMPARE(languageText("common", "ok", QStringLiteral("x")), QStringLiteral("x"));
    QCOMPARE(languageText("Common", "ok", QStringLiteral("x")), QStringLiteral("klein"));
}

void TestLanguage::fileBeatsDefault()
{
    writeFile("[Common]\nOK=Fine\n");
    QCOMPARE(languageText("Common", "OK", QStringLiteral("OK")), QStringLiteral("Fine"));
    QCOMPARE(fileAfterTheEnd(), QByteArray("[Common]\nOK=Fine\n"));
}

void TestLanguage::emptyTextOfFileStaysEmpty()
{
    writeFile("[Common]\nOK=\n");
    QCOMPARE(languageText("Common", "OK", QStringLiteral("OK")), QString());
    QCOMPARE(fileAfterTheEnd(), QByteArray("[Common]\nOK=\n"));
}

void TestLanguage::unquotedCommaMakesEmptyText()
{
    writeFile("[Common]\nWriteAnyway=Yes, write\n");
    QCOMPARE(languageText("Common", "WriteAnyway", QStringLiteral("Trotzdem schreiben?")), QString());
}

void TestLanguage::quotedCommaIsPartOfText()
{
    writeFile("[Common]\nWriteAnyway=\"Yes, write\"\n");
    QCOMPARE(languageText("Common", "WriteAnyway", QStringLiteral("Trotzdem schreiben?")),
        QStringLiteral("Yes, write"));
}

void TestLanguage::keysOutsideOfSectionsAreNotTaken()
{
    writeFile("OK=before any section\n\n[General]\nCommon=general\n");
    const Z7Language *language = Z7Services::instance()->language();
    Q_UNUSED(language)
    QCOMPARE(languageText("", "OK", QStringLiteral("x")), QStringLiteral("x"));
    QCOMPARE(languageText("General", "Common", QStringLiteral("x")), QStringLiteral("x"));
}

void TestLanguage::umlautsSurviveAndAreEscapedInFile()
{
    const QString text = utf8("Größe ändern: 5 µm ≤ Ω");
    languageText("Common", "Size", text);
    const QByteArray content = fileAfterTheEnd();
    QVERIFY2(content.contains("Gr\\xf6\\xdf"), content);
    QCOMPARE(languageText("Common", "Size", QStringLiteral("x")), text);
}

void TestLanguage::textNoLongerAskedForSurvivesRun()
{
    writeFile("[Common]\nForgotten=Vergessen\n\n[DialogGone]\nA\\B=tief\nTitle=Weg\n");
    languageText("Common", "OK", QStringLiteral("OK"));
    QCOMPARE(fileAfterTheEnd(),
        QByteArray("[Common]\nForgotten=Vergessen\nOK=OK\n\n[DialogGone]\nA\\B=tief\nTitle=Weg\n"));
}

void TestLanguage::anotherLanguageIsReadFromItsOwnFile()
{
    writeFile("[Common]\nYes=Ja\n");
    WorkingFolder::write(QStringLiteral("english.z7lang"), "[Common]\nYes=Yes\n");
    WorkingFolder::write(QStringLiteral("Z7Properties.ini"), "[OPTIONS]\nlanguage=english\n");
    QCOMPARE(languageText("Common", "Yes", QStringLiteral("Ja")), QStringLiteral("Yes"));
    languageText("Common", "No", QStringLiteral("Nein"));
    QCOMPARE(fileAfterTheEnd(), QByteArray("[Common]\nYes=Ja\n"));
    QCOMPARE(
        WorkingFolder::read(QStringLiteral("english.z7lang")), QByteArray("[Common]\nNo=Nein\nYes=Yes\n"));
}

void TestLanguage::fileIsReadOnceInRun()
{
    languageText("Common", "OK", QStringLiteral("OK"));
    writeFile("[Common]\nYes=Yes\n");
    QCOMPARE(languageText("Common", "Yes", QStringLiteral("Ja")), QStringLiteral("Ja"));
}

void TestLanguage::definitionTextIsItsOwnKeyAndDefault()
{
    QCOMPARE(definitionText(QStringLiteral("Drehzahl")), QStringLiteral("Drehzahl"));
    Z7Services::shutdown();
    QCOMPARE(WorkingFolder::read(fileName), QByteArray("[ParamDefinition]\nDrehzahl=Drehzahl\n"));
    writeFile("[ParamDefinition]\nDrehzahl=speed\n");
    QCOMPARE(definitionText(QStringLiteral("Drehzahl")), QStringLiteral("speed"));
}

void TestLanguage::unitWithSlashKeepsItsTranslation()
{
    QCOMPARE(definitionText(QStringLiteral("1/min")), QStringLiteral("1/min"));
    Z7Services::shutdown();
    writeFile(WorkingFolder::read(fileName).replace("=1/min", "=rpm"));
    QCOMPARE(definitionText(QStringLiteral("1/min")), QStringLiteral("rpm"));
}

void TestLanguage::emptyUnitStaysEmptyAndStandsOutsideOfSections()
{
    QCOMPARE(definitionText(QString()), QString());
    QCOMPARE(fileAfterTheEnd(), QByteArray("[General]\nParamDefinition=\n"));
}

void TestLanguage::sectionLooksUpItsOwnTexts()
{
    writeFile("[DialogA]\nTitle=Speed\n");
    constexpr TextSection texts("DialogA");
    constexpr TextSection otherTexts("DialogB");
    QCOMPARE(texts("Title", "Drehzahl"), QStringLiteral("Speed"));
    QCOMPARE(otherTexts("Title", "Strom"), QStringLiteral("Strom"));
    QCOMPARE(fileAfterTheEnd(), QByteArray("[DialogA]\nTitle=Speed\n\n[DialogB]\nTitle=Strom\n"));
}

void TestLanguage::defaultOfSectionIsUtf8()
{
    QCOMPARE(TextSection("DialogA")("Save", "Öffnen"), utf8("Öffnen"));
}

QTEST_APPLESS_MAIN(TestLanguage)
#include "tst_language.moc"
