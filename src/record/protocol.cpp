#include "record/protocol.h"

#include "common/formmodel.h"
#include "common/numberformat.h"
#include "common/savefile.h"
#include "common/services.h"
#include "common/stringtable.h"
#include "common/texts.h"
#include "devicesettings/devicesettings_elements.h"
#include "display/mainview_elements.h"
#include "engine/settingtable.h"
#include "extinguish/extinguish_elements.h"
#include "link/devicesession.h"
#include "record/record_elements.h"
#include "record/recordlayout.h"
#include "values/devicevalues.h"
#include "values/valuestore.h"

#include <algorithm>
#include <limits>

namespace pr = frmProtocol;
namespace dv = frmDisplay;
using record::FormatColumn;
using record::LengthOf;

namespace {

constexpr int kLegendWidth = 33;
constexpr int kMarkWidth = 10;
constexpr int kDetectorWidth = 24;
constexpr int kModuleWidth = 17;
constexpr int kModules = 10;
// The first detector's tick of a switch per detector.
constexpr int kTickWidth = 12;

// A width that a cell's own text sets; a text too long for a 16-bit width is cut anyway.
std::int16_t widthOf(qsizetype width) {
    return static_cast<std::int16_t>(
        std::clamp<qsizetype>(width, 0, std::numeric_limits<std::int16_t>::max()));
}

// The cells of one page, from the windows' elements as they stand.
class Cells {
public:
    Cells(const Form& view, UserDialogs* dialogs)
        : m_dialogs(dialogs)
        , m_view(view) {}

    QString left(const QString& text, qsizetype width) const {
        return FormatColumn(m_dialogs, text, widthOf(width), 1, QStringLiteral(" "));
    }
    QString plain(const QString& text, qsizetype width) const {
        return FormatColumn(m_dialogs, text, widthOf(width), 0, QStringLiteral(" "));
    }
    QString dashes(qsizetype width) const {
        return FormatColumn(m_dialogs, QString(), widthOf(width), 1, QStringLiteral("-"));
    }
    // A cell exactly as wide as its text.
    QString fitted(const QString& text, int extra = 0) const {
        return left(text, LengthOf(text) + extra);
    }
    QString caption(const QString& element) const { return m_view.caption(element); }
    QString legend(const QString& element) const { return left(caption(element), kLegendWidth); }
    QString lamp(std::int16_t state) const {
        return left(state == 3 ? QStringLiteral("X") : QStringLiteral("-"), kMarkWidth);
    }
    QString tick(const QString& element, int width = kMarkWidth) const {
        return left(m_view.isChecked(element) ? QStringLiteral("X") : QString(), width);
    }
    QString cross(bool on) const {
        return left(on ? QStringLiteral("X") : QStringLiteral("-"), kMarkWidth);
    }
    // Label, blank, unit label, in one cell.
    QString withUnit(const QString& value, const QString& unit, int width) const {
        return left(caption(value) + u' ' + caption(unit), width);
    }
    QStringList numbers() const {
        QStringList cells{left(QString(), kLegendWidth)};
        for (int i = 1; i <= 5; ++i)
            cells << left(QString::number(i), kMarkWidth);
        return cells;
    }
    // A tab's caption and dashes as long as it.
    void heading(record::PageGrid& page, const QString& text) const {
        page.add({left(text, kLegendWidth)});
        page.add({dashes(LengthOf(text))});
    }
    // The device's identity in one line: serial, software and parameter number.
    QStringList identity() const {
        const QString serial = caption(dv::lblSerialNoLegend[0]) + QStringLiteral(": ");
        const QString software = caption(dv::lblSoftwareNoLegend[0]) + QStringLiteral(": ");
        const QString parameter = caption(dv::lblParameterNoLegend[0]) + QStringLiteral(": ");
        return {fitted(serial),    fitted(caption(dv::lblSerialNo[0]), 3),
                fitted(software),  fitted(caption(dv::lblSoftwareNo[0]), 3),
                fitted(parameter), fitted(caption(dv::lblParameterNo[0]))};
    }
    void head(record::PageGrid& page) const {
        page.add({dashes(record::PrintWidth)});
        page.add({plain(m_view.title(), record::PrintWidth)});
        page.blank();
        page.addCells(identity());
        page.blank();
    }

