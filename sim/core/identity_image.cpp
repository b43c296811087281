// The storage devices of a board as they come out of production: labels, bar codes, MAC addresses and the variables in
// flash programmed in both copies, everything else erased.
#include "sim/core/identity_image.h"
#include "sim/core/checksum.h"
#include "sim/core/eeprom.h"
#include "sim/core/env_image.h"
#include "sim/core/mac_area.h"
#include "sim/core/state_files.h"

#include <algorithm>
#include <vector>

namespace kestro_sim {

namespace {

constexpr uint8_t erased = 0xFF;
constexpr uint32_t barcode_size = 128;

using bytes = std::vector<uint8_t>;

void fill_area(bytes &image, uint32_t offset, uint32_t size, std::string_view text) {
    const auto begin = image.begin() + static_cast<ptrdiff_t>(offset);
    std::fill_n(begin, size, uint8_t{0});
    std::copy_n(text.begin(), std::min<size_t>(text.size(), size), begin);
}

void program_section(bytes &image, const std::optional<eeprom_section> &section, std::string_view text) {
    if (section) {
        fill_area(image, section->offset, section->size, text);
    }
}

void program_mac(bytes &image, const std::optional<eeprom_section> &section, const std::vector<mac_record> &records) {
    if (section) {
        const bytes area = encode_mac_area(records, section->size);
        std::copy(area.begin(), area.end(), image.begin() + static_cast<ptrdiff_t>(section->offset));
    }
}

std::vector<mac_record> described_macs(pugi::xml_node identity) {
    std::vector<mac_record> records;
    for (const pugi::xml_node entry : named_child(identity, "mac").children("entry")) {
        records.push_back({static_cast<uint8_t>(parse_number(entry.attribute("name").value()).value_or(0)),
                           static_cast<uint16_t>(element_number(named_child(entry, "count")).value_or(0)),
                           address_from_number(element_number(named_child(entry, "base")).value_or(0))});
    }
    return records;
}

bytes identity_image(const description &board, const std::string &instance) {
    const pugi::xml_node identity = board.module(instance, "sim_identity");
    const auto text_of = [](pugi::xml_node entry) { return element_text(named_child(entry, "text")).value_or(""); };
    bytes image(eeprom_size(eeprom_layout(board, instance)), erased);
    for (const pugi::xml_node entry : named_child(identity, "section").children("entry")) {
        const auto id = static_cast<uint32_t>(parse_number(entry.attribute("name").value()).value_or(0));
        program_section(image, find_section(board, instance, id), text_of(entry));
    }
    for (const pugi::xml_node entry : named_child(identity, "elabel").children("entry")) {
        program_section(image, find_section(board, instance, elabel_section), text_of(entry));
        program_section(image, find_section(board, instance, elabel_backup_section), text_of(entry));
    }
    for (const pugi::xml_node entry : named_child(identity, "barcode").children("entry")) {
        const auto id = static_cast<uint32_t>(parse_number(entry.attribute("name").value()).value_or(0));
        const auto section = find_section(board, instance, barcode_section);
        fill_area(image, section.value().offset + id * barcode_size, barcode_size, text_of(entry));
    }
    const std::vector<mac_record> macs = described_macs(identity);
    if (!macs.empty()) {
        program_mac(image, find_section(board, instance, mac_section), macs);
        program_mac(image, find_section(board, instance, mac_backup_section), macs);
    }
    return image;
}

// Filled, or with the text behind its checksum. A text beyond the image is cut.
bytes storage_image(pugi::xml_node entry) {
    constexpr uint32_t head = 2;
    const auto size = static_cast<size_t>(element_number(named_child(entry, "size")).value_or(0));
    const auto fill = static_cast<uint8_t>(element_number(named_child(entry, "fill")).value_or(erased));
    bytes image(size, fill);
    const auto text = element_text(named_child(entry, "text"));
    if (text && size > head) {
        std::copy_n(text->begin(), std::min(text->size(), size - head), image.begin() + head);
        const uint16_t crc = crc16_checksum(std::span(image).subspan(head));
        image[0] = static_cast<uint8_t>(crc >> 8U);
        image[1] = static_cast<uint8_t>(crc);
    }
    return image;
}

// A text beyond its section is cut, and so is a section beyond the chip.
void program(bytes &image, uint64_t offset, uint64_t size, std::span<const uint8_t> content) {
    const uint64_t room = offset < image.size() ? std::min<uint64_t>(size, image.size() - offset) : 0;
    std::copy_n(content.begin(), std::min<uint64_t>(content.size(), room),
                image.begin() + static_cast<ptrdiff_t>(std::min<uint64_t>(offset, image.size())));
}

bytes described_variables(const description &board, const std::string &place) {
    env_copy copy{1, {}};
    for (const pugi::xml_node entry : board.node(place, "sim_env", "flash").children("entry")) {
        copy.variables.push_back({element_text(named_child(entry, "name")).value_or(""),
                                  element_text(named_child(entry, "text")).value_or("")});
    }
    return encode_env(copy);
}

void program_flash(bytes &image, const description &board, const std::string &place) {
    constexpr std::string_view variables = "8";
    for (const pugi::xml_node entry : board.node(place, "sim_flash", "section").children("entry")) {
        const uint64_t offset = element_number(named_child(entry, "offset")).value_or(0);
        const uint64_t size = element_number(named_child(entry, "size")).value_or(0);
        const std::string text = element_text(named_child(entry, "text")).value_or("");
        program(image, offset, size, bytes(text.begin(), text.end()));
        if (entry.attribute("name").value() == variables) {
            const bytes copy = described_variables(board, place);
            program(image, offset, size / 2, copy);
            program(image, offset + size / 2, size / 2, copy);
        }
    }
}

} // namespace

void write_new_images(const description &chassis, const std::filesystem::path &directory) {
    for (const pugi::xml_node place : chassis.chassis().children("place")) {
        const std::string name = place.attribute("name").value();
        if (eeprom_layout(chassis, name)) {
            write_new_file(directory / eeprom_image_name(name), identity_image(chassis, name));
        }
        for (const pugi::xml_node entry : chassis.node(name, "sim_storage", "image").children("entry")) {
            const std::string device = entry.attribute("name").value();
            bytes image = storage_image(entry);
            if (device == "flash") {
                program_flash(image, chassis, name);
            }
            write_new_file(directory / image_name(device, name), image);
        }
    }
}

} // namespace kestro_sim
