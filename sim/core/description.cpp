// Reading of board descriptions, and the way through their four levels.
#include "sim/core/description.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>
#include <iterator>

namespace kestro_sim {

namespace {

std::string read_all(const std::filesystem::path &file) {
    std::ifstream stream(file, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (!stream || std::filesystem::is_directory(file)) {
        throw description_error(file.string() + ": cannot be read as a board description (" + std::strerror(errno) +
                                "); give the name of a board or the path of its XML file");
    }
    return content;
}

std::string_view instance_of(pugi::xml_node module) {
    const pugi::xml_attribute instance = module.attribute("instance");
    return instance ? std::string_view(instance.value()) : self_instance;
}

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

description::description(const std::filesystem::path &file) : file_(file), content_(read_all(file)) {
    const pugi::xml_parse_result result =
        document_.load_buffer(content_.data(), content_.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!result) {
        fail_at(static_cast<size_t>(std::max<ptrdiff_t>(result.offset, 0)),
                std::string("not well-formed XML: ") + result.description(),
                "a <board> of <module>, <node>, <entry> and <element>");
    }
}

std::string description::name() const {
    return board().attribute("name").value();
}

pugi::xml_node description::board() const {
    return document_.document_element();
}

pugi::xml_node description::module(std::string_view instance, std::string_view module) const {
    for (const pugi::xml_node child : board().children("module")) {
        if (module == child.attribute("name").value() && instance == instance_of(child)) {
            return child;
        }
    }
    return {};
}

pugi::xml_node description::node(std::string_view instance, std::string_view module, std::string_view node) const {
    return named_child(this->module(instance, module), node);
}

pugi::xml_node description::entry(std::string_view instance, std::string_view module, std::string_view node,
                                  std::string_view entry) const {
    return named_child(this->node(instance, module, node), entry);
}

pugi::xml_node description::element(std::string_view instance, std::string_view module, std::string_view node,
                                    std::string_view entry, std::string_view element) const {
    return named_child(this->entry(instance, module, node, entry), element);
}

void description::fail(pugi::xml_node where, const std::string &what, const std::string &right) const {
    fail_at(static_cast<size_t>(std::max<ptrdiff_t>(where.offset_debug(), 0)), what, right);
}

void description::fail_at(size_t offset, const std::string &what, const std::string &right) const {
    const auto begin = content_.begin();
    const auto lines = std::count(begin, begin + static_cast<ptrdiff_t>(std::min(offset, content_.size())), '\n');
    throw description_error(file_.string() + ":" + std::to_string(lines + 1) + ": " + what + "; " + right);
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

uint64_t fingerprint(const description &board) {
    mixer mixed;
    mixed.add(board.name());
    for (const pugi::xml_node module : board.board().children("module")) {
        const std::string_view name = module.attribute("name").value();
        if (name == "sim_eeprom_layout" || name == "sim_storage") {
            mix_tree(mixed, module);
        } else if (name == "sim_identity") {
            const std::string_view instance = instance_of(module);
            mixed.add(instance);
            mixed.add(board.element(instance, name, "eeprom", "0", "layout").attribute("text").value());
        }
    }
    return mixed.value();
}

} // namespace kestro_sim
