#pragma once

#include "common/bytes.h"

#include <cstdint>
#include <initializer_list>

#include <QDateTime>
#include <QRandomGenerator>

#include <QString>
#include <QStringList>

// Helpers shared by the tests.
namespace testsupport {

inline Bytes bytes(std::initializer_list<int> values) {
    Bytes out;
    out.reserve(values.size());
    for (int v : values)
        out.push_back(static_cast<std::uint8_t>(v));
    return out;
}

// `data` framed as the tool sends it: header, CRC and sum.
Bytes frameOf(const Bytes& data);

// `parts` one after the other.
Bytes concat(std::initializer_list<Bytes> parts);

// The time the test telegrams carry in their stamp. Inline, so that it is made before the
// telegrams that tests build at namespace scope.
inline const QDateTime kRecorded{QDate(2007, 7, 4), QTime(13, 5, 59)};

// An own-kind frame as the device sends it: `command` and `serial`, filled with `fill` to
// the size the store keeps once stamped (19 bytes for a command outside 1 to 5), plus
// `extraBytes`.
Bytes deviceFrame(int command, std::uint32_t serial, std::uint8_t fill = 0x33, int extraBytes = 0);

// The serial number of the device the tests talk to most (00 12 D6 87).
inline constexpr std::uint32_t kSerial = 1234567;

// The same frame stamped with `when`, as the link hands it on; by default of device 1234567.
Bytes ownTelegram(int command, std::uint32_t serial = kSerial, std::uint8_t fill = 0x33,
                  const QDateTime& when = kRecorded, int extraBytes = 0);

// Path of a file in the source tree, e.g. "samples/full.ko3".
QString sourcePath(const QString& relative);

// Path of a built program in build/bin.
QString programPath(const QString& name);

// A finished run of one of the built programs: its exit code (-1 when it crashed or hung),
// its standard output by lines, its standard error. A run that does not end within 30 s is
// killed and fails the test that started it, naming the command.
struct ProgramRun {
    int exitCode = -1;
    QStringList out;
    QString err;
};
ProgramRun runProgram(const QString& name, const QStringList& arguments,
                      const QString& workingDirectory = {});

// While it lives, a test that runs as root (as CI does) runs as the user nobody, so that file
// permissions count as they do for an engineer; for any other user it changes nothing. What
// nobody is to reach must be open to others: see openToOthers.
class AsNobody {
public:
    AsNobody();
    ~AsNobody();
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

private:
    bool m_dropped = false;
};

// Lets every user go through and write into `folder`, as a shared scratch folder.
void openToOthers(const QString& folder);

// A generator seeded from MQ27_TEST_SEED, or a fixed seed; the seed is logged so that a
// failing run, a sanitizer's report included, can be repeated.
QRandomGenerator seededGenerator();

} // namespace testsupport
