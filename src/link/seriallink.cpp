#include "link/seriallink.h"

#include "common/appstate.h"
#include "common/colors.h"
#include "common/dialog_elements.h"
#include "common/startwindow_elements.h"
#include "link/checksum.h"
#include "link/serialport.h"
#include "link/telegram.h"

#include <QLocale>

namespace {

const QString kUnavailablePort = QStringLiteral("--");

constexpr int kFirstPort = 1;
constexpr int kLastPort = 16;
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

// A reason shows only while there is one: an empty line would read as a nameless label.
void setReason(Form& window, const QString& element, const QString& reason) {
    window.setCaption(element, reason);
    window.setVisible(element, !reason.isEmpty());
}

QString portEntry(int port, const QString& deviceName) {
    if (deviceName.isEmpty()) return QString::number(port);
    return QStringLiteral("%1  (%2)").arg(port).arg(deviceName);
}

} // namespace

SerialLink::SerialLink(AppState& state, SerialPortDevice* port)
    : QObject()
    , m_state(state)
    , m_port(port) {
    connect(&m_tmrToRx, &FormTimer::timeout, this, &SerialLink::onToRxTick);
    connect(&m_tmrZeroCommand, &FormTimer::timeout, this, &SerialLink::searchStepDue);
    connect(&m_tmrReceiveLED, &FormTimer::timeout, this, [this] {
        ReceiveLEDOff();
        m_tmrReceiveLED.disable();
    });
    connect(&m_tmrPortWatch, &FormTimer::timeout, this, &SerialLink::onPortWatchTick);
    connect(&m_tmrSendLED, &FormTimer::timeout, this, [this] {
        SendLEDOff();
        m_tmrSendLED.disable();
    });
    if (m_port) {
        // Later bytes of a burst don't prolong the collecting window.
        connect(m_port, &SerialPortDevice::received, this, [this] { m_tmrToRx.enable(); });
        // The port closed itself; a pending collecting window has nothing left to read.
        connect(m_port, &SerialPortDevice::lost, this, &SerialLink::onPortLost);
    }
    startWindow().setChecked(frmMQ27D::chkSendEnable, true);
    startWindow().setVisible(frmMQ27D::lblPortReason, false);
    m_state.forms.frmInterface().setVisible(frmInterface::lblPortReason, false);
    connect(&m_state.forms.frmInterface(), &Form::clicked, this, &SerialLink::onInterfaceClicked);
    connect(&m_state.forms.frmInterface(), &Form::edited, this, [this](const QString& element) {
        if (element == frmInterface::cboPort) showProbeReason();
    });
}

void SerialLink::MakeSendString(const Bytes& body, bool createCRC) {
    const std::optional<Bytes> frame = telegram::MakeSendFrame(body, createCRC);
    if (frame) DataTx(*frame);
}

void SerialLink::DataTx(const Bytes& s) {
    if (!isPortOpen()) return;
    startWindow().setCaption(frmMQ27D::txtComSend, monitorText(m_state.now(), s));
    m_lastSent = s;
    if (startWindow().isChecked(frmMQ27D::chkSendEnable)) {
        m_port->write(toByteArray(s));
        SendLEDOn();
    }
    RestartSearchTimer();
}

void SerialLink::RcvDataGet() {
    if (!isPortOpen()) return;
    ReceiveLEDYellow();
    const Bytes burst = toBytes(m_port->readAll());
    startWindow().setCaption(frmMQ27D::txtComReceive, monitorText(m_state.now(), burst));

    std::int32_t first = 0;
    std::int32_t last = 0;
    if (checksum::FindTelegram(burst, first, last) < 0) return;
    const Bytes t(burst.begin() + first, burst.begin() + last + 1);
    if (isEcho(t, m_lastSent) || isSearchTelegram(t)) return;

    const std::optional<Bytes> stamped = telegram::StampTelegram(t, m_state.now());
    if (!stamped) return;
    m_dataFromFile = false;
    Q_EMIT telegramReceived(*stamped);
}

void SerialLink::RestartSearchTimer() {
    m_tmrZeroCommand.restart();
}

void SerialLink::ReceiveLEDYellow() {
    startWindow().setBackColor(frmMQ27D::picReceive, colors::kYellow);
    m_tmrReceiveLED.enable();
}

void SerialLink::ReceiveLEDGreen() {
    startWindow().setBackColor(frmMQ27D::picReceive, colors::kGreen);
    m_tmrReceiveLED.enable();
    setIconBit(kReceiveBit, true);
}

void SerialLink::ReceiveLEDOff() {
    startWindow().setBackColor(frmMQ27D::picReceive, colors::kDefault);
    setIconBit(kReceiveBit, false);
}

void SerialLink::SendLEDOn() {
    startWindow().setForeColor(frmMQ27D::picReceive, colors::kRed);
    m_tmrSendLED.enable();
    setIconBit(kSendBit, true);
}

void SerialLink::SendLEDOff() {
    startWindow().setForeColor(frmMQ27D::picReceive, colors::kDefault);
    setIconBit(kSendBit, false);
}

void SerialLink::SwitchToComPort(int portNumber) {
    // The user's choice ends the wait for a port that went away.
    m_tmrPortWatch.disable();
    closePort();
    m_portFailure = {};
    if (portNumber >= kFirstPort && portNumber <= kLastPort) {
        if (!m_port || !m_port->open(portNumber)) {
            if (m_port) m_portFailure = m_port->openFailure();
            closePort();
            showPortReason();
            return;
        }
    } else {
        portNumber = 0;
    }
    showPortReason();
    RegSettings& settings = m_state.settings;
    if (portNumber != settings.GetPort()) settings.SetPort(portNumber);
}

