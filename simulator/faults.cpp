#include "simulator/faults.h"

#include "simulator/frames.h"
#include "simulator/text.h"

#include <algorithm>
#include <limits>

namespace z7sim {

namespace {

constexpr int readReplyLength = 8;
constexpr int writeReplyLength = 10;
constexpr int statusReplyLength = 5;

bool isParameterCommand(quint8 command)
{
    return command == ParameterRead || command == ParameterWrite;
}

bool isWrite(quint8 command)
{
    return command == ParameterWrite;
}

bool isStatusRead(quint8 command)
{
    return command == StatusRead;
}

bool hasStatusByte(quint8 command)
{
    return !isParameterCommand(command) && command != SoftwareId;
}

bool isParameterReply(const QByteArray &reply)
{
    return reply.size() == readReplyLength || reply.size() == writeReplyLength;
}

void setWord(QByteArray &bytes, int position, int word)
{
    bytes[position] = static_cast<char>(word >> 8);
    bytes[position + 1] = static_cast<char>(word);
}

void silence(const Fault &, ReplyPlan &plan)
{
    plan.bytes.clear();
}

void delay(const Fault &fault, ReplyPlan &plan)
{
    plan.delayUs += fault.number("ms") * 1000LL;
}

void split(const Fault &fault, ReplyPlan &plan)
{
    plan.gaps.append({fault.number("at"), fault.number("ms") * 1000LL});
}

void flip(const Fault &fault, ReplyPlan &plan)
{
    const int given = fault.number("byte");
    const int position = given < 0 ? plan.bytes.size() + given : given;
    if (position >= 0 && position < plan.bytes.size())
        plan.bytes[position] = static_cast<char>(plan.bytes.at(position) ^ (1 << (fault.number("bit") & 7)));
}

void truncate(const Fault &fault, ReplyPlan &plan)
{
    plan.bytes.truncate(fault.number("bytes"));
}

void lengthen(const Fault &fault, ReplyPlan &plan)
{
    plan.bytes.append(QByteArray(fault.number("bytes"), static_cast<char>(fault.number("fill"))));
}

void answerFromElsewhere(const Fault &fault, ReplyPlan &plan)
{
    if (plan.bytes.size() > 1)
        plan.bytes[1] =
            static_cast<char>(fault.number("address") ? fault.number("address") : plan.bytes.at(1) + 1);
}

void answerOtherNumber(const Fault &fault, ReplyPlan &plan)
{
    if (isParameterReply(plan.bytes))
        setWord(plan.bytes, 2, fault.number("number") ? fault.number("number") : wordAt(plan.bytes, 2) + 1);
}

void prepend(const Fault &fault, ReplyPlan &plan)
{
    plan.bytes.prepend(fault.bytes);
}

void append(const Fault &fault, ReplyPlan &plan)
{
    plan.bytes.append(fault.bytes);
}

void replace(const Fault &fault, ReplyPlan &plan)
{
    plan.bytes = fault.bytes;
}

void overrideStatus(const Fault &fault, ReplyPlan &plan)
{
    if (plan.bytes.size() > 2)
        plan.bytes[2] = static_cast<char>(fault.number("value"));
}

void overrideCommunication(const Fault &fault, ReplyPlan &plan)
{
    if (plan.bytes.size() == statusReplyLength)
        plan.bytes[3] = static_cast<char>(fault.number("value"));
}

void overrideFlags(const Fault &fault, ReplyPlan &plan)
{
    if (isParameterReply(plan.bytes))
        plan.bytes[plan.bytes.size() - 2] = static_cast<char>(fault.number("value"));
}

void overrideConflict(const Fault &fault, ReplyPlan &plan)
{
    if (plan.bytes.size() == writeReplyLength)
        setWord(plan.bytes, 6, fault.number("value"));
}

void answerShort(const Fault &fault, ReplyPlan &plan)
{
    if (plan.bytes.size() > 1)
        plan.bytes = shortErrorReply(byteAt(plan.bytes, 1), static_cast<quint8>(fault.number("bits")));
}

const FaultKind *findKind(const QByteArray &name)
{
    const auto &kinds = faultKinds();
    const auto hasName = [&name](const FaultKind &kind) { return name == kind.name; };
    const auto found = std::find_if(kinds.begin(), kinds.end(), hasName);
    return found == kinds.end() ? nullptr : &*found;
}

bool setOption(Fault &fault, const QByteArray &name, const QByteArray &value)
{
    if (name == "checksum" && (value == "right" || value == "keep"))
        fault.resealed = value == "right";
    else if (name == "effect" && (value == "none" || value == "kept"))
        fault.withoutEffect = value == "none";
    else
        return false;
    return true;
}

bool setBytes(Fault &fault, const QByteArray &name, const QByteArray &value)
{
    if (name != "hex" || !parseWords(fault.kind->arguments).named.contains(name))
        return false;
    const std::optional<QByteArray> bytes = parseHex(value);
    fault.bytes = bytes.value_or(QByteArray());
    return bytes.has_value();
}

bool setNumber(Fault &fault, const QByteArray &name, const QByteArray &value)
{
    const std::optional<int> number = parseNumber(value);
    if (!number)
        return false;
    if (name == "count")
        fault.remaining = *number;
    else if (name == "skip")
        fault.skip = *number;
    else if (name == "command")
        fault.command = *number;
    else if (name == "param")
        fault.parameter = *number;
    else if (fault.numbers.contains(name))
        fault.numbers.insert(name, *number);
    else
        return false;
    return true;
}

void setDefaults(Fault &fault)
{
    fault.resealed = fault.kind->resealsByDefault;
    fault.remaining =
        fault.kind->name == QByteArray(resetFault) || fault.kind->name == QByteArray(pullFault) ? 1 : -1;
    const auto defaults = parseWords(fault.kind->arguments).named;
    for (auto entry = defaults.begin(); entry != defaults.end(); ++entry) {
        if (!setBytes(fault, entry.key(), entry.value()))
            fault.numbers.insert(entry.key(), parseNumber(entry.value()).value_or(0));
    }
}

} // namespace

const QVector<FaultKind> &faultKinds()
{
    static const QVector<FaultKind> kinds = {
        {"no-answer", "", "the drive keeps silent", false, nullptr, silence},
        {"late", "ms=50", "the reply begins so much later", false, nullptr, delay},
        {"split", "at=1 ms=30", "a gap behind so many bytes", false, nullptr, split},
        {"flip", "byte=-1 bit=0", "a flipped bit; negative bytes count from the end", false, nullptr, flip},
        {"truncate", "bytes=1", "only so many bytes", false, nullptr, truncate},
        {"longer", "bytes=1 fill=0", "so many bytes too many", false, nullptr, lengthen},
        {"wrong-address", "address=0", "another address in the reply, 0 for the next one", true, nullptr,
            answerFromElsewhere},
        {"wrong-number", "number=0", "another parameter number, 0 for the next one", true, isParameterCommand,
            answerOtherNumber},
        {"garbage-before", "hex=FF", "bytes before the reply", false, nullptr, prepend},
        {"garbage-after", "hex=FF", "bytes after the reply", false, nullptr, append},
        {"raw", "hex=", "exactly these bytes, even from a silent drive", false, nullptr, replace},
        {"status", "value=0", "another status byte", true, hasStatusByte, overrideStatus},
        {"comm-status", "value=2", "another communication status", true, isStatusRead, overrideCommunication},
        {"flags", "value=0x20", "other result flags", true, isParameterCommand, overrideFlags},
        {"conflict", "value=1", "another conflict word", true, isWrite, overrideConflict},
        {"short-error", "bits=2", "the short error reply with these bits", false, nullptr, answerShort},
        {resetFault, "", "the drive loses power for a moment before the exchange (once)", false, nullptr,
            nullptr},
        {pullFault, "", "the adapter is pulled at the exchange (once)", false, nullptr, nullptr},
        {babbleFault, "byte=0x55 ms=5", "a byte again and again, count= is the number of bytes", false,
            nullptr, nullptr},
    };
    return kinds;
}

QByteArray parseFault(const QByteArray &text, Fault &fault)
{
    const Words words = parseWords(text);
    fault.text = text;
    fault.kind = findKind(words.plain.value(0));
    if (!fault.kind || words.plain.size() > 1)
        return "no fault: " + words.plain.join(' ');
    setDefaults(fault);
    for (auto entry = words.named.begin(); entry != words.named.end(); ++entry) {
        const bool known = setOption(fault, entry.key(), entry.value())
            || setBytes(fault, entry.key(), entry.value()) || setNumber(fault, entry.key(), entry.value());
        if (!known)
            return "not for this fault: " + entry.key() + "=" + entry.value();
    }
    return {};
}

bool Fault::matches(const QByteArray &request) const
{
    const quint8 requestCommand = byteAt(request, 0);
    if (kind->name == QByteArray(babbleFault) || (kind->touches && !kind->touches(requestCommand)))
        return false;
    if (command && *command != requestCommand)
        return false;
    return !parameter || parameter == parameterNumber(request);
}

void Fault::apply(ReplyPlan &plan) const
{
    if (kind->change)
        kind->change(*this, plan);
    if (resealed && !plan.bytes.isEmpty())
        plan.bytes = z7sim::resealed(plan.bytes);
}

void FaultList::add(const Fault &fault, qint64 now)
{
    m_faults.append(fault);
    if (isBabbling())
        m_nextBabble = now;
}

QVector<Fault> FaultList::take(const QByteArray &request)
{
    QVector<Fault> taken;
    for (Fault &fault : m_faults) {
        if (!fault.matches(request))
            continue;
        if (fault.skip > 0) {
            --fault.skip;
            continue;
        }
        taken.append(fault);
        if (fault.remaining > 0)
            --fault.remaining;
    }
    dropSpent();
    return taken;
}

void FaultList::dropSpent()
{
    const auto isSpent = [](const Fault &fault) { return fault.remaining == 0; };
    m_faults.erase(std::remove_if(m_faults.begin(), m_faults.end(), isSpent), m_faults.end());
}

bool FaultList::isBabbling() const
{
    return nextBabble() != std::numeric_limits<qint64>::max();
}

qint64 FaultList::nextBabble() const
{
    const auto babbles = [](const Fault &fault) { return fault.kind->name == QByteArray(babbleFault); };
    const bool any = std::any_of(m_faults.begin(), m_faults.end(), babbles);
    return any ? m_nextBabble : std::numeric_limits<qint64>::max();
}

// Several babblers of one list would only be a faster one, so the first sets the pace.
QByteArray FaultList::takeBabble(qint64 now)
{
    QByteArray bytes;
    for (Fault &fault : m_faults) {
        if (fault.kind->name != QByteArray(babbleFault) || now < m_nextBabble)
            continue;
        bytes.append(static_cast<char>(fault.number("byte")));
        m_nextBabble = now + std::max(1, fault.number("ms")) * 1000LL;
        if (fault.remaining > 0)
            --fault.remaining;
    }
    dropSpent();
    return bytes;
}

} // namespace z7sim
