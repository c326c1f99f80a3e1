#pragma once

#include "common/bytes.h"

#include <vector>

namespace mq27sim {

// Finds frames in the byte stream from the tool, which arrives in chunks of any size. A
// frame is STX, length, payload and a right sum; bytes that belong to no frame come out
// as noise. A frame that has begun but isn't complete yet is kept for the next chunk;
// flush() gives up on it when the line has gone quiet.
class FrameReader {
public:
    struct Item {
        bool isFrame = false;
        Bytes bytes;
    };

    // The tool never sends frames longer than this; a longer announcement is noise.
    static constexpr std::size_t kMaxFrame = 1024;

    std::vector<Item> feed(const Bytes& chunk);
    std::vector<Item> flush();
    bool hasPending() const { return !m_buffer.empty(); }

private:
    std::vector<Item> extract(bool final);
    // Total length of the frame whose header stands at `at`; 0 while the header is
    // incomplete.
    std::size_t announcedLength(std::size_t at) const;
    bool hasFrameAt(std::size_t at, std::size_t total) const;
    std::size_t completeFrameBehindFront() const;
    void dropFront(std::size_t count, Bytes& noise);

    Bytes m_buffer;
};

} // namespace mq27sim
