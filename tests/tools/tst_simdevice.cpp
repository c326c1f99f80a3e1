// The virtual device as the tool meets it through the pseudo-terminal: its read telegrams,
// their values decoded both by hand and through the tool's value store, and the effect of
// each write telegram.
#include "sim/sim_device.h"
#include "tools/simclient.h"
#include "values/mq27values.h"

#include <cmath>
#include <functional>

#include <QDateTime>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

using namespace simtest;
using mq27sim::ValueStore;

namespace {

constexpr std::uint32_t kFull = 1234567;

// A write block as the tool's routines fill it, offsets from the device kind on.
class Block {
public:
    Block(int command, std::uint32_t serial, int size)
        : b_(std::size_t(size), 0) {
        const Bytes head = body(10, command, serial);
        std::copy(head.begin(), head.end(), b_.begin());
    }
    Block& u8(int at, double v) {
        b_.at(std::size_t(at)) = std::uint8_t(v);
        return *this;
    }
    Block& u16(int at, double v) {
        const auto n = unsigned(v);
        return u8(at, n >> 8).u8(at + 1, n & 255);
    }
    Block& u32(int at, double v) {
        const auto n = std::uint32_t(v);
        return u16(at, n >> 16).u16(at + 2, n & 0xFFFF);
    }
    Block& f32(int at, double v) { return u32(at, std::bit_cast<std::uint32_t>(float(v))); }
    Bytes frame() const { return frameOf(b_); }

private:
    Bytes b_;
};

// Command 129 as the advanced settings write it: everything as the device reports it.
Block deviceParameters(const ValueStore& v) {
    Block b(129, kFull, 40);
    b.f32(6, v.get("controller.alarmResistorValue"))
        .f32(10, v.get("controller.normalResistorValue"))
        .u8(14, v.get("controller.resistorValueTolerance"))
        .u8(15, v.get("airFlow.staticFlowDevSetPoint"))
        .u16(16, v.get("airFlow.airFlowFailureDelaySetPoint"))
        .u16(18, v.get("detectors[0].smokeValue10SetPoint"))
        .u16(20, v.get("detectors[1].smokeValue10SetPoint"))
        .u8(22, v.get("controller.alarmDelaySetPoint"))
        .u8(23, v.get("detectors[0].alarmThreshold"))
        .u8(24, v.get("detectors[1].alarmThreshold"))
        .u8(25, v.get("detectors[0].preAlarmThreshold"))
        .u8(26, v.get("detectors[1].preAlarmThreshold"))
        .u8(27, v.get("controller.extinguishDelay"))
        .u8(29, v.get("controller.hasTwoDetectors") ? 255 : 0);
    const char* flags[] = {"localisation.locShouldBeOn",     "detectors[0].trueLixShouldBeOn",
                           "detectors[1].trueLixShouldBeOn", "controller.failureStorageIsOn",
                           "airFlow.flowShouldBeOn",         "airFlow.dynFlowShouldBeOn",
                           "detectors[0].alarmAfterLoc"};
    int bits = 0;
    for (int i = 0; i < 7; ++i)
        bits |= v.get(flags[i]) != 0 ? 1 << i : 0;
    bits |= v.get("display.buzzerShouldBeOff") != 0 ? 0 : 128;
    return b.u8(28, bits);
}

Block selection(int command, int low, int high) {
    return std::move(Block(command, kFull, 8).u8(6, low).u8(7, high));
}

Block localisation(const std::vector<int>& bounds, int blowTime, int blowFan, int suckFan) {
    Block b(133, kFull, 42);
    for (std::size_t i = 0; i < bounds.size(); ++i)
        b.u16(6 + 2 * int(i), bounds[i]);
    return std::move(b.u16(26, blowTime).u16(28, blowFan).u16(30, suckFan));
}

Block learn(int seconds, int blowFan, int suckFan, int mode) {
    return std::move(
        Block(134, kFull, 23).u16(6, seconds).u16(8, blowFan).u16(10, suckFan).u8(12, mode));
}

Block module(std::uint32_t serial, double alarm, double normal, int tolerance) {
    return std::move(
        Block(136, kFull, 29).u32(6, serial).f32(10, alarm).f32(14, normal).u8(18, tolerance));
}

Block temperatures(const double (&alarm)[5], const int (&beta)[5]) {
    Block b(137, kFull, 46);
    for (int n = 0; n < 5; ++n)
        b.f32(6 + 4 * n, alarm[n]).u16(26 + 2 * n, beta[n]);
    return b;
}

using Snapshot = QMap<QString, double>;

Snapshot snapshot(const ValueStore& values) {
    Snapshot s;
    for (const std::string& name : values.names())
        s.insert(QString::fromStdString(name), values.get(name));
    return s;
}

Snapshot changes(const Snapshot& before, const Snapshot& after) {
    Snapshot diff;
    for (auto it = after.begin(); it != after.end(); ++it)
        if (before.value(it.key()) != it.value()) diff.insert(it.key(), it.value());
    return diff;
}

QString describe(const Snapshot& s) {
    QStringList parts;
    for (auto it = s.begin(); it != s.end(); ++it)
        parts << QStringLiteral("%1=%2").arg(it.key()).arg(it.value(), 0, 'g', 10);
    return parts.join(", ");
}

// The full profile as plain JSON, read independently of the simulator's loader.
class ProfileJson {
public:
    explicit ProfileJson(const QString& name) {
        QFile f(testsupport::sourcePath("tools/profiles/" + name + ".json"));
        f.open(QIODevice::ReadOnly);
        root_ = QJsonDocument::fromJson(f.readAll()).object();
    }

    QJsonValue at(const QString& path) const {
        QJsonValue v = root_;
        static const QRegularExpression step(R"(^(\w+)(?:\[(\d+)\])?$)");
        for (const QString& part : path.split('.')) {
            const auto m = step.match(part);
            v = v.toObject().value(m.captured(1));
            if (m.hasCaptured(2)) v = v.toArray().at(m.captured(2).toInt());
        }
        return v;
    }

