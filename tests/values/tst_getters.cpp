// Builds telegrams byte by byte from the value tables and checks that each getter decodes
// its own bytes and names its own value.
#include "values/valuestore.h"

#include <bit>
#include <variant>
#include <vector>

#include <QTest>

namespace {

using Result = std::variant<float, double, std::int16_t, QString>;
using Read = Result (*)(ValueStore&, std::int16_t);

enum class Enc { F32, U32, U16, S16, U8, S8, Flag, State, SoftwareText, ParameterText };

struct Entry {
    const char* getter;
    Read read;
    int offset; // first byte, in the telegram or in the block
    Enc enc;
    int bit; // flag bit, or the lower bit of a state
};

// A getter of the whole telegram, and one of an indexed block.
#define AT(name, offset, enc, bit)                                                                 \
    Entry(                                                                                         \
        QT_STRINGIFY(name), [](ValueStore& v, std::int16_t) -> Result { return v.name(); },        \
        offset, Enc::enc, bit)
#define IN(name, offset, enc, bit)                                                                 \
    Entry(                                                                                         \
        QT_STRINGIFY(name), [](ValueStore& v, std::int16_t i) -> Result { return v.name(i); },     \
        offset, Enc::enc, bit)

const Entry kTelegram2[] = {
    AT(DET_GetFlowValue, 8, F32, 0),
    AT(DET_GetFlowRefValue, 12, F32, 0),
    AT(DET_GetAirTemperature, 16, F32, 0),
    AT(DET_GetAltitude, 20, S16, 0),
    AT(DET_GetAirPressureSetPoint, 22, U16, 0),
    AT(DET_GetAirFlowFailureDelayMax, 24, U16, 0),
    AT(DET_GetAirFlowFailureDelayMin, 26, U16, 0),
    AT(DET_GetAirFlowFailureDelaySetPoint, 28, U16, 0),
    AT(DET_GetStaticFlowDevMax, 30, U8, 0),
    AT(DET_GetStaticFlowDevMin, 31, U8, 0),
    AT(DET_GetStaticFlowDevSetPoint, 32, U8, 0),
    AT(DET_GetFlowInitIsActive, 33, Flag, 1),
    AT(DET_GetHasFlow, 33, Flag, 2),
    AT(DET_GetFlowShouldBeOn, 33, Flag, 3),
    AT(DET_GetFlowIsOn, 33, Flag, 4),
    AT(DET_GetHasDynFlow, 33, Flag, 5),
    AT(DET_GetDynFlowShouldBeOn, 33, Flag, 6),
    AT(DET_GetDynFlowIsOn, 33, Flag, 7),
    AT(DET_GetFlowInitAborted, 34, Flag, 0),
    AT(DET_GetAirFlowError, 34, Flag, 1),
    AT(DET_GetFlowDynDevPlus, 34, Flag, 2),
    AT(DET_GetFlowDynDevMinus, 34, Flag, 3),
    AT(DET_GetFlowStatDevPlus, 34, Flag, 4),
    AT(DET_GetFlowStatDevMinus, 34, Flag, 5),
    AT(DET_GetTemperatureIsHigh, 34, Flag, 6),
    AT(DET_GetTemperatureIsLow, 34, Flag, 7),
    AT(DET_GetUFanMax, 45, U16, 0),
    AT(DET_GetUFanMin, 47, U16, 0),
    AT(DET_GetUFanSetPoint, 49, U16, 0),
    AT(DET_GetFanVoltage, 51, U16, 0),
    AT(DET_GetSuckFanLrnVoltage, 53, U16, 0),
    AT(DET_GetBlowFanLrnVoltage, 55, U16, 0),
    AT(DET_GetSuckFanLocVoltage, 57, U16, 0),
    AT(DET_GetBlowFanVoltage, 59, U16, 0),
    AT(DET_GetBlowTime, 61, U16, 0),
    AT(DET_GetBlowLrnTime, 63, U16, 0),
    AT(DET_GetSuckTime1Max, 65, U16, 0),
    AT(DET_GetSuckTime1Min, 67, U16, 0),
    AT(DET_GetSuckTime2Max, 69, U16, 0),
    AT(DET_GetSuckTime2Min, 71, U16, 0),
    AT(DET_GetSuckTime3Max, 73, U16, 0),
    AT(DET_GetSuckTime3Min, 75, U16, 0),
    AT(DET_GetSuckTime4Max, 77, U16, 0),
    AT(DET_GetSuckTime4Min, 79, U16, 0),
    AT(DET_GetSuckTime5Max, 81, U16, 0),
    AT(DET_GetSuckTime5Min, 83, U16, 0),
    AT(DET_GetFirePlaceSuckTime, 85, U16, 0),
    AT(DET_GetFirePlace, 87, U8, 0),
    AT(DET_GetHasSingleHoleDetection, 88, Flag, 0),
    AT(DET_GetLocShouldBeOn, 88, Flag, 1),
    AT(DET_GetLocIsActive, 88, Flag, 2),
    AT(DET_GetLearningIsOn, 88, Flag, 3),
    AT(DET_GetLocError, 88, Flag, 4),
    AT(DET_GetFanError, 88, Flag, 5),
    AT(DET_GetLocLocalized, 88, Flag, 6),
};

const Entry kDetectorBlock[] = {
    IN(DET_GetDetSerialNum, 0, U32, 0),
    IN(DET_GetDetSoftwareNum, 4, SoftwareText, 0),
    IN(DET_GetDetParameterID, 8, ParameterText, 0),
    IN(DET_GetSmokeValue10Max, 13, U16, 0),
    IN(DET_GetSmokeValue10Min, 15, U16, 0),
    IN(DET_GetSmokeValue10SetPoint, 17, U16, 0),
    IN(DET_GetChamberValueRatio, 19, S16, 0),
    IN(DET_GetAlarmThreshold, 21, U8, 0),
    IN(DET_GetPreAlarmThreshold, 22, U8, 0),
    IN(DET_GetSmokeValueRatio, 23, U8, 0),
    IN(DET_GetAlarmLED, 24, State, 0),
    IN(DET_GetPreAlarmLED, 24, State, 2),
    IN(DET_GetFailureLED, 24, State, 4),
    IN(DET_GetChamberIsDirty, 24, Flag, 6),
    IN(DET_GetLightTooDark, 24, Flag, 7),
    IN(DET_GetSmokeError, 25, Flag, 0),
    IN(DET_GetDetDataStorageError, 25, Flag, 1),
    IN(DET_GetDetProgramStorageError, 25, Flag, 2),
    IN(DET_GetDetProgramError, 25, Flag, 3),
    IN(DET_GetDetCommError, 25, Flag, 4),
    IN(DET_GetHasTrueLix, 25, Flag, 5),
    IN(DET_GetTrueLixShouldBeOn, 25, Flag, 6),
    IN(DET_GetAlarmAfterLoc, 25, Flag, 7),
};

const Entry kTelegram3[] = {
    AT(GetSoftwareNum, 8, SoftwareText, 0),
    AT(GetParameterID, 12, ParameterText, 0),
    AT(GetUinBitVoltage, 17, F32, 0),
    AT(CTRL_GetUinVoltage, 21, F32, 0),
    AT(GetAlarmResistorValue, 25, F32, 0),
    AT(GetNormalResistorValue, 29, F32, 0),
    AT(GetNumWriteFailureStorage, 33, U32, 0),
    AT(GetNumWriteParameterStorage, 37, U32, 0),
    AT(GetNumResets, 41, U32, 0),
    AT(CTRL_GetUinADC, 45, U16, 0),
    AT(GetUinMinADC, 47, U16, 0),
    AT(GetUNTCMax, 49, U16, 0),
    AT(GetUNTCMin, 51, U16, 0),
    AT(GetResetCounter, 53, U8, 0),
    AT(GetNumOfExtModulesSet, 54, S8, 0),
    AT(DET_GetAlarmDelayMax, 55, U8, 0),
    AT(DET_GetAlarmDelayMin, 56, U8, 0),
    AT(DET_GetAlarmDelaySetPoint, 57, U8, 0),
    AT(GetExtinguishDelay, 58, U8, 0),
    AT(GetResistorValueTolerance, 59, U8, 0),
    AT(CTRL_GetNTCDisplayed, 60, U8, 0),
    AT(CTRL_GetResetInput, 61, Flag, 0),
    AT(CTRL_GetEnableInputState, 61, Flag, 1),
    AT(CTRL_GetManActLineState, 61, State, 2),
    AT(CTRL_GetMainFailureFlag, 61, Flag, 4),
    AT(DET_GetFailureStorageIsOn, 61, Flag, 5),
    AT(GetHasTwoDetectors, 61, Flag, 6),
    AT(CTRL_GetActivated, 62, Flag, 0),
    AT(CTRL_GetReleased, 62, Flag, 1),
    AT(CTRL_GetIsReleased, 62, Flag, 2),
    AT(DISP_GetStateOfChoice, 63, State, 0),
    AT(GetConstDataError, 63, Flag, 2),
    AT(GetParameterStorageError, 63, Flag, 3),
    AT(CTRL_GetProgramStorageError, 63, Flag, 4),
    AT(CTRL_GetProgramError, 63, Flag, 5),
    AT(CTRL_GetHasBattery, 63, Flag, 6),
    AT(CTRL_GetBatteryIsOn, 63, Flag, 7),
    AT(GetTwoButtonDelay, 141, U8, 0),
    AT(GetResetButtonDelay, 142, U8, 0),
    AT(DISP_GetResetButton, 143, Flag, 0),
    AT(DISP_GetTemperatureButton, 143, Flag, 1),
    AT(DISP_GetKeySwitch, 143, Flag, 2),
    AT(DISP_GetVirtualConfigButton, 143, Flag, 3),
    AT(DISP_GetVirtualAirFlowInitButton, 143, Flag, 4),
    AT(DISP_GetVirtualResetButton, 143, Flag, 5),
    AT(DISP_GetVirtualTempChoiceButton, 143, Flag, 6),
    AT(DISP_GetVirtualSoundOffButton, 143, Flag, 7),
    AT(GetBuzzerShouldBeOff, 144, Flag, 0),
    AT(DISP_GetBuzzerState, 144, State, 1),
    AT(BMZ_GetBlockedState, 145, Flag, 0),
    AT(BMZ_GetFaultState, 145, Flag, 5),
    AT(BMZ_GetReleasedState, 145, Flag, 6),
    AT(DISP_GetLedOp, 146, State, 0),
    AT(DISP_GetLedFailure, 146, State, 2),
    AT(DISP_GetLedBatt, 146, State, 4),
    AT(DISP_GetLedMainsFailure, 146, State, 6),
    AT(DISP_GetLedBlocked, 147, State, 0),
    AT(DISP_GetLedReleased, 147, State, 2),
    AT(DISP_GetLedMainAlarm, 147, State, 4),
    AT(DISP_GetLedA, 148, State, 6),
    AT(DISP_GetLedB, 149, State, 0),
    AT(DISP_GetLedC, 149, State, 2),
    AT(DISP_GetLedD, 149, State, 4),
    AT(DISP_GetLedE, 149, State, 6),
    AT(DISP_GetBargraphLevel, 150, U8, 0),
    AT(DISP_GetTemperatureCode, 151, U8, 0),
    AT(GetDefaultValuesUsed, 170, Flag, 0),
    AT(GetHasBatteryLoader, 170, Flag, 1),
    AT(GetHasNetworkModule, 170, Flag, 2),
    AT(GetHasBargraphDisplay, 170, Flag, 3),
    AT(GetHasPreAlarmDisplay, 170, Flag, 4),
    AT(GetHasTemperatureSensors, 170, Flag, 5),
    AT(GetHasProgRel, 170, Flag, 6),
};

const Entry kSensorBlock[] = {
    IN(TEM_GetNTCTemperature, 0, F32, 0),
    IN(GetNTCAlarmValue, 4, F32, 0),
    IN(GetNTCbeta, 8, U16, 0),
    IN(io_GetNTCVoltageADC, 10, U16, 0),
    IN(TEM_GetHasNTC, 12, Flag, 0),
    IN(TEM_GetNTCState, 12, State, 1),
};

const Entry kModuleBlock[] = {
    IN(EXT_GetSerialNum, 0, U32, 0),
    IN(EXT_GetSoftwareNum, 4, SoftwareText, 0),
    IN(EXT_GetParameterID, 8, ParameterText, 0),
    IN(EXT_GetAlarmResistorValue, 13, F32, 0),
    IN(EXT_GetNormalResistorValue, 17, F32, 0),
    IN(EXT_GetIgnitionVoltage, 21, F32, 0),
    IN(EXT_GetIgnitionVoltageMin, 25, F32, 0),
    IN(EXT_GetResistorValueTolerance, 29, U8, 0),
    IN(EXT_GetLedOp, 30, State, 0),
    IN(EXT_GetLedBlocked, 30, State, 2),
    IN(EXT_GetLedFailure, 30, State, 4),
    IN(EXT_GetLedReleased, 30, State, 6),
    IN(EXT_GetIsOnline, 31, Flag, 0),
    IN(EXT_GetIsBlocked, 31, Flag, 1),
    IN(EXT_GetIsIsolated, 31, Flag, 2),
    IN(EXT_GetDoActivate, 31, Flag, 3),
    IN(EXT_GetIsActivated, 31, Flag, 4),
    IN(EXT_GetDoRelease, 31, Flag, 5),
    IN(EXT_GetIsReleased, 31, Flag, 6),
    IN(EXT_GetIgnitionLineState, 35, State, 0),
    IN(EXT_GetManActLineState, 35, State, 2),
    IN(EXT_GetEnableInputState, 35, Flag, 4),
    IN(EXT_GetCutOffRelState, 35, State, 6),
    IN(EXT_GetHasIgnition, 36, Flag, 0),
    IN(EXT_GetHasCutOffRelay, 36, Flag, 1),
    IN(EXT_GetHasManualActivationLine, 36, Flag, 2),
    IN(EXT_GetHasEnableInput, 36, Flag, 3),
};

#undef AT
#undef IN

struct Table {
    const Entry* entries;
    std::size_t size;
    std::int16_t command;
    int base;
    int stride;
    int indexes;
    const char* prefix; // with %1 for the number counted from 1
};

constexpr int kTelegramSize[] = {0, 19, 202, 211, 54, 421};
constexpr std::uint8_t kNoise = 0xA5;

struct Case {
    QByteArray name;
    std::int16_t command;
    Bytes telegram;
    Read read;
    std::int16_t index;
    Result expected;
    QString prefix; // of the value's description text: which detector, sensor or module
};

void putBigEndian(Bytes& t, int at, std::uint32_t value, int width) {
    for (int i = 0; i < width; ++i)
        t[static_cast<std::size_t>(at + i)] =
            static_cast<std::uint8_t>(value >> (8 * (width - 1 - i)));
}

// Writes a value that no other field holds at `at`, and returns what the getter must give.
// `other` asks for the second form of a bit field: every other bit of the byte set.
Result writeField(Bytes& t, int at, Enc enc, int bit, bool other) {
    const std::uint8_t high = static_cast<std::uint8_t>(0x80 | (at & 0x7F));
    const std::uint8_t low = static_cast<std::uint8_t>(at * 3);
    auto& byte = t[static_cast<std::size_t>(at)];
    switch (enc) {
    case Enc::F32: {
        const float value = -(static_cast<float>(at) + 0.375f) * 1024.0f;
        putBigEndian(t, at, std::bit_cast<std::uint32_t>(value), 4);
        return value;
    }
    case Enc::U32: {
        const std::uint32_t value = 0xF0000000u | std::uint32_t(at) << 16 | 0x1234u;
        putBigEndian(t, at, value, 4);
        return static_cast<double>(value);
    }
    case Enc::U16:
        putBigEndian(t, at, std::uint32_t(high) << 8 | low, 2);
        return static_cast<float>(high * 256 + low);
    case Enc::S16:
        putBigEndian(t, at, std::uint32_t(high) << 8 | low, 2);
        return static_cast<float>(high * 256 + low - 65536);
    case Enc::U8:
        byte = high;
        return static_cast<float>(high);
    case Enc::S8:
        byte = high;
        return static_cast<float>(high - 256);
    case Enc::Flag:
        byte = static_cast<std::uint8_t>(other ? ~(1u << bit) : 1u << bit);
        return std::int16_t(other ? 0 : 1);
    case Enc::State:
        byte = static_cast<std::uint8_t>(other ? ~(3u << bit) | 1u << bit : 2u << bit);
        return std::int16_t(other ? 1 : 2);
    case Enc::SoftwareText:
        putBigEndian(t, at, 0x04D2050Cu, 4); // 1234, 5, 12
        return QStringLiteral("1234.05.012");
    case Enc::ParameterText:
        putBigEndian(t, at, 0x10E10007u, 4); // 4321, 7
        t[static_cast<std::size_t>(at + 4)] = 9;
        return QStringLiteral("4321.007.009");
    }
    return {};
}

bool hasSecondForm(Enc enc) {
    return enc == Enc::Flag || enc == Enc::State;
}

std::vector<Case> buildCases() {
    const Table tables[] = {
        {kTelegram2, std::size(kTelegram2), 2, 0, 0, 1, ""},
        {kDetectorBlock, std::size(kDetectorBlock), 2, 99, 36, 2, "Detektor %1: "},
        {kTelegram3, std::size(kTelegram3), 3, 0, 0, 1, ""},
        {kSensorBlock, std::size(kSensorBlock), 3, 64, 13, 5, "NTC Fühler %1: "},
        {kModuleBlock, std::size(kModuleBlock), 5, 10, 40, 10, "Löscheinschub %1: "},
    };
    std::vector<Case> cases;
    for (const Table& table : tables)
        for (int index = 0; index < table.indexes; ++index)
            for (std::size_t e = 0; e < table.size; ++e) {
                const Entry& entry = table.entries[e];
                const int at = table.base + table.stride * index + entry.offset;
                const QString prefix =
                    table.indexes > 1 ? QString::fromUtf8(table.prefix).arg(index + 1) : QString();
                for (bool other : {false, true}) {
                    if (other && !hasSecondForm(entry.enc)) continue;
                    Case c;
                    c.name = QByteArray(entry.getter) + '(' + QByteArray::number(index) + ')' +
                             (other ? " other bits" : "");
                    c.command = table.command;
                    c.telegram = Bytes(std::size_t(kTelegramSize[table.command]), kNoise);
                    c.expected = writeField(c.telegram, at, entry.enc, entry.bit, other);
                    c.read = entry.read;
                    c.index = static_cast<std::int16_t>(index);
                    c.prefix = prefix;
                    cases.push_back(std::move(c));
                }
            }
    return cases;
}

const std::vector<Case>& cases() {
    static const std::vector<Case> all = buildCases();
    return all;
}

QString shown(const Result& r) {
    struct Show {
        QString operator()(float v) const {
            return QStringLiteral("float %1").arg(double(v), 0, 'g', 9);
        }
        QString operator()(double v) const {
            return QStringLiteral("double %1").arg(v, 0, 'g', 17);
        }
        QString operator()(std::int16_t v) const { return QStringLiteral("int16 %1").arg(v); }
        QString operator()(const QString& v) const { return QStringLiteral("text ") + v; }
    };
    return std::visit(Show{}, r);
}

// A mask read bit by bit: `at(index, b)` is the byte of bit b.
struct Mask {
    const char* getter;
    std::int16_t (*read)(ValueStore&, std::int16_t index, std::int16_t b);
    std::int16_t command;
    int indexes;
    int bits;
    int (*at)(int index, int b);
    const char* description; // %1 index + 1, %2 bit, %3 bit with two digits
};

#define MASK(call)                                                                                 \
    [](ValueStore& v, std::int16_t i, std::int16_t b) -> std::int16_t {                            \
        (void)i;                                                                                   \
        return v.call;                                                                             \
    }

const Mask kMasks[] = {
    {"REL_GetRelState", MASK(REL_GetRelState(b)), 3, 1, 5,
     [](int, int b) { return 62 * 8 + b + 3; }, "Zustand Relais %1"},
    {"BMZ_GetAlarmState", MASK(BMZ_GetAlarmState(b)), 3, 1, 2,
     [](int, int b) { return 145 * 8 + b + 1; }, "Detektor %1: Relais Hauptalarm"},
    {"BMZ_GetPreAlarmState", MASK(BMZ_GetPreAlarmState(b)), 3, 1, 2,
     [](int, int b) { return 145 * 8 + b + 3; }, "Detektor %1: Relais Voralarm"},
    {"GetRelayCombineMask", MASK(GetRelayCombineMask(i, b)), 3, 5, 16,
     [](int r, int b) { return (129 + 2 * r) * 8 + b; },
     "Relais %1 Bit %3: Relais Verknüpfungsmaske"},
    {"REL_GetRelEventMask", MASK(REL_GetRelEventMask(b)), 3, 1, 16,
     [](int, int b) { return 139 * 8 + b; }, "Bit %3: Relais Ereignismaske"},
    {"CTRL_GetFailures", MASK(CTRL_GetFailures(b)), 3, 1, 32,
     [](int, int b) { return 152 * 8 + b; }, "Bit %2: Sammelstörung aktuell"},
    {"GetSavedFailures", MASK(GetSavedFailures(b)), 3, 1, 32,
     [](int, int b) { return 156 * 8 + b; }, "Bit %2: Sammelstörung gespeichert"},
    {"CTRL_GetValidFailureMask", MASK(CTRL_GetValidFailureMask(b)), 3, 1, 32,
     [](int, int b) { return 160 * 8 + b; }, "Bit %2: Sammelstörung gültig"},
    {"CTRL_GetMessages", MASK(CTRL_GetMessages(b)), 3, 1, 16,
     [](int, int b) { return 164 * 8 + b; }, "Bit %2: Sammelmeldung aktuell"},
    {"GetSavedMessages", MASK(GetSavedMessages(b)), 3, 1, 16,
     [](int, int b) { return 166 * 8 + b; }, "Bit %2: Sammelmeldung gespeichert"},
    {"CTRL_GetValidMessageMask", MASK(CTRL_GetValidMessageMask(b)), 3, 1, 16,
     [](int, int b) { return 168 * 8 + b; }, "Bit %2: Sammelmeldung gültig"},
    {"EXT_GetActualFailures", MASK(EXT_GetActualFailures(i, b)), 5, 10, 8,
     [](int m, int b) { return (10 + 40 * m + 32) * 8 + b; },
     "Löscheinschub %1: Bit %2: Störmeldung aktuell"},
    {"EXT_GetSavedFailures", MASK(EXT_GetSavedFailures(i, b)), 5, 10, 8,
     [](int m, int b) { return (10 + 40 * m + 33) * 8 + b; },
     "Löscheinschub %1: Bit %2: Störmeldung gespeichert"},
    {"EXT_GetValidFailureMask", MASK(EXT_GetValidFailureMask(i, b)), 5, 10, 8,
     [](int m, int b) { return (10 + 40 * m + 34) * 8 + b; },
     "Löscheinschub %1: Bit %2: Störmeldung gültig"},
};

#undef MASK

} // namespace

