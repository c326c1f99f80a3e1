#include "sim/frame_reader.h"

#include "link/checksum.h"

#include <algorithm>

namespace mq27sim {
namespace {

constexpr std::uint8_t kStx = 2;
constexpr std::uint8_t kExtended = 255;

void emitNoise(std::vector<FrameReader::Item>& items, Bytes& noise) {
    if (noise.empty()) return;
    items.push_back({false, std::move(noise)});
    noise.clear();
}

} // namespace

std::vector<FrameReader::Item> FrameReader::feed(const Bytes& chunk) {
    m_buffer.insert(m_buffer.end(), chunk.begin(), chunk.end());
    return extract(false);
}

std::vector<FrameReader::Item> FrameReader::flush() {
    return extract(true);
}

std::size_t FrameReader::announcedLength(std::size_t at) const {
    const std::size_t left = m_buffer.size() - at;
    if (left < 2) return 0;
    if (m_buffer[at + 1] != kExtended) return std::size_t(m_buffer[at + 1]) + 4;
    if (left < 4) return 0;
    return std::size_t(m_buffer[at + 2]) * 256 + m_buffer[at + 3] + 6;
}

bool FrameReader::hasFrameAt(std::size_t at, std::size_t total) const {
    if (total < 4 || at + total > m_buffer.size()) return false;
    const auto begin = m_buffer.begin() + static_cast<std::ptrdiff_t>(at);
    return checksum::CheckSumOfBytes(Bytes(begin, begin + static_cast<std::ptrdiff_t>(total)));
}

// A complete frame that ends with the buffer, behind a front frame that is still incomplete:
// the tool's next frame after a broken one. Its start, or 0 if there is none.
std::size_t FrameReader::completeFrameBehindFront() const {
    for (std::size_t at = 1; at + 4 <= m_buffer.size(); ++at)
        if (m_buffer[at] == kStx && announcedLength(at) == m_buffer.size() - at &&
            hasFrameAt(at, m_buffer.size() - at))
            return at;
    return 0;
}

void FrameReader::dropFront(std::size_t count, Bytes& noise) {
    const auto end = m_buffer.begin() + static_cast<std::ptrdiff_t>(count);
    noise.insert(noise.end(), m_buffer.begin(), end);
    m_buffer.erase(m_buffer.begin(), end);
}

// With `final`, an incomplete frame at the front counts as noise, and the search goes on
// behind its STX: a frame of the tool may follow a stray STX that announced a long frame.
std::vector<FrameReader::Item> FrameReader::extract(bool final) {
    std::vector<Item> items;
    Bytes noise;
    while (!m_buffer.empty()) {
        const auto stx = std::find(m_buffer.begin(), m_buffer.end(), kStx);
        dropFront(static_cast<std::size_t>(stx - m_buffer.begin()), noise);
        if (m_buffer.empty()) break;
        const std::size_t total = announcedLength(0);
        const bool incomplete = total == 0 || total > m_buffer.size();
        if (total > kMaxFrame || (incomplete && final)) {
            dropFront(1, noise);
            continue;
        }
        if (incomplete) {
            const std::size_t later = completeFrameBehindFront();
            if (later == 0) break;
            dropFront(later, noise);
            continue;
        }
        if (!hasFrameAt(0, total)) {
            dropFront(1, noise);
            continue;
        }
        Bytes frame(m_buffer.begin(), m_buffer.begin() + static_cast<std::ptrdiff_t>(total));
        m_buffer.erase(m_buffer.begin(), m_buffer.begin() + static_cast<std::ptrdiff_t>(total));
        emitNoise(items, noise);
        items.push_back({true, std::move(frame)});
    }
    emitNoise(items, noise);
    return items;
}

} // namespace mq27sim
