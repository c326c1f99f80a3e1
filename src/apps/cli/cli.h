#pragma once

#include "shell/livesession.h"

#include <cstdio>
#include <optional>

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

// What the headless commands share: output, options, exit statuses, the stop signals and
// the start of a live session.
namespace cli {

// Exit statuses of every command.
enum Exit {
    kDone = 0,
    kLineFault = 1,   // the port cannot be opened, or went away; an unreadable file
    kBadInput = 2,    // bad usage or a refused value: nothing was sent
    kNotTaken = 3,    // the device did not take every value in time
    kNoDevice = 4,    // no device answered in time
    kOtherFamily = 5, // a device of another family answered
    kInterrupted = 130,
};

void printLine(FILE* stream, const QString& text);
// "mq27diag-cli: " and the text, on standard error.
void complain(const QString& text);

// The options of one command line: `--name value` for the names in `valued`, `--name` for
// those in `flags`, everything else positional in order.
struct Args {
    QHash<QString, QString> values;
    QSet<QString> flags;
    QStringList positional;

    bool has(const QString& name) const { return values.contains(name) || flags.contains(name); }
    QString value(const QString& name, const QString& fallback = {}) const {
        return values.value(name, fallback);
    }
};
// The parsed line, or nothing after a complaint about it.
std::optional<Args> parse(const QStringList& args, const QStringList& valued,
                          const QStringList& flags);

// The options of the language and the units.
inline const QStringList kDisplayOptions = {QStringLiteral("--language"),
                                            QStringLiteral("--smoke-unit"),
                                            QStringLiteral("--temperature-unit")};
std::optional<LiveSession::Options> displayOptions(const Args& args);
// A whole number of seconds above 0, from `--timeout`; nothing after a complaint.
std::optional<int> timeoutSeconds(const Args& args, int fallback);

// SIGINT, SIGTERM and SIGHUP from now on end the event loop's wait instead of the process;
// the signal caught so far, 0 for none.
void catchStopSignals();
int stopSignal();

// Runs the event loop until `done` holds, a stop signal arrives or `seconds` have passed
// (0: no limit). True when `done` holds.
bool waitFor(const std::function<bool()>& done, int seconds);

// Opens the port, searches and waits for the first complete read-out; the exit status when
// that fails (after saying why), nothing when the device is read out.
std::optional<int> connect(LiveSession& session, const QString& port, int seconds);

// The commands; each takes the arguments after its name and answers the exit status.
int dump(const QStringList& args);
int view(const QStringList& args);
int readout(const QStringList& args);
int watch(const QStringList& args);
int set(const QStringList& args);

} // namespace cli
