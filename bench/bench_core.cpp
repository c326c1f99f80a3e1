// Speed of the telegram path: what runs for every received burst and every display pass.
//
//   build/bin/mq27bench            all benchmarks
//
// Each benchmark reports the median time of one operation over several timed batches.

#include "link/checksum.h"
#include "link/qtserialportdevice.h"
#include "link/telegram.h"
#include "logger/dataobjects.h"
#include "values/valuestore.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <random>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

// Median nanoseconds of one call of `body`, measured in batches of `batch` calls.
double medianNanoseconds(const std::function<void()>& body, int batch, int batches = 15) {
    std::vector<double> samples;
    for (int b = 0; b < batches; ++b) {
        const auto start = Clock::now();
        for (int i = 0; i < batch; ++i)
            body();
        const std::chrono::duration<double, std::nano> elapsed = Clock::now() - start;
        samples.push_back(elapsed.count() / batch);
    }
    std::nth_element(samples.begin(), samples.begin() + batches / 2, samples.end());
    return samples[static_cast<std::size_t>(batches / 2)];
}

void report(const char* name, double ns) {
    if (ns >= 1000)
        std::printf("%-48s %10.2f us\n", name, ns / 1000);
    else
        std::printf("%-48s %10.0f ns\n", name, ns);
}

Bytes stampedTelegram(int command, std::size_t storedSize) {
    const std::size_t header = command == 5 ? 4 : 2;
    Bytes data{10, static_cast<std::uint8_t>(command), 0x00, 0x12, 0xD6, 0x87};
    data.resize(storedSize - header - 9 - 2, 0x21);
    const QDateTime when(QDate(2026, 11, 23), QTime(8, 0));
    return telegram::StampTelegram(telegram::MakeSendFrame(data, true).value(), when).value();
}

volatile std::int64_t g_sink = 0;

void benchFinder() {
    std::mt19937 rng(27);
    Bytes buffer(1024);
    for (auto& b : buffer)
        b = static_cast<std::uint8_t>(rng());
    const Bytes frame = telegram::MakeSendFrame(Bytes{10, 2, 0, 0x12, 0xD6, 0x87}, true).value();
    std::copy(frame.begin(), frame.end(), buffer.end() - static_cast<long>(frame.size()));
    report("FindTelegram, 1 KiB noise, frame at its end",
           medianNanoseconds(
               [&] {
                   std::int32_t first = 0, last = 0;
                   g_sink = g_sink + checksum::FindTelegram(buffer, first, last);
               },
               2000));
    // The finder looks from the end, so its worst case is a frame at the start of the noise.
    Bytes early = buffer;
    std::rotate(early.begin(), early.end() - static_cast<long>(frame.size()), early.end());
    report("FindTelegram, 1 KiB noise, frame at its start",
           medianNanoseconds(
               [&] {
                   std::int32_t first = 0, last = 0;
                   g_sink = g_sink + checksum::FindTelegram(early, first, last);
               },
               2000));
    const Bytes answer5 = stampedTelegram(5, 421);
    report(
        "AcceptStampedTelegram, telegram 5",
        medianNanoseconds(
            [&] { g_sink = g_sink + telegram::AcceptStampedTelegram(answer5)->deviceKind; }, 5000));
}

void benchStore() {
    ValueStore values;
    const std::size_t sizes[5] = {19, 202, 211, 54, 421};
    for (int command = 1; command <= 5; ++command) {
        const Bytes t = stampedTelegram(command, sizes[command - 1]);
        char name[64];
        std::snprintf(name, sizeof name, "SetDataArray, telegram %d (%zu bytes)", command,
                      t.size());
        report(name, medianNanoseconds(
                         [&] {
                             g_sink = g_sink +
                                      values.SetDataArray(t, static_cast<std::int16_t>(command));
                         },
                         20000));
    }
}

void benchDataObjects() {
    ValueStore values;
    std::size_t rows = 0;
    report("Full pass over all data objects",
           medianNanoseconds(
               [&] {
                   rows = 0;
                   VisitDataObjects(values, [&rows](const DataObject&) { ++rows; });
               },
               200));
    std::printf("%-48s %10zu\n", "  rows in a pass", rows);
    report("Full pass with the value texts",
           medianNanoseconds(
               [&] {
                   VisitDataObjects(values, [](const DataObject& row) {
                       g_sink = g_sink + FormatValueC(row).size();
                   });
               },
               100));
}

// One look for a port that went away, as the watch timer takes it twice a second: a fixed
// path is one stat; a system port one stat of /dev while nothing was plugged in.
void benchPortWatch() {
    qputenv("MQ27D_PORT1", "/nonexistent/ttyMQ27");
    qunsetenv("MQ27D_PORT16");
    for (int port : {1, 16}) {
        QtSerialPortDevice device;
        device.open(port);
        device.reopen(); // the first look after a loss enumerates once
        const double ns = medianNanoseconds([&] { g_sink = g_sink + device.reopen(); }, 2000);
        report(port == 1 ? "Watch: one look at a fixed path"
                         : "Watch: one look at the system's ports",
               ns);
        std::printf("%-48s %10.4f %%\n", "  of one core at two looks a second", ns * 2 / 1e9 * 100);
    }
}

} // namespace

int main() {
    benchFinder();
    benchStore();
    benchDataObjects();
    benchPortWatch();
    return 0;
}
