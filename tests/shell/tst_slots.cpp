// The slots of the window and its dialogs: which may be called from outside, and that a call at a time at
// which no button would make it does no harm.

#include "shell/deviceselectiondialog.h"
#include "shell/mainwindow.h"
#include "shell/optionsdialog.h"
#include "shell/wizard/confirmconnectionwizardwidget.h"
#include "shell/wizard/connectionsdialog.h"
#include "shell/wizard/scanningwizardwidget.h"
#include "shell/wizard/scanportwizardwidget.h"
#include "tests/shell/contentband.h"
#include "tests/support/filedialogs.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/messageboxes.h"

#include <QtTest>

#include <memory>

using namespace ShellTest;

Q_DECLARE_METATYPE(const QMetaObject *)

class TestSlots : public IsolatedTest
{
    Q_OBJECT

private slots:
    void slotIsPublic_data();
    void slotIsPublic();
    void windowWithoutDriveBearsEverySlot_data();
    void windowWithoutDriveBearsEverySlot();
    void clickOnNoItemShowsNoPage();
    void selectionThatWasNeverOfferedPicksNothing();
};

void TestSlots::slotIsPublic_data()
{
    QTest::addColumn<const QMetaObject *>("type");
    QTest::addColumn<QByteArray>("slot");

    const auto row = [](const QMetaObject &type, const char *slot) {
        QTest::addRow("%s::%s", type.className(), slot) << &type << QByteArray(slot);
    };
    row(MainContentWidget::staticMetaObject, "MainMenuItemClicked(QTreeWidgetItem*,int)");
    for (const char *slot : {"nextWizardPage()", "previousWizardPage()", "closeDialog()",
             "removeSelectedConnections()", "initScanPortWizard()", "initConnectDeviceManualWizard()",
             "initQuickConnectWizard()", "initAllPortsWizard()"})
        row(ConnectionsDialog::staticMetaObject, slot);
    row(ScanPortWizardWidget::staticMetaObject, "updatePorts()");
    row(ScanningWizardWidget::staticMetaObject, "scanDevice()");
    row(ScanningWizardWidget::staticMetaObject, "abortScanning()");
    row(ConfirmConnectionWizardWidget::staticMetaObject, "SendConnectCurrentDevice()");
    row(DeviceSelectionDialog::staticMetaObject, "postSelectedDevices()");
    row(optionsdialog::staticMetaObject, "saveAndCloseDialog()");
    row(optionsdialog::staticMetaObject, "languageChanged(int)");
    for (const char *slot : {"CallConnectionsDialog()", "CallOptionsDialog()", "CallAboutDialog()",
             "CallWebbrowserHomepage()", "CallPdfHelpFile()", "CallTeamviewer()", "CallResetChanges()",
             "SetDefaultValues()", "CallFactoryReset()", "CallChangePassword()", "SaveFileAs()", "SaveFile()",
             "OpenFile()", "enableDeviceActions(Z7Device)", "disableDeviceActions()",
             "setParameterFileToDevice(int)", "resetChanges(int)", "setDefault(int)", "sendNewPassword(int)"})
        row(MainWindow::staticMetaObject, slot);
}

void TestSlots::slotIsPublic()
{
    QFETCH(const QMetaObject *, type);
    QFETCH(QByteArray, slot);
    const int index = type->indexOfSlot(slot.constData());
    QVERIFY(index >= 0);
    QCOMPARE(type->method(index).access(), QMetaMethod::Public);
}

void TestSlots::windowWithoutDriveBearsEverySlot_data()
{
    QTest::addColumn<int>("method");

    const QMetaObject &window = MainWindow::staticMetaObject;
    for (int i = window.methodOffset(); i < window.methodCount(); ++i)
        QTest::newRow(window.method(i).methodSignature().constData()) << i;
}

void TestSlots::windowWithoutDriveBearsEverySlot()
{
    QFETCH(int, method);
    const MessageBoxAnswerer user(QMessageBox::Yes);
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const FileDialogUser cancels {QString()};
    const QMetaMethod slot = MainWindow::staticMetaObject.method(method);
    QVariant argument;
    if (slot.parameterCount() == 1)
        argument =
            slot.parameterType(0) == QMetaType::Int ? QVariant(17) : QVariant(slot.parameterType(0), nullptr);
    QVERIFY(slot.invoke(&window, QGenericArgument(argument.typeName(), argument.constData())));
    QCoreApplication::processEvents();
    QVERIFY(window.isVisible());
}

void TestSlots::clickOnNoItemShowsNoPage()
{
    ContentBand<> band;
    band.content->MainMenuItemClicked(nullptr, 0);
    QVERIFY(textOf(*band.content, "LContentTitle").isEmpty());
}

void TestSlots::selectionThatWasNeverOfferedPicksNothing()
{
    DeviceSelectionDialog dialog;
    const QSignalSpy picked(&dialog, SIGNAL(deviceSelected(int)));
    dialog.show();
    dialog.postSelectedDevices();
    QCOMPARE(picked.count(), 0);
    QVERIFY(!dialog.isVisible());
}

QTEST_MAIN(TestSlots)

#include "tst_slots.moc"
