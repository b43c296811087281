// Sections and partitions come down to runs of bytes of an image.
#include "sim/devices/storage/flash.h"

#include "sim/core/catalogue.h"
#include "sim/core/eeprom.h"

#include <algorithm>

namespace kestro_sim {

namespace {

enum class chip_kind : uint32_t { flash, nand };

// Bytes that lie side by side in the image of a chip.
struct run_of_bytes {
    uint32_t offset;
    uint32_t length;
};

struct flash_area {
    std::string image;
    std::vector<run_of_bytes> runs;
};

void refuse_beyond(uint64_t size, uint32_t offset, uint64_t length) {
    refuse_if(uint64_t{offset} + length > size, error::out_of_range);
}

flash_area area_of_section(board &b, const std::string &place, uint32_t id, uint32_t offset, uint64_t length) {
    const auto section = b.find_at<flash_section::family>(place, id);
    refuse_beyond(b.get(section, flash_section::size), offset, length);
    return {image_name("flash", place),
            {{b.get(section, flash_section::offset) + offset, static_cast<uint32_t>(length)}}};
}

using partition_of = device_of<mtd_partition::family>;

chip_kind chip_of(board &b, const partition_of &partition) {
    return static_cast<chip_kind>(b.get(partition, mtd_partition::chip));
}

partition_of find_partition(board &b, const std::string &place, std::string_view name) {
    const auto partitions = b.all_at<mtd_partition::family>(place);
    refuse_if(partitions.empty(), error::not_supported);
    const auto found = std::find_if(partitions.begin(), partitions.end(),
                                    [&](const auto &one) { return b.text(one, mtd_partition::name) == name; });
    refuse_if(found == partitions.end(), error::no_such_device);
    return *found;
}

bool is_bad(uint64_t table, uint32_t block) {
    return block < 64 && (table >> block & 1U) != 0;
}

// The good blocks of a partition, in the image.
std::vector<uint32_t> good_blocks(board &b, const partition_of &partition) {
    const auto nand = b.find_at<nand_chip::family>(partition.instance);
    const uint32_t block_size = b.get(nand, nand_chip::block_size);
    const uint64_t table = b.get_wide(nand, nand_chip::bad_blocks);
    const uint32_t first = b.get(partition, mtd_partition::offset) / block_size;
    const uint32_t count = b.get(partition, mtd_partition::size) / block_size;
    std::vector<uint32_t> offsets;
    for (uint32_t block = first; block < first + count; ++block) {
        if (!is_bad(table, block)) {
            offsets.push_back(block * block_size);
        }
    }
    return offsets;
}

flash_area area_in_nand(board &b, const partition_of &partition, uint32_t offset, uint64_t length) {
    const auto nand = b.find_at<nand_chip::family>(partition.instance);
    const uint32_t block_size = b.get(nand, nand_chip::block_size);
    const std::vector<uint32_t> blocks = good_blocks(b, partition);
    refuse_beyond(uint64_t{blocks.size()} * block_size, offset, length);
    flash_area area{image_name("nand", partition.instance), {}};
    for (uint64_t done = 0; done < length;) {
        const uint64_t at = offset + done;
        const auto within = static_cast<uint32_t>(at % block_size);
        const auto piece = static_cast<uint32_t>(std::min<uint64_t>(block_size - within, length - done));
        area.runs.push_back({blocks[static_cast<size_t>(at / block_size)] + within, piece});
        done += piece;
    }
    return area;
}

flash_area area_of_partition(board &b, const partition_of &partition, uint32_t offset, uint64_t length) {
    if (chip_of(b, partition) == chip_kind::nand) {
        return area_in_nand(b, partition, offset, length);
    }
    refuse_beyond(b.get(partition, mtd_partition::size), offset, length);
    return {image_name("flash", partition.instance),
            {{b.get(partition, mtd_partition::offset) + offset, static_cast<uint32_t>(length)}}};
}

std::vector<uint8_t> read_area(board &b, const flash_area &area) {
    std::vector<uint8_t> bytes;
    for (const run_of_bytes &run : area.runs) {
        const std::vector<uint8_t> read = b.read_image(area.image, run.offset, run.length);
        bytes.insert(bytes.end(), read.begin(), read.end());
    }
    return bytes;
}

void write_area(board &b, const flash_area &area, std::span<const uint8_t> bytes) {
    for (const run_of_bytes &run : area.runs) {
        b.write_image(area.image, run.offset, bytes.first(run.length));
        bytes = bytes.subspan(run.length);
    }
}

} // namespace

std::vector<uint8_t> read_section(board &b, const std::string &place, uint32_t id, uint32_t offset, uint32_t length) {
    return read_area(b, area_of_section(b, place, id, offset, length));
}

// What is written reads back whatever stood there, so the erasing in between does not show.
void write_section(board &b, const std::string &place, uint32_t id, uint32_t offset, std::span<const uint8_t> bytes) {
    write_area(b, area_of_section(b, place, id, offset, bytes.size()), bytes);
}

std::vector<uint8_t> read_partition(board &b, const std::string &place, std::string_view name, uint32_t offset,
                                    uint32_t length) {
    return read_area(b, area_of_partition(b, find_partition(b, place, name), offset, length));
}

void program_partition(board &b, const std::string &place, std::string_view name, uint32_t offset,
                       std::span<const uint8_t> bytes) {
    const partition_of partition = find_partition(b, place, name);
    const flash_area area = area_of_partition(b, partition, offset, bytes.size());
    if (chip_of(b, partition) == chip_kind::nand) {
        const uint32_t page = b.get(b.find_at<nand_chip::family>(place), nand_chip::page_size);
        refuse_if(offset % page != 0 || bytes.size() % page != 0, error::bad_value);
    }
    std::vector<uint8_t> programmed = read_area(b, area);
    std::transform(programmed.begin(), programmed.end(), bytes.begin(), programmed.begin(),
                   [](uint8_t present, uint8_t wanted) { return static_cast<uint8_t>(present & wanted); });
    write_area(b, area, programmed);
}

bool has_nand(board &b, const std::string &place) {
    refuse_if(b.all_at<flash_chip::family>(place).empty(), error::not_supported);
    return !b.all_at<nand_chip::family>(place).empty();
}

uint32_t nand_partitions(board &b, const std::string &place) {
    refuse_if(!has_nand(b, place), error::not_supported);
    uint32_t count = 0;
    for (const partition_of &partition : b.all_at<mtd_partition::family>(place)) {
        count += chip_of(b, partition) == chip_kind::nand ? 1U : 0U;
    }
    return count;
}

device_list devices_of_flash() {
    static constexpr const device_family *families[]{&flash_chip::family, &flash_section::family,
                                                     &mtd_partition::family, &nand_chip::family};
    return {families, {}};
}

} // namespace kestro_sim
