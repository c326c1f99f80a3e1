#pragma once

#include "common/formmodel.h"
#include "common/formtimer.h"

#include <QObject>
#include <QString>

class AppState;
class DeviceSession;
class PollEngine;
class SerialLink;

// Listing the devices that talk on the line and choosing one (frmDeviceSearch), and the
// connection window frmConnect shown until a chosen or new device is read out.
class DeviceSearch : public QObject {
    Q_OBJECT

public:
    DeviceSearch(AppState& state, DeviceSession& session, SerialLink& link, PollEngine& engine);

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

Q_SIGNALS:
    // The window texts are to be rewritten in the current language.
    void languageRefreshNeeded();

private:
    void onSearchWindowClicked(const QString& element);
    void onConnectClicked(const QString& element);
    void onConnectWindowChanged(Form::WindowChange change);
    void selectListedDevice();
    void selectPreviousDevice();
    void cancelConnection();

    AppState& m_state;
    DeviceSession& m_session;
    SerialLink& m_link;
    PollEngine& m_engine;
    FormTimer m_tmrDataLED{100};
    FormTimer m_tmrBlink{500};
};
