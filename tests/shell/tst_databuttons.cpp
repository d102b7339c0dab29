// The four buttons that move data between the screen and the drive, and the line that warns of conflicts.

#include "control/services/options.h"
#include "control/services/services.h"
#include "tests/shell/contentband.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/listedports.h"
#include "tests/support/person.h"
#include "tests/support/tablerows.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

#include <functional>
#include <memory>

using namespace ShellTest;

/// A controller that notes what the buttons ask of it before it does it.
class NotingController : public Z7MainController
{
    Q_OBJECT

public:
    QStringList calls;

public slots:
    void StoreData()
    {
        calls << QStringLiteral("StoreData");
        Z7MainController::StoreData();
    }
    void WriteAndStoreData()
    {
        calls << QStringLiteral("WriteAndStoreData");
        Z7MainController::WriteAndStoreData();
    }
    void DownloadData()
    {
        calls << QStringLiteral("DownloadData");
        Z7MainController::DownloadData();
    }
    void UploadData()
    {
        calls << QStringLiteral("UploadData");
        Z7MainController::UploadData();
    }
};

namespace {

constexpr int parameterTable = 9;
constexpr int currentLimits = 4;
const char *const buttons[] = {"BtnStore", "BtnWriteAndStore", "BtnDownload", "BtnUpload"};

} // namespace

class TestDataButtons : public IsolatedTest
{
    Q_OBJECT

private slots:
    void buttonHasItsTextAndIcon_data();
    void buttonHasItsTextAndIcon();
    void buttonsAreGreyBeforeFirstPage();
    void buttonAsksController_data();
    void buttonAsksController();
    void showingPagesAgainStillGivesOneCallPerPress();
    void buttonsDoNothingAfterNewListOfDrives();
    void buttonsWorkAgainWithNextPage();

    void conflictLineShowsWhatStandsAgainstWriting();
    void conflictLineGoesWithConflict();
    void conflictLineIsEmptyForDriveWithoutChanges();
    void buttonsDoNothingWhileQuestionIsOpen();
    void buttonsWorkAgainAfterQuestion_data();
    void buttonsWorkAgainAfterQuestion();
    void writingWithoutChangesAsksNothing();

private:
    void prepare() override;
    void tidyUp() override;

    bool seesWarning() const { return sees(*band->content, "LParamWarning"); }
    QString warning() const { return textOf(*band->content, "LParamWarning"); }
    QStringList callsOf(const char *button);
    QLineEdit *field(int number) const
    {
        return tableField(child<QTableWidget>(*band->content, "ParameterTable"), number);
    }
    void showTable();
    /// Types support points of the speed curve that do not rise.
    void typeAConflict();
    /// Runs `look` while the question is open, then answers it.
    void answer(QMessageBox::StandardButton button, const std::function<void()> &look = {});

    std::unique_ptr<ListedPorts> ports;
    std::unique_ptr<ContentBand<NotingController>> band;
    Z7Device first;
    Z7Device second;
    int questions = 0;
};

void TestDataButtons::prepare()
{
    writeDefinitions();
    ports = std::make_unique<ListedPorts>();
    ports->plugUsb(firstPort, QString());
    Z7Services::instance()->options()->setPollingInterval(1000000);
    band = std::make_unique<ContentBand<NotingController>>();
    first = drive(1);
    second = drive(2);
    questions = 0;
    band->controller.setDevices({first, second});
}

void TestDataButtons::tidyUp()
{
    band.reset();
    ports.reset();
}

QStringList TestDataButtons::callsOf(const char *button)
{
    band->controller.calls.clear();
    // A grey button can be clicked too.
    QTest::mouseClick(&child(*band->content, button), Qt::LeftButton);
    return band->controller.calls;
}

void TestDataButtons::showTable()
{
    band->click(parameterTable, first);
    Z7Device read = band->controller.device(first.deviceId());
    for (int number : {11, 12, 13})
        read.updateParam(Z7DeviceParam(number, number * 10, 1, true));
    band->bring(read);
}

void TestDataButtons::typeAConflict()
{
    showTable();
    QVERIFY(Person::type(field(11), "900"));
}

void TestDataButtons::answer(QMessageBox::StandardButton button, const std::function<void()> &look)
{
    QTimer::singleShot(0, this, [this, button, look] {
        auto *question = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!question)
            return;
        ++questions;
        if (look)
            look();
        Person::press(question->button(button));
    });
}

void TestDataButtons::buttonHasItsTextAndIcon_data()
{
    addButtonColumns();
    addButton("BtnStore", "Im Motor speichern", ":/images/Save_24px.png");
    addButton("BtnWriteAndStore", "Schreiben+Speichern", ":/images/SaveAndWrite_24px.png");
    addButton("BtnDownload", "Lesen", ":/images/down-icon.png");
    addButton("BtnUpload", "Schreiben", ":/images/Edit_24px.png");
}

