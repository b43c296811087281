// What a description must hold so that the simulator can build the board's stored identity from it. Each register by
// itself has been checked against its family.
#include "sim/core/eeprom.h"
#include "sim/core/mac_area.h"
#include "sim/core/validate.h"

#include "sim/core/opened_libraries.h"

#include <algorithm>
#include <vector>

namespace kestro_sim {

namespace {

constexpr size_t barcode_size = 128;

pugi::xml_node require_child(const description &board, pugi::xml_node parent, const std::string &tag,
                             const std::string &name, const std::string &purpose) {
    const pugi::xml_node child = named_child(parent, name);
    if (!child) {
        board.fail(parent, tag + " '" + name + "' is missing here", "it holds " + purpose);
    }
    return child;
}

void limit_text(const description &board, pugi::xml_node entry, size_t max, const std::string &purpose) {
    const pugi::xml_node element = named_child(entry, "text");
    if (element_text(element).value_or("").size() > max) {
        board.fail(element, "element 'text' is no text of at most " + std::to_string(max) + " bytes",
                   "it holds " + purpose);
    }
}

uint32_t id_of(pugi::xml_node entry) {
    return static_cast<uint32_t>(parse_number(entry.attribute("name").value()).value_or(0));
}

void check_layout(const description &board, pugi::xml_node layout) {
    std::vector<eeprom_section> sections;
    for (const pugi::xml_node entry : layout.children("entry")) {
        const eeprom_section section = section_of(entry);
        if (section.size == 0) {
            board.fail(entry, "the section has no bytes", "give it a size");
        }
        for (const eeprom_section &other : sections) {
            if (section.offset < other.offset + other.size && other.offset < section.offset + section.size) {
                board.fail(entry, "the section lies over section " + std::to_string(other.id),
                           "sections have bytes of their own");
            }
        }
        sections.push_back(section);
    }
}

void check_labels(const description &board, pugi::xml_node module, const std::string &instance) {
    const auto elabel = find_section(board, instance, elabel_section);
    for (const pugi::xml_node entry : named_child(module, "elabel").children("entry")) {
        if (!elabel) {
            board.fail(entry, "the EEPROM layout has no section for labels", "leave the label out");
        }
        limit_text(board, entry, elabel->size, "the electronic label");
    }
    const auto barcodes = find_section(board, instance, barcode_section);
    for (const pugi::xml_node entry : named_child(module, "barcode").children("entry")) {
        if (!barcodes || barcodes->size < barcode_size) {
            board.fail(entry, "the EEPROM layout has no section for bar codes", "leave the bar code out");
        }
        if (id_of(entry) >= barcodes->size / barcode_size) {
            board.fail(entry, "the section has no room for bar code " + std::to_string(id_of(entry)),
                       "the last one is " + std::to_string(barcodes->size / barcode_size - 1));
        }
    }
}

void check_macs(const description &board, pugi::xml_node module, const std::string &instance) {
    const auto section = find_section(board, instance, mac_section);
    const auto backup = find_section(board, instance, mac_backup_section);
    size_t capacity = section ? mac_area_capacity(section->size) : 0;
    capacity = backup ? std::min(capacity, mac_area_capacity(backup->size)) : capacity;
    size_t count = 0;
    for (const pugi::xml_node entry : named_child(module, "mac").children("entry")) {
        if (++count > capacity) {
            board.fail(entry, "the EEPROM layout has room for " + std::to_string(capacity) + " MAC address types",
                       "leave this one out");
        }
    }
}

void check_sections(const description &board, pugi::xml_node module, const std::string &instance) {
    for (const pugi::xml_node entry : named_child(module, "section").children("entry")) {
        const uint32_t id = id_of(entry);
        const auto section = find_section(board, instance, id);
        if (!section) {
            board.fail(entry, "the EEPROM layout has no section " + std::to_string(id), "use one that it has");
        }
        limit_text(board, entry, section->size, "what the section starts with");
    }
}

void check_identity(const description &board, pugi::xml_node module) {
    const std::string instance = module.parent().attribute("name").value();
    const pugi::xml_node eeprom = require_child(board, module, "node", "eeprom", "the identity EEPROM");
    const pugi::xml_node entry = require_child(board, eeprom, "entry", "0", "the first identity EEPROM");
    const std::string layout = element_text(named_child(entry, "layout")).value_or("");
    if (!eeprom_layout(board, instance)) {
        board.fail(entry, "there is no EEPROM layout '" + layout + "'",
                   "name a node of module sim_eeprom_layout of the chassis, or describe it there");
    }
    check_labels(board, module, instance);
    check_macs(board, module, instance);
    check_sections(board, module, instance);
}

void check_storage(const description &board, pugi::xml_node entry) {
    const std::string name = entry.attribute("name").value();
    if (name.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_-") != std::string::npos ||
        name.starts_with("eeprom")) {
        board.fail(entry, "'" + name + "' is no name for an image",
                   "use small letters, digits, _ and -; names with eeprom in front are taken");
    }
}

void check_lacking_library(const description &board, pugi::xml_node entry) {
    const std::string name = element_text(named_child(entry, "name")).value_or("");
    std::string known;
    for (const std::string library : opened_libraries) {
        if (name == library) {
            return;
        }
        known += (known.empty() ? "" : ", ") + library;
    }
    board.fail(entry, "'" + name + "' is no library that a board may lack", "right are " + known);
}

} // namespace

void validate_devices(const description &board) {
    for (const pugi::xml_node place : board.chassis().children("place")) {
        const std::string_view name = place.attribute("name").value();
        for (const pugi::xml_node layout : board.module(name, "sim_eeprom_layout").children("node")) {
            check_layout(board, layout);
        }
        const pugi::xml_node identity = board.module(name, "sim_identity");
        if (identity) {
            check_identity(board, identity);
        } else if (name != chassis_place) {
            board.fail(place, "module 'sim_identity' of the board is missing",
                       "it holds the identity EEPROM, without which no board can be built");
        }
        for (const pugi::xml_node entry : board.node(name, "sim_storage", "image").children("entry")) {
            check_storage(board, entry);
        }
        for (const pugi::xml_node entry : board.node(name, "sim_library", "lacking").children("entry")) {
            check_lacking_library(board, entry);
        }
    }
}

} // namespace kestro_sim