bool SerialLink::isPortOpen() const {
    return m_port && m_port->isOpen();
}

void SerialLink::closePort() {
    // Closed on purpose (a saved file in view, shutdown): not to be opened behind the user's back.
    m_tmrPortWatch.disable();
    if (isPortOpen()) m_port->close();
}

void SerialLink::ShowCOMPort() {
    SerialPortDevice* device = m_port;
    if (!device) return;
    const int rememberedPort = device->portNumber();
    const bool wasOpen = device->isOpen();

    QStringList entries{m_state.str(kStringPortOff)};
    m_probeFailures = {PortOpenFailure{}};
    for (int i = kFirstPort; i <= kLastPort; ++i) {
        if (device->isOpen()) device->close();
        const bool available = device->open(i);
        entries << (available ? portEntry(i, device->deviceName(i)) : kUnavailablePort);
        m_probeFailures << (available ? PortOpenFailure{} : device->openFailure());
        if (device->isOpen()) device->close();
    }
    // Probing took the port away; give it back as it was.
    if (wasOpen) device->open(rememberedPort);

    Form& window = m_state.forms.frmInterface();
    window.setItems(frmInterface::cboPort, entries);
    window.setValue(frmInterface::cboPort, device->isOpen() ? device->portNumber() : 0);
    // A port that is set but not open says why, though the list shows "off".
    if (device->isOpen() || m_portFailure.failed()) {
        showPortReason();
    } else {
        const int stored = m_state.settings.GetPort();
        const bool known = stored >= kFirstPort && stored < m_probeFailures.size();
        window.setCaption(
            frmInterface::lblPortReason,
            known ? describePortOpenError(m_probeFailures.at(stored), m_state.g.gLanguage)
                  : QString());
    }
}

QString SerialLink::portReason() const {
    if (isPortOpen()) return {};
    return describePortOpenError(m_portFailure, m_state.g.gLanguage);
}

void SerialLink::showPortReason() {
    const QString reason = portReason();
    setReason(startWindow(), frmMQ27D::lblPortReason, reason);
    setReason(m_state.forms.frmInterface(), frmInterface::lblPortReason, reason);
}

void SerialLink::showProbeReason() {
    Form& window = m_state.forms.frmInterface();
    const double selected = window.value(frmInterface::cboPort);
    if (!(selected >= 0 && selected < m_probeFailures.size())) return;
    window.setCaption(
        frmInterface::lblPortReason,
        describePortOpenError(m_probeFailures.at(static_cast<int>(selected)), m_state.g.gLanguage));
}

void SerialLink::onPortLost() {
    // A pending collecting window has nothing left to read.
    m_tmrToRx.disable();
    m_portFailure = m_port->openFailure();
    if (!m_portFailure.failed()) m_portFailure.kind = PortOpenFailure::Kind::Other;
    m_portFailure.vanished = true;
    showPortReason();
    // Not while a saved file is in view or the tool is closing: then the port stays closed.
    if (!m_state.g.gClosing) m_tmrPortWatch.enable();
}

void SerialLink::onPortWatchTick() {
    if (!m_port || m_state.g.gClosing) {
        m_tmrPortWatch.disable();
        return;
    }
    if (!m_port->reopen()) {
        // Still away, or back but refused (busy, no permission): say which.
        const PortOpenFailure failure = m_port->openFailure();
        if (failure.failed() && failure.kind != PortOpenFailure::Kind::NoDevice) {
            m_portFailure = failure;
            m_portFailure.vanished = true;
            showPortReason();
        }
        return;
    }
    m_tmrPortWatch.disable();
    m_portFailure = {};
    showPortReason();
    Q_EMIT portReturned();
    // The search starts again at once instead of after a silent search step.
    Q_EMIT searchStepDue();
}

void SerialLink::stopTimers() {
    m_tmrPortWatch.disable();
    m_tmrToRx.disable();
    m_tmrZeroCommand.disable();
    m_tmrReceiveLED.disable();
    m_tmrSendLED.disable();
}

void SerialLink::onInterfaceClicked(const QString& element) {
    Form& window = m_state.forms.frmInterface();
    if (element == frmInterface::cmdCancelButton) {
        window.unload();
    } else if (element == frmInterface::cmdOKButton) {
        const QStringList entries = window.items(frmInterface::cboPort);
        const double selected = window.value(frmInterface::cboPort);
        if (!(selected >= 0 && selected < entries.size())) return;
        const int index = static_cast<int>(selected);
        if (entries.at(index) == kUnavailablePort) return;
        SwitchToComPort(index);
        window.unload();
    }
}

void SerialLink::onToRxTick() {
    m_tmrToRx.disable();
    if (isPortOpen()) RcvDataGet();
}

void SerialLink::setIconBit(int bit, bool on) {
    const int mask = 1 << bit;
    const int index = on ? (m_iconIndex | mask) : (m_iconIndex & ~mask);
    if (index == m_iconIndex) return;
    m_iconIndex = index;
    Q_EMIT iconIndexChanged(m_iconIndex);
}

Form& SerialLink::startWindow() {
    return m_state.forms.frmMQ27D();
}
