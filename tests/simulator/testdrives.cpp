#include "testdrives.h"

#include <QFile>

namespace {

// Number; name; unit; factory value; minimum; maximum; sign; writable at any time; access; variant; texts.
constexpr char Version123[] = "Number;Name;Unit;Default;Min;Max;Sign;Any;Access;Variant;Texts\n"
                              "1;\"Mode 1\";;0;0;8;;1;rw;0;\n"
                              "11;\"X1\";;100;0;1023;\"Unsigned\";1;rw;0;\n"
                              "12;\"X2\";;200;0;1023;\"Unsigned\";1;rw;0;\n"
                              "13;\"X3\";;300;0;1023;\"Unsigned\";1;rw;0;\n"
                              "23;\"Fixed speed\";1/min;1200;-6000;6000;\"Signed\";1;rw;0;\n"
                              "26;\"Ramp\";;1000;1;30000;\"Unsigned\";1;rw;0;\n"
                              "38;\"I1\";;100;0;1023;\"Unsigned\";1;rw;0;\n"
                              "39;\"I2\";;200;0;1023;\"Unsigned\";1;rw;0;\n"
                              "40;\"I3\";;300;0;1023;\"Unsigned\";1;rw;0;\n"
                              "80;\"Offset\";;-5;-100;100;\"Signed\";1;rw;0;\n"
                              "81;\"Function\";;5;0;12;\"Unsigned\";0;rw;0;\n"
                              "83;\"Serial\";;777;;;\"Unsigned\";1;r;0;\n";
constexpr char Version200[] = "11;\"X1\";;55;0;1023;\"Unsigned\";1;rw;0;\n";

void writeFile(const QString &path, const char *text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) < 0)
        qFatal("cannot write %s", qPrintable(path));
}

} // namespace

TestDefinitions::TestDefinitions()
{
    writeFile(m_folder.filePath(QStringLiteral("Z7ParamDef_V123.csv")), Version123);
    writeFile(m_folder.filePath(QStringLiteral("Z7ParamDef_V200.csv")), Version200);
}

z7sim::BusConfig busWithDrive3(const QString &definitionFolder)
{
    z7sim::BusConfig config;
    config.paced = false;
    config.definitionFolder = definitionFolder;
    z7sim::DriveConfig drive;
    drive.address = 3;
    drive.password = 4711;
    config.drives.append(drive);
    return config;
}
