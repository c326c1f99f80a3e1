#include "sim/device_profile.h"
#include "sim/setting_limits.h"
#include "sim/value_table.h"

#include <algorithm>
#include <cmath>
#include <set>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace mq27sim {
namespace {

enum class Form { Number, Flag, State, BitList, Text };

Form formOf(const ValueLayout& layout) {
    if (layout.encoding == Encoding::Version || layout.encoding == Encoding::ParameterId)
        return Form::Text;
    if (layout.encoding != Encoding::Bits) return Form::Number;
    if (layout.width == 1) return Form::Flag;
    return layout.width == 2 ? Form::State : Form::BitList;
}

bool isWhole(double v) {
    return std::isfinite(v) && std::floor(v) == v;
}

QString rangeText(double min, double max) {
    return QStringLiteral("%1 to %2").arg(min, 0, 'g', 12).arg(max, 0, 'g', 12);
}

const QStringList kCommonKeys = {"description", "kind", "serialNumber", "unsolicited"};
const QStringList kOwnKindKeys = {"behaviour", "limits", "schedule", "telegram4"};

// The longest the device may run before a change of its schedule, in device seconds.
constexpr double kMaxScheduleSeconds = 1000000;

// The layout of a value by its name in the store, "faults.pending" or "modules[2].ledOp".
const ValueLayout* layoutOf(const std::string& name) {
    for (const ValueSection& section : valueSections())
        for (int i = 0; i < section.count; ++i)
            for (const ValueLayout& layout : section.values)
                if (section.nameOf(layout, i) == name) return &layout;
    return nullptr;
}

class ProfileReader {
public:
    explicit ProfileReader(DeviceProfile& profile)
        : m_profile(profile) {}

    bool read(const QJsonObject& root);
    const QString& error() const { return m_error; }

private:
    DeviceProfile& m_profile;
    QString m_error;
    std::set<std::string> m_given;

    bool ok() const { return m_error.isEmpty(); }
    void fail(const QString& field, const QString& problem);
    std::optional<double> number(const QJsonValue& v, const QString& field, Range range,
                                 bool whole);
    void checkKeys(const QJsonObject& object, const QString& where, const QStringList& allowed);

