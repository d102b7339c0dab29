// Every text that the sources hold for people stands in the list of German texts, which the translations are
// held against.

#include "tests/support/germantexts.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QtTest>

namespace {

/// A literal as the compiler sees it: neighbours are one, and escaped quotes are quotes.
QString withJoinedLiterals(QString source)
{
    static const QRegularExpression seam(QStringLiteral("(?<!\\\\)\"\\s*\\n\\s*\""));
    return source.remove(seam).replace("\\\"", "\x1");
}

QString unescaped(QString literal)
{
    return literal.replace('\x1', '"').replace("\\n", "\n");
}

/// The texts behind a key or a section, as in languageText("Common", "Open", "Öffnen...").
QStringList textsBehindKeys(const QString &source)
{
    static const QRegularExpression keyAndText(QStringLiteral("\"\\w+\",\\s*(?=\"([^\"]*)\")"));
    QStringList texts;
    auto match = keyAndText.globalMatch(withJoinedLiterals(source));
    while (match.hasNext())
        texts.append(unescaped(match.next().captured(1)));
    return texts;
}

/// What the list knows: the texts and the words that they are looked up by.
struct Known
{
    Known()
    {
        const QMap<QString, GermanText> all = germanTexts();
        for (auto text = all.begin(); text != all.end(); ++text) {
            texts.append(text->text);
            words.insert(text.key().section('/', 0, 0));
            words.insert(text.key().section('/', 1));
        }
    }

    /// A text that gets a number at its end stands in the list once for each number.
    bool has(const QString &asked) const
    {
        return words.contains(asked) || std::any_of(texts.begin(), texts.end(), [&](const QString &text) {
            return text.startsWith(asked);
        });
    }

    QStringList texts;
    QSet<QString> words;
};

} // namespace

class TestTexts : public QObject
{
    Q_OBJECT

private slots:
    void everyTextOfSourcesIsListed_data();
    void everyTextOfSourcesIsListed();
};

void TestTexts::everyTextOfSourcesIsListed_data()
{
    QTest::addColumn<QString>("folder");
    for (const char *folder : {"control", "model", "pages", "shell"})
        QTest::newRow(folder) << QString::fromLatin1(folder);
}

void TestTexts::everyTextOfSourcesIsListed()
{
    QFETCH(QString, folder);
    const Known known;
    QStringList unlisted;
    int count = 0;
    QDirIterator files(QStringLiteral(Z7_SOURCE_DIR "/") + folder, {"*.cpp", "*.h"}, QDir::Files,
        QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList texts = textsBehindKeys(QString::fromUtf8(file.readAll()));
        for (const QString &text : texts) {
            if (!known.has(text))
                unlisted.append(files.fileName() + ": " + text);
        }
        count += texts.size();
    }
    QVERIFY(count > 0);
    QVERIFY2(unlisted.isEmpty(), qPrintable(unlisted.join('\n')));
}

QTEST_GUILESS_MAIN(TestTexts)

#include "tst_texts.moc"
