// One field of the status bar, and several of them in a row.

#include "shell/statusfieldrow.h"

#include <QAccessible>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QtTest>

#include <cmath>

/// Qt tells nothing without a screen reader. The switch of the platform is exported, but its headers are not
/// installed.
class QPlatformAccessibility
{
public:
    void setActive(bool active);
};

class QPlatformIntegration
{
public:
    /// Of all platforms that have no bridge of their own; it uses nothing of its object.
    QPlatformAccessibility *accessibility() const;
};

namespace {

int accessibilityEvents = 0;
QObject *watched = nullptr;

void countEvents(QAccessibleEvent *event)
{
    if (event->object() == watched)
        ++accessibilityEvents;
}

/// Counts the accessibility events of one widget as long as it lives.
class EventCount
{
public:
    explicit EventCount(QObject *object)
        : m_former(QAccessible::installUpdateHandler(countEvents))
    {
        QPlatformIntegration().accessibility()->setActive(true);
        accessibilityEvents = 0;
        watched = object;
    }
    ~EventCount()
    {
        QAccessible::installUpdateHandler(m_former);
        QPlatformIntegration().accessibility()->setActive(false);
    }

    int operator()() const { return accessibilityEvents; }

private:
    const QAccessible::UpdateHandler m_former;
};

/// A field above an edit field, in a window that is as wide as it is told.
struct FieldInWindow
{
    explicit FieldInWindow(StatusField::Click click)
        : field(row.add("field", "Field", click))
    {
        row.setStretched(field);
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(&row);
        layout->addWidget(&edit);
        window.resize(400, 80);
        window.show();
    }

    bool begin()
    {
        edit.setFocus();
        return QTest::qWaitForWindowActive(&window);
    }
    QImage seen() { return field->grab().toImage(); }

    QWidget window;
    StatusFieldRow row;
    StatusField *const field;
    QLineEdit edit;
};

const StatusText someText {"5 Änderungen", QString(), false};
const QString longText = QStringLiteral("eine Zeile, die nirgends ganz hineinpasst").repeated(9);

} // namespace

class TestStatusField : public QObject
{
    Q_OBJECT

private slots:
    void wholeTextIsInToolTipAndDescription();
    void detailIsAddedToToolTipAlone();
    void toolTipShowsSignsOfMarkupAsTheyStand();
    void longTextIsCutShortAndWidensNothing();
    void textIsWholeAtWidthThatItAsksFor_data();
    void textIsWholeAtWidthThatItAsksFor();
    void fontsOfAnySizeCutNoHeight_data();
    void fontsOfAnySizeCutNoHeight();
    void warningIsBoldBehindIcon();
    void textStandsOutFromGround();

    void mouseClickLeavesFocusWhereItIs();
    void keyPressesFieldThatTabReached_data();
    void keyPressesFieldThatTabReached();
    void fieldThatDoesNothingIsNoStopOfTab();
    void emptyFieldIsNoStopOfTabAndTakesNoRoom();
    void fieldThatBecomesEmptyPassesFocusOn();
    void focusShows();

    void newTextIsOneAccessibilityEvent();
    void sameTextIsNone();

    void shares_data();
    void shares();
    void clockDoesNotMoveWhatStandsBehindIt();
    void shorterTextDoesNotMoveWhatStandsBehindIt();
    void stretchedFieldTakesWhatIsLeft();
};

void TestStatusField::wholeTextIsInToolTipAndDescription()
{
    FieldInWindow one(StatusField::DoesNothing);
    one.field->say({longText, QString(), false});
    QCOMPARE(one.field->toolTip(), longText);
    QCOMPARE(one.field->accessibleDescription(), longText);
    QCOMPARE(one.field->accessibleName(), QStringLiteral("Field"));
}

void TestStatusField::detailIsAddedToToolTipAlone()
{
    FieldInWindow one(StatusField::DoesNothing);
    one.field->say(someText);
    const QImage without = one.seen();
    one.field->say({someText.text, "2, 3", false});
    QCOMPARE(one.field->toolTip(), QStringLiteral("5 Änderungen\n2, 3"));
    QCOMPARE(one.field->accessibleDescription(), one.field->toolTip());
    QCOMPARE(one.seen(), without);
}

void TestStatusField::toolTipShowsSignsOfMarkupAsTheyStand()
{
    FieldInWindow one(StatusField::DoesNothing);
    one.field->say({"held by <b>x</b>", QString(), false});
    QVERIFY(one.field->toolTip().contains("&lt;b&gt;x"));
    QCOMPARE(one.field->accessibleDescription(), QStringLiteral("held by <b>x</b>"));
}

