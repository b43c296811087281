// Images for programmable logic. An input that is none is tried once more with its start, length and checksum put
// right, so that the numbers behind them are reached too.
#include "sim/core/logic_image.h"

#include "sim/core/checksum.h"
#include "sim/core/errors.h"
#include "tests/fuzz/target.h"

#include <vector>

using kestro_fuzz::require;

namespace {

using bytes = std::vector<uint8_t>;

void put(bytes &area, size_t at, uint32_t number, size_t size = 4) {
    for (size_t i = 0; i < size; ++i) {
        area[at + i] = static_cast<uint8_t>(number >> (8 * i));
    }
}

bytes put_right(bytes area) {
    const std::span<const uint8_t> all(area);
    area[0] = 'K';
    area[1] = 'L';
    area[2] = 'O';
    area[3] = 'G';
    put(area, 16, static_cast<uint32_t>(area.size() - 24));
    put(area, 20, kestro_sim::checksum(all.subspan(24), kestro_sim::checksum(all.subspan(4, 16))));
    return area;
}

// What is an image is the very bytes that its numbers make.
bytes made_of(const kestro_sim::logic_image &image) {
    bytes area(24);
    put(area, 4, image.part);
    put(area, 8, image.version);
    put(area, 12, image.year, 2);
    put(area, 14, image.month, 1);
    put(area, 15, image.day, 1);
    area.insert(area.end(), image.configuration.begin(), image.configuration.end());
    return put_right(area);
}

bool is_image(const bytes &area) {
    try {
        const kestro_sim::logic_image image = kestro_sim::decode_logic_image(area);
        require(image.version <= 0xFFFF && image.year >= 2000 && image.year <= 2099, "numbers that a chip tells");
        require(image.month >= 1 && image.month <= 12 && image.day >= 1 && image.day <= 31, "a date");
        require(!image.configuration.empty(), "an image has a configuration");
        require(made_of(image) == area, "an image is read as it was written");
        return true;
    } catch (const kestro_sim::refusal &refused) {
        require(refused.code == kestro_sim::error::bad_value || refused.code == kestro_sim::error::damaged,
                "an image is refused as such");
        return false;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const bytes area(data, data + size);
    if (!is_image(area) && size >= 24) {
        is_image(put_right(area));
    }
    return 0;
}
