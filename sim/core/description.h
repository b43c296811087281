// A board description: the XML file that both the description queries and the simulated devices answer from.
//
//   <board name="..."> <module name="..."> <node name="..."> <entry name="..."> <element name="..." value="1"/>
//
// A module belongs to the board itself, or to the card that its attribute instance names ("slot@5", "card@1").
// An element carries a number (value) or a text (text).
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <pugixml.hpp>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kestro_sim {

inline constexpr std::string_view self_instance = "self";

// What is wrong with a description: "file:line: what; what would be right".
struct description_error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Decimal, or hexadecimal behind 0x; a minus sign gives the two's complement.
std::optional<uint64_t> parse_number(std::string_view text);

class description {
  public:
    // Reads the file; throws description_error when it cannot be read or is no well-formed XML.
    explicit description(const std::filesystem::path &file);

    const std::filesystem::path &file() const {
        return file_;
    }
    std::string name() const;
    pugi::xml_node board() const;

    // Empty handles for what is not described.
    pugi::xml_node module(std::string_view instance, std::string_view module) const;
    pugi::xml_node node(std::string_view instance, std::string_view module, std::string_view node) const;
    pugi::xml_node entry(std::string_view instance, std::string_view module, std::string_view node,
                         std::string_view entry) const;
    pugi::xml_node element(std::string_view instance, std::string_view module, std::string_view node,
                           std::string_view entry, std::string_view element) const;

    // Throws description_error that points at a place in the file.
    [[noreturn]] void fail(pugi::xml_node where, const std::string &what, const std::string &right) const;

  private:
    [[noreturn]] void fail_at(size_t offset, const std::string &what, const std::string &right) const;

    std::filesystem::path file_;
    std::string content_;
    pugi::xml_document document_;
};

// The child of that name, an empty handle when there is none.
pugi::xml_node named_child(pugi::xml_node parent, std::string_view name);

// The number or the text of an element; nothing when it carries the other kind.
std::optional<uint64_t> element_number(pugi::xml_node element);
std::optional<std::string> element_text(pugi::xml_node element);

// Tells stores of one board from those of another: the board's name, its instances and their EEPROM layouts. Numbers
// of devices are no part of it, so that a board can be made sick or well again without losing its state.
uint64_t fingerprint(const description &board);

} // namespace kestro_sim
