// The language files that are shipped, read as the program reads them.

#include "tests/support/germantexts.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSettings>
#include <QtTest>

namespace {

QString languageFile(const QString &name)
{
    return QStringLiteral(Z7_SOURCE_DIR "/languages/%1.z7lang").arg(name);
}

/// A row for each language that is shipped, but one.
void addLanguageRows(const QString &withoutLanguage = QString())
{
    QTest::addColumn<QString>("language");
    const QDir folder(QStringLiteral(Z7_SOURCE_DIR "/languages"));
    const QFileInfoList files = folder.entryInfoList({QStringLiteral("*.z7lang")});
    for (const QFileInfo &file : files) {
        const QString language = file.completeBaseName();
        if (language != withoutLanguage)
            QTest::newRow(qPrintable(language)) << language;
    }
}

/// By "section/key", without the texts of the definitions, which come from the files of the drives.
QMap<QString, QString> translations(const QString &language)
{
    const QSettings settings(languageFile(language), QSettings::IniFormat);
    QMap<QString, QString> texts;
    const QStringList keys = settings.allKeys();
    for (const QString &key : keys) {
        if (!key.startsWith(QLatin1String("ParamDefinition/")))
            texts.insert(key, settings.value(key).toString());
    }
    return texts;
}

/// What is filled in when the text is shown, "%1" and the like, and the line feeds around it.
QStringList placeholders(const QString &text)
{
    static const QRegularExpression placeholder(QStringLiteral("%\\d+|^\\n+|\\n+$"));
    QStringList found;
    auto match = placeholder.globalMatch(text);
    while (match.hasNext())
        found.append(match.next().captured());
    found.sort();
    return found;
}

/// Names, units and texts of values: everything in quotes below the header but the columns of fixed words.
QStringList textsOfSample(const QString &version)
{
    static const QStringList fixedWords {"Signed", "Unsigned", "r", "rw", ""};
    QFile file(QStringLiteral(Z7_SOURCE_DIR "/samples/Z7ParamDef_%1.csv").arg(version));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    file.readLine();
    QStringList texts;
    const QStringList columns = QString::fromLatin1(file.readAll()).split(QLatin1Char(';'));
    for (const QString &column : columns) {
        const QString text = column.section(QLatin1Char('"'), 1, 1);
        if (!fixedWords.contains(text))
            texts.append(text);
    }
    return texts;
}

} // namespace

class TestLanguages : public QObject
{
    Q_OBJECT

private slots:
    void everyEntryIsText_data() { addLanguageRows(); }
    void everyEntryIsText();
    void everyEntryIsReadInItsAlphabet_data() { addLanguageRows(); }
    void everyEntryIsReadInItsAlphabet();
    void nothingOfLineIsLost_data() { addLanguageRows(); }
    void nothingOfLineIsLost();
    void everyEntryStandsForGermanText_data() { addLanguageRows(); }
    void everyEntryStandsForGermanText();
    void translationLacksNoText_data();
    void translationLacksNoText();
    void entryHasPlaceholdersOfItsText_data() { addLanguageRows(); }
    void entryHasPlaceholdersOfItsText();
    void translationHasTextsOfSamples_data();
    void translationHasTextsOfSamples();
};

void TestLanguages::everyEntryIsText()
{
    QFETCH(QString, language);
    const QSettings settings(languageFile(language), QSettings::IniFormat);
    const QStringList keys = settings.allKeys();

    QVERIFY(!keys.isEmpty());
    // An unquoted comma would make a list of it, whose text is empty.
    for (const QString &key : keys)
        QVERIFY2(!settings.value(key).toString().isEmpty(), qPrintable(key));
}

/// A file in another encoding gives two letters for one, and an escaped letter swallows hexadecimal digits
/// behind it.
void TestLanguages::everyEntryIsReadInItsAlphabet()
{
    QFETCH(QString, language);
    static const QSet<QChar::Script> alphabets {QChar::Script_Common, QChar::Script_Inherited,
        QChar::Script_Latin, QChar::Script_Greek, QChar::Script_Cyrillic};
    static const QRegularExpression utf8AsLatin1(QStringLiteral("[\\x{C2}-\\x{F4}][\\x{80}-\\x{BF}]"));
    const QSettings settings(languageFile(language), QSettings::IniFormat);
    const QStringList keys = settings.allKeys();
    for (const QString &key : keys) {
        const QString text = key + settings.value(key).toString();
        QVERIFY2(!text.contains(utf8AsLatin1), qPrintable(key));
        for (const QChar letter : text)
            QVERIFY2(
                alphabets.contains(letter.script()) && (letter == '\n' || letter.isPrint()), qPrintable(key));
    }
}

/// Behind a bare semicolon the rest of the line is a comment, and bare quotes are dropped.
void TestLanguages::nothingOfLineIsLost()
{
    QFETCH(QString, language);
    QFile file(languageFile(language));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    static const QRegularExpression bareMark(QStringLiteral("^[^=;]*=(?!\").*(;|(?<!\\\\)\")"));
    for (const QByteArray &line : lines)
        QVERIFY2(!QString::fromLatin1(line).contains(bareMark), line.constData());
}

void TestLanguages::everyEntryStandsForGermanText()
{
    QFETCH(QString, language);
    const QMap<QString, GermanText> german = germanTexts();
    const QStringList keys = translations(language).keys();
    for (const QString &key : keys)
        QVERIFY2(german.contains(key), qPrintable(key));
}

/// Without German, which is in the program itself.
void TestLanguages::translationLacksNoText_data()
{
    addLanguageRows(QStringLiteral("deutsch"));
}

void TestLanguages::translationLacksNoText()
{
    QFETCH(QString, language);
    const QMap<QString, QString> translated = translations(language);
    const QMap<QString, GermanText> german = germanTexts();
    QStringList missing;
    for (auto text = german.begin(); text != german.end(); ++text) {
        if (!text->text.isEmpty() && !translated.contains(text.key()))
            missing.append(text.key());
    }
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join(QLatin1Char('\n'))));
}

void TestLanguages::entryHasPlaceholdersOfItsText()
{
    QFETCH(QString, language);
    const QMap<QString, QString> translated = translations(language);
    const QMap<QString, GermanText> german = germanTexts();
    for (auto text = translated.begin(); text != translated.end(); ++text) {
        QVERIFY2(placeholders(text.value()) == placeholders(german.value(text.key()).text),
            qPrintable(text.key()));
    }
}

void TestLanguages::translationHasTextsOfSamples_data()
{
    addLanguageRows(QStringLiteral("deutsch"));
}

void TestLanguages::translationHasTextsOfSamples()
{
    QFETCH(QString, language);
    const QSettings settings(languageFile(language), QSettings::IniFormat);
    for (const char *version : {"V123", "V200"}) {
        const QStringList texts = textsOfSample(QString::fromLatin1(version));
        QVERIFY(texts.size() > 100);
        for (const QString &text : texts)
            QVERIFY2(settings.contains(QStringLiteral("ParamDefinition/") + text), qPrintable(text));
    }
}

QTEST_GUILESS_MAIN(TestLanguages)
#include "tst_languages.moc"