    void readIdentity(const QJsonObject& root);
    void readForeign(const QJsonObject& root);
    void readOwn(const QJsonObject& root);
    void readUnsolicited(const QJsonValue& v);
    void readBehaviour(const QJsonValue& v);
    void readTelegram4(const QJsonValue& v);
    void readSection(const ValueSection& section, const QJsonValue& v);
    int readGroup(const ValueSection& section, const QJsonValue& v, int minimum, int fallback);
    void defineBlock(const ValueSection& section, int index);
    void readBlock(const ValueSection& section, int index, const QJsonObject& object,
                   QStringList extraKeys);
    void readValue(const std::string& name, const ValueLayout& layout, const QJsonValue& v);
    std::optional<double> valueOf(const QString& field, const ValueLayout& layout,
                                  const QJsonValue& v, bool withDrift);
    std::optional<double> readNumberWithDrift(const QString& field, const ValueLayout& layout,
                                              const QJsonValue& v);
    std::optional<double> readBitList(const QString& field, const ValueLayout& layout,
                                      const QJsonValue& v);
    std::optional<double> readVersionText(const QString& field, const ValueLayout& layout,
                                          const QJsonValue& v);
    void readHoleTimes(const QJsonValue& v);
    void readSchedule(const QJsonValue& v);
    void readLimits(const QJsonValue& v);
    void checkModules(const QJsonArray& modules);
    void deriveEquipment(int detectors, int modules);
    void checkLimits();
};

void ProfileReader::fail(const QString& field, const QString& problem) {
    if (ok()) m_error = QStringLiteral("field '%1': %2").arg(field, problem);
}

std::optional<double> ProfileReader::number(const QJsonValue& v, const QString& field, Range range,
                                            bool whole) {
    const double d = v.toDouble(std::nan(""));
    if (!v.isDouble() || (whole && !isWhole(d)) || !range.contains(d)) {
        fail(field, QStringLiteral("expected a %1 from %2")
                        .arg(whole ? "whole number" : "number", rangeText(range.min, range.max)));
        return std::nullopt;
    }
    return d;
}

void ProfileReader::checkKeys(const QJsonObject& object, const QString& where,
                              const QStringList& allowed) {
    for (const QString& key : object.keys())
        if (!allowed.contains(key))
            fail(where.isEmpty() ? key : where + "." + key, QStringLiteral("unknown field"));
}

bool ProfileReader::read(const QJsonObject& root) {
    readIdentity(root);
    if (ok() && m_profile.kind == kOwnKind)
        readOwn(root);
    else if (ok())
        readForeign(root);
    return ok();
}

void ProfileReader::readIdentity(const QJsonObject& root) {
    if (root.contains("kind")) {
        const auto kind = number(root["kind"], "kind", {1, 10}, true);
        if (kind && *kind != kOwnKind && *kind != kVarlixKind && *kind != kMinlixKind)
            fail("kind", QStringLiteral("expected 10, 1 or 7"));
        m_profile.kind = kind ? static_cast<int>(*kind) : kOwnKind;
    }
    if (root.contains("serialNumber")) {
        if (const auto serial =
                number(root["serialNumber"], "serialNumber", {1, 4294967295.0}, true))
            m_profile.serialNumber = static_cast<std::uint32_t>(*serial);
    }
    if (root.contains("unsolicited")) readUnsolicited(root["unsolicited"]);
}

void ProfileReader::readForeign(const QJsonObject& root) {
    QStringList allowed = kCommonKeys;
    if (m_profile.kind == kMinlixKind) {
        allowed << "dataBytes";
        if (root.contains("dataBytes"))
            if (const auto n = number(root["dataBytes"], "dataBytes", {0, 240}, true))
                m_profile.dataBytes = static_cast<int>(*n);
    }
    for (const QString& key : root.keys())
        if (!allowed.contains(key))
            fail(key, QStringLiteral("not used by a device of kind %1").arg(m_profile.kind));
}

void ProfileReader::readOwn(const QJsonObject& root) {
    QStringList allowed = kCommonKeys + kOwnKindKeys;
    int detectors = 0;
    int modules = 0;
    for (const ValueSection& section : valueSections()) {
        const QString key = QString::fromStdString(section.name);
        allowed << key;
        if (section.name == "detectors")
            detectors = readGroup(section, root[key], 1, 1);
        else if (section.name == "sensors")
            readGroup(section, root[key], 0, 0);
        else if (section.name == "modules")
            modules = readGroup(section, root[key], 0, 0);
        else
            readSection(section, root[key]);
    }
    checkKeys(root, {}, allowed);
    if (root.contains("behaviour")) readBehaviour(root["behaviour"]);
    if (root.contains("telegram4")) readTelegram4(root["telegram4"]);
    if (root["modules"].isArray()) checkModules(root["modules"].toArray());
    deriveEquipment(detectors, modules);
    if (root.contains("limits")) readLimits(root["limits"]);
    if (root.contains("schedule")) readSchedule(root["schedule"]);
    checkLimits();
}

void ProfileReader::readUnsolicited(const QJsonValue& v) {
    const QJsonObject o = v.toObject();
    if (!v.isObject()) return fail("unsolicited", QStringLiteral("expected an object"));
    checkKeys(o, "unsolicited", {"everySeconds", "command"});
    if (o.contains("everySeconds")) {
        const QString field = QStringLiteral("unsolicited.everySeconds");
        const auto s = number(o["everySeconds"], field, {0, Unsolicited::kMaxEverySeconds}, false);
        if (s && *s != 0 && *s < Unsolicited::kMinEverySeconds)
            fail(field, QStringLiteral("expected 0 (never) or at least %1")
                            .arg(Unsolicited::kMinEverySeconds));
        else if (s)
            m_profile.unsolicited.everySeconds = *s;
    }
    if (o.contains("command"))
        if (const auto c = number(o["command"], "unsolicited.command", {1, 5}, true))
            m_profile.unsolicited.command = static_cast<int>(*c);
}

void ProfileReader::readBehaviour(const QJsonValue& v) {
    const QJsonObject o = v.toObject();
    if (!v.isObject()) return fail("behaviour", QStringLiteral("expected an object"));
    checkKeys(o, "behaviour", {"airFlowInitSeconds", "identifySeconds"});
    if (o.contains("airFlowInitSeconds"))
        if (const auto s =
                number(o["airFlowInitSeconds"], "behaviour.airFlowInitSeconds", {0.1, 3600}, false))
            m_profile.behaviour.airFlowInitSeconds = *s;
    if (o.contains("identifySeconds"))
        if (const auto s =
                number(o["identifySeconds"], "behaviour.identifySeconds", {0.1, 3600}, false))
            m_profile.behaviour.identifySeconds = *s;
}

void ProfileReader::readTelegram4(const QJsonValue& v) {
    QString hex = v.toString();
    hex.remove(QRegularExpression("\\s"));
    const QByteArray raw = QByteArray::fromHex(hex.toLatin1());
    static const QRegularExpression hexDigits("^[0-9A-Fa-f]*$");
    if (!v.isString() || !hexDigits.match(hex).hasMatch() || raw.size() != 35)
        return fail("telegram4", QStringLiteral("expected 35 bytes as hexadecimal text"));
    m_profile.telegram4 = toBytes(raw);
}

void ProfileReader::readSection(const ValueSection& section, const QJsonValue& v) {
    defineBlock(section, 0);
    if (v.isUndefined()) return;
    if (!v.isObject())
        return fail(QString::fromStdString(section.name), QStringLiteral("expected an object"));
    QStringList extra;
    if (section.name == "localisation") extra << "holeTimes";
    readBlock(section, 0, v.toObject(), extra);
}

// Reads the blocks of a group (detectors, sensors, modules) and returns how many the profile
// lists; temperature sensors that it doesn't list are there all the same, switched off.
int ProfileReader::readGroup(const ValueSection& section, const QJsonValue& v, int minimum,
                             int fallback) {
    const QString field = QString::fromStdString(section.name);
    if (!v.isUndefined() && !v.isArray()) {
        fail(field, QStringLiteral("expected a list"));
        return fallback;
    }
    const QJsonArray list = v.toArray();
    const int listed = v.isUndefined() ? fallback : static_cast<int>(list.size());
    if (listed < minimum || listed > section.count) {
        fail(field, QStringLiteral("expected %1 entries").arg(rangeText(minimum, section.count)));
        return fallback;
    }
    const bool allBlocks = section.name == "sensors";
    for (int i = 0; i < (allBlocks ? section.count : listed); ++i) {
        defineBlock(section, i);
        if (allBlocks)
            m_profile.values.set(valueName(section.name, i, "hasNTC"), i < listed ? 1 : 0);
        if (i >= static_cast<int>(list.size())) continue;
        const QString where = QStringLiteral("%1[%2]").arg(field).arg(i);
        if (!list[i].isObject()) {
            fail(where, QStringLiteral("expected an object"));
            continue;
        }
        readBlock(section, i, list[i].toObject(),
                  section.name == "modules" ? QStringList{"internal"} : QStringList{});
    }
    return listed;
}

void ProfileReader::defineBlock(const ValueSection& section, int index) {
    for (const ValueLayout& layout : section.values) {
        const bool perDetector = layout.key == "detSerialNum";
        m_profile.values.define(section.nameOf(layout, index),
                                layout.defaultValue + (perDetector ? index : 0));
    }
}

void ProfileReader::readBlock(const ValueSection& section, int index, const QJsonObject& object,
                              QStringList extraKeys) {
    for (const ValueLayout& layout : section.values) {
        const QString key = QString::fromStdString(layout.key);
        extraKeys << key;
        if (object.contains(key)) readValue(section.nameOf(layout, index), layout, object[key]);
    }
    const QString where = section.isGroup()
                              ? QStringLiteral("%1[%2]").arg(section.name.c_str()).arg(index)
                              : QString::fromStdString(section.name);
    checkKeys(object, where, extraKeys);
    if (object.contains("holeTimes")) readHoleTimes(object["holeTimes"]);
}

void ProfileReader::readValue(const std::string& name, const ValueLayout& layout,
                              const QJsonValue& v) {
    const auto value = valueOf(QString::fromStdString(name), layout, v, true);
    if (!value) return;
    m_profile.values.define(name, *value);
    if (v.isObject())
        m_profile.values.setDrift(name,
                                  Drift{v["drift"].toDouble(), v["periodSeconds"].toDouble(60)});
    m_given.insert(name);
}

std::optional<double> ProfileReader::valueOf(const QString& field, const ValueLayout& layout,
                                             const QJsonValue& v, bool withDrift) {
    switch (formOf(layout)) {
    case Form::Number:
        if (withDrift && v.isObject()) return readNumberWithDrift(field, layout, v);
        return number(v, field, {minimumOf(layout), maximumOf(layout)},
                      layout.encoding != Encoding::Float32);
    case Form::Flag:
        if (v.isBool()) return v.toBool() ? 1 : 0;
        if (v.isDouble() && (v.toDouble() == 0 || v.toDouble() == 1)) return v.toDouble();
        fail(field, QStringLiteral("expected true or false"));
        return std::nullopt;
    case Form::State:
        return number(v, field, {0, 3}, true);
    case Form::BitList:
        return readBitList(field, layout, v);
    case Form::Text:
        return readVersionText(field, layout, v);
    }
    return std::nullopt;
}

// {"value": v, "drift": amplitude, "periodSeconds": p} for a slow sine.
std::optional<double> ProfileReader::readNumberWithDrift(const QString& field,
                                                         const ValueLayout& layout,
                                                         const QJsonValue& v) {
    const bool whole = layout.encoding != Encoding::Float32;
    const Range range{minimumOf(layout), maximumOf(layout)};
    const QJsonObject o = v.toObject();
    checkKeys(o, field, {"value", "drift", "periodSeconds"});
    const auto value = number(o["value"], field + ".value", range, whole);
    const auto span = range.max - range.min;
    if (o.contains("drift")) number(o["drift"], field + ".drift", {0, span}, false);
    if (o.contains("periodSeconds"))
        number(o["periodSeconds"], field + ".periodSeconds", {1, 86400}, false);
    return ok() ? value : std::nullopt;
}

// A list of bit numbers, or the mask as a number.
std::optional<double> ProfileReader::readBitList(const QString& field, const ValueLayout& layout,
                                                 const QJsonValue& v) {
    if (v.isDouble()) return number(v, field, {0, maximumOf(layout)}, true);
    if (!v.isArray()) {
        fail(field, QStringLiteral("expected a list of bit numbers from 0 to %1, or a number")
                        .arg(layout.width - 1));
        return std::nullopt;
    }
    double mask = 0;
    std::set<int> seen;
    for (const QJsonValue& item : v.toArray()) {
        const auto bit = number(item, field, {0, double(layout.width - 1)}, true);
        if (!bit) return std::nullopt;
        if (seen.insert(static_cast<int>(*bit)).second)
            mask += std::ldexp(1.0, static_cast<int>(*bit));
    }
    return mask;
}

// "2710.03.021" for a software number, "0815.042.007" for a parameter set number.
std::optional<double> ProfileReader::readVersionText(const QString& field,
                                                     const ValueLayout& layout,
                                                     const QJsonValue& v) {
    const bool parameterId = layout.encoding == Encoding::ParameterId;
    const QStringList parts = v.toString().split('.');
    const unsigned limits[3] = {65535, parameterId ? 65535U : 255U, 255};
    unsigned numbers[3] = {0, 0, 0};
    bool good = v.isString() && parts.size() == 3;
    for (int i = 0; good && i < 3; ++i) {
        numbers[i] = parts[i].toUInt(&good);
        good = good && numbers[i] <= limits[i];
    }
    if (!good) {
        fail(field, QStringLiteral("expected a text like \"%1\"")
                        .arg(parameterId ? "0815.042.007" : "2710.03.021"));
        return std::nullopt;
    }
    return parameterId ? packParameterId(numbers[0], numbers[1], numbers[2])
                       : packVersion(numbers[0], numbers[1], numbers[2]);
}

void ProfileReader::readHoleTimes(const QJsonValue& v) {
    const QString field = QStringLiteral("localisation.holeTimes");
    const QJsonArray list = v.toArray();
    if (!v.isArray() || list.isEmpty() || list.size() > 5)
        return fail(field, QStringLiteral("expected a list of 1 to 5 times in seconds"));
    std::vector<double> times;
    for (const QJsonValue& item : list)
        if (const auto t = number(item, field, {0.01, 655.35}, false)) times.push_back(*t);
    if (ok()) m_profile.behaviour.holeTimes = times;
}

// [{"afterSeconds": 2, "value": "faults.pending", "to": [3]}, ...]: values the device changes
// by itself, each given as the profile gives it, within the device's limits.
void ProfileReader::readSchedule(const QJsonValue& v) {
    if (!v.isArray()) return fail("schedule", QStringLiteral("expected a list"));
    const QJsonArray list = v.toArray();
    for (qsizetype i = 0; ok() && i < list.size(); ++i) {
        const QString where = QStringLiteral("schedule[%1]").arg(i);
        if (!list[i].isObject()) return fail(where, QStringLiteral("expected an object"));
        const QJsonObject o = list[i].toObject();
        checkKeys(o, where, {"afterSeconds", "value", "to"});
        const auto after =
            number(o["afterSeconds"], where + ".afterSeconds", {0, kMaxScheduleSeconds}, false);
        const std::string name = o["value"].toString().toStdString();
        const ValueLayout* layout = layoutOf(name);
        if (!layout || !m_profile.values.has(name))
            return fail(where + ".value",
                        QStringLiteral("expected the name of a value of this device, such as "
                                       "\"faults.pending\""));
        const auto to = valueOf(where + ".to", *layout, o["to"], false);
        const auto range = settingRange(m_profile.values, name, m_profile.limits);
        if (to && range && !range->contains(*to))
            fail(where + ".to", QStringLiteral("%1 lies outside the device's limits %2")
                                    .arg(*to, 0, 'g', 12)
                                    .arg(rangeText(range->min, range->max)));
        if (after && to) m_profile.schedule.push_back({*after, name, *to});
    }
    std::stable_sort(m_profile.schedule.begin(), m_profile.schedule.end(),
                     [](const auto& a, const auto& b) { return a.afterSeconds < b.afterSeconds; });
}

// {"controller.extinguishDelay": [0, 30], ...}: settings this device takes within less than
// the family's limits, so that a write the tool allows is refused and its verify waits.
void ProfileReader::readLimits(const QJsonValue& v) {
    if (!v.isObject()) return fail("limits", QStringLiteral("expected an object"));
    const QJsonObject o = v.toObject();
    for (auto it = o.begin(); ok() && it != o.end(); ++it) {
        const QString where = QStringLiteral("limits.") + it.key();
        if (!isLimitedSetting(it.key().toStdString()))
            return fail(where, QStringLiteral("expected a setting the device limits, such as "
                                              "\"controller.extinguishDelay\""));
        const QJsonArray pair = it.value().toArray();
        if (!it.value().isArray() || pair.size() != 2)
            return fail(where, QStringLiteral("expected [minimum, maximum]"));
        const auto min = number(pair[0], where + "[0]", {-1e12, 1e12}, false);
        const auto max = number(pair[1], where + "[1]", {-1e12, 1e12}, false);
        if (min && max && *min > *max)
            return fail(where, QStringLiteral("expected the minimum first"));
        if (min && max) m_profile.limits[it.key().toStdString()] = Range{*min, *max};
    }
}

// The tool treats a module as internal when its serial number has digits from the sixth
// place on, that is eight digits or more; external modules have at most five.
void ProfileReader::checkModules(const QJsonArray& modules) {
    std::set<std::uint32_t> serials;
    for (int i = 0; ok() && i < static_cast<int>(modules.size()); ++i) {
        const QString field = QStringLiteral("modules[%1]").arg(i);
        const QJsonObject m = modules[i].toObject();
        const auto serial =
            static_cast<std::uint32_t>(m_profile.values.get(valueName("modules", i, "serialNum")));
        if (!m.contains("serialNum") || serial == 0)
            return fail(field + ".serialNum", QStringLiteral("a module needs a serial number"));
        if (!serials.insert(serial).second)
            return fail(field + ".serialNum", QStringLiteral("serial number used twice"));
        if (!m.contains("internal")) continue;
        if (!m["internal"].isBool())
            return fail(field + ".internal", QStringLiteral("expected true or false"));
        const int digits = static_cast<int>(QString::number(serial).size());
        if (m["internal"].toBool() ? digits < 8 : digits > 5)
            return fail(field + ".internal",
                        QStringLiteral("internal modules need serial numbers of 8 or more digits, "
                                       "external ones of 5 or fewer"));
    }
}

void ProfileReader::deriveEquipment(int detectors, int modules) {
    const std::string two = "controller.hasTwoDetectors";
    if (m_given.count(two) && m_profile.values.get(two) != (detectors == 2 ? 1 : 0))
        fail(QString::fromStdString(two),
             QStringLiteral("follows the number of detectors; leave it out"));
    m_profile.values.define(two, detectors == 2 ? 1 : 0);
    if (!m_given.count("controller.numOfExtModulesSet"))
        m_profile.values.define("controller.numOfExtModulesSet", modules);
    bool anySensor = false;
    for (int i = 0; i < 5; ++i)
        anySensor = anySensor || m_profile.values.get(valueName("sensors", i, "hasNTC")) != 0;
    if (!m_given.count("features.hasTemperatureSensors"))
        m_profile.values.define("features.hasTemperatureSensors", anySensor ? 1 : 0);
}

// A device never reports a setting that it would refuse to take back.
void ProfileReader::checkLimits() {
    for (const std::string& name : m_profile.values.names()) {
        const auto range = settingRange(m_profile.values, name, m_profile.limits);
        const double value = m_profile.values.get(name);
        if (ok() && range && !range->contains(value))
            fail(QString::fromStdString(name),
                 QStringLiteral("%1 lies outside the device's limits %2")
                     .arg(value, 0, 'g', 12)
                     .arg(rangeText(range->min, range->max)));
    }
}

} // namespace

