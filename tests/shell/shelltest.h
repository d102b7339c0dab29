#pragma once

#include "model/device.h"
#include "tests/support/looks.h"

#include <QImage>
#include <QString>
#include <QWidget>

class QTreeWidget;
class QTreeWidgetItem;

/// What the tests of the window share: definitions, drives that need no bus, and what stands where.
namespace ShellTest {

using namespace Looks;

/// The first port that a test plugs in, "ttyUSB0".
extern const QString firstPort;

/// Writes a few parameters of a version into the working folder: the modes 1 and 2, the support points 11, 12
/// and 13 of the speed curve, the fixed speed 0x17, and as many more as make a table that has to be scrolled.
void writeDefinitions(const QString &version = QStringLiteral("V123"));

/// A drive of version V123 behind a listed port that has granted access.
Z7Device drive(int address, const QString &portName = firstPort);
Z7Device driveWithoutAccess(int address, const QString &portName = firstPort);
/// The changes of a person who has typed one value.
Z7DeviceParamSet change(int number, int value);

/// What a label shows as a picture.
QImage pictureOf(const QWidget &parent, const char *label);

/// The widget of that name below `parent`; ends the test program if there is none.
template<typename Widget = QWidget>
Widget &child(const QWidget &parent, const char *name);
/// True if a person sees the widget of that name.
bool sees(const QWidget &parent, const char *name);
/// What stands on a label, whether it is on the screen or not.
QString textOf(const QWidget &parent, const char *label);

/// The tree's item of a page of a drive; null if there is none.
QTreeWidgetItem *itemOf(const QTreeWidget &tree, int page, int deviceId);

[[noreturn]] void missing(const QWidget &parent, const char *name);

template<typename Widget>
Widget &child(const QWidget &parent, const char *name)
{
    auto *found = parent.findChild<Widget *>(QString::fromLatin1(name));
    if (!found)
        missing(parent, name);
    return *found;
}

} // namespace ShellTest
