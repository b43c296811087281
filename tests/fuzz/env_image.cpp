// Copies of a board's variables in flash. An input that is no whole copy is tried once more with length and checksum
// put right, so that the text behind them is reached too.
#include "sim/core/env_image.h"

#include "sim/core/checksum.h"
#include "tests/fuzz/target.h"

#include <vector>

using kestro_fuzz::require;

namespace {

using bytes = std::vector<uint8_t>;

void put_number(bytes &area, size_t at, uint32_t number) {
    for (size_t i = 0; i < 4; ++i) {
        area[at + i] = static_cast<uint8_t>(number >> (8 * i));
    }
}

bytes put_right(bytes area) {
    const std::span<const uint8_t> all(area);
    area[0] = 'K';
    area[1] = 'E';
    area[2] = 'N';
    area[3] = 'V';
    put_number(area, 8, static_cast<uint32_t>(area.size() - kestro_sim::env_head_size));
    put_number(area, 12,
               kestro_sim::checksum(all.subspan(kestro_sim::env_head_size), kestro_sim::checksum(all.subspan(4, 8))));
    return area;
}

// What is a copy is the very bytes that a driver writes for its variables.
bool is_copy(const bytes &area) {
    const auto copy = kestro_sim::decode_env(area);
    if (!copy) {
        return false;
    }
    for (const kestro_sim::env_variable &variable : copy->variables) {
        require(kestro_sim::is_env_name(variable.name), "a copy has good names");
        require(variable.value.size() <= kestro_sim::env_value_max, "a copy has no overlong texts");
    }
    const bytes again = kestro_sim::encode_env(*copy);
    require(again.size() <= kestro_sim::env_copy_max, "a copy is no larger than memory has room for");
    require(again.size() <= area.size() && std::equal(again.begin(), again.end(), area.begin()),
            "a copy is written as it was read");
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const bytes area(data, data + size);
    if (!is_copy(area) && size >= kestro_sim::env_head_size) {
        is_copy(put_right(area));
    }
    return 0;
}
