#include "engine/commands.h"

#include "common/appstate.h"
#include "common/mainview_elements.h"
#include "engine/pollengine.h"
#include "link/telegram.h"
#include "values/conversions.h"
#include "values/devicevalues.h"

namespace {

constexpr int kResetAlarmAndFault = 131;
constexpr int kResetMessages = 132;
constexpr int kBusItemIdent = 139;
constexpr int kAllItems = 16;

// Offsets 6 and 7: items 0 to 7 and 8 to 15, one bit each; 16 sets all.
void appendSelection(Bytes& block, int selection) {
    if (selection == kAllItems) {
        block.push_back(255);
        block.push_back(255);
        return;
    }
    const unsigned bits = selection >= 0 && selection < kAllItems ? 1u << selection : 0u;
    block.push_back(static_cast<std::uint8_t>(bits & 0xFFu));
    block.push_back(static_cast<std::uint8_t>(bits >> 8));
}

} // namespace

DeviceCommands::DeviceCommands(AppState& state, PollEngine& engine, DeviceValues& values)
    : m_state(state)
    , m_engine(engine)
    , m_values(values) {}

void DeviceCommands::ResetAlarmAndFault(int selection) {
    std::optional<Bytes> block = blockHead(kResetAlarmAndFault);
    if (!block) return;
    appendSelection(*block, selection);
    send(*block);
}

void DeviceCommands::ResetMessages(int selection) {
    std::optional<Bytes> block = blockHead(kResetMessages);
    if (!block) return;
    appendSelection(*block, selection);
    send(*block);
}

void DeviceCommands::BusItemIdent(int index) {
    std::optional<Bytes> block = blockHead(kBusItemIdent);
    if (!block) return;
    const QString serial = m_state.forms.frmDisplay().caption(frmDisplay::lblExtSerialNo[index]);
    std::uint8_t b[4] = {};
    if (ULong2Byte(serial, b[0], b[1], b[2], b[3]) != 0) return;
    block->insert(block->end(), b, b + 4);
    send(*block);
}

std::optional<Bytes> DeviceCommands::blockHead(int command) const {
    Bytes block{telegram::kOwnDeviceKind, static_cast<std::uint8_t>(command), 0, 0, 0, 0};
    const QString serial = m_state.forms.frmDisplay().caption(frmDisplay::lblSerialNo[0]);
    if (ULong2Byte(serial, block[2], block[3], block[4], block[5]) != 0) return std::nullopt;
    return block;
}

void DeviceCommands::send(const Bytes& block) {
    clsMQ27Values* values = m_values.get();
    if (!values) return;
    const int command = block[1];
    std::int16_t status = -1;
    if (command == kResetAlarmAndFault) status = values->SetResetAlarmAndFault(block);
    if (command == kResetMessages) status = values->SetResetMessages(block);
    if (command == kBusItemIdent) status = values->SetExtinguisherIdent(block);
    if (status == 0) m_engine.SendCommand(command);
}