    // Numbers, flags, drifting values and bit lists as the one number the device holds.
    std::optional<double> number(const QString& path) const {
        const QJsonValue v = at(path);
        if (v.isBool()) return v.toBool() ? 1 : 0;
        if (v.isDouble()) return v.toDouble();
        if (v.isObject()) return v.toObject().value("value").toDouble();
        if (v.isArray()) {
            double mask = 0;
            for (const QJsonValue& bit : v.toArray())
                mask += std::ldexp(1.0, bit.toInt());
            return mask;
        }
        return std::nullopt;
    }

private:
    QJsonObject root_;
};

// Compares each getter with the profile; counts what it compared.
class ProfileCheck {
public:
    explicit ProfileCheck(const ProfileJson& json)
        : json_(json) {}

    void value(const QString& path, double actual) {
        const auto expected = json_.number(path);
        if (!expected) return;
        ++compared_;
        if (float(*expected) != float(actual))
            mismatches_
                << QStringLiteral("%1: profile %2, getter %3").arg(path).arg(*expected).arg(actual);
    }
    void mask(const QString& path, int bits, const std::function<int(std::int16_t)>& getter) {
        double actual = 0;
        for (int b = 0; b < bits; ++b)
            actual += getter(std::int16_t(b)) != 0 ? std::ldexp(1.0, b) : 0;
        value(path, actual);
    }
    void text(const QString& path, const QString& actual) {
        ++compared_;
        if (json_.at(path).toString() != actual)
            mismatches_ << QStringLiteral("%1: profile %2, getter %3")
                               .arg(path, json_.at(path).toString(), actual);
    }