    UserDialogs* m_dialogs;
    const Form& m_view;
};

// The lines of one section of the settings, in the order of their places in the table; a
// line exists where the device has what it needs. The settings of one line each give a cell.
void settingLines(record::PageGrid& page, const Cells& c, ValueStore& v, int section,
                  bool twoDetectors, const bool (&sensor)[5]) {
    using Style = SettingDescriptor::RecordStyle;
    std::vector<const SettingDescriptor*> lines;
    for (const SettingDescriptor& s : settingTable())
        if (s.recordLine / 10 == section) lines.push_back(&s);
    std::stable_sort(lines.begin(), lines.end(),
                     [](const auto* a, const auto* b) { return a->recordLine < b->recordLine; });
    for (auto first = lines.begin(); first != lines.end();) {
        const auto end = std::find_if(first, lines.end(), [first](const auto* s) {
            return s->recordLine != (*first)->recordLine;
        });
        const SettingDescriptor& head = **first;
        const bool shown = std::all_of(head.recordWhen.begin(), head.recordWhen.end(),
                                       [&v](const Getter& g) { return !g || g(v) != 0; });
        const auto valueOf = [&c](const SettingDescriptor& s) {
            return c.caption(s.labelElement()) + u' ' + c.caption(s.unitElement());
        };
        QStringList cells{head.recordStyle == Style::PerSensor ? c.left(QString(), kLegendWidth)
                                                               : c.legend(head.legendElement())};
        for (auto it = first; it != end && shown; ++it) {
            const SettingDescriptor& s = **it;
            const bool second = s.index == 1;
            switch (s.recordStyle) {
            case Style::Value:
                cells << c.withUnit(s.labelElement(), s.unitElement(), kMarkWidth);
                break;
            case Style::Time: {
                const QString delay =
                    c.caption(s.labelElement(0)) + u' ' + c.caption(s.unitElement(0)) + u' ' +
                    c.caption(s.labelElement(1)) + u' ' + c.caption(s.unitElement(1));
                cells << c.left(delay, std::max(kMarkWidth, LengthOf(delay)));
                break;
            }
            case Style::Tick:
                cells << c.tick(s.shownBox());
                break;
            case Style::PerDetector:
                if (!second || twoDetectors) cells << c.left(valueOf(s), kDetectorWidth);
                break;
            case Style::TickPerDetector:
                if (!second || twoDetectors)
                    cells << c.tick(s.shownBox(), second ? kDetectorWidth : kTickWidth);
                break;
            case Style::PerSensor:
                cells << (sensor[s.index]
                              ? c.withUnit(s.labelElement(), s.unitElement(), kMarkWidth)
                              : c.left(QStringLiteral("-"), kMarkWidth));
                break;
            case Style::None:
                break;
            }
        }
        if (shown) page.addCells(cells);
        first = end;
    }
}

} // namespace

Protocol::Protocol(const Windows& windows, const Preferences& preferences, const Texts& texts,
                   UserDialogs* dialogs, const DeviceSession& session, DeviceValues& values)
    : QObject()
    , m_windows(windows)
    , m_preferences(preferences)
    , m_texts(texts)
    , m_dialogs(dialogs)
    , m_session(session)
    , m_values(values) {
    connect(&Window(), &Form::clicked, this, &Protocol::OnClicked);
    connect(&CommentWindow(), &Form::clicked, this, &Protocol::OnClicked);
    connect(&m_windows.display, &Form::clicked, this, [this](const QString& element) {
        if (element == dv::mnuProtocolCreate) Q_EMIT CreateRequested();
    });
    Window().setCloseHandler([this] {
        cmdCancel_Click();
        return false;
    });
}

Protocol::~Protocol() = default;

Form& Protocol::Window() const {
    return m_windows.record;
}

Form& Protocol::CommentWindow() const {
    return m_windows.comment;
}

ValueStore& Protocol::Store() {
    if (ValueStore* values = m_values.get()) return *values;
    if (!m_empty) m_empty = std::make_unique<ValueStore>();
    return *m_empty;
}

