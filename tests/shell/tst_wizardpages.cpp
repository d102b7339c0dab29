// The wizard's pages that need no bus: which port, which address, which password.

#include "shell/wizard/detectingportswidget.h"
#include "shell/wizard/introductionwizardwidget.h"
#include "shell/wizard/setpasswordwizardwidget.h"
#include "tests/shell/wizardbench.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/listedports.h"
#include "tests/support/person.h"

#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QSerialPort>
#include <QToolButton>
#include <QtTest>

#include <memory>

#include <fcntl.h>
#include <pty.h>
#include <unistd.h>

using namespace ShellTest;

class TestWizardPages : public IsolatedTest
{
    Q_OBJECT

private slots:
    void portPageHasItsTexts();
    void manualWayAsksForAddressAndPassword();
    void scanAsksForPortOnly();
    void portIsDescribed_data();
    void portIsDescribed();
    void portInUseIsMarked();
    void refreshDoesNotLookForPortsAgain();
    void addressTakesThreeDigits_data();
    void addressTakesThreeDigits();
    void passwordTakesOnlyNumbers_data();
    void passwordTakesOnlyNumbers();
    void chosenPortAndAddressGoOn_data();
    void chosenPortAndAddressGoOn();

    void passwordPageHasItsTexts();
    void passwordGoesToEveryDrive_data();
    void passwordGoesToEveryDrive();
    void introductionIsWordWrapped();
    void detectingPageSaysWhatIsDone();

private:
    void prepare() override;
    void tidyUp() override;

    QString edit(const char *field) const { return child<QLineEdit>(*bench->dialog, field).text(); }
    QComboBox &portBox() const { return child<QComboBox>(*bench->dialog, "cbPorts"); }

    std::unique_ptr<ListedPorts> ports;
    std::unique_ptr<WizardBench> bench;
};

void TestWizardPages::prepare()
{
    ports = std::make_unique<ListedPorts>();
    ports->plugUsb(firstPort, QString());
    bench = std::make_unique<WizardBench>();
}

void TestWizardPages::tidyUp()
{
    bench.reset();
    ports.reset();
}

void TestWizardPages::portPageHasItsTexts()
{
    bench->press("BtnManual");
    QCOMPARE(bench->textOf("LPort"), QStringLiteral("Port"));
    QCOMPARE(bench->textOf("LAdress"), QStringLiteral("Adresse"));
    QCOMPARE(bench->textOf("LPassword"), QStringLiteral("Passwort"));
    QCOMPARE(image(child<QAbstractButton>(*bench->dialog, "BtnScanPorts").icon()),
        image(":/images/refresh-icon.png"));
}

void TestWizardPages::manualWayAsksForAddressAndPassword()
{
    bench->press("BtnManual");
    for (const char *name : {"LAdress", "EdAdress", "LPassword", "EdPassword"})
        QVERIFY2(bench->sees(name), name);
    QCOMPARE(edit("EdAdress"), QStringLiteral("1"));
    QCOMPARE(edit("EdPassword"), QStringLiteral("0"));
}

void TestWizardPages::scanAsksForPortOnly()
{
    bench->press("BtnScanPort");
    QVERIFY(bench->sees("cbPorts"));
    for (const char *name : {"LAdress", "EdAdress", "LPassword", "EdPassword"})
        QVERIFY2(!bench->sees(name), name);
}

void TestWizardPages::portIsDescribed_data()
{
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("text");
    QTest::newRow("preferred adapter")
        << QStringLiteral("ttyUSB0") << QStringLiteral("ttyUSB0 (FT232R USB UART) - 1027");
    QTest::newRow("other adapter") << QStringLiteral(
        "ttyUSB1") << QStringLiteral("ttyUSB1 (%1) - 1659").arg(ListedPorts::otherAdapter().product);
    QTest::newRow("port on the board, without a description")
        << QStringLiteral("ttyS0") << QStringLiteral("ttyS0 ()");
}

void TestWizardPages::portIsDescribed()
{
    QFETCH(QString, port);
    QFETCH(QString, text);
    ports->plugUsb(QStringLiteral("ttyUSB1"), QString(), ListedPorts::otherAdapter());
    ports->addOnBoard(QStringLiteral("ttyS0"), QString());
    bench->press("BtnManual");
    QVERIFY2(portBox().findText(text) >= 0, qPrintable(port));
}

void TestWizardPages::portInUseIsMarked()
{
    int master = -1;
    int slave = -1;
    char path[64];
    QCOMPARE(openpty(&master, &slave, path, nullptr, nullptr), 0);
    ports->relink(firstPort, QString::fromLatin1(path));
    QSerialPort otherProgram(firstPort);
    QVERIFY(otherProgram.open(QIODevice::ReadWrite));
    bench->press("BtnManual");
    QCOMPARE(portBox().itemText(0), QStringLiteral("ttyUSB0 [busy] (FT232R USB UART) - 1027"));
    otherProgram.close();
    close(slave);
    close(master);
}

