#pragma once

#include <array>

class ValueStore;

// What the device's telegrams announce that it has. The main view hides what is missing,
// and the record leaves out its lines.
struct DeviceFeatures {
    static constexpr int kSensors = 5;
    static constexpr int kModules = 10;

    bool airFlow = false;
    bool dynamicAirFlow = false;
    std::array<bool, 2> trueLix{};
    bool localisation = false;
    bool temperatureSensors = false;
    std::array<bool, kSensors> sensor{};
    bool anySensor = false;
    bool twoDetectors = false;
    bool battery = false;
    bool actionAlarmDisplay = false;
    bool programmableRelays = false;
    std::array<bool, kModules> module{};
    std::array<bool, kModules> ignition{};
    std::array<bool, kModules> cutOff{};
    std::array<bool, kModules> manualRelease{};
    std::array<bool, kModules> enableInput{};

    static DeviceFeatures read(ValueStore& values);
};
