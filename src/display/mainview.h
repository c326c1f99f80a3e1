#pragma once

#include "common/formtimer.h"
#include "display/devicefeatures.h"
#include "display/ledrhythm.h"
#include "display/settingspages.h"
#include "display/statusdisplay.h"
#include "engine/settinglimits.h"
#include "engine/settingswriter.h"

#include <functional>

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QString>

class UserDialogs;
class DeviceCommands;
class DeviceSession;
class DeviceValues;
class Form;
class PollEngine;
class Preferences;
class RegSettings;
class Texts;

// The main view frmDisplay: its load, the refresh of its pages from the value store, the
// device shown in every page's header with the time of its last telegram and the receive
// lamps, the fault list and LED rhythms, the customisation by device, its menus that reach
// the parts below it, the reset buttons, the units of temperature and smoke, and context
// help. The menus that belong to the whole tool (load, exit, port, language, About) are the
// shell's.
class MainView : public QObject {
    Q_OBJECT

public:
    // `pagesState` serves the settings pages.
    MainView(Form& view, Preferences& preferences, RegSettings& settings, const Texts& texts,
             const DeviceSession& session, DeviceValues& values, DeviceCommands& commands,
             PollEngine& engine, UserDialogs* dialogs);

    Form& View() { return m_view; }

    // Redraws every page from the value store.
    void ShowData();
    // The same, when the main view is shown: a hidden one is redrawn when it shows again.
    void RefreshIfShown();

    // The title carries the time of the telegram, which for a loaded file is the time it was
    // recorded.
    void ShowTelegramTime(const QDateTime& time);
    // The eight receive lamps green, back after 100 ms.
    void ShowReceiveActivity();
    // A new device is read out in the hidden main view, which shows itself again with complete
    // data after telegram 5.
    void TakeOn();
    // The read-out is complete: the main view takes the device's place on the screen.
    void ShowDevice();

    // Store the unit unconditionally; a value other than 1 and 2 is stored but used as 1.
    // The pages show the new unit at once.
    void SwitchToTemperature(int unit);
    void SwitchToSmokeUnit(int unit);

    // Mouse button 1 shows what would be opened, any other opens the help.
    void Help_Table(int Button, int Topic, const QString& Text);

    // What the last refresh read of the device's equipment.
    const DeviceFeatures& Features() const { return m_features; }
    const SettingLimits& Limits() const { return m_limits; }
    LedRhythm& Leds() { return m_leds; }
    SettingsPages& Pages() { return m_pages; }
    FormTimer& tmrReceiveLED() { return m_tmrReceiveLED; }
    SettingsWriter& Writer() { return m_writer; }

Q_SIGNALS:
    // The refresh begins: the localisation brings its labels up to date first.
    void AboutToShowData();
    // Help file of `device`, opened (mode 1) or described (mode 2) at `topic`.
    void HelpRequested(int device, int mode, int topic, const QString& text);
    // mnuDeviceSearch: the device search is to list the devices on the line.
    void DeviceSearchRequested();
    // mnuSave: the read-out is to be saved where the user chooses.
    void SaveRequested();

private:
    void Form_Load();
    void InitLegendFonts();
    void CheckUnitMenus();
    void OnClicked(const QString& element);
    void OnMouseClicked(const QString& element, int button);
    void ShowSerialNo(const QString& serialNo);

    Form& m_view;
    Preferences& m_preferences;
    RegSettings& m_settings;
    const Texts& m_texts;
    DeviceValues& m_values;
    SettingLimits m_limits;
    SettingsWriter m_writer;
    DeviceFeatures m_features;
    StatusDisplay m_status;
    LedRhythm m_leds;
    SettingsPages m_pages;
    QHash<QString, std::function<void()>> m_clickHandlers;
    FormTimer m_tmrReceiveLED{100};
};
