// The tool buttons above the content.

#include "shell/mainwindow.h"
#include "shell/topmenuwidget.h"
#include "tests/shell/shelltest.h"
#include "tests/support/isolatedtest.h"

#include <QToolButton>
#include <QtTest>

#include <memory>

using namespace ShellTest;

/// A window that notes which of its slots a button has called.
class NotingWindow : public MainWindow
{
    Q_OBJECT

public:
    QStringList calls;

public slots:
    void OpenFile() { calls << QStringLiteral("OpenFile"); }
    void SaveFileAs() { calls << QStringLiteral("SaveFileAs"); }
    void CallConnectionsDialog() { calls << QStringLiteral("CallConnectionsDialog"); }
    void CallOptionsDialog() { calls << QStringLiteral("CallOptionsDialog"); }
    void CallFactoryReset() { calls << QStringLiteral("CallFactoryReset"); }
    void CallChangePassword() { calls << QStringLiteral("CallChangePassword"); }
    void CallResetChanges() { calls << QStringLiteral("CallResetChanges"); }
    void CallPdfHelpFile() { calls << QStringLiteral("CallPdfHelpFile"); }
    void CallWebbrowserHomepage() { calls << QStringLiteral("CallWebbrowserHomepage"); }
};

namespace {

const QList<QByteArray> alwaysOn {"BtnConnection", "BtnOptions", "BtnPdfHelp", "BtnWeb"};
const QList<QByteArray> deviceActions {
    "BtnOpen", "BtnSaveAs", "BtnFactoryReset", "BtnSetPassword", "BtnResetChanges"};

} // namespace

class TestTopMenuWidget : public IsolatedTest
{
    Q_OBJECT

private slots:
    void buttonsStandInTheirOrder();
    void buttonIsDescribedByItsToolTip_data();
    void buttonIsDescribedByItsToolTip();
    void buttonsHaveIconsOf24Pixels();
    void logoIsShown();
    void userIsEmpty();
    void lineBeforeUserIsHidden();

    void buttonsOfDriveAreGreyAtStart();
    void otherButtonsWorkAtStart_data();
    void otherButtonsWorkAtStart();
    void greyButtonDoesNothing();
    void buttonOfDriveWorksOnceEnabled_data();
    void buttonOfDriveWorksOnceEnabled();
    void enablingAgainStillGivesOneCallPerPress();
    void resetChangesIsCalledOncePerEnabling();
    void disablingTurnsButtonsGrey();
    void resetChangesStaysActiveAfterDisabling();
    void buttonsWorkAgainAfterDisabling();

private:
    void prepare() override;
    void tidyUp() override;

    QToolButton &button(const QByteArray &name) const { return child<QToolButton>(*menu, name.constData()); }
    QStringList callsOf(const QByteArray &name);

    std::unique_ptr<NotingWindow> window;
    TopMenuWidget *menu = nullptr;
};

void TestTopMenuWidget::prepare()
{
    window = std::make_unique<NotingWindow>();
    menu = new TopMenuWidget(window.get());
    window->setCentralWidget(menu);
    window->show();
}

void TestTopMenuWidget::tidyUp()
{
    window.reset();
}

QStringList TestTopMenuWidget::callsOf(const QByteArray &name)
{
    window->calls.clear();
    // A grey button can be clicked too.
    QTest::mouseClick(&button(name), Qt::LeftButton);
    return window->calls;
}

void TestTopMenuWidget::buttonsStandInTheirOrder()
{
    const char *order[] = {"BtnOpen", "BtnSaveAs", "line_3", "BtnConnection", "BtnOptions", "line_4",
        "BtnFactoryReset", "BtnSetPassword", "BtnResetChanges", "line_2", "BtnPdfHelp", "BtnWeb", "LUser",
        "line_5", "LLogo"};
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    int left = -1;
    for (const char *name : order) {
        const int x = child(*menu, name).mapTo(menu, QPoint()).x();
        QVERIFY2(x > left, name);
        left = x;
    }
}

void TestTopMenuWidget::buttonIsDescribedByItsToolTip_data()
{
    addButtonColumns();
    addButton("BtnOpen", "Öffnen...", ":/images/open-icon.png");
    addButton("BtnSaveAs", "Speichern unter...", ":/images/save-as-icon.png");
    addButton("BtnConnection", "Verbindungen...", ":/images/connection_24px.png");
    addButton("BtnOptions", "Optionen...", ":/images/options-icon.png");
    addButton(
        "BtnFactoryReset", "Auf Werkseinstellungen zurücksetzen", ":/images/Sign-Refresh-icon_24px.png");
    addButton("BtnSetPassword", "Neues Passwort setzen", ":/images/Key-icon_24px.png");
    addButton("BtnResetChanges", "Änderungen verwerfen", ":/images/Trash_24px.png");
    addButton("BtnPdfHelp", "Hilfe", ":/images/Adobe-PDF-Document-icon.png");
    addButton("BtnWeb", "Norvik & Tessel", ":/images/web-icon.png");
}

