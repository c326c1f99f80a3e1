#include "engine/settingtable.h"

#include "common/numberformat.h"
#include "values/valuestore.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>

namespace {

using Kind = SettingDescriptor::Kind;
using Encoding = SettingDescriptor::Encoding;
using Record = SettingDescriptor::RecordStyle;
using V = ValueStore;

const QString kSeconds = QStringLiteral("s");

std::vector<SettingDescriptor> build() {
    std::vector<SettingDescriptor> t;
    const QString settings = QStringLiteral("fraSettings");
    const QString flowRange = QStringLiteral("fraHasAirFlow_0");

    t.push_back({.name = QStringLiteral("alarm-delay"),
                 .base = QStringLiteral("AlarmDelay"),
                 .group = settings,
                 .offset = 22,
                 .maximum = 60,
                 .reportedMinimum = &V::DET_GetAlarmDelayMin,
                 .reportedMaximum = &V::DET_GetAlarmDelayMax,
                 .standard = 10,
                 .value = &V::DET_GetAlarmDelaySetPoint,
                 .legend = 41,
                 .unit = kSeconds,
                 .recordLine = 11,
                 .recordStyle = Record::Value});
    t.push_back({.name = QStringLiteral("extinguish-delay"),
                 .base = QStringLiteral("ExtinguishDelay"),
                 .group = settings,
                 .offset = 27,
                 .maximum = 60,
                 .standard = 10,
                 .value = &V::GetExtinguishDelay,
                 .legend = 98,
                 .unit = kSeconds,
                 .recordLine = 14,
                 .recordStyle = Record::Value});
    t.push_back({.name = QStringLiteral("airflow-range"),
                 .base = QStringLiteral("AirFlowRange"),
                 .group = settings,
                 .part = flowRange,
                 .offset = 15,
                 .minimum = 10,
                 .maximum = 95,
                 .reportedMinimum = &V::DET_GetStaticFlowDevMin,
                 .reportedMaximum = &V::DET_GetStaticFlowDevMax,
                 .standard = 30,
                 .value = &V::DET_GetStaticFlowDevSetPoint,
                 .legend = 42,
                 .unit = QStringLiteral("%"),
                 .recordLine = 12,
                 .recordStyle = Record::Value,
                 .recordWhen = {&V::DET_GetHasFlow}});
    t.push_back({.name = QStringLiteral("fault-delay"),
                 .kind = Kind::MinutesSeconds,
                 .base = QStringLiteral("FaultDelay"),
                 .group = settings,
                 .part = flowRange,
                 .offset = 16,
                 .encoding = Encoding::Word,
                 .minimum = 30,
                 .maximum = 3600,
                 .reportedMinimum = &V::DET_GetAirFlowFailureDelayMin,
                 .reportedMaximum = &V::DET_GetAirFlowFailureDelayMax,
                 .standard = 100,
                 .value = &V::DET_GetAirFlowFailureDelaySetPoint,
                 .legend = 43,
                 .unit = kSeconds,
                 .recordLine = 13,
                 .recordStyle = Record::Time,
                 .recordWhen = {&V::DET_GetHasFlow}});
    for (int d = 0; d < 2; ++d) {
        const QString detector = QStringLiteral("fraDetectorSettings_%1").arg(d);
        const QString number = QString::number(d + 1);
        // The standard sensitivity is the first detector's least, for both.
        t.push_back({.name = QStringLiteral("sensitivity") + number,
                     .base = QStringLiteral("Sensitivity"),
                     .index = d,
                     .group = detector,
                     .offset = 18 + 2 * d,
                     .encoding = Encoding::Word,
                     .scale = 1000,
                     .secondDetector = d == 1,
                     .decimals = 3,
                     .upDownScale = 1000,
                     .step = 100,
                     .reportedMinimum = {&V::DET_GetSmokeValue10Min, d},
                     .reportedMaximum = {&V::DET_GetSmokeValue10Max, d},
                     .reportedStandard = {&V::DET_GetSmokeValue10Min, 0},
                     .value = {&V::DET_GetSmokeValue10SetPoint, d},
                     .legend = 40,
                     .unit = QStringLiteral("%/m"),
                     .recordLine = 32,
                     .recordStyle = Record::PerDetector});
        t.push_back({.name = QStringLiteral("pre-alarm") + number,
                     .base = QStringLiteral("PreAlarmThreshold"),
                     .index = d,
                     .group = detector,
                     .part = QStringLiteral("fraPreAlarmThreshold_%1").arg(d),
                     .offset = 25 + d,
                     .secondDetector = d == 1,
                     .minimum = 10,
                     .maximum = 80,
                     .standard = 60,
                     .value = {&V::DET_GetPreAlarmThreshold, d},
                     .legend = 95,
                     .unit = QStringLiteral("%"),
                     .recordLine = 33,
                     .recordStyle = Record::PerDetector,
                     .recordWhen = {&V::GetHasPreAlarmDisplay}});
    }
    const auto flag = [&](const char* name, const char* base, const QString& part, int bit, bool on,
                          Getter value, int legend, int recordLine,
                          std::array<Getter, 2> recordWhen = {}) {
        t.push_back({.name = QString::fromLatin1(name),
                     .kind = Kind::Switch,
                     .base = QString::fromLatin1(base),
                     .group = settings,
                     .part = part,
                     .offset = kParameterFlags,
                     .encoding = Encoding::Flag,
                     .bit = bit,
                     .standard = on ? 1.0 : 0.0,
                     .value = value,
                     .legend = legend,
                     .recordLine = recordLine,
                     .recordStyle = Record::Tick,
                     .recordWhen = recordWhen});
    };
    // The device reports whether the buzzer is to be off; the box says it sounds.
    flag("buzzer", "Buzzer", {}, 7, true, &V::GetBuzzerShouldBeOff, 120, 21);
    t.back().inverted = true;
    flag("fault-store", "FaultStore", {}, 3, false, &V::DET_GetFailureStorageIsOn, 44, 22);
    flag("dynamic-airflow", "DynamicAirflow", QStringLiteral("fraHasAirFlow_1"), 5, false,
         &V::DET_GetDynFlowShouldBeOn, 36, 23, {&V::DET_GetHasFlow, &V::DET_GetHasDynFlow});
    flag("localisation", "Localization", QStringLiteral("fraHasLocalization"), 0, false,
         &V::DET_GetLocShouldBeOn, 24, 24, {&V::DET_GetHasSingleHoleDetection});
    for (int d = 0; d < 2; ++d)
        t.push_back({.name = QStringLiteral("truelix%1").arg(d + 1),
                     .kind = Kind::Switch,
                     .base = QStringLiteral("TrueLix"),
                     .index = d,
                     .group = QStringLiteral("fraDetectorSettings_%1").arg(d),
                     .part = QStringLiteral("fraHasTrueLix_%1").arg(d),
                     .offset = kParameterFlags,
                     .encoding = Encoding::Flag,
                     .bit = 1 + d,
                     .standard = 1,
                     .value = {&V::DET_GetTrueLixShouldBeOn, d},
                     .legend = 45,
                     .recordLine = 34,
                     .recordStyle = Record::TickPerDetector});
    flag("alarm-after-loc", "AlarmAfterLoc", QStringLiteral("fraAlarmAfterLoc"), 6, false,
         {&V::DET_GetAlarmAfterLoc, 0}, 97, 25, {&V::DET_GetHasSingleHoleDetection});
    t.back().legendTail = 24;

    const QString airFlowInit = QStringLiteral("fraAirFlowInit");
    const QString flowInit = QStringLiteral("fraHasAirFlow_2");
    t.push_back({.name = QStringLiteral("altitude"),
                 .page = SettingPage::AirFlow,
                 .base = QStringLiteral("Altitude"),
                 .group = airFlowInit,
                 .part = flowInit,
                 .offset = 8,
                 .encoding = Encoding::Word,
                 .step = 25,
                 .maximum = 9000,
                 .value = &V::DET_GetAltitude,
                 .legend = 37,
                 .unit = QStringLiteral("m"),
                 .recordLine = 41,
                 .recordStyle = Record::Value,
                 .recordWhen = {&V::DET_GetHasFlow}});
    t.push_back({.name = QStringLiteral("air-pressure"),
                 .page = SettingPage::AirFlow,
                 .base = QStringLiteral("AirPressure"),
                 .group = airFlowInit,
                 .part = flowInit,
                 .offset = 10,
                 .encoding = Encoding::Word,
                 .minimum = 700,
                 .maximum = 1400,
                 .standard = 1013,
                 .value = &V::DET_GetAirPressureSetPoint,
                 .legend = 38,
                 .unit = QStringLiteral("hPa"),
                 .recordLine = 42,
                 .recordStyle = Record::Value,
                 .recordWhen = {&V::DET_GetHasFlow}});
    // Shown in V, sent and reported in mV.
    t.push_back({.name = QStringLiteral("fan-voltage"),
                 .page = SettingPage::AirFlow,
                 .base = QStringLiteral("FanVoltageNormal"),
                 .group = airFlowInit,
                 .offset = 6,
                 .encoding = Encoding::Word,
                 .scale = 1000,
                 .decimals = 1,
                 .upDownScale = 1000,
                 .step = 100,
                 .minimum = 9000,
                 .maximum = 13500,
                 .reportedMinimum = &V::DET_GetUFanMin,
                 .reportedMaximum = &V::DET_GetUFanMax,
                 .standard = 9000,
                 .value = &V::DET_GetUFanSetPoint,
                 .legend = 39,
                 .unit = QStringLiteral("V"),
                 .recordLine = 43,
                 .recordStyle = Record::Value});

    for (int r = 0; r < 5; ++r)
        t.push_back({.name = QStringLiteral("relay%1").arg(r + 1),
                     .page = SettingPage::Relays,
                     .kind = Kind::Relay,
                     .base = QStringLiteral("Relay"),
                     .index = r,
                     .group = QStringLiteral("fraRelaySettings"),
                     .part = QStringLiteral("tabDisplay_4"),
                     .offset = 6 + 2 * r,
                     .encoding = Encoding::Mask,
                     .legend = 126,
                     .numbered = true});

    // The alarm temperatures are degrees Celsius whatever unit the display uses; the up/down
    // element counts tenths.
    for (int n = 0; n < 5; ++n)
        t.push_back({.name = QStringLiteral("temp-alarm%1").arg(n + 1),
                     .page = SettingPage::Temperatures,
                     .base = QStringLiteral("SensorTempAlarm"),
                     .index = n,
                     .group = QStringLiteral("fraSensorTemp_1"),
                     .part = QStringLiteral("fraSensorTemp_%1").arg(n + 2),
                     .offset = 6 + 4 * n,
                     .encoding = Encoding::Single,
                     .decimals = 1,
                     .upDownScale = 10,
                     .maximum = 1000,
                     .value = {&V::GetNTCAlarmValue, n},
                     .legend = 112,
                     .numbered = true,
                     .unit = QStringLiteral("°C"),
                     .recordLine = 51,
                     .recordStyle = Record::PerSensor});

    for (std::size_t i = 0; i < t.size(); ++i)
        t[i].id = static_cast<int>(i);
    return t;
}

QString indexed(const QString& name, int index) {
    return index < 0 ? name : name + u'_' + QString::number(index);
}

} // namespace

