#pragma once

#include "common/formmodel.h"
#include "common/formtimer.h"

#include <QObject>
#include <QString>

class DeviceSession;
class Lifetime;
class PollEngine;
class RegSettings;
class SerialLink;
class Texts;

// Listing the devices that talk on the line and choosing one (frmDeviceSearch), and the
// connection window frmConnect shown until a chosen or new device is read out.
class DeviceSearch : public QObject {
    Q_OBJECT

public:
    // `searchWindow` and `connectWindow` are its own; the main view is hidden while the search
    // runs, and the connection window stands centred over `startWindow`.
    DeviceSearch(Form& searchWindow, Form& connectWindow, Form& mainView, const Form& startWindow,
                 const Texts& texts, const RegSettings& settings, const Lifetime& life,
                 DeviceSession& session, SerialLink& link, PollEngine& engine);

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
    void LanguageRefreshNeeded();
    // The user has given up waiting for a device: back to the start window.
    void ConnectionCancelled();

private:
    void OnSearchWindowClicked(const QString& element);
    void OnConnectClicked(const QString& element);
    void OnConnectWindowChanged(Form::WindowChange change);
    void SelectListedDevice();
    void SelectPreviousDevice();
    void CancelConnection();

    Form& m_searchWindow;
    Form& m_connectWindow;
    Form& m_mainView;
    const Form& m_startWindow;
    const Texts& m_texts;
    const RegSettings& m_settings;
    const Lifetime& m_life;
    DeviceSession& m_session;
    SerialLink& m_link;
    PollEngine& m_engine;
    FormTimer m_tmrDataLED{100};
    FormTimer m_tmrBlink{500};
};
