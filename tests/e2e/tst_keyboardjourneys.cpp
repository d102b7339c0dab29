// The whole main job by keys alone, from connecting to storing, and what is on the wire then.

#include "control/services/options.h"
#include "control/services/services.h"
#include "tests/e2e/desk.h"
#include "tests/e2e/telegrams.h"
#include "tests/support/person.h"

#include <QApplication>
#include <QLineEdit>
#include <QtTest>

using namespace Telegrams;

namespace {

constexpr int password = 4711;
constexpr int speed = 23;

/// How a person does what the job takes.
class Hands
{
public:
    virtual ~Hands() = default;

    /// From the window to the list of drives, by the manual way, and back to the window.
    virtual bool connectDrive() = 0;
    virtual bool showTable() = 0;
    virtual bool change(const QString &value) = 0;
    virtual bool read() = 0;
    virtual bool write() = 0;
    virtual bool store() = 0;
    virtual bool writeAndStore() = 0;
};

class MouseUser : public Hands
{
public:
    explicit MouseUser(const Journey &journey)
        : m_journey(journey)
    {
    }

    bool connectDrive() override { return m_journey.connectManually(port, 1, password); }
    bool showTable() override { return m_journey.showPage(driveName(1), table); }
    bool change(const QString &value) override { return m_journey.typeValue(speed, value); }
    bool read() override { return m_journey.press("BtnDownload"); }
    bool write() override { return m_journey.press("BtnUpload"); }
    bool store() override { return m_journey.press("BtnStore"); }
    bool writeAndStore() override { return m_journey.press("BtnWriteAndStore"); }

private:
    const Journey &m_journey;
};

/// Every key goes to what has the focus.
class KeyboardUser : public Hands
{
public:
    explicit KeyboardUser(const Journey &journey)
        : m_journey(journey)
    {
    }

    bool connectDrive() override
    {
        const WizardUser wizard = m_journey.wizard();
        auto *dialog = m_journey.window().findChild<QWidget *>(QStringLiteral("ConnectionsDialog"));
        return Person::bringToFront(&m_journey.window()) && tabTo("BtnConnection") && press(Qt::Key_Space)
            && Person::bringToFront(dialog) && tabTo("BtnManual") && press(Qt::Key_Space)
            && tabTo("EdPassword") && type(QString::number(password)) && press(Qt::Key_Return)
            && Person::waitUntil([&wizard] { return wizard.canPressOk(); }) && press(Qt::Key_Return)
            && press(Qt::Key_Return) && !wizard.isOpen() && Person::bringToFront(&m_journey.window());
    }
    bool showTable() override
    {
        return tabTo("MainMenuTree") && type(table.left(5)) && press(Qt::Key_Return)
            && m_journey.pageTitle() == table;
    }
    bool change(const QString &value) override
    {
        const QLineEdit *field = m_journey.valueField(speed);
        return tabTo([field] { return focus() == field; }) && press(Qt::Key_A, Qt::ControlModifier)
            && type(value) && field->text() == value;
    }
    bool read() override { return press(Qt::Key_F5); }
    bool write() override { return press(Qt::Key_Return, Qt::ControlModifier); }
    bool store() override { return tabTo("BtnStore") && press(Qt::Key_Space); }
    bool writeAndStore() override { return press(Qt::Key_Return, Qt::ControlModifier | Qt::ShiftModifier); }

private:
    static QWidget *focus()
    {
        QWidget *field = QApplication::focusWidget();
        return field ? field : QApplication::activeWindow();
    }
    static bool press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(focus(), key, modifiers);
        return true;
    }
    static bool type(const QString &text)
    {
        QTest::keyClicks(focus(), text);
        return true;
    }
    static bool tabTo(const std::function<bool()> &isThere)
    {
        constexpr int moreThanFields = 200;
        for (int step = 0; step < moreThanFields && !isThere(); ++step)
            press(Qt::Key_Tab);
        return isThere();
    }
    static bool tabTo(const char *name)
    {
        return tabTo([name] { return focus()->objectName() == QLatin1String(name); });
    }

    const Journey &m_journey;
};

/// Begins without the live update, so that every telegram up to the reading is one that was asked for.
struct JobDesk : Desk
{
    JobDesk()
        : Desk({TestBench::shortDrive(1, password)}, {0})
    {
    }

    const Polling polling {1, password, TestBench::shortNumbers};

    /// What was asked for by a step, once it is there and the drive has gone on to the live update.
    QStringList sentBy(const std::function<bool()> &step)
    {
        bus.clearLog();
        const bool isSent = step() && Person::waitUntil([this] { return besidesPolling().size() == 1; });
        return isSent && waitForPass() ? besidesPolling().constFirst() : QStringList();
    }
    QList<QStringList> besidesPolling() const { return besides(polling, requests()); }
    /// The bus is free for the next step then.
    bool waitForPass() const
    {
        const int before = requests().size();
        return Person::waitUntil([this, before] {
            return requests().mid(before).count(read(1, TestBench::shortNumbers.last())) > 1;
        });
    }
};

/// What is on the wire while the job is done: connecting and reading, and one transaction for each step that
/// changes the drive. Empty if a step did not succeed.
QList<QStringList> wireOfJob(JobDesk &desk, Hands &hands)
{
    const auto hasRead = [&desk] {
        return desk.journey.row(speed).deviceValue == QString::number(desk.bus.memory(1, speed));
    };
    if (!hands.connectDrive() || !hands.showTable() || !hands.read() || !Person::waitUntil(hasRead))
        return {};
    QList<QStringList> wire {desk.requests()};
    Z7Services::instance()->options()->setPollingInterval(50);
    if (!desk.waitForPass() || !hands.change(QStringLiteral("700")))
        return {};
    wire.append(desk.sentBy([&hands] { return hands.write(); }));
    wire.append(desk.sentBy([&hands] { return hands.store(); }));
    if (!hands.change(QStringLiteral("800")))
        return {};
    wire.append(desk.sentBy([&hands] { return hands.writeAndStore(); }));
    return wire;
}

} // namespace

class TestKeyboardJourneys : public QObject
{
    Q_OBJECT

private slots:
    void wholeJobIsDoneByKeysWithTelegramsOfMouse();
};

void TestKeyboardJourneys::wholeJobIsDoneByKeysWithTelegramsOfMouse()
{
    QList<QStringList> byMouse;
    {
        JobDesk desk;
        MouseUser user(desk.journey);
        byMouse = wireOfJob(desk, user);
    }
    const QStringList access = logOn(1, password);
    QCOMPARE(byMouse.mid(1),
        QList<QStringList>({access + QStringList(write(1, speed, 700)), QStringList(store(1, password)),
            access + QStringList({write(1, speed, 800), store(1, password)})}));

    JobDesk desk;
    KeyboardUser user(desk.journey);
    QCOMPARE(wireOfJob(desk, user), byMouse);
    QCOMPARE(desk.bus.flash(1, speed), 800);
}

QTEST_MAIN(TestKeyboardJourneys)

#include "tst_keyboardjourneys.moc"