void TestStatusField::longTextIsCutShortAndWidensNothing()
{
    FieldInWindow one(StatusField::Opens);
    QVERIFY(one.begin());
    const int narrowest = one.window.minimumSizeHint().width();
    one.field->say({longText, QString(), true});
    QTRY_VERIFY(one.field->width() > 0);
    QCOMPARE(one.window.minimumSizeHint().width(), narrowest);
    QVERIFY(one.field->width() <= one.row.width());
    QVERIFY(one.field->sizeHint().width() > one.row.width());
    QVERIFY(one.field->shownText().size() < longText.size());
}

void TestStatusField::textIsWholeAtWidthThatItAsksFor_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isWarning");
    for (const char *text :
        {"Undo", "Rückgängig", "wartet", "Z7.1 gelesen 14:03:12", "veraltet seit 11:11:11"}) {
        QTest::addRow("%s", text) << QString::fromUtf8(text) << false;
        QTest::addRow("%s, bold", text) << QString::fromUtf8(text) << true;
    }
}

void TestStatusField::textIsWholeAtWidthThatItAsksFor()
{
    QFETCH(QString, text);
    QFETCH(bool, isWarning);
    for (const StatusField::Click click : {StatusField::Acts, StatusField::Dismisses}) {
        for (int points = 9; points <= 18; ++points) {
            StatusField field("field", "Field", click, nullptr);
            QFont font;
            font.setPointSize(points);
            field.setFont(font);
            field.say({text, QString(), isWarning});
            field.resize(field.sizeHint());
            QCOMPARE(field.shownText(), text);
        }
    }
}

void TestStatusField::fontsOfAnySizeCutNoHeight_data()
{
    QTest::addColumn<int>("points");
    for (const int points : {9, 10, 14, 18})
        QTest::addRow("%d points", points) << points;
}

void TestStatusField::fontsOfAnySizeCutNoHeight()
{
    QFETCH(int, points);
    FieldInWindow one(StatusField::Opens);
    QVERIFY(one.begin());
    one.field->say(someText);
    QFont font;
    font.setPointSize(points);
    one.row.setFont(font);
    QTRY_VERIFY(one.field->height() >= QFontMetrics(font).height());
    QVERIFY(one.field->sizeHint().width() >= QFontMetrics(font).horizontalAdvance(someText.text));
}

void TestStatusField::warningIsBoldBehindIcon()
{
    FieldInWindow one(StatusField::DoesNothing);
    QVERIFY(one.begin());
    one.field->say(someText);
    QTRY_VERIFY(one.field->width() > 100);
    const int plain = one.field->sizeHint().width();
    const QImage calm = one.seen();
    one.field->say({someText.text, QString(), true});
    QVERIFY(one.field->sizeHint().width() > plain + 16);
    QVERIFY(one.seen() != calm);
}

void TestStatusField::textStandsOutFromGround()
{
    FieldInWindow one(StatusField::DoesNothing);
    const auto luminance = [](const QColor &colour) {
        const auto linear = [](double part) {
            return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
            + 0.0722 * linear(colour.blueF());
    };
    const QPalette palette = one.field->palette();
    const double text = luminance(palette.color(QPalette::WindowText));
    const double ground = luminance(palette.color(QPalette::Window));
    QVERIFY((qMax(text, ground) + 0.05) / (qMin(text, ground) + 0.05) >= 4.5);
}

void TestStatusField::mouseClickLeavesFocusWhereItIs()
{
    FieldInWindow one(StatusField::Opens);
    QVERIFY(one.begin());
    one.field->say(someText);
    QTRY_VERIFY(one.field->width() > 0);
    const QSignalSpy clicks(one.field, SIGNAL(clicked()));
    QTest::mouseClick(one.field, Qt::LeftButton);
    QCOMPARE(clicks.count(), 1);
    QVERIFY(one.edit.hasFocus());
}

void TestStatusField::keyPressesFieldThatTabReached_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Space") << Qt::Key_Space;
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
}

void TestStatusField::keyPressesFieldThatTabReached()
{
    QFETCH(Qt::Key, key);
    FieldInWindow one(StatusField::Dismisses);
    QVERIFY(one.begin());
    one.field->say(someText);
    QTest::keyClick(&one.edit, Qt::Key_Tab);
    QVERIFY(one.field->hasFocus());
    const QSignalSpy clicks(one.field, SIGNAL(clicked()));
    QTest::keyClick(one.field, key);
    QCOMPARE(clicks.count(), 1);
}

void TestStatusField::fieldThatDoesNothingIsNoStopOfTab()
{
    FieldInWindow one(StatusField::DoesNothing);
    QVERIFY(one.begin());
    one.field->say(someText);
    QTest::keyClick(&one.edit, Qt::Key_Tab);
    QVERIFY(one.edit.hasFocus());
}

