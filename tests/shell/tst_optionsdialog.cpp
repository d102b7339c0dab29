// The options: what the dialog shows, takes and saves.

#include "control/services/options.h"
#include "control/services/services.h"
#include "shell/optionsdialog.h"
#include "tests/shell/connectedwindow.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <QComboBox>
#include <QGroupBox>
#include <QIntValidator>
#include <QLabel>
#include <QPushButton>

#include <optional>

using namespace ShellTest;

class TestOptionsDialog : public IsolatedTest
{
    Q_OBJECT

private slots:
    void textsStandAtTheirPlaces();
    void noLabelKeepsTextOfForm();
    void textsAreInUsersLanguage();
    void buttonsHaveTheirIcons_data();
    void buttonsHaveTheirIcons();
    void optionsInForceStandInFields();
    void everyOptionHasItsField();
    void fieldTakesItsRange_data();
    void fieldTakesItsRange();
    void numberFarOutOfRangeCannotBeTyped_data();
    void numberFarOutOfRangeCannotBeTyped();
    void okSavesEveryField();
    void emptyFieldIsSavedAsZero();
    void shorterNumberIsSavedAsItStands();
    void cancelDiscardsEverything();
    void undoBringsNothingBackOfEarlierShowing_data();
    void undoBringsNothingBackOfEarlierShowing();
    void languageFilesAreOffered();
    void languageWithoutFileGivesWayToFirst();
    void languageFilesOfGivenFolderAreOffered();
    void cancelKeepsLanguage();
    void noLanguageFileLeavesListEmptyAndSavesEmptyLanguage();
    void changedLanguageAsksForRestart();
    void noteStaysWhenFirstChoiceIsBack();
    void noteIsGoneAtNextShowing();
    void changedNumberAsksForNoRestart();

    void pollingIsTurnedOffAndOnAtRunTime();

private:
    void prepare() override;
    void tidyUp() override;

    Z7Options *options() const { return Z7Services::instance()->options(); }
    QComboBox &languages() const { return child<QComboBox>(*dialog, "cbLanguage"); }
    QString fieldText(const char *name) const { return child<QLineEdit>(*dialog, name).text(); }
    void open()
    {
        dialog->refresh();
        dialog->show();
    }

    /// Of the options that are numbers, in the order of the options.
    static QList<QByteArray> numberFields()
    {
        QList<QByteArray> fields;
        for (const Z7Options::Row &row : Z7Options::rows()) {
            if (row.kind == Z7Options::Number)
                fields.append(row.field);
        }
        return fields;
    }

    std::optional<optionsdialog> dialog;
};

void TestOptionsDialog::prepare()
{
    dialog.emplace();
}

void TestOptionsDialog::tidyUp()
{
    dialog.reset();
}

void TestOptionsDialog::textsStandAtTheirPlaces()
{
    open();
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Optionen"));
    QCOMPARE(child<QPushButton>(*dialog, "BtnOK").text(), QStringLiteral("OK"));
    QCOMPARE(child<QPushButton>(*dialog, "BtnCancel").text(), QStringLiteral("Schließen"));
    QCOMPARE(child<QGroupBox>(*dialog, "gbCommon").title(), QStringLiteral("Allgemein"));
    QCOMPARE(child<QGroupBox>(*dialog, "gbCommunication").title(), QStringLiteral("Kommunikation"));
    QCOMPARE(textOf(*dialog, "lLanguage"), QStringLiteral("Sprache"));
    QCOMPARE(textOf(*dialog, "lTimeout"), QStringLiteral("Timeout [ms]"));
    QCOMPARE(textOf(*dialog, "lTimeoutPolling"), QStringLiteral("Timeout Scannen [ms]"));
    QCOMPARE(textOf(*dialog, "lPreselectVendorId"), QStringLiteral("Vorauswahl Vendor ID"));
    QCOMPARE(textOf(*dialog, "lPollingCycle"), QStringLiteral("Polling-Intervall [ms] (0=aus)"));
    QCOMPARE(textOf(*dialog, "lRestartRequired"),
        QStringLiteral("Ihre Änderungen werden erst nach einem Neustart der Anwendung wirksam!"));
    QCOMPARE(child(*dialog, "lRestartRequired").palette().color(QPalette::WindowText), QColor(Qt::darkRed));
}

