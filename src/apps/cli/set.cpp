// set --port N|PATH [--timeout S] [--airflow-init] NAME=VALUE... | --list: the settings of
// the main view's pages by their names in the table of settings, written through the pages'
// own writer and confirmed by the pages' own comparison with what the device reports.

#include "apps/cli/cli.h"
#include "common/fieldcheck.h"
#include "common/formtimer.h"
#include "display/mainview.h"
#include "display/mainview_elements.h"
#include "display/settingspages.h"
#include "engine/commands.h"
#include "engine/pollengine.h"
#include "engine/settingswriter.h"
#include "shell/program.h"

#include <algorithm>
#include <memory>
#include <vector>

#include <QTimer>

namespace cli {

namespace {

using Kind = SettingDescriptor::Kind;

constexpr int kSearchSeconds = 10;
constexpr int kCompareMs = 100;
constexpr SettingPage kPages[] = {SettingPage::Settings, SettingPage::AirFlow, SettingPage::Relays,
                                  SettingPage::Temperatures};

QString titleOf(SettingPage page) {
    switch (page) {
    case SettingPage::Settings:
        return QStringLiteral("settings");
    case SettingPage::AirFlow:
        return QStringLiteral("air-flow initialisation");
    case SettingPage::Relays:
        return QStringLiteral("relays");
    default:
        return QStringLiteral("temperature alarms");
    }
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
        if (!ok || event < 0 || event >= kRelayEvents) return std::nullopt;
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
QString present(const Form& v, const SettingDescriptor& s) {
    switch (s.kind) {
    case Kind::Switch:
        return v.isChecked(s.shownBox()) ? QStringLiteral("on") : QStringLiteral("off");
    case Kind::MinutesSeconds:
        return QString::number(v.caption(s.labelElement(0)).toInt() * 60 +
                               v.caption(s.labelElement(1)).toInt());
    case Kind::Relay: {
        QStringList events;
        for (int e = 0; e < kRelayEvents; ++e)
            if (v.isVisible(s.eventBox(e)) && v.isChecked(s.eventBox(e)))
                events << QString::number(e);
        return (v.isChecked(s.optionBox(1)) ? QStringLiteral("and:") : QStringLiteral("or:")) +
               events.join(u',');
    }
    default:
        return v.caption(s.labelElement());
    }
}

// Limits and unit, as the page's fields tell them.
QString limits(const Form& v, const SettingDescriptor& s, Program& program) {
    const QString range =
        SettingsPages::rangeText(s, program.mainView().Limits(), program.preferences().locale());
    switch (s.kind) {
    case Kind::Switch:
        return QStringLiteral("on|off");
    case Kind::MinutesSeconds:
        return range + QStringLiteral(" (in seconds)");
    case Kind::Relay: {
        QStringList events;
        for (int e = 0; e < kRelayEvents; ++e)
            if (v.isVisible(s.eventBox(e))) events << QString::number(e);
        return QStringLiteral("or|and:EVENTS of ") + events.join(u',');
    }
    default:
        return range;
    }
}

// Where the device lacks a feature, the main view hides its settings.
bool available(const Form& v, const SettingDescriptor& s) {
    return v.isVisible(s.legendElement()) && v.isVisible(s.group) &&
           (s.part.isEmpty() || v.isVisible(s.part));
}

int list(Program& program) {
    const Form& v = program.forms().frmDisplay();
    for (const SettingPage page : kPages)
        for (const SettingDescriptor* s : settingsOf(page))
            if (available(v, *s))
                printLine(stdout,
                          s->name + u'\t' + limits(v, *s, program) + u'\t' + present(v, *s));
    return kDone;
}

// What the fields and boxes of an open page hold: the device's values.
SettingInputs shownInputs(const Form& v, SettingPage page) {
    SettingInputs inputs;
    for (const SettingDescriptor* s : settingsOf(page)) {
        SettingInput& input = inputs[*s];
        if (s->fieldCount() > 0) input.number = fieldcheck::typed(v.caption(s->labelElement(0)));
        if (s->fieldCount() > 1) input.seconds = fieldcheck::typed(v.caption(s->labelElement(1)));
        if (s->kind == Kind::Switch) input.on = v.isChecked(s->shownBox());
        if (s->kind != Kind::Relay) continue;
        for (int e = 0; e < kRelayEvents; ++e)
            if (v.isVisible(s->eventBox(e)) && v.isChecked(s->eventBox(e)))
                input.mask |= static_cast<std::uint16_t>(1u << e);
        for (int i = 0; i < 2; ++i)
            if (v.isChecked(s->optionBox(i)))
                input.mask |= static_cast<std::uint16_t>(1u << (kRelayEvents + i));
    }
    return inputs;
}

// Puts one value where the engineer would type or tick it; false when it cannot be put there
// at all (the page's own check judges everything else).
bool fill(const Form& v, const SettingDescriptor& s, SettingInput& input, const QString& value,
          QString& why) {
    switch (s.kind) {
    case Kind::Number:
        input.number = fieldcheck::typed(value);
        return true;
    case Kind::MinutesSeconds: {
        bool whole = false;
        const int seconds = value.toInt(&whole);
        // Minutes and seconds, as the page splits them; anything else for the check to refuse.
        const bool split = whole && seconds >= 0;
        input.number = fieldcheck::typed(split ? QString::number(seconds / 60) : value);
        input.seconds = fieldcheck::typed(split ? QString::number(seconds % 60) : value);
        return true;
    }
    case Kind::Switch: {
        const auto on = switchValue(value);
        if (!on) {
            why = QStringLiteral("takes on or off");
            return false;
        }
        input.on = *on;
        return true;
    }
    case Kind::Relay: {
        const auto choice = relayChoice(value);
        if (!choice) {
            why = QStringLiteral("takes or:EVENTS or and:EVENTS, events 0 to 13 by commas");
            return false;
        }
        for (const int e : choice->events) {
            if (!v.isVisible(s.eventBox(e))) {
                why = QStringLiteral("event %1 is not on this device").arg(e);
                return false;
            }
        }
        input.mask =
            static_cast<std::uint16_t>(1u << (kRelayEvents + (choice->conjunction ? 1 : 0)));
        for (const int e : choice->events)
            input.mask |= static_cast<std::uint16_t>(1u << e);
        return true;
    }
    }
    return false;
}

// One page's write: what its fields hold after the check, and its block.
struct PageWrite {
    SettingPage page;
    SettingInputs inputs;
    Bytes block;
    bool confirmed = false;
};

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
    std::vector<std::pair<const SettingDescriptor*, QString>> wanted;
    QStringList bad;
    for (const QString& assignment : parsed->positional) {
        const qsizetype equals = assignment.indexOf(u'=');
        const SettingDescriptor* s = equals > 0 ? findSetting(assignment.left(equals)) : nullptr;
        if (!s) {
            bad << assignment + QStringLiteral(": no such setting (see set --list)");
            continue;
        }
        for (const auto& [other, value] : wanted)
            if (other == s) bad << assignment + QStringLiteral(": named twice");
        const QString value = assignment.mid(equals + 1);
        if ((s->kind == Kind::Relay && !relayChoice(value)) ||
            (s->kind == Kind::Switch && !switchValue(value)))
            bad << assignment +
                       (s->kind == Kind::Relay
                            ? QStringLiteral(": takes or:EVENTS or and:EVENTS, events 0 to 13")
                            : QStringLiteral(": takes on or off"));
        if (s->page == SettingPage::AirFlow && !airFlowInit)
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

    const Form& v = program.forms().frmDisplay();
    SettingsWriter& writer = program.mainView().Writer();
    PollEngine& engine = program.engine();
    const QLocale& locale = program.preferences().locale();

    // Every page the command touches, in the pages' order: its fields as the engineer finds
    // them, the named values put in, and the whole page checked as its own button checks it.
    std::vector<PageWrite> writes;
    QList<SettingPage> touched;
    for (const SettingPage page : kPages) {
        bool used = page == SettingPage::AirFlow && airFlowInit;
        for (const auto& [s, value] : wanted)
            used = used || s->page == page;
        if (!used) continue;
        touched << page;
        PageWrite write{page, shownInputs(v, page), {}};
        for (const auto& [s, value] : wanted) {
            if (s->page != page) continue;
            QString why = QStringLiteral("is not on this device");
            if (!available(v, *s) || !fill(v, *s, write.inputs[*s], value, why))
                bad << s->name + u'=' + value + QStringLiteral(": ") + why;
        }
        if (!bad.isEmpty()) continue;
        const std::optional<Bytes> block = writer.check(page, write.inputs);
        for (const SettingDescriptor* s : settingsOf(page))
            for (TypedNumber* n : {&write.inputs[*s].number, &write.inputs[*s].seconds})
                n->text = fieldcheck::shownText(*n, locale);
        if (block) {
            write.block = *block;
            writes.push_back(std::move(write));
            continue;
        }
        // A field not named keeps the device's value, which the page may refuse as well.
        for (const SettingDescriptor* s : settingsOf(page)) {
            if (!write.inputs[*s].refused()) continue;
            const auto named = std::find_if(wanted.begin(), wanted.end(),
                                            [s](const auto& w) { return w.first == s; });
            bad << (named != wanted.end() ? s->name + u'=' + named->second
                                          : s->name + QStringLiteral(" (the device's value)")) +
                       QStringLiteral(": refused (") + limits(v, *s, program) + u')';
        }
        if (bad.isEmpty()) bad << titleOf(page) + QStringLiteral(": refused by the page");
    }
    if (!bad.isEmpty()) {
        for (const QString& line : bad)
            complain(line);
        complain(QStringLiteral("nothing was sent"));
        return kBadInput;
    }

    // The poll cycle sends one write at a time: each page's after the one before.
    const auto differences = [&](const PageWrite& write) {
        return SettingsPages::differences(v, program.values(), write.page, write.inputs);
    };
    // Each page compares every 100 ms from the tick that sent its write, as the page does, and
    // is confirmed the first time the device reports what it holds.
    std::vector<std::unique_ptr<FormTimer>> comparisons;
    for (PageWrite& write : writes) {
        comparisons.push_back(std::make_unique<FormTimer>(kCompareMs));
        FormTimer* timer = comparisons.back().get();
        QObject::connect(timer, &FormTimer::timeout, timer, [&write, &differences, timer] {
            if (!differences(write).isEmpty()) return;
            write.confirmed = true;
            timer->disable();
        });
    }
    std::vector<int> sent;
    QObject::connect(&engine, &PollEngine::WriteSent, &session, [&](int command) {
        sent.push_back(command);
        for (std::size_t i = 0; i < writes.size(); ++i)
            if (commandOf(writes[i].page) == command && !writes[i].confirmed)
                comparisons[i]->enable();
        if (sent.size() < writes.size()) {
            const Bytes next = writes[sent.size()].block;
            // After this tick has finished choosing its read-back.
            QTimer::singleShot(0, &engine, [&writer, next] { writer.send(next); });
        }
    });
    writer.send(writes.front().block);
    const auto isSent = [&sent](SettingPage page) {
        return std::find(sent.begin(), sent.end(), commandOf(page)) != sent.end();
    };
    const auto allTaken = [&] {
        return sent.size() >= writes.size() &&
               std::all_of(writes.begin(), writes.end(),
                           [](const PageWrite& write) { return write.confirmed; });
    };
    waitFor([&] { return allTaken() || session.lineLost(); }, *seconds);

    QStringList sentTitles;
    QStringList unsentTitles;
    for (const SettingPage page : touched)
        (isSent(page) ? sentTitles : unsentTitles) << titleOf(page);
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
    for (const PageWrite& write : writes) {
        const QStringList differing = differences(write);
        for (const auto& [s, value] : wanted)
            if (s->page == write.page && differing.contains(v.caption(s->legendElement())))
                complain(s->name + u'=' + value + QStringLiteral(": the device still has ") +
                         present(v, *s));
        if (!differing.isEmpty() && !write.confirmed)
            complain(titleOf(write.page) + QStringLiteral(": still differ: ") +
                     differing.join(QStringLiteral(", ")));
    }
    complain(QStringLiteral("not confirmed within %1 s; ").arg(*seconds) + written());
    return kNotTaken;
}

} // namespace cli