    int compared() const { return compared_; }
    QString mismatches() const { return mismatches_.join('\n'); }

private:
    const ProfileJson& json_;
    int compared_ = 0;
    QStringList mismatches_;
};

void checkAirFlowAndLocalisation(ProfileCheck& c, clsMQ27Values& v) {
    c.value("airFlow.flowValue", v.DET_GetFlowValue());
    c.value("airFlow.flowRefValue", v.DET_GetFlowRefValue());
    c.value("airFlow.airTemperature", v.DET_GetAirTemperature());
    c.value("airFlow.altitude", v.DET_GetAltitude());
    c.value("airFlow.airPressureSetPoint", v.DET_GetAirPressureSetPoint());
    c.value("airFlow.airFlowFailureDelayMax", v.DET_GetAirFlowFailureDelayMax());
    c.value("airFlow.airFlowFailureDelayMin", v.DET_GetAirFlowFailureDelayMin());
    c.value("airFlow.airFlowFailureDelaySetPoint", v.DET_GetAirFlowFailureDelaySetPoint());
    c.value("airFlow.staticFlowDevMax", v.DET_GetStaticFlowDevMax());
    c.value("airFlow.staticFlowDevMin", v.DET_GetStaticFlowDevMin());
    c.value("airFlow.staticFlowDevSetPoint", v.DET_GetStaticFlowDevSetPoint());
    c.value("airFlow.flowInitIsActive", v.DET_GetFlowInitIsActive());
    c.value("airFlow.hasFlow", v.DET_GetHasFlow());
    c.value("airFlow.flowShouldBeOn", v.DET_GetFlowShouldBeOn());
    c.value("airFlow.flowIsOn", v.DET_GetFlowIsOn());
    c.value("airFlow.hasDynFlow", v.DET_GetHasDynFlow());
    c.value("airFlow.dynFlowShouldBeOn", v.DET_GetDynFlowShouldBeOn());
    c.value("airFlow.dynFlowIsOn", v.DET_GetDynFlowIsOn());
    c.value("airFlow.flowInitAborted", v.DET_GetFlowInitAborted());
    c.value("airFlow.airFlowError", v.DET_GetAirFlowError());
    c.value("airFlow.flowDynDevPlus", v.DET_GetFlowDynDevPlus());
    c.value("airFlow.flowDynDevMinus", v.DET_GetFlowDynDevMinus());
    c.value("airFlow.flowStatDevPlus", v.DET_GetFlowStatDevPlus());
    c.value("airFlow.flowStatDevMinus", v.DET_GetFlowStatDevMinus());
    c.value("airFlow.temperatureIsHigh", v.DET_GetTemperatureIsHigh());
    c.value("airFlow.temperatureIsLow", v.DET_GetTemperatureIsLow());
    c.value("fans.uFanMax", v.DET_GetUFanMax());
    c.value("fans.uFanMin", v.DET_GetUFanMin());
    c.value("fans.uFanSetPoint", v.DET_GetUFanSetPoint());
    c.value("fans.fanVoltage", v.DET_GetFanVoltage());
    c.value("fans.suckFanLrnVoltage", v.DET_GetSuckFanLrnVoltage());
    c.value("fans.blowFanLrnVoltage", v.DET_GetBlowFanLrnVoltage());
    c.value("fans.suckFanLocVoltage", v.DET_GetSuckFanLocVoltage());
    c.value("fans.blowFanVoltage", v.DET_GetBlowFanVoltage());
    c.value("fans.fanError", v.DET_GetFanError());
    c.value("localisation.blowTime", v.DET_GetBlowTime());
    c.value("localisation.blowLrnTime", v.DET_GetBlowLrnTime());
    const float windows[] = {v.DET_GetSuckTime1Max(), v.DET_GetSuckTime1Min(),
                             v.DET_GetSuckTime2Max(), v.DET_GetSuckTime2Min(),
                             v.DET_GetSuckTime3Max(), v.DET_GetSuckTime3Min(),
                             v.DET_GetSuckTime4Max(), v.DET_GetSuckTime4Min(),
                             v.DET_GetSuckTime5Max(), v.DET_GetSuckTime5Min()};
    for (int i = 0; i < 10; ++i)
        c.value(
            QStringLiteral("localisation.suckTime%1%2").arg(i / 2 + 1).arg(i % 2 ? "Min" : "Max"),
            windows[i]);
    c.value("localisation.firePlaceSuckTime", v.DET_GetFirePlaceSuckTime());
    c.value("localisation.firePlace", v.DET_GetFirePlace());
    c.value("localisation.hasSingleHoleDetection", v.DET_GetHasSingleHoleDetection());
    c.value("localisation.locShouldBeOn", v.DET_GetLocShouldBeOn());
    c.value("localisation.locIsActive", v.DET_GetLocIsActive());
    c.value("localisation.learningIsOn", v.DET_GetLearningIsOn());
    c.value("localisation.locError", v.DET_GetLocError());
    c.value("localisation.locLocalized", v.DET_GetLocLocalized());
}

void checkDetectors(ProfileCheck& c, clsMQ27Values& v) {
    for (std::int16_t d = 0; d < 2; ++d) {
        const QString p = QStringLiteral("detectors[%1].").arg(d);
        c.value(p + "detSerialNum", v.DET_GetDetSerialNum(d));
        c.text(p + "detSoftwareNum", v.DET_GetDetSoftwareNum(d));
        c.text(p + "detParameterID", v.DET_GetDetParameterID(d));
        c.value(p + "smokeValue10Max", v.DET_GetSmokeValue10Max(d));
        c.value(p + "smokeValue10Min", v.DET_GetSmokeValue10Min(d));
        c.value(p + "smokeValue10SetPoint", v.DET_GetSmokeValue10SetPoint(d));
        c.value(p + "chamberValueRatio", v.DET_GetChamberValueRatio(d));
        c.value(p + "alarmThreshold", v.DET_GetAlarmThreshold(d));
        c.value(p + "preAlarmThreshold", v.DET_GetPreAlarmThreshold(d));
        c.value(p + "smokeValueRatio", v.DET_GetSmokeValueRatio(d));
        c.value(p + "alarmLED", v.DET_GetAlarmLED(d));
        c.value(p + "preAlarmLED", v.DET_GetPreAlarmLED(d));
        c.value(p + "failureLED", v.DET_GetFailureLED(d));
        c.value(p + "chamberIsDirty", v.DET_GetChamberIsDirty(d));
        c.value(p + "lightTooDark", v.DET_GetLightTooDark(d));
        c.value(p + "smokeError", v.DET_GetSmokeError(d));
        c.value(p + "detDataStorageError", v.DET_GetDetDataStorageError(d));
        c.value(p + "detProgramStorageError", v.DET_GetDetProgramStorageError(d));
        c.value(p + "detProgramError", v.DET_GetDetProgramError(d));
        c.value(p + "detCommError", v.DET_GetDetCommError(d));
        c.value(p + "hasTrueLix", v.DET_GetHasTrueLix(d));
        c.value(p + "trueLixShouldBeOn", v.DET_GetTrueLixShouldBeOn(d));
        c.value(p + "alarmAfterLoc", v.DET_GetAlarmAfterLoc(d));
    }
}

void checkController(ProfileCheck& c, clsMQ27Values& v) {
    c.text("controller.softwareNum", v.GetSoftwareNum());
    c.text("controller.parameterID", v.GetParameterID());
    c.value("controller.uinBitVoltage", v.GetUinBitVoltage());
    c.value("controller.uinVoltage", v.CTRL_GetUinVoltage());
    c.value("controller.alarmResistorValue", v.GetAlarmResistorValue());
    c.value("controller.normalResistorValue", v.GetNormalResistorValue());
    c.value("controller.numWriteFailureStorage", v.GetNumWriteFailureStorage());
    c.value("controller.numWriteParameterStorage", v.GetNumWriteParameterStorage());
    c.value("controller.numResets", v.GetNumResets());
    c.value("controller.uinADC", v.CTRL_GetUinADC());
    c.value("controller.uinMinADC", v.GetUinMinADC());
    c.value("controller.uNTCMax", v.GetUNTCMax());
    c.value("controller.uNTCMin", v.GetUNTCMin());
    c.value("controller.resetCounter", v.GetResetCounter());
    c.value("controller.alarmDelayMax", v.DET_GetAlarmDelayMax());
    c.value("controller.alarmDelayMin", v.DET_GetAlarmDelayMin());
    c.value("controller.alarmDelaySetPoint", v.DET_GetAlarmDelaySetPoint());
    c.value("controller.extinguishDelay", v.GetExtinguishDelay());
    c.value("controller.resistorValueTolerance", v.GetResistorValueTolerance());
    c.value("controller.ntcDisplayed", v.CTRL_GetNTCDisplayed());
    c.value("controller.resetInput", v.CTRL_GetResetInput());
    c.value("controller.enableInputState", v.CTRL_GetEnableInputState());
    c.value("controller.manActLineState", v.CTRL_GetManActLineState());
    c.value("controller.mainFailureFlag", v.CTRL_GetMainFailureFlag());
    c.value("controller.failureStorageIsOn", v.DET_GetFailureStorageIsOn());
    c.value("controller.activated", v.CTRL_GetActivated());
    c.value("controller.released", v.CTRL_GetReleased());
    c.value("controller.isReleased", v.CTRL_GetIsReleased());
    c.value("controller.stateOfChoice", v.DISP_GetStateOfChoice());
    c.value("controller.constDataError", v.GetConstDataError());
    c.value("controller.parameterStorageError", v.GetParameterStorageError());
    c.value("controller.programStorageError", v.CTRL_GetProgramStorageError());
    c.value("controller.programError", v.CTRL_GetProgramError());
    c.value("controller.hasBattery", v.CTRL_GetHasBattery());
    c.value("controller.batteryIsOn", v.CTRL_GetBatteryIsOn());
    for (std::int16_t n = 0; n < 5; ++n) {
        const QString p = QStringLiteral("sensors[%1].").arg(n);
        c.value(p + "ntcTemperature", v.TEM_GetNTCTemperature(n));
        c.value(p + "ntcAlarmValue", v.GetNTCAlarmValue(n));
        c.value(p + "ntcBeta", v.GetNTCbeta(n));
        c.value(p + "ntcVoltageADC", v.io_GetNTCVoltageADC(n));
        c.value(p + "hasNTC", v.TEM_GetHasNTC(n));
        c.value(p + "ntcState", v.TEM_GetNTCState(n));
    }
}

void checkDisplayAndMasks(ProfileCheck& c, clsMQ27Values& v) {
    c.mask("relays.relayStates", 5, [&](std::int16_t r) { return v.REL_GetRelState(r); });
    for (std::int16_t r = 0; r < 5; ++r)
        c.mask(QStringLiteral("relays.combineMask%1").arg(r + 1), 16,
               [&](std::int16_t b) { return v.GetRelayCombineMask(r, b); });
    c.mask("relays.eventMask", 16, [&](std::int16_t b) { return v.REL_GetRelEventMask(b); });
    c.value("display.twoButtonDelay", v.GetTwoButtonDelay());
    c.value("display.resetButtonDelay", v.GetResetButtonDelay());
    c.value("display.resetButton", v.DISP_GetResetButton());
    c.value("display.temperatureButton", v.DISP_GetTemperatureButton());
    c.value("display.keySwitch", v.DISP_GetKeySwitch());
    c.value("display.virtualConfigButton", v.DISP_GetVirtualConfigButton());
    c.value("display.virtualAirFlowInitButton", v.DISP_GetVirtualAirFlowInitButton());
    c.value("display.virtualResetButton", v.DISP_GetVirtualResetButton());
    c.value("display.virtualTempChoiceButton", v.DISP_GetVirtualTempChoiceButton());
    c.value("display.virtualSoundOffButton", v.DISP_GetVirtualSoundOffButton());
    c.value("display.buzzerShouldBeOff", v.GetBuzzerShouldBeOff());
    c.value("display.buzzerState", v.DISP_GetBuzzerState());
    c.value("display.ledOp", v.DISP_GetLedOp());
    c.value("display.ledFailure", v.DISP_GetLedFailure());
    c.value("display.ledBatt", v.DISP_GetLedBatt());
    c.value("display.ledMainsFailure", v.DISP_GetLedMainsFailure());
    c.value("display.ledBlocked", v.DISP_GetLedBlocked());
    c.value("display.ledReleased", v.DISP_GetLedReleased());
    c.value("display.ledMainAlarm", v.DISP_GetLedMainAlarm());
    c.value("display.ledAlarm1", v.DISP_GetLedAlarm(0));
    c.value("display.ledAlarm2", v.DISP_GetLedAlarm(1));
    c.value("display.ledPreAlarm1", v.DISP_GetLedPreAlarm(0));
    c.value("display.ledPreAlarm2", v.DISP_GetLedPreAlarm(1));
    c.value("display.ledA", v.DISP_GetLedA());
    c.value("display.ledB", v.DISP_GetLedB());
    c.value("display.ledC", v.DISP_GetLedC());
    c.value("display.ledD", v.DISP_GetLedD());
    c.value("display.ledE", v.DISP_GetLedE());
    c.value("display.bargraphLevel", v.DISP_GetBargraphLevel());
    c.value("display.temperatureCode", v.DISP_GetTemperatureCode());
    c.value("firePanel.blockedState", v.BMZ_GetBlockedState());
    c.value("firePanel.alarmState1", v.BMZ_GetAlarmState(0));
    c.value("firePanel.alarmState2", v.BMZ_GetAlarmState(1));
    c.value("firePanel.preAlarmState1", v.BMZ_GetPreAlarmState(0));
    c.value("firePanel.preAlarmState2", v.BMZ_GetPreAlarmState(1));
    c.value("firePanel.faultState", v.BMZ_GetFaultState());
    c.value("firePanel.releasedState", v.BMZ_GetReleasedState());
    c.mask("faults.pending", 32, [&](std::int16_t b) { return v.CTRL_GetFailures(b); });
    c.mask("faults.latched", 32, [&](std::int16_t b) { return v.GetSavedFailures(b); });
    c.mask("faults.valid", 32, [&](std::int16_t b) { return v.CTRL_GetValidFailureMask(b); });
    c.mask("messages.pending", 16, [&](std::int16_t b) { return v.CTRL_GetMessages(b); });
    c.mask("messages.latched", 16, [&](std::int16_t b) { return v.GetSavedMessages(b); });
    c.mask("messages.valid", 16, [&](std::int16_t b) { return v.CTRL_GetValidMessageMask(b); });
    c.value("features.defaultValuesUsed", v.GetDefaultValuesUsed());
    c.value("features.hasBatteryLoader", v.GetHasBatteryLoader());
    c.value("features.hasNetworkModule", v.GetHasNetworkModule());
    c.value("features.hasBargraphDisplay", v.GetHasBargraphDisplay());
    c.value("features.hasPreAlarmDisplay", v.GetHasPreAlarmDisplay());
    c.value("features.hasTemperatureSensors", v.GetHasTemperatureSensors());
    c.value("features.hasProgRel", v.GetHasProgRel());
}

void checkModules(ProfileCheck& c, clsMQ27Values& v) {
    for (std::int16_t m = 0; m < 4; ++m) {
        const QString p = QStringLiteral("modules[%1].").arg(m);
        c.value(p + "serialNum", v.EXT_GetSerialNum(m));
        c.text(p + "softwareNum", v.EXT_GetSoftwareNum(m));
        c.text(p + "parameterID", v.EXT_GetParameterID(m));
        c.value(p + "alarmResistorValue", v.EXT_GetAlarmResistorValue(m));
        c.value(p + "normalResistorValue", v.EXT_GetNormalResistorValue(m));
        c.value(p + "ignitionVoltage", v.EXT_GetIgnitionVoltage(m));
        c.value(p + "ignitionVoltageMin", v.EXT_GetIgnitionVoltageMin(m));
        c.value(p + "resistorValueTolerance", v.EXT_GetResistorValueTolerance(m));
        c.value(p + "ledOp", v.EXT_GetLedOp(m));
        c.value(p + "ledBlocked", v.EXT_GetLedBlocked(m));
        c.value(p + "ledFailure", v.EXT_GetLedFailure(m));
        c.value(p + "ledReleased", v.EXT_GetLedReleased(m));
        c.value(p + "isOnline", v.EXT_GetIsOnline(m));
        c.value(p + "isBlocked", v.EXT_GetIsBlocked(m));
        c.value(p + "isIsolated", v.EXT_GetIsIsolated(m));
        c.value(p + "doActivate", v.EXT_GetDoActivate(m));
        c.value(p + "isActivated", v.EXT_GetIsActivated(m));
        c.value(p + "doRelease", v.EXT_GetDoRelease(m));
        c.value(p + "isReleased", v.EXT_GetIsReleased(m));
        c.mask(p + "actualFailures", 8,
               [&](std::int16_t b) { return v.EXT_GetActualFailures(m, b); });
        c.mask(p + "savedFailures", 8,
               [&](std::int16_t b) { return v.EXT_GetSavedFailures(m, b); });
        c.mask(p + "validFailureMask", 8,
               [&](std::int16_t b) { return v.EXT_GetValidFailureMask(m, b); });
        c.value(p + "ignitionLineState", v.EXT_GetIgnitionLineState(m));
        c.value(p + "manActLineState", v.EXT_GetManActLineState(m));
        c.value(p + "enableInputState", v.EXT_GetEnableInputState(m));
        c.value(p + "cutOffRelState", v.EXT_GetCutOffRelState(m));
        c.value(p + "hasIgnition", v.EXT_GetHasIgnition(m));
        c.value(p + "hasCutOffRelay", v.EXT_GetHasCutOffRelay(m));
        c.value(p + "hasManualActivationLine", v.EXT_GetHasManualActivationLine(m));
        c.value(p + "hasEnableInput", v.EXT_GetHasEnableInput(m));
    }
}

using BlockMaker = std::function<Bytes(const ValueStore&)>;

} // namespace

