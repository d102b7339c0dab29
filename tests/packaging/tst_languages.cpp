// The language files that are shipped, read as the program reads them.

#include <QFile>
#include <QSettings>
#include <QtTest>

namespace {

QString languageFile(const QString &name)
{
    return QStringLiteral(Z7_SOURCE_DIR "/languages/%1.z7lang").arg(name);
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

class tst_Languages : public QObject
{
    Q_OBJECT

private slots:
    void everyEntryIsAText_data();
    void everyEntryIsAText();
    void englishHasTheTextsOfTheSamples_data();
    void englishHasTheTextsOfTheSamples();
};

void tst_Languages::everyEntryIsAText_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("german") << QStringLiteral("deutsch");
    QTest::newRow("english") << QStringLiteral("english");
}

void tst_Languages::everyEntryIsAText()
{
    QFETCH(QString, language);
    const QSettings settings(languageFile(language), QSettings::IniFormat);
    const QStringList keys = settings.allKeys();

    QVERIFY(!keys.isEmpty());
    // An unquoted comma would make a list of it, whose text is empty.
    for (const QString &key : keys)
        QVERIFY2(!settings.value(key).toString().isEmpty(), qPrintable(key));
}

void tst_Languages::englishHasTheTextsOfTheSamples_data()
{
    QTest::addColumn<QString>("version");
    QTest::newRow("V123") << QStringLiteral("V123");
    QTest::newRow("V200") << QStringLiteral("V200");
}

void tst_Languages::englishHasTheTextsOfTheSamples()
{
    QFETCH(QString, version);
    const QSettings settings(languageFile(QStringLiteral("english")), QSettings::IniFormat);
    const QStringList texts = textsOfSample(version);

    QVERIFY(texts.size() > 100);
    for (const QString &text : texts)
        QVERIFY2(settings.contains(QStringLiteral("ParamDefinition/") + text), qPrintable(text));
}

QTEST_GUILESS_MAIN(tst_Languages)
#include "tst_languages.moc"