std::optional<DeviceProfile> ProfileLoader::load(const QString& path, QString& error) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("profile %1: cannot be read: %2").arg(path, file.errorString());
        return std::nullopt;
    }
    return parse(file.readAll(), path, error);
}

std::optional<DeviceProfile> ProfileLoader::parse(const QByteArray& json, const QString& source,
                                                  QString& error) {
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        error = QStringLiteral("profile %1: not valid JSON at offset %2: %3")
                    .arg(source)
                    .arg(parseError.offset)
                    .arg(parseError.errorString());
        return std::nullopt;
    }
    if (!doc.isObject()) {
        error = QStringLiteral("profile %1: expected a JSON object").arg(source);
        return std::nullopt;
    }
    DeviceProfile profile;
    profile.source = source;
    ProfileReader reader(profile);
    if (!reader.read(doc.object())) {
        error = QStringLiteral("profile %1: %2").arg(source, reader.error());
        return std::nullopt;
    }
    return profile;
}

DeviceProfile ProfileLoader::defaults() {
    QString error;
    auto profile = parse("{}", QStringLiteral("(defaults)"), error);
    return profile.value_or(DeviceProfile{});
}

QString ProfileLoader::conflicts(const std::vector<DeviceProfile>& profiles) {
    std::set<std::pair<int, std::uint32_t>> seen;
    for (const DeviceProfile& p : profiles)
        if (!seen.insert({p.kind, p.serialNumber}).second)
            return QStringLiteral("profile %1: serial number %2 is on the line already")
                .arg(p.source)
                .arg(p.serialNumber);
    return {};
}

} // namespace mq27sim