void TestStatusField::emptyFieldIsNoStopOfTabAndTakesNoRoom()
{
    FieldInWindow one(StatusField::Opens);
    QVERIFY(one.begin());
    one.field->say(someText);
    QTRY_VERIFY(one.field->width() > 0);
    one.field->say(StatusText());
    QTRY_COMPARE(one.field->width(), 0);
    QTest::keyClick(&one.edit, Qt::Key_Tab);
    QVERIFY(one.edit.hasFocus());
}

void TestStatusField::fieldThatBecomesEmptyPassesFocusOn()
{
    FieldInWindow one(StatusField::Dismisses);
    QVERIFY(one.begin());
    one.field->say(someText);
    QTest::keyClick(&one.edit, Qt::Key_Tab);
    QVERIFY(one.field->hasFocus());
    one.field->say(StatusText());
    QVERIFY(one.edit.hasFocus());
}

void TestStatusField::focusShows()
{
    FieldInWindow one(StatusField::Opens);
    QVERIFY(one.begin());
    one.field->say(someText);
    QTRY_VERIFY(one.field->width() > 0);
    const QImage without = one.seen();
    one.field->setFocus();
    QVERIFY(one.seen() != without);
}

void TestStatusField::newTextIsOneAccessibilityEvent()
{
    FieldInWindow one(StatusField::Opens);
    QVERIFY(one.begin());
    const EventCount events(one.field);
    one.field->say(someText);
    QCOMPARE(events(), 1);
    one.field->say({"6 Änderungen", "2, 3", true});
    QCOMPARE(events(), 2);
    one.field->say(StatusText());
    QTest::qWait(0);
    QCOMPARE(events(), 3);
}

void TestStatusField::sameTextIsNone()
{
    FieldInWindow one(StatusField::Opens);
    QVERIFY(one.begin());
    one.field->say(someText);
    const EventCount events(one.field);
    one.field->say(someText);
    QTest::qWait(0);
    QCOMPARE(events(), 0);
}

void TestStatusField::shares_data()
{
    QTest::addColumn<QVector<int>>("wanted");
    QTest::addColumn<int>("room");
    QTest::addColumn<QVector<int>>("expected");
    QTest::newRow("room for all") << QVector<int> {10, 20, 30} << 100 << QVector<int> {10, 20, 30};
    QTest::newRow("longest gives way") << QVector<int> {10, 200, 30} << 100 << QVector<int> {10, 60, 30};
    QTest::newRow("two give way alike") << QVector<int> {100, 10, 200} << 110 << QVector<int> {50, 10, 50};
    QTest::newRow("nobody wants anything") << QVector<int> {0, 0} << 100 << QVector<int> {0, 0};
    QTest::newRow("no room") << QVector<int> {10, 20} << -5 << QVector<int> {0, 0};
    QTest::newRow("no field") << QVector<int>() << 100 << QVector<int>();
}

void TestStatusField::shares()
{
    QFETCH(QVector<int>, wanted);
    QFETCH(int, room);
    QTEST(fairShares(wanted, room), "expected");
}

void TestStatusField::clockDoesNotMoveWhatStandsBehindIt()
{
    FieldInWindow one(StatusField::Opens);
    StatusField *behind = one.row.add("behind", "Behind", StatusField::DoesNothing);
    one.row.setStretched(behind);
    QVERIFY(one.begin());
    one.field->say({"Z7.1 gelesen 11:11:11", QString(), false});
    behind->say(someText);
    QTRY_VERIFY(behind->x() > 0 && behind->width() > 0);
    const int place = behind->x();
    one.field->say({"Z7.1 gelesen 20:48:56", QString(), false});
    QTest::qWait(0);
    QCOMPARE(behind->x(), place);
}

void TestStatusField::shorterTextDoesNotMoveWhatStandsBehindIt()
{
    FieldInWindow one(StatusField::Opens);
    StatusField *behind = one.row.add("behind", "Behind", StatusField::DoesNothing);
    one.row.setStretched(behind);
    QVERIFY(one.begin());
    one.field->say({"veraltet seit 11:11:11", QString(), true});
    behind->say(someText);
    QTRY_VERIFY(behind->x() > 0);
    const int place = behind->x();
    one.field->say({"wartet", QString(), false});
    QTest::qWait(0);
    QCOMPARE(behind->x(), place);
}

void TestStatusField::stretchedFieldTakesWhatIsLeft()
{
    FieldInWindow one(StatusField::Opens);
    StatusField *behind = one.row.add("behind", "Behind", StatusField::DoesNothing);
    QVERIFY(one.begin());
    one.field->say(someText);
    behind->say(someText);
    QTRY_VERIFY(one.field->width() > one.field->sizeHint().width());
    QCOMPARE(behind->width(), behind->sizeHint().width());
    QVERIFY(behind->geometry().right() > one.row.width() - 16);
}

QTEST_MAIN(TestStatusField)

#include "tst_statusfield.moc"
