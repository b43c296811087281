// A row is "0x00000010~0000001f: ", sixteen cells, two blanks, sixteen characters.
#include "modules/env_test/hex_dump.h"

#include <cstdio>

namespace {

constexpr uint32_t row_bytes = 16;

// Whatever the locale, the console gets plain ASCII.
char shown(uint8_t byte) {
    return byte >= ' ' && byte <= '~' ? static_cast<char>(byte) : '.';
}

// Positions count from the start of the first row: the data are those from lead up to end.
struct dumped_data {
    const uint8_t *bytes;
    uint64_t lead;
    uint64_t end;
};

void print_row(uint32_t address, uint64_t position, const dumped_data &data) {
    char text[row_bytes + 1] = {};
    printf("0x%08x~%08x: ", address, address + row_bytes - 1);
    for (uint32_t i = 0; i < row_bytes; ++i, ++position) {
        if (position < data.lead || position >= data.end) {
            printf("-- ");
            text[i] = '-';
        } else {
            const uint8_t byte = data.bytes[position - data.lead];
            printf("%02x ", byte);
            text[i] = shown(byte);
        }
    }
    printf("  %s\n", text);
}

} // namespace

void print_hex_dump(uint64_t offset, const uint8_t *data, uint32_t length) {
    const uint64_t lead = offset % row_bytes;
    const dumped_data dumped{data, lead, lead + length};
    for (uint64_t position = 0; position < dumped.end; position += row_bytes) {
        print_row(static_cast<uint32_t>(offset - lead + position), position, dumped);
    }
}
