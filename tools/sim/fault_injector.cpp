#include "sim/fault_injector.h"

#include "link/checksum.h"
#include "link/telegram.h"

namespace mq27sim {

FaultInjector::FaultInjector(FaultOptions options)
    : m_options(options) {}

bool FaultInjector::silentAt(double seconds) const {
    if (seconds < m_options.silenceStart) return false;
    return m_options.silentForever || seconds < m_options.silenceStart + m_options.silenceSeconds;
}

std::vector<Burst> FaultInjector::shape(const Bytes& frame, bool& corrupted) {
    Bytes answer = frame;
    ++m_answers;
    corrupted =
        m_options.badCrcEvery > 0 && m_answers % m_options.badCrcEvery == 0 && spoilCrc(answer);
    std::vector<Burst> bursts;
    if (m_options.noiseBytes > 0) bursts.push_back({0, noise(), true});
    if (m_options.splitGapMs > 0 && answer.size() > 1) {
        const auto half = static_cast<std::ptrdiff_t>(answer.size() / 2);
        bursts.push_back({0, Bytes(answer.begin(), answer.begin() + half), false});
        bursts.push_back({m_options.splitGapMs, Bytes(answer.begin() + half, answer.end()), false});
    } else {
        bursts.push_back({0, std::move(answer), false});
    }
    return bursts;
}

// Flips the low byte of the inner CRC and mends the sum, so that the frame is found on
// the line and only the CRC check throws it out.
bool FaultInjector::spoilCrc(Bytes& frame) {
    const std::size_t header = static_cast<std::size_t>(telegram::HeaderLength(frame));
    if (frame.size() < header + 4) return false;
    Bytes spoilt = frame;
    spoilt[spoilt.size() - 3] ^= 0xFF;
    if (!checksum::AddSumOfBytes(spoilt)) return false;
    frame = std::move(spoilt);
    return true;
}

Bytes FaultInjector::noise() {
    Bytes bytes(static_cast<std::size_t>(m_options.noiseBytes));
    for (std::uint8_t& b : bytes)
        b = static_cast<std::uint8_t>(m_random.bounded(256));
    return bytes;
}

} // namespace mq27sim
