// The home page of a drive as a picture: what stands where, and what stays where it is while the values
// change.

#include "tests/pages/shownpage.h"
#include "tests/support/isolatedtest.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QStyle>
#include <QStyleOptionButton>

#include <limits>
#include <optional>

namespace {

/// What the content area leaves to a page in a window of 1366x768.
constexpr QSize smallContent {1018, 507};

const QStringList values {"lCurrentRotationsDevice", "lCurrentPowerDevice", "lCurrentPositionDevice",
    "lCurrentTempDevice", "edAnalogInput"};

Z7Device reachedDrive()
{
    Z7Device drive = driveWith({});
    drive.setAccessGranted(true);
    return drive;
}

Z7Device driveWithTheWidestValues()
{
    Z7Device drive = reachedDrive();
    drive.actualSpeed = drive.actualCurrent = drive.actualTemperature = drive.analogInputA1 =
        std::numeric_limits<int>::min();
    drive.actualPosition = -32768.5;
    return drive;
}

} // namespace

class TestDeviceStatusLayout : public IsolatedTest
{
    Q_OBJECT

private slots:
    void pageFitsIntoSmallWindow();
    void valuesMoveNothing();
    void widestValueIsSeenWhole_data();
    void widestValueIsSeenWhole();
    void valuesAreLargeAndStandRightBesideTheirUnits();
    void deviceGroupStaysInPlaceWhileDriveIsLost();
    void statusTextCannotBeTicked();
    void statusTextLooksLikeText();
    void pageHasNothingToEdit();

private:
    void prepare() override;
    void tidyUp() override;

    /// Shows a drive and lays the page out at the least size that it can have.
    void showAtLeastSize(const Z7Device &drive);
    QList<QRect> groupPlaces() const;

    std::optional<ShownPage> shown;
};

void TestDeviceStatusLayout::prepare()
{
    shown.emplace(PageNumber::DeviceStatus);
}

void TestDeviceStatusLayout::tidyUp()
{
    shown.reset();
}

void TestDeviceStatusLayout::showAtLeastSize(const Z7Device &drive)
{
    shown->showFor(drive);
    shown->page->resize(shown->page->minimumSizeHint());
    QCoreApplication::processEvents();
}

QList<QRect> TestDeviceStatusLayout::groupPlaces() const
{
    QList<QRect> places;
    for (const QGroupBox *group : shown->page->findChildren<QGroupBox *>())
        places.append(group->geometry());
    return places;
}

void TestDeviceStatusLayout::pageFitsIntoSmallWindow()
{
    shown->showFor(driveWithTheWidestValues());
    const QSize least = shown->page->minimumSizeHint();
    QVERIFY2(least.width() <= smallContent.width(), qPrintable(QString::number(least.width())));
    QVERIFY2(least.height() <= smallContent.height(), qPrintable(QString::number(least.height())));
}

void TestDeviceStatusLayout::valuesMoveNothing()
{
    showAtLeastSize(reachedDrive());
    const QList<QRect> before = groupPlaces();
    showAtLeastSize(driveWithTheWidestValues());
    QCOMPARE(groupPlaces(), before);
}

void TestDeviceStatusLayout::widestValueIsSeenWhole_data()
{
    QTest::addColumn<QString>("object");
    for (const QString &value : values)
        QTest::newRow(qPrintable(value)) << value;
}

void TestDeviceStatusLayout::widestValueIsSeenWhole()
{
    QFETCH(QString, object);
    showAtLeastSize(driveWithTheWidestValues());
    const QLabel *value = shown->label(object);
    QVERIFY(value->width() >= value->fontMetrics().horizontalAdvance(value->text()));
}

void TestDeviceStatusLayout::valuesAreLargeAndStandRightBesideTheirUnits()
{
    shown->showFor(reachedDrive());
    for (const QString &name : values) {
        const QLabel *value = shown->label(name);
        QVERIFY2(value->alignment() & Qt::AlignRight, qPrintable(name));
        QVERIFY2(value->fontInfo().pointSize() > shown->page->fontInfo().pointSize(), qPrintable(name));
    }
}

void TestDeviceStatusLayout::deviceGroupStaysInPlaceWhileDriveIsLost()
{
    shown->showFor(reachedDrive());
    QCoreApplication::processEvents();
    const auto *group = shown->child<QGroupBox>("gbDevice");
    const QRect place = group->geometry();
    const QPoint lamp = shown->label("lDeviceStatusIcon")->pos();
    Z7Device lost = reachedDrive();
    lost.setConnected(false);
    shown->page->DeviceUpdate(lost);
    QCoreApplication::processEvents();
    QCOMPARE(group->geometry(), place);
    QCOMPARE(shown->label("lDeviceStatusIcon")->pos(), lamp);
}

void TestDeviceStatusLayout::statusTextCannotBeTicked()
{
    shown->showFor(reachedDrive());
    auto *text = shown->child<QCheckBox>("cbReady");
    // What a person at the mouse clicks is the window; it finds the widget below the pointer.
    QTest::mouseClick(shown->page->windowHandle(), Qt::LeftButton, Qt::NoModifier,
        text->mapTo(shown->page.get(), text->rect().center()));
    QVERIFY(!text->isChecked());
    QCOMPARE(text->focusPolicy(), Qt::NoFocus);
}

void TestDeviceStatusLayout::statusTextLooksLikeText()
{
    shown->showFor(reachedDrive());
    for (const QCheckBox *text : shown->page->findChildren<QCheckBox *>()) {
        QVERIFY2(text->isEnabled(), qPrintable(text->objectName()));
        QStyleOptionButton option;
        option.initFrom(text);
        const QRect box = text->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, text);
        QVERIFY2(box.isEmpty(), qPrintable(text->objectName()));
    }
}

void TestDeviceStatusLayout::pageHasNothingToEdit()
{
    QVERIFY(shown->page->findChildren<QLineEdit *>().isEmpty());
    QVERIFY(shown->page->paramIds().isEmpty());
    QVERIFY(!shown->page->allParameters);
}

QTEST_MAIN(TestDeviceStatusLayout)

#include "tst_devicestatuslayout.moc"
