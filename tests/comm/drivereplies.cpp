#include "tests/comm/drivereplies.h"

#include "control/services/services.h"
#include "model/parameterdefinitions.h"

#include <numeric>

namespace {

const QString version = QStringLiteral("V123");

Z7ParamDefinitions *definitions()
{
    return Z7Services::instance()->definitions(version);
}

} // namespace

QByteArray frame(const QByteArray &hex)
{
    const QByteArray bytes = QByteArray::fromHex(hex);
    const auto sum = std::accumulate(bytes.begin(), bytes.end(), 0);
    return bytes + static_cast<char>(sum ^ 0x55);
}

void loadDefinitionsOfV123()
{
    for (const char *line : {
             "1;Modus;;0;;;Unsigned;1;;0;",
             "2;Untermodus;;0;;;Unsigned;1;;0;",
             "11;Drehzahl 1;rpm;100;;;Unsigned;1;;0;",
             "80;Offset;;0;;;Signed;1;;0;",
             "82;Adresse;;1;;;Unsigned;1;;0;",
             "256;Rampe;ms;0;;;Unsigned;1;;0;",
             "32769;Ist-Drehzahl;rpm;0;;;Signed;1;r;0;",
             "32771;Ist-Position, Bruchteil;;0;;;Unsigned;1;r;0;",
             "32772;Ist-Position;;0;;;Signed;1;r;0;",
             "32773;Ist-Temperatur;;0;;;Signed;1;r;0;",
             "32775;Ist-Strom;mA;0;;;Unsigned;1;r;0;",
             "32776;Ausgänge;;0;;;Unsigned;1;r;0;",
             "32777;Eingänge;;0;;;Unsigned;1;r;0;",
             "32781;Analogeingang;mV;0;;;Unsigned;1;r;0;",
         })
        definitions()->parseLine(QString::fromUtf8(line));
}

Z7Device drive3()
{
    Z7Device device = unknownDrive3();
    device.softwareVersion = version;
    device.setParameterSet(definitions()->emptyParameterSet());
    return device;
}

Z7Device unknownDrive3()
{
    Z7Device device;
    device.assignAddress(3);
    device.password = 4711;
    return device;
}

Z7DeviceParam enteredParam(int number, int value)
{
    return Z7DeviceParam(number, value, definitions()->isUnsigned(number), true);
}

Z7DeviceParam troubledParam(int number)
{
    Z7DeviceParam param = enteredParam(number, 100);
    param.valid = true;
    param.accessDenied = true;
    param.writeFailed = true;
    param.readFailed = true;
    param.conflict = true;
    param.error = 9;
    return param;
}

QByteArray describe(const Z7DeviceParam &param)
{
    QByteArrayList words {param.hasValue ? QByteArray::number(param.value) : QByteArray("none")};
    const auto add = [&words](bool flag, const QByteArray &word) {
        if (flag)
            words << word;
    };
    add(param.valid, "valid");
    add(param.accessDenied, "accessDenied");
    add(param.writeFailed, "writeFailed");
    add(param.readFailed, "readFailed");
    add(param.conflict, "conflict");
    add(param.error != 0, "error " + QByteArray::number(param.error));
    return words.join(' ');
}

QByteArray describe(const Z7TelegramStack &stack, int number)
{
    return describe(stack.device().parameterSet.value(number));
}

QByteArrayList statusReplies()
{
    return {
        frame("89 03 00"), // access granted
        frame("89 03 00"),
        frame("85 03 80 00"), // ready
        versionReply("56 01 02 03"),
        frame("84 03 00 01 00 03 00"), // operation mode 3/2
        frame("84 03 00 02 00 02 00"),
        frame("84 03 80 01 05 dc 00"), // speed 1500
        frame("84 03 80 07 00 78 00"), // current 120
        frame("84 03 80 05 00 1e 00"), // temperature 30
        frame("84 03 80 03 00 00 00"), // position 7 turns
        frame("84 03 80 04 00 07 00"),
        frame("84 03 80 08 00 01 00"), // output 1
        frame("84 03 80 09 00 02 00"), // input 2
        frame("84 03 80 0d 01 00 00"), // analogue input 256
    };
}

QByteArrayList statusRepliesWith(StatusTelegram place, const QByteArray &reply)
{
    QByteArrayList replies = statusReplies();
    replies[place] = reply;
    return replies;
}

QByteArray versionReply(const QByteArray &hex)
{
    const QByteArray notRead(12, '\0');
    return frame("87 03" + QByteArray(16, '\0').toHex() + hex + notRead.toHex());
}

int answer(Z7TelegramStack &stack, const QByteArrayList &replies)
{
    int answered = 0;
    while (answered < replies.size() && !stack.isEmpty() && !stack.device().hasError())
        stack.processReply(replies.at(answered++));
    return answered;
}

Z7Device afterPass(const Z7Device &device, StatusTelegram place, const QByteArray &reply)
{
    Z7DeviceStatusTelegramStack stack(device);
    answer(stack, statusRepliesWith(place, reply));
    return stack.device();
}

QByteArrayList takeRequests(Z7TelegramStack &stack)
{
    QByteArrayList requests;
    while (!stack.isEmpty()) {
        requests << stack.currentTelegram()->request().toHex(' ');
        stack.processReply(QByteArray());
    }
    return requests;
}

QByteArrayList takeRequestsBehindStatus(Z7TelegramStack &stack)
{
    return takeRequests(stack).mid(StatusTelegramCount);
}
