// The driver log: one text file of lines per log id, in the state directory. When a file has grown to its limit it
// becomes the old half of a ring and a new one is begun.
#include "drv_basic/service/drv_log.h"

#include "sim/core/state_files.h"
#include "sim/drv/driver.h"

#include <array>
#include <cstdarg>
#include <cstdio>

using namespace kestro_sim;

namespace {

constexpr uint32_t log_id_max = 255;
constexpr uint32_t level_max = 3;
constexpr uint64_t half_ring = uint64_t{64} * 1024;
constexpr size_t line_max = 4096;

// A line of the log is one line of the file.
std::string one_line(uint32_t level, std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
        text.remove_suffix(1);
    }
    std::string line = std::to_string(level) + " ";
    for (const char c : text) {
        line += c == '\n' || c == '\r' ? ' ' : c;
    }
    return line + "\n";
}

} // namespace

uint32_t drv_log_record(uint32_t log_id, uint32_t level, uint32_t flag, const char *format, ...) {
    std::array<char, line_max> text{};
    if (format != nullptr) {
        va_list values;
        va_start(values, format);
        vsnprintf(text.data(), text.size(), format, values);
        va_end(values);
    }
    return operate([&](board &b) {
        refuse_null(format);
        refuse_if(log_id > log_id_max || level > level_max || flag != 0, error::bad_value);
        append_to_ring(b.state_dir(), "log/" + b.self() + "/" + std::to_string(log_id) + ".log",
                       one_line(level, text.data()), half_ring);
    });
}