void Protocol::ApplyTexts(Language language) {
    const StringTable& table = StringTable::instance();
    auto s = [&](int index) { return table.text(language, index); };
    Form& w = Window();
    w.setTitle(s(72));
    w.setCaption(pr::cmdSave, s(73));
    w.setCaption(pr::cmdPrint, s(74));
    w.setCaption(pr::cmdSavePrint, s(75));
    w.setCaption(pr::cmdCancel, s(76));
    w.setCaption(pr::cmdPdf, s(650));
    Form& c = CommentWindow();
    c.setTitle(s(69));
    c.setCaption(frmProtocolComment::fraComment, s(70));
    c.setCaption(frmProtocolComment::cmdOK, s(71));
}

void Protocol::OnClicked(const QString& element) {
    if (sender() == &CommentWindow()) {
        if (element == frmProtocolComment::cmdOK) cmdOK_Click();
        return;
    }
    if (element == pr::cmdSave)
        cmdSave_Click();
    else if (element == pr::cmdPrint)
        cmdPrint_Click();
    else if (element == pr::cmdSavePrint)
        cmdSavePrint_Click();
    else if (element == pr::cmdPdf)
        cmdPdf_Click();
    else if (element == pr::cmdCancel)
        cmdCancel_Click();
}

void Protocol::Protocol_Create() {
    Form& c = CommentWindow();
    c.load();
    c.centreOver(m_windows.display);
    c.show(true);
}

void Protocol::cmdOK_Click() {
    Form& c = CommentWindow();
    const QString comment1 = c.caption(frmProtocolComment::txtComment1);
    const QString comment2 = c.caption(frmProtocolComment::txtComment2);
    // The window is unloaded after use: the next record starts with empty lines.
    c.hide();
    c.setCaption(frmProtocolComment::txtComment1, QString());
    c.setCaption(frmProtocolComment::txtComment2, QString());
    Build(comment1, comment2);
    Form& w = Window();
    w.load();
    w.centreOver(m_windows.display);
    w.show(true);
}

void Protocol::Build(const QString& comment1, const QString& comment2) {
    const QString one = Page_One(comment1, comment2);
    const QString two = Page_Two();
    Form& w = Window();
    w.setCaption(pr::rtxtProtocol[1], one);
    w.setCaption(pr::rtxtProtocol[2], two);
    w.setCaption(pr::rtxtProtocol[0], one + two);
}

QStringList Protocol::Pages() const {
    return {Window().caption(pr::rtxtProtocol[1]), Window().caption(pr::rtxtProtocol[2])};
}