void TestTopMenuWidget::buttonIsDescribedByItsToolTip()
{
    checkButton(*menu);
}

void TestTopMenuWidget::buttonsHaveIconsOf24Pixels()
{
    for (const QByteArray &name : alwaysOn + deviceActions)
        QVERIFY2(button(name).iconSize() == QSize(24, 24), name.constData());
}

void TestTopMenuWidget::logoIsShown()
{
    const QImage logo = pictureOf(*menu, "LLogo");
    QVERIFY(!logo.isNull());
    QCOMPARE(logo, QIcon(QStringLiteral(":images/logo.png")).pixmap(logo.size()).toImage());
}

void TestTopMenuWidget::userIsEmpty()
{
    QCOMPARE(textOf(*menu, "LUser"), QString());
}

void TestTopMenuWidget::lineBeforeUserIsHidden()
{
    QVERIFY(!sees(*menu, "line"));
    QVERIFY(sees(*menu, "line_3"));
}

void TestTopMenuWidget::buttonsOfDriveAreGreyAtStart()
{
    for (const QByteArray &name : deviceActions)
        QVERIFY2(!button(name).isEnabled(), name.constData());
    for (const QByteArray &name : alwaysOn)
        QVERIFY2(button(name).isEnabled(), name.constData());
}

void TestTopMenuWidget::otherButtonsWorkAtStart_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("slot");
    QTest::newRow("connection wizard")
        << QByteArray("BtnConnection") << QStringLiteral("CallConnectionsDialog");
    QTest::newRow("options") << QByteArray("BtnOptions") << QStringLiteral("CallOptionsDialog");
    QTest::newRow("help document") << QByteArray("BtnPdfHelp") << QStringLiteral("CallPdfHelpFile");
    QTest::newRow("home page") << QByteArray("BtnWeb") << QStringLiteral("CallWebbrowserHomepage");
}

void TestTopMenuWidget::otherButtonsWorkAtStart()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, slot);
    QCOMPARE(callsOf(name), QStringList {slot});
}

void TestTopMenuWidget::greyButtonDoesNothing()
{
    for (const QByteArray &name : deviceActions)
        QCOMPARE(callsOf(name), QStringList());
}

void TestTopMenuWidget::buttonOfDriveWorksOnceEnabled_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("slot");
    QTest::newRow("open a file") << QByteArray("BtnOpen") << QStringLiteral("OpenFile");
    QTest::newRow("save as") << QByteArray("BtnSaveAs") << QStringLiteral("SaveFileAs");
    QTest::newRow("factory reset") << QByteArray("BtnFactoryReset") << QStringLiteral("CallFactoryReset");
    QTest::newRow("password") << QByteArray("BtnSetPassword") << QStringLiteral("CallChangePassword");
    QTest::newRow("reset changes") << QByteArray("BtnResetChanges") << QStringLiteral("CallResetChanges");
}

void TestTopMenuWidget::buttonOfDriveWorksOnceEnabled()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, slot);
    menu->enableDeviceActions(window.get());
    QVERIFY(button(name).isEnabled());
    QCOMPARE(callsOf(name), QStringList {slot});
}

void TestTopMenuWidget::enablingAgainStillGivesOneCallPerPress()
{
    for (int time = 0; time < 3; ++time)
        menu->enableDeviceActions(window.get());
    for (const QByteArray &name : deviceActions) {
        if (name != "BtnResetChanges")
            QVERIFY2(callsOf(name).size() == 1, name.constData());
    }
    for (const QByteArray &name : alwaysOn)
        QVERIFY2(callsOf(name).size() == 1, name.constData());
}

void TestTopMenuWidget::resetChangesIsCalledOncePerEnabling()
{
    for (int time = 1; time <= 3; ++time) {
        menu->enableDeviceActions(window.get());
        QCOMPARE(callsOf("BtnResetChanges").size(), time);
    }
}

void TestTopMenuWidget::disablingTurnsButtonsGrey()
{
    menu->enableDeviceActions(window.get());
    menu->disableDeviceActions(window.get());
    for (const QByteArray &name : deviceActions) {
        if (name == "BtnResetChanges")
            continue;
        QVERIFY2(!button(name).isEnabled(), name.constData());
        QCOMPARE(callsOf(name), QStringList());
    }
}

void TestTopMenuWidget::resetChangesStaysActiveAfterDisabling()
{
    menu->enableDeviceActions(window.get());
    menu->disableDeviceActions(window.get());
    QVERIFY(button("BtnResetChanges").isEnabled());
    QCOMPARE(callsOf("BtnResetChanges").size(), 1);
    menu->enableDeviceActions(window.get());
    QCOMPARE(callsOf("BtnResetChanges").size(), 2);
}

void TestTopMenuWidget::buttonsWorkAgainAfterDisabling()
{
    menu->enableDeviceActions(window.get());
    menu->disableDeviceActions(window.get());
    menu->enableDeviceActions(window.get());
    QCOMPARE(callsOf("BtnFactoryReset").size(), 1);
}

QTEST_MAIN(TestTopMenuWidget)

#include "tst_topmenuwidget.moc"
