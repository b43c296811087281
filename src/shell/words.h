// Words of the command line as values, and the ways in which sub-commands take them.
#pragma once

#include <cstdint>

// Automatic base: "0x" hexadecimal, a leading "0" octal, else decimal; a word that is no number is 0. The value is what
// the 32-bit board makes of the word, on a 64-bit desk too: beyond 32 bits it is 0xFFFFFFFF. A base that is given holds
// for the word, whatever it begins with.
uint32_t word_to_u32(const char *word, int base = 0);
uint64_t word_to_u64(const char *word);

// The instance of a sub-command that takes nothing else: the first word, or the board itself when there is none.
uint32_t inst_or_self(int count, char **args);

// For sub-commands of so many inputs that may be led by an instance: with exactly that many words the instance is the
// board itself, with more the first word is the instance. Gives the first input word, or null when words are missing.
char **after_optional_inst(int count, char **args, int inputs, uint32_t *inst_id);

// The argument check of sub-commands whose full form has `expected` words, an optional leading instance among them.
// Slots that are not wanted are null; slots without a word keep their value. Too few words are reported, and the
// sub-command goes on all the same.
void check_args(int expected, int count, char **args, uint32_t *inst_id, uint32_t *a, uint32_t *b);

// The same with a third value.
void check_args(int expected, int count, char **args, uint32_t *inst_id, uint32_t *a, uint32_t *b, uint32_t *c);

// The same with a type behind the instance and then two 64-bit values, as MAC addresses need them.
void check_args_u64(int expected, int count, char **args, uint32_t *inst_id, uint32_t *type, uint64_t *a, uint64_t *b);