QString Protocol::Page_One(const QString& comment1, const QString& comment2) {
    ValueStore& v = Store();
    const Cells c(m_windows.display, m_dialogs);
    const Form& d = c.m_view;
    const bool hasBattery = v.CTRL_GetHasBattery() != 0;
    const bool two = v.GetHasTwoDetectors() != 0;
    const bool preAlarm = v.GetHasPreAlarmDisplay() != 0;
    const bool flow = v.DET_GetHasFlow() != 0;
    const bool progRel = v.GetHasProgRel() != 0;
    bool sensor[5];
    for (std::int16_t i = 0; i < 5; ++i)
        sensor[i] = v.TEM_GetHasNTC(i) != 0;

    record::PageGrid page;
    page.add({c.plain(record::PrintableLine(comment1), record::PrintWidth)});
    page.add({c.plain(record::PrintableLine(comment2), record::PrintWidth)});
    c.head(page);

    c.heading(page, c.caption(dv::tabDisplay[frmDisplayPage::Status]));
    page.add({c.legend(dv::lblDisplayLegend[1]), c.lamp(v.DISP_GetLedFailure())});
    if (hasBattery) {
        page.add({c.legend(dv::lblDisplayLegend[2]), c.lamp(v.DISP_GetLedBatt())});
        page.add({c.legend(dv::lblDisplayLegend[3]), c.lamp(v.DISP_GetLedMainsFailure())});
    }
    page.add({c.legend(dv::lblDisplayLegend[4]), c.lamp(v.DISP_GetLedBlocked())});
    page.add({c.legend(dv::lblDisplayLegend[5]), c.lamp(v.DISP_GetLedReleased())});
    page.blank();
    const auto alarmLegend = [&c](const QString& element, const char* number) {
        return c.left(c.caption(element) + QLatin1String(number), kLegendWidth);
    };
    page.add({alarmLegend(dv::lblFireAlarmLegend[0], " 1"), c.lamp(v.DISP_GetLedAlarm(0))});
    if (preAlarm)
        page.add(
            {alarmLegend(dv::lblActionAlarmLegend[0], " 1"), c.lamp(v.DISP_GetLedPreAlarm(0))});
    if (two)
        page.add({alarmLegend(dv::lblFireAlarmLegend[1], " 2"), c.lamp(v.DISP_GetLedAlarm(1))});
    if (two && preAlarm)
        page.add(
            {alarmLegend(dv::lblActionAlarmLegend[1], " 2"), c.lamp(v.DISP_GetLedPreAlarm(1))});
    page.blank();

    // A row of both detectors; the second only where the device has it.
    const auto detectors = [&](const QString& legend, const QString& first, const QString& second) {
        QStringList cells{legend, c.left(first, kDetectorWidth)};
        if (two) cells << c.left(second, kDetectorWidth);
        page.addCells(cells);
    };
    const QString none = c.left(QString(), kLegendWidth);
    detectors(none, c.caption(dv::lblDetectorName[2]), c.caption(dv::lblDetectorName[3]));
    detectors(c.legend(dv::lblSerialNo2Legend[1]), c.caption(dv::lblSerialNo2[1]),
              c.caption(dv::lblSerialNo2[2]));
    detectors(c.legend(dv::lblSoftwareNoLegend[1]), c.caption(dv::lblSoftwareNo[1]),
              c.caption(dv::lblSoftwareNo[2]));
    detectors(c.legend(dv::lblParameterNoLegend[1]), c.caption(dv::lblParameterNo[1]),
              c.caption(dv::lblParameterNo[2]));
    page.blank();
    detectors(c.legend(dv::lblSmokeLevelLegend[0]), c.caption(dv::lblSmokeLevel[0]),
              c.caption(dv::lblSmokeLevel[1]));
    detectors(c.legend(dv::lblChamberLegend[0]), c.caption(dv::lblChamber[0]),
              c.caption(dv::lblChamber[1]));
    if (flow)
        page.add({c.legend(dv::lblAirFlowLegend),
                  c.left(c.caption(dv::lblAirFlow) + QStringLiteral("  (") +
                             c.caption(dv::lblAirflowMeterPerSecond) + u')',
                         kDetectorWidth)});
    page.add({c.legend(dv::lblTemperatureLegend[0]),
              c.left(c.caption(dv::lblTemperature), kDetectorWidth)});
    page.blank();
    page.addCells(QStringList{c.left(c.caption(dv::lblSensorTempLegend[5]) + u':', kLegendWidth)} +
                  c.numbers().mid(1));
    QStringList temperatures{none};
    for (int i = 0; i < 5; ++i)
        temperatures << c.left(sensor[i] ? c.caption(dv::lblSensorTemp[i]) : QStringLiteral("-"),
                               kMarkWidth);
    page.addCells(temperatures);
    page.blank();

    c.heading(page, c.caption(dv::tabDisplay[frmDisplayPage::Settings]));
    const auto settings = [&](int section) { settingLines(page, c, v, section, two, sensor); };
    settings(1);
    page.blank();
    settings(2);
    page.blank();
    detectors(none, c.caption(dv::lblDetectorName[2]), c.caption(dv::lblDetectorName[3]));
    settings(3);
    page.blank();
    settings(4);
    page.blank();

    if (progRel) {
        c.heading(page, c.caption(dv::tabDisplay[frmDisplayPage::Relays]));
        page.addCells(
            QStringList{c.left(c.caption(dv::lblRelayStateLegend[6]) + u':', kLegendWidth)} +
            c.numbers().mid(1));
        const std::vector<const SettingDescriptor*> relays = settingsOf(SettingPage::Relays);
        for (const int k : {0, 2, 3, 4, 14, 15}) {
            if (!d.isVisible(dv::lblRelais[k])) continue;
            QStringList cells{c.legend(dv::lblRelais[k])};
            for (const SettingDescriptor* relay : relays)
                cells << c.cross(k < kRelayEvents
                                     ? d.isChecked(relay->eventBox(k))
                                     : d.isChecked(relay->optionBox(k - kRelayEvents)));
            page.addCells(cells);
        }
    }
    // A blank before the temperature alarms also without the relay table, so that they
    // stand apart from the fan voltage.
    page.blank();
    page.addCells(
        QStringList{c.left(c.caption(dv::lblSensorTempAlarmLegend[5]) + u':', kLegendWidth)} +
        c.numbers().mid(1));
    settings(5);
    return page.text();
}

