// Text utilities of the self-test.
#include "selftest/text.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <strings.h>

#include "bounds/bounds.h"

char *str_trim(char *text) {
    constexpr uintptr_t debug_fill = 0xcccccccc;
    if (text == nullptr || reinterpret_cast<uintptr_t>(text) == debug_fill) {
        return nullptr;
    }
    size_t length = strlen(text);
    while (length > 0 && text[length - 1] == ' ') {
        --length;
    }
    text[length] = '\0';
    return text + strspn(text, " ");
}

const char *str_case_find(const char *haystack, const char *needle) {
    const size_t length = strlen(needle);
    if (length == 0) {
        return nullptr;
    }
    for (const char *place = haystack; *place != '\0'; ++place) {
        if (strncasecmp(place, needle, length) == 0) {
            return place;
        }
    }
    return nullptr;
}

const char *status_to_text(uint32_t query_result, uint32_t value, char *out, size_t out_size, bool as_status) {
    if (query_result != 0) {
        return "Unknown";
    }
    if (as_status) {
        strcpy_s(out, out_size, value != 0 ? "abnormal" : "normal");
        return out;
    }
    return sprintf_s(out, out_size, "0x%x", value) < 0 ? "" : out;
}

void parse_first_number(const char *text, int32_t *number) {
    constexpr const char *digits = "0123456789";
    const char *first = strpbrk(text, digits);
    if (first == nullptr) {
        *number = -1;
        return;
    }
    char run[32] = {};
    memcpy_s(run, sizeof(run), first, std::min(strspn(first, digits), sizeof(run) - 1));
    // Saturates as on the 32-bit board.
    *number = static_cast<int32_t>(std::min(strtoll(run, nullptr, 10), static_cast<long long>(INT32_MAX)));
}