void TestOptionsDialog::noLabelKeepsTextOfForm()
{
    open();
    for (const QLabel *label : dialog->findChildren<QLabel *>())
        QVERIFY2(label->text() != QLatin1String("TextLabel"), qPrintable(label->objectName()));
}

void TestOptionsDialog::textsAreInUsersLanguage()
{
    WorkingFolder::writeText("deutsch.z7lang",
        "[DialogOptions]\nTitle=a\nCommon=b\nCommunication=c\nLanguage=d\nTimeout=e\nTimeoutScaning=f\n"
        "preselectVendorID=g\nPollingInterval=h\nRestartRequired=i\n");
    open();
    QCOMPARE(dialog->windowTitle() + child<QGroupBox>(*dialog, "gbCommon").title()
            + child<QGroupBox>(*dialog, "gbCommunication").title() + textOf(*dialog, "lLanguage")
            + textOf(*dialog, "lTimeout") + textOf(*dialog, "lTimeoutPolling")
            + textOf(*dialog, "lPreselectVendorId") + textOf(*dialog, "lPollingCycle")
            + textOf(*dialog, "lRestartRequired"),
        QStringLiteral("abcdefghi"));
}

void TestOptionsDialog::buttonsHaveTheirIcons_data()
{
    addButtonColumns();
    addButton("BtnCancel", "Schließen", ":/images/cancel-icon.png");
    addButton("BtnOK", "OK", ":/images/tick-icon_24px.png");
}

void TestOptionsDialog::buttonsHaveTheirIcons()
{
    open();
    checkButton(*dialog);
}

void TestOptionsDialog::optionsInForceStandInFields()
{
    options()->setTimeout(150);
    options()->setTimeoutScanning(25);
    options()->setDefaultVendorID(1111);
    options()->setPollingInterval(0);
    open();
    QCOMPARE(fieldText("edTimeout"), QStringLiteral("150"));
    QCOMPARE(fieldText("edTimeoutScanning"), QStringLiteral("25"));
    QCOMPARE(fieldText("edPreselectVendorID"), QStringLiteral("1111"));
    QCOMPARE(fieldText("edPollingCycle"), QStringLiteral("0"));
}

void TestOptionsDialog::everyOptionHasItsField()
{
    for (const Z7Options::Row &row : Z7Options::rows())
        QVERIFY2(dialog->findChild<QWidget *>(row.field), row.field);
}

void TestOptionsDialog::fieldTakesItsRange_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<int>("bottom");
    QTest::addColumn<int>("top");
    QList<QByteArray> fields;
    const auto row = [&fields](const char *name, const char *field, int bottom, int top) {
        fields.append(field);
        QTest::newRow(name) << fields.constLast() << bottom << top;
    };
    row("time-out", "edTimeout", 20, 1000);
    row("time-out of the scan", "edTimeoutScanning", 20, 1000);
    row("vendor", "edPreselectVendorID", 0, 10000);
    row("polling interval", "edPollingCycle", 0, 10000);
    QCOMPARE(fields, numberFields());
}

void TestOptionsDialog::fieldTakesItsRange()
{
    QFETCH(QByteArray, field);
    const auto *validator =
        qobject_cast<const QIntValidator *>(child<QLineEdit>(*dialog, field.constData()).validator());
    QTEST(validator->bottom(), "bottom");
    QTEST(validator->top(), "top");
}

void TestOptionsDialog::numberFarOutOfRangeCannotBeTyped_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    QTest::newRow("time-out") << QByteArray("edTimeout") << "10000"
                              << "1000";
    QTest::newRow("time-out of the scan") << QByteArray("edTimeoutScanning") << "10000"
                                          << "1000";
    QTest::newRow("vendor") << QByteArray("edPreselectVendorID") << "100000"
                            << "10000";
    QTest::newRow("polling interval") << QByteArray("edPollingCycle") << "100000"
                                      << "10000";
    QTest::newRow("polling interval below 0") << QByteArray("edPollingCycle") << "-5"
                                              << "5";
}

