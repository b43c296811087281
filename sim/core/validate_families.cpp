// Descriptions against the device families: every module, node and element of the simulated devices is one that a
// family has, every value one that its register takes. A misspelt name would leave a device out without a word.
#include "sim/core/catalogue.h"
#include "sim/core/nearest.h"
#include "sim/core/registers.h"
#include "sim/core/validate.h"

#include <algorithm>

namespace kestro_sim {

namespace {

std::string name_of(pugi::xml_node item) {
    return item.attribute("name").value();
}

std::string quoted(const std::string &text) {
    return "'" + text + "'";
}

std::vector<std::string> module_names() {
    std::vector<std::string> names;
    for (const device_family *family : all_families()) {
        if (std::find(names.begin(), names.end(), family->module) == names.end()) {
            names.emplace_back(family->module);
        }
    }
    return names;
}

std::vector<std::string> node_names(const std::string &module) {
    std::vector<std::string> names;
    for (const device_family *family : all_families()) {
        if (module == family->module) {
            names.emplace_back(family->node);
        }
    }
    return names;
}

std::vector<std::string> register_names(const device_family &family) {
    std::vector<std::string> names;
    for (size_t i = 0; i < family.count; ++i) {
        names.emplace_back((*family.list[i]).name);
    }
    return names;
}

// "element 'x' is no ...; it holds ..." : what would be right is the value, and what it is good for.
void check_value(const description &board, pugi::xml_node element, const reg &which) {
    const auto text = element_text(element);
    const auto number = element_number(element);
    const bool is_right =
        which.is_text() ? text && text->size() <= which.text_max : number && is_in_range(which, *number);
    if (!is_right) {
        board.fail(element, "element " + quoted(which.name) + " is not " + values_of(which),
                   std::string("it holds ") + which.meaning);
    }
}

void check_id(const description &board, pugi::xml_node entry, const device_family &family) {
    if (family.entries == naming::by_name) {
        return;
    }
    const std::string name = name_of(entry);
    const auto id = parse_number(name);
    if (!id || *id > family.id_max || name != std::to_string(*id)) {
        const std::string most = family.id_max == UINT32_MAX ? "" : " up to " + std::to_string(family.id_max);
        board.fail(entry, "entry " + quoted(name) + " is no number" + most,
                   "entries of devices are named by their plain number");
    }
}

void check_entry(const description &board, pugi::xml_node entry, const device_family &family) {
    check_id(board, entry, family);
    for (const pugi::xml_node element : entry.children("element")) {
        const reg *which = family.find(name_of(element));
        if (which == nullptr) {
            board.fail(element, "unknown element " + quoted(name_of(element)) + " of " + family.what,
                       suggestion(name_of(element), register_names(family)));
        }
        check_value(board, element, *which);
    }
    for (size_t i = 0; i < family.count; ++i) {
        const reg &which = *family.list[i];
        if (which.needed == need::required && !named_child(entry, which.name)) {
            board.fail(entry, "element " + quoted(which.name) + " is missing here",
                       std::string("it holds ") + which.meaning);
        }
    }
}

void check_module(const description &board, pugi::xml_node module) {
    const std::vector<std::string> nodes = node_names(name_of(module));
    if (nodes.empty()) {
        board.fail(module, "unknown module " + quoted(name_of(module)), suggestion(name_of(module), module_names()));
    }
    for (const pugi::xml_node node : module.children("node")) {
        const device_family *family = find_family(name_of(module), name_of(node));
        if (family == nullptr) {
            board.fail(node, "unknown node " + quoted(name_of(node)) + " of " + name_of(module),
                       suggestion(name_of(node), nodes));
        }
        for (const pugi::xml_node entry : node.children("entry")) {
            check_entry(board, entry, *family);
        }
    }
}

} // namespace

void validate_families(const description &board) {
    for (const pugi::xml_node place : board.chassis().children("place")) {
        for (const pugi::xml_node module : place.children("module")) {
            if (name_of(module).starts_with("sim_")) {
                check_module(board, module);
            }
        }
    }
}

} // namespace kestro_sim
