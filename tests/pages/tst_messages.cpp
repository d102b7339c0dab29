// The boxes that tell a person what went wrong and that ask for a Yes or a No.

#include "pages/messages.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/messageboxes.h"

#include <QtTest>

class TestMessages : public IsolatedTest
{
    Q_OBJECT

private slots:
    void errorIsTitledWithProgramsName();
    void errorCanBearTitleOfItsOwn();
    void questionStandsBelowItsText();
    void questionBearsIconThatItWasGiven_data();
    void questionBearsIconThatItWasGiven();
    void onlyYesConfirms_data();
    void onlyYesConfirms();
    void boxBelongsToWindowThatAsks();

private:
    static bool asks(QWidget *parent = nullptr, QMessageBox::Icon icon = QMessageBox::Warning)
    {
        return Messages::isConfirmed(parent, icon, QStringLiteral("All goes."), QStringLiteral("Go on?"));
    }
};

void TestMessages::errorIsTitledWithProgramsName()
{
    WorkingFolder::writeText("deutsch.z7lang", "[Common]\nApplicationTitle=Drive tool\n");
    const MessageBoxAnswerer user(QMessageBox::Ok);
    Messages::showError(nullptr, QStringLiteral("It broke."));
    QCOMPARE(user.count(), 1);
    QCOMPARE(user.last().title, QStringLiteral("Drive tool"));
    QCOMPARE(user.last().text, QStringLiteral("It broke."));
    QCOMPARE(user.last().icon, QMessageBox::Critical);
    QCOMPARE(user.last().buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
}

void TestMessages::errorCanBearTitleOfItsOwn()
{
    const MessageBoxAnswerer user(QMessageBox::Ok);
    Messages::showError(nullptr, QStringLiteral("File"), QStringLiteral("It broke."));
    QCOMPARE(user.last().title, QStringLiteral("File"));
    QCOMPARE(user.last().text, QStringLiteral("It broke."));
}

void TestMessages::questionStandsBelowItsText()
{
    const MessageBoxAnswerer user(QMessageBox::No);
    asks();
    QCOMPARE(user.count(), 1);
    QCOMPARE(user.last().text, QStringLiteral("All goes."));
    QCOMPARE(user.last().informativeText, QStringLiteral("Go on?"));
    QCOMPARE(user.last().buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(user.last().defaultButton, QMessageBox::No);
    QVERIFY(user.last().isModal);
}

void TestMessages::questionBearsIconThatItWasGiven_data()
{
    QTest::addColumn<int>("icon");
    QTest::newRow("a warning") << int(QMessageBox::Warning);
    QTest::newRow("no icon") << int(QMessageBox::NoIcon);
}

void TestMessages::questionBearsIconThatItWasGiven()
{
    QFETCH(int, icon);
    const MessageBoxAnswerer user(QMessageBox::No);
    asks(nullptr, QMessageBox::Icon(icon));
    QCOMPARE(int(user.last().icon), icon);
}

void TestMessages::onlyYesConfirms_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("confirms");
    QTest::newRow("Yes") << int(QMessageBox::Yes) << 0 << true;
    QTest::newRow("No") << int(QMessageBox::No) << 0 << false;
    QTest::newRow("Enter takes the default") << 0 << int(Qt::Key_Enter) << false;
    QTest::newRow("Escape") << 0 << int(Qt::Key_Escape) << false;
}

void TestMessages::onlyYesConfirms()
{
    QFETCH(int, button);
    QFETCH(int, key);
    QFETCH(bool, confirms);
    const MessageBoxAnswerer user([button, key](QMessageBox *box) {
        if (button)
            QTest::mouseClick(box->button(QMessageBox::StandardButton(button)), Qt::LeftButton);
        else
            QTest::keyClick(box, Qt::Key(key));
    });
    QCOMPARE(asks(), confirms);
    QCOMPARE(user.count(), 1);
}

void TestMessages::boxBelongsToWindowThatAsks()
{
    QWidget window;
    const MessageBoxAnswerer user([](QMessageBox *) {}); // closed with Escape
    asks(&window);
    QVERIFY(user.last().hasParent);
    asks();
    QVERIFY(!user.last().hasParent);
    Messages::showError(&window, QStringLiteral("It broke."));
    QVERIFY(user.last().hasParent);
}

QTEST_MAIN(TestMessages)

#include "tst_messages.moc"
