#pragma once

#include <array>
#include <cstdint>

#include <QObject>

class AppState;
class DeviceValues;

// The localisation of a fire along the aspiration pipe, as the main view keeps it current:
// the device's time windows of the five holes, turned back into the transport times the
// engineer learned, the number of holes, the blow time and the fan voltages.
class Localisation : public QObject {
    Q_OBJECT

public:
    Localisation(AppState& state, DeviceValues& values);

    // At the head of every refresh of the main view.
    void ShowLocData();

    // Window bounds of each hole as last read, in 0.01 s.
    std::array<std::int32_t, 5> LocHoleMinRead{};
    std::array<std::int32_t, 5> LocHoleMaxRead{};

private:
    void readBounds();
    void showTransportTimes();
    void showNumberOfHoles();

    AppState& m_state;
    DeviceValues& m_values;
};
