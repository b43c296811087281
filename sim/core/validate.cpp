// The form of the merged chassis: four levels below each place, each child named once among its siblings.
#include "sim/core/validate.h"
#include "sim/core/store.h"

#include <algorithm>
#include <array>
#include <set>
#include <vector>

namespace kestro_sim {

namespace {

constexpr std::array<const char *, 6> level_tags{"chassis", "place", "module", "node", "entry", "element"};
constexpr size_t module_level = 2;
constexpr size_t node_level = 3;
constexpr size_t entry_level = 4;
constexpr size_t element_level = 5;

std::string in_quotes(std::string_view text) {
    return "'" + std::string(text) + "'";
}

bool all_digits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::vector<std::string_view> attributes_of(size_t level) {
    switch (level) {
    case element_level:
        return {"name", "value", "text"};
    default:
        return {"name"};
    }
}

void check_attributes(const description &board, pugi::xml_node item, size_t level) {
    const std::vector<std::string_view> known = attributes_of(level);
    for (const pugi::xml_attribute attribute : item.attributes()) {
        if (std::find(known.begin(), known.end(), attribute.name()) == known.end()) {
            std::string right;
            for (const std::string_view name : known) {
                right += (right.empty() ? "" : ", ") + std::string(name);
            }
            board.fail(item, "unknown attribute " + in_quotes(attribute.name()),
                       std::string("a ") + level_tags[level] + " has: " + right);
        }
    }
}

void check_name(const description &board, pugi::xml_node item, size_t level) {
    const std::string_view name = item.attribute("name").value();
    if (name.empty()) {
        board.fail(item, std::string("a ") + level_tags[level] + " without a name", "give it name=\"...\"");
    }
    // A slash parts the levels in the store, a blank never gets through a command line.
    if (name.find_first_of("/ \t\r\n") != std::string_view::npos) {
        board.fail(item, "name " + in_quotes(name) + " holds a blank or a slash", "use letters, digits, _, - and @");
    }
}

void check_value(const description &board, pugi::xml_node element) {
    const pugi::xml_attribute value = element.attribute("value");
    const pugi::xml_attribute text = element.attribute("text");
    const std::string name = in_quotes(element.attribute("name").value());
    if (value && text) {
        board.fail(element, "element " + name + " has both a value and a text", "keep one of them");
    }
    if (!value && !text) {
        board.fail(element, "element " + name + " has no value", "give it value=\"a number\" or text=\"...\"");
    }
    if (value && !element_number(element)) {
        board.fail(element, "value " + in_quotes(value.value()) + " of element " + name + " is no number",
                   "write a decimal or 0x number of at most 64 bits, or use text=\"...\"");
    }
}

// The store knows a device register by its whole path.
void check_path_length(const description &board, pugi::xml_node element) {
    size_t length = std::string_view("slot65535/card255").size();
    pugi::xml_node level = element;
    for (size_t i = element_level; i >= module_level; --i) {
        length += 1 + std::string_view(level.attribute("name").value()).size();
        level = level.parent();
    }
    if (length > cell_key_max) {
        board.fail(element, "the names down to this element are " + std::to_string(length) + " characters long",
                   "keep them within " + std::to_string(cell_key_max));
    }
}

// Entries "entry0", "entry1", ... and numbered nodes are walked by number: a gap would hide what follows it.
void check_numbering(const description &board, pugi::xml_node parent, std::string_view prefix) {
    unsigned next = 0;
    for (const pugi::xml_node child : parent.children()) {
        const std::string_view name = child.attribute("name").value();
        if (!name.starts_with(prefix) || !all_digits(name.substr(prefix.size()))) {
            continue;
        }
        const std::string expected = std::string(prefix) + std::to_string(next++);
        if (name != expected) {
            board.fail(child, in_quotes(name) + " is out of sequence", "here " + in_quotes(expected) + " is due");
        }
    }
}

void check_sequence(const description &board, pugi::xml_node parent, size_t child_level) {
    if (child_level == entry_level) {
        check_numbering(board, parent, "entry");
        check_numbering(board, parent, "hwirq_cfg");
    } else if (child_level == node_level) {
        check_numbering(board, parent, parent.attribute("name").value() + std::string("@"));
    }
}

void check_item(const description &board, pugi::xml_node item, size_t level);

void check_children(const description &board, pugi::xml_node parent, size_t child_level) {
    std::set<std::string> seen;
    for (const pugi::xml_node child : parent.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            board.fail(child, "text between the tags", "values stand in the attributes value and text of an element");
        }
        if (child_level > element_level) {
            board.fail(child, "something below an element", "an element has only name and value or text");
        }
        check_item(board, child, child_level);
        if (!seen.insert(std::string(child.attribute("name").value())).second) {
            board.fail(child, in_quotes(child.attribute("name").value()) + " is there twice",
                       "names differ among siblings");
        }
    }
    check_sequence(board, parent, child_level);
}

void check_item(const description &board, pugi::xml_node item, size_t level) {
    if (std::string_view(item.name()) != level_tags[level]) {
        board.fail(item, std::string("<") + item.name() + "> stands here",
                   std::string("here <") + level_tags[level] + "> is due");
    }
    check_attributes(board, item, level);
    check_name(board, item, level);
    if (level == element_level) {
        check_value(board, item);
        check_path_length(board, item);
    }
    check_children(board, item, level + 1);
}

} // namespace

void validate_form(const description &board) {
    for (const pugi::xml_node place : board.chassis().children()) {
        check_children(board, place, module_level);
    }
}

} // namespace kestro_sim
