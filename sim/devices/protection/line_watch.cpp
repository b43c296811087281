// What follows from a power line that is lost.
#include "sim/devices/protection/line_watch.h"

#include "sim/core/catalogue.h"

#include <algorithm>

namespace kestro_sim {

bool line_watch::is_lost(board &b, const device_of<power_line::family> &line) {
    return b.get(line, power_line::lost) != 0 && b.get(board::at<family>(line.instance), enable) != 0;
}

bool line_interrupt::is_raised(board &b, const device_of<power_line::family> &line) {
    return line_watch::is_lost(b, line) && b.get(b.find_at<family>(line.instance), enable) != 0;
}

bool fabric_isolation::is_active(board &b, const std::string &place) {
    const auto isolation = board::at<family>(place);
    if (!b.is_described(isolation) || b.get(isolation, enable) == 0) {
        return false;
    }
    const auto lines = b.all_at<power_line::family>(place);
    return std::any_of(lines.begin(), lines.end(), [&](const auto &line) { return line_watch::is_lost(b, line); });
}

device_list devices_of_line_watch() {
    static constexpr const device_family *families[]{&power_line::family, &line_watch::family, &line_interrupt::family,
                                                     &fabric_isolation::family};
    return {families, {}};
}

} // namespace kestro_sim
