#include "link/devicesession.h"

void DeviceSession::setSerialNo(const QString& serialNo) {
    if (serialNo == m_serialNo) return;
    m_serialNo = serialNo;
    Q_EMIT serialNoChanged(m_serialNo);
}

#include "moc_devicesession.cpp"
