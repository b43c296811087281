#include "sim/core/logic_image.h"

#include "sim/core/checksum.h"
#include "sim/core/errors.h"

#include <algorithm>
#include <array>

namespace kestro_sim {

namespace {

constexpr std::array<uint8_t, 4> start_of_image{'K', 'L', 'O', 'G'};
constexpr size_t part_at = 4;
constexpr size_t version_at = 8;
constexpr size_t year_at = 12;
constexpr size_t month_at = 14;
constexpr size_t day_at = 15;
constexpr size_t configuration_length_at = 16;
constexpr size_t image_checksum_at = 20;

uint32_t image_number_at(std::span<const uint8_t> bytes, size_t at, size_t size) {
    uint32_t number = 0;
    for (size_t i = 0; i < size; ++i) {
        number |= uint32_t{bytes[at + i]} << (8 * i);
    }
    return number;
}

bool is_told_by_chips(const logic_image &image) {
    const bool is_date = image.year >= 2000 && image.year <= 2099 && image.month >= 1 && image.month <= 12 &&
                         image.day >= 1 && image.day <= 31;
    return is_date && image.version <= logic_version_max && !image.configuration.empty();
}

} // namespace

logic_image decode_logic_image(std::span<const uint8_t> bytes) {
    const bool begins_as_one = bytes.size() >= logic_image_head_size &&
                               std::equal(start_of_image.begin(), start_of_image.end(), bytes.begin());
    refuse_if(!begins_as_one, error::bad_value);
    const auto numbers = bytes.subspan(part_at, image_checksum_at - part_at);
    const auto configuration = bytes.subspan(logic_image_head_size);
    refuse_if(image_number_at(bytes, configuration_length_at, 4) != configuration.size() ||
                  image_number_at(bytes, image_checksum_at, 4) != checksum(configuration, checksum(numbers)),
              error::damaged);
    const logic_image image{image_number_at(bytes, part_at, 4), image_number_at(bytes, version_at, 4),
                            image_number_at(bytes, year_at, 2), image_number_at(bytes, month_at, 1),
                            image_number_at(bytes, day_at, 1),  configuration};
    refuse_if(!is_told_by_chips(image), error::bad_value);
    return image;
}

} // namespace kestro_sim