void TestOptionsDialog::numberFarOutOfRangeCannotBeTyped()
{
    QFETCH(QByteArray, field);
    QFETCH(QString, typed);
    open();
    Person::type(*dialog, field.constData(), typed);
    QTEST(fieldText(field.constData()), "text");
}

void TestOptionsDialog::okSavesEveryField()
{
    WorkingFolder::writeText("english.z7lang", "");
    open();
    QVERIFY(Person::type(*dialog, "edTimeout", "200"));
    QVERIFY(Person::type(*dialog, "edTimeoutScanning", "40"));
    QVERIFY(Person::type(*dialog, "edPreselectVendorID", "4292"));
    QVERIFY(Person::type(*dialog, "edPollingCycle", "500"));
    QVERIFY(Person::choose(&languages(), "english"));
    QVERIFY(Person::press(*dialog, "BtnOK"));
    QVERIFY(!dialog->isVisible());
    QCOMPARE(options()->timeout(), 200);
    QCOMPARE(options()->timeoutScanning(), 40);
    QCOMPARE(options()->defaultVendorID(), 4292);
    QCOMPARE(options()->pollingInterval(), 500);
    QCOMPARE(options()->language(), QStringLiteral("english"));
}

void TestOptionsDialog::undoBringsNothingBackOfEarlierShowing_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("typed");
    for (const QByteArray &field : numberFields()) {
        QTest::addRow("%s, a number", field.constData()) << field << QStringLiteral("77");
        QTest::addRow("%s, emptied", field.constData()) << field << QString();
    }
}

void TestOptionsDialog::undoBringsNothingBackOfEarlierShowing()
{
    QFETCH(QByteArray, field);
    QFETCH(QString, typed);
    open();
    const QString inForce = fieldText(field.constData());
    Person::type(*dialog, field.constData(), typed);
    QVERIFY(Person::press(*dialog, "BtnCancel"));
    open();
    QTest::keySequence(&child(*dialog, field.constData()), QKeySequence::Undo);
    QCOMPARE(fieldText(field.constData()), inForce);
}

void TestOptionsDialog::emptyFieldIsSavedAsZero()
{
    open();
    QVERIFY(Person::type(*dialog, "edPreselectVendorID", ""));
    QVERIFY(Person::press(*dialog, "BtnOK"));
    QCOMPARE(options()->defaultVendorID(), 0);
}

void TestOptionsDialog::shorterNumberIsSavedAsItStands()
{
    open();
    QVERIFY(Person::type(*dialog, "edTimeout", "5"));
    QVERIFY(Person::press(*dialog, "BtnOK"));
    QCOMPARE(options()->timeout(), 5);
}

void TestOptionsDialog::cancelDiscardsEverything()
{
    open();
    QVERIFY(Person::type(*dialog, "edTimeout", "999"));
    QVERIFY(Person::press(*dialog, "BtnCancel"));
    QVERIFY(!dialog->isVisible());
    QCOMPARE(options()->timeout(), 140);
    open();
    QCOMPARE(fieldText("edTimeout"), QStringLiteral("140"));
}

void TestOptionsDialog::languageFilesAreOffered()
{
    for (const char *file : {"deutsch.z7lang", "english.uk.z7lang", "readme.txt"})
        WorkingFolder::writeText(file, "");
    open();
    QCOMPARE(languages().count(), 2);
    QCOMPARE(languages().itemText(1), QStringLiteral("english.uk"));
    QCOMPARE(languages().currentText(), QStringLiteral("deutsch"));
    open();
    QCOMPARE(languages().count(), 2);
}

void TestOptionsDialog::languageWithoutFileGivesWayToFirst()
{
    for (const char *file : {"english.z7lang", "italiano.z7lang"})
        WorkingFolder::writeText(file, "");
    open();
    QCOMPARE(languages().currentText(), QStringLiteral("english"));
    QVERIFY(Person::press(*dialog, "BtnOK"));
    QCOMPARE(options()->language(), QStringLiteral("english"));
}

