#pragma once

#include "common/formmodel.h"
#include "common/formtimer.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QStringList>

class Preferences;
class Texts;
class DeviceCommands;
class DeviceValues;
class PollEngine;

// The window frmExtinguishSettings: the manual-release settings of one bus module (alarm
// resistor, normal resistor, tolerance). The engineer opens the fields, types, and sends;
// the window then compares every 100 ms what the device reports with what was typed, as
// texts, until they are equal or the engineer cancels. While it waits it says so, with the
// time since the write went out and the rows that still differ. A module that stops
// answering leaves the window as it is, with its lamp dark and a line that says so.
class ExtinguishSettings : public QObject {
    Q_OBJECT

public:
    enum class State { Viewing, Editing, Waiting };

    ExtinguishSettings(Form& window, Form& display, const Preferences& preferences,
                       const Texts& texts, DeviceValues& values, DeviceCommands& commands,
                       PollEngine& engine);

    // Opens the window modally on module `Index` (0 to 9), showing the device's values.
    void ShowExtSettings(int Index);
    void GetExtSettings();
    // The window's words in the current language.
    void ApplyTexts();

    void cmdSettings_Click();
    void cmdSettingsAssume_Click();
    void cmdSettingsCancel_Click();
    void tmrCompareSettings_Timer();
    void cboSerialNumber_Click();

    State CurrentState() const;
    int ExtModuleIndex() const { return m_extModuleIndex; }
    FormTimer& tmrRefresh() { return m_tmrRefresh; }
    FormTimer& tmrCompareSettings() { return m_tmrCompareSettings; }
    // The rows whose field differs from the device's value, by their names.
    QStringList Differences() const;

private:
    Form& Window() const;
    void Form_Load();
    void OnClicked(const QString& element);
    void OnEdited(const QString& element);
    void OnWindowChanged(Form::WindowChange change);
    void OnWriteSent(int command);
    void ShowWaiting(const QStringList& differing);
    void SetHints();

    Form& m_window;
    Form& m_display;
    const Preferences& m_preferences;
    const Texts& m_texts;
    DeviceValues& m_values;
    DeviceCommands& m_commands;
    FormTimer m_tmrRefresh{234};
    FormTimer m_tmrCompareSettings{100};
    QElapsedTimer m_sentAt;
    int m_extModuleIndex = 0;
    bool m_editing = false;
};
