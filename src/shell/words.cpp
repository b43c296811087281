// Words of the command line as values.
#include "shell/words.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "drv_types.h"

uint32_t word_to_u32(const char *word, int base) {
    const bool negative = word[strspn(word, " \t\n\v\f\r")] == '-';
    const unsigned long long value = strtoull(word, nullptr, base);
    const unsigned long long magnitude = negative ? 0 - value : value;
    if (magnitude > UINT32_MAX) {
        return UINT32_MAX;
    }
    return static_cast<uint32_t>(negative ? 0 - magnitude : magnitude);
}

uint64_t word_to_u64(const char *word) {
    return strtoull(word, nullptr, 0);
}

uint32_t inst_or_self(int count, char **args) {
    return count >= 1 ? word_to_u32(args[0]) : DRV_INST_SELF;
}

char **after_optional_inst(int count, char **args, int inputs, uint32_t *inst_id) {
    *inst_id = DRV_INST_SELF;
    if (count < inputs) {
        return nullptr;
    }
    if (count == inputs) {
        return args;
    }
    *inst_id = word_to_u32(args[0]);
    return args + 1;
}

namespace {

// Words still to be converted.
struct word_queue {
    char **next;
    char **end;
};

void take_u32(word_queue *words, uint32_t *slot) {
    if (slot != nullptr && words->next < words->end) {
        *slot = word_to_u32(*words->next++);
    }
}

void take_u64(word_queue *words, uint64_t *slot) {
    if (slot != nullptr && words->next < words->end) {
        *slot = word_to_u64(*words->next++);
    }
}

// Reports too few words with an empty queue. There is no upper bound: surplus words are ignored, but with them the
// first word is no instance any more.
word_queue open_words(int expected, int count, char **args, uint32_t *inst_id) {
    const int low = (expected < 1 ? 1 : expected) - 1;
    if (static_cast<unsigned>(low) > static_cast<unsigned>(count)) {
        printf("input error : in_num : %d over [%d-%d] .\n", count, low, expected);
        return {args, args};
    }
    word_queue words = {args, args + count};
    if (count == expected) {
        take_u32(&words, inst_id);
    }
    return words;
}

} // namespace

void check_args(int expected, int count, char **args, uint32_t *inst_id, uint32_t *a, uint32_t *b) {
    check_args(expected, count, args, inst_id, a, b, nullptr);
}

void check_args(int expected, int count, char **args, uint32_t *inst_id, uint32_t *a, uint32_t *b, uint32_t *c) {
    word_queue words = open_words(expected, count, args, inst_id);
    take_u32(&words, a);
    take_u32(&words, b);
    take_u32(&words, c);
}

void check_args_u64(int expected, int count, char **args, uint32_t *inst_id, uint32_t *type, uint64_t *a, uint64_t *b) {
    word_queue words = open_words(expected, count, args, inst_id);
    take_u32(&words, type);
    take_u64(&words, a);
    take_u64(&words, b);
}
