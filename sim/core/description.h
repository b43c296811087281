// The described chassis: what both the description queries and the simulated devices answer from.
//
//   <chassis name="..."> <place name="slot9"> <module name="..."> <node name="..."> <entry name="..."> <element .../>
//
// This is the merged form (chassis.h makes it from the files that people write): every board and card at its place,
// nothing included, substituted or overridden any more. Places are absolute: "chassis" for what belongs to no board,
// "slot9", "slot7/card1". An element carries a number (value) or a text (text).
#pragma once

#include "sim/core/sources.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace kestro_sim {

inline constexpr std::string_view chassis_place = "chassis";

std::string slot_place(uint32_t slot);
std::string card_place(std::string_view board, uint32_t card);

// Decimal, or hexadecimal behind 0x; a minus sign gives the two's complement.
std::optional<uint64_t> parse_number(std::string_view text);

// The files of a board: directories that are laid over one another, and what stands for ${...} in them.
struct board_files {
    std::string place;
    std::vector<std::filesystem::path> roots;
    std::map<std::string, std::string> variables;
};

class description {
  public:
    // An empty chassis, to be filled.
    description();

    // Reads the merged form; throws description_error when it cannot be read.
    explicit description(const std::filesystem::path &file);

    std::string name() const;
    pugi::xml_node chassis() const;

    // Empty handles for what is not described.
    pugi::xml_node place(std::string_view place) const;
    pugi::xml_node module(std::string_view place, std::string_view module) const;
    pugi::xml_node node(std::string_view place, std::string_view module, std::string_view node) const;
    pugi::xml_node entry(std::string_view place, std::string_view module, std::string_view node,
                         std::string_view entry) const;
    pugi::xml_node element(std::string_view place, std::string_view module, std::string_view node,
                           std::string_view entry, std::string_view element) const;

    // Throws description_error that points at where a part comes from. Once merged and stored nothing fails any more.
    [[noreturn]] void fail(pugi::xml_node where, const std::string &what, const std::string &right) const;

    // While a chassis is being made: its tree, the files it is made from, and the boards' own files.
    pugi::xml_document &document() {
        return document_;
    }
    source_set &sources() {
        return sources_;
    }
    std::vector<board_files> files;

  private:
    pugi::xml_document document_;
    source_set sources_;
};

// The child of that name, an empty handle when there is none.
pugi::xml_node named_child(pugi::xml_node parent, std::string_view name);

// The number or the text of an element; nothing when it carries the other kind.
std::optional<uint64_t> element_number(pugi::xml_node element);
std::optional<std::string> element_text(pugi::xml_node element);

// Tells stores of one chassis from those of another: its name, its places and their EEPROM layouts. Numbers of devices
// are no part of it, so that a board can be made sick or well again without losing its state.
uint64_t fingerprint(const description &chassis);

} // namespace kestro_sim
