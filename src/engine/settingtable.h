#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include <QString>

class QLocale;
class ValueStore;

// The byte of the device parameters' flags in the write block and in telegram 2.
constexpr int kParameterFlags = 28;

// The pages of the main view on which the engineer changes the device.
enum class SettingPage { Settings, AirFlow, Relays, Temperatures };
inline constexpr int kSettingPageCount = 4;

// The write command of a page.
int commandOf(SettingPage page);

// A value the device reports, by its getter; a getter of an array is bound to its index.
class Getter {
public:
    using Number = float (ValueStore::*)();
    using NumberAt = float (ValueStore::*)(std::int16_t);
    using Flag = std::int16_t (ValueStore::*)();
    using FlagAt = std::int16_t (ValueStore::*)(std::int16_t);

    Getter() = default;
    Getter(Number getter)
        : m_number(getter) {}
    Getter(NumberAt getter, int index)
        : m_numberAt(getter)
        , m_index(static_cast<std::int16_t>(index)) {}
    Getter(Flag getter)
        : m_flag(getter) {}
    Getter(FlagAt getter, int index)
        : m_flagAt(getter)
        , m_index(static_cast<std::int16_t>(index)) {}

    explicit operator bool() const { return m_number || m_numberAt || m_flag || m_flagAt; }
    float operator()(ValueStore& values) const;

private:
    Number m_number = nullptr;
    NumberAt m_numberAt = nullptr;
    Flag m_flag = nullptr;
    FlagAt m_flagAt = nullptr;
    std::int16_t m_index = 0;
};

// One setting of the main view's settings pages: what the page, the write block, the status
// display, the texts, the record and the command line know of it.
struct SettingDescriptor {
    enum class Kind {
        Number,         // a text field with its up/down element
        MinutesSeconds, // a time in two such fields, minutes and seconds; the block holds seconds
        Switch,         // the device's tick box and its editable copy
        Relay,          // the event boxes and the two link options of one relay
    };
    enum class Encoding {
        Byte,
        Word,   // two bytes, most significant first
        Single, // a float in four bytes, most significant first
        Flag,   // one bit of the flag byte
        Mask,   // 16 bits in two bytes, the lower byte first
    };
    // How the record shows the setting: a value with its unit, minutes and seconds, a tick
    // mark, or a cell for each detector or sensor on one line.
    enum class RecordStyle { None, Value, Time, Tick, PerDetector, TickPerDetector, PerSensor };

    int id = 0;     // the setting's place in the table
    QString name{}; // on the command line
    SettingPage page = SettingPage::Settings;
    Kind kind = Kind::Number;

    // The elements are named after `base`: legend lblAlarmDelayLegend, the device's value
    // lblAlarmDelay, field txtAlarmDelay, up/down element ctrAlarmDelay, unit
    // lblAlarmDelayUnit. A time has these for base + "Minutes" and base + "Seconds" under one
    // legend; a switch has the device's box chkBuzzer(0) and the copy chkBuzzer(1); a relay r
    // the boxes chkRelay<r+1>(i) and options optRelay<r+1>(i) under lblRelayNumber(r). A
    // member of a control array carries `index`; a switch of detector d has the boxes 2d and
    // 2d + 1.
    QString base{};
    int index = -1;
    QString group{}; // the frame the setting stands in
    QString part{};  // what comes and goes with a feature of the device, if anything

    // The place in the page's write block.
    int offset = 0;
    Encoding encoding = Encoding::Byte;
    int bit = 0;      // of a flag
    double scale = 1; // the block holds the field's value times this
    // The second detector's value is taken from the page only where the device has two
    // detectors, else the device's own goes out again.
    bool secondDetector = false;

    // The field: decimals of its text; its up/down element holds the value times
    // `upDownScale` and moves by `step`.
    int decimals = 0;
    double upDownScale = 1;
    double step = 1;
    // Limits and standard value in the up/down element's unit; those the device reports
    // replace the defaults at every refresh. A switch's standard is 1 for on.
    double minimum = 0;
    double maximum = 0;
    Getter reportedMinimum{};
    Getter reportedMaximum{};
    double standard = 0;
    Getter reportedStandard{};

    // The device's value, in the block's unit. A switch is on where its getter is not 0, or
    // where `inverted`, not 1.
    Getter value{};
    bool inverted = false;

    // The legend is string `legend`, then string `legendTail` after a blank, then where
    // `numbered` a blank and the index counted from 1. The unit is a fixed text.
    int legend = 0;
    int legendTail = 0;
    bool numbered = false;
    QString unit{};

    // The record's line: tens the section, ones the place in it; 0 for none. The settings of
    // one line share it, each a cell; the line exists only where every getter of
    // `recordWhen` is not 0.
    int recordLine = 0;
    RecordStyle recordStyle = RecordStyle::None;
    std::array<Getter, 2> recordWhen{};

    // The fields of the setting: 1 for a number, 2 for a time, 0 for a switch or a relay.
    int fieldCount() const;
    QString legendElement() const;
    QString labelElement(int field = 0) const;
    QString fieldElement(int field = 0) const;
    QString upDownElement(int field = 0) const;
    QString unitElement(int field = 0) const;
    QString unitText(int field = 0) const;
    QString shownBox() const; // a switch: the device's box
    QString copyBox() const;  // a switch: the box the engineer ticks
    QString eventBox(int event) const;
    QString optionBox(int conjunction) const; // 0 OR, 1 AND

    bool isOn(ValueStore& values) const;
    // The device's value as label `field` shows it; nothing where it cannot show it.
    std::optional<QString> labelText(ValueStore& values, const QLocale& locale,
                                     int field = 0) const;

    // The element names above, each built at its first use: the views ask for them at every
    // refresh. Not part of the setting; its fields do not change once a name was asked for.
    mutable std::array<QString, 27> builtNames{};

private:
    template <typename Build>
    QString remembered(int slot, bool keep, Build build) const;
};

// Every setting, by page in the order the pages compare them.
std::span<const SettingDescriptor> settingTable();
std::vector<const SettingDescriptor*> settingsOf(SettingPage page);
const SettingDescriptor* findSetting(const QString& name);
const SettingDescriptor& settingNamed(const QString& name);

// The event boxes of a relay; its two link options follow as bits 14 and 15 of its mask.
inline constexpr int kRelayEvents = 14;
