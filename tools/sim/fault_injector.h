#pragma once

#include "common/bytes.h"

#include <cstdint>
#include <vector>

#include <QRandomGenerator>

namespace mq27sim {

// Faults of the line, for tests of how the tool copes.
struct FaultOptions {
    int badCrcEvery = 0;     // every Nth answer with a wrong inner CRC (and a right sum)
    int noiseBytes = 0;      // random bytes in front of every answer
    int splitGapMs = 0;      // answers in two bursts this far apart
    double silenceStart = 0; // seconds after the start
    double silenceSeconds = 0;
    bool silentForever = false; // from silenceStart on
    bool pace = false;          // 19200 baud: about 0.52 ms a byte
    double closeAfterSeconds = 0;
    int loseWrites = 0; // the first N write telegrams never reach the devices
};

// One piece of an answer on the line, written `delayMs` after the answer is due.
struct Burst {
    int delayMs = 0;
    Bytes bytes;
    bool isNoise = false;
};

// Turns each answer frame into what actually goes out on the line.
class FaultInjector {
public:
    explicit FaultInjector(FaultOptions options);

    const FaultOptions& options() const { return m_options; }
    bool silentAt(double seconds) const;
    // The bursts of the next answer; `corrupted` tells whether its CRC was spoilt.
    std::vector<Burst> shape(const Bytes& frame, bool& corrupted);

private:
    static bool spoilCrc(Bytes& frame);
    Bytes noise();

    FaultOptions m_options;
    std::int64_t m_answers = 0;
    QRandomGenerator m_random{20070315};
};

} // namespace mq27sim
