// The way through the levels of the described chassis.
#include "sim/core/description.h"

#include <charconv>

namespace kestro_sim {

namespace {

// FNV-1a: any stable mixing serves, the value only tells layouts apart.
class mixer {
  public:
    void add(std::string_view text) {
        for (const char c : text) {
            add_byte(static_cast<unsigned char>(c));
        }
        add_byte(0);
    }
    uint64_t value() const {
        return value_;
    }

  private:
    void add_byte(unsigned char byte) {
        value_ = (value_ ^ byte) * 0x100000001B3U;
    }
    uint64_t value_ = 0xCBF29CE484222325U;
};

void mix_tree(mixer &into, pugi::xml_node parent) {
    for (const pugi::xml_node child : parent.children()) {
        into.add(child.attribute("name").value());
        into.add(child.attribute("value").value());
        mix_tree(into, child);
    }
}

} // namespace

std::optional<uint64_t> parse_number(std::string_view text) {
    const bool negative = text.starts_with('-');
    if (negative) {
        text.remove_prefix(1);
    }
    int base = 10;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        text.remove_prefix(2);
        base = 16;
    }
    uint64_t number = 0;
    const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (text.empty() || problem != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return negative ? 0 - number : number;
}

std::string slot_place(uint32_t slot) {
    return "slot" + std::to_string(slot);
}

std::string card_place(std::string_view board, uint32_t card) {
    return std::string(board) + "/card" + std::to_string(card);
}

description::description() {
    document_.append_child("chassis");
}

description::description(const std::filesystem::path &file) {
    const pugi::xml_parse_result result =
        document_.load_file(file.c_str(), pugi::parse_minimal | pugi::parse_escapes, pugi::encoding_utf8);
    if (!result) {
        throw description_error(file.string() + ": is no merged chassis (" + result.description() +
                                "); start through kestro_sim");
    }
}

std::string description::name() const {
    return chassis().attribute("name").value();
}

pugi::xml_node description::chassis() const {
    return document_.document_element();
}

pugi::xml_node description::place(std::string_view place) const {
    return named_child(chassis(), place);
}

pugi::xml_node description::module(std::string_view place, std::string_view module) const {
    return named_child(this->place(place), module);
}

pugi::xml_node description::node(std::string_view place, std::string_view module, std::string_view node) const {
    return named_child(this->module(place, module), node);
}

pugi::xml_node description::entry(std::string_view place, std::string_view module, std::string_view node,
                                  std::string_view entry) const {
    return named_child(this->node(place, module, node), entry);
}

pugi::xml_node description::element(std::string_view place, std::string_view module, std::string_view node,
                                    std::string_view entry, std::string_view element) const {
    return named_child(this->entry(place, module, node, entry), element);
}

void description::fail(pugi::xml_node where, const std::string &what, const std::string &right) const {
    sources_.fail(where, what, right);
}

pugi::xml_node named_child(pugi::xml_node parent, std::string_view name) {
    for (const pugi::xml_node child : parent.children()) {
        if (name == child.attribute("name").value()) {
            return child;
        }
    }
    return {};
}

std::optional<uint64_t> element_number(pugi::xml_node element) {
    const pugi::xml_attribute value = element.attribute("value");
    return value ? parse_number(value.value()) : std::nullopt;
}

std::optional<std::string> element_text(pugi::xml_node element) {
    const pugi::xml_attribute text = element.attribute("text");
    return text ? std::optional<std::string>(text.value()) : std::nullopt;
}

uint64_t fingerprint(const description &chassis) {
    mixer mixed;
    mixed.add(chassis.name());
    for (const pugi::xml_node place : chassis.chassis().children("place")) {
        const std::string_view name = place.attribute("name").value();
        mixed.add(name);
        mixed.add(chassis.element(name, "sim_identity", "eeprom", "0", "layout").attribute("text").value());
        for (const char *storage : {"sim_eeprom_layout", "sim_storage"}) {
            mix_tree(mixed, chassis.module(name, storage));
        }
    }
    return mixed.value();
}

} // namespace kestro_sim
