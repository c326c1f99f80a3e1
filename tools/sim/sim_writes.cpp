// The write telegrams as the device takes them. Offsets count from the first payload byte
// (the device kind), as the tool fills its blocks; numbers are big-endian.
#include "sim/sim_device.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <map>

namespace mq27sim {
namespace {

// Payload bytes without the CRC, for each write command.
const std::map<int, std::size_t> kBlockSizes = {
    {129, 40}, {130, 22}, {131, 8},  {132, 8},  {133, 42}, {134, 23},
    {135, 16}, {136, 29}, {137, 46}, {138, 26}, {139, 10},
};

constexpr int kLearnStart = 255;
constexpr int kLearnStop = 0;
constexpr double kBlinking = 2;

// Reads a block whose size has been checked.
class BlockReader {
public:
    explicit BlockReader(const Bytes& block)
        : m_block(block) {}

    double u8(int at) const { return m_block[pos(at)]; }
    double u16(int at) const { return raw16(at); }
    std::uint32_t raw16(int at) const {
        return std::uint32_t(m_block[pos(at)]) << 8 | m_block[pos(at) + 1];
    }
    std::uint32_t raw32(int at) const { return raw16(at) << 16 | raw16(at + 2); }
    double u32(int at) const { return raw32(at); }
    double f32(int at) const { return std::bit_cast<float>(raw32(at)); }
    double bit(int at, int n) const { return (m_block[pos(at)] >> n) & 1U; }
    std::uint32_t selection() const {
        return std::uint32_t(m_block[6]) | std::uint32_t(m_block[7]) << 8;
    }

private:
    static std::size_t pos(int at) { return static_cast<std::size_t>(at); }
    const Bytes& m_block;
};

std::uint32_t mask(double stored) {
    return static_cast<std::uint32_t>(std::clamp(stored, 0.0, 4294967295.0));
}

std::string hole(int n, const char* bound) {
    return "localisation.suckTime" + std::to_string(n) + bound;
}

} // namespace

void SimDevice::applyWrite(int command, const Bytes& block) {
    const auto size = kBlockSizes.find(command);
    if (size == kBlockSizes.end() || block.size() != size->second)
        return refuse(command, QStringLiteral("block of %1 bytes").arg(block.size()));
    switch (command) {
    case 129:
        return writeDeviceParameters(block);
    case 130:
        return startAirFlowInit(block);
    case 131:
        return resetAlarmAndFault(block);
    case 132:
        return resetMessages(block);
    case 133:
        return writeLocalisation(block);
    case 134:
        return learnMode(block);
    case 135:
        return abortLearnMode();
    case 136:
        return writeModuleParameters(block);
    case 137:
        return writeTemperatures(block);
    case 138:
        return writeRelayMasks(block);
    case 139:
        return identifyModule(block);
    default:
        return;
    }
}

void SimDevice::writeDeviceParameters(const Bytes& block) {
    const BlockReader b(block);
    Changes c = {
        {"controller.alarmResistorValue", b.f32(6)},
        {"controller.normalResistorValue", b.f32(10)},
        {"controller.resistorValueTolerance", b.u8(14)},
        {"airFlow.staticFlowDevSetPoint", b.u8(15)},
        {"airFlow.airFlowFailureDelaySetPoint", b.u16(16)},
        {"controller.alarmDelaySetPoint", b.u8(22)},
        {"controller.extinguishDelay", b.u8(27)},
        {"localisation.locShouldBeOn", b.bit(28, 0)},
        {"controller.failureStorageIsOn", b.bit(28, 3)},
        {"airFlow.flowShouldBeOn", b.bit(28, 4)},
        {"airFlow.flowIsOn", b.bit(28, 4) * value("airFlow.hasFlow")},
        {"airFlow.dynFlowShouldBeOn", b.bit(28, 5)},
        {"airFlow.dynFlowIsOn", b.bit(28, 5) * value("airFlow.hasDynFlow")},
        // Bit 7 set means that the buzzer sounds.
        {"display.buzzerShouldBeOff", 1 - b.bit(28, 7)},
    };
    // Byte 29 says whether the fields of the second detector mean anything.
    const int detectors = b.u8(29) != 0 ? detectorCount() : 1;
    for (int d = 0; d < detectors; ++d) {
        c.push_back({valueName("detectors", d, "smokeValue10SetPoint"), b.u16(18 + 2 * d)});
        c.push_back({valueName("detectors", d, "alarmThreshold"), b.u8(23 + d)});
        c.push_back({valueName("detectors", d, "preAlarmThreshold"), b.u8(25 + d)});
        c.push_back({valueName("detectors", d, "trueLixShouldBeOn"), b.bit(28, 1 + d)});
    }
    for (int d = 0; d < detectorCount(); ++d)
        c.push_back({valueName("detectors", d, "alarmAfterLoc"), b.bit(28, 6)});
    commit(129, c);
}

// The new set points come into force when the initialisation ends.
void SimDevice::startAirFlowInit(const Bytes& block) {
    const BlockReader b(block);
    if (!flag("airFlow.hasFlow")) return refuse(130, QStringLiteral("no air flow monitoring"));
    const Changes setPoints = {
        {"fans.uFanSetPoint", b.u16(6)},
        {"airFlow.altitude", b.u16(8)},
        {"airFlow.airPressureSetPoint", b.u16(10)},
    };
    const QString reason = violation(setPoints);
    if (!reason.isEmpty()) return refuse(130, reason);
    if (!m_airFlowInit->isActive()) m_operatingLedBeforeInit = value("display.ledOp");
    m_airFlowSetPoints = setPoints;
    apply({{"airFlow.flowInitIsActive", 1},
           {"airFlow.flowInitAborted", 0},
           {"display.ledOp", kBlinking}});
    m_airFlowInit->start(m_clock.timerMs(m_behaviour.airFlowInitSeconds));
    report("airflow-init-start", {{"cmd", 130}});
}

void SimDevice::finishAirFlowInit() {
    apply(m_airFlowSetPoints);
    apply({{"fans.fanVoltage", value("fans.uFanSetPoint")},
           {"airFlow.flowRefValue", value("airFlow.flowValue")},
           {"airFlow.flowInitIsActive", 0},
           {"display.ledOp", m_operatingLedBeforeInit}});
    report("airflow-init-end");
}

// Item n of the selection stands for message bit n and fault bits n and n + 16.
void SimDevice::resetAlarmAndFault(const Bytes& block) {
    const std::uint32_t items = BlockReader(block).selection();
    const std::uint32_t faults = mask(value("faults.pending")) & ~(items | items << 16);
    Changes c = {
        {"faults.pending", double(faults)},
        {"messages.pending", double(mask(value("messages.pending")) & ~items)},
    };
    // The alarm is reset with every selection.
    for (const char* name :
         {"firePanel.alarmState1", "firePanel.alarmState2", "firePanel.preAlarmState1",
          "firePanel.preAlarmState2", "display.ledMainAlarm", "display.ledAlarm1",
          "display.ledAlarm2", "display.ledPreAlarm1", "display.ledPreAlarm2"})
        c.push_back({name, 0});
    for (int d = 0; d < detectorCount(); ++d) {
        c.push_back({valueName("detectors", d, "alarmLED"), 0});
        c.push_back({valueName("detectors", d, "preAlarmLED"), 0});
    }
    if ((faults & mask(value("faults.valid"))) == 0)
        for (const char* name :
             {"controller.mainFailureFlag", "display.ledFailure", "firePanel.faultState"})
            c.push_back({name, 0});
    commit(131, c);
}

void SimDevice::resetMessages(const Bytes& block) {
    const std::uint32_t items = BlockReader(block).selection();
    commit(132,
           {
               {"faults.latched", double(mask(value("faults.latched")) & ~(items | items << 16))},
               {"messages.latched", double(mask(value("messages.latched")) & ~items)},
           });
}

// The five windows, blow time and fan voltages; the device leaves learn mode with them.
void SimDevice::writeLocalisation(const Bytes& block) {
    const BlockReader b(block);
    if (!flag("localisation.hasSingleHoleDetection"))
        return refuse(133, QStringLiteral("no localisation"));
    Changes c;
    for (int n = 1; n <= 5; ++n) {
        const double max = b.u16(6 + 4 * (n - 1));
        const double min = b.u16(8 + 4 * (n - 1));
        if (min > max)
            return refuse(
                133, QStringLiteral("window of hole %1 from %2 to %3").arg(n).arg(min).arg(max));
        c.push_back({hole(n, "Max"), max});
        c.push_back({hole(n, "Min"), min});
    }
    c.insert(c.end(), {{"localisation.blowTime", b.u16(26)},
                       {"fans.blowFanVoltage", b.u16(28)},
                       {"fans.suckFanLocVoltage", b.u16(30)},
                       {"localisation.learningIsOn", 0},
                       {"localisation.locIsActive", 0}});
    const bool wasLearning = flag("localisation.learningIsOn");
    if (!commit(133, c)) return;
    m_measurement->stop();
    if (wasLearning) report("learn-end", {{"cmd", 133}});
}

void SimDevice::learnMode(const Bytes& block) {
    const BlockReader b(block);
    const int mode = static_cast<int>(b.u8(12));
    if (mode == kLearnStop) return stopMeasurement();
    if (mode != kLearnStart) return refuse(134, QStringLiteral("learn mode byte %1").arg(mode));
    if (!flag("localisation.hasSingleHoleDetection"))
        return refuse(134, QStringLiteral("no localisation"));
    const bool wasLearning = flag("localisation.learningIsOn");
    if (!commit(134, {{"localisation.blowLrnTime", b.u16(6)},
                      {"fans.blowFanLrnVoltage", b.u16(8)},
                      {"fans.suckFanLrnVoltage", b.u16(10)},
                      {"localisation.learningIsOn", 1},
                      {"localisation.locIsActive", 1},
                      {"localisation.locLocalized", 0}}))
        return;
    if (!wasLearning) report("learn-start", {{"cmd", 134}});
    m_measurement->start(m_clock.timerMs(value("localisation.blowLrnTime")));
    report("measurement-start", {{"blowTime", value("localisation.blowLrnTime")}});
}

// The measurement reports the transport times of the profile in turn.
void SimDevice::finishMeasurement() {
    const std::vector<double>& times = m_behaviour.holeTimes;
    const double seconds = times.empty() ? 10.0 : times[m_measurementsDone++ % times.size()];
    const int suckTime = static_cast<int>(std::clamp(std::round(seconds * 100), 0.0, 65535.0));
    const int firePlace = firePlaceOf(suckTime);
    apply({{"localisation.firePlaceSuckTime", double(suckTime)},
           {"localisation.firePlace", double(firePlace)},
           {"localisation.locIsActive", 0},
           {"localisation.locLocalized", firePlace > 0 ? 1.0 : 0.0}});
    report("measurement-end", {{"suckTime", suckTime}, {"firePlace", firePlace}});
}

void SimDevice::stopMeasurement() {
    if (!m_measurement->isActive()) return;
    m_measurement->stop();
    apply({{"localisation.locIsActive", 0}});
    report("measurement-aborted", {{"cmd", 134}});
}

void SimDevice::abortLearnMode() {
    const bool wasLearning = flag("localisation.learningIsOn");
    m_measurement->stop();
    apply({{"localisation.learningIsOn", 0}, {"localisation.locIsActive", 0}});
    report("applied", {{"cmd", 135}});
    if (wasLearning) report("learn-end", {{"cmd", 135}});
}

void SimDevice::writeModuleParameters(const Bytes& block) {
    const BlockReader b(block);
    const int m = moduleIndex(b.raw32(6));
    if (m < 0)
        return refuse(136, QStringLiteral("no module with serial number %1").arg(b.raw32(6)));
    if (!flag(valueName("modules", m, "hasManualActivationLine")))
        return refuse(136, QStringLiteral("module without manual release line"));
    commit(136, {{valueName("modules", m, "alarmResistorValue"), b.f32(10)},
                 {valueName("modules", m, "normalResistorValue"), b.f32(14)},
                 {valueName("modules", m, "resistorValueTolerance"), b.u8(18)}});
}

// Fields of a sensor that isn't there are left alone.
void SimDevice::writeTemperatures(const Bytes& block) {
    const BlockReader b(block);
    Changes c;
    for (int n = 0; n < 5; ++n) {
        if (!flag(valueName("sensors", n, "hasNTC"))) continue;
        c.push_back({valueName("sensors", n, "ntcAlarmValue"), b.f32(6 + 4 * n)});
        c.push_back({valueName("sensors", n, "ntcBeta"), b.u16(26 + 2 * n)});
    }
    if (c.empty()) return refuse(137, QStringLiteral("no temperature sensors"));
    commit(137, c);
}

void SimDevice::writeRelayMasks(const Bytes& block) {
    const BlockReader b(block);
    if (!flag("features.hasProgRel")) return refuse(138, QStringLiteral("no programmable relays"));
    Changes c;
    for (int r = 1; r <= 5; ++r) {
        const int at = 6 + 2 * (r - 1);
        c.push_back({"relays.combineMask" + std::to_string(r), b.u8(at) + 256 * b.u8(at + 1)});
    }
    commit(138, c);
}

void SimDevice::identifyModule(const Bytes& block) {
    const std::uint32_t serial = BlockReader(block).raw32(6);
    const int m = moduleIndex(serial);
    if (m < 0) return refuse(139, QStringLiteral("no module with serial number %1").arg(serial));
    if (!m_identify[m]->isActive()) {
        std::vector<double>& saved = m_ledsBeforeIdentify[m];
        saved.clear();
        for (const char* led : {"ledOp", "ledBlocked", "ledFailure", "ledReleased"}) {
            saved.push_back(value(valueName("modules", m, led)));
            apply({{valueName("modules", m, led), kBlinking}});
        }
    }
    m_identify[m]->start(m_clock.timerMs(m_behaviour.identifySeconds));
    report("identify-start", {{"module", static_cast<double>(serial)}});
}

void SimDevice::finishIdentify(int module) {
    const std::vector<double>& saved = m_ledsBeforeIdentify[module];
    const char* leds[] = {"ledOp", "ledBlocked", "ledFailure", "ledReleased"};
    for (std::size_t i = 0; i < saved.size() && i < std::size(leds); ++i)
        apply({{valueName("modules", module, leds[i]), saved[i]}});
    report("identify-end", {{"module", value(valueName("modules", module, "serialNum"))}});
}

} // namespace mq27sim
