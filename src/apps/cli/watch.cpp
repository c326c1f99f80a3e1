// watch --port N|PATH [--json] [--interval N] [display options] [--timeout S]: one line per
// complete poll cycle, read from the main view as the window shows it, until SIGINT/SIGTERM.

#include "apps/cli/cli.h"
#include "common/colors.h"
#include "display/mainview_elements.h"
#include "engine/telegramdecoder.h"
#include "shell/livestate.h"
#include "shell/program.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>

namespace cli {

namespace {

namespace el = frmDisplay;

// A caption such as "0.125 %/m": its number (null for "?") and its unit.
struct Reading {
    QJsonValue number;
    QString unit;
    QString text;
};

Reading reading(const Form& view, const QString& label) {
    Reading r;
    r.text = view.caption(label);
    const qsizetype blank = r.text.indexOf(u' ');
    bool ok = false;
    const double value = r.text.left(blank).toDouble(&ok);
    r.number = ok ? QJsonValue(value) : QJsonValue();
    r.unit = blank < 0 ? QString() : r.text.mid(blank + 1);
    return r;
}

struct Cycle {
    QString time, serial;
    QList<Reading> smoke;
    Reading airFlow, temperature;
    QStringList alarms, faults;
};

Cycle readCycle(Program& program) {
    const Form& v = program.forms().frmDisplay();
    Cycle c;
    c.time = program.session().telegramTime().toString(Qt::ISODate);
    c.serial = v.caption(el::lblSerialNo[0]);
    for (int d = 0; d < 2; ++d) {
        if (!v.isVisible(el::fraSmokeLevel[d])) continue;
        c.smoke << reading(v, el::lblSmokeLevel[d]);
        // The numbered legends name the detector; the LED state is 0 while dark.
        if (v.value(el::picFireAlarm[d]) != 0) c.alarms << v.caption(el::lblFireAlarmLegend[d + 2]);
        if (v.value(el::picActionAlarm[d]) != 0)
            c.alarms << v.caption(el::lblActionAlarmLegend[d + 2]);
    }
    c.airFlow = reading(v, el::lblAirFlow);
    c.temperature = reading(v, el::lblTemperature);
    for (int entry = el::picErr.first(); entry <= el::picErr.last(); ++entry)
        if (v.isVisible(el::picErr[entry]) && v.backColor(el::picErr[entry]) == colors::kYellow)
            c.faults << v.caption(el::lblErr[entry]);
    return c;
}

QString json(const Cycle& c) {
    QJsonArray smoke;
    for (const Reading& r : c.smoke)
        smoke.append(r.number);
    const QJsonObject line{
        {QStringLiteral("time"), c.time},
        {QStringLiteral("serial"), c.serial},
        {QStringLiteral("smoke"), smoke},
        {QStringLiteral("smokeUnit"), c.smoke.isEmpty() ? QString() : c.smoke.first().unit},
        {QStringLiteral("airFlow"), c.airFlow.number},
        {QStringLiteral("airFlowUnit"), QStringLiteral("%")},
        {QStringLiteral("temperature"), c.temperature.number},
        {QStringLiteral("temperatureUnit"), c.temperature.unit},
        {QStringLiteral("alarms"), QJsonArray::fromStringList(c.alarms)},
        {QStringLiteral("faults"), QJsonArray::fromStringList(c.faults)},
    };
    return QString::fromUtf8(QJsonDocument(line).toJson(QJsonDocument::Compact));
}

QString text(const Cycle& c) {
    QStringList smoke;
    for (const Reading& r : c.smoke)
        smoke << r.text;
    const auto list = [](const QStringList& items) {
        return items.isEmpty() ? QStringLiteral("-") : items.join(QStringLiteral(", "));
    };
    return QStringList{c.time,         c.serial,           smoke.join(QStringLiteral(" | ")),
                       c.airFlow.text, c.temperature.text, list(c.alarms),
                       list(c.faults)}
        .join(u'\t');
}

} // namespace

int watch(const QStringList& args) {
    const auto parsed =
        parse(args,
              kDisplayOptions + QStringList{QStringLiteral("--port"), QStringLiteral("--interval"),
                                            QStringLiteral("--timeout")},
              {QStringLiteral("--json")});
    if (!parsed) return kBadInput;
    const auto options = displayOptions(*parsed);
    const auto seconds = timeoutSeconds(*parsed, 10);
    bool intervalOk = false;
    const int interval =
        parsed->value(QStringLiteral("--interval"), QStringLiteral("1")).toInt(&intervalOk);
    if (!options || !seconds) return kBadInput;
    if (!intervalOk || interval < 1 || interval > 100000) {
        complain(QStringLiteral("--interval takes a whole number of cycles from 1 to 100000"));
        return kBadInput;
    }
    if (!parsed->has(QStringLiteral("--port")) || !parsed->positional.isEmpty()) {
        complain(QStringLiteral("watch takes --port N|PATH"));
        return kBadInput;
    }
    const bool asJson = parsed->has(QStringLiteral("--json"));

    catchStopSignals();
    LiveSession session(*options);
    if (const auto failed = connect(session, parsed->value(QStringLiteral("--port")), *seconds))
        return *failed == kInterrupted ? kDone : *failed;
    long cycles = 0;
    const auto print = [&] {
        if (cycles++ % interval != 0) return;
        const Cycle c = readCycle(session.program());
        printLine(stdout, asJson ? json(c) : text(c));
    };
    print();
    QObject::connect(&session, &LiveSession::cycleComplete, &session, print);
    // Once per silence, as the main view's banner says it; the next cycle line ends it.
    QObject::connect(
        &session.program().live(), &LiveState::silenceBegan, &session,
        [&](const QString& serialNo, const QDateTime& since) {
            const Form& view = session.program().forms().frmDisplay();
            const QJsonObject line{{QStringLiteral("time"), since.toString(Qt::ISODate)},
                                   {QStringLiteral("serial"), serialNo},
                                   {QStringLiteral("stale"), true}};
            printLine(stdout,
                      asJson ? QString::fromUtf8(QJsonDocument(line).toJson(QJsonDocument::Compact))
                             : view.caption(el::lblStateBanner[0]));
        });
    waitFor([&session] { return session.lineLost() || !session.otherFamily().isEmpty(); }, 0);
    // Ctrl+C in a terminal reaches the virtual device beside us as well; when it closes its
    // end first, the stop that is already on its way is the reason, not the line.
    QCoreApplication::processEvents();
    if (stopSignal() != 0) return kDone;
    if (session.lineLost()) {
        complain(parsed->value(QStringLiteral("--port")) + QStringLiteral(": the port went away"));
        return kLineFault;
    }
    if (!session.otherFamily().isEmpty()) {
        complain(QStringLiteral("a device of another family answered: ") + session.otherFamily());
        return kOtherFamily;
    }
    return kDone;
}

} // namespace cli
