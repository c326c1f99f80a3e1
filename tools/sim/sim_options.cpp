#include "sim/sim_options.h"

#include <cmath>
#include <optional>

#include <QCommandLineParser>

namespace mq27sim {
namespace {

const char* const kDescription =
    "The virtual MQ27D on a pseudo-terminal. Prints the port path on the first line of its\n"
    "output; the tool opens that path as its serial port. Without --profile the device is\n"
    "made of defaults (serial number 1001).\n"
    "\n"
    "Fault injection: --bad-crc-every, --noise, --split-gap, --silence, --pace, --close-after,\n"
    "--lose-writes.\n"
    "Profiles and the effect of every write telegram: docs/virtual-device.md.";

// Seconds of a time given on the command line: long enough for a timer of whole
// milliseconds, short enough for its int.
constexpr double kMinSeconds = 0.001;
constexpr double kMaxSeconds = 1e6;

QString numberText(double value) {
    return QString::number(value, 'g', 12);
}

// A finite number within `min` and `max`; none for anything else, such as "nan", "inf" or
// "1e300", which no cast to int survives.
std::optional<double> within(const QString& text, double min, double max) {
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok || !std::isfinite(value) || value < min || value > max) return std::nullopt;
    return value;
}

struct Reader {
    const QCommandLineParser& parser;
    QString& error;

    // A number within `min` and `max`, or `fallback` when the option isn't given or is bad.
    double number(const QString& name, double min, double max, double fallback) {
        if (!parser.isSet(name)) return fallback;
        const auto value = within(parser.value(name), min, max);
        if (!value) fail(expected(name, "a number", min, max));
        return value.value_or(fallback);
    }

    int whole(const QString& name, int min, int max, int fallback) {
        if (!parser.isSet(name)) return fallback;
        const auto value = within(parser.value(name), min, max);
        if (!value || std::floor(*value) != *value) {
            fail(expected(name, "a whole number", min, max));
            return fallback;
        }
        return static_cast<int>(*value);
    }

    // "A:B" into its two halves; B may be missing.
    QStringList pair(const QString& name) const { return parser.value(name).split(':'); }

    static QString expected(const QString& name, const char* what, double min, double max) {
        return QStringLiteral("--%1 expects %2 from %3 to %4")
            .arg(name, QLatin1String(what), numberText(min), numberText(max));
    }

    void fail(const QString& message) {
        if (error.isEmpty()) error = message;
    }
};

void addOptions(QCommandLineParser& p) {
    p.setApplicationDescription(QString::fromLatin1(kDescription));
    p.addHelpOption();
    p.addVersionOption();
    p.addOptions({
        {"profile",
         "A device profile (JSON), or the name of one that came with the program (full, "
         "minimal, tenmodules, varlix, minlix); repeat for several devices on the line.",
         "file"},
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
        {"lose-writes", "The first N write telegrams are lost on the line.", "n"},
        {"log", "Log every frame in and out as JSON lines to this file.", "file"},
    });
}

void readUnsolicited(Reader& r, SimOptions& o) {
    if (!r.parser.isSet("unsolicited")) return;
    const QStringList parts = r.pair("unsolicited");
    const auto seconds =
        within(parts.value(0), Unsolicited::kMinEverySeconds, Unsolicited::kMaxEverySeconds);
    const auto command = parts.size() == 2 ? within(parts[1], 1, 5) : std::optional<double>(0);
    if (!seconds || !command || parts.size() > 2 || std::floor(*command) != *command)
        return r.fail(QStringLiteral("--unsolicited expects seconds from %1 to %2 and optionally "
                                     ":command (1 to 5)")
                          .arg(numberText(Unsolicited::kMinEverySeconds),
                               numberText(Unsolicited::kMaxEverySeconds)));
    o.unsolicitedSeconds = *seconds;
    o.unsolicitedCommand = static_cast<int>(*command);
}

void readSilence(Reader& r, FaultOptions& f) {
    if (!r.parser.isSet("silence")) return;
    const QStringList parts = r.pair("silence");
    const auto start = within(parts.value(0), 0, kMaxSeconds);
    const auto duration =
        parts.size() == 2 ? within(parts[1], kMinSeconds, kMaxSeconds) : std::optional<double>(0);
    if (!start || !duration || parts.size() > 2)
        return r.fail(QStringLiteral("--silence expects start seconds (0 to %1) and optionally "
                                     ":duration seconds (%2 to %1)")
                          .arg(numberText(kMaxSeconds), numberText(kMinSeconds)));
    f.silenceStart = *start;
    f.silenceSeconds = *duration;
    f.silentForever = parts.size() == 1;
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
    if (parser.isSet("version")) return CommandLine::Version;
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
    f.closeAfterSeconds = r.number("close-after", kMinSeconds, kMaxSeconds, f.closeAfterSeconds);
    f.loseWrites = r.whole("lose-writes", 1, 1000000, f.loseWrites);
    message = error;
    return error.isEmpty() ? CommandLine::Run : CommandLine::Error;
}

} // namespace mq27sim
