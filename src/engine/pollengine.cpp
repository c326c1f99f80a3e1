#include "engine/pollengine.h"

#include "link/devicesession.h"
#include "link/seriallink.h"
#include "values/conversions.h"
#include "values/devicevalues.h"

namespace {

constexpr int kAutoSendMs = 99;
constexpr int kQueuedWriteMs = 299;

bool isRead(int command) {
    return command >= 1 && command <= 5;
}

bool isWrite(int command) {
    return command >= 129 && command <= 139;
}

// After a write, the read telegram in which the device reports what was just written.
int readBackAfter(int writeCommand) {
    switch (writeCommand) {
    case 132:
    case 137:
    case 138:
        return 3;
    case 136:
        return 5;
    default:
        return 2;
    }
}

Bytes writeBlock(const ValueStore& values, int command) {
    switch (command) {
    case 129:
        return values.GetDeviceParameter();
    case 130:
        return values.GetAirFlowInitParameter();
    case 131:
        return values.GetResetAlarmAndFault();
    case 132:
        return values.GetResetMessages();
    case 133:
        return values.GetLocalizationParameter();
    case 134:
        return values.GetLocalizationParameterLearnMode();
    case 135:
        return values.GetLocalizationAbortLearnMode();
    case 136:
        return values.GetExtinguisherParameter();
    case 137:
        return values.GetTemperatureParameter();
    case 138:
        return values.GetRelayParameter();
    case 139:
        return values.GetExtinguisherIdent();
    default:
        return {};
    }
}

} // namespace

PollEngine::PollEngine(const DeviceSession& session, SerialLink& link, DeviceValues& values)
    : QObject()
    , m_session(session)
    , m_link(link)
    , m_values(values) {
    Stop();
    connect(&m_tmrAutoSend, &FormTimer::timeout, this, &PollEngine::tmrAutoSend_Timer);
    connect(&m_tmrTimeout, &FormTimer::timeout, this, &PollEngine::tmrTimeout_Timer);
}

void PollEngine::SendCommand(int command) {
    m_tmrTimeout.disable();
    m_tmrAutoSend.disable();
    m_tmrAutoSend.setInterval(kQueuedWriteMs);
    if (!m_writeQueued) m_readBeforeWrite = m_nextCommand;
    m_writeQueued = true;
    m_nextCommand = command;
    m_tmrAutoSend.enable();
}

void PollEngine::CancelWrite() {
    if (!m_writeQueued) return;
    m_writeQueued = false;
    m_nextCommand = m_readBeforeWrite;
}

void PollEngine::tmrAutoSend_Timer() {
    if (isRead(m_nextCommand))
        SendRead();
    else if (isWrite(m_nextCommand))
        SendWrite();
    else
        m_nextCommand = 2;
    m_writeQueued = false;
    m_tmrTimeout.restart();
    m_tmrAutoSend.disable();
    m_tmrAutoSend.setInterval(kAutoSendMs);
}

void PollEngine::tmrTimeout_Timer() {
    m_tmrAutoSend.restart();
    m_tmrTimeout.disable();
}

void PollEngine::Stop() {
    m_tmrAutoSend.disable();
    m_tmrTimeout.disable();
}

// A serial number that is no number sends nothing; the tick still goes on, so the engine
// keeps its pace until the session holds a number again.
void PollEngine::SendRead() {
    const QString& serial = m_session.serialNo();
    Bytes body{10, static_cast<std::uint8_t>(m_nextCommand), 0, 0, 0, 0};
    if (ULong2Byte(serial, body[2], body[3], body[4], body[5]) != 0) return;
    m_link.MakeSendString(body, true);
}

// The write goes out once: the next tick already asks for its read-back.
void PollEngine::SendWrite() {
    const int command = m_nextCommand;
    const ValueStore* values = m_values.get();
    const Bytes block = values ? writeBlock(*values, command) : Bytes{};
    m_nextCommand = readBackAfter(command);
    if (block.empty()) return;
    m_link.MakeSendString(block, true);
    Q_EMIT WriteSent(command);
}

#include "moc_pollengine.cpp"
