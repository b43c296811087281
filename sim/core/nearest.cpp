// Names that were meant.
#include "sim/core/nearest.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace kestro_sim {

namespace {

size_t distance(std::string_view from, std::string_view to) {
    std::vector<size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < from.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i + 1;
        for (size_t j = 0; j < to.size(); ++j) {
            const size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

} // namespace

std::string nearest(std::string_view word, std::span<const std::string> names) {
    const auto found = std::min_element(names.begin(), names.end(), [&](const auto &one, const auto &other) {
        return distance(word, one) < distance(word, other);
    });
    return found == names.end() ? std::string() : *found;
}

// A third of the letters wrong is still the same word.
std::string nearest_name(std::string_view word, std::span<const std::string> names) {
    const std::string best = nearest(word, names);
    return distance(word, best) < word.size() / 3 + 2 ? best : "";
}

std::string suggestion(std::string_view word, std::span<const std::string> names) {
    if (const std::string near = nearest_name(word, names); !near.empty()) {
        return "the nearest is '" + near + "'";
    }
    std::string all;
    for (const std::string &name : names) {
        all += (all.empty() ? "" : ", ") + name;
    }
    return all.empty() ? "there is none" : "there are " + all;
}

} // namespace kestro_sim