Q_DECLARE_METATYPE(BlockMaker)

class TestSimDevice : public QObject {
    Q_OBJECT

    std::unique_ptr<Simulator> sim_;
    std::unique_ptr<SimClient> client_;

    const ValueStore& values() const { return sim_->ownDevice()->values(); }

    void startWith(const QString& name) {
        client_.reset();
        sim_ = startSimulator({profile(name)});
        client_ = std::make_unique<SimClient>(sim_->portPath());
        QVERIFY(client_->isOpen());
    }

    // Sends a write telegram and gives the device a moment to take it.
    void write(const Bytes& frame) {
        client_->send(frame);
        QVERIFY(!client_->awaitFrame(60)); // writes are never answered
    }

private slots:
    void init() { startWith("full"); }
    void cleanup() {
        client_.reset();
        sim_.reset();
    }

    void readTelegramsHaveTheirSizes_data() {
        QTest::addColumn<int>("command");
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("header");
        QTest::newRow("identification") << 1 << 12 << 2;
        QTest::newRow("air flow and detectors") << 2 << 195 << 2;
        QTest::newRow("controller") << 3 << 204 << 2;
        QTest::newRow("telegram 4") << 4 << 47 << 2;
        QTest::newRow("modules, extended form") << 5 << 414 << 4;
    }

