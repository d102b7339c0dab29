// The texts of the error numbers.

#include "control/services/services.h"
#include "model/errorcodes.h"
#include "protocol/telegram.h"
#include "tests/support/germantexts.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

#include <climits>

class TestErrorCodes : public IsolatedTest
{
    Q_OBJECT

private slots:
    void eachNumberHasItsText_data();
    void eachNumberHasItsText();
    void textIsSameWithoutLanguageFile_data() { eachNumberHasItsText_data(); }
    void textIsSameWithoutLanguageFile();
    void languageFileBeatsGermanText();
    void languageFileCanNameNumberWithoutText();
    void shownNumberTurnsUpInLanguageFile();
    void everyTextIsListedForTranslators();
};

namespace {

const QString languageFile = QStringLiteral("deutsch.z7lang");

} // namespace

void TestErrorCodes::eachNumberHasItsText_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("text");

    const auto row = [](int number, const char *text) {
        QTest::addRow("error %d", number) << number << QString::fromUtf8(text);
    };
    row(0, "");
    row(1, "Das Gerät antwortet nicht (timeout)");
    row(2, "(2)");
    row(3, "Der Port kann nicht geöffnet werden");
    row(4, "(4)");
    row(5, "Passwort nicht gesetzt");
    row(6, "Telegramm mit ungültiger Länge empfangen");
    row(7, "Ungültige Telegrammdaten empfangen");
    row(8, "Telegramm mit falscher Prüfsumme empfangen");
    row(9, "Telegramm mit falsche Parameternummer empfangen");
    row(10, "Ungültiges Passwort");
    row(11, "Der Parameter kann nicht gelesen werden");
    row(12, "(12)");
    row(13, "Der Port ist nicht bereit zur Kommunikation");
    row(14, "Kommunikationsfehler");
    row(15, "Die Softwareversion ist nicht kompatibel");
    row(16, "Keine Parameteränderung");
    row(17, "Fehler bei Beschreiben des Flash");
    row(18, "Inkonsistente Parameter");
    row(19, "Die Transaktion wurde abgebrochen");
    row(20, "Der Motor ist nicht im Freilauf");
    row(TelegramError::Count, qPrintable(QStringLiteral("(%1)").arg(TelegramError::Count)));
    row(100, "(100)");
    row(-1, "(-1)");
    row(INT_MAX, "(2147483647)");
    row(INT_MIN, "(-2147483648)");
}

void TestErrorCodes::eachNumberHasItsText()
{
    QFETCH(int, number);
    QTEST(errorText(number), "text");
}

void TestErrorCodes::textIsSameWithoutLanguageFile()
{
    QFETCH(int, number);
    QTEST(localizedErrorText(number), "text");
}

void TestErrorCodes::languageFileBeatsGermanText()
{
    WorkingFolder::write(languageFile, "[ErrorCodes]\nErrorCode_1=The drive does not answer\n");
    QCOMPARE(localizedErrorText(1), QStringLiteral("The drive does not answer"));
    QCOMPARE(errorText(1), QString::fromUtf8("Das Gerät antwortet nicht (timeout)"));
}

void TestErrorCodes::languageFileCanNameNumberWithoutText()
{
    WorkingFolder::write(languageFile, "[ErrorCodes]\nErrorCode_4=The adapter refuses even parity\n");
    QCOMPARE(localizedErrorText(4), QStringLiteral("The adapter refuses even parity"));
}

void TestErrorCodes::shownNumberTurnsUpInLanguageFile()
{
    localizedErrorText(2);
    localizedErrorText(-1);
    Z7Services::shutdown();
    QCOMPARE(
        WorkingFolder::read(languageFile), QByteArray("[ErrorCodes]\nErrorCode_-1=(-1)\nErrorCode_2=(2)\n"));
}

void TestErrorCodes::everyTextIsListedForTranslators()
{
    const QMap<QString, GermanText> listed = germanTexts();
    for (int number = 1; number < TelegramError::Count; ++number) {
        const QString text = errorText(number);
        if (text != QStringLiteral("(%1)").arg(number))
            QCOMPARE(listed.value(QStringLiteral("ErrorCodes/ErrorCode_%1").arg(number)).text, text);
    }
}

QTEST_APPLESS_MAIN(TestErrorCodes)
#include "tst_errorcodes.moc"