void TestDataButtons::buttonHasItsTextAndIcon()
{
    checkButton(*band->content);
}

void TestDataButtons::buttonsAreGreyBeforeFirstPage()
{
    for (const char *button : buttons) {
        QVERIFY2(!child(*band->content, button).isEnabled(), button);
        QCOMPARE(callsOf(button), QStringList());
    }
}

void TestDataButtons::buttonAsksController_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("call");
    QTest::newRow("store") << QByteArray("BtnStore") << QStringLiteral("StoreData");
    QTest::newRow("write and store") << QByteArray("BtnWriteAndStore") << QStringLiteral("WriteAndStoreData");
    QTest::newRow("read") << QByteArray("BtnDownload") << QStringLiteral("DownloadData");
    QTest::newRow("write") << QByteArray("BtnUpload") << QStringLiteral("UploadData");
}

void TestDataButtons::buttonAsksController()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, call);
    showTable();
    QCOMPARE(callsOf(button.constData()), QStringList {call});
}

void TestDataButtons::showingPagesAgainStillGivesOneCallPerPress()
{
    for (int time = 0; time < 3; ++time) {
        showTable();
        band->click(currentLimits, second);
        band->bring(second);
    }
    for (const char *button : buttons)
        QVERIFY2(callsOf(button).size() == 1, button);
}

void TestDataButtons::buttonsDoNothingAfterNewListOfDrives()
{
    showTable();
    band->controller.setDevices({first});
    QVERIFY(!seesWarning());
    for (const char *button : buttons)
        QVERIFY2(callsOf(button).isEmpty(), button);
}

void TestDataButtons::buttonsWorkAgainWithNextPage()
{
    showTable();
    band->controller.setDevices({first});
    showTable();
    QVERIFY(seesWarning());
    for (const char *button : buttons)
        QVERIFY2(callsOf(button).size() == 1, button);
}

void TestDataButtons::conflictLineShowsWhatStandsAgainstWriting()
{
    typeAConflict();
    QVERIFY(seesWarning());
    QVERIFY(!warning().isEmpty());
    QCOMPARE(warning(), band->controller.calcConflicts());
}

void TestDataButtons::conflictLineGoesWithConflict()
{
    typeAConflict();
    QVERIFY(Person::type(field(12), "901"));
    QVERIFY(Person::type(field(13), "902"));
    QCOMPARE(warning(), QString());
}

void TestDataButtons::conflictLineIsEmptyForDriveWithoutChanges()
{
    typeAConflict();
    band->click(parameterTable, second);
    QCOMPARE(warning(), QString());
}

void TestDataButtons::buttonsDoNothingWhileQuestionIsOpen()
{
    typeAConflict();
    answer(QMessageBox::No, [this] {
        QVERIFY(!seesWarning());
        // The question keeps a person from pressing; a press that is already on its way counts as well.
        child<QPushButton>(*band->content, "BtnStore").click();
    });
    QCOMPARE(callsOf("BtnUpload"), QStringList {QStringLiteral("UploadData")});
    QCOMPARE(questions, 1);
}

void TestDataButtons::buttonsWorkAgainAfterQuestion_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<int>("given");
    QTest::newRow("write, no") << QByteArray("BtnUpload") << int(QMessageBox::No);
    QTest::newRow("write, yes") << QByteArray("BtnUpload") << int(QMessageBox::Yes);
    QTest::newRow("write and store, no") << QByteArray("BtnWriteAndStore") << int(QMessageBox::No);
    QTest::newRow("write and store, yes") << QByteArray("BtnWriteAndStore") << int(QMessageBox::Yes);
}

void TestDataButtons::buttonsWorkAgainAfterQuestion()
{
    QFETCH(QByteArray, button);
    QFETCH(int, given);
    typeAConflict();
    answer(QMessageBox::StandardButton(given));
    QCOMPARE(callsOf(button.constData()).size(), 1);
    QCOMPARE(questions, 1);
    QVERIFY(seesWarning());
    answer(QMessageBox::No);
    QCOMPARE(callsOf(button.constData()).size(), 1);
    QCOMPARE(questions, 2);
}

void TestDataButtons::writingWithoutChangesAsksNothing()
{
    showTable();
    answer(QMessageBox::No);
    QCOMPARE(callsOf("BtnUpload").size(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(questions, 0);
    QVERIFY(seesWarning());
}

QTEST_MAIN(TestDataButtons)

#include "tst_databuttons.moc"
