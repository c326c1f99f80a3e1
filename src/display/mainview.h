#pragma once

#include "display/devicefeatures.h"
#include "display/ledrhythm.h"
#include "display/settingspages.h"
#include "display/statusdisplay.h"
#include "engine/settinglimits.h"
#include "engine/settingswriter.h"

#include <functional>

#include <QHash>
#include <QObject>
#include <QString>

class AppState;
class DeviceCommands;
class DeviceFiles;
class DeviceSession;
class DeviceValues;
class PollEngine;

// The main view frmDisplay: its load, the refresh of its pages from the value store, the
// fault list and LED rhythms, the customisation by device, its menus that reach the parts
// below it, the reset buttons, the units of temperature and smoke, and context help. The
// menus that belong to the whole tool (load, exit, port, language, About) are the shell's.
class MainView : public QObject {
    Q_OBJECT

public:
    MainView(AppState& state, const DeviceSession& session, DeviceValues& values,
             DeviceCommands& commands, PollEngine& engine, DeviceFiles& files);

    // Redraws every page from the value store.
    void ShowData();

    // Store the unit unconditionally; a value other than 1 and 2 is stored but used as 1.
    // The pages show the new unit at once.
    void SwitchToTemperature(int unit);
    void SwitchToSmokeUnit(int unit);

    // Mouse button 1 shows what would be opened, any other opens the help.
    void Help_Table(int Button, int Topic, const QString& Text);

    // What the last refresh read of the device's equipment.
    const DeviceFeatures& features() const { return m_features; }
    const SettingLimits& limits() const { return m_limits; }
    LedRhythm& leds() { return m_leds; }
    SettingsPages& settingsPages() { return m_pages; }
    SettingsWriter& settingsWriter() { return m_writer; }

Q_SIGNALS:
    // The refresh begins: the localisation brings its labels up to date first.
    void aboutToShowData();
    // Help file of `device`, opened (mode 1) or described (mode 2) at `topic`.
    void helpRequested(int device, int mode, int topic, const QString& text);
    // mnuDeviceSearch: the device search is to list the devices on the line.
    void deviceSearchRequested();

private:
    void Form_Load();
    void checkUnitMenus();
    void onClicked(const QString& element);
    void onMouseClicked(const QString& element, int button);
    void refreshIfShown();
    void showSerialNo(const QString& serialNo);

    AppState& m_state;
    DeviceValues& m_values;
    SettingLimits m_limits;
    SettingsWriter m_writer;
    DeviceFeatures m_features;
    StatusDisplay m_status;
    LedRhythm m_leds;
    SettingsPages m_pages;
    QHash<QString, std::function<void()>> m_clickHandlers;
};
