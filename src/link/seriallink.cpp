#include "link/seriallink.h"

#include "common/lifetime.h"
#include "common/regsettings.h"
#include "common/services.h"
#include "common/texts.h"
#include "link/checksum.h"
#include "link/serialport.h"
#include "link/telegram.h"

#include <QLocale>

namespace {

constexpr int kReceiveBit = 0;
constexpr int kSendBit = 1;
constexpr int kStringPortOff = 53;

// The hexadecimal monitor: when, a blank line, then every byte as two digits and a blank.
QString monitorText(const QDateTime& when, const Bytes& bytes) {
    QString text = QLocale::system().toString(when.date(), QLocale::ShortFormat) +
                   QLatin1Char(' ') + when.time().toString(QStringLiteral("HH:mm:ss")) +
                   QStringLiteral("\r\n\r\n");
    if (bytes.empty()) return text;
    return text + QString::fromLatin1(toByteArray(bytes).toHex(' ').toUpper()) + QLatin1Char(' ');
}

// A search telegram of the second family (kind 7) or the own family (kind 10): twelve
// bytes, command 1, serial number 0. Only the tool itself sends these.
bool isSearchTelegram(const Bytes& t) {
    if (t.size() != 12 || t[3] != 1 || (t[2] != 7 && t[2] != telegram::kOwnDeviceKind))
        return false;
    return t[4] == 0 && t[5] == 0 && t[6] == 0 && t[7] == 0;
}

// The own transmission heard back. A telegram equal to the last one sent still counts as
// received when it is a command 1 of the own family.
bool isEcho(const Bytes& t, const Bytes& lastSent) {
    if (t != lastSent) return false;
    return !(t.size() > 3 && t[2] == telegram::kOwnDeviceKind && t[3] == 1);
}

QString portEntry(int port, const QString& deviceName) {
    if (deviceName.isEmpty()) return QString::number(port);
    return QStringLiteral("%1  (%2)").arg(port).arg(deviceName);
}

} // namespace

SerialLink::SerialLink(RegSettings& settings, const Texts& texts, const Clock& clock,
                       const Lifetime& life, SerialPortDevice* port)
    : QObject()
    , m_settings(settings)
    , m_texts(texts)
    , m_clock(clock)
    , m_life(life)
    , m_port(port) {
    connect(&m_tmrToRx, &FormTimer::timeout, this, &SerialLink::OnToRxTick);
    connect(&m_tmrZeroCommand, &FormTimer::timeout, this, &SerialLink::SearchStepDue);
    connect(&m_tmrReceiveLED, &FormTimer::timeout, this, [this] {
        ReceiveLEDOff();
        m_tmrReceiveLED.disable();
    });
    connect(&m_tmrPortWatch, &FormTimer::timeout, this, &SerialLink::OnPortWatchTick);
    connect(&m_tmrSendLED, &FormTimer::timeout, this, [this] {
        SendLEDOff();
        m_tmrSendLED.disable();
    });
    if (m_port) {
        // Later bytes of a burst don't prolong the collecting window.
        connect(m_port, &SerialPortDevice::received, this, [this] { m_tmrToRx.enable(); });
        // The port closed itself; a pending collecting window has nothing left to read.
        connect(m_port, &SerialPortDevice::lost, this, &SerialLink::OnPortLost);
    }
}

void SerialLink::MakeSendString(const Bytes& body, bool createCRC) {
    const std::optional<Bytes> frame = telegram::MakeSendFrame(body, createCRC);
    if (frame) DataTx(*frame);
}

void SerialLink::DataTx(const Bytes& s) {
    if (!IsPortOpen()) return;
    Q_EMIT MonitorSent(monitorText(m_clock.now(), s));
    m_lastSent = s;
    if (m_sendEnabled) {
        m_port->write(toByteArray(s));
        SendLEDOn();
    }
    RestartSearchTimer();
}

void SerialLink::RcvDataGet() {
    if (!IsPortOpen()) return;
    ReceiveLEDYellow();
    const Bytes burst = toBytes(m_port->readAll());
    Q_EMIT MonitorReceived(monitorText(m_clock.now(), burst));

    std::int32_t first = 0;
    std::int32_t last = 0;
    if (checksum::FindTelegram(burst, first, last) < 0) return;
    const Bytes t(burst.begin() + first, burst.begin() + last + 1);
    if (isEcho(t, m_lastSent) || isSearchTelegram(t)) return;

    const std::optional<Bytes> stamped = telegram::StampTelegram(t, m_clock.now());
    if (!stamped) return;
    m_dataFromFile = false;
    Q_EMIT TelegramReceived(*stamped);
}

void SerialLink::RestartSearchTimer() {
    m_tmrZeroCommand.restart();
}

void SerialLink::ReceiveLEDYellow() {
    Q_EMIT ReceiveLampChanged(ReceiveLamp::BytesArrived);
    m_tmrReceiveLED.enable();
}