    void readTelegramsHaveTheirSizes() {
        QFETCH(int, command);
        QFETCH(int, size);
        QFETCH(int, header);
        const auto answer = client_->request(readRequest(command, kFull));
        QVERIFY(answer);
        const Bytes& t = *answer;
        QCOMPARE(int(t.size()), size);
        QCOMPARE(telegram::HeaderLength(t), header);
        QCOMPARE(int(t[std::size_t(header)]), 10);
        QCOMPARE(int(t[std::size_t(header) + 1]), command);
        QCOMPARE(be32(t, header + 2), kFull);
        QVERIFY(modChecksum::CheckSumOfBytes(t));
        QCOMPARE(modChecksum::CheckCRC(t, header, size - 3), 0);
        const auto stamped = telegram::StampTelegram(t, QDateTime::currentDateTime());
        QVERIFY(stamped);
        const auto accepted = telegram::AcceptStampedTelegram(*stamped);
        QVERIFY(accepted);
        QCOMPARE(accepted->deviceKind, 10);
    }

    // The frames of the worked examples: the search telegram of this family, and read
    // telegram 2 of the device with serial number 1.
    void workedExampleFramesAreAnswered() {
        auto one = profile("minimal");
        one.serialNumber = 1;
        sim_ = startSimulator({std::move(one)});
        client_ = std::make_unique<SimClient>(sim_->portPath());
        const Bytes search =
            testsupport::bytes({0x02, 0x08, 0x0A, 0x01, 0, 0, 0, 0, 0x2C, 0x53, 0x00, 0x94});
        QCOMPARE(readRequest(1, 0), search);
        auto answer = client_->request(search);
        QVERIFY(answer);
        QCOMPARE(*answer, telegram::MakeSendFrame(body(10, 1, 1), true).value());
        answer = client_->request(
            testsupport::bytes({0x02, 0x08, 0x0A, 0x02, 0, 0, 0, 0x01, 0xD2, 0xA0, 0x01, 0x89}));
        QVERIFY(answer);
        QCOMPARE(int(answer->size()), 195);
    }

    void framesItCannotAcceptGetNoAnswer_data() {
        QTest::addColumn<Bytes>("frame");
        Bytes badSum = readRequest(2, kFull);
        badSum.back() ^= 1;
        Bytes badCrc = body(10, 2, kFull);
        badCrc.push_back(0);
        badCrc.push_back(0);
        QTest::newRow("another serial number") << readRequest(2, kFull + 1);
        QTest::newRow("wrong sum") << badSum;
        QTest::newRow("wrong CRC") << telegram::MakeSendFrame(badCrc, false).value();
        QTest::newRow("another kind") << frameOf(body(7, 2, kFull));
        QTest::newRow("search of the seventh family") << frameOf(body(7, 1, 0));
        QTest::newRow("read 2 with serial number 0") << readRequest(2, 0);
        QTest::newRow("zero command") << telegram::ZeroCommand();
        QTest::newRow("read with data behind it") << frameOf(concat({body(10, 2, kFull), {1}}));
        QTest::newRow("unknown command") << readRequest(6, kFull);
    }

    void framesItCannotAcceptGetNoAnswer() {
        QFETCH(Bytes, frame);
        QVERIFY(!client_->request(frame, 150));
        QVERIFY(client_->request(readRequest(1, kFull)));
    }