class TestGetters : public QObject {
    Q_OBJECT

private slots:
    void everyGetterDecodesItsOwnBytes_data() {
        QTest::addColumn<int>("which");
        for (std::size_t i = 0; i < cases().size(); ++i)
            QTest::newRow(cases()[i].name.constData()) << int(i);
    }
    void everyGetterDecodesItsOwnBytes() {
        QFETCH(int, which);
        const Case& c = cases()[std::size_t(which)];
        ValueStore values;
        QCOMPARE(values.SetDataArray(c.telegram, c.command), 0);
        const Result got = c.read(values, c.index);
        QCOMPARE(shown(got), shown(c.expected));
        QVERIFY2(values.ValueDescription.startsWith(c.prefix) &&
                     values.ValueDescription.size() > c.prefix.size(),
                 qPrintable(values.ValueDescription));
        QVERIFY(values.ValueUnit != u"#");
    }

    // A description copied from a neighbour would name the wrong value on screen.
    void everyValueHasItsOwnDescription() {
        QHash<QString, QByteArray> seen;
        ValueStore values;
        for (const Case& c : cases()) {
            c.read(values, c.index);
            const QByteArray name = c.name.left(c.name.indexOf('('));
            const QByteArray other = seen.value(values.ValueDescription, name);
            QVERIFY2(
                other == name,
                qPrintable(
                    QStringLiteral("%1: %2 and %3").arg(values.ValueDescription, name, other)));
            seen.insert(values.ValueDescription, name);
        }
    }

