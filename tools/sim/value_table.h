#pragma once

#include "common/bytes.h"
#include "sim/value_store.h"

#include <string>
#include <vector>

namespace mq27sim {

// How a named value is laid out in its telegram. Numbers are big-endian; a bit field is
// little-endian (bit k of the value lies in byte offset + (firstBit + k) / 8), which
// covers single flags, two-bit LED states and the fault and message masks alike.
enum class Encoding { UInt8, Int8, UInt16, Int16, UInt32, Float32, Version, ParameterId, Bits };

struct ValueLayout {
    std::string key;
    int offset = 0; // into the telegram with its STX at 0; within the block for a group
    Encoding encoding = Encoding::UInt8;
    int firstBit = 0;
    int width = 0; // Bits only
    double defaultValue = 0;
};

// A section of device-wide values (count 1) or a group of equal blocks (detectors,
// temperature sensors, modules) at base + stride * index.
struct ValueSection {
    std::string name;
    int command = 0;
    int count = 1;
    int base = 0;
    int stride = 0;
    std::vector<ValueLayout> values;

    bool isGroup() const { return count > 1; }
    std::string nameOf(const ValueLayout& layout, int index) const;
    int absoluteOffset(const ValueLayout& layout, int index) const;
};

// The one table of offsets of the telegrams 2, 3 and 5.
const std::vector<ValueSection>& valueSections();

// Size of the data of a read telegram (0 for 1, 183, 192, 35, 400 for 2 to 5) and the
// telegram offset of its first data byte.
int dataSize(int command);
int dataStart(int command);

// Range of the numbers an encoding can carry.
double minimumOf(const ValueLayout& layout);
double maximumOf(const ValueLayout& layout);
// Number of telegram bytes a value touches.
int byteWidth(const ValueLayout& layout);

// A software number "2710.03.021" (16, 8 and 8 bits) or parameter set number
// "0815.042.007" (16, 16 and 8 bits) packed into one number of the store.
double packVersion(unsigned major, unsigned minor, unsigned build);
double packParameterId(unsigned set, unsigned variant, unsigned revision);

// The data bytes of read telegram `command` (2, 3 or 5) from the values at `seconds`.
Bytes encodeData(int command, const ValueStore& values, double seconds);

} // namespace mq27sim
