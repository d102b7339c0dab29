// Writing with a conflict: the question before it, and what each answer leads to.

#include "tests/control/testedcontroller.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <optional>

using namespace Z7CommInterface;

namespace {

const int id3 = connectedDrive(3).deviceId();

using WriteSlot = void (Z7MainController::*)();

} // namespace

Q_DECLARE_METATYPE(WriteSlot)

class TestConflictQuestion : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { tested.reset(); }

    void questionNamesConflictAndOffersToWriteAnyway_data() { writeSlots(); }
    void questionNamesConflictAndOffersToWriteAnyway();
    void buttonsAreOffWhileQuestionStands_data() { writeSlots(); }
    void buttonsAreOffWhileQuestionStands();
    void noWritesNothingAndButtonsWorkAgain_data() { writeSlots(); }
    void noWritesNothingAndButtonsWorkAgain();
    void escapeKeyMeansNo_data() { writeSlots(); }
    void escapeKeyMeansNo();
    void enterKeyMeansNo_data() { writeSlots(); }
    void enterKeyMeansNo();
    void yesWrites_data() { writeSlots(); }
    void yesWrites();
    void withoutConflictNothingIsAsked_data() { writeSlots(); }
    void withoutConflictNothingIsAsked();
    void withoutChangesNothingHappens_data() { writeSlots(); }
    void withoutChangesNothingHappens();

    void writingLeavesTreeAlone();
    void writingAndStoringRefreshesWindowBeforeButtonsWorkAgain();
    void storingRefreshesWindow();

private:
    static void writeSlots();
    void makeConflict() const { tested->typeInTable(11, "500"); }
    void write();
    bool isWriting();

    std::optional<TestedController> tested;
};

void TestConflictQuestion::init()
{
    tested.emplace();
    tested->showTableOf({connectedDrive(3)});
}

void TestConflictQuestion::writeSlots()
{
    QTest::addColumn<WriteSlot>("writeSlot");
    QTest::newRow("write") << WriteSlot(&Z7MainController::UploadData);
    QTest::newRow("write and store") << WriteSlot(&Z7MainController::WriteAndStoreData);
}

void TestConflictQuestion::write()
{
    QFETCH(WriteSlot, writeSlot);
    tested->forgetNotes();
    (tested->controller.*writeSlot)();
}

/// A transfer has a listener from the moment it is handed over.
bool TestConflictQuestion::isWriting()
{
    tested->forgetNotes();
    tested->controller.PostTransactionProgress(TransferTelegramStack);
    return !tested->deviceControl.notes.isEmpty();
}

void TestConflictQuestion::questionNamesConflictAndOffersToWriteAnyway()
{
    makeConflict();
    const MessageBoxAnswerer user(QMessageBox::No);
    write();
    QCOMPARE(user.count(), 1);
    QCOMPARE(user.last().text,
        QStringLiteral("Die Parameterwerte enthalten einen Konflikt:\n\n"
                       "Parameterkonflikt Drehzahl: 500 <= 0 <= 0 verletzt."));
    QCOMPARE(user.last().informativeText, QStringLiteral("Trotzdem schreiben?"));
    QCOMPARE(user.last().icon, QMessageBox::Warning);
    QCOMPARE(user.last().buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(user.last().defaultButton, QMessageBox::No);
    QVERIFY(user.last().isModal);
    QVERIFY(!user.last().hasParent);
}

void TestConflictQuestion::buttonsAreOffWhileQuestionStands()
{
    makeConflict();
    tested->mainContent.buttonsWork = true;
    bool workedDuringTheQuestion = true;
    const MessageBoxAnswerer user([&](QMessageBox *box) {
        workedDuringTheQuestion = tested->mainContent.buttonsWork;
        Person::press(box->button(QMessageBox::No));
    });
    write();
    QCOMPARE(user.count(), 1);
    QVERIFY(!workedDuringTheQuestion);
}

void TestConflictQuestion::noWritesNothingAndButtonsWorkAgain()
{
    makeConflict();
    const MessageBoxAnswerer user(QMessageBox::No);
    write();
    QCOMPARE(tested->mainContent.notes, (QStringList {"disable", "enable"}));
    QVERIFY(!isWriting());
    QCOMPARE(tested->userChanges(), QStringLiteral("11=500"));
}

void TestConflictQuestion::escapeKeyMeansNo()
{
    makeConflict();
    const MessageBoxAnswerer user([](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Escape); });
    write();
    QCOMPARE(user.count(), 1);
    QVERIFY(!isWriting());
}

void TestConflictQuestion::enterKeyMeansNo()
{
    makeConflict();
    const MessageBoxAnswerer user([](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Return); });
    write();
    QCOMPARE(user.count(), 1);
    QVERIFY(!isWriting());
}

void TestConflictQuestion::yesWrites()
{
    makeConflict();
    const MessageBoxAnswerer user(QMessageBox::Yes);
    write();
    QCOMPARE(user.count(), 1);
    QCOMPARE(tested->mainContent.notes.last(), QStringLiteral("enable"));
    QVERIFY(isWriting());
    QCOMPARE(tested->userChanges(), QStringLiteral("11=500"));
}

void TestConflictQuestion::withoutConflictNothingIsAsked()
{
    tested->typeInTable(30, "7");
    const MessageBoxAnswerer user(QMessageBox::No);
    write();
    QCOMPARE(user.count(), 0);
    QVERIFY(isWriting());
}

void TestConflictQuestion::withoutChangesNothingHappens()
{
    const MessageBoxAnswerer user(QMessageBox::Yes);
    write();
    QCOMPARE(user.count(), 0);
    QCOMPARE(tested->mainContent.notes, QStringList());
    QVERIFY(!isWriting());
}

void TestConflictQuestion::writingLeavesTreeAlone()
{
    tested->typeInTable(30, "7");
    tested->forgetNotes();
    tested->controller.UploadData();
    QCOMPARE(tested->mainContent.notes, (QStringList {"disable", "enable"}));
}

void TestConflictQuestion::writingAndStoringRefreshesWindowBeforeButtonsWorkAgain()
{
    tested->typeInTable(30, "7");
    tested->forgetNotes();
    tested->controller.WriteAndStoreData();
    QCOMPARE(tested->mainContent.notes, (QStringList {"disable", "tree", "conflict line", "enable"}));
}

void TestConflictQuestion::storingRefreshesWindow()
{
    tested->typeInTable(11, "500");
    tested->mainContent.conflictLine.clear();
    tested->forgetNotes();
    tested->controller.StoreData();
    QCOMPARE(tested->mainContent.notes, (QStringList {"tree", "conflict line"}));
    QCOMPARE(tested->mainContent.tree, QList<int> {id3});
    QCOMPARE(tested->mainContent.conflictLine,
        QStringLiteral("Parameterkonflikt Drehzahl: 500 <= 0 <= 0 verletzt."));
}

QTEST_MAIN(TestConflictQuestion)

#include "tst_conflictquestion.moc"
