#pragma once

// The limits and standard values of the settings pages. The main view sets the defaults at
// its load; every display refresh replaces those that the device reports.
struct SettingLimits {
    double alarmDelayMin = 0, alarmDelayMax = 60, alarmDelayStandard = 10;                // s
    double airFlowRangeMin = 10, airFlowRangeMax = 95, airFlowRangeStandard = 30;         // %
    double faultDelayMin = 30, faultDelayMax = 3600, faultDelayStandard = 100;            // s
    double extinguishDelayMin = 0, extinguishDelayMax = 60, extinguishDelayStandard = 10; // s
    double preAlarmThresholdMin = 10, preAlarmThresholdMax = 80, preAlarmThresholdStandard = 60;
    double altitudeMin = 0, altitudeMax = 9000, altitudeStandard = 0;               // m
    double airPressureMin = 700, airPressureMax = 1400, airPressureStandard = 1013; // hPa
    double fanVoltageMin = 9000, fanVoltageMax = 13500, fanVoltageStandard = 9000;  // mV
    double sensorTempAlarmMin = 0, sensorTempAlarmMax = 1000; // tenths of a degree
    double resistorMin = 0, resistorMax = 50000000;           // Ohm
    double toleranceMin = 0, toleranceMax = 99;               // %
    double betaMin = 3400, betaMax = 4500;
    bool buzzerStandard = true;
    bool faultStoreStandard = false;
    bool dynamicAirFlowStandard = false;
    bool localisationStandard = false;
    bool alarmAfterLocStandard = false;
    bool trueLixStandard = true;
};
