// Picking drives: the rows, the ticks and what is reported.

#include "shell/deviceselectiondialog.h"
#include "tests/shell/shelltest.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

#include <optional>

using namespace ShellTest;

class TestDeviceSelectionDialog : public IsolatedTest
{
    Q_OBJECT

private slots:
    void textsAreSetByReset();
    void textsComeFromLanguageFile();
    void introductionIsShown();
    void resetTakesIntroductionAway();
    void resetTakesRowsAway();
    void buttonsHaveTheirIcons_data();
    void buttonsHaveTheirIcons();
    void headerIsInWindowsBlueWithWhiteText();

    void rowBearsTextAndDevice();
    void rowIsUntickedAndCanBeTicked();
    void rowIsTickedWithMouse();

    void tickedDrivesAreReportedFromFirstRowToLast();
    void tickTakenBackIsNotReported();
    void selectedButUntickedRowIsNotReported();
    void okWithNothingTickedReportsNothingAndCloses();
    void okWithoutAnyRowCloses();
    void enterConfirms();
    void abortReportsNothingAndCloses();
    void escapeReportsNothingAndCloses();

    void reusedDialogReportsOncePerReset_data();
    void reusedDialogReportsOncePerReset();
    void reportsOfReusedDialogComeRoundByRound();
    void dialogWithoutResetIsDeaf();

private:
    void prepare() override;
    void tidyUp() override;

    QListWidget &rows() const { return child<QListWidget>(*dialog, "lstDevices"); }
    QString buttonText(const char *name) const { return child<QPushButton>(*dialog, name).text(); }
    void open(const QList<int> &deviceIds);
    void tick(int row) const;

    std::optional<DeviceSelectionDialog> dialog;
    std::optional<QSignalSpy> selected;
};

void TestDeviceSelectionDialog::prepare()
{
    dialog.emplace();
    selected.emplace(&*dialog, SIGNAL(deviceSelected(int)));
}

void TestDeviceSelectionDialog::tidyUp()
{
    selected.reset();
    dialog.reset();
}

void TestDeviceSelectionDialog::open(const QList<int> &deviceIds)
{
    dialog->reset();
    for (int id : deviceIds)
        dialog->addDevice(id, QStringLiteral("Drive %1").arg(id));
    dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(&*dialog));
}

void TestDeviceSelectionDialog::tick(int row) const
{
    QVERIFY(Person::tickRow(&rows(), row));
}

void TestDeviceSelectionDialog::textsAreSetByReset()
{
    dialog->reset();
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Z7 auswählen"));
    QCOMPARE(textOf(*dialog, "LIntro"), QString());
    QCOMPARE(buttonText("BtnOK"), QStringLiteral("OK"));
    QCOMPARE(buttonText("BtnAbort"), QStringLiteral("Abbrechen"));
}

void TestDeviceSelectionDialog::textsComeFromLanguageFile()
{
    WorkingFolder::writeText("deutsch.z7lang", "[DialogDeviceSelection]\nTitle=a\n[Common]\nOK=b\nAbort=c\n");
    dialog->reset();
    QCOMPARE(dialog->windowTitle(), QStringLiteral("a"));
    QCOMPARE(buttonText("BtnOK"), QStringLiteral("b"));
    QCOMPARE(buttonText("BtnAbort"), QStringLiteral("c"));
}

void TestDeviceSelectionDialog::introductionIsShown()
{
    dialog->reset();
    dialog->setIntro(QStringLiteral("Which drives?"));
    QCOMPARE(textOf(*dialog, "LIntro"), QStringLiteral("Which drives?"));
}

void TestDeviceSelectionDialog::resetTakesIntroductionAway()
{
    dialog->setIntro(QStringLiteral("Which drives?"));
    dialog->reset();
    QCOMPARE(textOf(*dialog, "LIntro"), QString());
}

void TestDeviceSelectionDialog::resetTakesRowsAway()
{
    open({11, 22});
    QCOMPARE(rows().count(), 2);
    dialog->reset();
    QCOMPARE(rows().count(), 0);
}

void TestDeviceSelectionDialog::buttonsHaveTheirIcons_data()
{
    addButtonColumns();
    addButton("BtnAbort", "Abbrechen", ":/images/cancel-icon_16px.png");
    addButton("BtnOK", "OK", ":/images/tick-icon_16px.png");
}

void TestDeviceSelectionDialog::buttonsHaveTheirIcons()
{
    dialog->reset();
    checkButton(*dialog, 16);
}

void TestDeviceSelectionDialog::headerIsInWindowsBlueWithWhiteText()
{
    QCOMPARE(child(*dialog, "fTop").palette().color(QPalette::Window), QColor(72, 131, 181));
    QVERIFY(child(*dialog, "fTop").autoFillBackground());
    QCOMPARE(child(*dialog, "LIntro").palette().color(QPalette::WindowText), QColor(Qt::white));
}

void TestDeviceSelectionDialog::rowBearsTextAndDevice()
{
    dialog->reset();
    // Ids are signed and can be below 0.
    dialog->addDevice(-5, QStringLiteral("Port1 - Z7.3 (V123)"));
    QCOMPARE(rows().count(), 1);
    QCOMPARE(rows().item(0)->text(), QStringLiteral("Port1 - Z7.3 (V123)"));
    QCOMPARE(rows().item(0)->data(256).toInt(), -5);
}

