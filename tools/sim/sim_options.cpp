#include "sim/sim_options.h"

#include <QCommandLineParser>

namespace mq27sim {
namespace {

const char* const kDescription =
    "The virtual MQ27D on a pseudo-terminal. Prints the port path on the first line of its\n"
    "output; the tool opens that path as its serial port. Without --profile the device is\n"
    "made of defaults (serial number 1001).\n"
    "\n"
    "Fault injection: --bad-crc-every, --noise, --split-gap, --silence, --pace, --close-after.\n"
    "Profiles and the effect of every write telegram: docs/virtual-device.md.";

struct Reader {
    const QCommandLineParser& parser;
    QString& error;

    // A number within `min` and `max`, or `fallback` when the option isn't given.
    double number(const QString& name, double min, double max, double fallback) {
        if (!parser.isSet(name)) return fallback;
        bool ok = false;
        const double value = parser.value(name).toDouble(&ok);
        if (!ok || value < min || value > max)
            fail(QStringLiteral("--%1 expects a number from %2 to %3").arg(name).arg(min).arg(max));
        return ok ? value : fallback;
    }

    int whole(const QString& name, int min, int max, int fallback) {
        const double value = number(name, min, max, fallback);
        if (value != static_cast<int>(value))
            fail(QStringLiteral("--%1 expects a whole number").arg(name));
        return static_cast<int>(value);
    }

    // "A:B" into its two halves; B may be missing.
    QStringList pair(const QString& name) const { return parser.value(name).split(':'); }

    void fail(const QString& message) {
        if (error.isEmpty()) error = message;
    }
};

void addOptions(QCommandLineParser& p) {
    p.setApplicationDescription(QString::fromLatin1(kDescription));
    p.addHelpOption();
    p.addOptions({
        {"profile", "A device profile (JSON); repeat for several devices on the line.", "file"},
        {"link", "Make a symbolic link to the port at this path (removed on exit).", "path"},
        {"delay", "Answer delay in ms (default 30).", "ms"},
        {"stagger", "Further delay of each next device on the line, in ms (default 15).", "ms"},
        {"speed",
         "Run the device's own times (air-flow init, measurement, blink) this many "
         "times faster (default 1).",
         "factor"},
        {"no-drift", "Keep every value exactly as the profile gives it."},
        {"unsolicited", "Every device sends telegram 2 (or COMMAND) by itself this often.",
         "seconds[:command]"},
        {"bad-crc-every", "Every Nth answer with a wrong inner CRC and a right sum.", "n"},
        {"noise", "This many random bytes in front of every answer.", "bytes"},
        {"split-gap", "Every answer in two bursts this many ms apart.", "ms"},
        {"silence",
         "No answers from START seconds on, for DURATION seconds (for ever without "
         "it).",
         "start[:duration]"},
        {"pace", "Pace the bytes as 19200 baud does, about 0.52 ms a byte."},
        {"close-after", "Close the line after this many seconds, and end.", "seconds"},
        {"log", "Log every frame in and out as JSON lines to this file.", "file"},
    });
}

void readUnsolicited(Reader& r, SimOptions& o) {
    if (!r.parser.isSet("unsolicited")) return;
    const QStringList parts = r.pair("unsolicited");
    bool ok = false;
    o.unsolicitedSeconds = parts.value(0).toDouble(&ok);
    ok = ok && parts.size() <= 2 && o.unsolicitedSeconds > 0 && o.unsolicitedSeconds <= 3600;
    if (ok && parts.size() == 2) {
        o.unsolicitedCommand = parts[1].toInt(&ok);
        ok = ok && o.unsolicitedCommand >= 1 && o.unsolicitedCommand <= 5;
    }
    if (!ok) r.fail("--unsolicited expects seconds (up to 3600) and optionally :command (1 to 5)");
}

void readSilence(Reader& r, FaultOptions& f) {
    if (!r.parser.isSet("silence")) return;
    const QStringList parts = r.pair("silence");
    bool ok = false;
    f.silenceStart = parts.value(0).toDouble(&ok);
    ok = ok && parts.size() <= 2 && f.silenceStart >= 0;
    f.silentForever = parts.size() == 1;
    if (ok && !f.silentForever) {
        f.silenceSeconds = parts[1].toDouble(&ok);
        ok = ok && f.silenceSeconds > 0;
    }
    if (!ok) r.fail("--silence expects start seconds and optionally :duration seconds");
}

} // namespace

CommandLine parseCommandLine(const QStringList& arguments, SimOptions& o, QString& message) {
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(arguments)) {
        message = parser.errorText();
        return CommandLine::Error;
    }
    if (parser.isSet("help")) {
        message = parser.helpText();
        return CommandLine::Help;
    }
    QString error;
    Reader r{parser, error};
    if (!parser.positionalArguments().isEmpty())
        r.fail(QStringLiteral("unexpected argument %1").arg(parser.positionalArguments().first()));
    for (const QString& profile : parser.values("profile"))
        o.profiles.push_back(profile);
    o.linkPath = parser.value("link");
    o.logPath = parser.value("log");
    o.answerDelayMs = r.whole("delay", 0, 10000, o.answerDelayMs);
    o.staggerMs = r.whole("stagger", 0, 1000, o.staggerMs);
    o.speed = r.number("speed", 0.01, 1000, o.speed);
    o.drift = !parser.isSet("no-drift");
    readUnsolicited(r, o);
    FaultOptions& f = o.faults;
    f.badCrcEvery = r.whole("bad-crc-every", 1, 1000000, f.badCrcEvery);
    f.noiseBytes = r.whole("noise", 1, 4096, f.noiseBytes);
    f.splitGapMs = r.whole("split-gap", 1, 60000, f.splitGapMs);
    readSilence(r, f);
    f.pace = parser.isSet("pace");
    f.closeAfterSeconds = r.number("close-after", 0.001, 1e6, f.closeAfterSeconds);
    message = error;
    return error.isEmpty() ? CommandLine::Run : CommandLine::Error;
}

} // namespace mq27sim
