// The icons by which a person tells drives, pages, access and unwritten changes apart.

#include "pages/pagefactory.h"
#include "shell/pageicon.h"
#include "tests/shell/shelltest.h"

#include <QFile>
#include <QtTest>

using namespace ShellTest;

class TestPageIcon : public QObject
{
    Q_OBJECT

private slots:
    void eachPageHasItsIcon_data();
    void eachPageHasItsIcon();
    void everyPageBelowDriveHasTableIcon();
    void otherNumbersHaveNoIcon();
    void driveMakesNoDifference();
    void noTwoStatesLookAlike();
    void iconsAreMadeOnce();
    void iconsAreSharpOnScreenOfDoubleDensity();
};

void TestPageIcon::eachPageHasItsIcon_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<bool>("modified");
    QTest::addColumn<bool>("active");
    QTest::addColumn<QByteArray>("resource");

    const QByteArray network = ":images/network-icon-hi_24px.png";
    QTest::newRow("network") << 0 << false << true << network;
    QTest::newRow("network, inactive") << 0 << false << false << network;
    QTest::newRow("network, modified") << 0 << true << true << network;
    QTest::newRow("network, inactive and modified") << 0 << true << false << network;
    QTest::newRow("drive with access")
        << 1 << false << true << QByteArray(":images/home-icon_24px_active.png");
    QTest::newRow("drive without access")
        << 1 << false << false << QByteArray(":images/home-icon_24px_inactive.png");
    QTest::newRow("drive with access, modified")
        << 1 << true << true << QByteArray(":images/home-icon_24px_active_modified.png");
    QTest::newRow("drive without access, modified")
        << 1 << true << false << QByteArray(":images/home-icon_24px_inactive_modified.png");
    QTest::newRow("page with access")
        << 2 << false << true << QByteArray(":images/table-icon_24px_active.png");
    QTest::newRow("page without access")
        << 9 << false << false << QByteArray(":images/table-icon_24px_inactive.png");
    QTest::newRow("page with access, modified")
        << 15 << true << true << QByteArray(":images/table-icon_24px_active_modified.png");
    QTest::newRow("page without access, modified")
        << 16 << true << false << QByteArray(":images/table-icon_24px_inactive_modified.png");
}

void TestPageIcon::eachPageHasItsIcon()
{
    QFETCH(int, page);
    QFETCH(bool, modified);
    QFETCH(bool, active);
    QFETCH(QByteArray, resource);
    QVERIFY(QFile::exists(QString::fromLatin1(resource)));
    QCOMPARE(image(pageIcon(page, 1, modified, active)), image(resource.constData()));
}

void TestPageIcon::everyPageBelowDriveHasTableIcon()
{
    const QImage table = image(":images/table-icon_24px_active.png");
    for (int page = 2; page <= PageNumber::Last; ++page)
        QVERIFY2(image(pageIcon(page, 1, false, true)) == table, QByteArray::number(page).constData());
}

void TestPageIcon::otherNumbersHaveNoIcon()
{
    QVERIFY(pageIcon(PageNumber::none, 1, false, true).isNull());
    QVERIFY(pageIcon(PageNumber::Count, 1, false, true).isNull());
}

void TestPageIcon::driveMakesNoDifference()
{
    QCOMPARE(image(pageIcon(1, 4711, true, true)), image(pageIcon(1, -1, true, true)));
}

void TestPageIcon::noTwoStatesLookAlike()
{
    QList<QImage> seen;
    for (int page : {0, 1, 2}) {
        for (bool modified : {false, true}) {
            for (bool active : {false, true}) {
                const QImage icon = image(pageIcon(page, 1, modified, active));
                if (page > 0 || seen.isEmpty())
                    QVERIFY(!seen.contains(icon));
                seen.append(icon);
            }
        }
    }
}

// A new icon leaves its pictures in the cache.
void TestPageIcon::iconsAreMadeOnce()
{
    for (int page = PageNumber::none; page <= PageNumber::Count; ++page) {
        for (bool modified : {false, true}) {
            for (bool active : {false, true})
                QCOMPARE(pageIcon(page, 1, modified, active).cacheKey(),
                    pageIcon(page, 2, modified, active).cacheKey());
        }
    }
}

void TestPageIcon::iconsAreSharpOnScreenOfDoubleDensity()
{
    for (const char *name : {"network-icon-hi_24px", "home-icon_24px_active", "home-icon_24px_inactive",
             "home-icon_24px_active_modified", "home-icon_24px_inactive_modified", "table-icon_24px_active",
             "table-icon_24px_inactive", "table-icon_24px_active_modified",
             "table-icon_24px_inactive_modified"}) {
        const QImage large(QStringLiteral(":images/%1@2x.png").arg(QLatin1String(name)));
        QVERIFY2(large.size() == QSize(48, 48), name);
    }
}

QTEST_MAIN(TestPageIcon)

#include "tst_pageicon.moc"