int commandOf(SettingPage page) {
    switch (page) {
    case SettingPage::Settings:
        return 129;
    case SettingPage::AirFlow:
        return 130;
    case SettingPage::Relays:
        return 138;
    case SettingPage::Temperatures:
        return 137;
    }
    return 0;
}

float Getter::operator()(ValueStore& values) const {
    if (m_number) return (values.*m_number)();
    if (m_numberAt) return (values.*m_numberAt)(m_index);
    if (m_flag) return (values.*m_flag)();
    if (m_flagAt) return (values.*m_flagAt)(m_index);
    return 0;
}

int SettingDescriptor::fieldCount() const {
    switch (kind) {
    case Kind::Number:
        return 1;
    case Kind::MinutesSeconds:
        return 2;
    default:
        return 0;
    }
}

namespace {

QString fieldBase(const SettingDescriptor& s, int field) {
    if (s.kind != Kind::MinutesSeconds) return s.base;
    return s.base + (field == 0 ? QStringLiteral("Minutes") : QStringLiteral("Seconds"));
}

// Where each name lies in builtNames: one legend, two fields of label, field, up/down and
// unit, the two boxes of a switch, the event boxes and the two options of a relay.
enum NameSlot {
    kLegendSlot = 0,
    kLabelSlots = 1,
    kFieldSlots = 3,
    kUpDownSlots = 5,
    kUnitSlots = 7,
    kShownSlot = 9,
    kCopySlot = 10,
    kEventSlots = 11,
    kOptionSlots = kEventSlots + kRelayEvents,
    kNameSlots = kOptionSlots + 2
};
static_assert(kNameSlots == std::tuple_size_v<decltype(SettingDescriptor::builtNames)>);

bool isField(int field) {
    return field == 0 || field == 1;
}
} // namespace

