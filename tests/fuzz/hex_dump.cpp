// Dumps of files at any offset and length: each row is whole, and shows the bytes that are there. The first eight bytes
// of the input are the offset.
#include "modules/env_test/hex_dump.h"

#include "tests/fuzz/target.h"

#include <cstring>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

using kestro_fuzz::require;

namespace {

constexpr size_t row_bytes = 16;

// What the dump prints goes to a file without a name, which is read back.
class printed_text {
  public:
    printed_text() : file_(tmpfile()), standard_output_(dup(STDOUT_FILENO)) {
        require(file_ != nullptr && standard_output_ >= 0, "a temporary file can be had");
        fflush(stdout);
        dup2(fileno(file_), STDOUT_FILENO);
    }
    printed_text(const printed_text &) = delete;
    printed_text &operator=(const printed_text &) = delete;
    ~printed_text() {
        dup2(standard_output_, STDOUT_FILENO);
        close(standard_output_);
        fclose(file_);
    }

    std::string take() {
        fflush(stdout);
        std::string text(static_cast<size_t>(lseek(STDOUT_FILENO, 0, SEEK_END)), '\0');
        require(pread(fileno(file_), text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()), "it is read");
        return text;
    }

  private:
    FILE *file_;
    int standard_output_;
};

// Cell by cell: nothing before the offset and behind the last byte.
std::string expected(uint64_t offset, const std::vector<uint8_t> &data) {
    std::string text;
    const size_t lead = offset % row_bytes;
    for (size_t row = 0; row < lead + data.size(); row += row_bytes) {
        char cell[32];
        const auto address = static_cast<uint32_t>(offset - lead + row);
        snprintf(cell, sizeof cell, "0x%08x~%08x: ", address, address + 15U);
        text += cell;
        std::string signs;
        for (size_t at = row; at < row + row_bytes; ++at) {
            const bool is_there = at >= lead && at < lead + data.size();
            const uint8_t byte = is_there ? data[at - lead] : 0;
            snprintf(cell, sizeof cell, "%02x ", byte);
            text += is_there ? cell : "-- ";
            const bool is_printable = byte >= 0x20 && byte < 0x7F;
            signs += !is_there ? '-' : is_printable ? static_cast<char>(byte) : '.';
        }
        text += "  " + signs + "\n";
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *input, size_t size) {
    uint64_t offset = 0;
    if (size <= sizeof offset || size > 4096) {
        return 0;
    }
    memcpy(&offset, input, sizeof offset);
    const std::vector<uint8_t> data(input + sizeof offset, input + size);
    printed_text printed;
    print_hex_dump(offset, data.data(), static_cast<uint32_t>(data.size()));
    require(printed.take() == expected(offset, data), "the rows are those of the bytes");
    return 0;
}
