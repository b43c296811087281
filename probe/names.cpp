// Nearest names by edit distance.
#include "probe/names.h"

#include <algorithm>
#include <numeric>

namespace kestro_probe {

size_t edit_distance(std::string_view a, std::string_view b) {
    std::vector<size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 1; i <= a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            const size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

std::string nearest_names(std::string_view wanted, const std::vector<std::string_view> &known) {
    constexpr size_t most = 3;
    std::vector<std::pair<size_t, std::string_view>> ranked;
    ranked.reserve(known.size());
    for (const std::string_view name : known) {
        ranked.emplace_back(edit_distance(wanted, name), name);
    }
    std::stable_sort(ranked.begin(), ranked.end(), [](const auto &x, const auto &y) { return x.first < y.first; });
    std::string text;
    for (size_t i = 0; i < std::min(most, ranked.size()) && ranked[i].first <= ranked[0].first + 1; ++i) {
        text += (i > 0 ? " or '" : "'") + std::string(ranked[i].second) + "'";
    }
    return text;
}

} // namespace kestro_probe
