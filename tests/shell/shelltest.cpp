#include "tests/shell/shelltest.h"

#include "control/services/services.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QSerialPortInfo>
#include <QTableWidget>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QtTest>

namespace ShellTest {

const QString firstPort = QStringLiteral("ttyUSB0");

namespace {

constexpr int pageRole = Qt::UserRole + 1;
constexpr int deviceRole = Qt::UserRole + 2;
constexpr int numberColumn = 0;
constexpr int userColumn = 4;

// Number; name; unit; factory value; minimum; maximum; sign; writable at any time; access; variant.
constexpr char namedParameters[] = "1;\"Mode 1\";;0;0;8;\"Unsigned\";1;\"rw\";0;\n"
                                   "2;\"Mode 2\";;0;0;8;\"Unsigned\";1;\"rw\";0;\n"
                                   "11;\"X1\";;100;0;1023;\"Unsigned\";1;\"rw\";0;\n"
                                   "12;\"X2\";;200;0;1023;\"Unsigned\";1;\"rw\";0;\n"
                                   "13;\"X3\";;300;0;1023;\"Unsigned\";1;\"rw\";0;\n"
                                   "23;\"Fixed speed\";\"1/min\";1200;-6000;6000;\"Signed\";1;\"rw\";0;\n";
constexpr int firstFurtherParameter = 100;
constexpr int furtherParameters = 30;

QPoint middleOf(const QTreeWidget &tree, QTreeWidgetItem *item)
{
    return tree.visualItemRect(item).center();
}

} // namespace

void writeDefinitions(const QString &version)
{
    QByteArray lines = namedParameters;
    for (int number = firstFurtherParameter; number < firstFurtherParameter + furtherParameters; ++number)
        lines += QByteArray::number(number) + ";\"Further\";;0;0;100;\"Unsigned\";1;\"rw\";0;\n";
    QFile file(QStringLiteral("Z7ParamDef_") + version + QStringLiteral(".csv"));
    if (!file.open(QIODevice::WriteOnly) || file.write(lines) < 0)
        qFatal("cannot write %s", qPrintable(file.fileName()));
}

void forgetServices()
{
    Z7Services::shutdown();
    for (const QString &file : QDir().entryList({QStringLiteral("*.z7lang"), QStringLiteral("*.ini")}))
        QFile::remove(file);
}

Z7Device driveWithoutAccess(int address, const QString &portName)
{
    Z7Device device {QSerialPortInfo(portName)};
    device.assignAddress(address);
    device.setSoftwareVersion(QStringLiteral("V123"));
    return device;
}

Z7Device drive(int address, const QString &portName)
{
    Z7Device device = driveWithoutAccess(address, portName);
    device.setAccessGranted(true);
    return device;
}

Z7DeviceParamSet change(int number, int value)
{
    Z7DeviceParamSet changes(QStringLiteral("V123"));
    changes.insert(Z7DeviceParam(number, value, 1, true));
    return changes;
}

QImage image(const QIcon &icon, int size)
{
    return icon.pixmap(QSize(size, size)).toImage();
}

QImage image(const char *resource, int size)
{
    return image(QIcon(QString::fromLatin1(resource)), size);
}

QImage pictureOf(const QWidget &parent, const char *label)
{
    return child<QLabel>(parent, label).pixmap(Qt::ReturnByValue).toImage();
}

bool sees(const QWidget &parent, const char *name)
{
    return child(parent, name).isVisible();
}

QString textOf(const QWidget &parent, const char *label)
{
    return child<QLabel>(parent, label).text();
}

void press(const QWidget &parent, const char *button)
{
    QTest::mouseClick(&child<QAbstractButton>(parent, button), Qt::LeftButton);
}

void type(const QWidget &parent, const char *field, const QString &text)
{
    auto &edit = child<QLineEdit>(parent, field);
    QTest::mouseClick(&edit, Qt::LeftButton);
    edit.selectAll();
    QTest::keyClick(&edit, Qt::Key_Delete);
    QTest::keyClicks(&edit, text);
}

void typeIntoTable(const QWidget &parent, int number, const QString &text)
{
    auto &table = child<QTableWidget>(parent, "ParameterTable");
    for (int row = 0; row < table.rowCount(); ++row) {
        if (table.item(row, numberColumn)->text().toInt() == number)
            QTest::keyClicks(table.cellWidget(row, userColumn), text);
    }
}

QTreeWidgetItem *itemOf(const QTreeWidget &tree, int page, int deviceId)
{
    for (QTreeWidgetItemIterator item(const_cast<QTreeWidget *>(&tree)); *item; ++item) {
        if ((*item)->data(0, pageRole) == page && (*item)->data(0, deviceRole) == deviceId)
            return *item;
    }
    return nullptr;
}

void pressAt(QTreeWidget &tree, QTreeWidgetItem *item)
{
    tree.scrollToItem(item);
    QTest::mousePress(tree.viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(tree, item));
}

void releaseAt(QTreeWidget &tree, QTreeWidgetItem *item)
{
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(tree, item));
}

void click(QTreeWidget &tree, QTreeWidgetItem *item)
{
    pressAt(tree, item);
    releaseAt(tree, item);
}

void missing(const QWidget &parent, const char *name)
{
    qFatal("%s has no widget %s", qPrintable(parent.objectName()), name);
}

} // namespace ShellTest