    // The test's own reading of a few offsets, independent of the tool's getters.
    void valuesStandAtTheirOffsets() {
        const Bytes t2 = client_->request(readRequest(2, kFull)).value();
        QCOMPARE(f32(t2, 8), 1.32f);       // air flow
        QCOMPARE(be16(t2, 20), 250u);      // altitude
        QCOMPARE(be16(t2, 22), 987u);      // air pressure
        QCOMPARE(bitsAt(t2, 33, 5, 1), 1); // dynamic air flow present
        QCOMPARE(be16(t2, 69), 1700u);     // window of hole 2, maximum first
        QCOMPARE(be16(t2, 71), 1201u);
        QCOMPARE(int(t2[156]), 90);                         // alarm threshold, detector 2
        QCOMPARE(int16_t(be16(t2, 99 + 19)), int16_t(-12)); // chamber value, signed
        QCOMPARE(bitsAt(t2, 135 + 24, 4, 2), 2);            // failure LED of detector 2
        const Bytes t3 = client_->request(readRequest(3, kFull)).value();
        QCOMPARE(int(t3[57]), 12);                          // alarm delay
        QCOMPARE(f32(t3, 116), 19.9f);                      // temperature of sensor 5
        QCOMPARE(bitsAt(t3, 128, 1, 2), 2);                 // its state
        QCOMPARE(int(t3[152]), 1 << 3);                     // pending faults, lower byte first
        QCOMPARE(int(t3[155]), 1 << 7);                     // bit 31
        QCOMPARE(int(t3[129]) | int(t3[130]) << 8, 0x4003); // relay 1: events 0, 1 and OR
        QCOMPARE(bitsAt(t3, 61, 6, 1), 1);                  // two detectors
        const Bytes t5 = client_->request(readRequest(5, kFull)).value();
        QCOMPARE(be32(t5, 10), 12345u);              // module 1
        QCOMPARE(be32(t5, 10 + 40 * 2), 20070315u);  // module 3, internal
        QCOMPARE(be32(t5, 10 + 40 * 9), 0u);         // module 10 absent
        QCOMPARE(bitsAt(t5, 10 + 40 + 35, 2, 2), 2); // manual release line of module 2
    }

    void fullProfileReadsBackThroughTheValueStore() {
        clsMQ27Values store;
        for (std::int16_t command = 1; command <= 5; ++command) {
            const auto frame = client_->request(readRequest(command, kFull));
            QVERIFY(frame);
            const auto stamped = telegram::StampTelegram(*frame, QDateTime::currentDateTime());
            QCOMPARE(store.SetDataArray(stamped.value(), command), std::int16_t(0));
        }
        const ProfileJson json("full");
        ProfileCheck check(json);
        checkAirFlowAndLocalisation(check, store);
        checkDetectors(check, store);
        checkController(check, store);
        checkDisplayAndMasks(check, store);
        checkModules(check, store);
        QVERIFY2(check.mismatches().isEmpty(), qPrintable(check.mismatches()));
        QVERIFY2(check.compared() >= 280, qPrintable(QString::number(check.compared())));
        QCOMPARE(store.GetSerialNum(), double(kFull));
        QCOMPARE(store.GetHasTwoDetectors(), std::int16_t(1));
        QCOMPARE(store.GetNumOfExtModulesSet(), 4.0f);
        QCOMPARE(store.EXT_GetSerialNum(4), 0.0);
    }

