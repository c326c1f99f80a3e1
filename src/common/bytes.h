#pragma once

#include <cstdint>
#include <vector>

#include <QByteArray>

// Telegrams, stored telegrams and file blocks are plain byte arrays with lower bound 0.
using Bytes = std::vector<std::uint8_t>;

inline Bytes toBytes(const QByteArray& data) {
    return Bytes(reinterpret_cast<const std::uint8_t*>(data.constData()),
                 reinterpret_cast<const std::uint8_t*>(data.constData()) + data.size());
}

inline QByteArray toByteArray(const Bytes& data) {
    return QByteArray(reinterpret_cast<const char*>(data.data()),
                      static_cast<qsizetype>(data.size()));
}
