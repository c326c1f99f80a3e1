#pragma once

#include "engine/settinglimits.h"

#include <QLocale>

class Form;
class clsMQ27Values;

// What the value store holds, written into the main view's elements: smoke, air flow,
// chamber, LED states, temperatures, relays, inputs, identity, the settings the device
// reports, and the bus modules. Every call redraws from the store; nothing is remembered.
class StatusDisplay {
public:
    struct Units {
        bool fahrenheit = false;
        bool perFoot = false;
    };

    StatusDisplay(Form& view, SettingLimits& limits);

    // The threshold lines of both bar graphs; false when a position does not fit.
    bool ShowSmokeThresholds(clsMQ27Values& v);
    // Steps before the fault list: smoke to the rack's manual release line.
    void showMeasurements(clsMQ27Values& v, Units units, const QLocale& locale);
    // Steps after the fault list: identity, ranges, settings, relay masks, modules.
    void showIdentityAndSettings(clsMQ27Values& v, const QLocale& locale);

private:
    void smokeLevels(clsMQ27Values& v, bool perFoot, const QLocale& locale);
    void airFlow(clsMQ27Values& v, bool fahrenheit, const QLocale& locale);
    void chambers(clsMQ27Values& v, const QLocale& locale);
    void ledStates(clsMQ27Values& v);
    void sensorTemperatures(clsMQ27Values& v, bool fahrenheit, const QLocale& locale);
    void relaysAndInputs(clsMQ27Values& v);
    void identity(clsMQ27Values& v, const QLocale& locale);
    void ranges(clsMQ27Values& v);
    void settings(clsMQ27Values& v, const QLocale& locale);
    void relayMasks(clsMQ27Values& v);
    void sensorAlarms(clsMQ27Values& v, const QLocale& locale);
    void modules(clsMQ27Values& v, const QLocale& locale);

    // The gauge's value within its range, as the gauge holds it; its label reads it back.
    double setGauge(const QString& gauge, double value);

    Form& m_view;
    SettingLimits& m_limits;
};