    void writeChangesExactlyItsValues_data() {
        QTest::addColumn<BlockMaker>("block");
        QTest::addColumn<Snapshot>("expected");
        auto params = [](std::function<void(Block&)> edit) {
            return BlockMaker([edit](const ValueStore& v) {
                Block b = deviceParameters(v);
                edit(b);
                return b.frame();
            });
        };
        auto fixed = [](Block b) {
            return BlockMaker([b](const ValueStore&) { return b.frame(); });
        };

        QTest::newRow("129 as the device has it") << params([](Block&) {}) << Snapshot{};
        QTest::newRow("129 alarm delay, buzzer off")
            << params([](Block& b) { b.u8(22, 30).u8(28, 0x7B); })
            << Snapshot{{"controller.alarmDelaySetPoint", 30}, {"display.buzzerShouldBeOff", 1}};
        QTest::newRow("129 resistors") << params([](Block& b) { b.f32(6, 1500.5).u8(14, 5); })
                                       << Snapshot{{"controller.alarmResistorValue", 1500.5},
                                                   {"controller.resistorValueTolerance", 5}};
        QTest::newRow("129 second detector")
            << params([](Block& b) { b.u16(20, 3000).u8(26, 70); })
            << Snapshot{{"detectors[1].smokeValue10SetPoint", 3000},
                        {"detectors[1].preAlarmThreshold", 70}};
        QTest::newRow("129 second detector ignored with byte 29 at 0")
            << params([](Block& b) { b.u16(20, 3000).u8(26, 70).u8(29, 0); }) << Snapshot{};
        // The device has the flags 0xFB: all but the signal evaluation of detector 2.
        QTest::newRow("129 localisation and dynamic air flow off")
            << params([](Block& b) { b.u8(28, 0xFB & ~0x01 & ~0x20); })
            << Snapshot{{"localisation.locShouldBeOn", 0},
                        {"airFlow.dynFlowShouldBeOn", 0},
                        {"airFlow.dynFlowIsOn", 0}};
        QTest::newRow("129 alarm after localisation off for both detectors")
            << params([](Block& b) { b.u8(28, 0xFB & ~0x40); })
            << Snapshot{{"detectors[0].alarmAfterLoc", 0}, {"detectors[1].alarmAfterLoc", 0}};
        QTest::newRow("129 alarm delay above the maximum")
            << params([](Block& b) { b.u8(22, 61); }) << Snapshot{};
        QTest::newRow("129 sensitivity below the minimum")
            << params([](Block& b) { b.u16(18, 99); }) << Snapshot{};
        QTest::newRow("129 action alarm threshold 81")
            << params([](Block& b) { b.u8(25, 81); }) << Snapshot{};
        QTest::newRow("129 fault delay below the minimum")
            << params([](Block& b) { b.u16(16, 29); }) << Snapshot{};
        QTest::newRow("130 air pressure 699")
            << fixed(std::move(Block(130, kFull, 22).u16(6, 10000).u16(8, 100).u16(10, 699)))
            << Snapshot{};
        QTest::newRow("130 fan voltage above the maximum")
            << fixed(std::move(Block(130, kFull, 22).u16(6, 13600).u16(8, 100).u16(10, 1013)))
            << Snapshot{};
        const Snapshot alarmReset = {{"firePanel.preAlarmState2", 0},
                                     {"display.ledPreAlarm2", 0},
                                     {"detectors[1].preAlarmLED", 0}};
        Snapshot allReset = alarmReset;
        allReset.insert({{"faults.pending", 0},
                         {"messages.pending", 0},
                         {"controller.mainFailureFlag", 0},
                         {"display.ledFailure", 0},
                         {"firePanel.faultState", 0}});
        QTest::newRow("131 all") << fixed(selection(131, 255, 255)) << allReset;
        Snapshot itemThree = alarmReset;
        itemThree.insert("faults.pending", std::ldexp(1.0, 22) + std::ldexp(1.0, 31));
        QTest::newRow("131 item 3") << fixed(selection(131, 8, 0)) << itemThree;
        QTest::newRow("132 all") << fixed(selection(132, 255, 255))
                                 << Snapshot{{"faults.latched", 0}, {"messages.latched", 0}};
        QTest::newRow("132 item 9 clears fault bits 9 and 25")
            << fixed(selection(132, 0, 2)) << Snapshot{{"faults.latched", 2 + 8}};
        QTest::newRow("132 item 5")
            << fixed(selection(132, 32, 0)) << Snapshot{{"messages.latched", 4}};
        QTest::newRow("133 three holes")
            << fixed(localisation({1200, 500, 1600, 1201, 2000, 1601}, 50, 12000, 10000))
            << Snapshot{{"localisation.suckTime2Max", 1600}, {"localisation.suckTime3Max", 2000},
                        {"localisation.suckTime3Min", 1601}, {"localisation.suckTime4Max", 0},
                        {"localisation.suckTime4Min", 0},    {"localisation.suckTime5Max", 0},
                        {"localisation.suckTime5Min", 0},    {"localisation.blowTime", 50},
                        {"fans.blowFanVoltage", 12000},      {"fans.suckFanLocVoltage", 10000}};
        QTest::newRow("133 blow time 256")
            << fixed(localisation({1200, 500}, 256, 12000, 10000)) << Snapshot{};
        QTest::newRow("133 window upside down")
            << fixed(localisation({500, 1200}, 40, 12500, 11000)) << Snapshot{};
        QTest::newRow("133 suck fan below the minimum")
            << fixed(localisation({1200, 500}, 40, 12500, 8900)) << Snapshot{};
        QTest::newRow("134 other than start or stop")
            << fixed(learn(10, 12000, 10000, 1)) << Snapshot{};
        QTest::newRow("134 blow time 9 s") << fixed(learn(9, 12000, 10000, 255)) << Snapshot{};
        QTest::newRow("135 outside learn mode") << fixed(Block(135, kFull, 16)) << Snapshot{};
        QTest::newRow("136 second module") << fixed(module(23456, 1000, 5600, 25))
                                           << Snapshot{{"modules[1].alarmResistorValue", 1000},
                                                       {"modules[1].normalResistorValue", 5600},
                                                       {"modules[1].resistorValueTolerance", 25}};
        QTest::newRow("136 unknown module") << fixed(module(777, 1000, 5600, 25)) << Snapshot{};
        QTest::newRow("136 module without manual release line")
            << fixed(module(20070315, 1000, 5600, 25)) << Snapshot{};
        QTest::newRow("136 tolerance 100") << fixed(module(12345, 1000, 4700, 100)) << Snapshot{};
        QTest::newRow("137 first sensor")
            << fixed(temperatures({50.5, 45.5, 70, 55, 100}, {4000, 3950, 4100, 3435, 4500}))
            << Snapshot{{"sensors[0].ntcAlarmValue", 50.5}, {"sensors[0].ntcBeta", 4000}};
        QTest::newRow("137 beta 3399")
            << fixed(temperatures({60, 45.5, 70, 55, 100}, {3399, 3950, 4100, 3435, 4500}))
            << Snapshot{};
        QTest::newRow("137 alarm temperature 100.5")
            << fixed(temperatures({60, 45.5, 70, 55, 100.5}, {3977, 3950, 4100, 3435, 4500}))
            << Snapshot{};
        QTest::newRow("138 relays 1 and 5")
            << fixed(std::move(Block(138, kFull, 26)
                                   .u8(6, 0x07)
                                   .u8(7, 0x40)
                                   .u8(8, 0x0C)
                                   .u8(9, 0x40)
                                   .u8(10, 0xF0)
                                   .u8(11, 0x81)
                                   .u8(12, 0x00)
                                   .u8(13, 0x7E)
                                   .u8(14, 0x01)
                                   .u8(15, 0x40)))
            << Snapshot{{"relays.combineMask1", 0x4007}, {"relays.combineMask5", 0x4001}};
    }

    void writeChangesExactlyItsValues() {
        QFETCH(BlockMaker, block);
        QFETCH(Snapshot, expected);
        const Snapshot before = snapshot(values());
        write(block(values()));
        const Snapshot diff = changes(before, snapshot(values()));
        QVERIFY2(diff == expected, qPrintable("changed: " + describe(diff)));
    }

    void writeShowsInTheNextRead() {
        Block b = deviceParameters(values());
        write(b.u8(22, 33).u8(28, 0x5E).frame());
        const Bytes t3 = client_->request(readRequest(3, kFull)).value();
        QCOMPARE(int(t3[57]), 33);
        QCOMPARE(bitsAt(t3, 144, 0, 1), 1); // buzzer off
        QCOMPARE(bitsAt(t3, 61, 5, 1), 1);  // failure storage still on
    }

