// Command tables: allocation, registration and lookup.
#include "shell/command_table.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

command_table new_command_table(size_t slots) {
    auto *entries = static_cast<command_entry *>(calloc(slots, sizeof(command_entry)));
    return entries == nullptr ? command_table() : command_table(entries, slots);
}

void free_command_table(command_table table) {
    for (const command_entry &entry : table) {
        free(entry.name);
        free(entry.help);
    }
    free(table.data());
}

namespace {

command_entry *first_free_slot(command_table table) {
    for (command_entry &entry : table) {
        if (entry.handler == nullptr) {
            return &entry;
        }
    }
    return nullptr;
}

} // namespace

int register_command(const char *name, command_handler handler, const char *help, command_table table) {
    if (name == nullptr || handler == nullptr || help == nullptr) {
        puts("kestro_test: illegal param");
        return -1;
    }
    command_entry *slot = first_free_slot(table);
    if (slot == nullptr) {
        puts("kestro_test: cmd full");
        return -1;
    }
    // The handler comes first and stays when a copy fails: the slot is then taken, but no word leads to it.
    slot->handler = handler;
    slot->name = strdup(name);
    if (slot->name == nullptr) {
        puts("kestro_test: strdup failed");
        return -1;
    }
    slot->help = strdup(help);
    if (slot->help == nullptr) {
        puts("kestro_test: strdup failed");
        free(slot->name);
        slot->name = nullptr;
        return -1;
    }
    return 0;
}

int register_rows(std::span<const command_row> rows, command_table table) {
    int result = 0;
    for (const command_row &row : rows) {
        result |= register_command(row.name, row.handler, row.help, table);
    }
    return result;
}

const command_entry *find_command(const char *name, command_table table) {
    for (const command_entry &entry : table) {
        if (entry.handler != nullptr && entry.name != nullptr && strcmp(entry.name, name) == 0) {
            return &entry;
        }
    }
    return nullptr;
}
