#include "tests/shell/shelltest.h"

#include "tests/support/workingfolder.h"

#include <QLabel>
#include <QSerialPortInfo>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace ShellTest {

const QString firstPort = QStringLiteral("ttyUSB0");

namespace {

constexpr int pageRole = Qt::UserRole + 1;
constexpr int deviceRole = Qt::UserRole + 2;

// Number; name; unit; factory value; minimum; maximum; sign; writable at any time; access; variant.
constexpr char namedParameters[] = "1;\"Mode 1\";;0;0;8;\"Unsigned\";1;\"rw\";0;\n"
                                   "2;\"Mode 2\";;0;0;8;\"Unsigned\";1;\"rw\";0;\n"
                                   "11;\"X1\";;100;0;1023;\"Unsigned\";1;\"rw\";0;\n"
                                   "12;\"X2\";;200;0;1023;\"Unsigned\";1;\"rw\";0;\n"
                                   "13;\"X3\";;300;0;1023;\"Unsigned\";1;\"rw\";0;\n"
                                   "23;\"Fixed speed\";\"1/min\";1200;-6000;6000;\"Signed\";1;\"rw\";0;\n";
constexpr int firstFurtherParameter = 100;
constexpr int furtherParameters = 30;

} // namespace

void writeDefinitions(const QString &version)
{
    QByteArray lines = namedParameters;
    for (int number = firstFurtherParameter; number < firstFurtherParameter + furtherParameters; ++number)
        lines += QByteArray::number(number) + ";\"Further\";;0;0;100;\"Unsigned\";1;\"rw\";0;\n";
    WorkingFolder::write(QStringLiteral("Z7ParamDef_%1.csv").arg(version), lines);
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

QTreeWidgetItem *itemOf(const QTreeWidget &tree, int page, int deviceId)
{
    for (QTreeWidgetItemIterator item(const_cast<QTreeWidget *>(&tree)); *item; ++item) {
        if ((*item)->data(0, pageRole) == page && (*item)->data(0, deviceRole) == deviceId)
            return *item;
    }
    return nullptr;
}

void missing(const QWidget &parent, const char *name)
{
    qFatal("%s has no widget %s", qPrintable(parent.objectName()), name);
}

} // namespace ShellTest
