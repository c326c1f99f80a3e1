// The virtual device's reader of what the tool sends, fed in chunks: the first byte of
// the input sets the chunk size, so that frames split anywhere.
#include "sim/frame_reader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::size_t chunk = std::size_t{data[0]} + 1;
    mq27sim::FrameReader reader;
    std::size_t total = 0;
    for (std::size_t at = 1; at < size; at += chunk) {
        const std::size_t end = std::min(size, at + chunk);
        for (const auto& item : reader.feed(Bytes(data + at, data + end))) {
            if (item.isFrame && item.bytes.size() > mq27sim::FrameReader::kMaxFrame)
                __builtin_trap();
            total += item.bytes.size();
        }
    }
    for (const auto& item : reader.flush())
        total += item.bytes.size();
    // Every byte comes out once, as frame or as noise.
    if (total != size - 1) __builtin_trap();
    return 0;
}
