#include "apps/cli/cli.h"

#include "shell/program.h"
#include "shell/terminationsignals.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

namespace cli {

namespace {

// The stop signal caught so far; written on the event loop, never in a signal handler.
int g_signal = 0;

// How often a wait looks for its condition, a stop signal and its end.
constexpr int kLookMs = 20;

} // namespace

void printLine(FILE* stream, const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    std::fwrite(utf8.constData(), 1, static_cast<std::size_t>(utf8.size()), stream);
    std::fputc('\n', stream);
    std::fflush(stream);
}

void complain(const QString& text) {
    printLine(stderr, QStringLiteral("mq27diag-cli: ") + text);
}

std::optional<Args> parse(const QStringList& args, const QStringList& valued,
                          const QStringList& flags) {
    Args parsed;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        if (valued.contains(arg)) {
            if (i + 1 >= args.size()) {
                complain(arg + QStringLiteral(" needs a value"));
                return std::nullopt;
            }
            parsed.values.insert(arg, args[++i]);
        } else if (flags.contains(arg)) {
            parsed.flags.insert(arg);
        } else if (arg.startsWith(QStringLiteral("--"))) {
            complain(arg + QStringLiteral(": unknown option"));
            return std::nullopt;
        } else {
            parsed.positional << arg;
        }
    }
    return parsed;
}

std::optional<LiveSession::Options> displayOptions(const Args& args) {
    static const QStringList kLanguages = {QStringLiteral("de"), QStringLiteral("en"),
                                           QStringLiteral("fr"), QStringLiteral("nl")};
    const QString language = args.value(QStringLiteral("--language"), QStringLiteral("en"));
    const QString smoke = args.value(QStringLiteral("--smoke-unit"), QStringLiteral("m"));
    const QString temperature =
        args.value(QStringLiteral("--temperature-unit"), QStringLiteral("C"));
    if (!kLanguages.contains(language) || (smoke != u"m" && smoke != u"ft") ||
        (temperature != u"C" && temperature != u"F")) {
        complain(QStringLiteral("--language takes de, en, fr or nl, --smoke-unit m or ft, "
                                "--temperature-unit C or F"));
        return std::nullopt;
    }
    LiveSession::Options options;
    options.language = languageFromNumber(static_cast<int>(kLanguages.indexOf(language)) + 1);
    options.smokeUnit = smoke == u"ft" ? SmokeUnit::PercentPerFoot : SmokeUnit::PercentPerMetre;
    options.temperatureUnit =
        temperature == u"F" ? TemperatureUnit::Fahrenheit : TemperatureUnit::Celsius;
    return options;
}

std::optional<int> timeoutSeconds(const Args& args, int fallback) {
    if (!args.values.contains(QStringLiteral("--timeout"))) return fallback;
    bool ok = false;
    const int seconds = args.value(QStringLiteral("--timeout")).toInt(&ok);
    if (!ok || seconds < 1 || seconds > 86400) {
        complain(QStringLiteral("--timeout takes whole seconds from 1 to 86400"));
        return std::nullopt;
    }
    return seconds;
}

void catchStopSignals() {
    static TerminationSignals* stops = nullptr;
    if (stops) return;
    stops = new TerminationSignals(QCoreApplication::instance());
    QObject::connect(stops, &TerminationSignals::terminationRequested,
                     [](int signal) { g_signal = signal; });
}

int stopSignal() {
    return g_signal;
}

bool waitFor(const std::function<bool()>& done, int seconds) {
    QElapsedTimer clock;
    clock.start();
    QEventLoop loop;
    QTimer look;
    look.setInterval(kLookMs);
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (done() || g_signal != 0 || (seconds > 0 && clock.elapsed() >= seconds * 1000LL))
            loop.quit();
    });
    if (!done() && g_signal == 0) {
        look.start();
        loop.exec();
    }
    return done();
}

std::optional<int> connect(LiveSession& session, const QString& port, int seconds) {
    if (const auto failure = session.start(port)) {
        complain(*failure);
        return kLineFault;
    }
    const bool readOut = waitFor(
        [&session] {
            return session.readOutDone() || !session.otherFamily().isEmpty() || session.lineLost();
        },
        seconds);
    if (readOut && session.readOutDone()) return std::nullopt;
    if (!session.otherFamily().isEmpty()) {
        complain(QStringLiteral("a device of another family answered: ") + session.otherFamily());
        return kOtherFamily;
    }
    if (session.lineLost()) {
        complain(port + QStringLiteral(": the port went away"));
        return kLineFault;
    }
    if (stopSignal() != 0) return kInterrupted;
    complain(QStringLiteral("no device answered within %1 s on ").arg(seconds) + port);
    return kNoDevice;
}

} // namespace cli