template <typename Build>
QString SettingDescriptor::remembered(int slot, bool keep, Build build) const {
    if (!keep) return build();
    QString& name = builtNames[static_cast<std::size_t>(slot)];
    if (name.isNull()) name = build();
    return name;
}

QString SettingDescriptor::legendElement() const {
    return remembered(kLegendSlot, true, [this] {
        if (kind == Kind::Relay) return indexed(QStringLiteral("lblRelayNumber"), index);
        return indexed(QStringLiteral("lbl") + base + QStringLiteral("Legend"), index);
    });
}

QString SettingDescriptor::labelElement(int field) const {
    return remembered(kLabelSlots + field, isField(field), [&] {
        return indexed(QStringLiteral("lbl") + fieldBase(*this, field), index);
    });
}

QString SettingDescriptor::fieldElement(int field) const {
    return remembered(kFieldSlots + field, isField(field), [&] {
        return indexed(QStringLiteral("txt") + fieldBase(*this, field), index);
    });
}

QString SettingDescriptor::upDownElement(int field) const {
    return remembered(kUpDownSlots + field, isField(field), [&] {
        return indexed(QStringLiteral("ctr") + fieldBase(*this, field), index);
    });
}

QString SettingDescriptor::unitElement(int field) const {
    return remembered(kUnitSlots + field, isField(field), [&] {
        return indexed(QStringLiteral("lbl") + fieldBase(*this, field) + QStringLiteral("Unit"),
                       index);
    });
}