    // Masks and indexed bits: with one bit of the telegram set, exactly the getter's call
    // for that bit reads 1.
    void eachMaskBitHasItsOwnPlace_data() {
        QTest::addColumn<int>("which");
        for (std::size_t i = 0; i < std::size(kMasks); ++i)
            QTest::newRow(kMasks[i].getter) << int(i);
    }
    void eachMaskBitHasItsOwnPlace() {
        QFETCH(int, which);
        const Mask& mask = kMasks[which];
        ValueStore values;
        for (int index = 0; index < mask.indexes; ++index)
            for (int b = 0; b < mask.bits; ++b) {
                Bytes t(std::size_t(kTelegramSize[mask.command]), 0);
                const int bitPosition = mask.at(index, b);
                t[std::size_t(bitPosition / 8)] =
                    static_cast<std::uint8_t>(1u << (bitPosition % 8));
                values.SetDataArray(t, mask.command);
                const auto i = static_cast<std::int16_t>(index);
                for (int other = 0; other < mask.bits; ++other)
                    QCOMPARE(mask.read(values, i, std::int16_t(other)), std::int16_t(other == b));
                for (int otherIndex = 0; otherIndex < mask.indexes; ++otherIndex)
                    if (otherIndex != index)
                        QCOMPARE(mask.read(values, std::int16_t(otherIndex), std::int16_t(b)), 0);

                mask.read(values, i, std::int16_t(b));
                const int number = mask.indexes > 1 ? index + 1 : b + 1;
                QCOMPARE(values.ValueDescription,
                         QString::fromUtf8(mask.description)
                             .replace(QLatin1String("%1"), QString::number(number))
                             .replace(QLatin1String("%2"), QString::number(b))
                             .replace(QLatin1String("%3"),
                                      QStringLiteral("%1").arg(b, 2, 10, QLatin1Char('0'))));
                QCOMPARE(values.ValueUnit, QString());
            }
    }

