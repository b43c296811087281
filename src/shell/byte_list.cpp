#include "shell/byte_list.h"

#include <cstdio>
#include <cstring>

#include "shell/words.h"

namespace {

void take_byte(const char *at, uint32_t index, uint8_t *buffer, const byte_list_words &words) {
    buffer[index] = static_cast<uint8_t>(word_to_u32(at, 16));
    printf("%s[%u]%s=[0x%x]\r\n", words.item, index, words.value, buffer[index]);
}

} // namespace

void parse_byte_list(const char *text, uint32_t length, uint8_t *buffer, const byte_list_words &words) {
    printf("\r\n%s:%s\r\n", words.header, text);
    if (length == 0) {
        return;
    }
    memset(buffer, 0, length);
    uint32_t index = 0;
    for (; index < length - 1; ++index) {
        take_byte(text, index, buffer, words);
        const char *comma = strchr(text, ',');
        if (comma == nullptr) {
            break;
        }
        text = comma + 1;
    }
    take_byte(text, index, buffer, words);
}
