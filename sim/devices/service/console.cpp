// Texts take their time on a serial line: ten bits a byte.
#include "sim/devices/service/console.h"

#include "sim/core/catalogue.h"
#include "sim/core/time.h"

#include <algorithm>

namespace kestro_sim {

namespace {

constexpr uint32_t rates[]{1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200};
constexpr int64_t thinking = 2 * nanoseconds_per_millisecond;
constexpr int64_t bits_per_byte = 10;
constexpr size_t receiver_size = 32;

int64_t on_the_line(size_t bytes, uint32_t rate) {
    return static_cast<int64_t>(bytes) * bits_per_byte * nanoseconds_per_second / rate;
}

} // namespace

bool console::is_rate(uint32_t rate) {
    return std::find(std::begin(rates), std::end(rates), rate) != std::end(rates);
}

std::vector<console::piece> console::answer(board &b, const one &port, uint32_t rate, std::span<const char> text) {
    if (rate != b.get(port, baud_rate)) {
        return {};
    }
    std::vector<uint8_t> line(text.begin(), text.end());
    line.push_back('\r');
    line.push_back('\n');
    std::vector<piece> pieces;
    for (size_t sent = 0; sent < line.size();) {
        const size_t end = std::min(line.size(), sent + receiver_size);
        pieces.push_back(
            {{line.begin() + static_cast<std::ptrdiff_t>(sent), line.begin() + static_cast<std::ptrdiff_t>(end)},
             on_the_line(text.size() + end, rate) + thinking});
        sent = end;
    }
    return pieces;
}

device_list devices_of_console() {
    static constexpr const device_family *families[]{&console::family};
    return {families, {}};
}

} // namespace kestro_sim