QString Protocol::Page_Two() {
    ValueStore& v = Store();
    const Cells c(m_windows.display, m_dialogs);
    const QLocale& locale = m_preferences.locale();
    const Form& settings = m_windows.deviceSettings;
    const Form& details = m_windows.extinguishDetails;
    const Form& modules = m_windows.extinguishSettings;
    namespace ds = frmDeviceSettings;
    namespace es = frmExtinguishSettings;

    record::PageGrid page;
    c.head(page);

    QString title = c.caption(dv::mnuDeviceSettings);
    title.remove(u'&');
    page.add({c.fitted(title)});
    page.add({c.dashes(LengthOf(title))});
    page.addCells(
        QStringList{c.left(settings.caption(ds::lblBetaFactorSettings) + u':', kLegendWidth)} +
        c.numbers().mid(1));
    QStringList betas{c.left(QString(), kLegendWidth)};
    for (std::int16_t i = 0; i < 5; ++i)
        betas << c.left(numberformat::plain(v.GetNTCbeta(i), locale), kMarkWidth);
    page.addCells(betas);
    page.blank();
    page.add({c.left(settings.caption(ds::lblDeviceSettings) + u':', 40)});
    const float resistors[] = {v.GetAlarmResistorValue(), v.GetNormalResistorValue(),
                               v.GetResistorValueTolerance()};
    for (int i = 0; i < 3; ++i)
        page.add({c.left(settings.caption(ds::lblParameterName[i]), kLegendWidth),
                  c.left(numberformat::plain(resistors[i], locale) + u' ' +
                             settings.caption(ds::lblParameterUnit[i]),
                         20)});

    if (v.DET_GetHasSingleHoleDetection() != 0) {
        page.blank();
        c.heading(page, c.caption(dv::tabDisplay[frmDisplayPage::Localisation]));
        page.addCells(c.numbers());
        QStringList times{c.left(QStringLiteral(" "), kLegendWidth)};
        for (int i = 0; i < 5; ++i)
            times << c.withUnit(dv::lblLocTime[i], dv::lblLocTimeUnit[i], kMarkWidth);
        page.addCells(times);
        page.blank();
        page.add({c.legend(dv::lblLocNumberOfHolesLegend),
                  c.left(c.caption(dv::lblLocNumberOfHoles), kMarkWidth)});
        page.add({c.legend(dv::lblBlowTimeLegend),
                  c.withUnit(dv::lblBlowTime, dv::lblBlowTimeUnit, kMarkWidth)});
        page.add({c.legend(dv::lblBlowFanVoltageLegend),
                  c.withUnit(dv::lblBlowFanVoltage, dv::lblBlowFanVoltageUnit, kMarkWidth)});
        page.add({c.legend(dv::lblSuckFanVoltageLegend),
                  c.withUnit(dv::lblSuckFanVoltage, dv::lblSuckFanVoltageUnit, kMarkWidth)});
    }

    c.heading(page, c.caption(dv::tabDisplay[frmDisplayPage::ModulesA]));
    const auto mark = [&c](bool on) {
        return c.left(on ? QStringLiteral("X") : QStringLiteral("-"), kModuleWidth);
    };
    const QString blank = c.left(QStringLiteral(" "), kModuleWidth);
    for (int first = 0; first < kModules; first += 3) {
        if (first > 0) page.blank();
        const int last = std::min(first + 3, kModules);
        // Each row: the legend of the block's first module, then one cell per module.
        const auto row = [&](const QString& legend, auto cellOf) {
            QStringList cells{c.left(legend, kLegendWidth)};
            for (int i = first; i < last; ++i) {
                const auto m = static_cast<std::int16_t>(i);
                cells << (v.EXT_GetSerialNum(m) == 0 ? c.left(QString(), kModuleWidth) : cellOf(m));
            }
            page.addCells(cells);
        };
        const auto resistor = [&](std::int16_t m, float value, int unit) {
            if (v.EXT_GetHasManualActivationLine(m) == 0) return blank;
            return c.left(numberformat::plain(value, locale) + u' ' +
                              modules.caption(es::lblParameterUnit[unit]),
                          kModuleWidth);
        };
        row(c.caption(dv::lblExtSerialNoLegend[first]), [&](std::int16_t m) {
            return c.left(numberformat::plain(v.EXT_GetSerialNum(m), locale), kModuleWidth);
        });
        row(c.caption(dv::lblExtOnlineLegend[first]),
            [&](std::int16_t m) { return mark(v.EXT_GetIsOnline(m) == 1); });
        row(c.caption(dv::lblExtFaultLegend[first]),
            [&](std::int16_t m) { return mark(v.EXT_GetLedFailure(m) == 3); });
        row(c.caption(dv::lblExtBlockedLegend[first]),
            [&](std::int16_t m) { return mark(v.EXT_GetLedBlocked(m) == 3); });
        row(c.caption(dv::lblExtIgnitionLegend[first]), [&](std::int16_t m) {
            return v.EXT_GetHasIgnition(m) == 0 ? blank : mark(v.EXT_GetIsReleased(m) == 1);
        });
        row(c.caption(dv::lblExtCutOffLegend[first]), [&](std::int16_t m) {
            return v.EXT_GetHasCutOffRelay(m) == 0 ? blank : mark(v.EXT_GetIsActivated(m) == 1);
        });
        row(details.caption(frmExtinguishDetails::lblSoftwareNoLegend),
            [&](std::int16_t m) { return c.left(v.EXT_GetSoftwareNum(m), kModuleWidth); });
        row(details.caption(frmExtinguishDetails::lblParameterNoLegend),
            [&](std::int16_t m) { return c.left(v.EXT_GetParameterID(m), kModuleWidth); });
        row(modules.caption(es::lblParameterName[0]),
            [&](std::int16_t m) { return resistor(m, v.EXT_GetAlarmResistorValue(m), 0); });
        row(modules.caption(es::lblParameterName[1]),
            [&](std::int16_t m) { return resistor(m, v.EXT_GetNormalResistorValue(m), 1); });
        row(modules.caption(es::lblParameterName[2]),
            [&](std::int16_t m) { return resistor(m, v.EXT_GetResistorValueTolerance(m), 2); });
    }
    return page.text();
}