void TestWizardPages::refreshDoesNotLookForPortsAgain()
{
    bench->press("BtnManual");
    ports->plugUsb(QStringLiteral("ttyUSB1"), QString());
    bench->press("BtnScanPorts");
    QCOMPARE(portBox().count(), 1);
}

void TestWizardPages::addressTakesThreeDigits_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("taken");
    QTest::newRow("lowest") << QStringLiteral("1") << QStringLiteral("1");
    QTest::newRow("highest") << QStringLiteral("255") << QStringLiteral("255");
    QTest::newRow("fourth digit") << QStringLiteral("1234") << QStringLiteral("123");
    QTest::newRow("letters") << QStringLiteral("a1b") << QStringLiteral("1");
    QTest::newRow("sign") << QStringLiteral("-7") << QStringLiteral("7");
}

void TestWizardPages::addressTakesThreeDigits()
{
    QFETCH(QString, typed);
    QFETCH(QString, taken);
    bench->press("BtnManual");
    bench->type("EdAdress", typed);
    QCOMPARE(edit("EdAdress"), taken);
}

void TestWizardPages::passwordTakesOnlyNumbers_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("taken");
    QTest::newRow("number") << QStringLiteral("4711") << QStringLiteral("4711");
    QTest::newRow("negative number") << QStringLiteral("-4711") << QStringLiteral("-4711");
    QTest::newRow("letters") << QStringLiteral("4x7") << QStringLiteral("47");
}

void TestWizardPages::passwordTakesOnlyNumbers()
{
    QFETCH(QString, typed);
    QFETCH(QString, taken);
    bench->press("BtnManual");
    bench->type("EdPassword", typed);
    QCOMPARE(edit("EdPassword"), taken);
}

void TestWizardPages::chosenPortAndAddressGoOn_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("drive");
    QTest::newRow("address of a drive") << QStringLiteral("17") << QStringLiteral("Port3 - Z7.17");
    QTest::newRow("no bus address is refused here")
        << QStringLiteral("300") << QStringLiteral("Port3 - Z7.300");
    QTest::newRow("nothing counts as 0") << QString() << QStringLiteral("Port3 - Z7.0");
}

void TestWizardPages::chosenPortAndAddressGoOn()
{
    QFETCH(QString, typed);
    QFETCH(QString, drive);
    ports->plugUsb(QStringLiteral("ttyUSB3"), QString(), ListedPorts::otherAdapter());
    bench->press("BtnManual");
    QTest::keyClick(&portBox(), Qt::Key_Down);
    bench->type("EdAdress", typed);
    bench->press("BtnNext");
    const auto boxes = bench->page()->findChildren<QAbstractButton *>();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first()->text(), drive);
}

void TestWizardPages::passwordPageHasItsTexts()
{
    const SetPasswordWizardWidget page(bench->dialog);
    QCOMPARE(textOf(page, "LPassword"), QStringLiteral("Passwort"));
    QCOMPARE(textOf(page, "lIntro"), QStringLiteral("Bitte geben Sie das Passwort ein!"));
}

void TestWizardPages::passwordGoesToEveryDrive_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("password");
    QTest::newRow("number") << QStringLiteral("4711") << 4711;
    QTest::newRow("negative number") << QStringLiteral("-1") << -1;
    QTest::newRow("nothing") << QString() << 0;
    QTest::newRow("letters are not taken") << QStringLiteral("abc") << 0;
}

void TestWizardPages::passwordGoesToEveryDrive()
{
    QFETCH(QString, typed);
    QFETCH(int, password);
    SetPasswordWizardWidget page(bench->dialog);
    page.setDevices({drive(1), drive(2)});
    page.show();
    Person::type(page, "EdPassword", typed);
    QVERIFY(page.leavePage());
    QCOMPARE(page.devices().size(), 2);
    for (const Z7Device &device : page.devices())
        QCOMPARE(device.password, password);
}

void TestWizardPages::introductionIsWordWrapped()
{
    IntroductionWizardWidget page(QStringLiteral("a <b> c"), bench->dialog);
    QCOMPARE(textOf(page, "lIntroText"), QStringLiteral("a <b> c"));
    QVERIFY(child<QLabel>(page, "lIntroText").wordWrap());
    QVERIFY(page.leavePage());
}

void TestWizardPages::detectingPageSaysWhatIsDone()
{
    const DetectingPortsWidget page;
    QCOMPARE(textOf(page, "lDetectingInfo"), QStringLiteral("Untersuche Ports..."));
}

QTEST_MAIN(TestWizardPages)

#include "tst_wizardpages.moc"
