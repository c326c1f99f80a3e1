#pragma once

#include "common/lifetime.h"
#include "common/platformservices.h"
#include "common/preferences.h"
#include "common/regsettings.h"
#include "common/services.h"
#include "common/texts.h"
#include "link/devicesession.h"
#include "shell/allforms.h"
#include "values/devicevalues.h"

#include <memory>

#include <QObject>
#include <QString>

class SerialPortDevice;
class SerialLink;
class Recognition;
class PollEngine;
class TelegramDecoder;
class DeviceCommands;
class DeviceSearch;
class DeviceFiles;
class Localisation;
class DeviceSettings;
class MainView;
class ExtinguishDetails;
class ExtinguishSettings;
class Languages;
class HelpLink;
class AppShell;
class DataLogger;
class Protocol;
class StartWindow;
class PortWindow;
class LiveState;

// The one place where the program is put together: it makes every part, gives each the
// services and window models it works with and the parts below it, and connects the signals
// by which a lower part reaches a higher one. The connections are direct, so a telegram still
// takes its whole road within one call.
class Program : public QObject {
    Q_OBJECT

public:
    // `port` may be null: the program then runs without a line, as for a saved read-out.
    Program(const Services& services, SerialPortDevice* port, QObject* parent = nullptr);
    ~Program() override;

    AllForms& forms() { return m_forms; }
    Preferences& preferences() { return m_preferences; }
    Texts& texts() { return m_texts; }
    const Services& services() const { return m_services; }
    RegSettings& settings() { return m_settings; }
    Lifetime& life() { return m_life; }
    QString str(int index) const { return m_texts.str(index); }

    // The value store exists from the first telegram of the own device kind on.
    ValueStore* values() { return m_values.get(); }
    ValueStore& createValues() { return m_values.create(); }

    DeviceSession& session() { return m_session; }
    SerialLink& link() { return *m_link; }
    Recognition& recognition() { return *m_recognition; }
    PollEngine& engine() { return *m_engine; }
    TelegramDecoder& decoder() { return *m_decoder; }
    DeviceCommands& commands() { return *m_commands; }
    DeviceSearch& search() { return *m_search; }
    Localisation& localisation() { return *m_localisation; }
    DeviceSettings& deviceSettings() { return *m_deviceSettings; }
    DeviceFiles& files() { return *m_files; }
    MainView& mainView() { return *m_mainView; }
    ExtinguishDetails& extinguishDetails() { return *m_extinguishDetails; }
    ExtinguishSettings& extinguishSettings() { return *m_extinguishSettings; }
    Languages& languages() { return *m_languages; }
    HelpLink& help() { return *m_help; }
    AppShell& shell() { return *m_shell; }
    DataLogger& logger() { return *m_logger; }
    Protocol& protocol() { return *m_protocol; }
    PortWindow& portWindow() { return *m_portWindow; }
    LiveState& live() { return *m_live; }

Q_SIGNALS:
    // Shutdown has unloaded the start window; the program ends.
    void quitRequested();

private:
    static Services withClock(Services services, Clock& fallback);
    void makeParts(SerialPortDevice* port);
    void connectParts();
    void connectLine();
    void connectTelegramRoad();
    void connectWindows();
    void connectLanguage();
    void connectLiveState();

    SystemClock m_systemClock;
    const Services m_services;
    AllForms m_forms;
    Preferences m_preferences;
    Texts m_texts{m_preferences};
    RegSettings m_settings;
    Lifetime m_life;
    DeviceSession m_session;
    DeviceValues m_values;
    std::unique_ptr<SerialLink> m_link;
    std::unique_ptr<Recognition> m_recognition;
    std::unique_ptr<PollEngine> m_engine;
    std::unique_ptr<TelegramDecoder> m_decoder;
    std::unique_ptr<DeviceCommands> m_commands;
    std::unique_ptr<DeviceFiles> m_files;
    std::unique_ptr<MainView> m_mainView;
    std::unique_ptr<DeviceSearch> m_search;
    std::unique_ptr<Localisation> m_localisation;
    std::unique_ptr<ExtinguishDetails> m_extinguishDetails;
    std::unique_ptr<ExtinguishSettings> m_extinguishSettings;
    std::unique_ptr<DeviceSettings> m_deviceSettings;
    std::unique_ptr<DataLogger> m_logger;
    std::unique_ptr<Protocol> m_protocol;
    std::unique_ptr<Languages> m_languages;
    std::unique_ptr<HelpLink> m_help;
    std::unique_ptr<StartWindow> m_startWindow;
    std::unique_ptr<PortWindow> m_portWindow;
    std::unique_ptr<AppShell> m_shell;
    std::unique_ptr<LiveState> m_live;
};
