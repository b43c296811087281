// Paths of registers: the description says which devices there are, their families which registers these have.
#include "sim/core/inventory.h"

#include "sim/core/catalogue.h"
#include "sim/core/nearest.h"
#include "sim/core/registers.h"

#include <algorithm>
#include <cstdio>
#include <set>

namespace kestro_sim {

namespace {

constexpr std::string_view module_prefix = "sim_";

std::string name_of(pugi::xml_node item) {
    return item.attribute("name").value();
}

std::string hexadecimal(uint32_t value, uint32_t width) {
    char text[16];
    snprintf(text, sizeof text, "0x%0*x", static_cast<int>(width / 4), value);
    return text;
}

std::string address_text(uint32_t address) {
    char text[16];
    snprintf(text, sizeof text, "0x%02x", address);
    return text;
}

void add_spaces(const device &which, std::vector<inventory_item> &items) {
    for (const register_space *candidate : all_spaces()) {
        const register_space *space = find_space(candidate->name, which);
        if (space != candidate) {
            continue;
        }
        const std::string base = which.instance + "/" + space->name + "/" + std::to_string(which.id) + "/";
        for (const space_register &block : space->registers) {
            for (uint32_t i = 0; i < block.count; ++i) {
                const uint32_t address = block.address + i;
                items.push_back({base + address_text(address), which, nullptr, space, address});
            }
        }
    }
}

bool is_there(board &b, const device &which, const reg &name) {
    if (name.changed_by == writer::production) {
        return false;
    }
    return name.is_text() ? b.text_value(which, name).has_value() : b.value(which, name).has_value();
}

void add_device(board &b, const device &which, const device_family &family, std::vector<inventory_item> &items) {
    const std::string base = which.instance + "/" + std::string(family.module).substr(module_prefix.size()) + "/" +
                             which.family->node + "/" + std::to_string(which.id) + "/";
    for (size_t i = 0; i < family.count; ++i) {
        const reg &name = *family.list[i];
        if (is_there(b, which, name)) {
            items.push_back({base + name.name, which, &name, nullptr, 0});
        }
    }
    add_spaces(which, items);
}

void add_module(board &b, pugi::xml_node module, std::vector<inventory_item> &items) {
    for (const pugi::xml_node node : module.children("node")) {
        const device_family *family = find_family(name_of(module), name_of(node));
        // What has names of its own is how things are built and made: there is nothing to read or set.
        if (family == nullptr || family->entries != naming::by_number) {
            continue;
        }
        for (const pugi::xml_node entry : node.children("entry")) {
            const auto id = static_cast<uint32_t>(parse_number(name_of(entry)).value_or(0));
            add_device(b, {name_of(module.parent()), family, id}, *family, items);
        }
    }
}

std::string_view top_of(std::string_view path, size_t levels) {
    size_t end = 0;
    while (levels-- > 0 && end < path.size()) {
        end = std::min(path.find('/', end == 0 ? 0 : end + 1), path.size());
    }
    return path.substr(0, end);
}

} // namespace

std::vector<inventory_item> take_inventory(board &b) {
    std::vector<inventory_item> items;
    for (const pugi::xml_node place : b.described().chassis().children("place")) {
        for (const pugi::xml_node module : place.children("module")) {
            if (name_of(module).starts_with(module_prefix)) {
                add_module(b, module, items);
            }
        }
    }
    return items;
}

bool is_at_or_below(std::string_view path, std::string_view top) {
    return top.empty() || path == top || (path.size() > top.size() && path.starts_with(top) && path[top.size()] == '/');
}

// Level by level: what the first unknown level may have meant, below what is known.
std::string nearest_path(std::span<const inventory_item> items, std::string_view path) {
    for (size_t levels = 1;; ++levels) {
        const std::string_view wanted = top_of(path, levels);
        std::set<std::string> there;
        bool is_known = false;
        for (const inventory_item &item : items) {
            if (is_at_or_below(item.path, top_of(path, levels - 1))) {
                there.insert(std::string(top_of(item.path, levels)));
                is_known = is_known || is_at_or_below(item.path, wanted);
            }
        }
        if (!is_known || wanted == path) {
            return suggestion(wanted, std::vector<std::string>(there.begin(), there.end()));
        }
    }
}

std::string plain_value(board &b, const inventory_item &item) {
    if (item.space != nullptr) {
        return hexadecimal(peek_space(b, *item.space, item.which, item.address), item.space->width);
    }
    if (item.name->is_text()) {
        return b.text_value(item.which, *item.name).value_or("");
    }
    return number_text(*item.name, b.value(item.which, *item.name).value_or(0));
}

std::string shown_value(board &b, const inventory_item &item) {
    if (item.space != nullptr) {
        return plain_value(b, item) + " (" + find_register(*item.space, item.address)->name + ")";
    }
    if (item.name->is_text()) {
        return "\"" + plain_value(b, item) + "\"";
    }
    return shown_text(*item.name, b.value(item.which, *item.name).value_or(0));
}

} // namespace kestro_sim
