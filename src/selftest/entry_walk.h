// The walk over the board description that every check of the self-test makes: the entries of one node, in order, and
// their elements.
//
//     entry_walk walk = open_entry_walk(inst_id, "barcode", "barcode_attr");
//     if (!has_entries(walk)) {
//         return ...;                  // an optional node passes, a required one fails: the check's own line
//     }
//     while (next_entry(&walk)) {
//         uint32_t barcode_id = 0;
//         if (read_element(walk, "barcode_id", &barcode_id) != 0) {
//             continue;                // or the check's own line, where the key element is required
//         }
//         ...
//     }
//
// Checks that only ask whether a feature is described open a walk and look at has_entries.
#pragma once

#include <cstdint>

struct entry_walk {
    uint32_t inst_id;
    const char *module;
    const char *node;
    uint32_t ret;   // of the query for the number of entries
    uint32_t count; // of entries; 0 when the query failed
    uint32_t next;
    char entry[32]; // name of the entry the walk stands on
};

entry_walk open_entry_walk(uint32_t inst_id, const char *module, const char *node);

inline bool has_entries(const entry_walk &walk) {
    return walk.count != 0;
}

// Moves on to the next entry; false behind the last one.
bool next_entry(entry_walk *walk);

// One element of the entry the walk stands on; the query's result code.
uint32_t read_element(const entry_walk &walk, const char *element, uint32_t *value);

// The element of the entry with the same name in another node of the module.
uint32_t read_element_of_node(const entry_walk &walk, const char *node, const char *element, uint32_t *value);
