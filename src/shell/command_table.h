// Command tables: fixed arrays of command entries, one per level of the command line.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

// Receives the words after the command's own name and how many there are; returns 0 for success.
using command_handler = int (*)(int count, char **args);

// One slot of a table. A null handler marks the slot as free; name and help are heap copies owned by the table.
struct command_entry {
    char *name;
    command_handler handler;
    char *help;
};

constexpr size_t command_slots = 128;

static_assert(sizeof(command_entry) == 3 * sizeof(void *), "an entry is three machine words");
static_assert(sizeof(void *) != 4 || command_slots * sizeof(command_entry) == 1536, "the board's table is 1536 bytes");

using command_table = std::span<command_entry>;

// What a module registers: one row per sub-command, in the order of the usage listing.
struct command_row {
    const char *name;
    command_handler handler;
    const char *help;
};

// A table of free slots on the heap; empty when memory is out. Freed with free_command_table.
command_table new_command_table(size_t slots = command_slots);
void free_command_table(command_table table);

// Stores copies of name and help in the first free slot. Prints what is wrong and gives -1 when a word is missing, the
// table is full or memory is out.
int register_command(const char *name, command_handler handler, const char *help, command_table table);

// Registers every row, whatever became of those before; the results are combined with bitwise OR.
int register_rows(std::span<const command_row> rows, command_table table);

// The first entry of that name, compared byte by byte; null when there is none.
const command_entry *find_command(const char *name, command_table table);

// Whether a handler is known to be missing when compiling. Under the sanitizers the compiler holds the address of a
// function of another file for unknown, and will not compare it.
consteval bool is_missing(command_handler handler) {
    return __builtin_constant_p(handler == nullptr) && handler == nullptr;
}

// Compile-time check of a module's rows: complete, no name twice, no more than a table holds.
template <size_t N> consteval bool rows_are_sound(const std::array<command_row, N> &rows) {
    for (size_t i = 0; i < N; ++i) {
        if (rows[i].name == nullptr || is_missing(rows[i].handler) || rows[i].help == nullptr) {
            return false;
        }
        for (size_t j = 0; j < i; ++j) {
            if (std::string_view(rows[i].name) == rows[j].name) {
                return false;
            }
        }
    }
    return N <= command_slots;
}
