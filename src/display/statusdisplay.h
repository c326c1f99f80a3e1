#pragma once

#include "engine/settinglimits.h"

#include <QLocale>

class Form;
class ValueStore;

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
    bool ShowSmokeThresholds(ValueStore& v);
    // Steps before the fault list: smoke to the rack's manual release line.
    void showMeasurements(ValueStore& v, Units units, const QLocale& locale);
    // Steps after the fault list: identity, ranges, settings, relay masks, modules.
    void showIdentityAndSettings(ValueStore& v, const QLocale& locale);

private:
    void smokeLevels(ValueStore& v, bool perFoot, const QLocale& locale);
    void airFlow(ValueStore& v, bool fahrenheit, const QLocale& locale);
    void chambers(ValueStore& v, const QLocale& locale);
    void ledStates(ValueStore& v);
    void sensorTemperatures(ValueStore& v, bool fahrenheit, const QLocale& locale);
    void relaysAndInputs(ValueStore& v);
    void identity(ValueStore& v, const QLocale& locale);
    void ranges(ValueStore& v);
    void settings(ValueStore& v, const QLocale& locale);
    void relayMasks(ValueStore& v);
    void modules(ValueStore& v, const QLocale& locale);

    // The gauge's value within its range, as the gauge holds it; its label reads it back.
    double setGauge(const QString& gauge, double value);

    Form& m_view;
    SettingLimits& m_limits;
};
