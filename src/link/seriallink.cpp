#include "link/seriallink.h"

#include "shell/appcontext.h"

SerialLink::SerialLink(AppContext& app)
    : QObject()
    , m_app(app) {}

void SerialLink::MakeSendString(const Bytes&, bool) {}

void SerialLink::DataTx(const Bytes&) {}

void SerialLink::RcvDataGet() {}

void SerialLink::RestartSearchTimer() {}

void SerialLink::ReceiveLEDYellow() {}

void SerialLink::ReceiveLEDGreen() {}

void SerialLink::ReceiveLEDOff() {}

void SerialLink::SendLEDOn() {}

void SerialLink::SendLEDOff() {}

void SerialLink::SwitchToComPort(int) {}

bool SerialLink::isPortOpen() const {
    return false;
}

void SerialLink::closePort() {}

void SerialLink::ShowCOMPort() {}

void SerialLink::ShowInterface() {}

void SerialLink::stopTimers() {}

void SerialLink::iconIndexChanged(int) {}

void SerialLink::onInterfaceClicked(const QString&) {}

void SerialLink::setIconBit(int, bool) {}

Form& SerialLink::startWindow() {
    return m_app.forms().frmMQ27D();
}