void SerialLink::ReceiveLEDGreen() {
    Q_EMIT ReceiveLampChanged(ReceiveLamp::TelegramAccepted);
    m_tmrReceiveLED.enable();
    SetIconBit(kReceiveBit, true);
}

void SerialLink::ReceiveLEDOff() {
    Q_EMIT ReceiveLampChanged(ReceiveLamp::Dark);
    SetIconBit(kReceiveBit, false);
}

void SerialLink::SendLEDOn() {
    Q_EMIT SendLampChanged(true);
    m_tmrSendLED.enable();
    SetIconBit(kSendBit, true);
}

void SerialLink::SendLEDOff() {
    Q_EMIT SendLampChanged(false);
    SetIconBit(kSendBit, false);
}

void SerialLink::SwitchToComPort(int portNumber) {
    // The user's choice ends the wait for a port that went away.
    m_tmrPortWatch.disable();
    ClosePort();
    m_portFailure = {};
    if (portNumber >= kFirstPort && portNumber <= kLastPort) {
        if (!m_port || !m_port->open(portNumber)) {
            if (m_port) m_portFailure = m_port->openFailure();
            ClosePort();
            ShowPortReason();
            return;
        }
    } else {
        portNumber = 0;
    }
    ShowPortReason();
    if (portNumber != m_settings.GetPort()) m_settings.SetPort(portNumber);
}

bool SerialLink::IsPortOpen() const {
    return m_port && m_port->isOpen();
}

void SerialLink::ClosePort() {
    // Closed on purpose (a saved file in view, shutdown): not to be opened behind the user's back.
    m_tmrPortWatch.disable();
    if (IsPortOpen()) m_port->close();
}

SerialLink::PortList SerialLink::ProbePorts() {
    PortList list{{m_texts.str(kStringPortOff)}, {PortOpenFailure{}}};
    SerialPortDevice* device = m_port;
    if (!device) return list;
    const int rememberedPort = device->portNumber();
    const bool wasOpen = device->isOpen();
    for (int i = kFirstPort; i <= kLastPort; ++i) {
        if (device->isOpen()) device->close();
        const bool available = device->open(i);
        list.entries << (available ? portEntry(i, device->deviceName(i)) : kUnavailablePort);
        list.failures << (available ? PortOpenFailure{} : device->openFailure());
        if (device->isOpen()) device->close();
    }
    // Probing took the port away; give it back as it was.
    if (wasOpen) device->open(rememberedPort);
    return list;
}

int SerialLink::OpenPortNumber() const {
    return IsPortOpen() ? m_port->portNumber() : 0;
}

QString SerialLink::PortReason() const {
    if (IsPortOpen()) return {};
    return Describe(m_portFailure);
}

QString SerialLink::Describe(const PortOpenFailure& failure) const {
    return describePortOpenError(failure, m_texts.language());
}

void SerialLink::ShowPortReason() {
    Q_EMIT PortReasonChanged(PortReason());
}

void SerialLink::OnPortLost() {
    // A pending collecting window has nothing left to read.
    m_tmrToRx.disable();
    m_portFailure = m_port->openFailure();
    if (!m_portFailure.failed()) m_portFailure.kind = PortOpenFailure::Kind::Other;
    m_portFailure.vanished = true;
    ShowPortReason();
    // Not while a saved file is in view or the tool is closing: then the port stays closed.
    if (!m_life.closing()) m_tmrPortWatch.enable();
}

void SerialLink::OnPortWatchTick() {
    if (!m_port || m_life.closing()) {
        m_tmrPortWatch.disable();
        return;
    }
    if (!m_port->reopen()) {
        // Still away, or back but refused (busy, no permission): say which.
        const PortOpenFailure failure = m_port->openFailure();
        if (failure.failed() && failure.kind != PortOpenFailure::Kind::NoDevice) {
            m_portFailure = failure;
            m_portFailure.vanished = true;
            ShowPortReason();
        }
        return;
    }
    m_tmrPortWatch.disable();
    m_portFailure = {};
    ShowPortReason();
    Q_EMIT PortReturned();
    // The search starts again at once instead of after a silent search step.
    Q_EMIT SearchStepDue();
}

void SerialLink::StopTimers() {
    m_tmrPortWatch.disable();
    m_tmrToRx.disable();
    m_tmrZeroCommand.disable();
    m_tmrReceiveLED.disable();
    m_tmrSendLED.disable();
}

void SerialLink::OnToRxTick() {
    m_tmrToRx.disable();
    if (IsPortOpen()) RcvDataGet();
}

void SerialLink::SetIconBit(int bit, bool on) {
    const int mask = 1 << bit;
    const int index = on ? (m_iconIndex | mask) : (m_iconIndex & ~mask);
    if (index == m_iconIndex) return;
    m_iconIndex = index;
    Q_EMIT IconIndexChanged(m_iconIndex);
}

#include "moc_seriallink.cpp"
