#pragma once

#include "common/formtimer.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QStringList>

class Form;
class Preferences;
class Texts;
class UserDialogs;
class DeviceCommands;
class DeviceValues;
class Form;
class LedRhythm;
class MainView;
class PollEngine;

// The localisation of a fire along the aspiration pipe. The main view's refresh keeps its
// labels current (the device's time windows of the five holes, turned back into the
// transport times the engineer learned, the number of holes, the blow time and the fan
// voltages), and the learn and test window frmLocalizeLearn trains and tries the windows.
// The device holds the state: learn mode and a running measurement are read back on every
// refresh, and the window follows them.
class Localisation : public QObject {
    Q_OBJECT

public:
    Localisation(Form& window, Form& display, const Preferences& preferences, const Texts& texts,
                 UserDialogs* dialogs, DeviceValues& values, DeviceCommands& commands,
                 PollEngine& engine, MainView& mainView);

    // At the head of every refresh of the main view.
    void ShowLocData();

    // 0 the learn layout, any other the test layout.
    void ShowLocLearnMode(int Index);

    // The handlers of the window and of the main view's buttons.
    void cmdShowLocLearnMode_Click(int Index);
    void txtLocNumberOfHoles_Validate();
    void cmdLocSingleHoleLearningStart_Click();
    void cmdLocSingleHoleLearningAbort_Click();
    void cmdLocParameterAssume_Click();
    void cmdLocParameterAbort_Click();
    void tmrUnload_Timer();
    void tmrTimeout_Timer();
    void tmrCompareLocalizeSet_Timer();

    // The windows that the transport times `times` of the holes give, in 0.01 s: each
    // window reaches half-way to its neighbours, the last as far beyond its hole. Nothing
    // for fewer than two times.
    struct Windows {
        std::array<std::int32_t, 5> minimum{};
        std::array<std::int32_t, 5> maximum{};
    };
    static std::optional<Windows> WindowsFromTimes(const std::vector<double>& times);

    FormTimer& tmrUnload() { return m_tmrUnload; }
    FormTimer& tmrTimeout() { return m_tmrTimeout; }
    FormTimer& tmrCompareLocalizeSet() { return m_tmrCompareLocalizeSet; }

    // The device's two bits as last read.
    bool LocLearnModeActive = false;
    bool LocMeasuringActive = false;
    // The user ended the running measurement: its result is no transport time.
    bool LocSingleHoleAborted = false;
    // A measurement was seen running since the last evaluation.
    bool LocMeasurementSeen = false;
    // Bit i: hole i has had a time measured in the present learn mode.
    std::uint16_t LocHolesDone = 0;

    // Window bounds of each hole as last read, and as the window wants them written; 0.01 s.
    std::array<std::int32_t, 5> LocHoleMinRead{};
    std::array<std::int32_t, 5> LocHoleMaxRead{};
    std::array<std::int32_t, 5> LocHoleMinSet{};
    std::array<std::int32_t, 5> LocHoleMaxSet{};
    std::int32_t LocFirePlaceSuckTime = 0;
    std::int32_t LocFirePlace = 0;

    // What still differs between the written parameters and the device's, by legend.
    QStringList Differences() const;

Q_SIGNALS:
    // Every text of every window is to be set in the present language.
    void LanguageRefreshNeeded();

private:
    void ReadBounds();
    void ShowTransportTimes();
    void ShowNumberOfHoles();
    void ShowLamps();
    void ShowSmokeLevels();
    void ShowMeasuring();
    void ShowLayout(bool learn);
    void EvaluateMeasurement(double holes);
    void CheckTimeOrder(double holes);
    void PaintLamps(bool flashLit, bool blinkLit);
    void ShowWaiting();
    void CloseWindow();
    void OnWindowChanged(int change);
    void OnDisplayClicked(const QString& element);
    void OnWindowClicked(const QString& element);
    void OnWindowEdited(const QString& element);
    void OnWriteSent(int command);
    void LearnSingleHole(bool start);
    bool LeaveLearnMode();

    Form& Window() const;
    Form& View() const;
    // The number in a field, with a point or a comma as its mark; nothing when it is none.
    static std::optional<double> Number(const QString& text);
    // The holes a field's count stands for, as a loop up to it counts them.
    int HolesOf(double count) const;

    Form& m_window;
    Form& m_display;
    const Preferences& m_preferences;
    const Texts& m_texts;
    UserDialogs* m_dialogs;
    DeviceValues& m_values;
    DeviceCommands& m_commands;
    MainView& m_mainView;
    FormTimer m_tmrUnload{111};
    FormTimer m_tmrTimeout{3216};
    FormTimer m_tmrCompareLocalizeSet{100};
    QElapsedTimer m_sentAt;
    bool m_flashLit = false;
    bool m_blinkLit = false;
};
