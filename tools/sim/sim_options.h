#pragma once

#include "sim/simulator.h"

#include <QString>
#include <QStringList>

namespace mq27sim {

enum class CommandLine { Run, Help, Version, Error };

// Reads the program's arguments (the first is the program) into `options`. On Help,
// `message` is the help text; on Error, what is wrong.
CommandLine parseCommandLine(const QStringList& arguments, SimOptions& options, QString& message);

} // namespace mq27sim