    void writesOfDevicesWithoutTheFeatureAreRefused_data() {
        QTest::addColumn<Bytes>("block");
        QTest::newRow("relay masks") << Block(138, 1001, 26).u8(7, 0x40).frame();
        QTest::newRow("temperatures")
            << temperatures({60, 60, 60, 60, 60}, {3977, 3977, 3977, 3977, 3977}).frame();
        QTest::newRow("learn mode") << learn(10, 12000, 10000, 255).frame();
        QTest::newRow("localisation") << localisation({1200, 500}, 40, 12000, 10000).frame();
        QTest::newRow("module identification") << Block(139, 1001, 10).u32(6, 12345).frame();
    }

    void writesOfDevicesWithoutTheFeatureAreRefused() {
        QFETCH(Bytes, block);
        startWith("minimal");
        // The blocks above name the full device; here they go to the minimal one.
        Bytes payload(block.begin() + 2, block.end() - 4);
        payload[2] = 0, payload[3] = 0, payload[4] = 0x03, payload[5] = 0xE9; // 1001
        const Snapshot before = snapshot(values());
        write(frameOf(payload));
        QCOMPARE(describe(changes(before, snapshot(values()))), QString());
    }

    void airFlowInitRunsForAWhileThenTakesTheSetPoints() {
        const Snapshot before = snapshot(values());
        write(Block(130, kFull, 22).u16(6, 11000).u16(8, 500).u16(10, 1000).frame());
        QCOMPARE(changes(before, snapshot(values())),
                 (Snapshot{{"airFlow.flowInitIsActive", 1}, {"display.ledOp", 2}}));
        const Bytes during = client_->request(readRequest(2, kFull)).value();
        QCOMPARE(bitsAt(during, 33, 1, 1), 1);
        QCOMPARE(be16(during, 20), 250u);
        // Eight device seconds at a hundredfold speed.
        QTRY_COMPARE_WITH_TIMEOUT(values().get("airFlow.flowInitIsActive"), 0.0, 1000);
        QCOMPARE(changes(before, snapshot(values())),
                 (Snapshot{{"airFlow.altitude", 500},
                           {"airFlow.airPressureSetPoint", 1000},
                           {"fans.uFanSetPoint", 11000},
                           {"fans.fanVoltage", 11000},
                           {"airFlow.flowRefValue", 1.32}}));
        const Bytes after = client_->request(readRequest(2, kFull)).value();
        QCOMPARE(be16(after, 20), 500u);
        QCOMPARE(be16(after, 49), 11000u);
        QCOMPARE(f32(after, 12), 1.32f);
    }

    void learnModeMeasuresAndReportsTheSuckTime() {
        const Snapshot before = snapshot(values());
        write(learn(10, 12000, 10000, 255).frame());
        QCOMPARE(changes(before, snapshot(values())), (Snapshot{{"localisation.blowLrnTime", 10},
                                                                {"fans.blowFanLrnVoltage", 12000},
                                                                {"fans.suckFanLrnVoltage", 10000},
                                                                {"localisation.learningIsOn", 1},
                                                                {"localisation.locIsActive", 1},
                                                                {"localisation.locLocalized", 0}}));
        QTRY_COMPARE_WITH_TIMEOUT(values().get("localisation.locIsActive"), 0.0, 1000);
        QCOMPARE(values().get("localisation.firePlaceSuckTime"), 1000.0); // the first hole, 10 s
        QCOMPARE(values().get("localisation.firePlace"), 1.0);
        QCOMPARE(values().get("localisation.locLocalized"), 1.0);
        QCOMPARE(values().get("localisation.learningIsOn"), 1.0);

        write(learn(10, 12000, 10000, 255).frame());
        QTRY_COMPARE_WITH_TIMEOUT(values().get("localisation.locIsActive"), 0.0, 1000);
        QCOMPARE(values().get("localisation.firePlaceSuckTime"), 1400.0);
        QCOMPARE(values().get("localisation.firePlace"), 2.0);
        const Bytes t2 = client_->request(readRequest(2, kFull)).value();
        QCOMPARE(be16(t2, 85), 1400u);
        QCOMPARE(int(t2[87]), 2);
        QCOMPARE(bitsAt(t2, 88, 2, 2), 2); // learning, not measuring

        write(learn(600, 12000, 10000, 255).frame());
        write(learn(600, 12000, 10000, 0).frame());
        QCOMPARE(values().get("localisation.locIsActive"), 0.0);
        QCOMPARE(values().get("localisation.firePlaceSuckTime"), 1400.0);
        write(Block(135, kFull, 16).frame());
        QCOMPARE(values().get("localisation.learningIsOn"), 0.0);
    }

    void localisationParametersEndLearnMode() {
        write(learn(600, 12000, 10000, 255).frame());
        QCOMPARE(values().get("localisation.learningIsOn"), 1.0);
        write(localisation({1200, 500, 1700, 1201}, 40, 12500, 11000).frame());
        QCOMPARE(values().get("localisation.learningIsOn"), 0.0);
        QCOMPARE(values().get("localisation.locIsActive"), 0.0);
        QTest::qWait(80); // the stopped measurement reports nothing
        QCOMPARE(values().get("localisation.firePlaceSuckTime"), 1410.0);
    }

    void identificationBlinksTheModuleForAWhile() {
        write(Block(139, kFull, 10).u32(6, 23456).frame());
        for (const char* led : {"ledOp", "ledBlocked", "ledFailure", "ledReleased"})
            QCOMPARE(values().get(std::string("modules[1].") + led), 2.0);
        const Bytes t5 = client_->request(readRequest(5, kFull)).value();
        QCOMPARE(int(t5[10 + 40 + 30]), 0xAA);
        QTRY_COMPARE_WITH_TIMEOUT(values().get("modules[1].ledOp"), 3.0, 1000);
        QCOMPARE(values().get("modules[1].ledFailure"), 2.0);
        QCOMPARE(values().get("modules[1].ledBlocked"), 0.0);
    }
};

QTEST_GUILESS_MAIN(TestSimDevice)
#include "tst_simdevice.moc"
