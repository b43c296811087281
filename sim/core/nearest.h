// Which of several names somebody may have meant.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace kestro_sim {

// Characters to insert, leave out or change.
inline size_t distance(std::string_view a, std::string_view b) {
    std::vector<size_t> row(b.size() + 1);
    for (size_t j = 0; j <= b.size(); ++j) {
        row[j] = j;
    }
    for (size_t i = 1; i <= a.size(); ++i) {
        size_t corner = row[0];
        row[0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            const size_t changed = corner + (a[i - 1] == b[j - 1] ? 0 : 1);
            corner = row[j];
            row[j] = std::min({changed, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

// The first of those that are least far away; empty when there is no name.
inline std::string nearest(std::string_view wanted, const std::vector<std::string> &names) {
    const auto found = std::min_element(names.begin(), names.end(), [&](const auto &one, const auto &other) {
        return distance(wanted, one) < distance(wanted, other);
    });
    return found == names.end() ? std::string() : *found;
}

} // namespace kestro_sim
