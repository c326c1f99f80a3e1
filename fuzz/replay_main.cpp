// Runs a fuzz target without libFuzzer, so that every build (GCC, and the sanitizer build
// of `make test`) exercises it: each seed file as it stands, then a fixed number of
// variations of each seed (bytes flipped, cut, doubled, overwritten). The variations come
// from a fixed random seed, so that every run of the tests tries the same inputs; --seed
// tries others. The seed is printed, so that a failing input can be made again.
//
//   fuzz_<target> [--variations N] [--seed S] SEED_FOLDER_OR_FILE...
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes readFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void run(const Bytes& input) {
    LLVMFuzzerTestOneInput(input.empty() ? nullptr : input.data(), input.size());
}

Bytes vary(const Bytes& seed, std::mt19937& random) {
    Bytes out = seed;
    const auto pick = [&](std::size_t bound) {
        return std::uniform_int_distribution<std::size_t>(0, bound)(random);
    };
    const std::size_t edits = 1 + pick(7);
    for (std::size_t i = 0; i < edits; ++i) {
        switch (pick(4)) {
        case 0: // one bit
            if (!out.empty()) out[pick(out.size() - 1)] ^= std::uint8_t(1u << pick(7));
            break;
        case 1: // cut short
            out.resize(out.empty() ? 0 : pick(out.size() - 1));
            break;
        case 2: // a run doubled
            if (!out.empty()) {
                const std::size_t from = pick(out.size() - 1);
                const std::size_t length =
                    1 + pick(std::min<std::size_t>(64, out.size() - from - 1));
                out.insert(out.begin() + std::ptrdiff_t(pick(out.size())),
                           out.begin() + std::ptrdiff_t(from),
                           out.begin() + std::ptrdiff_t(from + length));
            }
            break;
        case 3: // a byte overwritten with a value that matters to framing
            if (!out.empty()) {
                static const std::uint8_t kSpecial[] = {0x00, 0x02, 0x03, 0x0A, 0x0D,
                                                        0x10, 0x7F, 0x80, 0xFE, 0xFF};
                out[pick(out.size() - 1)] = kSpecial[pick(std::size(kSpecial) - 1)];
            }
            break;
        default: // random bytes appended
            for (std::size_t n = pick(16); n > 0; --n)
                out.push_back(std::uint8_t(pick(255)));
        }
    }
    return out;
}

} // namespace

int main(int argc, char* argv[]) {
    if (LLVMFuzzerInitialize) LLVMFuzzerInitialize(&argc, &argv);
    long variations = 200;
    unsigned seed = 20261125u;
    std::vector<std::filesystem::path> seeds;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--variations" && i + 1 < argc)
            variations = std::strtol(argv[++i], nullptr, 10);
        else if (arg == "--seed" && i + 1 < argc)
            seed = unsigned(std::strtoul(argv[++i], nullptr, 10));
        else if (std::filesystem::is_directory(arg))
            for (const auto& entry : std::filesystem::directory_iterator(arg))
                seeds.push_back(entry.path());
        else
            seeds.push_back(arg);
    }
    std::sort(seeds.begin(), seeds.end());
    std::printf("replay: %zu seeds, %ld variations each, --seed %u\n", seeds.size(), variations,
                seed);
    std::fflush(stdout);
    std::mt19937 random(seed);
    run({});
    for (const auto& path : seeds) {
        const Bytes input = readFile(path);
        run(input);
        for (long i = 0; i < variations; ++i)
            run(vary(input, random));
    }
    return 0;
}
