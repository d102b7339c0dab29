// Everything that the program shows can be read: at every size of the desktop's font, in every language that
// is shipped, and on a dark desktop.

#include "tests/shell/everyview.h"
#include "tests/shell/readable.h"
#include "tests/support/germantexts.h"
#include "tests/support/isolatedtest.h"

#include <QApplication>
#include <QSet>
#include <QSettings>
#include <QtTest>

#include <utility>

namespace {

/// What a laptop beside a machine has.
constexpr QSize laptop(1366, 768);

QPalette darkPalette()
{
    QPalette dark(QColor(49, 54, 59), QColor(35, 38, 41));
    dark.setColor(QPalette::Base, QColor(27, 30, 32));
    dark.setColor(QPalette::Text, QColor(239, 240, 241));
    dark.setColor(QPalette::ToolTipBase, QColor(49, 54, 59));
    dark.setColor(QPalette::ToolTipText, QColor(239, 240, 241));
    return dark;
}

} // namespace

class TestReadable : public IsolatedTest
{
    Q_OBJECT

private slots:
    void noTextIsCut_data();
    void noTextIsCut();
    void noGermanTextIsLeftInEnglish();
    void everyTextStandsOutFromItsGround_data();
    void everyTextStandsOutFromItsGround();
    void darkDesktopGetsWholeLightPalette();
    void lightDesktopKeepsItsColours();

private:
    void tidyUp() override;

    const QFont m_font = QApplication::font();
    const QPalette m_palette = QApplication::palette();
};

void TestReadable::tidyUp()
{
    QApplication::setFont(m_font);
    QApplication::setPalette(m_palette);
}

void TestReadable::noTextIsCut_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("points");
    for (const char *language : {"deutsch", "english"}) {
        for (const int points : {9, 10, 12, 14, 18})
            QTest::addRow("%s, %d points", language, points) << language << points;
    }
}

void TestReadable::noTextIsCut()
{
    QFETCH(QString, language);
    QFETCH(int, points);
    QFont font = QApplication::font();
    font.setPointSize(points);
    QApplication::setFont(font);
    EveryView views(language);
    views.window().resize(laptop);
    QStringList cut;
    const auto look = [&cut](const QString &name, const QWidget &window) {
        for (const QString &text : Readable::cutTexts(window))
            cut.append(name + " | " + text);
        if (window.width() > laptop.width() || window.height() > laptop.height())
            cut.append(name + " is larger than the screen");
    };
    QVERIFY(views.show(look));
    QVERIFY2(cut.isEmpty(), qPrintable('\n' + cut.join('\n')));
}

void TestReadable::noGermanTextIsLeftInEnglish()
{
    const QMap<QString, GermanText> german = germanTexts();
    EveryView views("english");
    const QSettings english("english.z7lang", QSettings::IniFormat);
    QSet<QString> germanOnly;
    for (auto text = german.begin(); text != german.end(); ++text) {
        if (english.contains(text.key()) && english.value(text.key()) != text->text)
            germanOnly.insert(text->text);
    }
    QStringList left;
    const auto look = [&](const QString &name, const QWidget &window) {
        for (const QWidget *widget : window.findChildren<QWidget *>()) {
            if (!widget->isVisible())
                continue;
            for (const char *property : {"text", "title", "toolTip"}) {
                const QString text = widget->property(property).toString();
                if (germanOnly.contains(text))
                    left.append(name + " | " + text);
            }
        }
    };
    QVERIFY(views.show(look));
    QVERIFY2(left.isEmpty(), qPrintable('\n' + left.join('\n')));
}

void TestReadable::everyTextStandsOutFromItsGround_data()
{
    QTest::addColumn<QPalette>("desktop");
    QTest::newRow("light") << QApplication::palette();
    QTest::newRow("dark") << darkPalette();
}

void TestReadable::everyTextStandsOutFromItsGround()
{
    QFETCH(QPalette, desktop);
    QApplication::setPalette(desktop);
    EveryView views("deutsch");
    views.window().resize(laptop);
    QStringList faint;
    const auto look = [&faint](const QString &name, const QWidget &window) {
        for (const QString &text : Readable::faintTexts(window))
            faint.append(name + " | " + text);
    };
    QVERIFY(views.show(look));
    QVERIFY2(faint.isEmpty(), qPrintable('\n' + faint.join('\n')));
}

void TestReadable::darkDesktopGetsWholeLightPalette()
{
    QApplication::setPalette(darkPalette());
    const MainWindow window;
    using Roles = std::pair<QPalette::ColorRole, QPalette::ColorRole>;
    for (const Roles &roles : {Roles(QPalette::WindowText, QPalette::Window),
             Roles(QPalette::Text, QPalette::Base), Roles(QPalette::Text, QPalette::AlternateBase),
             Roles(QPalette::PlaceholderText, QPalette::Base), Roles(QPalette::ButtonText, QPalette::Button),
             Roles(QPalette::HighlightedText, QPalette::Highlight), Roles(QPalette::Link, QPalette::Window),
             Roles(QPalette::LinkVisited, QPalette::Window),
             Roles(QPalette::ToolTipText, QPalette::ToolTipBase)}) {
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            const QPalette palette = QApplication::palette();
            const double ratio =
                Readable::contrast(palette.color(group, roles.first), palette.color(group, roles.second));
            QVERIFY2(ratio >= 4.5, qPrintable(QString("role %1: %2").arg(roles.first).arg(ratio)));
            QVERIFY(
                palette.color(group, roles.second).lightness() > 200 || roles.second == QPalette::Highlight);
        }
    }
}

void TestReadable::lightDesktopKeepsItsColours()
{
    QApplication::setPalette(QPalette(QColor(230, 225, 215), QColor(235, 230, 220)));
    const QPalette desktop = QApplication::palette();
    const MainWindow window;
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        for (int role = 0; role < QPalette::NColorRoles; ++role)
            QCOMPARE(QApplication::palette().color(group, QPalette::ColorRole(role)),
                desktop.color(group, QPalette::ColorRole(role)));
    }
}

QTEST_MAIN(TestReadable)

#include "tst_readable.moc"
