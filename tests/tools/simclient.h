#pragma once

// The tool's end of the virtual device's line, for the tests: a plain POSIX client on the
// slave side of the pseudo-terminal, and the frames and numbers as the tests know them.

#include "link/checksum.h"
#include "link/telegram.h"
#include "sim/device_profile.h"
#include "sim/simulator.h"
#include "support/testsupport.h"

#include <bit>
#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QTest>

namespace simtest {

using mq27sim::DeviceProfile;
using mq27sim::SimOptions;
using mq27sim::Simulator;

inline Bytes body(int kind, int command, std::uint32_t serial) {
    return Bytes{static_cast<std::uint8_t>(kind),         static_cast<std::uint8_t>(command),
                 static_cast<std::uint8_t>(serial >> 24), static_cast<std::uint8_t>(serial >> 16),
                 static_cast<std::uint8_t>(serial >> 8),  static_cast<std::uint8_t>(serial)};
}

inline Bytes frameOf(const Bytes& data) {
    return telegram::MakeSendFrame(data, true).value();
}

// A read telegram as the tool sends it.
inline Bytes readRequest(int command, std::uint32_t serial) {
    return frameOf(body(10, command, serial));
}

inline Bytes concat(std::initializer_list<Bytes> parts) {
    Bytes out;
    for (const Bytes& p : parts)
        out.insert(out.end(), p.begin(), p.end());
    return out;
}

// Numbers at a telegram offset (STX at 0), most significant byte first.
inline unsigned be16(const Bytes& t, int at) {
    return unsigned(t.at(std::size_t(at))) << 8 | t.at(std::size_t(at + 1));
}

inline std::uint32_t be32(const Bytes& t, int at) {
    return std::uint32_t(be16(t, at)) << 16 | be16(t, at + 2);
}

inline float f32(const Bytes& t, int at) {
    return std::bit_cast<float>(be32(t, at));
}

inline int bitsAt(const Bytes& t, int at, int firstBit, int width) {
    return (t.at(std::size_t(at)) >> firstBit) & ((1 << width) - 1);
}

inline DeviceProfile profile(const QString& name) {
    QString error;
    auto p = mq27sim::ProfileLoader::load(
        testsupport::sourcePath("tools/profiles/" + name + ".json"), error);
    if (!p) qFatal("%s", qPrintable(error));
    return std::move(*p);
}

// Short delays and no drift, so that the tests run fast and read exact values.
inline SimOptions quickOptions() {
    SimOptions o;
    o.answerDelayMs = 5;
    o.staggerMs = 10;
    o.speed = 100;
    o.drift = false;
    return o;
}

inline std::unique_ptr<Simulator> startSimulator(std::vector<DeviceProfile> profiles,
                                                 SimOptions options = quickOptions()) {
    auto sim = std::make_unique<Simulator>(std::move(profiles), std::move(options));
    QString error;
    if (!sim->start(error)) qFatal("%s", qPrintable(error));
    return sim;
}

class SimClient {
public:
    explicit SimClient(const QString& path)
        : fd_(::open(path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {
        termios tio{};
        if (fd_ >= 0 && ::tcgetattr(fd_, &tio) == 0) {
            ::cfmakeraw(&tio);
            ::tcsetattr(fd_, TCSANOW, &tio);
        }
    }
    SimClient(const SimClient&) = delete;
    SimClient& operator=(const SimClient&) = delete;
    ~SimClient() { close(); }

    bool isOpen() const { return fd_ >= 0; }
    void close() {
        if (fd_ >= 0) ::close(fd_);
        fd_ = -1;
    }

    void send(const Bytes& bytes) {
        std::size_t done = 0;
        while (fd_ >= 0 && done < bytes.size()) {
            const ssize_t n = ::write(fd_, bytes.data() + done, bytes.size() - done);
            if (n > 0)
                done += std::size_t(n);
            else if (n < 0 && errno != EAGAIN && errno != EINTR)
                return; // the line has gone
            else
                QTest::qWait(1);
        }
    }

    // Whatever arrives within `ms`, with the event loop running meanwhile.
    Bytes readFor(int ms) {
        Bytes in;
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < ms) {
            QTest::qWait(2);
            drainInto(in);
        }
        return in;
    }

    // Reads until a complete acceptable frame has come, as the tool's finder sees it.
    std::optional<Bytes> awaitFrame(int timeoutMs = 600) {
        Bytes in;
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < timeoutMs) {
            QTest::qWait(2);
            drainInto(in);
            std::int32_t first = 0, last = 0;
            if (modChecksum::FindTelegram(in, first, last) >= 0)
                return Bytes(in.begin() + first, in.begin() + last + 1);
        }
        return std::nullopt;
    }

    std::optional<Bytes> request(const Bytes& frame, int timeoutMs = 600) {
        send(frame);
        return awaitFrame(timeoutMs);
    }

    // Reads left from the device's end: 0 for a line that has gone away.
    ssize_t readOnce(std::uint8_t* buffer, std::size_t size) { return ::read(fd_, buffer, size); }

private:
    void drainInto(Bytes& in) {
        std::uint8_t buffer[1024];
        ssize_t n = 0;
        while (fd_ >= 0 && (n = ::read(fd_, buffer, sizeof buffer)) > 0)
            in.insert(in.end(), buffer, buffer + n);
    }

    int fd_ = -1;
};

} // namespace simtest
