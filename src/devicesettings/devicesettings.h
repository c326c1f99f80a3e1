#pragma once

#include "common/preferences.h"

#include "common/formtimer.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QStringList>

class Form;
class Texts;
class DeviceCommands;
class DeviceValues;
class Form;
class PollEngine;

// The rack device's own settings that the main view does not offer: the manual release
// line's resistors and tolerance, and the beta values of the five temperature sensors. Two
// pages on one window, each on its own: the device's values (Viewing), fields in their
// place (Editing), and after the write a comparison every 100 ms of what the device
// reports with what was typed (Comparing), until they are equal as texts or the user
// cancels. A page that compares says so, with the age of its write and the rows that still
// differ.
class DeviceSettings : public QObject {
    Q_OBJECT

public:
    enum class State { Viewing, Editing, Comparing };
    enum Page { Resistors, BetaValues, kPageCount };

    DeviceSettings(Form& window, Form& display, const Preferences& preferences, const Texts& texts,
                   DeviceCommands& commands, PollEngine& engine, DeviceValues& values);

    State StateOf(Page page) const;

    // Prepares the window before it is shown; the main view's menu then shows it modally.
    void ShowDeviceSettings();
    // The refresh: the labels take what the device reports.
    void GetDeviceSettings();
    // The window's texts in `language`; its title is the main view's menu entry.
    void ApplyTexts(Language language);

    void cmdSettings_Click();
    void cmdSettingsAssume_Click();
    void cmdSettingsCancel_Click();
    void tmrCompareSettings_Timer();
    void cmdBetaSettings_Click();
    void cmdBetaSettingsAssume_Click();
    void cmdBetaSettingsCancel_Click();
    void tmrCompareBetaSettings_Timer();
    void cmdClose_Click();

    FormTimer& tmrRefresh() { return m_tmrRefresh; }
    FormTimer& tmrCompareSettings() { return m_tmrCompare[Resistors]; }
    FormTimer& tmrCompareBetaSettings() { return m_tmrCompare[BetaValues]; }

private:
    void OnLoaded();
    void OnClicked(const QString& element);
    void OnMainViewClicked(const QString& element);
    void OnWriteSent(int command);

    void OpenPage(Page page);
    void ClosePage(Page page);
    void Compare(Page page);
    // Rows whose field differs from its label, by their names; empty when all agree.
    QStringList Differences(Page page) const;
    void ShowWaiting(Page page, const QStringList& differing);
    QString Number(double value) const;
    Form& Window() const;

    Form& m_window;
    Form& m_display;
    const Preferences& m_preferences;
    const Texts& m_texts;
    DeviceCommands& m_commands;
    DeviceValues& m_values;
    FormTimer m_tmrRefresh{234};
    FormTimer m_tmrCompare[kPageCount] = {FormTimer{100}, FormTimer{100}};
    bool m_editing[kPageCount] = {};
    QElapsedTimer m_sentAt[kPageCount];
};