    void detectorLeds_data() {
        QTest::addColumn<int>("d");
        QTest::addColumn<bool>("preAlarm");
        QTest::addColumn<int>("byte");
        QTest::addColumn<int>("lowBit");
        QTest::newRow("alarm 1") << 0 << false << 147 << 6;
        QTest::newRow("alarm 2") << 1 << false << 148 << 0;
        QTest::newRow("pre-alarm 1") << 0 << true << 148 << 2;
        QTest::newRow("pre-alarm 2") << 1 << true << 148 << 4;
    }
    void detectorLeds() {
        QFETCH(int, d);
        QFETCH(bool, preAlarm);
        QFETCH(int, byte);
        QFETCH(int, lowBit);
        ValueStore values;
        for (unsigned state = 0; state < 4; ++state) {
            Bytes t(211, kNoise);
            t[std::size_t(byte)] = static_cast<std::uint8_t>(~(3u << lowBit) | state << lowBit);
            values.SetDataArray(t, 3);
            const auto index = static_cast<std::int16_t>(d);
            const std::int16_t got =
                preAlarm ? values.DISP_GetLedPreAlarm(index) : values.DISP_GetLedAlarm(index);
            QCOMPARE(got, std::int16_t(state));
        }
        QCOMPARE(values.ValueDescription,
                 QStringLiteral("Detektor %1: Zustand LED %2")
                     .arg(d + 1)
                     .arg(preAlarm ? QStringLiteral("Voralarm") : QStringLiteral("Hauptalarm")));
    }
};

QTEST_APPLESS_MAIN(TestGetters)
#include "tst_getters.moc"
