#pragma once

#include "common/formtimer.h"
#include "engine/settingtable.h"

#include <functional>
#include <vector>

#include <QElapsedTimer>
#include <QObject>
#include <QString>

class Preferences;
class Texts;
class UserDialogs;
class DeviceValues;
class Form;
class PollEngine;
class QLocale;
class SettingInputs;
class SettingLimits;
class SettingsWriter;
class ValueStore;

// The four pages of the main view on which the engineer changes the device: its settings,
// the air-flow initialisation, the relay masks and the temperature alarms. Each page shows
// the device's values (Viewing), opens its fields (Editing), and after the write has gone
// out compares every 100 ms what the device reports with what was typed (Waiting), until
// they are equal or the user cancels: a write is never trusted, and there is no limit.
// While a page waits it says so in plain words, with the time since the write went out and
// the fields that still differ. The table of settings gives each page its rows.
class SettingsPages : public QObject {
    Q_OBJECT

public:
    enum class State { Viewing, Editing, Waiting };
    using Page = SettingPage;
    using enum SettingPage;
    static constexpr int kPageCount = kSettingPageCount;

    // `refresh` redraws the main view from the store (after the relay page's cancel).
    SettingsPages(Form& view, const Preferences& preferences, const Texts& texts,
                  UserDialogs* dialogs, SettingsWriter& writer, PollEngine& engine,
                  DeviceValues& values, const SettingLimits& limits, std::function<void()> refresh);

    State state(Page page) const;
    bool anyWaiting() const;
    // What a waiting page shows: its label, and the page's own element for it.
    static QString waitingLabel(Page page);

    // The handlers of the pages' buttons, by the pages' element names.
    void cmdSettings_Click();
    void cmdSettingsStandard_Click();
    void cmdSettingsAssume_Click();
    void cmdSettingsCancel_Click();
    void tmrCompareSettings_Timer();
    void cmdAirFlowSet_Click();
    void cmdAirFlowStandard_Click();
    void cmdAirFlowInit_Click();
    void cmdAirFlowCancel_Click();
    void tmrCompareAirFlowSet_Timer();
    void cmdRelaySet_Click();
    void cmdRelayAssume_Click();
    void cmdRelayCancel_Click();
    void tmrCompareRelaySet_Timer();
    void cmdSensorTempAlarmSet_Click();
    void cmdSensorTempAlarmAssume_Click();
    void cmdSensorTempAlarmCancel_Click();
    void tmrCompareSensorTempAlarmSet_Timer();

    FormTimer& tmrCompareSettings() { return m_tmrCompareSettings; }
    FormTimer& tmrCompareAirFlowSet() { return m_tmrCompareAirFlowSet; }
    FormTimer& tmrCompareRelaySet() { return m_tmrCompareRelaySet; }
    FormTimer& tmrCompareSensorTempAlarmSet() { return m_tmrCompareSensorTempAlarmSet; }
    FormTimer& compareTimer(Page page);
    // Fields that differ from the device, by their legends; empty when all agree.
    QStringList differences(Page page);

    // What still differs between `typed` and what the device reports, by legend, in the
    // page's order: texts against the labels, switches against the device's boxes, relay
    // choices against the value store itself.
    static QStringList differences(const Form& view, ValueStore* values, Page page,
                                   const SettingInputs& typed);
    // The limits of a setting's field as its tool tip tells them: "min - max unit".
    static QString rangeText(const SettingDescriptor& setting, const SettingLimits& limits,
                             const QLocale& locale);

private:
    // One text field of a page: a number's, or one of a time's two.
    struct TextField {
        const SettingDescriptor* setting;
        int field;
    };
    static std::vector<TextField> textFields(Page page);

    void onClicked(const QString& element);
    void onEdited(const QString& element);
    void onWriteSent(int command);

    void openFields(Page page);
    void closeFields(Page page);
    void fillStandards(Page page);
    bool assume(Page page);
    SettingInputs inputs(Page page) const;
    void showButtons(Page page, bool editing);
    void setToolTips(Page page);
    const FormTimer& timerOf(Page page) const;
    void showWaiting(Page page, const QStringList& differing);
    bool finishIfEqual(Page page);

    Form& view() const;

    Form& m_view;
    const Preferences& m_preferences;
    const Texts& m_texts;
    UserDialogs* m_dialogs;
    SettingsWriter& m_writer;
    DeviceValues& m_values;
    const SettingLimits& m_limits;
    std::function<void()> m_refresh;
    FormTimer m_tmrCompareSettings{100};
    FormTimer m_tmrCompareAirFlowSet{100};
    FormTimer m_tmrCompareRelaySet{100};
    FormTimer m_tmrCompareSensorTempAlarmSet{100};
    bool m_editing[kPageCount] = {};
    bool m_writeQueued[kPageCount] = {};
    QElapsedTimer m_sentAt[kPageCount];
};
