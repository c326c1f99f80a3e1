#pragma once

#include "link/bytes.h"

#include <initializer_list>

#include <QString>

// Helpers shared by the tests.
namespace testsupport {

inline Bytes bytes(std::initializer_list<int> values) {
    Bytes out;
    out.reserve(values.size());
    for (int v : values)
        out.push_back(static_cast<std::uint8_t>(v));
    return out;
}

// Path of a file in the source tree, e.g. "samples/full.ko3".
QString sourcePath(const QString& relative);

// Path of a built program in build/bin.
QString programPath(const QString& name);

} // namespace testsupport
