#pragma once

// The record command of mq27diag-cli. It makes its own application object, as a PDF needs
// a graphical one.
namespace cli {

// Exit codes of the record command.
inline constexpr int kRecordDone = 0;
inline constexpr int kRecordUnreadable = 1; // the file is no readable read-out of this device
inline constexpr int kRecordUsage = 2;      // the arguments are not those of the command
inline constexpr int kRecordNotWritten = 3; // the PDF or the standard output cannot be written

// `argv[1]` is "record".
int record(int argc, char* argv[]);

} // namespace cli

// One line of the usage text per form of the command.
#define MQ27_CLI_RECORD_USAGE                                                                      \
    "       mq27diag-cli record FILE.ko3 [--language de|en|fr|nl] [--comment TEXT]... "            \
    "[--pdf OUT.pdf]"
