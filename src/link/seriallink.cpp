#include "link/seriallink.h"

#include "link/checksum.h"
#include "link/recognition.h"
#include "link/serialport.h"
#include "link/telegram.h"
#include "shell/appcontext.h"
#include "shell/appshell.h"
#include "shell/colors.h"
#include "shell/languages.h"
#include "shell/regsettings.h"

#include <QLocale>

namespace {

const QString kPicReceive = QStringLiteral("picReceive");
const QString kTxtComSend = QStringLiteral("txtComSend");
const QString kTxtComReceive = QStringLiteral("txtComReceive");
const QString kChkSendEnable = QStringLiteral("chkSendEnable");
const QString kCboPort = QStringLiteral("cboPort");
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

QString portEntry(int port, const QString& deviceName) {
    if (deviceName.isEmpty()) return QString::number(port);
    return QStringLiteral("%1  (%2)").arg(port).arg(deviceName);
}

} // namespace

SerialLink::SerialLink(AppContext& app)
    : QObject()
    , m_app(app) {
    connect(&m_tmrToRx, &FormTimer::timeout, this, &SerialLink::onToRxTick);
    connect(&m_tmrZeroCommand, &FormTimer::timeout, this,
            [this] { m_app.recognition().SearchStep(); });
    connect(&m_tmrReceiveLED, &FormTimer::timeout, this, [this] {
        ReceiveLEDOff();
        m_tmrReceiveLED.disable();
    });
    connect(&m_tmrSendLED, &FormTimer::timeout, this, [this] {
        SendLEDOff();
        m_tmrSendLED.disable();
    });
    if (SerialPortDevice* device = port()) {
        // Later bytes of a burst don't prolong the collecting window.
        connect(device, &SerialPortDevice::received, this, [this] { m_tmrToRx.enable(); });
        // The port closed itself; a pending collecting window has nothing left to read.
        connect(device, &SerialPortDevice::lost, this, [this] { m_tmrToRx.disable(); });
    }
    startWindow().setChecked(kChkSendEnable, true);
    connect(&m_app.forms().frmInterface(), &Form::clicked, this, &SerialLink::onInterfaceClicked);
}

void SerialLink::MakeSendString(const Bytes& vntData, bool blnCreateCRC) {
    const std::optional<Bytes> frame = telegram::MakeSendFrame(vntData, blnCreateCRC);
    if (frame) DataTx(*frame);
}

void SerialLink::DataTx(const Bytes& s) {
    if (!isPortOpen()) return;
    startWindow().setCaption(kTxtComSend, monitorText(now(), s));
    m_lastSent = s;
    if (startWindow().isChecked(kChkSendEnable)) {
        port()->write(toByteArray(s));
        SendLEDOn();
    }
    RestartSearchTimer();
}

void SerialLink::RcvDataGet() {
    if (!isPortOpen()) return;
    ReceiveLEDYellow();
    const Bytes burst = toBytes(port()->readAll());
    startWindow().setCaption(kTxtComReceive, monitorText(now(), burst));

    std::int32_t first = 0;
    std::int32_t last = 0;
    if (modChecksum::FindTelegram(burst, first, last) < 0) return;
    const Bytes t(burst.begin() + first, burst.begin() + last + 1);
    if (isEcho(t, m_lastSent) || isSearchTelegram(t)) return;

    const std::optional<Bytes> stamped = telegram::StampTelegram(t, now());
    if (!stamped) return;
    m_dataFromFile = false;
    m_app.recognition().RcvDataHandle(*stamped);
}

void SerialLink::RestartSearchTimer() {
    m_tmrZeroCommand.restart();
}

void SerialLink::ReceiveLEDYellow() {
    startWindow().setBackColor(kPicReceive, colors::kYellow);
    m_tmrReceiveLED.enable();
}

void SerialLink::ReceiveLEDGreen() {
    startWindow().setBackColor(kPicReceive, colors::kGreen);
    m_tmrReceiveLED.enable();
    setIconBit(kReceiveBit, true);
}

void SerialLink::ReceiveLEDOff() {
    startWindow().setBackColor(kPicReceive, colors::kDefault);
    setIconBit(kReceiveBit, false);
}

void SerialLink::SendLEDOn() {
    startWindow().setForeColor(kPicReceive, colors::kRed);
    m_tmrSendLED.enable();
    setIconBit(kSendBit, true);
}

void SerialLink::SendLEDOff() {
    startWindow().setForeColor(kPicReceive, colors::kDefault);
    setIconBit(kSendBit, false);
}

void SerialLink::SwitchToComPort(int portNumber) {
    closePort();
    if (portNumber >= kFirstPort && portNumber <= kLastPort) {
        if (!port() || !port()->open(portNumber)) {
            closePort();
            return;
        }
    } else {
        portNumber = 0;
    }
    RegSettings& settings = m_app.settings();
    if (portNumber != settings.GetPort()) settings.SetPort(portNumber);
}

bool SerialLink::isPortOpen() const {
    const SerialPortDevice* device = port();
    return device && device->isOpen();
}

void SerialLink::closePort() {
    if (isPortOpen()) port()->close();
}

void SerialLink::ShowCOMPort() {
    SerialPortDevice* device = port();
    if (!device) return;
    const int rememberedPort = device->portNumber();
    const bool wasOpen = device->isOpen();

    QStringList entries{m_app.str(kStringPortOff)};
    for (int i = kFirstPort; i <= kLastPort; ++i) {
        if (device->isOpen()) device->close();
        const bool available = device->open(i);
        entries << (available ? portEntry(i, device->deviceName(i)) : kUnavailablePort);
        if (device->isOpen()) device->close();
    }
    // Probing took the port away; give it back as it was.
    if (wasOpen) device->open(rememberedPort);

    Form& window = m_app.forms().frmInterface();
    window.setItems(kCboPort, entries);
    window.setValue(kCboPort, device->isOpen() ? device->portNumber() : 0);
}

void SerialLink::ShowInterface() {
    m_app.languages().SwitchToLanguage(m_app.g.gLanguage);
    m_app.forms().frmInterface().show(false);
    ShowCOMPort();
}

void SerialLink::stopTimers() {
    m_tmrToRx.disable();
    m_tmrZeroCommand.disable();
    m_tmrReceiveLED.disable();
    m_tmrSendLED.disable();
}

void SerialLink::onInterfaceClicked(const QString& element) {
    Form& window = m_app.forms().frmInterface();
    if (element == u"cmdCancelButton") {
        window.unload();
    } else if (element == u"cmdOKButton") {
        const QStringList entries = window.items(kCboPort);
        const double selected = window.value(kCboPort);
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
    if (index != m_iconIndex) {
        m_iconIndex = index;
        Q_EMIT iconIndexChanged(m_iconIndex);
    }
    m_app.shell().TrayIconUpdate();
}

Form& SerialLink::startWindow() {
    return m_app.forms().frmMQ27D();
}

SerialPortDevice* SerialLink::port() const {
    return m_app.services().port;
}

QDateTime SerialLink::now() const {
    const Clock* clock = m_app.services().clock;
    return clock ? clock->now() : QDateTime::currentDateTime();
}
