// Lists of bytes on the command line. The first two bytes of the input are how many bytes are wanted.
#include "shell/byte_list.h"

#include "tests/fuzz/target.h"

#include <cstring>
#include <string>
#include <vector>

using kestro_fuzz::require;

namespace {

// A number beyond 32 bits is the greatest of the board.
uint8_t byte_of(const char *item) {
    const unsigned long long value = strtoull(item, nullptr, 16);
    const bool is_negative = item[strspn(item, " \t\n\v\f\r")] == '-';
    const unsigned long long magnitude = is_negative ? -value : value;
    return magnitude > UINT32_MAX ? 0xFF : static_cast<uint8_t>(value);
}

// Byte by byte as the words say: items between commas, in hexadecimal, nothing where there is none.
std::vector<uint8_t> expected(const std::string &text, size_t length) {
    std::vector<uint8_t> bytes(length);
    size_t at = 0;
    for (size_t i = 0; i < length; ++i) {
        bytes[i] = byte_of(text.c_str() + at);
        const size_t comma = text.find(',', at);
        if (comma == std::string::npos) {
            break;
        }
        at = comma + 1;
    }
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 2) {
        return 0;
    }
    kestro_fuzz::silence_standard_output();
    const size_t length = data[0] + 256U * (data[1] & 0xFU);
    const std::string text(reinterpret_cast<const char *>(data + 2),
                           strnlen(reinterpret_cast<const char *>(data + 2), size - 2));
    std::vector<uint8_t> bytes(length, 0xEE);
    parse_byte_list(text.c_str(), static_cast<uint32_t>(length), bytes.data(), {"buff", "buff", ",value"});
    require(bytes == expected(text, length), "the bytes are those of the list, and 0 behind them");
    return 0;
}