QString SettingDescriptor::unitText(int field) const {
    return kind == Kind::MinutesSeconds && field == 0 ? QStringLiteral("min") : unit;
}

QString SettingDescriptor::shownBox() const {
    return remembered(kShownSlot, true, [this] {
        return indexed(QStringLiteral("chk") + base, 2 * std::max(index, 0));
    });
}

QString SettingDescriptor::copyBox() const {
    return remembered(kCopySlot, true, [this] {
        return indexed(QStringLiteral("chk") + base, 2 * std::max(index, 0) + 1);
    });
}

QString SettingDescriptor::eventBox(int event) const {
    return remembered(kEventSlots + event, event >= 0 && event < kRelayEvents, [&] {
        return indexed(QStringLiteral("chk") + base + QString::number(index + 1), event);
    });
}

QString SettingDescriptor::optionBox(int conjunction) const {
    return remembered(kOptionSlots + conjunction, conjunction == 0 || conjunction == 1, [&] {
        return indexed(QStringLiteral("opt") + base + QString::number(index + 1), conjunction);
    });
}

bool SettingDescriptor::isOn(ValueStore& values) const {
    const float reported = value(values);
    return inverted ? reported != 1 : reported != 0;
}

std::optional<QString> SettingDescriptor::labelText(ValueStore& values, const QLocale& locale,
                                                    int field) const {
    const float reported = value(values);
    if (kind == Kind::MinutesSeconds) {
        // Both sides whole numbers first, so that 59.6 s shows as 1 min 0 s.
        const auto whole = numberformat::toInt32(reported);
        if (!whole) return std::nullopt;
        return QString::number(field == 0 ? *whole / 60 : *whole % 60);
    }
    if (decimals == 0) return numberformat::plain(reported, locale);
    return numberformat::fixed(static_cast<double>(reported) / scale, decimals, locale);
}

std::span<const SettingDescriptor> settingTable() {
    static const std::vector<SettingDescriptor> table = build();
    return table;
}

std::vector<const SettingDescriptor*> settingsOf(SettingPage page) {
    std::vector<const SettingDescriptor*> found;
    for (const SettingDescriptor& s : settingTable())
        if (s.page == page) found.push_back(&s);
    return found;
}

const SettingDescriptor* findSetting(const QString& name) {
    for (const SettingDescriptor& s : settingTable())
        if (s.name == name) return &s;
    return nullptr;
}

const SettingDescriptor& settingNamed(const QString& name) {
    const SettingDescriptor* s = findSetting(name);
    if (!s) std::abort();
    return *s;
}