QString Protocol::SuggestedName(const QString& suffix) const {
    const QString serial = m_session.serialNo().trimmed();
    return m_texts.str(72) + (serial.isEmpty() ? QString() : u'_' + serial) + suffix;
}

void Protocol::TellFailure(const QString& path, const QString& failure) {
    m_dialogs->messageBox(m_texts.str(651) + u'\n' + path + u'\n' + failure, Window().title(),
                          UserDialogs::Buttons::Ok, UserDialogs::Icon::Warning,
                          UserDialogs::Answer::Ok);
}

void Protocol::cmdSave_Click() {
    const auto path = m_dialogs->saveFileName(SuggestedName(QStringLiteral(".txt")),
                                              QStringLiteral("*.txt|*.txt|"));
    if (!path || path->isEmpty()) return;
    Form& w = Window();
    const QString whole = w.caption(pr::rtxtProtocol[1]) + w.caption(pr::rtxtProtocol[2]);
    w.setCaption(pr::rtxtProtocol[0], whole);
    if (const QString failure = writeWholeFile(*path, whole.toUtf8()); !failure.isEmpty())
        TellFailure(*path, failure);
}

void Protocol::cmdPrint_Click() {
    Q_EMIT PrintRequested(Pages());
}

void Protocol::cmdSavePrint_Click() {
    cmdSave_Click();
    cmdPrint_Click();
}

void Protocol::cmdPdf_Click() {
    const auto path = m_dialogs->saveFileName(SuggestedName(QStringLiteral(".pdf")),
                                              QStringLiteral("PDF|*.pdf|"));
    if (!path || path->isEmpty()) return;
    Q_EMIT PdfRequested(*path, Pages());
}

void Protocol::cmdCancel_Click() {
    Window().hide();
}

void Protocol::Printed(const QString& failure) {
    if (failure.isEmpty()) return;
    m_dialogs->messageBox(failure, Window().title(), UserDialogs::Buttons::Ok,
                          UserDialogs::Icon::Warning, UserDialogs::Answer::Ok);
}

void Protocol::PdfWritten(const QString& path, const QString& failure) {
    if (!failure.isEmpty()) TellFailure(path, failure);
}

#include "moc_protocol.cpp"
