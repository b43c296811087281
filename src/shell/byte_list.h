// Bytes on the command line: "0x12,0x34,56,67", each in hexadecimal with or without 0x, cut to eight bits.
#pragma once

#include <cstdint>

// What a module prints around them: "\r\n<header>:<text>\r\n", and for each byte "<item>[<index>]<value>=[0x..]\r\n".
struct byte_list_words {
    const char *header;
    const char *item;
    const char *value;
};

// Takes exactly length bytes and prints each; what the text holds beyond them is ignored, and what it lacks is 0. Its
// last item is printed a second time when bytes are missing behind it.
void parse_byte_list(const char *text, uint32_t length, uint8_t *buffer, const byte_list_words &words);
