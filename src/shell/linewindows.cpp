#include "shell/linewindows.h"

#include "common/colors.h"
#include "common/formmodel.h"
#include "common/regsettings.h"
#include "link/recognition.h"
#include "link/serialport.h"
#include "shell/dialog_elements.h"
#include "shell/startwindow_elements.h"

namespace {

// A reason shows only while there is one: an empty line would read as a nameless label.
void setReason(Form& window, const QString& element, const QString& reason) {
    window.setCaption(element, reason);
    window.setVisible(element, !reason.isEmpty());
}

} // namespace

StartWindow::StartWindow(Form& window, SerialLink& link, Recognition& recognition)
    : QObject()
    , m_window(window) {
    window.setChecked(frmMQ27D::chkSendEnable, true);
    window.setVisible(frmMQ27D::lblPortReason, false);
    // Whoever ticks the box, the user or the program, the line follows it.
    const auto followSendEnable = [this, &link](const QString& element) {
        if (element == frmMQ27D::chkSendEnable)
            link.SetSendEnabled(m_window.isChecked(frmMQ27D::chkSendEnable));
    };
    connect(&window, &Form::edited, this, followSendEnable);
    connect(&window, &Form::elementChanged, this,
            [followSendEnable](const QString& element, ElementProperty property) {
                if (property == ElementProperty::Value) followSendEnable(element);
            });
    connect(&link, &SerialLink::MonitorSent, this,
            [this](const QString& text) { m_window.setCaption(frmMQ27D::txtComSend, text); });
    connect(&link, &SerialLink::MonitorReceived, this,
            [this](const QString& text) { m_window.setCaption(frmMQ27D::txtComReceive, text); });
    connect(&link, &SerialLink::ReceiveLampChanged, this, &StartWindow::showReceiveLamp);
    connect(&link, &SerialLink::SendLampChanged, this, &StartWindow::showSendLamp);
    connect(&link, &SerialLink::PortReasonChanged, this, [this](const QString& reason) {
        setReason(m_window, frmMQ27D::lblPortReason, reason);
    });
    connect(&recognition, &Recognition::LineStatusChanged, this,
            [this](const QString& status) { m_window.setCaption(frmMQ27D::lblDevice, status); });
}

// Yellow for bytes that came in, green for a telegram of a known family.
void StartWindow::showReceiveLamp(SerialLink::ReceiveLamp lamp) {
    std::uint32_t color = colors::kDefault;
    if (lamp == SerialLink::ReceiveLamp::BytesArrived) color = colors::kYellow;
    if (lamp == SerialLink::ReceiveLamp::TelegramAccepted) color = colors::kGreen;
    m_window.setBackColor(frmMQ27D::picReceive, color);
}

// The same lamp's rim is red while a telegram goes out.
void StartWindow::showSendLamp(bool lit) {
    m_window.setForeColor(frmMQ27D::picReceive, lit ? colors::kRed : colors::kDefault);
}

PortWindow::PortWindow(Form& window, SerialLink& link, const RegSettings& settings)
    : QObject()
    , m_window(window)
    , m_link(link)
    , m_settings(settings) {
    window.setVisible(frmInterface::lblPortReason, false);
    connect(&window, &Form::clicked, this, &PortWindow::OnClicked);
    connect(&window, &Form::edited, this, [this](const QString& element) {
        if (element == frmInterface::cboPort) ShowProbeReason();
    });
    connect(&link, &SerialLink::PortReasonChanged, this, [this](const QString& reason) {
        setReason(m_window, frmInterface::lblPortReason, reason);
    });
}

void PortWindow::ShowCOMPort() {
    if (!m_link.HasPort()) return;
    m_ports = m_link.ProbePorts();
    m_window.setItems(frmInterface::cboPort, m_ports.entries);
    m_window.setValue(frmInterface::cboPort, m_link.OpenPortNumber());
    // A port that is set but not open says why, though the list shows "off".
    if (m_link.IsPortOpen() || m_link.PortFailure().failed()) {
        m_link.ShowPortReason();
    } else {
        const int stored = m_settings.GetPort();
        const bool known = stored >= kFirstPort && stored < m_ports.failures.size();
        m_window.setCaption(frmInterface::lblPortReason,
                            known ? m_link.Describe(m_ports.failures.at(stored)) : QString());
    }
}

void PortWindow::ShowProbeReason() {
    const double selected = m_window.value(frmInterface::cboPort);
    if (!(selected >= 0 && selected < m_ports.failures.size())) return;
    m_window.setCaption(frmInterface::lblPortReason,
                        m_link.Describe(m_ports.failures.at(static_cast<int>(selected))));
}

void PortWindow::OnClicked(const QString& element) {
    if (element == frmInterface::cmdCancelButton) {
        m_window.unload();
    } else if (element == frmInterface::cmdOKButton) {
        const QStringList entries = m_window.items(frmInterface::cboPort);
        const double selected = m_window.value(frmInterface::cboPort);
        if (!(selected >= 0 && selected < entries.size())) return;
        const int index = static_cast<int>(selected);
        if (entries.at(index) == SerialLink::kUnavailablePort) return;
        m_link.SwitchToComPort(index);
        m_window.unload();
    }
}

#include "moc_linewindows.cpp"
