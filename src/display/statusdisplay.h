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
    void ShowMeasurements(ValueStore& v, Units units, const QLocale& locale);
    // Steps after the fault list: identity, ranges, settings, relay masks, modules.
    void ShowIdentityAndSettings(ValueStore& v, const QLocale& locale);

private:
    void SmokeLevels(ValueStore& v, bool perFoot, const QLocale& locale);
    void AirFlow(ValueStore& v, bool fahrenheit, const QLocale& locale);
    void Chambers(ValueStore& v, const QLocale& locale);
    void LedStates(ValueStore& v);
    void SensorTemperatures(ValueStore& v, bool fahrenheit, const QLocale& locale);
    void RelaysAndInputs(ValueStore& v);
    void Identity(ValueStore& v, const QLocale& locale);
    void Ranges(ValueStore& v);
    void Settings(ValueStore& v, const QLocale& locale);
    void RelayMasks(ValueStore& v);
    void Modules(ValueStore& v, const QLocale& locale);

    // The gauge's value within its range, as the gauge holds it; its label reads it back.
    double SetGauge(const QString& gauge, double value);

    Form& m_view;
    SettingLimits& m_limits;
};
