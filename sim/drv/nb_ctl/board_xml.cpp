// The board description, asked by names. Cards have modules of their own.
#include "nb_ctl/board_xml.h"

#include "sim/drv/driver.h"

#include <limits>

using namespace kestro_sim;

namespace {

pugi::xml_node found(pugi::xml_node item) {
    refuse_if(!item, error::not_described);
    return item;
}

uint32_t count_children(pugi::xml_node parent) {
    uint32_t count = 0;
    for (auto child = parent.first_child(); child; child = child.next_sibling()) {
        ++count;
    }
    return count;
}

bool is_numbered(std::string_view name, std::string_view base) {
    const size_t digits = base.size() + 1;
    return name.size() > digits && name.starts_with(base) && name[base.size()] == '@' &&
           name.find_first_not_of("0123456789", digits) == std::string_view::npos;
}

uint64_t number_of(board &b, uint32_t inst_id, const char *module, const char *node, const char *entry,
                   const char *element) {
    refuse_null(module, node, entry, element);
    const auto item = found(b.described().element(b.instance(inst_id), module, node, entry, element));
    const auto number = element_number(item);
    refuse_if(!number, error::bad_value);
    return *number;
}

// 32 bits hold a number, or the two's complement of a negative one.
bool fits_u32(uint64_t number) {
    return number <= std::numeric_limits<uint32_t>::max() || number >= uint64_t{0} - 0x80000000U;
}

} // namespace

uint32_t xml_load(uint32_t inst_id) {
    return operate([&](board &b) { b.instance(inst_id); });
}

uint32_t xml_unload(uint32_t inst_id) {
    return operate([&](board &b) {
        b.instance(inst_id);
        b.forget_description();
    });
}

uint32_t xml_get_entry_num(uint32_t inst_id, const char *module, const char *node, uint32_t *count) {
    return operate([&](board &b) {
        refuse_null(module, node, count);
        *count = count_children(found(b.described().node(b.instance(inst_id), module, node)));
    });
}

uint32_t xml_get_node_num(uint32_t inst_id, const char *module, uint32_t *count) {
    return operate([&](board &b) {
        refuse_null(module, count);
        uint32_t numbered = 0;
        for (const pugi::xml_node node : found(b.described().module(b.instance(inst_id), module)).children()) {
            numbered += is_numbered(node.attribute("name").value(), module) ? 1 : 0;
        }
        *count = numbered;
    });
}

uint32_t xml_get_specified_node_num(uint32_t inst_id, const char *module, const char *node, uint32_t *count) {
    return operate([&](board &b) {
        refuse_null(module, node, count);
        uint32_t matching = 0;
        for (const pugi::xml_node child : found(b.described().module(b.instance(inst_id), module)).children()) {
            const std::string_view name = child.attribute("name").value();
            matching += name == node || is_numbered(name, node) ? 1 : 0;
        }
        *count = matching;
    });
}

uint32_t xml_get_element_string(uint32_t inst_id, const char *module, const char *node, const char *entry,
                                const char *element, char *text, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(module, node, entry, element, text);
        const auto item = found(b.described().element(b.instance(inst_id), module, node, entry, element));
        write_text(text, size, element_text(item).value_or(item.attribute("value").value()));
    });
}

uint32_t xml_get_element_value_u32(uint32_t inst_id, const char *module, const char *node, const char *entry,
                                   const char *element, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        const uint64_t number = number_of(b, inst_id, module, node, entry, element);
        refuse_if(!fits_u32(number), error::bad_value);
        *value = static_cast<uint32_t>(number);
    });
}

uint32_t xml_get_element_value_u64(uint32_t inst_id, const char *module, const char *node, const char *entry,
                                   const char *element, uint64_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = number_of(b, inst_id, module, node, entry, element);
    });
}

uint32_t xml_is_module_exist(uint32_t inst_id, const char *module, uint32_t *flag) {
    return operate([&](board &b) {
        refuse_null(module, flag);
        *flag = b.described().module(b.instance(inst_id), module) ? 1 : 0;
    });
}

uint32_t xml_is_node_exist(uint32_t inst_id, const char *module, const char *node, uint32_t *flag) {
    return operate([&](board &b) {
        refuse_null(module, node, flag);
        *flag = b.described().node(b.instance(inst_id), module, node) ? 1 : 0;
    });
}

uint32_t xml_is_entry_exist(uint32_t inst_id, const char *module, const char *node, const char *entry, uint32_t *flag) {
    return operate([&](board &b) {
        refuse_null(module, node, entry, flag);
        *flag = b.described().entry(b.instance(inst_id), module, node, entry) ? 1 : 0;
    });
}

uint32_t xml_is_element_exist(uint32_t inst_id, const char *module, const char *node, const char *entry,
                              const char *element, uint32_t *flag) {
    return operate([&](board &b) {
        refuse_null(module, node, entry, element, flag);
        *flag = b.described().element(b.instance(inst_id), module, node, entry, element) ? 1 : 0;
    });
}
