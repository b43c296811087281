// Nothing runs in the background: what is due is carried over by the first operation that comes after it.
#include "sim/devices/storage/nvram.h"

#include "sim/core/catalogue.h"
#include "sim/core/eeprom.h"
#include "sim/core/time.h"

#include <algorithm>

namespace kestro_sim {

namespace {

std::string image_of(const std::string &place, uint32_t chip) {
    return image_name("nvram_" + std::to_string(chip), place);
}

bool is_silent(board &b, const std::string &place) {
    const auto chips = b.all_at<nvram_chip::family>(place);
    return std::any_of(chips.begin(), chips.end(),
                       [&](const auto &chip) { return b.get(chip, nvram_chip::silent) != 0; });
}

// Done twice it does no harm, so a run may be killed in between. Where it begins and ends may have been set by hand.
void carry_over(board &b, const nvram_mirror::one &mirror) {
    const std::string from = image_of(mirror.instance, b.get(mirror, nvram_mirror::source));
    const std::string to = image_of(mirror.instance, 1 - b.get(mirror, nvram_mirror::source));
    const uint32_t first = b.get(mirror, nvram_mirror::first);
    const size_t end = std::min({size_t{b.get(mirror, nvram_mirror::end)}, b.image_size(from), b.image_size(to)});
    if (first < end) {
        b.write_image(to, first, b.read_image(from, first, end - first));
    }
    b.put(mirror, nvram_mirror::pending, 0);
}

void carry_over_what_is_due(board &b, const nvram_mirror::one &mirror) {
    if (b.get(mirror, nvram_mirror::pending) == 0 || is_silent(b, mirror.instance)) {
        return;
    }
    const auto written = static_cast<int64_t>(b.get_wide(mirror, nvram_mirror::since));
    if (b.now() - written >= b.get(mirror, nvram_mirror::quiet) * nanoseconds_per_millisecond) {
        carry_over(b, mirror);
    }
}

void check_access(board &b, const nvram_chip::one &chip, uint32_t offset, size_t length) {
    refuse_if(b.get(chip, nvram_chip::silent) != 0, error::not_ready);
    const size_t size = b.image_size(image_of(chip.instance, chip.id));
    refuse_if(length == 0 || offset > size || length > size - offset, error::out_of_range);
}

} // namespace

std::vector<uint8_t> nvram_chip::read(board &b, const one &chip, uint32_t offset, uint32_t length) {
    check_access(b, chip, offset, length);
    carry_over_what_is_due(b, b.find_at<nvram_mirror::family>(chip.instance));
    return b.read_image(image_of(chip.instance, chip.id), offset, length);
}

// A write to the other chip does not wait until the first is followed: the logic brings that to its end before, so that
// the later write wins where both meet. With the first chip silent there is nothing to bring over: it will follow the
// one that answers, there too. The note comes before the bytes: a run that is killed in between makes the other chip
// follow what has not changed.
void nvram_chip::write(board &b, const one &chip, uint32_t offset, std::span<const uint8_t> bytes) {
    check_access(b, chip, offset, bytes.size());
    const auto mirror = b.find_at<nvram_mirror::family>(chip.instance);
    carry_over_what_is_due(b, mirror);
    uint32_t first = offset;
    uint32_t end = offset + static_cast<uint32_t>(bytes.size());
    if (b.get(mirror, nvram_mirror::pending) != 0) {
        if (b.get(mirror, nvram_mirror::source) != chip.id && !is_silent(b, chip.instance)) {
            carry_over(b, mirror);
        } else {
            first = std::min(first, b.get(mirror, nvram_mirror::first));
            end = std::max(end, b.get(mirror, nvram_mirror::end));
        }
    }
    b.put_all(mirror, {{nvram_mirror::pending, 1},
                       {nvram_mirror::source, chip.id},
                       {nvram_mirror::first, first},
                       {nvram_mirror::end, end},
                       {nvram_mirror::since, static_cast<uint64_t>(b.now())}});
    b.write_image(image_of(chip.instance, chip.id), offset, bytes);
}

uint32_t nvram_mirror::status(board &b, const one &mirror) {
    carry_over_what_is_due(b, mirror);
    return (b.get(mirror, pending) != 0 ? on_its_way : 0) | (is_silent(b, mirror.instance) ? out_of_order : 0);
}

device_list devices_of_nvram() {
    static constexpr const device_family *families[]{&nvram_chip::family, &nvram_mirror::family};
    return {families, {}};
}

} // namespace kestro_sim
