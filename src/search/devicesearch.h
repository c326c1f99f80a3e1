#pragma once

#include "shell/formmodel.h"
#include "shell/formtimer.h"

#include <QObject>
#include <QString>

class AppContext;

// Listing the devices that talk on the line and choosing one (frmDeviceSearch), and the
// connection window frmConnect shown until a chosen or new device is read out.
class DeviceSearch : public QObject {
    Q_OBJECT

public:
    explicit DeviceSearch(AppContext& app);

    // mnuDeviceSearch of the main view: stops the poll and lists the devices heard.
    void mnuDeviceSearch_Click();
    void AddDevice(double serial);
    // The poll follows `serial`: on with telegram 2 for the device shown, else connecting
    // anew with telegram 1.
    void DeviceSelection(const QString& serial);

    // frmConnect with `title`, centred over frmMQ27D, non-modal, in front.
    void ShowConnect(const QString& title);

    FormTimer& tmrDataLED() { return m_tmrDataLED; }
    FormTimer& tmrBlink() { return m_tmrBlink; }

private:
    void onSearchWindowClicked(const QString& element);
    void onConnectClicked(const QString& element);
    void onConnectWindowChanged(Form::WindowChange change);
    void selectListedDevice();
    void selectPreviousDevice();
    void cancelConnection();

    AppContext& m_app;
    FormTimer m_tmrDataLED{100};
    FormTimer m_tmrBlink{500};
};
