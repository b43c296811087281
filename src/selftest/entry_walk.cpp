// The walk over the board description.
#include "selftest/entry_walk.h"

#include "bounds/bounds.h"
#include "nb_ctl/board_xml.h"

entry_walk open_entry_walk(uint32_t inst_id, const char *module, const char *node) {
    entry_walk walk{};
    walk.inst_id = inst_id;
    walk.module = module;
    walk.node = node;
    walk.ret = xml_get_entry_num(inst_id, module, node, &walk.count);
    if (walk.ret != 0) {
        walk.count = 0;
    }
    return walk;
}

bool next_entry(entry_walk *walk) {
    while (walk->next < walk->count) {
        if (sprintf_s(walk->entry, sizeof(walk->entry), "%s%u", "entry", walk->next++) > 0) {
            return true;
        }
    }
    return false;
}

uint32_t read_element(const entry_walk &walk, const char *element, uint32_t *value) {
    return read_element_of_node(walk, walk.node, element, value);
}

uint32_t read_element_of_node(const entry_walk &walk, const char *node, const char *element, uint32_t *value) {
    return xml_get_element_value_u32(walk.inst_id, walk.module, node, walk.entry, element, value);
}
