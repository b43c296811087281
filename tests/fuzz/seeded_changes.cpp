// Tries a target without libFuzzer: each sample, and so many changes of samples by a fixed seed. An argument is a
// folder of samples or one file, such as one that libFuzzer left behind.
#include "tests/fuzz/target.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

namespace {

namespace fs = std::filesystem;
using sample = std::vector<uint8_t>;

constexpr int changes_of_each = 2000;

sample read_sample(const fs::path &file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::vector<fs::path> files_of(const fs::path &place) {
    if (!fs::is_directory(place)) {
        return {place};
    }
    std::vector<fs::path> files;
    for (const fs::directory_entry &entry : fs::directory_iterator(place)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// A byte changed, left out, doubled or put in, a few times over.
sample changed(sample bytes, std::mt19937 &random) {
    const auto below = [&](size_t limit) { return std::uniform_int_distribution<size_t>(0, limit - 1)(random); };
    for (size_t left = 1 + below(6); left > 0; --left) {
        const auto at = bytes.begin() + static_cast<std::ptrdiff_t>(below(bytes.size() + 1));
        const auto value = static_cast<uint8_t>(below(256));
        switch (at == bytes.end() ? 0 : below(4)) {
        case 0:
            bytes.insert(at, value);
            break;
        case 1:
            bytes.erase(at);
            break;
        case 2:
            bytes.insert(at, *at);
            break;
        default:
            *at = value;
            break;
        }
    }
    return bytes;
}

void try_bytes(const sample &bytes) {
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

} // namespace

int main(int count, char **arguments) {
    std::mt19937 random(20260101);
    size_t samples = 0;
    for (int i = 1; i < count; ++i) {
        for (const fs::path &file : files_of(arguments[i])) {
            const sample bytes = read_sample(file);
            try_bytes(bytes);
            for (int change = 0; change < changes_of_each; ++change) {
                try_bytes(changed(bytes, random));
            }
            ++samples;
        }
    }
    kestro_fuzz::require(samples > 0, "there are samples");
    return 0;
}
