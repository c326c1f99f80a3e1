#include "engine/settingswriter.h"

#include "engine/commands.h"

SettingsWriter::SettingsWriter(DeviceCommands& commands, const SettingLimits& limits)
    : m_commands(commands)
    , m_limits(limits) {}

std::optional<Bytes> SettingsWriter::check(SettingPage page, SettingInputs& inputs) {
    switch (page) {
    case SettingPage::Settings:
        return m_commands.SettingsAssume(inputs, m_limits);
    case SettingPage::AirFlow:
        return m_commands.AirFlowInit(inputs, m_limits);
    case SettingPage::Relays:
        return m_commands.RelayAssume(inputs);
    case SettingPage::Temperatures:
        return m_commands.SensorTempAlarmAssume(inputs, m_limits);
    }
    return std::nullopt;
}

bool SettingsWriter::send(const Bytes& block) {
    return m_commands.Send(block);
}