void TestDeviceSelectionDialog::rowIsUntickedAndCanBeTicked()
{
    dialog->reset();
    dialog->addDevice(11, QStringLiteral("Drive"));
    QCOMPARE(rows().item(0)->checkState(), Qt::Unchecked);
    QCOMPARE(rows().item(0)->flags(), QListWidgetItem().flags() | Qt::ItemIsUserCheckable);
}

void TestDeviceSelectionDialog::rowIsTickedWithMouse()
{
    open({11, 22});
    const QRect row = rows().visualItemRect(rows().item(1));
    QTest::mouseClick(rows().viewport(), Qt::LeftButton, {}, QPoint(row.left() + 9, row.center().y()));
    QCOMPARE(rows().item(0)->checkState(), Qt::Unchecked);
    QCOMPARE(rows().item(1)->checkState(), Qt::Checked);
}

void TestDeviceSelectionDialog::tickedDrivesAreReportedFromFirstRowToLast()
{
    open({33, 11, 22});
    tick(2);
    tick(0);
    QVERIFY(Person::press(*dialog, "BtnOK"));
    QCOMPARE(*selected, (QList<QVariantList> {{33}, {22}}));
    QVERIFY(!dialog->isVisible());
}

void TestDeviceSelectionDialog::tickTakenBackIsNotReported()
{
    open({11, 22});
    tick(0);
    tick(1);
    tick(0);
    QVERIFY(Person::press(*dialog, "BtnOK"));
    QCOMPARE(*selected, (QList<QVariantList> {{22}}));
}

void TestDeviceSelectionDialog::selectedButUntickedRowIsNotReported()
{
    open({11, 22});
    QTest::mouseClick(rows().viewport(), Qt::LeftButton, {}, rows().visualItemRect(rows().item(1)).center());
    QCOMPARE(rows().currentRow(), 1);
    QVERIFY(Person::press(*dialog, "BtnOK"));
    QCOMPARE(selected->count(), 0);
}

void TestDeviceSelectionDialog::okWithNothingTickedReportsNothingAndCloses()
{
    open({11});
    QVERIFY(Person::press(*dialog, "BtnOK"));
    QCOMPARE(selected->count(), 0);
    QVERIFY(!dialog->isVisible());
}

void TestDeviceSelectionDialog::okWithoutAnyRowCloses()
{
    open({});
    QVERIFY(Person::press(*dialog, "BtnOK"));
    QCOMPARE(selected->count(), 0);
    QVERIFY(!dialog->isVisible());
}

void TestDeviceSelectionDialog::enterConfirms()
{
    open({11});
    tick(0);
    QTest::keyClick(&*dialog, Qt::Key_Return);
    QCOMPARE(*selected, (QList<QVariantList> {{11}}));
    QVERIFY(!dialog->isVisible());
}

void TestDeviceSelectionDialog::abortReportsNothingAndCloses()
{
    open({11});
    tick(0);
    QVERIFY(Person::press(*dialog, "BtnAbort"));
    QCOMPARE(selected->count(), 0);
    QVERIFY(!dialog->isVisible());
}

void TestDeviceSelectionDialog::escapeReportsNothingAndCloses()
{
    open({11});
    tick(0);
    QTest::keyClick(&*dialog, Qt::Key_Escape);
    QCOMPARE(selected->count(), 0);
    QVERIFY(!dialog->isVisible());
}

void TestDeviceSelectionDialog::reusedDialogReportsOncePerReset_data()
{
    QTest::addColumn<int>("resets");
    QTest::newRow("used once") << 1;
    QTest::newRow("used twice") << 2;
    QTest::newRow("used five times") << 5;
}

void TestDeviceSelectionDialog::reusedDialogReportsOncePerReset()
{
    QFETCH(int, resets);
    for (int reset = 0; reset < resets; ++reset) {
        open({11});
        if (reset < resets - 1)
            QVERIFY(Person::press(*dialog, "BtnAbort"));
    }
    tick(0);
    QVERIFY(Person::press(*dialog, "BtnOK"));
    QCOMPARE(selected->count(), resets);
}

void TestDeviceSelectionDialog::reportsOfReusedDialogComeRoundByRound()
{
    open({11, 22});
    open({11, 22});
    tick(0);
    tick(1);
    QVERIFY(Person::press(*dialog, "BtnOK"));
    QCOMPARE(*selected, (QList<QVariantList> {{11}, {22}, {11}, {22}}));
}

void TestDeviceSelectionDialog::dialogWithoutResetIsDeaf()
{
    dialog->addDevice(11, QStringLiteral("Drive"));
    dialog->show();
    tick(0);
    QVERIFY(Person::press(*dialog, "BtnOK"));
    QCOMPARE(selected->count(), 0);
    QVERIFY(dialog->isVisible());
}

QTEST_MAIN(TestDeviceSelectionDialog)

#include "tst_deviceselectiondialog.moc"