void TestOptionsDialog::languageFilesOfGivenFolderAreOffered()
{
    WorkingFolder::writeText("deutsch.z7lang", "");
    QVERIFY(QDir().mkdir("given"));
    WorkingFolder::writeText("given/english.z7lang", "");
    Z7Services::instance()->setFolder("given");
    open();
    QCOMPARE(languages().count(), 1);
    QCOMPARE(languages().itemText(0), QStringLiteral("english"));
}

void TestOptionsDialog::cancelKeepsLanguage()
{
    for (const char *file : {"deutsch.z7lang", "english.z7lang"})
        WorkingFolder::writeText(file, "");
    open();
    QTest::keyClick(&languages(), Qt::Key_Down);
    QVERIFY(Person::press(*dialog, "BtnCancel"));
    QCOMPARE(options()->language(), QStringLiteral("deutsch"));
    open();
    QCOMPARE(languages().currentText(), QStringLiteral("deutsch"));
}

void TestOptionsDialog::noLanguageFileLeavesListEmptyAndSavesEmptyLanguage()
{
    open();
    QCOMPARE(languages().count(), 0);
    QVERIFY(Person::press(*dialog, "BtnOK"));
    QCOMPARE(options()->language(), QString());
}

void TestOptionsDialog::changedLanguageAsksForRestart()
{
    WorkingFolder::writeText("deutsch.z7lang", "");
    WorkingFolder::writeText("english.z7lang", "");
    open();
    QVERIFY(!sees(*dialog, "lRestartRequired"));
    QTest::keyClick(&languages(), Qt::Key_Down);
    QVERIFY(sees(*dialog, "lRestartRequired"));
}

void TestOptionsDialog::noteStaysWhenFirstChoiceIsBack()
{
    WorkingFolder::writeText("deutsch.z7lang", "");
    WorkingFolder::writeText("english.z7lang", "");
    open();
    QTest::keyClick(&languages(), Qt::Key_Down);
    QTest::keyClick(&languages(), Qt::Key_Up);
    QCOMPARE(languages().currentText(), QStringLiteral("deutsch"));
    QVERIFY(sees(*dialog, "lRestartRequired"));
}

void TestOptionsDialog::noteIsGoneAtNextShowing()
{
    WorkingFolder::writeText("deutsch.z7lang", "");
    WorkingFolder::writeText("english.z7lang", "");
    open();
    QTest::keyClick(&languages(), Qt::Key_Down);
    QVERIFY(Person::press(*dialog, "BtnCancel"));
    open();
    QVERIFY(!sees(*dialog, "lRestartRequired"));
    QTest::keyClick(&languages(), Qt::Key_Down);
    QVERIFY(sees(*dialog, "lRestartRequired"));
}

void TestOptionsDialog::changedNumberAsksForNoRestart()
{
    open();
    QVERIFY(Person::type(*dialog, "edTimeout", "200"));
    QVERIFY(!sees(*dialog, "lRestartRequired"));
}

void TestOptionsDialog::pollingIsTurnedOffAndOnAtRunTime()
{
    writeDefinitions();
    const ConnectedWindow ui({3});
    QVERIFY(ui.begin({3}));
    QVERIFY(ui.waitForAPass());
    const auto setPollingInterval = [&ui](const char *interval) {
        ui.press("BtnOptions");
        const auto &shown = *ui.window->findChild<optionsdialog *>();
        QVERIFY(Person::type(shown, "edPollingCycle", interval));
        QVERIFY(Person::press(shown, "BtnOK"));
    };
    setPollingInterval("0");
    // The pass under way may end. After that not even the next two ticks, one a second, begin another.
    QVERIFY(QTest::qWaitFor([&ui] { return ui.staysSilent(2100); }));
    setPollingInterval("20");
    QVERIFY(ui.waitForAPass());
}

QTEST_MAIN(TestOptionsDialog)

#include "tst_optionsdialog.moc"
