// Records of the MAC section, byte by byte as the EEPROM holds them.
#include "sim/core/mac_area.h"

#include <algorithm>

namespace kestro_sim {

namespace {

constexpr std::array<uint8_t, 4> signature{'M', 'A', 'C', 1};

} // namespace

mac_address address_from_number(uint64_t number) {
    mac_address address{};
    for (size_t i = 0; i < address.size(); ++i) {
        address[i] = static_cast<uint8_t>(number >> (40 - 8 * i));
    }
    return address;
}

uint64_t number_from_address(const mac_address &address) {
    uint64_t number = 0;
    for (const uint8_t byte : address) {
        number = number << 8 | byte;
    }
    return number;
}

size_t mac_area_capacity(size_t size) {
    return size < mac_header_size ? 0 : std::min<size_t>((size - mac_header_size) / mac_record_size, 255);
}

std::vector<uint8_t> encode_mac_area(std::span<const mac_record> records, size_t size) {
    std::vector<uint8_t> area(size, 0);
    std::copy(signature.begin(), signature.end(), area.begin());
    area.at(signature.size()) = static_cast<uint8_t>(records.size());
    size_t at = mac_header_size;
    for (const mac_record &record : records) {
        area.at(at) = record.type;
        area.at(at + 2) = static_cast<uint8_t>(record.count >> 8);
        area.at(at + 3) = static_cast<uint8_t>(record.count);
        std::copy(record.base.begin(), record.base.end(), area.begin() + static_cast<ptrdiff_t>(at + 4));
        at += mac_record_size;
    }
    return area;
}

std::optional<std::vector<mac_record>> decode_mac_area(std::span<const uint8_t> area) {
    if (area.size() < mac_header_size || !std::equal(signature.begin(), signature.end(), area.begin()) ||
        area[signature.size()] > mac_area_capacity(area.size())) {
        return std::nullopt;
    }
    std::vector<mac_record> records;
    for (size_t i = 0; i < area[signature.size()]; ++i) {
        const std::span<const uint8_t> bytes = area.subspan(mac_header_size + i * mac_record_size, mac_record_size);
        mac_record record{bytes[0], static_cast<uint16_t>(bytes[2] << 8 | bytes[3]), {}};
        std::copy(bytes.begin() + 4, bytes.end(), record.base.begin());
        records.push_back(record);
    }
    return records;
}

} // namespace kestro_sim
