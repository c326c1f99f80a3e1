// set --port N|PATH [--timeout S] [--airflow-init] NAME=VALUE... | --list: the settings
// pages of the main view filled as the engineer fills them, their own routines and their
// own comparison with what the device reports.

#include "apps/cli/cli.h"
#include "common/colors.h"
#include "common/mainview_elements.h"
#include "display/mainview.h"
#include "display/settingspages.h"
#include "engine/pollengine.h"
#include "shell/program.h"

#include <algorithm>
#include <array>
#include <vector>

#include <QHash>
#include <QTimer>

namespace cli {

namespace {

namespace el = frmDisplay;
using Page = SettingsPages::Page;

constexpr int kEvents = 14;
constexpr int kSearchSeconds = 10;

struct PageButtons {
    QString open, send, cancel;
    int command = 0;
    QString title;
};

PageButtons buttons(Page page) {
    switch (page) {
    case SettingsPages::Settings:
        return {el::cmdSettings, el::cmdSettingsAssume, el::cmdSettingsCancel, 129,
                QStringLiteral("settings")};
    case SettingsPages::AirFlow:
        return {el::cmdAirFlowSet, el::cmdAirFlowInit, el::cmdAirFlowCancel, 130,
                QStringLiteral("air-flow initialisation")};
    case SettingsPages::Relays:
        return {el::cmdRelaySet, el::cmdRelayAssume, el::cmdRelayCancel, 138,
                QStringLiteral("relays")};
    default:
        return {el::cmdSensorTempAlarmSet, el::cmdSensorTempAlarmAssume,
                el::cmdSensorTempAlarmCancel, 137, QStringLiteral("temperature alarms")};
    }
}

// One setting by its readable name: the page, the field the engineer types into (or the
// box they tick), what shows the device's value, and the legend the page names it by.
struct Setting {
    enum Kind { Text, Switch, FaultDelay, Relay };
    QString name;
    Page page;
    Kind kind;
    QString field, shown, legend;
    int index = 0; // the relay, for Relay
};

const std::vector<Setting>& settings() {
    static const std::vector<Setting> table = [] {
        using S = Setting;
        const Page set = SettingsPages::Settings;
        std::vector<Setting> t = {
            {QStringLiteral("alarm-delay"), set, S::Text, el::txtAlarmDelay, el::lblAlarmDelay,
             el::lblAlarmDelayLegend},
            {QStringLiteral("extinguish-delay"), set, S::Text, el::txtExtinguishDelay,
             el::lblExtinguishDelay, el::lblExtinguishDelayLegend},
            {QStringLiteral("airflow-range"), set, S::Text, el::txtAirFlowRange,
             el::lblAirFlowRange, el::lblAirFlowRangeLegend},
            {QStringLiteral("fault-delay"), set, S::FaultDelay, el::txtFaultDelaySeconds,
             el::lblFaultDelaySeconds, el::lblFaultDelayLegend},
        };
        for (int d = 0; d < 2; ++d) {
            const QString n = QString::number(d + 1);
            t.push_back({QStringLiteral("sensitivity") + n, set, S::Text, el::txtSensitivity[d],
                         el::lblSensitivity[d], el::lblSensitivityLegend[d]});
            t.push_back({QStringLiteral("pre-alarm") + n, set, S::Text, el::txtPreAlarmThreshold[d],
                         el::lblPreAlarmThreshold[d], el::lblPreAlarmThresholdLegend[d]});
        }
        const std::pair<QString, std::array<QString, 3>> switches[] = {
            {QStringLiteral("buzzer"), {el::chkBuzzer[1], el::chkBuzzer[0], el::lblBuzzerLegend}},
            {QStringLiteral("fault-store"),
             {el::chkFaultStore[1], el::chkFaultStore[0], el::lblFaultStoreLegend}},
            {QStringLiteral("dynamic-airflow"),
             {el::chkDynamicAirflow[1], el::chkDynamicAirflow[0], el::lblDynamicAirflowLegend}},
            {QStringLiteral("localisation"),
             {el::chkLocalization[1], el::chkLocalization[0], el::lblLocalizationLegend}},
            {QStringLiteral("truelix1"),
             {el::chkTrueLix[1], el::chkTrueLix[0], el::lblTrueLixLegend[0]}},
            {QStringLiteral("truelix2"),
             {el::chkTrueLix[3], el::chkTrueLix[2], el::lblTrueLixLegend[1]}},
            {QStringLiteral("alarm-after-loc"),
             {el::chkAlarmAfterLoc[1], el::chkAlarmAfterLoc[0], el::lblAlarmAfterLocLegend}},
        };
        for (const auto& [name, e] : switches)
            t.push_back({name, set, S::Switch, e[0], e[1], e[2]});
        const Page air = SettingsPages::AirFlow;
        t.push_back({QStringLiteral("altitude"), air, S::Text, el::txtAltitude, el::lblAltitude,
                     el::lblAltitudeLegend});
        t.push_back({QStringLiteral("air-pressure"), air, S::Text, el::txtAirPressure,
                     el::lblAirPressure, el::lblAirPressureLegend});
        t.push_back({QStringLiteral("fan-voltage"), air, S::Text, el::txtFanVoltageNormal,
                     el::lblFanVoltageNormal, el::lblFanVoltageNormalLegend});
        for (int r = 0; r < 5; ++r)
            t.push_back({QStringLiteral("relay%1").arg(r + 1),
                         SettingsPages::Relays,
                         S::Relay,
                         {},
                         el::lblRelayNumber[r],
                         el::lblRelayNumber[r],
                         r});
        for (int n = 0; n < 5; ++n)
            t.push_back({QStringLiteral("temp-alarm%1").arg(n + 1), SettingsPages::Temperatures,
                         S::Text, el::txtSensorTempAlarm[n], el::lblSensorTempAlarm[n],
                         el::lblSensorTempAlarmLegend[n]});
        return t;
    }();
    return table;
}

const Setting* find(const QString& name) {
    for (const Setting& s : settings())
        if (s.name == name) return &s;
    return nullptr;
}

QString eventBox(int relay, int event) {
    static const ElementArray boxes[] = {el::chkRelay1, el::chkRelay2, el::chkRelay3, el::chkRelay4,
                                         el::chkRelay5};
    return boxes[relay][event];
}

QString relayOption(int relay, bool conjunction) {
    static const ElementArray options[] = {el::optRelay1, el::optRelay2, el::optRelay3,
                                           el::optRelay4, el::optRelay5};
    return options[relay][conjunction ? 1 : 0];
}

// "or:0,4,9": the link (OR, AND) and the events; nothing when malformed.
struct RelayChoice {
    bool conjunction = false;
    QList<int> events;
};

std::optional<RelayChoice> relayChoice(const QString& text) {
    const qsizetype colon = text.indexOf(u':');
    const QString link = text.left(colon).toLower();
    if (colon < 0 || (link != u"or" && link != u"and")) return std::nullopt;
    RelayChoice choice;
    choice.conjunction = link == u"and";
    const QString list = text.mid(colon + 1);
    if (list.isEmpty()) return choice;
    for (const QString& item : list.split(u',')) {
        bool ok = false;
        const int event = item.trimmed().toInt(&ok);
        if (!ok || event < 0 || event >= kEvents) return std::nullopt;
        if (!choice.events.contains(event)) choice.events << event;
    }
    return choice;
}

std::optional<bool> switchValue(const QString& text) {
    const QString t = text.toLower();
    if (t == u"on" || t == u"1") return true;
    if (t == u"off" || t == u"0") return false;
    return std::nullopt;
}

// What the device has now, as the page shows it.
QString present(const Form& v, const Setting& s) {
    switch (s.kind) {
    case Setting::Switch:
        return v.isChecked(s.shown) ? QStringLiteral("on") : QStringLiteral("off");
    case Setting::FaultDelay:
        return QString::number(v.caption(el::lblFaultDelayMinutes).toInt() * 60 +
                               v.caption(el::lblFaultDelaySeconds).toInt());
    case Setting::Relay: {
        QStringList events;
        for (int e = 0; e < kEvents; ++e)
            if (v.isVisible(eventBox(s.index, e)) && v.isChecked(eventBox(s.index, e)))
                events << QString::number(e);
        return (v.isChecked(relayOption(s.index, true)) ? QStringLiteral("and:")
                                                        : QStringLiteral("or:")) +
               events.join(u',');
    }
    default:
        return v.caption(s.shown);
    }
}

// Limits and unit, as the page's fields tell them while it is open.
QString limits(const Form& v, const Setting& s) {
    switch (s.kind) {
    case Setting::Switch:
        return QStringLiteral("on|off");
    case Setting::FaultDelay:
        return v.toolTip(el::txtFaultDelaySeconds) + QStringLiteral(" (in seconds)");
    case Setting::Relay: {
        QStringList events;
        for (int e = 0; e < kEvents; ++e)
            if (v.isVisible(eventBox(s.index, e))) events << QString::number(e);
        return QStringLiteral("or|and:EVENTS of ") + events.join(u',');
    }
    default:
        return v.toolTip(s.field);
    }
}

// The parts of the pages that the main view hides where the device lacks a feature.
QStringList containers(const Setting& s) {
    static const QHash<QString, QStringList> table = [] {
        QHash<QString, QStringList> t{
            {QStringLiteral("airflow-range"), {el::fraHasAirFlow[0]}},
            {QStringLiteral("fault-delay"), {el::fraHasAirFlow[0]}},
            {QStringLiteral("dynamic-airflow"), {el::fraHasAirFlow[1]}},
            {QStringLiteral("localisation"), {el::fraHasLocalization}},
            {QStringLiteral("alarm-after-loc"), {el::fraAlarmAfterLoc}},
            {QStringLiteral("altitude"), {el::fraHasAirFlow[2]}},
            {QStringLiteral("air-pressure"), {el::fraHasAirFlow[2]}},
        };
        for (int d = 0; d < 2; ++d) {
            const QString n = QString::number(d + 1);
            const QString detector = el::fraDetectorSettings[d];
            t.insert(QStringLiteral("sensitivity") + n, {detector});
            t.insert(QStringLiteral("pre-alarm") + n, {detector, el::fraPreAlarmThreshold[d]});
            t.insert(QStringLiteral("truelix") + n, {detector, el::fraHasTrueLix[d]});
        }
        for (int r = 0; r < 5; ++r)
            t.insert(QStringLiteral("relay%1").arg(r + 1),
                     {el::fraRelaySettings, el::tabDisplay[frmDisplayPage::Relays]});
        for (int n = 0; n < 5; ++n)
            t.insert(QStringLiteral("temp-alarm%1").arg(n + 1),
                     {el::fraSensorTemp[1], el::fraSensorTemp[n + 2]});
        return t;
    }();
    return table.value(s.name);
}

// An open page hides the device's values behind its fields; the legends stay.
bool available(const Form& v, const Setting& s) {
    const QStringList parts = containers(s);
    return v.isVisible(s.legend) &&
           std::all_of(parts.begin(), parts.end(),
                       [&v](const QString& part) { return v.isVisible(part); });
}

int list(Program& program) {
    Form& v = program.forms().frmDisplay();
    for (int p = 0; p < SettingsPages::kPageCount; ++p) {
        const PageButtons b = buttons(static_cast<Page>(p));
        v.click(b.open);
        for (const Setting& s : settings())
            if (static_cast<int>(s.page) == p && available(v, s))
                printLine(stdout, s.name + u'\t' + limits(v, s) + u'\t' + present(v, s));
        v.click(b.cancel);
    }
    return kDone;
}

// Types one value into its page as the engineer would; false when the text cannot be put
// there at all (the page's own check judges everything else).
bool fill(Form& v, const Setting& s, const QString& value, QString& why) {
    switch (s.kind) {
    case Setting::Text:
        v.userSetCaption(s.field, value);
        return true;
    case Setting::FaultDelay: {
        bool whole = false;
        const int seconds = value.toInt(&whole);
        // Minutes and seconds, as the page splits them; anything else for the check to refuse.
        v.userSetCaption(el::txtFaultDelayMinutes,
                         whole && seconds >= 0 ? QString::number(seconds / 60) : value);
        v.userSetCaption(el::txtFaultDelaySeconds,
                         whole && seconds >= 0 ? QString::number(seconds % 60) : value);
        return true;
    }
    case Setting::Switch: {
        const auto on = switchValue(value);
        if (!on) {
            why = QStringLiteral("takes on or off");
            return false;
        }
        v.userSetValue(s.field, *on ? 1 : 0);
        return true;
    }
    case Setting::Relay: {
        const auto choice = relayChoice(value);
        if (!choice) {
            why = QStringLiteral("takes or:EVENTS or and:EVENTS, events 0 to 13 by commas");
            return false;
        }
        for (const int e : choice->events) {
            if (!v.isVisible(eventBox(s.index, e))) {
                why = QStringLiteral("event %1 is not on this device").arg(e);
                return false;
            }
        }
        v.userSetValue(relayOption(s.index, choice->conjunction), 1);
        v.userSetValue(relayOption(s.index, !choice->conjunction), 0);
        for (int e = 0; e < kEvents; ++e)
            v.userSetValue(eventBox(s.index, e), choice->events.contains(e) ? 1 : 0);
        return true;
    }
    }
    return false;
}

bool refusedByPage(const Form& v, const Setting& s) {
    if (s.kind == Setting::FaultDelay)
        return v.backColor(el::txtFaultDelayMinutes) == colors::kYellow ||
               v.backColor(el::txtFaultDelaySeconds) == colors::kYellow;
    return s.kind == Setting::Text && v.backColor(s.field) == colors::kYellow;
}

} // namespace

int set(const QStringList& args) {
    const auto parsed = parse(args, {QStringLiteral("--port"), QStringLiteral("--timeout")},
                              {QStringLiteral("--airflow-init"), QStringLiteral("--list")});
    if (!parsed) return kBadInput;
    const auto seconds = timeoutSeconds(*parsed, 15);
    if (!seconds) return kBadInput;
    const bool listOnly = parsed->has(QStringLiteral("--list"));
    const bool airFlowInit = parsed->has(QStringLiteral("--airflow-init"));
    if (!parsed->has(QStringLiteral("--port")) ||
        (!listOnly && parsed->positional.isEmpty() && !airFlowInit) ||
        (listOnly && (!parsed->positional.isEmpty() || airFlowInit))) {
        complain(QStringLiteral("set takes --port N|PATH and NAME=VALUE..., or --list"));
        return kBadInput;
    }

    // Names first: a mistyped one must not cost a search of the line.
    std::vector<std::pair<const Setting*, QString>> wanted;
    QStringList bad;
    for (const QString& assignment : parsed->positional) {
        const qsizetype equals = assignment.indexOf(u'=');
        const Setting* s = equals > 0 ? find(assignment.left(equals)) : nullptr;
        if (!s) {
            bad << assignment + QStringLiteral(": no such setting (see set --list)");
            continue;
        }
        for (const auto& [other, value] : wanted)
            if (other == s) bad << assignment + QStringLiteral(": named twice");
        const QString value = assignment.mid(equals + 1);
        if ((s->kind == Setting::Relay && !relayChoice(value)) ||
            (s->kind == Setting::Switch && !switchValue(value)))
            bad << assignment +
                       (s->kind == Setting::Relay
                            ? QStringLiteral(": takes or:EVENTS or and:EVENTS, events 0 to 13")
                            : QStringLiteral(": takes on or off"));
        if (s->page == SettingsPages::AirFlow && !airFlowInit)
            bad << assignment + QStringLiteral(": written only by the air-flow initialisation "
                                               "(--airflow-init)");
        wanted.emplace_back(s, value);
    }
    if (!bad.isEmpty()) {
        for (const QString& line : bad)
            complain(line);
        return kBadInput;
    }

    catchStopSignals();
    LiveSession session({});
    const QString port = parsed->value(QStringLiteral("--port"));
    // The timeout is the confirmation's; the search has the read-out's.
    if (const auto failed = connect(session, port, kSearchSeconds)) return *failed;
    Program& program = session.program();
    if (listOnly) return list(program);

    Form& v = program.forms().frmDisplay();
    SettingsPages& pages = program.mainView().settingsPages();
    PollEngine& engine = program.engine();

    // Every page the command touches, in the pages' order: opened, filled, checked.
    std::vector<Page> touched;
    for (int p = 0; p < SettingsPages::kPageCount; ++p) {
        bool used = p == static_cast<int>(SettingsPages::AirFlow) && airFlowInit;
        for (const auto& [s, value] : wanted)
            used = used || static_cast<int>(s->page) == p;
        if (used) touched.push_back(static_cast<Page>(p));
    }
    std::vector<int> commands;
    for (const Page page : touched) {
        const PageButtons b = buttons(page);
        v.click(b.open);
        for (const auto& [s, value] : wanted) {
            if (s->page != page) continue;
            QString why = QStringLiteral("is not on this device");
            if (!available(v, *s) || !fill(v, *s, value, why))
                bad << s->name + u'=' + value + QStringLiteral(": ") + why;
        }
        if (!bad.isEmpty()) continue;
        // The page's own button: its routine checks every field and queues its block. Only
        // one write waits at a time, so the queue is taken back until all pages agree.
        v.click(b.send);
        if (engine.isWriteQueued() && engine.nextCommand() == b.command) {
            commands.push_back(b.command);
            engine.cancelWrite();
            continue;
        }
        // A field not named keeps the device's value, which the page may refuse as well.
        for (const Setting& s : settings()) {
            if (s.page != page || !refusedByPage(v, s)) continue;
            const auto named = std::find_if(wanted.begin(), wanted.end(),
                                            [&s](const auto& w) { return w.first == &s; });
            bad << (named != wanted.end() ? s.name + u'=' + named->second
                                          : s.name + QStringLiteral(" (the device's value)")) +
                       QStringLiteral(": refused (") + limits(v, s) + u')';
        }
        if (bad.isEmpty()) bad << buttons(page).title + QStringLiteral(": refused by the page");
    }
    if (!bad.isEmpty()) {
        for (const Page page : touched)
            v.click(buttons(page).cancel);
        for (const QString& line : bad)
            complain(line);
        complain(QStringLiteral("nothing was sent"));
        return kBadInput;
    }

    // The blocks are stored; the poll cycle sends each once, one after the other.
    std::vector<int> sent;
    QObject::connect(&engine, &PollEngine::writeSent, &session, [&](int command) {
        sent.push_back(command);
        if (sent.size() < commands.size()) {
            const int next = commands[sent.size()];
            // After this tick has finished choosing its read-back.
            QTimer::singleShot(0, &engine, [&engine, next] { engine.SendCommand(next); });
        }
    });
    engine.SendCommand(commands.front());
    const auto allTaken = [&] {
        if (sent.size() < commands.size()) return false;
        for (const Page page : touched)
            if (pages.state(page) != SettingsPages::State::Viewing) return false;
        return true;
    };
    waitFor([&] { return allTaken() || session.lineLost(); }, *seconds);

    QStringList sentTitles;
    QStringList unsentTitles;
    for (const Page page : touched) {
        const bool out = std::find(sent.begin(), sent.end(), buttons(page).command) != sent.end();
        (out ? sentTitles : unsentTitles) << buttons(page).title;
    }
    const auto written = [&] {
        return sentTitles.isEmpty()
                   ? QStringLiteral("nothing was sent")
                   : QStringLiteral("sent and standing in the device: ") +
                         sentTitles.join(QStringLiteral(", ")) +
                         (unsentTitles.isEmpty() ? QString()
                                                 : QStringLiteral("; not sent: ") +
                                                       unsentTitles.join(QStringLiteral(", ")));
    };
    if (allTaken()) {
        for (const auto& [s, value] : wanted)
            printLine(stdout, s->name + u'=' + present(v, *s));
        return kDone;
    }
    if (session.lineLost()) {
        complain(port + QStringLiteral(": the port went away; ") + written());
        return kLineFault;
    }
    if (stopSignal() != 0) {
        complain(QStringLiteral("interrupted before the device confirmed; ") + written());
        return kInterrupted;
    }
    for (const Page page : touched) {
        const QStringList differing = pages.differences(page);
        for (const auto& [s, value] : wanted)
            if (s->page == page && differing.contains(v.caption(s->legend)))
                complain(s->name + u'=' + value + QStringLiteral(": the device still has ") +
                         present(v, *s));
        if (!differing.isEmpty() && pages.state(page) != SettingsPages::State::Viewing)
            complain(buttons(page).title + QStringLiteral(": still differ: ") +
                     differing.join(QStringLiteral(", ")));
    }
    complain(QStringLiteral("not confirmed within %1 s; ").arg(*seconds) + written());
    return kNotTaken;
}

} // namespace cli
