// The pictures that forms and sources name are in the resources, and they open.

#include <QDirIterator>
#include <QImage>
#include <QRegularExpression>
#include <QtTest>

namespace {

const QString root = QStringLiteral(Z7_SOURCE_DIR "/");

QString contentOf(const QString &file)
{
    QFile opened(file);
    return opened.open(QIODevice::ReadOnly) ? QString::fromUtf8(opened.readAll()) : QString();
}

QStringList matchesIn(const QString &text, const QRegularExpression &pattern)
{
    QStringList found;
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext())
        found.append(matches.next().captured(1));
    return found;
}

/// The names under which pictures stand in the resources, "logo.png".
QStringList listedPictures()
{
    static const QRegularExpression alias(QStringLiteral("alias=\"([^\"]+)\""));
    return matchesIn(contentOf(root + "resources/images.qrc"), alias);
}

/// "file: picture" for every picture that a form or source names, "pages/a.cpp: :/images/logo.png".
QStringList namedPictures()
{
    static const QRegularExpression picture(QStringLiteral("(:/?images/[^\"')<>\\s]+)"));
    QStringList named;
    for (const char *folder : {"forms", "pages", "shell", "control", "comm", "model"}) {
        QDirIterator files(
            root + folder, {"*.ui", "*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = files.next();
            const QStringList pictures = matchesIn(contentOf(file), picture);
            for (const QString &name : pictures)
                named.append(QDir(root).relativeFilePath(file) + ": " + name);
        }
    }
    named.removeDuplicates();
    return named;
}

/// What a name with places for arguments may become in the resources, and else the name.
QStringList picturesMeantBy(const QString &name)
{
    if (!name.contains('%'))
        return {name};
    const QString folder = name.left(name.indexOf("images/") + 7);
    static const QRegularExpression place(QStringLiteral("%\\d"));
    const QRegularExpression pattern('^' + name.mid(folder.size()).replace(place, "\\w*") + '$');
    return listedPictures().filter(pattern).replaceInStrings(QRegularExpression("^"), folder);
}

} // namespace

class TestFormResources : public QObject
{
    Q_OBJECT

private slots:
    void namedPictureIsListedAndOpens_data();
    void namedPictureIsListedAndOpens();
    void listedPictureOpens_data();
    void listedPictureOpens();
    void sharpPictureIsTwiceAsLarge_data();
    void sharpPictureIsTwiceAsLarge();
};

void TestFormResources::namedPictureIsListedAndOpens_data()
{
    QTest::addColumn<QString>("name");
    const QStringList named = namedPictures();
    for (const QString &line : named)
        QTest::newRow(qPrintable(line)) << line.section(": ", 1);
}

void TestFormResources::namedPictureIsListedAndOpens()
{
    QFETCH(QString, name);
    const QStringList pictures = picturesMeantBy(name);
    QVERIFY(!pictures.isEmpty());
    for (const QString &picture : pictures) {
        QVERIFY(listedPictures().contains(picture.section('/', -1)));
        QVERIFY2(!QImage(picture).isNull(), qPrintable(picture));
    }
}

void TestFormResources::listedPictureOpens_data()
{
    QTest::addColumn<QString>("name");
    const QStringList listed = listedPictures();
    for (const QString &name : listed)
        QTest::newRow(qPrintable(name)) << ":/images/" + name;
}

void TestFormResources::listedPictureOpens()
{
    QFETCH(QString, name);
    QVERIFY(!QImage(name).isNull());
}

// A screen at 200 % takes the picture of double size, and would draw a smaller one blurred.
void TestFormResources::sharpPictureIsTwiceAsLarge_data()
{
    QTest::addColumn<QString>("name");
    const QStringList listed = listedPictures().filter(QRegularExpression("^[^@]+\\.png$"));
    for (const QString &name : listed)
        QTest::newRow(qPrintable(name)) << ":/images/" + name;
}

void TestFormResources::sharpPictureIsTwiceAsLarge()
{
    QFETCH(QString, name);
    QCOMPARE(QImage(QString(name).replace(".png", "@2x.png")).size(), QImage(name).size() * 2);
}

QTEST_GUILESS_MAIN(TestFormResources)

#include "tst_formresources.moc"
