#include "sim/drv/optical_lib/optical_texts.h"

#include <cstdio>
#include <span>

namespace kestro_sim::optical_texts {

namespace {

using optical_readings::byte_at;
using optical_readings::managed_by;
using optics::first_device;
using optics::management;

constexpr uint32_t single_mode = 1;
constexpr uint32_t multi_mode = 2;

constexpr standard known_standards[]{
    {management::sfp, 3, 0x80, 0x80, "10GBASE-ER", single_mode, 10000},
    {management::sfp, 3, 0x40, 0x40, "10GBASE-LRM", multi_mode, 10000},
    {management::sfp, 3, 0x20, 0x20, "10GBASE-LR", single_mode, 10000},
    {management::sfp, 3, 0x10, 0x10, "10GBASE-SR", multi_mode, 10000},
    {management::sfp, 6, 0x08, 0x08, "1000BASE-T", 0, 1000},
    {management::sfp, 6, 0x02, 0x02, "1000BASE-LX", single_mode, 1000},
    {management::sfp, 6, 0x01, 0x01, "1000BASE-SX", multi_mode, 1000},
    {management::qsfp, 131, 0x04, 0x04, "40GBASE-SR4", multi_mode, 40000},
    {management::qsfp, 131, 0x02, 0x02, "40GBASE-LR4", single_mode, 40000},
    {management::qsfp, 192, 0xFF, 0x02, "100GBASE-SR4", multi_mode, 100000},
    {management::qsfp, 192, 0xFF, 0x03, "100GBASE-LR4", single_mode, 100000},
    {management::cmis, 87, 0xFF, 0x1A, "400GBASE-FR8", single_mode, 400000},
    {management::cmis, 87, 0xFF, 0x1B, "400GBASE-LR8", single_mode, 400000},
    {management::cmis, 87, 0xFF, 0x1C, "400GBASE-DR4", single_mode, 400000},
};

struct code_name {
    uint32_t code;
    const char *name;
};

constexpr code_name connectors[]{
    {0x01, "SC"}, {0x07, "LC"},       {0x0B, "optical pigtail"}, {0x0C, "MPO 1x12"},    {0x22, "RJ45"},
    {0x25, "CS"}, {0x28, "MPO 1x16"}, {0x21, "copper pigtail"},  {0x23, "no connector"}};

// The codes from 4 to 6 differ between the two.
constexpr code_name sfp_encodings[]{{0x01, "8B/10B"},    {0x02, "4B/5B"},   {0x03, "NRZ"},       {0x04, "Manchester"},
                                    {0x05, "scrambled"}, {0x06, "64B/66B"}, {0x07, "256B/257B"}, {0x08, "PAM4"}};
constexpr code_name other_encodings[]{{0x01, "8B/10B"},  {0x02, "4B/5B"},      {0x03, "NRZ"},       {0x04, "scrambled"},
                                      {0x05, "64B/66B"}, {0x06, "Manchester"}, {0x07, "256B/257B"}, {0x08, "PAM4"}};

std::string name_of_code(std::span<const code_name> names, uint32_t code) {
    for (const code_name &each : names) {
        if (each.code == code) {
            return each.name;
        }
    }
    char text[16];
    snprintf(text, sizeof text, "unknown 0x%02x", code);
    return text;
}

// Without the blanks that fill it up.
std::string text_at(const memory &map, uint32_t address, uint32_t length) {
    std::string text;
    for (uint32_t i = 0; i < length; ++i) {
        text += static_cast<char>(byte_at(map, first_device, 0, address + i));
    }
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

// Where each kind of management has the text.
std::string text_by_kind(const memory &map, uint32_t sfp, uint32_t qsfp, uint32_t cmis, uint32_t length) {
    switch (managed_by(map)) {
    case management::sfp:
        return text_at(map, sfp, length);
    case management::qsfp:
        return text_at(map, qsfp, length);
    case management::cmis:
        break;
    }
    return text_at(map, cmis, length);
}

struct named_registers {
    const char *name;
    uint8_t device;
    int page;
    uint32_t address;
    uint32_t length;
};

constexpr named_registers of_sfp[]{
    {"identifier", 0xA0, 0, 0, 1}, {"connector", 0xA0, 0, 2, 1},    {"compliance", 0xA0, 0, 3, 8},
    {"options", 0xA0, 0, 64, 2},   {"diagnostics", 0xA0, 0, 92, 3}, {"measured", 0xA2, 0, 96, 10},
    {"status", 0xA2, 0, 110, 1},   {"alarms", 0xA2, 0, 112, 2},     {"warnings", 0xA2, 0, 116, 2}};
constexpr named_registers of_qsfp[]{{"identifier", 0xA0, 0, 0, 1}, {"status", 0xA0, 0, 2, 1},
                                    {"los", 0xA0, 0, 3, 1},        {"fault", 0xA0, 0, 4, 1},
                                    {"flags", 0xA0, 0, 6, 9},      {"temperature", 0xA0, 0, 22, 2},
                                    {"voltage", 0xA0, 0, 26, 2},   {"lanes", 0xA0, 0, 34, 24},
                                    {"disable", 0xA0, 0, 86, 1},   {"compliance", 0xA0, 0, 131, 8}};
constexpr named_registers of_cmis[]{{"identifier", 0xA0, 0, 0, 1},   {"state", 0xA0, 0, 3, 1},
                                    {"flags", 0xA0, 0, 9, 3},        {"temperature", 0xA0, 0, 14, 2},
                                    {"voltage", 0xA0, 0, 16, 2},     {"application", 0xA0, 0, 86, 4},
                                    {"disable", 0xA0, 0x10, 130, 1}, {"fault", 0xA0, 0x11, 135, 1},
                                    {"los", 0xA0, 0x11, 147, 1},     {"lanes", 0xA0, 0x11, 154, 48}};

std::span<const named_registers> named_registers_of(const memory &map) {
    switch (managed_by(map)) {
    case management::sfp:
        return of_sfp;
    case management::qsfp:
        return of_qsfp;
    case management::cmis:
        break;
    }
    return of_cmis;
}

std::string in_hexadecimal(uint32_t byte) {
    char text[8];
    snprintf(text, sizeof text, " %02x", byte & 0xFFU);
    return text;
}

} // namespace

std::vector<standard> standards(const memory &map) {
    std::vector<standard> found;
    for (const standard &each : known_standards) {
        if (each.of == managed_by(map) && (byte_at(map, first_device, 0, each.address) & each.mask) == each.value) {
            found.push_back(each);
        }
    }
    return found;
}

std::string connector(const memory &map) {
    const uint32_t code = managed_by(map) == management::sfp    ? byte_at(map, first_device, 0, 2)
                          : managed_by(map) == management::qsfp ? byte_at(map, first_device, 0, 130)
                                                                : byte_at(map, first_device, 0, 203);
    return name_of_code(connectors, code);
}

std::string transceiver(const memory &map) {
    std::string names;
    for (const standard &each : standards(map)) {
        names += std::string(names.empty() ? "" : ",") + each.name;
    }
    return names.empty() ? "unknown" : names;
}

std::string distance(const memory &map) {
    const optical_readings::reach reaches = optical_readings::distances(map);
    const std::pair<uint32_t, const char *> each[]{{reaches.sm, "SM"},   {reaches.om1, "OM1"},
                                                   {reaches.om2, "OM2"}, {reaches.om3, "OM3"},
                                                   {reaches.om4, "OM4"}, {reaches.copper, "copper"}};
    std::string text;
    for (const auto &[metres, cable] : each) {
        if (metres != 0) {
            text += std::string(text.empty() ? "" : ",") + std::to_string(metres) + "(" + cable + ")";
        }
    }
    return text;
}

std::string bit_rate(const memory &map) {
    const auto made_for = standards(map);
    const uint32_t said = optical_readings::mbit_per_s(map);
    const uint32_t rate = said == 0 && !made_for.empty() ? made_for[0].mbit_per_s : said;
    return std::to_string(rate) + "Mbps";
}

std::string wavelength(const memory &map) {
    const uint32_t nanometres = optical_readings::nanometres(map);
    return nanometres == 0 ? "-" : std::to_string(nanometres);
}

std::string diagnostics(const memory &map) {
    return optical_readings::measures(map) ? "YES" : "NO";
}

std::string vendor(const memory &map) {
    return text_by_kind(map, 20, 148, 129, 16);
}

std::string part_number(const memory &map) {
    return text_by_kind(map, 40, 168, 148, 16);
}

std::string serial_number(const memory &map) {
    return text_by_kind(map, 68, 196, 166, 16);
}

// Of a code that is too short for a day, what there is.
std::string date(const memory &map) {
    const std::string code = text_by_kind(map, 84, 212, 182, 8);
    return code.size() < 6 ? code : "20" + code.substr(0, 2) + "-" + code.substr(2, 2) + "-" + code.substr(4, 2);
}

std::string encoding(const memory &map) {
    const uint32_t code = optical_readings::encoding(map);
    return managed_by(map) == management::sfp ? name_of_code(sfp_encodings, code) : name_of_code(other_encodings, code);
}

std::string common_registers(const memory &map) {
    std::string text;
    for (const named_registers &each : named_registers_of(map)) {
        if (!map.contains({each.device, each.page})) {
            continue;
        }
        text += std::string("\n") + each.name + ":";
        for (uint32_t i = 0; i < each.length; ++i) {
            text += in_hexadecimal(byte_at(map, each.device, each.page, each.address + i));
        }
    }
    return text;
}

std::string dump(const memory &map) {
    std::string text;
    for (const auto &[where, bytes] : map) {
        char title[48];
        const auto &[device, page] = where;
        if (page == optics::lower) {
            snprintf(title, sizeof title, "device 0x%02x, lower half:", device);
        } else {
            snprintf(title, sizeof title, "device 0x%02x, page 0x%02x:", device, static_cast<unsigned>(page));
        }
        text += title;
        for (size_t i = 0; i < bytes.size(); ++i) {
            text += (i % 16 == 0 ? "\n " : "") + in_hexadecimal(bytes[i]);
        }
        text += "\n";
    }
    return text;
}

} // namespace kestro_sim::optical_texts
